#include "options.h"

#include "catalog.h"
#include "report.h"
#include "text.h"

namespace MensuraCli {

using Mensura::ErrorCode;
using Mensura::Formatter;
using Mensura::NumberFormat;

const std::initializer_list<OptionSpec> kFormatterOptions = {
    {"--locale", true},        {"--decimal-digits", true},  {"--style", true},
    {"--group-sizes", true},   {"--group-separator", true}, {"--decimal-separator", true},
    {"--positive-sign", true}, {"--negative-sign", true},   {"--native-digits", true},
    {"--default-unit", true},  {"--default-symbol", true},
};

bool Arguments::Read(const std::vector<std::string_view>& arguments,
                     std::initializer_list<std::initializer_list<OptionSpec>> specs,
                     std::string& problem) {
    bool optionsEnded = false;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        std::string_view argument = arguments[i];
        if (optionsEnded || argument.substr(0, 2) != "--" || argument == "--") {
            if (argument == "--" && !optionsEnded) {
                optionsEnded = true;
            } else if (argument == "-h" && !optionsEnded) {
                values["--help"] = {};
            } else {
                positional.push_back(argument);
            }
            continue;
        }
        std::string_view name = argument;
        std::string_view value;
        const std::size_t equals = argument.find('=');
        const bool inline_value = equals != std::string_view::npos;
        if (inline_value) {
            name = argument.substr(0, equals);
            value = argument.substr(equals + 1);
        }
        const OptionSpec* option = nullptr;
        for (const auto& group : specs) {
            for (const OptionSpec& candidate : group) {
                if (candidate.name == name) option = &candidate;
            }
        }
        if (option == nullptr) {
            problem = "unknown option '" + Clipped(name) + "'";
            return false;
        }
        if (option->takesValue && !inline_value) {
            if (i + 1 == arguments.size()) {
                problem = std::string(name) + " needs a value";
                return false;
            }
            value = arguments[++i];
        } else if (!option->takesValue && inline_value) {
            problem = std::string(name) + " takes no value";
            return false;
        }
        values[std::string(name)] = value;
    }
    return true;
}

std::string_view Arguments::Value(std::string_view name, std::string_view fallback) const {
    const auto found = values.find(std::string(name));
    return found != values.end() ? found->second : fallback;
}

Reading ReadingOf(const Arguments& arguments) {
    return arguments.Has(kCatalogueMeanings.name) ? Reading::Catalogue : Reading::Everyday;
}

namespace {

bool ReadLocale(std::string_view text, int& locale) {
    const std::string name = AsciiLower(text);
    if (name == "zh" || name == "zh-cn" || name == "chinese") {
        locale = kChinese;
        return true;
    }
    if (name == "en" || name == "en-us" || name == "english") {
        locale = kEnglish;
        return true;
    }
    // Any other id is English to the library, as 1033 is.
    return LooksLikeId(text) && ReadInteger(text, locale);
}

bool ReadStyle(std::string_view text, NumberFormat& style) {
    static const struct {
        const char* name;
        NumberFormat style;
    } kStyles[] = {
        {"scientific-upper", NumberFormat::ScientificUpper},
        {"scientific-lower", NumberFormat::ScientificLower},
        {"scientific", NumberFormat::ScientificLower},
        {"fixed", NumberFormat::Fixed},
        {"general-upper", NumberFormat::GeneralUpper},
        {"general-lower", NumberFormat::GeneralLower},
        {"general", NumberFormat::GeneralLower},
        {"number", NumberFormat::Number},
    };
    const std::string name = AsciiLower(text);
    for (const auto& entry : kStyles) {
        if (name == entry.name) {
            style = entry.style;
            return true;
        }
    }
    int number = 0;
    if (text.size() == 1 && ReadInteger(text, number) && number <= 5) {
        style = static_cast<NumberFormat>(number);
        return true;
    }
    return false;
}

bool ReadSizes(std::string_view text, std::vector<int>& sizes) {
    while (true) {
        const std::size_t comma = text.find(',');
        int size = 0;
        if (!ReadInteger(Trim(text.substr(0, comma)), size)) return false;
        sizes.push_back(size);
        if (comma == std::string_view::npos) return true;
        text.remove_prefix(comma + 1);
    }
}

// The option's value as UTF-16; false with problem set when it is no UTF-8.
bool Wide(const Arguments& arguments, std::string_view name, std::u16string& out,
          std::string& problem) {
    if (Utf8ToUtf16(arguments.Value(name), out)) return true;
    problem = std::string(name) + " takes UTF-8 text";
    return false;
}

}  // namespace

bool MakeFormatter(const Arguments& arguments, int unit, Formatter& formatter,
                   std::string& problem) {
    int locale = kEnglish;
    if (arguments.Has("--locale") && !ReadLocale(arguments.Value("--locale"), locale)) {
        problem = "--locale takes 1033 or en for English, 2052 or zh for Simplified Chinese";
        return false;
    }
    Formatter made(locale);
    const Reading reading = ReadingOf(arguments);
    made.SetEverydayReading(reading == Reading::Everyday);
    std::u16string text;
    if (arguments.Has("--native-digits")) {
        if (!Wide(arguments, "--native-digits", text, problem)) return false;
        if (text.size() != 10 || made.SetNativeDigits(text.c_str()) != ErrorCode::Success) {
            problem =
                "--native-digits takes ten different characters for 0 to 9, each one "
                "UTF-16 unit";
            return false;
        }
    }
    if (arguments.Has("--negative-sign")) {
        if (!Wide(arguments, "--negative-sign", text, problem)) return false;
        made.SetNegativeSign(text.c_str());
    }
    if (arguments.Has("--positive-sign")) {
        if (!Wide(arguments, "--positive-sign", text, problem)) return false;
        made.SetPositiveSign(text.c_str());
    }
    if (arguments.Has("--decimal-digits")) {
        int digits = 0;
        if (!ReadInteger(arguments.Value("--decimal-digits"), digits) ||
            made.SetNumberDecimalDigits(digits) != ErrorCode::Success) {
            problem = "--decimal-digits takes a whole number from 0 to 99";
            return false;
        }
    }
    if (arguments.Has("--decimal-separator") && arguments.Has("--group-separator")) {
        // The number tokens map a text to one meaning, and a setting that
        // changes erases its old text whatever that text means by then: to
        // swap the two separators (1.234,5), the group separator first
        // moves out of the way.
        made.SetNumberGroupSeparator(u"\uFFFF");
    }
    if (arguments.Has("--decimal-separator")) {
        if (!Wide(arguments, "--decimal-separator", text, problem)) return false;
        if (made.SetNumberDecimalSeparator(text.c_str()) != ErrorCode::Success) {
            problem = "--decimal-separator takes a text that is not empty";
            return false;
        }
    }
    if (arguments.Has("--group-separator")) {
        if (!Wide(arguments, "--group-separator", text, problem)) return false;
        if (made.SetNumberGroupSeparator(text.c_str()) != ErrorCode::Success) {
            problem = "--group-separator takes a text that is not empty";
            return false;
        }
    }
    if (arguments.Has("--group-sizes")) {
        std::vector<int> sizes;
        if (!ReadSizes(arguments.Value("--group-sizes"), sizes) ||
            made.SetNumberGroupSizes(sizes.data(), static_cast<int>(sizes.size())) !=
                ErrorCode::Success) {
            problem =
                "--group-sizes takes sizes from 1 to 9 separated by commas, nearest the "
                "decimal point first; the last may be 0 (3, 3,2, 0)";
            return false;
        }
    }
    if (arguments.Has("--style")) {
        NumberFormat style = NumberFormat::Number;
        if (!ReadStyle(arguments.Value("--style"), style)) {
            problem =
                "--style takes number, fixed, scientific, scientific-upper, general, "
                "general-upper, or 0 to 5";
            return false;
        }
        made.SetNumber(style);
    }
    if (arguments.Has("--default-unit")) {
        int chosen = 0;
        if (!ResolveUnit(arguments.Value("--default-unit"), reading, chosen, problem)) {
            problem = "--default-unit: " + problem;
            return false;
        }
        if (GroupOf(chosen) != GroupOf(unit)) {
            problem = "--default-unit: " + Describe(chosen) + " is not " + Quantity(GroupOf(unit)) +
                      " like " + Describe(unit);
            return false;
        }
        made.SetDefaultUnit(chosen);
    }
    if (arguments.Has("--default-symbol")) {
        int chosen = 0;
        if (!ResolveSymbol(arguments.Value("--default-symbol"), unit, locale, true, reading, chosen,
                           problem)) {
            problem = "--default-symbol: " + problem;
            return false;
        }
        if (GroupOf(chosen) != GroupOf(unit)) {
            problem = "--default-symbol: " + Describe(chosen) + " is not a symbol of " +
                      Quantity(GroupOf(unit));
            return false;
        }
        made.SetDefaultSymbol(chosen);
    }
    formatter = made;
    return true;
}

}  // namespace MensuraCli
