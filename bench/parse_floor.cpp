#include "parse_floor.h"

#include <array>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace MensuraBench {

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kDegree = kPi / 180.0;
constexpr double kFoot = 0.3048;
constexpr double kInch = 0.0254;

enum class Kind : unsigned char { Unit, Fraction, Direction };

struct Key {
    std::u16string_view text;
    Kind kind;
    double value;  // a unit's size in base units, a fraction's value, a letter
};

// Every word of the benchmarks' texts.
constexpr Key kKeys[] = {
    {u"ft", Kind::Unit, kFoot},   {u"in", Kind::Unit, kInch},   {u"m", Kind::Unit, 1.0},
    {u"mm", Kind::Unit, 0.001},   {u"kg", Kind::Unit, 1.0},     {u"s", Kind::Unit, 1.0},
    {u"kJ", Kind::Unit, 1000.0},  {u"½", Kind::Fraction, 0.5},  {u"N", Kind::Direction, 'N'},
    {u"E", Kind::Direction, 'E'}, {u"S", Kind::Direction, 'S'}, {u"W", Kind::Direction, 'W'},
};

std::uint32_t Hash(std::u16string_view text) {
    std::uint32_t hash = 2166136261u;
    for (char16_t unit : text) hash = (hash ^ unit) * 16777619u;
    return hash;
}

// Open addressing, probed linearly.
class KeyTable {
public:
    KeyTable() {
        for (const Key& key : kKeys) {
            std::uint32_t slot = Hash(key.text) & kMask;
            while (slots[slot] != nullptr) slot = (slot + 1) & kMask;
            slots[slot] = &key;
        }
    }
    const Key* Find(std::u16string_view text) const {
        for (std::uint32_t slot = Hash(text) & kMask; slots[slot] != nullptr;
             slot = (slot + 1) & kMask) {
            if (slots[slot]->text == text) return slots[slot];
        }
        return nullptr;
    }

private:
    static constexpr std::uint32_t kMask = 31;
    std::array<const Key*, kMask + 1> slots{};
};

const KeyTable g_keys;

bool IsNumberUnit(char16_t c) {
    return (c >= u'0' && c <= u'9') || c == u'.' || c == u',';
}

bool IsOperator(char16_t c) {
    switch (c) {
        case u' ':
        case u'·':
        case u'/':
        case u'²':
        case u'³':
        case u'^':
        case u'°':
        case u'′':
        case u'″':
        case u'-':
            return true;
        default:
            return false;
    }
}

// Sums parts (a number with its units, a number with a prime) into base units.
class Evaluator {
public:
    void Number(double value) {
        if (caret) {
            for (double power = 1; power < value; ++power) RepeatLastUnit();
            caret = false;
            return;
        }
        if (fraction) {
            number = whole + number / value;
            whole = 0.0;
            fraction = false;
            return;
        }
        EndTerm();
        whole = haveNumber ? number : 0.0;
        number = value;
        haveNumber = true;
    }
    void Unit(double factor) {
        if (!haveTerm) {
            term = haveNumber ? number : 1.0;
            haveNumber = false;
            haveTerm = true;
        }
        lastFactor = factor;
        RepeatLastUnit();
    }
    void FractionPart(double value) { number = haveNumber ? number + value : value; }
    void Divide() {
        if (haveNumber && !haveTerm) {
            fraction = true;
        } else {
            divide = true;
        }
    }
    void Multiply() { divide = false; }
    void Power(int times) {
        for (int i = 1; i < times; ++i) RepeatLastUnit();
    }
    void Caret() { caret = true; }
    // A number marked by a degree, prime or double prime: in an angle, once a
    // degree has been read, primes are minutes and seconds.
    void Marked(double factor) {
        total += number * factor;
        haveNumber = false;
    }
    void Degree() {
        Marked(kDegree);
        angle = true;
    }
    void Prime() { Marked(angle ? kDegree / 60 : kFoot); }
    void DoublePrime() { Marked(angle ? kDegree / 3600 : kInch); }
    // Between the degrees and minutes of a compact bearing; elsewhere a dash
    // only parts feet from inches.
    void Dash() {
        if (first != 0 && haveNumber && !angle) Degree();
    }
    void Direction(char16_t letter) {
        if (first == 0) {
            first = letter;
            return;
        }
        second = letter;
        if (haveNumber) Marked(angle ? kDegree / 60 : kDegree);
    }
    // The sum in base units; a bearing counts from east, anticlockwise.
    double Result() {
        EndTerm();
        if (haveNumber) total += number;
        if (first == 0) return total;
        const bool clockwise = (first == u'N') == (second == u'E');
        return (first == u'N' ? kPi / 2 : 3 * kPi / 2) + (clockwise ? -total : total);
    }

private:
    void RepeatLastUnit() { term = divide ? term / lastFactor : term * lastFactor; }
    void EndTerm() {
        if (!haveTerm) return;
        total += term;
        haveTerm = false;
        divide = false;
    }

    double total = 0.0;
    double number = 0.0;
    double whole = 0.0;
    double term = 0.0;
    double lastFactor = 1.0;
    bool haveNumber = false;
    bool haveTerm = false;
    bool fraction = false;
    bool divide = false;
    bool caret = false;
    bool angle = false;
    char16_t first = 0;
    char16_t second = 0;
};

}  // namespace

bool FloorParse(const char16_t* text, double unitFactor, double& out) {
    Evaluator evaluator;
    const char16_t* at = text;
    while (*at != 0) {
        const char16_t c = *at;
        if (IsNumberUnit(c)) {
            char digits[64];
            std::size_t length = 0;
            for (; IsNumberUnit(*at) && length + 1 < sizeof digits; ++at) {
                if (*at != u',') digits[length++] = static_cast<char>(*at);
            }
            digits[length] = 0;
            evaluator.Number(std::strtod(digits, nullptr));
            continue;
        }
        if (IsOperator(c)) {
            ++at;
            switch (c) {
                case u'·':
                    evaluator.Multiply();
                    break;
                case u'/':
                    evaluator.Divide();
                    break;
                case u'²':
                    evaluator.Power(2);
                    break;
                case u'³':
                    evaluator.Power(3);
                    break;
                case u'^':
                    evaluator.Caret();
                    break;
                case u'°':
                    evaluator.Degree();
                    break;
                case u'′':
                    evaluator.Prime();
                    break;
                case u'″':
                    evaluator.DoublePrime();
                    break;
                case u'-':
                    evaluator.Dash();
                    break;
                default:
                    break;
            }
            continue;
        }
        const char16_t* start = at;
        while (*at != 0 && !IsNumberUnit(*at) && !IsOperator(*at)) ++at;
        const Key* key = g_keys.Find(std::u16string_view(start, at - start));
        if (key == nullptr) return false;
        switch (key->kind) {
            case Kind::Unit:
                evaluator.Unit(key->value);
                break;
            case Kind::Fraction:
                evaluator.FractionPart(key->value);
                break;
            case Kind::Direction:
                evaluator.Direction(static_cast<char16_t>(key->value));
                break;
        }
    }
    out = evaluator.Result() / unitFactor;
    return true;
}

}  // namespace MensuraBench
