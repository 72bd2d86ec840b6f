// Ids, names, and units, groups and symbols named on the command line.
#include <cmath>

#include "catalog.h"
#include "report.h"
#include "text.h"

namespace MensuraCli {

using Mensura::Converter;
using Mensura::ErrorCode;
using Mensura::Formatter;

const char* ErrorName(ErrorCode code) {
    switch (code) {
        case ErrorCode::Success:
            return "Success";
        case ErrorCode::Failure:
            return "Failure";
        case ErrorCode::ParseFailure:
            return "ParseFailure";
        case ErrorCode::NotSet:
            return "NotSet";
        case ErrorCode::UnitMismatch:
            return "UnitMismatch";
    }
    return "unknown error";
}

bool IsGroup(int id) {
    return id != 0 && id == GroupOf(id) && Converter::GetUnitTypes(id, nullptr) != 0;
}

bool IsUnitType(int id) {
    const int type = id & 0xFFF;
    return id == UnitOf(id) && type != 0 &&
           static_cast<std::size_t>(type) <= Converter::GetUnitTypes(GroupOf(id), nullptr);
}

bool IsSymbol(int id) {
    const int symbol = (id >> 20) & 0xFF;
    return symbol != 0 && (id & ~0xFFFFFFF) == 0 && IsUnitType(UnitOf(id)) &&
           static_cast<std::size_t>(symbol) <= Formatter::GetUnitSymbols(UnitOf(id), nullptr);
}

std::vector<int> Groups() {
    std::vector<int> ids(Converter::GetUnitGroups(nullptr));
    Converter::GetUnitGroups(ids.data());
    return ids;
}

std::vector<int> UnitTypes(int group) {
    std::vector<int> ids(Converter::GetUnitTypes(group, nullptr));
    Converter::GetUnitTypes(group, ids.data());
    return ids;
}

std::vector<int> UnitSymbols(int unit) {
    std::vector<int> ids(Formatter::GetUnitSymbols(unit, nullptr));
    Formatter::GetUnitSymbols(unit, ids.data());
    return ids;
}

const std::vector<int>& AllUnitTypes() {
    static const std::vector<int> all = [] {
        std::vector<int> ids;
        for (int group : Groups()) {
            for (int unit : UnitTypes(group)) ids.push_back(unit);
        }
        return ids;
    }();
    return all;
}

std::string Name(int locale, int id) {
    char16_t buffer[256];
    if (GetDisplayName(locale, id, buffer, sizeof buffer / sizeof buffer[0]) != 0) return "";
    return Utf16ToUtf8(buffer);
}

std::string Describe(int id) {
    return Name(kEnglish, id) + " (" + HexId(id) + ")";
}

std::string Quantity(int group) {
    const std::string name = AsciiLower(Name(kEnglish, group));
    if (name.empty()) return "a quantity";
    const bool vowel =
        name[0] == 'a' || name[0] == 'e' || name[0] == 'i' || name[0] == 'o' || name[0] == 'u';
    return (vowel ? "an " : "a ") + name;
}

bool FindKey(std::string_view text, int& unit) {
    std::u16string wide;
    return Utf8ToUtf16(text, wide) && Formatter::FindUnit(wide.c_str(), unit) == ErrorCode::Success;
}

namespace {

// A formatter that reads as asked, of default settings otherwise: "1" is
// always the digit one.
const Formatter& Reader(Reading reading) {
    static const Formatter catalogue;
    static const Formatter everyday = [] {
        Formatter made;
        made.SetEverydayReading(true);
        return made;
    }();
    return reading == Reading::Everyday ? everyday : catalogue;
}

// The unit types in which "1 TEXT" reads as exactly 1, in catalogue order.
std::vector<int> UnitsReadingAsOne(const std::u16string& text, Reading reading) {
    const Formatter& reader = Reader(reading);
    const std::u16string one = u"1 " + text;
    std::vector<int> found;
    for (int unit : AllUnitTypes()) {
        double value = 0.0;
        if (reader.Parse(one.c_str(), value, unit) == ErrorCode::Success &&
            std::fabs(value - 1.0) <= 1e-12) {
            found.push_back(unit);
        }
    }
    return found;
}

bool SameDimensions(int a, int b) {
    Exponents first{};
    Exponents second{};
    return DimensionsOf(a, first) && DimensionsOf(b, second) && first == second;
}

// A unit type by id; a complete symbol id names its unit type.
bool UnitById(std::string_view text, int& unit, std::string& problem) {
    int id = 0;
    if (!ReadInteger(text, id)) {
        problem = "'" + Clipped(text) + "' is too large for an id";
        return false;
    }
    if (IsUnitType(id) || IsSymbol(id)) {
        unit = UnitOf(id);
        return true;
    }
    if (IsGroup(id)) {
        problem = HexId(id) + " is the group " + Name(kEnglish, id) +
                  ", not a unit type; 'mensura list " + HexId(id) + "' lists its units";
    } else {
        problem = HexId(id) + " names no unit type";
    }
    return false;
}

// The first symbol among `units`' symbols whose display name in either
// language, the locale's first, is text.
int SymbolNamed(const std::string& text, const std::vector<int>& units, int locale) {
    const int other = locale == kChinese ? kEnglish : kChinese;
    for (int language : {locale == kChinese ? kChinese : kEnglish, other}) {
        for (int unit : units) {
            for (int symbol : UnitSymbols(unit)) {
                if (Name(language, symbol) == text) return symbol;
            }
        }
    }
    return 0;
}

}  // namespace

bool ResolveUnit(std::string_view text, Reading reading, int& unit, std::string& problem) {
    // Each unit type reads the text once: a long one would take long.
    if (text.size() > kLongestUnit) {
        problem = "'" + Clipped(text) + "' is too long for a unit (at most " +
                  std::to_string(kLongestUnit) + " bytes)";
        return false;
    }
    if (LooksLikeId(text)) return UnitById(text, unit, problem);
    std::u16string wide;
    if (!Utf8ToUtf16(text, wide)) {
        problem = "'" + Clipped(text) + "' is not valid UTF-8";
        return false;
    }
    if (wide.find(u'\0') != std::u16string::npos) {
        // The library reads a text up to its first NUL.
        problem = "'" + Clipped(text) + "' holds a NUL byte";
        return false;
    }
    if (!wide.empty() && Formatter::FindUnit(wide.c_str(), unit) == ErrorCode::Success) {
        return true;
    }
    std::vector<int> found;
    if (!wide.empty()) found = UnitsReadingAsOne(wide, Reading::Catalogue);
    if (found.empty() && !wide.empty() && reading == Reading::Everyday) {
        found = UnitsReadingAsOne(wide, Reading::Everyday);
    }
    if (found.empty()) {
        problem = "'" + Clipped(text) +
                  "' is not a known unit; give a symbol such as ft or m², or an id such as 0x2017 "
                  "('mensura list' shows them)";
        return false;
    }
    for (int other : found) {
        if (!SameDimensions(found[0], other)) {
            problem = "'" + Clipped(text) + "' reads as " + Describe(found[0]) + " and as " +
                      Describe(other) + "; give an id";
            return false;
        }
    }
    unit = found[0];
    return true;
}

bool ResolveGroup(std::string_view text, int& group, std::string& problem) {
    if (LooksLikeId(text)) {
        int id = 0;
        if (ReadInteger(text, id) && IsGroup(id)) {
            group = id;
            return true;
        }
        if (IsUnitType(id) || IsSymbol(id)) {
            problem = HexId(id) + " is not a group but a unit of the group " + HexId(GroupOf(id)) +
                      " (" + Name(kEnglish, GroupOf(id)) + ")";
        } else {
            problem = "'" + Clipped(text) + "' names no group";
        }
        return false;
    }
    const std::string lower = AsciiLower(text);
    for (int id : Groups()) {
        if (AsciiLower(Name(kEnglish, id)) == lower || Name(kChinese, id) == text) {
            group = id;
            return true;
        }
    }
    problem = "no group is named '" + Clipped(text) + "'; 'mensura list' shows the groups";
    return false;
}

bool ResolveSymbol(std::string_view text, int unit, int locale, bool complete, Reading reading,
                   int& symbol, std::string& problem) {
    if (LooksLikeId(text)) {
        int id = 0;
        const bool read = ReadInteger(text, id);
        if (read && IsSymbol(id)) {
            symbol = id;
            return true;
        }
        if (read && !complete && (IsUnitType(id) || IsGroup(id))) {
            symbol = id;
            return true;
        }
        problem = "'" + Clipped(text) + "' names no symbol" +
                  (complete ? "; give a complete symbol id such as 0x202017" : "");
        return false;
    }
    const std::string name = ValidUtf8(text);
    // A symbol of the unit itself first, then of the other units of its group.
    if ((symbol = SymbolNamed(name, {unit}, locale)) != 0) return true;
    if ((symbol = SymbolNamed(name, UnitTypes(GroupOf(unit)), locale)) != 0) return true;
    int named = 0;
    if (!ResolveUnit(text, reading, named, problem)) {
        problem = "'" + Clipped(name) + "' is no symbol of " + Describe(unit) +
                  " or of another unit of its group, nor a known unit";
        return false;
    }
    if ((symbol = SymbolNamed(name, {named}, locale)) != 0) return true;
    if (complete) {
        problem = "'" + Clipped(name) + "' names the unit " + Describe(named) +
                  ", not one of its symbols; 'mensura show " + HexId(named) + "' lists them";
        return false;
    }
    symbol = named;
    return true;
}

}  // namespace MensuraCli
