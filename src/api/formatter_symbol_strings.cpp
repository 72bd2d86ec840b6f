// A formatter's symbol strings: setting, replacing and removing them, all or
// nothing, and reading them back.
#include <algorithm>

#include "notations/symbol_strings.h"
#include "api/formatter_impl.h"
#include "units/unit_catalog.h"

namespace Mensura {

namespace {

ErrorCode CopyStored(const std::map<int, SymbolStringEntry>& strings, int symbol, char16_t* buffer,
                     std::size_t size) {
    const auto found = strings.find(symbol);
    if (found == strings.end()) return ErrorCode::NotSet;
    const std::u16string& text = found->second.text;
    if (buffer == nullptr || size <= text.size()) return ErrorCode::Failure;
    std::copy(text.begin(), text.end(), buffer);
    buffer[text.size()] = 0;
    return ErrorCode::Success;
}

}  // namespace

ErrorCode FormatterImpl::SetSymbolFormattingString(int symbol, const char16_t* text) {
    return SetSymbolString(formatSymbolStrings, symbol, text);
}

ErrorCode FormatterImpl::SetSymbolParsingString(int symbol, const char16_t* text) {
    return SetSymbolString(parseSymbolStrings, symbol, text);
}

ErrorCode FormatterImpl::GetSymbolFormattingString(int symbol, char16_t* buffer,
                                                   std::size_t size) const {
    return CopyStored(formatSymbolStrings, symbol, buffer, size);
}

ErrorCode FormatterImpl::GetSymbolParsingString(int symbol, char16_t* buffer,
                                                std::size_t size) const {
    return CopyStored(parseSymbolStrings, symbol, buffer, size);
}

ErrorCode FormatterImpl::SetSymbolString(SymbolStrings& strings, int symbol, const char16_t* text) {
    const auto found = strings.find(symbol);
    const bool removal = text == nullptr || *text == 0;
    if (found != strings.end()) {
        if (!removal && found->second.text == text) return ErrorCode::Success;
        if (removal) {
            for (const auto& old : found->second.symbols) customDictionary.TakeOut(*old);
            strings.erase(found);
            return ErrorCode::Success;
        }
    } else if (removal) {
        return ErrorCode::Success;
    }

    // Everything that can refuse comes before the first change.
    const ISymbol* catalogued = UnitCatalog::Instance().FindSymbol(symbol, languageIndex);
    const IFormatSymbol* parent = catalogued != nullptr ? catalogued->AsFormat() : nullptr;
    if (parent == nullptr) return ErrorCode::Failure;
    SymbolStringParts parts;
    if (!SplitSymbolString(text, parts)) return ErrorCode::Failure;
    CustomSymbolList made;
    if (parent->MakeCustomSymbols(made, parts.literals, parts.indices) != 0 || made.empty()) {
        return ErrorCode::Failure;
    }
    std::u16string stored(text);

    // The entry exists before the dictionary changes; a fresh one holds no
    // objects yet. The old paths leave first, so that a new text with the
    // same literals on the same symbol finds its paths free.
    const auto entry = found != strings.end() ? found : strings.try_emplace(symbol).first;
    CustomSymbolList& old = entry->second.symbols;
    for (const auto& object : old) customDictionary.TakeOut(*object);
    // Back to the state before the call: the new objects leave the paths,
    // the one being put included, and the old ones take theirs again.
    // Taking out allocates nothing.
    const auto restore = [&](std::size_t placed) {
        for (std::size_t i = 0; i < placed && i < made.size(); ++i) {
            customDictionary.TakeOut(*made[i]);
        }
        for (const auto& object : old) customDictionary.Put(*object);
        if (old.empty()) strings.erase(entry);
    };
    std::size_t put = 0;
    try {
        while (put < made.size() && customDictionary.Put(*made[put]) == 0) ++put;
    } catch (...) {
        // Out of memory midway: no path may keep a new object, which goes
        // with this call. Should the old paths not fit again either, their
        // objects stay out of the dictionary, which then reads less.
        try {
            restore(put + 1);
        } catch (...) {
        }
        throw;
    }
    if (put < made.size()) {
        restore(put);
        return ErrorCode::Failure;
    }
    entry->second.text = std::move(stored);
    old = std::move(made);  // the old objects go
    return ErrorCode::Success;
}

}  // namespace Mensura
