#include "runtime/Font/FreeTypeFace.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H
#include FT_SYNTHESIS_H

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "runtime/Code/Error.h"
#include "runtime/Font/GlyphPage.h"

namespace {

// One library for the whole run: faces live as long as fonts do, and fonts
// may live until the process ends.
FT_Error freetype_library(FT_Library& library) {
  static FT_Library shared = nullptr;
  static const FT_Error status = FT_Init_FreeType(&shared);
  library = shared;
  return status;
}

// FreeType's words for a failed step, with the error code twice.
void report(FT_Error error, const std::string& what) {
  char code[32];
  std::snprintf(code, sizeof code, "%08x(%d)", static_cast<unsigned>(error), error);
  debug_output("FreeType :: error = " + std::string(code) + " :: " + what + "\n");
}

// 26.6 fixed point to whole pixels, rounded up and down.
int32_t pixels_up(FT_Pos value) { return static_cast<int32_t>((value + 63) >> 6); }
int32_t pixels_down(FT_Pos value) { return static_cast<int32_t>(value >> 6); }

}  // namespace

struct FreeTypeFace::Handle {
  FT_Face face = nullptr;
  ~Handle() {
    if (face) FT_Done_Face(face);
  }
};

FreeTypeFace::FreeTypeFace(std::unique_ptr<Handle> handle) : handle_(std::move(handle)) {}
FreeTypeFace::~FreeTypeFace() = default;

std::unique_ptr<FreeTypeFace> FreeTypeFace::open(const std::string& path, double pixel_size, bool bold, bool italic) {
  FT_Library library;
  auto handle = std::make_unique<Handle>();
  FT_Error error = freetype_library(library);
  if (error == 0) error = FT_New_Face(library, path.c_str(), 0, &handle->face);
  if (error != 0) {
    report(error, "Unable to open font file " + path);
    return nullptr;
  }
  const auto size = static_cast<FT_UInt>(std::lround(std::min(std::fabs(pixel_size), 65535.0)));
  if ((error = FT_Set_Pixel_Sizes(handle->face, 0, size)) != 0) {
    report(error, "Unable to set font pixel size");
    return nullptr;
  }
  if ((error = FT_Select_Charmap(handle->face, FT_ENCODING_UNICODE)) != 0) {
    report(error, "Unable to select unicode font character map");
    return nullptr;
  }
  std::unique_ptr<FreeTypeFace> face(new FreeTypeFace(std::move(handle)));
  const FT_Face ft = face->handle_->face;
  face->ascender_ = pixels_up(ft->size->metrics.ascender);
  face->line_height_ = face->ascender_ - pixels_down(ft->size->metrics.descender);
  face->thicken_ = bold && !(ft->style_flags & FT_STYLE_FLAG_BOLD);
  face->slant_ = italic && !(ft->style_flags & FT_STYLE_FLAG_ITALIC);
  return face;
}

bool FreeTypeFace::render(uint32_t code_point, CGlyph& glyph) {
  const FT_Face ft = handle_->face;
  const FT_UInt index = FT_Get_Char_Index(ft, code_point);
  if (index == 0 || FT_Load_Glyph(ft, index, FT_LOAD_DEFAULT) != 0) return false;
  FT_GlyphSlot slot = ft->glyph;
  if (slot->format == FT_GLYPH_FORMAT_OUTLINE) {
    // A thickened glyph keeps its advance, so that a monospaced face stays
    // on its cells in bold.
    if (thicken_) {
      const FT_Pos strength = FT_MulFix(ft->units_per_EM, ft->size->metrics.y_scale) / 24;
      FT_Outline_EmboldenXY(&slot->outline, strength, strength);
    }
    if (slant_) FT_GlyphSlot_Oblique(slot);
  }
  glyph = {};
  glyph.code_point = code_point;
  glyph.shift = static_cast<int32_t>((slot->advance.x + 32) >> 6);
  if (FT_Render_Glyph(slot, FT_RENDER_MODE_NORMAL) != 0) return true;

  const FT_Bitmap& bitmap = slot->bitmap;
  const bool mono = bitmap.pixel_mode == FT_PIXEL_MODE_MONO;
  if (bitmap.width == 0 || bitmap.rows == 0 || (!mono && bitmap.pixel_mode != FT_PIXEL_MODE_GRAY)) return true;
  // The bitmap goes into a cell of the line's height, under the top of the
  // line by the ascender; what reaches above or below the line is cut off.
  const auto width = static_cast<int32_t>(bitmap.width);
  cell_.assign(static_cast<size_t>(width) * static_cast<size_t>(line_height_), 0);
  const int32_t top = ascender_ - slot->bitmap_top;
  for (int32_t row = 0; row < static_cast<int32_t>(bitmap.rows); ++row) {
    const int32_t cell_row = top + row;
    if (cell_row < 0 || cell_row >= line_height_) continue;
    const unsigned char* source = bitmap.buffer + static_cast<ptrdiff_t>(row) * bitmap.pitch;
    uint8_t* target = &cell_[static_cast<size_t>(cell_row) * static_cast<size_t>(width)];
    for (int32_t x = 0; x < width; ++x) {
      target[x] = mono ? ((source[x >> 3] >> (7 - (x & 7))) & 1 ? 255 : 0) : source[x];
    }
  }
  const GlyphPlace place = glyph_pages_store(width, line_height_, cell_.data());
  if (place.page < 0) return true;
  glyph.x = place.x;
  glyph.y = place.y;
  glyph.width = width;
  glyph.height = line_height_;
  glyph.page = place.page;
  glyph.offset = slot->bitmap_left;
  return true;
}
