#include <gtest/gtest.h>

#include <cmath>

#include "runtime/Code/Array.h"
#include "runtime/Code/Builtins.h"
#include "runtime/Code/FrameArena.h"
#include "support/Fatal.h"

namespace {

// A probe built-in whose routine runs one getter on its first argument.
using Getter = void (*)(RValue* args);
Getter g_getter = nullptr;
BUILTIN_ADAPTER(probe) { g_getter(args); }

void with_getter(Getter getter, RValue arg) {
  static const int row = builtin_register("probe", builtin_probe, 1);
  g_getter = getter;
  RValue result;
  builtin_call(row, result, nullptr, nullptr, 1, &arg);
}

}  // namespace

TEST(BuiltinTable, RegistersOnceAndCallsByName) {
  register_runtime_builtins();
  const int count = builtin_count();
  const int row = builtin_find("string");
  ASSERT_GE(row, 0);
  EXPECT_EQ(builtin_register("string", nullptr, 1), row);  // a second registration keeps the first
  EXPECT_EQ(builtin_count(), count);
  EXPECT_EQ(builtin_find("no_such_builtin"), -1);
  RValue result = RValue::number(5);
  RValue arg = RValue::number(2.5);
  EXPECT_FALSE(builtin_call("no_such_builtin", result, nullptr, nullptr, 1, &arg));
  ASSERT_TRUE(builtin_call("string", result, nullptr, nullptr, 1, &arg));
  EXPECT_EQ(result.string_view(), "2.50");
  ASSERT_TRUE(builtin_call("is_string", result, nullptr, nullptr, 1, &arg));
  EXPECT_EQ(result.kind(), Kind::Bool);
  EXPECT_EQ(result.real, 0);
  // The result arrives undefined: a routine that writes nothing leaves it so.
  RValue none = RValue::number(0);
  ASSERT_TRUE(builtin_call("array_length_1d", result, nullptr, nullptr, 1, &none));
  EXPECT_EQ(result.kind(), Kind::Undefined);
  EXPECT_STREQ(builtin_current_name(), "");
}

TEST(BuiltinTable, GrowsPastFiveHundredRowsAndStillFindsEveryName) {
  register_runtime_builtins();
  std::vector<std::string> names;
  for (int i = 0; i < 1200; ++i) names.push_back("grow_probe_" + std::to_string(i));
  for (const std::string& n : names) builtin_register(n.c_str(), builtin_probe, 0);
  for (const std::string& n : names) ASSERT_EQ(builtin_row(builtin_find(n))->name, n);
  EXPECT_GE(builtin_find("real"), 0);
}

TEST(ArgumentGetters, AcceptTheirKinds) {
  static double d;
  with_getter([](RValue* a) { d = arg_real(a, 0); }, RValue::text("12abc"));
  EXPECT_EQ(d, 12);
  with_getter([](RValue* a) { d = arg_real(a, 0); }, RValue::text("0x10"));  // read as a primitive number
  EXPECT_EQ(d, 16);
  static int32_t i;
  with_getter([](RValue* a) { i = arg_int32(a, 0); }, RValue::boolean(true));
  EXPECT_EQ(i, 1);
  with_getter([](RValue* a) { i = arg_int32(a, 0); }, RValue::number(-2.7));
  EXPECT_EQ(i, -2);
  static uint32_t u;
  with_getter([](RValue* a) { u = arg_uint32(a, 0); }, RValue::number(-1));
  EXPECT_EQ(u, 0xFFFFFFFFu);
  static bool b;
  with_getter([](RValue* a) { b = arg_bool(a, 0); }, RValue::undefined());
  EXPECT_FALSE(b);
  with_getter([](RValue* a) { b = arg_bool(a, 0); }, RValue::number(0.6));
  EXPECT_TRUE(b);
  static std::string s;
  with_getter([](RValue* a) { s = arg_text(a, 0); }, RValue::number(123));
  EXPECT_EQ(s, "123");
  with_getter([](RValue* a) { s = arg_text(a, 0); }, RValue::undefined());
  EXPECT_EQ(s, "undefined");
  static int32_t ref;
  with_getter([](RValue* a) { ref = arg_ref(a, 0, REF_SOUND, 4); }, RValue::ref(REF_SOUND, 3));
  EXPECT_EQ(ref, 3);
  with_getter([](RValue* a) { ref = arg_ref(a, 0, REF_SOUND, 4); }, RValue::number(2));
  EXPECT_EQ(ref, 2);
}

TEST(ArgumentGetters, RefuseOtherKindsWithTheirWords) {
  EXPECT_FATAL(with_getter([](RValue* a) { arg_real(a, 0); }, RValue::text("abc")),
               "probe argument 1 incorrect type (string) expecting a Number (QvGR)");
  EXPECT_FATAL(with_getter([](RValue* a) { arg_float(a, 0); }, RValue::undefined()),
               "probe argument 1 incorrect type (undefined) expecting a Number (QvGF)");
  EXPECT_FATAL(with_getter([](RValue* a) { arg_int32(a, 0); }, array_create(1)),
               "probe argument 1 incorrect type (array) expecting a Number (QvGI32)");
  EXPECT_FATAL(with_getter([](RValue* a) { arg_uint32(a, 0); }, RValue::pointer(nullptr)),
               "probe argument 1 incorrect type (ptr) expecting a Number (QvGU32)");
  EXPECT_FATAL(with_getter([](RValue* a) { arg_int64(a, 0); }, RValue::text("x")),
               "probe argument 1 incorrect type (string) expecting a Number");
  EXPECT_FATAL(with_getter([](RValue* a) { arg_bool(a, 0); }, RValue::text("1")),
               "probe argument 1 incorrect type (string) expecting a Boolean (QvGB)");
  EXPECT_FATAL(with_getter([](RValue* a) { arg_text(a, 0); }, RValue()),
               "probe argument 1 incorrect type (unset) expecting a String (QvGS)");
  EXPECT_FATAL(with_getter([](RValue* a) { arg_pointer(a, 0); }, RValue::number(1)),
               "probe argument 1 incorrect type (number) expecting a Pointer");
  EXPECT_FATAL(with_getter([](RValue* a) { arg_number_or_pointer(a, 0); }, RValue::text("1")),
               "probe argument 1 incorrect type (string) expecting a Number or Pointer");
  EXPECT_FATAL(with_getter([](RValue* a) { arg_ref(a, 0, REF_SOUND, 4); }, RValue::ref(REF_SPRITE, 1)),
               "probe argument 1 incorrect type (ref) expecting a sound");
  EXPECT_FATAL(with_getter([](RValue* a) { arg_ref(a, 0, REF_SOUND, 4); }, RValue::number(9)),
               "probe argument 1 invalid reference to (sound)");
  EXPECT_FATAL(with_getter([](RValue* a) { arg_array(a, 0); }, RValue::number(1)),
               "probe :: argument 1 is not an array");
  RValue frozen = array_create(1);
  frozen.arr->flags |= RefArray::IMMUTABLE;
  EXPECT_FATAL(with_getter([](RValue* a) { arg_array(a, 0, true); }, frozen),
               "probe :: argument 1 cannot be an immutable array");
}

TEST(FrameArena, KeepsEarlierTextWhileGrowingAndShrinksToOneBlockOnReset) {
  FrameArena arena(64);
  std::string_view first = arena.copy("prima");
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
