// The pictures, the text and the value functions of the drawing family
// through `velant run`: files and handles drawn, text placed and styled,
// colours made and read, each once on its defaults and once with its keys.
#include "drawing_run_fixture.h"

namespace drawing_run {

TEST_F(DrawingRun, ImmagineDrawsAPictureFileScaledTurnedTintedOrStretchedAndThePlaceholderForAMissingOne) {
  write_pictures();
  const Image image =
      draw("",
           "disegna immagine\n"
           "disegna immagine (X: 400, Y: 50, IMMAGINE: \"gatto\")\n"
           "disegna immagine (X: 500, Y: 50, IMMAGINE: \"gatto.png\", SCALA ASSE X: 2, SCALA ASSE Y: 3, "
           "COLORE: grigio, TRASPARENZA: 0,5)\n"
           "disegna immagine (X: 650, Y: 50, IMMAGINE: \"gatto\", LARGHEZZA: 50, ALTEZZA: 30, SCALA ASSE X: 2)\n"
           "disegna immagine (X: 400, Y: 300, IMMAGINE: \"gatto\", ROTAZIONE: 90)\n"
           "disegna immagine (X: 500, Y: 300, IMMAGINE: \"immagini\\strisce\", VELOCITA ANIMAZIONE: 0)\n"
           "disegna immagine (X: 600, Y: 300, IMMAGINE: \"nessuna\")\n"
           "disegna immagine (X: 700, Y: 300, IMMAGINE: 99999)\n");
  EXPECT_TRUE(shows_placeholder(image, 150, 150)) << "the default IMMAGINE names no file";
  // Its own size with its corner at (X, Y), the green pixel at the bottom left.
  const Ink plain = ink(image, 380, 30, 480, 100);
  EXPECT_EQ(plain.left, 400);
  EXPECT_EQ(plain.top, 50);
  EXPECT_EQ(plain.width(), 20);
  EXPECT_EQ(plain.height(), 10);
  EXPECT_TRUE(shows(image, 400, 59, {0, 255, 0}));
  EXPECT_TRUE(shows(image, 410, 55, RED));
  // Scaled twice by three, tinted grey, half transparent.
  const Ink scaled = ink(image, 490, 30, 600, 120);
  EXPECT_EQ(scaled.width(), 40);
  EXPECT_EQ(scaled.height(), 30);
  EXPECT_TRUE(shows(image, 520, 65, {191, 127, 127}));
  // Both sizes given: stretched to them, times the scales.
  const Ink stretched = ink(image, 640, 30, 900, 120);
  EXPECT_EQ(stretched.width(), 100);
  EXPECT_EQ(stretched.height(), 30);
  // A quarter turn counter-clockwise about the corner: the picture stands up from it.
  const Ink turned = ink(image, 380, 250, 450, 320);
  EXPECT_NEAR(turned.left, 400, 1);
  EXPECT_NEAR(turned.bottom, 299, 1);
  EXPECT_NEAR(turned.width(), 10, 1);
  EXPECT_NEAR(turned.height(), 20, 1);
  // A path with a backslash and no extension, its first frame only.
  const Ink strip = ink(image, 490, 290, 560, 330);
  EXPECT_EQ(strip.width(), 20);
  EXPECT_TRUE(shows(image, 505, 305, RED));
  EXPECT_TRUE(shows(image, 515, 305, BLUE));
  EXPECT_TRUE(shows_placeholder(image, 600, 300));
  EXPECT_FALSE(ink(image, 690, 290, 800, 400).any()) << "a number that is no picture draws nothing";
}

TEST_F(DrawingRun, ImmagineAnimatesAPictureOfFramesAtItsSpeed) {
  write_pictures();
  const std::string start = "strisce = ottieni immagine (NOME: \"immagini/strisce\", FOTOGRAMMI: 2)\n";
  const std::string loop = "disegna immagine (X: 500, Y: 300, IMMAGINE: strisce, VELOCITA ANIMAZIONE: 30)\n";
  // 30 a second at 30 frames a second: one frame of the picture further at each pass of the loop,
  // which runs from the second frame: three passes land on frame 0, four on frame 1.
  const Image three = draw(start, loop, 4);
  EXPECT_TRUE(shows(three, 505, 305, RED));
  const Image four = draw(start, loop, 5);
  EXPECT_TRUE(shows(four, 505, 305, BLUE));
  EXPECT_EQ(ink(four, 450, 250, 600, 350).width(), 10);
}

TEST_F(DrawingRun, FotogrammaDrawsTheFrameAskedForOfAPictureHandle) {
  write_pictures();
  const Image image = draw("strisce = ottieni immagine (NOME: \"immagini/strisce\", FOTOGRAMMI: 2)\n",
                           "disegna fotogramma\n"
                           "disegna fotogramma (X: 400, Y: 50, IMMAGINE: strisce, FOTOGRAMMA: 0)\n"
                           "disegna fotogramma (X: 450, Y: 50, IMMAGINE: strisce, FOTOGRAMMA: 1)\n"
                           "disegna fotogramma (X: 500, Y: 50, IMMAGINE: strisce, FOTOGRAMMA: 1, SCALA ASSE X: 3, "
                           "SCALA ASSE Y: 2, COLORE: grigio, TRASPARENZA: 0,5)\n"
                           "disegna fotogramma (X: 600, Y: 100, IMMAGINE: strisce, FOTOGRAMMA: 3, ROTAZIONE: 90)\n");
  EXPECT_TRUE(shows_placeholder(image, 150, 150));
  EXPECT_TRUE(shows(image, 405, 55, RED));
  EXPECT_TRUE(shows(image, 455, 55, BLUE));
  EXPECT_EQ(ink(image, 380, 30, 470, 80).width(), 60) << "two frames of 10, from 400 and from 450";
  const Ink scaled = ink(image, 490, 30, 560, 95);
  EXPECT_EQ(scaled.width(), 30);
  EXPECT_EQ(scaled.height(), 20);
  EXPECT_TRUE(shows(image, 515, 60, {127, 127, 191}));
  // Frame 3 of two is frame 1, turned to stand up from (600, 100).
  const Ink turned = ink(image, 580, 70, 650, 130);
  EXPECT_NEAR(turned.bottom, 99, 1);
  EXPECT_NEAR(turned.height(), 10, 1);
  EXPECT_TRUE(shows(image, 605, 95, BLUE));
}

TEST_F(DrawingRun, TestoFillsPlaceholdersAlignsScalesTurnsWrapsAndTakesAStyle) {
  const Image image = draw(
      "nome = \"Ada\"\n"
      "grande = ottieni stile testo (CARATTERE: \"DejaVuSans.ttf\", DIMENSIONE: 30)\n",
      "disegna testo\n"
      "disegna testo (X: 150, Y: 400, TESTO: \"no var\")\n"
      "disegna testo (X: 500, Y: 50, TESTO: \"Ciao <nome>\")\n"
      "disegna testo (X: 500, Y: 100, TESTO: \"Ciao Ada\")\n"
      "disegna testo (X: 900, Y: 250, TESTO: \"Ciao Ada\", SCALA: 2, COLORE: rosso, TRASPARENZA: 0,5, INTERLINEA: 20, "
      "LARGHEZZA CASELLA: 2000, ROTAZIONE: 0, ALLINEAMENTO ORIZZONTALE: a destra, ALLINEAMENTO VERTICALE: in basso)\n"
      "disegna testo (X: 500, Y: 300, TESTO: \"uno due tre\", LARGHEZZA CASELLA: 10, INTERLINEA: 40)\n"
      "disegna testo (X: 800, Y: 600, TESTO: \"Ciao Ada\", ROTAZIONE: 90)\n"
      "disegna testo (X: 200, Y: 550, TESTO: \"Ciao Ada\", STILE: grande)\n");
  // The default TESTO has no quotes: it names a variable, and there is none.
  const Ink by_default = ink(image, 100, 100, 400, 250), no_var = ink(image, 100, 350, 400, 450);
  ASSERT_TRUE(by_default.any());
  EXPECT_GE(by_default.left, 150);
  EXPECT_LE(by_default.left, 153);
  EXPECT_GE(by_default.top, 150);
  EXPECT_EQ(by_default.width(), no_var.width());
  EXPECT_EQ(by_default.height(), no_var.height());
  // The placeholder is filled in from the variable.
  const Ink filled = ink(image, 450, 30, 700, 80), plain = ink(image, 450, 90, 700, 140);
  ASSERT_TRUE(plain.any());
  EXPECT_EQ(filled.width(), plain.width());
  EXPECT_EQ(filled.height(), plain.height());
  // Twice as large, its bottom right corner at (900, 250), red at half alpha.
  const Ink big = ink(image, 700, 150, 990, 290);
  EXPECT_LE(big.right, 900);
  EXPECT_GT(big.right, 885);
  EXPECT_LE(big.bottom, 250);
  EXPECT_NEAR(big.width(), 2 * plain.width(), 4);
  EXPECT_NEAR(big.height(), 2 * plain.height(), 4);
  EXPECT_GT(count(image, big.left, big.top, big.right, big.bottom, HALF_RED, 3), 50);
  EXPECT_EQ(count(image, big.left, big.top, big.right, big.bottom, RED, 100), 0) << "nothing more than half red";
  // Wrapped at every word, 40 apart, and left and top aligned again.
  const Ink wrapped = ink(image, 450, 280, 690, 450);
  EXPECT_GE(wrapped.left, 500);
  EXPECT_GE(wrapped.top, 300);
  EXPECT_LT(wrapped.width(), plain.width());
  EXPECT_GE(wrapped.height(), 80 + plain.height() - 4);
  // A quarter turn counter-clockwise: the text rises from its point.
  const Ink turned = ink(image, 750, 450, 900, 650);
  EXPECT_NEAR(turned.width(), plain.height(), 3);
  EXPECT_NEAR(turned.height(), plain.width(), 3);
  EXPECT_LE(turned.bottom, 601);
  // A style of its own, larger.
  const Ink styled = ink(image, 150, 500, 700, 690);
  EXPECT_GT(styled.height(), plain.height() + 10);
  EXPECT_GT(styled.width(), plain.width() + 40);
}

TEST_F(DrawingRun, OttieniStileTestoGivesANewFontOrTheEnvironmentsOwn) {
  const Image image = draw(
      "normale = ottieni stile testo\n"
      "grassetto = ottieni stile testo (CARATTERE: \"DejaVuSans.ttf\", GRASSETTO: 1, CORSIVO: 1, DIMENSIONE: 30)\n"
      "manca = ottieni stile testo (CARATTERE: \"Nessun carattere così\")\n",
      "disegna testo (X: 100, Y: 100, TESTO: \"Ciao\", STILE: normale)\n"
      "disegna testo (X: 100, Y: 300, TESTO: \"Ciao\", STILE: grassetto)\n"
      "disegna testo (X: 100, Y: 500, TESTO: \"Ciao\", STILE: manca)\n"
      "disegna testo (X: 500, Y: 100, TESTO: \"Ciao\")\n");
  for (const char* name : {"normale", "grassetto", "manca"}) EXPECT_TRUE(is_exact(value(name))) << name;
  EXPECT_NE(value("grassetto"), value("normale"));
  EXPECT_EQ(value("manca"), value("normale")) << "a font that isn't there is the environment's";
  const Ink usual = ink(image, 50, 50, 400, 200), bold = ink(image, 50, 250, 400, 450),
            missing = ink(image, 50, 450, 400, 650), unstyled = ink(image, 450, 50, 800, 200);
  EXPECT_GT(bold.height(), usual.height() + 10);
  EXPECT_GT(bold.width(), usual.width() + 20);
  EXPECT_EQ(missing.width(), usual.width());
  EXPECT_EQ(unstyled.width(), usual.width());
  EXPECT_EQ(unstyled.height(), usual.height());
}

TEST_F(DrawingRun, OttieniImmagineLoadsOnceWithItsOriginBackgroundAndRebuiltSize) {
  write_pictures();
  const Image image = draw(
      "nessuna = ottieni immagine\n"
      "gatto = ottieni immagine (NOME: \"gatto\", ORIGINE X: 10, ORIGINE Y: 5, RIMUOVI_SFONDO: 1, FOTOGRAMMI: 1)\n"
      "prima = gatto\n"
      "pezzo = ottieni immagine (NOME: \"immagini/strisce.png\", FOTOGRAMMI: 0, LARGHEZZA: 10, ALTEZZA: 5, X: 5, "
      "Y: 0, SCALA ASSE X: 0,5, SCALA ASSE Y: 0,5, ROTAZIONE: 0, COLORE: grigio, TRASPARENZA: 1)\n",
      "disegna immagine (X: 150, Y: 150, IMMAGINE: nessuna)\n"
      "disegna immagine (X: 500, Y: 100, IMMAGINE: gatto, VELOCITA ANIMAZIONE: 0)\n"
      "disegna immagine (X: 700, Y: 100, IMMAGINE: pezzo, VELOCITA ANIMAZIONE: 0)\n"
      "gatto = ottieni immagine (NOME: \"gatto\", ORIGINE X: 10, ORIGINE Y: 5, RIMUOVI_SFONDO: 1, FOTOGRAMMI: 1)\n");
  for (const char* name : {"nessuna", "gatto", "pezzo"}) EXPECT_TRUE(is_exact(value(name))) << name;
  EXPECT_EQ(value("gatto"), value("prima")) << "asked again on every frame, loaded once";
  EXPECT_TRUE(shows_placeholder(image, 150, 150));
  // The origin 10 across and 5 down is the point put at (500, 100); the green corner is gone.
  const Ink cat = ink(image, 450, 50, 600, 150);
  EXPECT_EQ(cat.left, 490);
  EXPECT_EQ(cat.top, 95);
  EXPECT_EQ(cat.width(), 20);
  EXPECT_TRUE(shows(image, 490, 104, WHITE));
  EXPECT_TRUE(shows(image, 491, 104, RED));
  // Half as large on 10 x 5, cut from 5 across: the blue half, tinted grey.
  const Ink piece = ink(image, 650, 50, 800, 150);
  EXPECT_EQ(piece.left, 700);
  EXPECT_EQ(piece.width(), 5);
  EXPECT_EQ(piece.height(), 5);
  EXPECT_TRUE(shows(image, 702, 102, {0, 0, 128}));
}

TEST_F(DrawingRun, OttieniColoreRgbMakesTheColourThatIsDrawn) {
  const Image image = draw(
      "c = ottieni colore rgb (ROSSO: 10, VERDE: 20, BLU: 30)\n"
      "d = ottieni colore rgb\n"
      "e = ottieni colore rgb (BLU: 255, ROSSO: 300)\n",
      "disegna rettangolo (X: 100, Y: 100, BASE: 50, ALTEZZA: 50, COLORE: c)\n"
      "disegna rettangolo (X: 300, Y: 100, BASE: 50, ALTEZZA: 50, COLORE: d)\n");
  EXPECT_EQ(value("c"), "1971210.000000000000000000000000000000");
  EXPECT_EQ(value("d"), "0.000000000000000000000000000000");
  EXPECT_EQ(value("e"), "16711935.000000000000000000000000000000") << "channels are held to 255";
  EXPECT_TRUE(shows(image, 120, 120, {10, 20, 30}, 0));
  EXPECT_TRUE(shows(image, 320, 120, BLACK, 0));
}

TEST_F(DrawingRun, OttieniColoreHsvTurnsItsHueRoundAt255) {
  const Image image = draw(
      "base = ottieni colore hsv\n"
      "rosso_hsv = ottieni colore hsv (TINTA: 0, SATURAZIONE: 255, LUMINOSITA: 255)\n"
      "grigio_hsv = ottieni colore hsv (TINTA: 90, SATURAZIONE: 0, LUMINOSITA: 128)\n"
      "giro = ottieni colore hsv (TINTA: 300, SATURAZIONE: 200, LUMINOSITA: 180)\n"
      "stesso = ottieni colore hsv (TINTA: 45, SATURAZIONE: 200, LUMINOSITA: 180)\n",
      "disegna rettangolo (X: 100, Y: 100, BASE: 50, ALTEZZA: 50, COLORE: base)\n");
  EXPECT_EQ(value("rosso_hsv"), "255.000000000000000000000000000000");
  EXPECT_EQ(value("grigio_hsv"), "8421504.000000000000000000000000000000");
  EXPECT_EQ(value("giro"), value("stesso"));
  EXPECT_TRUE(is_exact(value("base")));
  // Hue 200 of 255 at full saturation and value: blue with some red, no green.
  const Rgb base = pixel(image, 120, 120);
  EXPECT_EQ(base.b, 255);
  EXPECT_EQ(base.g, 0);
  EXPECT_GT(base.r, 100);
  EXPECT_EQ(number(value("base")), base.r + base.g * 256 + base.b * 65536);
}

TEST_F(DrawingRun, OttieniMiscelaColoriDaGoesFromTheFirstColourToTheSecond) {
  const Image image = draw(
      "nulla = ottieni miscela colori da\n"
      "primo = ottieni miscela colori da (COLORE 1: rosso, COLORE 2: blu, VALORE: 0)\n"
      "secondo = ottieni miscela colori da (COLORE 1: rosso, COLORE 2: blu, VALORE: 1)\n"
      "viola_mio = ottieni miscela colori da (COLORE 1: rosso, COLORE 2: blu, VALORE: 0,5)\n",
      "disegna rettangolo (X: 100, Y: 100, BASE: 50, ALTEZZA: 50, COLORE: viola_mio)\n");
  EXPECT_EQ(value("nulla"), "0.000000000000000000000000000000");
  EXPECT_EQ(value("primo"), "255.000000000000000000000000000000");
  EXPECT_EQ(value("secondo"), "16711680.000000000000000000000000000000");
  EXPECT_TRUE(shows(image, 120, 120, {127, 0, 127}, 1));
}

TEST_F(DrawingRun, OttieniColoreDiQuestoPixelReadsTheRoomAsDrawnSoFar) {
  // The grid is left on: the pixel at (0, 0) is on its lines.
  draw_program(
      "INIZIA\nCICLO CONTINUO\n"
      "disegna rettangolo (X: 400, Y: 400, BASE: 50, ALTEZZA: 50, COLORE: arancione)\n"
      "angolo = ottieni colore di questo pixel\n"
      "dentro = ottieni colore di questo pixel --> (X: 420, Y: 420)\n"
      "quadretto = ottieni colore di questo pixel --> (X: 12, Y: 12)\n"
      "linea = ottieni colore di questo pixel --> (X: 25, Y: 40)\n"
      "dopo = ottieni colore di questo pixel --> (X: 620, Y: 420)\n"
      "lontano = ottieni colore di questo pixel --> (X: 10000000000, Y: -10000000000)\n"
      "disegna rettangolo (X: 600, Y: 400, BASE: 50, ALTEZZA: 50, COLORE: rosso)\n");
  EXPECT_EQ(value("angolo"), "12632256.000000000000000000000000000000");
  EXPECT_EQ(value("dentro"), "4235519.000000000000000000000000000000");
  EXPECT_EQ(value("quadretto"), "16777215.000000000000000000000000000000");
  EXPECT_EQ(value("linea"), "12632256.000000000000000000000000000000");
  EXPECT_EQ(value("dopo"), "16777215.000000000000000000000000000000") << "what comes later isn't drawn yet";
  EXPECT_EQ(value("lontano"), "0.000000000000000000000000000000");
}

TEST_F(DrawingRun, OttieniDifferenzaColoriIsTheCie94DifferenceFromTheFirstColour) {
  draw(
      "nulla = ottieni differenza colori\n"
      "uguali = ottieni differenza colori (COLORE 1: giallo, COLORE 2: giallo)\n"
      "nero_bianco = ottieni differenza colori (COLORE 1: nero, COLORE 2: bianco)\n"
      "rosso_blu = ottieni differenza colori (COLORE 1: rosso, COLORE 2: blu)\n"
      "blu_rosso = ottieni differenza colori (COLORE 1: blu, COLORE 2: rosso)\n"
      "giallo_oro = ottieni differenza colori (COLORE 1: giallo, COLORE 2: oro)\n",
      "");
  EXPECT_EQ(value("nulla"), "0.000000000000000000000000000000");
  EXPECT_EQ(value("uguali"), "0.000000000000000000000000000000");
  EXPECT_NEAR(number(value("nero_bianco")), 100, 1e-5);
  EXPECT_NEAR(number(value("rosso_blu")), 70.57597, 1e-4);
  EXPECT_NEAR(number(value("blu_rosso")), 61.24236, 1e-4);
  EXPECT_NEAR(number(value("giallo_oro")), 12.83464, 1e-4);
  EXPECT_TRUE(is_exact(value("rosso_blu")));
}

TEST_F(DrawingRun, PicturesThatCantBeHadDrawNoMessageButABadKeyStopsTheRunWithOne) {
  std::ofstream(dir_ / "rotto.png") << "not a picture";
  const Image image = draw("",
                           "disegna immagine (X: 100, Y: 100, IMMAGINE: \"rotto.png\")\n"
                           "disegna immagine (X: 200, Y: 100, IMMAGINE: \"manca.jpg\")\n"
                           "disegna fotogramma (X: 300, Y: 100, IMMAGINE: -7)\n"
                           "disegna poligono regolare (X: 600, Y: 400, NUMERO LATI: 0)\n");
  EXPECT_TRUE(printed_only_variables());
  EXPECT_TRUE(shows_placeholder(image, 100, 100)) << "a damaged file";
  EXPECT_TRUE(shows_placeholder(image, 200, 100)) << "a missing file";
  EXPECT_FALSE(ink(image, 290, 90, 400, 200).any()) << "a number that is no picture";
  EXPECT_FALSE(ink(image, 450, 250, 750, 550).any()) << "a polygon of no sides";

  const RunResult bad = run("INIZIA\nCICLO CONTINUO\ndisegna cerchio (X: 100, Y: 100, RAGGIO: 2*(1+))\n", "--frames 3");
  EXPECT_EQ(bad.status, 1);
  EXPECT_NE(bad.out.find("Esecuzione fallita: impossibile interpretare correttamente il codice!"), std::string::npos)
      << bad.out;
}

}  // namespace drawing_run
