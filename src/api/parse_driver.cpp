// From a text to one value: the pass through the caller's symbol strings, the
// scan of a text into a list of numbers and symbols, and the reading of the
// evaluated result. With the everyday reading on, a text that the catalogue's
// reading refuses is read a second time with the everyday vocabulary and
// forms, so that they only ever add readings.
#include "api/formatter_impl.h"
#include "base/number_flags.h"
#include "catalogue/everyday.h"
#include "catalogue/unit_catalog.h"
#include "grammar/parse_symbol.h"
#include "notations/everyday_forms.h"

namespace Mensura {

namespace {

bool IsDigit(char16_t unit) {
    return unit >= u'0' && unit <= u'9';
}

// What may begin an exponent: "²", "³", "^" or a digit.
bool MayStartExponent(char16_t unit) {
    return IsDigit(unit) || unit == u'²' || unit == u'³' || unit == u'^';
}

// Where a key that is a quotient or product of units ("kg/m", "m/s") must be
// cut when an exponent follows it directly, so that the exponent applies to
// its last unit: "kg/m²" is kilograms per square meter. The length in front
// of the key's last "/" or "·", or 0 when the key stays whole; the caller
// has seen that something like an exponent follows. A digit is an
// exponent only where the last unit takes one ("kg/m2"), and a key with
// brackets stays whole.
std::size_t CutBeforeExponent(const char16_t* key, std::size_t length,
                              const ParseDictionary& dictionary) {
    const bool digit = IsDigit(key[length]);
    std::size_t cut = 0;
    for (std::size_t i = 0; i < length; ++i) {
        const char16_t unit = key[i];
        if (unit == u'(' || unit == u')' || unit == u'（' || unit == u'）') return 0;
        if (unit == u'/' || unit == u'·') cut = i;
    }
    if (cut == 0) return 0;
    if (digit) {
        std::size_t matched = 0;
        if (dictionary.FindLongest(key + cut + 1, &matched) == nullptr ||
            matched <= length - cut - 1) {
            return 0;
        }
    }
    return cut;
}

}  // namespace

ErrorCode FormatterImpl::ParseInUnit(const char16_t* text, double& value, int unit,
                                     ScanTrace* trace) const {
    const UnitConverter* converter = UnitTable::Instance().FindConverter(unit);
    if (converter == nullptr) return ErrorCode::ParseFailure;
    double base = 0.0;
    const Dimensions& dimensions = converter->GetDimensions();
    if (ParseToBase(text, base, dimensions, unit & static_cast<int>(UnitId::GroupMask), trace) !=
        ErrorCode::Success) {
        return ErrorCode::ParseFailure;
    }
    // The caller's value is written here alone, the offset of a scale taken off.
    if (converter->DirectFromBase(base, dimensions, value) != ErrorCode::Success) {
        return ErrorCode::ParseFailure;
    }
    return ErrorCode::Success;
}

ErrorCode FormatterImpl::ParseToBase(const char16_t* text, double& value,
                                     const Dimensions& dimensions, int group,
                                     ScanTrace* trace) const {
    if (text == nullptr || *text == 0) return ErrorCode::ParseFailure;
    if (!everydayReading) return ReadText(text, value, dimensions, group, nullptr, false, trace);
    const EverydayVocabulary& everyday = EverydayVocabulary::Instance();
    if (trace == nullptr && symbolStrings.Empty()) {
        const ShortWay way = ReadEverydayShape(text, value, dimensions, everyday);
        if (way != ShortWay::Declined) {
            return way == ShortWay::Read ? ErrorCode::Success : ErrorCode::ParseFailure;
        }
    }
    // The catalogue's reading first, with the everyday meanings of the
    // symbols that the list replaces; the everyday forms only where it fails.
    const ErrorCode code = ReadText(text, value, dimensions, group, &everyday, false, trace);
    if (code == ErrorCode::Success) return code;
    if (ReadText(text, value, dimensions, group, &everyday, true, trace) == ErrorCode::Success) {
        return ErrorCode::Success;
    }
    return code;
}

ErrorCode FormatterImpl::ReadText(const char16_t* text, double& value, const Dimensions& dimensions,
                                  int group, const EverydayVocabulary* everyday, bool forms,
                                  ScanTrace* trace) const {
    const UnitCatalog& catalog = UnitCatalog::Instance();
    SymbolList list;
    const char16_t* cursor = text;
    const bool commonSigns = everyday != nullptr;

    // The numbers at the very start, read once for both attempts.
    while (*cursor != 0) {
        double number = 0.0;
        std::uint32_t flags = 0;
        const Result scanned = numbers.ScanNumber(cursor, &number, &flags, commonSigns);
        if (!scanned.Ok()) break;
        list.PushBackNew<NumberSymbol>(number, flags);
        if (trace != nullptr) {
            trace->tokens.push_back(
                {static_cast<std::size_t>(cursor - text), scanned.length, nullptr});
        }
        cursor += scanned.length;
    }

    // The caller's symbol strings come first. Once one of them has read the
    // text, its result stands, even when it is not a value of `dimensions`.
    if (!forms && !symbolStrings.Empty()) {
        const ErrorCode custom = symbolStrings.Read(numbers, list, cursor, value, dimensions);
        if (custom != ErrorCode::Failure) return custom;
    }

    if (!forms && trace == nullptr && list.size() == 1 &&
        ReadNumberAndUnit(cursor, list.begin().symbol()->AsNumber()->value, value, dimensions,
                          everyday)) {
        return ErrorCode::Success;
    }

    if (Scan(text, cursor, list, everyday, forms, trace) != ErrorCode::Success) {
        return ErrorCode::ParseFailure;
    }

    if (forms) {
        const EverydayVocabulary::Operators& marks = everyday->Marks();
        EverydayForms::MarkCompactBearing(list, {marks.degree, marks.prime, marks.doublePrime});
        EverydayForms::JoinMixedNumbers(list);
        const ErrorCode sum = EverydayForms::ReadSum(list, dimensions, value);
        if (sum != ErrorCode::Failure) return sum;
    }

    if (EvaluateList(list, dimensions) != ErrorCode::Success) {
        // A bare number takes the default symbol of the target's group.
        if (list.size() != 1 || list.begin().symbol()->AsNumber() == nullptr) {
            return ErrorCode::ParseFailure;
        }
        const int target = group != 0 ? group : catalog.Units().FindGroupByDimensions(dimensions);
        const ISymbol* found = catalog.FindSymbol(ResolveSymbol(target), languageIndex);
        const IParseSymbol* symbol = found != nullptr ? found->AsParse() : nullptr;
        if (symbol == nullptr) return ErrorCode::Failure;
        list.PushBack(symbol);
        if (EvaluateList(list, dimensions) != ErrorCode::Success) return ErrorCode::ParseFailure;
    }
    return ReadResult(list, value, dimensions);
}

bool FormatterImpl::ReadNumberAndUnit(const char16_t* cursor, double number, double& value,
                                      const Dimensions& dimensions,
                                      const EverydayVocabulary* everyday) const {
    // The scan has found no number at cursor; it looks a key up there, and
    // behind a blank, which the evaluation drops after a number, once more
    // where no number begins.
    const ParseDictionary& dictionary = UnitCatalog::Instance().Dictionary();
    std::size_t matched = 0;
    const bool us = localeId == kEnglish;
    auto lookUp = [&]() -> const IParseSymbol* {
        const IParseSymbol* found = dictionary.FindLongest(cursor, &matched);
        return found != nullptr && everyday != nullptr ? everyday->Substitute(found, us) : found;
    };
    const IParseSymbol* symbol = lookUp();
    if (symbol == nullptr) return false;
    if (symbol->Kind() == ParseKind::Space) {
        cursor += matched;
        double ignored = 0.0;
        std::uint32_t flags = 0;
        if (numbers.ScanNumber(cursor, &ignored, &flags, everyday != nullptr).Ok()) return false;
        symbol = lookUp();
        if (symbol == nullptr) return false;
    }
    // A key that ends the text has no exponent behind it to be cut for.
    if (cursor[matched] != 0) return false;
    // Only a plain operand joins the number before it and nothing else; the
    // result is the number in base units, which must have the target's
    // exponents.
    if (symbol->Kind() != ParseKind::Operand) return false;
    const UnitConverter& converter = symbol->AsOperand()->GetConverter();
    double base = 0.0;
    if (converter.DirectToBase(number, base, converter.GetDimensions()) != ErrorCode::Success ||
        !SameDimensions(converter.GetDimensions(), dimensions)) {
        return false;
    }
    value = base;
    return true;
}

ErrorCode FormatterImpl::Scan(const char16_t* text, const char16_t* cursor, SymbolList& list,
                              const EverydayVocabulary* everyday, bool forms,
                              ScanTrace* trace) const {
    auto note = [&](std::size_t length, const IParseSymbol* symbol) {
        if (trace != nullptr) {
            trace->tokens.push_back({static_cast<std::size_t>(cursor - text), length, symbol});
        }
    };
    const ParseDictionary& dictionary = UnitCatalog::Instance().Dictionary();
    const bool us = localeId == kEnglish;
    // The end of a key that was cut before an exponent: up to there, keys
    // are looked up no further.
    const char16_t* fence = nullptr;
    // Every place holds a number or a key of the dictionary: numbers first.
    while (*cursor != 0) {
        double number = 0.0;
        std::uint32_t flags = 0;
        const Result scanned = numbers.ScanNumber(cursor, &number, &flags, everyday != nullptr);
        if (scanned.Ok()) {
            list.PushBackNew<NumberSymbol>(number, flags);
            note(scanned.length, nullptr);
            cursor += scanned.length;
            continue;
        }
        if (forms) {
            // "6½″" reads as "6 1/2″".
            if (const auto* fraction = EverydayVocabulary::FindFraction(*cursor)) {
                const EverydayVocabulary::Operators& marks = everyday->Marks();
                if (!list.empty() && list.end().previous().symbol()->AsNumber() != nullptr) {
                    list.PushBack(marks.space);
                }
                list.PushBackNew<NumberSymbol>(fraction->numerator, NumberFlags::IntegerDigits);
                list.PushBack(marks.division);
                list.PushBackNew<NumberSymbol>(fraction->denominator, NumberFlags::IntegerDigits);
                note(1, nullptr);
                ++cursor;
                continue;
            }
        }
        const bool fenced = fence != nullptr && cursor < fence;
        const std::size_t limit =
            fenced ? static_cast<std::size_t>(fence - cursor) : static_cast<std::size_t>(-1);
        std::size_t matched = 0;
        const IParseSymbol* symbol = fenced ? dictionary.FindLongest(cursor, &matched, limit)
                                            : dictionary.FindLongest(cursor, &matched);
        if (forms) {
            std::size_t longer = 0;
            const IParseSymbol* word = everyday->FindLongest(cursor, &longer, limit, us);
            if (word != nullptr && (symbol == nullptr || longer > matched)) {
                symbol = word;
                matched = longer;
            }
        }
        if (symbol == nullptr) {
            if (trace != nullptr) trace->failedAt = static_cast<std::size_t>(cursor - text);
            return ErrorCode::ParseFailure;
        }
        if (!fenced && MayStartExponent(cursor[matched])) {
            if (const std::size_t cut = CutBeforeExponent(cursor, matched, dictionary)) {
                fence = cursor + cut;
                continue;
            }
        }
        if (everyday != nullptr) symbol = everyday->Substitute(symbol, us);
        list.PushBack(symbol);
        note(matched, symbol);
        cursor += matched;
    }
    return ErrorCode::Success;
}

}  // namespace Mensura
