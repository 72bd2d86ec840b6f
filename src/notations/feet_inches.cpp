#include "notations/feet_inches.h"

#include <cmath>

#include "base/number_flags.h"
#include "grammar/operators.h"
#include "units/unit_catalog.h"

namespace Mensura {

namespace {

constexpr int kAngleMinute = 0x8008;

bool Classify(const Dimensions& dimensions, Marks& marks) {
    const int group = UnitCatalog::Instance().FindGroupByDimensions(dimensions);
    if (group == 0x2000) {
        marks = {12.0, 0x2017, 0x2016};
    } else if (group == 0x2C000) {
        marks = {60.0, 0x2C016, 0x2C001};
    } else if (SameDimensions(dimensions, Dimensions{})) {
        marks = {60.0, kAngleMinute, 0x8009};
    } else {
        return false;
    }
    return true;
}

bool Is(SymbolList& list, SymbolList::iterator at, ParseKind kind) {
    return at != list.end() && at.symbol()->Kind() == kind;
}

const NumberSymbol* NumberAt(SymbolList& list, SymbolList::iterator at) {
    return at == list.end() ? nullptr : at.symbol()->AsNumber();
}

bool IsMinus(const NumberSymbol& number) {
    return (number.flags & NumberFlags::MinusSign) != 0;
}

// A compass letter behind a mark hands the angle on to the letter.
bool IsLetter(SymbolList& list, SymbolList::iterator at) {
    return Is(list, at, ParseKind::East) || Is(list, at, ParseKind::West);
}

// The whole list becomes one result, `amount` of `unit`, in the first element.
int Finish(SymbolList& list, SymbolList::iterator& position, double amount, int unit,
           const Dimensions& dimensions) {
    double base = 0.0;
    const UnitConverter* converter = UnitCatalog::Instance().FindConverter(unit);
    if (converter->DirectToBase(amount, base, dimensions) != ErrorCode::Success) return 1;
    list.Replace<ResultSymbol>(list.begin(), dimensions, base);
    list.Erase(list.begin().next(), list.end());
    position = list.end();
    return 0;
}

// Both marks step on in the first pass; in the second they need a target
// they can classify and something in front of them.
template <typename Read>
int EvaluateMark(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                 const Dimensions& dimensions, Read read) {
    if (firstPass) {
        ++position;
        return 0;
    }
    Marks marks;
    if (!Classify(dimensions, marks) || position == list.begin()) return 1;
    return read(marks);
}

}  // namespace

int PrimeSymbol::Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                          const Dimensions& dimensions) const {
    return EvaluateMark(list, position, firstPass, dimensions, [&](const Marks& marks) {
        return Read(list, position, marks, dimensions);
    });
}

int DoublePrimeSymbol::Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                                const Dimensions& dimensions) const {
    return EvaluateMark(list, position, firstPass, dimensions, [&](const Marks& marks) {
        return Read(list, position, marks, dimensions);
    });
}

int PrimeSymbol::Read(SymbolList& list, SymbolList::iterator& position, const Marks& marks,
                      const Dimensions& dimensions) const {
    const SymbolList::iterator prime = position;
    const SymbolList::iterator before = prime.previous();
    const NumberSymbol* a = before.symbol()->AsNumber();
    if (a == nullptr) return 1;
    position = before;
    const SymbolList::iterator x = prime.next();

    if (x != list.end() && !IsLetter(list, x)) {
        // The large part, then the small one: it must begin the list.
        if (before != list.begin()) return 1;
        // Number [Number] [/ Number] [″], the ″ optional only at the end.
        SymbolList::iterator at = x;
        if (NumberAt(list, at) == nullptr) return 1;
        ++at;
        if (NumberAt(list, at) != nullptr) {
            ++at;
            if (!Is(list, at, ParseKind::Division)) return 1;
        }
        if (Is(list, at, ParseKind::Division)) {
            ++at;
            if (NumberAt(list, at) == nullptr) return 1;
            ++at;
        }
        const bool closed = Is(list, at, ParseKind::DoublePrime);
        if (!closed && at != list.end()) return 1;
        const double value = a->value * marks.multiplier;
        const std::uint32_t flags = a->flags;
        list.Replace<NumberSymbol>(before, value, flags);
        list.Erase(prime);
        position = x;
        if (!closed) list.PushBackNew<DoublePrimeSymbol>();
        return 0;
    }

    // The prime closes the text: a whole number of the large unit, or a fraction.
    double q = a->value;
    if (before != list.begin()) {
        const SymbolList::iterator first = list.begin();
        const NumberSymbol* numerator = first.symbol()->AsNumber();
        if (numerator == nullptr || !Is(list, first.next(), ParseKind::Division) ||
            first.next().next() != before || a->value == 0.0) {
            return 1;
        }
        q = numerator->value / a->value;
    }
    if (IsLetter(list, x) && marks.large == kAngleMinute) {
        // Minutes of a bearing go on to the letter in seconds of arc; a length
        // or a time drops the letter.
        if (before != list.begin()) return 1;
        list.Replace<NumberSymbol>(before, q * 60.0, 0u);
        list.Replace<DoublePrimeSymbol>(prime);
        position = x;
        return 0;
    }
    return Finish(list, position, q, marks.large, dimensions);
}

int DoublePrimeSymbol::Read(SymbolList& list, SymbolList::iterator& position, const Marks& marks,
                            const Dimensions& dimensions) const {
    const SymbolList::iterator mark = position;
    const SymbolList::iterator behind = mark.next();
    const bool letter = IsLetter(list, behind);
    if (behind != list.end() && !letter) return 1;

    // The numbers before the mark: b | a b | n / d | w n / d | a w n / d.
    const NumberSymbol* numbers[4] = {};
    int count = 0;
    int slash = -1;
    for (SymbolList::iterator at = list.begin(); at != mark; ++at) {
        if (Is(list, at, ParseKind::Division)) {
            if (slash >= 0 || count == 0) return 1;
            slash = count;
            continue;
        }
        const NumberSymbol* number = at.symbol()->AsNumber();
        if (number == nullptr || count == 4) return 1;
        numbers[count++] = number;
    }
    double total = 0.0;
    if (slash < 0) {
        if (count == 1) {
            total = numbers[0]->value;
        } else if (count == 2) {
            const double b = std::fabs(numbers[1]->value);
            total = IsMinus(*numbers[0]) ? numbers[0]->value - b : numbers[0]->value + b;
        } else {
            return 1;
        }
    } else {
        // The fraction is the last two numbers, the "/" between them.
        if (slash != count - 1 || count < 2 || count > 4) return 1;
        const NumberSymbol& n = *numbers[count - 2];
        const double d = numbers[count - 1]->value;
        if (d == 0.0) return 1;
        if (count == 2) {
            total = n.value / d;
        } else if (count == 3) {
            const double f = std::fabs(n.value) / d;
            total = IsMinus(*numbers[0]) ? numbers[0]->value - f : numbers[0]->value + f;
        } else {
            const double f = std::fabs(numbers[1]->value) + std::fabs(n.value) / d;
            total = IsMinus(*numbers[0]) ? numbers[0]->value - f : numbers[0]->value + f;
        }
    }
    if (letter) {
        // Seconds of arc for the letter of a bearing, which has the last word.
        list.Replace<NumberSymbol>(list.begin(), total, 0u);
        list.Erase(list.begin().next(), mark);
        position = behind;
        return 0;
    }
    return Finish(list, position, total, marks.small, dimensions);
}

int DashSymbol::Evaluate(SymbolList& list, SymbolList::iterator& position, bool,
                         const Dimensions&) const {
    const SymbolList::iterator dash = position;
    if (dash == list.begin() || dash.next() == list.end()) return 1;
    SymbolList::iterator left = dash.previous();
    while (left != list.begin() && Is(list, left, ParseKind::Space)) --left;
    if (left.symbol()->AsOperand() == nullptr && !Is(list, left, ParseKind::Prime)) return 1;
    SymbolList::iterator right = dash.next();
    while (Is(list, right, ParseKind::Space)) ++right;
    if (right == list.end()) return 1;
    if (right.symbol()->AsNumber() != nullptr) {
        // Between the two parts: the dash and any blanks go.
        list.Erase(left.next(), right);
        position = right;
        return 0;
    }
    if (right.symbol()->AsOperand() != nullptr) {
        // Between two units: a product.
        const SymbolList::iterator product = left.next();
        list.Replace<MultiplicationSymbol>(product);
        list.Erase(product.next(), right);
        position = right;
        return 0;
    }
    return 1;
}

}  // namespace Mensura
