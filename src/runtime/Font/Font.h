// Fonts: the font object with its glyph table, and the table of fonts by id.
//
// Ids are indexes of one table that grows 5 slots at a time, with a
// parallel table of names; a free slot is taken again first. The fonts of
// the package hold the slots of their asset indexes (PackageFonts.h);
// fonts added at run time are named "__newfont%d" after their slot.
// Id -1 is the default font, made at its first use.
//
// Glyphs are rendered when they are first asked for, whatever range of
// characters the font was added with: so accented Italian text draws in a
// font that a program added for the characters 32 to 128.
#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "runtime/Font/FreeTypeFace.h"
#include "runtime/Font/Glyph.h"

class CFontQm {
 public:
  std::string name;
  float size = 0;  // in pixels
  bool bold = false, italic = false;
  int32_t first = 32, last = 127;
  int32_t line_height = 0;
  float x_scale = 1, y_scale = 1;

  // A font over an open face, or over none: a font without a face has no
  // glyphs, and only its line height.
  explicit CFontQm(std::unique_ptr<FreeTypeFace> face);

  // The glyph of `code_point`, rendered at its first use; null when the
  // font has none. Valid until the font renders its next glyph.
  const CGlyph* glyph(uint32_t code_point) {
    if (code_point < known_.size()) {
      const int32_t slot = known_[code_point];
      if (slot >= 0) return &glyphs_[static_cast<size_t>(slot)];
      if (slot == MISSING) return nullptr;
    }
    return glyph_beyond_table(code_point);
  }

 private:
  static constexpr int32_t NOT_TRIED = -1, MISSING = -2;

  const CGlyph* glyph_beyond_table(uint32_t code_point);
  // Renders the glyph; gives its slot in glyphs_, or MISSING.
  int32_t render(uint32_t code_point);

  std::unique_ptr<FreeTypeFace> face_;
  std::vector<CGlyph> glyphs_;
  // The slot of the first 256 code points, straight by code point: they are
  // nearly all the text the environment draws.
  std::array<int32_t, 256> known_;
  // The others, sorted by code point, with the slot or MISSING.
  std::vector<std::pair<uint32_t, int32_t>> others_;
};

// Loads the font file `path` at `size` pixels; null when FreeType can't
// (its debug line is written).
std::unique_ptr<CFontQm> font_load(const std::string& path, double size, bool bold, bool italic);
// Loads the first of the named files of the system's font folders that
// exists; null when none does.
std::unique_ptr<CFontQm> font_load_first(std::initializer_list<std::string_view> file_names, double size, bool bold,
                                         bool italic);
// The default font's face at `size`, or a font without glyphs when no file
// for it is installed.
std::unique_ptr<CFontQm> font_load_default_face(double size, bool bold);

// The font of id `font`, or null when there is none; -1 gives the default font.
CFontQm* font_get(int32_t font);
// The font of id `font`, falling back to the default font.
CFontQm& font_or_default(int32_t font);
// Whether the table holds a font at `font`.
bool font_exists(int32_t font);
// The table's name of font `font` ("" when there is none).
std::string_view font_get_name(int32_t font);
// Puts `font` into slot `index` under `name`, growing the table as needed.
void font_put(int32_t index, std::string name, std::unique_ptr<CFontQm> font);
// Reserves slot `index` under `name` for a font that `load(name)` makes when
// the slot is first asked for, so that a font nobody draws with is never read.
void font_put_on_first_use(int32_t index, std::string name, std::unique_ptr<CFontQm> (*load)(std::string_view name));
// Loads a font file found from `name` (FontFiles.h) at `size` pixels into
// the first free slot; its id, or -1 after a debug line.
int32_t font_add(std::string_view name, double size, bool bold, bool italic, int32_t first, int32_t last);
// Frees font `font`; fatal "Trying to delete non-existing font." for an id that holds none.
void font_delete(int32_t font);
