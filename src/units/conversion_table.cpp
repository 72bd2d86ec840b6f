// Reads conversion_table.inc into UnitTable.converters.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <memory>

#include "units/unit_table.h"

namespace Mensura {

// Fills the table's converters from the data; a friend of the table.
class ConversionTableBuilder {
public:
    class Resolver;
    static constexpr std::size_t Bytes();
    static void Fill(UnitTable& table);

private:
    static void KeyDimensions(UnitTable& table);
};

namespace {

// The operators of a build line. Each yields a GenericConverter by value.
GenericConverter operator*(const UnitConverter& a, const UnitConverter& b) {
    return GenericConverter(a, b, GenericConverter::Product);
}
GenericConverter operator*(double a, const UnitConverter& b) {
    return GenericConverter(a) * b;
}
GenericConverter operator*(const UnitConverter& a, double b) {
    return a * GenericConverter(b);
}
GenericConverter operator/(const UnitConverter& a, const UnitConverter& b) {
    return GenericConverter(a, b, GenericConverter::Quotient);
}
GenericConverter operator/(double a, const UnitConverter& b) {
    return GenericConverter(a) / b;
}
GenericConverter operator/(const UnitConverter& a, double b) {
    return a / GenericConverter(b);
}

using std::pow;

template <int L, int M, int T, int I, int Theta, int N, int J>
GenericConverter Root(double factor) {
    return GenericConverter(Quantity<L, M, T, I, Theta, N, J>(factor));
}

LinearConverter Linear(double factor, double offset) {
    return LinearConverter(Quantity<0, 0, 0, 0, 1, 0, 0>(factor),
                           Quantity<0, 0, 0, 0, 1, 0, 0>(offset));
}

// What SameAs asks for: a copy of a converter of the table, of its class.
struct Copy {
    const UnitConverter& source;
};
Copy SameAs(const UnitConverter& source) {
    return Copy{source};
}

struct GroupLine {
    int group;
    int types;
    Dimensions exponents;
};

using Resolver = ConversionTableBuilder::Resolver;

struct UnitLine {
    int group;
    int type;
};

// Builds the converter of a type by its line of the table.
UnitConverter* BuildUnit(int group, int type, const Resolver& U);

}  // namespace

// Hands out converters to the build lines, building a type of the current
// group on first use, so that a line may name a later type of its own group.
// The converters it makes go into the table's arena.
class ConversionTableBuilder::Resolver {
public:
    // lines and building have room for the types of the largest group.
    Resolver(UnitTable& table, const std::size_t* first, const UnitLine** lines, bool* building)
        : table(table), first(first), lines(lines), building(building) {}

    void StartGroup(int group, int types) {
        std::fill_n(lines, types, nullptr);
        std::fill_n(building, types, false);
        current = group;
    }

    void AddLine(const UnitLine& line) { lines[line.type - 1] = &line; }

    const UnitConverter& operator()(int group, int type) const {
        auto& slot = table.converters[first[group - 1] + type - 1];
        if (!slot) {
            // A table that names a later group or refers to itself cannot be built.
            if (group != current || building[type - 1]) std::abort();
            const UnitLine* line = lines[type - 1];
            if (line == nullptr) std::abort();
            building[type - 1] = true;
            slot.reset(BuildUnit(line->group, line->type, *this));
        }
        return *slot;
    }

    UnitConverter* Own(const GenericConverter& converter) const {
        return table.arena.New<GenericConverter>(converter);
    }
    UnitConverter* Own(const LinearConverter& converter) const {
        return table.arena.New<LinearConverter>(converter);
    }
    UnitConverter* Own(const Copy& copy) const {
        // A few lines of the table ask for a copy; both classes are final.
        if (const auto* linear = dynamic_cast<const LinearConverter*>(&copy.source)) {
            return Own(*linear);
        }
        return Own(static_cast<const GenericConverter&>(copy.source));
    }

private:
    UnitTable& table;
    const std::size_t* first;  // by group number less one: the group's first type
    // The lines of the current group, by type number less one, and which
    // of them are being built.
    const UnitLine** lines;
    bool* building;
    int current = 0;
};

namespace {

// Both tables are constant: they stand before any static constructor of the
// library runs, the catalogue's included. They hold numbers alone, so that
// the loader neither relocates nor copies them; the builds are the cases
// of one switch.
constexpr GroupLine kGroups[] = {
#define GROUP(group, types, ...) {group, types, {__VA_ARGS__}},
#define UNIT(...)
#define EQ(factor)
#include "units/conversion_table.inc"
#undef GROUP
#undef UNIT
#undef EQ
};

constexpr UnitLine kUnits[] = {
#define GROUP(...)
#define UNIT(group, type, label, ...) {group, type},
#define EQ(factor)
#include "units/conversion_table.inc"
#undef GROUP
#undef UNIT
#undef EQ
};

UnitConverter* BuildUnit(int group, int type, const Resolver& U) {
    switch (UnitId::Make(group, type)) {
#define GROUP(...)
#define UNIT(group, type, label, ...) \
    case UnitId::Make(group, type):   \
        return U.Own(__VA_ARGS__);
#define EQ(factor)
#include "units/conversion_table.inc"
#undef GROUP
#undef UNIT
#undef EQ
    }
    std::abort();
}

// The groups are numbered from 1 up without a gap, each once: a group's
// number less one is its place.
constexpr bool GroupsNumberedInFull() {
    bool seen[std::size(kGroups)] = {};
    for (const GroupLine& group : kGroups) {
        if (group.group < 1 || static_cast<std::size_t>(group.group) > std::size(kGroups) ||
            seen[group.group - 1]) {
            return false;
        }
        seen[group.group - 1] = true;
    }
    return true;
}
static_assert(GroupsNumberedInFull(), "conversion_table.inc: group numbers with a gap or twice");

}  // namespace

// The most types that a group has.
constexpr std::size_t MostTypes() {
    std::size_t most = 0;
    for (const GroupLine& group : kGroups)
        most = std::max(most, static_cast<std::size_t>(group.types));
    return most;
}

constexpr std::size_t ConversionTableBuilder::Bytes() {
    std::size_t types = 0;
    for (const GroupLine& group : kGroups) types += static_cast<std::size_t>(group.types);
    return Arena::Rounded(types * sizeof(UnitTable::ConverterSlot)) +
           std::size(kUnits) *
               Arena::Rounded(std::max(sizeof(GenericConverter), sizeof(LinearConverter)));
}

void ConversionTableBuilder::Fill(UnitTable& table) {
    static_assert(Bytes() <= UnitTable::kRoomBytes, "the table's room is too small");
    static_assert(std::size(kUnits) == ConversionTableSize::kTypes,
                  "conversion_table.inc: a type without its line, or a line too many");
    constexpr std::size_t kGroupCount = std::size(kGroups);
    // Where each group's types start in the one array of converters, by
    // group number: the table builds the groups in another order.
    std::size_t first[kGroupCount + 1] = {};
    for (const GroupLine& group : kGroups) first[group.group] = group.types;
    for (std::size_t group = 1; group <= kGroupCount; ++group) first[group] += first[group - 1];
    table.converterIndex.fill(UnitTable::GroupSlots{});
    table.converters.clear();
    table.converters.resize(first[kGroupCount]);
    table.groupCount = kGroupCount;
    for (std::size_t group = 0; group < kGroupCount; ++group) {
        table.converterIndex[group + 1] = {
            table.converters.data() + first[group],
            static_cast<std::uint32_t>(first[group + 1] - first[group])};
    }
    const UnitLine* lines[MostTypes()];
    bool building[MostTypes()];
    Resolver resolve(table, first, lines, building);
    const UnitLine* line = kUnits;
    const UnitLine* const end = kUnits + std::size(kUnits);
    for (const GroupLine& group : kGroups) {
        resolve.StartGroup(group.group, group.types);
        // The 68 groups fit the exponent index with room to spare.
        table.dimensionIndex.Register(group.exponents, group.group << 12);
        const UnitLine* firstLine = line;
        for (; line != end && line->group == group.group; ++line) resolve.AddLine(*line);
        for (const UnitLine* unit = firstLine; unit != line; ++unit)
            resolve(unit->group, unit->type);
    }
    KeyDimensions(table);
}

void ConversionTableBuilder::KeyDimensions(UnitTable& table) {
    // A group's key is one more than the place of the first group with the
    // same exponents; a converter whose exponents are not its group's keeps
    // 0 and is compared exponent by exponent.
    for (const GroupLine& group : kGroups) {
        std::uint32_t key = 1;
        while (!SameDimensions(kGroups[key - 1].exponents, group.exponents)) ++key;
        const UnitTable::GroupSlots& slots = table.converterIndex[group.group];
        for (std::uint32_t type = 0; type < slots.count; ++type) {
            UnitConverter& converter = *slots.types[type];
            if (SameDimensions(converter.GetDimensions(), group.exponents)) {
                converter.SetDimensionKey(key);
            }
        }
    }
}

void FillConversionTable(UnitTable& table) {
    ConversionTableBuilder::Fill(table);
}

}  // namespace Mensura
