// mensura: converts values between units from the command line.
//
//   mensura convert 100 0x2A002 0x2A003     # 100 °C in °F
//
// Exit status: 0 on success, 1 for a usage error, 2 when a value could not be
// converted.
#include <charconv>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "mensura/mensura.hpp"

namespace {

constexpr int kExitOk = 0;
constexpr int kExitUsage = 1;
constexpr int kExitFailed = 2;

const char* const kUsage =
    "usage: mensura <command> [arguments]\n"
    "\n"
    "commands:\n"
    "  convert VALUE FROM TO [--exact]   convert VALUE from unit FROM to unit TO\n"
    "\n"
    "Units are given by id, in hexadecimal (0x2017, the foot) or decimal.\n"
    "Values print with 12 significant digits; --exact prints the shortest text\n"
    "that reads back as the same double.\n"
    "\n"
    "examples:\n"
    "  mensura convert 100 0x2A002 0x2A003   # 100 degrees Celsius in Fahrenheit\n"
    "  mensura convert 5.5 0x2017 0x2001     # 5.5 feet in meters\n";

const char* ErrorName(Mensura::ErrorCode code) {
    switch (code) {
        case Mensura::ErrorCode::Success:
            return "Success";
        case Mensura::ErrorCode::Failure:
            return "Failure";
        case Mensura::ErrorCode::ParseFailure:
            return "ParseFailure";
        case Mensura::ErrorCode::NotSet:
            return "NotSet";
        case Mensura::ErrorCode::UnitMismatch:
            return "UnitMismatch";
    }
    return "unknown error";
}

bool ParseDouble(std::string_view text, double& value) {
    const char* end = text.data() + text.size();
    auto [next, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && next == end && !text.empty();
}

// A unit id in hexadecimal with 0x, or in decimal.
bool ParseUnitId(std::string_view text, int& id) {
    int base = 10;
    if (text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X')) {
        text.remove_prefix(2);
        base = 16;
    }
    const char* end = text.data() + text.size();
    auto [next, error] = std::from_chars(text.data(), end, id, base);
    return error == std::errc() && next == end && !text.empty();
}

// Whether id names a unit type of the catalogue (a symbol number may be set).
bool UnitExists(int id) {
    const int group = id & 0xFF000;
    const int type = id & 0xFFF;
    return group != 0 && type != 0 &&
           static_cast<std::size_t>(type) <= Mensura::Converter::GetUnitTypes(group, nullptr);
}

std::string FormatValue(double value, bool exact) {
    char buffer[64];
    auto result = exact ? std::to_chars(buffer, buffer + sizeof buffer, value)
                        : std::to_chars(buffer, buffer + sizeof buffer, value,
                                        std::chars_format::general, 12);
    return std::string(buffer, result.ptr);
}

int Usage(const char* problem) {
    if (problem != nullptr) std::fprintf(stderr, "mensura: %s\n\n", problem);
    std::fputs(kUsage, stderr);
    return kExitUsage;
}

int RunConvert(const std::vector<std::string_view>& arguments) {
    bool exact = false;
    std::vector<std::string_view> positional;
    for (std::string_view argument : arguments) {
        if (argument == "--exact") {
            exact = true;
        } else if (argument == "--help" || argument == "-h") {
            std::fputs(kUsage, stdout);
            return kExitOk;
        } else {
            positional.push_back(argument);
        }
    }
    if (positional.size() != 3) return Usage("convert takes VALUE FROM TO");
    double value = 0.0;
    if (!ParseDouble(positional[0], value)) {
        std::fprintf(stderr, "mensura: '%.*s' is not a number\n",
                     static_cast<int>(positional[0].size()), positional[0].data());
        return kExitUsage;
    }
    int ids[2] = {0, 0};
    for (int i = 0; i < 2; ++i) {
        if (!ParseUnitId(positional[i + 1], ids[i])) {
            std::fprintf(stderr, "mensura: '%.*s' is not a unit id\n",
                         static_cast<int>(positional[i + 1].size()), positional[i + 1].data());
            return kExitUsage;
        }
    }
    double out = 0.0;
    const Mensura::ErrorCode result = Mensura::Converter::Convert(value, ids[0], out, ids[1]);
    if (result != Mensura::ErrorCode::Success) {
        for (int id : ids) {
            if (!UnitExists(id)) {
                std::fprintf(stderr, "mensura: %s: 0x%X is not a unit type id\n", ErrorName(result),
                             static_cast<unsigned>(id));
                return kExitFailed;
            }
        }
        std::fprintf(stderr, "mensura: %s: 0x%X and 0x%X measure different quantities\n",
                     ErrorName(result), static_cast<unsigned>(ids[0]),
                     static_cast<unsigned>(ids[1]));
        return kExitFailed;
    }
    std::printf("%s\n", FormatValue(out, exact).c_str());
    return kExitOk;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) return Usage(nullptr);
    const std::string_view command = argv[1];
    std::vector<std::string_view> arguments(argv + 2, argv + argc);
    if (command == "--help" || command == "-h" || command == "help") {
        std::fputs(kUsage, stdout);
        return kExitOk;
    }
    if (command == "convert") return RunConvert(arguments);
    return Usage(("unknown command '" + std::string(command) + "'").c_str());
}
