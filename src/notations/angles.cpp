#include "notations/angles.h"

#include <cmath>

#include "base/ids.h"
#include "base/number_flags.h"
#include "notations/compound.h"
#include "notations/feet_inches.h"
#include "numbers/number_settings.h"
#include "units/unit_table.h"

namespace Mensura {

// Reading typed angles and bearings.

namespace {

bool IsAngle(const Dimensions& dimensions) {
    return SameDimensions(dimensions, Dimensions{});
}

const UnitConverter& ConverterOf(int unit) {
    return *UnitTable::Instance().FindConverter(unit);
}

// A letter that means a unit for a target with exponents becomes that unit.
ErrorCode BecomeUnitUnlessAngle(SymbolList& list, SymbolList::iterator& position,
                                const Dimensions& dimensions, int unit) {
    if (!IsAngle(dimensions)) list.Replace<GenericOperand>(position, ConverterOf(unit));
    ++position;
    return ErrorCode::Success;
}

// N or S in the second pass: the start of a bearing, or the direction alone.
ErrorCode OpenBearing(SymbolList& list, SymbolList::iterator& position,
                      const Dimensions& dimensions, bool north) {
    const SymbolList::iterator letter = position;
    if (letter.next() != list.end()) {
        list.Erase(letter);
        const SymbolList::iterator last = list.end().previous();
        // East and West are the two classes of a bearing's end.
        const ParseKind kind = last.symbol()->Kind();
        if (kind != ParseKind::East && kind != ParseKind::West) return ErrorCode::ParseFailure;
        const auto* end = static_cast<const BearingEndSymbol*>(last.symbol());
        end->ReplaceOpened(list, last, north);
        position = list.begin();
        return ErrorCode::Success;
    }
    return CompoundMarks::Finish(list, position, north ? 90.0 : -90.0, kDegree, dimensions);
}

}  // namespace

ErrorCode DSymbol::Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                            const Dimensions& dimensions) const {
    if (!firstPass)
        return ErrorCode::ParseFailure;  // the first pass has made it a degree mark or a day
    if (IsAngle(dimensions)) {
        list.Replace<DegreeSymbol>(position);
    } else {
        list.Replace<GenericOperand>(position, ConverterOf(kDay));
    }
    ++position;
    return ErrorCode::Success;
}

ErrorCode NorthSymbol::Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                                const Dimensions& dimensions) const {
    if (firstPass) return BecomeUnitUnlessAngle(list, position, dimensions, kNewton);
    return OpenBearing(list, position, dimensions, true);
}

ErrorCode SouthSymbol::Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                                const Dimensions& dimensions) const {
    if (firstPass) return BecomeUnitUnlessAngle(list, position, dimensions, kSiemens);
    return OpenBearing(list, position, dimensions, false);
}

ErrorCode WestSymbol::Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                               const Dimensions& dimensions) const {
    if (firstPass) return BecomeUnitUnlessAngle(list, position, dimensions, kWatt);
    return BearingEndSymbol::Evaluate(list, position, false, dimensions);
}

namespace {

// The closing letters of a bearing once a letter has opened it, one for each
// opening letter: shared by every parse, and never written.
const EastSymbol kEastFromNorth(true, true);
const EastSymbol kEastFromSouth(true, false);
const WestSymbol kWestFromNorth(true, true);
const WestSymbol kWestFromSouth(true, false);

}  // namespace

void EastSymbol::ReplaceOpened(SymbolList& list, SymbolList::iterator at, bool north) const {
    list.ReplaceBorrowed(at, north ? &kEastFromNorth : &kEastFromSouth);
}

void WestSymbol::ReplaceOpened(SymbolList& list, SymbolList::iterator at, bool north) const {
    list.ReplaceBorrowed(at, north ? &kWestFromNorth : &kWestFromSouth);
}

ErrorCode BearingEndSymbol::Evaluate(SymbolList& list, SymbolList::iterator& position,
                                     bool firstPass, const Dimensions& dimensions) const {
    if (firstPass) {
        ++position;
        return ErrorCode::Success;
    }
    const SymbolList::iterator letter = position;
    if (letter.next() != list.end()) return ErrorCode::ParseFailure;
    if (letter == list.begin()) {
        return CompoundMarks::Finish(list, position, IsWest() ? 180.0 : 0.0, kDegree, dimensions);
    }
    // Number ″ letter, the number in seconds of arc.
    const SymbolList::iterator mark = letter.previous();
    if (mark == list.begin() || mark.symbol()->Kind() != ParseKind::DoublePrime)
        return ErrorCode::ParseFailure;
    const SymbolList::iterator first = mark.previous();
    const NumberSymbol* number = first.symbol()->AsNumber();
    if (first != list.begin() || number == nullptr) return ErrorCode::ParseFailure;
    // A bearing needs its opening letter: "45° E" alone is refused.
    if (!opened) return ErrorCode::ParseFailure;
    double seconds = 0.0;
    if (!CompoundMarks::TurnBearing(number->value, fromNorth, IsWest(), seconds)) {
        return ErrorCode::ParseFailure;
    }
    return CompoundMarks::Finish(list, position, seconds, kAngleSecond, dimensions);
}

ErrorCode DegreeSymbol::Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                                 const Dimensions& dimensions) const {
    if (firstPass) {
        ++position;
        return ErrorCode::Success;
    }
    const SymbolList::iterator mark = position;
    if (mark == list.begin() || !IsAngle(dimensions)) return ErrorCode::ParseFailure;
    const SymbolList::iterator before = mark.previous();
    const NumberSymbol* n = before.symbol()->AsNumber();
    if (n == nullptr) return ErrorCode::ParseFailure;
    const double d = n->value;
    double out = 0.0;
    if (ConverterOf(kDegree).DirectToBase(d, out, dimensions) != ErrorCode::Success)
        return ErrorCode::ParseFailure;
    const SymbolList::iterator behind = mark.next();
    if (behind == list.end()) {
        list.Replace<ResultSymbol>(before, dimensions, out);
        list.Erase(mark);
        position = list.begin();
        return ErrorCode::Success;
    }
    const ParseKind next = behind.symbol()->Kind();
    if (next == ParseKind::East || next == ParseKind::West) {
        // Degrees straight before the letter: the bearing in seconds of arc.
        if (before != list.begin()) return ErrorCode::ParseFailure;
        SetNumber(list, before, d * 60.0 * 60.0, 0u);
        list.Replace<DoublePrimeSymbol>(mark);
        position = behind;
        return ErrorCode::Success;
    }
    // Minutes follow: the text becomes one in minutes for the marks.
    const NumberSymbol* m = behind.symbol()->AsNumber();
    if (m == nullptr || (m->flags & NumberFlags::MinusSign)) return ErrorCode::ParseFailure;
    const double minutes =
        CompoundMarks::Combine(d * 60.0, (n->flags & NumberFlags::MinusSign) != 0, m->value);
    const std::uint32_t flags = n->flags;
    if (behind.next() == list.end() || behind.next().symbol()->Kind() != ParseKind::Prime) {
        return ErrorCode::ParseFailure;
    }
    SetNumber(list, before, minutes, flags);
    list.Erase(behind);
    list.Erase(mark);
    position = list.begin();
    return ErrorCode::Success;
}

// Reading typed angles and bearings without the list.

namespace TypedAngles {

using CompoundMarks::TypedToken;

namespace {

bool IsLetter(ParseKind kind) {
    return kind == ParseKind::North || kind == ParseKind::South || kind == ParseKind::East ||
           kind == ParseKind::West;
}

// The angle of a laid-out line of degrees, minutes and seconds: an amount of
// its unit, or the seconds of arc that a bearing's letter takes (unit 0).
// Minutes after degrees are rewritten in place into the text's minutes.
bool ReadAngleLine(TypedToken* line, std::size_t count, bool letter, const Marks& marks,
                   TypedMarks::Amount& amount) {
    if (count < 2 || line[1].kind != ParseKind::Degree) {
        return TypedMarks::ReadLine(line, count, letter, marks, amount);
    }
    const TypedToken& degrees = line[0];
    if (degrees.kind != ParseKind::Number) return false;
    const double d = degrees.value;
    if (count == 2) {
        amount = letter ? TypedMarks::Amount{d * 60.0 * 60.0, 0} : TypedMarks::Amount{d, kDegree};
        return true;
    }
    // Minutes follow, closed by a prime: the text goes on in minutes.
    TypedToken& minutes = line[2];
    if (count < 4 || minutes.kind != ParseKind::Number ||
        (minutes.flags & NumberFlags::MinusSign) != 0 || line[3].kind != ParseKind::Prime) {
        return false;
    }
    minutes.value = CompoundMarks::Combine(d * 60.0, (degrees.flags & NumberFlags::MinusSign) != 0,
                                           minutes.value);
    minutes.flags = degrees.flags;
    return TypedMarks::ReadLine(line + 2, count - 2, letter, marks, amount);
}

}  // namespace

bool Read(TypedMarks::Layout& layout, const Dimensions& dimensions, double& value) {
    // The marks of an angle are those of a pure number, which has seven
    // zero exponents.
    Marks marks;
    TypedToken* const tokens = layout.Tokens();
    const std::size_t count = layout.Count();
    if (!layout.Complete() || count == 0 || !Marks::For(dimensions, marks) ||
        marks.large != kAngleMinute) {
        return false;
    }
    const ParseKind first = tokens[0].kind;
    const ParseKind last = tokens[count - 1].kind;
    TypedMarks::Amount amount;
    if (first != ParseKind::North && first != ParseKind::South) {
        // No bearing: a closing letter would have nothing that opened it.
        return !IsLetter(last) && ReadAngleLine(tokens, count, false, marks, amount) &&
               CompoundMarks::AmountToBase(amount.value, amount.unit, dimensions, value);
    }
    if ((last != ParseKind::East && last != ParseKind::West) || count < 3 ||
        !ReadAngleLine(tokens + 1, count - 2, true, marks, amount)) {
        return false;
    }
    double seconds = 0.0;
    return CompoundMarks::TurnBearing(amount.value, first == ParseKind::North,
                                      last == ParseKind::West, seconds) &&
           CompoundMarks::AmountToBase(seconds, kAngleSecond, dimensions, value);
}

}  // namespace TypedAngles

// Writing, and reading through symbol strings.

namespace {

using CompoundMarks::Fraction;
using CompoundMarks::kDoublePrime;
using CompoundMarks::kPrime;

constexpr char16_t kDegreeSign = u'\u00B0';

double PowerOfTen(int exponent) {
    double power = 1.0;
    for (int i = 0; i < exponent; ++i) power *= 10.0;
    return power;
}

// An angle in degrees split into the numbers that d shows, rounded on the
// first one it leaves out and carried upward.
struct Split {
    double degrees;
    double minutes;
    double seconds;
    unsigned degreeMode;
};

Split SplitAngle(double a, int digits) {
    Split split;
    split.degreeMode = RenderMode::WholeNumber | (a < 0.0 ? RenderMode::SignOnZero : 0u);
    const double amount = 1.0 / (PowerOfTen(digits) * 100000.0 * 2.0);
    a = a > 0.0 ? a + amount : a - amount;
    std::modf(a, &split.degrees);
    const double t = std::fabs(a - split.degrees) * 60.0;
    split.minutes = std::floor(t);
    split.seconds = (t - split.minutes) * 60.0;
    // A carry moves the degrees one step further from zero.
    const double carry = a < 0.0 ? -1.0 : 1.0;
    if (digits == 0) {
        if (split.minutes >= 30.0) split.degrees += carry;
        return split;
    }
    if (digits <= 2) {
        if (split.seconds >= 30.0) split.minutes += 1.0;
        if (split.minutes >= 60.0) {
            split.degrees += carry;
            split.minutes = 0.0;
        }
        return split;
    }
    if (digits <= 4) {
        // RenderNumber rounds the whole seconds; this only keeps "60″" away.
        if (Fraction(split.seconds) >= 0.5) split.seconds += 0.5;
        if (split.seconds >= 60.0) {
            split.seconds = 0.0;
            split.minutes += 1.0;
        }
        if (split.minutes >= 60.0) {
            split.degrees += carry;
            split.minutes = 0.0;
        }
        return split;
    }
    const double q = PowerOfTen(digits - 4);
    if (Fraction(Fraction(split.seconds) * q) >= 0.5) split.seconds += 1.0 / (q * 2.0);
    if (split.seconds >= 60.0) {
        split.seconds -= 60.0;
        split.minutes += 1.0;
    }
    if (split.minutes >= 60.0) {
        split.degrees += carry;
        split.minutes -= 60.0;
    }
    return split;
}

// Writes one number and the mark behind it at `at`.
bool WriteNumber(const NumberSettings& settings, double number, unsigned mode, int decimals,
                 char16_t mark, char16_t* buffer, std::size_t size, std::size_t& at) {
    const Result written = settings.RenderNumber(number, buffer + at, size - at, mode, decimals);
    if (!written.Ok()) return false;
    at += written.length;
    if (at >= size) return false;
    buffer[at++] = mark;
    return true;
}

}  // namespace

DegreePrimeDoublePrimeSymbol::DegreePrimeDoublePrimeSymbol(const char16_t* text,
                                                           const UnitConverter& degree,
                                                           unsigned options)
    : GenericSymbol(text, kDegree, degree, 0), isBearing((options & ShowBearing) != 0 ? 1 : 0) {}

Result DegreePrimeDoublePrimeSymbol::Render(double value, const Dimensions& dims, char16_t* buffer,
                                            std::size_t size,
                                            const NumberSettings& settings) const {
    if (buffer == nullptr) return Result::Fail();
    double a = 0.0;
    const ErrorCode converted = GetConverter().DirectFromBase(value, dims, a);
    if (converted != ErrorCode::Success) return Result::Fail(converted);
    std::size_t at = 0;
    char16_t last = 0;
    if (isBearing) {
        a = std::fmod(a, 360.0);
        if (a <= -180.0) {
            a += 360.0;
        } else if (a > 180.0) {
            a -= 360.0;
        }
        if (size < 2) return Result::Fail();
        const char16_t axis = a == 0.0     ? u'E'
                              : a == 90.0  ? u'N'
                              : a == -90.0 ? u'S'
                              : a == 180.0 ? u'W'
                                           : 0;
        if (axis != 0) {
            buffer[0] = axis;
            buffer[1] = 0;
            return Result::Done(1);
        }
        // The angle from North or South toward East or West.
        const bool north = a > 0.0 && a < 180.0;
        const bool east = a > -90.0 && a < 90.0;
        last = east ? u'E' : u'W';
        if (north) {
            a = east ? 90.0 - a : a - 90.0;
        } else {
            a = east ? a + 90.0 : -90.0 - a;
        }
        buffer[at++] = north ? u'N' : u'S';
        buffer[at++] = u' ';
    }
    const int digits = settings.GetNumberDecimalDigits();
    const Split split = SplitAngle(a, digits);
    const int none = NumberSettings::kSettingsDecimals;
    if (!WriteNumber(settings, split.degrees, split.degreeMode, none, kDegreeSign, buffer, size,
                     at)) {
        return Result::Fail();
    }
    if (digits >= 1 && !WriteNumber(settings, split.minutes, RenderMode::WholeNumber, none, kPrime,
                                    buffer, size, at)) {
        return Result::Fail();
    }
    // Beyond d = 4 the seconds carry d - 4 decimals, passed for this one
    // number: the formatter's setting is never touched.
    if (digits >= 3 &&
        !WriteNumber(settings, split.seconds, digits >= 5 ? 0u : RenderMode::WholeNumber,
                     digits >= 5 ? digits - 4 : none, kDoublePrime, buffer, size, at)) {
        return Result::Fail();
    }
    if (size - at < (isBearing ? 3u : 1u)) return Result::Fail();
    if (isBearing) {
        buffer[at++] = u' ';
        buffer[at++] = last;
    }
    buffer[at] = 0;
    return Result::Done(at);
}

Result DegreePrimeDoublePrimeSymbol::RenderPart(int part, double value, const Dimensions& dims,
                                                char16_t* buffer, std::size_t size,
                                                const NumberSettings& settings) const {
    if (buffer == nullptr || isBearing) return Result::Fail();
    double a = 0.0;
    const ErrorCode converted = GetConverter().DirectFromBase(value, dims, a);
    if (converted != ErrorCode::Success) return Result::Fail(converted);
    const int digits = settings.GetNumberDecimalDigits();
    const Split split = SplitAngle(a, digits);
    switch (part) {
        case 0:
            return settings.RenderNumber(split.degrees, buffer, size, split.degreeMode);
        case 1:
            return settings.RenderNumber(digits >= 1 ? split.minutes : 0.0, buffer, size,
                                         RenderMode::WholeNumber);
        case 2:
            if (digits >= 5)
                return settings.RenderNumber(split.seconds, buffer, size, 0, digits - 4);
            return settings.RenderNumber(digits >= 3 ? split.seconds : 0.0, buffer, size,
                                         RenderMode::WholeNumber);
        default:
            return Result::Fail();
    }
}

ErrorCode DegreePrimeDoublePrimeSymbol::ParsePart(SymbolList& list, int form) const {
    if (form != 0 || list.size() < 3) return ErrorCode::ParseFailure;
    double numbers[3];
    SymbolList::iterator it = list.begin();
    for (double& number : numbers) {
        const NumberSymbol* read = it.symbol()->AsNumber();
        if (read == nullptr) return ErrorCode::ParseFailure;
        number = read->value;
        ++it;
    }
    const double a = numbers[0];
    const double minutes = std::fabs(numbers[1]);
    const double seconds = std::fabs(numbers[2]);
    // A negative zero in front counts as plus, as in every symbol string; the
    // parts add in this order, so the sum does not go through Combine.
    const double angle =
        a < 0.0 ? a - minutes / 60.0 - seconds / 3600.0 : minutes / 60.0 + a + seconds / 3600.0;
    const UnitConverter& converter = GetConverter();
    double base = 0.0;
    if (converter.DirectToBase(angle, base, converter.GetDimensions()) != ErrorCode::Success)
        return ErrorCode::ParseFailure;
    const SymbolList::iterator head = list.begin();
    list.Replace<ResultSymbol>(head, converter.GetDimensions(), base);
    list.Erase(head.next(), it);
    return ErrorCode::Success;
}

}  // namespace Mensura
