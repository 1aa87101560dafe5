// Conversions of values and the text form.
#include "runtime/Code/Conversions.h"

#include <cerrno>
#include <charconv>
#include <cinttypes>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <locale.h>
#include <unordered_set>

#include "runtime/Code/Array.h"
#include "runtime/Code/Error.h"

namespace {

locale_t c_locale() {
  static locale_t loc = newlocale(LC_ALL_MASK, "C", nullptr);
  return loc;
}

bool is_space(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
bool is_digit(char c) { return c >= '0' && c <= '9'; }

// strtod in the C locale. Plain decimal text, the usual case, goes through
// from_chars, which reads exactly what strtod would but faster.
bool read_double(const char* text, double& out) {
  const char* p = text;
  while (is_space(*p)) ++p;
  const char* body = (*p == '+' || *p == '-') ? p + 1 : p;
  const bool hex = body[0] == '0' && (body[1] == 'x' || body[1] == 'X');
  if (!hex && *p != '+' && (is_digit(*body) || (*body == '.' && is_digit(body[1])))) {
    double d = 0;
    auto [end, ec] = std::from_chars(p, p + std::strlen(p), d);
    if (end != p) {
      // Out-of-range values saturate as strtod's do.
      if (ec == std::errc::result_out_of_range) d = strtod_l(p, nullptr, c_locale());
      out = d;
      return true;
    }
  }
  char* end = nullptr;
  double d = strtod_l(text, &end, c_locale());
  if (end == text) return false;
  out = d;
  return true;
}

[[maybe_unused]] bool read_binary(const char* digits, int64_t& out) {
  char* end = nullptr;
  long long v = std::strtoll(digits, &end, 2);
  if (end == digits) return false;
  out = v;
  return true;
}

void fatal_conversion(const char* words, const char* text) { ReportError(words, text); }

// Guards the text form against arrays that hold themselves.
std::unordered_set<const void*>& arrays_being_printed() {
  static std::unordered_set<const void*> set;
  return set;
}

}  // namespace

bool parse_number(const char* text, double& out) {
  if (text[0] == '0' && text[1] == 'b') {
    int64_t v;
    if (!read_binary(text + 2, v)) return false;
    out = static_cast<double>(v);
    return true;
  }
  if (read_double(text, out)) return true;
  if (std::strncmp(text, "ref ", 4) == 0) return read_double(text + 4, out);
  return false;
}

bool parse_integer(const char* text, int64_t& out) {
  if (text[0] == '0' && text[1] == 'b') return read_binary(text + 2, out);
  char* end = nullptr;
  long long v = std::strtoll(text, &end, 10);
  if (end == text) return false;
  out = v;
  return true;
}

double primitive_number(const char* text) {
  const char* p = text;
  while (is_space(*p)) ++p;
  if (*p == '\0') return 0.0;
  if (p[0] == '0' && (p[1] == 'x' || p[1] == 'X')) return static_cast<double>(std::strtoull(p + 2, nullptr, 16));
  if (std::strcmp(p, "Infinity") == 0 || std::strcmp(p, "+Infinity") == 0) return HUGE_VAL;
  if (std::strcmp(p, "-Infinity") == 0) return -HUGE_VAL;
  return strtod_l(p, nullptr, c_locale());
}

bool value_to_bool(const RValue& v) {
  switch (v.kind()) {
    case Kind::Number:
    case Kind::Bool:
      return v.real > 0.5;
    case Kind::String: {
      if (!v.str || !v.str->text) return false;
      double d;
      if (parse_number(v.str->text, d)) return d > 0.5;
      if (v.string_view() == "true") return true;
      if (v.string_view() == "false") return false;
      fatal_conversion("unable to convert string \"%s\" to bool", v.str->text);
      return false;
    }
    case Kind::Array:
      ReportError("bool argument is array");
      return false;
    case Kind::Ptr:
    case Kind::Object:
      return v.ptr != nullptr;
    case Kind::Undefined:
      return false;
    case Kind::Int32:
    case Kind::Ref:
      return v.i32 > 0;
    case Kind::Int64:
      return v.i64 > 0;
    case Kind::Unset:
      ReportError("bool argument is unset");
      return false;
    default:
      ReportError("bool argument incorrect type %d", static_cast<int>(v.kind()));
      return false;
  }
}

double text_to_real(const char* text) {
  double d;
  if (parse_number(text, d)) return d;
  fatal_conversion("unable to convert string \"%s\" to number", text);
  return 0.0;
}

double value_to_real(const RValue& v) {
  switch (v.kind()) {
    case Kind::Number:
    case Kind::Bool:
      return v.real;
    case Kind::String: {
      RefString* s = v.str;
      if (!s || !s->text) return 0.0;
      if (s->number_known) return s->number;
      const double number = text_to_real(s->text);
      s->remember_number(number);
      return number;
    }
    case Kind::Int32:
    case Kind::Ref:
      return v.i32;
    case Kind::Int64:
      return static_cast<double>(v.i64);
    case Kind::Object:
      // Objects have no number form of their own yet: their text, read as a number.
      return primitive_number(value_to_text(v).c_str());
    case Kind::Unset:
      ReportError("REAL argument is unset");
      return 0.0;
    default:
      ReportError("REAL argument incorrect type %s", kind_name(v.kind()));
      return 0.0;
  }
}

int32_t value_to_int32(const RValue& v) {
  switch (v.kind()) {
    case Kind::Number:
    case Kind::Bool:
      return std::isfinite(v.real) && std::fabs(v.real) < 9.2e18 ? static_cast<int32_t>(static_cast<int64_t>(v.real))
                                                                 : 0;
    case Kind::String: {
      if (!v.str || !v.str->text) return 0;
      int64_t n;
      if (parse_integer(v.str->text, n)) return static_cast<int32_t>(n);
      fatal_conversion("unable to convert string \"%s\" to integer", v.str->text);
      return 0;
    }
    case Kind::Ptr:
    case Kind::Int32:
    case Kind::Int64:
    case Kind::Ref:
      return v.i32;
    case Kind::Array:
      ReportError("I32 argument is array");
      return 0;
    case Kind::Undefined:
      ReportError("I32 argument is undefined");
      return 0;
    case Kind::Object:
      return static_cast<int32_t>(value_to_real(v));
    case Kind::Unset:
      ReportError("I32 argument is unset");
      return 0;
    default:
      ReportError("I32 argument incorrect type %d", static_cast<int>(v.kind()));
      return 0;
  }
}

int64_t value_to_int64(const RValue& v) {
  switch (v.kind()) {
    case Kind::Number:
    case Kind::Bool:
      if (std::isnan(v.real)) return 0;
      if (v.real >= 9223372036854775807.0) return INT64_MAX;
      if (v.real <= -9223372036854775808.0) return INT64_MIN;
      return static_cast<int64_t>(v.real);
    case Kind::String: {
      if (!v.str || !v.str->text) return 0;
      int64_t n;
      if (parse_integer(v.str->text, n)) return n;
      fatal_conversion("unable to convert string \"%s\" to int64", v.str->text);
      return 0;
    }
    case Kind::Ptr:
    case Kind::Int64:
      return v.i64;
    case Kind::Int32:
    case Kind::Ref:
      return v.i32;
    case Kind::Array:
      ReportError("INT64 argument is array");
      return 0;
    case Kind::Undefined:
      ReportError("I64 argument is undefined");
      return 0;
    case Kind::Object:
      return static_cast<int64_t>(value_to_real(v));
    case Kind::Unset:
      ReportError("I64 argument is unset");
      return 0;
    default:
      ReportError("I64 argument incorrect type %d", static_cast<int>(v.kind()));
      return 0;
  }
}

size_t format_number(double d, char* buffer) {
  if (std::isnan(d)) return std::strlen(std::strcpy(buffer, "NaN"));
  if (std::isinf(d)) return std::strlen(std::strcpy(buffer, d > 0 ? "inf" : "-inf"));
  if (std::fabs(d) < 9.2e18 && d == std::trunc(d)) {
    auto r = std::to_chars(buffer, buffer + 350, static_cast<long long>(d));
    return static_cast<size_t>(r.ptr - buffer);
  }
  // to_chars with a precision rounds exactly as printf("%.2f") does, and
  // ignores the locale.
  auto r = std::to_chars(buffer, buffer + 350, d, std::chars_format::fixed, 2);
  return static_cast<size_t>(r.ptr - buffer);
}

void append_text_form(std::string& out, const RValue& v) {
  char buf[352];
  switch (v.kind()) {
    case Kind::Number:
      out.append(buf, format_number(v.real, buf));
      return;
    case Kind::String:
      out.append(v.string_view());
      return;
    case Kind::Array: {
      if (!v.arr) {
        out += "null";
        return;
      }
      auto& printing = arrays_being_printed();
      if (!printing.insert(v.arr).second) {
        out += "\"Warning: recursive array found\"";
        return;
      }
      out += "[ ";
      for (int32_t i = 0; i < v.arr->length; ++i) {
        if (i > 0) out += ",";
        const RValue& e = v.arr->elements[i];
        if (e.is(Kind::String)) {
          out += '"';
          out.append(e.string_view());
          out += '"';
        } else {
          append_text_form(out, e);
        }
      }
      out += " ]";
      printing.erase(v.arr);
      return;
    }
    case Kind::Ptr:
      if (!v.ptr) {
        out += "null";
      } else {
        std::snprintf(buf, sizeof buf, "%p", v.ptr);
        out += buf;
      }
      return;
    case Kind::Undefined:
      out += "undefined";
      return;
    case Kind::Object:
      // Structs come with the object layer; until one prints itself, a null
      // object reads "null".
      if (!v.obj) out += "null";
      return;
    case Kind::Int32:
      out.append(buf, static_cast<size_t>(std::to_chars(buf, buf + 32, v.i32).ptr - buf));
      return;
    case Kind::Int64:
      out.append(buf, static_cast<size_t>(std::to_chars(buf, buf + 32, v.i64).ptr - buf));
      return;
    case Kind::Bool:
      out += v.real != 0.0 ? "1" : "0";
      return;
    case Kind::Ref:
      std::snprintf(buf, sizeof buf, "ref %s %d", ref_type_name(v.ref_type()), v.ref_index());
      out += buf;
      return;
    case Kind::Unset:
      ReportError("STRING argument is unset");
      return;
    default:
      return;
  }
}

std::string value_to_text(const RValue& v) {
  std::string out;
  append_text_form(out, v);
  return out;
}
