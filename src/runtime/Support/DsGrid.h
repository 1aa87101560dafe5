// Grids of values, named by refs of type ds_grid: `width` columns by
// `height` rows, every cell 0 at the start. A cell out of the grid reads
// as undefined, and setting it changes nothing.
#pragma once

#include <cstdint>

#include "runtime/Code/RValue.h"

inline constexpr uint32_t REF_DS_GRID = 0x2000004;

RValue ds_grid_create(int32_t width, int32_t height);
void ds_grid_destroy(const RValue& grid);
int32_t ds_grid_width(const RValue& grid);
int32_t ds_grid_height(const RValue& grid);
RValue ds_grid_get(const RValue& grid, int32_t x, int32_t y);
void ds_grid_set(const RValue& grid, int32_t x, int32_t y, const RValue& value);

// ds_grid_* as built-ins.
void register_ds_grid_builtins();
