// The vocabularies as the load reads them, worked out at compile time from
// the lists of vocabulary.h: every text that a symbol or a group shows, in
// both languages, stands in one array of units, each with its terminator,
// and the tables name a text by its place there. The tables thus hold
// numbers alone: they are constants of the library's image that the loader
// neither relocates nor copies, where a table of pointers to the literals
// would be written over at every start.
//
// The lists themselves, with their pointers, serve the constant evaluation
// here and elsewhere (the dictionary's keys, the everyday plurals), and the
// tests and tools; the library's code reads only these tables at run time.
#ifndef MENSURA_CATALOGUE_PACKED_VOCABULARY_H
#define MENSURA_CATALOGUE_PACKED_VOCABULARY_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>

#include "catalogue/dictionary_keys.h"
#include "catalogue/vocabulary.h"

namespace Mensura::Vocabulary {

// Both lists stand in the order of groups and, within a group, of types:
// a group's lines are one run.
template <typename Entry, std::size_t N>
constexpr bool InPlaceOrder(const TypeLine<Entry> (&lines)[N]) {
    for (std::size_t i = 1; i < N; ++i) {
        const auto& a = lines[i - 1];
        const auto& b = lines[i];
        if (a.group > b.group || (a.group == b.group && a.type >= b.type)) return false;
    }
    return true;
}
static_assert(InPlaceOrder(kEnglishTypes), "english.inc: groups and types out of order");
static_assert(InPlaceOrder(kChineseTypes), "chinese.inc: groups and types out of order");

// Every Chinese line names a type of the English list, and every entry of it
// one of that type's places.
constexpr bool ChineseFitsEnglish() {
    std::size_t english = 0;
    for (const auto& line : kChineseTypes) {
        while (english < std::size(kEnglishTypes) && (kEnglishTypes[english].group < line.group ||
                                                      (kEnglishTypes[english].group == line.group &&
                                                       kEnglishTypes[english].type < line.type))) {
            ++english;
        }
        if (english == std::size(kEnglishTypes) || kEnglishTypes[english].group != line.group ||
            kEnglishTypes[english].type != line.type) {
            return false;
        }
        for (std::size_t i = 0; i < line.count; ++i) {
            const int symbol = line.entries[i].symbol;
            if (symbol < 1 || static_cast<std::size_t>(symbol) > kEnglishTypes[english].count)
                return false;
        }
    }
    return true;
}
static_assert(ChineseFitsEnglish(), "chinese.inc: a type or place that English does not have");

// A text in the array of texts: its first unit and its length; its
// terminator stands behind it.
struct Text {
    std::uint32_t at = 0;
    std::uint32_t length = 0;
};

// A place as the load makes its objects: its text in each language, and the
// kind and marks that both languages share.
struct Place {
    Text text[2];
    SymbolKind kind;
    unsigned marks = 0;
};

// An English line: its type, and where its places stand among all places.
struct Line {
    int group = 0;
    int type = 0;
    std::uint32_t first = 0;
    std::uint32_t count = 0;
};

// The name of the unit of pure numbers in each language, which it shows in
// place of its empty text.
inline constexpr std::u16string_view kUnitlessNames[] = {u"unitless", u"无量纲"};

// Calls visit(text) for every text that the packed tables hold, in the order
// in which they stand: each English place, each place that the Chinese list
// gives a text of its own, the group names of both languages, the names of
// the unit of pure numbers.
template <typename Visit>
constexpr void ForEachPackedText(Visit&& visit) {
    for (const auto& line : kEnglishTypes) {
        for (std::size_t i = 0; i < line.count; ++i) visit(line.entries[i].text);
    }
    for (const auto& line : kChineseTypes) {
        for (std::size_t i = 0; i < line.count; ++i) visit(line.entries[i].text);
    }
    for (const GroupLine& group : kEnglishGroups) visit(std::u16string_view(group.name));
    for (const GroupLine& group : kChineseGroups) visit(std::u16string_view(group.name));
    for (std::u16string_view name : kUnitlessNames) visit(name);
}

// A symbol keeps its text's length in 16 bits (SimpleFormatSymbol).
constexpr bool TextsFitSixteenBits() {
    bool fit = true;
    ForEachPackedText([&fit](std::u16string_view text) { fit = fit && text.size() <= 0xFFFF; });
    return fit;
}
static_assert(TextsFitSixteenBits(), "a vocabulary text of 65536 units or more");

constexpr std::size_t PackedTextUnits() {
    std::size_t units = 0;
    ForEachPackedText([&units](std::u16string_view text) { units += text.size() + 1; });
    return units;
}

struct PackedVocabulary {
    std::array<char16_t, PackedTextUnits()> texts{};
    std::array<Place, DictionaryKeys::kPlaces> places{};
    std::array<Line, DictionaryKeys::kEnglishLines> lines{};
    // By language, then by group number less one.
    std::array<Text, DictionaryKeys::kGroupCount> groupNames[2]{};
    Text unitlessNames[2]{};

    constexpr const char16_t* At(const Text& text) const { return texts.data() + text.at; }
    constexpr std::u16string_view View(const Text& text) const {
        return {texts.data() + text.at, text.length};
    }
};

constexpr PackedVocabulary PackVocabulary() {
    PackedVocabulary packed;
    std::size_t size = 0;
    const auto add = [&packed, &size](std::u16string_view text) {
        const Text at{static_cast<std::uint32_t>(size), static_cast<std::uint32_t>(text.size())};
        for (char16_t unit : text) packed.texts[size++] = unit;
        packed.texts[size++] = u'\0';
        return at;
    };
    std::size_t line = 0;
    for (const auto& english : kEnglishTypes) {
        const std::uint32_t first = DictionaryKeys::kFirstPlace[line];
        packed.lines[line++] = {english.group, english.type, first,
                                static_cast<std::uint32_t>(english.count)};
        for (std::size_t i = 0; i < english.count; ++i) {
            const EnglishEntry& entry = english.entries[i];
            Place& place = packed.places[first + i];
            place.text[0] = place.text[1] = add(entry.text);
            place.kind = entry.kind;
            place.marks = entry.marks;
        }
    }
    // A Chinese place takes the English text where its list says nothing.
    // Both lists stand in the order of groups and types.
    line = 0;
    for (const auto& chinese : kChineseTypes) {
        while (packed.lines[line].group != chinese.group || packed.lines[line].type != chinese.type)
            ++line;
        for (std::size_t i = 0; i < chinese.count; ++i) {
            const ChineseEntry& entry = chinese.entries[i];
            packed.places[packed.lines[line].first + entry.symbol - 1].text[1] = add(entry.text);
        }
    }
    for (int language = 0; language < 2; ++language) {
        for (const GroupLine& group : language == 0 ? kEnglishGroups : kChineseGroups)
            packed.groupNames[language][group.group - 1] = add(group.name);
    }
    for (int language = 0; language < 2; ++language)
        packed.unitlessNames[language] = add(kUnitlessNames[language]);
    return packed;
}

inline constexpr PackedVocabulary kPacked = PackVocabulary();

// Every group is named once in each language, so that no name is missing.
template <std::size_t N>
constexpr bool NamesEachGroupOnce(const GroupLine (&names)[N]) {
    bool named[DictionaryKeys::kGroupCount] = {};
    for (const GroupLine& name : names) {
        if (name.group < 1 || name.group > DictionaryKeys::kGroupCount || named[name.group - 1])
            return false;
        named[name.group - 1] = true;
    }
    return N == static_cast<std::size_t>(DictionaryKeys::kGroupCount);
}
static_assert(NamesEachGroupOnce(kEnglishGroups) && NamesEachGroupOnce(kChineseGroups),
              "a vocabulary names a group twice, or leaves one without a name");

}  // namespace Mensura::Vocabulary

#endif  // MENSURA_CATALOGUE_PACKED_VOCABULARY_H
