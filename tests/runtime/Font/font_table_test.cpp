// The font table: adding fonts from files and stand-in faces, each failure
// with its debug words, deleting, the package's fonts, and glyph pages.
#include <filesystem>

#include "font_fixture.h"
#include "runtime/Font/FontFiles.h"
#include "runtime/Font/GlyphPage.h"
#include "runtime/Font/TextLayout.h"
#include "runtime/Support/AssetIndex.h"
#include "support/SaveArea.h"

namespace {

namespace fs = std::filesystem;

// A bitmap font with one 10-pixel strike and one glyph, in the text form
// FreeType reads; `registry` names its character set.
std::string bitmap_font(const std::string& registry) {
  return "STARTFONT 2.1\nFONT -prova-medium-r-normal--10-100-75-75-c-60-" + registry +
         "-1\nSIZE 10 75 75\nFONTBOUNDINGBOX 6 10 0 -2\nSTARTPROPERTIES 5\nPIXEL_SIZE 10\nFONT_ASCENT 8\n"
         "FONT_DESCENT 2\nCHARSET_REGISTRY \"" +
         registry +
         "\"\nCHARSET_ENCODING \"1\"\nENDPROPERTIES\nCHARS 1\nSTARTCHAR A\nENCODING 65\nSWIDTH 600 0\nDWIDTH 6 0\n"
         "BBX 6 10 0 -2\nBITMAP\n00\n30\n48\n84\n84\nFC\n84\n84\n00\n00\nENDCHAR\nENDFONT\n";
}

int32_t add(const std::string& name, double size = 20, bool bold = false, bool italic = false) {
  return font_add(name, size, bold, italic, 32, 128);
}

int32_t width_in(int32_t font, std::string_view text) {
  draw_set_font(font);
  return string_width(text);
}

uint64_t all_page_versions() {
  uint64_t sum = 0;
  for (const GlyphPage& page : glyph_pages()) sum += page.version;
  return sum;
}

}  // namespace

TEST_F(FontTest, FontAddTakesTheFirstFreeSlotUnderANewName) {
  const int32_t arial = add("Arial.ttf");
  ASSERT_GE(arial, 7) << "the package's fonts hold the first slots";
  const CFontQm* font = font_get(arial);
  EXPECT_EQ(font->name, "Arial.ttf");
  EXPECT_EQ(font->first, 32);
  EXPECT_EQ(font->last, 128);
  // A deleted current font draws as the default font; its slot is taken again first.
  const int32_t default_width = width_in(-1, "Velant");
  ASSERT_NE(width_in(arial, "Velant"), default_width);
  font_delete(arial);
  EXPECT_EQ(font_get_name(arial), "");
  EXPECT_EQ(string_width("Velant"), default_width);
  const int32_t verdana = add("Verdana.ttf");
  EXPECT_EQ(verdana, arial);
  EXPECT_EQ(font_get_name(verdana), "__newfont" + std::to_string(verdana));
  font_delete(verdana);
}

TEST_F(FontTest, EveryNameProgramsUseFindsAFaceAndFacesMeasureDifferently) {
  for (const char* name : {"Comic_Sans.ttf", "Verdana.ttf", "Times_new_Roman.ttf", "Tahoma.ttf", "Brush_Script.ttf",
                           "Old_English_Text.ttf", "Chiller.ttf", "Stencil.ttf", "Gigi.ttf", "Bauhaus_93.ttf",
                           "Arial.ttf", "global.font.ttf"}) {
    int32_t font = -1;
    const std::string debug = debug_lines([&] { font = add(name); });
    EXPECT_GE(font, 0) << name << ": " << debug;
    EXPECT_EQ(debug, "") << name;
    EXPECT_GT(width_in(font, "Perché è così"), 0) << name;
    font_delete(font);
  }
  EXPECT_EQ(font_file_find("global.font.ttf", false, false), system_font_file("DejaVuSansMono.ttf"));
  EXPECT_EQ(font_file_find("Arial.ttf", true, false), system_font_file("LiberationSans-Bold.ttf"));
  // A face without a bold of its own is thickened from the regular one.
  EXPECT_EQ(font_file_find("Chiller.ttf", true, true), system_font_file("Kristi.ttf"));
  EXPECT_EQ(font_file_find("Nessuno.ttf", false, false), "");

  const std::string_view text = "Velant programma";
  const int32_t arial = add("Arial.ttf"), times = add("Times_new_Roman.ttf"), chiller = add("Chiller.ttf");
  const int32_t arial_bold = add("Arial.ttf", 20, true), arial_large = add("ARIAL.TTF", 40);
  const int32_t w = width_in(arial, text);
  EXPECT_NE(width_in(times, text), w);
  EXPECT_NE(width_in(chiller, text), w);
  EXPECT_GT(width_in(arial_bold, text), w);
  EXPECT_NEAR(width_in(arial_large, text), 2 * w, w / 10);
  for (int32_t f : {arial, times, chiller, arial_bold, arial_large}) font_delete(f);
}

TEST_F(FontTest, FilesAreTriedInOrderFromTheWorkingDirectoryOn) {
  SaveArea folder("velant_font");
  fs::copy_file(system_font_file("DejaVuSansMono.ttf"), folder / "Arial.ttf");
  const fs::path previous = fs::current_path();
  fs::current_path(folder.path());
  const int32_t font = add("Arial.ttf", 12);
  fs::current_path(previous);
  ASSERT_GE(font, 0);
  // Monospaced: "iiii" is as wide as "MMMM".
  EXPECT_EQ(width_in(font, "iiii"), width_in(font, "MMMM"));
  font_delete(font);

  EXPECT_EQ(font_load_first({"Nessuno.ttf", ""}, 12, false, false), nullptr);
  const std::unique_ptr<CFontQm> second = font_load_first({"Nessuno.ttf", "DejaVuSansMono.ttf"}, 12, false, false);
  ASSERT_NE(second, nullptr);
  EXPECT_EQ(second->name, system_font_file("DejaVuSansMono.ttf"));
  EXPECT_EQ(second->glyph('x')->shift, 7);
  const std::unique_ptr<CFontQm> fallback = font_load_default_face(12, true);
  EXPECT_TRUE(fallback->bold);
  EXPECT_NE(fallback->glyph('x'), nullptr);
}

TEST_F(FontTest, FontAddFailuresWriteFreeTypesWordsAndGiveMinusOne) {
  SaveArea folder("velant_font");
  const std::string broken = folder.write("rotto.ttf", "questo non è un font").string();
  const std::string bitmap = folder.write("bitmap.bdf", bitmap_font("ISO10646")).string();
  const std::string symbols = folder.write("simboli.bdf", bitmap_font("FontSpecific")).string();
  const std::string debug = debug_lines([&] {
    for (const auto& [name, size] :
         {std::pair<std::string, double>{"", 20}, {broken, 20}, {bitmap, 20}, {symbols, 10}}) {
      EXPECT_EQ(add(name, size), -1) << name;
    }
  });
  EXPECT_EQ(debug, "FreeType :: unable to find font file \n"
                          "FreeType :: error = 00000002(2) :: Unable to open font file " + broken + "\n"
                          "FreeType :: error = 00000017(23) :: Unable to set font pixel size\n"
                          "FreeType :: error = 00000026(38) :: Unable to select unicode font character map\n");
  // The bitmap font at its own size loads, and draws its one glyph.
  const int32_t font = add(bitmap, 10);
  ASSERT_GE(font, 0);
  EXPECT_EQ(width_in(font, "AB"), 6);
  EXPECT_EQ(text_layout("A", -1, -1).quads.size(), 1u);
  font_delete(font);
}

TEST_F(FontTest, PackageFontsHoldTheSlotsOfTheirAssets) {
  // The font table, with the package's fonts, is made at its first use.
  ASSERT_TRUE(font_exists(EDITOR_FONT));
  for (const auto& [name, index] : {std::pair<const char*, int32_t>{"fnt_editor", EDITOR_FONT},
                                    {"fnt_editor_grassetto", EDITOR_BOLD_FONT}, {"fnt_dislessia", DYSLEXIA_FONT},
                                    {"fnt_dislessia_grassetto", DYSLEXIA_BOLD_FONT}}) {
    const RValue asset = asset_get_index(name);
    EXPECT_EQ(asset.ref_type(), static_cast<uint32_t>(AssetKind::Font)) << name;
    EXPECT_EQ(asset.ref_index(), index) << name;
    EXPECT_EQ(font_get_name(index), name);
  }
  EXPECT_EQ(asset_name(AssetKind::Font, 2), font_get_name(2));
}

TEST_F(FontTest, ANewGlyphRaisesThePageVersionOnce) {
  const int32_t font = add("Gigi.ttf", 33);
  ASSERT_GE(font, 0);
  draw_set_font(font);
  const uint64_t before = all_page_versions();
  string_width(" ");
  EXPECT_EQ(all_page_versions(), before) << "a blank has no pixels";
  string_width("Q");
  EXPECT_EQ(all_page_versions(), before + 1);
  string_width("QQ");
  text_layout("Q", -1, -1);
  EXPECT_EQ(all_page_versions(), before + 1) << "a glyph is rendered once";

  const CGlyph q = *font_get(font)->glyph('Q');
  glyph_page_clear_changes(q.page);
  EXPECT_EQ(glyph_pages()[static_cast<size_t>(q.page)].changed.width, 0);
  string_width("Z");
  const CGlyph z = *font_get(font)->glyph('Z');
  const PageRect changed = glyph_pages()[static_cast<size_t>(z.page)].changed;
  EXPECT_EQ((std::vector{changed.x, changed.y, changed.width, changed.height}),
            (std::vector{z.x, z.y, z.width, z.height}));
  font_delete(font);
}

TEST_F(FontTest, FullPagesMakeRoomOnANewPage) {
  std::vector<uint8_t> cell(500 * 500, 200);
  const size_t pages = glyph_pages().size();
  GlyphPlace last;
  // A page takes four cells of 500 at most: twelve need new pages.
  for (int i = 0; i < 12; ++i) last = glyph_pages_store(500, 500, cell.data());
  EXPECT_GT(glyph_pages().size(), pages);
  const GlyphPage& page = glyph_pages()[static_cast<size_t>(last.page)];
  EXPECT_EQ(page.pixels[static_cast<size_t>(last.y * GLYPH_PAGE_SIZE + last.x)], 200);
  EXPECT_EQ(glyph_pages_store(GLYPH_PAGE_SIZE + 1, 10, cell.data()).page, -1);
}
