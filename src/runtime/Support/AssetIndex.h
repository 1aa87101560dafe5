// Names of assets by kind: every sprite, sound, font, room ... has an index
// within its kind, and `asset_get_index` finds an asset by its name alone.
#pragma once

#include <cstdint>
#include <string_view>

#include "runtime/Code/RValue.h"

enum class AssetKind : uint32_t {
  Object = 0x1000000,
  Sprite = 0x1000001,
  Sound = 0x1000002,
  Room = 0x1000003,
  Path = 0x1000005,
  Script = 0x1000006,
  Font = 0x1000007,
};

// Adds a named asset of `kind`; returns its index (a name already there keeps its index).
int32_t asset_add(AssetKind kind, std::string_view name);
// The name of asset `index` of `kind`, or "" when there is none.
std::string_view asset_name(AssetKind kind, int32_t index);
// A ref of the named asset's kind ("ref sound 3" as text), or the number -1.
RValue asset_get_index(std::string_view name);

void register_asset_builtins();
