#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <initializer_list>
#include <limits>
#include <map>
#include <numbers>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "runtime/Code/Builtins.h"
#include "runtime/Code/Conversions.h"
#include "runtime/Code/Error.h"
#include "runtime/Function/MathFunctions.h"
#include "runtime/Function/Random.h"
#include "support/Fatal.h"

namespace {

constexpr double INF = std::numeric_limits<double>::infinity();
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double PI = std::numbers::pi;

RValue num(double d) { return RValue::number(d); }
RValue text(const char* t) { return RValue::text(t); }

// Calls a built-in by name, as compiled code does.
RValue call(const char* name, std::initializer_list<RValue> arguments = {}) {
  register_runtime_builtins();
  std::vector<RValue> args(arguments);
  RValue result;
  EXPECT_TRUE(builtin_call(name, result, nullptr, nullptr, static_cast<int>(args.size()), args.data()))
      << name << " is not registered";
  return result;
}

double call_real(const char* name, std::initializer_list<RValue> arguments = {}) {
  const RValue r = call(name, arguments);
  EXPECT_EQ(r.kind(), Kind::Number) << name;
  return r.real;
}

std::vector<double> draws(int count) {
  std::vector<double> out;
  for (int i = 0; i < count; ++i) out.push_back(rt::random(1.0));
  return out;
}

}  // namespace

// ---------------------------------------------------------------------------
// Rounding

TEST(MathRounding, RoundTakesExactHalvesToEvenAndLeavesInfinitiesAndNaN) {
  const std::pair<double, double> cases[] = {
      {0.5, 0},    {1.5, 2},    {2.5, 2},  {3.5, 4},   {-2.5, -2},  {-3.5, -4},
      {2.4999, 2}, {2.5001, 3}, {-0.7, -1}, {INF, INF}, {-INF, -INF},
  };
  for (const auto& [x, rounded] : cases) EXPECT_EQ(rt::round(x), rounded) << x;
  EXPECT_TRUE(std::isnan(rt::round(NaN)));
}

TEST(MathRounding, FloorCeilAndSignedFraction) {
  EXPECT_EQ(rt::floor(-2.5), -3);
  EXPECT_EQ(rt::ceil(-2.5), -2);
  EXPECT_EQ(rt::ceil(2.1), 3);
  EXPECT_EQ(rt::frac(2.75), 0.75);
  EXPECT_EQ(rt::frac(-2.75), -0.75);
  EXPECT_EQ(rt::frac(3), 0);
}

// ---------------------------------------------------------------------------
// Powers and logarithms

TEST(MathPowers, SqrtOfNegativeOrNaNIsFatalWithItsWords) {
  EXPECT_EQ(rt::sqrt(16), 4);
  EXPECT_EQ(rt::sqrt(0), 0);
  for (const double x : {-1.0, -INF}) EXPECT_FATAL(rt::sqrt(x), "Cannot apply sqrt to negative number.");
  EXPECT_FATAL(rt::sqrt(NaN), "Cannot apply sqrt to NaN");

  // While errors are suppressed the caller goes on with 0.
  SuppressErrors quiet;
  EXPECT_EQ(rt::sqrt(-4), 0);
  EXPECT_TRUE(quiet.error_happened());
}

TEST(MathPowers, PowersAndLogarithmsInEveryBase) {
  EXPECT_EQ(rt::sqr(-3), 9);
  EXPECT_EQ(rt::power(2, 10), 1024);
  EXPECT_EQ(rt::power(9, 0.5), 3);
  EXPECT_DOUBLE_EQ(rt::exp(1), std::numbers::e);
  EXPECT_DOUBLE_EQ(rt::ln(std::numbers::e), 1);
  EXPECT_DOUBLE_EQ(rt::log2(8), 3);
  EXPECT_DOUBLE_EQ(rt::log10(1000), 3);
  EXPECT_DOUBLE_EQ(rt::logn(3, 81), 4);
  EXPECT_DOUBLE_EQ(rt::logn(2, 1024), 10);
  EXPECT_EQ(rt::ln(0), -INF);
}

// ---------------------------------------------------------------------------
// Trigonometry

TEST(MathTrigonometry, ArcsinAndArccosClampWithinEpsilonAndRefuseFarther) {
  EXPECT_DOUBLE_EQ(rt::arcsin(1.000009), PI / 2);
  EXPECT_DOUBLE_EQ(rt::arcsin(-1.000009), -PI / 2);
  EXPECT_DOUBLE_EQ(rt::arccos(1.000009), 0);
  EXPECT_DOUBLE_EQ(rt::arccos(-1.000009), PI);
  EXPECT_DOUBLE_EQ(rt::arcsin(0.5), PI / 6);
  for (const double x : {1.00002, -1.00002, NaN}) EXPECT_FATAL(rt::arcsin(x), "Error in function arcsin().");
  for (const double x : {1.00002, -2.0}) EXPECT_FATAL(rt::arccos(x), "Error in function arccos().");
  // The degree forms share the check.
  EXPECT_DOUBLE_EQ(rt::darcsin(1.000009), 90);
  EXPECT_DOUBLE_EQ(rt::darccos(-1.000009), 180);
  EXPECT_FATAL(rt::darcsin(2), "Error in function arcsin().");
  EXPECT_FATAL(rt::darccos(2), "Error in function arccos().");
}

TEST(MathTrigonometry, DegreeFormsAgreeWithRadianForms) {
  EXPECT_DOUBLE_EQ(rt::dsin(90), 1);
  EXPECT_DOUBLE_EQ(rt::dcos(180), -1);
  EXPECT_DOUBLE_EQ(rt::dtan(45), rt::tan(PI / 4));
  EXPECT_DOUBLE_EQ(rt::dsin(30), rt::sin(PI / 6));
  EXPECT_DOUBLE_EQ(rt::dcos(60), rt::cos(PI / 3));
  EXPECT_DOUBLE_EQ(rt::darctan(1), 45);
  EXPECT_DOUBLE_EQ(rt::arctan(1), PI / 4);
  // arctan2 takes y first and sees the quadrant.
  EXPECT_DOUBLE_EQ(rt::arctan2(1, -1), 3 * PI / 4);
  EXPECT_DOUBLE_EQ(rt::darctan2(-1, -1), -135);
  EXPECT_DOUBLE_EQ(rt::radtodeg(PI), 180);
  EXPECT_DOUBLE_EQ(rt::degtorad(90), PI / 2);
}

// ---------------------------------------------------------------------------
// Ranges and statistics

TEST(MathStatistics, ClampLerpMeanMedianAbsAndSign) {
  EXPECT_EQ(rt::clamp(5, 0, 3), 3);
  EXPECT_EQ(rt::clamp(-1, 0, 3), 0);
  EXPECT_EQ(rt::clamp(2, 0, 3), 2);
  EXPECT_EQ(rt::lerp(10, 20, 0.25), 12.5);
  EXPECT_EQ(rt::lerp(10, 20, 2), 30);

  const double four[] = {4, 1, 3, 2};
  const double three[] = {5, -1, 3};
  EXPECT_EQ(rt::mean(four), 2.5);
  EXPECT_EQ(rt::mean({}), 0);
  // The element at count / 2 after sorting: the upper middle for an even count.
  EXPECT_EQ(rt::median(four), 3);
  EXPECT_EQ(rt::median(three), 3);
  EXPECT_EQ(rt::median({}), 0);

  EXPECT_EQ(rt::abs(-2.5), 2.5);
  EXPECT_EQ(rt::abs(2.5), 2.5);
  EXPECT_EQ(rt::sign(-0.1), -1);
  EXPECT_EQ(rt::sign(0), 0);
  EXPECT_EQ(rt::sign(7), 1);
}

TEST(MathStatistics, MinAndMaxReturnTheArgumentItselfAndTheFirstOfEquals) {
  const RValue mixed[] = {num(5), RValue::int32(3), text("9"), RValue::boolean(true)};
  const RValue lowest = rt::min(mixed);
  EXPECT_EQ(lowest.kind(), Kind::Bool);
  EXPECT_EQ(lowest.real, 1);
  const RValue highest = rt::max(mixed);
  EXPECT_EQ(highest.kind(), Kind::String);
  EXPECT_EQ(highest.string_view(), "9");

  const RValue tie[] = {num(2), text("2"), RValue::int32(2)};
  EXPECT_EQ(rt::min(tie).kind(), Kind::Number);
  EXPECT_EQ(rt::max(tie).kind(), Kind::Number);
  const RValue tie_text_first[] = {text("2"), num(2)};
  EXPECT_EQ(rt::max(tie_text_first).kind(), Kind::String);
  EXPECT_EQ(rt::min(tie_text_first).kind(), Kind::String);

  const RValue none[1];
  EXPECT_EQ(rt::min(std::span<const RValue>(none, 0)).real, 0);
}

// ---------------------------------------------------------------------------
// Angles and distances

TEST(MathAngles, AngleDifferenceWrapsIntoAHalfTurnEitherWay) {
  struct Case {
    float a, b;
    double difference;
  };
  const Case cases[] = {{10, 350, 20}, {350, 10, -20},  {90, 0, 90},     {765, 0, 45},
                        {-370, 0, -10}, {180, 0, -180}, {0, 180, -180}};
  for (const Case& c : cases) EXPECT_FLOAT_EQ(rt::angle_difference(c.a, c.b), c.difference) << c.a << ", " << c.b;
}

TEST(MathAngles, DistancesAndStepsWithYGrowingDownward) {
  EXPECT_FLOAT_EQ(rt::point_distance(1, 1, 4, 5), 5);
  EXPECT_FLOAT_EQ(rt::point_distance(4, 5, 1, 1), 5);
  // Single precision: 0.1 + 0.2 as floats, not as doubles.
  EXPECT_EQ(rt::point_distance(0, 0, 0.1f, 0), static_cast<double>(0.1f));

  EXPECT_DOUBLE_EQ(rt::lengthdir_x(10, 0), 10);
  EXPECT_NEAR(rt::lengthdir_y(10, 0), 0, 1e-12);
  EXPECT_NEAR(rt::lengthdir_x(10, 90), 0, 1e-12);
  EXPECT_DOUBLE_EQ(rt::lengthdir_y(10, 90), -10);  // 90 degrees points up the screen
  EXPECT_DOUBLE_EQ(rt::lengthdir_y(10, 270), 10);
  EXPECT_DOUBLE_EQ(rt::lengthdir_x(4, 180), -4);
}

TEST(MathTimer, GetTimerCountsMicrosecondsForward) {
  const double before = rt::get_timer();
  std::this_thread::sleep_for(std::chrono::milliseconds(3));
  const double after = rt::get_timer();
  EXPECT_GE(after - before, 3000);
  EXPECT_LT(after - before, 3'000'000);  // microseconds, not nanoseconds
  EXPECT_GE(call_real("get_timer"), after);
}

// ---------------------------------------------------------------------------
// Random generator

TEST(Random, SameSeedGivesTheSameSequenceAndAnotherSeedAnother) {
  rt::random_set_seed(42);
  EXPECT_EQ(rt::random_get_seed(), 42u);
  const std::vector<double> first = draws(20);
  rt::random_set_seed(42);
  EXPECT_EQ(draws(20), first);
  rt::random_set_seed(43);
  EXPECT_NE(draws(20), first);
}

TEST(Random, RandomizeSeedsFromTheClockAndChangesAtEachCall) {
  const uint32_t a = rt::randomize();
  const uint32_t b = rt::randomize();
  EXPECT_NE(a, b);
  EXPECT_EQ(rt::random_get_seed(), b);
  // The generator really restarted from the seed it returned.
  const std::vector<double> after_randomize = draws(10);
  rt::random_set_seed(b);
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

TEST(Random, DrawsStayWithinTheirBoundsAndReachEveryWholeNumber) {
  rt::random_set_seed(7);
  std::map<double, int> irandom_seen, range_seen, negative_seen;
  for (int i = 0; i < 4000; ++i) {
    ++irandom_seen[rt::irandom(3)];
    ++range_seen[rt::irandom_range(5, 2)];  // either order
    ++negative_seen[rt::irandom(-2.9)];     // truncated to -2
    const double r = rt::random(10);
    ASSERT_GE(r, 0);
    ASSERT_LT(r, 10);
    const double rr = rt::random_range(-1, 1);
    ASSERT_GE(rr, -1);
    ASSERT_LT(rr, 1);
  }
  const auto expect_uniform = [](const std::map<double, int>& seen, double low, double high) {
    ASSERT_EQ(seen.size(), static_cast<size_t>(high - low + 1));
    EXPECT_EQ(seen.begin()->first, low);
    EXPECT_EQ(seen.rbegin()->first, high);
    const double expected = 4000 / (high - low + 1);
    for (const auto& [value, count] : seen) {
      EXPECT_EQ(value, std::floor(value));
      EXPECT_NEAR(count, expected, expected * 0.2) << value;
    }
  };
  expect_uniform(irandom_seen, 0, 3);
  expect_uniform(range_seen, 2, 5);
  expect_uniform(negative_seen, -2, 0);
  EXPECT_EQ(rt::irandom(0), 0);
}

TEST(Random, ChooseReturnsOneArgumentWithItsKind) {
  rt::random_set_seed(11);
  const RValue options[] = {text("ciao"), RValue::int32(7), RValue::boolean(false)};
  std::map<Kind, int> seen;
  for (int i = 0; i < 300; ++i) {
    const RValue picked = rt::choose(options);
    const bool is_an_option = std::ranges::any_of(options, [&](const RValue& o) {
      return o.kind() == picked.kind() && value_to_text(o) == value_to_text(picked);
    });
    ASSERT_TRUE(is_an_option) << "picked " << value_to_text(picked) << " of kind " << kind_name(picked.kind());
    ++seen[picked.kind()];
  }
  EXPECT_EQ(seen.size(), 3u);

  const RValue none = rt::choose({});
  EXPECT_EQ(none.kind(), Kind::Number);
  EXPECT_EQ(none.real, 0);
}

// ---------------------------------------------------------------------------
// Calls by name

TEST(MathByName, EveryBuiltinIsRegisteredWithItsArgumentCount) {
  register_runtime_builtins();
  // Names by their argument count; -1 takes any number.
  const std::pair<int, const char*> rows[] = {
      {0, "randomize get_timer random_get_seed"},
      {1, "floor round ceil frac sqrt sqr exp ln log2 log10 dsin sin dcos cos dtan tan darcsin arcsin darccos "
          "arccos darctan arctan radtodeg degtorad random irandom random_set_seed abs sign"},
      {2, "power logn darctan2 arctan2 angle_difference random_range irandom_range lengthdir_x lengthdir_y"},
      {3, "clamp lerp"},
      {4, "point_distance"},
      {-1, "mean median choose min max"},
  };
  for (const auto& [argc, names] : rows) {
    std::istringstream words(names);
    for (std::string name; words >> name;) {
      const BuiltinRow* row = builtin_row(builtin_find(name));
      ASSERT_NE(row, nullptr) << name;
      EXPECT_EQ(row->argc, argc) << name;
    }
  }
}

TEST(MathByName, ArgumentsAreReadAsNumbersAndDigitStringsCount) {
  EXPECT_EQ(call_real("round", {num(2.5)}), 2);
  EXPECT_EQ(call_real("median", {num(1), num(2), num(3), num(4)}), 3);
  EXPECT_EQ(call_real("mean"), 0);
  EXPECT_EQ(call_real("sqrt", {text("16")}), 4);
  EXPECT_EQ(call_real("power", {text("12"), num(2)}), 144);
  EXPECT_EQ(call_real("floor", {text("12.7abc")}), 12);
  EXPECT_EQ(call_real("abs", {RValue::int32(-3)}), 3);
  EXPECT_EQ(call_real("sign", {RValue::boolean(true)}), 1);
  EXPECT_FLOAT_EQ(call_real("point_distance", {num(0), num(0), text("3"), RValue::int64(4)}), 5);
  EXPECT_DOUBLE_EQ(call_real("lengthdir_y", {num(2), num(90)}), -2);

  const RValue lowest = call("min", {num(3), RValue::int32(1), num(2)});
  EXPECT_EQ(lowest.kind(), Kind::Int32);
  EXPECT_EQ(lowest.i32, 1);
  const RValue picked = call("choose", {text("solo")});
  EXPECT_EQ(picked.kind(), Kind::String);
  EXPECT_EQ(picked.string_view(), "solo");
  EXPECT_EQ(call("choose").real, 0);
}

TEST(MathByName, WrongArgumentsAreFatalWithTheGettersWords) {
  EXPECT_FATAL(call("sqrt", {RValue::undefined()}),
               "sqrt argument 1 incorrect type (undefined) expecting a Number (QvGR)");
  EXPECT_FATAL(call("sqrt", {num(-1)}), "Cannot apply sqrt to negative number.");
  // Only a string that begins with a digit reads as a number.
  EXPECT_FATAL(call("floor", {text(" 12")}), "floor argument 1 incorrect type (string) expecting a Number (QvGR)");
  EXPECT_FATAL(call("floor", {text("abc")}), "floor argument 1 incorrect type (string) expecting a Number (QvGR)");
  EXPECT_FATAL(call("power", {num(2), RValue::undefined()}),
               "power argument 2 incorrect type (undefined) expecting a Number (QvGR)");
  // Arguments are read from the first: with two wrong, the first is reported.
  EXPECT_FATAL(call("clamp", {text("x"), num(0), RValue::undefined()}),
               "clamp argument 1 incorrect type (string) expecting a Number (QvGR)");
  EXPECT_FATAL(call("max", {num(1), text("abc")}), "max argument 2 incorrect type (string) expecting a Number (QvGR)");
  EXPECT_FATAL(call("median", {num(1), RValue::undefined()}),
               "median argument 2 incorrect type (undefined) expecting a Number (QvGR)");
  // The single-precision built-ins read through the float getter.
  EXPECT_FATAL(call("angle_difference", {num(1), RValue::undefined()}),
               "angle_difference argument 2 incorrect type (undefined) expecting a Number (QvGF)");
  EXPECT_FATAL(call("random_set_seed", {RValue::undefined()}),
               "random_set_seed argument 1 incorrect type (undefined) expecting a Number (QvGU32)");
}

TEST(MathByName, RandomFamilyShareTheOneGenerator) {
  call("random_set_seed", {num(99)});
  EXPECT_EQ(call_real("random_get_seed"), 99);
  const double by_name = call_real("irandom_range", {num(1), num(1000000)});
  rt::random_set_seed(99);
  EXPECT_EQ(rt::irandom_range(1, 1000000), by_name);

  // A negative seed wraps to 32 bits.
  call("random_set_seed", {num(-1)});
  EXPECT_EQ(rt::random_get_seed(), 0xFFFFFFFFu);

  const double seed = call_real("randomize");
  EXPECT_EQ(seed, rt::random_get_seed());
  const double r = call_real("random", {num(5)});
  EXPECT_GE(r, 0);
  EXPECT_LT(r, 5);
}
