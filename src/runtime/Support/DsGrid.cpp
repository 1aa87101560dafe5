#include "runtime/Support/DsGrid.h"

#include <algorithm>
#include <vector>

#include "runtime/Code/Builtins.h"
#include "runtime/Support/DsTable.h"

namespace {

struct CGrid {
  int32_t width = 0, height = 0;
  std::vector<RValue> cells;  // row by row

  RValue* cell(int32_t x, int32_t y) {
    if (x < 0 || y < 0 || x >= width || y >= height) return nullptr;
    return &cells[static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x)];
  }
};

DsTable<CGrid>& grids() {
  static DsTable<CGrid> table(REF_DS_GRID);
  return table;
}

BUILTIN_ADAPTER(ds_grid_create) { result = ds_grid_create(arg_int32(args, 0), arg_int32(args, 1)); }
BUILTIN_ADAPTER(ds_grid_destroy) { ds_grid_destroy(args[0]); }
BUILTIN_ADAPTER(ds_grid_width) { result = RValue::number(ds_grid_width(args[0])); }
BUILTIN_ADAPTER(ds_grid_height) { result = RValue::number(ds_grid_height(args[0])); }
BUILTIN_ADAPTER(ds_grid_get) { result = ds_grid_get(args[0], arg_int32(args, 1), arg_int32(args, 2)); }
BUILTIN_ADAPTER(ds_grid_set) { ds_grid_set(args[0], arg_int32(args, 1), arg_int32(args, 2), args[3]); }

}  // namespace

RValue ds_grid_create(int32_t width, int32_t height) {
  const RValue handle = grids().create();
  CGrid& g = *grids().find(handle);
  g.width = std::max(width, 0);
  g.height = std::max(height, 0);
  g.cells.assign(static_cast<size_t>(g.width) * static_cast<size_t>(g.height), RValue::number(0));
  return handle;
}

void ds_grid_destroy(const RValue& grid) { grids().destroy(grid); }

int32_t ds_grid_width(const RValue& grid) {
  const CGrid* g = grids().find(grid);
  return g ? g->width : 0;
}

int32_t ds_grid_height(const RValue& grid) {
  const CGrid* g = grids().find(grid);
  return g ? g->height : 0;
}

RValue ds_grid_get(const RValue& grid, int32_t x, int32_t y) {
  CGrid* g = grids().find(grid);
  const RValue* cell = g ? g->cell(x, y) : nullptr;
  return cell ? *cell : RValue::undefined();
}

void ds_grid_set(const RValue& grid, int32_t x, int32_t y, const RValue& value) {
  CGrid* g = grids().find(grid);
  if (RValue* cell = g ? g->cell(x, y) : nullptr) *cell = value;
}

void register_ds_grid_builtins() {
  builtin_register("ds_grid_create", builtin_ds_grid_create, 2);
  builtin_register("ds_grid_destroy", builtin_ds_grid_destroy, 1);
  builtin_register("ds_grid_width", builtin_ds_grid_width, 1);
  builtin_register("ds_grid_height", builtin_ds_grid_height, 1);
  builtin_register("ds_grid_get", builtin_ds_grid_get, 3);
  builtin_register("ds_grid_set", builtin_ds_grid_set, 4);
}
