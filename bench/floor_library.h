// The floor of a conversion through a shared library: an exported function of
// Convert's signature that only multiplies, built into a shared library of its
// own so that a call to it crosses the same boundary as a call to Mensura.
#ifndef MENSURA_BENCH_FLOOR_LIBRARY_H
#define MENSURA_BENCH_FLOOR_LIBRARY_H

extern "C" int MensuraBenchFloorConvert(double value, int from, double* out, int to);

#endif  // MENSURA_BENCH_FLOOR_LIBRARY_H
