// A WELL512 generator: 16 words of state, one output word per step.
#include "runtime/Function/Random.h"

#include <cmath>

#include "runtime/Platform/Clock.h"

namespace rt {
namespace {

struct Generator {
  uint32_t seed;
  uint32_t state[16];
  uint32_t index;
};

// Each word of the state takes the next value of a linear congruence that
// starts at the seed, keeping its top 16 bits.
constexpr Generator seeded(uint32_t seed) {
  Generator g{seed, {}, 0};
  uint32_t w = seed;
  for (uint32_t& word : g.state) {
    w = (w * 214013u + 2531011u) >> 16;
    word = w;
  }
  return g;
}

constinit Generator g_generator = seeded(RANDOM_START_SEED);

uint32_t next_word() {
  Generator& g = g_generator;
  uint32_t a = g.state[g.index];
  uint32_t c = g.state[(g.index + 13) & 15];
  const uint32_t b = a ^ c ^ (a << 16) ^ (c << 15);
  c = g.state[(g.index + 9) & 15];
  c ^= c >> 11;
  a = g.state[g.index] = b ^ c;
  const uint32_t d = a ^ ((a << 5) & 0xDA442D24u);
  g.index = (g.index + 15) & 15;
  a = g.state[g.index];
  g.state[g.index] = a ^ b ^ d ^ (a << 2) ^ (b << 18) ^ (c << 28);
  return g.state[g.index];
}

// A fraction in [0, 1): one word over 2^32, never 1.
double next_fraction() { return next_word() / 4294967296.0; }

}  // namespace

void random_set_seed(uint32_t seed) { g_generator = seeded(seed); }

uint32_t random_get_seed() { return g_generator.seed; }

uint32_t randomize() {
  // The counter keeps two calls within the same second apart.
  static uint64_t counter = 0;
  const uint64_t t = static_cast<uint64_t>(platform::clock_wall_seconds()) + ++counter;
  const uint32_t seed = static_cast<uint32_t>(((t >> 32) + t) ^ ((t >> 16) & 0xFFFF) ^ (t << 16));
  random_set_seed(seed);
  return seed;
}

double random(double n) { return n * next_fraction(); }

double irandom(double n) { return irandom_range(0, n); }

double random_range(double a, double b) { return a + random(b - a); }

double irandom_range(double a, double b) {
  const double low = std::trunc(a < b ? a : b);
  const double high = std::trunc(a < b ? b : a);
  return low + std::floor(next_fraction() * (high - low + 1));
}

RValue choose(std::span<const RValue> values) {
  if (values.empty()) return RValue::number(0);
  return values[static_cast<size_t>(next_fraction() * static_cast<double>(values.size()))];
}

}  // namespace rt
