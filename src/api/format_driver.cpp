// Which symbol renders a value, and what its result means to the caller.
#include "api/formatter_impl.h"
#include "catalogue/unit_catalog.h"
#include "notations/format_symbol.h"

namespace Mensura {

namespace {

// Lookups ignore the top four bits of an id.
constexpr int kIdBits = 0x0FFFFFFF;

}  // namespace

ErrorCode FormatterImpl::Format(double value, int unit, char16_t* buffer, std::size_t size,
                                int symbol, double* converted) const {
    const UnitConverter* converter = UnitTable::Instance().FindConverter(unit);
    if (converter == nullptr) return ErrorCode::Failure;
    double base = 0.0;
    if (converter->DirectToBase(value, base, converter->GetDimensions()) != ErrorCode::Success) {
        return ErrorCode::Failure;
    }
    return Format(base, converter->GetDimensions(), buffer, size, symbol != 0 ? symbol : unit,
                  converted);
}

ErrorCode FormatterImpl::Format(double value, const Dimensions& dims, char16_t* buffer,
                                std::size_t size, int symbol, double* converted) const {
    const UnitCatalog& catalog = UnitCatalog::Instance();
    const int request = symbol != 0 ? symbol : catalog.Units().FindGroupByDimensions(dims);
    const int resolved = ResolveSymbol(request);
    // A formatting string of the resolved symbol renders in the catalogue's place.
    const IFormatSymbol* renderer = nullptr;
    if (__builtin_expect(!symbolStrings.Empty(), 0)) renderer = symbolStrings.Renderer(resolved);
    if (renderer == nullptr) renderer = catalog.FindFormatSymbol(resolved, languageIndex);
    if (__builtin_expect(renderer == nullptr, 0)) return ErrorCode::Failure;
    // The whole value in the symbol's unit, unrounded, whatever is rendered;
    // reckoned first, so that its division overlaps the rendering, and
    // handed out only after a rendering that succeeds.
    double inUnit = 0.0;
    bool haveUnit = false;
    if (converted != nullptr) {
        if (const UnitConverter* unit = catalog.Units().FindConverter(resolved)) {
            haveUnit = unit->DirectFromBase(value, dims, inUnit) == ErrorCode::Success;
        }
    }
    const Result result = renderer->Render(value, dims, buffer, size, numbers);
    if (!result.Ok()) return result.code;
    if (haveUnit) *converted = inUnit;
    return ErrorCode::Success;
}

int FormatterImpl::ResolveSymbol(int id) const {
    const auto bits = static_cast<std::uint32_t>(id);
    if (__builtin_expect((bits & UnitId::SymbolMask) != 0, 1)) return id;
    // A formatter seldom has defaults of its own: empty tables are not searched.
    int unit = id;
    if ((bits & UnitId::TypeMask) == 0) {
        unit = id | 1;
        if (!defaultUnits.empty()) {
            const auto found = defaultUnits.find(id & kIdBits);
            if (found != defaultUnits.end()) unit = found->second;
        }
    }
    if (defaultSymbols.empty()) return unit | (1 << 20);
    const auto found = defaultSymbols.find(unit & kIdBits);
    return found != defaultSymbols.end() ? found->second : unit | (1 << 20);
}

int FormatterImpl::GetDefaultSymbol(int id) const {
    const auto found = defaultSymbols.find(id & kIdBits);
    if (found != defaultSymbols.end()) return found->second;
    const auto bits = static_cast<std::uint32_t>(id);
    if ((bits & UnitId::TypeMask) == 0 || (bits & UnitId::SymbolMask) != 0) return 0;
    const int first = id | (1 << 20);
    return UnitCatalog::Instance().FindSymbol(first, languageIndex) != nullptr ? first : 0;
}

ErrorCode FormatterImpl::SetDefaultSymbol(int id) {
    if (UnitCatalog::Instance().FindSymbol(id, languageIndex) == nullptr) {
        return ErrorCode::Failure;
    }
    defaultSymbols[id & static_cast<int>(UnitId::UnitMask)] = id;
    return ErrorCode::Success;
}

int FormatterImpl::GetDefaultUnit(int id) const {
    const auto found = defaultUnits.find(id & kIdBits);
    if (found != defaultUnits.end()) return found->second;
    const auto bits = static_cast<std::uint32_t>(id);
    const bool pureGroup =
        (bits & UnitId::GroupMask) != 0 && (bits & (UnitId::SymbolMask | UnitId::TypeMask)) == 0;
    if (!pureGroup) return 0;
    return UnitTable::Instance().FindConverter(id | 1) != nullptr ? id | 1 : 0;
}

ErrorCode FormatterImpl::SetDefaultUnit(int id) {
    if (UnitTable::Instance().FindConverter(id) == nullptr) return ErrorCode::Failure;
    defaultUnits[id & static_cast<int>(UnitId::GroupMask)] =
        id & static_cast<int>(UnitId::UnitMask);
    return ErrorCode::Success;
}

ErrorCode FormatterImpl::SetSymbolString(SymbolStrings::Use use, int symbol, const char16_t* text) {
    const ISymbol* catalogued = UnitCatalog::Instance().FindSymbol(symbol, languageIndex);
    const IFormatSymbol* parent = catalogued != nullptr ? catalogued->AsFormat() : nullptr;
    return symbolStrings.Set(use, symbol, parent, text);
}

}  // namespace Mensura
