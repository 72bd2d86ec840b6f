#include "units/unit_catalog.h"

#include "formatting/format_symbol.h"
#include "parsing/parse_symbol.h"

namespace Mensura {

void FillConversionTable(UnitCatalog& catalog);
void RegisterVocabulary(UnitCatalog& catalog);

UnitCatalog::UnitCatalog() : UnitCatalog(ConversionsOnly) {
    RegisterVocabulary(*this);
}

UnitCatalog::UnitCatalog(ConversionsOnlyTag) {
    FillConversionTable(*this);
    IndexConverters();
}

void UnitCatalog::IndexConverters() {
    converterIndex.fill(GroupSlots{});
    for (std::size_t group = 0; group < converters.size(); ++group) {
        converterIndex[group + 1] = {converters[group].data(),
                                     static_cast<std::uint32_t>(converters[group].size())};
    }
}

UnitCatalog::~UnitCatalog() {
    // Converters go first, then the symbols language by language, then the
    // operators; the dictionary only points at them and goes last.
    converterIndex.fill(GroupSlots{});
    converters.clear();
    for (auto& language : symbols) language.clear();
    operators.clear();
    dimensionIndex.Clear();
    dictionary = RadixTree<const IParseSymbol*>();
}

void UnitCatalog::DestroyInPlace::operator()(ISymbol* symbol) const {
    symbol->~ISymbol();
}

void* UnitCatalog::AllocateSymbol(std::size_t size, std::size_t alignment) {
    constexpr std::size_t kBlockSize = 64 * 1024;
    std::size_t start = (symbolBlockUsed + alignment - 1) & ~(alignment - 1);
    if (symbolBlocks.empty() || start + size > kBlockSize) {
        symbolBlocks.push_back(std::make_unique<unsigned char[]>(kBlockSize));
        start = 0;
    }
    symbolBlockUsed = start + size;
    return symbolBlocks.back().get() + start;
}

const ISymbol* UnitCatalog::FindSymbol(int id, int language) const {
    if (static_cast<unsigned>(language) >= static_cast<unsigned>(kLanguages)) return nullptr;
    const auto& groups = symbols[language];
    const std::uint32_t group = UnitId::GroupIndex(id);
    if (group >= groups.size()) return nullptr;
    const std::uint32_t type = UnitId::TypeIndex(id);
    if (type >= groups[group].size()) return nullptr;
    const std::uint32_t symbol = UnitId::SymbolIndex(id);
    if (symbol >= groups[group][type].size()) return nullptr;
    return groups[group][type][symbol].get();
}

std::size_t UnitCatalog::ListUnitSymbols(int id, int* ids) const {
    const auto& groups = symbols[0];
    const std::uint32_t group = UnitId::GroupIndex(id);
    if (group >= groups.size()) return 0;
    const std::uint32_t type = UnitId::TypeIndex(id);
    if (type >= groups[group].size()) return 0;
    const std::size_t count = groups[group][type].size();
    if (ids != nullptr) {
        for (std::size_t i = 0; i < count; ++i) ids[i] = (static_cast<int>(i + 1) << 20) | id;
    }
    return count;
}

ErrorCode UnitCatalog::CopyDisplayName(int id, char16_t* buffer, std::size_t size,
                                       int language) const {
    if (buffer == nullptr) return ErrorCode::Failure;
    const auto bits = static_cast<std::uint32_t>(id);
    const char16_t* text = nullptr;
    if ((bits & UnitId::GroupMask) != 0 && (bits & (UnitId::SymbolMask | UnitId::TypeMask)) == 0) {
        const std::uint32_t group = UnitId::GroupIndex(id);
        if (static_cast<unsigned>(language) >= static_cast<unsigned>(kLanguages) ||
            group >= groupNames[language].size()) {
            return ErrorCode::Failure;
        }
        text = groupNames[language][group];
    } else {
        // A unit type stands for its first symbol, the spelled-out name.
        if ((bits & UnitId::TypeMask) != 0 && (bits & UnitId::SymbolMask) == 0) id |= 1 << 20;
        const ISymbol* found = FindSymbol(id, language);
        const IFormatSymbol* symbol = found != nullptr ? found->AsFormat() : nullptr;
        if (symbol == nullptr) return ErrorCode::Failure;
        text = symbol->GetText();
    }
    if (text == nullptr) return ErrorCode::Failure;
    std::size_t length = 0;
    while (text[length] != 0) ++length;
    if (size <= length) return ErrorCode::Failure;
    for (std::size_t i = 0; i <= length; ++i) buffer[i] = text[i];
    return ErrorCode::Success;
}

void UnitCatalog::RegisterDimensions(const Dimensions& exponents, int group) {
    // The 68 groups of the conversion table fit with room to spare.
    dimensionIndex.Register(exponents, group);
}

int UnitCatalog::FindGroupByDimensions(const int (&exponents)[7]) const {
    Dimensions key;
    for (std::size_t i = 0; i < key.size(); ++i) key[i] = exponents[i];
    return FindGroupByDimensions(key);
}

std::size_t UnitCatalog::ListUnitTypes(int group, int* ids) const {
    const std::uint32_t index = UnitId::GroupIndex(group);
    if (index >= converters.size()) return 0;
    const std::size_t count = converters[index].size();
    if (ids != nullptr) {
        for (std::size_t i = 0; i < count; ++i) ids[i] = static_cast<int>(i + 1) | group;
    }
    return count;
}

}  // namespace Mensura
