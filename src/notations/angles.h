// Angles in degrees, minutes and seconds ("5°30′15″") and surveyor's
// bearings ("N 45°30′15″ E"), reading and writing.
//
// Reading. The letters N, S, W and d are also the newton, the siemens, the
// watt and the day: each decides in the first pass, from the target's
// exponents, which it is. An angle is a target with seven zero exponents, and
// its result is a direction: east 0, north 90 degrees, west 180, south -90.
// Minutes and seconds are handed on to the marks of feet and inches.
//
// Writing. The decimal digits setting d does not count decimals here; it
// chooses how far the text goes:
//
//   d = 0      degrees                        rounded on the minutes
//   d = 1, 2   degrees, minutes               rounded on the seconds
//   d = 3, 4   degrees, minutes, seconds      the seconds rounded whole
//   d >= 5     the seconds with d - 4 decimals
//
// The writing symbols read only through a symbol string, three numbers in
// part order.
#ifndef MENSURA_NOTATIONS_ANGLES_H
#define MENSURA_NOTATIONS_ANGLES_H

#include <cstdint>

#include "grammar/parse_symbol.h"
#include "notations/compound.h"
#include "notations/feet_inches.h"
#include "notations/format_symbol.h"

namespace Mensura {

// "°": degrees, handing minutes and seconds on to the marks of feet and inches.
class DegreeSymbol final : public IParseSymbol {
public:
    DegreeSymbol() : IParseSymbol(FirstPassSteps{}, ParseKind::Degree) {}
    ErrorCode Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                       const Dimensions& dimensions) const override;
};

// "d": the degree mark for an angle, the day for anything else.
class DSymbol final : public IParseSymbol {
public:
    DSymbol() : IParseSymbol(ParseKind::D) {}
    ErrorCode Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                       const Dimensions& dimensions) const override;
};

// "N" and "S": the start of a bearing, or north and south alone; else the
// newton and the siemens.
class NorthSymbol final : public IParseSymbol {
public:
    NorthSymbol() : IParseSymbol(ParseKind::North) {}
    ErrorCode Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                       const Dimensions& dimensions) const override;
};

class SouthSymbol final : public IParseSymbol {
public:
    SouthSymbol() : IParseSymbol(ParseKind::South) {}
    ErrorCode Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                       const Dimensions& dimensions) const override;
};

// "E" and "W": the end of a bearing, or east and west alone; "W" is the watt
// for anything but an angle. The letters of the catalogue are shared, so the
// letter that opened a bearing is not written into them: the opening letter
// puts in place of the closing one a letter that knows it, one of four that
// every parse shares.
class BearingEndSymbol : public IParseSymbol {
public:
    ErrorCode Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                       const Dimensions& dimensions) const override;
    // The same letter of a bearing opened by north or by south.
    virtual void ReplaceOpened(SymbolList& list, SymbolList::iterator at, bool north) const = 0;

protected:
    BearingEndSymbol(ParseKind kind, bool opened, bool north)
        : IParseSymbol(kind), opened(opened), fromNorth(north) {}
    BearingEndSymbol(FirstPassSteps steps, ParseKind kind, bool opened, bool north)
        : IParseSymbol(steps, kind), opened(opened), fromNorth(north) {}
    virtual bool IsWest() const = 0;

private:
    bool opened;     // an N or S stands in front of this letter
    bool fromNorth;  // and it was N
};

class EastSymbol final : public BearingEndSymbol {
public:
    explicit EastSymbol(bool opened = false, bool north = false)
        : BearingEndSymbol(FirstPassSteps{}, ParseKind::East, opened, north) {}
    void ReplaceOpened(SymbolList& list, SymbolList::iterator at, bool north) const override;

protected:
    bool IsWest() const override { return false; }
};

class WestSymbol final : public BearingEndSymbol {
public:
    explicit WestSymbol(bool opened = false, bool north = false)
        : BearingEndSymbol(ParseKind::West, opened, north) {}
    ErrorCode Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                       const Dimensions& dimensions) const override;
    void ReplaceOpened(SymbolList& list, SymbolList::iterator at, bool north) const override;

protected:
    bool IsWest() const override { return true; }
};

// Typed angles and bearings read without the list, as TypedMarks reads the
// marks: degrees, minutes and seconds, and bearings opened by "N" or "S" and
// closed by "E" or "W", laid out for an angle target; false to decline. The
// tokens may be rewritten.
namespace TypedAngles {

bool Read(TypedMarks::Layout& layout, const Dimensions& dimensions, double& value);

}  // namespace TypedAngles

class DegreePrimeDoublePrimeSymbol final : public GenericSymbol {
public:
    // The option: a bearing rather than an angle.
    static constexpr unsigned ShowBearing = 1;

    // `degree` is the converter of the degree, the symbol's unit.
    DegreePrimeDoublePrimeSymbol(const char16_t* text, const UnitConverter& degree,
                                 unsigned options);

    // A bearing counts the angle from East with North at +90: exactly on an
    // axis it is one letter ("N"); else the quadrant's letters around the
    // angle from North or South ("S 70°0′ W").
    Result Render(double value, const Dimensions& dims, char16_t* buffer, std::size_t size,
                  const NumberSettings& settings) const override;
    // Degrees are part 0, minutes 1, seconds 2, each a bare number; a part that
    // the pattern of d leaves out is 0. A bearing refuses every part.
    Result RenderPart(int part, double value, const Dimensions& dims, char16_t* buffer,
                      std::size_t size, const NumberSettings& settings) const override;
    // Form 0: degrees, minutes and seconds at the head of the list into one
    // angle; the sign of the degrees holds for all three.
    ErrorCode ParsePart(SymbolList& list, int form) const override;
    int LastPartIndex(int form) const override { return form == 0 ? 2 : -1; }

    bool IsBearing() const { return isBearing != 0; }

private:
    std::uint8_t isBearing;
};

}  // namespace Mensura

#endif  // MENSURA_NOTATIONS_ANGLES_H
