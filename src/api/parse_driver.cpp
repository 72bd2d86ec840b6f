// From a text to one value: the pass through the caller's symbol strings, the
// scan of a text into a list of numbers and symbols, and the reading of the
// evaluated result.
#include "api/formatter_impl.h"
#include "catalogue/unit_catalog.h"
#include "grammar/parse_symbol.h"

namespace Mensura {

ErrorCode FormatterImpl::ParseInUnit(const char16_t* text, double& value, int unit) const {
    const UnitConverter* converter = UnitTable::Instance().FindConverter(unit);
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
        const Result scanned = numbers.ScanNumber(cursor, &number, &flags);
        if (!scanned.Ok()) break;
        list.PushBackNew<NumberSymbol>(number, flags);
        cursor += scanned.length;
    }

    // The caller's symbol strings come first. Once one of them has read the
    // text, its result stands, even when it is not a value of `dimensions`.
    if (!symbolStrings.Empty()) {
        const ErrorCode custom = symbolStrings.Read(numbers, list, cursor, value, dimensions);
        if (custom != ErrorCode::Failure) return custom;
    }

    // Every place holds a number or a key of the dictionary: numbers first.
    while (*cursor != 0) {
        double number = 0.0;
        std::uint32_t flags = 0;
        const Result scanned = numbers.ScanNumber(cursor, &number, &flags);
        if (scanned.Ok()) {
            list.PushBackNew<NumberSymbol>(number, flags);
            cursor += scanned.length;
            continue;
        }
        std::size_t matched = 0;
        const IParseSymbol* symbol = catalog.Dictionary().FindLongest(cursor, &matched);
        if (symbol == nullptr) return ErrorCode::ParseFailure;
        list.PushBack(symbol);
        cursor += matched;
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

}  // namespace Mensura
