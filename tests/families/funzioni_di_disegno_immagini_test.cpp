// The pictures of funzioni_di_disegno drawn for real: paths completed and
// remembered, handles, the placeholder for what can't be had, frames,
// scaling, turning, tinting and stretching, and ottieni_immagine with its
// origin, its background taken away and its rebuilt pictures.
#include "funzioni_di_disegno_fixture.h"

namespace {

class DisegnoImmagini : public DrawingProgramTest {
 protected:
  void SetUp() override {
    DrawingProgramTest::SetUp();
    // "gatto.png" and "micio.png": 20 x 10, red with a green bottom-left pixel.
    for (const char* cat : {"gatto.png", "micio.png"}) {
      ASSERT_TRUE(write_test_picture(cat, 20, 10, [](int x, int y) { return x == 0 && y == 9 ? GREEN : RED; }));
    }
    // "immagini/strisce.png": two frames of 10 x 10 side by side, red then blue.
    ASSERT_TRUE(write_test_picture("immagini/strisce.png", 20, 10, [](int x, int) { return x < 10 ? RED : BLUE; }));
  }
};

// clang-format off
TEST_F(DisegnoImmagini, PicturesAndFramesAreDrawnAtTheirCornerScaledTurnedTintedOrStretched) {
  std::ofstream("rotto.png") << "not a picture";
  constexpr Rgb GREY_RED{191, 127, 127}, GREY_BLUE{127, 127, 191};
  expect_drawings({
      // Its own size with its corner at (X, Y), the green pixel at the bottom left.
      {"disegna immagine (X: 30, Y: 40, IMMAGINE: \"gatto\")", Ink{30, 40, 49, 49}, {{30, 49, GREEN}, {49, 48, RED}}},
      {"disegna immagine (X: 10, Y: 10, IMMAGINE: \"gatto.png\", SCALA ASSE X: 2, SCALA ASSE Y: 3)",
       Ink{10, 10, 49, 39}, {}},
      // A quarter turn counter-clockwise about the corner: the picture stands up from it.
      {"disegna immagine (X: 100, Y: 100, IMMAGINE: \"gatto\", ROTAZIONE: 90)", Ink{100, 80, 109, 99}, {}, 1},
      {"disegna immagine (X: 10, Y: 10, IMMAGINE: \"gatto\", COLORE: grigio, TRASPARENZA: 0,5)",
       Ink{10, 10, 29, 19}, {{15, 15, GREY_RED}}},
      // Both sizes given: stretched to them, times the scales; one alone is no stretch.
      {"disegna immagine (X: 10, Y: 10, IMMAGINE: \"gatto\", LARGHEZZA: 50, ALTEZZA: 30, SCALA ASSE X: 2)",
       Ink{10, 10, 109, 39}, {}},
      {"disegna immagine (X: 10, Y: 10, IMMAGINE: \"gatto\", LARGHEZZA: 50)", Ink{10, 10, 29, 19}, {}},
      {"disegna immagine (X: 10, Y: 10, IMMAGINE: strisce, VELOCITA ANIMAZIONE: 0)", Ink{10, 10, 19, 19},
       {{15, 15, RED}}},
      // Frames 0 and 1; frame 2 of two and the default 100 are frame 0.
      {"disegna fotogramma (X: 100, Y: 10, IMMAGINE: strisce, FOTOGRAMMA: 0)\n"
       "disegna fotogramma (X: 120, Y: 10, IMMAGINE: strisce, FOTOGRAMMA: 1)\n"
       "disegna fotogramma (X: 140, Y: 10, IMMAGINE: strisce, FOTOGRAMMA: 2)\n"
       "disegna fotogramma (X: 160, Y: 10, IMMAGINE: strisce)",
       Ink{100, 10, 169, 19}, {{105, 15, RED}, {125, 15, BLUE}, {145, 15, RED}, {165, 15, RED}, {115, 15, WHITE}}},
      {"disegna fotogramma (X: 100, Y: 10, IMMAGINE: strisce, FOTOGRAMMA: 1, SCALA ASSE X: 3, SCALA ASSE Y: 2, "
       "COLORE: grigio, TRASPARENZA: 0,5)", Ink{100, 10, 129, 29}, {{115, 20, GREY_BLUE}}},
      {"disegna fotogramma (X: 300, Y: 100, IMMAGINE: strisce, FOTOGRAMMA: 3, ROTAZIONE: 90)", Ink{300, 90, 309, 99},
       {{305, 95, BLUE}}, 1},
      // The origin 10 across and 5 down is the point put at (X, Y); the colour of the bottom-left pixel is gone.
      {"disegna immagine (X: 100, Y: 100, IMMAGINE: g)", Ink{90, 95, 109, 104}, {{90, 104, WHITE}, {91, 104, RED}}},
      // Rebuilt half as large on 10 x 5: red on the left, blue on the right; cut at X 5, the blue half.
      {"disegna immagine (X: 10, Y: 10, IMMAGINE: h)", Ink{10, 10, 19, 14}, {{12, 12, RED}, {17, 12, BLUE}}},
      {"disegna immagine (X: 10, Y: 10, IMMAGINE: c)", Ink{10, 10, 14, 14}, {{12, 12, BLUE}}},
      // Without sizes the picture keeps its own, and the doubled drawing is cut to it, tinted.
      {"disegna immagine (X: 10, Y: 10, IMMAGINE: s)", Ink{10, 10, 29, 19}, {{10, 19, {128, 0, 0}}}},
      // The default IMMAGINE, a missing file, a damaged one, a web address, the handle 0, and the
      // handles of ottieni immagine for a missing file, for no name and for a web address: the placeholder.
      placeholder_at(150, 150, "disegna immagine"),
      placeholder_at(10, 10, "disegna immagine (X: 10, Y: 10, IMMAGINE: \"nessuna\")"),
      placeholder_at(60, 10, "disegna immagine (X: 60, Y: 10, IMMAGINE: \"rotto.png\")"),
      placeholder_at(110, 10, "disegna immagine (X: 110, Y: 10, IMMAGINE: \"internet/www.example.com/gatto.png\")"),
      placeholder_at(160, 10, "disegna immagine (X: 160, Y: 10, IMMAGINE: 0)"),
      placeholder_at(10, 60, "disegna immagine (X: 10, Y: 60, IMMAGINE: m)"),
      placeholder_at(60, 60, "disegna immagine (X: 60, Y: 60, IMMAGINE: n)"),
      placeholder_at(110, 60, "disegna immagine (X: 110, Y: 60, IMMAGINE: w)"),
      // Sprite 0 is the environment's: a frame of the default IMMAGINE, or of a name, is the placeholder.
      placeholder_at(150, 150, "disegna fotogramma"),
      placeholder_at(10, 10, "disegna fotogramma (X: 10, Y: 10, IMMAGINE: nessun_nome)"),
      // A number that names no sprite draws nothing.
      {"disegna immagine (IMMAGINE: 99999)\ndisegna immagine (IMMAGINE: -1)\ndisegna fotogramma (IMMAGINE: 99999)\n"
       "disegna fotogramma (IMMAGINE: -7)\ndisegna fotogramma (IMMAGINE: 10000000000000)", Ink{}, {}},
  }, "strisce = ottieni immagine (NOME: \"immagini/strisce\", FOTOGRAMMI: 2)\n"
     "g = ottieni immagine (NOME: \"micio\", ORIGINE X: 10, ORIGINE Y: 5, RIMUOVI_SFONDO: 1)\n"
     "s = ottieni immagine (NOME: \"micio.png\", FOTOGRAMMI: 0, SCALA ASSE X: 2, SCALA ASSE Y: 2, COLORE: grigio)\n"
     "h = ottieni immagine (NOME: \"immagini/strisce.png\", FOTOGRAMMI: 0, LARGHEZZA: 10, ALTEZZA: 5, "
     "SCALA ASSE X: 0,5, SCALA ASSE Y: 0,5)\n"
     "c = ottieni immagine (NOME: \"immagini\\strisce\", FOTOGRAMMI: 0, LARGHEZZA: 10, ALTEZZA: 5, X: 5, "
     "SCALA ASSE X: 0,5, SCALA ASSE Y: 0,5)\n"
     "m = ottieni immagine (NOME: \"manca.png\")\nn = ottieni immagine\n"
     "w = ottieni immagine (NOME: \"internet/www.example.com/a.png\")");
}
// clang-format on

TEST_F(DisegnoImmagini, APathIsCompletedAndLoadedOnceAndRememberedAsWritten) {
  ProgramInstance& p = sole_program(
      "INIZIA\npercorso = \"immagini\\strisce\"\nCICLO CONTINUO\n"
      "disegna immagine (IMMAGINE: \"internet/www.example.com/gatto.png\")\n"
      "disegna immagine (IMMAGINE: \"gatto\")\ndisegna immagine (IMMAGINE: \"gatto.png\")\n"
      "disegna immagine (X: 10, Y: 10, IMMAGINE: percorso)\ndisegna immagine (IMMAGINE: \"nessuna\")");
  run_inizia(p);
  run_frame(p);
  run_frame(p);
  // A web address is remembered as written, and for now never fetched.
  const DrawingMemory& memory = drawing_memory(p);
  EXPECT_EQ(std::vector<std::string>(memory.mem_ris.begin(), memory.mem_ris.begin() + memory.tot_mem_ris),
            (std::vector<std::string>{"internet/www.example.com/gatto.png", "gatto.png", "immagini/strisce.png",
                                      "nessuna"}));
  EXPECT_EQ(global("tot_img_load"), 4);
  EXPECT_EQ(sprite_get_width(memory.mem_ris_index[1]), 20);
  // The path with a backslash names a picture of one frame: both stripes.
  EXPECT_TRUE(shows({15, 15, RED}));
  EXPECT_TRUE(shows({25, 15, BLUE}));
}

TEST_F(DisegnoImmagini, OttieniImmagineGivesAHandleOnceWithItsOrigin) {
  ProgramInstance& p = sole_program(
      "INIZIA\n"
      "strisce = ottieni immagine (NOME: \"immagini/strisce\", FOTOGRAMMI: 2, ORIGINE X: 5, ORIGINE Y: al centro)\n"
      "CICLO CONTINUO\n"
      "strisce = ottieni immagine (NOME: \"immagini/strisce\")");
  run_inizia(p);
  const auto sprite = static_cast<int32_t>(number(p, "strisce"));
  EXPECT_EQ(stored(p, "strisce"), exact(sprite));
  ASSERT_TRUE(sprite_exists(sprite));
  EXPECT_EQ(sprite_get_number(sprite), 2);
  EXPECT_EQ(sprite_get_width(sprite), 10);
  // "al centro" gives no centre here, only the corner.
  EXPECT_EQ(sprite_get(sprite)->xorigin, 5);
  EXPECT_EQ(sprite_get(sprite)->yorigin, 0);
  EXPECT_EQ(drawing_memory(p).mem_ris[0], "\"immagini/strisce\"");
  EXPECT_EQ(drawing_memory(p).mem_ris_x[0], 5);
  // The name is in the memory: asked again, the variable keeps its value.
  p.val[static_cast<size_t>(p.find_variable("strisce"))] = RValue::text("7");
  run_frame(p);
  EXPECT_EQ(stored(p, "strisce"), "7");
  EXPECT_EQ(drawing_memory(p).tot_mem_ris, 1);
  EXPECT_EQ(global("tot_img_load"), 1);
}

TEST_F(DisegnoImmagini, AnimationStepsOneCounterForAllPicturesOfTheInstance) {
  // 30 a second at 30 frames a second: one frame of the picture per statement.
  ProgramInstance& p = run_one_frame("disegna immagine (X: 10, Y: 10, IMMAGINE: strisce, VELOCITA ANIMAZIONE: 30)",
                                     "strisce = ottieni immagine (NOME: \"immagini/strisce\", FOTOGRAMMI: 2)");
  const Rgb expected[] = {BLUE, RED, RED, BLUE};
  const double counter[] = {1, 2, 0, 1};  // past the two frames it starts again from 0
  for (int frame = 0; frame < 4; ++frame) {
    if (frame > 0) run_frame(p);
    EXPECT_EQ(drawing_memory(p).subimage_index, counter[frame]) << frame;
    EXPECT_TRUE(shows({15, 15, expected[frame]})) << frame;
  }
  // A picture named by its path has one frame: the default speed of 100 runs past it at once.
  ProgramInstance& q = run_one_frame("disegna immagine (X: 10, Y: 30, IMMAGINE: \"immagini/strisce\")");
  EXPECT_EQ(drawing_memory(q).subimage_index, 0);
  EXPECT_EQ(sprite_get_number(drawing_memory(q).mem_ris_index[0]), 1);
}

TEST_F(DisegnoImmagini, TheEndOfARunDeletesWhatItLoadedButNotThePlaceholder) {
  ProgramInstance& p = run_start(
      "a = ottieni immagine (NOME: \"gatto\")\nb = ottieni immagine (NOME: \"immagini/strisce\")\n"
      "c = ottieni immagine (NOME: \"manca\")");
  const auto a = static_cast<int32_t>(number(p, "a")), b = static_cast<int32_t>(number(p, "b"));
  ASSERT_TRUE(sprite_exists(a) && sprite_exists(b));
  delete_loaded_images();
  EXPECT_FALSE(sprite_exists(a) || sprite_exists(b));
  EXPECT_TRUE(sprite_exists(missing_image_sprite()));
  EXPECT_EQ(number(p, "c"), missing_image_sprite());
}

}  // namespace
