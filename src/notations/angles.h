// Degrees, minutes and seconds ("5°30′15″") and surveyor's bearings
// ("N 45°30′15″ E"). The letters N, S, W and d are also the newton, the
// siemens, the watt and the day: each decides in the first pass, from the
// target's exponents, which it is. An angle is a target with seven zero
// exponents, and its result is a direction: east 0, north 90 degrees, west
// 180, south -90.
#ifndef MENSURA_PARSING_ANGLES_H
#define MENSURA_PARSING_ANGLES_H

#include "grammar/parse_symbol.h"

namespace Mensura {

// "°": degrees, handing minutes and seconds on to the marks of feet and inches.
class DegreeSymbol final : public IParseSymbol {
public:
    ParseKind Kind() const override { return ParseKind::Degree; }
    int Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                 const Dimensions& dimensions) const override;
};

// "d": the degree mark for an angle, the day for anything else.
class DSymbol final : public IParseSymbol {
public:
    ParseKind Kind() const override { return ParseKind::D; }
    int Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                 const Dimensions& dimensions) const override;
};

// "N" and "S": the start of a bearing, or north and south alone; else the
// newton and the siemens.
class NorthSymbol final : public IParseSymbol {
public:
    ParseKind Kind() const override { return ParseKind::North; }
    int Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                 const Dimensions& dimensions) const override;
};

class SouthSymbol final : public IParseSymbol {
public:
    ParseKind Kind() const override { return ParseKind::South; }
    int Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                 const Dimensions& dimensions) const override;
};

// "E" and "W": the end of a bearing, or east and west alone; "W" is the watt
// for anything but an angle. The letters of the catalogue are shared, so the
// letter that opened a bearing is not written into them: the opening letter
// puts a copy of the closing one into the list that knows it.
class BearingEndSymbol : public IParseSymbol {
public:
    int Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                 const Dimensions& dimensions) const override;
    // A copy for one bearing, opened by north or by south.
    virtual void ReplaceOpened(SymbolList& list, SymbolList::iterator at, bool north) const = 0;

protected:
    BearingEndSymbol(bool opened, bool north) : opened(opened), fromNorth(north) {}
    virtual bool IsWest() const = 0;

private:
    bool opened;     // an N or S stands in front of this letter
    bool fromNorth;  // and it was N
};

class EastSymbol final : public BearingEndSymbol {
public:
    explicit EastSymbol(bool opened = false, bool north = false)
        : BearingEndSymbol(opened, north) {}
    ParseKind Kind() const override { return ParseKind::East; }
    void ReplaceOpened(SymbolList& list, SymbolList::iterator at, bool north) const override;

protected:
    bool IsWest() const override { return false; }
};

class WestSymbol final : public BearingEndSymbol {
public:
    explicit WestSymbol(bool opened = false, bool north = false)
        : BearingEndSymbol(opened, north) {}
    ParseKind Kind() const override { return ParseKind::West; }
    int Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                 const Dimensions& dimensions) const override;
    void ReplaceOpened(SymbolList& list, SymbolList::iterator at, bool north) const override;

protected:
    bool IsWest() const override { return true; }
};

}  // namespace Mensura

#endif  // MENSURA_PARSING_ANGLES_H
