// The forms that only the everyday reading knows, as rewrites of a scanned
// list: a compact bearing ("N45-30E"), a mixed number before a unit
// ("1 1/2 in"), and a sum of quantities of one kind ("5 ft 6 in"). Each
// rewrite leaves a list it does not recognise as it was.
#ifndef MENSURA_NOTATIONS_EVERYDAY_FORMS_H
#define MENSURA_NOTATIONS_EVERYDAY_FORMS_H

#include <cstdint>

#include "base/dimensions.h"
#include "base/number_flags.h"
#include "grammar/parse_symbol.h"

namespace Mensura::EverydayForms {

// The marks that a compact bearing is written without.
struct BearingMarks {
    const IParseSymbol* degree;
    const IParseSymbol* prime;
    const IParseSymbol* doublePrime;
};

// A bearing with its degrees, minutes and seconds set apart by dashes and
// no marks: "N45-30E", "S 12-30-15 W", "N45.5E", "S30W". Puts the marks in,
// so that the list reads as "N45°30′E". True when it did.
bool MarkCompactBearing(SymbolList& list, const BearingMarks& marks);

// "1 1/2 in", "1/2 in", "-2 3/4 ft": a whole number and a fraction of two
// whole numbers, or the fraction alone, in front of a unit symbol become one
// number. The feet and inch marks read their own fractions and are left to
// them.
void JoinMixedNumbers(SymbolList& list);

// A sum of quantities of one kind, each a number with its units: "5 ft 6 in",
// "1 h 30 min", "-2 lb 3 oz" (the sign of the first holds for the whole).
// Failure when the list holds one quantity or none; else Success with the
// total in base units of `dimensions`, or ParseFailure when a part does not
// read as a value of them. Temperatures on a scale do not add.
ErrorCode ReadSum(SymbolList& list, const Dimensions& dimensions, double& value);

// The same forms read without a list, from parts that the caller has scanned:
// each gives what the rewrites above and the evaluation of the list give,
// to the bit.

// A number as the scanner read it.
struct ScannedNumber {
    double value;
    std::uint32_t flags;
};

// One quantity of a sum: a number and a unit symbol of the kind Operand.
struct SumPart {
    ScannedNumber number;
    const OperandSymbol* unit;
};

// Quantities one after another: the one alone, or their sum as ReadSum
// reads it. Success with the value in base units of `dimensions`, else
// ParseFailure. Inline: most texts hold one quantity.
inline ErrorCode AddQuantities(const SumPart* parts, int count, const Dimensions& dimensions,
                               double& value) {
    if (count < 1) return ErrorCode::ParseFailure;
    if (count > 1 && SameDimensions(dimensions, Dimensions{0, 0, 0, 0, 1, 0, 0})) {
        return ErrorCode::ParseFailure;
    }
    const bool negative = (parts[0].number.flags & NumberFlags::MinusSign) != 0;
    double total = 0.0;
    for (int index = 0; index < count; ++index) {
        const SumPart& part = parts[index];
        if (index > 0 && (part.number.flags & NumberFlags::MinusSign)) {
            return ErrorCode::ParseFailure;
        }
        // The number joins its unit, and the result must be of the target's
        // exponents.
        double amount = 0.0;
        if (part.unit->GetConverter().DirectToBase(part.number.value, amount, dimensions) !=
            ErrorCode::Success) {
            return ErrorCode::ParseFailure;
        }
        total = index == 0 ? amount : (negative ? total - amount : total + amount);
    }
    value = total;
    return ErrorCode::Success;
}

// A compact bearing: N (north) or S, one to three numbers, E or W (west).
// Failure, with nothing written, where MarkCompactBearing leaves the list
// alone; else what the marks that it puts in make of it: Success with the
// angle in base units of `dimensions`, or ParseFailure.
ErrorCode ReadCompactBearing(bool north, const ScannedNumber* parts, int count, bool west,
                             const Dimensions& dimensions, double& value);

// A vulgar fraction before the double prime, as the scan lays it out: "½″",
// "6½″" (a whole number in front) and "5′6½″", "5′½″" (a large number and
// its prime in front). Null for a number that is not there. Success with
// the value in base units of `dimensions`, else ParseFailure.
ErrorCode ReadFractionBeforeDoublePrime(const ScannedNumber* large, const ScannedNumber* whole,
                                        int numerator, int denominator,
                                        const Dimensions& dimensions, double& value);

}  // namespace Mensura::EverydayForms

#endif  // MENSURA_NOTATIONS_EVERYDAY_FORMS_H
