// Symbol strings: a caller's own look for one catalogue symbol, literal text
// with numbered placeholders such as "{0} ft {1} in". A placeholder stands for
// one part (one number) of the symbol's rendering and names the part, not the
// position: "{1} in {0} ft" writes the inches first.
//
// A string becomes CustomSymbol objects that belong to one formatter. They
// render through the parts of the catalogue symbol, their `parent`, and read
// back through the formatter's CustomDictionary, whose paths are the
// sequences of their literals.
#ifndef MENSURA_NOTATIONS_SYMBOL_STRINGS_H
#define MENSURA_NOTATIONS_SYMBOL_STRINGS_H

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "base/radix_tree.h"
#include "grammar/parse_symbol.h"
#include "notations/format_symbol.h"
#include "numbers/number_settings.h"

namespace Mensura {

// What a symbol string is made of. literals[i] stands in front of placeholder
// i; one more literal may stand behind the last placeholder. `literals` holds
// as many texts as `indices` or one more, and its first text is empty when
// the string begins with a placeholder.
struct SymbolStringParts {
    std::vector<std::u16string> literals;
    std::vector<int> indices;
};

// Reads text from its first unit. "{{" and "}}" stand for one brace; "{n}",
// with decimal digits and nothing else between the braces, is placeholder n.
// Refuses (false, parts unspecified) a lone brace, an empty or malformed
// placeholder, a placeholder number above the largest int, and two
// placeholders with nothing between them. A null text is refused too.
bool SplitSymbolString(const char16_t* text, SymbolStringParts& parts);

class CustomSymbol final : public IParseSymbol, public IFormatSymbol {
public:
    // Copies both lists, then checks itself: parent not null, as many
    // indices as parent's LastPartIndex(form) plus one, as many literals as
    // indices or one more, and every number from 0 to the count minus 1
    // exactly once among the indices. An object that fails has no parent and
    // empty lists.
    CustomSymbol(const IFormatSymbol* parent, const std::vector<std::u16string>& literals,
                 const std::vector<int>& indices, int form);

    bool IsValid() const { return parent != nullptr; }
    const IFormatSymbol* Parent() const { return parent; }
    const std::vector<std::u16string>& Literals() const { return literals; }
    const std::vector<int>& Indices() const { return indices; }
    int Form() const { return form; }

    // Literals and parts in the order of the text. Any part that fails makes
    // the result Failure, a dimension mismatch included; so does a null buffer, an
    // invalid object or a text that does not fit with its terminator.
    Result Render(double value, const Dimensions& dims, char16_t* buffer, std::size_t size,
                  const NumberSettings& settings) const override;
    // Placeholder i of the text: parent's part indices[i].
    Result RenderPart(int part, double value, const Dimensions& dims, char16_t* buffer,
                      std::size_t size, const NumberSettings& settings) const override;
    // Puts the numbers at the head of the list, one per placeholder, into the
    // order of the parts and lets parent read them.
    ErrorCode ParsePart(SymbolList& list, int form) const override;
    // -3 for an invalid object; parent's for its own form; else -1.
    int LastPartIndex(int form) const override;
    // Always NotSet: a symbol string cannot be set on a symbol string.
    ErrorCode MakeCustomSymbols(CustomSymbolList& out, const std::vector<std::u16string>& literals,
                                const std::vector<int>& indices) const override;
    // Parent's text, or null for an invalid object.
    const char16_t* GetText() const override;

    // In whichever pass reaches it, the first: reads the numbers in front of
    // it by ParsePart, takes its own element out and sends the engine back to
    // the start of the list.
    ErrorCode Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                       const Dimensions& dimensions) const override;

private:
    std::vector<int> indices;
    std::vector<std::u16string> literals;
    const IFormatSymbol* parent;  // the catalogue's, which outlives every formatter
    int form;
};

// Makes a CustomSymbol and appends it to out. Failure, with out as it was, when the
// object is invalid.
ErrorCode AppendCustomSymbol(CustomSymbolList& out, const IFormatSymbol* parent,
                             const std::vector<std::u16string>& literals,
                             const std::vector<int>& indices, int form);

// The reading side of a formatter's symbol strings. A node holds at most one
// CustomSymbol, not owned, and leads by literal texts to child nodes: the
// path from the root to a symbol is the sequence of its literals. The numbers
// play no part in a path, so two strings with the same literals exclude each
// other, whatever symbol or form they belong to.
class CustomDictionary {
public:
    class Node {
    public:
        const CustomSymbol* Symbol() const { return symbol; }
        // The child under the longest literal that begins text, and that
        // literal's length in *matched; null when no literal does.
        const Node* FindLongest(const char16_t* text, std::size_t* matched) const {
            return keys.FindLongest(text, matched);
        }

    private:
        friend class CustomDictionary;
        bool LeadsNowhere() const { return symbol == nullptr && children.empty(); }

        const CustomSymbol* symbol = nullptr;
        RadixTree<Node*> keys;                        // literal to child
        std::vector<std::unique_ptr<Node>> children;  // owns what keys points at
    };

    const Node& Root() const { return root; }
    // True while no symbol string is set.
    bool Empty() const { return root.children.empty(); }

    // Puts symbol at the end of the path of its literals, making the nodes
    // that are missing. Failure, with nothing changed, when a symbol stands there.
    ErrorCode Put(const CustomSymbol& symbol);
    // Clears symbol from the end of its path, if it stands there, and erases
    // the nodes that then lead nowhere. Allocates nothing.
    void TakeOut(const CustomSymbol& symbol);
    // Builds anew the literal trees of the nodes along the path of symbol's
    // literals, as far as it exists, where erasing and moving have left more
    // room unused than the tree holds, so that a formatter whose strings
    // change back and forth does not grow. Changes no path; a tree that
    // runs out of memory on the way stays as it was.
    void Tidy(const CustomSymbol& symbol) noexcept;

    // The bytes of every node's literal tree: their pools, and the part of
    // them that the trees hold (RadixTree::PoolBytes and LiveBytes).
    std::size_t PoolBytes() const { return Measure(root, false); }
    std::size_t LiveBytes() const { return Measure(root, true); }

private:
    // The child of node under exactly `literal`, or null.
    static Node* Child(const Node& node, const std::u16string& literal);
    static void TakeOut(Node& node, const CustomSymbol& symbol, std::size_t depth);
    static std::size_t Measure(const Node& node, bool live);

    Node root;
};

// A formatter's symbol strings, by the complete symbol id that ResolveSymbol
// gives at Format time: the text as given and the objects made from it, for
// rendering and for reading, with the dictionary of their literals.
class SymbolStrings {
public:
    enum class Use { Formatting, Parsing };

    // Sets the string of `symbol` for one use. A formatting string renders in
    // place of the catalogue's symbol; strings of both uses read back, before
    // the general scan. A null or empty text removes the string (Success, also
    // when there is none); the text already stored changes nothing. Failure,
    // with everything as it was, when `parent` (the catalogue's symbol that
    // the id names) is null, for a malformed text, one with the wrong
    // placeholders for the symbol, or one whose literals another string
    // already has. All or nothing, also when memory runs out midway.
    ErrorCode Set(Use use, int symbol, const IFormatSymbol* parent, const char16_t* text);
    // Copies the stored text with its terminator. NotSet without a string;
    // Failure, buffer untouched, for a null buffer or a size not above the
    // text's length.
    ErrorCode Get(Use use, int symbol, char16_t* buffer, std::size_t size) const;
    // What renders `symbol` in place of the catalogue's symbol, or null.
    const IFormatSymbol* Renderer(int symbol) const;
    // True while no string is set.
    bool Empty() const { return dictionary.Empty(); }
    // The paths of every string's literals.
    const CustomDictionary& Dictionary() const { return dictionary; }

    // Reads the text through the strings, behind the numbers of `leading`
    // that stand at its start; `rest` is the text behind them. Success with
    // value set (in base units), ParseFailure when the text read through a
    // string but not as a value of `dimensions`, and Failure, with no trace
    // of the pass, when no string reads it.
    ErrorCode Read(const NumberSettings& numbers, SymbolList& leading, const char16_t* rest,
                   double& value, const Dimensions& dimensions) const;

private:
    // The text as given, and the objects made from it, which the entry owns;
    // the one of form 0, which renders, first.
    struct Entry {
        std::u16string text;
        CustomSymbolList symbols;
    };
    using Strings = std::map<int, Entry>;  // by symbol id

    Strings& Of(Use use) { return use == Use::Formatting ? formatting : parsing; }
    const Strings& Of(Use use) const { return use == Use::Formatting ? formatting : parsing; }

    Strings formatting;
    Strings parsing;
    // The paths of the objects of both maps; it points into them.
    CustomDictionary dictionary;
};

}  // namespace Mensura

#endif  // MENSURA_NOTATIONS_SYMBOL_STRINGS_H
