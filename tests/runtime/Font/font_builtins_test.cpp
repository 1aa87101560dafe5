// The font and text built-ins called by name, as programs call them.
#include "font_fixture.h"
#include "runtime/Font/TextLayout.h"
#include "runtime/Support/AssetIndex.h"
#include "support/Fatal.h"

namespace {

constexpr auto REF_FONT = static_cast<uint32_t>(AssetKind::Font);

RValue call(std::string_view name, std::initializer_list<RValue> arguments) {
  std::vector<RValue> args(arguments);
  RValue result;
  EXPECT_TRUE(builtin_call(name, result, nullptr, nullptr, static_cast<int>(args.size()), args.data())) << name;
  return result;
}

double number_of(const RValue& v) {
  EXPECT_TRUE(v.is(Kind::Number)) << kind_name(v.kind());
  return v.real;
}

}  // namespace

TEST_F(FontTest, FontAddByNameGivesAFontRef) {
  const RValue font = call("font_add", {RValue::text("Tahoma.ttf"), RValue::number(18), RValue::number(0),
                                        RValue::number(0), RValue::number(32), RValue::number(128)});
  ASSERT_TRUE(font.is(Kind::Ref));
  EXPECT_EQ(font.ref_type(), REF_FONT);
  EXPECT_GE(font.ref_index(), 7);
  EXPECT_EQ(number_of(call("font_exists", {font})), 1);
  EXPECT_EQ(number_of(call("font_exists", {RValue::number(font.ref_index())})), 1);
  EXPECT_EQ(call("font_get_name", {font}).string_view(), "__newfont" + std::to_string(font.ref_index()));
  EXPECT_EQ(number_of(call("font_get_size", {font})), 18);

  EXPECT_EQ(number_of(call("font_delete", {font})), 1);
  EXPECT_EQ(number_of(call("font_exists", {font})), 0);
  EXPECT_FATAL(call("font_delete", {font}), "Trying to delete non-existing font.");
  EXPECT_EQ(number_of(call("font_exists", {RValue::text("0")})), 0) << "a text names no font";

  DebugCapture debug;
  const RValue missing = call("font_add", {RValue::text("Nessuno.ttf"), RValue::number(18), RValue::number(0),
                                           RValue::number(0), RValue::number(32), RValue::number(128)});
  ASSERT_TRUE(missing.is(Kind::Ref));
  EXPECT_EQ(missing.ref_type(), REF_FONT);
  EXPECT_EQ(missing.ref_index(), -1);
  EXPECT_EQ(debug.text(), "FreeType :: unable to find font file Nessuno.ttf\n");
}

TEST_F(FontTest, DrawSettersByNameChangeTheTextState) {
  call("draw_set_font", {RValue::ref(REF_FONT, DYSLEXIA_FONT)});
  EXPECT_EQ(text_state().font, DYSLEXIA_FONT);
  call("draw_set_font", {RValue::number(EDITOR_FONT)});
  EXPECT_EQ(text_state().font, EDITOR_FONT);
  call("draw_set_font", {RValue::number(4321)});
  EXPECT_EQ(text_state().font, -1);
  call("draw_set_halign", {RValue::number(2)});
  call("draw_set_valign", {RValue::number(1)});
  EXPECT_EQ(text_state().halign, TEXT_ALIGN_END);
  EXPECT_EQ(text_state().valign, TEXT_ALIGN_CENTRE);
}

TEST_F(FontTest, MeasuresByNameTakeTheTextFormOfAnyValue) {
  call("draw_set_font", {RValue::number(EDITOR_FONT)});
  EXPECT_EQ(number_of(call("string_width", {RValue::text("a\nbbb")})), 21);
  EXPECT_EQ(number_of(call("string_width", {RValue::number(123)})), 21);
  EXPECT_EQ(number_of(call("string_width", {RValue::number(0.5)})), string_width("0.50"));
  EXPECT_EQ(number_of(call("string_height", {RValue::text("a\r\nb")})), 30);
  EXPECT_EQ(number_of(call("string_width_ext", {RValue::text("uno due tre"), RValue::number(-1), RValue::number(48)})),
            21);
  EXPECT_EQ(number_of(call("string_height_ext", {RValue::text("uno due tre"), RValue::number(20), RValue::number(48)})),
            60);
}
