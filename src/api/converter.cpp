// The Converter class and the flat conversion functions.
#include <algorithm>

#if defined(__x86_64__) && (defined(__GNUC__) || defined(__clang__))
#include <cpuid.h>
#define MENSURA_FOUR_LANES 1
#endif

#include "catalogue/unit_catalog.h"
#include "mensura/mensura.hpp"
#include "units/unit_table.h"

namespace Mensura {

namespace {

constexpr int kNoUnit = -1;

// out[i] = values[i] * into / outOf, rounded twice as Convert rounds. The
// divide bounds the speed, so where the processor has them the loop runs on
// four lanes at once; each lane rounds alike. Four loads come before four
// stores: out may be values, and a block read whole lets the compiler use
// vector lanes without a check.
inline __attribute__((always_inline)) void ScaleColumnLoop(const double* values, double* out,
                                                           std::size_t count, double into,
                                                           double outOf) {
    std::size_t i = 0;
    for (; i + 4 <= count; i += 4) {
        const double a = values[i], b = values[i + 1], c = values[i + 2], d = values[i + 3];
        out[i] = a * into / outOf;
        out[i + 1] = b * into / outOf;
        out[i + 2] = c * into / outOf;
        out[i + 3] = d * into / outOf;
    }
    for (; i < count; ++i) out[i] = values[i] * into / outOf;
}

using ScaleColumnLoopFunction = void (*)(const double*, double*, std::size_t, double, double);

void PlainScaleColumn(const double* values, double* out, std::size_t count, double into,
                      double outOf) {
    ScaleColumnLoop(values, out, count, into, outOf);
}

// The four-lane loop is chosen on the first call, when the processor is
// asked what it has: a choice made at load, as a clone selector makes it,
// would have every program that loads the library ask, whether it converts
// a column or not, and in a virtual machine each question traps.
#if defined(MENSURA_FOUR_LANES)
__attribute__((target("avx2"))) void FourLaneScaleColumn(const double* values, double* out,
                                                         std::size_t count, double into,
                                                         double outOf) {
    ScaleColumnLoop(values, out, count, into, outOf);
}

// Whether the processor has four-lane vectors of doubles (AVX2) and the
// system keeps their registers.
bool HasFourLanes() {
    unsigned a = 0, b = 0, c = 0, d = 0;
    if (__get_cpuid(1, &a, &b, &c, &d) == 0 || (c & bit_OSXSAVE) == 0 || (c & bit_AVX) == 0)
        return false;
    unsigned low = 0, high = 0;
    __asm__("xgetbv" : "=a"(low), "=d"(high) : "c"(0));
    if ((low & 6) != 6) return false;  // the system saves the vector registers
    return __get_cpuid_count(7, 0, &a, &b, &c, &d) != 0 && (b & bit_AVX2) != 0;
}

ScaleColumnLoopFunction ChooseScaleColumn() {
    return HasFourLanes() ? FourLaneScaleColumn : PlainScaleColumn;
}
#else
ScaleColumnLoopFunction ChooseScaleColumn() {
    return PlainScaleColumn;
}
#endif

void ScaleColumn(const double* values, double* out, std::size_t count, double into, double outOf) {
    static const ScaleColumnLoopFunction loop = ChooseScaleColumn();
    loop(values, out, count, into, outOf);
}

Dimensions ToDimensions(const int (&exponents)[7]) {
    Dimensions dimensions;
    for (std::size_t i = 0; i < dimensions.size(); ++i) dimensions[i] = exponents[i];
    return dimensions;
}

}  // namespace

Converter::Converter() : m_from(kNoUnit), m_to(kNoUnit) {}

Converter::Converter(int from, int to) : Converter() {
    SetUnit(from, to);
}

Converter& Converter::operator=(const Converter& other) {
    m_from = other.m_from;
    m_to = other.m_to;
    return *this;
}

ErrorCode Converter::SetUnit(int from, int to) {
    const int f = from != 0 ? from : m_from;
    const int t = to != 0 ? to : m_to;
    if (!UnitId::SameUnit(f, t)) {
        const UnitTable& units = UnitTable::Instance();
        const UnitConverter* source = units.FindConverter(f);
        const UnitConverter* target = units.FindConverter(t);
        if (source == nullptr || target == nullptr) return ErrorCode::UnitMismatch;
        double trial = 0.0;
        const ErrorCode result = source->ConvertTo(1.0, trial, *target);
        if (result != ErrorCode::Success) return result;
    }
    m_from = f;
    m_to = t;
    return ErrorCode::Success;
}

void Converter::GetUnit(int* from, int* to) const {
    if (from != nullptr) *from = m_from;
    if (to != nullptr) *to = m_to;
}

double Converter::Convert(double value) const {
    double out = value;
    UnitTable::Instance().Convert(value, m_from, out, m_to);
    return out;
}

double Converter::Factor() const {
    return Factor(m_from, m_to);
}

// The call that conversions make most, on a line of the instruction cache of
// its own: its path then starts no second line halfway.
__attribute__((aligned(64))) ErrorCode Converter::Convert(double value, int from, double& out,
                                                          int to) {
    return UnitTable::Instance().Convert(value, from, out, to);
}

double Converter::Factor(int from, int to) {
    if (UnitId::SameUnit(from, to)) return 1.0;
    const UnitTable& units = UnitTable::Instance();
    const UnitConverter* source = units.FindConverter(from);
    const UnitConverter* target = units.FindConverter(to);
    if (source == nullptr || target == nullptr) return 0.0;
    double factor = 0.0;
    return source->FactorTo(*target, factor) == ErrorCode::Success ? factor : 0.0;
}

ErrorCode Converter::Convert(double value, const int (&dimensions)[7], double& out, int to) {
    const UnitConverter* target = UnitTable::Instance().FindConverter(to);
    if (target == nullptr) return ErrorCode::UnitMismatch;
    return target->DirectFromBase(value, ToDimensions(dimensions), out);
}

ErrorCode Converter::Convert(double value, int from, double& out, const int (&dimensions)[7]) {
    const UnitConverter* source = UnitTable::Instance().FindConverter(from);
    if (source == nullptr) return ErrorCode::UnitMismatch;
    return source->DirectToBase(value, out, ToDimensions(dimensions));
}

// A group id holds nothing to merge, so the list without a capacity is the
// one with room for every group.
size_t Converter::GetUnitGroups(int* const ids) {
    return CopyUnitGroups(ids, static_cast<size_t>(-1));
}

size_t Converter::GetUnitTypes(int group, int* const ids) {
    return UnitTable::Instance().ListUnitTypes(group, ids);
}

size_t Converter::CopyUnitGroups(int* const ids, size_t capacity) {
    const std::size_t count = UnitTable::Instance().GroupCount();
    const std::size_t written = ids != nullptr ? std::min(count, capacity) : 0;
    for (std::size_t i = 0; i < written; ++i) ids[i] = static_cast<int>(i + 1) << 12;
    return count;
}

size_t Converter::CopyUnitTypes(int group, int* const ids, size_t capacity) {
    return UnitTable::Instance().CopyUnitTypes(group, ids, capacity);
}

ErrorCode Converter::ConvertArray(const double* values, double* out, size_t count, int from,
                                  int to) {
    if (count > 0 && (values == nullptr || out == nullptr)) return ErrorCode::Failure;
    if (UnitId::SameUnit(from, to)) {
        if (count > 0 && out != values) std::copy_n(values, count, out);
        return ErrorCode::Success;
    }
    const UnitTable& units = UnitTable::Instance();
    const UnitConverter* source = units.FindConverter(from);
    const UnitConverter* target = units.FindConverter(to);
    if (source == nullptr || target == nullptr ||
        !SameDimensions(source->GetDimensions(), target->GetDimensions())) {
        return ErrorCode::UnitMismatch;
    }
    if (!source->HasOffset() && !target->HasOffset()) {
        // Into base units and out again, as Convert rounds: a multiply and a
        // divide a value.
        const double into = source->GetFactor();
        const double outOf = target->GetFactor();
        ScaleColumn(values, out, count, into, outOf);
        return ErrorCode::Success;
    }
    for (size_t i = 0; i < count; ++i) source->DirectConvertTo(values[i], out[i], *target);
    return ErrorCode::Success;
}

ErrorCode Converter::GetUnitDimensions(int id, int (&dimensions)[7]) {
    const bool hasType = (id & UnitId::TypeMask) != 0;
    const bool hasSymbol = (id & UnitId::SymbolMask) != 0;
    if (!hasType && hasSymbol) return ErrorCode::Failure;
    // A group's exponents are those of its first unit type.
    const UnitConverter* converter = UnitTable::Instance().FindConverter(hasType ? id : id | 1);
    if (converter == nullptr || (id & ~static_cast<int>(UnitId::SymbolMask | UnitId::UnitMask))) {
        return ErrorCode::Failure;
    }
    if (hasSymbol && UnitCatalog::Instance().FindSymbol(id, 0) == nullptr)
        return ErrorCode::Failure;
    const Dimensions& exponents = converter->GetDimensions();
    std::copy(exponents.begin(), exponents.end(), dimensions);
    return ErrorCode::Success;
}

}  // namespace Mensura
