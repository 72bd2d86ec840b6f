// Renders a value with a catalogue symbol by number settings alone, as the
// format driver does for a symbol named in full: the white-box tests of the
// notations render through it, without a formatter.
#ifndef MENSURA_TESTS_SUPPORT_FORMAT_WITH_H
#define MENSURA_TESTS_SUPPORT_FORMAT_WITH_H

#include <cstddef>
#include <string>
#include <vector>

#include "catalogue/unit_catalog.h"
#include "notations/format_symbol.h"
#include "numbers/number_settings.h"

namespace MensuraTest {

// value is in `unit`; `symbol` is a complete symbol id of the English
// catalogue. The text rendered into a buffer of `size` units, or "#" and the
// code of the failure; a length that is not the text's shows as "!".
inline std::u16string FormatWith(const Mensura::NumberSettings& numbers, double value, int unit,
                                 int symbol, std::size_t size = 64) {
    using namespace Mensura;
    const UnitConverter* source = UnitTable::Instance().FindConverter(unit);
    const ISymbol* found = UnitCatalog::Instance().FindSymbol(symbol, 0);
    if (source == nullptr || found == nullptr || found->AsFormat() == nullptr) return u"#?";
    double base = 0.0;
    source->DirectToBase(value, base, source->GetDimensions());
    std::vector<char16_t> buffer(size + 1, u'#');
    buffer.push_back(0);
    const Result result =
        found->AsFormat()->Render(base, source->GetDimensions(), buffer.data(), size, numbers);
    if (!result.Ok()) return u"#" + std::u16string(1, u'0' + static_cast<int>(result.code));
    const std::u16string text(buffer.data());
    return text.size() == result.length ? text : text + u"!";
}

}  // namespace MensuraTest

#endif  // MENSURA_TESTS_SUPPORT_FORMAT_WITH_H
