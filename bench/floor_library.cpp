#include "floor_library.h"

namespace {
// A factor in memory, as a conversion reads one; the ids are not looked at.
double g_factor = 0.3048;
double g_outOf = 1.0;
}  // namespace

extern "C" __attribute__((visibility("default"))) int MensuraBenchFloorConvert(double value, int,
                                                                               double* out, int) {
    *out = value * g_factor;
    return 0;
}

extern "C" __attribute__((visibility("default"))) int MensuraBenchRuleFloorConvert(double value,
                                                                                   int, double* out,
                                                                                   int) {
    *out = value * g_factor / g_outOf;
    return 0;
}
