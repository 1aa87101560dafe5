// A surface drawn on a freshly cleared target, as the grid is in every
// frame: made once, then copied, with the pixels of drawing it every time.
#include <vector>

#include "graphics_fixture.h"
#include "runtime/Graphics/SurfaceOverClear.h"

namespace {

constexpr int WIDTH = 60, HEIGHT = 40;
constexpr double OLIVE = 32896, RED = 255, GREEN = 65280, WHITE = 0xFFFFFF;

class SurfaceOverClear : public GraphicsTest {
 protected:
  // A source like the grid's: opaque on the left, half transparent on the
  // right, where text would leave it so.
  void SetUp() override {
    GraphicsTest::SetUp();
    source_ = canvas(40, 30);
    draw_clear_alpha(0, 0);
    draw_state().colour = WHITE;
    draw_rectangle(0, 0, 19, 29, false);
    draw_state().alpha = 0.5;
    draw_rectangle(20, 0, 39, 29, false);
    draw_state().alpha = 1;
    surface_reset_target();
  }

  // Every byte of a target cleared to olive, after `after_clear`, with the
  // source drawn at (0, 0) by way of the kept picture or plainly.
  template <typename AfterClear>
  std::vector<uint8_t> picture(bool kept, AfterClear after_clear) {
    const int32_t target = canvas(WIDTH, HEIGHT);
    draw_clear_alpha(OLIVE, 1);
    after_clear();
    if (kept) {
      draw_surface_over_clear(source_);
    } else {
      draw_surface(source_, 0, 0);
    }
    batch_flush();
    std::vector<uint8_t> rgba(static_cast<size_t>(WIDTH) * HEIGHT * 4);
    read_target_pixels(0, 0, WIDTH, HEIGHT, rgba.data());
    surface_reset_target();
    surface_free(target);
    return rgba;
  }

  int32_t source_ = NO_SURFACE;
};

void nothing() {}

}  // namespace

TEST_F(SurfaceOverClear, GivesThePixelsOfDrawingTheSurfaceWhateverChanged) {
  const std::vector<uint8_t> drawn = picture(false, nothing);
  EXPECT_EQ(picture(true, nothing), drawn) << "the picture made";
  EXPECT_EQ(picture(true, nothing), drawn) << "the picture copied";
  EXPECT_EQ(draw_state().blend_source, 5) << "the blend is put back";
  EXPECT_EQ(draw_state().alpha, 1);

  // Something drawn after the clear: the surface goes over it as usual.
  const auto red_box = [] {
    draw_state().colour = RED;
    draw_rectangle(30, 0, 59, 39, false);
    draw_state().colour = WHITE;
  };
  EXPECT_EQ(picture(true, red_box), picture(false, red_box));

  // The source drawn on again, another draw alpha, another clear: the picture follows.
  surface_set_target(source_);
  draw_state().colour = GREEN;
  draw_rectangle(0, 0, 9, 9, false);
  draw_state().colour = WHITE;
  surface_reset_target();
  EXPECT_EQ(picture(true, nothing), picture(false, nothing));
  draw_state().alpha = 0.5;
  EXPECT_EQ(picture(true, nothing), picture(false, nothing));
  draw_state().alpha = 1;
  const auto clear_red = [] { draw_clear_alpha(RED, 0.5); };
  EXPECT_EQ(picture(true, clear_red), picture(false, clear_red));
}

TEST_F(SurfaceOverClear, OnTheWindowThePictureIsDrawnWithoutBlending) {
  // The window is no render target the device can copy to: the kept picture is drawn instead.
  const auto window = [&](bool kept) {
    draw_clear_alpha(OLIVE, 1);
    if (kept) {
      draw_surface_over_clear(source_);
    } else {
      draw_surface(source_, 0, 0);
    }
    batch_flush();
    std::vector<uint8_t> rgba(static_cast<size_t>(WIDTH) * HEIGHT * 4);
    read_target_pixels(0, 0, WIDTH, HEIGHT, rgba.data());
    return rgba;
  };
  const std::vector<uint8_t> drawn = window(false);
  EXPECT_EQ(window(true), drawn);
  EXPECT_EQ(window(true), drawn);
  EXPECT_EQ(draw_state().blend_source, 5);
}
