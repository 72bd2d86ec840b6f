// The everyday forms as rewrites of the scanned list.
#include "notations/everyday_forms.h"

#include <cmath>

#include "base/ids.h"
#include "base/number_flags.h"
#include "notations/compound.h"
#include "notations/feet_inches.h"

namespace Mensura::EverydayForms {

namespace {

bool IsSpace(SymbolList::iterator at) {
    return at.symbol()->Kind() == ParseKind::Space;
}

// The next element from `at` on that is no blank.
SymbolList::iterator SkipSpaces(SymbolList& list, SymbolList::iterator at) {
    while (at != list.end() && IsSpace(at)) ++at;
    return at;
}

// A number written with digits alone: no sign, point or exponent.
bool IsWholeNumber(const NumberSymbol* number) {
    constexpr std::uint32_t kOther = NumberFlags::PlusSign | NumberFlags::MinusSign |
                                     NumberFlags::PointSeen | NumberFlags::ExponentDigits;
    return number != nullptr && (number->flags & kOther) == 0;
}

// What may end a quantity: a unit, or an operator that leaves one behind.
bool EndsQuantity(const IParseSymbol* symbol) {
    switch (symbol->Kind()) {
        case ParseKind::Operand:
        case ParseKind::Linear:
        case ParseKind::Square:
        case ParseKind::Cubic:
        case ParseKind::RightParenthesis:
            return true;
        default:
            return false;
    }
}

bool StartsUnit(const IParseSymbol* symbol) {
    const ParseKind kind = symbol->Kind();
    return kind == ParseKind::Operand || kind == ParseKind::Linear;
}

}  // namespace

bool MarkCompactBearing(SymbolList& list, const BearingMarks& marks) {
    // Without its blanks the list must be: N or S, one to three numbers, E or W.
    const IParseSymbol* from = nullptr;
    const IParseSymbol* to = nullptr;
    const NumberSymbol* parts[3] = {};
    int count = 0;
    for (auto at = list.begin(); at != list.end(); ++at) {
        if (IsSpace(at)) continue;
        const IParseSymbol* symbol = at.symbol();
        const ParseKind kind = symbol->Kind();
        if (from == nullptr) {
            if (kind != ParseKind::North && kind != ParseKind::South) return false;
            from = symbol;
        } else if (const NumberSymbol* number = symbol->AsNumber()) {
            if (to != nullptr || count == 3) return false;
            // The first number stands on its own, the others behind a dash
            // that the scanner read as their minus sign.
            const std::uint32_t sign = count == 0 ? 0 : NumberFlags::MinusSign;
            if ((number->flags & (NumberFlags::PlusSign | NumberFlags::MinusSign)) != sign) {
                return false;
            }
            if (count > 0 && (parts[count - 1]->flags & NumberFlags::PointSeen)) return false;
            parts[count++] = number;
        } else if (kind == ParseKind::East || kind == ParseKind::West) {
            if (to != nullptr || count == 0) return false;
            to = symbol;
        } else {
            return false;
        }
    }
    if (to == nullptr) return false;

    // Rewritten in place: the blanks go, each number loses its dash and
    // takes its mark behind it.
    const IParseSymbol* partMarks[3] = {marks.degree, marks.prime, marks.doublePrime};
    int index = 0;
    for (auto at = list.begin(); at != list.end();) {
        if (IsSpace(at)) {
            at = list.Erase(at);
            continue;
        }
        if (const NumberSymbol* number = at.symbol()->AsNumber()) {
            list.Replace<NumberSymbol>(at, std::fabs(number->value),
                                       number->flags & ~NumberFlags::MinusSign);
            ++at;
            list.Insert(at, partMarks[index++]);
            continue;
        }
        ++at;
    }
    return true;
}

void JoinMixedNumbers(SymbolList& list) {
    for (auto at = list.begin(); at != list.end(); ++at) {
        // The fraction: whole number, "/", whole number, then a unit.
        const NumberSymbol* numerator = at.symbol()->AsNumber();
        if (!IsWholeNumber(numerator)) continue;
        auto slash = at.next();
        if (slash == list.end() || slash.symbol()->Kind() != ParseKind::Division) continue;
        auto under = slash.next();
        if (under == list.end()) continue;
        const NumberSymbol* denominator = under.symbol()->AsNumber();
        if (!IsWholeNumber(denominator) || denominator->value == 0.0) continue;
        const auto unit = SkipSpaces(list, under.next());
        if (unit == list.end() || !StartsUnit(unit.symbol())) continue;
        // A number and a blank in front make it a mixed number.
        double value = numerator->value / denominator->value;
        std::uint32_t flags = NumberFlags::IntegerDigits | NumberFlags::PointSeen;
        auto first = at;
        if (at != list.begin() && IsSpace(at.previous()) && at.previous() != list.begin()) {
            const auto whole = at.previous().previous();
            const NumberSymbol* number = whole.symbol()->AsNumber();
            if (number != nullptr && !(number->flags & NumberFlags::PointSeen)) {
                const bool negative = (number->flags & NumberFlags::MinusSign) != 0;
                value = negative ? number->value - value : number->value + value;
                flags |= number->flags & NumberFlags::MinusSign;
                first = whole;
            }
        }
        list.Replace<NumberSymbol>(first, value, flags);
        list.Erase(first.next(), under.next());
        at = first;
    }
}

ErrorCode ReadSum(SymbolList& list, const Dimensions& dimensions, double& value) {
    // A part begins with a number that follows the end of a quantity.
    int parts = 1;
    const IParseSymbol* last = nullptr;
    for (auto at = list.begin(); at != list.end(); ++at) {
        if (IsSpace(at)) continue;
        if (at.symbol()->AsNumber() != nullptr && last != nullptr && EndsQuantity(last)) ++parts;
        last = at.symbol();
    }
    if (parts < 2) return ErrorCode::Failure;
    // A temperature on a scale has an offset: two of them make no sum.
    if (SameDimensions(dimensions, Dimensions{0, 0, 0, 0, 1, 0, 0})) return ErrorCode::ParseFailure;

    double total = 0.0;
    bool negative = false;
    SymbolList part;
    auto at = list.begin();
    for (int index = 0; index < parts; ++index) {
        part.Clear();
        last = nullptr;
        for (; at != list.end(); ++at) {
            const IParseSymbol* symbol = at.symbol();
            if (symbol->AsNumber() != nullptr && last != nullptr && EndsQuantity(last)) break;
            if (const NumberSymbol* number = symbol->AsNumber()) {
                if (index > 0 && part.empty() && (number->flags & NumberFlags::MinusSign)) {
                    return ErrorCode::ParseFailure;  // only the first part carries a sign
                }
                if (index == 0 && part.empty()) {
                    negative = (number->flags & NumberFlags::MinusSign) != 0;
                }
                part.PushBackNew<NumberSymbol>(number->value, number->flags);
            } else if (list.Owns(at)) {
                return ErrorCode::ParseFailure;  // a scan owns its numbers alone
            } else {
                part.PushBack(symbol);
            }
            if (!IsSpace(at)) last = symbol;
        }
        double amount = 0.0;
        if (EvaluateList(part, dimensions) != ErrorCode::Success ||
            ReadResult(part, amount, dimensions) != ErrorCode::Success) {
            return ErrorCode::ParseFailure;
        }
        total = index == 0 ? amount : (negative ? total - amount : total + amount);
    }
    value = total;
    return ErrorCode::Success;
}

namespace {

bool IsMinus(const ScannedNumber& number) {
    return (number.flags & NumberFlags::MinusSign) != 0;
}

}  // namespace

ErrorCode ReadCompactBearing(bool north, const ScannedNumber* parts, int count, bool west,
                             const Dimensions& dimensions, double& value) {
    if (count < 1 || count > 3) return ErrorCode::Failure;
    for (int index = 0; index < count; ++index) {
        const std::uint32_t sign = index == 0 ? 0 : NumberFlags::MinusSign;
        if ((parts[index].flags & (NumberFlags::PlusSign | NumberFlags::MinusSign)) != sign) {
            return ErrorCode::Failure;
        }
        if (index > 0 && (parts[index - 1].flags & NumberFlags::PointSeen)) {
            return ErrorCode::Failure;
        }
    }
    // The marks read an angle alone.
    if (!SameDimensions(dimensions, Dimensions{})) return ErrorCode::ParseFailure;
    // "N d°m′s″ E", each number without its dash: the degree mark takes the
    // minutes in, the prime turns them into seconds of arc and takes the
    // seconds in; the letter then counts from north or south.
    using CompoundMarks::Combine;
    const double degrees = std::fabs(parts[0].value);
    double seconds = 0.0;
    if (count == 1) {
        seconds = degrees * 60.0 * 60.0;
    } else {
        seconds = Combine(degrees * 60.0, false, std::fabs(parts[1].value)) * 60.0;
        if (count == 3) seconds = Combine(seconds, false, std::fabs(parts[2].value));
    }
    double turned = 0.0;
    return CompoundMarks::TurnBearing(seconds, north, west, turned) &&
                   CompoundMarks::AmountToBase(turned, kAngleSecond, dimensions, value)
               ? ErrorCode::Success
               : ErrorCode::ParseFailure;
}

ErrorCode ReadFractionBeforeDoublePrime(const ScannedNumber* large, const ScannedNumber* whole,
                                        int numerator, int denominator,
                                        const Dimensions& dimensions, double& value) {
    // What the marks mean for the target: inches and feet for a length,
    // seconds and minutes of time or of arc.
    Marks marks;
    if (!Marks::For(dimensions, marks)) return ErrorCode::ParseFailure;
    using CompoundMarks::Combine;
    const double n = numerator;
    const double d = denominator;
    double total = 0.0;
    if (large != nullptr) {
        // The prime turns the large number into the small unit, and the
        // double prime adds the rest with its sign.
        const double rest =
            whole != nullptr ? std::fabs(whole->value) + std::fabs(n) / d : std::fabs(n) / d;
        total = Combine(large->value * marks.multiplier, IsMinus(*large), rest);
    } else if (whole != nullptr) {
        total = Combine(whole->value, IsMinus(*whole), std::fabs(n) / d);
    } else {
        total = n / d;
    }
    return CompoundMarks::AmountToBase(total, marks.small, dimensions, value)
               ? ErrorCode::Success
               : ErrorCode::ParseFailure;
}

}  // namespace Mensura::EverydayForms
