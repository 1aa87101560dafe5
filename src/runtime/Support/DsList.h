// Lists of values, named by refs of type ds_list: the undo stack and the
// lines of the text boxes. Indices count from 0; one out of range changes
// nothing and reads as undefined.
#pragma once

#include <cstdint>

#include "runtime/Code/RValue.h"

inline constexpr uint32_t REF_DS_LIST = 0x2000001;

RValue ds_list_create();
void ds_list_destroy(const RValue& list);
int32_t ds_list_size(const RValue& list);
// Lets go of every value; the list is empty.
void ds_list_clear(const RValue& list);
// Appends a copy of `value`.
void ds_list_add(const RValue& list, const RValue& value);
// A copy of the value at `index`, or undefined.
RValue ds_list_find_value(const RValue& list, int32_t index);
// The index of the first value equal to `value`, or -1.
int32_t ds_list_find_index(const RValue& list, const RValue& value);
// Puts `value` in place of the value at `index`.
void ds_list_replace(const RValue& list, int32_t index, const RValue& value);
// Puts `value` before the value at `index`; at the size, after the last.
void ds_list_insert(const RValue& list, int32_t index, const RValue& value);
// Takes the value at `index` out; the values behind it move down.
void ds_list_delete(const RValue& list, int32_t index);

// ds_list_* as built-ins.
void register_ds_list_builtins();
