// Test helper for the drawing statements through `velant run`: a program
// run in the real main room and its last frame read back from the
// screenshot, whose pixels are the program's own coordinates; pixel and
// region checks, and small pictures written for the programs to load.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "run_fixture.h"
#include "test_pictures.h"

namespace drawing_run {

struct Rgb {
  int r, g, b;
};
constexpr Rgb WHITE{255, 255, 255}, BLACK{0, 0, 0}, RED{255, 0, 0}, BLUE{0, 0, 255};
// Red, green and blue at alpha 0.5 over white.
constexpr Rgb HALF_RED{255, 127, 127}, HALF_GREEN{127, 255, 127}, HALF_BLUE{127, 127, 255};

// The box of the pixels of a region that aren't white: what was drawn there.
struct Ink {
  int left = 1 << 20, top = 1 << 20, right = -1, bottom = -1;
  int width() const { return right - left + 1; }
  int height() const { return bottom - top + 1; }
  bool any() const { return right >= 0; }
};

class DrawingRun : public RunFixture {
 protected:
  // Runs a program whose INIZIA sets a white background, which hides the
  // grid, then holds `start`, and whose CICLO CONTINUO holds `loop`, for
  // `frames` frames; gives the last one.
  Image draw(const std::string& start, const std::string& loop, int frames = 3) {
    return draw_program("INIZIA\ncolore sfondo = bianco\n" + start + "CICLO CONTINUO\n" + loop, frames);
  }
  // The same for a whole program.
  Image draw_program(const std::string& program, int frames = 3) {
    last_ = run(program, "--frames " + std::to_string(frames) + " --screenshot schermo.png --vars");
    EXPECT_EQ(last_.status, 0) << last_.out;
    return screenshot();
  }
  // Whether the last run printed its variables and nothing else: no message.
  ::testing::AssertionResult printed_only_variables() const {
    std::istringstream lines(last_.out);
    for (std::string line; std::getline(lines, line);) {
      if (line.find(" = ") == std::string::npos) return ::testing::AssertionFailure() << "printed: " << last_.out;
    }
    return ::testing::AssertionSuccess();
  }
  // The value of `name` after the last run.
  std::string value(const std::string& name) const { return printed_value(last_.out, name); }

  // The colour of pixel (x, y).
  static Rgb pixel(const Image& image, int x, int y) {
    const uint8_t* p = at(image, x, y);
    return {p[0], p[1], p[2]};
  }
  // Whether pixel (x, y) is colour `c`, each channel within `tolerance`.
  static ::testing::AssertionResult shows(const Image& image, int x, int y, Rgb c, int tolerance = 3) {
    const Rgb p = pixel(image, x, y);
    if (std::abs(p.r - c.r) <= tolerance && std::abs(p.g - c.g) <= tolerance && std::abs(p.b - c.b) <= tolerance)
      return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "(" << x << ", " << y << ") is " << p.r << " " << p.g << " " << p.b
                                         << ", not " << c.r << " " << c.g << " " << c.b;
  }
  // The missing-image placeholder with its corner at (x, y): a red cross on light grey.
  static ::testing::AssertionResult shows_placeholder(const Image& image, int x, int y) {
    ::testing::AssertionResult cross = shows(image, x + 16, y + 16, RED);
    if (!cross) return cross;
    return shows(image, x + 5, y + 20, {200, 200, 200});
  }
  // A line of an outline passes within two pixels of (x, y), in colour `c` give or take its smoothing.
  static ::testing::AssertionResult shows_near(const Image& image, int x, int y, Rgb c) {
    for (int dy = -2; dy <= 2; ++dy) {
      for (int dx = -2; dx <= 2; ++dx) {
        if (shows(image, x + dx, y + dy, c, 60)) return ::testing::AssertionSuccess();
      }
    }
    return ::testing::AssertionFailure() << "no line near (" << x << ", " << y << ")";
  }
  // What was drawn in the region from (left, top) to (right, bottom) inclusive.
  static Ink ink(const Image& image, int left, int top, int right, int bottom) {
    Ink box;
    for (int y = top; y <= bottom; ++y) {
      for (int x = left; x <= right; ++x) {
        const Rgb p = pixel(image, x, y);
        if (p.r > 250 && p.g > 250 && p.b > 250) continue;
        box.left = std::min(box.left, x);
        box.right = std::max(box.right, x);
        box.top = std::min(box.top, y);
        box.bottom = std::max(box.bottom, y);
      }
    }
    return box;
  }
  // How many pixels of the region from (left, top) to (right, bottom) inclusive are of colour `c`.
  static int count(const Image& image, int left, int top, int right, int bottom, Rgb c, int tolerance) {
    int n = 0;
    for (int y = top; y <= bottom; ++y) {
      for (int x = left; x <= right; ++x) n += shows(image, x, y, c, tolerance) ? 1 : 0;
    }
    return n;
  }

  // Writes a PNG of `width` x `height` into the test's folder, each pixel coloured by `colour_at(x, y)`.
  template <typename ColourAt>
  void write_picture(const std::string& file, int width, int height, ColourAt colour_at) {
    ASSERT_TRUE(write_test_picture(dir_ / file, width, height, colour_at));
  }
  // "gatto.png", 20 x 10, red with a green bottom-left pixel; "immagini/strisce.png",
  // two frames of 10 x 10 side by side, red then blue.
  void write_pictures() {
    write_picture("gatto.png", 20, 10, [](int x, int y) { return x == 0 && y == 9 ? Rgb{0, 255, 0} : RED; });
    write_picture("immagini/strisce.png", 20, 10, [](int x, int) { return x < 10 ? RED : BLUE; });
  }

  RunResult last_;
};

// A number in the exact form: its decimals written to 30 places.
inline ::testing::AssertionResult is_exact(const std::string& text) {
  const size_t point = text.find('.');
  if (point != std::string::npos && text.size() - point - 1 == 30) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << text << " has not 30 decimals";
}
inline double number(const std::string& text) { return std::strtod(text.c_str(), nullptr); }

}  // namespace drawing_run
