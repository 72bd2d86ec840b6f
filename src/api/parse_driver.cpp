// From a text to one value: the number scanner, the pass through the caller's
// symbol strings, the scan of a text into a list of numbers and symbols, and
// the reading of the evaluated result.
#include <cmath>

#include "api/formatter_impl.h"
#include "base/number_flags.h"
#include "grammar/parse_symbol.h"
#include "units/unit_catalog.h"

namespace Mensura {

ErrorCode FormatterImpl::ParseInUnit(const char16_t* text, double& value, int unit) const {
    const UnitConverter* converter = UnitCatalog::Instance().FindConverter(unit);
    if (converter == nullptr) return ErrorCode::ParseFailure;
    double base = 0.0;
    const Dimensions& dimensions = converter->GetDimensions();
    if (ParseToBase(text, base, dimensions, unit & static_cast<int>(UnitId::GroupMask)) !=
        ErrorCode::Success) {
        return ErrorCode::ParseFailure;
    }
    // The caller's value is written here alone, the offset of a scale taken off.
    if (converter->DirectFromBase(base, dimensions, value) != ErrorCode::Success) {
        return ErrorCode::ParseFailure;
    }
    return ErrorCode::Success;
}

namespace {

// The one check of the result's unit against the target: its factor is the
// value in base units, and ToBase refuses other exponents.
ErrorCode ReadResult(SymbolList& list, double& value, const Dimensions& dimensions) {
    const OperandSymbol* result = list.begin().symbol()->AsOperand();
    if (result == nullptr ||
        result->GetConverter().DirectToBase(1.0, value, dimensions) != ErrorCode::Success) {
        return ErrorCode::ParseFailure;
    }
    return ErrorCode::Success;
}

}  // namespace

ErrorCode FormatterImpl::ParseToBase(const char16_t* text, double& value,
                                     const Dimensions& dimensions, int group) const {
    if (text == nullptr || *text == 0) return ErrorCode::ParseFailure;
    const UnitCatalog& catalog = UnitCatalog::Instance();
    SymbolList list;
    const char16_t* cursor = text;

    // The numbers at the very start, read once for both attempts.
    while (*cursor != 0) {
        double number = 0.0;
        std::uint32_t flags = 0;
        const std::int64_t length = ScanNumber(cursor, &number, &flags);
        if (length <= 0) break;
        list.PushBackNew<NumberSymbol>(number, flags);
        cursor += length;
    }

    // The caller's symbol strings come first. Once one of them has read the
    // text, its result stands, even when it is not a value of `dimensions`.
    if (!customDictionary.Empty()) {
        const ErrorCode custom = ParseThroughSymbolStrings(list, cursor, value, dimensions);
        if (custom != ErrorCode::Failure) return custom;
    }

    // Every place holds a number or a key of the dictionary: numbers first.
    while (*cursor != 0) {
        double number = 0.0;
        std::uint32_t flags = 0;
        const std::int64_t length = ScanNumber(cursor, &number, &flags);
        if (length > 0) {
            list.PushBackNew<NumberSymbol>(number, flags);
            cursor += length;
            continue;
        }
        std::size_t matched = 0;
        const IParseSymbol* symbol = catalog.Dictionary().FindLongest(cursor, &matched);
        if (symbol == nullptr) return ErrorCode::ParseFailure;
        list.PushBack(symbol);
        cursor += matched;
    }

    if (EvaluateList(list, dimensions) != 0) {
        // A bare number takes the default symbol of the target's group.
        if (list.size() != 1 || list.begin().symbol()->AsNumber() == nullptr) {
            return ErrorCode::ParseFailure;
        }
        const int target = group != 0 ? group : catalog.FindGroupByDimensions(dimensions);
        const ISymbol* found = catalog.FindSymbol(ResolveSymbol(target), languageIndex);
        const IParseSymbol* symbol = found != nullptr ? found->AsParse() : nullptr;
        if (symbol == nullptr) return ErrorCode::Failure;
        list.PushBack(symbol);
        if (EvaluateList(list, dimensions) != 0) return ErrorCode::ParseFailure;
    }
    return ReadResult(list, value, dimensions);
}

ErrorCode FormatterImpl::ParseThroughSymbolStrings(SymbolList& leading, const char16_t* rest,
                                                   double& value,
                                                   const Dimensions& dimensions) const {
    // The work list borrows the leading numbers; what the pass adds, it owns,
    // and it all goes with the list, so that a failed pass leaves no trace.
    SymbolList work;
    for (SymbolList::iterator it = leading.begin(); it != leading.end(); ++it) {
        work.PushBack(it.symbol());
    }
    const CustomDictionary::Node* node = &customDictionary.Root();
    std::size_t matched = 0;
    // A string that begins with a placeholder has an empty first literal.
    if (!work.empty()) {
        node = node->FindLongest(u"", &matched);
        if (node == nullptr) return ErrorCode::Failure;
    }
    const char16_t* cursor = rest;
    while (*cursor != 0) {
        node = node->FindLongest(cursor, &matched);
        if (node == nullptr) return ErrorCode::Failure;
        cursor += matched;
        if (*cursor == 0) break;
        double number = 0.0;
        std::uint32_t flags = 0;
        const std::int64_t length = ScanNumber(cursor, &number, &flags);
        if (length <= 0) break;
        work.PushBackNew<NumberSymbol>(number, flags);
        cursor += length;
    }
    if (*cursor != 0 || node->Symbol() == nullptr) return ErrorCode::Failure;
    work.PushBack(node->Symbol());
    if (EvaluateList(work, dimensions) != 0) return ErrorCode::Failure;
    return ReadResult(work, value, dimensions);
}

std::int64_t FormatterImpl::ReadNumber(const char16_t* text, double* value,
                                       std::uint32_t* flagsOut) const {
    enum class State {
        Start,
        Signed,
        Integer,
        Point,
        Fraction,
        ExponentMark,
        ExponentSign,
        Exponent,
        Stop
    };
    double whole = 0.0, fraction = 0.0, divisor = 1.0, exponent = 0.0;
    double sign = 1.0, exponentSign = 1.0;
    std::uint32_t flags = 0;
    std::size_t consumed = 0;
    std::size_t position = 0;
    State state = State::Start;

    int code = TokenAt(text);
    while (code != NumberToken::None) {
        const int tokenClass = (code - 4) / 4;
        std::size_t length = 1;
        switch (code) {
            case NumberToken::GroupSeparator:
                length = groupSeparator.size();
                break;
            case NumberToken::DecimalSeparator:
                length = decimalSeparator.size();
                break;
            case NumberToken::PositiveSign:
                length = positiveSign.size();
                break;
            case NumberToken::NegativeSign:
                length = negativeSign.size();
                break;
            default:
                break;
        }
        const bool digit = tokenClass <= 9;
        const double digitValue = digit ? tokenClass : 0.0;
        State next = State::Stop;
        switch (state) {
            case State::Start:
            case State::Signed:
                if (digit) {
                    flags |= NumberFlags::IntegerDigits;
                    whole = whole * 10 + digitValue;
                    next = State::Integer;
                } else if (code == NumberToken::DecimalSeparator) {
                    flags |= NumberFlags::PointSeen;
                    next = State::Point;
                } else if (state == State::Start && code == NumberToken::PositiveSign) {
                    flags |= NumberFlags::PlusSign;
                    next = State::Signed;
                } else if (state == State::Start && code == NumberToken::NegativeSign) {
                    flags |= NumberFlags::MinusSign;
                    sign = -1.0;
                    next = State::Signed;
                }
                break;
            case State::Integer:
                if (digit) {
                    whole = whole * 10 + digitValue;
                    next = State::Integer;
                } else if (code == NumberToken::GroupSeparator) {
                    // Consumed even with no digit behind it.
                    flags |= NumberFlags::GroupSeen;
                    consumed = position + length;
                    next = State::Integer;
                } else if (code == NumberToken::DecimalSeparator) {
                    flags |= NumberFlags::PointSeen;
                    consumed = position + length;
                    next = State::Point;
                } else if (code == NumberToken::Exponent) {
                    next = State::ExponentMark;
                }
                break;
            case State::Point:
            case State::Fraction:
                if (digit) {
                    flags |= NumberFlags::FractionDigits;
                    fraction = fraction * 10 + digitValue;
                    divisor *= 10.0;
                    next = State::Fraction;
                } else if (code == NumberToken::Exponent &&
                           (state == State::Fraction || consumed > 0)) {
                    next = State::ExponentMark;
                }
                break;
            case State::ExponentMark:
            case State::ExponentSign:
                if (digit) {
                    flags |= NumberFlags::ExponentDigits;
                    exponent = exponent * 10 + digitValue;
                    next = State::Exponent;
                } else if (state == State::ExponentMark && code == NumberToken::PositiveSign) {
                    flags |= NumberFlags::ExponentPlus;
                    next = State::ExponentSign;
                } else if (state == State::ExponentMark && code == NumberToken::NegativeSign) {
                    flags |= NumberFlags::ExponentMinus;
                    exponentSign = -1.0;
                    next = State::ExponentSign;
                }
                break;
            case State::Exponent:
                if (digit) {
                    exponent = exponent * 10 + digitValue;
                    next = State::Exponent;
                }
                break;
            case State::Stop:
                break;
        }
        if (next == State::Stop) break;
        position += length;
        if (digit) consumed = position;
        state = next;
        if (text[position] == 0) break;
        code = TokenAt(text + position);
    }
    if (consumed == 0) return 0;

    // Only what the consumed length covers shows in the flags and the value.
    if (!(flags & NumberFlags::ExponentDigits)) {
        flags &= ~(NumberFlags::ExponentPlus | NumberFlags::ExponentMinus);
        exponent = 0.0;
    }
    double result = (fraction / divisor + whole) * sign;
    if (exponent != 0.0) result = std::pow(10.0, exponentSign * exponent) * result;
    *value = result;
    if (flagsOut != nullptr) *flagsOut = flags;
    return static_cast<std::int64_t>(consumed);
}

}  // namespace Mensura
