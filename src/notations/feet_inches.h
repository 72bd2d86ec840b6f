// The compound notation of two sizes of one quantity, written once with a
// prime and a double prime: feet and inches ("5′-6 1/2″"), minutes and seconds
// of time, minutes and seconds of arc. Reading and writing stand together:
//
// Reading. The typed marks are symbols of the parse dictionary. The target
// decides what the two marks mean. They do their work in the second pass,
// reading the numbers and the "/" around them directly: this is the one
// place where numbers are added or divided.
//
// Writing. The patterns of a large and a small number between a prime and a
// double prime: feet and inches ("5′6 1/4″"), minutes and seconds of time
// ("5′30.00″"). Through a symbol string they read as well, in up to three
// forms:
//
//   form 0  the numbers of the rendering        "{0} ft {1} in"  5 ft 6 in
//   form 1  the small number as a fraction      (made from it)   5 ft 1/4 in
//   form 2  a whole number and a fraction       (made from it)   5 ft 6 1/4 in
//
// Forms 1 and 2 exist only for the patterns with fractions.
#ifndef MENSURA_NOTATIONS_FEET_INCHES_H
#define MENSURA_NOTATIONS_FEET_INCHES_H

#include <cstdint>

#include "grammar/parse_symbol.h"
#include "notations/compound.h"
#include "notations/format_symbol.h"

namespace Mensura {

// What the two marks mean for a target: feet and inches for a length, minutes
// and seconds for a time, minutes and seconds of arc for a pure number.
struct Marks {
    double multiplier;  // from the large mark to the small one, in the text's numbers
    int large;          // the unit of the large mark alone
    int small;          // the unit of the small mark

    // Length, time, then a pure number: false for a target of none of them.
    static bool For(const Dimensions& dimensions, Marks& marks);
};

// ′ and its look-alikes: the large mark (feet, minutes).
class PrimeSymbol final : public IParseSymbol {
public:
    PrimeSymbol() : IParseSymbol(FirstPassSteps{}, ParseKind::Prime) {}
    ErrorCode Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                       const Dimensions& dimensions) const override;

private:
    ErrorCode Read(SymbolList& list, SymbolList::iterator& position, const Marks& marks,
                   const Dimensions& dimensions) const;
};

// ″ and its look-alikes: the small mark (inches, seconds), which totals the line.
class DoublePrimeSymbol final : public IParseSymbol {
public:
    DoublePrimeSymbol() : IParseSymbol(FirstPassSteps{}, ParseKind::DoublePrime) {}
    ErrorCode Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                       const Dimensions& dimensions) const override;

private:
    ErrorCode Read(SymbolList& list, SymbolList::iterator& position, const Marks& marks,
                   const Dimensions& dimensions) const;
};

// A dash: between the two parts ("5′–6″"), or a product between two units
// ("kg-m"). Nothing else.
class DashSymbol final : public IParseSymbol {
public:
    DashSymbol() : IParseSymbol(ParseKind::Dash) {}
    ErrorCode Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                       const Dimensions& dimensions) const override;
};

// Typed texts of the marks read without the list: the tokens that the scan
// makes of the text, laid out by the first pass and read by the marks with
// the same arithmetic in the same order as the evaluation. Each function
// declines (false) whatever it does not read, and the list then reads it.
namespace TypedMarks {

// A typed text laid out place by place as the scan finds it, with the work
// of the first pass done on the way: blanks go, there being no unit among
// the marks for them to join; a dash goes between a prime and a number,
// blanks aside, and refuses anywhere else; for an angle "d" is the degree
// mark. The degree mark and the letters are declined for any other target,
// where the letters stand for units or are dropped and the mark refuses.
class Layout {
public:
    explicit Layout(const Dimensions& target) : angleTarget(SameDimensions(target, Dimensions{})) {}

    // False when the text has more places than the marks read.
    bool AddNumber(double value, std::uint32_t flags) {
        if (count == CompoundMarks::kMostTypedTokens) return false;
        tokens[count++] = {ParseKind::Number, flags, value};
        dash = false;
        return true;
    }
    // False for a symbol that the marks do not read where it stands.
    bool AddSymbol(ParseKind kind) {
        if (kind == ParseKind::Space) return true;
        // A dash waits for its number; the places are few.
        if (dash || count == CompoundMarks::kMostTypedTokens) return false;
        switch (kind) {
            case ParseKind::Dash:
                dash = true;
                return count > 0 && tokens[count - 1].kind == ParseKind::Prime;
            case ParseKind::Division:
            case ParseKind::Prime:
            case ParseKind::DoublePrime:
                break;
            case ParseKind::D:
                kind = ParseKind::Degree;
                [[fallthrough]];
            case ParseKind::Degree:
            case ParseKind::North:
            case ParseKind::East:
            case ParseKind::South:
            case ParseKind::West:
                if (!angleTarget) return false;
                angle = true;
                break;
            default:
                return false;
        }
        tokens[count++].kind = kind;  // a symbol's number fields are never read
        return true;
    }

    // Whether a degree mark or a letter was laid out: an angle's text.
    bool Angle() const { return angle; }
    // Whether the text ended with no dash waiting for its number.
    bool Complete() const { return !dash; }
    CompoundMarks::TypedToken* Tokens() { return tokens; }
    std::size_t Count() const { return count; }

private:
    CompoundMarks::TypedToken tokens[CompoundMarks::kMostTypedTokens];
    std::size_t count = 0;
    bool angleTarget;
    bool angle = false;
    bool dash = false;
};

// What the two marks make of a laid-out line of numbers, "/" and marks that
// stands at the start of the list: an amount of the large or the small
// mark's unit; or, when a bearing's letter follows, the seconds of arc that
// the letter takes (unit 0).
struct Amount {
    double value;
    int unit;
};
bool ReadLine(const CompoundMarks::TypedToken* line, std::size_t count, bool letter,
              const Marks& marks, Amount& amount);

// A text of numbers, "/" and the two marks, laid out for `dimensions`: its
// value in base units of them.
bool Read(Layout& layout, const Dimensions& dimensions, double& value);

}  // namespace TypedMarks

class PrimeDoublePrimeSymbol final : public GenericSymbol {
public:
    // The options: which parts show.
    static constexpr unsigned ShowLarge = 1;     // the large number and the prime
    static constexpr unsigned ShowFraction = 2;  // the small number as a fraction
    static constexpr unsigned ShowDash = 4;      // a dash behind the prime

    // `symbolId` is the whole id with its symbol number; its unit, the low 20
    // bits, is the inch or the second, and the small number's unit, and
    // `converter` is that unit's. The large number counts 12 of them for the
    // inch and 60 otherwise.
    PrimeDoublePrimeSymbol(const char16_t* text, int symbolId, const UnitConverter& converter,
                           unsigned options);

    // The large number (cut toward zero, with a sign even when it is 0), the
    // prime, the dash when asked for, the small number and the double prime.
    // Decimals: the small number by the settings. Fractions: the decimal
    // digits d choose the finest, 1/2^d, rounded to nearest and reduced.
    Result Render(double value, const Dimensions& dims, char16_t* buffer, std::size_t size,
                  const NumberSettings& settings) const override;
    // The large number is part 0, any other part the small one: the bare
    // numbers, with one blank between a whole number and its fraction. Without
    // a large number every part is the small one.
    Result RenderPart(int part, double value, const Dimensions& dims, char16_t* buffer,
                      std::size_t size, const NumberSettings& settings) const override;
    // Reads the numbers of one form at the head of the list, in part order,
    // into one result.
    ErrorCode ParsePart(SymbolList& list, int form) const override;
    int LastPartIndex(int form) const override;
    // Form 0 from the string as it stands; with fractions, forms 1 and 2 too.
    ErrorCode MakeCustomSymbols(CustomSymbolList& out, const std::vector<std::u16string>& literals,
                                const std::vector<int>& indices) const override;

    int SymbolId() const { return symbolId; }

private:
    struct Start;
    // The steps that Render and RenderPart share: the value in the unit,
    // nudged away from zero. UnitMismatch for other dimensions.
    Result Begin(double value, const Dimensions& dims, const NumberSettings& settings,
                 Start& start) const;
    // The small number: decimals, or a whole number and a reduced fraction.
    Result WriteSmall(const Start& start, double x, char16_t* buffer, std::size_t size,
                      const NumberSettings& settings) const;

    int symbolId;
    // The converter's factor, read with the symbol rather than through the
    // converter: a rendering waits for it before all else. Used where the
    // converter is a pure scale, as the inch, the second and the minute of
    // arc are.
    double factor;
    bool pureScale;
    // The small units in a large one, 12 for the inch and 60 otherwise, and
    // its reciprocal, rounded.
    double multiplier;
    double reciprocal;
    std::uint8_t showFeet;
    std::uint8_t showFraction;
    std::uint8_t showDash;
};

}  // namespace Mensura

#endif  // MENSURA_NOTATIONS_FEET_INCHES_H
