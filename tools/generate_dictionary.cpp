// Lays out the parse dictionary at build time: every key of both
// vocabularies and the operators, with the number of its reader as the
// value, in the order of registration, goes into a double array, whose pools
// are written as constant arrays into a source that the library compiles
// in. The load then only maps the numbers to the readers it makes.
//
// Usage: mensura_generate_dictionary <output file>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "base/double_array.h"
#include "base/double_array_builder.h"
#include "catalogue/dictionary_keys.h"

namespace {

using namespace Mensura;

// The elements of a pool, ten to a line; a pool without any gets one 0, as
// an array may not be empty.
template <typename Element, typename Write>
void WritePool(std::ostream& out, const char* type, const char* name, const Element* elements,
               std::size_t count, Write write) {
    out << "inline constexpr " << type << ' ' << name << "[] = {";
    for (std::size_t i = 0; i < count; ++i) {
        out << (i % 10 == 0 ? "\n    " : " ");
        write(elements[i]);
        out << ',';
    }
    if (count == 0) out << "{}";
    out << "\n};\n";
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: mensura_generate_dictionary <output file>\n";
        return 2;
    }
    std::vector<std::pair<std::u16string, std::uint16_t>> keys;
    DictionaryKeys::ForEachKey([&](const char16_t* key, std::size_t reader) {
        keys.emplace_back(key, static_cast<std::uint16_t>(reader));
    });
    DoubleArray::Built built;
    if (!DoubleArray::Build(keys, built) || !DoubleArray::Sound(built.View())) {
        std::cerr << "mensura_generate_dictionary: the keys do not fit a double array\n";
        return 1;
    }
    const DoubleArray::Layout layout = built.View();

    std::ostringstream out;
    out << "// Written by mensura_generate_dictionary from the vocabularies: do not edit.\n"
        << "// The parse dictionary as a double array, " << keys.size()
        << " keys, values by reader number.\n"
        << "namespace Mensura::DictionaryLayout {\n\n"
        << "inline constexpr std::uint64_t kDigest = " << DictionaryKeys::Digest() << "u;\n"
        << "inline constexpr std::size_t kReaders = " << DictionaryKeys::kReaders << ";\n"
        << "inline constexpr std::size_t kKeys = " << keys.size() << ";\n\n";
    const auto writeNumber = [&out](auto value) { out << static_cast<unsigned long>(value); };
    WritePool(out, "DoubleArray::Slot", "kSlots", layout.slots, layout.slotCount,
              [&out](const DoubleArray::Slot& slot) {
                  out << '{' << slot.base << ',' << slot.parent << ',' << slot.value << '}';
              });
    WritePool(out, "char16_t", "kUnits", layout.units, layout.codeCount + 1, writeNumber);
    out << "inline constexpr std::array<std::uint16_t, DoubleArray::kUnitCount> kCodes =\n"
        << "    DoubleArray::CodesOf(kUnits);\n"
        << "\ninline constexpr DoubleArray::Layout kLayout = {kSlots, " << layout.slotCount
        << ", kCodes.data(), kUnits, " << layout.codeCount << "};\n\n"
        << "}  // namespace Mensura::DictionaryLayout\n";

    const std::string text = out.str();
    std::ofstream file(argv[1], std::ios::binary | std::ios::trunc);
    file << text;
    file.close();
    if (!file) {
        std::cerr << "mensura_generate_dictionary: cannot write " << argv[1] << '\n';
        return 1;
    }
    return 0;
}
