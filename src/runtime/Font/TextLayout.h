// Measuring text and placing its glyphs, in the current font and alignment.
//
// text_layout gives the glyph quads of a whole text in pixels relative to
// the draw point, before any transform: the drawing side translates them to
// the point, or builds its own transform of translation, rotation and scale
// and applies it to each corner. Each quad names its glyph page
// (GlyphPage.h) and its texture coordinates there.
//
// Nothing here allocates once its buffers have grown to the longest text
// seen: the editor measures and draws thousands of texts a frame.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

// One glyph: a rectangle in pixels relative to the draw point, y down, and
// the same rectangle on its glyph page in texture coordinates from 0 to 1.
struct GlyphQuad {
  float left, top, right, bottom;
  float u0, v0, u1, v1;  // u0, v0 at the top left corner
  int32_t page;
};

// The box of a whole text relative to the draw point: the colour forms give
// c1 to its top left, c2 top right, c3 bottom right, c4 bottom left.
struct TextBox {
  float left = 0, top = 0, right = 0, bottom = 0;
};

struct TextLayout {
  std::vector<GlyphQuad> quads;  // in reading order; blanks have none
  TextBox box;
  int32_t lines = 0;
};

// Lays out `text` in the current font with the current alignments, with
// line separation `separation` and wrap width `width` (either negative for
// the default: the font's line height, no wrapping). The result is reused
// by the next call.
const TextLayout& text_layout(std::string_view text, double separation, double width);

// The width in pixels of the widest line of `text` in the current font; 0 for "".
int32_t string_width(std::string_view text);
// The height of `text` in the current font: its lines times the line height.
double string_height(std::string_view text);
// The width of the widest line of `text` wrapped at `width` (negative: no wrapping).
int32_t string_width_ext(std::string_view text, double separation, double width);
// The lines of `text` wrapped at `width` times `separation` (negative: the line height).
double string_height_ext(std::string_view text, double separation, double width);
