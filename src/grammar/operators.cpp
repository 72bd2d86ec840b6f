#include "grammar/operators.h"

#include <cmath>
#include <limits>

#include "base/number_flags.h"

namespace Mensura {

namespace {

// The binary operators: the operands on either side become one, put into the
// left element, and the operator and the right element go.
int ApplyBinary(SymbolList& list, SymbolList::iterator& position, bool quotient) {
    if (position == list.begin()) return 1;
    const SymbolList::iterator left = position.previous();
    const SymbolList::iterator right = position.next();
    if (right == list.end()) return 1;
    const OperandSymbol* a = left.symbol()->AsOperand();
    const OperandSymbol* b = right.symbol()->AsOperand();
    if (a == nullptr || b == nullptr) return 1;
    const GenericConverter combined =
        quotient
            ? GenericConverter(a->GetConverter(), b->GetConverter(), GenericConverter::Quotient)
            : GenericConverter(a->GetConverter(), b->GetConverter(), GenericConverter::Product);
    list.Replace<GenericOperand>(left, combined);
    list.Erase(right);
    list.Erase(position);
    position = left;
    return 0;
}

// The operand before the operator raised to `power`, by repeated products, so
// that the factor rounds as repeated multiplication does. Refuses a power
// whose exponents would not fit.
int ApplyPower(SymbolList& list, SymbolList::iterator& position, int power) {
    if (position == list.begin()) return 1;
    const SymbolList::iterator left = position.previous();
    const OperandSymbol* operand = left.symbol()->AsOperand();
    if (operand == nullptr) return 1;
    const UnitConverter& x = operand->GetConverter();
    Dimensions exponents{};
    for (std::size_t i = 0; i < exponents.size(); ++i) {
        const long long exponent = static_cast<long long>(x.GetDimensions()[i]) * power;
        if (exponent > std::numeric_limits<std::int32_t>::max() ||
            exponent < std::numeric_limits<std::int32_t>::min()) {
            return 1;
        }
        exponents[i] = static_cast<std::int32_t>(exponent);
    }
    // Once a product leaves the factor as it is (1, 0, infinity) or makes it
    // NaN, the rest of the products would too.
    double factor = x.GetFactor();
    for (int i = 1; i < power; ++i) {
        const double next = factor * x.GetFactor();
        const bool settled = next == factor || std::isnan(next);
        factor = next;
        if (settled) break;
    }
    list.Replace<GenericOperand>(left, exponents, factor);
    list.Erase(position);
    position = left;
    return 0;
}

}  // namespace

int MultiplicationSymbol::Apply(SymbolList& list, SymbolList::iterator& position) const {
    return ApplyBinary(list, position, false);
}

int DivisionSymbol::Apply(SymbolList& list, SymbolList::iterator& position) const {
    return ApplyBinary(list, position, true);
}

int SquareSymbol::Apply(SymbolList& list, SymbolList::iterator& position) const {
    return ApplyPower(list, position, 2);
}

int CubicSymbol::Apply(SymbolList& list, SymbolList::iterator& position) const {
    return ApplyPower(list, position, 3);
}

int CaretSymbol::Apply(SymbolList& list, SymbolList::iterator& position) const {
    if (position == list.begin()) return 1;
    const SymbolList::iterator exponent = position.next();
    if (exponent == list.end()) return 1;
    if (position.previous().symbol()->AsOperand() == nullptr) return 1;
    const NumberSymbol* number = exponent.symbol()->AsNumber();
    if (number == nullptr || (number->flags & NumberFlags::PointSeen)) return 1;
    // Truncated toward zero; what lies outside an int counts as below 1.
    const double value = number->value;
    if (!(value >= 1.0 && value < static_cast<double>(std::numeric_limits<int>::max()) + 1.0)) {
        return 1;
    }
    const int power = static_cast<int>(value);
    list.Erase(exponent);
    return ApplyPower(list, position, power);
}

int LeftParenthesisSymbol::Evaluate(SymbolList& list, SymbolList::iterator& position,
                                    bool firstPass, const Dimensions& dimensions) const {
    ++position;
    if (firstPass) return 0;
    if (position == list.end()) return 1;
    return position.symbol()->Evaluate(list, position, false, dimensions);
}

int RightParenthesisSymbol::Evaluate(SymbolList& list, SymbolList::iterator& position,
                                     bool firstPass, const Dimensions&) const {
    if (firstPass) {
        ++position;
        return 0;
    }
    if (position == list.begin()) return 1;
    SymbolList::iterator left = position;
    do {
        --left;
        if (left.symbol()->Kind() == ParseKind::LeftParenthesis) break;
    } while (left != list.begin());
    if (left.symbol()->Kind() != ParseKind::LeftParenthesis) return 1;
    list.Erase(left);
    position = list.Erase(position);
    if (list.empty()) return 0;
    // Back in front of the content, so that an operator waiting there is visited.
    for (int step = 0; step < 2 && position != list.begin(); ++step) --position;
    return 0;
}

int SpaceSymbol::Evaluate(SymbolList& list, SymbolList::iterator& position, bool,
                          const Dimensions&) const {
    const SymbolList::iterator blank = position;
    const bool first = blank == list.begin();
    if (!first && blank.previous().symbol()->AsOperand() == nullptr) {
        position = list.Erase(blank);
        return 0;
    }
    const SymbolList::iterator behind = blank.next();
    if (behind != list.end() && behind.symbol()->AsOperand() != nullptr) {
        list.Replace<MultiplicationSymbol>(blank);
        ++position;
        return 0;
    }
    position = list.Erase(blank);
    return 0;
}

}  // namespace Mensura
