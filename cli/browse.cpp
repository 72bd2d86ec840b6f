// list and show: the groups, the unit types of a group, and one unit type.
#include <algorithm>
#include <cstdio>

#include "catalog.h"
#include "commands.h"
#include "options.h"
#include "text.h"

namespace MensuraCli {

using Mensura::Converter;
using Mensura::ErrorCode;

const char* const kListHelp =
    "usage: mensura list [--json] [GROUP]\n"
    "\n"
    "Without GROUP, lists the groups of units with their ids and names in English\n"
    "and Simplified Chinese. With GROUP (an English name in any case, a Chinese\n"
    "name, or an id), lists its unit types with ids, names and symbols.\n"
    "\n"
    "examples:\n"
    "  mensura list\n"
    "  mensura list Length\n"
    "  mensura list 温度\n"
    "  mensura list \"linear weight\"\n"
    "  mensura list --json 0x2A000\n";

const char* const kShowHelp =
    "usage: mensura show [--json] [--exact] [--catalogue-meanings] UNIT\n"
    "\n"
    "Shows a unit type: its id, its group, its dimensions, its factor to the\n"
    "coherent unit of its group (the one that is 1 in base units; else to the\n"
    "group's first unit type), and every symbol with its text in English and\n"
    "Simplified Chinese. Units are named as for convert, --catalogue-meanings\n"
    "included.\n"
    "\n"
    "The dimensions are the library's exponents of length (L), mass (M), time\n"
    "(T), electric current (I), temperature (Θ), amount of substance (N) and\n"
    "luminous intensity (J), with the same product of base units beside them;\n"
    "angles and other ratios have none (1).\n"
    "\n"
    "examples:\n"
    "  mensura show ft\n"
    "  mensura show 米\n"
    "  mensura show \"degree Celsius\"\n"
    "  mensura show --json 0x17001\n";

namespace {

constexpr const char* kDimensionKeys[7] = {
    "length", "mass", "time", "current", "temperature", "amount", "luminous_intensity"};

// {"en":"foot","zh":"英尺"}
std::string JsonNames(int id) {
    return "{\"en\":" + JsonString(Name(kEnglish, id)) +
           ",\"zh\":" + JsonString(Name(kChinese, id)) + "}";
}

std::string JsonId(int id) {
    return "\"id\":" + std::to_string(id) + ",\"hex\":" + JsonString(HexId(id));
}

std::size_t WidestName(const std::vector<int>& ids, int locale) {
    std::size_t widest = 0;
    for (int id : ids) widest = std::max(widest, DisplayWidth(Name(locale, id)));
    return widest;
}

std::string Join(const std::vector<std::string>& parts, std::string_view separator) {
    std::string out;
    for (const std::string& part : parts) {
        if (!out.empty()) out += separator;
        out += part;
    }
    return out;
}

int ListGroups(bool json) {
    const std::vector<int> groups = Groups();
    if (json) {
        std::vector<std::string> items;
        for (int group : groups) {
            items.push_back("{" + JsonId(group) + ",\"name\":" + JsonNames(group) +
                            ",\"unit_type_count\":" +
                            std::to_string(Converter::GetUnitTypes(group, nullptr)) + "}");
        }
        PrintLine("[" + Join(items, ",") + "]");
        return kExitOk;
    }
    const std::size_t english = WidestName(groups, kEnglish);
    const std::size_t chinese = WidestName(groups, kChinese);
    for (int group : groups) {
        const std::size_t count = Converter::GetUnitTypes(group, nullptr);
        PrintLine(PadRight(HexId(group), 9) + PadRight(Name(kEnglish, group), english + 2) +
                  PadRight(Name(kChinese, group), chinese + 2) + std::to_string(count) +
                  (count == 1 ? " unit type" : " unit types"));
    }
    return kExitOk;
}

int ListGroup(int group, bool json) {
    const std::vector<int> units = UnitTypes(group);
    if (json) {
        std::vector<std::string> items;
        for (int unit : units) {
            std::vector<std::string> symbols;
            for (int symbol : UnitSymbols(unit)) {
                symbols.push_back("{" + JsonId(symbol) + ",\"text\":" + JsonNames(symbol) + "}");
            }
            items.push_back("{" + JsonId(unit) + ",\"name\":" + JsonNames(unit) + ",\"symbols\":[" +
                            Join(symbols, ",") + "]}");
        }
        PrintLine("{" + JsonId(group) + ",\"name\":" + JsonNames(group) + ",\"unit_types\":[" +
                  Join(items, ",") + "]}");
        return kExitOk;
    }
    PrintLine(Name(kEnglish, group) + " (" + Name(kChinese, group) + "), " + HexId(group) + ": " +
              std::to_string(units.size()) + (units.size() == 1 ? " unit type" : " unit types"));
    const std::size_t english = WidestName(units, kEnglish);
    const std::size_t chinese = WidestName(units, kChinese);
    for (int unit : units) {
        std::vector<std::string> symbols;
        for (int symbol : UnitSymbols(unit)) symbols.push_back(Name(kEnglish, symbol));
        PrintLine("  " + PadRight(HexId(unit), 9) + PadRight(Name(kEnglish, unit), english + 2) +
                  PadRight(Name(kChinese, unit), chinese + 2) + Join(symbols, ", "));
    }
    return kExitOk;
}

// How a unit relates to the reference unit of its group.
struct Factor {
    int reference = 0;
    bool coherent = false;  // the reference is 1 in base units
    double factor = 0.0;    // 0 for a scale with an offset
    double zero = 0.0;      // 0 of the unit in the reference, for an offset scale
    double step = 0.0;      // the size of 1 of the unit in the reference, likewise
};

Factor FactorOf(int unit) {
    Factor result;
    result.reference = CoherentUnit(GroupOf(unit));
    result.coherent = result.reference != 0;
    if (!result.coherent) result.reference = GroupOf(unit) | 1;
    result.factor = Converter::Factor(unit, result.reference);
    if (result.factor == 0.0) {
        double one = 0.0;
        Converter::Convert(0.0, unit, result.zero, result.reference);
        Converter::Convert(1.0, unit, one, result.reference);
        result.step = one - result.zero;
    }
    return result;
}

std::string FactorText(int unit, const Factor& factor, bool exact) {
    const std::string name = Name(kEnglish, unit);
    const std::string which =
        factor.coherent ? "the group's coherent unit"
                        : "the group's first unit type (no unit of the group is 1 in base units)";
    if (factor.reference == unit) return "1: " + name + " is " + which;
    const std::string reference = Name(kEnglish, factor.reference);
    if (factor.factor != 0.0) {
        return "1 " + name + " = " + NumberText(factor.factor, exact) + " " +
               Describe(factor.reference) + ", " + which;
    }
    return "none, a scale with an offset from " + Describe(factor.reference) + ", " + which +
           ": 0 " + name + " = " + NumberText(factor.zero, exact) + " " + reference + ", and 1 " +
           name + " more is " + NumberText(factor.step, exact) + " " + reference + " more";
}

int ShowUnit(int unit, bool json, bool exact) {
    Exponents exponents{};
    const bool known = DimensionsOf(unit, exponents);
    const Factor factor = FactorOf(unit);
    const int group = GroupOf(unit);
    const std::vector<int> symbols = UnitSymbols(unit);
    if (json) {
        std::string dimensions = "null";
        if (known) {
            std::vector<std::string> parts;
            for (std::size_t i = 0; i < exponents.size(); ++i) {
                parts.push_back(JsonString(kDimensionKeys[i]) + ":" + std::to_string(exponents[i]));
            }
            dimensions = "{" + Join(parts, ",") + "}";
        }
        std::vector<std::string> items;
        for (int symbol : symbols) {
            items.push_back("{" + JsonId(symbol) + ",\"text\":" + JsonNames(symbol) + "}");
        }
        PrintLine("{" + JsonId(unit) + ",\"name\":" + JsonNames(unit) + ",\"group\":{" +
                  JsonId(group) + ",\"name\":" + JsonNames(group) +
                  "},\"dimensions\":" + dimensions +
                  ",\"base_units\":" + (known ? JsonString(BaseUnitsText(exponents)) : "null") +
                  ",\"factor\":{\"reference\":" + std::to_string(factor.reference) +
                  ",\"coherent\":" + (factor.coherent ? "true" : "false") +
                  ",\"value\":" + (factor.factor != 0.0 ? JsonNumber(factor.factor) : "null") +
                  ",\"offset\":" + (factor.factor != 0.0 ? "null" : JsonNumber(factor.zero)) +
                  "},\"symbols\":[" + Join(items, ",") + "]}");
        return kExitOk;
    }
    PrintLine(Name(kEnglish, unit) + " (" + Name(kChinese, unit) + ")");
    PrintLine("  id          " + HexId(unit) + " (" + std::to_string(unit) + ")");
    PrintLine("  group       " + HexId(group) + " " + Name(kEnglish, group) + " (" +
              Name(kChinese, group) + ")");
    PrintLine("  dimensions  " +
              (known ? DimensionsText(exponents) + " (" + BaseUnitsText(exponents) + ")"
                     : std::string("unknown")));
    PrintLine("  factor      " + FactorText(unit, factor, exact));
    const std::size_t english = WidestName(symbols, kEnglish);
    std::string label = "  symbols     ";
    for (int symbol : symbols) {
        PrintLine(label + PadRight(HexId(symbol), 11) +
                  PadRight(Name(kEnglish, symbol), english + 2) + Name(kChinese, symbol));
        label = std::string(label.size(), ' ');
    }
    return kExitOk;
}

}  // namespace

int RunList(const ArgumentList& list) {
    Arguments arguments;
    std::string problem;
    if (!arguments.Read(list, {{kJson, kHelp}}, problem)) return UsageError("list", problem);
    if (arguments.Has("--help")) {
        Print(kListHelp);
        return kExitOk;
    }
    const ArgumentList& positional = arguments.Positional();
    if (positional.empty()) return ListGroups(arguments.Has("--json"));
    // A name of several words may come unquoted: list Linear Weight.
    std::string name;
    for (std::string_view word : positional) name += (name.empty() ? "" : " ") + std::string(word);
    int group = 0;
    if (!ResolveGroup(name, group, problem)) return UsageError("list", problem);
    return ListGroup(group, arguments.Has("--json"));
}

int RunShow(const ArgumentList& list) {
    Arguments arguments;
    std::string problem;
    if (!arguments.Read(list, {{kJson, kHelp, kExact, kCatalogueMeanings}}, problem)) {
        return UsageError("show", problem);
    }
    if (arguments.Has("--help")) {
        Print(kShowHelp);
        return kExitOk;
    }
    if (arguments.Positional().size() != 1) return UsageError("show", "give one UNIT");
    int unit = 0;
    if (!ResolveUnit(arguments.Positional()[0], ReadingOf(arguments), unit, problem)) {
        return UsageError("show", problem);
    }
    return ShowUnit(unit, arguments.Has("--json"), arguments.Has("--exact"));
}

}  // namespace MensuraCli
