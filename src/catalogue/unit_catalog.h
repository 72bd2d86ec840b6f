// The one process-wide catalogue of symbols, built on the table of units: the
// symbols of both languages, the group names, the operators and the parse
// dictionary. Built once at library load and read-only after that, so every
// reader may use it from any thread without a lock.
#ifndef MENSURA_CATALOGUE_UNIT_CATALOG_H
#define MENSURA_CATALOGUE_UNIT_CATALOG_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <memory_resource>
#include <string>
#include <utility>
#include <vector>

#include "base/arena.h"
#include "base/double_array.h"
#include "mensura/mensura.hpp"
#include "units/unit_table.h"

namespace Mensura {

class ISymbol;
class IParseSymbol;
class IFormatSymbol;

// Every key of every language and every operator, to the symbol that reads
// it. The build lays the keys out as a double array with a number for each
// reader as its values (catalogue/dictionary_keys.h); the load makes the
// readers and hands their table, by number, to the dictionary.
class ParseDictionary {
public:
    // A dictionary without a key.
    ParseDictionary();
    // readers[0] is null; readers[n] the reader of number n, for every
    // number that the layout holds, which must be sound (DoubleArray::Sound).
    ParseDictionary(const DoubleArray::Layout& layout, const IParseSymbol* const* readers);

    // The symbol of the longest key that begins text, or null when none
    // does or text is null; *matched, when matched is not null, receives the
    // key's length in units, and is written only when a key is found.
    // Allocates nothing.
    const IParseSymbol* FindLongest(const char16_t* text, std::size_t* matched) const {
        return FindLongest(text, matched, readers);
    }
    // The same, looking at no key longer than `limit` units.
    const IParseSymbol* FindLongest(const char16_t* text, std::size_t* matched,
                                    std::size_t limit) const {
        return FindLongest(text, matched, limit, readers);
    }
    // The same two through another table of readers by number, such as the
    // everyday vocabulary's (EverydayVocabulary::Readers).
    const IParseSymbol* FindLongest(const char16_t* text, std::size_t* matched,
                                    const IParseSymbol* const* table) const {
        return table[DoubleArray::Find<false>(layout, text, matched, 0)];
    }
    const IParseSymbol* FindLongest(const char16_t* text, std::size_t* matched, std::size_t limit,
                                    const IParseSymbol* const* table) const {
        return table[DoubleArray::Find<true>(layout, text, matched, limit)];
    }
    // The table of readers by number that the lookups above read.
    const IParseSymbol* const* Readers() const { return readers; }
    // Every key with its symbol, depth first, the keys that a key begins in
    // the order of their next unit: a key before the keys it begins.
    std::vector<std::pair<std::u16string, const IParseSymbol*>> Keys() const;
    // The symbol of a reader number that the layout holds: what a lookup of
    // a key whose value is that number finds. Null for 0.
    const IParseSymbol* Reader(std::size_t number) const { return readers[number]; }

private:
    DoubleArray::Layout layout;
    const IParseSymbol* const* readers;
};

class UnitCatalog {
public:
    // Builds the symbols of both languages and the parse dictionary on
    // `table`, which must outlive the catalogue.
    explicit UnitCatalog(const UnitTable& table = UnitTable::Instance());
    ~UnitCatalog();
    UnitCatalog(const UnitCatalog&) = delete;
    UnitCatalog& operator=(const UnitCatalog&) = delete;

    // The catalogue of this process.
    static const UnitCatalog& Instance() { return s_instance; }

    // The table of units that the symbols name.
    const UnitTable& Units() const { return table; }

    static constexpr int kLanguages = 2;  // 0 English, 1 Simplified Chinese

    // The symbol of a complete symbol id in a language, or null when the
    // language or any field is out of range.
    const ISymbol* FindSymbol(int id, int language) const;
    // The same symbol as it renders, what its AsFormat gives, without the
    // call through the symbol: a rendering waits for it before all else.
    const IFormatSymbol* FindFormatSymbol(int id, int language) const;
    // Writes the symbol ids of the unit type of `id` (its bits merged into
    // every element) when ids is not null, and returns their count; 0 unless
    // id holds a known group and type.
    std::size_t ListUnitSymbols(int id, int* ids) const;
    // The symbol ids of the unit type of `id`, from its group and type fields
    // alone: writes the first min(count, capacity) of them when ids is not
    // null and returns the count; 0 unless id holds a known group and type.
    std::size_t CopyUnitSymbols(int id, int* ids, std::size_t capacity) const;
    // Copies the display name of a group, unit type or symbol id with its
    // terminator. Failure when buffer is null, the id or language is unknown,
    // or size is not above the text's length (the buffer is then untouched).
    ErrorCode CopyDisplayName(int id, char16_t* buffer, std::size_t size, int language) const;

    // Every key of every language and every operator, to the symbol that reads it.
    const ParseDictionary& Dictionary() const { return dictionary; }

    // The marks and signs that read as operators.
    static constexpr std::size_t kOperators = 17;

private:
    friend class VocabularyBuilder;
    // The place of the unit type of id among all types, as the table's
    // TypePlace gives it, from the catalogue's own copy of the runs; false
    // when the group or type field is 0 or out of range.
    bool TypePlace(int id, std::size_t& place) const;
    // The place of the symbol of id among all symbols of a language; false
    // when the language or any field is out of range.
    bool SymbolPlace(int id, int language, std::size_t& at) const;
    static UnitCatalog s_instance;

    const UnitTable& table;
    // Everything that the catalogue makes, its symbols, operators and
    // arrays, lives in its arena: the load's one block of the heap.
    Arena arena;
    // Every symbol of the catalogue renders: a slot holds it by its
    // rendering face, which a rendering asks for first of all, and FindSymbol
    // turns that into the symbol.
    using SymbolSlot = std::unique_ptr<IFormatSymbol, DestroyInPlace>;
    using OperatorSlot = std::unique_ptr<IParseSymbol, DestroyInPlace>;

    // The symbols of each language in one array, type after type in the order
    // of the table's places; the symbols of the type at place p stand from
    // firstSymbol[p] up to firstSymbol[p + 1]. Both languages have the same
    // shape.
    std::pmr::vector<std::uint32_t> firstSymbol;
    // For every value of the group field, the place of its first type and
    // the number of its types: a lookup of a symbol reads them here rather
    // than through the table, one load sooner.
    struct TypeRun {
        std::uint32_t first = 0;
        std::uint32_t count = 0;
    };
    std::array<TypeRun, 256> typeRuns{};
    std::array<std::pmr::vector<SymbolSlot>, kLanguages> symbols;
    std::array<std::pmr::vector<const char16_t*>, kLanguages> groupNames;
    std::array<OperatorSlot, kOperators> operators;
    ParseDictionary dictionary;
};

}  // namespace Mensura

#endif  // MENSURA_CATALOGUE_UNIT_CATALOG_H
