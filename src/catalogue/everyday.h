// The vocabulary of the everyday reading, built from everyday.inc on top of
// the catalogue: the keys it adds (spelled words and plurals, SI prefixes,
// the Greek mu, the product signs), the catalogue symbols whose meaning it
// replaces, and the vulgar fractions. Built once, when a formatter first turns
// the everyday reading on, and read-only after that, like the catalogue.
#ifndef MENSURA_CATALOGUE_EVERYDAY_H
#define MENSURA_CATALOGUE_EVERYDAY_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "base/radix_tree.h"

namespace Mensura {

class IParseSymbol;
class GenericOperand;
class UnitCatalog;

// What an everyday key or a replaced symbol reads as: one symbol in every
// locale, or another where the locale is the United States'.
struct EverydayMeaning {
    const IParseSymbol* everywhere = nullptr;
    const IParseSymbol* inUS = nullptr;
    const IParseSymbol* For(bool us) const { return us && inUS != nullptr ? inUS : everywhere; }
};

class EverydayVocabulary {
public:
    explicit EverydayVocabulary(const UnitCatalog& catalog);
    ~EverydayVocabulary();
    EverydayVocabulary(const EverydayVocabulary&) = delete;
    EverydayVocabulary& operator=(const EverydayVocabulary&) = delete;

    // The vocabulary of this process, made on the first call.
    static const EverydayVocabulary& Instance();

    // The symbol that reads in place of a catalogue symbol: its everyday
    // meaning where the list replaces it, else the symbol itself.
    const IParseSymbol* Substitute(const IParseSymbol* symbol, bool us) const {
        // Most symbols are not among the few replaced ones: a probe or two
        // of a small table of them says so.
        for (std::size_t slot = SlotOf(symbol);; slot = (slot + 1) & slotMask) {
            const Replaced* entry = slots[slot];
            if (entry == nullptr) return symbol;
            if (entry->first == symbol) {
                const IParseSymbol* meaning = entry->second->For(us);
                return meaning != nullptr ? meaning : symbol;
            }
        }
    }

    // The readers of the catalogue's dictionary by number, each replaced by
    // its everyday meaning in the locale of the United States or another
    // (Substitute): a lookup through them reads a key as this vocabulary
    // does, without a second lookup (ParseDictionary::FindLongest).
    const IParseSymbol* const* Readers(bool us) const { return readers[us ? 1 : 0].data(); }

    // The longest everyday key at text, no longer than limit: the symbol
    // that it reads as in the locale, or null.
    const IParseSymbol* FindLongest(const char16_t* text, std::size_t* matched, std::size_t limit,
                                    bool us) const {
        const EverydayMeaning* meaning = words.FindLongest(text, matched, limit);
        return meaning != nullptr ? meaning->For(us) : nullptr;
    }
    // The same with no limit.
    const IParseSymbol* FindLongest(const char16_t* text, std::size_t* matched, bool us) const {
        const EverydayMeaning* meaning = words.FindLongest(text, matched);
        return meaning != nullptr ? meaning->For(us) : nullptr;
    }

    // Whether an everyday key may begin with `unit`: false only where none
    // does, so that a lookup there can be skipped. Units are told apart by
    // their low byte.
    bool MayBeginWord(char16_t unit) const {
        return ((wordStarts[(unit >> 6) & 3] >> (unit & 63)) & 1) != 0;
    }
    // The symbol of the blank, which both readings read at a blank: no key
    // of the catalogue or of the vocabulary goes on behind one.
    const IParseSymbol* Blank() const { return blank; }

    // A vulgar fraction such as "½": its numerator and denominator.
    struct Fraction {
        char16_t character;
        int numerator;
        int denominator;
    };
    static const Fraction* FindFraction(char16_t unit);

    // The operators that the everyday forms put into a list.
    struct Operators {
        const IParseSymbol* space = nullptr;
        const IParseSymbol* division = nullptr;
        const IParseSymbol* degree = nullptr;
        const IParseSymbol* prime = nullptr;
        const IParseSymbol* doublePrime = nullptr;
    };
    const Operators& Marks() const { return marks; }

    // Every key that the reading adds, and how many symbols it replaces.
    const RadixTree<const EverydayMeaning*>& Words() const { return words; }
    std::size_t ReplacedCount() const { return replaced.size(); }

    // The room that the build makes for the tree of words at once, so that
    // its pools never move while it grows: a little more than they take.
    static constexpr std::size_t kWordNodes = 2800;
    static constexpr std::size_t kWordUnits = 5400;
    static constexpr std::size_t kWordEdges = 2900;

private:
    friend class EverydayBuilder;
    // Both are reserved before the build and never grow past their room:
    // the words and the replaced symbols point into them.
    std::vector<EverydayMeaning> meanings;
    std::vector<GenericOperand> scaled;
    RadixTree<const EverydayMeaning*> words;
    Operators marks;
    // The low bytes of the units that begin an everyday key, a bit each.
    std::uint64_t wordStarts[4] = {};
    const IParseSymbol* blank = nullptr;
    using Replaced = std::pair<const IParseSymbol*, const EverydayMeaning*>;
    // Orders by the catalogue symbol; std::less orders any two pointers.
    struct BySymbol {
        bool operator()(const Replaced& entry, const IParseSymbol* key) const {
            return std::less<const IParseSymbol*>()(entry.first, key);
        }
        bool operator()(const Replaced& a, const Replaced& b) const { return (*this)(a, b.first); }
    };
    std::vector<Replaced> replaced;  // sorted BySymbol
    // The entries of `replaced` by their symbol, open addressing with linear
    // probes from SlotOf, in a power of two of slots at least four times
    // their count; null where none stands.
    std::vector<const Replaced*> slots;
    std::size_t slotMask = 0;
    std::vector<const IParseSymbol*> readers[2];  // elsewhere, in the United States
    std::size_t SlotOf(const IParseSymbol* symbol) const {
        const auto address = reinterpret_cast<std::uintptr_t>(symbol);
        return static_cast<std::size_t>((address >> 3) * 0x9E3779B97F4A7C15u >> 32) & slotMask;
    }
};

}  // namespace Mensura

#endif  // MENSURA_CATALOGUE_EVERYDAY_H
