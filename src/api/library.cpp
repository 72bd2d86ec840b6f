// The library's process-wide state, made when the library is loaded and
// destroyed at exit in reverse order: first the cache of display-name
// formatters, then the catalogue. Both live in this one file so that their
// order of construction is the order of their definitions.
#include "api/display_name_cache.h"
#include "units/unit_catalog.h"

namespace Mensura {

UnitCatalog UnitCatalog::s_instance;
DisplayNameCache DisplayNameCache::s_instance;

}  // namespace Mensura
