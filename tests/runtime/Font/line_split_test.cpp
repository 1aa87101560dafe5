// Splitting and measuring: line ends, wrapping at a width, overflowing
// words, and widths of UTF-8 text.
#include "font_fixture.h"
#include "runtime/Font/LineSplit.h"
#include "runtime/Font/TextLayout.h"
#include "runtime/Function/Utf8.h"

namespace {

using Lines = std::vector<std::string>;

// The lines of `text` in font `font` wrapped at `width`, as UTF-8 texts.
Lines lines_of(int32_t font, std::string_view text, double width) {
  std::vector<uint32_t> code_points;
  std::vector<TextLine> lines;
  decode_utf8(text, code_points);
  split_lines(font_or_default(font), code_points, width, text, lines);
  Lines texts;
  for (const TextLine& line : lines) {
    std::string out;
    for (uint32_t i = line.begin; i < line.end; ++i) {
      char bytes[4];
      out.append(bytes, utf8::encode(code_points[i], bytes));
    }
    texts.push_back(out);
  }
  return texts;
}

}  // namespace

TEST_F(FontTest, LinesEndAtLineEndsAndWrapAtTheLastSpaceThatFits) {
  struct Case { int32_t font; const char* text; double width; Lines lines; };
  const Case cases[] = {
      // A pair of "\r" and "\n" counts once, two pairs are two line ends;
      // without a limit spaces are kept as they are.
      {-1, "a\nbb", -1, {"a", "bb"}},   {-1, "a\r\nb", -1, {"a", "b"}},  {-1, "a\n\rb", -1, {"a", "b"}},
      {-1, "a\n\nb", -1, {"a", "", "b"}}, {-1, "a\r\rb", -1, {"a", "", "b"}}, {-1, "a\r\n\r\nb", -1, {"a", "", "b"}},
      {-1, "a\n", -1, {"a", ""}},        {-1, "", -1, {""}},              {-1, " a b ", -1, {" a b "}},
      // Cells of 7 pixels: "uno due" is 49 wide. Spaces at the break are cut
      // from the line's end; those at a line's start stay.
      {EDITOR_FONT, "uno due tre", 49, {"uno due", "tre"}}, {EDITOR_FONT, "uno due tre", 48, {"uno", "due", "tre"}},
      {EDITOR_FONT, "uno due tre", 1000, {"uno due tre"}},  {EDITOR_FONT, "uno   due", 28, {"uno", " due"}},
      {EDITOR_FONT, "uno\ndue tre", 1000, {"uno", "due tre"}}, {EDITOR_FONT, "uno\r\ndue\n", 1000, {"uno", "due", ""}},
      {EDITOR_FONT, "", 100, {""}},
      // A width smaller than any word gives each word a line.
      {EDITOR_FONT, "uno due tre", 1, {"uno", "due", "tre"}},
      {EDITOR_FONT, "a supercalifragilistico b", 35, {"a", "supercalifragilistico", "b"}},
  };
  for (const Case& c : cases) EXPECT_EQ(lines_of(c.font, c.text, c.width), c.lines) << c.text << " at " << c.width;
}

TEST_F(FontTest, NothingFittingWritesTheDebugLineAndStops) {
  draw_set_font(EDITOR_FONT);
  const std::string debug = debug_lines([&] {
    EXPECT_EQ(string_height_ext("abc", -1, 0), 0);
    CallTraceScope frame("disegna_testo");
    CallTraceScope inner("a_capo");
    EXPECT_EQ(lines_of(EDITOR_FONT, "uno\nxy", 0), (Lines{}));
  });
  EXPECT_EQ(debug,
            "string \"abc\" with width 0 - unable to fit\ncallstack - \n"
            "string \"uno\nxy\" with width 0 - unable to fit\ncallstack - a_capo, disegna_testo\n");
}

TEST_F(FontTest, WidthsAddTheAdvancesOfCharactersNotBytes) {
  // In the default font, widths are the advances of the glyphs of each character.
  EXPECT_EQ(string_width("perché"), advance_of(-1, 'p') + advance_of(-1, 'e') + advance_of(-1, 'r') +
                                        advance_of(-1, 'c') + advance_of(-1, 'h') + advance_of(-1, 0xE9));
  EXPECT_GT(string_width("è"), 0);
  EXPECT_EQ(string_width("§"), advance_of(-1, 0xA7));

  // The running sum of scaled advances is truncated at each step: 3.5, then
  // 3 + 3.5 = 6.5, then 6 + 3.5 = 9.5.
  CFontQm& font = font_or_default(EDITOR_FONT);
  std::vector<uint32_t> text;
  decode_utf8("abc", text);
  font.x_scale = 0.5f;
  EXPECT_EQ(text_width(font, text), 9);
  font.x_scale = 1;
  EXPECT_EQ(text_width(font, text), 21);
}
