// The library's process-wide state, made when the library is loaded and
// destroyed at exit in reverse order: first the catalogue of symbols, then
// the table of units it is built on. All live in this one file so that their order of construction
// is the order of their definitions.
#include "catalogue/unit_catalog.h"
#include "units/unit_table.h"

namespace Mensura {

UnitTable UnitTable::s_instance;
UnitCatalog UnitCatalog::s_instance;

}  // namespace Mensura
