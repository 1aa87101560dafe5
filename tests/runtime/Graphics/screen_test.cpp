// What the window shows: saved as a PNG, read a pixel at a time, and text
// placed by its alignment.
#include "graphics_fixture.h"
#include "runtime/Font/TextState.h"
#include "runtime/Graphics/ImageFile.h"
#include "runtime/Graphics/Screen.h"
#include "runtime/Graphics/TextDrawing.h"

namespace {

// The leftmost and rightmost inked column and the top and bottom inked row
// of the current target within the box, on black.
struct Ink {
  int left = 1 << 30, right = -1, top = 1 << 30, bottom = -1;
};
Ink ink(int x1, int y1, int x2, int y2) {
  std::vector<uint8_t> rgba(static_cast<size_t>((x2 - x1) * (y2 - y1) * 4));
  read_target_pixels(x1, y1, x2 - x1, y2 - y1, rgba.data());
  Ink found;
  for (int y = 0; y < y2 - y1; ++y) {
    for (int x = 0; x < x2 - x1; ++x) {
      if (rgba[static_cast<size_t>((y * (x2 - x1) + x) * 4)] < 100) continue;
      found.left = std::min(found.left, x + x1);
      found.right = std::max(found.right, x + x1);
      found.top = std::min(found.top, y + y1);
      found.bottom = std::max(found.bottom, y + y1);
    }
  }
  return found;
}

TEST_F(GraphicsTest, TheWindowIsSavedOpaqueAndReadPixelByPixel) {
  draw_clear_alpha(255, 0.25);  // red, and mostly transparent
  draw_state().colour = 65280;
  draw_rectangle(10, 20, 30, 40, false);
  EXPECT_EQ(draw_getpixel(15, 25), 65280);
  EXPECT_EQ(draw_getpixel(50, 50), 255);
  const std::string saved = file("screen.png");
  ASSERT_TRUE(screen_save(saved));
  Image image;
  ASSERT_TRUE(image_load(saved, image));
  ASSERT_EQ(image.width, WINDOW_WIDTH);
  ASSERT_EQ(image.height, WINDOW_HEIGHT);
  const uint8_t* green = &image.rgba[static_cast<size_t>((25 * WINDOW_WIDTH + 15) * 4)];
  EXPECT_EQ(green[1], 255);
  EXPECT_EQ(green[0], 0);
  const uint8_t* red = &image.rgba[static_cast<size_t>((100 * WINDOW_WIDTH + 100) * 4)];
  EXPECT_EQ(red[0], 255);
  EXPECT_EQ(red[3], 255) << "every pixel saved opaque";
  // Saving leaves the program's target as it was.
  const int32_t s = canvas(8, 8);
  ASSERT_TRUE(screen_save(saved));
  draw_rectangle(0, 0, 8, 8, false);
  EXPECT_EQ(surface_getpixel(s, 4, 4), 65280);
  surface_reset_target();
}

TEST_F(GraphicsTest, TextStandsWhereItsAlignmentPutsIt) {
  canvas(200, 120);
  draw_set_halign(0);
  draw_set_valign(0);
  draw_text(100, 10, "Velant");
  const Ink left = ink(0, 0, 200, 40);
  EXPECT_GE(left.left, 100);
  EXPECT_GE(left.top, 10);
  draw_clear_alpha(0, 1);
  draw_set_halign(1);
  draw_text(100, 10, "Velant");
  const Ink centre = ink(0, 0, 200, 40);
  EXPECT_LT(centre.left, 100);
  EXPECT_GT(centre.right, 100);
  EXPECT_NEAR((centre.left + centre.right) / 2.0, 100, 4);
  draw_clear_alpha(0, 1);
  draw_set_halign(2);
  draw_set_valign(2);
  draw_text(100, 100, "Velant");
  const Ink right = ink(0, 0, 200, 120);
  EXPECT_LE(right.right, 100);
  EXPECT_LE(right.bottom, 100);
  EXPECT_GT(right.right, 85);
  // Two lines stand one under the other, the second as wide as its own text.
  draw_clear_alpha(0, 1);
  draw_set_halign(0);
  draw_set_valign(0);
  draw_text(10, 10, "a\nmolto più lungo");
  const Ink two = ink(0, 0, 200, 120);
  EXPECT_GT(two.bottom - two.top, 20);
  EXPECT_GT(two.right, 60);
  draw_set_valign(0);
  surface_reset_target();
}

}  // namespace
