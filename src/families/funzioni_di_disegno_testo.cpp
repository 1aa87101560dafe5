// The text of funzioni_di_disegno: disegna_testo, and the fonts that
// ottieni_stile_testo adds.
//
// disegna_testo has two roads. The plain one draws the text as it is
// written and is taken only for one exact combination of keys; the full one
// reads a variable, fills the "< ... >" placeholders, aligns, wraps, scales
// and turns. Both end with the draw state as the environment keeps it: its
// font, black, opaque, left and top.
#include <algorithm>
#include <cmath>
#include <string>

#include "families/funzioni_di_disegno_condivise.h"
#include "families/value_function.h"
#include "language/evaluation/numeric_expression.h"
#include "language/evaluation/program_instance.h"
#include "language/evaluation/string_expression.h"
#include "language/tokenizer/text_edit.h"
#include "runtime/Font/Font.h"
#include "runtime/Font/TextState.h"
#include "runtime/Graphics/TextDrawing.h"

namespace {

constexpr int X = 1, Y = 2, SCALE = 3, SEPARATION = 4, TEXT = 5, COLOUR = 6, ALPHA = 7, BOX_WIDTH = 8, TURN = 9,
              HALIGN = 10, VALIGN = 11, FONT = 12;

// How the language writes a line break inside a text, and what it draws:
// a new line, indented by two tabs.
constexpr std::string_view LINE_BREAK_MARK = "/carriage_return/";
constexpr std::string_view LINE_BREAK = "\r\n\t\t";

// The genitive "X_del_palla" reads as "X del palla" once it has been worked out.
constexpr std::string_view GENITIVE = "_del_";
constexpr std::string_view GENITIVE_SHOWN = " del ";

int32_t horizontal_alignment(std::string word) {
  std::erase(word, '"');
  if (word == "a destra") return TEXT_ALIGN_END;
  if (word == "al centro") return TEXT_ALIGN_CENTRE;
  return TEXT_ALIGN_START;
}

int32_t vertical_alignment(std::string word) {
  std::erase(word, '"');
  if (word == "in basso") return TEXT_ALIGN_END;
  if (word == "al centro") return TEXT_ALIGN_CENTRE;
  return TEXT_ALIGN_START;
}

// The one combination of keys that the plain road serves.
bool takes_plain_road(ProgramInstance& p) {
  return slot_source(p, VALIGN) == "\"in alto\"" && slot_source(p, HALIGN) == "\"a sinistra\"" &&
         slot_source(p, BOX_WIDTH) == "800" && slot_source(p, TURN) == "0" && slot_number(p, SCALE) == 1 &&
         slot_source(p, SEPARATION) != "20";
}

// The colour, the alpha and the font of the call.
void set_text_state(ProgramInstance& p) {
  set_colour_and_alpha(slot_number(p, COLOUR), slot_number(p, ALPHA));
  draw_set_font(static_cast<int32_t>(slot_number(p, FONT)));
}

void draw_plain(ProgramInstance& p) {
  std::string text = slot_source(p, TEXT);
  std::erase(text, '"');
  text_edit::replace_all(text, LINE_BREAK_MARK, LINE_BREAK);
  if (text_edit::contains(text, GENITIVE)) {
    text = calculate_string(p, text);
    text_edit::replace_all(text, GENITIVE, GENITIVE_SHOWN);
  }
  set_text_state(p);
  draw_text(slot_number(p, X), slot_number(p, Y), text);
}

void draw_full(ProgramInstance& p) {
  draw_set_halign(horizontal_alignment(slot_source(p, HALIGN)));
  draw_set_valign(vertical_alignment(slot_source(p, VALIGN)));

  std::string text = slot_source(p, TEXT);
  // A text without quotes names the variable that holds it.
  if (!text.starts_with('"')) text = p.calculate_var(text);
  std::erase(text, '"');
  text_edit::replace_all(text, LINE_BREAK_MARK, LINE_BREAK);
  // Three times, so that a placeholder may give a text with a placeholder in it.
  for (int pass = 0; pass < 3; ++pass) text = calculate_expression_in_string(p, text);
  // Each filling turns a pair of round brackets square; a shown text has
  // none of its own, as the tokeniser makes those of a string round.
  std::ranges::replace(text, '[', '(');
  std::ranges::replace(text, ']', ')');
  // What an impossible computation leaves shows as 0, and long zeros go.
  for (std::string_view not_a_number : {"NaN", "-nan(ind)", "nan(ind)"})
    text_edit::replace_all(text, not_a_number, "0");
  text_edit::replace_all(text, ".0000000000", "");

  set_text_state(p);
  text_edit::replace_all(text, GENITIVE, GENITIVE_SHOWN);
  const double scale = slot_number(p, SCALE);
  draw_text_ext_transformed(slot_number(p, X), slot_number(p, Y), text, slot_number(p, SEPARATION),
                            slot_number(p, BOX_WIDTH), scale, scale, slot_number(p, TURN));
}

// Points to pixels, for the size of a font.
constexpr double PIXELS_PER_POINT = 1.33333333;
// The characters a font is added with; the others come when first drawn.
constexpr int32_t FIRST_CHARACTER = 32, LAST_CHARACTER = 128;
// Beyond this a font size is no size a program means, and FreeType is spared it.
constexpr double LARGEST_FONT_PIXELS = 4096;

}  // namespace

void disegna_testo(ProgramInstance& p, int i) {
  const ArgumentKey keys[] = {
      {"(X:", X, "150"},
      {"(Y:", Y, "150"},
      {"(SCALA:", SCALE, "1"},
      {"(INTERLINEA:", SEPARATION, "20"},
      {"(TESTO:", TEXT, "Nessun testo specificato"},
      {"(COLORE:", COLOUR, "0"},
      {"(TRASPARENZA:", ALPHA, "1"},
      {"(LARGHEZZA_CASELLA:", BOX_WIDTH, "2000"},
      {"(ROTAZIONE:", TURN, "0"},
      {"(ALLINEAMENTO_ORIZZONTALE:", HALIGN, "\"a sinistra\""},
      {"(ALLINEAMENTO_VERTICALE:", VALIGN, "\"in alto\""},
      // The font defaults to the environment's, as it stands at the call.
      {"(STILE:", FONT, "", static_cast<double>(environment_font())},
  };
  read_arguments(p, i, CallShape::Statement, keys);
  if (takes_plain_road(p)) {
    draw_plain(p);
  } else {
    draw_full(p);
  }
  draw_set_font(environment_font());
  reset_colour_and_alpha();
  draw_set_halign(TEXT_ALIGN_START);
  draw_set_valign(TEXT_ALIGN_START);
}

void ottieni_stile_testo(ProgramInstance& p, int i) {
  static constexpr int NAME = 1, BOLD = 2, ITALIC = 3, SIZE = 4;
  static constexpr ArgumentKey KEYS[] = {
      {"(CARATTERE:", NAME, "Not found"},
      {"(GRASSETTO:", BOLD, "0"},
      {"(CORSIVO:", ITALIC, "0"},
      {"(DIMENSIONE:", SIZE, "12"},
  };
  read_arguments(p, i, CallShape::Value, KEYS);
  const std::string name = argument_text(p.call.args[NAME]);
  int32_t font = -1;
  if (name != "Not found") {
    const double pixels = slot_number(p, SIZE) * PIXELS_PER_POINT;
    font = font_add(name, std::isfinite(pixels) ? std::clamp(pixels, 0.0, LARGEST_FONT_PIXELS) : 0,
                    is_true(slot_number(p, BOLD)), is_true(slot_number(p, ITALIC)), FIRST_CHARACTER, LAST_CHARACTER);
  }
  // A font that can't be had leaves the environment's.
  if (!font_exists(font)) font = environment_font();
  give_number(p, i, font, NumberForm::Exact);
}
