#include "environment/colouring/draw_text_custom.h"

#include <gtest/gtest.h>

namespace {

TEST(DrawTextCustom, TaggedTextIsMeasuredAndTypedOutByItsVisibleCharacters) {
  const std::string tagged = "[$=255]disegna[$=0] \n[$=16744833]\"è\"[$=0]";
  EXPECT_EQ(measure_text_custom(tagged).plain, "disegna \"è\"") << "tags and line feeds are not shown";
  EXPECT_GT(measure_text_custom(tagged).width, measure_text_custom("disegna").width);
  const struct {
    size_t count;
    const char* typed;
  } rows[] = {
      {0, "[$=255]"},
      {3, "[$=255]dis"},
      {7, "[$=255]disegna[$=0]"},
      {11, "[$=255]disegna[$=0] \n[$=16744833]\"è"},  // the line feed counts; "è" is one character
      {100, "[$=255]disegna[$=0] \n[$=16744833]\"è\"[$=0]"},
  };
  for (const auto& row : rows) EXPECT_EQ(string_typing_custom(tagged, row.count), row.typed) << row.count;
}

}  // namespace
