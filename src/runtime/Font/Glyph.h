// The record of one glyph of a font.
//
// A glyph's rectangle is a whole cell of the font's line height, with the
// glyph drawn at its place under the top of the line: so a glyph needs no
// vertical offset, and a line of glyphs is a row of cells.
#pragma once

#include <cstdint>

struct CGlyph {
  uint32_t code_point = 0;
  // The rectangle on its glyph page; a glyph without pixels (a blank) is 0 wide on page -1.
  int32_t x = 0, y = 0, width = 0, height = 0;
  int32_t page = -1;
  int32_t shift = 0;   // the advance of the pen, in pixels
  int32_t offset = 0;  // where the rectangle starts, from the pen
};
