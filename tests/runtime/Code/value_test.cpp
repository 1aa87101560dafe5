#include <gtest/gtest.h>

#include <charconv>
#include <clocale>
#include <cmath>
#include <string>

#include "runtime/Code/Array.h"
#include "runtime/Code/Conversions.h"
#include "runtime/Code/Operators.h"
#include "support/Fatal.h"

namespace {
RValue num(double d) { return RValue::number(d); }
RValue text(const char* t) { return RValue::text(t); }
// A value of `kind` with payload 0: a null string, array or struct.
RValue of_kind(Kind kind) { RValue v; v.clear(kind); return v; }
RValue i32(int32_t n) { return RValue::int32(n); }
RValue i64(int64_t n) { return RValue::int64(n); }
const RValue yes = RValue::boolean(true);
const RValue undef = RValue::undefined();

// Two trues added: a bool of value 2.
const RValue two_trues = [] { RValue v = RValue::boolean(true); v.real = 2; return v; }();

RValue apply(const std::string& op, RValue a, const RValue& b) {
  if (op == "++") value_increment(a);
  if (op == "--") value_decrement(a);
  return op == "+" ? a + b : op == "-" ? a - b : op == "*" ? a * b : op == "/" ? a / b : op == "%" ? a % b : a;
}

// The shortest text that reads back as `d`, in any locale.
std::string exact(double d) {
  char buffer[40];
  return std::string(buffer, std::to_chars(buffer, buffer + sizeof buffer, d).ptr);
}

// What conversion `to` makes of `v`, as text: 'p' parse_number and 'n'
// primitive_number of a text, 'r' real, 'b' bool, 'i' int32, 'l' int64, 't' the text form.
std::string convert(char to, const RValue& v) {
  double d = 0;
  switch (to) {
    case 'p': return parse_number(v.string_view().data(), d) ? exact(d) : "none";
    case 'n': return exact(primitive_number(v.string_view().data()));
    case 'r': return exact(value_to_real(v));
    case 'b': return value_to_bool(v) ? "true" : "false";
    case 'i': return std::to_string(value_to_int32(v));
    case 'l': return std::to_string(value_to_int64(v));
    default: return value_to_text(v);
  }
}

// An object that counts its deaths.
struct Counted : OwnedObject {
  explicit Counted(int& deaths) : deaths_(deaths) {}
  ~Counted() override { ++deaths_; }
  int& deaths_;
};
}  // namespace

TEST(Value, KindsTheirNamesAndWhichAreManaged) {
  const struct { RValue v; const char* kind; bool managed; } rows[] = {
      {RValue(), "unset", false}, {num(2.5), "number", false}, {yes, "bool", false}, {i32(-7), "int32", false},
      {i64(1LL << 40), "int64", false}, {undef, "undefined", false}, {text("x"), "string", true},
      {array_create(1), "array", true}, {of_kind(Kind::Object), "struct", true},
      {RValue::ref(REF_SPRITE, 1), "ref", false}, {RValue::pointer(nullptr), "ptr", false},
      {of_kind(Kind::Vec44), "vec44", false}, {of_kind(static_cast<Kind>(99)), "unknown", false},
      {array_create(3).arr->elements[1], "number", false},  // a fresh array holds all-zero records: 0
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.kind);
    EXPECT_STREQ(kind_name(row.v.kind()), row.kind);
    EXPECT_EQ(row.v.is_managed(), row.managed);
  }
  EXPECT_EQ(undef.i64, 0);
}

TEST(Value, StringsAreSharedByCountConstantsNeverFreed) {
  RValue a = text("condiviso");
  {
    RValue b = a;
    RValue c;
    c = b;
    EXPECT_EQ(a.str->refcount, 3);
  }
  EXPECT_EQ(a.str->refcount, 1);
  a = a;  // self-assignment changes nothing
  EXPECT_EQ(a.str->refcount, 1);
  EXPECT_EQ(a.string_view(), "condiviso");

  static RefStringConstant hello("ciao");
  {
    RValue constant = RValue::constant(hello);
    RValue copy = constant;
    EXPECT_EQ(copy.string_view(), "ciao");
    EXPECT_LT(hello.record.size, 0);
  }
  EXPECT_EQ(hello.record.refcount, 1);
  EXPECT_EQ(hello.record.length(), 4u);
}

TEST(Value, AssigningAnElementToItsOnlyArraysHolderKeepsTheElement) {
  RValue outer = array_create(1);
  *array_slot(outer, 0) = array_create(2, text("x"));
  // `outer` is the only holder of the outer array, and the outer array the
  // only holder of the inner one.
  outer = outer.arr->elements[0];
  ASSERT_TRUE(outer.is(Kind::Array));
  EXPECT_EQ(outer.arr->refcount, 1);
  EXPECT_EQ(value_to_text(outer), "[ \"x\",\"x\" ]");
}

TEST(Value, OwnedPointerIsDestroyedOnRelease) {
  int deaths = 0;
  {
    RValue p = RValue::owned_pointer(new Counted(deaths));
  }
  EXPECT_EQ(deaths, 1);
  { RValue plain = RValue::pointer(&deaths); }
  EXPECT_EQ(deaths, 1);
}

TEST(Conversion, EveryKindToEveryFormWithTheFatalWords) {
  int anything = 0;
  const struct Row { char to; RValue from; const char* expected; const char* fatal = nullptr; } rows[] = {
      // Decimal prefixes, binary, hexadecimal, the C library's words, "ref N".
      {'p', text("12abc"), "12"}, {'p', text("  -3.5e2"), "-350"}, {'p', text("+7"), "7"}, {'p', text("0x1A"), "26"},
      {'p', text("0b101"), "5"}, {'p', text(".5"), "0.5"}, {'p', text("inf"), "inf"}, {'p', text("ref 42"), "42"},
      {'p', text("1e400"), "inf"}, {'p', text("abc"), "none"}, {'p', text("0b"), "none"}, {'n', text("   "), "0"},
      {'n', text(" 0x10"), "16"}, {'n', text("2.5kg"), "2.5"}, {'n', text("-Infinity"), "-inf"},
      {'n', text("+Infinity"), "inf"}, {'r', text("12abc"), "12"}, {'r', yes, "1"}, {'r', i32(-4), "-4"},
      {'r', i64(1LL << 40), "1099511627776"}, {'r', RValue::ref(REF_SOUND, 9), "9"},
      {'r', text("abc"), "", "unable to convert string \"abc\" to number"},
      {'r', undef, "", "REAL argument incorrect type undefined"}, {'r', RValue(), "", "REAL argument is unset"},
      // Numbers are true above one half.
      {'b', num(0.5), "false"}, {'b', num(0.51), "true"}, {'b', text("1"), "true"}, {'b', text("true"), "true"},
      {'b', text("false"), "false"}, {'b', undef, "false"}, {'b', i64(3), "true"}, {'b', i32(0), "false"},
      {'b', RValue::pointer(&anything), "true"}, {'b', text("forse"), "", "unable to convert string \"forse\" to bool"},
      {'b', array_create(0), "", "bool argument is array"}, {'b', RValue(), "", "bool argument is unset"},
      {'i', num(-2.9), "-2"}, {'i', text("42x"), "42"}, {'i', text("0b11"), "3"}, {'i', i64((1LL << 32) + 5), "5"},
      {'i', text("x"), "", "unable to convert string \"x\" to integer"}, {'i', undef, "", "I32 argument is undefined"},
      {'i', array_create(0), "", "I32 argument is array"}, {'i', RValue(), "", "I32 argument is unset"},
      {'l', num(NAN), "0"}, {'l', num(INFINITY), "9223372036854775807"}, {'l', num(-INFINITY), "-9223372036854775808"},
      {'l', i32(-1), "-1"}, {'l', text("y"), "", "unable to convert string \"y\" to int64"},
      {'l', array_create(0), "", "INT64 argument is array"}, {'l', RValue(), "", "I64 argument is unset"},
      {'l', undef, "", "I64 argument is undefined"},
      // Numbers print whole or with two decimals.
      {'t', num(0.1 + 0.2), "0.30"}, {'t', num(2.0), "2"}, {'t', num(-0.0), "0"}, {'t', num(NAN), "NaN"},
      {'t', num(1e20), "100000000000000000000.00"}, {'t', num(-INFINITY), "-inf"}, {'t', yes, "1"},
      {'t', undef, "undefined"}, {'t', i32(-12), "-12"}, {'t', i64(1LL << 40), "1099511627776"},
      {'t', RValue::pointer(nullptr), "null"}, {'t', RValue::ref(0x2000002, 4), "ref ds_map 4"},
      {'t', RValue::ref(0x2000020, 1), "ref ds_priority 1"}, {'t', RValue::ref(0x4000010, 2), "ref particle type 2"},
      {'t', RValue::ref(0x3000000, 0), "ref unknown 0"},
      {'t', asset_constant((1u << 24) | 7u), "ref sprite 7"},  // type byte 1 in the top byte of a compiled constant
      {'t', of_kind(Kind::Array), "null"}, {'t', RValue(), "", "STRING argument is unset"},
  };
  // A comma locale must change nothing: where one is installed, every row is checked in it too.
  struct Restore { std::string name; ~Restore() { std::setlocale(LC_NUMERIC, name.c_str()); } };
  const Restore restore{std::setlocale(LC_NUMERIC, nullptr)};
  for (const char* locale : {"C", "it_IT.UTF-8"}) {
    if (!std::setlocale(LC_NUMERIC, locale)) continue;
    for (const Row& row : rows) {
      SCOPED_TRACE(testing::Message() << locale << " row " << &row - rows << " to " << row.to);
      if (row.fatal) EXPECT_FATAL(convert(row.to, row.from), row.fatal);
      else EXPECT_EQ(convert(row.to, row.from), row.expected);
    }
  }
}

TEST(Conversion, AnArrayHoldingItselfPrintsAWarning) {
  RValue a = array_create(1);
  RefArray* body = a.arr;
  // Build the cycle by hand; break it again before the test ends.
  body->elements[0] = a;
  EXPECT_EQ(value_to_text(a), "[ \"Warning: recursive array found\" ]");
  body->elements[0] = num(0);
}

TEST(Arithmetic, KindOfTheLeftSideDecidesTheResultAndItsWords) {
  // The expected value gives the result's kind and value; a fatal row gives the words instead.
  struct Row { const char* op; RValue a, b; RValue expected; const char* fatal = nullptr; };
  const Row rows[] = {
      {"+", num(1), text("2"), num(3)}, {"+", text("ab"), text("cd"), text("abcd")}, {"+", yes, yes, two_trues},
      {"+", i32(2), i64(1LL << 40), i64((1LL << 40) + 2)}, {"+", i64(5), i32(1), i64(6)},
      {"+", i32(INT32_MAX), i32(1), i32(INT32_MIN)}, {"+", i32(2), num(0.5), num(2.5)},  // integers wrap
      {"+", text("1"), num(2), {}, "unable to add a number to string"},
      {"+", undef, num(1), {}, "invalid type for += lhs=undefined (type=5), rhs=1 (type=0)"},
      {"-", text("1"), num(2), num(-1)}, {"-", i32(1), i32(3), i32(-2)},  // a left string turns into a number
      {"-", undef, num(1), {}, "invalid type for -= lhs=undefined (type=5), rhs=1 (type=0)"},
      // A number times a text repeats the text.
      {"*", num(3), text("ab"), text("ababab")}, {"*", num(0), text("ab"), text("")}, {"*", num(2.5), num(2), num(5)},
      {"*", i32(3), i32(4), i32(12)}, {"*", i32(3), i64(4), i64(12)}, {"*", i64(3), i32(4), i64(12)},
      {"*", i32(3), num(0.5), num(1.5)},
      {"*", text("ab"), num(2), {}, "invalid type for *= lhs=ab (type=1), rhs=2 (type=0)"},
      {"/", num(1), num(0), num(INFINITY)}, {"/", text("9"), num(2), num(4.5)}, {"/", i32(7), i32(2), i32(3)},
      {"/", i32(7), i64(2), i64(3)}, {"/", i32(7), num(2), num(3.5)}, {"/", i32(INT32_MIN), i32(-1), i32(INT32_MIN)},
      {"/", num(1), RValue::pointer(nullptr), {}, "invalid type for /= lhs=1 (type=0), rhs=null (type=3)"},
      {"%", num(7.5), num(2), num(1.5)}, {"%", i32(-7), i32(3), i32(-1)}, {"/", i32(7), i32(0), {}, "divide by zero"},
      {"%", num(1), num(0), {}, "unable to mod by 0"}, {"%", i64(1), i32(0), {}, "unable to mod by 0"},
      {"%", i32(1), num(0), {}, "unable to mod by 0"},
      // A bool counts up as a number and down as a bool.
      {"++", text("4"), {}, num(5)}, {"++", yes, {}, num(2)}, {"--", yes, {}, RValue::boolean(false)},
      {"++", i32(INT32_MAX), {}, i32(INT32_MIN)}, {"--", i64(0), {}, i64(-1)},
      {"++", undef, {}, {}, "invalid type for ++ lhs=undefined (type=5), rhs=undefined (type=5)"},
      {"--", undef, {}, {}, "invalid type for -- lhs=undefined (type=5), rhs=undefined (type=5)"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(testing::Message() << "row " << &row - rows << ": " << row.op);
    if (row.fatal) { EXPECT_FATAL(apply(row.op, row.a, row.b), row.fatal); continue; }
    const RValue r = apply(row.op, row.a, row.b);
    EXPECT_STREQ(kind_name(r.kind()), kind_name(row.expected.kind()));
    if (r.kind() != row.expected.kind()) continue;
    if (r.is(Kind::String)) EXPECT_EQ(r.string_view(), row.expected.string_view());
    else EXPECT_EQ(value_to_real(r), value_to_real(row.expected));
  }
}

TEST(Compare, OrderAcrossKindsWithTheFatalWordsOfFailedConversions) {
  const RValue arr = array_create(2);
  // The order CompareValues gives without raising errors, and the words where errors are raised.
  const struct Row { RValue a, b; int order; const char* fatal = nullptr; } rows[] = {
      {num(1.000009), num(1), 0}, {num(1.00002), num(1), 1}, {num(1), num(2), -1},  // the epsilon
      {num(INFINITY), num(INFINITY), 0}, {num(NAN), num(1), 1}, {text("2"), num(2), 0}, {num(2), text("3"), -1},
      {text("a"), num(0), 1, "unable to convert string \"a\" to float"}, {RValue::ref(REF_SPRITE, 3), num(3), 0},
      {text("b"), text("a"), 1}, {text("è"), text("z"), 1},  // bytes compare unsigned
      {of_kind(Kind::String), text(""), 0}, {of_kind(Kind::String), text("x"), 1}, {text("5"), i64(5), 0},
      {text("z"), i32(1), 1, "unable to convert string \"z\" to int64"}, {text("true"), yes, 0},
      {text("z"), yes, 1, "unable to convert string \"z\" to bool"}, {i32(3), i32(5), -1}, {i64(5), i32(5), 0},
      {yes, i32(1), 0},
      {num(16777217), i32(16777216), 0}, {num(16777217), i64(16777216), 1},  // int32 meets single precision
      {num(1), undef, -2}, {undef, undef, 0}, {arr, undef, 1}, {of_kind(Kind::Array), undef, 0},
      {arr, arr, 0}, {arr, array_create(2), 1}, {arr, num(1), 1, "Illegal array use"},  // one body is equal
      {undef, text("x"), 1}, {num(1), RValue::pointer(nullptr), -1},  // no rule: the left kind decides
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(testing::Message() << "row " << &row - rows);
    if (row.fatal) EXPECT_FATAL(CompareValues(row.a, row.b, 1e-5, true), row.fatal);
    EXPECT_EQ(CompareValues(row.a, row.b, 1e-5, false), row.order);
  }
  // The operators use the default epsilon; an incomparable pair is in no order.
  EXPECT_TRUE(num(0.1) + num(0.2) == num(0.3));
  EXPECT_FALSE(num(1) == undef);
  EXPECT_FALSE(undef < num(1));
  EXPECT_FALSE(undef >= num(1));
  // An unset side is fatal even where conversions are not.
  EXPECT_FATAL((void)(RValue() == num(1)), "Cannot compare unset variables");
}
