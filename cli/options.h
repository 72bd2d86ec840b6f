// The command line of one command: its options and its other arguments, and
// the formatter that the number options describe.
#ifndef MENSURA_CLI_OPTIONS_H
#define MENSURA_CLI_OPTIONS_H

#include <initializer_list>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "catalog.h"
#include "mensura/mensura.hpp"

namespace MensuraCli {

struct OptionSpec {
    std::string_view name;  // "--json"
    bool takesValue;
};

// The options every command takes.
constexpr OptionSpec kJson{"--json", false};
constexpr OptionSpec kHelp{"--help", false};
constexpr OptionSpec kExact{"--exact", false};
// The catalogue's reading of texts and units, the everyday reading off.
constexpr OptionSpec kCatalogueMeanings{"--catalogue-meanings", false};

// The options that set up a formatter: its locale, number settings and defaults.
extern const std::initializer_list<OptionSpec> kFormatterOptions;

class Arguments {
public:
    // Splits arguments into options of `specs` ("--name value", "--name=value",
    // "-h" for --help) and positional arguments; "--" ends the options, and
    // anything not starting with "--" is positional, "-5" included. False
    // with problem set for an unknown option or a missing value.
    bool Read(const std::vector<std::string_view>& arguments,
              std::initializer_list<std::initializer_list<OptionSpec>> specs, std::string& problem);

    bool Has(std::string_view name) const { return values.count(std::string(name)) != 0; }
    // The value of an option, or fallback when absent.
    std::string_view Value(std::string_view name, std::string_view fallback = {}) const;
    const std::vector<std::string_view>& Positional() const { return positional; }

private:
    std::map<std::string, std::string_view> values;
    std::vector<std::string_view> positional;
};

// The reading that the options ask for: everyday unless --catalogue-meanings.
Reading ReadingOf(const Arguments& arguments);

// A formatter as the options ask: --locale, the number settings, the reading,
// and --default-unit and --default-symbol, which must be of the group of
// `unit`. False with problem set for a value that a setting refuses.
bool MakeFormatter(const Arguments& arguments, int unit, Mensura::Formatter& formatter,
                   std::string& problem);

}  // namespace MensuraCli

#endif  // MENSURA_CLI_OPTIONS_H
