// Every key of the parse dictionary, in the order of registration, with the
// number of the reader that holds it. The build inserts them into a tree and
// writes its pools out as constant arrays (tools/generate_dictionary.cpp);
// the load makes the readers and finds each one's number here.
//
// A reader's number is 0 for none, then the operators from 1, then the
// places of English in the order of english.inc, then those of Chinese in
// the same order. A key that two readers claim stays with the first.
#ifndef MENSURA_CATALOGUE_DICTIONARY_KEYS_H
#define MENSURA_CATALOGUE_DICTIONARY_KEYS_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iterator>

#include "catalogue/vocabulary.h"

namespace Mensura::DictionaryKeys {

using namespace Vocabulary;

// The keys of the operators, in their order of registration. They come
// first, so that they win every collision of keys. The marks of the compound
// notations are operators too.
inline constexpr std::initializer_list<const char16_t*> kOperatorKeys[] = {
    {u"/"},                                                              // division
    {u" "},                                                              // space
    {u"·"},                                                              // multiplication
    {u"²"},                                                              // square
    {u"³"},                                                              // cube
    {u"(", u"（"},                                                       // left parenthesis
    {u")", u"）"},                                                       // right parenthesis
    {u"\u2032", u"\u0027", u"\u02B9", u"\u2019", u"\u02BC", u"\u2018"},  // prime
    {u"\u2033", u"\u0022", u"\u02BA", u"\u201D", u"\u201C"},             // double prime
    {u"\u2010", u"\u2012", u"\u2013", u"\u2014", u"\u2015", u"\u002D", u"\u2043"},  // dash
    {u"^"},                                                                         // caret
    {u"°"},                                                                         // degree
    {u"N"},                                                                         // north
    {u"E"},                                                                         // east
    {u"S"},                                                                         // south
    {u"W"},                                                                         // west
    {u"d"},                                                                         // day mark
};
inline constexpr std::size_t kOperators = std::size(kOperatorKeys);

// The notations whose objects read a number and the unit: only they hold keys.
constexpr bool Reads(Notation notation) {
    return notation == Notation::Plain || notation == Notation::TemperatureScale;
}

inline constexpr std::size_t kEnglishLines = std::size(kEnglishTypes);

// Where each English line's places begin among all places, and their count.
constexpr std::array<std::uint32_t, kEnglishLines + 1> FirstPlaces() {
    std::array<std::uint32_t, kEnglishLines + 1> first{};
    for (std::size_t i = 0; i < kEnglishLines; ++i)
        first[i + 1] = first[i] + static_cast<std::uint32_t>(kEnglishTypes[i].count);
    return first;
}
inline constexpr std::array<std::uint32_t, kEnglishLines + 1> kFirstPlace = FirstPlaces();
inline constexpr std::size_t kPlaces = kFirstPlace.back();

// The reader numbers.
inline constexpr std::size_t kFirstEnglish = 1 + kOperators;
inline constexpr std::size_t kFirstChinese = kFirstEnglish + kPlaces;
inline constexpr std::size_t kReaders = kFirstChinese + kPlaces;
static_assert(kReaders <= UINT16_MAX, "reader numbers no longer fit the dictionary's values");

constexpr std::size_t ReaderOf(int language, std::size_t place) {
    return (language == 0 ? kFirstEnglish : kFirstChinese) + place;
}

constexpr int kGroupCount = static_cast<int>(std::size(kRegistrationOrder));

// Where each group's lines begin in a list, by group number: the lines of a
// group g stand from starts[g] up to starts[g + 1].
using GroupStarts = std::array<std::size_t, kGroupCount + 2>;

template <typename Entry, std::size_t N>
constexpr GroupStarts StartsOf(const TypeLine<Entry> (&lines)[N]) {
    GroupStarts starts{};
    std::size_t at = 0;
    for (std::size_t group = 0; group < starts.size(); ++group) {
        while (at < N && lines[at].group < static_cast<int>(group)) ++at;
        starts[group] = at;
    }
    return starts;
}
inline constexpr GroupStarts kEnglishStarts = StartsOf(kEnglishTypes);
inline constexpr GroupStarts kChineseStarts = StartsOf(kChineseTypes);
static_assert(kEnglishStarts.back() == std::size(kEnglishTypes) && kEnglishStarts[1] == 0,
              "english.inc: a group number out of range");
static_assert(kChineseStarts.back() == std::size(kChineseTypes) && kChineseStarts[1] == 0,
              "chinese.inc: a group number out of range");

// Calls visit(key, reader) for every key in the order of registration:
// the operators, then English group by group in the order of registration,
// then the places that the Chinese list gives texts of their own. A Chinese
// place that takes the English entry asks for the very keys that English
// asked for, which all have a holder by then: it is not asked again.
template <typename Visit>
constexpr void ForEachKey(Visit&& visit) {
    for (std::size_t op = 0; op < kOperators; ++op) {
        for (const char16_t* key : kOperatorKeys[op]) visit(key, 1 + op);
    }
    for (int language = 0; language < 2; ++language) {
        for (const int group : kRegistrationOrder) {
            const TypeLine<ChineseEntry>* own = kChineseTypes + kChineseStarts[group];
            const TypeLine<ChineseEntry>* const ownEnd = kChineseTypes + kChineseStarts[group + 1];
            for (std::size_t at = kEnglishStarts[group]; at < kEnglishStarts[group + 1]; ++at) {
                const TypeLine<EnglishEntry>& line = kEnglishTypes[at];
                if (language == 1) {
                    while (own != ownEnd && own->type < line.type) ++own;
                    if (own == ownEnd || own->type != line.type) continue;
                    for (std::size_t i = 0; i < own->count; ++i) {
                        const ChineseEntry& entry = own->entries[i];
                        const EnglishEntry& english = line.entries[entry.symbol - 1];
                        if (!Reads(english.kind.notation) || (english.marks & NoKey)) continue;
                        const std::size_t reader = ReaderOf(1, kFirstPlace[at] + entry.symbol - 1);
                        visit(entry.text.data(), reader);
                        for (const char16_t* key : entry.keys) visit(key, reader);
                    }
                    continue;
                }
                for (std::size_t i = 0; i < line.count; ++i) {
                    const EnglishEntry& entry = line.entries[i];
                    if (!Reads(entry.kind.notation) || (entry.marks & NoKey)) continue;
                    const std::size_t reader = ReaderOf(0, kFirstPlace[at] + i);
                    // The text first, then the further keys in their order.
                    visit(entry.text.data(), reader);
                    for (const char16_t* key : entry.keys) visit(key, reader);
                }
            }
        }
    }
}

// A digest of every key and its reader in their order: a dictionary laid out
// from other keys, or in another order, has another one.
constexpr std::uint64_t Digest() {
    std::uint64_t hash = 0xcbf29ce484222325u;
    const auto mix = [&hash](std::uint64_t value) { hash = (hash ^ value) * 0x100000001b3u; };
    std::size_t keys = 0;
    ForEachKey([&](const char16_t* key, std::size_t reader) {
        for (const char16_t* unit = key; *unit != 0; ++unit) mix(*unit);
        mix(0x10000 + reader);
        ++keys;
    });
    mix(keys);
    return hash;
}

}  // namespace Mensura::DictionaryKeys

#endif  // MENSURA_CATALOGUE_DICTIONARY_KEYS_H
