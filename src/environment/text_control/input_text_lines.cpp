// The line table, the measurements and the scroll of obj_input_text.
#include <algorithm>
#include <cmath>
#include <span>

#include "environment/text_control/input_text.h"
#include "runtime/Font/Font.h"
#include "runtime/Font/LineSplit.h"

bool is_word_char(uint32_t c) {
  return (c >= 48 && c <= 57) || (c >= 65 && c <= 90) || (c >= 97 && c <= 122) || c == 181 ||
         (c >= 192 && c <= 214) || (c >= 216 && c <= 246) || (c >= 248 && c <= 255);
}

Chars chars_of(std::string_view utf8) {
  Chars chars;
  decode_utf8(utf8, chars);
  return chars;
}

std::string utf8_of(const Chars& chars, size_t from, size_t to) {
  std::string out;
  to = std::min(to, chars.size());
  for (size_t k = from; k < to; ++k) {
    const uint32_t c = chars[k];
    if (c < 0x80) {
      out += static_cast<char>(c);
    } else if (c < 0x800) {
      out += static_cast<char>(0xC0 | (c >> 6));
      out += static_cast<char>(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
      out += static_cast<char>(0xE0 | (c >> 12));
      out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
      out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
      out += static_cast<char>(0xF0 | (c >> 18));
      out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
      out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
      out += static_cast<char>(0x80 | (c & 0x3F));
    }
  }
  return out;
}

std::string ObjInputText::text_utf8() const { return utf8_of(text); }

double ObjInputText::width_of(int from, int to) const {
  if (to <= from) return 0;
  return ::text_width(font_or_default(font), std::span<const uint32_t>(text).subspan(static_cast<size_t>(from),
                                                                                    static_cast<size_t>(to - from)));
}

// The longest part of text[from, end) that fits `limit` pixels: up to a
// space where one fits, else character by character, else one character.
static int fitted_length(const ObjInputText& box, int from, int end, double limit,
                         double (*measure)(const ObjInputText&, int, int)) {
  int by_words = 0;
  for (int k = from; k < end; ++k) {
    // A right-aligned line does not break after a single leading space.
    if (box.text[static_cast<size_t>(k)] == ' ' && !(box.h_align == 2 && k == from)) {
      if (measure(box, from, k + 1) > limit) break;
      by_words = k + 1 - from;
    }
  }
  if (by_words > 0) return by_words;
  int by_chars = 0;
  while (from + by_chars < end && measure(box, from, from + by_chars + 1) <= limit) ++by_chars;
  return std::max(by_chars, 1);
}

void ObjInputText::rebuild_lines() {
  const int length = static_cast<int>(text.size());
  new_line_list.assign(1, 0);
  text_draw.clear();
  const auto measure = [](const ObjInputText& box, int from, int to) { return box.width_of(from, to); };
  int pos = 0;
  while (pos <= length) {
    const auto feed = std::find(text.begin() + pos, text.end(), U'\n');
    const int hard_end = static_cast<int>(feed - text.begin());  // the line's last shown character + 1
    int line_end = feed == text.end() ? length : hard_end + 1;
    if (wrapping_width >= 0 && width_of(pos, hard_end) > wrapping_width && hard_end - pos > 1) {
      const int fitted = fitted_length(*this, pos, hard_end, wrapping_width, measure);
      if (pos + fitted < hard_end) {
        text_draw += utf8_of(text, static_cast<size_t>(pos), static_cast<size_t>(pos + fitted)) + "\n";
        pos += fitted;
        new_line_list.push_back(pos);
        continue;
      }
    }
    text_draw += utf8_of(text, static_cast<size_t>(pos), static_cast<size_t>(line_end));
    if (feed == text.end()) break;
    pos = line_end;
    new_line_list.push_back(pos);
  }
  new_line_list.push_back(length + 1);
  lines = static_cast<int>(new_line_list.size()) - 1;
  text_width = 0;
  for (int line = 0; line < lines; ++line) {
    text_width = std::max(text_width, width_of(new_line_list[static_cast<size_t>(line)], visible_end(line)));
  }
  text_height = lines > 1 ? line_separation * (lines - 1) + char_height : char_height;
  v_align_offset = v_align == 1 ? -text_height / 2 : v_align == 2 ? -text_height : 0;
}

int ObjInputText::line_of(int position) const {
  const auto after = std::lower_bound(new_line_list.begin(), new_line_list.begin() + lines, position);
  return std::max(0, static_cast<int>(after - new_line_list.begin()) - 1);
}

int ObjInputText::visible_end(int line) const {
  const int next = new_line_list[static_cast<size_t>(line + 1)];
  const int end = std::min(next, static_cast<int>(text.size()));
  return end > new_line_list[static_cast<size_t>(line)] && text[static_cast<size_t>(end - 1)] == U'\n' ? end - 1
                                                                                                        : end;
}

bool ObjInputText::soft_wrapped(int line) const {
  return line + 1 < lines && visible_end(line) == new_line_list[static_cast<size_t>(line + 1)];
}

int ObjInputText::caret_for_line_end(int line) const {
  const int end = visible_end(line);
  return soft_wrapped(line) ? -end : end + 1;
}

void ObjInputText::update_caret_offsets() {
  const int p = caret();
  cursor_line = cursor_position < 0 ? line_of(p - 1) : line_of(p);
  const int start = new_line_list[static_cast<size_t>(cursor_line)];
  double x = width_of(start, p - 1);
  const double line_width = width_of(start, visible_end(cursor_line));
  if (h_align == 1) x -= line_width / 2;
  if (h_align == 2) x -= line_width;
  cursor_offset_x = x;
  cursor_offset_y = line_separation * cursor_line + v_align_offset;
}

void ObjInputText::scroll_to_caret() {
  if (fit_style != 0) {
    local_scale_x = text_width > 0 ? std::min(1.0, width / text_width) : 1;
    local_scale_y = text_height > 0 ? std::min(1.0, height / text_height) : 1;
    if (fit_style == 1) local_scale_x = local_scale_y = std::min(local_scale_x, local_scale_y);
    return;
  }
  const double caret_x = origin_x + cursor_offset_x, caret_y = origin_y + cursor_offset_y;
  if (caret_x + offset_x > width) offset_x = width - caret_x;
  if (caret_x + offset_x < 0) offset_x = -caret_x;
  if (caret_y + offset_y > height - char_height) offset_y = height - char_height - caret_y;
  if (caret_y + offset_y < 0) offset_y = -caret_y;
  // The text does not leave the box needlessly.
  const double spare_x = std::max(0.0, text_width - width), spare_y = std::max(0.0, text_height - height);
  const double share_x = h_align == 0 ? 1 : h_align == 1 ? 0.5 : 0;
  const double share_y = v_align == 0 ? 1 : v_align == 1 ? 0.5 : 0;
  offset_x = std::clamp(offset_x, -spare_x * share_x, spare_x * (1 - share_x));
  offset_y = std::clamp(offset_y, -spare_y * share_y, spare_y * (1 - share_y));
}
