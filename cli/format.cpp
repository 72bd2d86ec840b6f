// format: a value rendered with a symbol under the formatter's settings.
#include <cmath>
#include <cstdio>

#include "catalog.h"
#include "commands.h"
#include "options.h"
#include "report.h"
#include "text.h"

namespace MensuraCli {

using Mensura::ErrorCode;
using Mensura::Formatter;

const char* const kFormatHelp =
    "usage: mensura format [options] VALUE UNIT\n"
    "\n"
    "Renders VALUE, a plain number in UNIT, as text with a symbol. Units are named\n"
    "as for convert, --catalogue-meanings included.\n"
    "\n"
    "options:\n"
    "  --symbol S              render with S: a symbol's text in either language\n"
    "                          (ft, ′, 英尺, \"x′x x/2″\"), a unit (its default\n"
    "                          symbol), or an id: symbol 0x202017, unit 0x2017,\n"
    "                          group 0x2000 (its default unit)\n"
    "  --locale L              1033 or en (the default), 2052 or zh\n"
    "  --decimal-digits N      0 to 99 (default 2)\n"
    "  --style S               number (default: fixed with groups), fixed,\n"
    "                          scientific, scientific-upper, general, general-upper,\n"
    "                          or 0 to 5 as the library numbers them\n"
    "  --group-sizes LIST      sizes of digit groups, nearest the point first: 3, 3,2;\n"
    "                          a last size of 0 leaves the rest ungrouped\n"
    "  --group-separator T     default \",\"\n"
    "  --decimal-separator T   default \".\"\n"
    "  --positive-sign T       default none\n"
    "  --negative-sign T       default \"-\"\n"
    "  --native-digits T       ten characters for 0 to 9, e.g. 〇一二三四五六七八九\n"
    "  --default-unit U        make U the default unit of its group and render in it\n"
    "                          when no --symbol is given\n"
    "  --default-symbol S      make symbol S (its text or complete id) the default of\n"
    "                          its unit type\n"
    "  --pattern P             render the chosen symbol through the symbol string P:\n"
    "                          text around numbered placeholders, one for each number\n"
    "                          of the symbol (\"{0} ft {1} in\" for x′x″); {{ and }}\n"
    "                          write braces\n"
    "  --catalogue-meanings    name UNIT, --symbol and --default-unit by the catalogue\n"
    "                          alone (see convert)\n"
    "  --json                  the text, the symbol and the value in the symbol's unit\n"
    "\n"
    "examples:\n"
    "  mensura format 5.5 m                          # 5.50 meter\n"
    "  mensura format 5.5 m --locale zh              # 5.50 米\n"
    "  mensura format 1234567.891 m --symbol m       # 1,234,567.89 m\n"
    "  mensura format 1 m --symbol ft --decimal-digits 4   # 3.2808 ft\n"
    "  mensura format 66.25 in --symbol \"x′x x/2″\"\n"
    "  mensura format 66.25 in --symbol \"x′x″\" --pattern \"{0} ft {1} in\"\n"
    "  mensura format 1 m --default-unit ft          # 3.28 foot\n"
    "  mensura format -0.5 m --style scientific --negative-sign \"−\"\n";

namespace {

// The symbol that Format chooses for a request: 0 for the default of unit, a
// group, a unit type, or a complete symbol.
int ChosenSymbol(const Formatter& formatter, int unit, int request) {
    if (request == 0) return formatter.GetDefaultSymbol(UnitOf(unit));
    if (HasSymbol(request)) return request;
    if (IsGroup(request)) return formatter.GetDefaultSymbol(formatter.GetDefaultUnit(request));
    return formatter.GetDefaultSymbol(request);
}

std::string FormatterName(const Formatter& formatter, int id) {
    char16_t buffer[256];
    if (formatter.GetDisplayName(id, buffer, sizeof buffer / sizeof buffer[0]) !=
        ErrorCode::Success) {
        return "";
    }
    return Utf16ToUtf8(buffer);
}

}  // namespace

int RunFormat(const ArgumentList& list) {
    Arguments arguments;
    std::string problem;
    if (!arguments.Read(
            list,
            {{kJson, kHelp, kCatalogueMeanings, {"--symbol", true}, {"--pattern", true}},
             kFormatterOptions},
            problem)) {
        return UsageError("format", problem);
    }
    if (arguments.Has("--help")) {
        Print(kFormatHelp);
        return kExitOk;
    }
    const ArgumentList& positional = arguments.Positional();
    if (positional.size() != 2) return UsageError("format", "give VALUE UNIT");
    int unit = 0;
    const Reading reading = ReadingOf(arguments);
    if (!ResolveUnit(positional[1], reading, unit, problem)) return UsageError("format", problem);
    Formatter formatter;
    if (!MakeFormatter(arguments, unit, formatter, problem)) return UsageError("format", problem);
    int symbol = 0;
    if (arguments.Has("--symbol")) {
        if (!ResolveSymbol(arguments.Value("--symbol"), unit, formatter.GetLocaleId(), false,
                           reading, symbol, problem)) {
            return UsageError("format", "--symbol: " + problem);
        }
    } else if (arguments.Has("--default-unit")) {
        symbol = GroupOf(unit);  // the group renders in its default unit
    }

    const int chosen = ChosenSymbol(formatter, unit, symbol);
    if (arguments.Has("--pattern")) {
        std::u16string pattern;
        if (!Utf8ToUtf16(arguments.Value("--pattern"), pattern)) {
            return UsageError("format", "--pattern takes UTF-8 text");
        }
        if (pattern.empty() ||
            formatter.SetSymbolFormattingString(chosen, pattern.c_str()) != ErrorCode::Success) {
            return UsageError("format", "--pattern: '" + Clipped(arguments.Value("--pattern")) +
                                            "' does not fit the symbol " + Describe(chosen) +
                                            ": it needs one placeholder {0}, {1}, ... for each "
                                            "number of the symbol, with text between them");
        }
    }

    const bool json = arguments.Has("--json");
    double value = 0.0;
    const NumberRead read = ReadNumber(positional[0], value);
    if (read != NumberRead::Number) {
        ReportFailure(json, 0, positional[0], ErrorCode::ParseFailure,
                      NumberProblem(read, positional[0]));
        return kExitFailed;
    }
    // A text grows with the decimal digits and the separators: try larger
    // buffers while the library says that the text does not fit.
    std::u16string buffer;
    double converted = 0.0;
    ErrorCode result = ErrorCode::Failure;
    for (std::size_t size = 256; size <= (std::size_t{1} << 20); size *= 8) {
        buffer.assign(size, u'\0');
        result = formatter.Format(value, unit, buffer.data(), size, symbol, &converted);
        if (result != ErrorCode::Failure) break;
    }
    // The library renders a value beyond the range of a double in the
    // symbol's unit as an infinity.
    const bool finite = std::isfinite(converted);
    if (result != ErrorCode::Success || !finite) {
        std::string message = "cannot render " + Clipped(positional[0]) + " " + Describe(unit) +
                              " with " + Describe(chosen);
        if (result == ErrorCode::UnitMismatch) {
            message += ": " + Quantity(GroupOf(chosen)) + " is not " + Quantity(GroupOf(unit));
        } else if (result == ErrorCode::Success) {
            message += ": the value is " + NotFiniteText(converted);
            result = ErrorCode::Failure;
        }
        ReportFailure(json, 0, positional[0], result, message);
        return kExitFailed;
    }
    const std::string text = Utf16ToUtf8(buffer.c_str());
    if (!json) {
        PrintLine(text);
        return kExitOk;
    }
    PrintLine("{\"text\":" + JsonString(text) + ",\"value\":" + JsonNumber(value) +
              ",\"unit\":" + std::to_string(unit) + ",\"symbol\":" + std::to_string(chosen) +
              ",\"symbol_text\":" + JsonString(FormatterName(formatter, chosen)) +
              ",\"converted\":" + JsonNumber(converted) + "}");
    return kExitOk;
}

}  // namespace MensuraCli
