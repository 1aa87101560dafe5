// The screen of funzioni_di_disegno in process: the background grid drawn
// on its surface, and the switches of the rulers and the protractor. What
// the run controller makes of them in the main room is checked through
// `velant run` in tests/environment.
#include <array>

#include "funzioni_di_disegno_fixture.h"

namespace {

constexpr double YELLOW_WORD = 65535, BLUE_WORD = 16711680, WHITE_WORD = 16777215, GREY_WORD = 8421504;

class DisegnoSchermo : public DrawingProgramTest {
 protected:
  // A program whose window is 200 x 150 and whose INIZIA ends with `grid`, run once.
  ProgramInstance& grid_program(const std::string& grid) {
    return run_start("larghezza finestra = 200\naltezza finestra = 150\n" + grid);
  }
  // How many pixels of the box (x, y, width, height) of `p`'s grid surface aren't its background colour.
  static int marked(ProgramInstance& p, int x, int y, int width, int height) {
    const DrawingMemory& memory = drawing_memory(p);
    int count = 0;
    for (int row = y; row < y + height; ++row) {
      for (int column = x; column < x + width; ++column) {
        count += surface_getpixel(memory.surf, column, row) != memory.sfondo_griglia;
      }
    }
    return count;
  }
  // Each (x, y, colour) of `expected` on `p`'s grid surface.
  static void expect_grid_pixels(ProgramInstance& p, std::initializer_list<std::array<double, 3>> expected) {
    for (const auto& [x, y, colour] : expected) {
      EXPECT_EQ(surface_getpixel(drawing_memory(p).surf, x, y), colour) << x << ", " << y;
    }
  }
};

TEST_F(DisegnoSchermo, GridIsDrawnOnceOnASurfaceOfTheWindowsSize) {
  draw_state().colour = 123;
  draw_state().alpha = 0.5;
  ProgramInstance& p = grid_program("imposta griglia (COLORE SFONDO: giallo, COLORE LINEE: blu, DIMENSIONE: 25)");
  const DrawingMemory& memory = drawing_memory(p);
  ASSERT_TRUE(surface_exists(memory.surf));
  EXPECT_EQ(surface_get_width(memory.surf), 200);
  EXPECT_EQ(surface_get_height(memory.surf), 150);
  EXPECT_EQ(memory.dimensione_griglia, 25);
  EXPECT_EQ(p.griglia_visibile, 1);
  expect_grid_pixels(p, {{12, 40, YELLOW_WORD}, {25, 40, BLUE_WORD}, {175, 40, BLUE_WORD}, {40, 25, BLUE_WORD},
                         {40, 125, BLUE_WORD}, {40, 130, YELLOW_WORD}});
  // Each line has its coordinate beside it: "25" right of the line at 25, "50" below the line at 50.
  EXPECT_GT(marked(p, 27, 2, 12, 6), 3);
  EXPECT_GT(marked(p, 2, 52, 12, 6), 3);
  EXPECT_EQ(marked(p, 27, 10, 12, 12), 0);
  // The draw state is as it was, and nothing reached the canvas.
  EXPECT_EQ(draw_state().colour, 123u);
  EXPECT_EQ(draw_state().alpha, 0.5);
  EXPECT_FALSE(ink().any());
}

TEST_F(DisegnoSchermo, GridDefaultsAndTheFinestSpacing) {
  ProgramInstance& p = grid_program("imposta griglia");
  EXPECT_EQ(drawing_memory(p).sfondo_griglia, WHITE_WORD);
  EXPECT_EQ(drawing_memory(p).colore_griglia, GREY_WORD);
  expect_grid_pixels(p, {{25, 40, GREY_WORD}, {12, 40, WHITE_WORD}});
  // DIMENSIONE 0 counts as 5.
  ProgramInstance& q = grid_program("imposta griglia (DIMENSIONE: 0, COLORE LINEE: blu)");
  EXPECT_EQ(drawing_memory(q).dimensione_griglia, 5);
  expect_grid_pixels(q, {{5, 40, BLUE_WORD}, {10, 40, BLUE_WORD}, {15, 40, BLUE_WORD}, {60, 40, BLUE_WORD},
                         {7, 42, WHITE_WORD}});
}

TEST_F(DisegnoSchermo, GridLabelsTakeTheScaleAskedFor) {
  ProgramInstance& p = grid_program("imposta griglia (COLORE LINEE: blu)");
  const int small = marked(p, 26, 1, 20, 14);
  draw_grid(p, 0.65);
  EXPECT_GT(marked(p, 26, 1, 20, 14), small);
}

TEST_F(DisegnoSchermo, OnlyVisibile1ShowsTheGridAndAnythingElseTakesItAway) {
  for (const auto& [visible, kept] : {std::pair{"0", 0}, {"1+1", 2}}) {
    ProgramInstance& p = grid_program(std::string("imposta griglia\nimposta griglia (VISIBILE: ") + visible + ")");
    EXPECT_FALSE(surface_exists(drawing_memory(p).surf)) << visible;
    EXPECT_EQ(p.griglia_visibile, kept) << visible;
  }
}

TEST_F(DisegnoSchermo, RulersAndProtractorAreSwitchedByVisibile) {
  run_start("disegna righelli\ndisegna goniometro (VISIBILE: 0)");
  EXPECT_EQ(global("righelli"), 1);
  EXPECT_EQ(global("goniometro"), 0);
  run_start("disegna righelli (VISIBILE: 0)\ndisegna goniometro");
  EXPECT_EQ(global("righelli"), 0);
  EXPECT_EQ(global("goniometro"), 1);
}

}  // namespace
