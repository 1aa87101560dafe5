// The shapes and the colours of funzioni_di_disegno: each shape on its
// defaults and with its keys, filled or outlined, and the draw state it puts
// back; each colour function's value in the exact form.
#include "funzioni_di_disegno_fixture.h"
#include "runtime/Graphics/Colour.h"

namespace {

class DisegnoForme : public DrawingProgramTest {};

// clang-format off
TEST_F(DisegnoForme, EachShapeDrawsWhereItsKeysOrDefaultsPutItAndPutsBackBlack) {
  expect_drawings(
      {
          // Defaults: black, radius 100, centred at (150, 150).
          {"disegna cerchio", Ink{50, 50, 250, 250}, {{150, 150, BLACK}, {225, 75, WHITE}}, 2},
          {"disegna cerchio (X: 300, Y: 150, RAGGIO: 40, SOLO CONTORNO: 0, COLORE: rosso, TRASPARENZA: 0,5)",
           Ink{260, 110, 340, 190}, {{300, 150, HALF_RED}}, 2},
          {"disegna cerchio (X: 300, Y: 400, RAGGIO: 40, SOLO CONTORNO: 1, COLORE: blu)", Ink{260, 360, 340, 440},
           {{300, 400, WHITE}, {260, 400, BLUE, 2}}, 2},
          // The ellipse fills the box of its two corners, by default (150, 150) and (300, 400).
          {"disegna ellisse", Ink{150, 150, 300, 400}, {{225, 275, BLACK}, {160, 160, WHITE}}, 1},
          {"disegna ellisse (X 1: 300, Y 1: 20, X 2: 460, Y 2: 100, COLORE: verde, TRASPARENZA: 0,5)",
           Ink{300, 20, 460, 100}, {{380, 60, HALF_GREEN}}, 1},
          {"disegna ellisse (X 1: 300, Y 1: 300, X 2: 460, Y 2: 400, COLORE: blu, SOLO CONTORNO: 1)",
           Ink{300, 300, 460, 400}, {{380, 350, WHITE}, {380, 300, BLUE, 2}}, 2},
          // Defaults: (150, 150), (300, 300), (100, 450).
          {"disegna triangolo", Ink{100, 150, 300, 450}, {{183, 300, BLACK}, {290, 440, WHITE}, {120, 160, WHITE}}, 2},
          {"disegna triangolo (X 1: 250, Y 1: 20, X 2: 450, Y 2: 20, X 3: 250, Y 3: 220, COLORE: rosso, "
           "TRASPARENZA: 0,5)",
           Ink{250, 20, 450, 220}, {{280, 50, HALF_RED}, {430, 200, WHITE}}, 2},
          {"disegna triangolo (X 1: 250, Y 1: 250, X 2: 450, Y 2: 250, X 3: 250, Y 3: 450, COLORE: blu, "
           "SOLO CONTORNO: 1)",
           Ink{250, 250, 450, 450}, {{300, 300, WHITE}, {350, 250, BLUE, 2}, {250, 350, BLUE, 2}}, 2},
          // Defaults: from (150, 150) to (300, 300), one pixel wide.
          {"disegna linea", Ink{150, 150, 300, 300}, {{225, 225, BLACK}, {225, 229, WHITE}}, 1},
          {"disegna linea (X 1: 50, Y 1: 400, X 2: 450, Y 2: 400, COLORE: blu, TRASPARENZA: 0,5, SPESSORE: 9)",
           Ink{50, 396, 450, 404}, {{250, 400, HALF_BLUE}}, 1},
          {"disegna punto", Ink{150, 150, 150, 150}, {{150, 150, BLACK}}},
          {"disegna punto (X: 300, Y: 400, COLORE: rosso, TRASPARENZA: 0,5)", Ink{300, 400, 300, 400},
           {{300, 400, HALF_RED}}},
          // Defaults: from (150, 150), 100 across and 150 down.
          {"disegna rettangolo", Ink{150, 150, 249, 299}, {{200, 225, BLACK}}},
          {"disegna rettangolo (X: 250, Y: 20, BASE: 200, ALTEZZA: 50, SOLO CONTORNO: 0, COLORE: verde, "
           "TRASPARENZA: 0,5)",
           Ink{250, 20, 449, 69}, {{350, 45, HALF_GREEN}}},
          {"disegna rettangolo (X: 250, Y: 300, BASE: 200, ALTEZZA: 50, SOLO CONTORNO: 1, COLORE: blu)",
           Ink{250, 300, 450, 350}, {{350, 325, WHITE}, {250, 325, BLUE}}, 1},
          // Keys are expressions of the program's variables.
          {"disegna rettangolo (X: lato, Y: lato/2, BASE: lato*2, ALTEZZA: lato, COLORE: colore)", Ink{40, 20, 119, 59},
           {{60, 30, YELLOW}}},
          // Defaults: five sides, radius 100, a corner at 0 degrees, at (150, 150); the far side at 150 - 81.
          {"disegna poligono regolare", Ink{69, 55, 250, 245}, {{150, 150, BLACK}, {245, 150, BLACK}}, 2},
          // The outline leaves the centre white and closes with the side from the last corner back to the first.
          {"disegna poligono regolare (SOLO CONTORNO: 1)", Ink{69, 55, 250, 245},
           {{150, 150, WHITE}, {215, 102, BLACK, 1}}, 2},
          // Four sides: corners on the axes, or turned by 45 degrees a square 2 x 50 x cos 45 across.
          {"disegna poligono regolare (NUMERO LATI: 4, X: 200, Y: 200, RAGGIO: 50)", Ink{150, 150, 250, 250},
           {{245, 200, BLACK}, {235, 235, WHITE}}, 2},
          {"disegna poligono regolare (NUMERO LATI: 4, X: 200, Y: 200, RAGGIO: 50, ROTAZIONE: 45, COLORE: rosso)",
           Ink{165, 165, 235, 235}, {{233, 233, RED}}, 2},
          {"disegna poligono regolare (NUMERO LATI: 0)\ndisegna poligono regolare (NUMERO LATI: -3)", Ink{}, {}},
      },
      "lato = 40\ncolore = giallo", true);
}
// clang-format on

// A colour from its channels, in the blue-green-red order of the runtime.
constexpr double bgr(int red, int green, int blue) { return red + green * 256.0 + blue * 65536.0; }

TEST_F(DisegnoForme, ColourFunctionsGiveTheirColourInTheExactForm) {
  struct Case {
    const char* name;
    const char* call;
    double expected, tolerance = 0;
  };
  // clang-format off
  const Case cases[] = {
      {"c", "ottieni colore rgb (ROSSO: 10, VERDE: 20, BLU: 30)", bgr(10, 20, 30)},
      {"d", "ottieni colore rgb", 0},
      {"e", "ottieni colore rgb (BLU: 255, ROSSO: 300)", bgr(255, 0, 255)},  // channels are held to 255
      {"f", "ottieni colore rgb (VERDE: 100+28)", bgr(0, 128, 0)},
      // Hue 200 of 255 at full saturation and value: blue with some red, no green.
      {"hsv", "ottieni colore hsv", bgr(180, 0, 255)},
      {"rosso_hsv", "ottieni colore hsv (TINTA: 0)", bgr(255, 0, 0)},
      {"grigio_hsv", "ottieni colore hsv (TINTA: 90, SATURAZIONE: 0, LUMINOSITA: 128)", bgr(128, 128, 128)},
      // The hue goes round at 255: 300 is 45.
      {"giro", "ottieni colore hsv (TINTA: 300, SATURAZIONE: 200, LUMINOSITA: 180)", make_colour_hsv(45, 200, 180)},
      {"miscela", "ottieni miscela colori da", 0},
      {"primo", "ottieni miscela colori da (COLORE 1: rosso, COLORE 2: blu)", bgr(255, 0, 0)},
      {"secondo", "ottieni miscela colori da (COLORE 1: rosso, COLORE 2: blu, VALORE: 1)", bgr(0, 0, 255)},
      {"viola_mio", "ottieni miscela colori da (COLORE 1: rosso, COLORE 2: blu, VALORE: 0,5)", bgr(127, 0, 127)},
      {"grigio_mio", "ottieni miscela colori da (COLORE 1: bianco, COLORE 2: nero, VALORE: 0,25)", bgr(191, 191, 191)},
      // The pixels of the canvas as drawn so far; one that no screen can have is black.
      {"dentro", "ottieni colore di questo pixel --> (X: 15, Y: 15)", 4235519},
      {"fuori", "ottieni colore di questo pixel --> (X: 100, Y: 100)", bgr(255, 255, 255)},
      {"angolo", "ottieni colore di questo pixel", bgr(255, 255, 255)},
      {"lontano", "ottieni colore di questo pixel --> (X: 10000000000, Y: -10000000000)", 0},
      // The CIE94 difference, the first colour the reference.
      {"differenza", "ottieni differenza colori", 0},
      {"uguali", "ottieni differenza colori (COLORE 1: giallo, COLORE 2: giallo)", 0},
      {"nero_bianco", "ottieni differenza colori (COLORE 1: nero, COLORE 2: bianco)", 100, 1e-5},
      {"rosso_blu", "ottieni differenza colori (COLORE 1: rosso, COLORE 2: blu)", 70.57597, 1e-4},
      {"blu_rosso", "ottieni differenza colori (COLORE 1: blu, COLORE 2: rosso)", 61.24236, 1e-4},
      {"giallo_oro", "ottieni differenza colori (COLORE 1: giallo, COLORE 2: oro)", 12.83464, 1e-4},
  };
  // clang-format on
  std::string statements = "disegna rettangolo (X: 10, Y: 10, BASE: 20, ALTEZZA: 20, COLORE: arancione)\n";
  for (const Case& c : cases) statements += std::string(c.name) + " = " + c.call + "\n";
  ProgramInstance& p = run_one_frame(statements);
  for (const Case& c : cases) {
    SCOPED_TRACE(c.call);
    const std::string value = stored(p, c.name);
    EXPECT_EQ(value.size() - value.find('.'), 31u) << value << " has not 30 decimals";
    if (c.tolerance == 0) {
      EXPECT_EQ(value, exact(c.expected));
    }
    EXPECT_NEAR(number(p, c.name), c.expected, c.tolerance);
  }
}

}  // namespace
