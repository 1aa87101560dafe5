// A font file opened with FreeType at one pixel size, rendering glyphs
// into the glyph pages on request.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "runtime/Font/Glyph.h"

class FreeTypeFace {
 public:
  // Opens the font file `path` at `pixel_size`, with the Unicode character
  // map. Bold and italic that the face hasn't of its own are drawn by
  // thickening and slanting the outlines. A failure writes FreeType's debug
  // line and gives null.
  static std::unique_ptr<FreeTypeFace> open(const std::string& path, double pixel_size, bool bold, bool italic);
  ~FreeTypeFace();
  FreeTypeFace(const FreeTypeFace&) = delete;
  FreeTypeFace& operator=(const FreeTypeFace&) = delete;

  // Pixels from the top of a line to the baseline, and from line to line.
  int32_t ascender() const { return ascender_; }
  int32_t line_height() const { return line_height_; }
  // Renders `code_point` into the glyph pages and describes it in `glyph`;
  // false when the face has no glyph for it.
  bool render(uint32_t code_point, CGlyph& glyph);

 private:
  struct Handle;
  explicit FreeTypeFace(std::unique_ptr<Handle> handle);

  std::unique_ptr<Handle> handle_;
  int32_t ascender_ = 0;
  int32_t line_height_ = 0;
  bool thicken_ = false;
  bool slant_ = false;
  std::vector<uint8_t> cell_;  // one glyph's cell, reused from glyph to glyph
};
