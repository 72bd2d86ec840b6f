// What the compound notations share: the marks written between numbers, the
// renderers' failure result, the split of a number into its parts, and the
// rule that puts the parts of a value written once back together.
#ifndef MENSURA_NOTATIONS_COMPOUND_H
#define MENSURA_NOTATIONS_COMPOUND_H

#include <cmath>
#include <cstddef>
#include <cstdint>

#include "base/dimensions.h"
#include "grammar/parse_symbol.h"
#include "mensura/mensura.hpp"
#include "units/unit_table.h"

namespace Mensura::CompoundMarks {

constexpr char16_t kPrime = u'\u2032';
constexpr char16_t kDoublePrime = u'\u2033';

// The integer part of x, cut toward zero.
inline double WholePart(double x) {
    double whole = 0.0;
    std::modf(x, &whole);
    return whole;
}

// What is left of x behind its integer part, with the sign of x.
inline double Fraction(double x) {
    double whole = 0.0;
    return std::modf(x, &whole);
}

// A value written once in parts ("-5′6″", "-5°30′"): the sign of the leading
// number holds for every part behind it, whose magnitude `rest` goes with it.
// Who decides `negative` differs: a typed text asks its minus sign, so that
// "-0′6″" is minus; a symbol string asks the value, so that a negative zero
// in front reads as plus.
inline double Combine(double leading, bool negative, double rest) {
    return negative ? leading - rest : leading + rest;
}

// A bearing: `seconds` of arc turned from north or south toward east or
// west, as seconds of arc anticlockwise from east, in `turned`. False when
// they lie outside the quarter turn, the most that a bearing may turn.
inline bool TurnBearing(double seconds, bool fromNorth, bool west, double& turned) {
    constexpr double kQuarterTurn = 324000.0;  // 90 degrees in seconds of arc
    if (seconds < 0.0 || seconds > kQuarterTurn) return false;
    if (west) {
        turned = fromNorth ? seconds + kQuarterTurn : -kQuarterTurn - seconds;
    } else {
        turned = fromNorth ? kQuarterTurn - seconds : seconds - kQuarterTurn;
    }
    return true;
}

// `amount` of `unit` in base units of `dimensions`: false when the unit's
// exponents are not the target's.
inline bool AmountToBase(double amount, int unit, const Dimensions& dimensions, double& base) {
    const UnitConverter* converter = UnitTable::Instance().FindConverter(unit);
    return converter->DirectToBase(amount, base, dimensions) == ErrorCode::Success;
}

// The whole list becomes one result, `amount` of `unit`, in its first element,
// and the engine stops at the end. ParseFailure when the unit's exponents are
// not the target's.
inline ErrorCode Finish(SymbolList& list, SymbolList::iterator& position, double amount, int unit,
                        const Dimensions& dimensions) {
    double base = 0.0;
    if (!AmountToBase(amount, unit, dimensions, base)) return ErrorCode::ParseFailure;
    list.Replace<ResultSymbol>(list.begin(), dimensions, base);
    list.EraseToEnd(list.begin().next());
    position = list.end();
    return ErrorCode::Success;
}

// One place of a typed text as the scan lays it out: a number with what the
// scanner saw in it, or a symbol of the dictionary by its kind. The marks
// read a short text of them without building the list (TypedMarks::Read,
// TypedAngles::Read); the driver scans the text into them.
struct TypedToken {
    ParseKind kind;
    std::uint32_t flags;  // of a number; a symbol leaves both unset
    double value;         // of a number
};

// The most tokens that a typed text of marks can have that reads: a bearing
// of degrees, minutes and seconds with a fraction and a blank at each place
// stays well below it.
constexpr std::size_t kMostTypedTokens = 20;

}  // namespace Mensura::CompoundMarks

#endif  // MENSURA_NOTATIONS_COMPOUND_H
