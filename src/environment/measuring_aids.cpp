#include "environment/measuring_aids.h"

#include <cmath>
#include <string>

#include "runtime/Font/TextLayout.h"
#include "runtime/Font/TextState.h"
#include "runtime/Graphics/DrawState.h"
#include "runtime/Graphics/Primitives.h"
#include "runtime/Graphics/TextDrawing.h"

namespace {

constexpr double PI = 3.14159265358979323846;
constexpr double LABEL_SCALE = 0.8;
constexpr double LABEL_MARGIN = 10;
constexpr double BOX_TOP_COLOUR = 0xFFFFFF, BOX_RIM_COLOUR = 14540253;
constexpr double FAN_CENTRE_COLOUR = 65535, FAN_RIM_COLOUR = 16768256, FAN_ALPHA = 0.5;
constexpr double CROSS_ARM = 50;

std::string rounded(double value) { return std::to_string(static_cast<long long>(std::llround(value))); }

// A line first 3 wide in black, then 1 wide in white on top: seen on any background.
void draw_marked_line(double x1, double y1, double x2, double y2) {
  draw_line_width_colour(x1, y1, x2, y2, 3, 0, 0);
  draw_line_width_colour(x1, y1, x2, y2, 1, 0xFFFFFF, 0xFFFFFF);
}

// `text` in black, centred at (`cx`, `cy`) in a rounded box white to grey
// that is as large as the text and a margin on each side.
void draw_label_box(double cx, double cy, const std::string& text) {
  const double half_width = string_width(text) * LABEL_SCALE / 2 + LABEL_MARGIN;
  const double half_height = string_height(text) * LABEL_SCALE / 2 + LABEL_MARGIN;
  draw_roundrect_colour(cx - half_width, cy - half_height, cx + half_width, cy + half_height, BOX_TOP_COLOUR,
                        BOX_RIM_COLOUR, false);
  const TextState saved = text_state();
  draw_set_halign(TEXT_ALIGN_CENTRE);
  draw_set_valign(TEXT_ALIGN_CENTRE);
  draw_state().colour = 0;
  draw_text_transformed(cx, cy, text, LABEL_SCALE, LABEL_SCALE, 0);
  draw_set_halign(saved.halign);
  draw_set_valign(saved.valign);
}

}  // namespace

void draw_rulers(double width, double height, double mx, double my) {
  draw_marked_line(0, my, width, my);
  draw_marked_line(mx, 0, mx, height);
  draw_label_box(mx / 2, my, "X: " + rounded(mx));
  draw_label_box(mx, my / 2, "Y: " + rounded(my));
}

void draw_protractor(double cx, double cy, double mx, double my) {
  const double radius = std::hypot(mx - cx, my - cy);
  const double towards_mouse = std::atan2(cy - my, mx - cx) * 180 / PI;
  const double angle = towards_mouse < 0 ? towards_mouse + 360 : towards_mouse;
  draw_primitive_begin(6);  // a fan
  draw_vertex_colour(cx, cy, FAN_CENTRE_COLOUR, FAN_ALPHA);
  // Whole degrees from 0, then the angle itself, so the fan ends on the radius line.
  for (double degree = 0;; degree = std::min(degree + 1, angle)) {
    const double a = degree * PI / 180;
    draw_vertex_colour(cx + radius * std::cos(a), cy - radius * std::sin(a), FAN_RIM_COLOUR, FAN_ALPHA);
    if (degree >= angle) break;
  }
  draw_primitive_end();
  draw_marked_line(cx - CROSS_ARM, cy, cx + CROSS_ARM, cy);
  draw_marked_line(cx, cy - CROSS_ARM, cx, cy + CROSS_ARM);
  draw_marked_line(cx, cy, mx, my);
  const std::string label = "Angolo: " + rounded(angle);
  draw_label_box(mx + string_width(label) * LABEL_SCALE / 2 + 2 * LABEL_MARGIN, my + 2 * LABEL_MARGIN, label);
}
