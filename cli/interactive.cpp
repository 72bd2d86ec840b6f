// interactive: "You have:" a text, "You want:" a unit, one conversion after
// another until the end of input.
#include <cstdio>
#include <set>
#include <vector>

#include "catalog.h"
#include "commands.h"
#include "options.h"
#include "report.h"
#include "text.h"

namespace MensuraCli {

using Mensura::ErrorCode;
using Mensura::Formatter;
using Mensura::ParseReport;

const char* const kInteractiveHelp =
    "usage: mensura interactive [--exact] [--catalogue-meanings] [--locale L]\n"
    "       mensura --interactive [options]\n"
    "       mensura                          (standard input a terminal)\n"
    "\n"
    "Asks \"You have: \" for a text to read, a value with its units (5 ft 6 in,\n"
    "3 米, 20 °C, 5′-6 1/2″), then \"You want: \" for a unit, and prints the value\n"
    "in that unit. An empty answer to \"You want: \" prints the value in the\n"
    "coherent unit of what the text reads as, with its symbol: 5 ft 6 in gives\n"
    "1.6764 m. Texts are read as parse reads them, the everyday way unless\n"
    "--catalogue-meanings is given; units are named as for convert. A text that\n"
    "does not read is reported on standard error with a caret under the fault,\n"
    "and \"You have: \" comes again; a unit that is not known asks \"You want: \"\n"
    "again. The end of input (Ctrl-D) ends the loop with a line end and status 0;\n"
    "a standard input that cannot be read ends it with status 3.\n"
    "\n"
    "Started with no command, mensura runs this loop when standard input is a\n"
    "terminal; otherwise it shows the usage. mensura interactive runs it on any\n"
    "standard input, one answer a line.\n"
    "\n"
    "options:\n"
    "  --exact                print the shortest text that reads back as the same\n"
    "                         double\n"
    "  --catalogue-meanings   read by the catalogue alone (see parse)\n"
    "  --locale L             1033 or en (the default), 2052 or zh: the words and\n"
    "                         meanings of that language (1 tbsp is 15 mL in zh)\n"
    "\n"
    "examples:\n"
    "  mensura interactive\n"
    "  printf '5 ft 6 in\\nm\\n3 米\\n\\n' | mensura interactive\n";

namespace {

// Two units of different dimensions. A text that reads into both is a bare
// number, which takes the unit that it is read into.
constexpr int kMeter = 0x2001;
constexpr int kKilogram = 0x5001;

// What a text reads as before a unit is asked for.
struct Have {
    bool read = false;
    int group = 0;        // 0 for a bare number
    double number = 0.0;  // a bare number's value
    TextReading failure;  // when it does not read
};

Have Examine(const Formatter& formatter, std::string_view text) {
    Have have;
    TextReading first = ReadText(formatter, text, kMeter);
    const ParseReport& report = first.report;
    if (report.code == ErrorCode::Success) {
        have.read = true;
        if (ReadText(formatter, text, kKilogram).report.code == ErrorCode::Success) {
            have.number = report.value;
        } else {
            have.group = GroupOf(kMeter);
        }
    } else if (report.reason == ParseReport::OtherQuantity && report.group != 0) {
        have.read = true;
        have.group = report.group;
    } else {
        have.failure = std::move(first);
    }
    return have;
}

// The first symbol of a unit type after its name that names it again as a
// unit argument ("m" for the meter, "Pa" for the pascal), else its name.
std::string SymbolText(int unit) {
    const std::vector<int> symbols = UnitSymbols(unit);
    for (std::size_t i = 1; i < symbols.size(); ++i) {
        const std::string text = Name(kEnglish, symbols[i]);
        int found = 0;
        if (!text.empty() && FindKey(text, found) && found == unit) return text;
    }
    return Name(kEnglish, unit);
}

void Prompt(const char* text) {
    Print(text);
    FlushOutput();
}

class Session {
public:
    Session(const Formatter& formatter, Reading reading, bool exact)
        : m_formatter(formatter), m_reading(reading), m_exact(exact) {}

    // Asks until the end of input, or until standard output fails, which
    // FinishOutput reports.
    int Run() {
        std::string have;
        std::string want;
        while (!OutputFailed()) {
            Prompt("You have: ");
            LineReader::Status status = Read(have);
            if (status == LineReader::TooLong) continue;
            if (status != LineReader::Line) return End(status);
            const std::string_view text = Trim(have);
            if (text.empty()) continue;
            const Have examined = Examine(m_formatter, text);
            if (!examined.read) {
                Fail(text, examined.failure);
                continue;
            }
            while (!OutputFailed()) {
                Prompt("You want: ");
                status = Read(want);
                if (status == LineReader::TooLong) continue;
                if (status != LineReader::Line) return End(status);
                if (Answer(text, examined, Trim(want))) break;
            }
        }
        return kExitOk;
    }

private:
    // Prints the value of text in the unit named by `want`, or reports why
    // not. False when `want` names no unit, so that it is asked again.
    bool Answer(std::string_view text, const Have& have, std::string_view want) {
        int unit = 0;
        std::string shown(want);
        if (want.empty()) {
            if (have.group == 0) {
                PrintLine("  " + NumberText(have.number, m_exact));
                return true;
            }
            unit = ReferenceUnit(have.group);
            shown = SymbolText(unit);
        } else {
            std::string problem;
            if (!ResolveUnit(want, m_reading, unit, problem)) {
                FlushOutput();
                std::fprintf(stderr, "mensura: %s\n", problem.c_str());
                return false;
            }
            if (LooksLikeId(want)) shown = SymbolText(unit);
        }
        const TextReading reading = ReadText(m_formatter, text, unit);
        if (reading.report.code != ErrorCode::Success) {
            Fail(text, reading);
            return true;
        }
        if (!reading.note.empty() && m_noted.insert(reading.noteKey).second) {
            ReportNote(false, 0, reading.note);
        }
        PrintLine("  " + NumberText(reading.report.value, m_exact) + " " + shown);
        return true;
    }

    static void Fail(std::string_view text, const TextReading& reading) {
        ReportFailure(false, 0, text, reading.report.code, reading.message, reading.excerpt);
    }

    // The next answer; a line too long to read is reported, and the
    // question comes again.
    LineReader::Status Read(std::string& line) {
        const LineReader::Status status = m_reader.Next(line);
        if (status == LineReader::TooLong) {
            FlushOutput();
            std::fprintf(stderr, "mensura: the line is longer than %zu bytes\n", kLongestLine);
        }
        return status;
    }

    // The end of input ends the loop with a line end; an input that could
    // not be read ends it with kExitIo.
    int End(LineReader::Status status) {
        Print("\n");
        FlushOutput();
        if (status != LineReader::Error) return kExitOk;
        std::fprintf(stderr, "mensura: %s\n", m_reader.Problem().c_str());
        return kExitIo;
    }

    LineReader m_reader;
    const Formatter& m_formatter;
    const Reading m_reading;
    const bool m_exact;
    // A notice is given once for each symbol.
    std::set<std::string> m_noted;
};

}  // namespace

int RunInteractive(const ArgumentList& list) {
    Arguments arguments;
    std::string problem;
    if (!arguments.Read(list, {{kHelp, kExact, kCatalogueMeanings, {"--locale", true}}}, problem)) {
        return UsageError("interactive", problem);
    }
    if (arguments.Has("--help")) {
        Print(kInteractiveHelp);
        return kExitOk;
    }
    if (!arguments.Positional().empty()) {
        return UsageError("interactive",
                          "takes no arguments; the texts and units come on "
                          "standard input");
    }
    Formatter formatter;
    if (!MakeFormatter(arguments, 0, formatter, problem)) {
        return UsageError("interactive", problem);
    }
    Session session(formatter, ReadingOf(arguments), arguments.Has("--exact"));
    return session.Run();
}

}  // namespace MensuraCli
