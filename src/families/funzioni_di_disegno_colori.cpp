// The colours of funzioni_di_disegno: colours from their channels, from hue,
// saturation and brightness, a mixture of two, the colour of a pixel of the
// screen, and how different two colours look. All of them hand back the
// exact number form.
#include <algorithm>
#include <cmath>

#include "families/funzioni_di_disegno_condivise.h"
#include "families/value_function.h"
#include "runtime/Graphics/Colour.h"
#include "runtime/Graphics/Screen.h"

namespace {

// [SECTION] CIE94 colour difference

struct Lab {
  double l, a, b;
};

// One channel (0 to 255) as linear light, times 100, by the sRGB rule.
double linear_channel(double channel) {
  const double c = channel / 255;
  return (c > 0.04045 ? std::pow((c + 0.055) / 1.055, 2.4) : c / 12.92) * 100;
}

// The Lab ratio function, with its straight piece near black.
double lab_ratio(double t) { return t > 0.008856 ? std::cbrt(t) : 7.787 * t + 16.0 / 116; }

Lab lab_of(double colour) {
  const double r = linear_channel(colour_get_red(colour));
  const double g = linear_channel(colour_get_green(colour));
  const double b = linear_channel(colour_get_blue(colour));
  // To XYZ by the D65 matrix, then to Lab against the D65 white.
  const double x = 0.4124 * r + 0.3576 * g + 0.1805 * b;
  const double y = 0.2126 * r + 0.7152 * g + 0.0722 * b;
  const double z = 0.0193 * r + 0.1192 * g + 0.9505 * b;
  const double fx = lab_ratio(x / 95.047), fy = lab_ratio(y / 100.0), fz = lab_ratio(z / 108.883);
  return {116 * fy - 16, 500 * (fx - fy), 200 * (fy - fz)};
}

// The CIE94 difference of two colours for graphic arts, the first being the reference.
double colors_compare_cie94(double reference, double other) {
  const Lab one = lab_of(reference), two = lab_of(other);
  const double dl = one.l - two.l;
  const double c1 = std::hypot(one.a, one.b), c2 = std::hypot(two.a, two.b);
  const double dc = c1 - c2;
  const double da = one.a - two.a, db = one.b - two.b;
  // Rounding can take the hue's square a hair below zero for colours of one hue.
  const double dh = std::sqrt(std::max(da * da + db * db - dc * dc, 0.0));
  const double chroma_term = dc / (1 + 0.045 * c1), hue_term = dh / (1 + 0.015 * c1);
  return std::sqrt(dl * dl + chroma_term * chroma_term + hue_term * hue_term);
}

}  // namespace

void ottieni_colore_rgb(ProgramInstance& p, int i) {
  static constexpr ArgumentKey KEYS[] = {{"(ROSSO:", 1, "0"}, {"(VERDE:", 2, "0"}, {"(BLU:", 3, "0"}};
  read_arguments(p, i, CallShape::Value, KEYS);
  give_number(p, i, make_colour_rgb(slot_number(p, 1), slot_number(p, 2), slot_number(p, 3)), NumberForm::Exact);
}

void ottieni_colore_hsv(ProgramInstance& p, int i) {
  static constexpr ArgumentKey KEYS[] = {
      {"(TINTA:", 1, "200"}, {"(SATURAZIONE:", 2, "255"}, {"(LUMINOSITA:", 3, "255"}};
  read_arguments(p, i, CallShape::Value, KEYS);
  // The hue goes round at 255, as the runtime's hue does.
  give_number(p, i, make_colour_hsv(slot_number(p, 1), slot_number(p, 2), slot_number(p, 3)), NumberForm::Exact);
}

void ottieni_miscela_colori_da(ProgramInstance& p, int i) {
  static constexpr ArgumentKey KEYS[] = {{"(COLORE_1:", 1, "0"}, {"(COLORE_2:", 2, "0"}, {"(VALORE:", 3, "0"}};
  read_arguments(p, i, CallShape::Value, KEYS);
  give_number(p, i, merge_colour(slot_number(p, 1), slot_number(p, 2), slot_number(p, 3)), NumberForm::Exact);
}

void ottieni_colore_di_questo_pixel(ProgramInstance& p, int i) {
  static constexpr ArgumentKey KEYS[] = {{"(X:", 1, "0"}, {"(Y:", 2, "0"}};
  static constexpr double FARTHEST = 1e6;
  read_arguments(p, i, CallShape::Value, KEYS);
  const double x = slot_number(p, 1), y = slot_number(p, 2);
  // A pixel that can't be on any screen is black, as one beyond the edge reads.
  const bool on_a_screen = std::fabs(x) < FARTHEST && std::fabs(y) < FARTHEST;
  give_number(p, i, on_a_screen ? draw_getpixel(x, y) : 0, NumberForm::Exact);
}

void ottieni_differenza_colori(ProgramInstance& p, int i) {
  static constexpr ArgumentKey KEYS[] = {{"(COLORE_1:", 1, "0"}, {"(COLORE_2:", 2, "0"}};
  read_arguments(p, i, CallShape::Value, KEYS);
  give_number(p, i, colors_compare_cie94(slot_number(p, 1), slot_number(p, 2)), NumberForm::Exact);
}
