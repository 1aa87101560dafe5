// The rulers and the protractor drawn for real on a blue canvas: where their
// lines, boxes and fan fall.
#include "environment/measuring_aids.h"
#include "runtime/Font/TextState.h"
#include "runtime/Graphics/graphics_fixture.h"

namespace {

constexpr uint32_t BLUE_WORD = 0xFF0000;  // blue, in blue-green-red order

class MeasuringAids : public GraphicsTest {
 protected:
  void SetUp() override {
    GraphicsTest::SetUp();
    draw_set_font(-1);
    canvas(300, 300);
    draw_clear_alpha(BLUE_WORD, 1);
  }
  void TearDown() override { surface_reset_target(); }

  static bool is_blue(const Rgba& p) { return p.r < 10 && p.g < 10 && p.b > 245; }
  static bool is_light(const Rgba& p) { return p.r > 200 && p.g > 200 && p.b > 200; }
  static bool is_black(const Rgba& p) { return p.r < 10 && p.g < 10 && p.b < 10; }
};

}  // namespace

TEST_F(MeasuringAids, RulersCrossTheWindowAtTheMouseWithTheCoordinatesInBoxes) {
  draw_rulers(300, 300, 200, 100);
  batch_flush();
  // Each arm: white on black, across the whole window; wide lines lie on
  // pixel edges, so the white row is the one above the mouse's.
  EXPECT_TRUE(is_light(pixel(290, 99)));
  EXPECT_TRUE(is_black(pixel(290, 98)) && is_black(pixel(290, 100)));
  EXPECT_TRUE(is_blue(pixel(290, 97)) && is_blue(pixel(290, 101)));
  EXPECT_TRUE(is_light(pixel(199, 290)));
  EXPECT_TRUE(is_black(pixel(198, 290)) && is_black(pixel(200, 290)));
  // "X: 200" in a light box centred at (100, 100), reaching beyond the text; the text is black.
  EXPECT_TRUE(is_light(pixel(100, 88)));
  EXPECT_TRUE(is_blue(pixel(100, 70)));
  int black = 0;
  for (int x = 80; x <= 120; ++x) black += is_black(pixel(x, 100)) || is_black(pixel(x, 97)) ? 1 : 0;
  EXPECT_GT(black, 3);
  // "Y: 100" centred at (200, 50).
  EXPECT_TRUE(is_light(pixel(175, 50)));
  EXPECT_TRUE(is_blue(pixel(140, 50)));
}

TEST_F(MeasuringAids, TheProtractorSweepsFromZeroToTheMouseWithACrossOnItsCentre) {
  draw_protractor(150, 150, 150, 50);  // the mouse straight above: 90 degrees
  batch_flush();
  // The fan fills the quarter from the right (0 degrees) up to the mouse, half transparent over blue.
  const Rgba inside = pixel(190, 110);
  EXPECT_FALSE(is_blue(inside));
  EXPECT_GT(inside.g, 60);
  EXPECT_TRUE(is_blue(pixel(110, 190))) << "the rest of the circle stays clear";
  EXPECT_TRUE(is_blue(pixel(110, 110)));
  // The cross reaches 50 pixels each way, white on black.
  EXPECT_TRUE(is_light(pixel(110, 149)));
  EXPECT_TRUE(is_black(pixel(110, 148)));
  EXPECT_TRUE(is_blue(pixel(95, 149)));
  EXPECT_TRUE(is_light(pixel(149, 190)));
  EXPECT_TRUE(is_blue(pixel(149, 205)));
  // "Angolo: 90" in a box to the right of and below the mouse.
  EXPECT_TRUE(is_light(pixel(175, 72)));
}
