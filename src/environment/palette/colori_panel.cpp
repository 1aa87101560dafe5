// The Colori panel: thirty swatches in rows of six. The swatch under the
// pointer shows its name and its red, green and blue; a press writes the
// colour's name with a blank each side.
#include <string>

#include "environment/editor/art.h"
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

namespace {

int32_t g_object = -1;
constexpr int COLUMNS = 6;
constexpr double INFO_X = 950, INFO_Y = 375;

class ColorIcon : public PaletteElement {
 public:
  using PaletteElement::PaletteElement;

  void step() {
    PaletteElement::step();
    enter = pointed() ? 1 : 0;
  }

  void press() override { insert_at_caret(" " + text + " "); }

  void draw() {
    if (colour().r + colour().g + colour().b == 0) {
      // Behind the grid, so that the black swatch stands out from the page.
      const double alpha = draw_state().alpha;
      draw_state().alpha = 0.35;
      draw_rectangle_colour(227, 85, 874, 626, make_colour_rgb(236, 236, 244), make_colour_rgb(236, 236, 244),
                            make_colour_rgb(196, 196, 212), make_colour_rgb(196, 196, 212), false);
      draw_state().alpha = alpha;
    }
    const double sink = enter ? 2 : 0;
    draw_sprite_ext(sprite_index, 0, x, y + sink, 1, 1, 0, image_blend, 1);
    if (enter) draw_information();
  }

  int enter = 0;
  int index = 0;  // in the list of colours

 private:
  const NamedColour& colour() const { return palette_colours()[static_cast<size_t>(index)]; }

  void draw_information() const {
    const NamedColour& c = colour();
    DrawState& state = draw_state();
    state.colour = static_cast<uint32_t>(COLOUR_WHITE);
    draw_roundrect_ext(INFO_X, INFO_Y, INFO_X + 200, INFO_Y + 110, 14, 14, false);
    state.colour = static_cast<uint32_t>(COLOUR_DARK_GREY);
    draw_roundrect_ext(INFO_X, INFO_Y, INFO_X + 200, INFO_Y + 110, 14, 14, true);
    draw_set_font(FONT_LABEL_BOLD);
    draw_set_halign(0);
    draw_set_valign(0);
    const std::string lines[] = {"ROSSO: " + std::to_string(c.r), "VERDE: " + std::to_string(c.g),
                                 "BLU: " + std::to_string(c.b)};
    const double line_colours[] = {make_colour_rgb(200, 30, 30), make_colour_rgb(30, 150, 30), make_colour_rgb(30, 60, 210)};
    for (int k = 0; k < 3; ++k) {
      state.colour = static_cast<uint32_t>(line_colours[k]);
      draw_text_transformed(INFO_X + 20, INFO_Y + 12 + 30 * k, lines[k], 1.1, 1.1, 0);
    }
    draw_set_font(FONT_LABEL_BOLD);
    const double width = string_width(text) * 1.1 + 30;
    const uint32_t pill = c.r + c.g + c.b > 600 ? static_cast<uint32_t>(COLOUR_DARK_GREY) : static_cast<uint32_t>(image_blend);
    draw_pill(INFO_X, INFO_Y + 120, width, 36, pill, text, 1.1);
  }
};

}  // namespace

void fill_colori(double x, double y) {
  const auto colours = palette_colours();
  for (size_t k = 0; k < colours.size(); ++k) {
    const double column = static_cast<double>(k % COLUMNS), row = static_cast<double>(k / COLUMNS);
    const NamedColour& c = colours[k];
    // The black swatch draws the backdrop of the grid, so it goes first.
    const float depth = c.r + c.g + c.b == 0 ? 1 : 0;
    instance_create(static_cast<float>(x - 305 + 100 * column), static_cast<float>(y + 80 + 100 * row), g_object, depth,
                    [&](CInstance& made) {
                      auto& icon = static_cast<ColorIcon&>(made);
                      icon.index = static_cast<int>(k);
                      icon.text = c.name;
                      icon.image_blend = static_cast<int32_t>(make_colour_rgb(c.r, c.g, c.b));
                      icon.sprite_index = panel_art("tasto_colore");
                    });
  }
}

void define_colori() { g_object = define_palette_element<ColorIcon>("color_icon").index(); }
