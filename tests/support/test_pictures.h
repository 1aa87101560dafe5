// Test helper: small pictures written as PNG files for programs to load,
// and the pixels of pictures read back.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <vector>

#include "runtime/Graphics/ImageFile.h"

struct Rgb {
  int r, g, b;
};
inline constexpr Rgb WHITE{255, 255, 255}, BLACK{0, 0, 0}, RED{255, 0, 0}, GREEN{0, 255, 0}, BLUE{0, 0, 255},
    YELLOW{255, 255, 0};

// The red, green and blue of a colour as the runtime keeps it: blue in the high byte.
inline constexpr Rgb from_bgr(uint32_t colour) {
  return {static_cast<int>(colour & 0xFF), static_cast<int>((colour >> 8) & 0xFF),
          static_cast<int>((colour >> 16) & 0xFF)};
}

// Whether `p` is colour `c`, each channel within `tolerance`.
inline bool same_colour(const Rgb& p, const Rgb& c, int tolerance) {
  return std::abs(p.r - c.r) <= tolerance && std::abs(p.g - c.g) <= tolerance && std::abs(p.b - c.b) <= tolerance;
}

// Pixel (x, y) of `image`; outside it, -1 in each channel.
inline Rgb pixel(const Image& image, int x, int y) {
  if (x < 0 || y < 0 || x >= image.width || y >= image.height) return {-1, -1, -1};
  const uint8_t* p = &image.rgba[static_cast<size_t>((y * image.width + x) * 4)];
  return {p[0], p[1], p[2]};
}

// How many pixels of `image` from (left, top) to (right, bottom) inclusive are of colour `c`.
inline int count_colour(const Image& image, int left, int top, int right, int bottom, const Rgb& c, int tolerance) {
  int n = 0;
  for (int y = top; y <= bottom; ++y) {
    for (int x = left; x <= right; ++x) n += same_colour(pixel(image, x, y), c, tolerance);
  }
  return n;
}

// Writes an opaque PNG of `width` x `height` at `file`, making its folder,
// each pixel coloured by `colour_at(x, y)` (anything with r, g and b).
template <typename ColourAt>
bool write_test_picture(const std::filesystem::path& file, int width, int height, ColourAt colour_at) {
  Image image{width, height, std::vector<uint8_t>(static_cast<size_t>(width) * height * 4, 255)};
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const auto c = colour_at(x, y);
      uint8_t* p = &image.rgba[(static_cast<size_t>(y) * width + x) * 4];
      p[0] = static_cast<uint8_t>(c.r);
      p[1] = static_cast<uint8_t>(c.g);
      p[2] = static_cast<uint8_t>(c.b);
    }
  }
  if (file.has_parent_path()) std::filesystem::create_directories(file.parent_path());
  return image_save_png(file.string(), image);
}
