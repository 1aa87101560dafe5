// Splitting and measuring: line ends, wrapping at a width, overflowing
// words, and widths of UTF-8 text.
#include "font_fixture.h"
#include "runtime/Font/LineSplit.h"
#include "runtime/Font/TextLayout.h"
#include "runtime/Function/Utf8.h"

namespace {

// The lines of `text` in font `font` wrapped at `width`, as UTF-8 texts.
std::vector<std::string> lines_of(int32_t font, std::string_view text, double width) {
  std::vector<uint32_t> code_points;
  std::vector<TextLine> lines;
  decode_utf8(text, code_points);
  split_lines(font_or_default(font), code_points, width, text, lines);
  std::vector<std::string> texts;
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

using Lines = std::vector<std::string>;

}  // namespace

TEST_F(FontTest, LineEndsSplitAndAPairCountsOnce) {
  EXPECT_EQ(lines_of(-1, "a\nbb", -1), (Lines{"a", "bb"}));
  EXPECT_EQ(lines_of(-1, "a\r\nb", -1), (Lines{"a", "b"}));
  EXPECT_EQ(lines_of(-1, "a\n\rb", -1), (Lines{"a", "b"}));
  EXPECT_EQ(lines_of(-1, "a\n\nb", -1), (Lines{"a", "", "b"}));
  EXPECT_EQ(lines_of(-1, "a\r\rb", -1), (Lines{"a", "", "b"}));
  // Two pairs are two line ends: the empty line between them stays.
  EXPECT_EQ(lines_of(-1, "a\r\n\r\nb", -1), (Lines{"a", "", "b"}));
  EXPECT_EQ(lines_of(-1, "a\n", -1), (Lines{"a", ""}));
  EXPECT_EQ(lines_of(-1, "", -1), (Lines{""}));
  // Without a limit spaces are kept as they are.
  EXPECT_EQ(lines_of(-1, " a b ", -1), (Lines{" a b "}));
}

TEST_F(FontTest, WidthsAreOfTheWidestLineAndHeightsCountLines) {
  draw_set_font(EDITOR_FONT);
  const int32_t b = advance_of(EDITOR_FONT, 'b');
  const int32_t h = line_height_of(EDITOR_FONT);
  EXPECT_EQ(string_width(""), 0);
  EXPECT_EQ(string_width("a\nbb"), 2 * b);
  EXPECT_EQ(string_width("a\nbb"), string_width("bb"));
  EXPECT_EQ(string_height(""), h);
  EXPECT_EQ(string_height("a\r\nb"), 2 * h);
  EXPECT_EQ(string_height("a\n\nb"), 3 * h);
  EXPECT_EQ(string_height_ext("a\n\nb", 20, -1), 60);
  EXPECT_EQ(string_height_ext("a\n\nb", -1, -1), 3 * h);
}

TEST_F(FontTest, EditorFontsHaveTheirCellWidths) {
  draw_set_font(EDITOR_FONT);
  EXPECT_EQ(string_width("abc"), 21);
  EXPECT_EQ(string_height("a"), 15);
  draw_set_font(EDITOR_BOLD_FONT);
  EXPECT_EQ(string_width("abc"), 21);
  draw_set_font(DYSLEXIA_FONT);
  EXPECT_EQ(string_width("abc"), 27);
  draw_set_font(DYSLEXIA_BOLD_FONT);
  EXPECT_EQ(string_width("abc"), 27);
}

TEST_F(FontTest, AccentedTextIsMeasuredByCharacters) {
  draw_set_font(EDITOR_FONT);
  // Five characters, six bytes: a monospaced face gives five cells.
  EXPECT_EQ(string_width("città"), 5 * 7);
  EXPECT_EQ(string_width("§"), 7);
  draw_set_font(-1);
  EXPECT_EQ(string_width("perché"), advance_of(-1, 'p') + advance_of(-1, 'e') + advance_of(-1, 'r') +
                                        advance_of(-1, 'c') + advance_of(-1, 'h') + advance_of(-1, 0xE9));
  EXPECT_GT(string_width("è"), 0);
  EXPECT_EQ(string_width("è"), advance_of(-1, 0xE8));
  EXPECT_EQ(string_width("§"), advance_of(-1, 0xA7));
}

TEST_F(FontTest, HashIsAnOrdinaryCharacter) {
  draw_set_font(EDITOR_FONT);
  EXPECT_EQ(string_width("a#b"), 21);
  EXPECT_EQ(string_height("a#b"), 15);
  EXPECT_EQ(text_layout("a#b", -1, -1).quads.size(), 3u);
}

TEST_F(FontTest, WrappingBreaksAtTheLastSpaceThatFits) {
  // Cells of 7 pixels: "uno due" is 49 wide.
  EXPECT_EQ(lines_of(EDITOR_FONT, "uno due tre", 49), (Lines{"uno due", "tre"}));
  EXPECT_EQ(lines_of(EDITOR_FONT, "uno due tre", 48), (Lines{"uno", "due", "tre"}));
  EXPECT_EQ(lines_of(EDITOR_FONT, "uno due tre", 1000), (Lines{"uno due tre"}));
  // Spaces at the break are cut from the line's end; those at a line's start stay.
  EXPECT_EQ(lines_of(EDITOR_FONT, "uno   due", 28), (Lines{"uno", " due"}));
  EXPECT_EQ(lines_of(EDITOR_FONT, "uno\ndue tre", 1000), (Lines{"uno", "due tre"}));
  EXPECT_EQ(lines_of(EDITOR_FONT, "uno\r\ndue\n", 1000), (Lines{"uno", "due", ""}));
  EXPECT_EQ(lines_of(EDITOR_FONT, "", 100), (Lines{""}));
  draw_set_font(EDITOR_FONT);
  EXPECT_EQ(string_width_ext("uno due tre", -1, 48), 21);
  EXPECT_EQ(string_height_ext("uno due tre", 20, 48), 60);
  EXPECT_EQ(string_height_ext("uno due tre", -1, 49), 30);
}

TEST_F(FontTest, AWidthSmallerThanAnyWordGivesEachWordALine) {
  EXPECT_EQ(lines_of(EDITOR_FONT, "uno due tre", 1), (Lines{"uno", "due", "tre"}));
  EXPECT_EQ(lines_of(EDITOR_FONT, "a supercalifragilistico b", 35), (Lines{"a", "supercalifragilistico", "b"}));
  draw_set_font(EDITOR_FONT);
  // The widest word overflows the limit.
  EXPECT_EQ(string_width_ext("uno quattro", -1, 1), 7 * 7);
}

TEST_F(FontTest, NothingFittingWritesTheDebugLineAndStops) {
  draw_set_font(EDITOR_FONT);
  DebugCapture debug;
  EXPECT_EQ(string_height_ext("abc", -1, 0), 0);
  {
    CallTraceScope frame("disegna_testo");
    CallTraceScope inner("a_capo");
    EXPECT_EQ(lines_of(EDITOR_FONT, "uno\nxy", 0), (Lines{}));
  }
  EXPECT_EQ(debug.text(),
            "string \"abc\" with width 0 - unable to fit\ncallstack - \n"
            "string \"uno\nxy\" with width 0 - unable to fit\ncallstack - a_capo, disegna_testo\n");
}

TEST_F(FontTest, WidthsTruncateTheRunningSumOfScaledAdvances) {
  CFontQm& font = font_or_default(EDITOR_FONT);
  std::vector<uint32_t> text;
  decode_utf8("abc", text);
  font.x_scale = 0.5f;
  // 3.5, then 3 + 3.5 = 6.5, then 6 + 3.5 = 9.5: each step truncated.
  EXPECT_EQ(text_width(font, text), 9);
  font.x_scale = 1;
  EXPECT_EQ(text_width(font, text), 21);
}

TEST_F(FontTest, UnknownFontIdsFallBackToTheDefaultFont) {
  const int32_t default_width = string_width("Velant");
  draw_set_font(999);
  EXPECT_EQ(text_state().font, -1);
  EXPECT_EQ(string_width("Velant"), default_width);
  draw_set_font(-7);
  EXPECT_EQ(text_state().font, -1);
  draw_set_font(EDITOR_FONT);
  EXPECT_EQ(text_state().font, EDITOR_FONT);
  EXPECT_NE(string_width("Velant"), default_width);
}
