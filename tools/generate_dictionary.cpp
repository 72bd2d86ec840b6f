// Lays out the parse dictionary at build time: inserts every key of both
// vocabularies and the operators into a tree, with the number of its reader
// as the value, the way the load once did, and writes the tree's pools as
// constant arrays into a source that the library compiles in. The load then
// only maps the numbers to the readers it makes.
//
// Usage: mensura_generate_dictionary <output file>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>

#include "base/radix_tree.h"
#include "catalogue/dictionary_keys.h"

namespace {

using namespace Mensura;

const char* FormName(RadixLayout::Form form) {
    switch (form) {
        case RadixLayout::Form::Leaf:
            return "L";
        case RadixLayout::Form::Run:
            return "R";
        case RadixLayout::Form::Branch:
            return "B";
    }
    return "L";
}

void WriteNode(std::ostream& out, const RadixLayout::Node<std::uint16_t>& node) {
    out << '{' << node.value << ',' << node.first << ',' << node.count << ',' << node.link << ','
        << FormName(node.form) << ',' << node.wide << '}';
}

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
    RadixTree<std::uint16_t> tree;
    std::size_t keys = 0;
    DictionaryKeys::ForEachKey([&](const char16_t* key, std::size_t reader) {
        tree.Insert(key, static_cast<std::uint16_t>(reader));
        ++keys;
    });
    tree.IndexWideBranches();
    const RadixLayout::Pools<std::uint16_t> pools = tree.Layout();

    std::ostringstream out;
    out << "// Written by mensura_generate_dictionary from the vocabularies: do not edit.\n"
        << "// The parse dictionary's pools, " << keys << " keys, values by reader number.\n"
        << "namespace Mensura::DictionaryLayout {\n\n"
        << "inline constexpr std::uint64_t kDigest = " << DictionaryKeys::Digest() << "u;\n"
        << "inline constexpr std::size_t kReaders = " << DictionaryKeys::kReaders << ";\n"
        << "inline constexpr std::size_t kKeys = " << keys << ";\n\n"
        << "using RadixLayout::Form;\n"
        << "inline constexpr Form L = Form::Leaf, R = Form::Run, B = Form::Branch;\n"
        << "inline constexpr RadixLayout::Node<std::uint16_t> kRoot = ";
    WriteNode(out, *pools.root);
    out << ";\n";
    const auto writeNumber = [&out](auto value) { out << static_cast<unsigned long>(value); };
    WritePool(out, "RadixLayout::Index", "kRootChildren", pools.rootChildren,
              RadixLayout::kRootSlots, writeNumber);
    WritePool(out, "RadixLayout::Node<std::uint16_t>", "kNodes", pools.nodes, pools.nodeCount,
              [&out](const RadixLayout::Node<std::uint16_t>& node) { WriteNode(out, node); });
    WritePool(out, "char16_t", "kUnits", pools.units, pools.unitCount, writeNumber);
    WritePool(out, "RadixLayout::Edge", "kEdges", pools.edges, pools.edgeCount,
              [&out](const RadixLayout::Edge& edge) {
                  out << '{' << static_cast<unsigned>(edge.unit) << ',' << edge.child << '}';
              });
    WritePool(out, "RadixLayout::Index", "kWideChildren", pools.wideChildren, pools.wideCount,
              writeNumber);
    out << "\ninline constexpr RadixLayout::Pools<std::uint16_t> kPools = {\n"
        << "    &kRoot, kRootChildren, kNodes, " << pools.nodeCount << ", kUnits, "
        << pools.unitCount << ", kEdges, " << pools.edgeCount << ", kWideChildren, "
        << pools.wideCount << "};\n\n"
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
