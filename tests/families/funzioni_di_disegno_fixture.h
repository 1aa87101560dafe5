// Test helper for the drawing family: a Velant program run over a headless
// OpenGL window, drawing on a white canvas surface whose pixels are read
// back. The working directory is the test's own folder, where pictures are
// written for the programs to load by relative paths.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "families/funzioni_di_disegno.h"
#include "language/evaluation/numeric_expression.h"
#include "support/program_fixture.h"
#include "runtime/Font/Font.h"
#include "runtime/Font/TextState.h"
#include "runtime/Function/StringFunctions.h"
#include "runtime/Graphics/DrawState.h"
#include "runtime/Graphics/ImageFile.h"
#include "runtime/Graphics/Primitives.h"
#include "runtime/Graphics/Surfaces.h"
#include "runtime/Room/Variables.h"
#include "runtime/Platform/Gpu.h"
#include "runtime/Platform/Window.h"
#include "runtime/Sprite/Sprite.h"
#include "test_pictures.h"

struct Rgb {
  int r, g, b;
};

class DrawingProgramTest : public ProgramTest {
 protected:
  static constexpr int CANVAS_WIDTH = 480, CANVAS_HEIGHT = 480;
  static constexpr uint32_t WHITE = 0xFFFFFF;

  void SetUp() override {
    ProgramTest::SetUp();
    platform::Window& window = platform::make_window(true);
    ASSERT_TRUE(window.create(CANVAS_WIDTH, CANVAS_HEIGHT, "test", {}));
    ASSERT_TRUE(platform::gpu().ready()) << "drawing needs an OpenGL 3.3 context (Mesa)";
    while (surface_stack_depth() > 0) surface_reset_target();
    set_base_target(NO_SURFACE, CANVAS_WIDTH, CANVAS_HEIGHT);
    draw_state().colour = WHITE;
    draw_state().alpha = 1;
    // What the run controller sets at the start of every run.
    set_circle_precision(64);
    draw_set_font(-1);
    draw_set_halign(TEXT_ALIGN_START);
    draw_set_valign(TEXT_ALIGN_START);
    for (const char* name : {"tot_img_load", "righelli", "goniometro"}) {
      variable_set(global_object(), variable_id(name), NO_ARRAY_INDEX, RValue::number(0));
    }
    // The environment's own sprites come first: no sprite of a program is sprite 0.
    if (!sprite_exists(0)) sprite_add_shape("spr_ambiente", 1, 1, 0, 0);
    // The environment's font is font 0 of the package, which a test makes in its place; global.font is unset.
    if (!font_exists(0)) font_put(0, "fnt_editor", font_load_default_face(16, false));
    variable_set(global_object(), variable_id("font"), NO_ARRAY_INDEX, RValue());
    previous_directory_ = std::filesystem::current_path();
    std::filesystem::current_path(dir_);
    canvas_ = surface_create(CANVAS_WIDTH, CANVAS_HEIGHT);
    surface_set_target(canvas_);
    draw_clear_alpha(WHITE, 1);
  }

  void TearDown() override {
    while (surface_stack_depth() > 0) surface_reset_target();
    surface_free(canvas_);
    delete_loaded_images();
    std::filesystem::current_path(previous_directory_);
    ProgramTest::TearDown();
  }

  // The program of `text` ready to run, alone as a run has it: the programs
  // made before it in the test go, so that it is the one of main_code_ctrl.
  ProgramInstance& sole_program(const std::string& text) {
    programs_.clear();
    set_main_program(nullptr);
    return runnable(text);
  }
  // A program whose block INIZIA holds `statements`, run once.
  ProgramInstance& run_start(const std::string& statements) {
    ProgramInstance& p = sole_program("INIZIA\n" + statements + "\nCICLO CONTINUO");
    run_inizia(p);
    return p;
  }
  // A program whose block CICLO CONTINUO holds `statements`, run for one frame.
  ProgramInstance& run_one_frame(const std::string& statements) {
    ProgramInstance& p = sole_program("INIZIA\nCICLO CONTINUO\n" + statements);
    run_inizia(p);
    run_frame(p);
    return p;
  }

  // The canvas white again, for a second drawing in the same test.
  static void clear_canvas() { draw_clear_alpha(WHITE, 1); }

  // Pixel (x, y) of the canvas.
  Rgb pixel(int x, int y) {
    uint8_t p[4];
    read_target_pixels(x, y, 1, 1, p);
    return {p[0], p[1], p[2]};
  }
  static bool is(const Rgb& p, int r, int g, int b, int tolerance = 3) {
    return std::abs(p.r - r) <= tolerance && std::abs(p.g - g) <= tolerance && std::abs(p.b - b) <= tolerance;
  }
  bool is_white(int x, int y) { return is(pixel(x, y), 255, 255, 255); }
  bool is_black(int x, int y) { return is(pixel(x, y), 0, 0, 0); }

  // The whole canvas, four bytes a pixel, rows from the top.
  std::vector<uint8_t> canvas_pixels() {
    std::vector<uint8_t> rgba(static_cast<size_t>(CANVAS_WIDTH) * CANVAS_HEIGHT * 4);
    read_target_pixels(0, 0, CANVAS_WIDTH, CANVAS_HEIGHT, rgba.data());
    return rgba;
  }

  // The box of the pixels that aren't white: what has been drawn.
  struct Ink {
    int left = CANVAS_WIDTH, top = CANVAS_HEIGHT, right = -1, bottom = -1;
    int width() const { return right - left + 1; }
    int height() const { return bottom - top + 1; }
    bool any() const { return right >= 0; }
  };
  Ink ink() {
    const std::vector<uint8_t> rgba = canvas_pixels();
    Ink box;
    for (int y = 0; y < CANVAS_HEIGHT; ++y) {
      for (int x = 0; x < CANVAS_WIDTH; ++x) {
        const uint8_t* p = &rgba[(static_cast<size_t>(y) * CANVAS_WIDTH + x) * 4];
        if (p[0] > 250 && p[1] > 250 && p[2] > 250) continue;
        box.left = std::min(box.left, x);
        box.right = std::max(box.right, x);
        box.top = std::min(box.top, y);
        box.bottom = std::max(box.bottom, y);
      }
    }
    return box;
  }

  // Writes a PNG of `width` x `height` in the working directory, each pixel coloured by `colour_at(x, y)`.
  template <typename ColourAt>
  static void write_picture(const std::string& file, int width, int height, ColourAt colour_at) {
    ASSERT_TRUE(write_test_picture(file, width, height, colour_at));
  }

  // The 30-decimal text of a number, as the exact form stores it.
  static std::string exact(double x) { return std::string(rt::string_format(x, -1, 30).string_view()); }
  // The number of variable `name` of `p`.
  static double number(const ProgramInstance& p, std::string_view name) { return string_is_real(stored(p, name)); }
  static double global(const char* name) {
    RValue value;
    variable_get(global_object(), variable_id(name), NO_ARRAY_INDEX, value);
    return value.real;
  }

  int32_t canvas_ = NO_SURFACE;
  std::filesystem::path previous_directory_;
};
