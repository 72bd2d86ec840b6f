// Writes include/mensura/ids.h, a name for the id of every unit group and unit
// type, from the library's own catalogue. It asks the shared library through
// its flat functions alone: GetUnitGroups and GetUnitTypes for the ids,
// GetDisplayName in English (locale 1033) for the names.
//
//   mensura_generate_ids               prints the header to standard output
//   mensura_generate_ids --check FILE  compares FILE with the header; when they
//                                      differ, prints the lines that differ as a
//                                      unified diff and exits with 1
//
// A name is the display name in upper case: ASCII letters and digits as they
// are, letters with diacritics without them, blanks, hyphens and brackets as
// one underscore, a decimal point as an underscore, other marks dropped. A
// character that none of these rules covers stops the generator: the catalogue
// gained a character, and kLetters needs a line for it. A name that several
// unit types share takes the name of its group after it; should that still
// not tell them apart, their type numbers follow.
#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "line_diff.h"
#include "mensura/mensura.h"
#include "text.h"

namespace {

constexpr int kEnglish = 1033;
constexpr const char* kPrefix = "MENSURA_";
constexpr const char* kRegenerate = "build/tools/mensura_generate_ids > include/mensura/ids.h";

// The macros of the public headers, which no id may take. The constants of
// mensura.h are kept apart by the compiler: the tests include both headers.
const char* const kReserved[] = {"MENSURA_H",   "MENSURA_HPP",   "MENSURA_EXPORT_H",
                                 "MENSURA_API", "MENSURA_IDS_H", "MENSURA_BUILDING_LIBRARY"};

// Characters outside ASCII that a display name may hold, as they are written
// in a name. A word is set off by underscores ("meter²": METER_SQUARED), a
// letter joins its neighbours ("ångström": ANGSTROM). An empty text drops the
// character ("63°F": 63F).
struct Letter {
    char32_t code;
    const char* text;
    bool word;
};
const Letter kLetters[] = {
    {U'\u00C0', "A", false},      {U'\u00C1', "A", false},    {U'\u00C2', "A", false},
    {U'\u00C3', "A", false},      {U'\u00C4', "A", false},    {U'\u00C5', "A", false},
    {U'\u00C7', "C", false},      {U'\u00C8', "E", false},    {U'\u00C9', "E", false},
    {U'\u00CA', "E", false},      {U'\u00CB', "E", false},    {U'\u00CC', "I", false},
    {U'\u00CD', "I", false},      {U'\u00CE', "I", false},    {U'\u00CF', "I", false},
    {U'\u00D1', "N", false},      {U'\u00D2', "O", false},    {U'\u00D3', "O", false},
    {U'\u00D4', "O", false},      {U'\u00D5', "O", false},    {U'\u00D6', "O", false},
    {U'\u00D9', "U", false},      {U'\u00DA', "U", false},    {U'\u00DB', "U", false},
    {U'\u00DC', "U", false},      {U'\u00DF', "SS", false},   {U'\u00E0', "A", false},
    {U'\u00E1', "A", false},      {U'\u00E2', "A", false},    {U'\u00E3', "A", false},
    {U'\u00E4', "A", false},      {U'\u00E5', "A", false},    {U'\u00E7', "C", false},
    {U'\u00E8', "E", false},      {U'\u00E9', "E", false},    {U'\u00EA', "E", false},
    {U'\u00EB', "E", false},      {U'\u00EC', "I", false},    {U'\u00ED', "I", false},
    {U'\u00EE', "I", false},      {U'\u00EF', "I", false},    {U'\u00F1', "N", false},
    {U'\u00F2', "O", false},      {U'\u00F3', "O", false},    {U'\u00F4', "O", false},
    {U'\u00F5', "O", false},      {U'\u00F6', "O", false},    {U'\u00F9', "U", false},
    {U'\u00FA', "U", false},      {U'\u00FB', "U", false},    {U'\u00FC', "U", false},
    {U'\u00B2', "SQUARED", true}, {U'\u00B3', "CUBED", true}, {U'\u00B0', "", false},
    {U'\u2019', "", false},
};

// Characters that part words: each run of them is one underscore.
bool IsSeparator(char32_t c) {
    switch (c) {
        case U' ':
        case U'-':
        case U'(':
        case U')':
        case U'[':
        case U']':
        case U';':
        case U',':
        case U':':
        case U'/':
        case U'\u00A0':  // no-break space
        case U'\u2010':  // hyphen
        case U'\u2011':  // non-breaking hyphen
        case U'\u2012':  // figure dash
        case U'\u2013':  // en dash
        case U'\u2014':  // em dash
            return true;
        default:
            return false;
    }
}

bool IsDigit(char32_t c) {
    return c >= U'0' && c <= U'9';
}
bool IsAsciiLetter(char32_t c) {
    return (c >= U'a' && c <= U'z') || (c >= U'A' && c <= U'Z');
}

std::string Hex(int value) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%X", static_cast<unsigned>(value));
    return text;
}

std::u32string Decode(const std::u16string& text, int id) {
    std::u32string out;
    for (std::size_t i = 0; i < text.size();) {
        char32_t c = 0;
        const std::size_t length = MensuraCli::DecodeUtf16(text, i, c);
        if (length == 1 && text[i] >= 0xD800 && text[i] < 0xE000) {
            throw std::runtime_error("the display name of " + Hex(id) +
                                     " holds an unpaired surrogate");
        }
        out.push_back(c);
        i += length;
    }
    return out;
}

std::u16string DisplayName(int id) {
    for (std::size_t size = 64; size <= 65536; size *= 2) {
        std::vector<MensuraChar16> buffer(size);
        if (GetDisplayName(kEnglish, id, buffer.data(), buffer.size()) == 0) {
            return std::u16string(buffer.begin(), buffer.end()).c_str();
        }
    }
    throw std::runtime_error("no English display name for " + Hex(id));
}

// The display name as the words of an identifier, without the prefix.
std::string ToIdentifier(const std::u16string& name, int id) {
    const std::u32string text = Decode(name, id);
    std::string out;
    bool pending = false;  // an underscore is due before the next letter or digit
    auto append = [&](const std::string& letters) {
        if (letters.empty()) return;
        if (pending && !out.empty()) out += '_';
        pending = false;
        out += letters;
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char32_t c = text[i];
        if (IsAsciiLetter(c) || IsDigit(c)) {
            char letter = static_cast<char>(c);
            if (letter >= 'a' && letter <= 'z') letter = static_cast<char>(letter - 'a' + 'A');
            append(std::string(1, letter));
        } else if (c == U'.' && i > 0 && i + 1 < text.size() && IsDigit(text[i - 1]) &&
                   IsDigit(text[i + 1])) {
            pending = true;  // a decimal point: "3.98" is 3_98
        } else if (IsSeparator(c)) {
            pending = true;
        } else if (c < 0x80) {
            // Other ASCII marks go: "U.S." is US, "Clarke's" CLARKES.
        } else {
            const Letter* found = nullptr;
            for (const Letter& letter : kLetters) {
                if (letter.code == c) found = &letter;
            }
            if (found == nullptr) {
                char code[16];
                std::snprintf(code, sizeof code, "U+%04X", static_cast<unsigned>(c));
                throw std::runtime_error("the display name of " + Hex(id) + " holds " + code +
                                         ", which kLetters in tools/generate_ids.cpp does not "
                                         "name; add it there");
            }
            if (found->word) pending = true;
            append(found->text);
            if (found->word) pending = true;
        }
    }
    if (out.empty()) {
        throw std::runtime_error("the display name of " + Hex(id) + " gives no identifier");
    }
    return out;
}

std::string ToUtf8(const std::u16string& text, int id) {
    Decode(text, id);  // refuses an unpaired surrogate
    return MensuraCli::Utf16ToUtf8(text);
}

struct Type {
    int id;
    std::string display;  // UTF-8
    std::string name;     // the identifier
};

struct Group {
    int id;
    std::string display;
    std::string words;  // the group's name as identifier words, without GROUP_
    std::string name;
    std::vector<Type> types;
};

// Names shared by several unit types, with the display names of the groups
// of the types that share each, for the header's comment.
using Shared = std::map<std::string, std::vector<std::string>>;

std::vector<Group> ReadCatalogue(Shared& shared) {
    std::vector<int> group_ids(GetUnitGroups(nullptr));
    if (group_ids.empty() || GetUnitGroups(group_ids.data()) != group_ids.size()) {
        throw std::runtime_error("GetUnitGroups gives no stable list of groups");
    }
    std::vector<Group> groups;
    for (int group_id : group_ids) {
        Group group;
        group.id = group_id;
        const std::u16string display = DisplayName(group_id);
        group.display = ToUtf8(display, group_id);
        group.words = ToIdentifier(display, group_id);
        group.name = kPrefix + std::string("GROUP_") + group.words;
        std::vector<int> type_ids(GetUnitTypes(group_id, nullptr));
        if (type_ids.empty() || GetUnitTypes(group_id, type_ids.data()) != type_ids.size()) {
            throw std::runtime_error("GetUnitTypes gives no stable list for " + Hex(group_id));
        }
        for (int type_id : type_ids) {
            const std::u16string name = DisplayName(type_id);
            group.types.push_back({type_id, ToUtf8(name, type_id), ToIdentifier(name, type_id)});
        }
        groups.push_back(group);
    }

    // Groups whose names agree take their numbers.
    std::map<std::string, int> group_uses;
    for (const Group& group : groups) ++group_uses[group.name];
    for (Group& group : groups) {
        if (group_uses[group.name] > 1) group.name += "_" + std::to_string(group.id >> 12);
    }

    // Names that several types share, or that a group or a header's macro
    // holds, take the group's name after them.
    std::set<std::string> taken(std::begin(kReserved), std::end(kReserved));
    for (const Group& group : groups) taken.insert(group.name);
    std::map<std::string, int> uses;
    for (const Group& group : groups) {
        for (const Type& type : group.types) ++uses[kPrefix + type.name];
    }
    for (Group& group : groups) {
        for (Type& type : group.types) {
            const std::string plain = kPrefix + type.name;
            if (uses[plain] > 1 || taken.count(plain) != 0) {
                shared[plain].push_back(group.display);
                type.name = plain + "_" + group.words;
            } else {
                type.name = plain;
            }
        }
    }
    // Where even that leaves two alike, the type numbers follow.
    uses.clear();
    for (const Group& group : groups) {
        for (const Type& type : group.types) ++uses[type.name];
    }
    for (Group& group : groups) {
        for (Type& type : group.types) {
            if (uses[type.name] > 1 || taken.count(type.name) != 0) {
                type.name += "_" + std::to_string(type.id & 0xFFF);
            }
        }
    }

    // Every id has exactly one name, and no name is given twice.
    for (const Group& group : groups) {
        for (const Type& type : group.types) {
            if (!taken.insert(type.name).second) {
                throw std::runtime_error("the name " + type.name + " is given twice");
            }
        }
    }
    return groups;
}

std::string Header() {
    Shared shared;
    const std::vector<Group> groups = ReadCatalogue(shared);
    std::size_t type_count = 0;
    for (const Group& group : groups) type_count += group.types.size();

    std::ostringstream out;
    out << "/*\n"
           " * Mensura: a name for the id of every unit group and unit type, from C and\n"
           " * C++: the "
        << groups.size() << " groups and " << type_count
        << " unit types of the catalogue. A group id has\n"
           " * type 0 (MENSURA_GROUP_LENGTH is 0x2000), a unit type id symbol 0\n"
           " * (MENSURA_FOOT is 0x2017).\n"
           " *\n"
           " *     double out;\n"
           " *     Convert(1.0, MENSURA_FOOT, &out, MENSURA_INCH);  -> out is 12.0\n"
           " *\n"
           " * Made by tools/generate_ids.cpp from the library's own catalogue, through\n"
           " * GetUnitGroups, GetUnitTypes and the English display names of\n"
           " * GetDisplayName (locale 1033); do not edit it by hand. After a change to\n"
           " * the catalogue, build with the tests and write it anew:\n"
           " *\n"
           " *     "
        << kRegenerate
        << "\n"
           " *\n"
           " * The test Ids.HeaderMatchesTheCatalogue fails, with the lines that differ,\n"
           " * while this file and the catalogue disagree.\n"
           " *\n"
           " * A name is MENSURA_GROUP_ and the group's display name, or MENSURA_ and\n"
           " * the unit type's, in upper case: letters and digits kept, accents taken\n"
           " * off (\"cubic ångström\": CUBIC_ANGSTROM), blanks, hyphens and brackets\n"
           " * as one underscore, a decimal point as an underscore (\"calorie (3.98°C)\":\n"
           " * CALORIE_3_98C), other marks dropped (\"foot (U.S. Survey)\":\n"
           " * FOOT_US_SURVEY). Spellings are the catalogue's own.\n";
    if (!shared.empty()) {
        out << " *\n"
               " * A name that several unit types share takes the name of the group\n"
               " * after it:\n";
        for (const auto& entry : shared) {
            out << " *   " << entry.first << ", in";
            for (std::size_t i = 0; i < entry.second.size(); ++i) {
                out << (i == 0                         ? " "
                        : i + 1 == entry.second.size() ? " and "
                                                       : ", ")
                    << entry.second[i];
            }
            out << ".\n";
        }
    }
    out << " *\n"
           " * The names are constants of one anonymous enum: ints in C, converted to\n"
           " * int where a function of mensura.h or mensura.hpp takes an id.\n"
           " */\n"
           "#ifndef MENSURA_IDS_H\n"
           "#define MENSURA_IDS_H\n"
           "\n"
           "enum {\n";
    for (std::size_t g = 0; g < groups.size(); ++g) {
        const Group& group = groups[g];
        if (g != 0) out << "\n";
        out << "    /* " << group.display << ": " << group.types.size()
            << (group.types.size() == 1 ? " unit type" : " unit types") << " */\n";
        out << "    " << group.name << " = " << Hex(group.id) << ",\n";
        for (const Type& type : group.types) {
            out << "    " << type.name << " = " << Hex(type.id) << ",\n";
        }
    }
    out << "};\n"
           "\n"
           "#endif /* MENSURA_IDS_H */\n";
    return out.str();
}

int Check(const std::string& path, const std::string& header) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        std::fprintf(stderr, "mensura_generate_ids: cannot read %s\n", path.c_str());
        return 1;
    }
    const std::string text((std::istreambuf_iterator<char>(file)),
                           std::istreambuf_iterator<char>());
    if (text == header) return 0;
    std::printf("%s differs from the catalogue; write it anew with\n    %s\n", path.c_str(),
                kRegenerate);
    const std::vector<std::string> old_lines = MensuraTools::Lines(text);
    const std::vector<std::string> new_lines = MensuraTools::Lines(header);
    if (old_lines == new_lines) {
        std::printf("(the lines agree; the file's ending differs)\n");
    } else {
        MensuraTools::PrintDiff(old_lines, new_lines, path, "the catalogue");
    }
    return 1;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        const std::string header = Header();
        if (argc == 1) {
            std::fwrite(header.data(), 1, header.size(), stdout);
            return std::fflush(stdout) == 0 ? 0 : 1;
        }
        if (argc == 3 && std::string(argv[1]) == "--check") return Check(argv[2], header);
        std::fprintf(stderr,
                     "usage: mensura_generate_ids [--check FILE]\n"
                     "Prints include/mensura/ids.h; with --check, compares FILE with it.\n");
        return 2;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "mensura_generate_ids: %s\n", error.what());
        return 1;
    }
}
