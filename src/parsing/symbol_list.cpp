#include "parsing/symbol_list.h"

#include "parsing/parse_symbol.h"

namespace Mensura {

SymbolList::SymbolList() : sentinel{&sentinel, &sentinel, nullptr, false} {}

SymbolList::~SymbolList() {
    Clear();
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

}  // namespace Mensura
