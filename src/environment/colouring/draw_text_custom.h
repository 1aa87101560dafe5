// The printer of tagged text: each piece behind a "[$=N]" tag in its colour,
// the pieces side by side. The code box paints its coloured lines with it,
// and the hint bar its hints.
#pragma once

#include <string>
#include <string_view>

struct CustomText {
  std::string plain;  // the text without its tags
  double width = 0;   // of the widest line, in pixels
  double height = 0;
};

// Draws `tagged` at (x, y), in the current colour until the first tag; line
// feeds inside a piece are skipped. The draw colour is put back afterwards.
CustomText draw_text_custom(double x, double y, std::string_view tagged);
// What draw_text_custom would draw, measured without drawing.
CustomText measure_text_custom(std::string_view tagged);
// The first `count` visible characters of `tagged`, its tags kept whole:
// a tagged text typed out a character at a time.
std::string string_typing_custom(std::string_view tagged, size_t count);
