// The font and text built-ins called by name, as programs call them.
#include "font_fixture.h"
#include "runtime/Code/Conversions.h"
#include "runtime/Font/TextLayout.h"
#include "runtime/Support/AssetIndex.h"
#include "support/Fatal.h"
#include "support/CallBuiltin.h"

namespace {

constexpr auto REF_FONT = static_cast<uint32_t>(AssetKind::Font);

double number_of(const RValue& v) {
  EXPECT_TRUE(v.is(Kind::Number)) << kind_name(v.kind());
  return v.real;
}

RValue font_add_by_name(const char* name) {
  return call_builtin("font_add", {RValue::text(name), RValue::number(18), RValue::number(0), RValue::number(0),
                           RValue::number(32), RValue::number(128)});
}

}  // namespace

TEST_F(FontTest, FontAddByNameGivesAFontRef) {
  const RValue font = font_add_by_name("Tahoma.ttf");
  ASSERT_TRUE(font.is(Kind::Ref));
  EXPECT_EQ(font.ref_type(), REF_FONT);
  EXPECT_GE(font.ref_index(), 7) << "the package's fonts hold the first slots";
  EXPECT_EQ(number_of(call_builtin("font_exists", {font})), 1);
  EXPECT_EQ(number_of(call_builtin("font_exists", {RValue::number(font.ref_index())})), 1);
  EXPECT_EQ(call_builtin("font_get_name", {font}).string_view(), "__newfont" + std::to_string(font.ref_index()));
  EXPECT_EQ(number_of(call_builtin("font_get_size", {font})), 18);

  EXPECT_EQ(number_of(call_builtin("font_delete", {font})), 1);
  EXPECT_EQ(number_of(call_builtin("font_exists", {font})), 0);
  EXPECT_EQ(number_of(call_builtin("font_get_size", {font})), 0);
  EXPECT_EQ(number_of(call_builtin("font_exists", {RValue::text("0")})), 0) << "a text names no font";
  // Neither a deleted font nor the default one can be deleted.
  for (const RValue& gone : {font, RValue::number(-1), RValue::number(12345)}) {
    EXPECT_FATAL(call_builtin("font_delete", {gone}), "Trying to delete non-existing font.");
  }

  RValue missing;
  EXPECT_EQ(debug_lines([&] { missing = font_add_by_name("Nessuno.ttf"); }),
            "FreeType :: unable to find font file Nessuno.ttf\n");
  ASSERT_TRUE(missing.is(Kind::Ref));
  EXPECT_EQ(missing.ref_type(), REF_FONT);
  EXPECT_EQ(missing.ref_index(), -1);
}

TEST_F(FontTest, DrawSettersByNameChangeTheTextStateAndUnknownFontsFallBack) {
  const int32_t default_width = string_width("Velant");
  call_builtin("draw_set_font", {RValue::ref(REF_FONT, DYSLEXIA_FONT)});
  EXPECT_EQ(text_state().font, DYSLEXIA_FONT);
  call_builtin("draw_set_font", {RValue::number(EDITOR_FONT)});
  EXPECT_EQ(text_state().font, EDITOR_FONT);
  EXPECT_NE(string_width("Velant"), default_width);
  for (const double unknown : {4321.0, -7.0}) {
    call_builtin("draw_set_font", {RValue::number(unknown)});
    EXPECT_EQ(text_state().font, -1) << unknown;
  }
  EXPECT_EQ(string_width("Velant"), default_width);
  call_builtin("draw_set_halign", {RValue::number(2)});
  call_builtin("draw_set_valign", {RValue::number(1)});
  EXPECT_EQ(text_state().halign, TEXT_ALIGN_END);
  EXPECT_EQ(text_state().valign, TEXT_ALIGN_CENTRE);
}

// Cells of 7 by 15 pixels in the editor's fonts, 9 wide in the dyslexia ones.
// Widths are of the widest line, heights count lines ("\r\n" is one line end,
// "#" an ordinary character); wrapped texts break at the last space that fits.
TEST_F(FontTest, MeasuresByNameTakeTheTextFormOfAnyValue) {
  struct Case { int32_t font; const char* name; std::vector<RValue> args; double result; };
  const auto t = [](const char* text) { return RValue::text(text); };
  const auto n = [](double number) { return RValue::number(number); };
  const Case cases[] = {
      {EDITOR_FONT, "string_width", {t("")}, 0},          {EDITOR_FONT, "string_width", {t("a\nbbb")}, 21},
      {EDITOR_FONT, "string_width", {n(123)}, 21},        {EDITOR_FONT, "string_width", {n(0.5)}, 28} /* "0.50" */,
      {EDITOR_FONT, "string_width", {t("città")}, 35},    {EDITOR_FONT, "string_width", {t("a#b")}, 21},
      {EDITOR_BOLD_FONT, "string_width", {t("abc")}, 21}, {DYSLEXIA_FONT, "string_width", {t("abc")}, 27},
      {DYSLEXIA_BOLD_FONT, "string_width", {t("abc")}, 27},
      {EDITOR_FONT, "string_height", {t("")}, 15},        {EDITOR_FONT, "string_height", {t("a#b")}, 15},
      {EDITOR_FONT, "string_height", {t("a\r\nb")}, 30},  {EDITOR_FONT, "string_height", {t("a\n\nb")}, 45},
      {EDITOR_FONT, "string_width_ext", {t("uno due tre"), n(-1), n(48)}, 21},
      {EDITOR_FONT, "string_width_ext", {t("uno quattro"), n(-1), n(1)}, 49},  // the widest word overflows
      {EDITOR_FONT, "string_height_ext", {t("uno due tre"), n(20), n(48)}, 60},
      {EDITOR_FONT, "string_height_ext", {t("uno due tre"), n(-1), n(49)}, 30},
      {EDITOR_FONT, "string_height_ext", {t("a\n\nb"), n(20), n(-1)}, 60},
      {EDITOR_FONT, "string_height_ext", {t("a\n\nb"), n(-1), n(-1)}, 45},
  };
  for (const Case& c : cases) {
    draw_set_font(c.font);
    EXPECT_EQ(number_of(call_builtin(c.name, c.args)), c.result)
        << c.name << " " << value_to_text(c.args[0]) << " in font " << c.font;
  }
}
