// The built-in table and the argument getters.
#include "runtime/Code/Builtins.h"

#include <cmath>

#include <unordered_map>
#include <vector>

#include "runtime/Code/Array.h"
#include "runtime/Code/Conversions.h"
#include "runtime/Code/Error.h"
#include "runtime/Code/FrameArena.h"

namespace {

struct Table {
  std::vector<BuiltinRow> rows;
  std::unordered_map<std::string_view, int> index;  // views into rows' names
};

Table& table() {
  static Table t;
  return t;
}

const BuiltinRow* g_current_row = nullptr;

bool begins_with_digit(const RValue& v) {
  const char* t = v.str ? v.str->text : nullptr;
  return t && *t >= '0' && *t <= '9';
}

void wrong_type(const RValue* args, int i, const char* expecting) {
  ReportError("%s argument %d incorrect type (%s) expecting a %s", builtin_current_name(), i + 1,
              kind_name(args[i].kind()), expecting);
}

// The number behind the numeric getters; false when the kind isn't one.
bool numeric_argument(const RValue& v, double& out) {
  switch (v.kind()) {
    case Kind::Number:
    case Kind::Bool:
      out = v.real;
      return true;
    case Kind::Int32:
    case Kind::Ref:
      out = v.i32;
      return true;
    case Kind::Int64:
      out = static_cast<double>(v.i64);
      return true;
    case Kind::String:
      if (!begins_with_digit(v)) return false;
      out = primitive_number(v.str->text);
      return true;
    case Kind::Object:
      out = value_to_real(v);
      return true;
    default:
      return false;
  }
}

int64_t truncate_to_int64(double d) {
  if (!(d == d)) return 0;
  if (d >= 9223372036854775807.0) return INT64_MAX;
  if (d <= -9223372036854775808.0) return INT64_MIN;
  return static_cast<int64_t>(d);
}

}  // namespace

int builtin_register(const char* name, BuiltinRoutine routine, int argc) {
  Table& t = table();
  if (auto it = t.index.find(name); it != t.index.end()) return it->second;
  // The table grows by 500 rows at a time; the index keeps views into the
  // names, so the rows must not move once indexed: rebuild after growing.
  if (t.rows.size() == t.rows.capacity()) {
    t.rows.reserve(t.rows.capacity() + 500);
    t.index.clear();
    for (size_t i = 0; i < t.rows.size(); ++i) t.index.emplace(t.rows[i].name, static_cast<int>(i));
  }
  t.rows.push_back({name, routine, argc});
  const int index = static_cast<int>(t.rows.size() - 1);
  t.index.emplace(t.rows.back().name, index);
  return index;
}

int builtin_find(std::string_view name) {
  const Table& t = table();
  auto it = t.index.find(name);
  return it == t.index.end() ? -1 : it->second;
}

const BuiltinRow* builtin_row(int index) {
  const Table& t = table();
  if (index < 0 || index >= static_cast<int>(t.rows.size())) return nullptr;
  return &t.rows[static_cast<size_t>(index)];
}

int builtin_count() { return static_cast<int>(table().rows.size()); }

void builtin_call(int index, RValue& result, CInstance* self, CInstance* other, int argc, RValue* args) {
  const BuiltinRow* row = builtin_row(index);
  if (!row) return;
  result.clear(Kind::Undefined);
  struct RowScope {
    const BuiltinRow* previous = g_current_row;
    ~RowScope() { g_current_row = previous; }
  } scope;
  g_current_row = row;
  row->routine(result, self, other, argc, args);
}

bool builtin_call(std::string_view name, RValue& result, CInstance* self, CInstance* other, int argc,
                  RValue* args) {
  const int index = builtin_find(name);
  if (index < 0) return false;
  builtin_call(index, result, self, other, argc, args);
  return true;
}

const char* builtin_current_name() { return g_current_row ? g_current_row->name.c_str() : ""; }

// ---------------------------------------------------------------------------
// Getters

double arg_real(const RValue* args, int i) {
  double d;
  if (numeric_argument(args[i], d)) return d;
  wrong_type(args, i, "Number (QvGR)");
  return 0.0;
}

float arg_float(const RValue* args, int i) {
  double d;
  if (numeric_argument(args[i], d)) return static_cast<float>(d);
  wrong_type(args, i, "Number (QvGF)");
  return 0.0f;
}

int32_t arg_int32(const RValue* args, int i) {
  const RValue& v = args[i];
  if (v.is(Kind::Int32) || v.is(Kind::Ref)) return v.i32;
  if (v.is(Kind::Int64)) return static_cast<int32_t>(v.i64);
  double d;
  if (numeric_argument(v, d)) return static_cast<int32_t>(truncate_to_int64(d));
  wrong_type(args, i, "Number (QvGI32)");
  return 0;
}

uint32_t arg_uint32(const RValue* args, int i) {
  const RValue& v = args[i];
  if (v.is(Kind::Int32) || v.is(Kind::Ref)) return static_cast<uint32_t>(v.i32);
  if (v.is(Kind::Int64)) return static_cast<uint32_t>(v.i64);
  double d;
  if (numeric_argument(v, d)) return static_cast<uint32_t>(truncate_to_int64(d));
  wrong_type(args, i, "Number (QvGU32)");
  return 0;
}

int64_t arg_int64(const RValue* args, int i) {
  const RValue& v = args[i];
  if (v.is(Kind::Int32) || v.is(Kind::Ref)) return v.i32;
  if (v.is(Kind::Int64)) return v.i64;
  double d;
  if (numeric_argument(v, d)) return truncate_to_int64(d);
  wrong_type(args, i, "Number");
  return 0;
}

bool arg_bool(const RValue* args, int i) {
  const RValue& v = args[i];
  switch (v.kind()) {
    case Kind::Number:
      return v.real > 0.5;
    case Kind::Bool:
      return v.real != 0.0;
    case Kind::Ptr:
    case Kind::Object:
      return v.ptr != nullptr;
    case Kind::Int32:
    case Kind::Ref:
      return v.i32 > 0;
    case Kind::Int64:
      return v.i64 > 0;
    case Kind::Undefined:
      return false;
    default:
      wrong_type(args, i, "Boolean (QvGB)");
      return false;
  }
}

std::string_view arg_text(const RValue* args, int i) {
  const RValue& v = args[i];
  switch (v.kind()) {
    case Kind::String:
      return v.str && v.str->text ? v.str->view() : std::string_view("", 0);
    case Kind::Number:
    case Kind::Array:
    case Kind::Ptr:
    case Kind::Undefined:
    case Kind::Object:
    case Kind::Int32:
    case Kind::Int64:
    case Kind::Bool:
    case Kind::Ref: {
      if (v.is(Kind::Number)) {
        char buf[352];
        return frame_arena().copy({buf, format_number(v.real, buf)});
      }
      return frame_arena().copy(value_to_text(v));
    }
    default:
      wrong_type(args, i, "String (QvGS)");
      return std::string_view("", 0);
  }
}

void* arg_pointer(const RValue* args, int i) {
  if (args[i].is(Kind::Ptr)) return args[i].ptr;
  wrong_type(args, i, "Pointer");
  return nullptr;
}

intptr_t arg_number_or_pointer(const RValue* args, int i) {
  const RValue& v = args[i];
  switch (v.kind()) {
    case Kind::Number:
      return static_cast<intptr_t>(truncate_to_int64(v.real));
    case Kind::Ptr:
      return reinterpret_cast<intptr_t>(v.ptr);
    case Kind::Int32:
    case Kind::Ref:
      return v.i32;
    case Kind::Int64:
      return static_cast<intptr_t>(v.i64);
    default:
      wrong_type(args, i, "Number or Pointer");
      return 0;
  }
}

int32_t arg_ref(const RValue* args, int i, uint32_t type_code, int32_t count) {
  const RValue& v = args[i];
  int32_t index;
  if (v.is(Kind::Ref)) {
    if (v.ref_type() != type_code) {
      wrong_type(args, i, ref_type_name(type_code));
      return -1;
    }
    index = v.ref_index();
  } else {
    double d;
    if (!numeric_argument(v, d)) {
      wrong_type(args, i, ref_type_name(type_code));
      return -1;
    }
    index = static_cast<int32_t>(truncate_to_int64(d));
  }
  if (index < 0 || index >= count) {
    ReportError("%s argument %d invalid reference to (%s)", builtin_current_name(), i + 1, ref_type_name(type_code));
    return -1;
  }
  return index;
}

RefArray* arg_array(const RValue* args, int i, bool for_write) {
  const RValue& v = args[i];
  if (!v.is(Kind::Array) || !v.arr) {
    ReportError("%s :: argument %d is not an array", builtin_current_name(), i + 1);
    return nullptr;
  }
  if (for_write && (v.arr->flags & RefArray::IMMUTABLE)) {
    ReportError("%s :: argument %d cannot be an immutable array", builtin_current_name(), i + 1);
    return nullptr;
  }
  return v.arr;
}

int32_t index_of_handle(const RValue& v, uint32_t type_code) {
  switch (v.kind()) {
    case Kind::Ref:
      return v.ref_type() == type_code ? v.ref_index() : -1;
    case Kind::Number:
    case Kind::Bool:
      return std::isfinite(v.real) ? static_cast<int32_t>(v.real) : -1;
    case Kind::Int32:
      return v.i32;
    case Kind::Int64:
      return static_cast<int32_t>(v.i64);
    default:
      return -1;
  }
}
