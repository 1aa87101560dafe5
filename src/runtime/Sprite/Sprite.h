// Sprites: frames of one size with an origin, the box of the collision shape
// in sprite pixels, and optional precise masks, one bit a pixel.
//
// Sprites live in one table by index; the index is also the sprite's index
// in the asset names (AssetKind::Sprite), so a name names one sprite and
// adding a sprite under a name already there replaces that sprite.
//
// CSprite is open: it holds what collisions and animation need, and the
// drawing code adds the frames' textures to it.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

// How a sprite's speed counts: frames a second of the game, or frames a game frame.
inline constexpr int32_t SPRITE_PLAYBACK_PER_SECOND = 0, SPRITE_PLAYBACK_PER_FRAME = 1;

// The precise shape of one frame: one bit a pixel, rows of 32-bit words.
struct CollisionMask {
  int32_t width = 0, height = 0;
  int32_t words_per_row = 0;
  std::vector<uint32_t> bits;

  CollisionMask() = default;
  CollisionMask(int32_t width, int32_t height);
  // Whether pixel (x, y) of the frame is solid; false outside the frame.
  bool solid(int32_t x, int32_t y) const;
  void set_solid(int32_t x, int32_t y);
};

// The picture of one frame, and its texture on the graphics device once drawn.
struct SpriteImage {
  std::vector<uint8_t> rgba;  // width x height pixels, rows from the top
  uint32_t texture = 0;       // 0 until drawn
  uint64_t generation = 0;    // the device context the texture belongs to
};

struct CSprite {
  std::string name;
  int32_t width = 0, height = 0;
  int32_t xorigin = 0, yorigin = 0;
  int32_t frames = 1;
  float speed = 1;
  int32_t playback = SPRITE_PLAYBACK_PER_FRAME;
  // The box of the collision shape: inclusive pixel ranges of the frame.
  int32_t bbox_left = 0, bbox_top = 0, bbox_right = 0, bbox_bottom = 0;
  // Empty for a rectangle mask (the box is the shape); otherwise one mask
  // a frame, or a single one that all frames share.
  std::vector<CollisionMask> masks;
  // One picture a frame for a sprite loaded from a file or a surface; empty for a shape without pictures.
  std::vector<SpriteImage> images;

  bool precise() const { return !masks.empty(); }
  // The mask of the frame shown at `image_index` (wrapped into the frames), or null for a rectangle mask.
  const CollisionMask* mask_at(float image_index) const;
};

// How far the animation of `sprite` moves in one game frame at image_speed 1.
float sprite_frames_per_step(const CSprite& sprite, float game_speed);

// Adds a sprite of `frames` frames with a rectangle mask over the whole
// frame; returns its index.
int32_t sprite_add_shape(const std::string& name, int32_t width, int32_t height, int32_t xorigin, int32_t yorigin,
                         int32_t frames = 1);
// Gives frame `frame` of sprite `index` a precise mask of the pixels where
// `solid` holds; the box then fits the solid pixels of all frames. False
// when there is no such sprite or frame.
bool sprite_set_precise_mask(int32_t index, int32_t frame, const std::function<bool(int32_t x, int32_t y)>& solid);
// The sprite at `index`, or null.
CSprite* sprite_get(int32_t index);
// Whether a sprite exists at `index`.
bool sprite_exists(int32_t index);
// Width, height and frame count of an existing sprite (0 for none).
int32_t sprite_get_width(int32_t index);
int32_t sprite_get_height(int32_t index);
int32_t sprite_get_number(int32_t index);
// Takes sprite `index` out of the table; its name stays taken.
void sprite_remove(int32_t index);
// Forgets every sprite (tests and a restart of the game).
void sprites_clear();
