// Typed texts of the compound marks ("5′-6 1/2″", "N 45°30′ E") read without
// the list: the scan's tokens go to the notations, which read them as the
// evaluation would, or decline.
#include "api/formatter_impl.h"
#include "catalogue/everyday.h"
#include "catalogue/unit_catalog.h"
#include "notations/angles.h"
#include "notations/feet_inches.h"

namespace Mensura {

namespace {

// The kinds of symbol that a typed text of marks holds; anything else is left
// to the list. Whether the kind is one of an angle's goes to `angle`.
bool ReadsKind(ParseKind kind, bool& angle) {
    switch (kind) {
        case ParseKind::Space:
        case ParseKind::Dash:
        case ParseKind::Division:
        case ParseKind::Prime:
        case ParseKind::DoublePrime:
            return true;
        case ParseKind::Degree:
        case ParseKind::D:
        case ParseKind::North:
        case ParseKind::South:
        case ParseKind::East:
        case ParseKind::West:
            angle = true;
            return true;
        default:
            return false;
    }
}

}  // namespace

bool FormatterImpl::ReadTypedMarks(const char16_t* cursor, SymbolList& read, double& value,
                                   const Dimensions& dimensions,
                                   const EverydayVocabulary* everyday) const {
    using CompoundMarks::TypedToken;
    TypedToken tokens[CompoundMarks::kMostTypedTokens];
    TypedToken* out = tokens;
    TypedToken* const last = tokens + CompoundMarks::kMostTypedTokens;
    bool angle = false;
    // What the scan has read already, then the places behind it as the scan
    // finds them: a number first, else the longest key. Every mark is a key
    // of one unit, which no exponent behind it cuts; anything else is left
    // to the list.
    for (SymbolList::iterator it = read.begin(); it != read.end(); ++it, ++out) {
        if (out == last) return false;
        if (const NumberSymbol* number = it.symbol()->AsNumber()) {
            *out = {ParseKind::Number, number->flags, number->value};
        } else if (ReadsKind(it.symbol()->Kind(), angle)) {
            *out = {it.symbol()->Kind(), 0, 0.0};
        } else {
            return false;
        }
    }
    const ParseDictionary& dictionary = UnitCatalog::Instance().Dictionary();
    const bool common = everyday != nullptr;
    for (; *cursor != 0; ++out) {
        if (out == last) return false;
        double number = 0.0;
        std::uint32_t flags = 0;
        const Result scanned = numbers.ScanNumber(cursor, &number, &flags, common);
        if (scanned.Ok()) {
            *out = {ParseKind::Number, flags, number};
            cursor += scanned.length;
            continue;
        }
        std::size_t matched = 0;
        const IParseSymbol* symbol = dictionary.FindLongest(cursor, &matched);
        if (symbol == nullptr || matched != 1) return false;
        if (common) symbol = everyday->Substitute(symbol, localeId == kEnglish);
        if (!ReadsKind(symbol->Kind(), angle)) return false;
        *out = {symbol->Kind(), 0, 0.0};
        ++cursor;
    }
    const std::size_t count = static_cast<std::size_t>(out - tokens);
    return angle ? TypedAngles::Read(tokens, count, dimensions, value)
                 : TypedMarks::Read(tokens, count, dimensions, value);
}

}  // namespace Mensura
