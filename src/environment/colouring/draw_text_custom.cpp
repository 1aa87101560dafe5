#include "environment/colouring/draw_text_custom.h"

#include <algorithm>
#include <cstdlib>

#include "runtime/Font/TextLayout.h"
#include "runtime/Graphics/DrawState.h"
#include "runtime/Graphics/TextDrawing.h"

namespace {

constexpr std::string_view TAG_START = "[$=";

// Walks the pieces of `tagged`, giving each with its colour (-1: the current one) to `piece`.
template <class Piece>
void for_each_piece(std::string_view tagged, Piece piece) {
  long colour = -1;
  size_t at = 0;
  while (at < tagged.size()) {
    if (tagged.substr(at, TAG_START.size()) == TAG_START && tagged.find(']', at) != std::string_view::npos) {
      const size_t end = tagged.find(']', at);
      colour = std::strtol(std::string(tagged.substr(at + 3, end - at - 3)).c_str(), nullptr, 10);
      at = end + 1;
      continue;
    }
    // An unfinished tag is text like any other.
    const size_t next = std::min(tagged.find(TAG_START, at + 1), tagged.size());
    std::string text(tagged.substr(at, next - at));
    std::erase(text, '\n');
    piece(text, colour);
    at = next;
  }
}

}  // namespace

CustomText measure_text_custom(std::string_view tagged) {
  CustomText measured;
  for_each_piece(tagged, [&](const std::string& text, long) {
    measured.plain += text;
    measured.width += string_width(text);
    measured.height = std::max(measured.height, string_height(text));
  });
  return measured;
}

std::string string_typing_custom(std::string_view tagged, size_t count) {
  std::string out;
  for (size_t at = 0; at < tagged.size();) {
    if (tagged.substr(at, TAG_START.size()) == TAG_START) {
      const size_t end = std::min(tagged.find(']', at), tagged.size() - 1);
      out.append(tagged.substr(at, end + 1 - at));
      at = end + 1;
      continue;
    }
    if (count == 0) break;
    // A character is all its UTF-8 bytes.
    size_t length = 1;
    while (at + length < tagged.size() && (static_cast<unsigned char>(tagged[at + length]) & 0xC0) == 0x80) ++length;
    out.append(tagged.substr(at, length));
    at += length;
    --count;
  }
  return out;
}

CustomText draw_text_custom(double x, double y, std::string_view tagged) {
  const uint32_t before = draw_state().colour;
  CustomText drawn;
  for_each_piece(tagged, [&](const std::string& text, long colour) {
    draw_state().colour = colour < 0 ? before : static_cast<uint32_t>(colour);
    draw_text_transformed(x + drawn.width, y, text, 1, 1, 0);
    drawn.plain += text;
    drawn.width += string_width(text);
    drawn.height = std::max(drawn.height, string_height(text));
  });
  draw_state().colour = before;
  return drawn;
}
