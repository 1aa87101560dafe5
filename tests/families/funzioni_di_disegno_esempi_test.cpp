// The example programs of the drawing family run their start and one
// frame on the canvas, and draw what their comments promise.
#include "funzioni_di_disegno_fixture.h"

namespace {

class DisegnoEsempi : public DrawingProgramTest {
 protected:
  // The program of examples/`name`, started and run for one frame.
  ProgramInstance& example(std::string_view name) {
    ProgramInstance& p = ProgramTest::example(name);
    run_inizia(p);
    run_frame(p);
    return p;
  }
  static std::filesystem::path examples_folder() { return std::filesystem::path(VELANT_SOURCE_DIR) / "examples"; }
};

TEST_F(DisegnoEsempi, Forme) {
  example("forme.txt");
  // An eye and the white round it, the yellow button, the grey head, the light half transparent, the ground.
  for (const Spot& spot : {Spot{350, 160, BLACK}, Spot{330, 160, WHITE}, Spot{400, 370, YELLOW},
                           Spot{310, 110, {192, 192, 192}}, Spot{400, 45, HALF_RED}, Spot{50, 50, BLACK}}) {
    EXPECT_TRUE(shows(spot)) << spot.x << ", " << spot.y;
  }
}

TEST_F(DisegnoEsempi, Testi) {
  ProgramInstance& p = example("testi.txt");
  // The title's style is a font of its own, large and bold.
  const auto title = static_cast<int32_t>(number(p, "titolo"));
  ASSERT_NE(title, 0);
  ASSERT_NE(font_get(title), nullptr);
  EXPECT_TRUE(font_get(title)->bold);
  EXPECT_NEAR(font_get(title)->size, 28 * 1.33333333, 0.01);
  const Ink box = ink();
  EXPECT_LT(box.top, 60);  // the title
  EXPECT_GE(box.left, 40);
  EXPECT_TRUE(shows({30, 130, WHITE}));  // nothing left of the texts' margin
}

TEST_F(DisegnoEsempi, Immagini) {
  // Run from the examples' folder, as `velant run examples/immagini.txt` does.
  FileFolders beside_the_example = file_folders();
  beside_the_example.program = examples_folder().string();
  file_folders_set(beside_the_example);
  ProgramInstance& p = example("immagini.txt");
  const auto star = static_cast<int32_t>(number(p, "stella"));
  ASSERT_NE(star, missing_image_sprite());
  EXPECT_EQ(sprite_get_number(star), 2);
  EXPECT_EQ(sprite_get_width(star), 32);
  // The centre of a star, yellow or orange as the animation goes; the chosen frame is orange.
  constexpr Rgb GOLD{255, 215, 0}, ORANGE{255, 140, 0};
  EXPECT_TRUE(shows({116, 117, GOLD}) || shows({116, 117, ORANGE}));
  EXPECT_TRUE(shows({116, 317, ORANGE}));
  // The picture named by its path was loaded once more, and the missing one stands as the placeholder.
  ASSERT_EQ(drawing_memory(p).tot_mem_ris, 3);
  EXPECT_EQ(drawing_memory(p).mem_ris[1], "immagini/stella.png");
  EXPECT_EQ(drawing_memory(p).mem_ris_index[2], missing_image_sprite());
}

TEST_F(DisegnoEsempi, Griglia) {
  ProgramInstance& p = example("griglia.txt");
  EXPECT_TRUE(surface_exists(drawing_memory(p).surf));
  EXPECT_EQ(drawing_memory(p).dimensione_griglia, 50);
  EXPECT_EQ(global("righelli"), 1);
  EXPECT_EQ(global("goniometro"), 1);
  EXPECT_EQ(stored(p, "differenza"), exact(0));  // the coral of the example is the colour word's
  EXPECT_TRUE(shows({150, 150, {255, 127, 80}}));
  EXPECT_EQ(number(p, "sotto"), number(p, "corallo_mio"));
}

}  // namespace
