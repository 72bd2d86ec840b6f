#include "parsing/symbol_list.h"

#include "parsing/parse_symbol.h"

namespace Mensura {

SymbolList::SymbolList() : sentinel{&sentinel, &sentinel, nullptr, false} {}

SymbolList::~SymbolList() {
    Clear();
}

SymbolList::iterator SymbolList::InsertNode(iterator position, const IParseSymbol* symbol,
                                            bool owned) {
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

void SymbolList::Assign(iterator position, const IParseSymbol* symbol, bool owned) {
    Node* node = position.node;
    const IParseSymbol* old = node->symbol;
    const bool ownedOld = node->owned;
    node->symbol = symbol;
    node->owned = owned;
    if (ownedOld && old != symbol) Destroy(old);
}

SymbolList::iterator SymbolList::Erase(iterator position) {
    Node* node = position.node;
    Node* next = node->next;
    node->previous->next = next;
    next->previous = node->previous;
    --count;
    if (node->owned) Destroy(node->symbol);
    if (node >= nodes && node < nodes + kInlineNodes) {
        node->next = freeNodes;
        freeNodes = node;
    } else {
        delete node;
    }
    return iterator(next);
}

SymbolList::iterator SymbolList::Erase(iterator first, iterator last) {
    while (first != last) first = Erase(first);
    return last;
}

void SymbolList::Destroy(const IParseSymbol* symbol) {
    // The object may sit behind a virtual base: free it by its own address.
    const void* object = dynamic_cast<const void*>(symbol);
    symbol->~IParseSymbol();
    if (!InArena(object)) ::operator delete(const_cast<void*>(object));
}

void* SymbolList::Allocate(std::size_t size, std::size_t alignment) {
    const std::size_t start = (usedBytes + alignment - 1) & ~(alignment - 1);
    if (start + size <= kInlineBytes) {
        usedBytes = start + size;
        return arena + start;
    }
    return ::operator new(size);
}

}  // namespace Mensura
