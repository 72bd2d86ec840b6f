#include "grammar/operators.h"

#include <cmath>
#include <limits>

#include "base/number_flags.h"

namespace Mensura {

namespace {

// The binary operators: the operands on either side become one, put into the
// left element, and the operator and the right element go.
ErrorCode ApplyBinary(SymbolList& list, SymbolList::iterator& position, bool quotient) {
    if (position == list.begin()) return ErrorCode::ParseFailure;
    const SymbolList::iterator left = position.previous();
    const SymbolList::iterator right = position.next();
    if (right == list.end()) return ErrorCode::ParseFailure;
    const OperandSymbol* a = left.symbol()->AsOperand();
    const OperandSymbol* b = right.symbol()->AsOperand();
    if (a == nullptr || b == nullptr) return ErrorCode::ParseFailure;
    GenericConverter combined(1.0);
    if (!GenericConverter::Combine(a->GetConverter(), b->GetConverter(), quotient, combined))
        return ErrorCode::ParseFailure;
    list.Replace<GenericOperand>(left, combined);
    list.Erase(right);
    list.Erase(position);
    position = left;
    return ErrorCode::Success;
}

// The operand before the operator raised to `power`.
ErrorCode ApplyPower(SymbolList& list, SymbolList::iterator& position, int power) {
    if (position == list.begin()) return ErrorCode::ParseFailure;
    const SymbolList::iterator left = position.previous();
    const OperandSymbol* operand = left.symbol()->AsOperand();
    if (operand == nullptr) return ErrorCode::ParseFailure;
    const UnitConverter& x = operand->GetConverter();
    Dimensions exponents = x.GetDimensions();
    double factor = x.GetFactor();
    if (!RaiseToPower(exponents, factor, power)) return ErrorCode::ParseFailure;
    list.Replace<GenericOperand>(left, exponents, factor);
    list.Erase(position);
    position = left;
    return ErrorCode::Success;
}

}  // namespace

bool RaiseToPower(Dimensions& exponents, double& factor, int power) {
    Dimensions raised{};
    for (std::size_t i = 0; i < raised.size(); ++i) {
        const long long exponent = static_cast<long long>(exponents[i]) * power;
        if (exponent > std::numeric_limits<std::int32_t>::max() ||
            exponent < std::numeric_limits<std::int32_t>::min()) {
            return false;
        }
        raised[i] = static_cast<std::int32_t>(exponent);
    }
    // Once a product leaves the factor as it is (1, 0, infinity) or makes it
    // NaN, the rest of the products would too.
    double product = factor;
    for (int i = 1; i < power; ++i) {
        const double next = product * factor;
        const bool settled = next == product || std::isnan(next);
        product = next;
        if (settled) break;
    }
    exponents = raised;
    factor = product;
    return true;
}

int CaretPower(double value, std::uint32_t flags) {
    if (flags & NumberFlags::PointSeen) return 0;
    // Truncated toward zero; what lies outside an int counts as below 1.
    if (!(value >= 1.0 && value < static_cast<double>(std::numeric_limits<int>::max()) + 1.0)) {
        return 0;
    }
    return static_cast<int>(value);
}

ErrorCode MultiplicationSymbol::Apply(SymbolList& list, SymbolList::iterator& position) const {
    return ApplyBinary(list, position, false);
}

ErrorCode DivisionSymbol::Apply(SymbolList& list, SymbolList::iterator& position) const {
    return ApplyBinary(list, position, true);
}

ErrorCode SquareSymbol::Apply(SymbolList& list, SymbolList::iterator& position) const {
    return ApplyPower(list, position, 2);
}

ErrorCode CubicSymbol::Apply(SymbolList& list, SymbolList::iterator& position) const {
    return ApplyPower(list, position, 3);
}

ErrorCode CaretSymbol::Apply(SymbolList& list, SymbolList::iterator& position) const {
    if (position == list.begin()) return ErrorCode::ParseFailure;
    const SymbolList::iterator exponent = position.next();
    if (exponent == list.end()) return ErrorCode::ParseFailure;
    if (position.previous().symbol()->AsOperand() == nullptr) return ErrorCode::ParseFailure;
    const NumberSymbol* number = exponent.symbol()->AsNumber();
    if (number == nullptr) return ErrorCode::ParseFailure;
    const int power = CaretPower(number->value, number->flags);
    if (power == 0) return ErrorCode::ParseFailure;
    list.Erase(exponent);
    return ApplyPower(list, position, power);
}

ErrorCode LeftParenthesisSymbol::Evaluate(SymbolList& list, SymbolList::iterator& position,
                                          bool firstPass, const Dimensions& dimensions) const {
    ++position;
    if (firstPass) return ErrorCode::Success;
    if (position == list.end()) return ErrorCode::ParseFailure;
    return position.symbol()->Evaluate(list, position, false, dimensions);
}

ErrorCode RightParenthesisSymbol::Evaluate(SymbolList& list, SymbolList::iterator& position,
                                           bool firstPass, const Dimensions&) const {
    if (firstPass) {
        ++position;
        return ErrorCode::Success;
    }
    if (position == list.begin()) return ErrorCode::ParseFailure;
    SymbolList::iterator left = position;
    do {
        --left;
        if (left.symbol()->Kind() == ParseKind::LeftParenthesis) break;
    } while (left != list.begin());
    if (left.symbol()->Kind() != ParseKind::LeftParenthesis) return ErrorCode::ParseFailure;
    list.Erase(left);
    position = list.Erase(position);
    if (list.empty()) return ErrorCode::Success;
    // Back in front of the content, so that an operator waiting there is visited.
    for (int step = 0; step < 2 && position != list.begin(); ++step) --position;
    return ErrorCode::Success;
}

ErrorCode SpaceSymbol::Evaluate(SymbolList& list, SymbolList::iterator& position, bool,
                                const Dimensions&) const {
    const SymbolList::iterator blank = position;
    const bool first = blank == list.begin();
    if (!first && blank.previous().symbol()->AsOperand() == nullptr) {
        position = list.Erase(blank);
        return ErrorCode::Success;
    }
    const SymbolList::iterator behind = blank.next();
    if (behind != list.end() && behind.symbol()->AsOperand() != nullptr) {
        list.Replace<MultiplicationSymbol>(blank);
        ++position;
        return ErrorCode::Success;
    }
    position = list.Erase(blank);
    return ErrorCode::Success;
}

}  // namespace Mensura
