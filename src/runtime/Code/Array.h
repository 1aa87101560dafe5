// Arrays of RValues: the body, the read and write rules with copy on write,
// and the array built-ins.
//
// A body is shared between values by reference count. A write through a
// value whose array was claimed by another owner and is shared copies the
// body first, so the other holder never sees the change. Bodies are freed
// when the last value lets go: the application never builds an array that
// holds itself, so counting is enough to reclaim them.
#pragma once

#include "runtime/Code/RValue.h"

struct RefArray {
  RValue* elements;
  uintptr_t owner;  // the array owner that last claimed it, 0 while unclaimed
  int32_t refcount;
  uint32_t flags;   // bit 0: immutable
  int32_t length;
  int32_t capacity;

  static constexpr uint32_t IMMUTABLE = 1;

  // A body of `length` zeros (all-zero records read as the number 0), refcount 0.
  static RefArray* make(int32_t length, uintptr_t owner);
  // Frees the body and releases its elements.
  static void destroy(RefArray* a);
  // Grows to at least `length` elements; the new ones are zeros.
  void grow_to(int32_t new_length);
};

// The element at `index`; fatal when out of bounds or not an array.
const RValue& array_get(const RValue& value, int32_t index);
// The same with the wording of a read through a variable that may hold a row
// of a two-dimensional array.
const RValue& array_get_variable(const RValue& value, int32_t index);
// The slot to assign to at `index`, after making `value` an array of its own
// (copy on write) and growing it as needed; null for a negative index.
RValue* array_slot(RValue& value, int32_t index);

// Built-ins on arrays.
RValue array_create(int32_t n);
RValue array_create(int32_t n, const RValue& fill);
void array_copy(RValue& dest, int32_t dest_index, const RValue& src, int32_t src_index, int32_t length);
void array_delete(RValue& array, int32_t index, int32_t number);

void register_array_builtins();
