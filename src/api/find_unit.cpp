// Looking a unit type up by the text of one of its symbols: the flat FindUnit
// and Formatter::FindUnit.
#include <string>

#include "notations/format_symbol.h"
#include "mensura/mensura.hpp"
#include "units/unit_catalog.h"
#include "base/unit_id.h"

namespace Mensura {

ErrorCode Formatter::FindUnit(const char16_t* text, int& unit) {
    if (text == nullptr) return ErrorCode::Failure;
    std::size_t matched = 0;
    const IParseSymbol* symbol = UnitCatalog::Instance().Dictionary().FindLongest(text, &matched);
    // The key must be the whole text, not only a beginning of it.
    if (symbol == nullptr || matched != std::char_traits<char16_t>::length(text)) {
        return ErrorCode::Failure;
    }
    // Only unit symbols name a unit; operators and marks hold keys too.
    const int found = UnitOfKey(symbol);
    if (found == 0) return ErrorCode::Failure;
    unit = found & static_cast<int>(UnitId::UnitMask);
    return ErrorCode::Success;
}

}  // namespace Mensura

extern "C" {

int FindUnit(const MensuraChar16* text, int* unit) {
    if (unit == nullptr) return static_cast<int>(Mensura::ErrorCode::Failure);
    return static_cast<int>(Mensura::Formatter::FindUnit(text, *unit));
}

}  // extern "C"
