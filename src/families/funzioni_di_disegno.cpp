// funzioni_di_disegno: shapes, lines, text, images and colours on the canvas.
// Its statements need "disegna" in their name, its value functions "ottieni";
// a few functions stand outside both guards.
//
// The family is split by topic: shapes, text, pictures, colours, and the
// screen with its grid and measuring aids, each a unit of its own. This one
// holds the family's table and the draw state that all of them share.
#include <algorithm>

#include "families/families.h"
#include "families/funzioni_di_disegno_condivise.h"
#include "runtime/Code/Builtins.h"
#include "runtime/Code/Conversions.h"
#include "runtime/Graphics/Colour.h"
#include "runtime/Graphics/DrawState.h"
#include "runtime/Room/Variables.h"
#include "runtime/Support/AssetIndex.h"

namespace {

constexpr FamilyFunction FUNCTIONS[] = {
    {"disegna_righelli", CallShape::Statement, disegna_righelli},
    {"disegna_goniometro", CallShape::Statement, disegna_goniometro},
    {"disegna_cerchio", CallShape::Statement, disegna_cerchio},
    {"disegna_ellisse", CallShape::Statement, disegna_ellisse},
    {"disegna_triangolo", CallShape::Statement, disegna_triangolo},
    {"disegna_linea", CallShape::Statement, disegna_linea},
    {"disegna_punto", CallShape::Statement, disegna_punto},
    {"disegna_rettangolo", CallShape::Statement, disegna_rettangolo},
    {"disegna_poligono_regolare", CallShape::Statement, disegna_poligono_regolare},
    {"disegna_immagine", CallShape::Statement, disegna_immagine},
    {"disegna_fotogramma", CallShape::Statement, disegna_fotogramma},
    {"disegna_testo", CallShape::Statement, disegna_testo},
    {"imposta_griglia", CallShape::Statement, imposta_griglia, &NO_GUARD},
    {"salva_schermata", CallShape::Statement, salva_schermata, &NO_GUARD},
    {"ottieni_stile_testo", CallShape::Value, ottieni_stile_testo},
    {"ottieni_immagine", CallShape::Value, ottieni_immagine},
    {"ottieni_colore_rgb", CallShape::Value, ottieni_colore_rgb},
    {"ottieni_colore_hsv", CallShape::Value, ottieni_colore_hsv},
    {"ottieni_miscela_colori_da", CallShape::Value, ottieni_miscela_colori_da},
    {"ottieni_colore_di_questo_pixel", CallShape::Value, ottieni_colore_di_questo_pixel},
    {"ottieni_differenza_colori", CallShape::Value, ottieni_differenza_colori, &NO_GUARD},
};

}  // namespace

const Family funzioni_di_disegno{"funzioni_di_disegno", FamilyGuard{"disegna", true, false}, OTTIENI_GUARD, FUNCTIONS};

void set_colour_and_alpha(double colour, double alpha) {
  draw_state().alpha = std::clamp(alpha, 0.0, 1.0);
  // The colour word with alpha 0 is the colour alone, cut to its three bytes as the runtime cuts it.
  draw_state().colour = colour_word(colour, 0);
}

void reset_colour_and_alpha() { set_colour_and_alpha(0, 1); }

bool is_true(double value) { return value_to_bool(RValue::number(value)); }

int32_t environment_font() {
  RValue font;
  variable_get(global_object(), variable_id("font"), NO_ARRAY_INDEX, font);
  if (font.is(Kind::Unset) || font.is(Kind::Undefined)) return 0;
  return index_of_handle(font, static_cast<uint32_t>(AssetKind::Font));
}

double global_number(std::string_view name) {
  RValue value;
  variable_get(global_object(), variable_id(std::string(name)), NO_ARRAY_INDEX, value);
  return value.is(Kind::Number) || value.is(Kind::Bool) ? value.real : 0;
}

void set_global_number(std::string_view name, double value) {
  variable_set(global_object(), variable_id(std::string(name)), NO_ARRAY_INDEX, RValue::number(value));
}
