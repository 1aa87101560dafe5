// Placing glyph quads: pen steps, alignments with their integer divisions,
// the text's box, and texture coordinates on the glyph pages.
#include "font_fixture.h"
#include "runtime/Font/GlyphPage.h"
#include "runtime/Font/TextLayout.h"

namespace {

const CGlyph& glyph_of(int32_t font, uint32_t code_point) { return *font_or_default(font).glyph(code_point); }

// The coverage of a glyph's pixels, added up.
int coverage_of(const CGlyph& glyph) {
  const GlyphPage& page = glyph_pages()[static_cast<size_t>(glyph.page)];
  int coverage = 0;
  for (int32_t y = glyph.y; y < glyph.y + glyph.height; ++y) {
    for (int32_t x = glyph.x; x < glyph.x + glyph.width; ++x) {
      coverage += page.pixels[static_cast<size_t>(y * GLYPH_PAGE_SIZE + x)];
    }
  }
  return coverage;
}

// Where the ink of row `row` of a glyph begins, from the pen; -1 for a row without ink.
int32_t ink_left_in_row(const CGlyph& glyph, int32_t row) {
  const GlyphPage& page = glyph_pages()[static_cast<size_t>(glyph.page)];
  for (int32_t x = 0; x < glyph.width; ++x) {
    const size_t at = static_cast<size_t>((glyph.y + row) * GLYPH_PAGE_SIZE + glyph.x + x);
    if (page.pixels[at] > 128) return x + glyph.offset;
  }
  return -1;
}

// The left, top, right and bottom of a quad or a box, to compare at once.
template <typename Rect>
std::vector<float> edges(const Rect& r) {
  return {r.left, r.top, r.right, r.bottom};
}

}  // namespace

TEST_F(FontTest, GlyphsStandAtTheirOffsetsAlongThePenAndLinesByTheSeparation) {
  draw_set_font(EDITOR_FONT);
  const CGlyph a = glyph_of(EDITOR_FONT, 'a');
  const CGlyph b = glyph_of(EDITOR_FONT, 'b');
  const TextLayout& layout = text_layout("a b", -1, -1);
  ASSERT_EQ(layout.quads.size(), 2u);  // the blank has no pixels and no quad
  const GlyphQuad q = layout.quads[0];
  const auto left = static_cast<float>(a.offset);
  EXPECT_EQ(edges(q), (std::vector<float>{left, 0, left + static_cast<float>(a.width), 15}));
  EXPECT_FLOAT_EQ(layout.quads[1].left, static_cast<float>(14 + b.offset));
  EXPECT_EQ(edges(layout.box), (std::vector<float>{0, 0, 21, 15}));
  // The texture coordinates frame the glyph's cell on its page.
  ASSERT_GE(q.page, 0);
  EXPECT_FLOAT_EQ(q.u0 * GLYPH_PAGE_SIZE, static_cast<float>(a.x));
  EXPECT_FLOAT_EQ(q.v0 * GLYPH_PAGE_SIZE, static_cast<float>(a.y));
  EXPECT_FLOAT_EQ((q.u1 - q.u0) * GLYPH_PAGE_SIZE, q.right - q.left);
  EXPECT_FLOAT_EQ((q.v1 - q.v0) * GLYPH_PAGE_SIZE, q.bottom - q.top);

  const TextLayout& wrapped = text_layout("uno due tre", 20, 48);
  EXPECT_EQ(wrapped.lines, 3);
  ASSERT_EQ(wrapped.quads.size(), 9u);
  EXPECT_FLOAT_EQ(wrapped.quads[6].top, 40);
  EXPECT_FLOAT_EQ(wrapped.quads[6].left, static_cast<float>(glyph_of(EDITOR_FONT, 't').offset));
  EXPECT_EQ(edges(wrapped.box), (std::vector<float>{0, 0, 21, 40 + 15}));
  EXPECT_EQ(text_layout("a#b", -1, -1).quads.size(), 3u) << "'#' is an ordinary character";
}

TEST_F(FontTest, AlignmentsPlaceEachLineByItsOwnWidthAndTheLinesByTheirCount) {
  draw_set_font(EDITOR_FONT);
  const auto a = static_cast<float>(glyph_of(EDITOR_FONT, 'a').offset);
  draw_set_halign(TEXT_ALIGN_CENTRE);
  const TextLayout& centred = text_layout("ab\nabc", -1, -1);
  ASSERT_EQ(centred.quads.size(), 5u);
  // Half of an odd width is not rounded.
  EXPECT_FLOAT_EQ(centred.quads[0].left, -7 + a);
  EXPECT_FLOAT_EQ(centred.quads[2].left, -10.5f + a);
  EXPECT_EQ(edges(centred.box), (std::vector<float>{-10.5f, 0, 10.5f, 30}));

  draw_set_halign(TEXT_ALIGN_END);
  const TextLayout& right = text_layout("ab\nabc", -1, -1);
  EXPECT_FLOAT_EQ(right.quads[0].left, -14 + a);
  EXPECT_FLOAT_EQ(right.quads[2].left, -21 + a);
  EXPECT_EQ(edges(right.box), (std::vector<float>{-21, 0, 0, 30}));

  // Vertical middle alignment halves with integer divisions.
  const int32_t h = line_height_of(EDITOR_FONT);
  ASSERT_EQ(h, 15) << "an odd line height shows the integer division";
  draw_set_valign(TEXT_ALIGN_CENTRE);
  // Two lines 15 apart: 15 / 2 and 15 / 2, each whole: 7 + 7, not 15.
  EXPECT_FLOAT_EQ(text_layout("a\nb", 15, -1).quads[0].top, -14);

  draw_set_valign(TEXT_ALIGN_END);
  const TextLayout& bottom = text_layout("a\nb", 20, -1);
  EXPECT_FLOAT_EQ(bottom.quads[0].top, -15 - 20);
  EXPECT_FLOAT_EQ(bottom.quads[1].top, -15);
  EXPECT_FLOAT_EQ(bottom.box.bottom, 0);
}

TEST_F(FontTest, BoldAndItalicWithoutTheirOwnFaceAreDrawnFromTheRegularOne) {
  // The dyslexia pair has one face: its bold is thickened, on the same cells.
  const CGlyph regular = glyph_of(DYSLEXIA_FONT, 'l');
  const CGlyph bold = glyph_of(DYSLEXIA_BOLD_FONT, 'l');
  EXPECT_EQ(bold.shift, regular.shift);
  EXPECT_GT(coverage_of(bold), coverage_of(regular) * 5 / 4);

  // An italic "l" leans: its foot stands left of its top. The editor's face
  // has an oblique of its own; the stand-in for Bauhaus 93 is slanted here.
  const int32_t mono = font_add("global.font.ttf", 40, false, false, 32, 128);
  const int32_t mono_oblique = font_add("global.font.ttf", 40, false, true, 32, 128);
  const int32_t rounded = font_add("Bauhaus_93.ttf", 40, false, false, 32, 128);
  const int32_t rounded_slanted = font_add("Bauhaus_93.ttf", 40, false, true, 32, 128);
  for (auto [straight, leaning] : {std::pair{mono, mono_oblique}, std::pair{rounded, rounded_slanted}}) {
    const CGlyph s = glyph_of(straight, 'l');
    const CGlyph l = glyph_of(leaning, 'l');
    const int32_t top = font_get(straight)->line_height / 3, foot = font_get(straight)->line_height * 2 / 3;
    EXPECT_EQ(ink_left_in_row(s, top), ink_left_in_row(s, foot));
    EXPECT_GT(ink_left_in_row(l, top), ink_left_in_row(l, foot));
  }
  for (int32_t f : {mono, mono_oblique, rounded, rounded_slanted}) font_delete(f);
}

TEST_F(FontTest, FontScalesStretchQuadsAndLines) {
  draw_set_font(EDITOR_FONT);
  CFontQm& font = font_or_default(EDITOR_FONT);
  font.x_scale = 2;
  font.y_scale = 2;
  const TextLayout& layout = text_layout("ab\nc", -1, -1);
  const CGlyph b = glyph_of(EDITOR_FONT, 'b');
  EXPECT_FLOAT_EQ(layout.quads[1].left, static_cast<float>(14 + 2 * b.offset));
  EXPECT_FLOAT_EQ(layout.quads[1].right - layout.quads[1].left, static_cast<float>(2 * b.width));
  EXPECT_FLOAT_EQ(layout.quads[1].bottom, 30);
  EXPECT_FLOAT_EQ(layout.quads[2].top, 30);
  EXPECT_EQ(string_width("ab"), 28);
  font.x_scale = 1;
  font.y_scale = 1;
}

TEST_F(FontTest, LayoutReusesItsBuffers) {
  draw_set_font(EDITOR_FONT);
  const TextLayout& long_text = text_layout("una riga piuttosto lunga da disegnare", -1, -1);
  const GlyphQuad* buffer = long_text.quads.data();
  const TextLayout& short_text = text_layout("breve", -1, -1);
  EXPECT_EQ(&short_text, &long_text);
  EXPECT_EQ(short_text.quads.size(), 5u);
  EXPECT_EQ(short_text.quads.data(), buffer);
}
