#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "runtime/Code/Array.h"
#include "runtime/Code/Builtins.h"
#include "runtime/Code/Conversions.h"
#include "runtime/Code/FrameArena.h"
#include "support/Fatal.h"

namespace {

RValue num(double d) { return RValue::number(d); }
RValue text(const char* t) { return RValue::text(t); }

// Numbers 0..n-1 as an array.
RValue counting(int n) {
  RValue a = array_create(n);
  for (int i = 0; i < n; ++i) *array_slot(a, i) = num(i);
  return a;
}

// Probe built-ins, registered at start: each hands back what one argument
// getter made of its first argument.
#define PROBE(name, answer)                      \
  BUILTIN_ADAPTER(name) { result = (answer); } \
  [[maybe_unused]] const int name##_row = builtin_register(#name, builtin_##name, -1);
PROBE(get_real, num(arg_real(args, 0)))
PROBE(get_float, num(arg_float(args, 0)))
PROBE(get_int32, num(arg_int32(args, 0)))
PROBE(get_uint32, num(arg_uint32(args, 0)))
PROBE(get_int64, num(static_cast<double>(arg_int64(args, 0))))
PROBE(get_bool, RValue::boolean(arg_bool(args, 0)))
PROBE(get_text, RValue::text(arg_text(args, 0)))
PROBE(get_pointer, RValue::pointer(arg_pointer(args, 0)))
PROBE(get_num_ptr, num(static_cast<double>(arg_number_or_pointer(args, 0))))
PROBE(get_sound, num(arg_ref(args, 0, REF_SOUND, 4)))
PROBE(get_array, RValue::boolean(arg_array(args, 0, argc > 1) != nullptr))  // a second argument: to write to

}  // namespace

TEST(BuiltinTable, RegistersOnceFindsByNameAndGrowsPastFiveHundredRows) {
  register_runtime_builtins();
  const int count = builtin_count();
  const int row = builtin_find("string");
  ASSERT_GE(row, 0);
  EXPECT_EQ(builtin_register("string", nullptr, 1), row);  // a second registration keeps the first
  EXPECT_EQ(builtin_count(), count);
  EXPECT_EQ(builtin_find("no_such_builtin"), -1);
  RValue result, arg;
  EXPECT_FALSE(builtin_call("no_such_builtin", result, nullptr, nullptr, 1, &arg));
  std::vector<std::string> names;
  for (int i = 0; i < 1200; ++i) names.push_back("grow_probe_" + std::to_string(i));
  for (const std::string& n : names) builtin_register(n.c_str(), builtin_get_real, 0);
  for (const std::string& n : names) ASSERT_EQ(builtin_row(builtin_find(n))->name, n);
  EXPECT_EQ(builtin_find("string"), row);
}

TEST(BuiltinTable, BuiltinsByNameWithTheirAnswersAndTheGettersWords) {
  register_runtime_builtins();
  RValue grid = array_create(2);
  *array_slot(grid, 1) = counting(3);
  RValue frozen = array_create(1);
  frozen.arr->flags |= RefArray::IMMUTABLE;
  const RValue undef = RValue::undefined(), null = RValue::pointer(nullptr);
  // The answer is the kind and the text form of the result, which arrives undefined.
  struct Row { const char* name; std::vector<RValue> args; const char* answer; const char* fatal = nullptr; };
  const Row rows[] = {
      {"string", {num(2.5)}, "string:2.50"}, {"string", {text("x")}, "string:x"}, {"is_string", {num(2.5)}, "bool:0"},
      {"array_create", {num(3)}, "array:[ 0,0,0 ]"}, {"array_create", {num(-1)}, "array:[  ]"},
      {"array_create", {num(2), text("a")}, "array:[ \"a\",\"a\" ]"}, {"array_length", {counting(4)}, "number:4"},
      {"array_length_1d", {num(0)}, "undefined:undefined"},  // nothing written for a non-array
      {"array_height_2d", {num(0)}, "number:0"}, {"array_height_2d", {grid}, "number:2"},
      {"array_length_2d", {grid, num(1)}, "number:3"}, {"array_length_2d", {grid, num(0)}, "number:0"},
      {"array_length_2d", {grid, num(-1)}, "number:0"},
      {"array_copy", {counting(2), num(0)}, "", "array_copy :: takes 5 arguments"},
      {"array_delete", {counting(2), num(0)}, "", "array_delete :: takes 3 arguments."},
      // A text that begins with a digit is read as a primitive number.
      {"get_real", {text("12abc")}, "number:12"}, {"get_int32", {num(-2.7)}, "number:-2"},
      {"get_uint32", {num(-1)}, "number:4294967295"}, {"get_bool", {undef}, "bool:0"},
      {"get_bool", {num(0.6)}, "bool:1"}, {"get_text", {num(123)}, "string:123"},
      {"get_text", {undef}, "string:undefined"}, {"get_sound", {RValue::ref(REF_SOUND, 3)}, "number:3"},
      {"get_sound", {num(2)}, "number:2"},
      {"get_real", {text("abc")}, "", "get_real argument 1 incorrect type (string) expecting a Number (QvGR)"},
      {"get_float", {undef}, "", "get_float argument 1 incorrect type (undefined) expecting a Number (QvGF)"},
      {"get_int32", {array_create(1)}, "", "get_int32 argument 1 incorrect type (array) expecting a Number (QvGI32)"},
      {"get_uint32", {null}, "", "get_uint32 argument 1 incorrect type (ptr) expecting a Number (QvGU32)"},
      {"get_int64", {text("x")}, "", "get_int64 argument 1 incorrect type (string) expecting a Number"},
      {"get_bool", {text("1")}, "", "get_bool argument 1 incorrect type (string) expecting a Boolean (QvGB)"},
      {"get_text", {RValue()}, "", "get_text argument 1 incorrect type (unset) expecting a String (QvGS)"},
      {"get_pointer", {num(1)}, "", "get_pointer argument 1 incorrect type (number) expecting a Pointer"},
      {"get_num_ptr", {text("1")}, "", "get_num_ptr argument 1 incorrect type (string) expecting a Number or Pointer"},
      {"get_sound", {RValue::ref(REF_SPRITE, 1)}, "", "get_sound argument 1 incorrect type (ref) expecting a sound"},
      {"get_sound", {num(9)}, "", "get_sound argument 1 invalid reference to (sound)"},
      {"get_array", {num(1)}, "", "get_array :: argument 1 is not an array"},
      {"get_array", {frozen, num(1)}, "", "get_array :: argument 1 cannot be an immutable array"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(testing::Message() << "row " << &row - rows << ": " << row.name);
    std::vector<RValue> args = row.args;
    RValue result = num(5);
    const auto call = [&] { return builtin_call(row.name, result, nullptr, nullptr, int(args.size()), args.data()); };
    if (row.fatal) { EXPECT_FATAL(call(), row.fatal); continue; }
    EXPECT_TRUE(call());
    EXPECT_EQ(kind_name(result.kind()) + (":" + value_to_text(result)), row.answer);
  }
  EXPECT_STREQ(builtin_current_name(), "");  // outside any built-in again, fatal or not
}

TEST(FrameArena, KeepsEarlierTextWhileGrowingAndOneBlockOfItsSizeOnReset) {
  FrameArena arena(64);
  const std::string_view first = arena.copy("prima");
  std::vector<std::string_view> more;
  for (int i = 0; i < 100; ++i) more.push_back(arena.copy(std::string(40, static_cast<char>('a' + i % 26))));
  EXPECT_EQ(first, "prima");
  EXPECT_EQ(more[3], std::string(40, 'd'));
  EXPECT_EQ(first.data()[first.size()], '\0');
  const size_t grown = arena.capacity();
  EXPECT_GT(grown, 64u);
  arena.reset();
  EXPECT_EQ(arena.capacity(), grown);
  EXPECT_EQ(arena.copy("dopo"), "dopo");
}

TEST(ArrayWrite, CopiesAnArraySharedWithAnotherOwnerThenWritesInPlace) {
  int other_instance = 0, this_instance = 0;
  RValue theirs;
  {
    ArrayOwnerScope scope(&other_instance);
    theirs = counting(2);
  }
  ArrayOwnerScope scope(&this_instance);
  RValue mine = theirs;  // refcount 2, owned by the other instance
  *array_slot(mine, 0) = num(99);
  EXPECT_EQ(value_to_text(theirs), "[ 0,1 ]");
  EXPECT_EQ(value_to_text(mine), "[ 99,1 ]");
  EXPECT_EQ(theirs.arr->refcount, 1);
  EXPECT_EQ(mine.arr->refcount, 1);
  // Now that it is ours alone, writes stay in place.
  RefArray* before = mine.arr;
  *array_slot(mine, 1) = num(5);
  EXPECT_EQ(mine.arr, before);
}

TEST(ArrayWrite, GrowsWithZerosAndMakesNonArraysArrays) {
  RValue a = counting(2);
  *array_slot(a, 10) = num(7);
  EXPECT_EQ(value_to_text(a), "[ 0,1,0,0,0,0,0,0,0,0,7 ]");
  RValue n = num(3);
  *array_slot(n, 1) = RValue::text("x");
  EXPECT_EQ(value_to_text(n), "[ 0,\"x\" ]");
  EXPECT_EQ(array_slot(n, -1), nullptr);
  a.arr->flags |= RefArray::IMMUTABLE;
  EXPECT_FATAL(array_slot(a, 0), "Unable to write to immutable array");
}

TEST(ArrayRead, OutOfBoundsIsFatalAndDoesNotGrow) {
  RValue a = counting(2);
  EXPECT_FATAL(array_get(a, 2), "index out of bounds request 2 maximum size is 2");
  EXPECT_FATAL(array_get(a, -1), "index out of bounds request -1 maximum size is 2");
  EXPECT_EQ(a.arr->length, 2);
  EXPECT_FATAL(array_get(num(1), 0), "trying to index variable that is not an array");
  EXPECT_FATAL(array_get_variable(num(1), 0), "trying to index a variable which is not an array");
}

TEST(ArrayEdit, CopyAndDeleteClampCountFromTheEndAndGoBackward) {
  struct Copy { RValue dest; int at; RValue src; int from, count; const char* after; } copies[] = {
      {counting(2), 1, counting(5), 2, 10, "[ 0,2,3,4 ]"}, {array_create(0), 0, counting(5), 3, -2, "[ 3,2 ]"},
      {array_create(0), 0, counting(5), -2, 2, "[ 3,4 ]"}, {counting(3), -1, counting(2), 0, 2, "[ 0,1,0,1 ]"},
  };
  for (Copy& c : copies) {
    array_copy(c.dest, c.at, c.src, c.from, c.count);
    EXPECT_EQ(value_to_text(c.dest), c.after);
  }
  struct Delete { RValue array; int at, count; const char* after; } deletes[] = {
      {counting(6), 1, 2, "[ 0,3,4,5 ]"}, {counting(4), -1, 1, "[ 0,1,2 ]"}, {counting(3), 2, -2, "[ 0 ]"},
      {counting(1), 0, 50, "[  ]"}, {num(1), 0, 1, "1"},  // not an array: left alone
  };
  for (Delete& d : deletes) {
    array_delete(d.array, d.at, d.count);
    EXPECT_EQ(value_to_text(d.array), d.after);
  }
}
