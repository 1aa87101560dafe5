// The shapes of funzioni_di_disegno drawn for real: each one's defaults,
// its keys, its colour, alpha and outline, and the draw state put back.
#include "funzioni_di_disegno_fixture.h"

namespace {

class DisegnoForme : public DrawingProgramTest {};

TEST_F(DisegnoForme, CircleDefaultsAreABlackDiscOfRadius100At150) {
  run_one_frame("disegna cerchio");
  EXPECT_TRUE(is_black(150, 150));
  EXPECT_TRUE(is_black(150, 53));
  EXPECT_TRUE(is_black(247, 150));
  EXPECT_TRUE(is_white(150, 46));
  EXPECT_TRUE(is_white(254, 150));
  EXPECT_TRUE(is_white(225, 75));  // beyond the rim on the diagonal
}

TEST_F(DisegnoForme, CircleKeysPlaceColourOutlineAndAlpha) {
  run_one_frame("disegna cerchio (X: 30*2, Y: 60, RAGGIO: 20, COLORE: rosso)");
  EXPECT_TRUE(is(pixel(60, 60), 255, 0, 0));
  EXPECT_TRUE(is(pixel(60, 43), 255, 0, 0));
  EXPECT_TRUE(is_white(60, 84));
  EXPECT_TRUE(is_white(150, 150));  // the default place is left alone

  clear_canvas();
  run_one_frame("disegna cerchio (X: 60, Y: 60, RAGGIO: 20, COLORE: blu, SOLO CONTORNO: 1)");
  EXPECT_TRUE(is_white(60, 60));
  EXPECT_TRUE(is(pixel(60, 40), 0, 0, 255, 60) || is(pixel(60, 41), 0, 0, 255, 60));

  clear_canvas();
  run_one_frame("disegna cerchio (X: 60, Y: 60, RAGGIO: 20, COLORE: rosso, TRASPARENZA: 0,5)");
  EXPECT_TRUE(is(pixel(60, 60), 255, 127, 127));
}

TEST_F(DisegnoForme, EveryShapePutsBackBlackAtFullAlpha) {
  for (const char* shape : {"disegna cerchio", "disegna ellisse", "disegna triangolo", "disegna linea", "disegna punto",
                            "disegna rettangolo", "disegna poligono regolare"}) {
    draw_state().colour = 12345;
    draw_state().alpha = 0.25;
    run_one_frame(std::string(shape) + " (COLORE: verde, TRASPARENZA: 0,5)");
    EXPECT_EQ(draw_state().colour, 0u) << shape;
    EXPECT_EQ(draw_state().alpha, 1) << shape;
  }
}

TEST_F(DisegnoForme, EllipseFillsTheBoxOfItsCorners) {
  // Defaults: the box from (150, 150) to (300, 400).
  run_one_frame("disegna ellisse");
  EXPECT_TRUE(is_black(225, 275));
  EXPECT_TRUE(is_black(225, 160));
  EXPECT_TRUE(is_black(155, 275));
  EXPECT_TRUE(is_white(160, 160));  // a corner of the box is outside the ellipse
  EXPECT_TRUE(is_white(225, 405));

  clear_canvas();
  run_one_frame("disegna ellisse (X 1: 20, Y 1: 20, X 2: 100, Y 2: 60, COLORE: verde, TRASPARENZA: 0,5)");
  EXPECT_TRUE(is(pixel(60, 40), 127, 255, 127));
  EXPECT_TRUE(is_white(60, 65));
  EXPECT_TRUE(is_white(225, 275));

  clear_canvas();
  run_one_frame("disegna ellisse (X 1: 20, Y 1: 20, X 2: 100, Y 2: 60, SOLO CONTORNO: 1)");
  EXPECT_TRUE(is_white(60, 40));
  EXPECT_TRUE(is_black(20, 40) || is_black(21, 40));
}

TEST_F(DisegnoForme, TriangleJoinsItsThreeCorners) {
  // Defaults: (150, 150), (300, 300), (100, 450).
  run_one_frame("disegna triangolo");
  EXPECT_TRUE(is_black(183, 300));
  EXPECT_TRUE(is_white(290, 440));
  EXPECT_TRUE(is_white(120, 160));

  clear_canvas();
  run_one_frame(
      "disegna triangolo (X 1: 10, Y 1: 10, X 2: 110, Y 2: 10, X 3: 10, Y 3: 110, COLORE: rosso, SOLO CONTORNO: 0)");
  EXPECT_TRUE(is(pixel(30, 30), 255, 0, 0));
  EXPECT_TRUE(is_white(90, 90));

  clear_canvas();
  run_one_frame("disegna triangolo (X 1: 10, Y 1: 10, X 2: 110, Y 2: 10, X 3: 10, Y 3: 110, SOLO CONTORNO: 1)");
  EXPECT_TRUE(is_white(30, 30));
  EXPECT_TRUE(is_black(50, 10));
}

TEST_F(DisegnoForme, LineHasTheWidthOfSpessore) {
  // Defaults: from (150, 150) to (300, 300), one pixel wide.
  run_one_frame("disegna linea");
  EXPECT_TRUE(is_black(225, 225));
  EXPECT_TRUE(is_white(225, 229));
  EXPECT_TRUE(is_white(100, 100));

  clear_canvas();
  run_one_frame("disegna linea (X 1: 150, Y 1: 150, X 2: 300, Y 2: 300, SPESSORE: 9, COLORE: blu)");
  EXPECT_TRUE(is(pixel(225, 229), 0, 0, 255));
  EXPECT_TRUE(is_white(225, 235));

  clear_canvas();
  run_one_frame("disegna linea (X 1: 10, Y 1: 50, X 2: 200, Y 2: 50, SPESSORE: 5, TRASPARENZA: 0,5)");
  EXPECT_TRUE(is(pixel(100, 50), 127, 127, 127));
  EXPECT_TRUE(is_white(100, 55));
}

TEST_F(DisegnoForme, PointColoursOnePixel) {
  run_one_frame("disegna punto");
  EXPECT_TRUE(is_black(150, 150));
  EXPECT_TRUE(is_white(151, 150));
  EXPECT_TRUE(is_white(150, 151));
  EXPECT_TRUE(is_white(149, 149));

  clear_canvas();
  run_one_frame("disegna punto (X: 7, Y: 9, COLORE: rosso, TRASPARENZA: 0,5)");
  EXPECT_TRUE(is(pixel(7, 9), 255, 127, 127));
  EXPECT_TRUE(is_white(150, 150));
}

TEST_F(DisegnoForme, RectangleGoesFromXYToBaseAndHeightFurther) {
  // Defaults: (150, 150) to (250, 300).
  run_one_frame("disegna rettangolo");
  EXPECT_TRUE(is_black(150, 150));
  EXPECT_TRUE(is_black(249, 299));
  EXPECT_TRUE(is_white(251, 225));
  EXPECT_TRUE(is_white(200, 301));
  EXPECT_TRUE(is_white(149, 200));

  clear_canvas();
  run_one_frame("disegna rettangolo (X: 10, Y: 20, BASE: 30, ALTEZZA: 5, COLORE: verde)");
  EXPECT_TRUE(is(pixel(25, 22), 0, 255, 0));
  EXPECT_TRUE(is(pixel(39, 24), 0, 255, 0));
  EXPECT_TRUE(is_white(41, 22));
  EXPECT_TRUE(is_white(25, 26));

  clear_canvas();
  run_one_frame("disegna rettangolo (X: 10, Y: 20, BASE: 30, ALTEZZA: 20, SOLO CONTORNO: 1, TRASPARENZA: 0,5)");
  EXPECT_TRUE(is_white(25, 30));
  EXPECT_TRUE(is(pixel(10, 30), 127, 127, 127));
}

TEST_F(DisegnoForme, RegularPolygonTurnsAndClosesItsOutline) {
  // Defaults: five sides, radius 100, a corner at 0 degrees, at (250, 150).
  run_one_frame("disegna poligono regolare");
  EXPECT_TRUE(is_black(150, 150));
  EXPECT_TRUE(is_black(245, 150));
  EXPECT_TRUE(is_white(255, 150));
  EXPECT_TRUE(is_white(60, 150));  // the left side is flat, at 150 - 81

  // The outline: the centre stays white and the side from the last corner
  // (0 degrees) back to the first (72 degrees) is there.
  clear_canvas();
  run_one_frame("disegna poligono regolare (SOLO CONTORNO: 1)");
  EXPECT_TRUE(is_white(150, 150));
  bool closing_side = false;
  for (int dx = -1; dx <= 1; ++dx) {
    for (int dy = -1; dy <= 1; ++dy) closing_side = closing_side || is_black(215 + dx, 102 + dy);
  }
  EXPECT_TRUE(closing_side);

  // Four sides: corners on the axes, or turned by 45 degrees a square with straight sides.
  clear_canvas();
  run_one_frame("disegna poligono regolare (NUMERO LATI: 4, X: 200, Y: 200, RAGGIO: 50)");
  EXPECT_TRUE(is_black(245, 200));
  EXPECT_TRUE(is_white(235, 235));
  clear_canvas();
  run_one_frame("disegna poligono regolare (NUMERO LATI: 4, X: 200, Y: 200, RAGGIO: 50, ROTAZIONE: 45, COLORE: rosso)");
  EXPECT_TRUE(is(pixel(233, 233), 255, 0, 0));
  EXPECT_TRUE(is_white(245, 200));

  clear_canvas();
  run_one_frame("disegna poligono regolare (NUMERO LATI: 0)\ndisegna poligono regolare (NUMERO LATI: -3)");
  EXPECT_FALSE(ink().any());
  EXPECT_TRUE(messages_.empty());
}

TEST_F(DisegnoForme, ArgumentsAreExpressionsOfVariables) {
  ProgramInstance& p = sole_program(
      "INIZIA\nlato = 40\ncolore = giallo\nCICLO CONTINUO\n"
      "disegna rettangolo (X: lato, Y: lato/2, BASE: lato*2, ALTEZZA: lato, COLORE: colore)");
  run_inizia(p);
  run_frame(p);
  const Ink box = ink();
  EXPECT_EQ(box.left, 40);
  EXPECT_EQ(box.top, 20);
  EXPECT_EQ(box.width(), 80);
  EXPECT_EQ(box.height(), 40);
  EXPECT_TRUE(is(pixel(60, 30), 255, 255, 0));
}

}  // namespace
