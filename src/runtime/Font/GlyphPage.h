// Glyph pages: square coverage bitmaps, one byte a pixel, that hold the
// glyphs of every font as they are first used.
//
// Glyphs are packed on shelves, one shelf per cell height, so that the
// glyphs of one font fill rows of their own. A page that is full is left as
// it is and the next glyph goes to a new page; pixels never move once
// placed, so texture coordinates handed out stay right for the whole run.
//
// The drawing side uploads a page as a texture and uploads it again when its
// `version` has gone up; `changed` tells which pixels to send.
#pragma once

#include <cstdint>
#include <vector>

// Pages are square, this many pixels a side.
inline constexpr int32_t GLYPH_PAGE_SIZE = 1024;

// A rectangle of page pixels; empty when width or height is 0.
struct PageRect {
  int32_t x = 0, y = 0, width = 0, height = 0;
};

struct GlyphPage {
  // GLYPH_PAGE_SIZE rows of GLYPH_PAGE_SIZE coverage bytes, rows from the top.
  std::vector<uint8_t> pixels;
  // Goes up whenever pixels change.
  uint64_t version = 0;
  // The box of the pixels changed since the drawing side last cleared it.
  PageRect changed;

  // Packing: shelves from the top, each as high as the glyphs it takes.
  struct Shelf {
    int32_t y, height, used_width;
  };
  std::vector<Shelf> shelves;
  int32_t shelves_bottom = 0;
};

// Where a glyph bitmap went: its page and top left corner; page -1 when it
// is larger than a page.
struct GlyphPlace {
  int32_t page = -1;
  int32_t x = 0, y = 0;
};

// All glyph pages, by index: the page number of a glyph and of a quad.
const std::vector<GlyphPage>& glyph_pages();
// Clears the box of changed pixels of page `page`, once they are uploaded.
void glyph_page_clear_changes(int32_t page);
// Finds room for a `width` x `height` bitmap and copies `coverage` there
// (rows of `width` bytes); adds a page when none has room.
GlyphPlace glyph_pages_store(int32_t width, int32_t height, const uint8_t* coverage);
