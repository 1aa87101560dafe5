// The drawing family through `velant run`, in the real main room: keys
// reaching the statements and the values coming back, files read from the
// program's folder; the grid under what the loop draws, the rulers and the
// protractor over it, the saved screen, and the showcase example. Each
// statement's keys and defaults are checked in process in tests/families.
#include <filesystem>
#include <sstream>

#include "run_fixture.h"

namespace {

class DrawingRun : public RunFixture {
 protected:
  // Runs `program` for `frames` frames and gives the last one.
  Image draw_program(const std::string& program, int frames = 3) {
    last_ = run(program, "--frames " + std::to_string(frames) + " --screenshot schermo.png --vars");
    EXPECT_EQ(last_.status, 0) << last_.out;
    return picture();
  }
  // The same for a program whose INIZIA sets a white background, which
  // hides the grid, then holds `start`, and whose CICLO CONTINUO holds `loop`.
  Image draw(const std::string& start, const std::string& loop, int frames = 3) {
    return draw_program("INIZIA\ncolore sfondo = bianco\n" + start + "CICLO CONTINUO\n" + loop, frames);
  }
  // Whether the last run printed its variables and nothing else: no message.
  ::testing::AssertionResult printed_only_variables() const {
    std::istringstream lines(last_.out);
    for (std::string line; std::getline(lines, line);) {
      if (line.find(" = ") == std::string::npos) return ::testing::AssertionFailure() << "printed: " << last_.out;
    }
    return ::testing::AssertionSuccess();
  }
  // Whether anything but white was drawn from (left, top) to (right, bottom).
  static bool inked(const Image& image, int left, int top, int right, int bottom) {
    return count_colour(image, left, top, right, bottom, WHITE, 5) < (right - left + 1) * (bottom - top + 1);
  }

  RunResult last_;
};

TEST_F(DrawingRun, StatementsAndValueFunctionsReachTheMainRoom) {
  ASSERT_TRUE(write_test_picture(folder_ / "gatto.png", 20, 10,
                                 [](int x, int y) { return x == 0 && y == 9 ? GREEN : RED; }));
  const Image image = draw("c = ottieni colore rgb (ROSSO: 10, VERDE: 20, BLU: 30)\n",
                           "disegna cerchio (X: 600, Y: 150, RAGGIO: 40, COLORE: c)\n"
                           "disegna immagine (X: 400, Y: 50, IMMAGINE: \"gatto\")\n"
                           "disegna testo (X: 100, Y: 400, TESTO: \"Ciao\", COLORE: blu)\n"
                           "cerchio = ottieni colore di questo pixel --> (X: 600, Y: 150)\n"
                           "dopo = ottieni colore di questo pixel --> (X: 800, Y: 150)\n"
                           "disegna rettangolo (X: 780, Y: 130, BASE: 40, ALTEZZA: 40, COLORE: rosso)\n");
  EXPECT_TRUE(printed_only_variables());
  EXPECT_EQ(last_.value("c"), "1971210.000000000000000000000000000000");
  EXPECT_TRUE(shows(image, 600, 150, {10, 20, 30}, 0));
  EXPECT_TRUE(shows(image, 600, 195, WHITE)) << "beyond the radius";
  // The room is read as drawn so far: what comes later isn't drawn yet.
  EXPECT_EQ(last_.value("cerchio"), last_.value("c"));
  EXPECT_EQ(last_.value("dopo"), "16777215.000000000000000000000000000000");
  EXPECT_TRUE(shows(image, 800, 150, RED));
  // The picture of the program's folder, at its corner, with its green pixel at the bottom left.
  EXPECT_TRUE(shows(image, 400, 59, {0, 255, 0}));
  EXPECT_TRUE(shows(image, 419, 50, RED));
  EXPECT_TRUE(shows(image, 420, 50, WHITE));
  EXPECT_GT(count_colour(image, 100, 400, 200, 440, BLUE, 60), 20) << "the text";

  // A key that can't be worked out stops the run with the learner's message.
  const RunResult bad = run("INIZIA\nCICLO CONTINUO\ndisegna cerchio (X: 100, Y: 100, RAGGIO: 2*(1+))\n", "--frames 3");
  EXPECT_EQ(bad.status, 1);
  EXPECT_NE(bad.out.find("Esecuzione fallita: impossibile interpretare correttamente il codice!"), std::string::npos)
      << bad.out;
}

TEST_F(DrawingRun, ImpostaGrigliaDrawsItsLinesUnderTheDrawingOrTakesTheGridAway) {
  const Image keyed = draw_program(
      "INIZIA\nimposta griglia (COLORE SFONDO: giallo, COLORE LINEE: blu, DIMENSIONE: 40, VISIBILE: 1)\n"
      "CICLO CONTINUO\ndisegna rettangolo (X: 510, Y: 310, BASE: 80, ALTEZZA: 80, COLORE: rosso)\n");
  for (const auto& [x, y] : {std::pair{40, 100}, {80, 100}, {960, 100}, {100, 40}, {100, 680}})
    EXPECT_TRUE(shows(keyed, x, y, BLUE)) << x << ", " << y;
  EXPECT_TRUE(shows(keyed, 60, 100, YELLOW));
  EXPECT_TRUE(shows(keyed, 25, 100, YELLOW)) << "no line of the start's grid";
  EXPECT_TRUE(shows(keyed, 560, 350, RED)) << "over the line at 560";

  // Without the grid the room's own background is left, the same everywhere.
  const Image hidden = draw_program("INIZIA\nimposta griglia (VISIBILE: 0)\nCICLO CONTINUO\n");
  const Rgb background = pixel(hidden, 12, 12);
  for (const auto& [x, y] : {std::pair{25, 40}, {0, 0}, {50, 600}, {27, 3}})
    EXPECT_TRUE(shows(hidden, x, y, background, 0)) << x << ", " << y;
}

TEST_F(DrawingRun, RulersAndProtractorShowAtTheMouseOverTheDrawingUntilVisibile0) {
  // A headless run has its mouse at (0, 0): the rulers run along the top and
  // left edges, with the labels of the mouse's place beside them.
  const Image rulers = draw("", "disegna righelli\n");
  EXPECT_TRUE(shows(rulers, 900, 0, BLACK));
  EXPECT_TRUE(shows(rulers, 0, 600, BLACK));
  EXPECT_TRUE(shows(rulers, 900, 2, WHITE));
  EXPECT_TRUE(inked(rulers, 1, 2, 40, 25));
  // The protractor's centre is at (0, 0) too: a cross about the corner, not
  // across the window, and the angle 0 written beside it.
  const Image protractor = draw("", "disegna goniometro\n");
  EXPECT_TRUE(shows(protractor, 20, 0, BLACK));
  EXPECT_TRUE(shows(protractor, 0, 20, BLACK));
  EXPECT_TRUE(shows(protractor, 100, 0, WHITE));
  EXPECT_TRUE(shows(protractor, 0, 100, WHITE));
  EXPECT_TRUE(inked(protractor, 60, 5, 200, 60)) << "\"Angolo: 0\"";
  const Image hidden = draw("", "disegna righelli\ndisegna goniometro\n"
                                "disegna righelli (VISIBILE: 0)\ndisegna goniometro (VISIBILE: 0)\n");
  EXPECT_FALSE(inked(hidden, 0, 0, 999, 699));
}

TEST_F(DrawingRun, SalvaSchermataSavesWhatTheWindowShowsWhenItRuns) {
  const Image last = draw("n = 0\n",
                          "n = n + 1\n"
                          "disegna rettangolo (X: n * 100, Y: 100, BASE: 50, ALTEZZA: 50, COLORE: rosso)\n"
                          "salva schermata\n",
                          4);
  ASSERT_EQ(last_.value("n"), "3");
  EXPECT_TRUE(shows(last, 320, 120, RED));
  // The window shows the frame before the one being drawn: the rectangle of n = 2.
  const Image saved = picture(std::string(SAVE_AREA) + "schermata_salvata.png");
  EXPECT_EQ(saved.width, 1000);
  EXPECT_EQ(saved.height, 700);
  EXPECT_TRUE(shows(saved, 220, 120, RED));
  EXPECT_TRUE(shows(saved, 320, 120, WHITE));
  EXPECT_TRUE(shows(saved, 120, 120, WHITE));
}

TEST_F(DrawingRun, TheShowcaseExampleDrawsItsScene) {
  const std::filesystem::path examples = std::filesystem::path(VELANT_SOURCE_DIR) / "examples";
  std::filesystem::create_directories(folder_ / "immagini");
  std::filesystem::copy_file(examples / "immagini" / "stella.png", folder_ / "immagini" / "stella.png");
  const Image image = draw_program(read_whole_file(examples / "vetrina.txt"), 5);
  EXPECT_TRUE(printed_only_variables());
  EXPECT_EQ(image.width, 800);
  EXPECT_EQ(image.height, 600);
  EXPECT_TRUE(shows(image, 430, 260, {135, 200, 240})) << "the sky between the grid's lines";
  EXPECT_TRUE(shows(image, 680, 110, {255, 219, 55})) << "the sun";
  EXPECT_TRUE(shows(image, 200, 350, {250, 230, 190})) << "the wall";
  EXPECT_TRUE(shows(image, 230, 300, {190, 60, 45})) << "the roof";
  // The chimney is coloured from the roof as read from the screen.
  EXPECT_EQ(last_.value("tetto"), last_.value("mattone"));
  EXPECT_TRUE(shows(image, 297, 265, {190, 60, 45}));
  EXPECT_TRUE(shows(image, 50, 550, {108, 190, 63})) << "the grass";
  // The white title would hardly show on the sky: it is dark blue.
  EXPECT_LT(std::strtod(last_.value("contrasto").c_str(), nullptr), 40);
  EXPECT_GT(count_colour(image, 250, 5, 550, 60, {20, 40, 110}, 10), 300);
  // The star on the tree is a picture, not the placeholder.
  EXPECT_FALSE(shows(image, 590, 238, {200, 200, 200}, 20));
  EXPECT_GT(pixel(image, 590, 238).r, 200);
}

}  // namespace
