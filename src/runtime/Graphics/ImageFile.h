// Pictures in files: PNG and JPEG read into RGBA pixels, PNG written.
// A damaged or unknown file reads as nothing and never stops the program.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

struct Image {
  int width = 0, height = 0;
  std::vector<uint8_t> rgba;  // rows from the top, four bytes a pixel
};

// Reads a PNG or a JPEG file, told apart by its first bytes; false when it is neither or is damaged.
bool image_load(const std::string& path, Image& out);
// The same from bytes in memory.
bool image_decode(std::span<const uint8_t> bytes, Image& out);
// Writes `image` as a PNG file; the file appears whole or not at all.
bool image_save_png(const std::string& path, const Image& image);
