// mensura: converts, reads and renders values with units from the command
// line, and browses the catalogue of units. Built on the library's public
// API alone; reads and writes UTF-8.
//
// Exit status: 0 on success, 1 for a usage error, 2 when some value or text
// could not be read or converted, 3 when reading standard input or writing
// standard output failed.
#include <unistd.h>

#include <cstdio>
#include <string>

#include "commands.h"
#include "report.h"

#ifndef MENSURA_VERSION
#error "MENSURA_VERSION comes from the project's version in cli/CMakeLists.txt"
#endif

namespace MensuraCli {

const char* const kToolHelp =
    "usage: mensura <command> [arguments] [--json] [--help]\n"
    "       mensura --version\n"
    "       mensura                  ask \"You have:\" and \"You want:\" (a terminal)\n"
    "\n"
    "commands:\n"
    "  convert VALUE FROM TO    convert a number from one unit into another\n"
    "  parse TEXT UNIT          read a text such as \"5′-6 1/2″\" as a value in UNIT\n"
    "  format VALUE UNIT        render a value with a symbol\n"
    "  list [GROUP]             list the groups, or the unit types of a group\n"
    "  show UNIT                show a unit type: ids, dimensions, factor, symbols\n"
    "  interactive              ask \"You have:\" for a text and \"You want:\" for a\n"
    "                           unit, and convert, until the end of input\n"
    "  help [COMMAND]           show this text, or a command's\n"
    "\n"
    "Started with no command, mensura runs interactive when standard input is a\n"
    "terminal, and shows this text otherwise. --version prints the version.\n"
    "\n"
    "convert and parse read one value a line from standard input when the value\n"
    "is left out, and write each answer as it comes. A line ends with \\n or\n"
    "\\r\\n; a line that holds a NUL byte, is not UTF-8 or is longer than 65536\n"
    "bytes fails as a text that does not read. Every command but interactive\n"
    "takes --json for output that scripts read, and every one --help for its\n"
    "options and examples.\n"
    "\n"
    "Units are symbols or names (ft, m², 米, \"degree Celsius\") or ids in\n"
    "hexadecimal or decimal (0x2017 is the foot).\n"
    "\n"
    "Texts are read the everyday way: where the catalogue's reading refuses a\n"
    "text, it also reads SI prefixes (kJ, hPa), plurals and words (feet,\n"
    "\"meters per second\"), sums (\"5 ft 6 in\"), vulgar fractions (5′6½″), \"−\"\n"
    "and \"+\" as signs and compact bearings (N45-30E); and a few symbols take\n"
    "their everyday meaning: in a text, lb is the avoirdupois pound (0.45359237\n"
    "kg), MB a million bytes. A unit argument that is a symbol of the catalogue\n"
    "keeps the catalogue's meaning (lb is the pound (meter) of 0.5 kg there); one\n"
    "that the catalogue lacks is read the everyday way too (feet, kJ). convert,\n"
    "parse, format and show take --catalogue-meanings to read by the catalogue\n"
    "alone. docs/everyday-reading.md has the whole list.\n"
    "\n"
    "A text that does not read is reported on standard error with the reason\n"
    "and the text, a caret under the part to blame:\n"
    "  mensura: ParseFailure: 'km3' is not a known unit or mark\n"
    "    1e-9 km3\n"
    "         ^~~\n"
    "With --catalogue-meanings, a symbol that the everyday reading takes\n"
    "otherwise (lb, MB) gets a note on standard error.\n"
    "\n"
    "exit status:\n"
    "  0  every value was read, converted or rendered\n"
    "  1  a usage error: the command line was wrong, and nothing was done\n"
    "  2  some value or line could not be read or converted; each failure is\n"
    "     reported on standard error, with its line number, and the other lines\n"
    "     are answered\n"
    "  3  reading standard input or writing standard output failed (a folder as\n"
    "     standard input, a full disk); reported on standard error\n"
    "\n"
    "examples:\n"
    "  mensura convert 5.5 ft m              # 1.6764\n"
    "  mensura parse \"5′-6 1/2″\" in          # 66.5\n"
    "  mensura parse \"5 ft 6 in\" in          # 66\n"
    "  mensura parse \"150 lb\" kg             # 68.0388555\n"
    "  mensura parse --catalogue-meanings \"150 lb\" kg   # 75\n"
    "  mensura format 5.5 m --locale zh      # 5.50 米\n"
    "  mensura list Length\n"
    "  mensura show ft\n";

}  // namespace MensuraCli

namespace {

using MensuraCli::ArgumentList;

struct Command {
    const char* name;
    int (*run)(const ArgumentList&);
    const char* const* help;
};

const Command kCommands[] = {
    {"convert", MensuraCli::RunConvert, &MensuraCli::kConvertHelp},
    {"parse", MensuraCli::RunParse, &MensuraCli::kParseHelp},
    {"format", MensuraCli::RunFormat, &MensuraCli::kFormatHelp},
    {"list", MensuraCli::RunList, &MensuraCli::kListHelp},
    {"show", MensuraCli::RunShow, &MensuraCli::kShowHelp},
    {"interactive", MensuraCli::RunInteractive, &MensuraCli::kInteractiveHelp},
};

const Command* FindCommand(std::string_view name) {
    for (const Command& command : kCommands) {
        if (name == command.name) return &command;
    }
    return nullptr;
}

int Run(int argc, char** argv) {
    if (argc < 2) {
        if (isatty(STDIN_FILENO)) return MensuraCli::RunInteractive({});
        std::fputs(MensuraCli::kToolHelp, stderr);
        return MensuraCli::kExitUsage;
    }
    const std::string_view name = argv[1];
    const ArgumentList arguments(argv + 2, argv + argc);
    if (name == "--version") {
        if (!arguments.empty()) return MensuraCli::UsageError("", "--version takes no arguments");
        MensuraCli::PrintLine("mensura " MENSURA_VERSION);
        return MensuraCli::kExitOk;
    }
    if (name == "--interactive") return MensuraCli::RunInteractive(arguments);
    if (name == "--help" || name == "-h" || name == "help") {
        if (arguments.empty()) {
            MensuraCli::Print(MensuraCli::kToolHelp);
            return MensuraCli::kExitOk;
        }
        const Command* command = FindCommand(arguments[0]);
        if (command == nullptr) {
            return MensuraCli::UsageError(
                "", "no command is named '" + MensuraCli::Clipped(arguments[0]) + "'");
        }
        MensuraCli::Print(*command->help);
        return MensuraCli::kExitOk;
    }
    if (const Command* command = FindCommand(name)) return command->run(arguments);
    return MensuraCli::UsageError("", "unknown command '" + MensuraCli::Clipped(name) + "'");
}

}  // namespace

int main(int argc, char** argv) {
    // Whatever the command did, an output that could not be written fails.
    return MensuraCli::FinishOutput(Run(argc, argv));
}
