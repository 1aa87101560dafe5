// Shared by the font tests: a clean text state before each test, the glyph
// of a character in a font, and the debug stream's lines.
#pragma once

#include <gtest/gtest.h>

#include "runtime/Code/Builtins.h"
#include "runtime/Font/Font.h"
#include "runtime/Font/TextState.h"
#include "support/DebugLines.h"

// Ids of the package's fonts by their asset index.
inline constexpr int32_t EDITOR_FONT = 0, EDITOR_BOLD_FONT = 1, DYSLEXIA_FONT = 5, DYSLEXIA_BOLD_FONT = 6;

class FontTest : public ::testing::Test {
 protected:
  void SetUp() override {
    register_runtime_builtins();
    TearDown();
  }
  void TearDown() override {
    draw_set_font(-1);
    draw_set_halign(TEXT_ALIGN_START);
    draw_set_valign(TEXT_ALIGN_START);
  }

  // The advance of `code_point` in font `font`, failing the test when the font has no glyph for it.
  static int32_t advance_of(int32_t font, uint32_t code_point) {
    const CGlyph* glyph = font_or_default(font).glyph(code_point);
    EXPECT_NE(glyph, nullptr) << "no glyph for " << code_point;
    return glyph ? glyph->shift : 0;
  }
  static int32_t line_height_of(int32_t font) { return font_or_default(font).line_height; }
};
