// The dimensions of a unit as the library gives them, how the tool writes
// them, and the coherent unit of a group.
#include <cmath>
#include <cstdlib>

#include "catalog.h"
#include "text.h"

namespace MensuraCli {

namespace {

using Mensura::Converter;
using Mensura::ErrorCode;

constexpr const char* kBaseNames[7] = {"m", "kg", "s", "A", "K", "mol", "cd"};
constexpr const char* kDimensionNames[7] = {"L", "M", "T", "I", "Θ", "N", "J"};
// The order in which the base units are written: the mass first, as in kg·m·s⁻².
constexpr int kWriteOrder[7] = {1, 0, 2, 3, 4, 5, 6};

// A unit type whose dimensions are not those of `unit`: converting into it
// fails and leaves the value in base units. 0 when every group has the
// dimensions of `unit`.
int UnitOfOtherDimensions(int unit) {
    Exponents own{};
    if (!DimensionsOf(unit, own)) return 0;
    for (int group : Groups()) {
        Exponents other{};
        if (DimensionsOf(group, other) && other != own) return group | 1;
    }
    return 0;
}

// value, in `unit`, in the base units of its dimensions.
bool InBaseUnits(double value, int unit, int other, double& out) {
    return other != 0 && Converter::Convert(value, unit, out, other) == ErrorCode::UnitMismatch;
}

}  // namespace

bool DimensionsOf(int id, Exponents& exponents) {
    int dimensions[7] = {};
    if (Converter::GetUnitDimensions(id, dimensions) != ErrorCode::Success) return false;
    for (std::size_t i = 0; i < exponents.size(); ++i) exponents[i] = dimensions[i];
    return true;
}

std::string DimensionsText(const Exponents& exponents) {
    static constexpr int kOrder[7] = {0, 1, 2, 3, 4, 5, 6};
    return PowersText(exponents, kDimensionNames, kOrder);
}

std::string BaseUnitsText(const Exponents& exponents) {
    return PowersText(exponents, kBaseNames, kWriteOrder);
}

int CoherentUnit(int group) {
    const int other = UnitOfOtherDimensions(group);
    for (int unit : UnitTypes(group)) {
        double one = 0.0;
        double zero = 0.0;
        if (InBaseUnits(1.0, unit, other, one) && InBaseUnits(0.0, unit, other, zero) &&
            std::fabs(one - 1.0) <= 1e-12 && std::fabs(zero) <= 1e-12) {
            return unit;
        }
    }
    return 0;
}

int ReferenceUnit(int group) {
    const int coherent = CoherentUnit(group);
    return coherent != 0 ? coherent : group | 1;
}

}  // namespace MensuraCli
