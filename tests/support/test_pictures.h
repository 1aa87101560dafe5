// Test helper: small pictures written as PNG files for programs to load.
#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

#include "runtime/Graphics/ImageFile.h"

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
