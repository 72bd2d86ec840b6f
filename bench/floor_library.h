// The floor of a conversion through a shared library: an exported function of
// Convert's signature that only multiplies, built into a shared library of its
// own so that a call to it crosses the same boundary as a call to Mensura.
#ifndef MENSURA_BENCH_FLOOR_LIBRARY_H
#define MENSURA_BENCH_FLOOR_LIBRARY_H

extern "C" int MensuraBenchFloorConvert(double value, int from, double* out, int to);

// The same call doing the arithmetic that a conversion's result is defined
// by: into the base unit by one factor, out of it by another, rounded after
// each, so that value * a / b can never become value * (a / b).
extern "C" int MensuraBenchRuleFloorConvert(double value, int from, double* out, int to);

#endif  // MENSURA_BENCH_FLOOR_LIBRARY_H
