// What the palette's panels offer and what each element writes into the
// program: the texts of the constructs, the function catalogue (six groups,
// 27 categories, a call form for every function), the colours, notes,
// sounds, fonts, variables, symbols, ready kits and the direction game's
// moves. Data only: the panels in palette/ lay it out and insert it.
#pragma once

#include <cstdint>
#include <span>
#include <string>

// The constructs of the Costrutti panel, in the order of its cards.
enum class Costrutto { Programma, Aumenta, Diminuisci, Ripeti, Finche, Se };
// The text a press on the card of `construct` writes at the caret.
const std::string& costrutto_text(Costrutto construct);

// A function of the catalogue: its label in the panel and the call form it
// writes; a null form writes the label itself.
struct FunctionEntry {
  const char* label;
  const char* form;
};
inline constexpr int FUNCTION_CATEGORIES = 27, FUNCTION_GROUPS = 6;
// The functions of category 0..26, in the panel's order.
std::span<const FunctionEntry> category_functions(int category);
// The name a category shows beside its icon ("Disegno geometrico", ...).
const char* category_name(int category);
// The categories of group 0..5: the first and the last.
struct CategoryRange {
  int first, last;
};
CategoryRange group_categories(int group);
// The name under a group's button.
const char* group_name(int group);
// What a press on the function labelled `label` of `category` writes, without
// the trailing blank; "" for a label the category doesn't have.
std::string function_snippet(int category, const std::string& label);

struct NamedColour {
  const char* name;
  uint8_t r, g, b;
};
// The 30 colours of the Colori panel, in rows of six.
std::span<const NamedColour> palette_colours();

struct PianoNote {
  const char* name;
  double pitch;   // the piano sample's speed for this note
  bool black;     // a black key, over the white ones
  double offset;  // left edge from the panel's left, in pixels
};
// The twelve keys of the Note musicali panel: the seven white ones first.
std::span<const PianoNote> piano_notes();

// The labels of the Suoni panel; the last asks for a sound from the web.
std::span<const char* const> sound_labels();
// What "altro suono..." writes.
const std::string& other_sound_snippet();
// The ten labels of the Tipi di carattere panel.
std::span<const char* const> font_labels();
// The font file of a label: blanks turned to underscores, then ".ttf".
std::string font_file_of(const std::string& label);
// The 16 labels of the Variabili panel; the last explains assignment.
std::span<const char* const> variable_labels();
// What "altra variabile..." writes.
const std::string& other_variable_snippet();

struct SymbolKey {
  const char* text;
  const char* description;
};
// The Tastiera simboli's 21 keys, in rows of seven.
std::span<const SymbolKey> symbol_keys();

struct ReadyKit {
  const char* label;
  const char* file;  // under the bundle's "kit pronti/"
};
// The 17 ready kits, in the panel's order.
std::span<const ReadyKit> ready_kits();

// The direction game's six elements: the two colours, then the arrows by frame (right, down, left, up).
struct DirectionMove {
  const char* text;
  float x, y;
  int frame;  // of the arrows' picture; -1 for the colour elements
};
std::span<const DirectionMove> direction_moves();
