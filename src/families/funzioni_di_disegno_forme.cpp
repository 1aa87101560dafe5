// The shapes of funzioni_di_disegno: circle, ellipse, triangle, line, point,
// rectangle and regular polygon.
//
// Every shape sets the draw alpha from TRASPARENZA and the colour from
// COLORE, works out its geometry, draws, and puts back black at full alpha:
// so a shape never colours what the next statement draws.
#include <algorithm>

#include "families/funzioni_di_disegno_condivise.h"
#include "families/value_function.h"
#include "runtime/Function/MathFunctions.h"
#include "runtime/Graphics/Primitives.h"

namespace {

// Slots of the keys that all shapes have.
constexpr int COLOUR = 1, ALPHA = 2, OUTLINE = 3;
constexpr ArgumentKey COLOUR_KEY{"(COLORE:", COLOUR, "0"};
constexpr ArgumentKey ALPHA_KEY{"(TRASPARENZA:", ALPHA, "1"};
constexpr ArgumentKey OUTLINE_KEY{"(SOLO_CONTORNO:", OUTLINE, "0"};

// The geometry of the shapes, from slot 4 on.
constexpr int X = 4, Y = 5, X1 = 4, Y1 = 5, X2 = 6, Y2 = 7, X3 = 8, Y3 = 9;

// Reads the keys of the call at `i`, then draws `shape` in the call's colour and alpha.
template <size_t N, typename Shape>
void draw_shape(ProgramInstance& p, int i, const ArgumentKey (&keys)[N], Shape shape) {
  read_arguments(p, i, CallShape::Statement, keys);
  set_colour_and_alpha(slot_number(p, COLOUR), slot_number(p, ALPHA));
  shape();
  reset_colour_and_alpha();
}

bool outline(ProgramInstance& p) { return is_true(slot_number(p, OUTLINE)); }

// A regular polygon has at most as many corners as a primitive takes vertices.
constexpr double MOST_POLYGON_VERTICES = 1001;

}  // namespace

void disegna_cerchio(ProgramInstance& p, int i) {
  static constexpr int RADIUS = 6;
  static constexpr ArgumentKey KEYS[] = {
      {"(X:", X, "150"}, {"(Y:", Y, "150"}, {"(RAGGIO:", RADIUS, "100"}, OUTLINE_KEY, COLOUR_KEY, ALPHA_KEY,
  };
  draw_shape(p, i, KEYS,
             [&] { draw_circle(slot_number(p, X), slot_number(p, Y), slot_number(p, RADIUS), outline(p)); });
}

void disegna_ellisse(ProgramInstance& p, int i) {
  static constexpr ArgumentKey KEYS[] = {
      {"(X_1:", X1, "150"}, {"(Y_1:", Y1, "150"}, {"(X_2:", X2, "300"}, {"(Y_2:", Y2, "400"}, COLOUR_KEY, ALPHA_KEY,
      OUTLINE_KEY,
  };
  // The ellipse fills the box of its two corners.
  draw_shape(p, i, KEYS, [&] {
    draw_ellipse(slot_number(p, X1), slot_number(p, Y1), slot_number(p, X2), slot_number(p, Y2), outline(p));
  });
}

void disegna_triangolo(ProgramInstance& p, int i) {
  static constexpr ArgumentKey KEYS[] = {
      {"(X_1:", X1, "150"}, {"(Y_1:", Y1, "150"}, {"(X_2:", X2, "300"}, {"(Y_2:", Y2, "300"},
      {"(X_3:", X3, "100"}, {"(Y_3:", Y3, "450"}, COLOUR_KEY,           ALPHA_KEY,
      OUTLINE_KEY,
  };
  draw_shape(p, i, KEYS, [&] {
    draw_triangle(slot_number(p, X1), slot_number(p, Y1), slot_number(p, X2), slot_number(p, Y2), slot_number(p, X3),
                  slot_number(p, Y3), outline(p));
  });
}

void disegna_linea(ProgramInstance& p, int i) {
  static constexpr int WIDTH = 8;
  static constexpr ArgumentKey KEYS[] = {
      {"(X_1:", X1, "150"},       {"(Y_1:", Y1, "150"}, {"(X_2:", X2, "300"},
      {"(Y_2:", Y2, "300"},       COLOUR_KEY,           ALPHA_KEY,
      {"(SPESSORE:", WIDTH, "1"},
  };
  draw_shape(p, i, KEYS, [&] {
    draw_line_width(slot_number(p, X1), slot_number(p, Y1), slot_number(p, X2), slot_number(p, Y2),
                    slot_number(p, WIDTH));
  });
}

void disegna_punto(ProgramInstance& p, int i) {
  static constexpr ArgumentKey KEYS[] = {{"(X:", X, "150"}, {"(Y:", Y, "150"}, COLOUR_KEY, ALPHA_KEY};
  draw_shape(p, i, KEYS, [&] { draw_point(slot_number(p, X), slot_number(p, Y)); });
}

void disegna_rettangolo(ProgramInstance& p, int i) {
  static constexpr int BASE = 6, HEIGHT = 7;
  static constexpr ArgumentKey KEYS[] = {
      {"(X:", X, "150"}, {"(Y:", Y, "150"}, {"(BASE:", BASE, "100"}, {"(ALTEZZA:", HEIGHT, "150"}, OUTLINE_KEY,
      COLOUR_KEY,        ALPHA_KEY,
  };
  draw_shape(p, i, KEYS, [&] {
    const double x = slot_number(p, X), y = slot_number(p, Y);
    draw_rectangle(x, y, x + slot_number(p, BASE), y + slot_number(p, HEIGHT), outline(p));
  });
}

void disegna_poligono_regolare(ProgramInstance& p, int i) {
  static constexpr int SIDES = 6, TURN = 7, RADIUS = 8;
  static constexpr double TRIANGLE_FAN = 6, LINE_STRIP = 3;
  static constexpr ArgumentKey KEYS[] = {
      {"(X:", X, "150"}, {"(Y:", Y, "150"}, {"(NUMERO_LATI:", SIDES, "5"}, OUTLINE_KEY, {"(ROTAZIONE:", TURN, "0"},
      COLOUR_KEY,        ALPHA_KEY,         {"(RAGGIO:", RADIUS, "100"},
  };
  draw_shape(p, i, KEYS, [&] {
    const double x = slot_number(p, X), y = slot_number(p, Y);
    const double sides = slot_number(p, SIDES), turn = slot_number(p, TURN), radius = slot_number(p, RADIUS);
    // Fewer than one side makes no polygon (and no division by zero).
    if (!(sides >= 1)) return;
    const bool only_outline = outline(p);
    draw_primitive_begin(only_outline ? LINE_STRIP : TRIANGLE_FAN);
    if (!only_outline) draw_vertex(x, y);
    // One corner more than the sides: the last one meets the first and closes the outline.
    const double last = std::min(sides + 1, MOST_POLYGON_VERTICES);
    for (double n = 1; n <= last; ++n) {
      const double direction = turn + n * 360 / sides;
      draw_vertex(x + rt::lengthdir_x(radius, direction), y + rt::lengthdir_y(radius, direction));
    }
    draw_primitive_end();
  });
}
