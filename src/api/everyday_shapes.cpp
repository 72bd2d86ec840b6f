// The everyday reading's short way. ParseToBase reads a text by the
// catalogue's reading and, where that fails, by the everyday forms: two
// scans into lists, two evaluations. For the commonest texts one scan into a
// few tokens settles both readings, and the forms give their value without a
// list. Any other text is declined, with nothing written, and the lists read
// it.
#include <cstddef>
#include <cstdint>

#include "api/formatter_impl.h"
#include "catalogue/everyday.h"
#include "catalogue/unit_catalog.h"
#include "grammar/parse_symbol.h"
#include "notations/everyday_forms.h"

namespace Mensura {

namespace {

using EverydayForms::ScannedNumber;

// The operators and marks that none of the shapes holds: a text with one of
// them goes to the lists at once. Without them, no key that a scan takes is
// cut before an exponent either, as that needs a "/" or "·" in the key.
bool IsOperator(char16_t unit) {
    switch (unit) {
        case u'(':
        case u')':
        case u'*':
        case u'/':
        case u'^':
        case u'·':
        case u'²':
        case u'³':
        case u'°':
        case u'×':
        case u'⋅':
        case u'（':
        case u'）':
            return true;
        default:
            return false;
    }
}

// The units whose low byte is that of an operator or of the end: most
// units of a text pass this table at once.
struct LowBytes {
    bool marked[256] = {};
    constexpr LowBytes() {
        for (const char16_t unit : u"()*/^·²³°×⋅（）") marked[unit & 0xFF] = true;
    }
};
constexpr LowBytes kLowBytes;

bool HoldsOperator(const char16_t* text) {
    for (;; ++text) {
        const char16_t unit = *text;
        if (!kLowBytes.marked[unit & 0xFF]) continue;
        if (unit == 0) return false;
        if (IsOperator(unit)) return true;
    }
}

// What the scan of the everyday forms puts at one place of the text.
enum class Piece : std::uint8_t {
    Number,
    Fraction,
    Blank,
    Unit,  // a symbol of the kind Operand
    Prime,
    DoublePrime,
    North,
    South,
    East,
    West,
};

struct Token {
    Piece piece;
    ScannedNumber number;                          // a number
    const IParseSymbol* symbol;                    // a unit
    const EverydayVocabulary::Fraction* fraction;  // a vulgar fraction
};

// Enough for "1 mi 100 yd 2 ft 6 in" and "S 12-30-15 W".
constexpr int kMostTokens = 16;

bool PieceOf(ParseKind kind, Piece& piece) {
    switch (kind) {
        case ParseKind::Space:
            piece = Piece::Blank;
            return true;
        case ParseKind::Operand:
            piece = Piece::Unit;
            return true;
        case ParseKind::Prime:
            piece = Piece::Prime;
            return true;
        case ParseKind::DoublePrime:
            piece = Piece::DoublePrime;
            return true;
        case ParseKind::North:
            piece = Piece::North;
            return true;
        case ParseKind::South:
            piece = Piece::South;
            return true;
        case ParseKind::East:
            piece = Piece::East;
            return true;
        case ParseKind::West:
            piece = Piece::West;
            return true;
        default:
            return false;
    }
}

// Reads the tokens from `at` on; each step takes one or none.
class Tokens {
public:
    Tokens(const Token* tokens, int count) : tokens(tokens), count(count) {}
    bool AtEnd() const { return at == count; }
    bool Is(Piece piece) const { return at < count && tokens[at].piece == piece; }
    const Token* Take(Piece piece) { return Is(piece) ? &tokens[at++] : nullptr; }
    void SkipBlanks() {
        while (Is(Piece::Blank)) ++at;
    }

private:
    const Token* tokens;
    int count;
    int at = 0;
};

// Number [blank] unit, again and again, a blank between them or none:
// "5 ft", "5ft6in", "1 h 30 min". The parts into parts, false for another
// shape.
bool MatchQuantities(Tokens tokens, EverydayForms::SumPart* parts, int& count) {
    count = 0;
    while (!tokens.AtEnd()) {
        const Token* number = tokens.Take(Piece::Number);
        if (number == nullptr) return false;
        tokens.Take(Piece::Blank);
        const Token* unit = tokens.Take(Piece::Unit);
        if (unit == nullptr) return false;
        tokens.Take(Piece::Blank);
        parts[count++] = {number->number, unit->symbol->AsOperand()};
    }
    return count > 0;
}

// [number prime] [number [blank]] fraction double-prime: "5′6½″", "6 ½″", "½″".
bool MatchFraction(Tokens tokens, const ScannedNumber*& large, const ScannedNumber*& whole,
                   const EverydayVocabulary::Fraction*& fraction) {
    large = nullptr;
    whole = nullptr;
    const Token* number = tokens.Take(Piece::Number);
    if (number != nullptr && tokens.Take(Piece::Prime) != nullptr) {
        large = &number->number;
        number = tokens.Take(Piece::Number);
    }
    if (number != nullptr) {
        whole = &number->number;
        tokens.Take(Piece::Blank);
    }
    const Token* vulgar = tokens.Take(Piece::Fraction);
    if (vulgar == nullptr || tokens.Take(Piece::DoublePrime) == nullptr || !tokens.AtEnd()) {
        return false;
    }
    fraction = vulgar->fraction;
    return true;
}

// N or S, one to three numbers, E or W, with blanks anywhere behind the
// first letter: "N45-30E", "S 12-30-15 W".
bool MatchBearing(Tokens tokens, bool& north, ScannedNumber* parts, int& count, bool& west) {
    north = tokens.Is(Piece::North);
    if (tokens.Take(Piece::North) == nullptr && tokens.Take(Piece::South) == nullptr) return false;
    count = 0;
    tokens.SkipBlanks();
    while (const Token* number = tokens.Take(Piece::Number)) {
        if (count == 3) return false;
        parts[count++] = number->number;
        tokens.SkipBlanks();
    }
    west = tokens.Is(Piece::West);
    if (tokens.Take(Piece::East) == nullptr && tokens.Take(Piece::West) == nullptr) return false;
    tokens.SkipBlanks();
    return count > 0 && tokens.AtEnd();
}

using Way = FormatterImpl::ShortWay;

// ReadEverydayShape behind its first look, in a frame of its own: a text
// that the look turns away does not pay for the room of the tokens.
__attribute__((noinline)) Way ReadShape(const char16_t* text, const NumberSettings& numbers,
                                        bool us, const EverydayVocabulary& everyday,
                                        const Dimensions& dimensions, double& value) {
    // The scan of the everyday forms, place by place as Scan does it with
    // forms on; beside it the scan of the catalogue's reading, which is the
    // same up to the first place where the catalogue has no key or a shorter
    // one than the everyday vocabulary.
    const ParseDictionary& dictionary = UnitCatalog::Instance().Dictionary();
    Token tokens[kMostTokens];
    int count = 0;
    // Whether the catalogue's reading has met a place with no key: that scan,
    // and with it the reading, fails there.
    bool catalogueStops = false;
    for (const char16_t* cursor = text; *cursor != 0;) {
        if (count == kMostTokens) return Way::Declined;
        Token& token = tokens[count++];
        const Result scanned =
            numbers.ScanNumber(cursor, &token.number.value, &token.number.flags, true);
        if (scanned.Ok()) {
            token.piece = Piece::Number;
            cursor += scanned.length;
            continue;
        }
        // The vulgar fractions lie above "¼", U+00BC.
        const EverydayVocabulary::Fraction* fraction =
            *cursor >= u'¼' ? EverydayVocabulary::FindFraction(*cursor) : nullptr;
        if (fraction != nullptr) {
            std::size_t matched = 0;
            if (!catalogueStops) {
                if (dictionary.FindLongest(cursor, &matched) != nullptr) return Way::Declined;
                catalogueStops = true;
            }
            token.piece = Piece::Fraction;
            token.fraction = fraction;
            ++cursor;
            continue;
        }
        if (*cursor == u' ' && everyday.Blank() != nullptr) {
            token.piece = Piece::Blank;
            ++cursor;
            continue;
        }
        std::size_t matched = 0;
        const IParseSymbol* known = dictionary.FindLongest(cursor, &matched);
        const IParseSymbol* symbol = known;
        // The longer key of the two is read; no everyday key is longer than
        // a catalogue key that ends the text.
        if ((known == nullptr || cursor[matched] != 0) && everyday.MayBeginWord(*cursor)) {
            std::size_t longer = 0;
            const IParseSymbol* word = everyday.FindLongest(cursor, &longer, us);
            if (word != nullptr && (known == nullptr || longer > matched)) {
                // Where both readings go on, each with a key of its own, they
                // part ways.
                if (known != nullptr && !catalogueStops) return Way::Declined;
                symbol = word;
                matched = longer;
            }
        }
        // No key at all: both scans fail here, or the catalogue's has failed.
        if (symbol == nullptr) return Way::Refused;
        if (known == nullptr) catalogueStops = true;
        if (matched == 0) return Way::Declined;
        token.symbol = everyday.Substitute(symbol, us);
        if (!PieceOf(token.symbol->Kind(), token.piece)) return Way::Declined;
        cursor += matched;
    }

    const Tokens all(tokens, count);
    if (count == 0) return Way::Declined;
    auto outcome = [](ErrorCode code) {
        return code == ErrorCode::Success ? Way::Read : Way::Refused;
    };
    if (tokens[0].piece == Piece::Number) {
        // Where the two scans agree, the catalogue's list of one quantity
        // is the forms' list, and of two or more it never reduces: the last
        // unit makes a result of its number, which then stands behind the
        // others. Either way the forms decide.
        EverydayForms::SumPart parts[kMostTokens / 2];
        int quantities = 0;
        if (MatchQuantities(all, parts, quantities)) {
            return outcome(EverydayForms::AddQuantities(parts, quantities, dimensions, value));
        }
        // Only the forms read a vulgar fraction: the catalogue has stopped.
    }
    if (tokens[0].piece == Piece::Number || tokens[0].piece == Piece::Fraction) {
        const ScannedNumber* large = nullptr;
        const ScannedNumber* whole = nullptr;
        const EverydayVocabulary::Fraction* fraction = nullptr;
        if (MatchFraction(all, large, whole, fraction)) {
            return outcome(EverydayForms::ReadFractionBeforeDoublePrime(
                large, whole, fraction->numerator, fraction->denominator, dimensions, value));
        }
        return Way::Declined;
    }
    // Into an angle the catalogue's list of a compact bearing never reduces:
    // its closing letter finds a number, not the double prime, before it.
    bool north = false;
    bool west = false;
    ScannedNumber parts[3];
    int parted = 0;
    if (SameDimensions(dimensions, Dimensions{}) && MatchBearing(all, north, parts, parted, west)) {
        const ErrorCode code =
            EverydayForms::ReadCompactBearing(north, parts, parted, west, dimensions, value);
        if (code != ErrorCode::Failure) return outcome(code);
    }
    return Way::Declined;
}

}  // namespace

FormatterImpl::ShortWay FormatterImpl::ReadEverydayShape(const char16_t* text, double& value,
                                                         const Dimensions& dimensions,
                                                         const EverydayVocabulary& everyday) const {
    if (HoldsOperator(text)) return ShortWay::Declined;
    return ReadShape(text, numbers, localeId == kEnglish, everyday, dimensions, value);
}

}  // namespace Mensura
