// The evaluation engine: two passes over the list, the first for layout, the
// second for computation with look-ahead.
#include "grammar/parse_symbol.h"

namespace Mensura {

namespace {

// Back-steps stop at the first element: nothing moves in front of the list.
void StepBack(SymbolList& list, SymbolList::iterator& position) {
    if (position != list.begin()) --position;
}

}  // namespace

int MakeResult(SymbolList& list, SymbolList::iterator number, const UnitConverter& converter) {
    double base = 0.0;
    const Dimensions& dimensions = converter.GetDimensions();
    if (converter.DirectToBase(number.symbol()->AsNumber()->value, base, dimensions) !=
        ErrorCode::Success) {
        return 1;
    }
    list.Replace<ResultSymbol>(number, dimensions, base);
    return 0;
}

int JoinNumberBefore(SymbolList& list, SymbolList::iterator& position,
                     const UnitConverter& converter) {
    const SymbolList::iterator self = position;
    if (self == list.begin()) return 1;
    const SymbolList::iterator number = self.previous();
    if (number.symbol()->AsNumber() == nullptr) return 1;
    if (MakeResult(list, number, converter) != 0) return 1;
    list.Erase(self);
    position = number;
    return 0;
}

int NumberSymbol::Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                           const Dimensions&) const {
    ++position;
    // A number may not stand last: something must follow that takes it up.
    return !firstPass && position == list.end() ? 1 : 0;
}

int OperandSymbol::Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                            const Dimensions&) const {
    const SymbolList::iterator self = position;
    ++position;
    if (firstPass || position != list.end()) return 0;
    // The operand stands last: the number before it joins it.
    position = self;
    return JoinNumberBefore(list, position, GetConverter());
}

int ResultSymbol::Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                           const Dimensions&) const {
    ++position;
    if (firstPass || position != list.end()) return 0;
    // A result made behind something else cannot stand.
    return list.size() == 1 ? 0 : 1;
}

int OperatorSymbol::Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                             const Dimensions& dimensions) const {
    if (firstPass) {
        ++position;
        return 0;
    }
    if (!(flags & Postfix) || (flags & LookAhead)) {
        SymbolList::iterator ahead = position.next();
        if (ahead == list.end()) return 1;  // nothing stands on the right
        if (ahead.symbol()->AsOperand() != nullptr) ++ahead;
        while (ahead != list.end()) {
            const OperatorSymbol* next = ahead.symbol()->AsOperator();
            if (next == nullptr) {
                // Stay in the list; the pass goes on behind this operator.
                position = ahead;
                return 0;
            }
            if (priority >= next->priority) break;
            if (next->Evaluate(list, ahead, false, dimensions) != 0) return 1;
            StepBack(list, ahead);
        }
    }
    return Apply(list, position) != 0 ? 1 : 0;
}

ErrorCode ReadResult(SymbolList& list, double& value, const Dimensions& dimensions) {
    // The result's factor is the value in base units, and ToBase refuses
    // other exponents.
    const OperandSymbol* result = list.begin().symbol()->AsOperand();
    if (result == nullptr ||
        result->GetConverter().DirectToBase(1.0, value, dimensions) != ErrorCode::Success) {
        return ErrorCode::ParseFailure;
    }
    return ErrorCode::Success;
}

int EvaluateList(SymbolList& list, const Dimensions& dimensions) {
    if (list.empty()) return 1;
    for (const bool firstPass : {true, false}) {
        for (SymbolList::iterator position = list.begin(); position != list.end();) {
            if (position.symbol()->Evaluate(list, position, firstPass, dimensions) != 0) return 1;
        }
    }
    if (list.empty()) return 1;
    return list.begin().symbol()->Kind() == ParseKind::Result ? 0 : 1;
}

}  // namespace Mensura
