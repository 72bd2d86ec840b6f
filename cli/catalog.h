// What the mensura tool knows of the catalogue, all of it asked of the public
// API: ids and names, units, groups and symbols named on the command line,
// and the dimensions of a unit.
#ifndef MENSURA_CLI_CATALOG_H
#define MENSURA_CLI_CATALOG_H

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "mensura/mensura.hpp"

namespace MensuraCli {

constexpr int kEnglish = 1033;
constexpr int kChinese = 2052;

// How the tool reads texts and units: the everyday way, which the library
// adds to the catalogue's reading (plurals, SI prefixes, sums such as "5 ft
// 6 in", "lb" as the avoirdupois pound), or by the catalogue's meanings
// alone (--catalogue-meanings).
enum class Reading { Everyday, Catalogue };

// "Success", "ParseFailure", ...
const char* ErrorName(Mensura::ErrorCode code);

// The fields of an id.
inline int GroupOf(int id) {
    return id & 0xFF000;
}
inline int UnitOf(int id) {
    return id & 0xFFFFF;
}
inline bool HasSymbol(int id) {
    return (id & 0xFF00000) != 0;
}

// A group id alone (no type, no symbol) that the catalogue has.
bool IsGroup(int id);
// A group and type that the catalogue has; no symbol number.
bool IsUnitType(int id);
// A complete symbol id that the catalogue has.
bool IsSymbol(int id);

std::vector<int> Groups();
std::vector<int> UnitTypes(int group);
std::vector<int> UnitSymbols(int unit);
// Every unit type of every group, in catalogue order.
const std::vector<int>& AllUnitTypes();

// The display name of a group, unit type or symbol in a locale, as UTF-8; ""
// for an unknown id.
std::string Name(int locale, int id);
// "foot (0x2017)"
std::string Describe(int id);
// The quantity of a group in words, for messages: "a length", "an area".
std::string Quantity(int group);

// Whether text is a key of a unit symbol, through FindUnit.
bool FindKey(std::string_view text, int& unit);

// The longest text that names a unit, in bytes; the longest name of the
// catalogue has 60.
constexpr std::size_t kLongestUnit = 256;

// A unit type named on the command line: an id (0x2017, 8215; a complete
// symbol id names its unit type), a key of the dictionary ("ft", "米",
// "degree Celsius"), or else any text that reads as exactly 1 of one unit
// type when a 1 stands before it ("N", which is also the mark of north, or
// "m/s"). That text is read by the catalogue's meanings first, so that every
// unit that they name keeps its meaning; the everyday reading then adds the
// units that only it knows ("feet", "kJ", "meters per second"). False with
// the problem in words, also for a text longer than kLongestUnit or one that
// holds a NUL byte.
bool ResolveUnit(std::string_view text, Reading reading, int& unit, std::string& problem);
// A group by id, English name (any case) or Chinese name.
bool ResolveGroup(std::string_view text, int& group, std::string& problem);
// A symbol for rendering a value of `unit`: an id (complete symbol, unit type
// or group), the display name of a symbol of the unit's group in either
// language (the locale's first), or a unit named as ResolveUnit does, then
// its symbol of that name or else its default. With `complete` only a
// complete symbol id will do.
bool ResolveSymbol(std::string_view text, int unit, int locale, bool complete, Reading reading,
                   int& symbol, std::string& problem);

// The exponents of length, mass, time, electric current, temperature, amount
// of substance and luminous intensity.
using Exponents = std::array<int, 7>;
// The exponents of a group, unit type or symbol id, as the library gives
// them; false for an id it does not know.
bool DimensionsOf(int id, Exponents& exponents);
// "L·M·T⁻²", or "1" for none.
std::string DimensionsText(const Exponents& exponents);
// "kg·m·s⁻²", or "1" for none.
std::string BaseUnitsText(const Exponents& exponents);
// The unit type of a group of which 1 is 1 in base units and 0 is 0: the
// first one in catalogue order; 0 when the group has none.
int CoherentUnit(int group);
// The coherent unit of a group, or else its first unit type.
int ReferenceUnit(int group);

}  // namespace MensuraCli

#endif  // MENSURA_CLI_CATALOG_H
