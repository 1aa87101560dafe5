// The compound operators and CompareValues.
#include "runtime/Code/Operators.h"

#include <cmath>
#include <cstring>

#include "runtime/Code/Conversions.h"
#include "runtime/Code/Error.h"

namespace {

constexpr double COMPARE_EPSILON = 0.00001;

// A side's text for the words of a failed operator; never fatal itself.
std::string describe(const RValue& v) { return v.is(Kind::Unset) ? std::string("unset") : value_to_text(v); }

void invalid_operands(const char* op, const RValue& left, const RValue& right) {
  ReportError("invalid type for %s lhs=%s (type=%d), rhs=%s (type=%d)", op, describe(left).c_str(),
              static_cast<int>(left.kind()), describe(right).c_str(), static_cast<int>(right.kind()));
}

bool is_integer(Kind k) { return k == Kind::Int32 || k == Kind::Int64; }

void set_number(RValue& v, double d) {
  v.clear(Kind::Number);
  v.real = d;
}

void set_int32(RValue& v, int32_t n) {
  v.clear(Kind::Int32);
  v.i32 = n;
}

void set_int64(RValue& v, int64_t n) {
  v.clear(Kind::Int64);
  v.i64 = n;
}

int32_t wrap32(int64_t n) { return static_cast<int32_t>(static_cast<uint32_t>(static_cast<uint64_t>(n))); }
int64_t wrap64_add(int64_t a, int64_t b) {
  return static_cast<int64_t>(static_cast<uint64_t>(a) + static_cast<uint64_t>(b));
}
int64_t wrap64_mul(int64_t a, int64_t b) {
  return static_cast<int64_t>(static_cast<uint64_t>(a) * static_cast<uint64_t>(b));
}

// The integer of a left side of kind int32 or int64.
int64_t integer_of(const RValue& v) { return v.is(Kind::Int32) ? v.i32 : v.i64; }

// Sum or difference (sign +1 or -1) for the kinds the two operators share.
bool add_numeric(RValue& left, const RValue& right, int sign) {
  switch (left.kind()) {
    case Kind::Number:
    case Kind::Bool:
      left.real += sign * value_to_real(right);
      return true;
    case Kind::Int32:
      if (right.is(Kind::Number)) {
        set_number(left, left.i32 + sign * right.real);
      } else if (right.is(Kind::Int64)) {
        set_int64(left, wrap64_add(left.i32, sign * right.i64));
      } else {
        set_int32(left, wrap32(static_cast<int64_t>(left.i32) + sign * static_cast<int64_t>(value_to_int32(right))));
      }
      return true;
    case Kind::Int64:
      if (right.is(Kind::Number)) {
        set_number(left, static_cast<double>(left.i64) + sign * right.real);
      } else {
        const int64_t r = value_to_int64(right);
        set_int64(left, wrap64_add(left.i64, sign < 0 ? static_cast<int64_t>(0 - static_cast<uint64_t>(r)) : r));
      }
      return true;
    default:
      return false;
  }
}

// Division and remainder share their kind rules.
void divide_or_modulo(RValue& left, const RValue& right, bool modulo) {
  const char* op = modulo ? "%=" : "/=";
  if (right.is(Kind::Ptr)) {
    invalid_operands(op, left, right);
    return;
  }
  const Kind lk = left.kind();
  const Kind rk = right.kind();
  if (lk == Kind::String || lk == Kind::Number || lk == Kind::Bool) {
    const double a = value_to_real(left);
    const double b = value_to_real(right);
    if (modulo && b == 0.0) {
      ReportError("unable to mod by 0");
      return;
    }
    const double r = modulo ? std::fmod(a, b) : a / b;
    if (lk == Kind::String) set_number(left, r);
    else left.real = r;
    return;
  }
  if (!is_integer(lk)) {
    invalid_operands(op, left, right);
    return;
  }
  if (!is_integer(rk)) {
    const double b = value_to_real(right);
    if (modulo && b == 0.0) {
      ReportError("unable to mod by 0");
      return;
    }
    const double a = static_cast<double>(integer_of(left));
    set_number(left, modulo ? std::fmod(a, b) : a / b);
    return;
  }
  const int64_t a = integer_of(left);
  const int64_t b = integer_of(right);
  if (b == 0) {
    ReportError(modulo ? "unable to mod by 0" : "divide by zero");
    return;
  }
  // The minimum divided by -1 overflows: it wraps to itself, remainder 0.
  const int64_t r = b == -1 ? (modulo ? 0 : static_cast<int64_t>(0 - static_cast<uint64_t>(a))) : (modulo ? a % b : a / b);
  if (lk == Kind::Int32 && rk == Kind::Int32) set_int32(left, wrap32(r));
  else set_int64(left, r);
}

int sign_of(double d, double epsilon) {
  if (std::fabs(d) <= epsilon) return 0;
  return d < 0 ? -1 : 1;
}

// Number against number with the infinity rule: inf - inf is equal, any
// other NaN difference reads as "greater".
int compare_doubles(double a, double b, double epsilon) {
  double d = a - b;
  if (std::isnan(d)) {
    if (std::isinf(a) && std::isinf(b)) return 0;
    d = 2 * epsilon;
  }
  return sign_of(d, epsilon);
}

int compare_integers(int64_t a, int64_t b) { return a < b ? -1 : (a > b ? 1 : 0); }

bool is_number_or_bool(Kind k) { return k == Kind::Number || k == Kind::Bool; }
bool is_int_or_ref(Kind k) { return k == Kind::Int32 || k == Kind::Ref; }
bool is_integral(Kind k) { return k == Kind::Int32 || k == Kind::Ref || k == Kind::Int64; }
// The kinds an array or undefined can't be ordered against.
bool is_scalar_or_object(Kind k) {
  return k == Kind::Number || k == Kind::Object || k == Kind::Int32 || k == Kind::Int64 || k == Kind::Bool ||
         k == Kind::Ref;
}
bool unset_compares_fatally(Kind k) {
  return k == Kind::Number || k == Kind::Array || k == Kind::Object || k == Kind::Int32 || k == Kind::Int64 ||
         k == Kind::Bool || k == Kind::Ref || k == Kind::Unset;
}

const char* text_of(const RValue& v) { return v.str && v.str->text ? v.str->text : ""; }

// String against number, in the order the sides stand.
int compare_string_number(const RValue& s, double n, bool string_first, double epsilon, bool raise) {
  double d;
  if (!parse_number(text_of(s), d)) {
    if (raise) ReportError("unable to convert string \"%s\" to float", text_of(s));
    return 1;
  }
  return string_first ? compare_doubles(d, n, epsilon) : compare_doubles(n, d, epsilon);
}

int compare_string_integer(const RValue& s, const RValue& n, bool string_first, bool raise) {
  int64_t i;
  if (!parse_integer(text_of(s), i)) {
    if (raise) ReportError("unable to convert string \"%s\" to int64", text_of(s));
    return 1;
  }
  const int64_t other = n.is(Kind::Int64) ? n.i64 : n.i32;
  const int64_t a = string_first ? i : other;
  const int64_t b = string_first ? other : i;
  if (n.is(Kind::Int32)) {
    const int32_t d = wrap32(static_cast<int64_t>(static_cast<uint64_t>(a) - static_cast<uint64_t>(b)));
    return d < 0 ? -1 : (d > 0 ? 1 : 0);
  }
  return compare_integers(a, b);
}

int compare_string_bool(const RValue& s, const RValue& b, bool string_first, bool raise) {
  int truth;
  double d;
  const char* t = text_of(s);
  if (parse_number(t, d)) truth = d > 0.5;
  else if (std::strcmp(t, "true") == 0) truth = 1;
  else if (std::strcmp(t, "false") == 0) truth = 0;
  else {
    if (raise) ReportError("unable to convert string \"%s\" to bool", t);
    return 1;
  }
  const int64_t other = static_cast<int64_t>(b.real);
  return string_first ? compare_integers(truth, other) : compare_integers(other, truth);
}

int compare_strings(const RValue& a, const RValue& b) {
  const bool a_null = !a.str || !a.str->text;
  const bool b_null = !b.str || !b.str->text;
  if (a_null || b_null) {
    const size_t other = a_null ? (b_null ? 0 : b.str->length()) : a.str->length();
    return other == 0 ? 0 : 1;
  }
  const int c = std::strcmp(a.str->text, b.str->text);
  return c < 0 ? -1 : (c > 0 ? 1 : 0);
}

}  // namespace

double compare_epsilon() { return COMPARE_EPSILON; }

void value_add(RValue& left, const RValue& right) {
  if (add_numeric(left, right, +1)) return;
  if (left.is(Kind::String)) {
    if (!right.is(Kind::String)) {
      ReportError("unable to add a number to string");
      return;
    }
    const std::string_view a = left.string_view();
    const std::string_view b = right.string_view();
    RefString* s = RefString::allocate(static_cast<uint32_t>(a.size() + b.size()));
    std::memcpy(s->data(), a.data(), a.size());
    std::memcpy(s->data() + a.size(), b.data(), b.size());
    s->data()[a.size() + b.size()] = '\0';
    s->size = static_cast<int32_t>(a.size() + b.size());
    left = RValue::adopt(s);
    return;
  }
  invalid_operands("+=", left, right);
}

void value_subtract(RValue& left, const RValue& right) {
  if (add_numeric(left, right, -1)) return;
  if (left.is(Kind::String)) {
    const double a = value_to_real(left);
    set_number(left, a - value_to_real(right));
    return;
  }
  invalid_operands("-=", left, right);
}

void value_multiply(RValue& left, const RValue& right) {
  const Kind lk = left.kind();
  const Kind rk = right.kind();
  const bool numeric_left = lk == Kind::Number || lk == Kind::Bool || is_integer(lk);
  if (numeric_left && rk == Kind::String) {
    // A number times a text repeats the text.
    const int32_t times = value_to_int32(left);
    const std::string_view unit = right.string_view();
    const size_t total = times > 0 ? unit.size() * static_cast<size_t>(times) : 0;
    RefString* s = RefString::allocate(static_cast<uint32_t>(total));
    for (int32_t i = 0; i < times; ++i) std::memcpy(s->data() + unit.size() * static_cast<size_t>(i), unit.data(), unit.size());
    left = RValue::adopt(RefString::finish(s, static_cast<uint32_t>(total)));
    return;
  }
  if (lk == Kind::Number || lk == Kind::Bool) {
    left.real *= value_to_real(right);
  } else if (lk == Kind::Int32 && rk == Kind::Int32) {
    set_int32(left, wrap32(wrap64_mul(left.i32, right.i32)));
  } else if (is_integer(lk) && rk == Kind::Int64) {
    set_int64(left, wrap64_mul(integer_of(left), right.i64));
  } else if (lk == Kind::Int64 && rk == Kind::Int32) {
    set_int64(left, wrap64_mul(left.i64, right.i32));
  } else if (is_integer(lk)) {
    set_number(left, static_cast<double>(integer_of(left)) * value_to_real(right));
  } else {
    invalid_operands("*=", left, right);
  }
}

void value_divide(RValue& left, const RValue& right) { divide_or_modulo(left, right, false); }
void value_modulo(RValue& left, const RValue& right) { divide_or_modulo(left, right, true); }

void value_increment(RValue& v) {
  switch (v.kind()) {
    case Kind::String: set_number(v, value_to_real(v) + 1.0); return;
    case Kind::Number: v.real += 1.0; return;
    case Kind::Bool: set_number(v, v.real + 1.0); return;
    case Kind::Int32: v.i32 = wrap32(static_cast<int64_t>(v.i32) + 1); return;
    case Kind::Int64: v.i64 = wrap64_add(v.i64, 1); return;
    default: invalid_operands("++", v, v); return;
  }
}

void value_decrement(RValue& v) {
  switch (v.kind()) {
    case Kind::String: set_number(v, value_to_real(v) - 1.0); return;
    case Kind::Number:
    case Kind::Bool: v.real -= 1.0; return;
    case Kind::Int32: v.i32 = wrap32(static_cast<int64_t>(v.i32) - 1); return;
    case Kind::Int64: v.i64 = wrap64_add(v.i64, -1); return;
    default: invalid_operands("--", v, v); return;
  }
}

RValue operator+(const RValue& a, const RValue& b) {
  RValue r = a;
  value_add(r, b);
  return r;
}
RValue operator-(const RValue& a, const RValue& b) {
  RValue r = a;
  value_subtract(r, b);
  return r;
}
RValue operator*(const RValue& a, const RValue& b) {
  RValue r = a;
  value_multiply(r, b);
  return r;
}
RValue operator/(const RValue& a, const RValue& b) {
  RValue r = a;
  value_divide(r, b);
  return r;
}
RValue operator%(const RValue& a, const RValue& b) {
  RValue r = a;
  value_modulo(r, b);
  return r;
}

int CompareValues(const RValue& a, const RValue& b, double epsilon, bool raise) {
  const Kind ka = a.kind();
  const Kind kb = b.kind();
  if ((ka == Kind::Unset && unset_compares_fatally(kb)) || (kb == Kind::Unset && unset_compares_fatally(ka))) {
    ReportError("Cannot compare unset variables");
    return 1;
  }
  if (is_number_or_bool(ka) && is_number_or_bool(kb)) return compare_doubles(a.real, b.real, epsilon);
  if (ka == Kind::Number && kb == Kind::String) return compare_string_number(b, a.real, false, epsilon, raise);
  if (ka == Kind::String && kb == Kind::Number) return compare_string_number(a, b.real, true, epsilon, raise);
  if ((ka == Kind::Number && is_int_or_ref(kb)) || (is_int_or_ref(ka) && kb == Kind::Number)) {
    // Numbers against 32-bit integers compare in single precision.
    const float fa = ka == Kind::Number ? static_cast<float>(a.real) : static_cast<float>(a.i32);
    const float fb = kb == Kind::Number ? static_cast<float>(b.real) : static_cast<float>(b.i32);
    return sign_of(static_cast<double>(fa - fb), epsilon);
  }
  if (ka == Kind::Number && kb == Kind::Int64) return sign_of(a.real - static_cast<double>(b.i64), epsilon);
  if (ka == Kind::Int64 && kb == Kind::Number) return sign_of(static_cast<double>(a.i64) - b.real, epsilon);
  if (ka == Kind::Bool && is_integral(kb)) {
    return compare_integers(static_cast<int64_t>(a.real), kb == Kind::Int64 ? b.i64 : b.i32);
  }
  if (is_integral(ka) && kb == Kind::Bool) {
    return compare_integers(ka == Kind::Int64 ? a.i64 : a.i32, static_cast<int64_t>(b.real));
  }
  if (ka == Kind::String && kb == Kind::String) return compare_strings(a, b);
  if (ka == Kind::String && is_integral(kb)) return compare_string_integer(a, b, true, raise);
  if (is_integral(ka) && kb == Kind::String) return compare_string_integer(b, a, false, raise);
  if (ka == Kind::String && kb == Kind::Bool) return compare_string_bool(a, b, true, raise);
  if (ka == Kind::Bool && kb == Kind::String) return compare_string_bool(b, a, false, raise);
  if (ka == Kind::Array && kb == Kind::Array) return a.arr && a.arr == b.arr ? 0 : 1;
  if (ka == Kind::Array && kb == Kind::Undefined) return a.arr ? 1 : 0;
  if (ka == Kind::Undefined && kb == Kind::Array) return b.arr ? 1 : 0;
  if ((ka == Kind::Array && is_scalar_or_object(kb)) || (is_scalar_or_object(ka) && kb == Kind::Array)) {
    if (raise) ReportError("Illegal array use");
    return 1;
  }
  if (ka == Kind::Undefined && kb == Kind::Undefined) return 0;
  if ((ka == Kind::Undefined && is_scalar_or_object(kb)) || (is_scalar_or_object(ka) && kb == Kind::Undefined)) {
    return -2;
  }
  if ((ka == Kind::Ptr && kb == Kind::Ptr) || (ka == Kind::Object && kb == Kind::Object)) {
    return a.ptr == b.ptr ? 0 : (a.ptr < b.ptr ? -1 : 1);
  }
  if (ka == Kind::Int32 && kb == Kind::Int32) return compare_integers(a.i32, b.i32);
  const bool a64 = ka == Kind::Int64 && (kb == Kind::Int32 || kb == Kind::Int64 || kb == Kind::Ref);
  const bool ref64 = ka == Kind::Ref && (kb == Kind::Ref || kb == Kind::Int64);
  if (a64 || ref64) {
    return compare_integers(ka == Kind::Int64 ? a.i64 : a.i32, kb == Kind::Int64 ? b.i64 : b.i32);
  }
  return ka != Kind::Number ? 1 : -1;
}

int CompareNumbers(double a, double b) { return compare_doubles(a, b, COMPARE_EPSILON); }

bool operator==(const RValue& a, const RValue& b) { return CompareValues(a, b, COMPARE_EPSILON, false) == 0; }
bool operator!=(const RValue& a, const RValue& b) { return !(a == b); }
bool operator<(const RValue& a, const RValue& b) {
  const int r = CompareValues(a, b, COMPARE_EPSILON, true);
  return r < 0 && r != -2;
}
bool operator<=(const RValue& a, const RValue& b) {
  const int r = CompareValues(a, b, COMPARE_EPSILON, true);
  return r < 1 && r != -2;
}
bool operator>(const RValue& a, const RValue& b) { return CompareValues(a, b, COMPARE_EPSILON, true) > 0; }
bool operator>=(const RValue& a, const RValue& b) { return CompareValues(a, b, COMPARE_EPSILON, true) >= 0; }
