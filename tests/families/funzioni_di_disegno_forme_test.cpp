// The shapes of funzioni_di_disegno drawn in process: the draw state put
// back, the polygon's corner cases and arguments that are expressions. Each
// shape's defaults and keys are checked through `velant run` in
// tests/environment/drawing_functions_run_test.cpp.
#include "funzioni_di_disegno_fixture.h"

namespace {

class DisegnoForme : public DrawingProgramTest {};

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
