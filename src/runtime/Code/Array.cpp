// Array bodies, indexing with copy on write, and the array built-ins.
#include "runtime/Code/Array.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

#include "runtime/Code/Builtins.h"
#include "runtime/Code/Error.h"
#include "runtime/Code/Registration.h"

RefArray* RefArray::make(int32_t length, uintptr_t owner) {
  auto* a = new RefArray{nullptr, owner, 0, 0, 0, 0};
  a->grow_to(length);
  return a;
}

void RefArray::destroy(RefArray* a) {
  for (int32_t i = 0; i < a->length; ++i) a->elements[i].~RValue();
  std::free(static_cast<void*>(a->elements));
  delete a;
}

void RefArray::grow_to(int32_t new_length) {
  if (new_length <= length) return;
  if (new_length > capacity) {
    int32_t new_capacity = std::max(new_length, capacity + capacity / 2);
    void* block = std::realloc(static_cast<void*>(elements), sizeof(RValue) * static_cast<size_t>(new_capacity));
    if (!block) throw std::bad_alloc();
    elements = static_cast<RValue*>(block);
    capacity = new_capacity;
  }
  // All-zero records are the number 0, so gaps read as 0 and not undefined.
  std::memset(static_cast<void*>(elements + length), 0, sizeof(RValue) * static_cast<size_t>(new_length - length));
  length = new_length;
}

namespace {

const RValue& read_element(const RValue& value, int32_t index, const char* not_an_array) {
  static const RValue zero = RValue::number(0);
  if (!value.is(Kind::Array) || !value.arr) {
    ReportError("%s", not_an_array);
    return zero;
  }
  RefArray* a = value.arr;
  if (a->owner == 0) a->owner = current_array_owner();
  if (index < 0 || index >= a->length) {
    ReportError("index out of bounds request %d maximum size is %d", index, a->length);
    return zero;
  }
  return a->elements[index];
}

// Makes the array of `value` one that the current owner may write to.
RefArray* writable_array(RValue& value) {
  if (!value.is(Kind::Array) || !value.arr) {
    value = RValue::array(RefArray::make(0, current_array_owner()));
    return value.arr;
  }
  RefArray* a = value.arr;
  if (a->owner != current_array_owner() && a->refcount != 1) {
    RefArray* copy = RefArray::make(a->length, current_array_owner());
    for (int32_t i = 0; i < a->length; ++i) new (&copy->elements[i]) RValue(a->elements[i]);
    --a->refcount;
    copy->refcount = 1;
    value.arr = copy;
    a = copy;
  }
  return a;
}

// A negative start counts from the end of `length` elements, floor 0.
int32_t from_end(int32_t index, int32_t length) { return index < 0 ? std::max(0, index + length) : index; }

}  // namespace

const RValue& array_get(const RValue& value, int32_t index) {
  return read_element(value, index, "trying to index variable that is not an array");
}

const RValue& array_get_variable(const RValue& value, int32_t index) {
  return read_element(value, index, "trying to index a variable which is not an array");
}

RValue* array_slot(RValue& value, int32_t index) {
  RefArray* a = writable_array(value);
  if (a->flags & RefArray::IMMUTABLE) {
    ReportError("Unable to write to immutable array");
    return nullptr;
  }
  if (index < 0) return nullptr;
  if (index >= a->length) a->grow_to(index + 1);
  return &a->elements[index];
}

RValue array_create(int32_t n) { return RValue::array(RefArray::make(std::max(n, 0), current_array_owner())); }

RValue array_create(int32_t n, const RValue& fill) {
  RValue result = array_create(n);
  for (int32_t i = n - 1; i >= 0; --i) result.arr->elements[i] = fill;
  return result;
}

void array_copy(RValue& dest, int32_t dest_index, const RValue& src, int32_t src_index, int32_t length) {
  if (!src.is(Kind::Array) || !src.arr) return;
  // Hold the source: writing into dest may release the last other reference.
  const RValue source = src;
  const RefArray* s = source.arr;
  src_index = std::min(from_end(src_index, s->length), s->length);
  int32_t first = src_index;
  int32_t count;
  if (length < 0) {
    // Backward from src_index: that element and the ones before it, nearest first.
    const int32_t start = std::min(src_index, s->length - 1);
    count = std::min(-length, start + 1);
    first = start - count + 1;
  } else {
    count = std::min(length, s->length - src_index);
  }
  if (count <= 0) return;
  const int32_t dest_length = dest.is(Kind::Array) && dest.arr ? dest.arr->length : 0;
  if (dest_index < 0) dest_index = std::max(dest_index, -dest_length) + dest_length;
  for (int32_t i = count - 1; i >= 0; --i) {
    const int32_t from = length < 0 ? first + (count - 1 - i) : first + i;
    RValue* slot = array_slot(dest, dest_index + i);
    if (slot) *slot = s->elements[from];
  }
}

void array_delete(RValue& array, int32_t index, int32_t number) {
  if (!array.is(Kind::Array) || !array.arr) return;
  RefArray* a = writable_array(array);
  index = from_end(index, a->length);
  if (number < 0) {
    // Backward from index: the `-number` elements ending at it.
    const int32_t count = std::min(-number, index + 1);
    index = index - count + 1;
    number = count;
  }
  if (index >= a->length) return;
  number = std::min(number, a->length - index);
  if (number <= 0) return;
  for (int32_t i = index; i < index + number; ++i) a->elements[i].~RValue();
  std::memmove(static_cast<void*>(a->elements + index), static_cast<void*>(a->elements + index + number),
               sizeof(RValue) * static_cast<size_t>(a->length - index - number));
  a->length -= number;
}

// ---------------------------------------------------------------------------
// By name

namespace {

BUILTIN_ADAPTER(array_create) {
  if (argc < 1) {
    result = array_create(0);
  } else if (argc == 1) {
    result = array_create(arg_int32(args, 0));
  } else {
    result = array_create(arg_int32(args, 0), args[1]);
  }
}

// array_length_1d and array_length: for anything but an array no result is
// written, so the caller sees undefined.
BUILTIN_ADAPTER(array_length) {
  if (argc >= 1 && args[0].is(Kind::Array) && args[0].arr) result = RValue::number(args[0].arr->length);
}

BUILTIN_ADAPTER(array_height_2d) {
  const bool array = argc == 1 && args[0].is(Kind::Array) && args[0].arr;
  result = RValue::number(array ? args[0].arr->length : 0);
}

BUILTIN_ADAPTER(array_length_2d) {
  int32_t length = 0;
  if (argc >= 2 && args[0].is(Kind::Array) && args[0].arr) {
    const int32_t row = arg_int32(args, 1);
    const RefArray* a = args[0].arr;
    if (row >= 0 && row < a->length && a->elements[row].is(Kind::Array) && a->elements[row].arr) {
      length = a->elements[row].arr->length;
    }
  }
  result = RValue::number(length);
}

BUILTIN_ADAPTER(array_copy) {
  if (argc != 5) {
    ReportError("array_copy :: takes 5 arguments");
    return;
  }
  array_copy(args[0], arg_int32(args, 1), args[2], arg_int32(args, 3), arg_int32(args, 4));
}

BUILTIN_ADAPTER(array_delete) {
  if (argc < 3) {
    ReportError("array_delete :: takes 3 arguments.");
    return;
  }
  array_delete(args[0], arg_int32(args, 1), arg_int32(args, 2));
}

}  // namespace

void register_array_builtins() {
  builtin_register("array_create", builtin_array_create, -1);
  builtin_register("array_length", builtin_array_length, 1);
  builtin_register("array_length_1d", builtin_array_length, 1);
  builtin_register("array_height_2d", builtin_array_height_2d, -1);
  builtin_register("array_length_2d", builtin_array_length_2d, 2);
  builtin_register("array_copy", builtin_array_copy, -1);
  builtin_register("array_delete", builtin_array_delete, -1);
}
