// convert and parse: one value from the command line, or one a line from
// standard input.
#include <charconv>
#include <cmath>
#include <cstdio>
#include <set>

#include "catalog.h"
#include "commands.h"
#include "options.h"
#include "report.h"
#include "text.h"

namespace MensuraCli {

using Mensura::Converter;
using Mensura::ErrorCode;
using Mensura::Formatter;

const char* const kConvertHelp =
    "usage: mensura convert [--exact] [--json] [--catalogue-meanings] VALUE FROM TO\n"
    "       mensura convert [--exact] [--json] [--catalogue-meanings] FROM TO  < values\n"
    "\n"
    "Converts VALUE, a plain number, from unit FROM into unit TO. Without VALUE,\n"
    "reads one number a line from standard input and writes one result a line;\n"
    "blank lines are skipped, and a line that fails is reported on standard error\n"
    "with its number while the others go on. A line ends with \\n or \\r\\n; one\n"
    "that holds a NUL byte or is longer than 65536 bytes fails, and so do inf,\n"
    "nan, a number beyond the range of a double (1e400) and a result beyond it.\n"
    "\n"
    "A unit is a symbol or name of the catalogue (ft, m², 米, \"degree Celsius\"),\n"
    "any other text that reads as one unit after a 1 (N, m/s), or an id in\n"
    "hexadecimal (0x2017) or decimal (8215). Such a text is read by the\n"
    "catalogue's meanings first, so a symbol of the catalogue keeps its meaning\n"
    "(lb is the pound (meter) of 0.5 kg; the avoirdupois pound is \"pound\" or\n"
    "0x5017); then the everyday way, which adds plurals, words and SI prefixes\n"
    "(feet, \"meters per second\", kJ).\n"
    "\n"
    "options:\n"
    "  --exact                print the shortest text that reads back as the same\n"
    "                         double (default: 12 significant digits, no trailing\n"
    "                         zeros)\n"
    "  --json                 one JSON object a result; failures as JSON on standard\n"
    "                         error\n"
    "  --catalogue-meanings   name units by the catalogue alone: feet and kJ are\n"
    "                         then no units\n"
    "\n"
    "examples:\n"
    "  mensura convert 5.5 ft m                 # 1.6764\n"
    "  mensura convert --exact 5.5 ft m         # 1.6764000000000001\n"
    "  mensura convert 100 °C °F                # 212\n"
    "  mensura convert 1 0x2C018 0x2C001        # a day in seconds: 86400\n"
    "  mensura convert 2 feet m                 # 0.6096\n"
    "  printf '1\\n2.5\\n' | mensura convert mi km\n";

const char* const kParseHelp =
    "usage: mensura parse [options] TEXT UNIT\n"
    "       mensura parse [options] UNIT  < texts\n"
    "\n"
    "Reads TEXT, a value with its units, as a value in UNIT: \"5 ft\", \"1,000.5 mm\",\n"
    "\"5′-6 1/2″\", \"N 45°30′ E\", \"5 kg·m/s²\". A bare number is in the default\n"
    "unit of UNIT's group. Without TEXT, reads one text a line from standard\n"
    "input and writes one value a line; blank lines are skipped, and a line that\n"
    "fails is reported on standard error with its number while the others go on.\n"
    "A line ends with \\n or \\r\\n; one that holds a NUL byte, is not UTF-8 or is\n"
    "longer than 65536 bytes fails, and so does a value beyond the range of a\n"
    "double (1e400 m, or 1e308 km in mm). Units are named as for convert.\n"
    "\n"
    "TEXT is read the everyday way. The catalogue's reading comes first, with a\n"
    "few symbols in their everyday meaning: lb is the avoirdupois pound, kB, MB\n"
    "and GB are powers of 1000, kt is the knot, and in English tbsp, tsp and cwt\n"
    "are the U.S. customary units. A text that it refuses is read again with\n"
    "SI prefixes (kJ, hPa, μs), plurals and words (feet, \"degrees Celsius\"),\n"
    "\"*\", \"⋅\" and \"×\" between units, \"−\" and \"+\" as signs, vulgar and mixed\n"
    "fractions (5′6½″, \"1 1/2 in\"), sums of one kind (\"5 ft 6 in\", \"1 h 30\n"
    "min\"; temperatures do not add) and compact bearings (N45-30E, S30W).\n"
    "\n"
    "A text that does not read is reported on standard error with the reason\n"
    "and the text, cut to about 60 columns around the fault, with a caret under\n"
    "the part to blame. With --catalogue-meanings, a symbol read in a catalogue\n"
    "meaning that the everyday reading changes (lb, MB, tbsp) gets a note on\n"
    "standard error, once a symbol; the value is read all the same.\n"
    "\n"
    "options:\n"
    "  --exact                 print the shortest text that reads back as the same double\n"
    "  --json                  one JSON object a result\n"
    "  --catalogue-meanings    read by the catalogue alone: lb is the pound (meter) of\n"
    "                          0.5 kg, MB 2^20 bytes, and the everyday words and\n"
    "                          forms are not read\n"
    "  --locale L, the number settings, --default-unit U, --default-symbol S\n"
    "                          as for format: they say how numbers are written and\n"
    "                          what a bare number means\n"
    "\n"
    "examples:\n"
    "  mensura parse \"5′-6 1/2″\" in               # 66.5\n"
    "  mensura parse \"N 45°30′ E\" degree          # 44.5 (east is 0, north 90)\n"
    "  mensura parse \"3 米\" ft                     # 9.84251968504\n"
    "  mensura parse \"5 ft 6 in\" in               # 66\n"
    "  mensura parse \"150 lb\" kg                  # 68.0388555\n"
    "  mensura parse --catalogue-meanings \"150 lb\" kg   # 75\n"
    "  mensura parse \"9.81 m/s^2\" 0x30001         # an acceleration: 9.81\n"
    "  mensura parse 5 m --default-unit ft        # a bare 5 is 5 ft: 1.524\n"
    "  mensura parse \"1.234,5 m\" m --decimal-separator , --group-separator .\n"
    "  printf '5 ft\\n6 in\\n' | mensura parse m\n";

int UsageError(std::string_view command, const std::string& problem) {
    const std::string prefix = command.empty() ? "mensura" : "mensura " + std::string(command);
    std::fprintf(stderr, "%s: %s\nTry '%s --help'.\n", prefix.c_str(), problem.c_str(),
                 prefix.c_str());
    return kExitUsage;
}

void ReportFailure(bool json, long line, std::string_view input, ErrorCode code,
                   const std::string& message, const std::string& excerpt) {
    std::string text;
    if (json) {
        text = "{";
        if (line > 0) text += "\"line\":" + std::to_string(line) + ",";
        text += "\"input\":" + JsonString(Shortened(input, kExcerptColumns)) +
                ",\"error\":" + JsonString(ErrorName(code)) +
                ",\"message\":" + JsonString(message) + "}";
    } else {
        text = "mensura: ";
        if (line > 0) text += "line " + std::to_string(line) + ": ";
        text += std::string(ErrorName(code)) + ": " + message;
        if (!excerpt.empty()) text += "\n" + excerpt;
    }
    text += '\n';
    // The results before it first, so that a stream of both keeps their order.
    FlushOutput();
    std::fwrite(text.data(), 1, text.size(), stderr);
}

void ReportNote(bool json, long line, const std::string& note) {
    std::string text;
    if (json) {
        text = "{";
        if (line > 0) text += "\"line\":" + std::to_string(line) + ",";
        text += "\"note\":" + JsonString(note) + "}";
    } else {
        text = "mensura: ";
        if (line > 0) text += "line " + std::to_string(line) + ": ";
        text += "note: " + note;
    }
    text += '\n';
    FlushOutput();
    std::fwrite(text.data(), 1, text.size(), stderr);
}

namespace {

// What became of one value.
struct Outcome {
    ErrorCode code = ErrorCode::Success;
    double value = 0.0;
    std::string message;  // on failure
    std::string excerpt;  // on failure, the text with a caret line under the fault
    std::string noteKey;  // on success, a symbol that a notice is about
    std::string note;     // and the notice
};

// Writes the answer for one value: its number, or with json one object. out
// is a buffer kept from line to line, so that a stream allocates nothing.
void PrintResult(bool json, bool exact, long line, std::string_view input, int unit, double value,
                 std::string& out) {
    char number[kLongestNumberText + 1];
    char* end = WriteNumberText(value, exact, number);
    if (!json) {
        *end++ = '\n';
        Print(std::string_view(number, static_cast<std::size_t>(end - number)));
        return;
    }
    const auto appendInteger = [&out](long integer) {
        char digits[24];
        out.append(digits, std::to_chars(digits, digits + sizeof digits, integer).ptr);
    };
    out = "{";
    if (line > 0) {
        out += "\"line\":";
        appendInteger(line);
        out += ',';
    }
    out += "\"input\":";
    AppendJsonString(out, input);
    out += ",\"value\":";
    if (std::isfinite(value)) {
        char exactNumber[kLongestNumberText];
        out.append(exactNumber, WriteNumberText(value, true, exactNumber));
    } else {
        out += "null";
    }
    out += ",\"text\":";
    AppendJsonString(out, std::string_view(number, static_cast<std::size_t>(end - number)));
    out += ",\"unit\":";
    appendInteger(unit);
    out += "}\n";
    Print(out);
}

// Runs step on every line of standard input that is not blank. A function
// of its own, never folded into RunValues: its reader holds 64 KiB, and a
// frame that held them would push the calls for a value of the command line
// that far down the stack, onto pages that the process must fault in.
template <typename Step>
[[gnu::noinline]] int RunLines(bool json, bool exact, int unit, const Step& step) {
    // A notice is given once for each symbol, on the first line that has it.
    std::set<std::string> noted;
    bool failed = false;
    LineReader reader;
    std::string_view line;
    std::string out;
    while (!OutputFailed()) {
        const LineReader::Status status = reader.Next(line);
        if (status == LineReader::End) break;
        if (status == LineReader::Error) {
            FlushOutput();
            std::fprintf(stderr, "mensura: %s\n", reader.Problem().c_str());
            return kExitIo;
        }
        const long number = reader.Number();
        if (status == LineReader::TooLong) {
            ReportFailure(json, number, "", ErrorCode::ParseFailure,
                          "the line is longer than " + std::to_string(kLongestLine) + " bytes");
            failed = true;
            continue;
        }
        const std::string_view input = Trim(line);
        if (input.empty()) continue;
        const Outcome outcome = step(input);
        if (outcome.code != ErrorCode::Success) {
            ReportFailure(json, number, input, outcome.code, outcome.message, outcome.excerpt);
            failed = true;
            continue;
        }
        if (!outcome.note.empty() && noted.insert(outcome.noteKey).second) {
            ReportNote(json, number, outcome.note);
        }
        PrintResult(json, exact, number, input, unit, outcome.value, out);
    }
    return failed ? kExitFailed : kExitOk;
}

// Runs step on the one value of the command line, or else on every line of
// standard input that is not blank.
template <typename Step>
int RunValues(const Arguments& arguments, const std::string_view* single, int unit,
              const Step& step) {
    const bool json = arguments.Has("--json");
    const bool exact = arguments.Has("--exact");
    if (single == nullptr) return RunLines(json, exact, unit, step);
    const Outcome outcome = step(*single);
    if (outcome.code != ErrorCode::Success) {
        ReportFailure(json, 0, *single, outcome.code, outcome.message, outcome.excerpt);
        return kExitFailed;
    }
    if (!outcome.note.empty()) ReportNote(json, 0, outcome.note);
    std::string out;
    PrintResult(json, exact, 0, *single, unit, outcome.value, out);
    return kExitOk;
}

}  // namespace

int RunConvert(const ArgumentList& list) {
    Arguments arguments;
    std::string problem;
    if (!arguments.Read(list, {{kJson, kHelp, kExact, kCatalogueMeanings}}, problem)) {
        return UsageError("convert", problem);
    }
    if (arguments.Has("--help")) {
        Print(kConvertHelp);
        return kExitOk;
    }
    const ArgumentList& positional = arguments.Positional();
    if (positional.size() != 2 && positional.size() != 3) {
        return UsageError("convert", "give VALUE FROM TO, or FROM TO and values on standard input");
    }
    const std::size_t first = positional.size() - 2;
    int from = 0;
    int to = 0;
    const Reading reading = ReadingOf(arguments);
    if (!ResolveUnit(positional[first], reading, from, problem) ||
        !ResolveUnit(positional[first + 1], reading, to, problem)) {
        double number = 0.0;
        if (first == 0 && ReadNumber(positional[0], number) != NumberRead::NoNumber) {
            problem = "'" + Clipped(positional[0]) +
                      "' is a number, not a unit: give VALUE FROM TO, or FROM TO and values on "
                      "standard input";
        }
        return UsageError("convert", problem);
    }
    double trial = 0.0;
    if (Converter::Convert(1.0, from, trial, to) != ErrorCode::Success) {
        ReportFailure(arguments.Has("--json"), 0, first == 1 ? positional[0] : "",
                      ErrorCode::UnitMismatch,
                      "cannot convert " + Describe(from) + " into " + Describe(to) + ": " +
                          Quantity(GroupOf(from)) + " is not " + Quantity(GroupOf(to)));
        return kExitFailed;
    }
    const auto step = [from, to](std::string_view input) {
        Outcome outcome;
        double value = 0.0;
        const NumberRead read = ReadNumber(input, value);
        if (read != NumberRead::Number) {
            outcome.code = ErrorCode::ParseFailure;
            outcome.message = NumberProblem(read, input);
            if (read == NumberRead::NoNumber) {
                outcome.message += "; convert takes plain numbers, parse reads units";
            }
            return outcome;
        }
        outcome.code = Converter::Convert(value, from, outcome.value, to);
        if (outcome.code == ErrorCode::Success && !std::isfinite(outcome.value)) {
            // The library gives an infinity for a result beyond the range of a double.
            outcome.code = ErrorCode::Failure;
            outcome.message = "cannot convert " + Clipped(input) + " " + Describe(from) + " into " +
                              Describe(to) + ": the value is " + NotFiniteText(outcome.value);
        } else if (outcome.code != ErrorCode::Success) {
            outcome.message =
                "cannot convert " + Clipped(input) + " " + Describe(from) + " into " + Describe(to);
        }
        return outcome;
    };
    return RunValues(arguments, first == 1 ? &positional[0] : nullptr, to, step);
}

int RunParse(const ArgumentList& list) {
    Arguments arguments;
    std::string problem;
    if (!arguments.Read(list, {{kJson, kHelp, kExact, kCatalogueMeanings}, kFormatterOptions},
                        problem)) {
        return UsageError("parse", problem);
    }
    if (arguments.Has("--help")) {
        Print(kParseHelp);
        return kExitOk;
    }
    const ArgumentList& positional = arguments.Positional();
    if (positional.size() != 1 && positional.size() != 2) {
        return UsageError("parse", "give TEXT UNIT, or UNIT and texts on standard input");
    }
    int unit = 0;
    if (!ResolveUnit(positional.back(), ReadingOf(arguments), unit, problem)) {
        return UsageError("parse", problem);
    }
    Formatter formatter;
    if (!MakeFormatter(arguments, unit, formatter, problem)) return UsageError("parse", problem);
    std::u16string text;  // each line's text, in one buffer
    const auto step = [&formatter, unit, &text](std::string_view input) {
        Outcome outcome;
        if (ReadValue(formatter, input, unit, text, outcome.value)) return outcome;
        const TextReading reading = ReadText(formatter, input, unit);
        outcome.code = reading.report.code;
        outcome.value = reading.report.value;
        outcome.message = reading.message;
        outcome.excerpt = reading.excerpt;
        outcome.noteKey = reading.noteKey;
        outcome.note = reading.note;
        return outcome;
    };
    return RunValues(arguments, positional.size() == 2 ? &positional[0] : nullptr, unit, step);
}

}  // namespace MensuraCli
