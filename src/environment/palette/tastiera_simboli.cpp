// The Tastiera simboli panel: one keyboard of 3 rows of 7 keys with the
// language's brackets, signs and logical words. The key under the pointer
// explains itself below the keyboard; a press writes its symbol alone,
// without a blank.
#include <algorithm>
#include <cmath>

#include "environment/editor/art.h"
#include "environment/editor/environment_globals.h"
#include "environment/editor/header_buttons.h"
#include "environment/palette/palette.h"
#include "environment/palette/palette_catalogue.h"
#include "environment/palette/palette_element.h"
#include "runtime/Font/TextLayout.h"
#include "runtime/Font/TextState.h"
#include "runtime/Graphics/Colour.h"
#include "runtime/Graphics/DrawState.h"
#include "runtime/Graphics/Primitives.h"
#include "runtime/Graphics/SpriteDrawing.h"
#include "runtime/Graphics/TextDrawing.h"
#include "runtime/IO/Input.h"

namespace {

int32_t g_object = -1;
constexpr int ROWS = 3, COLUMNS = 7, LONG_WORD_KEY = 16;

class TastieraSimboli : public PaletteElement {
 public:
  using PaletteElement::PaletteElement;

  void step() {
    PaletteElement::step();
    const int key = key_under_pointer();
    if (key >= 0) {
      environment_globals().ms_enter = 1;
      text = symbol_keys()[static_cast<size_t>(key)].text;
      description = symbol_keys()[static_cast<size_t>(key)].description;
    }
  }

  void press() override {
    const int key = key_under_pointer();
    if (key >= 0) insert_at_caret(symbol_keys()[static_cast<size_t>(key)].text);
  }

  void draw() {
    draw_sprite(sprite_index, 0, x, y);
    const int under = key_under_pointer();
    draw_set_font(FONT_LABEL_BOLD);
    draw_set_halign(1);
    draw_set_valign(1);
    DrawState& state = draw_state();
    const auto keys = symbol_keys();
    for (int key = 0; key < ROWS * COLUMNS; ++key) {
      const double left = x + k * (key % COLUMNS), top = y + k * (key / COLUMNS);
      if (key == under) {
        state.colour = static_cast<uint32_t>(make_colour_rgb(255, 214, 120));
        draw_roundrect_ext(left + 4, top + 4, left + k - 4, top + k - 6, 8, 8, false);
      }
      // The logical word "o esclusivamente" can't be read at the size of a key: it shows shortened, and the
      // description under the keyboard spells it out.
      const std::string symbol = key == LONG_WORD_KEY ? "o\nescl." : keys[static_cast<size_t>(key)].text;
      const double scale = std::min(1.4, (k - 10) / std::max(1, string_width(symbol)));
      state.colour = static_cast<uint32_t>(COLOUR_DARK_GREY);
      draw_text_transformed(left + k / 2, top + k / 2 - 1, symbol, scale, scale, 0);
    }
    if (under >= 0 && environment_globals().ms_enter == 1) draw_description();
    draw_set_halign(0);
    draw_set_valign(0);
  }

  std::string description;
  double k = 46;  // the side of a key

 private:
  // The key under the pointer, 0 to 20 by rows; -1 off the keyboard.
  int key_under_pointer() const {
    const double column = std::floor((mouse_x() - x) / k), row = std::floor((mouse_y() - y) / k);
    if (column < 0 || column >= COLUMNS || row < 0 || row >= ROWS) return -1;
    return static_cast<int>(row) * COLUMNS + static_cast<int>(column);
  }

  void draw_description() const {
    DrawState& state = draw_state();
    draw_set_font(FONT_LABEL_BOLD);
    draw_set_halign(0);
    draw_set_valign(0);
    const double width = std::max(200.0, string_width(description) + 30.0);
    const double height = string_height(description) + 24;
    state.colour = static_cast<uint32_t>(COLOUR_WHITE);
    draw_roundrect_ext(x, y + 200, x + width, y + 200 + height, 14, 14, false);
    state.colour = static_cast<uint32_t>(make_colour_rgb(142, 84, 196));
    draw_roundrect_ext(x, y + 200, x + width, y + 200 + height, 14, 14, true);
    state.colour = static_cast<uint32_t>(COLOUR_DARK_GREY);
    draw_text_transformed(x + 15, y + 212, description, 1, 1, 0);
  }
};

}  // namespace

void fill_tastiera_simboli(double x, double y) {
  if (first_active_instance(g_object)) return;
  instance_create(static_cast<float>(x - 208), static_cast<float>(y + 80), g_object, 0,
                  [](CInstance& made) { made.sprite_index = panel_art("tastiera_simboli"); });
}

void define_tastiera_simboli() { g_object = define_palette_element<TastieraSimboli>("tastiera_simboli").index(); }
