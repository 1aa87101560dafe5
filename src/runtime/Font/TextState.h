// The text part of the draw state: the current font and the alignments.
// Like the rest of the draw state they hold until they are set again, across
// frames and rooms.
#pragma once

#include <cstdint>

// Horizontal alignment: 0 left, 1 centre, 2 right. Vertical: 0 top, 1 middle, 2 bottom.
inline constexpr int32_t TEXT_ALIGN_START = 0, TEXT_ALIGN_CENTRE = 1, TEXT_ALIGN_END = 2;

struct TextState {
  int32_t font = -1;
  int32_t halign = TEXT_ALIGN_START;
  int32_t valign = TEXT_ALIGN_START;
};

// The current text state.
const TextState& text_state();
// Makes `font` the current font; an id that holds no font makes it -1, the default font.
void draw_set_font(int32_t font);
// Sets the horizontal alignment: 0 left, 1 centre, 2 right.
void draw_set_halign(int32_t align);
// Sets the vertical alignment: 0 top, 1 middle, 2 bottom.
void draw_set_valign(int32_t align);
