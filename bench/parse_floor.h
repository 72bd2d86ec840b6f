// The floor of a parse: the least that reading a text of the parse
// benchmarks can cost when written by hand for those texts alone. Numbers go
// through strtod, every word through one lookup in a small hash table, and a
// small evaluator puts numbers, units, exponents, primes, fractions and
// bearing letters together into one value.
#ifndef MENSURA_BENCH_PARSE_FLOOR_H
#define MENSURA_BENCH_PARSE_FLOOR_H

namespace MensuraBench {

// Reads text into a value in the unit whose size is `unitFactor` base units
// (metres, kilograms, seconds, radians). False when the text holds a word
// that the table lacks.
bool FloorParse(const char16_t* text, double unitFactor, double& out);

}  // namespace MensuraBench

#endif  // MENSURA_BENCH_PARSE_FLOOR_H
