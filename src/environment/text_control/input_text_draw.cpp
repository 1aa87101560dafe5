// Drawing obj_input_text: the text and the selection on two surfaces,
// redrawn only when something changed, then shown through the selection
// pass; the caret last.
#include <algorithm>
#include <cmath>

#include "environment/text_control/input_text.h"
#include "runtime/Font/TextState.h"
#include "runtime/Graphics/DrawState.h"
#include "runtime/Graphics/Primitives.h"
#include "runtime/Graphics/Surfaces.h"
#include "runtime/Graphics/TextDrawing.h"
#include "runtime/IO/Input.h"

namespace {

constexpr double CARET_WIDTH = 2;
constexpr int BLEND_ZERO = 1, BLEND_ONE = 2;

// The draw state the widget changes, put back when it is done.
class SavedDrawState {
 public:
  SavedDrawState() : text_(text_state()), colour_(draw_state().colour), alpha_(draw_state().alpha) {
    blend_[0] = draw_state().blend_source;
    blend_[1] = draw_state().blend_destination;
  }
  ~SavedDrawState() {
    draw_set_font(text_.font);
    draw_set_halign(text_.halign);
    draw_set_valign(text_.valign);
    draw_state().colour = colour_;
    draw_state().alpha = alpha_;
    set_blend_mode(blend_[0], blend_[1]);
  }

 private:
  TextState text_;
  uint32_t colour_;
  double alpha_;
  int blend_[2];
};

bool ensure_surface(int32_t& surface, double width, double height) {
  if (surface_exists(surface)) return false;
  surface = surface_create(std::max(1.0, width), std::max(1.0, height));
  return true;
}

}  // namespace

std::vector<std::string> lines_of(const std::string& text) {
  std::vector<std::string> lines;
  size_t from = 0;
  for (size_t feed; (feed = text.find('\n', from)) != std::string::npos; from = feed + 1) {
    lines.push_back(text.substr(from, feed - from));
  }
  lines.push_back(text.substr(from));
  return lines;
}

void ObjInputText::draw_text_lines(bool lost, double left, double top) {
  std::vector<std::string> lines = lines_of(text_draw);
  std::vector<std::string> now = lines;
  if (painter) painter->prepare(*this, now);
  // Typing changes a line or two: where the text stands as it did, only the lines that changed are drawn again.
  size_t first = 0, last_old = drawn_lines_.size(), last_new = now.size();
  const bool same_place = !lost && left == drawn_left_ && top == drawn_top_ && !drawn_lines_.empty();
  if (same_place) {
    while (first < last_old && first < last_new && drawn_lines_[first] == now[first]) ++first;
    while (last_old > first && last_new > first && drawn_lines_[last_old - 1] == now[last_new - 1] &&
           last_old == last_new) {
      --last_old;
      --last_new;
    }
    const double from_y = top + static_cast<double>(first) * line_separation;
    const double to_y = top + static_cast<double>(std::max(last_old, last_new)) * line_separation;
    if (to_y > from_y) {
      draw_state().alpha = 0;
      draw_rectangle(0, from_y, width + eoln_width, to_y - 1, false);
    }
  } else {
    draw_clear_alpha(0, 0);
    first = 0;
    last_new = now.size();
  }
  draw_state().colour = color;
  draw_state().alpha = alpha;
  for (size_t line = first; line < last_new; ++line) {
    const double line_top = top + static_cast<double>(line) * line_separation;
    // A painter may have blended its marks: the plain text is written as it is again.
    set_blend_mode(BLEND_ONE, BLEND_ZERO);
    if (!lines[line].empty()) draw_text(left, line_top, lines[line]);
    if (painter) painter->paint(*this, line, left, line_top);
  }
  drawn_lines_ = std::move(now);
  drawn_left_ = left;
  drawn_top_ = top;
}

bool ObjInputText::draw_surfaces() {
  const bool lost = ensure_surface(sf_main, width + eoln_width, height) |
                    ensure_surface(sf_selection, width + eoln_width, height);
  // Until the graphics device is ready there is nowhere to draw: the next frame tries again.
  if (!surface_exists(sf_main) || !surface_exists(sf_selection)) return false;
  if (!update_surfaces && !lost) return true;
  update_surfaces = false;
  const SavedDrawState saved;
  const double text_top = origin_y + v_align_offset;

  surface_set_target(sf_main);
  // Each text pixel is written as it is, alpha included, for the pass that shows the surface.
  set_blend_mode(BLEND_ONE, BLEND_ZERO);
  draw_set_font(font);
  draw_set_halign(h_align);
  draw_set_valign(0);
  draw_text_lines(lost, origin_x + offset_x, text_top + offset_y);
  surface_reset_target();

  // A selection surface left clear stays so until there is a selection to draw.
  if (!has_selection() && !selection_drawn_ && !lost) return true;
  selection_drawn_ = has_selection();
  surface_set_target(sf_selection);
  draw_clear_alpha(0, 0);
  if (has_selection()) {
    draw_state().colour = 0xFFFFFF;
    draw_state().alpha = 1;
    const int from = selection_start_ordered - 1, to = selection_end_ordered - 1;  // 0-based [from, to)
    for (int line = selection_start_line_ordered; line <= selection_end_line_ordered && line < lines; ++line) {
      const int start = new_line_list[static_cast<size_t>(line)], end = visible_end(line);
      const double shift = h_align == 1 ? -width_of(start, end) / 2 : h_align == 2 ? -width_of(start, end) : 0;
      const double left = origin_x + offset_x + shift + width_of(start, std::max(from, start));
      double right = origin_x + offset_x + shift + width_of(start, std::min(to, end));
      // A selected line end shows as a little more.
      if (end < to && end < static_cast<int>(text.size()) && text[static_cast<size_t>(end)] == U'\n') right += eoln_width;
      const double top = text_top + offset_y + line * line_separation;
      draw_rectangle(left, top, right - 1, top + line_separation - 1, false);
    }
  }
  surface_reset_target();
  return true;
}

void ObjInputText::draw_widget() {
  if (!draw_surfaces()) return;
  const double sx = global_scale_x * local_scale_x, sy = global_scale_y * local_scale_y;
  if (!has_selection() && sx == 1 && sy == 1 && image_angle == 0 && h_align == 0 && v_align == 0) {
    // Nothing selected, nothing turned or scaled: the part of the text surface that holds text, alone.
    const double used_width = std::clamp(offset_x + text_width + eoln_width, 0.0, width + eoln_width);
    const double used_height = std::clamp(offset_y + text_height, 0.0, height);
    if (used_width > 0 && used_height > 0) draw_surface_part(sf_main, 0, 0, used_width, used_height, x, y);
  } else if (!has_selection()) {
    draw_surface_ext(sf_main, x, y, sx, sy, image_angle, 0xFFFFFF, 1);
  } else if (shaders) {
    draw_surface_selected(sf_main, sf_selection, x, y, sx, sy, image_angle,
                          {static_cast<double>(selection_color_text), selection_alpha_text,
                           static_cast<double>(selection_color_background), selection_alpha_background});
  } else {
    draw_surface_ext(sf_selection, x, y, sx, sy, image_angle, selection_color_background, selection_alpha_background);
    draw_surface_ext(sf_main, x, y, sx, sy, image_angle, 0xFFFFFF, 1);
  }
  if (painter) painter->paint_over(*this);
  if (!enabled || has_selection() || mouse_button_down(MOUSE_RIGHT)) return;
  double shown = cursor_timer > 0 ? 1 : 0;
  if (cursor_style != 0) {
    const double ratio = std::clamp(cursor_timer / cursor_time, -1.0, 1.0);
    shown = cursor_style == 1 ? std::max(0.0, ratio) * std::max(0.0, ratio) : ratio * ratio;
  }
  if (shown <= 0) return;
  const double cx = (origin_x + cursor_offset_x + offset_x) * sx, cy = (origin_y + cursor_offset_y + offset_y) * sy;
  const double angle = -image_angle * M_PI / 180;
  const double px = x + cx * std::cos(angle) - cy * std::sin(angle);
  const double py = y + cx * std::sin(angle) + cy * std::cos(angle);
  const SavedDrawState saved;
  draw_state().colour = color;
  draw_state().alpha = alpha * shown;
  draw_rectangle(px, py, px + CARET_WIDTH * sx - 1, py + char_height * sy - 1, false);
}

void ObjInputText::draw() {
  if (!draw_end) draw_widget();
}

void ObjInputText::draw_at_end() {
  if (draw_end) draw_widget();
}

void ObjInputText::destroy() {
  if (surface_exists(sf_main)) surface_free(sf_main);
  if (surface_exists(sf_selection)) surface_free(sf_selection);
  sf_main = sf_selection = -1;
}
