// The pictures of funzioni_di_disegno drawn for real: paths completed and
// remembered, handles, the placeholder for what can't be had, frames,
// stretching, and ottieni_immagine with its origin and rebuilt pictures.
#include "funzioni_di_disegno_fixture.h"
#include "runtime/Sprite/Sprite.h"

namespace {

constexpr Rgb RED{255, 0, 0}, BLUE{0, 0, 255}, GREEN{0, 255, 0};

class DisegnoImmagini : public DrawingProgramTest {
 protected:
  void SetUp() override {
    DrawingProgramTest::SetUp();
    // "gatto.png": 20 x 10, red with a green bottom-left pixel.
    write_picture("gatto.png", 20, 10, [](int x, int y) { return x == 0 && y == 9 ? GREEN : RED; });
    // "immagini/strisce.png": two frames of 10 x 10 side by side, red then blue.
    write_picture("immagini/strisce.png", 20, 10, [](int x, int) { return x < 10 ? RED : BLUE; });
  }

  bool shows(int x, int y, const Rgb& c) { return is(pixel(x, y), c.r, c.g, c.b); }
  // The missing-image placeholder drawn with its corner at (x, y): a red cross on grey.
  bool shows_placeholder(int x, int y) { return shows(x + 16, y + 16, RED) && is(pixel(x + 5, y + 20), 200, 200, 200); }
};

TEST_F(DisegnoImmagini, APathWithoutExtensionIsCompletedLoadedOnceAndDrawnAtItsCorner) {
  ProgramInstance& p = sole_program(
      "INIZIA\nCICLO CONTINUO\n"
      "disegna immagine (X: 30, Y: 40, IMMAGINE: \"gatto\")\n"
      "disegna immagine (X: 100, Y: 40, IMMAGINE: \"gatto.png\")");
  run_inizia(p);
  run_frame(p);
  run_frame(p);
  EXPECT_TRUE(shows(30, 40, RED));
  EXPECT_TRUE(shows(49, 48, RED));
  EXPECT_TRUE(shows(30, 49, GREEN));
  EXPECT_TRUE(is_white(50, 40));
  EXPECT_TRUE(is_white(30, 50));
  EXPECT_TRUE(shows(110, 45, RED));
  // Both statements found the one picture, on both frames.
  EXPECT_EQ(drawing_memory(p).tot_mem_ris, 1);
  EXPECT_EQ(drawing_memory(p).mem_ris[0], "gatto.png");
  EXPECT_EQ(global("tot_img_load"), 1);
  EXPECT_EQ(sprite_get_width(drawing_memory(p).mem_ris_index[0]), 20);
}

TEST_F(DisegnoImmagini, WhatCantBeHadIsThePlaceholderAndABadHandleDrawsNothing) {
  // The default IMMAGINE, a missing file, a damaged one, a web address: the placeholder.
  std::ofstream("rotto.png") << "not a picture";
  ProgramInstance& p = run_one_frame(
      "disegna immagine\n"
      "disegna immagine (X: 10, Y: 10, IMMAGINE: \"nessuna\")\n"
      "disegna immagine (X: 60, Y: 10, IMMAGINE: \"rotto.png\")\n"
      "disegna immagine (X: 110, Y: 10, IMMAGINE: \"internet/www.example.com/gatto.png\")\n"
      "disegna immagine (X: 160, Y: 10, IMMAGINE: 0)");
  EXPECT_TRUE(shows_placeholder(150, 150));
  EXPECT_TRUE(shows_placeholder(10, 10));
  EXPECT_TRUE(shows_placeholder(60, 10));
  EXPECT_TRUE(shows_placeholder(110, 10));
  EXPECT_TRUE(shows_placeholder(160, 10));
  EXPECT_EQ(drawing_memory(p).tot_mem_ris, 3);
  // A web address is remembered as written, and for now never fetched.
  EXPECT_EQ(drawing_memory(p).mem_ris[2], "internet/www.example.com/gatto.png");

  // A number that names no sprite draws nothing and never stops the run.
  clear_canvas();
  run_one_frame(
      "disegna immagine (IMMAGINE: 99999)\ndisegna immagine (IMMAGINE: -1)\n"
      "disegna fotogramma (IMMAGINE: 99999)\ndisegna fotogramma (IMMAGINE: -7)\n"
      "disegna fotogramma (IMMAGINE: 10000000000000)");
  EXPECT_FALSE(ink().any());
  // Sprite 0 is the environment's: a frame of the default IMMAGINE is the placeholder.
  run_one_frame("disegna fotogramma\ndisegna fotogramma (X: 10, Y: 10, IMMAGINE: nessun_nome)");
  EXPECT_TRUE(shows_placeholder(150, 150));
  EXPECT_TRUE(shows_placeholder(10, 10));
  EXPECT_TRUE(messages_.empty());
  EXPECT_TRUE(run_ends().empty());
}

TEST_F(DisegnoImmagini, BackslashesAndVariablesNameAPicture) {
  ProgramInstance& p = sole_program(
      "INIZIA\npercorso = \"immagini\\strisce\"\nCICLO CONTINUO\n"
      "disegna immagine (X: 10, Y: 10, IMMAGINE: percorso, VELOCITA ANIMAZIONE: 0)");
  run_inizia(p);
  run_frame(p);
  EXPECT_TRUE(shows(15, 15, RED));
  EXPECT_EQ(drawing_memory(p).mem_ris[0], "immagini/strisce.png");
}

TEST_F(DisegnoImmagini, ScaleTurnTintAlphaAndStretch) {
  run_one_frame("disegna immagine (X: 10, Y: 10, IMMAGINE: \"gatto\", SCALA ASSE X: 2, SCALA ASSE Y: 3)");
  Ink box = ink();
  EXPECT_EQ(box.left, 10);
  EXPECT_EQ(box.width(), 40);
  EXPECT_EQ(box.height(), 30);

  // A quarter turn counter-clockwise about the corner: the picture stands up from it.
  clear_canvas();
  run_one_frame("disegna immagine (X: 100, Y: 100, IMMAGINE: \"gatto\", ROTAZIONE: 90)");
  box = ink();
  EXPECT_NEAR(box.left, 100, 1);
  EXPECT_NEAR(box.width(), 10, 1);
  EXPECT_NEAR(box.bottom, 99, 1);
  EXPECT_NEAR(box.height(), 20, 1);

  clear_canvas();
  run_one_frame("disegna immagine (X: 10, Y: 10, IMMAGINE: \"gatto\", COLORE: 8421504, TRASPARENZA: 0,5)");
  EXPECT_TRUE(is(pixel(15, 15), 191, 127, 127));

  // Both sizes given: stretched to them, times the scales; one alone is no stretch.
  clear_canvas();
  run_one_frame("disegna immagine (X: 10, Y: 10, IMMAGINE: \"gatto\", LARGHEZZA: 50, ALTEZZA: 30, SCALA ASSE X: 2)");
  box = ink();
  EXPECT_EQ(box.width(), 100);
  EXPECT_EQ(box.height(), 30);
  clear_canvas();
  run_one_frame("disegna immagine (X: 10, Y: 10, IMMAGINE: \"gatto\", LARGHEZZA: 50)");
  box = ink();
  EXPECT_EQ(box.width(), 20);
  EXPECT_EQ(box.height(), 10);
}

TEST_F(DisegnoImmagini, AnimationStepsOneCounterForAllPicturesOfTheInstance) {
  // 30 a second at 30 frames a second: one frame of the picture per statement.
  ProgramInstance& p = sole_program(
      "INIZIA\nstrisce = ottieni immagine (NOME: \"immagini/strisce\", FOTOGRAMMI: 2)\nCICLO CONTINUO\n"
      "disegna immagine (X: 10, Y: 10, IMMAGINE: strisce, VELOCITA ANIMAZIONE: 30)");
  run_inizia(p);
  const Rgb expected[] = {BLUE, RED, RED, BLUE};
  const double counter[] = {1, 2, 0, 1};  // past the two frames it starts again from 0
  for (int frame = 0; frame < 4; ++frame) {
    clear_canvas();
    run_frame(p);
    EXPECT_EQ(drawing_memory(p).subimage_index, counter[frame]) << frame;
    EXPECT_TRUE(shows(15, 15, expected[frame])) << frame;
  }
  // A picture named by its path has one frame: the default speed of 100 runs past it at once.
  ProgramInstance& q = run_one_frame("disegna immagine (X: 10, Y: 30, IMMAGINE: \"immagini/strisce\")");
  EXPECT_EQ(drawing_memory(q).subimage_index, 0);
  EXPECT_EQ(sprite_get_number(drawing_memory(q).mem_ris_index[0]), 1);
  EXPECT_TRUE(shows(25, 35, BLUE));
}

TEST_F(DisegnoImmagini, OttieniImmagineGivesAHandleOnceAndFotogrammaDrawsItsFrames) {
  ProgramInstance& p = sole_program(
      "INIZIA\n"
      "strisce = ottieni immagine (NOME: \"immagini/strisce\", FOTOGRAMMI: 2, ORIGINE X: 5, ORIGINE Y: al centro)\n"
      "CICLO CONTINUO\n"
      "disegna fotogramma (X: 100, Y: 10, IMMAGINE: strisce, FOTOGRAMMA: 1)\n"
      "disegna fotogramma (X: 100, Y: 30, IMMAGINE: strisce, FOTOGRAMMA: 2)\n"
      "disegna fotogramma (X: 100, Y: 50, IMMAGINE: strisce)\n"
      "disegna immagine (X: 100, Y: 70, IMMAGINE: strisce, VELOCITA ANIMAZIONE: 0)\n"
      "strisce = ottieni immagine (NOME: \"immagini/strisce\")");
  run_inizia(p);
  const auto sprite = static_cast<int32_t>(number(p, "strisce"));
  EXPECT_EQ(stored(p, "strisce"), exact(sprite));
  ASSERT_TRUE(sprite_exists(sprite));
  EXPECT_EQ(sprite_get_number(sprite), 2);
  EXPECT_EQ(sprite_get_width(sprite), 10);
  EXPECT_EQ(sprite_get(sprite)->xorigin, 5);
  EXPECT_EQ(sprite_get(sprite)->yorigin, 0);
  EXPECT_EQ(drawing_memory(p).mem_ris[0], "\"immagini/strisce\"");
  EXPECT_EQ(drawing_memory(p).mem_ris_x[0], 5);

  run_frame(p);
  // Drawn with the origin 5 pixels in: the frame spans 95 to 104.
  EXPECT_TRUE(shows(95, 15, BLUE));
  EXPECT_TRUE(is_white(105, 15));
  EXPECT_TRUE(shows(95, 35, RED));  // frame 2 of two is frame 0
  EXPECT_TRUE(shows(95, 55, RED));  // the default 100 likewise
  EXPECT_TRUE(shows(95, 75, RED));

  // The name is in the memory: asked again, the variable keeps its value.
  p.val[static_cast<size_t>(p.find_variable("strisce"))] = RValue::text("7");
  run_frame(p);
  EXPECT_EQ(stored(p, "strisce"), "7");
  EXPECT_EQ(drawing_memory(p).tot_mem_ris, 1);
  EXPECT_EQ(global("tot_img_load"), 1);
}

TEST_F(DisegnoImmagini, OttieniImmagineRemovesTheBackgroundAndMissesToThePlaceholder) {
  ProgramInstance& p = run_start(
      "g = ottieni immagine (NOME: \"gatto\", RIMUOVI_SFONDO: 1)\n"
      "m = ottieni immagine (NOME: \"manca.png\")\n"
      "n = ottieni immagine\n"
      "w = ottieni immagine (NOME: \"internet/www.example.com/a.png\")");
  const auto cat = static_cast<int32_t>(number(p, "g"));
  ASSERT_TRUE(sprite_exists(cat));
  // The colour of the bottom-left pixel, green, is gone everywhere; the red stays.
  const std::vector<uint8_t>& rgba = sprite_get(cat)->images[0].rgba;
  EXPECT_EQ(rgba[(9 * 20 + 0) * 4 + 3], 0);
  EXPECT_EQ(rgba[(0 * 20 + 0) * 4 + 3], 255);
  for (const char* missing : {"m", "n", "w"}) EXPECT_EQ(number(p, missing), missing_image_sprite()) << missing;
  EXPECT_EQ(drawing_memory(p).tot_mem_ris, 4);
  EXPECT_EQ(global("tot_img_load"), 4);
}

TEST_F(DisegnoImmagini, OttieniImmagineWithNoFramesRebuildsThePictureOnASurfaceOfItsSize) {
  // Half as large on a surface of 10 x 5: red on the left, blue on the right.
  ProgramInstance& p = run_start(
      "h = ottieni immagine (NOME: \"immagini/strisce.png\", FOTOGRAMMI: 0, LARGHEZZA: 10, ALTEZZA: 5, "
      "SCALA ASSE X: 0,5, SCALA ASSE Y: 0,5)\n"
      "c = ottieni immagine (NOME: \"immagini/strisce\", FOTOGRAMMI: 0, LARGHEZZA: 10, ALTEZZA: 5, X: 5, "
      "SCALA ASSE X: 0,5, SCALA ASSE Y: 0,5)\n"
      "s = ottieni immagine (NOME: \"gatto\", FOTOGRAMMI: 0, SCALA ASSE X: 2, SCALA ASSE Y: 2, COLORE: 8421504)");
  // The colour of pixel (x, y) of the first frame of `sprite`.
  const auto colour_at = [](int32_t sprite, int x, int y) {
    const CSprite* s = sprite_get(sprite);
    const uint8_t* px = &s->images[0].rgba[(static_cast<size_t>(y) * s->width + x) * 4];
    return Rgb{px[0], px[1], px[2]};
  };
  const auto half = static_cast<int32_t>(number(p, "h"));
  ASSERT_TRUE(sprite_exists(half));
  EXPECT_EQ(sprite_get_width(half), 10);
  EXPECT_EQ(sprite_get_height(half), 5);
  EXPECT_TRUE(is(colour_at(half, 2, 2), 255, 0, 0));
  EXPECT_TRUE(is(colour_at(half, 7, 2), 0, 0, 255));
  // The cut at X 5 keeps what of the surface lies right of it: the blue half.
  const auto cut = static_cast<int32_t>(number(p, "c"));
  EXPECT_EQ(sprite_get_width(cut), 5);
  EXPECT_TRUE(is(colour_at(cut, 0, 2), 0, 0, 255));
  // Without sizes the picture keeps its own, and the doubled drawing is cut to it, tinted.
  const auto scaled = static_cast<int32_t>(number(p, "s"));
  EXPECT_EQ(sprite_get_width(scaled), 20);
  EXPECT_EQ(sprite_get_height(scaled), 10);
  EXPECT_TRUE(is(colour_at(scaled, 0, 9), 128, 0, 0));  // the green corner went outside the cut
}

TEST_F(DisegnoImmagini, TheEndOfARunDeletesWhatItLoadedButNotThePlaceholder) {
  ProgramInstance& p = run_start(
      "a = ottieni immagine (NOME: \"gatto\")\nb = ottieni immagine (NOME: \"immagini/strisce\")\n"
      "c = ottieni immagine (NOME: \"manca\")");
  const auto a = static_cast<int32_t>(number(p, "a")), b = static_cast<int32_t>(number(p, "b"));
  ASSERT_TRUE(sprite_exists(a));
  ASSERT_TRUE(sprite_exists(b));
  delete_loaded_images();
  EXPECT_FALSE(sprite_exists(a));
  EXPECT_FALSE(sprite_exists(b));
  EXPECT_TRUE(sprite_exists(missing_image_sprite()));
  EXPECT_EQ(number(p, "c"), missing_image_sprite());
}

}  // namespace
