// The math built-ins and the registration of the math and random families.
#include "runtime/Function/MathFunctions.h"

#include <cmath>
#include <cstdlib>
#include <numbers>
#include <tuple>
#include <utility>
#include <vector>

#include "runtime/Code/Builtins.h"
#include "runtime/Code/Error.h"
#include "runtime/Code/Operators.h"
#include "runtime/Function/Random.h"
#include "runtime/Code/Registration.h"
#include "runtime/Platform/Clock.h"

namespace rt {
namespace {

constexpr double DEGREES_PER_RADIAN = 180.0 / std::numbers::pi;
constexpr double RADIANS_PER_DEGREE = std::numbers::pi / 180.0;

// x within the comparison epsilon of [-1, 1], clamped; false when it is
// farther out. The slack takes in the rounding of a computed sine or cosine.
bool clamp_to_unit(double& x) {
  const double epsilon = compare_epsilon();
  if (!(x >= -1.0 - epsilon && x <= 1.0 + epsilon)) return false;
  x = x < -1.0 ? -1.0 : (x > 1.0 ? 1.0 : x);
  return true;
}

int compare_doubles(const void* a, const void* b) {
  const double x = *static_cast<const double*>(a);
  const double y = *static_cast<const double*>(b);
  return x < y ? -1 : (x > y ? 1 : 0);
}

// The index of the value that `better` prefers over all earlier ones; the
// first of equals stays.
template <typename Better>
size_t extreme_index(std::span<const RValue> values, Better better) {
  size_t best = 0;
  double best_value = arg_real(values.data(), 0);
  for (size_t i = 1; i < values.size(); ++i) {
    const double v = arg_real(values.data(), static_cast<int>(i));
    if (better(v, best_value)) {
      best = i;
      best_value = v;
    }
  }
  return best;
}

}  // namespace

double floor(double x) { return std::floor(x); }
double ceil(double x) { return std::ceil(x); }

double round(double x) {
  const double below = std::floor(x);
  const double rest = x - below;  // NaN for the infinities and NaN, which then pass unchanged
  if (rest > 0.5) return below + 1.0;
  if (rest == 0.5) return std::fmod(below, 2.0) == 0.0 ? below : below + 1.0;
  return rest < 0.5 ? below : x;
}

double frac(double x) {
  double whole;
  return std::modf(x, &whole);
}

double sqr(double x) { return x * x; }

double sqrt(double x) {
  if (std::isnan(x)) {
    ReportError("Cannot apply sqrt to NaN");
    return 0.0;
  }
  if (x < 0.0) {
    ReportError("Cannot apply sqrt to negative number.");
    return 0.0;
  }
  return std::sqrt(x);
}

double exp(double x) { return std::exp(x); }
double ln(double x) { return std::log(x); }
double log2(double x) { return std::log(x) / std::numbers::ln2; }
double log10(double x) { return std::log10(x); }
double logn(double n, double x) { return std::log(x) / std::log(n); }
double power(double b, double e) { return std::pow(b, e); }

double sin(double r) { return std::sin(r); }
double cos(double r) { return std::cos(r); }
double tan(double r) { return std::tan(r); }

double arcsin(double x) {
  if (!clamp_to_unit(x)) {
    ReportError("Error in function arcsin().");
    return 0.0;
  }
  return std::asin(x);
}

double arccos(double x) {
  if (!clamp_to_unit(x)) {
    ReportError("Error in function arccos().");
    return 0.0;
  }
  return std::acos(x);
}

double arctan(double x) { return std::atan(x); }
double arctan2(double y, double x) { return std::atan2(y, x); }

double dsin(double d) { return std::sin(d * RADIANS_PER_DEGREE); }
double dcos(double d) { return std::cos(d * RADIANS_PER_DEGREE); }
double dtan(double d) { return std::tan(d * RADIANS_PER_DEGREE); }
double darcsin(double x) { return arcsin(x) * DEGREES_PER_RADIAN; }
double darccos(double x) { return arccos(x) * DEGREES_PER_RADIAN; }
double darctan(double x) { return std::atan(x) * DEGREES_PER_RADIAN; }
double darctan2(double y, double x) { return std::atan2(y, x) * DEGREES_PER_RADIAN; }
double radtodeg(double r) { return r * DEGREES_PER_RADIAN; }
double degtorad(double d) { return d * RADIANS_PER_DEGREE; }

double clamp(double x, double lo, double hi) {
  const double at_least_lo = x < lo ? lo : x;
  return hi < at_least_lo ? hi : at_least_lo;
}

double lerp(double a, double b, double t) { return a + (b - a) * t; }

double mean(std::span<const double> values) {
  if (values.empty()) return 0.0;
  double sum = 0.0;
  for (double v : values) sum += v;
  return sum / static_cast<double>(values.size());
}

double median(std::span<const double> values) {
  if (values.empty()) return 0.0;
  std::vector<double> sorted(values.begin(), values.end());
  std::qsort(sorted.data(), sorted.size(), sizeof(double), compare_doubles);
  return sorted[sorted.size() / 2];
}

double abs(double x) { return std::fabs(x); }
double sign(double x) { return x > 0.0 ? 1.0 : (x < 0.0 ? -1.0 : 0.0); }

RValue min(std::span<const RValue> values) {
  if (values.empty()) return RValue::number(0);
  return values[extreme_index(values, [](double v, double best) { return v < best; })];
}

RValue max(std::span<const RValue> values) {
  if (values.empty()) return RValue::number(0);
  return values[extreme_index(values, [](double v, double best) { return v > best; })];
}

double angle_difference(float a, float b) {
  return std::fmod(std::fmod(a - b, 360.0f) + 540.0f, 360.0f) - 180.0f;
}

double point_distance(float x1, float y1, float x2, float y2) {
  const float dx = x2 - x1;
  const float dy = y2 - y1;
  return std::sqrt(dx * dx + dy * dy);
}

double lengthdir_x(double len, double dir) { return len * dcos(dir); }
double lengthdir_y(double len, double dir) { return -len * dsin(dir); }

double get_timer() { return static_cast<double>(platform::clock_microseconds()); }

}  // namespace rt

// ---------------------------------------------------------------------------
// Calls by name

namespace {

template <typename T>
T number_argument(const RValue* args, int i);
template <>
double number_argument<double>(const RValue* args, int i) {
  return arg_real(args, i);
}
template <>
float number_argument<float>(const RValue* args, int i) {
  return arg_float(args, i);
}

// The by-name adapter of a built-in whose arguments are all numbers: each is
// read by the getter of its type, the first argument first, so that the
// words of a wrong argument name the first wrong one.
template <auto F>
struct NumberBuiltin;
template <typename... P, double (*F)(P...)>
struct NumberBuiltin<F> {
  static void call(RValue& result, CInstance*, CInstance*, int, RValue* args) {
    call_in_order(result, args, std::index_sequence_for<P...>{});
  }
  template <size_t... I>
  static void call_in_order(RValue& result, [[maybe_unused]] const RValue* args, std::index_sequence<I...>) {
    // A braced list is evaluated left to right, unlike the arguments of a call.
    const std::tuple<P...> values{number_argument<P>(args, static_cast<int>(I))...};
    result = RValue::number(std::apply(F, values));
  }
  static constexpr int argc = sizeof...(P);
};

template <auto F>
void register_number_builtin(const char* name) {
  builtin_register(name, NumberBuiltin<F>::call, NumberBuiltin<F>::argc);
}

// All arguments as doubles, read left to right.
std::vector<double> number_arguments(int argc, const RValue* args) {
  std::vector<double> values(static_cast<size_t>(argc));
  for (int i = 0; i < argc; ++i) values[static_cast<size_t>(i)] = arg_real(args, i);
  return values;
}

std::span<const RValue> all_arguments(int argc, const RValue* args) { return {args, static_cast<size_t>(argc)}; }

BUILTIN_ADAPTER(mean) { result = RValue::number(rt::mean(number_arguments(argc, args))); }
BUILTIN_ADAPTER(median) { result = RValue::number(rt::median(number_arguments(argc, args))); }
BUILTIN_ADAPTER(min) { result = rt::min(all_arguments(argc, args)); }
BUILTIN_ADAPTER(max) { result = rt::max(all_arguments(argc, args)); }
BUILTIN_ADAPTER(choose) { result = rt::choose(all_arguments(argc, args)); }
BUILTIN_ADAPTER(randomize) { result = RValue::number(rt::randomize()); }
BUILTIN_ADAPTER(random_set_seed) { rt::random_set_seed(arg_uint32(args, 0)); }
BUILTIN_ADAPTER(random_get_seed) { result = RValue::number(rt::random_get_seed()); }

}  // namespace

void register_math_builtins() {
  register_number_builtin<rt::floor>("floor");
  register_number_builtin<rt::ceil>("ceil");
  register_number_builtin<rt::round>("round");
  register_number_builtin<rt::frac>("frac");
  register_number_builtin<rt::sqr>("sqr");
  register_number_builtin<rt::sqrt>("sqrt");
  register_number_builtin<rt::exp>("exp");
  register_number_builtin<rt::ln>("ln");
  register_number_builtin<rt::log2>("log2");
  register_number_builtin<rt::log10>("log10");
  register_number_builtin<rt::logn>("logn");
  register_number_builtin<rt::power>("power");
  register_number_builtin<rt::sin>("sin");
  register_number_builtin<rt::cos>("cos");
  register_number_builtin<rt::tan>("tan");
  register_number_builtin<rt::arcsin>("arcsin");
  register_number_builtin<rt::arccos>("arccos");
  register_number_builtin<rt::arctan>("arctan");
  register_number_builtin<rt::arctan2>("arctan2");
  register_number_builtin<rt::dsin>("dsin");
  register_number_builtin<rt::dcos>("dcos");
  register_number_builtin<rt::dtan>("dtan");
  register_number_builtin<rt::darcsin>("darcsin");
  register_number_builtin<rt::darccos>("darccos");
  register_number_builtin<rt::darctan>("darctan");
  register_number_builtin<rt::darctan2>("darctan2");
  register_number_builtin<rt::radtodeg>("radtodeg");
  register_number_builtin<rt::degtorad>("degtorad");
  register_number_builtin<rt::clamp>("clamp");
  register_number_builtin<rt::lerp>("lerp");
  register_number_builtin<rt::abs>("abs");
  register_number_builtin<rt::sign>("sign");
  register_number_builtin<rt::angle_difference>("angle_difference");
  register_number_builtin<rt::point_distance>("point_distance");
  register_number_builtin<rt::lengthdir_x>("lengthdir_x");
  register_number_builtin<rt::lengthdir_y>("lengthdir_y");
  register_number_builtin<rt::get_timer>("get_timer");
  builtin_register("mean", builtin_mean, -1);
  builtin_register("median", builtin_median, -1);
  builtin_register("min", builtin_min, -1);
  builtin_register("max", builtin_max, -1);

  register_number_builtin<rt::random>("random");
  register_number_builtin<rt::irandom>("irandom");
  register_number_builtin<rt::random_range>("random_range");
  register_number_builtin<rt::irandom_range>("irandom_range");
  builtin_register("choose", builtin_choose, -1);
  builtin_register("randomize", builtin_randomize, 0);
  builtin_register("random_set_seed", builtin_random_set_seed, 1);
  builtin_register("random_get_seed", builtin_random_get_seed, 0);
}
