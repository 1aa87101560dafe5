// One picture with every kind of drawing: shapes in each mode, a sprite,
// and text in several fonts and alignments. It is saved as a PNG to look
// at (the path is printed), and checked where each thing should stand.
#include <filesystem>
#include <iostream>

#include "graphics_fixture.h"
#include "runtime/Font/Font.h"
#include "runtime/Font/TextLayout.h"
#include "runtime/Font/TextState.h"
#include "runtime/Graphics/ImageFile.h"
#include "runtime/Graphics/SpriteDrawing.h"
#include "runtime/Graphics/TextDrawing.h"

namespace {

constexpr double RED = 255, GREEN = 65280, BLUE = 16711680, YELLOW = 65535, WHITE = 0xFFFFFF, NAVY = 8388608;

// How many pixels of the box differ from the background colour `r, g, b`.
int inked(int x1, int y1, int x2, int y2, int r, int g, int b) {
  std::vector<uint8_t> rgba(static_cast<size_t>((x2 - x1) * (y2 - y1) * 4));
  read_target_pixels(x1, y1, x2 - x1, y2 - y1, rgba.data());
  int count = 0;
  for (size_t p = 0; p < rgba.size(); p += 4) {
    if (std::abs(rgba[p] - r) + std::abs(rgba[p + 1] - g) + std::abs(rgba[p + 2] - b) > 60) ++count;
  }
  return count;
}

int32_t checker_sprite() {
  Image image{16, 16, std::vector<uint8_t>(16 * 16 * 4, 255)};
  for (int y = 0; y < 16; ++y) {
    for (int x = 0; x < 16; ++x) {
      uint8_t* p = &image.rgba[static_cast<size_t>((y * 16 + x) * 4)];
      const bool dark = ((x / 4) + (y / 4)) % 2;
      p[0] = dark ? 200 : 255;
      p[1] = dark ? 30 : 220;
      p[2] = dark ? 120 : 40;
    }
  }
  const std::string file = (std::filesystem::temp_directory_path() / "velant_scene_sprite.png").string();
  image_save_png(file, image);
  const int32_t sprite = sprite_add(file, 1, false, false, 8, 8);
  std::filesystem::remove(file);
  return sprite;
}

TEST_F(GraphicsTest, SceneWithEveryKindOfDrawing) {
  const int32_t scene = canvas(480, 320);
  draw_clear_alpha(make_colour_rgb(235, 235, 228), 1);
  // Shapes, filled and outlined, flat and graded.
  draw_rectangle_colour(10, 10, 110, 70, RED, YELLOW, GREEN, BLUE, false);
  draw_state().colour = NAVY;
  draw_rectangle(120, 10, 220, 70, true);
  draw_roundrect_colour_ext(230, 10, 330, 70, 16, 16, WHITE, GREEN, false);
  draw_state().colour = RED;
  draw_roundrect_ext(340, 10, 470, 70, 20, 20, true);
  draw_circle_colour(50, 120, 35, YELLOW, RED, false);
  draw_state().colour = BLUE;
  draw_circle(140, 120, 35, true);
  draw_ellipse_colour(190, 90, 300, 150, WHITE, BLUE, false);
  draw_triangle_colour(320, 150, 370, 85, 420, 150, RED, GREEN, BLUE, false);
  draw_state().colour = 0;
  draw_triangle(430, 150, 450, 85, 470, 150, true);
  draw_line_width_colour(10, 175, 220, 175, 6, RED, BLUE);
  draw_line_colour(10, 190, 220, 200, GREEN, NAVY);
  for (int k = 0; k < 20; ++k) draw_point_colour(240 + k * 4, 180, BLUE);
  draw_primitive_begin(5);
  for (int k = 0; k < 6; ++k) draw_vertex_colour(330 + k * 25, k % 2 ? 200 : 170, k % 2 ? GREEN : YELLOW, 0.8);
  draw_primitive_end();
  // A sprite, turned, scaled, half transparent.
  const int32_t sprite = checker_sprite();
  draw_sprite_ext(sprite, 0, 40, 260, 3, 3, 30, WHITE, 1);
  draw_sprite_ext(sprite, 0, 110, 260, 2, 4, 0, WHITE, 0.5);
  // Text in the default font and two fonts added from files, with each alignment.
  draw_state().colour = 0;
  draw_set_halign(0);
  draw_text(150, 220, "Ciao, città! § 123");
  const int32_t comic = font_add("Comic_Sans.ttf", 20, false, false, 32, 128);
  const int32_t times = font_add("Times_new_Roman.ttf", 18, true, false, 32, 128);
  ASSERT_TRUE(font_exists(comic));
  ASSERT_TRUE(font_exists(times));
  draw_set_font(comic);
  draw_state().colour = NAVY;
  draw_set_halign(1);
  draw_text(320, 250, "Velant al centro");
  draw_set_font(times);
  draw_set_halign(2);
  draw_text_colour(470, 285, "a destra", RED, RED, BLUE, BLUE, 1);
  draw_set_halign(0);
  draw_text_transformed(170, 300, "girato", 1, 1, 20);
  draw_set_font(-1);

  // Each thing stands where it was drawn.
  // Two triangles make the box: its middle lies between the red and the green corner.
  EXPECT_TRUE(is(pixel(60, 40), 128, 128, 0, 30)) << "the middle of the graded box";
  EXPECT_TRUE(is(pixel(120, 40), 0, 0, 128, 2)) << "the outline's left edge";
  EXPECT_TRUE(is(pixel(170, 40), 235, 235, 228, 2)) << "inside the outline";
  EXPECT_TRUE(is(pixel(50, 120), 255, 255, 0, 30)) << "the circle's yellow centre";
  EXPECT_GT(inked(150, 205, 300, 235, 235, 235, 228), 60) << "the default font's text";
  EXPECT_GT(inked(240, 235, 400, 265, 235, 235, 228), 60) << "the centred text";
  EXPECT_GT(inked(380, 270, 470, 300, 235, 235, 228), 40) << "the right-aligned text";
  EXPECT_EQ(inked(0, 300, 140, 320, 235, 235, 228), 0) << "nothing stands in the empty corner";
  surface_reset_target();

  const std::string file = (std::filesystem::temp_directory_path() / "velant_scene.png").string();
  ASSERT_TRUE(surface_save(scene, file));
  std::cout << "scene saved to " << file << "\n";
}

}  // namespace
