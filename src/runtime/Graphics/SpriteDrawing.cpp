#include "runtime/Graphics/SpriteDrawing.h"

#include <algorithm>
#include <cmath>

#include "runtime/Code/Error.h"
#include "runtime/Graphics/Batch.h"
#include "runtime/Graphics/Blit.h"
#include "runtime/Graphics/Colour.h"
#include "runtime/Graphics/DrawState.h"
#include "runtime/Graphics/ImageFile.h"
#include "runtime/Graphics/Surfaces.h"
#include "runtime/Object/Instance.h"
#include "runtime/Platform/Gpu.h"
#include "runtime/Sprite/Sprite.h"
#include "runtime/IO/FileNames.h"

namespace {

int g_added = 0;  // names the sprites added at run time

// Makes a sprite of `frames` frames from a picture whose frames stand side by side.
int32_t sprite_from_image(Image& image, int frames, bool remove_back, double xorigin, double yorigin) {
  frames = std::clamp(frames, 1, std::max(image.width, 1));
  if (remove_back && !image.rgba.empty()) {
    const size_t corner = static_cast<size_t>(image.height - 1) * image.width * 4;
    const uint8_t r = image.rgba[corner], g = image.rgba[corner + 1], b = image.rgba[corner + 2];
    for (size_t p = 0; p + 3 < image.rgba.size(); p += 4) {
      if (image.rgba[p] == r && image.rgba[p + 1] == g && image.rgba[p + 2] == b) image.rgba[p + 3] = 0;
    }
  }
  const int width = image.width / frames;
  const int32_t index = sprite_add_shape("__newsprite" + std::to_string(g_added++), width, image.height,
                                         static_cast<int32_t>(xorigin), static_cast<int32_t>(yorigin), frames);
  CSprite* sprite = sprite_get(index);
  sprite->images.resize(static_cast<size_t>(frames));
  for (int f = 0; f < frames; ++f) {
    std::vector<uint8_t>& pixels = sprite->images[static_cast<size_t>(f)].rgba;
    pixels.resize(static_cast<size_t>(width) * image.height * 4);
    for (int y = 0; y < image.height; ++y) {
      const auto from = image.rgba.begin() + (static_cast<ptrdiff_t>(y) * image.width + f * width) * 4;
      std::copy(from, from + width * 4, pixels.begin() + static_cast<ptrdiff_t>(y) * width * 4);
    }
  }
  return index;
}

// The texture of a frame, made on the device the first time it is drawn
// (and again after the device's context was made anew).
platform::TextureId frame_texture(CSprite& sprite, size_t frame) {
  if (frame >= sprite.images.size()) return 0;
  SpriteImage& image = sprite.images[frame];
  platform::Gpu& gpu = platform::gpu();
  if (!gpu.ready()) return 0;
  if (image.texture == 0 || image.generation != gpu.generation()) {
    image.texture = gpu.create_texture(sprite.width, sprite.height, platform::TextureFormat::Rgba8, image.rgba, false);
    image.generation = gpu.generation();
  }
  return image.texture;
}

size_t frame_of(const CSprite& sprite, double subimage) {
  if (!std::isfinite(subimage)) return 0;
  const auto count = static_cast<int64_t>(std::max(sprite.frames, 1));
  return static_cast<size_t>(((static_cast<int64_t>(std::floor(subimage)) % count) + count) % count);
}

// The sprite a draw call names; `explicit_form` picks the words of the
// fatal report. Null after the report when errors are only recorded.
CSprite* drawn_sprite(double index, bool explicit_form) {
  CSprite* sprite = sprite_get(static_cast<int32_t>(index));
  if (!sprite) {
    if (explicit_form)
      ReportError("Unable to render sprite %d\n", static_cast<int>(index));
    else
      ReportError("Trying to draw non-existing sprite.");
  }
  return sprite;
}

void draw_frame(CSprite& sprite, double subimage, const BlitPlacement& placement) {
  const size_t frame = frame_of(sprite, subimage);
  // A sprite without pictures (a collision shape only) has nothing to show.
  const platform::TextureId texture = frame_texture(sprite, frame);
  if (!texture) return;
  blit({texture, static_cast<double>(sprite.width), static_cast<double>(sprite.height), 0, 0,
        static_cast<double>(sprite.width), static_cast<double>(sprite.height)},
       placement);
}

}  // namespace

int32_t sprite_add(const std::string& file, double frames, bool remove_back, bool, double xorigin, double yorigin) {
  Image image;
  if (!image_load(file_read_path(file), image)) return -1;
  return sprite_from_image(image, static_cast<int>(frames), remove_back, xorigin, yorigin);
}

int32_t sprite_create_from_surface(double surface, double x, double y, double width, double height, bool remove_back,
                                   bool, double xorigin, double yorigin) {
  if (!surface_exists(surface) || width < 1 || height < 1) return -1;
  Image whole{static_cast<int>(surface_get_width(surface)), static_cast<int>(surface_get_height(surface)), {}};
  whole.rgba.resize(static_cast<size_t>(whole.width) * whole.height * 4);
  if (!surface_set_target(surface)) return -1;
  read_target_pixels(0, 0, whole.width, whole.height, whole.rgba.data());
  surface_reset_target();
  // The rectangle, held inside the surface.
  const int left = std::clamp(static_cast<int>(x), 0, whole.width - 1);
  const int top = std::clamp(static_cast<int>(y), 0, whole.height - 1);
  Image part{std::min(static_cast<int>(width), whole.width - left),
             std::min(static_cast<int>(height), whole.height - top),
             {}};
  part.rgba.resize(static_cast<size_t>(part.width) * part.height * 4);
  for (int row = 0; row < part.height; ++row) {
    const auto from = whole.rgba.begin() + ((static_cast<ptrdiff_t>(top) + row) * whole.width + left) * 4;
    std::copy(from, from + part.width * 4, part.rgba.begin() + static_cast<ptrdiff_t>(row) * part.width * 4);
  }
  return sprite_from_image(part, 1, remove_back, xorigin, yorigin);
}

void sprite_delete(double index) {
  CSprite* sprite = sprite_get(static_cast<int32_t>(index));
  if (!sprite) return;
  batch_flush();
  for (SpriteImage& image : sprite->images) {
    if (image.texture && image.generation == platform::gpu().generation()) platform::gpu().free_texture(image.texture);
  }
  sprite_remove(static_cast<int32_t>(index));
}

void sprite_collision_mask(double index, double kind, double tolerance) {
  CSprite* sprite = sprite_get(static_cast<int32_t>(index));
  if (!sprite) return;
  if (static_cast<int>(kind) == 1 || sprite->images.empty()) {
    sprite->masks.clear();
    sprite->bbox_left = sprite->bbox_top = 0;
    sprite->bbox_right = sprite->width - 1;
    sprite->bbox_bottom = sprite->height - 1;
    return;
  }
  for (int f = 0; f < sprite->frames; ++f) {
    const std::vector<uint8_t>& rgba = sprite->images[static_cast<size_t>(f)].rgba;
    const int width = sprite->width;
    sprite_set_precise_mask(static_cast<int32_t>(index), f, [&](int32_t x, int32_t y) {
      return rgba[(static_cast<size_t>(y) * width + x) * 4 + 3] > tolerance;
    });
  }
}

void draw_sprite(double sprite, double subimage, double x, double y) {
  CSprite* s = drawn_sprite(sprite, false);
  if (!s) return;
  draw_frame(*s, subimage,
             {x, y, static_cast<double>(s->xorigin), static_cast<double>(s->yorigin), 1, 1, 0,
              colour_word(0xFFFFFF, draw_state().alpha)});
}

void draw_sprite_ext(double sprite, double subimage, double x, double y, double xscale, double yscale, double angle,
                     double colour, double alpha) {
  CSprite* s = drawn_sprite(sprite, true);
  if (!s) return;
  draw_frame(*s, subimage,
             {x, y, static_cast<double>(s->xorigin), static_cast<double>(s->yorigin), xscale, yscale, angle,
              colour_word(colour, alpha)});
}

void draw_sprite_stretched(double sprite, double subimage, double x, double y, double width, double height) {
  draw_sprite_stretched_ext(sprite, subimage, x, y, width, height, 0xFFFFFF, draw_state().alpha);
}

void draw_sprite_stretched_ext(double sprite, double subimage, double x, double y, double width, double height,
                               double colour, double alpha) {
  CSprite* s = drawn_sprite(sprite, true);
  if (!s) return;
  // Stretched to the box: the origin plays no part.
  draw_frame(*s, subimage, {x, y, 0, 0, width / s->width, height / s->height, 0, colour_word(colour, alpha)});
}

void draw_self(const CInstance& i) {
  if (!sprite_exists(i.sprite_index)) return;
  draw_sprite_ext(i.sprite_index, i.image_index, i.x, i.y, i.image_xscale, i.image_yscale, i.image_angle, i.image_blend,
                  i.image_alpha);
}
