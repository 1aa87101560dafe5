// The drawing statements through `velant run`: each shape drawn in the real
// main room, once on its defaults and once with its keys; the grid, the
// rulers, the protractor and the saved screen; and the showcase example.
// INIZIA sets a white background, which hides the grid, unless a test is
// about the grid.
#include "drawing_run_fixture.h"

namespace drawing_run {

TEST_F(DrawingRun, CerchioIsADiscOfItsRadiusFilledOrOutlinedInItsColourAndAlpha) {
  const Image image =
      draw("",
           "disegna cerchio\n"
           "disegna cerchio (X: 600, Y: 150, RAGGIO: 40, SOLO CONTORNO: 0, COLORE: rosso, TRASPARENZA: 0,5)\n"
           "disegna cerchio (X: 600, Y: 400, RAGGIO: 40, SOLO CONTORNO: 1, COLORE: blu, TRASPARENZA: 1)\n"
           "disegna punto (X: 900, Y: 600)\n");
  // Defaults: black, radius 100, centred at (150, 150).
  EXPECT_TRUE(shows(image, 150, 150, BLACK));
  EXPECT_TRUE(shows(image, 150, 53, BLACK));
  EXPECT_TRUE(shows(image, 247, 150, BLACK));
  EXPECT_TRUE(shows(image, 150, 46, WHITE));
  EXPECT_TRUE(shows(image, 225, 75, WHITE)) << "beyond the rim on the diagonal";
  const Ink filled = ink(image, 500, 50, 700, 250);
  EXPECT_NEAR(filled.width(), 80, 2);
  EXPECT_NEAR(filled.height(), 80, 2);
  EXPECT_NEAR((filled.left + filled.right) / 2.0, 600, 1);
  EXPECT_TRUE(shows(image, 600, 150, HALF_RED));
  const Ink outline = ink(image, 500, 300, 700, 500);
  EXPECT_NEAR(outline.width(), 80, 2);
  EXPECT_TRUE(shows(image, 600, 400, WHITE)) << "an outline leaves the inside alone";
  EXPECT_TRUE(shows_near(image, outline.left, 400, BLUE));
  // The colour and alpha went back to black, opaque, for what follows.
  EXPECT_TRUE(shows(image, 900, 600, BLACK));
}

TEST_F(DrawingRun, EllisseFillsOrOutlinesTheBoxOfItsTwoCorners) {
  const Image image = draw("",
                           "disegna ellisse\n"
                           "disegna ellisse (X 1: 500, Y 1: 100, X 2: 700, Y 2: 200, COLORE: verde, TRASPARENZA: 0,5, "
                           "SOLO CONTORNO: 0)\n"
                           "disegna ellisse (X 1: 500, Y 1: 300, X 2: 700, Y 2: 400, COLORE: blu, SOLO CONTORNO: 1)\n");
  // Defaults: the box from (150, 150) to (300, 400).
  EXPECT_TRUE(shows(image, 225, 275, BLACK));
  EXPECT_TRUE(shows(image, 225, 160, BLACK));
  EXPECT_TRUE(shows(image, 155, 275, BLACK));
  EXPECT_TRUE(shows(image, 160, 160, WHITE)) << "a corner of the box is outside";
  EXPECT_TRUE(shows(image, 225, 405, WHITE));
  const Ink filled = ink(image, 450, 50, 750, 250);
  EXPECT_NEAR(filled.left, 500, 1);
  EXPECT_NEAR(filled.right, 700, 1);
  EXPECT_NEAR(filled.top, 100, 1);
  EXPECT_NEAR(filled.bottom, 200, 1);
  EXPECT_TRUE(shows(image, 600, 150, HALF_GREEN));
  const Ink outline = ink(image, 450, 250, 750, 450);
  EXPECT_NEAR(outline.width(), 200, 2);
  EXPECT_NEAR(outline.height(), 100, 2);
  EXPECT_TRUE(shows(image, 600, 350, WHITE));
  EXPECT_TRUE(shows_near(image, 600, outline.top, BLUE));
}

TEST_F(DrawingRun, TriangoloJoinsItsThreeCorners) {
  const Image image = draw("",
                           "disegna triangolo\n"
                           "disegna triangolo (X 1: 500, Y 1: 100, X 2: 700, Y 2: 100, X 3: 500, Y 3: 300, "
                           "COLORE: rosso, TRASPARENZA: 0,5, SOLO CONTORNO: 0)\n"
                           "disegna triangolo (X 1: 750, Y 1: 350, X 2: 950, Y 2: 350, X 3: 750, Y 3: 550, "
                           "COLORE: blu, SOLO CONTORNO: 1)\n");
  // Defaults: (150, 150), (300, 300), (100, 450).
  EXPECT_TRUE(shows(image, 183, 300, BLACK));
  EXPECT_TRUE(shows(image, 290, 440, WHITE));
  EXPECT_TRUE(shows(image, 120, 160, WHITE));
  EXPECT_TRUE(shows(image, 530, 130, HALF_RED));
  EXPECT_TRUE(shows(image, 680, 280, WHITE)) << "beyond the long side";
  const Ink filled = ink(image, 450, 50, 740, 320);
  EXPECT_NEAR(filled.width(), 200, 2);
  EXPECT_NEAR(filled.height(), 200, 2);
  EXPECT_TRUE(shows(image, 780, 380, WHITE));
  EXPECT_TRUE(shows_near(image, 850, 350, BLUE));
  EXPECT_TRUE(shows_near(image, 750, 450, BLUE));
}

TEST_F(DrawingRun, LineaGoesFromItsFirstPointToItsSecondAsWideAsSpessore) {
  const Image image = draw("",
                           "disegna linea\n"
                           "disegna linea (X 1: 500, Y 1: 100, X 2: 900, Y 2: 100, COLORE: blu, TRASPARENZA: 0,5, "
                           "SPESSORE: 9)\n");
  // Defaults: from (150, 150) to (300, 300), one pixel wide.
  EXPECT_TRUE(shows(image, 225, 225, BLACK));
  EXPECT_TRUE(shows(image, 225, 229, WHITE));
  EXPECT_TRUE(shows(image, 100, 100, WHITE));
  EXPECT_TRUE(shows(image, 320, 320, WHITE));
  const Ink thick = ink(image, 450, 50, 950, 150);
  EXPECT_NEAR(thick.left, 500, 1);
  EXPECT_NEAR(thick.right, 900, 1);
  EXPECT_NEAR(thick.height(), 9, 1);
  EXPECT_TRUE(shows(image, 700, 100, HALF_BLUE));
}

TEST_F(DrawingRun, PuntoColoursOnePixel) {
  const Image image = draw("", "disegna punto\ndisegna punto (X: 600, Y: 400, COLORE: rosso, TRASPARENZA: 0,5)\n");
  EXPECT_TRUE(shows(image, 150, 150, BLACK));
  EXPECT_TRUE(shows(image, 600, 400, HALF_RED));
  const Ink around_default = ink(image, 140, 140, 160, 160), around_keyed = ink(image, 590, 390, 610, 410);
  EXPECT_EQ(around_default.width() * around_default.height(), 1);
  EXPECT_EQ(around_keyed.width() * around_keyed.height(), 1);
}

TEST_F(DrawingRun, RettangoloGoesFromXYAsFarAsBaseAndAltezza) {
  const Image image =
      draw("",
           "disegna rettangolo\n"
           "disegna rettangolo (X: 500, Y: 100, BASE: 200, ALTEZZA: 50, SOLO CONTORNO: 0, "
           "COLORE: verde, TRASPARENZA: 0,5)\n"
           "disegna rettangolo (X: 500, Y: 300, BASE: 200, ALTEZZA: 50, SOLO CONTORNO: 1, COLORE: blu)\n");
  // Defaults: (150, 150) to (250, 300).
  const Ink box = ink(image, 100, 100, 350, 350);
  EXPECT_EQ(box.left, 150);
  EXPECT_EQ(box.top, 150);
  EXPECT_EQ(box.width(), 100);
  EXPECT_EQ(box.height(), 150);
  EXPECT_TRUE(shows(image, 200, 225, BLACK));
  const Ink filled = ink(image, 450, 50, 750, 250);
  EXPECT_EQ(filled.left, 500);
  EXPECT_EQ(filled.top, 100);
  EXPECT_EQ(filled.width(), 200);
  EXPECT_EQ(filled.height(), 50);
  EXPECT_TRUE(shows(image, 600, 125, HALF_GREEN));
  EXPECT_TRUE(shows(image, 600, 325, WHITE));
  EXPECT_TRUE(shows(image, 500, 325, BLUE));
  EXPECT_NEAR(ink(image, 450, 260, 750, 400).width(), 200, 1);
}

TEST_F(DrawingRun, PoligonoRegolareTurnsItsCornersAndClosesItsOutline) {
  const Image image = draw("",
                           "disegna poligono regolare\n"
                           "disegna poligono regolare (X: 600, Y: 150, NUMERO LATI: 4, RAGGIO: 50, ROTAZIONE: 45, "
                           "SOLO CONTORNO: 0, COLORE: rosso, TRASPARENZA: 0,5)\n"
                           "disegna poligono regolare (X: 600, Y: 450, NUMERO LATI: 4, RAGGIO: 50, ROTAZIONE: 45, "
                           "SOLO CONTORNO: 1, COLORE: blu)\n");
  // Defaults: five sides, radius 100, a corner at 0 degrees, centred at (150, 150).
  EXPECT_TRUE(shows(image, 150, 150, BLACK));
  EXPECT_TRUE(shows(image, 245, 150, BLACK));
  EXPECT_TRUE(shows(image, 255, 150, WHITE));
  EXPECT_TRUE(shows(image, 60, 150, WHITE)) << "the side opposite the corner is at 150 - 81";
  // Four sides turned by 45 degrees: a square with straight sides, 2 x 50 x cos 45 across.
  const Ink square = ink(image, 500, 50, 700, 250);
  EXPECT_NEAR(square.width(), 71, 2);
  EXPECT_NEAR(square.height(), 71, 2);
  EXPECT_TRUE(shows(image, 632, 182, HALF_RED)) << "a corner of the square";
  const Ink outline = ink(image, 500, 350, 700, 550);
  EXPECT_NEAR(outline.width(), 71, 2);
  EXPECT_TRUE(shows(image, 600, 450, WHITE));
  // Every side is there, the closing one too.
  for (const auto& [x, y] :
       {std::pair{600, outline.top}, {600, outline.bottom}, {outline.left, 450}, {outline.right, 450}})
    EXPECT_TRUE(shows_near(image, x, y, BLUE));
}

TEST_F(DrawingRun, RighelliCrossTheWholeWindowThroughTheMouseUntilVisibile0) {
  // A headless run has its mouse at (0, 0): the two lines run along the top and left edges.
  const Image shown = draw("", "disegna righelli\n");
  EXPECT_TRUE(shows(shown, 900, 0, BLACK));
  EXPECT_TRUE(shows(shown, 0, 600, BLACK));
  EXPECT_TRUE(shows(shown, 900, 2, WHITE));
  EXPECT_TRUE(ink(shown, 1, 2, 40, 25).any()) << "the labels of the mouse's place";
  const Image hidden = draw("", "disegna righelli\ndisegna righelli (VISIBILE: 0)\n");
  EXPECT_FALSE(ink(hidden, 0, 0, 999, 699).any());
}

TEST_F(DrawingRun, GoniometroDrawsItsCrossAndAngleAtItsCentreUntilVisibile0) {
  // Centre and mouse both at (0, 0): a cross about the corner, not across the window as
  // the rulers are, and the angle 0 written beside it.
  const Image shown = draw("", "disegna goniometro\n");
  EXPECT_TRUE(shows(shown, 20, 0, BLACK));
  EXPECT_TRUE(shows(shown, 0, 20, BLACK));
  EXPECT_TRUE(shows(shown, 100, 0, WHITE));
  EXPECT_TRUE(shows(shown, 0, 100, WHITE));
  EXPECT_GT(ink(shown, 5, 5, 200, 60).width(), 50) << "\"Angolo: 0\"";
  const Image hidden = draw("", "disegna goniometro\ndisegna goniometro (VISIBILE: 0)\n");
  EXPECT_FALSE(ink(hidden, 0, 0, 999, 699).any());
}

TEST_F(DrawingRun, ImpostaGrigliaDrawsItsLinesUnderTheDrawingOrTakesTheGridAway) {
  // Defaults: grey lines 25 apart on white; what the loop draws covers them.
  const Image defaults = draw_program(
      "INIZIA\nimposta griglia\nCICLO CONTINUO\n"
      "disegna rettangolo (X: 510, Y: 310, BASE: 80, ALTEZZA: 80, COLORE: rosso)\n");
  for (const auto& [x, y] : {std::pair{25, 40}, {50, 40}, {975, 40}, {40, 25}, {40, 675}})
    EXPECT_TRUE(shows(defaults, x, y, {128, 128, 128})) << x << ", " << y;
  EXPECT_TRUE(shows(defaults, 37, 37, WHITE));
  EXPECT_TRUE(shows(defaults, 550, 350, RED)) << "over the line at 550";
  EXPECT_TRUE(ink(defaults, 27, 1, 40, 8).any()) << "the label 25 beside its line";

  const Image keyed = draw_program(
      "INIZIA\nimposta griglia (COLORE SFONDO: giallo, COLORE LINEE: blu, DIMENSIONE: 40, VISIBILE: 1)\n"
      "CICLO CONTINUO\n");
  for (const auto& [x, y] : {std::pair{40, 100}, {80, 100}, {960, 100}, {100, 40}, {100, 680}})
    EXPECT_TRUE(shows(keyed, x, y, BLUE)) << x << ", " << y;
  EXPECT_TRUE(shows(keyed, 60, 100, {255, 255, 0}));
  EXPECT_TRUE(shows(keyed, 25, 100, {255, 255, 0})) << "no line at 25 any more";

  // Without the grid the room's own background is left, the same everywhere.
  const Image hidden = draw_program("INIZIA\nimposta griglia (VISIBILE: 0)\nCICLO CONTINUO\n");
  const Rgb background = pixel(hidden, 12, 12);
  for (const auto& [x, y] : {std::pair{25, 40}, {0, 0}, {50, 600}, {27, 3}})
    EXPECT_TRUE(shows(hidden, x, y, background, 0)) << x << ", " << y;
}

TEST_F(DrawingRun, SalvaSchermataSavesWhatTheWindowShowsWhenItRuns) {
  const Image last = draw("n = 0\n",
                          "n = n + 1\n"
                          "disegna rettangolo (X: n * 100, Y: 100, BASE: 50, ALTEZZA: 50, COLORE: rosso)\n"
                          "salva schermata\n",
                          4);
  ASSERT_EQ(value("n"), "3");
  EXPECT_TRUE(shows(last, 320, 120, RED));
  // The window shows the frame before the one being drawn: the rectangle of n = 2.
  Image saved;
  ASSERT_TRUE(image_load((dir_ / "schermata_salvata.png").string(), saved));
  EXPECT_EQ(saved.width, 1000);
  EXPECT_EQ(saved.height, 700);
  EXPECT_TRUE(shows(saved, 220, 120, RED));
  EXPECT_TRUE(shows(saved, 320, 120, WHITE));
  EXPECT_TRUE(shows(saved, 120, 120, WHITE));
}

TEST_F(DrawingRun, TheShowcaseExampleDrawsItsScene) {
  std::filesystem::create_directories(dir_ / "immagini");
  const std::filesystem::path examples = std::filesystem::path(VELANT_SOURCE_DIR) / "examples";
  std::filesystem::copy_file(examples / "immagini" / "stella.png", dir_ / "immagini" / "stella.png");
  std::ifstream file(examples / "vetrina.txt", std::ios::binary);
  const std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  ASSERT_FALSE(text.empty());
  const Image image = draw_program(text, 5);
  EXPECT_TRUE(printed_only_variables());
  EXPECT_EQ(image.width, 800);
  EXPECT_EQ(image.height, 600);
  EXPECT_TRUE(shows(image, 430, 260, {135, 200, 240})) << "the sky between the grid's lines";
  EXPECT_TRUE(shows(image, 680, 110, {255, 219, 55})) << "the sun";
  EXPECT_TRUE(shows(image, 200, 350, {250, 230, 190})) << "the wall";
  EXPECT_TRUE(shows(image, 230, 300, {190, 60, 45})) << "the roof";
  // The chimney is coloured from the roof as read from the screen.
  EXPECT_EQ(value("tetto"), value("mattone"));
  EXPECT_TRUE(shows(image, 297, 265, {190, 60, 45}));
  EXPECT_TRUE(shows(image, 50, 550, {108, 190, 63})) << "the grass";
  // The white title would hardly show on the sky: it is dark blue.
  EXPECT_LT(number(value("contrasto")), 40);
  EXPECT_GT(count(image, 250, 5, 550, 60, {20, 40, 110}, 10), 300);
  // The star on the tree is a picture, not the placeholder.
  EXPECT_FALSE(shows(image, 590, 238, {200, 200, 200}, 20));
  EXPECT_GT(pixel(image, 590, 238).r, 200);
}

}  // namespace drawing_run
