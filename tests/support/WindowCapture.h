// Test helper: the pixels of a window on the X display, as the X server
// holds them, read with xwd (a TrueColor dump of 32-bit pixels: a
// big-endian header, a colour table, then the rows).
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <unistd.h>
#include <string>
#include <vector>

#include "runtime/Graphics/ImageFile.h"

namespace window_capture {

inline uint32_t be32(const std::vector<uint8_t>& b, size_t at) {
  return (uint32_t{b[at]} << 24) | (uint32_t{b[at + 1]} << 16) | (uint32_t{b[at + 2]} << 8) | b[at + 3];
}

// The X window `window` captured; false when there is none or the dump can't be read.
inline bool capture(unsigned long window, Image& out) {
  const std::string dump = std::string(std::getenv("TMPDIR") ? std::getenv("TMPDIR") : "/tmp") + "/velant_capture_" +
                           std::to_string(::getpid()) + ".xwd";
  const std::string command = "xwd -silent -id " + std::to_string(window) + " -out " + dump + " 2>/dev/null";
  if (std::system(command.c_str()) != 0) return false;
  std::vector<uint8_t> bytes;
  if (FILE* f = std::fopen(dump.c_str(), "rb")) {
    for (int c; (c = std::fgetc(f)) != EOF;) bytes.push_back(static_cast<uint8_t>(c));
    std::fclose(f);
  }
  std::remove(dump.c_str());
  if (bytes.size() < 100) return false;
  const uint32_t header = be32(bytes, 0), width = be32(bytes, 16), height = be32(bytes, 20);
  const uint32_t byte_order = be32(bytes, 28), line = be32(bytes, 48);
  const uint32_t colours = be32(bytes, 76);
  const size_t pixels = header + size_t{colours} * 12;
  // The rows' length tells the pixel's size; the header's bits per pixel may say the depth instead.
  const uint32_t pixel_bytes = width ? line / width : 0;
  if (pixel_bytes != 4 || bytes.size() < pixels + size_t{line} * height) return false;
  out.width = static_cast<int>(width);
  out.height = static_cast<int>(height);
  out.rgba.assign(size_t{width} * height * 4, 255);
  for (uint32_t y = 0; y < height; ++y) {
    for (uint32_t x = 0; x < width; ++x) {
      const uint8_t* p = &bytes[pixels + size_t{y} * line + size_t{x} * 4];
      // Pixels are 0x00RRGGBB words in the dump's byte order.
      const uint32_t v = byte_order == 0 ? (uint32_t{p[3]} << 24 | uint32_t{p[2]} << 16 | uint32_t{p[1]} << 8 | p[0])
                                         : (uint32_t{p[0]} << 24 | uint32_t{p[1]} << 16 | uint32_t{p[2]} << 8 | p[3]);
      uint8_t* o = &out.rgba[(size_t{y} * width + x) * 4];
      o[0] = static_cast<uint8_t>(v >> 16);
      o[1] = static_cast<uint8_t>(v >> 8);
      o[2] = static_cast<uint8_t>(v);
    }
  }
  return true;
}

}  // namespace window_capture
