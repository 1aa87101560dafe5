// Where the caret of obj_input_text goes: clicks and drags, the arrows,
// Page Up and Down, double-click word selection and the word jumps of Ctrl.
#include <algorithm>
#include <cmath>

#include "environment/text_control/input_text.h"
#include "runtime/Function/MathFunctions.h"
#include "runtime/IO/Input.h"

void ObjInputText::pointer(double& px, double& py) const {
  px = mouse_x() - x;
  py = mouse_y() - y;
  if (image_angle != 0) {
    const double a = image_angle * M_PI / 180, c = std::cos(a), s = std::sin(a);
    const double rx = px * c - py * s, ry = px * s + py * c;
    px = rx;
    py = ry;
  }
  px = image_xscale != 0 ? px / image_xscale : 0;
  py = image_yscale != 0 ? py / image_yscale : 0;
}

bool ObjInputText::pointer_inside() const {
  double px = 0, py = 0;
  pointer(px, py);
  return px >= 0 && px <= width && py >= 0 && py <= height;
}

int ObjInputText::word_start_before(int position) const {
  int k = position - 2;  // 0-based index of the character before the caret
  if (k < 0) return 1;
  if (text[static_cast<size_t>(k)] == U'\n') return k + 1;
  const bool word = is_word_char(text[static_cast<size_t>(k)]);
  while (k > 0 && text[static_cast<size_t>(k - 1)] != U'\n' && is_word_char(text[static_cast<size_t>(k - 1)]) == word) {
    --k;
  }
  return k + 1;
}

int ObjInputText::word_end_after(int position) const {
  const int length = static_cast<int>(text.size());
  int k = position - 1;  // 0-based index of the character behind the caret
  if (k >= length) return length + 1;
  if (text[static_cast<size_t>(k)] == U'\n') return k + 2;
  const bool word = is_word_char(text[static_cast<size_t>(k)]);
  ++k;
  while (k < length && text[static_cast<size_t>(k)] != U'\n' && is_word_char(text[static_cast<size_t>(k)]) == word) ++k;
  return k + 1;
}

void ObjInputText::move_horizontally(int key, bool ctrl) {
  const int p = caret();
  const int length = static_cast<int>(text.size());
  if (key == KEY_LEFT) cursor_position = ctrl ? word_start_before(p) : std::max(1, p - 1);
  else cursor_position = ctrl ? word_end_after(p) : std::min(length + 1, p + 1);
}

void ObjInputText::select_word() {
  int start = caret();
  while (start > 1 && is_word_char(text[static_cast<size_t>(start - 2)])) --start;
  int end = caret();
  while (end <= static_cast<int>(text.size()) && is_word_char(text[static_cast<size_t>(end - 1)])) ++end;
  selection_start = start;
  cursor_position = end;
}

bool ObjInputText::place_caret(bool fresh_click, bool by_pointer) {
  double px = 0, py = 0;
  pointer(px, py);
  if (selection_enabled && fresh_click) {
    const double now = rt::get_timer();
    const int p = caret();
    const bool double_click = enabled_step > 1 && !has_selection() && px == m_x_previous && py == m_y_previous &&
                              now - mouse_pressed_previous < double_click_time && p > 1 &&
                              is_word_char(text[static_cast<size_t>(p - 2)]);
    mouse_pressed_previous = now;
    m_x_previous = px;
    m_y_previous = py;
    if (double_click) return true;
  }
  if (!fresh_click) {
    m_x_previous = px;
    m_y_previous = py;
  }
  const bool ctrl = ::key_down(KEY_CONTROL);
  const double separation = line_separation > 0 ? line_separation : 1;
  const int page = static_cast<int>(std::floor(height / separation));
  int line = cursor_line;
  double target_x = cursor_offset_x;
  const int key = by_pointer ? 0 : key_pressed;
  // The text stands at the box's alignment point (origin_x, origin_y), as drawn.
  if (key == KEY_UP || key == KEY_DOWN) {
    const int step = key == KEY_UP ? -1 : 1;
    line += step;
    // With Ctrl, on to the first line of a paragraph.
    if (ctrl) {
      while (line > 0 && line < lines - 1 && text[static_cast<size_t>(new_line_list[static_cast<size_t>(line)] - 1)] != U'\n') {
        line += step;
      }
      target_x = 0;
    }
  } else if (key == KEY_PAGE_UP || key == KEY_PAGE_DOWN) {
    const int step = key == KEY_PAGE_UP ? -page : page;
    if (ctrl) {
      const int first_visible = static_cast<int>(std::ceil((-origin_y - offset_y - v_align_offset) / separation));
      line = key == KEY_PAGE_UP ? first_visible : first_visible + page - 1;
    } else {
      line += step;
      offset_y -= step * separation;
    }
  } else {
    line = static_cast<int>(std::floor((py - origin_y - offset_y - v_align_offset) / separation));
    target_x = px - origin_x - offset_x;
  }
  line = std::clamp(line, 0, lines - 1);
  const int start = new_line_list[static_cast<size_t>(line)];
  const int end = visible_end(line);
  const double line_width = width_of(start, end);
  if (h_align == 1) target_x += line_width / 2;
  if (h_align == 2) target_x += line_width;
  // The character boundary nearest to the target.
  int best = start;
  double best_distance = std::abs(target_x);
  for (int k = start + 1; k <= end; ++k) {
    const double distance = std::abs(width_of(start, k) - target_x);
    if (distance > best_distance) break;
    best = k;
    best_distance = distance;
  }
  cursor_position = best + 1;
  if (multiline && best == end && soft_wrapped(line)) cursor_position = -end;
  return false;
}
