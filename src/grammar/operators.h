// The operators of the unit arithmetic: product, quotient, powers,
// parentheses, and the blank, which either vanishes or means a product. All of
// them work on units; a number joins the finished unit only at the end.
#ifndef MENSURA_GRAMMAR_OPERATORS_H
#define MENSURA_GRAMMAR_OPERATORS_H

#include "grammar/parse_symbol.h"

namespace Mensura {

// "·", and a blank or dash between two units.
class MultiplicationSymbol final : public OperatorSymbol {
public:
    MultiplicationSymbol() : OperatorSymbol(ParseKind::Multiplication, 10, LookAhead) {}
    ErrorCode Apply(SymbolList& list, SymbolList::iterator& position) const override;
};

// "/"
class DivisionSymbol final : public OperatorSymbol {
public:
    DivisionSymbol() : OperatorSymbol(ParseKind::Division, 10, LookAhead) {}
    ErrorCode Apply(SymbolList& list, SymbolList::iterator& position) const override;
};

// "²"
class SquareSymbol final : public OperatorSymbol {
public:
    SquareSymbol() : OperatorSymbol(ParseKind::Square, 20, Postfix) {}
    ErrorCode Apply(SymbolList& list, SymbolList::iterator& position) const override;
};

// "³"
class CubicSymbol final : public OperatorSymbol {
public:
    CubicSymbol() : OperatorSymbol(ParseKind::Cubic, 20, Postfix) {}
    ErrorCode Apply(SymbolList& list, SymbolList::iterator& position) const override;
};

// "^" with a whole exponent from 1 up: "m^2".
class CaretSymbol final : public OperatorSymbol {
public:
    CaretSymbol() : OperatorSymbol(ParseKind::Caret, 20, Postfix) {}
    ErrorCode Apply(SymbolList& list, SymbolList::iterator& position) const override;
};

// "(" and "（": opens a nested look-ahead by handing the pass on.
class LeftParenthesisSymbol final : public OperatorSymbol {
public:
    LeftParenthesisSymbol() : OperatorSymbol(ParseKind::LeftParenthesis, 50, LookAhead | Postfix) {}
    ErrorCode Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                       const Dimensions& dimensions) const override;
    ErrorCode Apply(SymbolList&, SymbolList::iterator&) const override {
        return ErrorCode::Success;
    }
};

// ")" and "）": closes the nearest open parenthesis.
class RightParenthesisSymbol final : public OperatorSymbol {
public:
    RightParenthesisSymbol() : OperatorSymbol(ParseKind::RightParenthesis, 0, Postfix) {}
    ErrorCode Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                       const Dimensions& dimensions) const override;
    ErrorCode Apply(SymbolList&, SymbolList::iterator&) const override {
        return ErrorCode::Success;
    }
};

// " ": a product between two units, and nothing elsewhere. It acts in the
// first pass, so that no blank is left for the second.
class SpaceSymbol final : public IParseSymbol {
public:
    SpaceSymbol() : IParseSymbol(ParseKind::Space) {}
    ErrorCode Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                       const Dimensions& dimensions) const override;
};

// A unit of these exponents and this factor raised in place to `power`, from
// 1 up, by repeated products, so that the factor rounds as repeated
// multiplication does. False, with nothing changed, when an exponent would
// not fit in 32 bits.
bool RaiseToPower(Dimensions& exponents, double& factor, int power);

// The power that "^" takes from the number behind it: its value truncated
// toward zero, or 0 when the caret refuses it (a decimal separator, a value
// below 1 or beyond an int).
int CaretPower(double value, std::uint32_t flags);

}  // namespace Mensura

#endif  // MENSURA_GRAMMAR_OPERATORS_H
