// The rulers and the protractor drawn for real on a blue canvas: where their
// lines, boxes and fan fall.
#include "environment/measuring_aids.h"
#include "runtime/Font/TextState.h"
#include "runtime/Graphics/graphics_fixture.h"

namespace {

constexpr uint32_t BLUE_WORD = 0xFF0000;  // blue, in blue-green-red order

// What a pixel of the canvas looks like: the blue canvas, light, or black.
enum class Looks { Blue, Light, Black };
struct Spot {
  int x, y;
  Looks looks;
};

class MeasuringAids : public GraphicsTest {
 protected:
  void SetUp() override {
    GraphicsTest::SetUp();
    draw_set_font(-1);
    canvas(300, 300);
    draw_clear_alpha(BLUE_WORD, 1);
  }
  void TearDown() override { surface_reset_target(); }

  static bool looks(const Rgba& p, Looks how) {
    switch (how) {
      case Looks::Blue: return p.r < 10 && p.g < 10 && p.b > 245;
      case Looks::Light: return p.r > 200 && p.g > 200 && p.b > 200;
      case Looks::Black: return p.r < 10 && p.g < 10 && p.b < 10;
    }
    return false;
  }
  static void expect_spots(std::initializer_list<Spot> spots) {
    for (const Spot& s : spots) EXPECT_TRUE(looks(pixel(s.x, s.y), s.looks)) << s.x << ", " << s.y;
  }
};

}  // namespace

TEST_F(MeasuringAids, RulersCrossTheWindowAtTheMouseWithTheCoordinatesInBoxes) {
  draw_rulers(300, 300, 200, 100);
  batch_flush();
  // Each arm white on black across the whole window; wide lines lie on pixel
  // edges, so the white row is the one above the mouse's. "X: 200" in a light
  // box centred at (100, 100), reaching beyond the text; "Y: 100" centred at (200, 50).
  expect_spots({{290, 99, Looks::Light}, {290, 98, Looks::Black}, {290, 100, Looks::Black}, {290, 97, Looks::Blue},
                {290, 101, Looks::Blue}, {199, 290, Looks::Light}, {198, 290, Looks::Black}, {200, 290, Looks::Black},
                {100, 88, Looks::Light}, {100, 70, Looks::Blue}, {175, 50, Looks::Light}, {140, 50, Looks::Blue}});
  // The text is black.
  int black = 0;
  for (int x = 80; x <= 120; ++x) black += looks(pixel(x, 100), Looks::Black) || looks(pixel(x, 97), Looks::Black);
  EXPECT_GT(black, 3);
}

TEST_F(MeasuringAids, TheProtractorSweepsFromZeroToTheMouseWithACrossOnItsCentre) {
  draw_protractor(150, 150, 150, 50);  // the mouse straight above: 90 degrees
  batch_flush();
  // The fan fills the quarter from the right (0 degrees) up to the mouse, half transparent over blue.
  const Rgba inside = pixel(190, 110);
  EXPECT_FALSE(looks(inside, Looks::Blue));
  EXPECT_GT(inside.g, 60);
  // The rest of the circle stays clear; the cross reaches 50 pixels each way,
  // white on black; "Angolo: 90" is in a box right of and below the mouse.
  expect_spots({{110, 190, Looks::Blue}, {110, 110, Looks::Blue}, {110, 149, Looks::Light}, {110, 148, Looks::Black},
                {95, 149, Looks::Blue}, {149, 190, Looks::Light}, {149, 205, Looks::Blue}, {175, 72, Looks::Light}});
}
