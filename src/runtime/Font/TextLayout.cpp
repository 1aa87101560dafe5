#include "runtime/Font/TextLayout.h"

#include <algorithm>
#include <span>

#include "runtime/Font/Font.h"
#include "runtime/Font/GlyphPage.h"
#include "runtime/Font/LineSplit.h"
#include "runtime/Font/TextState.h"

namespace {

// Buffers kept from call to call.
struct Scratch {
  std::vector<uint32_t> code_points;
  std::vector<TextLine> lines;
  TextLayout layout;
};

Scratch& scratch() {
  static Scratch s;
  return s;
}

// Splits `text` into the scratch lines in the current font, and gives that font.
CFontQm& split_in_current_font(std::string_view text, double width) {
  Scratch& s = scratch();
  CFontQm& font = font_or_default(text_state().font);
  decode_utf8(text, s.code_points);
  split_lines(font, s.code_points, width, text, s.lines);
  return font;
}

int32_t line_height(const CFontQm& font) {
  return static_cast<int32_t>(static_cast<float>(font.line_height) * font.y_scale);
}

double separation_or(double separation, int32_t line_height) { return separation < 0 ? line_height : separation; }

int32_t widest(const std::vector<TextLine>& lines) {
  int32_t width = 0;
  for (const TextLine& line : lines) width = std::max(width, line.width);
  return width;
}

// The top of the first line from the draw point. Middle alignment halves
// with integer divisions, so that a text of whole sizes stays on whole pixels.
double first_line_top(int32_t valign, int32_t h, double s, size_t lines) {
  const double spread = static_cast<double>(lines - 1) * s;
  if (valign == TEXT_ALIGN_CENTRE) return -(h / 2) - static_cast<int32_t>(spread) / 2;
  if (valign == TEXT_ALIGN_END) return -h - spread;
  return 0;
}

double line_left(int32_t halign, int32_t width) {
  if (halign == TEXT_ALIGN_CENTRE) return -width / 2.0;
  if (halign == TEXT_ALIGN_END) return -width;
  return 0;
}

void place_line(CFontQm& font, std::span<const uint32_t> code_points, double x, double y,
                std::vector<GlyphQuad>& quads) {
  constexpr float to_uv = 1.0f / GLYPH_PAGE_SIZE;
  int32_t pen = 0;
  for (uint32_t c : code_points) {
    const CGlyph* glyph = font.glyph(c);
    if (!glyph) continue;
    if (glyph->page >= 0) {
      const auto left = static_cast<float>(x + pen + glyph->offset * font.x_scale);
      const auto top = static_cast<float>(y);
      quads.push_back({left, top, left + static_cast<float>(glyph->width) * font.x_scale,
                       top + static_cast<float>(glyph->height) * font.y_scale, static_cast<float>(glyph->x) * to_uv,
                       static_cast<float>(glyph->y) * to_uv, static_cast<float>(glyph->x + glyph->width) * to_uv,
                       static_cast<float>(glyph->y + glyph->height) * to_uv, glyph->page});
    }
    pen = pen_after(pen, *glyph, font.x_scale);
  }
}

}  // namespace

const TextLayout& text_layout(std::string_view text, double separation, double width) {
  CFontQm& font = split_in_current_font(text, width);
  Scratch& s = scratch();
  TextLayout& layout = s.layout;
  layout.quads.clear();
  layout.box = {};
  layout.lines = static_cast<int32_t>(s.lines.size());
  if (s.lines.empty()) return layout;

  const TextState& state = text_state();
  const int32_t h = line_height(font);
  const double sep = separation_or(separation, h);
  const double top = first_line_top(state.valign, h, sep, s.lines.size());
  double left = 0, right = 0;
  for (size_t i = 0; i < s.lines.size(); ++i) {
    const TextLine& line = s.lines[i];
    const double x = line_left(state.halign, line.width);
    left = i == 0 ? x : std::min(left, x);
    right = i == 0 ? x + line.width : std::max(right, x + line.width);
    place_line(font, std::span<const uint32_t>(s.code_points).subspan(line.begin, line.end - line.begin), x,
               top + static_cast<double>(i) * sep, layout.quads);
  }
  layout.box = {static_cast<float>(left), static_cast<float>(top), static_cast<float>(right),
                static_cast<float>(top + static_cast<double>(s.lines.size() - 1) * sep + h)};
  return layout;
}

int32_t string_width(std::string_view text) { return string_width_ext(text, -1, -1); }

double string_height(std::string_view text) { return string_height_ext(text, -1, -1); }

int32_t string_width_ext(std::string_view text, double, double width) {
  split_in_current_font(text, width);
  return widest(scratch().lines);
}

double string_height_ext(std::string_view text, double separation, double width) {
  const CFontQm& font = split_in_current_font(text, width);
  return static_cast<double>(scratch().lines.size()) * separation_or(separation, line_height(font));
}
