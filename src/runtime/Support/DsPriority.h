// Priority queues of values, named by refs of type ds_priority. Nothing keeps
// them in order: every query scans, and of equal priorities the first
// stored wins. The tokeniser sorts tokens with them.
#pragma once

#include <cstdint>

#include "runtime/Code/RValue.h"

inline constexpr uint32_t REF_DS_PRIORITY = 0x2000020;

RValue ds_priority_create();
void ds_priority_destroy(const RValue& queue);
// Appends `value` with `priority`; duplicates stay.
void ds_priority_add(const RValue& queue, const RValue& value, const RValue& priority);
int32_t ds_priority_size(const RValue& queue);
bool ds_priority_empty(const RValue& queue);
void ds_priority_clear(const RValue& queue);
// The value of the highest priority, or undefined when the queue is empty.
RValue ds_priority_find_max(const RValue& queue);
// Takes the value of the highest priority out and gives it; the number 0
// when the queue is empty. The last value takes its place, so the order
// of equal priorities changes.
RValue ds_priority_delete_max(const RValue& queue);
// The priority of the first value stored that equals `value`, or undefined.
RValue ds_priority_find_priority(const RValue& queue, const RValue& value);

// ds_priority_* as built-ins.
void register_ds_priority_builtins();
