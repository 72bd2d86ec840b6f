#include "notations/feet_inches_symbol.h"

#include <cmath>

#include "notations/compound.h"
#include "notations/symbol_strings.h"
#include "numbers/render_mode.h"
#include "api/formatter_impl.h"
#include "base/unit_id.h"

namespace Mensura {

namespace {

using CompoundMarks::kDoublePrime;
using CompoundMarks::kFailure;
using CompoundMarks::kPrime;
using CompoundMarks::WholePart;

constexpr int kInch = 0x2016;
constexpr char16_t kEnDash = u'\u2013';

}  // namespace

struct PrimeDoublePrimeSymbol::Start {
    double x;            // the value in the unit, nudged away from zero
    double denominator;  // D: 2 to the power of the decimal digits
    unsigned largeMode;  // of the large number
};

PrimeDoublePrimeSymbol::PrimeDoublePrimeSymbol(const char16_t* text, int id, bool feet,
                                               bool fraction, bool dash)
    : GenericSymbol(text, id & static_cast<int>(UnitId::UnitMask), 0),
      symbolId(id),
      showFeet(feet ? 1 : 0),
      showFraction(fraction ? 1 : 0),
      showDash(dash ? 1 : 0) {}

double PrimeDoublePrimeSymbol::Multiplier() const {
    return Unit() == kInch ? 12.0 : 60.0;
}

std::int64_t PrimeDoublePrimeSymbol::Begin(double value, const Dimensions& dims,
                                           const FormatterImpl& settings, Start& start) const {
    double x = 0.0;
    const ErrorCode converted = GetConverter().DirectFromBase(value, dims, x);
    if (converted != ErrorCode::Success) return -static_cast<std::int64_t>(converted);
    // The sign of -0.5 feet survives in front of a large number of 0.
    start.largeMode = RenderMode::WholeNumber | (x < 0.0 ? RenderMode::SignOnZero : 0u);
    const int digits = settings.GetNumberDecimalDigits();
    double denominator = 1.0;
    for (int i = 0; i < digits; ++i) denominator += denominator;
    start.denominator = denominator;
    // A fraction rounds to nearest, ties away from zero, before the split, so
    // that its carry reaches the large number. Decimals get only a tiny push
    // and RenderNumber rounds the small number alone: "5′12.00″" can occur.
    double amount = 0.0;
    if (showFraction) {
        amount = 0.5 / denominator;
    } else {
        double power = 1.0;
        for (int i = 0; i < digits; ++i) power *= 10.0;
        amount = 1.0 / (power * 100000.0 * 2.0);
    }
    start.x = x > 0.0 ? x + amount : x - amount;
    return 0;
}

std::int64_t PrimeDoublePrimeSymbol::WriteSmall(const Start& start, double x, char16_t* buffer,
                                                std::size_t size,
                                                const FormatterImpl& settings) const {
    if (!showFraction) return settings.RenderNumber(x, buffer, size, 0);
    double denominator = start.denominator;
    const double whole = WholePart(x);
    double numerator = WholePart((x - whole) * denominator);
    std::size_t at = 0;
    // A value below one has no "0" in front of its fraction; 0 itself has its "0".
    if (numerator == 0.0 || whole != 0.0) {
        const std::int64_t written =
            settings.RenderNumber(whole, buffer, size, RenderMode::WholeNumber);
        if (written < 1) return written;
        at = static_cast<std::size_t>(written - 1);
        if (numerator == 0.0) return written;
        if (at >= size) return kFailure;
        buffer[at++] = u' ';
    }
    // The sign stands once, at the whole number.
    if (whole < 0.0 && numerator < 0.0) numerator = -numerator;
    while (std::fmod(numerator, 2.0) == 0.0) {
        numerator /= 2.0;
        denominator /= 2.0;
    }
    std::int64_t written =
        settings.RenderNumber(numerator, buffer + at, size - at, RenderMode::WholeNumber);
    if (written < 1) return written;
    at += static_cast<std::size_t>(written - 1);
    if (at >= size) return kFailure;
    buffer[at++] = u'/';
    written = settings.RenderNumber(denominator, buffer + at, size - at, RenderMode::WholeNumber);
    if (written < 1) return written;
    return static_cast<std::int64_t>(at) + written;
}

std::int64_t PrimeDoublePrimeSymbol::Render(double value, const Dimensions& dims, char16_t* buffer,
                                            std::size_t size, const FormatterImpl& settings) const {
    if (buffer == nullptr) return kFailure;
    Start start;
    if (const std::int64_t refused = Begin(value, dims, settings, start)) return refused;
    double x = start.x;
    std::size_t at = 0;
    if (showFeet) {
        const double multiplier = Multiplier();
        const double large = WholePart(x / multiplier);
        const std::int64_t written = settings.RenderNumber(large, buffer, size, start.largeMode);
        if (written < 1) return written;
        at = static_cast<std::size_t>(written - 1);
        if (size - at < (showDash ? 2u : 1u)) return kFailure;
        buffer[at++] = kPrime;
        if (showDash) buffer[at++] = kEnDash;
        x = x - large * multiplier;
        if (x < 0.0) x = -x;
    }
    const std::int64_t written = WriteSmall(start, x, buffer + at, size - at, settings);
    if (written < 1) return written;
    at += static_cast<std::size_t>(written - 1);
    if (size - at < 2) return kFailure;
    buffer[at++] = kDoublePrime;
    buffer[at++] = 0;
    return static_cast<std::int64_t>(at);
}

std::int64_t PrimeDoublePrimeSymbol::RenderPart(int part, double value, const Dimensions& dims,
                                                char16_t* buffer, std::size_t size,
                                                const FormatterImpl& settings) const {
    if (buffer == nullptr) return kFailure;
    Start start;
    if (const std::int64_t refused = Begin(value, dims, settings, start)) return refused;
    double x = start.x;
    if (showFeet) {
        const double multiplier = Multiplier();
        const double large = WholePart(x / multiplier);
        if (part == 0) return settings.RenderNumber(large, buffer, size, start.largeMode);
        x = x - large * multiplier;
        if (x < 0.0) x = -x;
    }
    return WriteSmall(start, x, buffer, size, settings);
}

int PrimeDoublePrimeSymbol::LastPartIndex(int form) const {
    const int small = showFeet ? 1 : 0;  // the part of the small number
    if (form == 0) return small;
    if (showFraction && (form == 1 || form == 2)) return small + form;
    return -1;
}

int PrimeDoublePrimeSymbol::ParsePart(SymbolList& list, int form) const {
    const int count = LastPartIndex(form) + 1;
    if (count < 1) return 1;
    double numbers[4] = {};
    SymbolList::iterator it = list.begin();
    for (int i = 0; i < count; ++i, ++it) {
        if (it == list.end() || it.symbol()->AsNumber() == nullptr) return 1;
        numbers[i] = it.symbol()->AsNumber()->value;
    }
    const double a = numbers[0], b = numbers[1], c = numbers[2], e = numbers[3];
    // A negative zero in front counts as plus: "-0", "6" is plus 6 inches.
    const double sign = a < 0.0 ? -1.0 : 1.0;
    double total = 0.0;
    if (showFeet) {
        double magnitude = 0.0;
        if (form == 0) {
            magnitude = std::fabs(b);
        } else if (form == 1) {
            if (c == 0.0) return 1;
            magnitude = std::fabs(b / c);
        } else {
            if (e == 0.0) return 1;
            magnitude = std::fabs(c / e + b);
        }
        total = a * Multiplier() + sign * magnitude;
    } else if (form == 0) {
        total = a;
    } else if (form == 1) {
        if (b == 0.0) return 1;
        total = a / b;
    } else {
        if (c == 0.0) return 1;
        total = a + sign * std::fabs(b / c);
    }
    const UnitConverter& converter = GetConverter();
    double base = 0.0;
    if (converter.DirectToBase(total, base, converter.GetDimensions()) != ErrorCode::Success)
        return 1;
    const SymbolList::iterator head = list.begin();
    list.Replace<ResultSymbol>(head, converter.GetDimensions(), base);
    list.Erase(head.next(), it);
    return 0;
}

int PrimeDoublePrimeSymbol::MakeCustomSymbols(CustomSymbolList& out,
                                              const std::vector<std::u16string>& literals,
                                              const std::vector<int>& indices) const {
    out.clear();
    if (AppendCustomSymbol(out, this, literals, indices, 0) != 0) return 1;
    if (!showFraction) return 0;
    // Form 0 is valid: one or two placeholders, and maybe a literal behind them.
    const std::u16string slash = u"/";
    const std::u16string blank = u" ";
    std::vector<std::u16string> one, two;
    std::vector<int> oneIndices, twoIndices;
    const bool trailing = literals.size() > indices.size();
    if (!showFeet) {
        one = {literals[0], slash};
        two = {literals[0], blank, slash};
        if (trailing) {
            one.push_back(literals[1]);
            two.push_back(literals[1]);
        }
        oneIndices = {0, 1};
        twoIndices = {0, 1, 2};
    } else if (indices[0] == 0) {  // the large number first
        one = {literals[0], literals[1], slash};
        two = {literals[0], literals[1], blank, slash};
        oneIndices = {0, 1, 2};
        twoIndices = {0, 1, 2, 3};
    } else {  // the small number first
        one = {literals[0], slash, literals[1]};
        two = {literals[0], blank, slash, literals[1]};
        oneIndices = {1, 2, 0};
        twoIndices = {1, 2, 3, 0};
    }
    if (showFeet && trailing) {
        one.push_back(literals[2]);
        two.push_back(literals[2]);
    }
    if (AppendCustomSymbol(out, this, one, oneIndices, 1) != 0 ||
        AppendCustomSymbol(out, this, two, twoIndices, 2) != 0) {
        out.clear();
        return 1;
    }
    return 0;
}

}  // namespace Mensura
