// An angle in degrees, minutes and seconds ("45°30′36″"), or a surveyor's
// bearing ("N 59°45′ E"). The decimal digits setting d does not count
// decimals here; it chooses how far the text goes:
//
//   d = 0      degrees                        rounded on the minutes
//   d = 1, 2   degrees, minutes               rounded on the seconds
//   d = 3, 4   degrees, minutes, seconds      the seconds rounded whole
//   d >= 5     the seconds with d - 4 decimals
//
// Typed angles and bearings are read by parsing/angles.h; these symbols read
// only through a symbol string, three numbers in part order.
#ifndef MENSURA_FORMATTING_DEGREES_SYMBOL_H
#define MENSURA_FORMATTING_DEGREES_SYMBOL_H

#include <cstdint>

#include "notations/format_symbol.h"

namespace Mensura {

class DegreePrimeDoublePrimeSymbol final : public GenericSymbol {
public:
    // The unit is the degree, 0x8002, whatever the text.
    DegreePrimeDoublePrimeSymbol(const char16_t* text, bool isBearing);

    // A bearing counts the angle from East with North at +90: exactly on an
    // axis it is one letter ("N"); else the quadrant's letters around the
    // angle from North or South ("S 70°0′ W").
    std::int64_t Render(double value, const Dimensions& dims, char16_t* buffer, std::size_t size,
                        const FormatterImpl& settings) const override;
    // Degrees are part 0, minutes 1, seconds 2, each a bare number; a part that
    // the pattern of d leaves out is 0. A bearing refuses every part.
    std::int64_t RenderPart(int part, double value, const Dimensions& dims, char16_t* buffer,
                            std::size_t size, const FormatterImpl& settings) const override;
    // Form 0: degrees, minutes and seconds at the head of the list into one
    // angle; the sign of the degrees holds for all three.
    int ParsePart(SymbolList& list, int form) const override;
    int LastPartIndex(int form) const override { return form == 0 ? 2 : -1; }

    bool IsBearing() const { return isBearing != 0; }

private:
    std::uint8_t isBearing;
};

}  // namespace Mensura

#endif  // MENSURA_FORMATTING_DEGREES_SYMBOL_H
