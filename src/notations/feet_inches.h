// The compound notation of two sizes of one quantity: feet and inches
// ("5′-6 1/2″"), minutes and seconds of time, minutes and seconds of arc. The
// target decides what the two marks mean. They do their work in the second
// pass, reading the numbers and the "/" around them directly: this is the one
// place where numbers are added or divided.
#ifndef MENSURA_PARSING_FEET_INCHES_H
#define MENSURA_PARSING_FEET_INCHES_H

#include "grammar/parse_symbol.h"

namespace Mensura {

// What the two marks mean for a target: feet and inches for a length, minutes
// and seconds for a time, minutes and seconds of arc for a pure number.
struct Marks {
    double multiplier;  // from the large mark to the small one, in the text's numbers
    int large;          // the unit of the large mark alone
    int small;          // the unit of the small mark
};

// ′ and its look-alikes: the large mark (feet, minutes).
class PrimeSymbol final : public IParseSymbol {
public:
    ParseKind Kind() const override { return ParseKind::Prime; }
    int Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                 const Dimensions& dimensions) const override;

private:
    int Read(SymbolList& list, SymbolList::iterator& position, const Marks& marks,
             const Dimensions& dimensions) const;
};

// ″ and its look-alikes: the small mark (inches, seconds), which totals the line.
class DoublePrimeSymbol final : public IParseSymbol {
public:
    ParseKind Kind() const override { return ParseKind::DoublePrime; }
    int Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                 const Dimensions& dimensions) const override;

private:
    int Read(SymbolList& list, SymbolList::iterator& position, const Marks& marks,
             const Dimensions& dimensions) const;
};

// A dash: between the two parts ("5′–6″"), or a product between two units
// ("kg-m"). Nothing else.
class DashSymbol final : public IParseSymbol {
public:
    ParseKind Kind() const override { return ParseKind::Dash; }
    int Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                 const Dimensions& dimensions) const override;
};

}  // namespace Mensura

#endif  // MENSURA_PARSING_FEET_INCHES_H
