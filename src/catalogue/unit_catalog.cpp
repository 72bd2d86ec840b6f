#include "catalogue/unit_catalog.h"

#include <algorithm>
#include <array>

#include "notations/format_symbol.h"

// The pools of the dictionary, written by mensura_generate_dictionary.
#include "catalogue/dictionary_layout.inc"

namespace Mensura {

// The most bytes that the vocabularies take from the catalogue's memory.
std::size_t VocabularyBytes();
void RegisterVocabulary(UnitCatalog& catalog);

UnitCatalog::UnitCatalog(const UnitTable& units)
    : table(units),
      arena(VocabularyBytes()),
      firstSymbol(arena.Resource()),
      symbols{std::pmr::vector<SymbolSlot>(arena.Resource()),
              std::pmr::vector<SymbolSlot>(arena.Resource())},
      groupNames{std::pmr::vector<const char16_t*>(arena.Resource()),
                 std::pmr::vector<const char16_t*>(arena.Resource())},
      dictionary() {
    RegisterVocabulary(*this);
}

UnitCatalog::~UnitCatalog() {
    // The dictionary only points at the symbols; they go language by
    // language, then the operators. The memory of all of them goes with the
    // arena, last.
    dictionary = ParseDictionary();
    for (auto& language : symbols) language.clear();
    for (auto& symbol : operators) symbol.reset();
}

namespace {

// A layout without a key, over the codes of the laid-out dictionary: a
// root without a value, and room for every code behind it, all free.
constexpr std::array<DoubleArray::Slot, DictionaryLayout::kLayout.codeCount + 1> NoKeySlots() {
    std::array<DoubleArray::Slot, DictionaryLayout::kLayout.codeCount + 1> slots{};
    for (DoubleArray::Slot& slot : slots) slot = {0, DoubleArray::kNoParent, 0};
    return slots;
}
constexpr auto kNoKeySlots = NoKeySlots();
constexpr DoubleArray::Layout kNoKeys{
    kNoKeySlots.data(), kNoKeySlots.size(), DictionaryLayout::kLayout.codes,
    DictionaryLayout::kLayout.units, DictionaryLayout::kLayout.codeCount};
const IParseSymbol* const kNoReaders[1] = {nullptr};

}  // namespace

ParseDictionary::ParseDictionary() : layout(kNoKeys), readers(kNoReaders) {}

ParseDictionary::ParseDictionary(const DoubleArray::Layout& keys,
                                 const IParseSymbol* const* symbolReaders)
    : layout(keys), readers(symbolReaders) {}

std::vector<std::pair<std::u16string, const IParseSymbol*>> ParseDictionary::Keys() const {
    std::vector<std::pair<std::u16string, const IParseSymbol*>> keys;
    const auto numbered = DoubleArray::Keys(layout);
    keys.reserve(numbered.size());
    for (const auto& [key, reader] : numbered) keys.emplace_back(key, readers[reader]);
    return keys;
}

bool UnitCatalog::TypePlace(int id, std::size_t& place) const {
    const TypeRun run = typeRuns[(static_cast<std::uint32_t>(id) >> 12) & 0xFF];
    const std::uint32_t type = UnitId::TypeIndex(id);
    if (type >= run.count) return false;
    place = run.first + type;
    return place + 1 < firstSymbol.size();
}

bool UnitCatalog::SymbolPlace(int id, int language, std::size_t& at) const {
    if (static_cast<unsigned>(language) >= static_cast<unsigned>(kLanguages)) return false;
    std::size_t place = 0;
    if (!TypePlace(id, place)) return false;
    const std::uint32_t symbol = UnitId::SymbolIndex(id);
    if (symbol >= firstSymbol[place + 1] - firstSymbol[place]) return false;
    at = firstSymbol[place] + symbol;
    return true;
}

const ISymbol* UnitCatalog::FindSymbol(int id, int language) const {
    std::size_t at = 0;
    return SymbolPlace(id, language, at) ? symbols[language][at].get() : nullptr;
}

const IFormatSymbol* UnitCatalog::FindFormatSymbol(int id, int language) const {
    std::size_t at = 0;
    return SymbolPlace(id, language, at) ? symbols[language][at].get() : nullptr;
}

std::size_t UnitCatalog::ListUnitSymbols(int id, int* ids) const {
    std::size_t place = 0;
    if (!TypePlace(id, place)) return 0;
    const std::size_t count = firstSymbol[place + 1] - firstSymbol[place];
    if (ids != nullptr) {
        for (std::size_t i = 0; i < count; ++i) ids[i] = (static_cast<int>(i + 1) << 20) | id;
    }
    return count;
}

std::size_t UnitCatalog::CopyUnitSymbols(int id, int* ids, std::size_t capacity) const {
    const int unit = static_cast<int>(static_cast<std::uint32_t>(id) & UnitId::UnitMask);
    const std::size_t count = ListUnitSymbols(unit, nullptr);
    const std::size_t written = ids != nullptr ? std::min(count, capacity) : 0;
    for (std::size_t i = 0; i < written; ++i) ids[i] = (static_cast<int>(i + 1) << 20) | unit;
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

}  // namespace Mensura
