#include "notations/angles.h"

#include "notations/feet_inches.h"
#include "base/number_flags.h"
#include "units/unit_catalog.h"

namespace Mensura {

namespace {

constexpr int kDegree = 0x8002;
constexpr int kAngleSecond = 0x8009;
constexpr int kDay = 0x2C018;
constexpr int kNewton = 0x17001;
constexpr int kSiemens = 0x27001;
constexpr int kWatt = 0x1D001;
// 90 degrees in seconds of arc: the most that a bearing may turn.
constexpr double kQuarterTurn = 324000.0;

bool IsAngle(const Dimensions& dimensions) {
    return SameDimensions(dimensions, Dimensions{});
}

const UnitConverter& ConverterOf(int unit) {
    return *UnitCatalog::Instance().FindConverter(unit);
}

// A letter that means a unit for a target with exponents becomes that unit.
int BecomeUnitUnlessAngle(SymbolList& list, SymbolList::iterator& position,
                          const Dimensions& dimensions, int unit) {
    if (!IsAngle(dimensions)) list.Replace<GenericOperand>(position, ConverterOf(unit));
    ++position;
    return 0;
}

// The whole list becomes one direction, `amount` of `unit`, in its first element.
int FinishAngle(SymbolList& list, SymbolList::iterator& position, double amount, int unit,
                const Dimensions& dimensions) {
    double base = 0.0;
    if (ConverterOf(unit).DirectToBase(amount, base, dimensions) != ErrorCode::Success) return 1;
    list.Replace<ResultSymbol>(list.begin(), dimensions, base);
    list.Erase(list.begin().next(), list.end());
    position = list.end();
    return 0;
}

// N or S in the second pass: the start of a bearing, or the direction alone.
int OpenBearing(SymbolList& list, SymbolList::iterator& position, const Dimensions& dimensions,
                bool north) {
    const SymbolList::iterator letter = position;
    if (letter.next() != list.end()) {
        list.Erase(letter);
        const SymbolList::iterator last = list.end().previous();
        const auto* end = dynamic_cast<const BearingEndSymbol*>(last.symbol());
        if (end == nullptr) return 1;
        end->ReplaceOpened(list, last, north);
        position = list.begin();
        return 0;
    }
    return FinishAngle(list, position, north ? 90.0 : -90.0, kDegree, dimensions);
}

}  // namespace

int DSymbol::Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                      const Dimensions& dimensions) const {
    if (!firstPass) return 1;  // the first pass has made it a degree mark or a day
    if (IsAngle(dimensions)) {
        list.Replace<DegreeSymbol>(position);
    } else {
        list.Replace<GenericOperand>(position, ConverterOf(kDay));
    }
    ++position;
    return 0;
}

int NorthSymbol::Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                          const Dimensions& dimensions) const {
    if (firstPass) return BecomeUnitUnlessAngle(list, position, dimensions, kNewton);
    return OpenBearing(list, position, dimensions, true);
}

int SouthSymbol::Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                          const Dimensions& dimensions) const {
    if (firstPass) return BecomeUnitUnlessAngle(list, position, dimensions, kSiemens);
    return OpenBearing(list, position, dimensions, false);
}

int WestSymbol::Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                         const Dimensions& dimensions) const {
    if (firstPass) return BecomeUnitUnlessAngle(list, position, dimensions, kWatt);
    return BearingEndSymbol::Evaluate(list, position, false, dimensions);
}

void EastSymbol::ReplaceOpened(SymbolList& list, SymbolList::iterator at, bool north) const {
    list.Replace<EastSymbol>(at, true, north);
}

void WestSymbol::ReplaceOpened(SymbolList& list, SymbolList::iterator at, bool north) const {
    list.Replace<WestSymbol>(at, true, north);
}

int BearingEndSymbol::Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                               const Dimensions& dimensions) const {
    if (firstPass) {
        ++position;
        return 0;
    }
    const SymbolList::iterator letter = position;
    if (letter.next() != list.end()) return 1;
    if (letter == list.begin()) {
        return FinishAngle(list, position, IsWest() ? 180.0 : 0.0, kDegree, dimensions);
    }
    // Number ″ letter, the number in seconds of arc.
    const SymbolList::iterator mark = letter.previous();
    if (mark == list.begin() || mark.symbol()->Kind() != ParseKind::DoublePrime) return 1;
    const SymbolList::iterator first = mark.previous();
    const NumberSymbol* number = first.symbol()->AsNumber();
    if (first != list.begin() || number == nullptr) return 1;
    // A bearing needs its opening letter: "45° E" alone is refused.
    if (!opened) return 1;
    const double x = number->value;
    if (x < 0.0 || x > kQuarterTurn) return 1;
    double seconds = 0.0;
    if (IsWest()) {
        seconds = fromNorth ? x + kQuarterTurn : -kQuarterTurn - x;
    } else {
        seconds = fromNorth ? kQuarterTurn - x : x - kQuarterTurn;
    }
    return FinishAngle(list, position, seconds, kAngleSecond, dimensions);
}

int DegreeSymbol::Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                           const Dimensions& dimensions) const {
    if (firstPass) {
        ++position;
        return 0;
    }
    const SymbolList::iterator mark = position;
    if (mark == list.begin() || !IsAngle(dimensions)) return 1;
    const SymbolList::iterator before = mark.previous();
    const NumberSymbol* n = before.symbol()->AsNumber();
    if (n == nullptr) return 1;
    const double d = n->value;
    double out = 0.0;
    if (ConverterOf(kDegree).DirectToBase(d, out, dimensions) != ErrorCode::Success) return 1;
    const SymbolList::iterator behind = mark.next();
    if (behind == list.end()) {
        list.Replace<ResultSymbol>(before, dimensions, out);
        list.Erase(mark);
        position = list.begin();
        return 0;
    }
    const ParseKind next = behind.symbol()->Kind();
    if (next == ParseKind::East || next == ParseKind::West) {
        // Degrees straight before the letter: the bearing in seconds of arc.
        if (before != list.begin()) return 1;
        list.Replace<NumberSymbol>(before, d * 60.0 * 60.0, 0u);
        list.Replace<DoublePrimeSymbol>(mark);
        position = behind;
        return 0;
    }
    // Minutes follow: the text becomes one in minutes for the marks.
    const NumberSymbol* m = behind.symbol()->AsNumber();
    if (m == nullptr || (m->flags & NumberFlags::MinusSign)) return 1;
    const double minutes =
        (n->flags & NumberFlags::MinusSign) ? d * 60.0 - m->value : d * 60.0 + m->value;
    const std::uint32_t flags = n->flags;
    if (behind.next() == list.end() || behind.next().symbol()->Kind() != ParseKind::Prime) {
        return 1;
    }
    list.Replace<NumberSymbol>(before, minutes, flags);
    list.Erase(behind);
    list.Erase(mark);
    position = list.begin();
    return 0;
}

}  // namespace Mensura
