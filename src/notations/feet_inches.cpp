#include "notations/feet_inches.h"

#include <cmath>
#include <cstdint>
#include <cstring>

#include "base/ids.h"
#include "base/number_flags.h"
#include "grammar/operators.h"
#include "notations/compound.h"
#include "notations/symbol_strings.h"
#include "numbers/number_settings.h"
#include "units/unit_table.h"

namespace Mensura {

// Reading the typed marks.

namespace {

using CompoundMarks::Combine;
using CompoundMarks::Finish;

// The exponents for which the table's index of groups answers the length
// and the time group, found once rather than at every mark. The index gives
// a group for one set of exponents at most, the group's own, and only while
// no other group shares them: those of the inch and the second when it
// answers the two groups for them. Where it does not, nothing is known and
// the marks ask the index themselves.
struct MarkTargets {
    Dimensions length{};
    Dimensions time{};
    bool known = false;
};

const MarkTargets& Targets() {
    static const MarkTargets targets = [] {
        const UnitTable& table = UnitTable::Instance();
        MarkTargets found;
        const UnitConverter* inch = table.FindConverter(kInch);
        const UnitConverter* second = table.FindConverter(kSecond);
        if (inch == nullptr || second == nullptr) return found;
        found.length = inch->GetDimensions();
        found.time = second->GetDimensions();
        found.known = table.FindGroupByDimensions(found.length) == kLength &&
                      table.FindGroupByDimensions(found.time) == kTime;
        return found;
    }();
    return targets;
}

}  // namespace

bool Marks::For(const Dimensions& dimensions, Marks& marks) {
    const MarkTargets& targets = Targets();
    int group = 0;
    if (targets.known) {
        group = SameDimensions(dimensions, targets.length) ? kLength
                : SameDimensions(dimensions, targets.time) ? kTime
                                                           : 0;
    } else {
        group = UnitTable::Instance().FindGroupByDimensions(dimensions);
    }
    if (group == kLength) {
        marks = {12.0, kFoot, kInch};
    } else if (group == kTime) {
        marks = {60.0, kMinute, kSecond};
    } else if (SameDimensions(dimensions, Dimensions{})) {
        marks = {60.0, kAngleMinute, kAngleSecond};
    } else {
        return false;
    }
    return true;
}

namespace {

bool Is(SymbolList& list, SymbolList::iterator at, ParseKind kind) {
    return at != list.end() && at.symbol()->Kind() == kind;
}

const NumberSymbol* NumberAt(SymbolList& list, SymbolList::iterator at) {
    return at == list.end() ? nullptr : at.symbol()->AsNumber();
}

bool IsMinus(const NumberSymbol& number) {
    return (number.flags & NumberFlags::MinusSign) != 0;
}

// A compass letter behind a mark hands the angle on to the letter.
bool IsLetter(SymbolList& list, SymbolList::iterator at) {
    return Is(list, at, ParseKind::East) || Is(list, at, ParseKind::West);
}

// Both marks step on in the first pass; in the second they need a target
// they can classify and something in front of them.
template <typename Read>
ErrorCode EvaluateMark(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                       const Dimensions& dimensions, Read read) {
    if (firstPass) {
        ++position;
        return ErrorCode::Success;
    }
    Marks marks;
    if (!Marks::For(dimensions, marks) || position == list.begin()) return ErrorCode::ParseFailure;
    return read(marks);
}

}  // namespace

ErrorCode PrimeSymbol::Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                                const Dimensions& dimensions) const {
    return EvaluateMark(list, position, firstPass, dimensions, [&](const Marks& marks) {
        return Read(list, position, marks, dimensions);
    });
}

ErrorCode DoublePrimeSymbol::Evaluate(SymbolList& list, SymbolList::iterator& position,
                                      bool firstPass, const Dimensions& dimensions) const {
    return EvaluateMark(list, position, firstPass, dimensions, [&](const Marks& marks) {
        return Read(list, position, marks, dimensions);
    });
}

ErrorCode PrimeSymbol::Read(SymbolList& list, SymbolList::iterator& position, const Marks& marks,
                            const Dimensions& dimensions) const {
    const SymbolList::iterator prime = position;
    const SymbolList::iterator before = prime.previous();
    const NumberSymbol* a = before.symbol()->AsNumber();
    if (a == nullptr) return ErrorCode::ParseFailure;
    position = before;
    const SymbolList::iterator x = prime.next();

    if (x != list.end() && !IsLetter(list, x)) {
        // The large part, then the small one: it must begin the list.
        if (before != list.begin()) return ErrorCode::ParseFailure;
        // Number [Number] [/ Number] [″], the ″ optional only at the end.
        SymbolList::iterator at = x;
        if (NumberAt(list, at) == nullptr) return ErrorCode::ParseFailure;
        ++at;
        if (NumberAt(list, at) != nullptr) {
            ++at;
            if (!Is(list, at, ParseKind::Division)) return ErrorCode::ParseFailure;
        }
        if (Is(list, at, ParseKind::Division)) {
            ++at;
            if (NumberAt(list, at) == nullptr) return ErrorCode::ParseFailure;
            ++at;
        }
        const bool closed = Is(list, at, ParseKind::DoublePrime);
        if (!closed && at != list.end()) return ErrorCode::ParseFailure;
        const double value = a->value * marks.multiplier;
        const std::uint32_t flags = a->flags;
        SetNumber(list, before, value, flags);
        list.Erase(prime);
        position = x;
        if (!closed) list.PushBackNew<DoublePrimeSymbol>();
        return ErrorCode::Success;
    }

    // The prime closes the text: a whole number of the large unit, or a fraction.
    double q = a->value;
    if (before != list.begin()) {
        const SymbolList::iterator first = list.begin();
        const NumberSymbol* numerator = first.symbol()->AsNumber();
        if (numerator == nullptr || !Is(list, first.next(), ParseKind::Division) ||
            first.next().next() != before || a->value == 0.0) {
            return ErrorCode::ParseFailure;
        }
        q = numerator->value / a->value;
    }
    if (IsLetter(list, x) && marks.large == kAngleMinute) {
        // Minutes of a bearing go on to the letter in seconds of arc; a length
        // or a time drops the letter.
        if (before != list.begin()) return ErrorCode::ParseFailure;
        SetNumber(list, before, q * 60.0, 0u);
        list.Replace<DoublePrimeSymbol>(prime);
        position = x;
        return ErrorCode::Success;
    }
    return Finish(list, position, q, marks.large, dimensions);
}

ErrorCode DoublePrimeSymbol::Read(SymbolList& list, SymbolList::iterator& position,
                                  const Marks& marks, const Dimensions& dimensions) const {
    const SymbolList::iterator mark = position;
    const SymbolList::iterator behind = mark.next();
    const bool letter = IsLetter(list, behind);
    if (behind != list.end() && !letter) return ErrorCode::ParseFailure;

    // The numbers before the mark: b | a b | n / d | w n / d | a w n / d.
    const NumberSymbol* numbers[4] = {};
    int count = 0;
    int slash = -1;
    for (SymbolList::iterator at = list.begin(); at != mark; ++at) {
        if (const NumberSymbol* number = at.symbol()->AsNumber()) {
            if (count == 4) return ErrorCode::ParseFailure;
            numbers[count++] = number;
            continue;
        }
        if (at.symbol()->Kind() != ParseKind::Division || slash >= 0 || count == 0)
            return ErrorCode::ParseFailure;
        slash = count;
    }
    double total = 0.0;
    if (slash < 0) {
        if (count == 1) {
            total = numbers[0]->value;
        } else if (count == 2) {
            total = Combine(numbers[0]->value, IsMinus(*numbers[0]), std::fabs(numbers[1]->value));
        } else {
            return ErrorCode::ParseFailure;
        }
    } else {
        // The fraction is the last two numbers, the "/" between them.
        if (slash != count - 1 || count < 2 || count > 4) return ErrorCode::ParseFailure;
        const NumberSymbol& n = *numbers[count - 2];
        const double d = numbers[count - 1]->value;
        if (d == 0.0) return ErrorCode::ParseFailure;
        if (count == 2) {
            total = n.value / d;
        } else if (count == 3) {
            total = Combine(numbers[0]->value, IsMinus(*numbers[0]), std::fabs(n.value) / d);
        } else {
            const double f = std::fabs(numbers[1]->value) + std::fabs(n.value) / d;
            total = Combine(numbers[0]->value, IsMinus(*numbers[0]), f);
        }
    }
    if (letter) {
        // Seconds of arc for the letter of a bearing, which has the last word.
        SetNumber(list, list.begin(), total, 0u);
        list.Erase(list.begin().next(), mark);
        position = behind;
        return ErrorCode::Success;
    }
    return Finish(list, position, total, marks.small, dimensions);
}

ErrorCode DashSymbol::Evaluate(SymbolList& list, SymbolList::iterator& position, bool,
                               const Dimensions&) const {
    const SymbolList::iterator dash = position;
    if (dash == list.begin() || dash.next() == list.end()) return ErrorCode::ParseFailure;
    SymbolList::iterator left = dash.previous();
    while (left != list.begin() && Is(list, left, ParseKind::Space)) --left;
    if (left.symbol()->AsOperand() == nullptr && !Is(list, left, ParseKind::Prime))
        return ErrorCode::ParseFailure;
    SymbolList::iterator right = dash.next();
    while (Is(list, right, ParseKind::Space)) ++right;
    if (right == list.end()) return ErrorCode::ParseFailure;
    if (right.symbol()->AsNumber() != nullptr) {
        // Between the two parts: the dash and any blanks go.
        list.Erase(left.next(), right);
        position = right;
        return ErrorCode::Success;
    }
    if (right.symbol()->AsOperand() != nullptr) {
        // Between two units: a product.
        const SymbolList::iterator product = left.next();
        list.Replace<MultiplicationSymbol>(product);
        list.Erase(product.next(), right);
        position = right;
        return ErrorCode::Success;
    }
    return ErrorCode::ParseFailure;
}

// Reading typed texts without the list.

namespace TypedMarks {

using CompoundMarks::TypedToken;

namespace {

bool IsMinus(const TypedToken& number) {
    return (number.flags & NumberFlags::MinusSign) != 0;
}

bool IsNumber(const TypedToken& token) {
    return token.kind == ParseKind::Number;
}

// The double prime's total of the line before it, which begins the list:
// b | a b | n / d | w n / d | a w n / d.
bool SmallTotal(const TypedToken* line, std::size_t count, double& total) {
    double numbers[4];
    std::size_t found = 0;
    std::size_t slash = 0;  // the numbers before "/", 0 for none
    for (std::size_t at = 0; at < count; ++at) {
        if (IsNumber(line[at])) {
            if (found == 4) return false;
            numbers[found++] = line[at].value;
        } else if (line[at].kind != ParseKind::Division || slash != 0 || found == 0) {
            return false;
        } else {
            slash = found;
        }
    }
    const bool minus = found > 0 && IsMinus(line[0]);
    if (slash == 0) {
        if (found == 1) {
            total = numbers[0];
        } else if (found == 2) {
            total = Combine(numbers[0], minus, std::fabs(numbers[1]));
        } else {
            return false;
        }
        return true;
    }
    if (slash != found - 1 || found < 2) return false;
    const double n = numbers[found - 2];
    const double d = numbers[found - 1];
    if (d == 0.0) return false;
    if (found == 2) {
        total = n / d;
    } else if (found == 3) {
        total = Combine(numbers[0], minus, std::fabs(n) / d);
    } else {
        total = Combine(numbers[0], minus, std::fabs(numbers[1]) + std::fabs(n) / d);
    }
    return true;
}

}  // namespace

bool ReadLine(const TypedToken* line, std::size_t count, bool letter, const Marks& marks,
              Amount& amount) {
    if (count < 2 || !IsNumber(line[0])) return false;
    const TypedToken& a = line[0];
    if (line[1].kind == ParseKind::Prime) {
        if (count == 2) {
            // The prime closes the text: whole units of the large mark; a
            // bearing's letter takes them in seconds of arc.
            amount = letter ? Amount{a.value * 60.0, 0} : Amount{a.value, marks.large};
            return true;
        }
        // The large part in the small unit, then b, n / d or w n / d of the
        // small mark, closed by the double prime or by the end of the text.
        std::size_t end = count;
        if (line[count - 1].kind == ParseKind::DoublePrime) {
            --end;
        } else if (letter) {
            return false;
        }
        const double large = a.value * marks.multiplier;
        double rest = 0.0;
        if (end == 3 && IsNumber(line[2])) {
            rest = std::fabs(line[2].value);
        } else if ((end == 5 || end == 6) && line[end - 2].kind == ParseKind::Division &&
                   IsNumber(line[end - 1]) && IsNumber(line[end - 3]) &&
                   (end == 5 || IsNumber(line[2]))) {
            const double d = line[end - 1].value;
            if (d == 0.0) return false;
            rest = std::fabs(line[end - 3].value) / d;
            if (end == 6) rest = std::fabs(line[2].value) + rest;
        } else {
            return false;
        }
        const double total = Combine(large, IsMinus(a), rest);
        amount = letter ? Amount{total, 0} : Amount{total, marks.small};
        return true;
    }
    if (count == 4 && line[1].kind == ParseKind::Division && line[3].kind == ParseKind::Prime) {
        // A fraction of the large mark: no letter may follow it.
        if (letter || !IsNumber(line[2]) || line[2].value == 0.0) return false;
        amount = {a.value / line[2].value, marks.large};
        return true;
    }
    // No prime: the small mark's line alone.
    double total = 0.0;
    if (line[count - 1].kind != ParseKind::DoublePrime || !SmallTotal(line, count - 1, total)) {
        return false;
    }
    amount = letter ? Amount{total, 0} : Amount{total, marks.small};
    return true;
}

bool Read(Layout& layout, const Dimensions& dimensions, double& value) {
    Marks marks;
    Amount amount;
    return layout.Complete() && !layout.Angle() && Marks::For(dimensions, marks) &&
           ReadLine(layout.Tokens(), layout.Count(), false, marks, amount) &&
           CompoundMarks::AmountToBase(amount.value, amount.unit, dimensions, value);
}

}  // namespace TypedMarks

// Writing, and reading through symbol strings.

namespace {

using CompoundMarks::kDoublePrime;
using CompoundMarks::kPrime;

constexpr char16_t kEnDash = u'\u2013';

// The integer part of x, cut toward zero, as WholePart gives it (the sign of
// a zero and a NaN included), without a call: a double of 2^52 or more is a
// whole number already.
double Truncate(double x) {
    if (!(std::fabs(x) < 4503599627370496.0)) return x;
    return std::copysign(static_cast<double>(static_cast<std::int64_t>(x)), x);
}

// The finest fraction that WriteFraction takes, 2^29: its numbers stay below
// 1e9.
constexpr double kWholeDenominator = 536870912.0;

std::uint32_t Magnitude(std::int32_t n) {
    return n < 0 ? 0u - static_cast<std::uint32_t>(n) : static_cast<std::uint32_t>(n);
}

// 2 to the power of n, exactly, for n from -1022 to 1023: written, not
// reckoned, as the decimal digits (0 to 99) ask for it at every rendering.
double PowerOfTwo(int n) {
    const std::uint64_t bits = static_cast<std::uint64_t>(1023 + n) << 52;
    double power = 0.0;
    std::memcpy(&power, &bits, sizeof power);
    return power;
}

// Divides the fraction numerator / denominator by 2 while the numerator is
// even. The numerator is a whole number other than 0 and the denominator a
// power of two; up to 2^63, with the numerator below it, the halvings are a
// shift.
void Reduce(double& numerator, double& denominator) {
    if (denominator <= 9223372036854775808.0 && std::fabs(numerator) < denominator) {
        const auto magnitude = static_cast<std::uint64_t>(std::fabs(numerator));
        const int twos = __builtin_ctzll(magnitude);
        numerator = std::copysign(static_cast<double>(magnitude >> twos), numerator);
        denominator = static_cast<double>(static_cast<std::uint64_t>(denominator) >> twos);
        return;
    }
    while (std::fmod(numerator, 2.0) == 0.0) {
        numerator /= 2.0;
        denominator /= 2.0;
    }
}

// The whole part of x / multiplier (12 or 60), cut toward zero, when the
// quotient is below 1e9: false otherwise. The product by the reciprocal
// stands for the division where it settles the whole part: the two differ
// by less than 3 units of their last place, below 2^-21 under 1e9, so that
// a product whose fraction keeps 2^-20 from either whole number has the
// quotient's whole part. Only values that near a multiple wait for the
// division.
bool WholeQuotient(double x, double multiplier, double reciprocal, std::int32_t& whole) {
    const double magnitude = std::fabs(x * reciprocal);
    constexpr double kMargin = 1.0 / 1048576.0;
    if (magnitude < 1e9) {
        const auto cut = static_cast<std::int32_t>(magnitude);
        const double fraction = magnitude - cut;
        if (fraction > kMargin && fraction < 1.0 - kMargin) {
            whole = x < 0.0 ? -cut : cut;
            return true;
        }
    }
    const double quotient = x / multiplier;
    if (!(std::fabs(quotient) < 1e9)) return false;
    whole = static_cast<std::int32_t>(quotient);
    return true;
}

// WriteSmall's fraction when its numbers are below 1e9: the whole number
// and the numerator cut toward zero, the denominator a power of two.
Result WriteFraction(std::int32_t whole, std::int32_t numerator, std::uint32_t denominator,
                     char16_t* buffer, std::size_t size, const NumberSettings& settings) {
    std::size_t at = 0;
    // A value below one has no "0" in front of its fraction; 0 itself has its "0".
    if (numerator == 0 || whole != 0) {
        const Result written = settings.RenderWhole(Magnitude(whole), whole < 0, buffer, size,
                                                    RenderMode::WholeNumber);
        if (!written.Ok()) return written;
        at = written.length;
        if (numerator == 0) return written;
        if (at >= size) return Result::Fail();
        buffer[at++] = u' ';
    }
    // The sign stands once, at the whole number.
    const bool negative = numerator < 0 && whole >= 0;
    std::uint32_t magnitude = Magnitude(numerator);
    const int twos = __builtin_ctz(magnitude);
    magnitude >>= twos;
    denominator >>= twos;
    Result written =
        settings.RenderWhole(magnitude, negative, buffer + at, size - at, RenderMode::WholeNumber);
    if (!written.Ok()) return written;
    at += written.length;
    if (at >= size) return Result::Fail();
    buffer[at++] = u'/';
    written =
        settings.RenderWhole(denominator, false, buffer + at, size - at, RenderMode::WholeNumber);
    if (!written.Ok()) return written;
    return Result::Done(at + written.length);
}

}  // namespace

struct PrimeDoublePrimeSymbol::Start {
    double x;            // the value in the unit, nudged away from zero
    double denominator;  // D: 2 to the power of the decimal digits
    unsigned largeMode;  // of the large number
};

PrimeDoublePrimeSymbol::PrimeDoublePrimeSymbol(const char16_t* text, int id,
                                               const UnitConverter& converter, unsigned options)
    : GenericSymbol(text, id & static_cast<int>(UnitId::UnitMask), converter, 0),
      symbolId(id),
      factor(converter.GetFactor()),
      pureScale(!converter.HasOffset()),
      multiplier(Unit() == kInch ? 12.0 : 60.0),
      reciprocal(1.0 / multiplier),
      showFeet((options & ShowLarge) != 0 ? 1 : 0),
      showFraction((options & ShowFraction) != 0 ? 1 : 0),
      showDash((options & ShowDash) != 0 ? 1 : 0) {}

inline Result PrimeDoublePrimeSymbol::Begin(double value, const Dimensions& dims,
                                            const NumberSettings& settings, Start& start) const {
    // What the converter's DirectFromBase gives.
    double x = 0.0;
    const UnitConverter& converter = GetConverter();
    if (!SameDimensions(dims, converter.GetDimensions()))
        return Result::Fail(ErrorCode::UnitMismatch);
    if (pureScale) {
        x = value / factor;
    } else {
        converter.DirectFromBase(value, dims, x);
    }
    // The sign of -0.5 feet survives in front of a large number of 0.
    start.largeMode = RenderMode::WholeNumber | (x < 0.0 ? RenderMode::SignOnZero : 0u);
    const int digits = settings.GetNumberDecimalDigits();
    start.denominator = PowerOfTwo(digits);
    // A fraction rounds to nearest, ties away from zero, before the split, so
    // that its carry reaches the large number. Decimals get only a tiny push
    // and RenderNumber rounds the small number alone: "5′12.00″" can occur.
    double amount = 0.0;
    if (showFraction) {
        amount = PowerOfTwo(-1 - digits);  // 0.5 / denominator
    } else {
        double power = 1.0;
        for (int i = 0; i < digits; ++i) power *= 10.0;
        amount = 1.0 / (power * 100000.0 * 2.0);
    }
    start.x = __builtin_expect(x > 0.0, 1) ? x + amount : x - amount;
    return Result::Done(0);
}

inline Result PrimeDoublePrimeSymbol::WriteSmall(const Start& start, double x, char16_t* buffer,
                                                 std::size_t size,
                                                 const NumberSettings& settings) const {
    if (!showFraction) return settings.RenderNumber(x, buffer, size, 0);
    double denominator = start.denominator;
    // The usual numbers go as integers: the same cuts, without the
    // conversions back and forth. A zero without its sign takes nothing from
    // x.
    if (std::fabs(x) < 1e9 && denominator <= kWholeDenominator) {
        const auto whole = static_cast<std::int32_t>(x);
        const double scaled = (x - whole) * denominator;
        return WriteFraction(whole, static_cast<std::int32_t>(scaled),
                             static_cast<std::uint32_t>(denominator), buffer, size, settings);
    }
    const double whole = Truncate(x);
    double numerator = Truncate((x - whole) * denominator);
    std::size_t at = 0;
    // A value below one has no "0" in front of its fraction; 0 itself has its "0".
    if (numerator == 0.0 || whole != 0.0) {
        const Result written = settings.RenderNumber(whole, buffer, size, RenderMode::WholeNumber);
        if (!written.Ok()) return written;
        at = written.length;
        if (numerator == 0.0) return written;
        if (at >= size) return Result::Fail();
        buffer[at++] = u' ';
    }
    // The sign stands once, at the whole number.
    if (whole < 0.0 && numerator < 0.0) numerator = -numerator;
    Reduce(numerator, denominator);
    Result written =
        settings.RenderNumber(numerator, buffer + at, size - at, RenderMode::WholeNumber);
    if (!written.Ok()) return written;
    at += written.length;
    if (at >= size) return Result::Fail();
    buffer[at++] = u'/';
    written = settings.RenderNumber(denominator, buffer + at, size - at, RenderMode::WholeNumber);
    if (!written.Ok()) return written;
    return Result::Done(at + written.length);
}

Result PrimeDoublePrimeSymbol::Render(double value, const Dimensions& dims, char16_t* buffer,
                                      std::size_t size, const NumberSettings& settings) const {
    if (buffer == nullptr) return Result::Fail();
    Start start;
    if (const Result begun = Begin(value, dims, settings, start); !begun.Ok()) return begun;
    double x = start.x;
    std::size_t at = 0;
    if (showFeet) {
        double large = 0.0;
        Result written;
        std::int32_t whole = 0;
        if (WholeQuotient(x, multiplier, reciprocal, whole)) {
            // As an integer; a zero without its sign takes nothing from x.
            large = whole;
            written =
                settings.RenderWhole(Magnitude(whole), whole < 0, buffer, size, start.largeMode);
        } else {
            large = Truncate(x / multiplier);
            written = settings.RenderNumber(large, buffer, size, start.largeMode);
        }
        if (!written.Ok()) return written;
        at = written.length;
        if (size - at < (showDash ? 2u : 1u)) return Result::Fail();
        buffer[at++] = kPrime;
        if (showDash) buffer[at++] = kEnDash;
        x = x - large * multiplier;
        if (__builtin_expect(x < 0.0, 0)) x = -x;
    }
    const Result written = WriteSmall(start, x, buffer + at, size - at, settings);
    if (!written.Ok()) return written;
    at += written.length;
    if (size - at < 2) return Result::Fail();
    buffer[at++] = kDoublePrime;
    buffer[at] = 0;
    return Result::Done(at);
}

Result PrimeDoublePrimeSymbol::RenderPart(int part, double value, const Dimensions& dims,
                                          char16_t* buffer, std::size_t size,
                                          const NumberSettings& settings) const {
    if (buffer == nullptr) return Result::Fail();
    Start start;
    if (const Result begun = Begin(value, dims, settings, start); !begun.Ok()) return begun;
    double x = start.x;
    if (showFeet) {
        const double large = Truncate(x / multiplier);
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

ErrorCode PrimeDoublePrimeSymbol::ParsePart(SymbolList& list, int form) const {
    const int count = LastPartIndex(form) + 1;
    if (count < 1) return ErrorCode::ParseFailure;
    double numbers[4] = {};
    SymbolList::iterator it = list.begin();
    for (int i = 0; i < count; ++i, ++it) {
        if (it == list.end() || it.symbol()->AsNumber() == nullptr) return ErrorCode::ParseFailure;
        numbers[i] = it.symbol()->AsNumber()->value;
    }
    const double a = numbers[0], b = numbers[1], c = numbers[2], e = numbers[3];
    // A negative zero in front counts as plus: "-0", "6" is plus 6 inches.
    const bool negative = a < 0.0;
    double total = 0.0;
    if (showFeet) {
        double magnitude = 0.0;
        if (form == 0) {
            magnitude = std::fabs(b);
        } else if (form == 1) {
            if (c == 0.0) return ErrorCode::ParseFailure;
            magnitude = std::fabs(b / c);
        } else {
            if (e == 0.0) return ErrorCode::ParseFailure;
            magnitude = std::fabs(c / e + b);
        }
        total = Combine(a * multiplier, negative, magnitude);
    } else if (form == 0) {
        total = a;
    } else if (form == 1) {
        if (b == 0.0) return ErrorCode::ParseFailure;
        total = a / b;
    } else {
        if (c == 0.0) return ErrorCode::ParseFailure;
        total = Combine(a, negative, std::fabs(b / c));
    }
    const UnitConverter& converter = GetConverter();
    double base = 0.0;
    if (converter.DirectToBase(total, base, converter.GetDimensions()) != ErrorCode::Success)
        return ErrorCode::ParseFailure;
    const SymbolList::iterator head = list.begin();
    list.Replace<ResultSymbol>(head, converter.GetDimensions(), base);
    list.Erase(head.next(), it);
    return ErrorCode::Success;
}

ErrorCode PrimeDoublePrimeSymbol::MakeCustomSymbols(CustomSymbolList& out,
                                                    const std::vector<std::u16string>& literals,
                                                    const std::vector<int>& indices) const {
    out.clear();
    if (AppendCustomSymbol(out, this, literals, indices, 0) != ErrorCode::Success) {
        return ErrorCode::Failure;
    }
    if (!showFraction) return ErrorCode::Success;
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
    if (AppendCustomSymbol(out, this, one, oneIndices, 1) != ErrorCode::Success ||
        AppendCustomSymbol(out, this, two, twoIndices, 2) != ErrorCode::Success) {
        out.clear();
        return ErrorCode::Failure;
    }
    return ErrorCode::Success;
}

}  // namespace Mensura
