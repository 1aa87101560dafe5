// Test helper for the drawing family: a Velant program run over a headless
// OpenGL window, drawing on a white canvas surface whose pixels are read
// back. The working directory is the test's own folder, where pictures are
// written for the programs to load by relative paths.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "families/funzioni_di_disegno.h"
#include "runtime/Font/Font.h"
#include "runtime/Font/TextState.h"
#include "runtime/Graphics/DrawState.h"
#include "runtime/Graphics/Primitives.h"
#include "runtime/Graphics/Surfaces.h"
#include "runtime/IO/FileNames.h"
#include "runtime/Platform/Gpu.h"
#include "runtime/Platform/Window.h"
#include "runtime/Room/Variables.h"
#include "runtime/Sprite/Sprite.h"
#include "support/program_fixture.h"
#include "support/test_pictures.h"

// Red, green and blue at alpha 0.5 over white.
inline constexpr Rgb HALF_RED{255, 127, 127}, HALF_GREEN{127, 255, 127}, HALF_BLUE{127, 127, 255};

// A pixel and the colour it should have; with `reach`, some pixel that far
// around has about that colour, as the smoothed line of an outline has.
struct Spot {
  int x, y;
  Rgb colour;
  int reach = 0;
};

// The box of the pixels that aren't white: what has been drawn. The box
// of nothing is Ink{}.
struct Ink {
  int left = 1 << 20, top = 1 << 20, right = -1, bottom = -1;
  bool any() const { return right >= 0; }
};

// Statements of a block CICLO CONTINUO, run for one frame on a white
// canvas, with the box of what they draw, give or take `slack` on each
// side, and the colour of some of its pixels.
struct Drawing {
  std::string statements;
  std::optional<Ink> box;
  std::vector<Spot> spots;
  int slack = 0;
};

// The missing-image placeholder with its corner at (x, y): its 32 x 32 box,
// a red cross on light grey.
inline Drawing placeholder_at(int x, int y, std::string statements) {
  return {std::move(statements), Ink{x, y, x + 31, y + 31}, {{x + 16, y + 16, RED}, {x + 5, y + 20, {200, 200, 200}}}};
}

class DrawingProgramTest : public ProgramTest {
 protected:
  static constexpr int CANVAS_WIDTH = 480, CANVAS_HEIGHT = 480;
  static constexpr uint32_t PAPER = 0xFFFFFF;

  void SetUp() override {
    ProgramTest::SetUp();
    ASSERT_TRUE(platform::make_window(true).create(CANVAS_WIDTH, CANVAS_HEIGHT, "test", {}));
    ASSERT_TRUE(platform::gpu().ready()) << "drawing needs an OpenGL 3.3 context (Mesa)";
    while (surface_stack_depth() > 0) surface_reset_target();
    set_base_target(NO_SURFACE, CANVAS_WIDTH, CANVAS_HEIGHT);
    draw_state().colour = PAPER;
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
    // The test's folder is the current one, where it writes its pictures,
    // and the save area, where the program finds them.
    previous_directory_ = std::filesystem::current_path();
    std::filesystem::current_path(dir_);
    previous_folders_ = file_folders();
    file_folders_set({dir_.string(), dir_.string(), ""});
    canvas_ = surface_create(CANVAS_WIDTH, CANVAS_HEIGHT);
    surface_set_target(canvas_);
    clear_canvas();
  }

  void TearDown() override {
    while (surface_stack_depth() > 0) surface_reset_target();
    surface_free(canvas_);
    delete_loaded_images();
    std::filesystem::current_path(previous_directory_);
    file_folders_set(previous_folders_);
    ProgramTest::TearDown();
  }

  // A program whose block INIZIA holds `statements`, run once.
  ProgramInstance& run_start(const std::string& statements) {
    ProgramInstance& p = sole_program("INIZIA\n" + statements + "\nCICLO CONTINUO");
    run_inizia(p);
    return p;
  }
  // A program whose blocks hold `start` and `statements`, run for one frame.
  ProgramInstance& run_one_frame(const std::string& statements, const std::string& start = "") {
    ProgramInstance& p = sole_program("INIZIA\n" + start + "\nCICLO CONTINUO\n" + statements);
    run_inizia(p);
    run_frame(p);
    return p;
  }

  // Each drawing on a canvas white again, after the block INIZIA `start`,
  // from a draw state of no use to it; none shows a message or ends the
  // run, and with `puts_back_black` each leaves the draw state black and opaque.
  void expect_drawings(const std::vector<Drawing>& drawings, const std::string& start = "",
                       bool puts_back_black = false) {
    for (const Drawing& drawing : drawings) {
      SCOPED_TRACE(drawing.statements);
      clear_canvas();
      draw_state().colour = 12345;
      draw_state().alpha = 0.25;
      run_one_frame(drawing.statements, start);
      EXPECT_TRUE(!puts_back_black || (draw_state().colour == 0 && draw_state().alpha == 1)) << "not put back";
      if (drawing.box) {
        const Ink box = ink(), &want = *drawing.box;
        EXPECT_TRUE(std::abs(box.left - want.left) <= drawing.slack && std::abs(box.top - want.top) <= drawing.slack &&
                    std::abs(box.right - want.right) <= drawing.slack &&
                    std::abs(box.bottom - want.bottom) <= drawing.slack)
            << "drawn from (" << box.left << ", " << box.top << ") to (" << box.right << ", " << box.bottom << ")";
      }
      for (const Spot& spot : drawing.spots) EXPECT_TRUE(shows(spot)) << "at (" << spot.x << ", " << spot.y << ")";
      EXPECT_TRUE(messages_.empty());
      EXPECT_TRUE(run_ends().empty());
    }
  }

  static void clear_canvas() { draw_clear_alpha(PAPER, 1); }

  // Pixel (x, y) of the canvas.
  static Rgb pixel(int x, int y) {
    uint8_t p[4];
    read_target_pixels(x, y, 1, 1, p);
    return {p[0], p[1], p[2]};
  }
  static bool shows(const Spot& spot) {
    for (int dy = -spot.reach; dy <= spot.reach; ++dy) {
      for (int dx = -spot.reach; dx <= spot.reach; ++dx) {
        if (same_colour(pixel(spot.x + dx, spot.y + dy), spot.colour, spot.reach ? 60 : 3)) return true;
      }
    }
    return false;
  }

  // The whole canvas, four bytes a pixel, rows from the top.
  static std::vector<uint8_t> canvas_pixels() {
    std::vector<uint8_t> rgba(static_cast<size_t>(CANVAS_WIDTH) * CANVAS_HEIGHT * 4);
    read_target_pixels(0, 0, CANVAS_WIDTH, CANVAS_HEIGHT, rgba.data());
    return rgba;
  }
  static Ink ink() {
    const std::vector<uint8_t> rgba = canvas_pixels();
    Ink box;
    for (int k = 0; k < CANVAS_WIDTH * CANVAS_HEIGHT; ++k) {
      const uint8_t* p = &rgba[static_cast<size_t>(k) * 4];
      if (p[0] > 250 && p[1] > 250 && p[2] > 250) continue;
      const int x = k % CANVAS_WIDTH, y = k / CANVAS_WIDTH;
      box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x), std::max(box.bottom, y)};
    }
    return box;
  }

  static double global(const char* name) {
    RValue value;
    variable_get(global_object(), variable_id(name), NO_ARRAY_INDEX, value);
    return value.real;
  }

  int32_t canvas_ = NO_SURFACE;
  std::filesystem::path previous_directory_;
  FileFolders previous_folders_;
};
