// What the window shows: saved as a PNG and read a pixel at a time.
#include "graphics_fixture.h"
#include "runtime/Graphics/ImageFile.h"
#include "runtime/Graphics/Screen.h"

namespace {

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

}  // namespace
