// The Note musicali panel: a piano octave. A press on a key writes the
// note's name and a blank; with Ctrl held it writes nothing and the panel
// stays open, so that a learner can try a melody first.
#include "environment/editor/art.h"
#include "environment/editor/header_buttons.h"
#include "environment/palette/palette.h"
#include "environment/palette/palette_catalogue.h"
#include "environment/palette/palette_element.h"
#include "runtime/Font/TextState.h"
#include "runtime/Graphics/Colour.h"
#include "runtime/Graphics/DrawState.h"
#include "runtime/Graphics/SpriteDrawing.h"
#include "runtime/Graphics/TextDrawing.h"
#include "runtime/IO/Input.h"
#include "runtime/Platform/KeyCodes.h"

namespace {

int32_t g_object = -1;
constexpr float BLACK_KEY_DEPTH = -9999;
constexpr double BLACK_KEY_BLEND = 4210752;

bool ctrl_held() { return key_down(KEY_CONTROL); }

class PianoKey : public PaletteElement {
 public:
  using PaletteElement::PaletteElement;

  void step() {
    PaletteElement::step();
    enter = pointed() && !covered_by_black_key() ? 1 : 0;
  }

  void press() override {
    // A white key under a black one leaves the press to the black key.
    if (covered_by_black_key()) return;
    if (!ctrl_held()) insert_at_caret(text + " ");
  }

  bool keeps_panel_open() const override { return ctrl_held(); }

  void draw() {
    const double sink = enter ? 2 : 0;
    draw_sprite_ext(sprite_index, 0, x, y + sink, image_xscale, image_yscale, 0, image_blend, 1);
    draw_set_font(FONT_LABEL_BOLD);
    draw_set_halign(1);
    draw_set_valign(2);
    const bool black = image_blend != static_cast<int32_t>(real_blend);
    draw_state().colour = static_cast<uint32_t>(black ? COLOUR_WHITE : COLOUR_DARK_GREY);
    const double middle = x + 85 * image_xscale / 2, bottom = y + sink + 250 * image_yscale - 12;
    const double scale = black ? 0.75 : 1.1;
    draw_text_transformed(middle, bottom, text, scale, scale, 0);
    draw_set_halign(0);
    draw_set_valign(0);
  }

  int enter = 0, i = 0;
  double real_blend = COLOUR_WHITE;

 private:
  bool covered_by_black_key() const {
    if (depth == BLACK_KEY_DEPTH) return false;
    for (CInstance* other : object_get(g_object)->instances) {
      if (other->depth == BLACK_KEY_DEPTH && static_cast<PianoKey*>(other)->pointed()) return true;
    }
    return false;
  }
};

}  // namespace

void fill_note_musicali(double x, double y) {
  int white = 0;
  for (const PianoNote& note : piano_notes()) {
    const float left = static_cast<float>(x - 305 + note.offset);
    instance_create(left, static_cast<float>(y + (note.black ? 58 : 60)), g_object, note.black ? BLACK_KEY_DEPTH : 0,
                    [&](CInstance& made) {
                      auto& key = static_cast<PianoKey&>(made);
                      key.text = note.name;
                      key.sprite_index = panel_art("tasto_pianoforte");
                      if (note.black) {
                        key.image_blend = static_cast<int32_t>(BLACK_KEY_BLEND);
                        key.image_xscale = 0.75F;
                        key.image_yscale = 0.67F;
                      } else {
                        key.i = white++;
                      }
                    });
  }
}

void define_note_musicali() { g_object = define_palette_element<PianoKey>("piano_key").index(); }
