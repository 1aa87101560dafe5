#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <map>
#include <numbers>
#include <string>
#include <vector>

#include "runtime/Code/Builtins.h"
#include "runtime/Code/Conversions.h"
#include "runtime/Function/MathFunctions.h"
#include "runtime/Function/Random.h"
#include "support/CallBuiltin.h"
#include "support/Fatal.h"

namespace {

constexpr double INF = std::numeric_limits<double>::infinity();
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double PI = std::numbers::pi;

double call_real(const char* name, const std::vector<Arg>& arguments = {}) {
  const RValue r = call_by_name(name, arguments);
  EXPECT_EQ(r.kind(), Kind::Number) << name;
  return r.real;
}

std::vector<double> draws(int count) {
  std::vector<double> out;
  for (int i = 0; i < count; ++i) out.push_back(rt::random(1.0));
  return out;
}

}  // namespace

// Every number built-in by name, its arguments read as numbers (a string
// that begins with a digit counts), its result a number.
TEST(MathByName, GiveTheirResults) {
  struct Case { const char* name; std::vector<Arg> args; double result; };
  const Case cases[] = {
      // Exact halves round to even; infinities and NaN pass.
      {"round", {0.5}, 0}, {"round", {1.5}, 2}, {"round", {-2.5}, -2}, {"round", {2.4999}, 2}, {"round", {2.5001}, 3},
      {"round", {INF}, INF}, {"round", {NaN}, NaN}, {"floor", {-2.5}, -3}, {"ceil", {-2.5}, -2}, {"frac", {-2.75}, -0.75},
      {"sqrt", {"16"}, 4}, {"sqrt", {0}, 0}, {"sqr", {-3}, 9}, {"power", {9, 0.5}, 3}, {"exp", {1}, std::numbers::e},
      {"ln", {0}, -INF}, {"log2", {8}, 3}, {"log10", {1000}, 3}, {"logn", {3, 81}, 4},
      // Within the comparison epsilon of 1 an arcsine or arccosine is clamped.
      {"arcsin", {1.000009}, PI / 2}, {"arcsin", {-1.000009}, -PI / 2}, {"arcsin", {0.5}, PI / 6},
      {"arccos", {-1.000009}, PI}, {"darcsin", {1.000009}, 90}, {"darccos", {-1.000009}, 180},
      {"arctan", {1}, PI / 4}, {"darctan", {1}, 45},
      // arctan2 takes y first and sees the quadrant.
      {"arctan2", {1, -1}, 3 * PI / 4}, {"darctan2", {-1, -1}, -135},
      {"sin", {PI / 6}, 0.5}, {"cos", {PI / 3}, 0.5}, {"tan", {PI / 4}, 1}, {"dsin", {30}, 0.5}, {"dcos", {60}, 0.5},
      {"dtan", {45}, 1}, {"radtodeg", {PI}, 180}, {"degtorad", {90}, PI / 2},
      {"clamp", {5, 0, 3}, 3}, {"clamp", {-1, 0, 3}, 0}, {"clamp", {2, 0, 3}, 2}, {"lerp", {10, 20, 0.25}, 12.5},
      // The median is the element at count / 2 after sorting: the upper middle for an even count.
      {"mean", {4, 1, 3, 2}, 2.5}, {"mean", {}, 0}, {"median", {4, 1, 3, 2}, 3}, {"median", {}, 0},
      {"abs", {-2.5}, 2.5}, {"sign", {-0.1}, -1}, {"sign", {0}, 0}, {"sign", {RValue::boolean(true)}, 1},
      // Angle differences wrap into a half turn either way.
      {"angle_difference", {10, 350}, 20}, {"angle_difference", {350, 10}, -20}, {"angle_difference", {765, 0}, 45},
      {"angle_difference", {-370, 0}, -10}, {"angle_difference", {180, 0}, -180},
      // Distances are in single precision; y grows downward, so 90 degrees points up the screen.
      {"point_distance", {1, 1, 4, 5}, 5}, {"point_distance", {0, 0, 0.1, 0}, static_cast<double>(0.1f)},
      {"lengthdir_x", {10, 0}, 10}, {"lengthdir_y", {10, 90}, -10},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << c.name << " " << (c.args.empty() ? "" : value_to_text(c.args[0].value)));
    const double result = call_real(c.name, c.args);
    if (std::isnan(c.result)) {
      EXPECT_TRUE(std::isnan(result)) << result;
    } else if (result != c.result) {
      EXPECT_NEAR(result, c.result, 1e-12);
    }
  }
}

TEST(MathByName, WrongArgumentsAreFatalWithTheirWords) {
  struct Case { const char* name; std::vector<Arg> args; const char* words; };
  const RValue undefined = RValue::undefined();
  const Case cases[] = {
      {"sqrt", {-1}, "Cannot apply sqrt to negative number."}, {"sqrt", {NaN}, "Cannot apply sqrt to NaN"},
      {"arcsin", {1.00002}, "Error in function arcsin()."}, {"arcsin", {NaN}, "Error in function arcsin()."},
      {"arccos", {-1.00002}, "Error in function arccos()."},
      // Only a string that begins with a digit reads as a number.
      {"floor", {" 12"}, "floor argument 1 incorrect type (string) expecting a Number (QvGR)"},
      // Arguments are read from the first: with two wrong, the first is reported.
      {"clamp", {"x", 0, undefined}, "clamp argument 1 incorrect type (string) expecting a Number (QvGR)"},
      {"max", {1, "abc"}, "max argument 2 incorrect type (string) expecting a Number (QvGR)"},
      {"median", {1, undefined}, "median argument 2 incorrect type (undefined) expecting a Number (QvGR)"},
      // The single-precision built-ins and the seed read through their own getters.
      {"angle_difference", {1, undefined},
       "angle_difference argument 2 incorrect type (undefined) expecting a Number (QvGF)"},
      {"random_set_seed", {undefined}, "random_set_seed argument 1 incorrect type (undefined) expecting a Number (QvGU32)"},
  };
  for (const Case& c : cases) EXPECT_FATAL(call_by_name(c.name, c.args), c.words);

  // While errors are suppressed the caller goes on with 0.
  SuppressErrors quiet;
  for (const double result : {rt::sqrt(-4), rt::sqrt(NaN), rt::arcsin(2), rt::arccos(2)}) EXPECT_EQ(result, 0);
  EXPECT_TRUE(quiet.error_happened());
}

TEST(MathByName, MinAndMaxReturnTheArgumentItselfAndTheFirstOfEquals) {
  const auto expect = [](const char* name, std::vector<Arg> args, Kind kind, const char* text) {
    const RValue r = call_by_name(name, args);
    EXPECT_EQ(r.kind(), kind) << name;
    EXPECT_EQ(value_to_text(r), text) << name;
  };
  expect("min", {5, RValue::int32(3), "9", RValue::boolean(true)}, Kind::Bool, "1");
  expect("max", {5, RValue::int32(3), "9", RValue::boolean(true)}, Kind::String, "9");
  expect("min", {2, "2", RValue::int32(2)}, Kind::Number, "2");
  expect("max", {2, "2", RValue::int32(2)}, Kind::Number, "2");
  expect("min", {}, Kind::Number, "0");
  expect("max", {}, Kind::Number, "0");
}

TEST(MathTimer, GetTimerCountsMicrosecondsOfTheSteadyClock) {
  // Between two readings at least two milliseconds of the steady clock go by,
  // and the readings lie within the clock's readings around them.
  using std::chrono::steady_clock;
  const auto outer_start = steady_clock::now();
  const double first = call_real("get_timer");
  const auto inner_start = steady_clock::now();
  while (steady_clock::now() - inner_start < std::chrono::milliseconds(2)) {
  }
  const double second = rt::get_timer();
  const auto outer = std::chrono::duration_cast<std::chrono::microseconds>(steady_clock::now() - outer_start);
  EXPECT_GE(second - first, 2000 - 1);
  EXPECT_LE(second - first, static_cast<double>(outer.count()) + 2);
}

TEST(Random, SameSeedGivesTheSameSequenceAndRandomizeAnotherOne) {
  call_by_name("random_set_seed", {42});
  EXPECT_EQ(call_real("random_get_seed"), 42);
  const std::vector<double> first = draws(20);
  rt::random_set_seed(42);
  EXPECT_EQ(draws(20), first);
  rt::random_set_seed(43);
  EXPECT_NE(draws(20), first);
  // A negative seed wraps to 32 bits.
  call_by_name("random_set_seed", {-1});
  EXPECT_EQ(rt::random_get_seed(), 0xFFFFFFFFu);
  // The built-ins by name draw from the same generator.
  call_by_name("random_set_seed", {99});
  const double by_name = call_real("irandom_range", {1, 1000000});
  rt::random_set_seed(99);
  EXPECT_EQ(rt::irandom_range(1, 1000000), by_name);

  // randomize seeds from the clock, and changes at each call.
  const uint32_t a = rt::randomize();
  const double b = call_real("randomize");
  EXPECT_NE(a, b);
  EXPECT_EQ(rt::random_get_seed(), b);
  // The generator really restarted from the seed it returned.
  const std::vector<double> after_randomize = draws(10);
  rt::random_set_seed(static_cast<uint32_t>(b));
  EXPECT_EQ(draws(10), after_randomize);
}

TEST(Random, WithoutRandomizeAProgramDrawsTheSameAtEveryRun) {
  // A fresh process of this test program, so no earlier draw has moved the generator.
  const std::string style = GTEST_FLAG_GET(death_test_style);
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        const bool start_seed = rt::random_get_seed() == rt::RANDOM_START_SEED;
        const std::vector<double> at_start = draws(10);
        rt::random_set_seed(rt::RANDOM_START_SEED);
        std::exit(start_seed && draws(10) == at_start ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
  GTEST_FLAG_SET(death_test_style, style);
}

TEST(Random, DrawsStayWithinTheirBoundsAndReachEveryWholeNumberEvenly) {
  rt::random_set_seed(7);
  std::map<double, int> irandom_seen, range_seen, negative_seen;
  for (int i = 0; i < 4000; ++i) {
    ++irandom_seen[call_real("irandom", {3})];
    ++range_seen[rt::irandom_range(5, 2)];  // either order
    ++negative_seen[rt::irandom(-2.9)];     // truncated to -2
    const double r = call_real("random", {10});
    const double rr = call_real("random_range", {-1, 1});
    ASSERT_TRUE(r >= 0 && r < 10) << r;
    ASSERT_TRUE(rr >= -1 && rr < 1) << rr;
  }
  const auto expect_uniform = [](const std::map<double, int>& seen, double low, double high) {
    ASSERT_EQ(seen.size(), static_cast<size_t>(high - low + 1));
    EXPECT_EQ(seen.begin()->first, low);
    EXPECT_EQ(seen.rbegin()->first, high);
    const double expected = 4000 / (high - low + 1);
    for (const auto& [value, count] : seen) EXPECT_NEAR(count, expected, expected * 0.2) << value;
  };
  expect_uniform(irandom_seen, 0, 3);
  expect_uniform(range_seen, 2, 5);
  expect_uniform(negative_seen, -2, 0);
  EXPECT_EQ(rt::irandom(0), 0);
}

TEST(Random, ChooseReturnsOneArgumentWithItsKind) {
  rt::random_set_seed(11);
  const std::vector<Arg> options = {"ciao", RValue::int32(7), RValue::boolean(false)};
  std::map<Kind, std::string> seen;
  for (int i = 0; i < 300; ++i) {
    const RValue picked = call_by_name("choose", options);
    seen[picked.kind()] = value_to_text(picked);
  }
  EXPECT_EQ(seen, (std::map<Kind, std::string>{{Kind::String, "ciao"}, {Kind::Int32, "7"}, {Kind::Bool, "0"}}));
  const RValue none = call_by_name("choose");
  EXPECT_EQ(none.kind(), Kind::Number);
  EXPECT_EQ(none.real, 0);
}
