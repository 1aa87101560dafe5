// The Costrutti panel: the program skeleton, increase and decrease, and the
// three blocks (repeat a number of times, repeat while, if), each a card.
#include "environment/editor/art.h"
#include "environment/editor/editor_ctrl.h"
#include "environment/editor/header_buttons.h"
#include "environment/palette/palette.h"
#include "environment/palette/palette_catalogue.h"
#include "environment/palette/palette_element.h"
#include "environment/text_control/input_text.h"
#include "runtime/Font/TextState.h"
#include "runtime/Graphics/Colour.h"
#include "runtime/Graphics/DrawState.h"
#include "runtime/Graphics/SpriteDrawing.h"
#include "runtime/Graphics/TextDrawing.h"

namespace {

int32_t g_object = -1;

struct Card {
  Costrutto construct;
  double dx, dy;  // from the icon
  const char* art;
  int frames, frame;  // of the art, and the card's
  const char* label;  // on the card's bar; the skeleton names its two sections
};

constexpr Card CARDS[] = {
    {Costrutto::Programma, -250, 105, "costrutto_programma", 1, 0, "INIZIA"},
    {Costrutto::Aumenta, -275, 400, "costrutto_aumenta", 2, 0, "aumenta ... di 10"},
    {Costrutto::Diminuisci, -275, 485, "costrutto_aumenta", 2, 1, "diminuisci ... di 10"},
    {Costrutto::Ripeti, 50, 105, "costrutto_ripeti", 1, 0, "ripeti per 10 volte"},
    {Costrutto::Finche, 50, 275, "costrutto_finche", 1, 0, "ripeti finche x<10"},
    {Costrutto::Se, 50, 445, "costrutto_se", 1, 0, "se x=10"},
};

class CostruttoInt : public PaletteElement {
 public:
  using PaletteElement::PaletteElement;

  void press() override {
    insert_at_caret(costrutto_text(card->construct));
    // The skeleton is the whole program's frame: the caret goes to the end of the text.
    if (card->construct == Costrutto::Programma) editor_ctrl()->box().cursor_special = 0;
  }

  void draw() {
    draw_sprite_ext(sprite_index, image_index, x, y, 1, 1, 0, COLOUR_WHITE, pointed() ? 1 : 0.93);
    draw_set_font(FONT_LABEL_BOLD);
    draw_set_halign(0);
    draw_set_valign(1);
    draw_state().colour = static_cast<uint32_t>(COLOUR_WHITE);
    const double bar = card->construct == Costrutto::Aumenta || card->construct == Costrutto::Diminuisci ? 34 : 29;
    draw_text_transformed(x + 20, y + bar, card->label, 1.1, 1.1, 0);
    if (card->construct == Costrutto::Programma) draw_text_transformed(x + 20, y + 167, "CICLO CONTINUO", 1.1, 1.1, 0);
    draw_set_valign(0);
  }

  const Card* card = &CARDS[0];
};

}  // namespace

void fill_costrutti(double x, double y) {
  if (first_active_instance(g_object)) return;
  for (const Card& card : CARDS) {
    instance_create(static_cast<float>(x + card.dx), static_cast<float>(y + card.dy), g_object, 0,
                    [&card](CInstance& made) {
                      auto& element = static_cast<CostruttoInt&>(made);
                      element.card = &card;
                      element.sprite_index = panel_art(card.art, card.frames);
                      element.image_index = static_cast<float>(card.frame);
                      element.image_speed = 0;
                    });
  }
}

void define_costrutti() { g_object = define_palette_element<CostruttoInt>("costrutto_int").index(); }
