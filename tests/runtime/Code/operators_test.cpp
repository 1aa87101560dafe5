#include <gtest/gtest.h>

#include <cmath>

#include "runtime/Code/Array.h"
#include "runtime/Code/Conversions.h"
#include "runtime/Code/Operators.h"
#include "support/Fatal.h"

namespace {
RValue num(double d) { return RValue::number(d); }
RValue text(const char* t) { return RValue::text(t); }
}  // namespace

TEST(Add, LeftKindDecides) {
  RValue r = num(1) + text("2");
  EXPECT_EQ(r.kind(), Kind::Number);
  EXPECT_EQ(r.real, 3);
  EXPECT_EQ((text("ab") + text("cd")).string_view(), "abcd");
  EXPECT_FATAL(text("1") + num(2), "unable to add a number to string");
  EXPECT_FATAL(num(1) + text("x"), "unable to convert string \"x\" to number");

  RValue t = RValue::boolean(true) + RValue::boolean(true);
  EXPECT_EQ(t.kind(), Kind::Bool);
  EXPECT_EQ(t.real, 2);
  EXPECT_EQ(value_to_text(t), "1");
  EXPECT_EQ(value_to_real(t), 2);

  EXPECT_EQ((RValue::int32(2) + num(0.5)).kind(), Kind::Number);
  RValue wide = RValue::int32(2) + RValue::int64(1LL << 40);
  EXPECT_EQ(wide.kind(), Kind::Int64);
  EXPECT_EQ(wide.i64, (1LL << 40) + 2);
  RValue wrapped = RValue::int32(INT32_MAX) + RValue::int32(1);
  EXPECT_EQ(wrapped.kind(), Kind::Int32);
  EXPECT_EQ(wrapped.i32, INT32_MIN);
  EXPECT_EQ((RValue::int64(5) + RValue::int32(1)).kind(), Kind::Int64);
  EXPECT_FATAL(RValue::undefined() + num(1), "invalid type for += lhs=undefined (type=5), rhs=1 (type=0)");
}

TEST(Subtract, StringsTurnIntoNumbers) {
  RValue r = text("1") - num(2);
  EXPECT_EQ(r.kind(), Kind::Number);
  EXPECT_EQ(r.real, -1);
  EXPECT_FATAL(text("uno") - num(2), "unable to convert string \"uno\" to number");
  EXPECT_EQ((RValue::int32(1) - RValue::int32(3)).i32, -2);
  EXPECT_FATAL(RValue::undefined() - num(1), "invalid type for -= lhs=undefined (type=5), rhs=1 (type=0)");
}

TEST(Multiply, NumberTimesTextRepeatsIt) {
  EXPECT_EQ((num(3) * text("ab")).string_view(), "ababab");
  EXPECT_EQ((num(0) * text("ab")).string_view(), "");
  EXPECT_EQ((num(-2) * text("ab")).string_view(), "");
  EXPECT_EQ((num(2.5) * num(2)).real, 5);
  EXPECT_EQ((RValue::int32(3) * RValue::int32(4)).kind(), Kind::Int32);
  EXPECT_EQ((RValue::int32(3) * RValue::int64(4)).kind(), Kind::Int64);
  EXPECT_EQ((RValue::int64(3) * RValue::int32(4)).kind(), Kind::Int64);
  EXPECT_EQ((RValue::int32(3) * num(0.5)).kind(), Kind::Number);
  EXPECT_FATAL(text("ab") * num(2), "invalid type for *= lhs=ab (type=1), rhs=2 (type=0)");
}

TEST(Divide, DoublesFollowIeeeIntegersRefuseZero) {
  EXPECT_TRUE(std::isinf((num(1) / num(0)).real));
  EXPECT_EQ((text("9") / num(2)).real, 4.5);
  RValue q = RValue::int32(7) / RValue::int32(2);
  EXPECT_EQ(q.kind(), Kind::Int32);
  EXPECT_EQ(q.i32, 3);
  EXPECT_EQ((RValue::int32(7) / RValue::int64(2)).kind(), Kind::Int64);
  EXPECT_EQ((RValue::int32(7) / num(2)).real, 3.5);
  EXPECT_FATAL(RValue::int32(7) / RValue::int32(0), "divide by zero");
  EXPECT_FATAL(num(1) / RValue::pointer(nullptr), "invalid type for /= lhs=1 (type=0), rhs=null (type=3)");
  EXPECT_EQ((RValue::int32(INT32_MIN) / RValue::int32(-1)).i32, INT32_MIN);
}

TEST(Modulo, AnyZeroDivisorIsFatal) {
  EXPECT_EQ((num(7.5) % num(2)).real, 1.5);
  EXPECT_EQ((num(-7) % num(3)).real, -1);
  EXPECT_EQ((RValue::int32(-7) % RValue::int32(3)).i32, -1);
  EXPECT_FATAL(num(1) % num(0), "unable to mod by 0");
  EXPECT_FATAL(RValue::int64(1) % RValue::int32(0), "unable to mod by 0");
  EXPECT_FATAL(RValue::int32(1) % num(0), "unable to mod by 0");
}

TEST(IncrementDecrement, KindRules) {
  RValue s = text("4");
  value_increment(s);
  EXPECT_EQ(s.kind(), Kind::Number);
  EXPECT_EQ(s.real, 5);
  RValue up = RValue::boolean(true);
  value_increment(up);
  EXPECT_EQ(up.kind(), Kind::Number);
  RValue down = RValue::boolean(true);
  value_decrement(down);
  EXPECT_EQ(down.kind(), Kind::Bool);
  EXPECT_EQ(down.real, 0);
  RValue i = RValue::int32(INT32_MAX);
  value_increment(i);
  EXPECT_EQ(i.i32, INT32_MIN);
  RValue u = RValue::undefined();
  EXPECT_FATAL(value_increment(u), "invalid type for ++ lhs=undefined (type=5), rhs=undefined (type=5)");
  EXPECT_FATAL(value_decrement(u), "invalid type for -- lhs=undefined (type=5), rhs=undefined (type=5)");
}

TEST(Compare, NumbersWithinEpsilonAreEqual) {
  EXPECT_TRUE(num(0.1) + num(0.2) == num(0.3));
  EXPECT_TRUE(num(1.000009) == num(1));
  EXPECT_FALSE(num(1.00002) == num(1));
  EXPECT_EQ(CompareValues(num(INFINITY), num(INFINITY), 1e-5, false), 0);
  EXPECT_EQ(CompareValues(num(NAN), num(1), 1e-5, false), 1);
  EXPECT_EQ(CompareValues(num(1), num(2), 1e-5, true), -1);
  EXPECT_TRUE(RValue::boolean(true) == num(1));
}

TEST(Compare, StringsAndNumbers) {
  EXPECT_FALSE(text("a") == num(0));
  EXPECT_TRUE(text("2") == num(2));
  EXPECT_EQ(CompareValues(text("3"), num(2), 1e-5, false), 1);
  EXPECT_EQ(CompareValues(num(2), text("3"), 1e-5, false), -1);
  EXPECT_FATAL((void)(text("a") < num(0)), "unable to convert string \"a\" to float");
  EXPECT_EQ(CompareValues(text("b"), text("a"), 1e-5, false), 1);
  EXPECT_EQ(CompareValues(text("è"), text("z"), 1e-5, false), 1);  // bytes compare unsigned
  RValue null_text;
  null_text.clear(Kind::String);
  EXPECT_EQ(CompareValues(null_text, text(""), 1e-5, false), 0);
  EXPECT_EQ(CompareValues(null_text, text("x"), 1e-5, false), 1);
  EXPECT_TRUE(text("5") == RValue::int64(5));
  EXPECT_FATAL((void)(text("z") < RValue::int32(1)), "unable to convert string \"z\" to int64");
  EXPECT_TRUE(text("true") == RValue::boolean(true));
  EXPECT_FATAL((void)(text("z") < RValue::boolean(true)), "unable to convert string \"z\" to bool");
}

TEST(Compare, IntegersAndMixedPrecision) {
  EXPECT_EQ(CompareValues(RValue::int32(3), RValue::int32(5), 1e-5, false), -1);
  EXPECT_EQ(CompareValues(RValue::int64(5), RValue::int32(5), 1e-5, false), 0);
  EXPECT_EQ(CompareValues(num(16777217), RValue::int32(16777216), 1e-5, false), 0);  // single precision
  EXPECT_EQ(CompareValues(num(16777217), RValue::int64(16777216), 1e-5, false), 1);
  EXPECT_EQ(CompareValues(RValue::boolean(true), RValue::int32(1), 1e-5, false), 0);
}

TEST(Compare, UndefinedArraysAndUnset) {
  EXPECT_FALSE(num(1) == RValue::undefined());
  EXPECT_FALSE(RValue::undefined() < num(1));
  EXPECT_FALSE(RValue::undefined() >= num(1));
  EXPECT_TRUE(RValue::undefined() == RValue::undefined());
  RValue a = array_create(2);
  RValue same = a;
  EXPECT_TRUE(a == same);
  EXPECT_FALSE(a == array_create(2));
  EXPECT_FALSE(a == num(1));
  EXPECT_FATAL((void)(a < num(1)), "Illegal array use");
  EXPECT_FALSE(a == RValue::undefined());
  RValue null_array;
  null_array.clear(Kind::Array);
  EXPECT_TRUE(null_array == RValue::undefined());
  EXPECT_FATAL((void)(RValue() == num(1)), "Cannot compare unset variables");
  // The rows the table doesn't list: the left kind decides the order.
  EXPECT_EQ(CompareValues(RValue::undefined(), text("x"), 1e-5, false), 1);
  EXPECT_EQ(CompareValues(num(1), RValue::pointer(nullptr), 1e-5, false), -1);
}
