// The evaluation engine: two passes over the list, the first for layout, the
// second for computation with look-ahead.
#include "grammar/parse_symbol.h"

namespace Mensura {

namespace {

// Back-steps stop at the first element: nothing moves in front of the list.
void StepBack(SymbolList& list, SymbolList::iterator& position) {
    if (position != list.begin()) --position;
}

// Whether the parentheses of the list never stand more than kMaxNesting
// deep. A closing one with none open counts for nothing here; the
// evaluation refuses it.
bool NestingWithinLimit(SymbolList& list) {
    // Each level takes an element of its own.
    if (list.size() <= static_cast<std::size_t>(kMaxNesting)) return true;
    int depth = 0;
    for (SymbolList::iterator it = list.begin(); it != list.end(); ++it) {
        const ParseKind kind = it.symbol()->Kind();
        if (kind == ParseKind::LeftParenthesis && ++depth > kMaxNesting) return false;
        if (kind == ParseKind::RightParenthesis && depth > 0) --depth;
    }
    return true;
}

}  // namespace

ErrorCode MakeResult(SymbolList& list, SymbolList::iterator number,
                     const UnitConverter& converter) {
    double base = 0.0;
    const Dimensions& dimensions = converter.GetDimensions();
    if (converter.DirectToBase(number.symbol()->AsNumber()->value, base, dimensions) !=
        ErrorCode::Success) {
        return ErrorCode::ParseFailure;
    }
    list.Replace<ResultSymbol>(number, dimensions, base);
    return ErrorCode::Success;
}

ErrorCode JoinNumberBefore(SymbolList& list, SymbolList::iterator& position,
                           const UnitConverter& converter) {
    const SymbolList::iterator self = position;
    if (self == list.begin()) return ErrorCode::ParseFailure;
    const SymbolList::iterator number = self.previous();
    if (number.symbol()->AsNumber() == nullptr) return ErrorCode::ParseFailure;
    if (MakeResult(list, number, converter) != ErrorCode::Success) return ErrorCode::ParseFailure;
    list.Erase(self);
    position = number;
    return ErrorCode::Success;
}

ErrorCode NumberSymbol::Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                                 const Dimensions&) const {
    ++position;
    // A number may not stand last: something must follow that takes it up.
    return !firstPass && position == list.end() ? ErrorCode::ParseFailure : ErrorCode::Success;
}

ErrorCode OperandSymbol::Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                                  const Dimensions&) const {
    const SymbolList::iterator self = position;
    ++position;
    if (firstPass || position != list.end()) return ErrorCode::Success;
    // The operand stands last: the number before it joins it.
    position = self;
    return JoinNumberBefore(list, position, GetConverter());
}

ErrorCode ResultSymbol::Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                                 const Dimensions&) const {
    ++position;
    if (firstPass || position != list.end()) return ErrorCode::Success;
    // A result made behind something else cannot stand.
    return list.size() == 1 ? ErrorCode::Success : ErrorCode::ParseFailure;
}

ErrorCode OperatorSymbol::Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                                   const Dimensions& dimensions) const {
    if (firstPass) {
        ++position;
        return ErrorCode::Success;
    }
    if (!(flags & Postfix) || (flags & LookAhead)) {
        SymbolList::iterator ahead = position.next();
        if (ahead == list.end()) return ErrorCode::ParseFailure;  // nothing stands on the right
        if (ahead.symbol()->AsOperand() != nullptr) ++ahead;
        while (ahead != list.end()) {
            const OperatorSymbol* next = ahead.symbol()->AsOperator();
            if (next == nullptr) {
                // Stay in the list; the pass goes on behind this operator.
                position = ahead;
                return ErrorCode::Success;
            }
            if (priority >= next->priority) break;
            if (next->Evaluate(list, ahead, false, dimensions) != ErrorCode::Success)
                return ErrorCode::ParseFailure;
            StepBack(list, ahead);
        }
    }
    return Apply(list, position) != ErrorCode::Success ? ErrorCode::ParseFailure
                                                       : ErrorCode::Success;
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

ErrorCode EvaluateList(SymbolList& list, const Dimensions& dimensions) {
    if (list.empty() || !NestingWithinLimit(list)) return ErrorCode::ParseFailure;
    for (SymbolList::iterator position = list.begin(); position != list.end();) {
        const IParseSymbol* symbol = position.symbol();
        if (symbol->StepsOverInFirstPass()) {
            ++position;
            continue;
        }
        if (symbol->Evaluate(list, position, true, dimensions) != ErrorCode::Success)
            return ErrorCode::ParseFailure;
    }
    for (SymbolList::iterator position = list.begin(); position != list.end();) {
        const IParseSymbol* symbol = position.symbol();
        if (symbol->AsNumber() != nullptr) {
            // What a number's own visit does, without the call.
            ++position;
            if (position == list.end()) return ErrorCode::ParseFailure;
            continue;
        }
        if (symbol->Evaluate(list, position, false, dimensions) != ErrorCode::Success)
            return ErrorCode::ParseFailure;
    }
    if (list.empty()) return ErrorCode::ParseFailure;
    return list.begin().symbol()->Kind() == ParseKind::Result ? ErrorCode::Success
                                                              : ErrorCode::ParseFailure;
}

}  // namespace Mensura
