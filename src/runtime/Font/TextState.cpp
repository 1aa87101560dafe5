#include "runtime/Font/TextState.h"

#include "runtime/Font/Font.h"

namespace {

TextState& state() {
  static TextState s;
  return s;
}

}  // namespace

const TextState& text_state() { return state(); }

void draw_set_font(int32_t font) { state().font = font_exists(font) ? font : -1; }

void draw_set_halign(int32_t align) { state().halign = align; }

void draw_set_valign(int32_t align) { state().valign = align; }
