// The random generator of the runtime and the built-ins that draw from it.
//
// One process-wide generator of the WELL family (512 bits of state in 16
// words of 32 bits). It starts from a fixed seed, so a program that never
// calls `randomize` draws the same numbers at every run: whatever needs a
// run to repeat itself relies on that.
#pragma once

#include <cstdint>
#include <span>

#include "runtime/Code/RValue.h"

namespace rt {

// The seed the generator has when the process starts.
inline constexpr uint32_t RANDOM_START_SEED = 0;

// Restarts the generator from `seed`: the same seed gives the same draws.
void random_set_seed(uint32_t seed);
// The seed of the last restart.
uint32_t random_get_seed();
// Restarts the generator from a seed made of the wall clock and a call counter; returns the seed.
uint32_t randomize();

// A real number in [0, n) (in (n, 0] for a negative n).
double random(double n);
// A whole number from 0 to n, both included; n is taken whole, truncated toward zero.
double irandom(double n);
// A real number from a up to, not including, b.
double random_range(double a, double b);
// A whole number between a and b, both included, in either order; the bounds are truncated toward zero.
double irandom_range(double a, double b);
// One of the values, equally likely, kept as the kind it is; the number 0 when there is none.
RValue choose(std::span<const RValue> values);

}  // namespace rt
