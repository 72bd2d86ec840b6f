#include "units/unit_converter.h"

namespace Mensura {

ErrorCode GenericConverter::FactorTo(const UnitConverter& other, double& out) const {
    const auto* generic = dynamic_cast<const GenericConverter*>(&other);
    if (generic == nullptr || !SameDimensions(generic->dimensions, dimensions))
        return ErrorCode::Failure;
    out = factor / generic->factor;
    return ErrorCode::Success;
}

ErrorCode LinearConverter::FactorTo(const UnitConverter& other, double& out) const {
    // Two scales with offsets have a pure ratio only when their zeros coincide.
    const auto* linear = dynamic_cast<const LinearConverter*>(&other);
    if (linear == nullptr || !SameDimensions(linear->dimensions, dimensions) ||
        !(linear->offset == offset)) {
        return ErrorCode::Failure;
    }
    out = factor / linear->factor;
    return ErrorCode::Success;
}

}  // namespace Mensura
