// Reads conversion_table.inc into UnitTable.converters.
//
// The builds are worked out by the compiler: every line's exponents, factor
// and offset, and each type's key of exponents, are constants of the
// library, and the load only makes a converter of each. The compiler's
// arithmetic on doubles rounds as the processor's does, one operation at a
// time, so a factor is the very double that the same build gives at run time.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <iterator>

#include "units/unit_table.h"

namespace Mensura {

// Fills the table's converters from the data; a friend of the table.
class ConversionTableBuilder {
public:
    static constexpr std::size_t Bytes();
    static void Fill(UnitTable& table);
};

namespace {

// A converter as a build line works it out: its exponents, its factor and,
// for a temperature scale, its offset.
struct Built {
    Dimensions dims{};
    double factor = 0.0;
    double offset = 0.0;
    bool linear = false;             // a LinearConverter; else a GenericConverter
    std::uint32_t dimensionKey = 0;  // see UnitConverter::SetDimensionKey
    // The number of its exponents in the table's conversion entries, which
    // every type has: see BuildTable.
    std::uint32_t entryKey = 0;
};

constexpr Dimensions Add(const Dimensions& a, const Dimensions& b) {
    Dimensions sum{};
    for (std::size_t i = 0; i < sum.size(); ++i) sum[i] = a[i] + b[i];
    return sum;
}

constexpr Dimensions Subtract(const Dimensions& a, const Dimensions& b) {
    Dimensions difference{};
    for (std::size_t i = 0; i < difference.size(); ++i) difference[i] = a[i] - b[i];
    return difference;
}

constexpr bool Same(const Dimensions& a, const Dimensions& b) {
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (a[i] != b[i]) return false;
    }
    return true;
}

// The operators of a build line, as GenericConverter's product and quotient
// work: exponents add or subtract, factors multiply or divide, and the
// result is a pure scale, whatever an operand's offset.
constexpr Built operator*(const Built& a, const Built& b) {
    return {Add(a.dims, b.dims), a.factor * b.factor};
}
constexpr Built operator*(double a, const Built& b) {
    return Built{{}, a} * b;
}
constexpr Built operator*(const Built& a, double b) {
    return a * Built{{}, b};
}
constexpr Built operator/(const Built& a, const Built& b) {
    return {Subtract(a.dims, b.dims), a.factor / b.factor};
}
constexpr Built operator/(double a, const Built& b) {
    return Built{{}, a} / b;
}
constexpr Built operator/(const Built& a, double b) {
    return a / Built{{}, b};
}

// The table's powers are of 1024: products of powers of two, exact, as the
// library's pow gives them.
constexpr double pow(double base, int exponent) {
    double power = 1.0;
    for (int i = 0; i < exponent; ++i) power *= base;
    return power;
}

template <int L, int M, int T, int I, int Theta, int N, int J>
constexpr Built Root(double factor) {
    return {Dimensions{L, M, T, I, Theta, N, J}, factor};
}

constexpr Built Linear(double factor, double offset) {
    return {Dimensions{0, 0, 0, 0, 1, 0, 0}, factor, offset, true};
}

// A copy of another type's converter, of its class.
constexpr Built SameAs(const Built& source) {
    return source;
}

struct GroupLine {
    int group;
    int types;
    Dimensions exponents;
};

struct UnitLine {
    int group;
    int type;
};

// Both tables are constant: they stand before any static constructor of the
// library runs, the catalogue's included.
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

constexpr std::size_t kGroupCount = std::size(kGroups);
constexpr std::size_t kTypes = std::size(kUnits);

// The groups are numbered from 1 up without a gap, each once: a group's
// number less one is its place.
constexpr bool GroupsNumberedInFull() {
    bool seen[kGroupCount] = {};
    for (const GroupLine& group : kGroups) {
        if (group.group < 1 || static_cast<std::size_t>(group.group) > kGroupCount ||
            seen[group.group - 1]) {
            return false;
        }
        seen[group.group - 1] = true;
    }
    return true;
}
static_assert(GroupsNumberedInFull(), "conversion_table.inc: group numbers with a gap or twice");

// Where each group's types start among all types, by group number: the
// types stand group after group in the order of their numbers, while the
// table builds the groups in another order.
struct GroupStarts {
    std::size_t first[kGroupCount + 1] = {};
};
constexpr GroupStarts StartsOfGroups() {
    GroupStarts starts;
    for (const GroupLine& group : kGroups) starts.first[group.group] = group.types;
    for (std::size_t group = 1; group <= kGroupCount; ++group)
        starts.first[group] += starts.first[group - 1];
    return starts;
}
constexpr GroupStarts kStarts = StartsOfGroups();
static_assert(kStarts.first[kGroupCount] == kTypes,
              "conversion_table.inc: a type without its line, or a line too many");

// A build that names a later group, a type of its own group that has no
// line, or itself cannot be worked out: the compiler stops at this call.
inline void BuildCannotBeWorkedOut() {}

// Hands out the converters of the types to the build lines, working a type
// of the current group out on first use, so that a line may name a later
// type of its own group (the inch is built on the foot).
class Resolver {
public:
    constexpr Resolver(Built* built, bool* done, bool* building, const UnitLine** lines)
        : built(built), done(done), building(building), lines(lines) {}

    constexpr void StartGroup(int group) { current = group; }

    constexpr const Built& operator()(int group, int type) const {
        const std::size_t place = kStarts.first[group - 1] + static_cast<std::size_t>(type) - 1;
        if (!done[place]) {
            if (group != current || building[place] || lines[place] == nullptr)
                BuildCannotBeWorkedOut();
            building[place] = true;
            built[place] = Build(group, type);
            done[place] = true;
        }
        return built[place];
    }

private:
    constexpr Built Build(int group, int type) const;

    Built* built;
    bool* done;
    bool* building;
    const UnitLine** lines;
    int current = 0;
};

constexpr Built Resolver::Build(int group, int type) const {
    [[maybe_unused]] const Resolver& U = *this;
    switch (UnitId::Make(group, type)) {
#define GROUP(...)
#define UNIT(group, type, label, ...) \
    case UnitId::Make(group, type):   \
        return __VA_ARGS__;
#define EQ(factor)
#include "units/conversion_table.inc"
#undef GROUP
#undef UNIT
#undef EQ
    }
    BuildCannotBeWorkedOut();
    return {};
}

// Every type's converter, in the order of the types, with its key of
// exponents: one more than the place of the first group with the same
// exponents; 0 where a converter's exponents are not its group's, which
// is then compared exponent by exponent.
struct BuiltTable {
    Built types[kTypes];
};

constexpr BuiltTable BuildTable() {
    BuiltTable table{};
    bool done[kTypes] = {};
    bool building[kTypes] = {};
    const UnitLine* lines[kTypes] = {};
    for (const UnitLine& line : kUnits)
        lines[kStarts.first[line.group - 1] + static_cast<std::size_t>(line.type) - 1] = &line;
    Resolver resolve(table.types, done, building, lines);
    for (const GroupLine& group : kGroups) {
        resolve.StartGroup(group.group);
        for (int type = 1; type <= group.types; ++type) resolve(group.group, type);
    }
    for (const GroupLine& group : kGroups) {
        std::uint32_t key = 1;
        while (!Same(kGroups[key - 1].exponents, group.exponents)) ++key;
        const std::size_t first = kStarts.first[group.group - 1];
        for (int type = 0; type < group.types; ++type) {
            Built& built = table.types[first + static_cast<std::size_t>(type)];
            if (Same(built.dims, group.exponents)) built.dimensionKey = key;
        }
    }
    // The conversion entries number the exponents of every type: as the key
    // above where the type has one; otherwise by the first group with its
    // exponents, or, where no group has them, by one more than the number of
    // groups and the place of the first type that has them.
    for (Built& built : table.types) {
        built.entryKey = built.dimensionKey;
        for (std::size_t group = 0; built.entryKey == 0 && group < kGroupCount; ++group) {
            if (Same(kGroups[group].exponents, built.dims))
                built.entryKey = static_cast<std::uint32_t>(group + 1);
        }
        for (std::size_t place = 0; built.entryKey == 0; ++place) {
            if (Same(table.types[place].dims, built.dims))
                built.entryKey = static_cast<std::uint32_t>(kGroupCount + 1 + place);
        }
    }
    return table;
}

constexpr BuiltTable kBuilt = BuildTable();

}  // namespace

constexpr std::size_t ConversionTableBuilder::Bytes() {
    return Arena::Rounded(kTypes * sizeof(UnitTable::ConverterSlot)) +
           kTypes * Arena::Rounded(std::max(sizeof(GenericConverter), sizeof(LinearConverter)));
}

void ConversionTableBuilder::Fill(UnitTable& table) {
    static_assert(Bytes() <= UnitTable::kRoomBytes, "the table's room is too small");
    static_assert(kTypes == ConversionTableSize::kTypes,
                  "conversion_table.inc: a type without its line, or a line too many");
    table.converterIndex.fill(UnitTable::GroupSlots{});
    table.converters.clear();
    table.converters.reserve(kTypes);
    for (const Built& built : kBuilt.types) {
        UnitConverter* converter = nullptr;
        if (built.linear) {
            converter =
                table.arena.New<LinearConverter>(Quantity<0, 0, 0, 0, 1, 0, 0>(built.factor),
                                                 Quantity<0, 0, 0, 0, 1, 0, 0>(built.offset));
        } else {
            converter = table.arena.New<GenericConverter>(built.dims, built.factor);
        }
        converter->SetDimensionKey(built.dimensionKey);
        table.converters.emplace_back(converter);
    }
    table.groupCount = kGroupCount;
    for (std::size_t group = 0; group < kGroupCount; ++group) {
        table.converterIndex[group + 1] = {
            table.converters.data() + kStarts.first[group],
            static_cast<std::uint32_t>(kStarts.first[group + 1] - kStarts.first[group])};
    }
    // The 68 groups fit the exponent index with room to spare; they register
    // in the order of the table.
    for (const GroupLine& group : kGroups)
        table.dimensionIndex.Register(group.exponents, group.group << 12);
}

namespace {

// A group with kRun types or more does not fit its run of entries: the
// compiler stops at this call.
inline void GroupOutgrowsItsRun() {}

// Every run in turn, group by group: places of no unit, then the group's
// types from place 1 of its run. The groups are numbered from 1 without a
// gap, so that group g has run g.
constexpr ConversionEntries BuildEntries() {
    using Entries = ConversionEntries;
    static_assert(Entries::kRuns == kGroupCount + 1, "a group number without its run");
    Entries entries{};
    for (std::size_t place = 0; place < Entries::kPlaces; ++place) {
        entries.factor[place] = 1.0;
        entries.offset[place] = 0.0;
        entries.into[place] = Entries::kNoUnitInto;
        entries.outOf[place] = Entries::kNoUnitOutOf;
    }
    for (std::size_t field = 0; field < entries.runs.size(); ++field) {
        const bool known = field >= 1 && field <= kGroupCount;
        entries.runs[field] = known ? static_cast<std::uint32_t>(field * Entries::kRun) : 0;
    }
    for (std::size_t group = 1; group <= kGroupCount; ++group) {
        const std::size_t first = kStarts.first[group - 1];
        const std::size_t count = kStarts.first[group] - first;
        if (count >= Entries::kRun) GroupOutgrowsItsRun();
        for (std::size_t type = 1; type <= count; ++type) {
            const Built& built = kBuilt.types[first + type - 1];
            const std::size_t place = group * Entries::kRun + type;
            const std::uint32_t key = built.entryKey << 2;
            entries.factor[place] = built.factor;
            entries.offset[place] = built.linear ? built.offset : 0.0;
            entries.into[place] = key | (built.linear ? Entries::kOffsetInto : 0);
            entries.outOf[place] = key | (built.linear ? Entries::kOffsetOutOf : 0);
        }
    }
    return entries;
}

}  // namespace

// Worked out by the compiler: a constant of the library's image.
constexpr ConversionEntries UnitTable::s_entries = BuildEntries();

void FillConversionTable(UnitTable& table) {
    ConversionTableBuilder::Fill(table);
}

}  // namespace Mensura
