// Writes two pages of docs/ from the library itself: the catalogue reference
// (docs/catalogue.md: every group, unit type and symbol with its ids, names,
// texts, keys, dimensions and factor) and the known surprises
// (docs/known-surprises.md: the factors that differ from today's definitions,
// the keys that the everyday reading reads otherwise, and the display names
// kept as they are).
//
//   mensura_generate_reference --write [DIR]   writes both pages into DIR (docs)
//   mensura_generate_reference --check [DIR]   compares the pages in DIR with
//                                              what it would write; prints the
//                                              lines that differ and exits with 1
//
// It runs from the root of the source tree and reads, besides the library:
//   include/mensura/ids.h         the names of the ids
//   tools/defining_values.txt     a defining value for every unit type, with
//                                 its source, or why there is none
//   tools/kept_names.txt          the display names that the catalogue keeps
//                                 as they are, with what they mean
// The names, texts, factors and the reading of keys come from the library: the
// catalogue's symbols and parse dictionary, the table of converters, and
// Formatter::Parse with and without the everyday reading. It links the
// library's static archive, which holds the public functions too.
#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "catalogue/unit_catalog.h"
#include "catalogue/vocabulary.h"
#include "grammar/parse_symbol.h"
#include "line_diff.h"
#include "mensura/mensura.h"
#include "mensura/mensura.hpp"
#include "text.h"
#include "units/unit_table.h"

namespace {

using Mensura::Converter;
using Mensura::ErrorCode;
using Mensura::Formatter;
using Mensura::IParseSymbol;
using Mensura::UnitCatalog;
using Mensura::UnitTable;

constexpr int kEnglish = 1033;
constexpr int kChinese = 2052;
constexpr const char* kRegenerate = "build/tools/mensura_generate_reference --write docs";
constexpr const char* kIdsHeader = "include/mensura/ids.h";
constexpr const char* kValuesFile = "tools/defining_values.txt";
constexpr const char* kNamesFile = "tools/kept_names.txt";
constexpr const char* kCataloguePage = "catalogue.md";
constexpr const char* kSurprisesPage = "known-surprises.md";
// A factor is surprising when it differs from its defining value by more than
// this, relative to that value.
constexpr double kSurprise = 1e-9;

using Exponents = std::array<int, 7>;

// --- Text ------------------------------------------------------------------

std::string Utf8(const std::u16string& text) {
    return MensuraCli::Utf16ToUtf8(text);
}

std::u16string Utf16(const std::string& text) {
    std::u16string out;
    for (std::size_t i = 0; i < text.size();) {
        const unsigned char lead = static_cast<unsigned char>(text[i]);
        const int length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        char32_t c = length == 1   ? lead
                     : length == 2 ? lead & 0x1F
                     : length == 3 ? lead & 0x0F
                                   : lead & 0x07;
        for (int k = 1; k < length && i + k < text.size(); ++k) {
            c = (c << 6) | (static_cast<unsigned char>(text[i + k]) & 0x3F);
        }
        i += length;
        if (c >= 0x10000) {
            out += static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10));
            out += static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
        } else {
            out += static_cast<char16_t>(c);
        }
    }
    return out;
}

std::string Hex(int value) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%X", static_cast<unsigned>(value));
    return text;
}

// The shortest decimal that reads back as the same double, with a plain
// exponent: 0.3048, 1.6609021e-27, 1e+24 as 1e24.
std::string Number(double value) {
    char text[64];
    const auto result = std::to_chars(text, text + sizeof text, value);
    std::string out(text, result.ptr);
    const std::size_t e = out.find('e');
    if (e != std::string::npos) {
        std::string exponent = out.substr(e + 1);
        bool negative = false;
        if (!exponent.empty() && (exponent[0] == '+' || exponent[0] == '-')) {
            negative = exponent[0] == '-';
            exponent.erase(0, 1);
        }
        exponent.erase(0, std::min(exponent.find_first_not_of('0'), exponent.size() - 1));
        out = out.substr(0, e + 1) + (negative ? "-" : "") + exponent;
    }
    return out;
}

// Two significant digits: 6.4e-8, 0.028.
std::string Relative(double value) {
    char text[32];
    if (value >= 1e-3) {
        std::snprintf(text, sizeof text, "%.2g", value);
        return text;
    }
    std::snprintf(text, sizeof text, "%.1e", value);
    std::string out = text;
    const std::size_t e = out.find('e');
    const bool negative = out[e + 1] == '-';
    std::string exponent = out.substr(e + 2);
    exponent.erase(0, std::min(exponent.find_first_not_of('0'), exponent.size() - 1));
    return out.substr(0, e + 1) + (negative ? "-" : "") + exponent;
}

// Text in a cell of a Markdown table, read alike by Doxygen and by other
// renderers: the marks that either takes for markup are escaped.
std::string Cell(const std::string& text) {
    std::string out;
    for (char c : text) {
        if (std::string_view("\\`*_{}[]<>#|@&$%~").find(c) != std::string_view::npos) {
            out += '\\';
        }
        out += c;
    }
    return out;
}

// A key as code in a table cell: `ft`. A run of backticks longer than any in
// the text fences it, and a blank pads it where it begins or ends with one.
// Doxygen takes a backtick and an apostrophe for quotation marks, so a text
// with an apostrophe takes two backticks and the blanks: `` ' (us) ``.
std::string Code(const std::string& text) {
    if (text.empty()) return "(empty)";
    std::size_t longest = 0, run = 0;
    for (char c : text) {
        run = c == '`' ? run + 1 : 0;
        longest = std::max(longest, run);
    }
    const bool apostrophe = text.find('\'') != std::string::npos;
    const std::string fence(std::max<std::size_t>(longest + 1, apostrophe ? 2 : 1), '`');
    std::string body;
    for (char c : text) {
        if (c == '|') {
            body += "\\|";
        } else {
            body += c;
        }
    }
    const bool pad = apostrophe || text.front() == '`' || text.back() == '`' ||
                     text.front() == ' ' || text.back() == ' ';
    return fence + (pad ? " " : "") + body + (pad ? " " : "") + fence;
}

std::string ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("cannot read " + path);
    return std::string((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
}

std::string Trim(const std::string& text) {
    const std::size_t begin = text.find_first_not_of(" \t");
    if (begin == std::string::npos) return "";
    const std::size_t end = text.find_last_not_of(" \t");
    return text.substr(begin, end - begin + 1);
}

// --- The catalogue, as the library has it ----------------------------------

std::string DisplayName(int locale, int id) {
    for (std::size_t size = 64; size <= 65536; size *= 2) {
        std::vector<MensuraChar16> buffer(size);
        if (GetDisplayName(locale, id, buffer.data(), buffer.size()) == 0) {
            return Utf8(std::u16string(buffer.begin(), buffer.end()).c_str());
        }
    }
    throw std::runtime_error("no display name for " + Hex(id));
}

// A key of the parse dictionary, and who reads it.
struct Key {
    std::string text;
    int holder = 0;  // the symbol id that reads it; 0 for an operator or none
    bool held = false;
};

struct Symbol {
    int id = 0;
    std::array<std::string, 2> text;       // English, Chinese
    std::array<std::vector<Key>, 2> keys;  // the keys each language asks for
    std::vector<std::string> held;         // the keys that read as this symbol
    bool renders_only = false;
};

struct UnitType {
    int id = 0;
    std::string name, chinese, constant;
    double factor = 0.0;
    bool has_offset = false;
    double offset = 0.0;
    std::vector<Symbol> symbols;
};

struct Group {
    int id = 0;
    std::string name, chinese, constant;
    Exponents exponents{};
    std::vector<UnitType> types;
};

struct Catalogue {
    std::vector<Group> groups;
    std::size_t type_count = 0;
    std::size_t symbol_count = 0;
    std::size_t key_count = 0;
    std::map<int, const UnitType*> types_by_id;
};

Exponents DimensionsOf(int id) {
    int dimensions[7] = {};
    if (Converter::GetUnitDimensions(id, dimensions) != ErrorCode::Success) {
        throw std::runtime_error("no dimensions for " + Hex(id));
    }
    Exponents out{};
    std::copy(std::begin(dimensions), std::end(dimensions), out.begin());
    return out;
}

// The names of include/mensura/ids.h without their prefix, by id.
std::map<int, std::string> ReadIdNames() {
    std::map<int, std::string> names;
    std::istringstream lines(ReadFile(kIdsHeader));
    std::string line;
    while (std::getline(lines, line)) {
        const std::size_t equals = line.find(" = 0x");
        const std::size_t name = line.find("MENSURA_");
        if (equals == std::string::npos || name == std::string::npos || name > equals) continue;
        const int id = std::stoi(line.substr(equals + 3), nullptr, 16);
        names[id] = line.substr(name + 8, equals - name - 8);
    }
    return names;
}

// The keys that each symbol of a language asks for, in the order of the
// vocabulary: its text first, then its further keys. A Chinese place that
// the Chinese vocabulary does not list asks with the English entry.
std::map<int, std::vector<std::u16string>> AskedKeys(int language) {
    using namespace Mensura::Vocabulary;
    std::map<int, std::vector<std::u16string>> asked;
    for (const auto& line : kEnglishTypes) {
        for (std::size_t n = 0; n < line.count; ++n) {
            const EnglishEntry& entry = line.entries[n];
            const int id = static_cast<int>(((n + 1) << 20) | (line.group << 12) | line.type);
            std::vector<std::u16string>& keys = asked[id];
            if ((entry.marks & NoKey) != 0) continue;
            keys.emplace_back(entry.text);
            for (const char16_t* key : entry.keys) keys.emplace_back(key);
        }
    }
    if (language == 0) return asked;
    for (const auto& line : kChineseTypes) {
        for (std::size_t n = 0; n < line.count; ++n) {
            const ChineseEntry& entry = line.entries[n];
            const int id = (entry.symbol << 20) | (line.group << 12) | line.type;
            std::vector<std::u16string>& keys = asked[id];
            if (keys.empty()) continue;  // a symbol with no key in English has none here
            keys.clear();
            keys.emplace_back(entry.text);
            for (const char16_t* key : entry.keys) keys.emplace_back(key);
        }
    }
    return asked;
}

Catalogue ReadCatalogue() {
    const std::map<int, std::string> constants = ReadIdNames();
    auto constant = [&](int id) {
        const auto found = constants.find(id);
        if (found == constants.end()) {
            throw std::runtime_error(std::string(kIdsHeader) + " has no name for " + Hex(id) +
                                     "; write it anew first");
        }
        return "MENSURA_" + found->second;
    };
    const UnitCatalog& catalog = UnitCatalog::Instance();

    // Who reads each key: the symbol objects of both languages by address.
    std::map<const IParseSymbol*, int> symbol_of;
    Catalogue out;
    std::vector<int> group_ids(GetUnitGroups(nullptr));
    GetUnitGroups(group_ids.data());
    for (int group_id : group_ids) {
        Group group;
        group.id = group_id;
        group.name = DisplayName(kEnglish, group_id);
        group.chinese = DisplayName(kChinese, group_id);
        group.constant = constant(group_id);
        group.exponents = DimensionsOf(group_id);
        std::vector<int> type_ids(GetUnitTypes(group_id, nullptr));
        GetUnitTypes(group_id, type_ids.data());
        for (int type_id : type_ids) {
            UnitType type;
            type.id = type_id;
            type.name = DisplayName(kEnglish, type_id);
            type.chinese = DisplayName(kChinese, type_id);
            type.constant = constant(type_id);
            const Mensura::UnitConverter* converter = UnitTable::Instance().FindConverter(type_id);
            if (converter == nullptr) throw std::runtime_error("no converter for " + Hex(type_id));
            type.factor = converter->GetFactor();
            type.has_offset = converter->HasOffset();
            if (type.has_offset) {
                converter->DirectToBase(0.0, type.offset, converter->GetDimensions());
            }
            std::vector<int> symbol_ids(GetUnitSymbols(type_id, nullptr));
            GetUnitSymbols(type_id, symbol_ids.data());
            for (int symbol_id : symbol_ids) {
                Symbol symbol;
                symbol.id = symbol_id;
                symbol.text = {DisplayName(kEnglish, symbol_id), DisplayName(kChinese, symbol_id)};
                for (int language = 0; language < 2; ++language) {
                    const Mensura::ISymbol* object = catalog.FindSymbol(symbol_id, language);
                    if (object != nullptr && object->AsParse() != nullptr) {
                        symbol_of.emplace(object->AsParse(), symbol_id);
                    }
                }
                type.symbols.push_back(symbol);
            }
            out.symbol_count += type.symbols.size();
            group.types.push_back(type);
        }
        out.type_count += group.types.size();
        out.groups.push_back(group);
    }

    std::map<std::u16string, int> holder_of;
    std::map<int, std::vector<std::string>> held;
    for (const auto& [key, object] : catalog.Dictionary().Keys()) {
        const auto found = symbol_of.find(object);
        const int holder = found == symbol_of.end() ? 0 : found->second;
        holder_of[key] = holder;
        if (holder != 0) {
            held[holder].push_back(Utf8(key));
            ++out.key_count;
        }
    }
    const std::map<int, std::vector<std::u16string>> asked[2] = {AskedKeys(0), AskedKeys(1)};
    for (Group& group : out.groups) {
        for (UnitType& type : group.types) {
            for (Symbol& symbol : type.symbols) {
                const auto keys = asked[0].find(symbol.id);
                if (keys == asked[0].end()) {
                    throw std::runtime_error("the vocabulary has no entry for " + Hex(symbol.id));
                }
                symbol.renders_only = keys->second.empty();
                for (int language = 0; language < 2; ++language) {
                    std::set<std::string> seen;
                    for (const std::u16string& text : asked[language].at(symbol.id)) {
                        Key key;
                        key.text = Utf8(text);
                        if (!seen.insert(key.text).second) continue;
                        const auto holder = holder_of.find(text);
                        key.held = holder != holder_of.end();
                        key.holder = key.held ? holder->second : 0;
                        symbol.keys[language].push_back(key);
                    }
                }
                symbol.held = held[symbol.id];
            }
            out.types_by_id[type.id] = &type;
        }
    }
    return out;
}

// --- Dimensions ------------------------------------------------------------

std::string Powers(const Exponents& exponents, const char* const (&names)[7],
                   const int (&order)[7]) {
    return MensuraCli::PowersText(exponents, names, order);
}

// L·M·T⁻²
std::string DimensionsText(const Exponents& exponents) {
    static constexpr const char* kNames[7] = {"L", "M", "T", "I", "Θ", "N", "J"};
    static constexpr int kOrder[7] = {0, 1, 2, 3, 4, 5, 6};
    return Powers(exponents, kNames, kOrder);
}

// kg·m·s⁻², the mass first
std::string BaseUnitsText(const Exponents& exponents) {
    static constexpr const char* kNames[7] = {"m", "kg", "s", "A", "K", "mol", "cd"};
    static constexpr int kOrder[7] = {1, 0, 2, 3, 4, 5, 6};
    return Powers(exponents, kNames, kOrder);
}

// 0.3048 m; a plain number where the dimensions are none.
std::string WithUnits(double value, const Exponents& exponents) {
    return exponents == Exponents{} ? Number(value)
                                    : Number(value) + " " + BaseUnitsText(exponents);
}

// --- Defining values ---------------------------------------------------------

struct Quantity {
    long double value = 0;
    Exponents exponents{};
};

// One line of defining_values.txt.
struct Definition {
    int line = 0;
    std::string name;     // a unit type's name in ids.h without MENSURA_, or a constant
    std::string formula;  // empty when the unit type has no defining value
    std::string offset;   // a temperature scale's zero, in kelvin
    std::string source;   // or, without a defining value, the reason
    bool evaluating = false;
    bool done = false;
    Quantity result;
    long double zero = 0;
    std::set<std::string> uses;  // the names its formula reads
};

class DefiningValues {
public:
    DefiningValues(const Catalogue& catalogue, const std::map<int, std::string>& names)
        : catalogue(catalogue) {
        for (const auto& [id, name] : names) ids[name] = id;
        Read();
    }

    // The definition of a unit type, or null where the file names none.
    const Definition* Find(int id) {
        for (auto& [name, definition] : definitions) {
            const auto found = ids.find(name);
            if (found != ids.end() && found->second == id) {
                Evaluate(definition);
                return &definition;
            }
        }
        return nullptr;
    }

    // The sources of a definition: its own, or those of what it is made of,
    // the base units left out.
    std::vector<std::string> Sources(const Definition& definition) {
        std::vector<std::string> out;
        std::set<std::string> visited;
        std::function<void(const Definition&)> collect = [&](const Definition& d) {
            if (!visited.insert(d.name).second) return;
            if (d.formula == "base" && &d != &definition) return;
            if (!d.source.empty()) {
                if (std::find(out.begin(), out.end(), d.source) == out.end()) {
                    out.push_back(d.source);
                }
                return;
            }
            for (const std::string& name : d.uses) collect(definitions.at(name));
        };
        collect(definition);
        return out;
    }

    void CheckEveryUnitTypeIsNamed() const {
        for (const Group& group : catalogue.groups) {
            for (const UnitType& type : group.types) {
                const std::string name = type.constant.substr(8);
                if (definitions.count(name) == 0) {
                    throw std::runtime_error(std::string(kValuesFile) + " has no line for " + name +
                                             " (" + Hex(type.id) + ")");
                }
            }
        }
    }

private:
    [[noreturn]] void Fail(const Definition& definition, const std::string& message) const {
        throw std::runtime_error(std::string(kValuesFile) + ":" + std::to_string(definition.line) +
                                 ": " + definition.name + ": " + message);
    }

    void Read() {
        std::istringstream lines(ReadFile(kValuesFile));
        std::string line;
        int number = 0;
        while (std::getline(lines, line)) {
            ++number;
            const std::size_t hash = line.find('#');
            if (hash != std::string::npos) line.erase(hash);
            if (Trim(line).empty()) continue;
            Definition definition;
            definition.line = number;
            const std::size_t equals = line.find('=');
            const std::size_t semicolon = line.find(';');
            if (equals == std::string::npos || semicolon == std::string::npos ||
                semicolon < equals) {
                throw std::runtime_error(std::string(kValuesFile) + ":" + std::to_string(number) +
                                         ": expected NAME = FORMULA ; SOURCE");
            }
            definition.name = Trim(line.substr(0, equals));
            std::string formula = Trim(line.substr(equals + 1, semicolon - equals - 1));
            definition.source = Trim(line.substr(semicolon + 1));
            const std::size_t offset = formula.find(" offset ");
            if (offset != std::string::npos) {
                definition.offset = Trim(formula.substr(offset + 8));
                formula = Trim(formula.substr(0, offset));
            }
            if (formula != "undefined") definition.formula = formula;
            if (definition.formula.empty() && definition.source.empty()) {
                Fail(definition, "a unit type without a defining value needs a reason");
            }
            const bool constant = std::islower(static_cast<unsigned char>(definition.name[0]));
            if (!constant && ids.count(definition.name) == 0) {
                Fail(definition, "no such name in include/mensura/ids.h");
            }
            if (!definitions.emplace(definition.name, definition).second) {
                Fail(definition, "given twice");
            }
        }
    }

    // A tiny parser over the formula's text.
    struct Reader {
        const std::string& text;
        std::size_t at = 0;
        void Blanks() {
            while (at < text.size() && text[at] == ' ') ++at;
        }
        bool Take(char c) {
            Blanks();
            if (at < text.size() && text[at] == c) {
                ++at;
                return true;
            }
            return false;
        }
    };

    Quantity Expression(Reader& r, Definition& d) {
        Quantity left = Term(r, d);
        for (;;) {
            const bool plus = r.Take('+');
            if (!plus && !r.Take('-')) return left;
            const Quantity right = Term(r, d);
            if (right.exponents != left.exponents) Fail(d, "a sum of other dimensions");
            left.value = plus ? left.value + right.value : left.value - right.value;
        }
    }

    Quantity Term(Reader& r, Definition& d) {
        Quantity left = Power(r, d);
        for (;;) {
            const bool times = r.Take('*');
            if (!times && !r.Take('/')) return left;
            const Quantity right = Power(r, d);
            for (std::size_t i = 0; i < 7; ++i) {
                left.exponents[i] += times ? right.exponents[i] : -right.exponents[i];
            }
            left.value = times ? left.value * right.value : left.value / right.value;
        }
    }

    Quantity Power(Reader& r, Definition& d) {
        Quantity base = Primary(r, d);
        if (!r.Take('^')) return base;
        const bool negative = r.Take('-');
        r.Blanks();
        int exponent = 0;
        const std::size_t begin = r.at;
        while (r.at < r.text.size() && std::isdigit(static_cast<unsigned char>(r.text[r.at]))) {
            exponent = exponent * 10 + (r.text[r.at++] - '0');
        }
        if (r.at == begin) Fail(d, "a whole number must follow ^");
        if (negative) exponent = -exponent;
        Quantity out;
        out.value = std::pow(base.value, static_cast<long double>(exponent));
        for (std::size_t i = 0; i < 7; ++i) out.exponents[i] = base.exponents[i] * exponent;
        return out;
    }

    Quantity Primary(Reader& r, Definition& d) {
        if (r.Take('(')) {
            Quantity inner = Expression(r, d);
            if (!r.Take(')')) Fail(d, "a bracket is not closed");
            return inner;
        }
        if (r.Take('-')) {
            Quantity inner = Primary(r, d);
            inner.value = -inner.value;
            return inner;
        }
        r.Blanks();
        const std::size_t begin = r.at;
        if (r.at < r.text.size() &&
            (std::isdigit(static_cast<unsigned char>(r.text[r.at])) || r.text[r.at] == '.')) {
            while (r.at < r.text.size() &&
                   (std::isdigit(static_cast<unsigned char>(r.text[r.at])) || r.text[r.at] == '.' ||
                    r.text[r.at] == 'e' ||
                    ((r.text[r.at] == '-' || r.text[r.at] == '+') && r.text[r.at - 1] == 'e'))) {
                ++r.at;
            }
            Quantity number;
            number.value = std::stold(r.text.substr(begin, r.at - begin));
            return number;
        }
        while (r.at < r.text.size() &&
               (std::isalnum(static_cast<unsigned char>(r.text[r.at])) || r.text[r.at] == '_')) {
            ++r.at;
        }
        const std::string name = r.text.substr(begin, r.at - begin);
        if (name.empty()) Fail(d, "cannot read the formula at \"" + r.text.substr(begin) + "\"");
        if (name == "pi") {
            Quantity pi;
            pi.value = 3.141592653589793238462643383279502884L;
            return pi;
        }
        const auto found = definitions.find(name);
        if (found == definitions.end()) Fail(d, "uses " + name + ", which has no line");
        d.uses.insert(name);
        Evaluate(found->second);
        if (found->second.formula.empty()) {
            Fail(d, "uses " + name + ", which has no defining value");
        }
        return found->second.result;
    }

    void Evaluate(Definition& d) {
        if (d.done) return;
        if (d.evaluating) Fail(d, "is defined in terms of itself");
        d.evaluating = true;
        if (!d.formula.empty()) {
            if (d.formula == "base") {
                // A base unit of the library: 1 in its own dimensions.
                d.result.value = 1;
                d.result.exponents = DimensionsOf(ids.at(d.name));
            } else {
                Reader reader{d.formula};
                d.result = Expression(reader, d);
                reader.Blanks();
                if (reader.at != d.formula.size()) {
                    Fail(d, "cannot read the formula at \"" + d.formula.substr(reader.at) + "\"");
                }
            }
            if (!d.offset.empty()) {
                Reader reader{d.offset};
                const Quantity zero = Expression(reader, d);
                if (zero.exponents != Exponents{}) Fail(d, "an offset is a plain number of kelvin");
                d.zero = zero.value;
            }
            const auto id = ids.find(d.name);
            if (id != ids.end() && d.result.exponents != DimensionsOf(id->second)) {
                Fail(d, "the formula gives " + DimensionsText(d.result.exponents) +
                            ", the unit type has " + DimensionsText(DimensionsOf(id->second)));
            }
        }
        d.evaluating = false;
        d.done = true;
    }

    const Catalogue& catalogue;
    std::map<std::string, int> ids;
    std::map<std::string, Definition> definitions;
};

// --- The everyday reading ----------------------------------------------------

// A key whose catalogue meaning the everyday reading replaces, in one language.
struct Replaced {
    std::string key;
    int language = 0;        // 0 English, 1 Chinese
    int symbol = 0;          // the catalogue's symbol
    double catalogue = 0.0;  // 1 KEY in base units by the catalogue's reading
    double everyday = 0.0;   // and by the everyday reading
    Exponents exponents{};   // of the catalogue's meaning
    Exponents everyday_exponents{};
};

// 1 KEY in base units as `formatter` reads it, with the exponents of what it
// reads as: into the key's own unit type, or, where the text reads as
// another quantity, into the first unit type of that quantity's group.
bool ReadOne(const Formatter& formatter, const std::string& key, const Catalogue& catalogue,
             int unit, double& out, Exponents& exponents) {
    const std::u16string text = u"1 " + Utf16(key);
    double value = 0.0;
    if (formatter.Parse(text.c_str(), value, unit) != ErrorCode::Success) {
        const Mensura::ParseReport report = formatter.ExplainParse(text.c_str(), unit);
        if (report.reason != Mensura::ParseReport::OtherQuantity || report.group == 0) {
            return false;
        }
        unit = report.group | 1;
        if (formatter.Parse(text.c_str(), value, unit) != ErrorCode::Success) return false;
    }
    out = value * catalogue.types_by_id.at(unit)->factor;
    exponents = DimensionsOf(unit);
    return true;
}

std::vector<Replaced> EverydayReplacements(const Catalogue& catalogue) {
    std::vector<Replaced> out;
    for (int language = 0; language < 2; ++language) {
        Formatter catalogue_reading(language == 0 ? kEnglish : kChinese);
        Formatter everyday(language == 0 ? kEnglish : kChinese);
        everyday.SetEverydayReading(true);
        for (const Group& group : catalogue.groups) {
            for (const UnitType& type : group.types) {
                for (const Symbol& symbol : type.symbols) {
                    for (const std::string& key : symbol.held) {
                        Replaced r{key, language, symbol.id};
                        if (!ReadOne(catalogue_reading, key, catalogue, type.id, r.catalogue,
                                     r.exponents)) {
                            continue;
                        }
                        if (!ReadOne(everyday, key, catalogue, type.id, r.everyday,
                                     r.everyday_exponents)) {
                            throw std::runtime_error("\"1 " + key +
                                                     "\" reads, but not the everyday way");
                        }
                        if (r.catalogue != r.everyday || r.exponents != r.everyday_exponents) {
                            out.push_back(r);
                        }
                    }
                }
            }
        }
    }
    return out;
}

// --- The pages -----------------------------------------------------------------

std::string Anchor(int group) {
    return "group_" + Hex(group).substr(2);
}

// 0.3048; a temperature scale with its offset: 1 (offset 273.15)
std::string FactorText(const UnitType& type) {
    std::string out = Number(type.factor);
    if (type.has_offset) out += " (offset " + Number(type.offset) + ")";
    return out;
}

std::string KeysText(const Symbol& symbol, int language, const Catalogue& catalogue) {
    if (symbol.renders_only) return "renders only";
    std::string out;
    for (const Key& key : symbol.keys[language]) {
        if (!out.empty()) out += ", ";
        out += Code(key.text);
        const int unit = key.holder & 0xFFFFF;
        if (!key.held) {
            out += " (reads as nothing)";
        } else if (key.holder == 0) {
            out += " (reads as a mark)";
        } else if (unit != (symbol.id & 0xFFFFF)) {
            out += " (reads as " + Cell(catalogue.types_by_id.at(unit)->name) + ", " +
                   Hex(key.holder) + ")";
        }
    }
    return out;
}

std::string CataloguePage(const Catalogue& catalogue) {
    std::ostringstream out;
    out << "# Catalogue reference\n"
           "\n"
           "<!-- Written by tools/generate_reference.cpp from the library; do not edit. -->\n"
           "\n"
           "Every group, unit type and symbol of the catalogue as the library has them: "
        << catalogue.groups.size() << " groups, " << catalogue.type_count << " unit types and "
        << catalogue.symbol_count
        << " symbols, each symbol in English and in Simplified Chinese, with the "
        << catalogue.key_count
        << " keys of the parse dictionary that read as a unit symbol.\n"
           "\n"
           "This page is written by `tools/generate_reference.cpp` from the library itself, "
           "never by hand. The test `Docs.ReferenceMatchesTheLibrary` fails, showing the lines "
           "that differ, while the page and the library disagree; after a change to the "
           "catalogue, write it anew with `"
        << kRegenerate
        << "`. [Known surprises](known-surprises.md) lists the values and names that the "
           "catalogue keeps on purpose although they differ from today's definitions.\n"
           "\n"
           "How to read the tables:\n"
           "\n"
           "- **Ids** are the packed ids of `mensura.h`: a group `0xGG000`, a unit type "
           "`0xGGTTT`, a symbol `0xSGGTTT` (S the symbol's number, 1 the spelled-out name). "
           "**Constant** is the unit type's name in `include/mensura/ids.h`.\n"
           "- **Dimensions** are the exponents of length L, mass M, time T, electric current "
           "I, temperature Θ, amount of substance N and luminous intensity J that "
           "`GetUnitDimensions` gives; **base units** the same product of SI base units.\n"
           "- **Factor** is the size of one unit in the base units of its dimensions, exactly "
           "the double that `Convert` uses, written as the shortest decimal that reads back "
           "as that double. Dimensionless groups count in their own base: the radian, the "
           "bit, the steradian, the plain number. A temperature scale also has an offset: "
           "a value v is v × factor + offset kelvin. `Convert` goes through the base unit, "
           "so any two unit types of the same dimensions convert into each other, across "
           "groups too.\n"
           "- **Keys** are the texts that `Parse` and `FindUnit` read as the symbol, exactly "
           "as they stand, case included: the symbol's text first, then its further keys. A "
           "key that another unit type or an operator registered first reads as that one and "
           "is marked so; a symbol that *renders only* has no key and reads back only through "
           "a symbol string. Chinese formatters read the keys of both languages; a Chinese "
           "symbol that has no text of its own takes the English one. The everyday reading "
           "adds keys of its own (see the [everyday reading](everyday-reading.md)).\n"
           "\n"
           "## Groups\n"
           "\n"
           "| Id | Group | 中文 | Constant | Dimensions | Base units | Unit types |\n"
           "|---|---|---|---|---|---|---|\n";
    for (const Group& group : catalogue.groups) {
        out << "| `" << Hex(group.id) << "` | [" << Cell(group.name) << "](#" << Anchor(group.id)
            << ") | " << Cell(group.chinese) << " | `" << group.constant << "` | "
            << DimensionsText(group.exponents) << " | " << BaseUnitsText(group.exponents) << " | "
            << group.types.size() << " |\n";
    }
    for (const Group& group : catalogue.groups) {
        out << "\n<a name=\"" << Anchor(group.id) << "\"></a>\n## " << Cell(group.name) << "\n\n";
        out << "Group `" << Hex(group.id) << "` (`" << group.constant << "`), "
            << Cell(group.chinese) << ". Dimensions " << DimensionsText(group.exponents)
            << ", base units " << BaseUnitsText(group.exponents) << ". " << group.types.size()
            << (group.types.size() == 1 ? " unit type" : " unit types") << ".\n\n";
        out << "| Id | Unit type | 中文 | Constant | Factor |\n"
               "|---|---|---|---|---|\n";
        for (const UnitType& type : group.types) {
            out << "| `" << Hex(type.id) << "` | " << Cell(type.name) << " | " << Cell(type.chinese)
                << " | `" << type.constant << "` | " << FactorText(type) << " |\n";
        }
        out << "\n| Symbol | English text | English keys | Chinese text | Chinese keys |\n"
               "|---|---|---|---|---|\n";
        for (const UnitType& type : group.types) {
            for (const Symbol& symbol : type.symbols) {
                out << "| `" << Hex(symbol.id) << "` | " << Code(symbol.text[0]) << " | "
                    << KeysText(symbol, 0, catalogue) << " | " << Code(symbol.text[1]) << " | "
                    << KeysText(symbol, 1, catalogue) << " |\n";
            }
        }
    }
    return out.str();
}

struct KeptName {
    int line = 0;
    int id = 0;
    int language = 0;
    std::string text;
    std::string note;
};

std::vector<KeptName> ReadKeptNames(const Catalogue& catalogue) {
    std::vector<KeptName> out;
    std::istringstream lines(ReadFile(kNamesFile));
    std::string line;
    int number = 0;
    while (std::getline(lines, line)) {
        ++number;
        if (Trim(line).empty() || Trim(line)[0] == '#') continue;
        // 0x21017 en "newtor per square meter" ; newton per square meter
        KeptName kept;
        kept.line = number;
        std::istringstream fields(line);
        std::string id, language;
        fields >> id >> language;
        const std::size_t open = line.find('"');
        const std::size_t close = open == std::string::npos ? open : line.find('"', open + 1);
        const std::size_t semicolon = line.find(';', close == std::string::npos ? 0 : close);
        const std::string where = std::string(kNamesFile) + ":" + std::to_string(number);
        if ((language != "en" && language != "zh") || open == std::string::npos || close == open ||
            semicolon == std::string::npos) {
            throw std::runtime_error(where + ": expected ID en|zh \"NAME\" ; NOTE");
        }
        kept.id = std::stoi(id, nullptr, 16);
        kept.language = language == "en" ? 0 : 1;
        kept.text = line.substr(open + 1, close - open - 1);
        kept.note = Trim(line.substr(semicolon + 1));
        const bool group = (kept.id & 0xFFF) == 0;
        if (!group && catalogue.types_by_id.count(kept.id) == 0) {
            throw std::runtime_error(where + ": " + id + " is no unit type");
        }
        const std::string actual = DisplayName(kept.language == 0 ? kEnglish : kChinese, kept.id);
        if (actual != kept.text) {
            throw std::runtime_error(where + ": the display name of " + id + " is \"" + actual +
                                     "\", not \"" + kept.text + "\"");
        }
        out.push_back(kept);
    }
    return out;
}

std::string TypeCell(const UnitType& type) {
    return Cell(type.name) + " (`" + Hex(type.id) + "`)";
}

std::string SurprisesPage(const Catalogue& catalogue, DefiningValues& values,
                          const std::vector<Replaced>& replaced,
                          const std::vector<KeptName>& kept) {
    struct Surprise {
        const UnitType* type;
        const Definition* definition;
        double relative;
        bool offset;
    };
    std::vector<Surprise> surprises;
    std::vector<std::pair<const UnitType*, const Definition*>> undefined;
    std::size_t within_1e12 = 0, defined = 0;
    for (const Group& group : catalogue.groups) {
        for (const UnitType& type : group.types) {
            const Definition* definition = values.Find(type.id);
            if (definition->formula.empty()) {
                undefined.emplace_back(&type, definition);
                continue;
            }
            ++defined;
            const long double expected = definition->result.value;
            const double relative =
                static_cast<double>(std::fabs(type.factor - expected) / std::fabs(expected));
            double offset_relative = 0.0;
            if (type.has_offset || !definition->offset.empty()) {
                const long double zero = definition->zero;
                offset_relative = static_cast<double>(
                    zero == 0 ? std::fabs(static_cast<long double>(type.offset))
                              : std::fabs(type.offset - zero) / std::fabs(zero));
            }
            if (relative > kSurprise || offset_relative > kSurprise) {
                surprises.push_back({&type, definition, std::max(relative, offset_relative),
                                     offset_relative > kSurprise});
            } else if (relative <= 1e-12 && offset_relative <= 1e-12) {
                ++within_1e12;
            }
        }
    }

    std::ostringstream out;
    out << "# Known surprises\n"
           "\n"
           "<!-- Written by tools/generate_reference.cpp from the library; do not edit. -->\n"
           "\n"
           "The catalogue's ids, factors, keys and names are part of the library's contract: "
           "values that callers stored, texts that they wrote and ids that they keep must read "
           "back tomorrow as they did yesterday. So the catalogue keeps some values and names "
           "that differ from today's definitions or from what a reader expects, and documents "
           "them here, all in one place. None of them will be \"fixed\": where you need "
           "today's value, take a unit type that has it, or, for a key, the everyday reading.\n"
           "\n"
           "This page is written by `tools/generate_reference.cpp` from the library and from "
           "`tools/defining_values.txt`, which gives every unit type a defining value computed "
           "from the definitions themselves (exact definitions and CODATA 2018 constants, with "
           "their sources), and `tools/kept_names.txt`. The test "
           "`Docs.ReferenceMatchesTheLibrary` fails when the library, the data or this page "
           "disagree, and so when the set of surprising units changes.\n"
           "\n"
           "[Symbols that do not read back](symbols-that-do-not-read-back.md) lists the "
           "renderings whose text is another unit type's key.\n"
           "\n"
           "## Factors that differ from today's definitions\n"
           "\n"
           "Of the "
        << catalogue.type_count << " unit types, " << defined
        << " have a defining value in the data; " << within_1e12 << " of them agree with it "
        << "within 1e-12 relative, " << defined - within_1e12 - surprises.size()
        << " more within 1e-9 (older or rounded values), and these " << surprises.size()
        << " differ by more than 1e-9. **The library** is the factor that `Convert` uses, in "
           "the base units of the unit type's dimensions; **defining value** the value that "
           "the definition gives, computed as shown; **difference** is |library − "
           "defining| / defining.\n"
           "\n"
           "| Unit type | The library | Defining value | Defined as | Difference | Source |\n"
           "|---|---|---|---|---|---|\n";
    for (const Surprise& s : surprises) {
        std::string sources;
        for (const std::string& source : values.Sources(*s.definition)) {
            sources += (sources.empty() ? "" : "; ") + Cell(source);
        }
        const double defining = static_cast<double>(s.definition->result.value);
        std::string library = Number(s.type->factor);
        std::string expected = Number(defining);
        if (s.offset) {
            library += " (offset " + Number(s.type->offset) + ")";
            expected += " (offset " + Number(static_cast<double>(s.definition->zero)) + ")";
        }
        out << "| " << TypeCell(*s.type) << " | " << library << " | " << expected << " | "
            << Code(s.definition->formula) << " | " << Relative(s.relative) << " | " << sources
            << " |\n";
    }

    out << "\n## Unit types without a defining value\n"
           "\n"
           "These "
        << undefined.size()
        << " unit types have no single definition today that the data could hold them to: "
           "measured rather than defined units, calendar units, and names that stand for "
           "several units. Their factors are the catalogue's own.\n"
           "\n"
           "| Unit type | The library | Why there is no defining value |\n"
           "|---|---|---|\n";
    for (const auto& [type, definition] : undefined) {
        out << "| " << TypeCell(*type) << " | " << Number(type->factor) << " | "
            << Cell(definition->source) << " |\n";
    }

    out << "\n## Keys that the everyday reading reads otherwise\n"
           "\n"
           "By default a formatter reads every key with the catalogue's meaning. With the "
           "everyday reading on (`Formatter::SetEverydayReading(true)`, in C "
           "`FormatterReadingSetting`, the default of the `mensura` tool's texts), these keys "
           "read otherwise: `1 KEY` was read both ways, into the key's own unit type, in "
           "every key of the dictionary and both languages. Values are of `1 KEY` in base "
           "units. The [everyday reading](everyday-reading.md) gives the reason of each.\n"
           "\n"
           "| Key | Language | The catalogue reads | 1 KEY is | The everyday reading | Ratio |\n"
           "|---|---|---|---|---|---|\n";
    // A key that reads alike in both languages takes one row.
    auto same_reading = [](const Replaced& a, const Replaced& b) {
        return a.key == b.key && a.symbol == b.symbol && a.catalogue == b.catalogue &&
               a.everyday == b.everyday && a.everyday_exponents == b.everyday_exponents;
    };
    for (const Replaced& r : replaced) {
        bool both = false, shown = false;
        for (const Replaced& other : replaced) {
            if (other.language != r.language && same_reading(r, other)) {
                both = true;
                shown = other.language < r.language;
            }
        }
        if (shown) continue;
        const UnitType& type = *catalogue.types_by_id.at(r.symbol & 0xFFFFF);
        const bool same = r.exponents == r.everyday_exponents;
        out << "| " << Code(r.key) << " | "
            << (both              ? "both"
                : r.language == 0 ? "English"
                                  : "Chinese")
            << " | " << TypeCell(type) << " | " << WithUnits(r.catalogue, r.exponents) << " | "
            << WithUnits(r.everyday, r.everyday_exponents) << " | "
            << (same ? Number(r.everyday / r.catalogue) : std::string("another quantity"))
            << " |\n";
    }

    out << "\n## Display names kept as they are\n"
           "\n"
           "Display names are texts that callers show and store, and symbol 1 of a unit type "
           "(its display name) is also a key that reads back. So these names keep their "
           "spelling, slips included; the note says what each means.\n"
           "\n"
           "| Id | Language | Display name | What it means |\n"
           "|---|---|---|---|\n";
    for (const KeptName& name : kept) {
        out << "| `" << Hex(name.id) << "` | " << (name.language == 0 ? "English" : "Chinese")
            << " | " << Code(name.text) << " | " << Cell(name.note) << " |\n";
    }
    return out.str();
}

// --- Writing and checking ----------------------------------------------------

std::map<std::string, std::string> Pages() {
    const Catalogue catalogue = ReadCatalogue();
    DefiningValues values(catalogue, ReadIdNames());
    values.CheckEveryUnitTypeIsNamed();
    const std::vector<Replaced> replaced = EverydayReplacements(catalogue);
    const std::vector<KeptName> kept = ReadKeptNames(catalogue);
    return {{kCataloguePage, CataloguePage(catalogue)},
            {kSurprisesPage, SurprisesPage(catalogue, values, replaced, kept)}};
}

int Write(const std::string& folder) {
    for (const auto& [name, text] : Pages()) {
        const std::string path = folder + "/" + name;
        std::ofstream file(path, std::ios::binary);
        file << text;
        if (!file.flush()) throw std::runtime_error("cannot write " + path);
    }
    return 0;
}

int Check(const std::string& folder) {
    int result = 0;
    for (const auto& [name, text] : Pages()) {
        const std::string path = folder + "/" + name;
        std::ifstream file(path, std::ios::binary);
        const std::string old = file ? std::string((std::istreambuf_iterator<char>(file)),
                                                   std::istreambuf_iterator<char>())
                                     : std::string();
        if (old == text) continue;
        result = 1;
        std::printf("%s differs from the library; write it anew with\n    %s\n", path.c_str(),
                    kRegenerate);
        const std::vector<std::string> a = MensuraTools::Lines(old);
        const std::vector<std::string> b = MensuraTools::Lines(text);
        if (a == b) {
            std::printf("(the lines agree; the file's ending differs)\n");
        } else {
            MensuraTools::PrintDiff(a, b, path, "the library");
        }
    }
    return result;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        const std::string mode = argc >= 2 ? argv[1] : "";
        const std::string folder = argc >= 3 ? argv[2] : "docs";
        if (argc <= 3 && mode == "--write") return Write(folder);
        if (argc <= 3 && mode == "--check") return Check(folder);
        std::fprintf(stderr,
                     "usage: mensura_generate_reference --write|--check [DIR]\n"
                     "Writes DIR/%s and DIR/%s (DIR: docs) from the library, or compares them\n"
                     "with it. Runs from the root of the source tree.\n",
                     kCataloguePage, kSurprisesPage);
        return 2;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "mensura_generate_reference: %s\n", error.what());
        return 1;
    }
}
