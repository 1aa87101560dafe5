// What the units of funzioni_di_disegno share: the functions that each unit
// serves, for the family's table, and the handling of the draw state that
// every statement of the family follows.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

class ProgramInstance;

// [SECTION] Shapes (funzioni_di_disegno_forme.cpp)
void disegna_cerchio(ProgramInstance& p, int i);
void disegna_ellisse(ProgramInstance& p, int i);
void disegna_triangolo(ProgramInstance& p, int i);
void disegna_linea(ProgramInstance& p, int i);
void disegna_punto(ProgramInstance& p, int i);
void disegna_rettangolo(ProgramInstance& p, int i);
void disegna_poligono_regolare(ProgramInstance& p, int i);

// [SECTION] Text (funzioni_di_disegno_testo.cpp)
void disegna_testo(ProgramInstance& p, int i);
void ottieni_stile_testo(ProgramInstance& p, int i);

// [SECTION] Pictures (funzioni_di_disegno_immagini.cpp)
void disegna_immagine(ProgramInstance& p, int i);
void disegna_fotogramma(ProgramInstance& p, int i);
void ottieni_immagine(ProgramInstance& p, int i);
// The sprite that a picture written by a program names: a quoted path,
// loaded at its first use and found in the image memory after; or a handle.
int32_t picture_of(ProgramInstance& p, const std::string& written);

// [SECTION] Colours (funzioni_di_disegno_colori.cpp)
void ottieni_colore_rgb(ProgramInstance& p, int i);
void ottieni_colore_hsv(ProgramInstance& p, int i);
void ottieni_miscela_colori_da(ProgramInstance& p, int i);
void ottieni_colore_di_questo_pixel(ProgramInstance& p, int i);
void ottieni_differenza_colori(ProgramInstance& p, int i);

// [SECTION] Screen, grid and measuring aids (funzioni_di_disegno_schermo.cpp)
void imposta_griglia(ProgramInstance& p, int i);
void salva_schermata(ProgramInstance& p, int i);
void disegna_righelli(ProgramInstance& p, int i);
void disegna_goniometro(ProgramInstance& p, int i);

// [SECTION] The draw state (funzioni_di_disegno.cpp)

// Sets the draw alpha (held to 0..1) and then the draw colour, as a statement does before it draws.
void set_colour_and_alpha(double colour, double alpha);
// Black and opaque again, so that no statement's colour leaks into the next.
void reset_colour_and_alpha();
// Whether a number counts as true, as the runtime reads a truth value (above one half).
bool is_true(double value);
// The text font of the environment: global.font, the editor's font 0 while it is unset.
int32_t environment_font();
// A global number of the run (global.righelli, global.tot_img_load, ...): 0 while unset.
double global_number(std::string_view name);
void set_global_number(std::string_view name, double value);
