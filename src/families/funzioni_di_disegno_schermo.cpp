// The screen of funzioni_di_disegno: the background grid, the saved
// screenshot, and the switches of the rulers and the protractor, which the
// run controller draws above everything while they are on.
//
// The grid is drawn once on its own surface, and the run controller puts
// that surface under each frame: a grid of lines and numbers drawn anew on
// every frame would cost more than the program it stands behind.
#include <algorithm>
#include <cmath>
#include <string>

#include "families/funzioni_di_disegno.h"
#include "families/funzioni_di_disegno_condivise.h"
#include "families/value_function.h"
#include "language/evaluation/program_instance.h"
#include "runtime/Code/Conversions.h"
#include "runtime/Font/TextState.h"
#include "runtime/Graphics/DrawState.h"
#include "runtime/Graphics/Primitives.h"
#include "runtime/Graphics/Screen.h"
#include "runtime/Graphics/SurfaceOverClear.h"
#include "runtime/Graphics/Surfaces.h"
#include "runtime/Graphics/TextDrawing.h"

namespace {

// The grid is never finer than this, so that it stays a grid (and its loops end).
constexpr double FINEST_GRID = 5;
// The numbers of a grid that the program sets are smaller than those of the grid at the start.
constexpr double GRID_LABEL_SCALE = 0.45;
constexpr double START_GRID_LABEL_SCALE = 0.65;
// The largest side of a surface.
constexpr double LARGEST_SIDE = 8192;

// A side of the program's window as a surface can have it.
double surface_side(double side) { return side >= 1 ? std::min(side, LARGEST_SIDE) : 1; }

// What a grid line is labelled with: its coordinate as the runtime writes a number.
std::string label(double coordinate) { return value_to_text(RValue::number(coordinate)); }

// Makes `p`'s grid surface exist at `width` x `height`; false without a graphics device.
bool prepare_grid_surface(DrawingMemory& memory, double width, double height) {
  if (surface_exists(memory.surf)) {
    surface_resize(memory.surf, width, height);
  } else {
    memory.surf = surface_create(width, height);
  }
  return surface_exists(memory.surf);
}

// The draw state that drawing the grid changes, to be put back after.
struct SavedDrawState {
  uint32_t colour = draw_state().colour;
  double alpha = draw_state().alpha;
  TextState text = text_state();

  ~SavedDrawState() {
    draw_state().colour = colour;
    draw_state().alpha = alpha;
    draw_set_font(text.font);
    draw_set_halign(text.halign);
    draw_set_valign(text.valign);
  }
};

}  // namespace

void draw_grid(ProgramInstance& p, double label_scale) {
  DrawingMemory& memory = drawing_memory(p);
  const double width = surface_side(p.larghezza_finestra), height = surface_side(p.altezza_finestra);
  if (!prepare_grid_surface(memory, width, height)) return;
  const SavedDrawState saved;
  surface_set_target(memory.surf);
  set_colour_and_alpha(memory.sfondo_griglia, 1);
  draw_rectangle(0, 0, width, height, false);
  set_colour_and_alpha(memory.colore_griglia, 1);
  draw_set_font(environment_font());
  draw_set_halign(TEXT_ALIGN_START);
  draw_set_valign(TEXT_ALIGN_START);
  const double step = memory.dimensione_griglia > FINEST_GRID ? memory.dimensione_griglia : FINEST_GRID;
  for (double x = 0; x <= width; x += step) {
    draw_line(x, 0, x, height);
    draw_text_transformed(x + 1, 1, label(x), label_scale, label_scale, 0);
  }
  for (double y = 0; y <= height; y += step) {
    draw_line(0, y, width, y);
    draw_text_transformed(1, y + 1, label(y), label_scale, label_scale, 0);
  }
  surface_reset_target();
}

void imposta_griglia(ProgramInstance& p, int i) {
  static constexpr int BACKGROUND = 1, LINES = 2, SIZE = 3, VISIBLE = 4;
  static constexpr ArgumentKey KEYS[] = {
      {"(COLORE_SFONDO:", BACKGROUND, "16777215"},
      {"(COLORE_LINEE:", LINES, "8421504"},
      {"(DIMENSIONE:", SIZE, "25"},
      {"(VISIBILE:", VISIBLE, "1"},
  };
  read_arguments(p, i, CallShape::Statement, KEYS);
  DrawingMemory& memory = drawing_memory(p);
  memory.sfondo_griglia = slot_number(p, BACKGROUND);
  memory.colore_griglia = slot_number(p, LINES);
  const double size = slot_number(p, SIZE);
  memory.dimensione_griglia = size > FINEST_GRID ? size : FINEST_GRID;
  const double visible = slot_number(p, VISIBLE);
  p.griglia_visibile = std::isfinite(visible) ? static_cast<int>(std::clamp(visible, -1e9, 1e9)) : 0;
  // Only the text "1" shows the grid: any other value takes it away.
  if (slot_source(p, VISIBLE) == "1") {
    draw_grid(p, GRID_LABEL_SCALE);
  } else if (surface_exists(memory.surf)) {
    surface_free(memory.surf);
  }
}

void drawing_run_start(ProgramInstance& p) {
  draw_grid(p, START_GRID_LABEL_SCALE);
  drawing_memory(p).timbri = surface_create(p.larghezza_finestra, p.altezza_finestra);
}

void keep_stamps_surface(ProgramInstance& p) {
  DrawingMemory& memory = drawing_memory(p);
  if (surface_exists(memory.timbri)) return;
  // A new surface may hold what an old one left: the stamps start from nothing.
  memory.timbri = surface_create(p.larghezza_finestra, p.altezza_finestra);
  if (!surface_set_target(memory.timbri)) return;
  draw_clear_alpha(0, 0);
  surface_reset_target();
}

void keep_grid_picture(ProgramInstance& p) {
  if (p.griglia_visibile == 1 && !surface_exists(drawing_memory(p).surf)) draw_grid(p, START_GRID_LABEL_SCALE);
}

void draw_grid_picture(ProgramInstance& p) {
  // The same picture in every frame: it goes by the device's copy where it can.
  const int32_t grid = drawing_memory(p).surf;
  if (p.griglia_visibile == 1 && surface_exists(grid)) draw_surface_over_clear(grid);
}

void draw_stamps(ProgramInstance& p) {
  const int32_t stamps = drawing_memory(p).timbri;
  if (surface_exists(stamps)) draw_surface(stamps, 0, 0);
}

void drawing_run_end(ProgramInstance& p) {
  delete_loaded_images();
  DrawingMemory& memory = drawing_memory(p);
  surface_free(memory.surf);
  surface_free(memory.timbri);
}

void salva_schermata(ProgramInstance&, int) {
  // The environment has no save dialog to propose "schermata_salvata" in,
  // and a headless run could show none: the screen goes to that name in
  // the working directory.
  static const std::string FILE_NAME = "schermata_salvata.png";
  screen_save(FILE_NAME);
}

void disegna_righelli(ProgramInstance& p, int i) {
  static constexpr ArgumentKey KEYS[] = {{"(VISIBILE:", 1, "1"}};
  read_arguments(p, i, CallShape::Statement, KEYS);
  set_global_number("righelli", slot_number(p, 1));
}

void disegna_goniometro(ProgramInstance& p, int i) {
  static constexpr ArgumentKey KEYS[] = {{"(VISIBILE:", 1, "1"}};
  read_arguments(p, i, CallShape::Statement, KEYS);
  set_global_number("goniometro", slot_number(p, 1));
}
