// The main of the benchmark programs: runs the benchmarks as Google
// Benchmark does, then prints each case beside its floor, the hand-written
// least that the same work can cost, measured in the same run. A ratio says
// more than a time on a machine shared with other work, and it travels
// between machines.
//
// Unless the command line says otherwise, each benchmark runs 5 times and the
// medians are compared.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <map>
#include <string>
#include <vector>

namespace {

// A case, its floor and the most that the case may cost: a ratio to the
// floor, or, without a floor, nanoseconds.
struct Target {
    const char* name;
    const char* floor;
    double limit;
};

#define PARSE_TARGETS(text)                                    \
    {"ParseLoop/" text "_Default", "ParseFloor/" text, 1.2}, { \
        "ParseLoop/" text "_Everyday", "ParseFloor/" text, 1.2 \
    }

constexpr Target kTargets[] = {
    // A conversion by id against an exported function of the same signature
    // that only multiplies: the cost of a call into a shared library.
    {"BM_ConverterConvertGeneric", "BM_ConvertFloor", 1.2},
    {"BM_FlatConvert", "BM_ConvertFloor", 1.2},
    {"BM_ConverterConvertLinear", "BM_ConvertFloor", 1.2},
    // The same against a call that multiplies into the base unit and divides
    // out of it, as a conversion's result is defined: what is left is the
    // cost of finding both units and checking their dimensions.
    {"BM_ConverterConvertGeneric", "BM_ConvertRuleFloor", 1.2},
    {"BM_FlatConvert", "BM_ConvertRuleFloor", 1.2},
    // A column against a loop that multiplies: memory speed.
    {"BM_ConvertArrayColumn", "BM_ConvertArrayColumnFloor", 1.1},
    // A text against strtod, a hash lookup per token and a small evaluator.
    PARSE_TARGETS("Feet"),
    PARSE_TARGETS("GroupedMillimeters"),
    PARSE_TARGETS("ProductOfUnits"),
    PARSE_TARGETS("FeetAndInches"),
    PARSE_TARGETS("Bearing"),
    PARSE_TARGETS("ExponentAfterQuotient"),
    {"ParseLoop/PrefixedSymbol_Everyday", "ParseFloor/PrefixedSymbol", 1.2},
    {"ParseLoop/SumOfLengths_Everyday", "ParseFloor/SumOfLengths", 1.2},
    {"ParseLoop/VulgarFraction_Everyday", "ParseFloor/VulgarFraction", 1.2},
    {"ParseLoop/CompactBearing_Everyday", "ParseFloor/CompactBearing", 1.2},
    {"BM_ParseThroughSymbolString", "ParseFloor/SymbolString", 1.2},
    // A rendering against std::to_chars and grouping into UTF-16.
    {"BM_FormatMeters", "BM_FormatMeters_Floor", 1.5},
    {"BM_FormatMetersAsFeet", "BM_FormatMetersAsFeet_Floor", 1.5},
    {"BM_FormatFeetInchesFraction", "BM_FormatFeetInchesFraction_Floor", 1.5},
    // The whole load, in nanoseconds.
    {"BM_BuildCatalog", nullptr, 150'000.0},
};

#undef PARSE_TARGETS

// The console's report, and the time of each benchmark in nanoseconds: its
// median when it ran several times.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.error_occurred) continue;
            const bool median = run.run_type == Run::RT_Aggregate && run.aggregate_name == "median";
            if (run.run_type == Run::RT_Aggregate && !median) continue;
            const double ns =
                run.GetAdjustedRealTime() * 1e9 / benchmark::GetTimeUnitMultiplier(run.time_unit);
            // A median replaces the single runs of its benchmark.
            const std::string name = run.run_name.str();
            if (median || times.count(name) == 0) times[name] = ns;
        }
    }

    // Prints the table of targets whose cases ran; returns how many missed.
    int PrintTargets() const {
        int missed = 0;
        bool any = false;
        for (const Target& target : kTargets) {
            const auto found = times.find(target.name);
            if (found == times.end()) continue;
            if (!any) {
                std::printf("\n%-40s %12s %12s %8s %8s\n", "case", "ns", "floor ns", "ratio",
                            "target");
                any = true;
            }
            const double ns = found->second;
            if (target.floor == nullptr) {
                const bool met = ns <= target.limit;
                missed += met ? 0 : 1;
                std::printf("%-40s %12.1f %12s %8s %7.0fns %s\n", target.name, ns, "-", "-",
                            target.limit, met ? "met" : "MISSED");
                continue;
            }
            const auto floor = times.find(target.floor);
            if (floor == times.end() || floor->second <= 0.0) {
                std::printf("%-40s %12.1f %12s (floor %s did not run)\n", target.name, ns, "-",
                            target.floor);
                continue;
            }
            const double ratio = ns / floor->second;
            const bool met = ratio <= target.limit;
            missed += met ? 0 : 1;
            std::printf("%-40s %12.1f %12.1f %8.2f %7.2fx %s\n", target.name, ns, floor->second,
                        ratio, target.limit, met ? "met" : "MISSED");
        }
        return missed;
    }

private:
    std::map<std::string, double> times;
};

bool Given(int argc, char** argv, const char* option) {
    for (int i = 1; i < argc; ++i) {
        if (std::strncmp(argv[i], option, std::strlen(option)) == 0) return true;
    }
    return false;
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<char*> args(argv, argv + argc);
    char repetitions[] = "--benchmark_repetitions=5";
    char aggregates[] = "--benchmark_report_aggregates_only=true";
    if (!Given(argc, argv, "--benchmark_repetitions")) {
        args.push_back(repetitions);
        if (!Given(argc, argv, "--benchmark_report_aggregates_only")) args.push_back(aggregates);
    }
    int count = static_cast<int>(args.size());
    args.push_back(nullptr);
    benchmark::Initialize(&count, args.data());
    if (benchmark::ReportUnrecognizedArguments(count, args.data())) return 1;
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    const int missed = reporter.PrintTargets();
    benchmark::Shutdown();
    if (missed > 0) std::printf("%d target%s missed\n", missed, missed == 1 ? "" : "s");
    // Benchmarks measure; a missed target is news, not a failure.
    return 0;
}
