// Test helper: a headless window with its OpenGL context (Mesa's software
// renderer), and pixels read back from surfaces.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "runtime/Code/Builtins.h"
#include "runtime/Graphics/Batch.h"
#include "runtime/Graphics/Colour.h"
#include "runtime/Graphics/DrawState.h"
#include "runtime/Graphics/Primitives.h"
#include "runtime/Graphics/Surfaces.h"
#include "runtime/Platform/Gpu.h"
#include "runtime/Platform/Window.h"
#include "support/SaveArea.h"

struct Rgba {
  int r, g, b, a;
};

class GraphicsTest : public ::testing::Test {
 protected:
  static constexpr int WINDOW_WIDTH = 160, WINDOW_HEIGHT = 120;

  void SetUp() override {
    register_runtime_builtins();
    platform::Window& w = platform::make_window(true);
    ASSERT_TRUE(w.create(WINDOW_WIDTH, WINDOW_HEIGHT, "test", {}));
    ASSERT_TRUE(platform::gpu().ready()) << "drawing needs an OpenGL 3.3 context (Mesa)";
    // A test that stopped half way may have left targets set.
    while (surface_stack_depth() > 0) surface_reset_target();
    set_base_target(NO_SURFACE, WINDOW_WIDTH, WINDOW_HEIGHT);
    draw_state().colour = 0xFFFFFF;
    draw_state().alpha = 1;
    set_circle_precision(24);
  }

  // A surface of `width` x `height`, cleared to opaque black and set as the target.
  int32_t canvas(int width = 64, int height = 64) {
    const int32_t s = surface_create(width, height);
    surface_set_target(s);
    draw_clear_alpha(0, 1);
    return s;
  }

  // The pixel (x, y) of the current target.
  static Rgba pixel(int x, int y) {
    uint8_t p[4];
    read_target_pixels(x, y, 1, 1, p);
    return {p[0], p[1], p[2], p[3]};
  }
  static bool is(const Rgba& p, int r, int g, int b, int tolerance = 2) {
    return std::abs(p.r - r) <= tolerance && std::abs(p.g - g) <= tolerance && std::abs(p.b - b) <= tolerance;
  }
  // The path of `name` in the test's own folder, gone with the test.
  std::string file(const std::string& name) const { return (files_ / name).string(); }

  SaveArea files_{"velant_graphics"};
};
