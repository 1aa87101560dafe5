// Sprites from PNG and JPEG files and from surfaces, drawn scaled, turned and tinted.
// jpeglib.h needs size_t and FILE declared before it.
#include <cstddef>
#include <cstdio>

#include <jpeglib.h>

#include "graphics_fixture.h"
#include "runtime/Graphics/ImageFile.h"
#include "runtime/Graphics/SpriteDrawing.h"
#include "runtime/Sprite/Sprite.h"
#include "support/Fatal.h"

namespace {

// A picture of two frames side by side, each 4 x 2: the first red, the second
// green, the bottom-left pixel of the whole picture white.
Image two_frames() {
  Image image{8, 2, std::vector<uint8_t>(8 * 2 * 4, 255)};
  for (int y = 0; y < 2; ++y) {
    for (int x = 0; x < 8; ++x) {
      uint8_t* p = &image.rgba[(y * 8 + x) * 4];
      p[0] = x < 4 ? 255 : 0;
      p[1] = x < 4 ? 0 : 255;
      p[2] = 0;
    }
  }
  uint8_t* corner = &image.rgba[(1 * 8 + 0) * 4];
  corner[0] = corner[1] = corner[2] = 255;
  return image;
}

// Writes a 16 x 8 JPEG of one colour through libjpeg.
void write_jpeg(const std::string& file, uint8_t r, uint8_t g, uint8_t b) {
  jpeg_compress_struct info{};
  jpeg_error_mgr error{};
  info.err = jpeg_std_error(&error);
  jpeg_create_compress(&info);
  FILE* out = std::fopen(file.c_str(), "wb");
  jpeg_stdio_dest(&info, out);
  info.image_width = 16;
  info.image_height = 8;
  info.input_components = 3;
  info.in_color_space = JCS_RGB;
  jpeg_set_defaults(&info);
  jpeg_set_quality(&info, 95, TRUE);
  jpeg_start_compress(&info, TRUE);
  std::vector<uint8_t> row(16 * 3);
  for (size_t x = 0; x < 16; ++x) {
    row[x * 3] = r;
    row[x * 3 + 1] = g;
    row[x * 3 + 2] = b;
  }
  while (info.next_scanline < info.image_height) {
    JSAMPROW line = row.data();
    jpeg_write_scanlines(&info, &line, 1);
  }
  jpeg_finish_compress(&info);
  std::fclose(out);
  jpeg_destroy_compress(&info);
}

TEST_F(GraphicsTest, SpritesLoadFromPngAndJpegFiles) {
  const std::string png = file("frames.png");
  ASSERT_TRUE(image_save_png(png, two_frames()));
  const int32_t s = sprite_add(png, 2, false, false, 1, 1);
  ASSERT_GE(s, 0);
  EXPECT_EQ(sprite_get_width(s), 4);
  EXPECT_EQ(sprite_get_height(s), 2);
  EXPECT_EQ(sprite_get_number(s), 2);
  EXPECT_EQ(sprite_get(s)->xorigin, 1);

  const std::string jpeg = file("plain.jpg");
  write_jpeg(jpeg, 0, 0, 250);
  const int32_t j = sprite_add(jpeg, 1, false, false, 0, 0);
  ASSERT_GE(j, 0);
  EXPECT_EQ(sprite_get_width(j), 16);
  canvas(32, 32);
  draw_sprite(j, 0, 2, 2);
  EXPECT_TRUE(is(pixel(10, 5), 0, 0, 250, 6));
  surface_reset_target();

  // Neither a picture nor a file: no sprite, and no harm.
  EXPECT_EQ(sprite_add(files_.write("not_a_picture.png", "ciao").string(), 1, false, false, 0, 0), -1);
  EXPECT_EQ(sprite_add(file("missing.png"), 1, false, false, 0, 0), -1);
}

TEST_F(GraphicsTest, SpritesDrawTheirFramesScaledTurnedAndTinted) {
  const std::string png = file("draw.png");
  ASSERT_TRUE(image_save_png(png, two_frames()));
  const int32_t s = sprite_add(png, 2, false, false, 0, 0);
  canvas(64, 64);
  // Frame 1 (green), ten times as large: 40 x 20 from (5, 5).
  draw_sprite_ext(s, 1, 5, 5, 10, 10, 0, 0xFFFFFF, 1);
  EXPECT_TRUE(is(pixel(30, 15), 0, 255, 0));
  EXPECT_TRUE(is(pixel(50, 15), 0, 0, 0));
  // Frames wrap: frame 2 is frame 0 (red); turned 90 degrees counter-clockwise the
  // 40-wide picture stands 40 high above its origin.
  draw_sprite_ext(s, 2, 10, 60, 10, 5, 90, 0xFFFFFF, 1);
  EXPECT_TRUE(is(pixel(14, 40), 255, 0, 0));
  EXPECT_TRUE(is(pixel(14, 62), 0, 0, 0));
  // Tint and alpha: white-less red on black at half alpha.
  canvas(64, 64);
  draw_sprite_ext(s, 0, 0, 0, 10, 10, 0, 255, 0.5);
  EXPECT_NEAR(pixel(20, 5).r, 128, 3);
  EXPECT_EQ(pixel(20, 5).g, 0);
  surface_reset_target();
  surface_reset_target();

  EXPECT_FATAL(draw_sprite(9999, 0, 0, 0), "Trying to draw non-existing sprite.");
  EXPECT_FATAL(draw_sprite_ext(9999, 0, 0, 0, 1, 1, 0, 0, 1), "Unable to render sprite 9999\n");
}

TEST_F(GraphicsTest, SpritesFromSurfacesAndBackgroundsRemoved) {
  const int32_t surface = canvas(20, 20);
  draw_state().colour = 65535;
  draw_rectangle(5, 5, 15, 15, false);  // pixels 5 to 14
  surface_reset_target();
  const int32_t s = sprite_create_from_surface(surface, 5, 5, 10, 10, false, false, 0, 0);
  ASSERT_GE(s, 0);
  EXPECT_EQ(sprite_get_width(s), 10);
  canvas(20, 20);
  draw_sprite(s, 0, 0, 0);
  EXPECT_TRUE(is(pixel(9, 9), 255, 255, 0));
  surface_reset_target();

  // The colour of the bottom-left pixel goes transparent.
  const std::string png = file("back.png");
  ASSERT_TRUE(image_save_png(png, two_frames()));
  const int32_t cut = sprite_add(png, 1, true, false, 0, 0);
  const SpriteImage& image = sprite_get(cut)->images[0];
  EXPECT_EQ(image.rgba[(1 * 8 + 0) * 4 + 3], 0);
  EXPECT_EQ(image.rgba[(0 * 8 + 0) * 4 + 3], 255);
  // A precise mask follows the pixels left.
  sprite_collision_mask(cut, 0, 0);
  ASSERT_TRUE(sprite_get(cut)->precise());
  EXPECT_FALSE(sprite_get(cut)->masks[0].solid(0, 1));
  EXPECT_TRUE(sprite_get(cut)->masks[0].solid(1, 1));
  sprite_delete(cut);
  EXPECT_FALSE(sprite_exists(cut));
}

}  // namespace
