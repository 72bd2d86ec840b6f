// The flat list that a parse lays a text out in, and that the symbols rewrite
// until one result is left.
//
// A doubly linked ring with a sentinel, so that iterators stay valid across
// insertion and across erasure of other elements, and end() has the last
// element as its predecessor. Nodes and the symbols that a parse makes come
// from storage inside the list, so an ordinary parse touches no heap; a long
// text spills over onto the heap and still works.
#ifndef MENSURA_GRAMMAR_SYMBOL_LIST_H
#define MENSURA_GRAMMAR_SYMBOL_LIST_H

#include <cstddef>
#include <new>
#include <utility>

namespace Mensura {

class IParseSymbol;

class SymbolList {
    struct Node;

public:
    class iterator {
    public:
        iterator() = default;
        const IParseSymbol* operator*() const { return node->symbol; }
        const IParseSymbol* symbol() const { return node->symbol; }
        iterator& operator++() {
            node = node->next;
            return *this;
        }
        iterator& operator--() {
            node = node->previous;
            return *this;
        }
        iterator next() const { return iterator(node->next); }
        iterator previous() const { return iterator(node->previous); }
        bool operator==(const iterator& other) const { return node == other.node; }
        bool operator!=(const iterator& other) const { return node != other.node; }

    private:
        friend class SymbolList;
        explicit iterator(Node* n) : node(n) {}
        Node* node = nullptr;
    };

    SymbolList();
    ~SymbolList();
    SymbolList(const SymbolList&) = delete;
    SymbolList& operator=(const SymbolList&) = delete;

    iterator begin() { return iterator(sentinel.next); }
    iterator end() { return iterator(&sentinel); }
    bool empty() const { return sentinel.next == &sentinel; }
    std::size_t size() const { return count; }

    // Adds an element before `position` that borrows `symbol`.
    iterator Insert(iterator position, const IParseSymbol* symbol) {
        return InsertNode(position, symbol, false);
    }
    iterator PushBack(const IParseSymbol* symbol) { return Insert(end(), symbol); }

    // Makes a symbol that the new element before `position` owns.
    template <typename Symbol, typename... Args>
    iterator InsertNew(iterator position, Args&&... args) {
        return InsertNode(position, New<Symbol>(std::forward<Args>(args)...), true);
    }
    template <typename Symbol, typename... Args>
    iterator PushBackNew(Args&&... args) {
        return InsertNew<Symbol>(end(), std::forward<Args>(args)...);
    }

    // Puts a new owned symbol into the element at `position`, destroying the
    // old one if the element owned it.
    template <typename Symbol, typename... Args>
    void Replace(iterator position, Args&&... args) {
        Assign(position, New<Symbol>(std::forward<Args>(args)...), true);
    }
    // Puts a borrowed symbol into the element at `position`.
    void ReplaceBorrowed(iterator position, const IParseSymbol* symbol) {
        Assign(position, symbol, false);
    }

    // Removes the element at `position` and returns the one behind it.
    iterator Erase(iterator position) {
        Node* node = position.node;
        Node* next = node->next;
        node->previous->next = next;
        next->previous = node->previous;
        --count;
        if (node->owned) Destroy(node->symbol);
        Release(node);
        return iterator(next);
    }
    // Removes the elements from `first` up to, not including, `last`.
    iterator Erase(iterator first, iterator last);
    // Removes the elements from `first` to the end, linking the list's end
    // once rather than unlinking each.
    void EraseToEnd(iterator first) {
        Node* node = first.node;
        if (node == &sentinel) return;
        node->previous->next = &sentinel;
        sentinel.previous = node->previous;
        while (node != &sentinel) {
            Node* next = node->next;
            --count;
            if (node->owned) Destroy(node->symbol);
            Release(node);
            node = next;
        }
    }
    void Clear() { Erase(begin(), end()); }

    bool Owns(iterator position) const { return position.node->owned; }

    // Exchanges the symbols of two elements, each going with its owned flag;
    // the elements themselves, and iterators to them, stay where they are.
    void Swap(iterator a, iterator b) {
        std::swap(a.node->symbol, b.node->symbol);
        std::swap(a.node->owned, b.node->owned);
    }

private:
    struct Node {
        Node* previous;
        Node* next;
        const IParseSymbol* symbol;
        bool owned;
    };

    static constexpr std::size_t kInlineNodes = 24;
    static constexpr std::size_t kInlineBytes = 1536;

    iterator InsertNode(iterator position, const IParseSymbol* symbol, bool owned) {
        Node* node;
        if (freeNodes != nullptr) {
            node = freeNodes;
            freeNodes = node->next;
        } else if (usedNodes < kInlineNodes) {
            node = &nodes[usedNodes++];
        } else {
            node = new Node;
        }
        Node* after = position.node;
        *node = Node{after->previous, after, symbol, owned};
        after->previous->next = node;
        after->previous = node;
        ++count;
        return iterator(node);
    }
    void Release(Node* node) {
        if (node >= nodes && node < nodes + kInlineNodes) {
            node->next = freeNodes;
            freeNodes = node;
        } else {
            delete node;
        }
    }
    void Assign(iterator position, const IParseSymbol* symbol, bool owned) {
        Node* node = position.node;
        const IParseSymbol* old = node->symbol;
        const bool ownedOld = node->owned;
        node->symbol = symbol;
        node->owned = owned;
        if (ownedOld && old != symbol) Destroy(old);
    }
    void Destroy(const IParseSymbol* symbol);
    void* Allocate(std::size_t size, std::size_t alignment) {
        const std::size_t start = (usedBytes + alignment - 1) & ~(alignment - 1);
        if (start + size <= kInlineBytes) {
            usedBytes = start + size;
            return arena + start;
        }
        return ::operator new(size);
    }
    bool InArena(const void* pointer) const {
        const auto* byte = static_cast<const unsigned char*>(pointer);
        return byte >= arena && byte < arena + kInlineBytes;
    }

    template <typename Symbol, typename... Args>
    Symbol* New(Args&&... args) {
        return ::new (Allocate(sizeof(Symbol), alignof(Symbol)))
            Symbol(std::forward<Args>(args)...);
    }

    Node sentinel;
    std::size_t count = 0;
    Node* freeNodes = nullptr;
    std::size_t usedNodes = 0;
    std::size_t usedBytes = 0;
    Node nodes[kInlineNodes];
    alignas(std::max_align_t) unsigned char arena[kInlineBytes];
};

}  // namespace Mensura

#endif  // MENSURA_GRAMMAR_SYMBOL_LIST_H
