// Maps from keys to values, named by refs of type ds_map. The runtime uses
// them as `async_load`: worker threads fill a map for each finished piece of
// asynchronous work, so the table is guarded by one lock ("DsMutex").
//
// Keys are numbers or strings; number keys are equal within 1e-08.
#pragma once

#include <cstdint>
#include <string_view>

#include "runtime/Code/RValue.h"

inline constexpr uint32_t REF_DS_MAP = 0x2000002;

// A new empty map in the lowest free slot (the table grows by 16); its ref.
RValue ds_map_create();
// Frees the map and empties its slot for the next create.
void ds_map_destroy(const RValue& map);
// Whether the map holds `key`.
bool ds_map_exists(const RValue& map, const RValue& key);
// Stores a copy of `value` under `key` unless the key is there already; whether it stored.
bool ds_map_add(const RValue& map, const RValue& key, const RValue& value);
// A copy of the value under `key`, or undefined when the key is missing.
RValue ds_map_find_value(const RValue& map, const RValue& key);
// The number of keys.
int32_t ds_map_size(const RValue& map);

// For worker threads and library callbacks, which must never meet a fatal
// report: stores `value` under the text `key`; false when `map` names no
// map or the key is there already.
bool ds_map_add_from_worker(int32_t map, std::string_view key, RValue value);
