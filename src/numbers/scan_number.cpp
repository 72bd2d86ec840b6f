// The number scanner: the number at the start of a text, read token by token
// by the settings, as far as a number reaches.
#include <cmath>

#include "base/number_flags.h"
#include "numbers/number_settings.h"

namespace Mensura {

Result NumberSettings::ReadNumber(const char16_t* text, double* value, std::uint32_t* flagsOut,
                                  bool everyday) const {
    // Most numbers are a sign perhaps, digits and group separators, perhaps a
    // decimal separator and more digits: read here in one sweep, with the
    // same sums as below. An exponent, or a separator or sign that is empty,
    // sends the text to the full reading from the start.
    {
        int code = TokenAt(text);
        std::size_t position = 0;
        double sign = 1.0;
        std::uint32_t flags = 0;
        // A sign of its own units, or the everyday one where the settings have
        // none, may stand in front of the digits.
        std::size_t signLength = 0;
        if (code == NumberToken::PositiveSign || code == NumberToken::NegativeSign) {
            signLength = (code == NumberToken::PositiveSign ? positiveSign : negativeSign).size();
        } else if (code == NumberToken::None && everyday && IsCommonSign(*text)) {
            code = *text == u'+' ? NumberToken::PositiveSign : NumberToken::NegativeSign;
            signLength = 1;
        }
        if (signLength > 0 && text[signLength] != 0) {
            flags =
                code == NumberToken::PositiveSign ? NumberFlags::PlusSign : NumberFlags::MinusSign;
            if (code == NumberToken::NegativeSign) sign = -1.0;
            position = signLength;
            code = TokenAt(text + position);
        }
        // An exponent letter or a group separator cannot begin a number.
        if (code == NumberToken::Exponent ||
            (code == NumberToken::GroupSeparator && !groupSeparator.empty())) {
            return Result::Fail(ErrorCode::ParseFailure);
        }
        if (IsDigitCode(code)) {
            double whole = 0.0, fraction = 0.0, divisor = 1.0;
            flags |= NumberFlags::IntegerDigits;
            bool point = false;
            for (;;) {
                if (IsDigitCode(code)) {
                    whole = whole * 10 + static_cast<double>((code - 4) / 4);
                    ++position;
                } else if (code == NumberToken::GroupSeparator && !groupSeparator.empty()) {
                    flags |= NumberFlags::GroupSeen;
                    position += groupSeparator.size();
                } else {
                    break;
                }
                if (text[position] == 0) break;
                code = TokenAt(text + position);
            }
            if (text[position] != 0 && code == NumberToken::DecimalSeparator &&
                !decimalSeparator.empty()) {
                point = true;
                flags |= NumberFlags::PointSeen;
                position += decimalSeparator.size();
                code = text[position] == 0 ? NumberToken::None : TokenAt(text + position);
                while (IsDigitCode(code)) {
                    flags |= NumberFlags::FractionDigits;
                    fraction = fraction * 10 + static_cast<double>((code - 4) / 4);
                    divisor *= 10.0;
                    if (text[++position] == 0) break;
                    code = TokenAt(text + position);
                }
            }
            // Here a sign or no token ends the number, and behind the decimal
            // separator also a separator.
            bool ends = text[position] == 0 || code == NumberToken::None ||
                        code == NumberToken::PositiveSign || code == NumberToken::NegativeSign ||
                        (point && code != NumberToken::Exponent);
            if (code == NumberToken::Exponent && text[position] != 0) {
                // An exponent letter with no digit or sign behind it is no part
                // of the number.
                const char16_t behind = text[position + 1];
                ends = behind == 0 || (TokenAt(text + position + 1) == NumberToken::None &&
                                       !(everyday && IsCommonSign(behind)));
            }
            if (ends) {
                *value = (fraction / divisor + whole) * sign;
                if (flagsOut != nullptr) *flagsOut = flags;
                return Result::Done(position);
            }
        }
    }

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
    for (;;) {
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
        // The common signs stand in only where the settings find nothing of
        // their own, or no more than an empty sign.
        if (everyday && IsCommonSign(text[position]) &&
            (code == NumberToken::None || length == 0)) {
            code = text[position] == u'+' ? NumberToken::PositiveSign : NumberToken::NegativeSign;
            length = 1;
        }
        if (code == NumberToken::None) break;
        const int tokenClass = (code - 4) / 4;
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
    if (consumed == 0) return Result::Fail(ErrorCode::ParseFailure);

    // Only what the consumed length covers shows in the flags and the value.
    if (!(flags & NumberFlags::ExponentDigits)) {
        flags &= ~(NumberFlags::ExponentPlus | NumberFlags::ExponentMinus);
        exponent = 0.0;
    }
    double result = (fraction / divisor + whole) * sign;
    if (exponent != 0.0) result = std::pow(10.0, exponentSign * exponent) * result;
    *value = result;
    if (flagsOut != nullptr) *flagsOut = flags;
    return Result::Done(consumed);
}

}  // namespace Mensura
