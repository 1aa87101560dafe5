#include "runtime/Graphics/TextDrawing.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

#include "runtime/Code/Builtins.h"
#include "runtime/Font/GlyphPage.h"
#include "runtime/Font/TextLayout.h"
#include "runtime/Graphics/Batch.h"
#include "runtime/Graphics/Colour.h"
#include "runtime/Graphics/DrawState.h"

namespace {

// The texture of each glyph page, with the page version it shows.
struct PageTexture {
  platform::TextureId texture = 0;
  uint64_t generation = 0;
  uint64_t version = 0;
};

std::vector<PageTexture>& page_textures() {
  static std::vector<PageTexture> textures;
  return textures;
}

// The texture of glyph page `index`, made or brought up to date with its pixels.
platform::TextureId page_texture(int32_t index) {
  const std::vector<GlyphPage>& pages = glyph_pages();
  if (index < 0 || static_cast<size_t>(index) >= pages.size()) return 0;
  const GlyphPage& page = pages[static_cast<size_t>(index)];
  std::vector<PageTexture>& textures = page_textures();
  if (textures.size() <= static_cast<size_t>(index)) textures.resize(static_cast<size_t>(index) + 1);
  PageTexture& t = textures[static_cast<size_t>(index)];
  platform::Gpu& gpu = platform::gpu();
  if (!gpu.ready()) return 0;
  if (t.texture == 0 || t.generation != gpu.generation()) {
    t = {gpu.create_texture(GLYPH_PAGE_SIZE, GLYPH_PAGE_SIZE, platform::TextureFormat::Coverage, page.pixels, false),
         gpu.generation(), page.version};
    glyph_page_clear_changes(index);
  } else if (t.version != page.version) {
    // Only the changed rows and columns go up; glyphs already there never move.
    const PageRect r = page.changed;
    static std::vector<uint8_t> part;
    part.resize(static_cast<size_t>(r.width) * r.height);
    for (int32_t row = 0; row < r.height; ++row) {
      const uint8_t* from = page.pixels.data() + static_cast<size_t>(r.y + row) * GLYPH_PAGE_SIZE + r.x;
      std::copy(from, from + r.width, part.begin() + static_cast<ptrdiff_t>(row) * r.width);
    }
    gpu.update_texture(t.texture, r.x, r.y, r.width, r.height, part);
    t.version = page.version;
    glyph_page_clear_changes(index);
  }
  return t.texture;
}

struct Corners {
  uint32_t c1, c2, c3, c4;  // top left, top right, bottom right, bottom left
  bool uniform;
};

// The colour at (x, y) of the box, blended from its corners channel by channel.
uint32_t colour_at(const Corners& c, const TextBox& box, float x, float y) {
  if (c.uniform) return c.c1;
  const float w = box.right - box.left, h = box.bottom - box.top;
  const float s = w > 0 ? std::clamp((x - box.left) / w, 0.0f, 1.0f) : 0;
  const float t = h > 0 ? std::clamp((y - box.top) / h, 0.0f, 1.0f) : 0;
  uint32_t out = 0;
  for (int shift = 0; shift < 32; shift += 8) {
    const auto channel = [&](uint32_t word) { return static_cast<float>((word >> shift) & 0xFF); };
    const float top = channel(c.c1) + (channel(c.c2) - channel(c.c1)) * s;
    const float bottom = channel(c.c4) + (channel(c.c3) - channel(c.c4)) * s;
    out |= static_cast<uint32_t>(std::lround(top + (bottom - top) * t)) << shift;
  }
  return out;
}

void draw_laid_out(double x, double y, std::string_view text, double separation, double width, double xscale,
                   double yscale, double angle, const Corners& corners) {
  const TextLayout& layout = text_layout(text, separation, width);
  const double radians = angle * std::numbers::pi / 180;
  const double c = std::cos(radians), s = std::sin(radians);
  const float z = draw_state().depth;
  for (const GlyphQuad& q : layout.quads) {
    const platform::TextureId texture = page_texture(q.page);
    if (!texture) continue;
    const auto corner = [&](float px, float py, float u, float v) {
      const double dx = px * xscale, dy = py * yscale;
      return platform::Vertex{static_cast<float>(x + dx * c + dy * s),
                              static_cast<float>(y - dx * s + dy * c),
                              z,
                              colour_at(corners, layout.box, px, py),
                              u,
                              v};
    };
    const platform::Vertex quad[4] = {corner(q.left, q.top, q.u0, q.v0), corner(q.right, q.top, q.u1, q.v0),
                                      corner(q.right, q.bottom, q.u1, q.v1), corner(q.left, q.bottom, q.u0, q.v1)};
    batch_quad(texture, quad);
  }
}

Corners current_colour() {
  const uint32_t word = colour_word(draw_state().colour, draw_state().alpha);
  return {word, word, word, word, true};
}

Corners corner_colours(double c1, double c2, double c3, double c4, double alpha) {
  return {colour_word(c1, alpha), colour_word(c2, alpha), colour_word(c3, alpha), colour_word(c4, alpha), false};
}

}  // namespace

void draw_text(double x, double y, std::string_view text) {
  draw_laid_out(x, y, text, -1, -1, 1, 1, 0, current_colour());
}

void draw_text_ext(double x, double y, std::string_view text, double separation, double width) {
  draw_laid_out(x, y, text, separation, width, 1, 1, 0, current_colour());
}

void draw_text_transformed(double x, double y, std::string_view text, double xscale, double yscale, double angle) {
  draw_laid_out(x, y, text, -1, -1, xscale, yscale, angle, current_colour());
}

void draw_text_ext_transformed(double x, double y, std::string_view text, double separation, double width,
                               double xscale, double yscale, double angle) {
  draw_laid_out(x, y, text, separation, width, xscale, yscale, angle, current_colour());
}

void draw_text_colour(double x, double y, std::string_view text, double c1, double c2, double c3, double c4,
                      double alpha) {
  draw_laid_out(x, y, text, -1, -1, 1, 1, 0, corner_colours(c1, c2, c3, c4, alpha));
}

void draw_text_ext_colour(double x, double y, std::string_view text, double separation, double width, double c1,
                          double c2, double c3, double c4, double alpha) {
  draw_laid_out(x, y, text, separation, width, 1, 1, 0, corner_colours(c1, c2, c3, c4, alpha));
}

void draw_text_transformed_colour(double x, double y, std::string_view text, double xscale, double yscale, double angle,
                                  double c1, double c2, double c3, double c4, double alpha) {
  draw_laid_out(x, y, text, -1, -1, xscale, yscale, angle, corner_colours(c1, c2, c3, c4, alpha));
}

namespace {

BUILTIN_ADAPTER(draw_text) { draw_text(arg_real(args, 0), arg_real(args, 1), arg_text(args, 2)); }
BUILTIN_ADAPTER(draw_text_ext) {
  draw_text_ext(arg_real(args, 0), arg_real(args, 1), arg_text(args, 2), arg_real(args, 3), arg_real(args, 4));
}
BUILTIN_ADAPTER(draw_text_transformed) {
  draw_text_transformed(arg_real(args, 0), arg_real(args, 1), arg_text(args, 2), arg_real(args, 3), arg_real(args, 4),
                        arg_real(args, 5));
}
BUILTIN_ADAPTER(draw_text_ext_transformed) {
  draw_text_ext_transformed(arg_real(args, 0), arg_real(args, 1), arg_text(args, 2), arg_real(args, 3),
                            arg_real(args, 4), arg_real(args, 5), arg_real(args, 6), arg_real(args, 7));
}
BUILTIN_ADAPTER(draw_text_colour) {
  draw_text_colour(arg_real(args, 0), arg_real(args, 1), arg_text(args, 2), arg_real(args, 3), arg_real(args, 4),
                   arg_real(args, 5), arg_real(args, 6), arg_real(args, 7));
}
BUILTIN_ADAPTER(draw_text_ext_colour) {
  draw_text_ext_colour(arg_real(args, 0), arg_real(args, 1), arg_text(args, 2), arg_real(args, 3), arg_real(args, 4),
                       arg_real(args, 5), arg_real(args, 6), arg_real(args, 7), arg_real(args, 8), arg_real(args, 9));
}
BUILTIN_ADAPTER(draw_text_transformed_colour) {
  draw_text_transformed_colour(arg_real(args, 0), arg_real(args, 1), arg_text(args, 2), arg_real(args, 3),
                               arg_real(args, 4), arg_real(args, 5), arg_real(args, 6), arg_real(args, 7),
                               arg_real(args, 8), arg_real(args, 9), arg_real(args, 10));
}

}  // namespace

void register_text_drawing_builtins() {
  builtin_register("draw_text", builtin_draw_text, 3);
  builtin_register("draw_text_ext", builtin_draw_text_ext, 5);
  builtin_register("draw_text_transformed", builtin_draw_text_transformed, 6);
  builtin_register("draw_text_ext_transformed", builtin_draw_text_ext_transformed, 8);
  builtin_register("draw_text_colour", builtin_draw_text_colour, 8);
  builtin_register("draw_text_color", builtin_draw_text_colour, 8);
  builtin_register("draw_text_ext_colour", builtin_draw_text_ext_colour, 10);
  builtin_register("draw_text_ext_color", builtin_draw_text_ext_colour, 10);
  builtin_register("draw_text_transformed_colour", builtin_draw_text_transformed_colour, 11);
  builtin_register("draw_text_transformed_color", builtin_draw_text_transformed_colour, 11);
}
