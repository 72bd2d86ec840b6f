// Reads conversion_table.inc into UnitCatalog.converters.
#include <cmath>
#include <cstdlib>
#include <memory>
#include <vector>

#include "units/unit_catalog.h"

namespace Mensura {

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

std::unique_ptr<UnitConverter> SameAs(const UnitConverter& source) {
    return std::unique_ptr<UnitConverter>(source.Clone());
}
std::unique_ptr<UnitConverter> Own(std::unique_ptr<UnitConverter> converter) {
    return converter;
}
std::unique_ptr<UnitConverter> Own(const GenericConverter& converter) {
    return std::make_unique<GenericConverter>(converter);
}
std::unique_ptr<UnitConverter> Own(const LinearConverter& converter) {
    return std::make_unique<LinearConverter>(converter);
}

class Resolver;
using Build = std::unique_ptr<UnitConverter> (*)(const Resolver&);

struct GroupLine {
    int group;
    int types;
    Dimensions exponents;
};

struct UnitLine {
    int group;
    int type;
    Build build;
};

// Hands out converters to the build lines, building a type of the current
// group on first use, so that a line may name a later type of its own group.
class Resolver {
public:
    explicit Resolver(std::vector<std::vector<std::unique_ptr<UnitConverter>>>& converters)
        : converters(converters), lines(converters.size()), building(converters.size()) {}

    void StartGroup(int group, int types) {
        converters[group - 1].resize(types);
        lines[group - 1].assign(types, nullptr);
        building[group - 1].assign(types, false);
        current = group;
    }

    void AddLine(const UnitLine& line) { lines[line.group - 1][line.type - 1] = &line; }

    const UnitConverter& operator()(int group, int type) const {
        auto& slot = converters[group - 1][type - 1];
        if (!slot) {
            // A table that names a later group or refers to itself cannot be built.
            if (group != current || building[group - 1][type - 1]) std::abort();
            const UnitLine* line = lines[group - 1][type - 1];
            if (line == nullptr) std::abort();
            building[group - 1][type - 1] = true;
            slot = line->build(*this);
        }
        return *slot;
    }

private:
    std::vector<std::vector<std::unique_ptr<UnitConverter>>>& converters;
    std::vector<std::vector<const UnitLine*>> lines;
    mutable std::vector<std::vector<bool>> building;
    int current = 0;
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
#define UNIT(group, type, label, ...) \
    {group, type, []([[maybe_unused]] const Resolver& U) { return Own(__VA_ARGS__); }},
#define EQ(factor)
#include "units/conversion_table.inc"
#undef GROUP
#undef UNIT
#undef EQ
};

}  // namespace

class ConversionTableBuilder {
public:
    static void Fill(UnitCatalog& catalog) {
        constexpr int kGroupCount = static_cast<int>(std::size(kGroups));
        catalog.converters.clear();
        catalog.converters.resize(kGroupCount);
        Resolver resolve(catalog.converters);
        const UnitLine* line = kUnits;
        const UnitLine* const end = kUnits + std::size(kUnits);
        for (const GroupLine& group : kGroups) {
            resolve.StartGroup(group.group, group.types);
            catalog.RegisterDimensions(group.exponents, group.group << 12);
            const UnitLine* first = line;
            for (; line != end && line->group == group.group; ++line) resolve.AddLine(*line);
            for (const UnitLine* unit = first; unit != line; ++unit)
                resolve(unit->group, unit->type);
        }
    }
};

void FillConversionTable(UnitCatalog& catalog) {
    ConversionTableBuilder::Fill(catalog);
}

}  // namespace Mensura
