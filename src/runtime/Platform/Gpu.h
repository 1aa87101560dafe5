// What drawing needs of the graphics device: textures that can be render
// targets, a target with its viewport, clearing, drawing a batch of vertices
// with one primitive type and one texture, blending, filtering, the
// transform, and reading pixels back. OpenGL 3.3 core does it (gl/GlGpu.cpp);
// without a context every call does nothing and reads give zeros, so a run
// without a graphics device goes on without pictures.
#pragma once

#include <cstdint>
#include <span>

namespace platform {

// One vertex of every batch: position, colour word (alpha in the top byte,
// then blue, green, red) and texture coordinates, unused without a texture.
//
// Without a texture, vertices with `sides` above 0 make a quad that holds a
// regular polygon of that many sides: (u, v) is the place in the polygon,
// whose corners lie at distance 1 from (0, 0), the first on the u axis. The
// device draws the part of the quad inside the polygon, coloured from
// `centre_colour` at its centre to `colour` at its edges, the pixels that a
// fan of its triangles would cover, at the cost of one quad.
struct Vertex {
  float x, y, z;
  uint32_t colour;
  float u, v;
  uint32_t centre_colour = 0;
  float sides = 0;
};

// The primitive lists the device draws; strips and fans become lists
// before they reach it, so that a batch may hold many shapes. Triangles
// come with indices, so that a fan's shared vertices are sent once.
enum class Primitive : uint8_t { Points, Lines, Triangles };

enum class TextureFormat : uint8_t {
  Rgba8,     // colour and alpha, 8 bits each
  Coverage,  // one byte a pixel, read as alpha under the vertex colour (glyphs)
};

// A texture handle; 0 is none.
using TextureId = uint32_t;

class Gpu {
 public:
  virtual ~Gpu() = default;

  // The device is there to draw with. Asking makes it ready when the window
  // has a new context; the textures of an earlier context are gone then.
  virtual bool ready() = 0;
  // Counts the contexts the device has been made ready on: a texture made
  // under an earlier count no longer exists.
  virtual uint64_t generation() const = 0;

  // A texture of `width` x `height`, from `pixels` (rows from the top, as
  // many bytes a pixel as the format has) or cleared to transparent when
  // empty; a render target when asked. 0 when it can't be made.
  virtual TextureId create_texture(int width, int height, TextureFormat format, std::span<const uint8_t> pixels,
                                   bool render_target) = 0;
  // Replaces a rectangle of a texture's pixels (rows from the top).
  virtual void update_texture(TextureId texture, int x, int y, int width, int height,
                              std::span<const uint8_t> pixels) = 0;
  virtual void free_texture(TextureId texture) = 0;

  // Draws into `texture` (a render target), or into the window when 0.
  // Room coordinates keep y down on either.
  virtual void set_target(TextureId texture, int width, int height) = 0;
  virtual void set_viewport(int x, int y, int width, int height) = 0;
  // Clears the whole target; colour channels and alpha from 0 to 1.
  virtual void clear(float red, float green, float blue, float alpha) = 0;
  // Copies render target `source` onto the current target, which is a render
  // target of its size, pixel for pixel; false when it can't.
  virtual bool copy_target(TextureId source) = 0;

  // The transform from drawing coordinates to the target: 16 numbers, column-major.
  virtual void set_transform(const float (&matrix)[16]) = 0;
  // Blend factors by number (1 zero, 2 one, 5 source alpha, 6 one minus
  // source alpha, ...), for colour and alpha alike.
  virtual void set_blend(int source, int destination) = 0;
  // Linear filtering of textures, or nearest pixels.
  virtual void set_filter(bool linear) = 0;

  // Draws `vertices` as `type`, textured with `texture` (0 for none); in the
  // order of `indices` where there are any.
  virtual void draw(Primitive type, TextureId texture, std::span<const Vertex> vertices,
                    std::span<const uint32_t> indices) = 0;
  // Textured draws from now on paint the pixels that `mask` covers (its
  // alpha at the same texture place) as selected text: the texture's shape
  // in `text` over `background`, colours as red, green, blue, alpha from 0
  // to 1. A mask of 0 goes back to plain drawing.
  virtual void set_selection_mask(TextureId mask, const float (&text)[4], const float (&background)[4]) = 0;
  // The draw calls made since the last reset, for measurements.
  virtual uint64_t draw_calls() const = 0;
  virtual void reset_draw_calls() = 0;

  // Reads a rectangle of the current target into `rgba`, rows from the top.
  virtual void read_pixels(int x, int y, int width, int height, std::span<uint8_t> rgba) = 0;
};

// The device of the window in use: OpenGL when the window has a context.
Gpu& gpu();

}  // namespace platform
