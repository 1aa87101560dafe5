// Splitting text into lines: the one splitter that measuring and drawing
// share, so that a text is drawn exactly as wide as it was measured.
//
// Text is split as code points. Without a width limit a line ends at CR or
// LF, a CR LF or LF CR pair being one line end. With a limit a line also
// breaks at the last space that lets it fit; a word wider than the limit
// stays whole and overflows its line. "#" is an ordinary character here.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "runtime/Font/Glyph.h"

class CFontQm;

// A line of a split text: its code points [begin, end) and its width in pixels.
struct TextLine {
  uint32_t begin, end;
  int32_t width;
};

// The pen at `pen` moved on by `glyph`'s advance scaled by `x_scale`,
// truncated to a whole pixel: widths and glyph places both step so.
inline int32_t pen_after(int32_t pen, const CGlyph& glyph, float x_scale) {
  return static_cast<int32_t>(static_cast<float>(pen) + static_cast<float>(glyph.shift) * x_scale);
}

// Decodes UTF-8 `text` into `code_points`, replacing what they held.
void decode_utf8(std::string_view text, std::vector<uint32_t>& code_points);
// The width of `code_points` in `font`: each advance scaled by the font's x
// scale and added to the running sum, truncated to whole pixels; a character
// without a glyph adds nothing.
int32_t text_width(CFontQm& font, std::span<const uint32_t> code_points);
// Splits `code_points` into `lines`, replacing what they held, with a width
// limit of `width` when it isn't negative. `text` is the same text in UTF-8,
// for the debug line written when not even one character fits a line; the
// lines found up to there are kept.
void split_lines(CFontQm& font, std::span<const uint32_t> code_points, double width, std::string_view text,
                 std::vector<TextLine>& lines);
