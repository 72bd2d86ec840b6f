// A path-compressed character tree from 16-bit text to a value: the one
// text-keyed structure of the library. One walk finds the longest key that
// begins a text, which is how a scanner tells "m" from "mm" from "m²".
#ifndef MENSURA_VOCABULARY_RADIX_TREE_H
#define MENSURA_VOCABULARY_RADIX_TREE_H

#include <cstddef>
#include <map>
#include <memory>
#include <string>

namespace Mensura {

// Keys are null-terminated 16-bit texts, compared unit by unit with no case
// folding; the empty text is a key like any other and lives on the root.
// Value is a pointer or a small integer code. Its default (null, 0) means
// "no value": storing it leaves the key unbound. The tree never owns what a
// pointer value points to.
//
// A node takes one of three forms:
// - run node: `text` holds one unit or more; consuming all of them leads to `next`;
// - branch node: `branches` is set; a child is reached by consuming its one unit;
// - leaf node: neither; nothing continues here.
// The key of a node is the sequence of units consumed from the root to it, and
// `value` is the value of that key. The root starts as a leaf without a value.
template <typename Value>
class RadixTree {
public:
    // Binds the key `text` to value. Returns 0 when bound; 1, with nothing
    // changed, when text is null or the key already has a value.
    int Insert(const char16_t* text, Value value) { return Bind(text, value, false); }
    // Binds the key `text` to value, replacing the value it had. Returns 0,
    // or 1 for a null text.
    int InsertOrAssign(const char16_t* text, Value value) { return Bind(text, value, true); }
    // Unbinds the key `text`; nodes that no longer lead to a value go.
    // Returns 0 when the key had a value, else 1 (a null text included).
    int Erase(const char16_t* text);

    // The value of the longest key that is a prefix of text, or the default
    // when there is none or text is null. *matched, when matched is not null,
    // receives that key's length in units, and is written only when a value is
    // found. Allocates nothing.
    Value FindLongest(const char16_t* text, std::size_t* matched) const;

private:
    struct Node;
    using Branches = std::map<char16_t, std::unique_ptr<Node>>;  // by unit, unsigned order
    struct Node {
        Value value{};
        std::u16string text;
        std::unique_ptr<Node> next;
        std::unique_ptr<Branches> branches;
    };

    int Bind(const char16_t* text, Value value, bool replace);
    static bool Unbind(Node& node, const char16_t* rest, bool& erased);
    // How many units of run begin text; text's terminator ends the count.
    static std::size_t CommonLength(const std::u16string& run, const char16_t* text);

    Node root;
};

template <typename Value>
std::size_t RadixTree<Value>::CommonLength(const std::u16string& run, const char16_t* text) {
    std::size_t n = 0;
    while (n < run.size() && run[n] == text[n]) ++n;
    return n;
}

template <typename Value>
int RadixTree<Value>::Bind(const char16_t* text, Value value, bool replace) {
    if (text == nullptr) return 1;
    Node* node = &root;
    const char16_t* rest = text;
    while (*rest != 0) {
        if (node->branches) {
            auto found = node->branches->find(*rest);
            if (found == node->branches->end()) {
                found = node->branches->emplace(*rest, std::make_unique<Node>()).first;
            }
            node = found->second.get();
            ++rest;
            continue;
        }
        std::u16string& run = node->text;
        const std::size_t n = CommonLength(run, rest);
        if (n == run.size() && n > 0) {  // the whole run matches: go on behind it
            node = node->next.get();
            rest += n;
            continue;
        }
        if (n == 0 && run.empty()) {  // a leaf: the rest of the key becomes its run
            auto leaf = std::make_unique<Node>();
            leaf->value = value;
            run.assign(rest);
            node->next = std::move(leaf);
            return 0;
        }
        if (rest[n] == 0) {  // the key ends inside the run: split the run at its end
            auto tail = std::make_unique<Node>();
            tail->value = value;
            tail->text = run.substr(n);
            tail->next = std::move(node->next);
            node->next = std::move(tail);
            run.resize(n);
            return 0;
        }
        // The texts differ at n: a branch node there leads on to the run's
        // remainder and to a new leaf for the key. Everything that can fail to
        // allocate happens before the old link moves.
        auto branches = std::make_unique<Branches>();
        std::unique_ptr<Node>& oldSide = (*branches)[run[n]];
        std::unique_ptr<Node>& newSide = (*branches)[rest[n]];
        newSide = std::make_unique<Node>();
        std::unique_ptr<Node>* remainderLink = &oldSide;
        if (n + 1 < run.size()) {
            oldSide = std::make_unique<Node>();
            oldSide->text = run.substr(n + 1);
            remainderLink = &oldSide->next;
        }
        std::unique_ptr<Node> branchNode;
        if (n > 0) branchNode = std::make_unique<Node>();
        *remainderLink = std::move(node->next);
        if (branchNode) {
            branchNode->branches = std::move(branches);
            node->next = std::move(branchNode);
            run.resize(n);
        } else {
            run.clear();
            node->branches = std::move(branches);
        }
        node = newSide.get();
        rest += n + 1;
    }
    if (node->value != Value{} && !replace) return 1;
    node->value = value;
    return 0;
}

template <typename Value>
int RadixTree<Value>::Erase(const char16_t* text) {
    if (text == nullptr) return 1;
    bool erased = false;
    Unbind(root, text, erased);
    return erased ? 0 : 1;
}

// Unbinds the key `rest` below node. Returns true when node has become a leaf
// without a value, which its parent may then release.
template <typename Value>
bool RadixTree<Value>::Unbind(Node& node, const char16_t* rest, bool& erased) {
    if (*rest == 0) {
        erased = node.value != Value{};
        node.value = Value{};
    } else if (node.branches) {
        const auto found = node.branches->find(*rest);
        if (found == node.branches->end()) return false;
        if (Unbind(*found->second, rest + 1, erased)) {
            node.branches->erase(found);
            if (node.branches->empty()) node.branches.reset();
        }
    } else {
        const std::size_t length = node.text.size();
        if (length == 0 || CommonLength(node.text, rest) < length) return false;
        if (Unbind(*node.next, rest + length, erased)) {
            node.next.reset();
            node.text.clear();
        }
    }
    return node.value == Value{} && node.text.empty() && !node.branches;
}

template <typename Value>
Value RadixTree<Value>::FindLongest(const char16_t* text, std::size_t* matched) const {
    if (text == nullptr) return Value{};
    Value best{};
    const Node* node = &root;
    std::size_t count = 0;
    for (;;) {
        if (node->value != Value{}) {
            best = node->value;
            if (matched != nullptr) *matched = count;
        }
        if (text[count] == 0) break;
        if (node->branches) {
            const auto found = node->branches->find(text[count]);
            if (found == node->branches->end()) break;
            node = found->second.get();
            ++count;
        } else {
            const std::size_t length = node->text.size();
            if (length == 0 || CommonLength(node->text, text + count) < length) break;
            node = node->next.get();
            count += length;
        }
    }
    return best;
}

}  // namespace Mensura

#endif  // MENSURA_VOCABULARY_RADIX_TREE_H
