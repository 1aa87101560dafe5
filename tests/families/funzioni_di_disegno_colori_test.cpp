// The colour functions of funzioni_di_disegno, their keys, defaults and
// exact number form; the colour of a pixel read from what was drawn.
#include "funzioni_di_disegno_fixture.h"
#include "runtime/Graphics/Colour.h"

namespace {

class DisegnoColori : public DrawingProgramTest {};

// A colour from its channels, in the blue-green-red order of the runtime.
double bgr(int red, int green, int blue) { return red + green * 256.0 + blue * 65536.0; }

TEST_F(DisegnoColori, ColoreRgbTakesItsChannelsHeldTo255) {
  ProgramInstance& p = run_start(
      "c = ottieni colore rgb (ROSSO: 10, VERDE: 20, BLU: 30)\n"
      "d = ottieni colore rgb\n"
      "e = ottieni colore rgb (BLU: 255, ROSSO: 300)\n"
      "f = ottieni colore rgb (VERDE: 100+28)");
  EXPECT_EQ(stored(p, "c"), exact(bgr(10, 20, 30)));
  EXPECT_EQ(stored(p, "d"), exact(0));
  EXPECT_EQ(stored(p, "e"), exact(bgr(255, 0, 255)));
  EXPECT_EQ(stored(p, "f"), exact(bgr(0, 128, 0)));
}

TEST_F(DisegnoColori, ColoreHsvGoesRoundItsHueAt255) {
  ProgramInstance& p = run_start(
      "rosso_hsv = ottieni colore hsv (TINTA: 0)\n"
      "giro = ottieni colore hsv (TINTA: 300, SATURAZIONE: 200, LUMINOSITA: 180)\n"
      "stesso = ottieni colore hsv (TINTA: 45, SATURAZIONE: 200, LUMINOSITA: 180)\n"
      "grigio_hsv = ottieni colore hsv (SATURAZIONE: 0, LUMINOSITA: 128)\n"
      "base = ottieni colore hsv");
  EXPECT_EQ(stored(p, "rosso_hsv"), exact(bgr(255, 0, 0)));
  EXPECT_EQ(stored(p, "giro"), stored(p, "stesso"));
  EXPECT_EQ(stored(p, "grigio_hsv"), exact(bgr(128, 128, 128)));
  // Hue 200 of 255, full saturation and value: blue with some red, no green.
  const double base = number(p, "base");
  EXPECT_EQ(colour_get_blue(base), 255);
  EXPECT_EQ(colour_get_green(base), 0);
  EXPECT_GT(colour_get_red(base), 0);
  EXPECT_EQ(stored(p, "base"), exact(make_colour_hsv(200, 255, 255)));
}

TEST_F(DisegnoColori, MiscelaColoriGoesFromTheFirstToTheSecond) {
  ProgramInstance& p = run_start(
      "a = ottieni miscela colori da (COLORE 1: rosso, COLORE 2: blu)\n"
      "b = ottieni miscela colori da (COLORE 1: rosso, COLORE 2: blu, VALORE: 1)\n"
      "c = ottieni miscela colori da (COLORE 1: bianco, COLORE 2: nero, VALORE: 0,25)\n"
      "d = ottieni miscela colori da");
  EXPECT_EQ(stored(p, "a"), exact(255));
  EXPECT_EQ(stored(p, "b"), exact(bgr(0, 0, 255)));
  const double c = number(p, "c");
  for (double channel : {colour_get_red(c), colour_get_green(c), colour_get_blue(c)}) EXPECT_NEAR(channel, 191, 1);
  EXPECT_EQ(stored(p, "d"), exact(0));
}

TEST_F(DisegnoColori, ColoreDiQuestoPixelReadsWhatWasDrawn) {
  ProgramInstance& p = run_one_frame(
      "disegna rettangolo (X: 10, Y: 10, BASE: 20, ALTEZZA: 20, COLORE: arancione)\n"
      "dentro = ottieni colore di questo pixel --> (X: 15, Y: 15)\n"
      "fuori = ottieni colore di questo pixel --> (X: 100, Y: 100)\n"
      "angolo = ottieni colore di questo pixel\n"
      "lontano = ottieni colore di questo pixel --> (X: 10000000000, Y: -10000000000)");
  EXPECT_EQ(stored(p, "dentro"), exact(4235519));
  EXPECT_EQ(stored(p, "fuori"), exact(bgr(255, 255, 255)));
  EXPECT_EQ(stored(p, "angolo"), exact(bgr(255, 255, 255)));
  EXPECT_EQ(stored(p, "lontano"), exact(0));
}

TEST_F(DisegnoColori, DifferenzaColoriIsCie94WithTheFirstColourAsReference) {
  ProgramInstance& p = run_start(
      "nb = ottieni differenza colori (COLORE 1: nero, COLORE 2: bianco)\n"
      "uguali = ottieni differenza colori (COLORE 1: giallo, COLORE 2: giallo)\n"
      "rb = ottieni differenza colori (COLORE 1: rosso, COLORE 2: blu)\n"
      "br = ottieni differenza colori (COLORE 1: blu, COLORE 2: rosso)\n"
      "go = ottieni differenza colori (COLORE 1: giallo, COLORE 2: oro)\n"
      "zero = ottieni differenza colori");
  EXPECT_NEAR(number(p, "nb"), 100, 1e-5);
  EXPECT_EQ(stored(p, "uguali"), exact(0));
  EXPECT_NEAR(number(p, "rb"), 70.57597, 1e-4);
  EXPECT_NEAR(number(p, "br"), 61.24236, 1e-4);
  EXPECT_NEAR(number(p, "go"), 12.83464, 1e-4);
  EXPECT_EQ(stored(p, "zero"), exact(0));
  EXPECT_EQ(stored(p, "rb").size(), std::string("70.").size() + 30);
}

}  // namespace
