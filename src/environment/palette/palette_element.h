// What every element of a palette panel shares: its age in steps, its
// label, the press that inserts, and the global press that closes the
// panel after ten steps of grace. An element also goes by itself when it
// finds the panel closed.
#pragma once

#include <cstdint>
#include <string>

#include "runtime/Object/Objects.h"
#include "runtime/Room/Room.h"

inline constexpr int MOUSE_EVENT_LEFT_PRESSED = 4, MOUSE_EVENT_GLOBAL_LEFT_PRESSED = 53;

class PaletteElement : public CInstance {
 public:
  using CInstance::CInstance;

  void step();
  // The element's own left press: comes before the global one, so an element inserts before the panel closes.
  void left_pressed();
  void global_left_pressed();

  // What a press on the element does; the plain element writes its label and a blank.
  virtual void press();
  // Whether a global press leaves the panel open (a category under the pointer, a held Ctrl).
  virtual bool keeps_panel_open() const;
  // Whether the pointer is over the element, as mouse_sensor finds it.
  bool pointed() const;

  int time = 0;
  std::string text = "unknown function";
};

// Registers `T` as object `name` with the elements' events; Draw is T::draw.
template <class T>
ObjectDefinition<T> define_palette_element(const char* name) {
  ObjectDefinition<T> made(name);
  made.on(ev::STEP, ev::STEP_NORMAL, &T::step)
      .on(ev::MOUSE, MOUSE_EVENT_LEFT_PRESSED, &T::left_pressed)
      .on(ev::MOUSE, MOUSE_EVENT_GLOBAL_LEFT_PRESSED, &T::global_left_pressed)
      .on(ev::DRAW, ev::DRAW_NORMAL, &T::draw)
      .flags(object_flag::VISIBLE);
  return made;
}

// The panels' objects, which an opening destroys before it fills its own.
inline constexpr const char* PANEL_OBJECTS[] = {"costrutto_int", "funzione_int",       "funzioni_int",  "tastiera_simboli",
                                                "costante_suono_int", "variabile_int", "font_int",      "color_icon",
                                                "piano_key",     "tasto_princ_funz"};

// A pill with a label: the shape of most entries. `colour` fills it; the
// label is white over a darker edge.
void draw_pill(double x, double y, double width, double height, uint32_t colour, const std::string& label,
               double scale);
// The sprite whose rectangle is an entry's mask: `width` x `height` from the top left.
int32_t entry_mask(int width, int height);

// Each panel fills itself from its icon's position; they are defined with the palette.
void fill_costrutti(double x, double y);
void fill_funzioni(double x, double y);
void fill_kit_pronti(double x, double y);
void fill_colori(double x, double y);
void fill_note_musicali(double x, double y);
void fill_suoni(double x, double y);
void fill_tipi_di_carattere(double x, double y);
void fill_variabili(double x, double y);
void fill_tastiera_simboli(double x, double y);
void define_costrutti();
void define_funzioni();
void define_colori();
void define_note_musicali();
void define_entry_lists();  // Suoni, Tipi di carattere, Variabili
void define_tastiera_simboli();
void define_direction_game();

