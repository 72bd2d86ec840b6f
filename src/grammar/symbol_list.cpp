#include "grammar/symbol_list.h"

#include "grammar/parse_symbol.h"

namespace Mensura {

SymbolList::SymbolList() : sentinel{&sentinel, &sentinel, nullptr, false} {}

SymbolList::~SymbolList() {
    // No links to keep up on the way out: each owned symbol goes, and each
    // node that came from the heap.
    for (Node* node = sentinel.next; node != &sentinel;) {
        Node* next = node->next;
        if (node->owned) Destroy(node->symbol);
        if (node < nodes || node >= nodes + kInlineNodes) delete node;
        node = next;
    }
}

SymbolList::iterator SymbolList::Erase(iterator first, iterator last) {
    while (first != last) first = Erase(first);
    return last;
}

void SymbolList::Destroy(const IParseSymbol* symbol) {
    // A part of an object lies where the object does. One on the heap may
    // sit behind a virtual base: it is freed by its own address.
    if (InArena(symbol)) {
        symbol->~IParseSymbol();
        return;
    }
    const void* object = dynamic_cast<const void*>(symbol);
    symbol->~IParseSymbol();
    ::operator delete(const_cast<void*>(object));
}

}  // namespace Mensura
