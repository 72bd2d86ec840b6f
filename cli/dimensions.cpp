// The dimensions of a unit, found by asking Parse: the library reads a text
// into a unit only when the exponents of both agree, so the one product of
// base units that reads into the unit has the unit's exponents.
#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "catalog.h"
#include "text.h"

namespace MensuraCli {

namespace {

using Mensura::ErrorCode;
using Mensura::Formatter;

// In the order of the exponents: length, mass, time, electric current,
// temperature, amount of substance, luminous intensity.
constexpr const char16_t* kBaseKeys[7] = {u"m", u"kg", u"s", u"A", u"K", u"mol", u"cd"};
constexpr const char* kBaseNames[7] = {"m", "kg", "s", "A", "K", "mol", "cd"};
constexpr const char* kDimensionNames[7] = {"L", "M", "T", "I", "Θ", "N", "J"};
// The exponents searched, each from -bound to bound.
constexpr int kBounds[7] = {4, 2, 4, 2, 1, 1, 1};
// The order in which the factors are written: the mass first, which the
// parser reads best at the head of a product.
constexpr int kWriteOrder[7] = {1, 0, 2, 3, 4, 5, 6};

// "1 (kg·m)/(s·s)": each base unit repeated as often as its exponent says. A
// bare "1" would take the group's default unit, so no exponents is "1 (m/m)".
std::u16string ProductText(const Exponents& exponents) {
    std::u16string numerator;
    std::u16string denominator;
    for (int i : kWriteOrder) {
        std::u16string& side = exponents[i] > 0 ? numerator : denominator;
        for (int n = std::abs(exponents[i]); n > 0; --n) {
            if (!side.empty()) side += u'·';
            side += kBaseKeys[i];
        }
    }
    std::u16string text = u"1 (" + (numerator.empty() ? u"m/m" : numerator) + u")";
    if (!denominator.empty()) text += u"/(" + denominator + u")";
    return text;
}

bool ReadsInto(const Exponents& exponents, int unit, double* value = nullptr) {
    static const Formatter reader;
    double out = 0.0;
    const ErrorCode result = reader.Parse(ProductText(exponents).c_str(), out, unit);
    if (value != nullptr) *value = out;
    return result == ErrorCode::Success;
}

// Tries every choice of the exponents from `index` on whose absolute values
// add up to `left`.
bool Search(Exponents& exponents, std::size_t index, int left, int unit) {
    if (index == exponents.size()) return left == 0 && ReadsInto(exponents, unit);
    for (int size = 0; size <= std::min(left, kBounds[index]); ++size) {
        for (int sign : {1, -1}) {
            if (size == 0 && sign == -1) continue;
            exponents[index] = sign * size;
            if (Search(exponents, index + 1, left - size, unit)) return true;
        }
    }
    exponents[index] = 0;
    return false;
}

std::string Superscript(int exponent) {
    static const char* const kDigits[10] = {"⁰", "¹", "²", "³", "⁴", "⁵", "⁶", "⁷", "⁸", "⁹"};
    std::string out = exponent < 0 ? "⁻" : "";
    out += kDigits[std::abs(exponent) % 10];
    return out;
}

std::string PowersText(const Exponents& exponents, const char* const (&names)[7],
                       const int (&order)[7]) {
    std::string out;
    for (int i : order) {
        if (exponents[i] == 0) continue;
        if (!out.empty()) out += "·";
        out += names[i];
        if (exponents[i] != 1) out += Superscript(exponents[i]);
    }
    return out.empty() ? "1" : out;
}

}  // namespace

bool DeriveDimensions(int unit, Exponents& exponents) {
    for (const char16_t* key : kBaseKeys) {
        int found = 0;
        if (Formatter::FindUnit(key, found) != ErrorCode::Success) return false;
    }
    int most = 0;
    for (int bound : kBounds) most += bound;
    // The smallest products first: most units have few factors.
    for (int total = 0; total <= most; ++total) {
        exponents.fill(0);
        if (Search(exponents, 0, total, unit)) return true;
    }
    return false;
}

std::string DimensionsText(const Exponents& exponents) {
    static constexpr int kOrder[7] = {0, 1, 2, 3, 4, 5, 6};
    return PowersText(exponents, kDimensionNames, kOrder);
}

std::string BaseUnitsText(const Exponents& exponents) {
    return PowersText(exponents, kBaseNames, kWriteOrder);
}

int CoherentUnit(int group, const Exponents& exponents) {
    for (int unit : UnitTypes(group)) {
        double value = 0.0;
        if (ReadsInto(exponents, unit, &value) && std::fabs(value - 1.0) <= 1e-12) return unit;
    }
    return 0;
}

}  // namespace MensuraCli
