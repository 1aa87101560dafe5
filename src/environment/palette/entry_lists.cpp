// The panels that are lists of named entries: Suoni (the environment's
// sounds), Tipi di carattere (each font shown in itself, with a sample of
// its letters) and Variabili (the names the language gives the pointer,
// the window and chance). A press writes the entry's name and a blank; the
// last entry of Suoni and of Variabili writes an example to adapt instead.
#include <algorithm>
#include <unordered_map>

#include "environment/editor/header_buttons.h"
#include "environment/palette/palette.h"
#include "environment/palette/palette_catalogue.h"
#include "environment/palette/palette_element.h"
#include "runtime/Font/Font.h"
#include "runtime/Font/TextLayout.h"
#include "runtime/Font/TextState.h"
#include "runtime/Graphics/Colour.h"
#include "runtime/Graphics/DrawState.h"
#include "runtime/Graphics/Primitives.h"
#include "runtime/Graphics/TextDrawing.h"

namespace {

int32_t g_sound = -1, g_font = -1, g_variable = -1;
constexpr double ENTRY_HEIGHT = 36, LABEL_SCALE = 1;
constexpr const char* FONT_SAMPLE =
    "1 2 3 4 5 6 7 8 9 - a b c d e f g h i j k l m n o p q r s t u v\r\nx y z - A B C D E F G H I J K L M N O P Q R S U "
    "V X Y Z";

// A pill of fixed width whose label shrinks to fit it.
class EntryPill : public PaletteElement {
 public:
  using PaletteElement::PaletteElement;

  void press() override { insert_at_caret((is_last() ? last_snippet() : text) + " "); }

  void draw() {
    draw_set_font(FONT_LABEL_BOLD);
    const double scale = std::min(LABEL_SCALE, (width - 28) / std::max(1, string_width(text)));
    const bool over = pointed();
    draw_pill(x, y + (over ? -1 : 0), width, ENTRY_HEIGHT,
              static_cast<uint32_t>(over ? merge_colour(colour, COLOUR_WHITE, 0.2) : colour), text, scale);
  }

  int i = 0;
  double width = 130, colour = 0;

 private:
  bool is_last() const { return text.ends_with("..."); }
  const std::string& last_snippet() const {
    return object_index == g_sound ? other_sound_snippet() : other_variable_snippet();
  }
};

// The font of a label, loaded once; -1 (the default font) for a face that can't be had.
int32_t font_of(const std::string& label) {
  static std::unordered_map<std::string, int32_t> loaded;
  if (auto found = loaded.find(label); found != loaded.end() && (found->second < 0 || font_exists(found->second))) {
    return found->second;
  }
  return loaded[label] = font_add(font_file_of(label), 20, false, false, 32, 128);
}

// A card with the font's name written in the font; the sample of its letters while the pointer is on it.
class FontInt : public PaletteElement {
 public:
  using PaletteElement::PaletteElement;

  void draw() {
    const bool over = pointed();
    DrawState& state = draw_state();
    state.colour = static_cast<uint32_t>(over ? make_colour_rgb(255, 248, 225) : COLOUR_WHITE);
    draw_roundrect_ext(x, y, x + CARD_WIDTH, y + CARD_HEIGHT, 16, 16, false);
    state.colour = static_cast<uint32_t>(over ? make_colour_rgb(232, 120, 40) : make_colour_rgb(150, 150, 160));
    draw_roundrect_ext(x, y, x + CARD_WIDTH, y + CARD_HEIGHT, 16, 16, true);
    draw_set_font(font >= 0 ? font : FONT_LABEL);
    draw_set_halign(1);
    draw_set_valign(1);
    state.colour = static_cast<uint32_t>(COLOUR_DARK_GREY);
    const double scale = std::min(1.4, (CARD_WIDTH - 30) / std::max(1, string_width(text)));
    draw_text_transformed(x + CARD_WIDTH / 2, y + CARD_HEIGHT / 2, text, scale, scale, 0);
    if (over) draw_sample();
    draw_set_halign(0);
    draw_set_valign(0);
  }

  int i = 0;
  int32_t font = -1;
  static constexpr double CARD_WIDTH = 250, CARD_HEIGHT = 80;

 private:
  // Between the two columns, where it hides no card.
  void draw_sample() const {
    DrawState& state = draw_state();
    state.colour = static_cast<uint32_t>(COLOUR_WHITE);
    draw_roundrect_ext(SAMPLE_LEFT, SAMPLE_TOP, SAMPLE_RIGHT, SAMPLE_TOP + 110, 16, 16, false);
    state.colour = static_cast<uint32_t>(make_colour_rgb(232, 120, 40));
    draw_roundrect_ext(SAMPLE_LEFT, SAMPLE_TOP, SAMPLE_RIGHT, SAMPLE_TOP + 110, 16, 16, true);
    draw_set_halign(1);
    state.colour = static_cast<uint32_t>(COLOUR_DARK_GREY);
    const double scale = std::min(0.73, (SAMPLE_RIGHT - SAMPLE_LEFT - 20) / std::max(1, string_width(FONT_SAMPLE)));
    draw_text_transformed((SAMPLE_LEFT + SAMPLE_RIGHT) / 2, SAMPLE_TOP + 55, FONT_SAMPLE, scale, scale, 0);
  }
  static constexpr double SAMPLE_LEFT = 590, SAMPLE_RIGHT = 945, SAMPLE_TOP = 280;
};

template <class T>
T& create_entry(double x, double y, int32_t object, int i, const char* label) {
  auto* made = static_cast<T*>(instance_create(static_cast<float>(x), static_cast<float>(y), object, 0));
  made->i = i;
  made->text = label;
  return *made;
}

}  // namespace

void fill_suoni(double x, double y) {
  const auto labels = sound_labels();
  for (int n = 0; n < static_cast<int>(labels.size()); ++n) {
    const bool first_column = n < 8;
    auto& entry = create_entry<EntryPill>(first_column ? x - 150 : x - 15,
                                          first_column ? y + 80 + 50 * n : y + 105 + 50 * (n - 8), g_sound, n,
                                          labels[static_cast<size_t>(n)]);
    entry.colour = make_colour_rgb(52, 160, 90);
    entry.mask_index = entry_mask(static_cast<int>(entry.width), static_cast<int>(ENTRY_HEIGHT));
  }
}

void fill_tipi_di_carattere(double x, double y) {
  const auto labels = font_labels();
  for (int n = 0; n < static_cast<int>(labels.size()); ++n) {
    const bool first_column = n < 5;
    auto& entry = create_entry<FontInt>(first_column ? x - 345 : x + 285,
                                        y + 110 + 105 * (first_column ? n : n - 5), g_font, n,
                                        labels[static_cast<size_t>(n)]);
    entry.font = font_of(entry.text);
    entry.mask_index = entry_mask(static_cast<int>(FontInt::CARD_WIDTH), static_cast<int>(FontInt::CARD_HEIGHT));
  }
}

void fill_variabili(double x, double y) {
  const auto labels = variable_labels();
  const int count = static_cast<int>(labels.size());
  for (int n = 0; n < count; ++n) {
    double left = x - 150, top = y + 80 + 50 * n;
    if (n == count - 1) {
      left = x + 50;
      top = y + 305;
    } else if (n >= 11) {
      left = x + 50;
      top = y + 80 + 50 * (n - 11);
    }
    auto& entry = create_entry<EntryPill>(left, top, g_variable, n, labels[static_cast<size_t>(n)]);
    entry.width = 185;
    // The window's four names, and the explanation of assignment, stand apart by their colours.
    entry.colour = n == count - 1         ? merge_colour(4235519, 128, 0.25)
                   : (n >= 2 && n <= 5)   ? merge_colour(8388736, 16776960, 0.25)
                                          : merge_colour(16711680, 16776960, 0.5);
    entry.mask_index = entry_mask(static_cast<int>(entry.width), static_cast<int>(ENTRY_HEIGHT));
  }
}

void define_entry_lists() {
  g_sound = define_palette_element<EntryPill>("costante_suono_int").index();
  g_font = define_palette_element<FontInt>("font_int").index();
  g_variable = define_palette_element<EntryPill>("variabile_int").index();
}
