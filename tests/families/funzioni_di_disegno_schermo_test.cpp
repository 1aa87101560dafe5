// The screen of funzioni_di_disegno in process: the background grid drawn
// on its surface. The saved screenshot, the rulers and the protractor are
// checked through `velant run` in tests/environment.
#include "funzioni_di_disegno_fixture.h"

namespace {

constexpr double YELLOW = 65535, BLUE = 16711680;

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
      for (int column = x; column < x + width; ++column) count += surface_getpixel(memory.surf, column, row) != memory.sfondo_griglia;
    }
    return count;
  }
};

TEST_F(DisegnoSchermo, GridIsDrawnOnceOnASurfaceOfTheWindowsSize) {
  draw_state().colour = 123;
  draw_state().alpha = 0.5;
  ProgramInstance& p = grid_program("imposta griglia (COLORE SFONDO: giallo, COLORE LINEE: blu, DIMENSIONE: 25)");
  ASSERT_TRUE(surface_exists(drawing_memory(p).surf));
  EXPECT_EQ(surface_get_width(drawing_memory(p).surf), 200);
  EXPECT_EQ(surface_get_height(drawing_memory(p).surf), 150);
  EXPECT_EQ(drawing_memory(p).sfondo_griglia, YELLOW);
  EXPECT_EQ(drawing_memory(p).colore_griglia, BLUE);
  EXPECT_EQ(drawing_memory(p).dimensione_griglia, 25);
  EXPECT_EQ(p.griglia_visibile, 1);
  EXPECT_EQ(surface_getpixel(drawing_memory(p).surf, 12, 40), YELLOW);
  EXPECT_EQ(surface_getpixel(drawing_memory(p).surf, 25, 40), BLUE);
  EXPECT_EQ(surface_getpixel(drawing_memory(p).surf, 175, 40), BLUE);
  EXPECT_EQ(surface_getpixel(drawing_memory(p).surf, 40, 25), BLUE);
  EXPECT_EQ(surface_getpixel(drawing_memory(p).surf, 40, 125), BLUE);
  EXPECT_EQ(surface_getpixel(drawing_memory(p).surf, 40, 130), YELLOW);
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
  EXPECT_EQ(drawing_memory(p).sfondo_griglia, 16777215);
  EXPECT_EQ(drawing_memory(p).colore_griglia, 8421504);
  EXPECT_EQ(surface_getpixel(drawing_memory(p).surf, 25, 40), 8421504);
  EXPECT_EQ(surface_getpixel(drawing_memory(p).surf, 12, 40), 16777215);

  // DIMENSIONE 0 counts as 5.
  ProgramInstance& q = grid_program("imposta griglia (DIMENSIONE: 0, COLORE LINEE: blu)");
  EXPECT_EQ(drawing_memory(q).dimensione_griglia, 5);
  for (int x : {5, 10, 15, 60}) EXPECT_EQ(surface_getpixel(drawing_memory(q).surf, x, 40), BLUE) << x;
  EXPECT_EQ(surface_getpixel(drawing_memory(q).surf, 7, 42), 16777215);
}

TEST_F(DisegnoSchermo, GridLabelsTakeTheScaleAskedFor) {
  ProgramInstance& p = grid_program("imposta griglia (COLORE LINEE: blu)");
  const int small = marked(p, 26, 1, 20, 14);
  draw_grid(p, 0.65);
  const int large = marked(p, 26, 1, 20, 14);
  EXPECT_GT(large, small);
}

TEST_F(DisegnoSchermo, OnlyVisibile1ShowsTheGridAndAnythingElseTakesItAway) {
  ProgramInstance& p = grid_program("imposta griglia\nimposta griglia (VISIBILE: 0)");
  EXPECT_FALSE(surface_exists(drawing_memory(p).surf));
  EXPECT_EQ(p.griglia_visibile, 0);

  ProgramInstance& q = grid_program("imposta griglia\nimposta griglia (VISIBILE: 1+1)");
  EXPECT_FALSE(surface_exists(drawing_memory(q).surf));
  EXPECT_EQ(q.griglia_visibile, 2);
}

}  // namespace
