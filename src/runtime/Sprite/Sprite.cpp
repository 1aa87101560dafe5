#include "runtime/Sprite/Sprite.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "runtime/Code/Builtins.h"
#include "runtime/Code/Error.h"
#include "runtime/Code/Registration.h"
#include "runtime/Support/AssetIndex.h"

namespace {

// By asset index; a slot is empty when its sprite was cleared.
std::vector<std::unique_ptr<CSprite>>& sprites() {
  static std::vector<std::unique_ptr<CSprite>> table;
  return table;
}

// The box that fits the solid pixels of every mask; false when none is solid.
bool fit_box_to_masks(CSprite& sprite) {
  int32_t left = sprite.width, top = sprite.height, right = -1, bottom = -1;
  for (const CollisionMask& mask : sprite.masks) {
    for (int32_t y = 0; y < mask.height; ++y) {
      for (int32_t x = 0; x < mask.width; ++x) {
        if (!mask.solid(x, y)) continue;
        left = std::min(left, x);
        right = std::max(right, x);
        top = std::min(top, y);
        bottom = std::max(bottom, y);
      }
    }
  }
  if (right < 0) return false;
  sprite.bbox_left = left;
  sprite.bbox_top = top;
  sprite.bbox_right = right;
  sprite.bbox_bottom = bottom;
  return true;
}

// The sprite index a value names: a sprite ref or a number.
int32_t sprite_index_of(const RValue& v) { return index_of_handle(v, REF_SPRITE); }

// The existing sprite an argument names; fatal for any other.
const CSprite* arg_sprite(const RValue* args, int i) {
  const int32_t index = arg_ref(args, i, REF_SPRITE, static_cast<int32_t>(sprites().size()));
  if (index < 0) return nullptr;
  const CSprite* sprite = sprite_get(index);
  if (!sprite) ReportError("%s argument %d invalid reference to (sprite)", builtin_current_name(), i + 1);
  return sprite;
}

BUILTIN_ADAPTER(sprite_exists) { result = RValue::boolean(sprite_exists(sprite_index_of(args[0]))); }

BUILTIN_ADAPTER(sprite_get_width) {
  if (const CSprite* s = arg_sprite(args, 0)) result = RValue::number(s->width);
}

BUILTIN_ADAPTER(sprite_get_height) {
  if (const CSprite* s = arg_sprite(args, 0)) result = RValue::number(s->height);
}

BUILTIN_ADAPTER(sprite_get_number) {
  if (const CSprite* s = arg_sprite(args, 0)) result = RValue::number(s->frames);
}

BUILTIN_ADAPTER(sprite_get_xoffset) {
  if (const CSprite* s = arg_sprite(args, 0)) result = RValue::number(s->xorigin);
}

BUILTIN_ADAPTER(sprite_get_yoffset) {
  if (const CSprite* s = arg_sprite(args, 0)) result = RValue::number(s->yorigin);
}

}  // namespace

CollisionMask::CollisionMask(int32_t width, int32_t height)
    : width(width),
      height(height),
      words_per_row((width + 31) / 32),
      bits(static_cast<size_t>(words_per_row) * static_cast<size_t>(height), 0u) {}

bool CollisionMask::solid(int32_t x, int32_t y) const {
  if (x < 0 || y < 0 || x >= width || y >= height) return false;
  return (bits[static_cast<size_t>(y * words_per_row + x / 32)] >> (x % 32)) & 1u;
}

void CollisionMask::set_solid(int32_t x, int32_t y) {
  if (x < 0 || y < 0 || x >= width || y >= height) return;
  bits[static_cast<size_t>(y * words_per_row + x / 32)] |= 1u << (x % 32);
}

const CollisionMask* CSprite::mask_at(float image_index) const {
  if (masks.empty()) return nullptr;
  if (masks.size() == 1 || !std::isfinite(image_index)) return &masks.front();
  const auto count = static_cast<int64_t>(masks.size());
  const int64_t frame = ((static_cast<int64_t>(std::floor(image_index)) % count) + count) % count;
  return &masks[static_cast<size_t>(frame)];
}

float sprite_frames_per_step(const CSprite& sprite, float game_speed) {
  if (sprite.playback == SPRITE_PLAYBACK_PER_FRAME) return sprite.speed;
  return game_speed > 0 ? sprite.speed / game_speed : 0.0f;
}

int32_t sprite_add_shape(const std::string& name, int32_t width, int32_t height, int32_t xorigin, int32_t yorigin,
                         int32_t frames) {
  auto sprite = std::make_unique<CSprite>();
  sprite->name = name;
  sprite->width = std::max(width, 1);
  sprite->height = std::max(height, 1);
  sprite->xorigin = xorigin;
  sprite->yorigin = yorigin;
  sprite->frames = std::max(frames, 1);
  sprite->bbox_right = sprite->width - 1;
  sprite->bbox_bottom = sprite->height - 1;
  const int32_t index = asset_add(AssetKind::Sprite, name);
  auto& table = sprites();
  if (static_cast<size_t>(index) >= table.size()) table.resize(static_cast<size_t>(index) + 1);
  table[static_cast<size_t>(index)] = std::move(sprite);
  return index;
}

bool sprite_set_precise_mask(int32_t index, int32_t frame, const std::function<bool(int32_t x, int32_t y)>& solid) {
  CSprite* sprite = sprite_get(index);
  if (!sprite || frame < 0 || frame >= sprite->frames) return false;
  if (sprite->masks.empty()) sprite->masks.assign(static_cast<size_t>(sprite->frames), {sprite->width, sprite->height});
  CollisionMask mask(sprite->width, sprite->height);
  for (int32_t y = 0; y < sprite->height; ++y) {
    for (int32_t x = 0; x < sprite->width; ++x) {
      if (solid(x, y)) mask.set_solid(x, y);
    }
  }
  sprite->masks[static_cast<size_t>(frame)] = std::move(mask);
  // Masks without a solid pixel keep the whole frame as their box: it
  // bounds the mask all the same, and nothing inside it is solid.
  if (!fit_box_to_masks(*sprite)) {
    sprite->bbox_left = sprite->bbox_top = 0;
    sprite->bbox_right = sprite->width - 1;
    sprite->bbox_bottom = sprite->height - 1;
  }
  return true;
}

CSprite* sprite_get(int32_t index) {
  auto& table = sprites();
  if (index < 0 || static_cast<size_t>(index) >= table.size()) return nullptr;
  return table[static_cast<size_t>(index)].get();
}

bool sprite_exists(int32_t index) { return sprite_get(index) != nullptr; }

int32_t sprite_get_width(int32_t index) {
  const CSprite* s = sprite_get(index);
  return s ? s->width : 0;
}

int32_t sprite_get_height(int32_t index) {
  const CSprite* s = sprite_get(index);
  return s ? s->height : 0;
}

int32_t sprite_get_number(int32_t index) {
  const CSprite* s = sprite_get(index);
  return s ? s->frames : 0;
}

void sprite_remove(int32_t index) {
  if (sprite_get(index)) sprites()[static_cast<size_t>(index)].reset();
}

void sprites_clear() { sprites().clear(); }

void register_sprite_builtins() {
  builtin_register("sprite_exists", builtin_sprite_exists, 1);
  builtin_register("sprite_get_width", builtin_sprite_get_width, 1);
  builtin_register("sprite_get_height", builtin_sprite_get_height, 1);
  builtin_register("sprite_get_number", builtin_sprite_get_number, 1);
  builtin_register("sprite_get_xoffset", builtin_sprite_get_xoffset, 1);
  builtin_register("sprite_get_yoffset", builtin_sprite_get_yoffset, 1);
}
