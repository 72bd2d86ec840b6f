// The flat catalogue queries that need symbols: symbol lists and display names.
#include "api/display_name_cache.h"
#include "mensura/mensura.hpp"
#include "units/unit_catalog.h"

using Mensura::ErrorCode;
using Mensura::UnitCatalog;

extern "C" {

size_t GetUnitSymbols(int id, int* ids) {
    return UnitCatalog::Instance().ListUnitSymbols(id, ids);
}

int GetDisplayName(int locale, int id, MensuraChar16* buffer, size_t size) {
    if (buffer == nullptr) return static_cast<int>(ErrorCode::Failure);
    const int language = Mensura::DisplayNameCache::Instance().LanguageOf(locale);
    return static_cast<int>(UnitCatalog::Instance().CopyDisplayName(id, buffer, size, language));
}

}  // extern "C"
