#include <gtest/gtest.h>

#include "runtime/Code/Array.h"
#include "runtime/Code/Builtins.h"
#include "runtime/Code/Conversions.h"
#include "support/Fatal.h"

namespace {

// Numbers 0..n-1 as an array.
RValue counting(int n) {
  RValue a = array_create(n);
  for (int i = 0; i < n; ++i) *array_slot(a, i) = RValue::number(i);
  return a;
}

RValue call(const char* name, std::initializer_list<RValue> args) {
  register_runtime_builtins();
  std::vector<RValue> v(args);
  RValue result;
  EXPECT_TRUE(builtin_call(name, result, nullptr, nullptr, static_cast<int>(v.size()), v.data()));
  return result;
}

}  // namespace

TEST(ArrayWrite, CopiesAnArraySharedWithAnotherOwner) {
  int other_instance = 0, this_instance = 0;
  RValue theirs;
  {
    ArrayOwnerScope scope(&other_instance);
    theirs = counting(2);
  }
  ArrayOwnerScope scope(&this_instance);
  RValue mine = theirs;  // refcount 2, owned by the other instance
  *array_slot(mine, 0) = RValue::number(99);
  EXPECT_NE(mine.arr, theirs.arr);
  EXPECT_EQ(value_to_text(theirs), "[ 0,1 ]");
  EXPECT_EQ(value_to_text(mine), "[ 99,1 ]");
  EXPECT_EQ(theirs.arr->refcount, 1);
  EXPECT_EQ(mine.arr->refcount, 1);
  // Now that it is ours alone, writes stay in place.
  RefArray* before = mine.arr;
  *array_slot(mine, 1) = RValue::number(5);
  EXPECT_EQ(mine.arr, before);
}

TEST(ArrayWrite, GrowsWithZerosAndMakesNonArraysArrays) {
  RValue a = counting(2);
  *array_slot(a, 10) = RValue::number(7);
  EXPECT_EQ(a.arr->length, 11);
  EXPECT_EQ(array_get(a, 5).kind(), Kind::Number);
  EXPECT_EQ(array_get(a, 5).real, 0);
  RValue n = RValue::number(3);
  *array_slot(n, 1) = RValue::text("x");
  EXPECT_EQ(value_to_text(n), "[ 0,\"x\" ]");
  EXPECT_EQ(array_slot(n, -1), nullptr);
  a.arr->flags |= RefArray::IMMUTABLE;
  EXPECT_FATAL(array_slot(a, 0), "Unable to write to immutable array");
}

TEST(ArrayRead, OutOfBoundsIsFatalAndDoesNotGrow) {
  RValue a = counting(2);
  EXPECT_EQ(array_get(a, 1).real, 1);
  EXPECT_FATAL(array_get(a, 2), "index out of bounds request 2 maximum size is 2");
  EXPECT_FATAL(array_get(a, -1), "index out of bounds request -1 maximum size is 2");
  EXPECT_EQ(a.arr->length, 2);
  EXPECT_FATAL(array_get(RValue::number(1), 0), "trying to index variable that is not an array");
  EXPECT_FATAL(array_get_variable(RValue::number(1), 0), "trying to index a variable which is not an array");
}

TEST(ArrayBuiltins, CreateAndLengths) {
  EXPECT_EQ(value_to_text(call("array_create", {RValue::number(3)})), "[ 0,0,0 ]");
  EXPECT_EQ(value_to_text(call("array_create", {RValue::number(2), RValue::text("a")})), "[ \"a\",\"a\" ]");
  EXPECT_EQ(value_to_text(call("array_create", {RValue::number(-1)})), "[  ]");
  EXPECT_EQ(call("array_length_1d", {RValue::number(0)}).kind(), Kind::Undefined);
  EXPECT_EQ(call("array_length", {counting(4)}).real, 4);
  EXPECT_EQ(call("array_height_2d", {RValue::number(0)}).real, 0);
  RValue grid = array_create(2);
  *array_slot(grid, 1) = counting(3);
  EXPECT_EQ(call("array_height_2d", {grid}).real, 2);
  EXPECT_EQ(call("array_length_2d", {grid, RValue::number(1)}).real, 3);
  EXPECT_EQ(call("array_length_2d", {grid, RValue::number(0)}).real, 0);
  EXPECT_EQ(call("array_length_2d", {grid, RValue::number(-1)}).real, 0);
}

TEST(ArrayBuiltins, CopyClampsCountsAndGrowsTheDestination) {
  RValue dest = counting(2);
  array_copy(dest, 1, counting(5), 2, 10);
  EXPECT_EQ(value_to_text(dest), "[ 0,2,3,4 ]");
  RValue back = array_create(0);
  array_copy(back, 0, counting(5), 3, -2);
  EXPECT_EQ(value_to_text(back), "[ 3,2 ]");
  RValue from_end = array_create(0);
  array_copy(from_end, 0, counting(5), -2, 2);
  EXPECT_EQ(value_to_text(from_end), "[ 3,4 ]");
  RValue tail = counting(3);
  array_copy(tail, -1, counting(2), 0, 2);
  EXPECT_EQ(value_to_text(tail), "[ 0,1,0,1 ]");
  EXPECT_FATAL(call("array_copy", {dest, RValue::number(0)}), "array_copy :: takes 5 arguments");
}

TEST(ArrayBuiltins, DeleteCountsFromTheEndAndBackward) {
  RValue a = counting(6);
  array_delete(a, 1, 2);
  EXPECT_EQ(value_to_text(a), "[ 0,3,4,5 ]");
  array_delete(a, -1, 1);
  EXPECT_EQ(value_to_text(a), "[ 0,3,4 ]");
  array_delete(a, 2, -2);
  EXPECT_EQ(value_to_text(a), "[ 0 ]");
  array_delete(a, 0, 50);
  EXPECT_EQ(value_to_text(a), "[  ]");
  RValue n = RValue::number(1);
  array_delete(n, 0, 1);
  EXPECT_EQ(n.kind(), Kind::Number);
  EXPECT_FATAL(call("array_delete", {counting(2), RValue::number(0)}), "array_delete :: takes 3 arguments.");
}
