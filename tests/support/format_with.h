// Renders a value with a catalogue symbol by number settings alone, as the
// format driver does for a symbol named in full: the white-box tests of the
// notations render through it, without a formatter.
#ifndef MENSURA_TESTS_SUPPORT_FORMAT_WITH_H
#define MENSURA_TESTS_SUPPORT_FORMAT_WITH_H

#include <cstddef>

#include "catalogue/unit_catalog.h"
#include "notations/format_symbol.h"
#include "numbers/number_settings.h"

namespace MensuraTest {

// value is in `unit`; `symbol` is a complete symbol id of the English
// catalogue. *converted, when not null, receives the value in the symbol's
// unit after a successful rendering.
inline Mensura::ErrorCode FormatWith(const Mensura::NumberSettings& numbers, double value, int unit,
                                     char16_t* buffer, std::size_t size, int symbol,
                                     double* converted) {
    using namespace Mensura;
    const UnitTable& units = UnitTable::Instance();
    const UnitConverter* source = units.FindConverter(unit);
    const ISymbol* found = UnitCatalog::Instance().FindSymbol(symbol, 0);
    if (source == nullptr || found == nullptr || found->AsFormat() == nullptr) {
        return ErrorCode::Failure;
    }
    double base = 0.0;
    source->DirectToBase(value, base, source->GetDimensions());
    const Result result =
        found->AsFormat()->Render(base, source->GetDimensions(), buffer, size, numbers);
    if (!result.Ok()) return result.code;
    if (converted != nullptr) {
        units.FindConverter(symbol)->DirectFromBase(base, source->GetDimensions(), *converted);
    }
    return ErrorCode::Success;
}

}  // namespace MensuraTest

#endif  // MENSURA_TESTS_SUPPORT_FORMAT_WITH_H
