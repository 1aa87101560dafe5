// Shapes drawn into a surface and read back, pixel by pixel.
#include "graphics_fixture.h"

namespace {

constexpr double RED = 255, GREEN = 65280, BLUE = 16711680, WHITE = 0xFFFFFF;

TEST(CirclePrecision, IsHeldToMultiplesOfFourFrom4To64) {
  set_circle_precision(6);
  EXPECT_EQ(draw_state().circle_precision, 4);
  set_circle_precision(70);
  EXPECT_EQ(draw_state().circle_precision, 64);
  set_circle_precision(30);
  EXPECT_EQ(draw_state().circle_precision, 28);
  EXPECT_EQ(draw_state().circle_cos.size(), 29u);
  EXPECT_NEAR(draw_state().circle_cos[28], 1, 1e-12) << "the table closes the circle";
  set_circle_precision(24);
}

TEST_F(GraphicsTest, GradientsBlendTheCornerColours) {
  canvas();
  draw_rectangle_colour(0, 0, 63, 63, RED, RED, BLUE, BLUE, false);
  const Rgba top = pixel(30, 1), bottom = pixel(30, 62), middle = pixel(30, 32);
  EXPECT_GT(top.r, 240);
  EXPECT_LT(top.b, 15);
  EXPECT_GT(bottom.b, 240);
  EXPECT_NEAR(middle.r, 128, 12);
  EXPECT_NEAR(middle.b, 128, 12);
  surface_reset_target();
}

TEST_F(GraphicsTest, CirclesAndRoundBoxesTakeTheDrawColour) {
  canvas();
  draw_circle(20, 20, 10, false);
  EXPECT_TRUE(is(pixel(20, 12), 255, 255, 255));
  EXPECT_TRUE(is(pixel(11, 11), 0, 0, 0)) << "the corner of the circle's box";
  draw_circle_colour(45, 20, 12, RED, BLUE, false);
  EXPECT_TRUE(pixel(45, 20).r > 220 && pixel(45, 9).b > 180) << "red at the centre, blue at the rim";
  draw_state().colour = RED;
  draw_roundrect_ext(35, 35, 63, 63, 12, 12, false);
  EXPECT_TRUE(is(pixel(49, 36), 255, 0, 0)) << "the middle of an edge";
  EXPECT_TRUE(is(pixel(36, 36), 0, 0, 0)) << "a rounded corner";
  surface_reset_target();
}

// A filled circle or ellipse is one quad whose polygon the device works out
// for each pixel: it covers the pixels that the fan of its triangles covers,
// in the same colours, whatever its size, precision, colours and alpha.
TEST_F(GraphicsTest, FilledEllipsesCoverWhatTheirFanCovers) {
  constexpr int SIDE = 200;
  const auto pixels = [&](auto draw) {
    const int32_t s = canvas(SIDE, SIDE);
    draw();
    batch_flush();
    std::vector<uint8_t> rgba(static_cast<size_t>(SIDE) * SIDE * 4);
    read_target_pixels(0, 0, SIDE, SIDE, rgba.data());
    surface_reset_target();
    surface_free(s);
    return rgba;
  };
  struct Shape {
    double x1, y1, x2, y2;
    int precision;
    double centre, rim, alpha;
  };
  const Shape shapes[] = {
      {40, 40, 160, 160, 64, 0xFFFFFF, 0xFFFFFF, 1},  {3.5, 7.25, 190.5, 60.75, 64, 255, 16711680, 1},
      {100, 100, 112, 112, 64, 65280, 65280, 1},       {10, 10, 150, 190, 24, 16776960, 255, 0.5},
      {20.3, 30.7, 180.9, 120.1, 4, 0xFFFFFF, 0xFFFFFF, 1}, {60, 20, 61.5, 180, 12, 0xFFFFFF, 0xFFFFFF, 1},
  };
  for (const Shape& shape : shapes) {
    set_circle_precision(shape.precision);
    draw_state().alpha = shape.alpha;
    const std::vector<uint8_t> quad =
        pixels([&] { draw_ellipse_colour(shape.x1, shape.y1, shape.x2, shape.y2, shape.centre, shape.rim, false); });
    const std::vector<uint8_t> fan = pixels([&] {
      const double cx = (shape.x1 + shape.x2) / 2, cy = (shape.y1 + shape.y2) / 2;
      const double rx = (shape.x2 - shape.x1) / 2, ry = (shape.y2 - shape.y1) / 2;
      draw_primitive_begin(6);
      draw_vertex_colour(cx, cy, shape.centre, shape.alpha);
      for (int k = 0; k <= shape.precision; ++k) {
        draw_vertex_colour(cx + rx * draw_state().circle_cos[static_cast<size_t>(k)],
                           cy + ry * draw_state().circle_sin[static_cast<size_t>(k)], shape.rim, shape.alpha);
      }
      draw_primitive_end();
    });
    int covered = 0, different = 0;
    for (size_t p = 0; p < quad.size(); p += 4) {
      covered += fan[p] + fan[p + 1] + fan[p + 2] > 0 ? 1 : 0;
      for (size_t c = 0; c < 3; ++c) {
        if (std::abs(quad[p + c] - fan[p + c]) > 2) {
          ++different;
          break;
        }
      }
    }
    EXPECT_GT(covered, 100) << shape.x1;
    // Only pixels whose centres lie on an edge, to the rasterizer's sub-pixel
    // precision, can go either way: a handful at most.
    EXPECT_LE(different, 8) << "shape from (" << shape.x1 << ", " << shape.y1 << "), " << shape.precision << " sides";
  }
  draw_state().alpha = 1;
  set_circle_precision(24);
}

TEST_F(GraphicsTest, OneAndZeroCopyColourAndAlphaAndBlendingComesBack) {
  canvas();
  draw_state().alpha = 0.5;
  set_blend_mode(2, 1);  // one, zero: the source replaces the target, alpha and all
  draw_rectangle(0, 0, 15, 15, false);
  EXPECT_EQ(pixel(5, 5).r, 255);
  EXPECT_NEAR(pixel(5, 5).a, 128, 1);
  set_blend_mode(5, 6);  // source alpha, one minus source alpha
  draw_rectangle(16, 0, 31, 15, false);
  EXPECT_NEAR(pixel(20, 5).r, 128, 3);
  EXPECT_NEAR(pixel(20, 5).a, 191, 3);  // alpha blends by the same factors
  draw_state().alpha = 1;
  surface_reset_target();
}

TEST_F(GraphicsTest, PrimitivesBuiltVertexByVertex) {
  canvas();
  draw_state().colour = BLUE;
  draw_primitive_begin(6);  // a fan: a square from two triangles
  draw_vertex(10, 10);
  draw_vertex(40, 10);
  draw_vertex(40, 40);
  draw_vertex(10, 40);
  draw_primitive_end();
  EXPECT_TRUE(is(pixel(25, 25), 0, 0, 255));
  draw_primitive_begin(5);  // a strip of the same square, in red
  draw_vertex_colour(45, 10, RED, 1);
  draw_vertex_colour(60, 10, RED, 1);
  draw_vertex_colour(45, 40, RED, 1);
  draw_vertex_colour(60, 40, RED, 1);
  draw_primitive_end();
  EXPECT_TRUE(is(pixel(52, 25), 255, 0, 0));
  // An unknown kind draws nothing; too many vertices are cut at 1001.
  draw_primitive_begin(9);
  draw_vertex(0, 50);
  draw_vertex(63, 50);
  draw_vertex(0, 63);
  draw_primitive_end();
  EXPECT_TRUE(is(pixel(5, 55), 0, 0, 0));
  surface_reset_target();
}

TEST_F(GraphicsTest, ShapesShareBatchesUntilTheTextureOrTypeChanges) {
  canvas();
  batch_flush();
  platform::gpu().reset_draw_calls();
  for (int k = 0; k < 200; ++k) {
    draw_rectangle(k % 60, k % 50, k % 60 + 3, k % 50 + 3, false);
    draw_circle(k % 60, k % 50, 3, false);
    draw_triangle(0, 0, 5, 0, 0, 5, false);
  }
  batch_flush();
  EXPECT_EQ(platform::gpu().draw_calls(), 1u) << "600 filled shapes are one list of triangles";
  for (int k = 0; k < 10; ++k) {
    draw_rectangle(0, 0, 3, 3, false);
    draw_line(0, 0, 5, 5);
  }
  batch_flush();
  EXPECT_EQ(platform::gpu().draw_calls(), 21u) << "each change of primitive type flushes";
  surface_reset_target();
}

TEST_F(GraphicsTest, AnOpaqueShapeDrawnAgainWhereNothingCoversItIsSentOnce) {
  // Each pass draws a red square and then a blue box beside it or over it.
  struct Case { const char* what; double alpha; int blend_source, blend_destination; bool overlapping_between;
    uint64_t rectangles_sent; };
  const Case cases[] = {
      {"opaque, with a shape beside it between", 1, 5, 6, false, 2},
      {"opaque, with a shape over it between", 1, 5, 6, true, 100},
      {"half transparent: each pass darkens", 0.5, 5, 6, false, 100},
      {"added light: each pass brightens", 1, 5, 2, false, 100},
      {"copied, alpha and all", 0.5, 2, 1, false, 2},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    canvas();
    set_blend_mode(c.blend_source, c.blend_destination);
    draw_state().alpha = c.alpha;
    batch_flush();
    const uint64_t before = batch_vertices_sent();
    for (int pass = 0; pass < 50; ++pass) {
      draw_rectangle_colour(4, 4, 20, 20, RED, RED, RED, RED, false);
      const double x = c.overlapping_between ? 10 : 40;
      draw_rectangle_colour(x, 4, x + 8, 12, BLUE, BLUE, BLUE, BLUE, false);
    }
    batch_flush();
    EXPECT_EQ(batch_vertices_sent() - before, 4 * c.rectangles_sent);
    // What is left out is what could not be seen.
    EXPECT_TRUE(!c.overlapping_between || is(pixel(12, 6), 0, 0, 255)) << "the blue box on top";
    EXPECT_TRUE(c.rectangles_sent != 2 || c.alpha != 1 || is(pixel(6, 18), 255, 0, 0)) << "the red square";
    set_blend_mode(5, 6);
    draw_state().alpha = 1;
    surface_reset_target();
  }
}

}  // namespace
