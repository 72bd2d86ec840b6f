// The rendering side of symbols, and the unit symbols of the catalogue that
// are a pure scale (GenericSymbol) or a scale with an offset (LinearSymbol).
//
// Results of Render: Success when the whole text with its terminator stands
// in the buffer, its length the units before the terminator; Failure for a
// null buffer or a text that does not fit, UnitMismatch when the value's
// dimensions are not the unit's.
//
// RenderPart writes one number of a rendering: its length is the units at the
// start of the buffer, where the caller goes on writing; no terminator is
// promised there.
#ifndef MENSURA_NOTATIONS_FORMAT_SYMBOL_H
#define MENSURA_NOTATIONS_FORMAT_SYMBOL_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/dimensions.h"
#include "base/result.h"
#include "grammar/parse_symbol.h"
#include "numbers/number_settings.h"

namespace Mensura {

class CustomSymbol;

// What MakeCustomSymbols builds: the objects of one symbol string, the one of
// form 0 first.
using CustomSymbolList = std::vector<std::unique_ptr<CustomSymbol>>;

class IFormatSymbol : public virtual ISymbol {
public:
    const IFormatSymbol* AsFormat() const override { return this; }
    // Writes value, in base units of dims, with this symbol.
    virtual Result Render(double value, const Dimensions& dims, char16_t* buffer, std::size_t size,
                          const NumberSettings& settings) const = 0;
    // Writes one part (one number) of a rendering.
    virtual Result RenderPart(int part, double value, const Dimensions& dims, char16_t* buffer,
                              std::size_t size, const NumberSettings& settings) const = 0;
    // Reads the number at the head of `list` as a value in this unit, leaving a
    // ResultSymbol in its place. Success, or ParseFailure to refuse.
    virtual ErrorCode ParsePart(SymbolList& list, int form) const = 0;
    // The highest part number that a symbol string of this form must use; -1
    // when the form does not exist.
    virtual int LastPartIndex(int form) const = 0;
    // Builds into `out`, which it clears first, the objects through which a
    // symbol string of this symbol renders and reads: `literals` and `indices`
    // as SplitSymbolString gave them. Success, or Failure with `out` empty when the
    // string does not fit the symbol.
    virtual ErrorCode MakeCustomSymbols(CustomSymbolList& out,
                                        const std::vector<std::u16string>& literals,
                                        const std::vector<int>& indices) const = 0;
    // The display text, owned by the symbol.
    virtual const char16_t* GetText() const = 0;
};

// A symbol that is its text: renders it after the number, with one blank
// between unless NoSpace is set.
class SimpleFormatSymbol : public IFormatSymbol {
public:
    static constexpr std::uint32_t NoSpace = 1;

    // Writes the symbol alone: the blank, if any, and the text.
    Result Render(double value, const Dimensions& dims, char16_t* buffer, std::size_t size,
                  const NumberSettings& settings) const override;
    const char16_t* GetText() const override { return text; }
    std::uint32_t Flags() const { return flags; }

protected:
    // The text is constant data that outlives the symbol, as the vocabulary's
    // texts do; the symbol points at it. A terminator stands behind it. A
    // view whose length is known already spares counting it. The text is
    // shorter than 65536 units: its length and the flags share 32 bits, which
    // leaves room behind them for a derived class's first field, and so makes
    // the thousands of symbols that the catalogue makes at load 8 bytes
    // smaller each.
    SimpleFormatSymbol(std::u16string_view symbolText, std::uint32_t symbolFlags)
        : text(symbolText.data()),
          length(static_cast<std::uint16_t>(symbolText.size())),
          flags(static_cast<std::uint16_t>(symbolFlags)) {}

    std::u16string_view Text() const { return {text, length}; }

private:
    const char16_t* text;
    std::uint16_t length;
    std::uint16_t flags;
};

// A symbol behind one number in its unit: "5.50 m", "20.00°C". Its one form,
// 0, has one part, 0.
class NumberedSymbol : public SimpleFormatSymbol {
public:
    // The number by RenderPart 0, then the symbol behind it.
    Result Render(double value, const Dimensions& dims, char16_t* buffer, std::size_t size,
                  const NumberSettings& settings) const override;
    Result RenderPart(int part, double value, const Dimensions& dims, char16_t* buffer,
                      std::size_t size, const NumberSettings& settings) const override;
    ErrorCode ParsePart(SymbolList& list, int form) const override;
    int LastPartIndex(int form) const override { return form == 0 ? 0 : -1; }
    // One object of form 0.
    ErrorCode MakeCustomSymbols(CustomSymbolList& out, const std::vector<std::u16string>& literals,
                                const std::vector<int>& indices) const override;

protected:
    using SimpleFormatSymbol::SimpleFormatSymbol;
    // The unit in which the number is written and read.
    virtual const UnitConverter& NumberConverter() const = 0;
};

// A unit that is a pure scale: the usual symbol of the catalogue.
class GenericSymbol : public OperandSymbol, public NumberedSymbol {
public:
    // `converter` is the table's converter of `unitId`, which outlives the symbol.
    GenericSymbol(std::u16string_view text, int unitId, const UnitConverter& unitConverter,
                  std::uint32_t flags)
        : OperandSymbol(&unitConverter), NumberedSymbol(text, flags), unit(unitId) {}

    int Unit() const { return unit; }

protected:
    const UnitConverter& NumberConverter() const override { return GetConverter(); }

private:
    int unit;
};

// A GenericSymbol with a display text of its own: the unit of pure numbers
// renders as the bare number, yet has a name.
class GenericSymbolEx : public GenericSymbol {
public:
    GenericSymbolEx(std::u16string_view text, int unitId, const UnitConverter& unitConverter,
                    std::uint32_t flags, const char16_t* display)
        : GenericSymbol(text, unitId, unitConverter, flags), displayText(display) {}
    const char16_t* GetText() const override { return displayText; }

private:
    const char16_t* displayText;  // constant data, like the text
};

// A temperature scale. Standing alone it reads an absolute temperature through
// the offset of `scaleUnit`; beside another unit ("deg C/min") it is a size of
// degree, `sizeUnit`, with no offset.
class LinearSymbol : public IParseSymbol, public NumberedSymbol {
public:
    // `scale` is the converter of `scaleUnit`, `size` that of the degree; the
    // table's, which outlive the symbol.
    LinearSymbol(std::u16string_view text, int scaleUnit, const UnitConverter& scale,
                 const UnitConverter& size, std::uint32_t flags)
        : IParseSymbol(ParseKind::Linear),
          NumberedSymbol(text, flags),
          unit(scaleUnit),
          scaleConverter(&scale),
          sizeConverter(&size) {}

    ErrorCode Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                       const Dimensions& dimensions) const override;
    // The unit type of the absolute temperature that the symbol names.
    int ScaleUnit() const { return unit; }

protected:
    const UnitConverter& NumberConverter() const override { return *scaleConverter; }

private:
    int unit;
    const UnitConverter* scaleConverter;
    const UnitConverter* sizeConverter;
};

// The unit type that a key of the dictionary names when a unit symbol holds
// it; 0 for an operator or a mark.
int UnitOfKey(const IParseSymbol* holder);

}  // namespace Mensura

#endif  // MENSURA_NOTATIONS_FORMAT_SYMBOL_H
