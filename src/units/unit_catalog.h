// The one process-wide tree of unit groups, unit types and their converters.
// Built once at library load and read-only after that, so every reader may
// use it from any thread without a lock.
#ifndef MENSURA_UNITS_UNIT_CATALOG_H
#define MENSURA_UNITS_UNIT_CATALOG_H

#include <array>
#include <cstddef>
#include <memory>
#include <memory_resource>
#include <new>
#include <utility>
#include <vector>

#include "units/dimension_index.h"
#include "base/dimensions.h"
#include "units/unit_converter.h"
#include "base/unit_id.h"
#include "base/radix_tree.h"

namespace Mensura {

class ISymbol;
class IParseSymbol;

// What the load made of the parse dictionary: how often each source asked to
// insert a key, and how many of those the dictionary took.
struct DictionaryCounts {
    int calls = 0;        // every Insert
    int accepted = 0;     // those that bound a key
    int ownTexts = 0;     // calls with a symbol's own text
    int furtherKeys = 0;  // calls with a further key of a symbol
};

// Why the dictionary refused a symbol's key: who holds it already.
struct RefusedKeys {
    int sameTypeOtherLanguage = 0;  // a Chinese key that English holds for the same type
    int sameTypeSameLanguage = 0;   // a symbol of the same type in the same language
    int operatorHeld = 0;           // a unit text that an operator holds
    int otherType = 0;              // a key that another unit type claimed first
};

class UnitCatalog {
public:
    // Builds the conversion table, the symbols of both languages and the
    // parse dictionary.
    UnitCatalog();
    // Builds the conversion table alone, for measuring it.
    struct ConversionsOnlyTag {};
    static constexpr ConversionsOnlyTag ConversionsOnly{};
    explicit UnitCatalog(ConversionsOnlyTag);
    ~UnitCatalog();
    UnitCatalog(const UnitCatalog&) = delete;
    UnitCatalog& operator=(const UnitCatalog&) = delete;

    // The catalogue of this process.
    static const UnitCatalog& Instance() { return s_instance; }

    // The converter of the unit type of `id` (any symbol bits are ignored), or
    // null when the group or type field is 0 or out of range.
    const UnitConverter* FindConverter(int id) const {
        const GroupSlots& group = converterIndex[(static_cast<std::uint32_t>(id) >> 12) & 0xFF];
        const std::uint32_t type = UnitId::TypeIndex(id);
        return type < group.count ? group.types[type].get() : nullptr;
    }

    // The group id of the one group with these exponents; 0 when none or
    // several groups have them.
    int FindGroupByDimensions(const int (&exponents)[7]) const;
    int FindGroupByDimensions(const Dimensions& exponents) const {
        return dimensionIndex.Find(exponents);
    }

    // Writes the unit type ids of the group of `group` (its other bits merged
    // into every element) when ids is not null, and returns their count; 0
    // for an unknown group.
    std::size_t ListUnitTypes(int group, int* ids) const;

    std::size_t GroupCount() const { return groupCount; }

    static constexpr int kLanguages = 2;  // 0 English, 1 Simplified Chinese

    // The symbol of a complete symbol id in a language, or null when the
    // language or any field is out of range.
    const ISymbol* FindSymbol(int id, int language) const;
    // Writes the symbol ids of the unit type of `id` (its bits merged into
    // every element) when ids is not null, and returns their count; 0 unless
    // id holds a known group and type.
    std::size_t ListUnitSymbols(int id, int* ids) const;
    // Copies the display name of a group, unit type or symbol id with its
    // terminator. Failure when buffer is null, the id or language is unknown,
    // or size is not above the text's length (the buffer is then untouched).
    ErrorCode CopyDisplayName(int id, char16_t* buffer, std::size_t size, int language) const;

    // Every key of every language and every operator, to the symbol that reads it.
    const RadixTree<const IParseSymbol*>& Dictionary() const { return dictionary; }
    // The load's insertions into the dictionary, by source.
    const DictionaryCounts& OperatorCounts() const { return operatorCounts; }
    const DictionaryCounts& LanguageCounts(int language) const { return languageCounts[language]; }
    const RefusedKeys& Refusals() const { return refusals; }
    // Every key of the exponent index with its group id, or 0 where shared.
    const DimensionIndex& GroupsByDimensions() const { return dimensionIndex; }

private:
    friend class ConversionTableBuilder;
    friend class VocabularyBuilder;

    // Registers a group's exponents: a key seen twice holds 0 for good.
    void RegisterDimensions(const Dimensions& exponents, int group);

    // The place of the unit type of id among all types, group by group; false
    // when the group or type field is 0 or out of range.
    bool TypePlace(int id, std::size_t& place) const {
        const GroupSlots& group = converterIndex[(static_cast<std::uint32_t>(id) >> 12) & 0xFF];
        const std::uint32_t type = UnitId::TypeIndex(id);
        if (type >= group.count) return false;
        place = static_cast<std::size_t>(group.types - converters.data()) + type;
        return true;
    }

    static UnitCatalog s_instance;

    // Makes the memory of a catalogue that takes about `bytes` and builds
    // its conversion table.
    explicit UnitCatalog(std::size_t bytes);

    // Everything that the catalogue keeps, its converters, symbols, arrays
    // and dictionary, lives in one block of its own, made at once for the
    // size that the builders foresee: the load takes a handful of
    // allocations rather than thousands, and the heap keeps a block that
    // large for the next one of its size, where the same memory in many
    // pieces, freed together at the top of the heap, goes back to the system
    // and must be faulted in again. Nothing is freed before the catalogue
    // goes: a slot destroys its object in place, and the block goes last.
    // Should the load outgrow the block, the resource takes more from the
    // heap.
    template <typename Object, typename... Args>
    Object* New(Args&&... args) {
        return ::new (memory.allocate(sizeof(Object), alignof(Object)))
            Object(std::forward<Args>(args)...);
    }
    std::unique_ptr<unsigned char[]> block;
    std::pmr::monotonic_buffer_resource memory;

    struct DestroyInPlace {
        void operator()(UnitConverter* converter) const;
        void operator()(ISymbol* symbol) const;
    };
    using ConverterSlot = std::unique_ptr<UnitConverter, DestroyInPlace>;
    using SymbolSlot = std::unique_ptr<ISymbol, DestroyInPlace>;

    // Every value of the group field, 0 and those past the last group included,
    // finds an entry here, so that a conversion looks a unit up with one
    // compare: an unknown group has no slots.
    struct GroupSlots {
        const ConverterSlot* types = nullptr;
        std::uint32_t count = 0;
    };

    // Every unit type's converter in one array, group after group in the
    // order of their numbers; converterIndex finds a group's run of it.
    std::pmr::vector<ConverterSlot> converters;
    std::size_t groupCount = 0;
    DimensionIndex dimensionIndex;
    std::array<GroupSlots, 256> converterIndex{};

    // The symbols of each language in one array, type after type in the order
    // of the converters; the symbols of the type at place p stand from
    // firstSymbol[p] up to firstSymbol[p + 1]. Both languages have the same
    // shape.
    std::pmr::vector<std::uint32_t> firstSymbol;
    std::array<std::pmr::vector<SymbolSlot>, kLanguages> symbols;
    std::array<std::pmr::vector<const char16_t*>, kLanguages> groupNames;
    std::vector<std::unique_ptr<IParseSymbol>> operators;
    RadixTree<const IParseSymbol*> dictionary;
    DictionaryCounts operatorCounts;
    RefusedKeys refusals;
    std::array<DictionaryCounts, kLanguages> languageCounts;
};

}  // namespace Mensura

#endif  // MENSURA_UNITS_UNIT_CATALOG_H
