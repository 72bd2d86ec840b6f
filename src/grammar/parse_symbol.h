// The parse side of symbols: every element of a SymbolList is an
// IParseSymbol, and the evaluation lets each one rewrite the list around it.
//
// Symbols of the catalogue are shared by every thread and every formatter, so
// Evaluate is const: what a symbol needs to remember during one parse lives in
// the list or in a new symbol that the list owns.
#ifndef MENSURA_GRAMMAR_PARSE_SYMBOL_H
#define MENSURA_GRAMMAR_PARSE_SYMBOL_H

#include <cstdint>

#include "base/dimensions.h"
#include "grammar/symbol_list.h"
#include "units/unit_converter.h"

namespace Mensura {

class OperandSymbol;
class OperatorSymbol;
class NumberSymbol;
class IParseSymbol;
class IFormatSymbol;

// The root of every symbol, reached once through any number of paths. It
// tells its two faces without a cross-cast through the virtual base.
class ISymbol {
public:
    virtual ~ISymbol() = default;
    virtual const IParseSymbol* AsParse() const { return nullptr; }
    virtual const IFormatSymbol* AsFormat() const { return nullptr; }
};

// Which concrete class a parse symbol is. Neighbours in a list ask this, and
// the answer is always about the class of the object, whatever its text.
enum class ParseKind : std::uint8_t {
    Number,
    Operand,  // a unit symbol or an operand made during evaluation
    Result,
    Linear,
    Custom,
    Division,
    Space,
    Multiplication,
    Square,
    Cubic,
    LeftParenthesis,
    RightParenthesis,
    Prime,
    DoublePrime,
    Dash,
    Caret,
    Degree,
    North,
    East,
    South,
    West,
    D,
};

class IParseSymbol : public virtual ISymbol {
public:
    explicit IParseSymbol(ParseKind k) : kind(k) {}
    const IParseSymbol* AsParse() const override { return this; }
    // Rewrites the list around `position`, which it leaves on a live element
    // or at the end: there the engine goes on. Success to go on, else
    // ParseFailure: a refusal, with no reason, for the whole text.
    virtual ErrorCode Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                               const Dimensions& dimensions) const = 0;
    // The class, told by a field rather than a call: the scan and the short
    // ways ask it of every key they read.
    ParseKind Kind() const { return kind; }
    // The three families that neighbours in a list ask about, told by a
    // field rather than a call: the evaluation asks at nearly every step.
    const OperandSymbol* AsOperand() const;
    const OperatorSymbol* AsOperator() const;
    const NumberSymbol* AsNumber() const;
    // Whether the first pass only steps over the symbol: so it is for every
    // number, operand and operator, whose Evaluate the engine then skips in
    // that pass, and for the marks that act only in the second. A class of
    // those families whose first pass does more must not keep its family.
    bool StepsOverInFirstPass() const { return stepsInFirstPass; }

protected:
    enum class Family : std::uint8_t { Other, Operand, Operator, Number };
    IParseSymbol(Family f, ParseKind k) : kind(k), family(f), stepsInFirstPass(true) {}
    // For a class of no family whose first pass only steps forward.
    struct FirstPassSteps {};
    IParseSymbol(FirstPassSteps, ParseKind k) : kind(k), stepsInFirstPass(true) {}

private:
    ParseKind kind;
    Family family = Family::Other;
    bool stepsInFirstPass = false;
};

// A unit: its value is its converter, which the class names when it is
// made, so that the scan and the evaluation reach it with a load rather than
// a call.
class OperandSymbol : public IParseSymbol {
public:
    ErrorCode Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                       const Dimensions& dimensions) const override;
    const UnitConverter& GetConverter() const { return *converter; }

protected:
    // `unitConverter` outlives the symbol, or is a member of it.
    explicit OperandSymbol(const UnitConverter* unitConverter, ParseKind k = ParseKind::Operand)
        : IParseSymbol(Family::Operand, k), converter(unitConverter) {}
    OperandSymbol(const OperandSymbol&) = delete;
    OperandSymbol& operator=(const OperandSymbol&) = delete;

private:
    const UnitConverter* converter;
};

// An operand made during evaluation: a pure scale held by value. An offset
// of the converter it is made from is not kept. A copy names its own
// converter.
class GenericOperand : public OperandSymbol {
public:
    explicit GenericOperand(const UnitConverter& source)
        : OperandSymbol(&converter), converter(source.GetDimensions(), source.GetFactor()) {}
    GenericOperand(const Dimensions& dimensions, double factor)
        : OperandSymbol(&converter), converter(dimensions, factor) {}
    GenericOperand(const GenericOperand& other)
        : OperandSymbol(&converter), converter(other.converter) {}
    GenericOperand& operator=(const GenericOperand&) = delete;

protected:
    GenericOperand(ParseKind k, const Dimensions& dimensions, double factor)
        : OperandSymbol(&converter, k), converter(dimensions, factor) {}

private:
    GenericConverter converter;
};

// The finished quantity: its factor is the value in base units.
class ResultSymbol : public GenericOperand {
public:
    ResultSymbol(const Dimensions& dimensions, double factor)
        : GenericOperand(ParseKind::Result, dimensions, factor) {}
    ErrorCode Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                       const Dimensions& dimensions) const override;
    double Value() const { return GetConverter().GetFactor(); }
};

// A number read from the text, with what the scanner saw in it.
class NumberSymbol : public IParseSymbol {
public:
    NumberSymbol(double v, std::uint32_t f)
        : IParseSymbol(Family::Number, ParseKind::Number), value(v), flags(f) {}
    ErrorCode Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                       const Dimensions& dimensions) const override;

    double value;
    std::uint32_t flags;
};

// An operator of the unit arithmetic. In the second pass it looks ahead past
// the operand on its right for an operator that binds tighter, lets that one
// go first, and then applies itself.
class OperatorSymbol : public IParseSymbol {
public:
    static constexpr std::uint32_t LookAhead = 1;  // has a right side and must see it first
    static constexpr std::uint32_t Postfix = 2;    // applies at once to its left side

    OperatorSymbol(ParseKind k, int p, std::uint32_t f)
        : IParseSymbol(Family::Operator, k), priority(p), flags(f) {}
    ErrorCode Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                       const Dimensions& dimensions) const override;
    // Carries the operator out; `position` stands on the operator at entry and
    // on the new operand after success. Success, or ParseFailure to refuse.
    virtual ErrorCode Apply(SymbolList& list, SymbolList::iterator& position) const = 0;

    int priority;
    std::uint32_t flags;
};

inline const OperandSymbol* IParseSymbol::AsOperand() const {
    return family == Family::Operand ? static_cast<const OperandSymbol*>(this) : nullptr;
}

inline const OperatorSymbol* IParseSymbol::AsOperator() const {
    return family == Family::Operator ? static_cast<const OperatorSymbol*>(this) : nullptr;
}

inline const NumberSymbol* IParseSymbol::AsNumber() const {
    return family == Family::Number ? static_cast<const NumberSymbol*>(this) : nullptr;
}

// Puts a number into the element at `position`. A number that the element
// owns is rewritten where it stands, as nothing else holds it; anything else
// gives way to a new owned number.
inline void SetNumber(SymbolList& list, SymbolList::iterator position, double value,
                      std::uint32_t flags) {
    const NumberSymbol* number = position.symbol()->AsNumber();
    if (number != nullptr && list.Owns(position)) {
        auto* own = const_cast<NumberSymbol*>(number);
        own->value = value;
        own->flags = flags;
        return;
    }
    list.Replace<NumberSymbol>(position, value, flags);
}

// The deepest nesting of parentheses that EvaluateList reads. The second
// pass goes a few calls deeper for each parenthesis that is open, so a list
// nested deeper is refused before it starts, as any text that does not read.
constexpr int kMaxNesting = 256;

// Reduces the list to one ResultSymbol in two passes: first for layout, then
// for computation. Success when a result stands first in the list, else
// ParseFailure, also for parentheses nested deeper than kMaxNesting; the
// list is left rewritten either way.
ErrorCode EvaluateList(SymbolList& list, const Dimensions& dimensions);

// The value of the result that stands first in an evaluated list, in base
// units of `dimensions`: the one check of the result's unit against the
// target. ParseFailure when no operand stands there or its exponents differ.
ErrorCode ReadResult(SymbolList& list, double& value, const Dimensions& dimensions);

// Turns the number at `number` into a ResultSymbol by `converter`, in base
// units. ParseFailure when the converter refuses.
ErrorCode MakeResult(SymbolList& list, SymbolList::iterator number, const UnitConverter& converter);

// The unit at `position` takes up the number just before it: the number
// becomes a result by `converter`, the unit's element goes, and `position`
// moves onto the result. ParseFailure, with nothing changed, when no number stands
// there or the converter refuses.
ErrorCode JoinNumberBefore(SymbolList& list, SymbolList::iterator& position,
                           const UnitConverter& converter);

}  // namespace Mensura

#endif  // MENSURA_GRAMMAR_PARSE_SYMBOL_H
