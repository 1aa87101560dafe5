#include "runtime/Graphics/Primitives.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "runtime/Graphics/Batch.h"
#include "runtime/Graphics/Colour.h"
#include "runtime/Graphics/DrawState.h"
#include "runtime/Graphics/Surfaces.h"

using platform::Primitive;
using platform::Vertex;

namespace {

// A point of a shape with its colour word.
struct Point {
  double x, y;
  uint32_t colour;
};

// Points and lines sit on pixel centres; areas on pixel edges.
constexpr double CENTRE = 0.5;

void put(Vertex& v, const Point& p, double shift = 0) {
  v = {static_cast<float>(p.x + shift), static_cast<float>(p.y + shift), draw_state().depth, p.colour, 0, 0};
}

uint32_t current_word() { return colour_word(draw_state().colour, draw_state().alpha); }
uint32_t word(double colour) { return colour_word(colour, draw_state().alpha); }

void emit_points(const Point* points, size_t count) {
  Vertex* v = batch_reserve(Primitive::Points, 0, count);
  for (size_t k = 0; k < count; ++k) put(v[k], points[k], CENTRE);
}

void emit_line(const Point& a, const Point& b) {
  Vertex* v = batch_reserve(Primitive::Lines, 0, 2);
  put(v[0], a, CENTRE);
  put(v[1], b, CENTRE);
}

// A line strip as a list of lines.
void emit_strip(const Point* points, size_t count) {
  if (count < 2) return;
  Vertex* v = batch_reserve(Primitive::Lines, 0, 2 * (count - 1));
  for (size_t k = 0; k + 1 < count; ++k) {
    put(v[2 * k], points[k], CENTRE);
    put(v[2 * k + 1], points[k + 1], CENTRE);
  }
}

void emit_fan(const Point* points, size_t count) {
  Vertex* v = batch_reserve_fan(0, count);
  if (!v) return;
  for (size_t k = 0; k < count; ++k) put(v[k], points[k]);
}

// A triangle strip as a list of triangles.
void emit_triangle_strip(const Point* points, size_t count) {
  if (count < 3) return;
  Vertex* v = batch_reserve(Primitive::Triangles, 0, 3 * (count - 2));
  for (size_t k = 0; k + 2 < count; ++k) {
    for (size_t c = 0; c < 3; ++c) put(v[3 * k + c], points[k + c]);
  }
}

// Scratch for the shapes with many points; shapes are drawn one at a time.
std::vector<Point>& scratch() {
  static std::vector<Point> points;
  points.clear();
  return points;
}

// Sorts a box's corners and moves a whole right or bottom edge into the pixel it names.
void box(double& x1, double& y1, double& x2, double& y2) {
  if (x2 < x1) std::swap(x1, x2);
  if (y2 < y1) std::swap(y1, y2);
  if (x2 == std::floor(x2)) x2 += 0.01;
  if (y2 == std::floor(y2)) y2 += 0.01;
}

// A filled ellipse as one quad that holds the polygon of the circle table,
// stretched to the radii: the device covers what the fan from its centre
// would. The quad reaches a unit beyond the polygon on every side, so that
// no pixel on its rim is lost.
void emit_polygon_quad(double cx, double cy, double rx, double ry, uint32_t centre, uint32_t rim) {
  Vertex* v = batch_reserve_fan(0, 4);
  const float sides = static_cast<float>(draw_state().circle_precision);
  const double reach_x = 1 + 1 / rx, reach_y = 1 + 1 / ry;
  const double corners[4][2] = {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}};
  for (size_t k = 0; k < 4; ++k) {
    const double u = corners[k][0] * reach_x, w = corners[k][1] * reach_y;
    v[k] = {static_cast<float>(cx + rx * u), static_cast<float>(cy + ry * w), draw_state().depth, rim,
            static_cast<float>(u),           static_cast<float>(w),           centre,             sides};
  }
}

void ellipse(double x1, double y1, double x2, double y2, uint32_t centre, uint32_t rim, bool outline) {
  if (x2 < x1) std::swap(x1, x2);
  if (y2 < y1) std::swap(y1, y2);
  const double cx = (x1 + x2) / 2, cy = (y1 + y2) / 2, rx = (x2 - x1) / 2, ry = (y2 - y1) / 2;
  if (!outline && rx > 0 && ry > 0) return emit_polygon_quad(cx, cy, rx, ry, centre, rim);
  const DrawState& s = draw_state();
  std::vector<Point>& p = scratch();
  if (!outline) p.push_back({cx, cy, centre});
  for (int k = 0; k <= s.circle_precision; ++k) {
    p.push_back({cx + rx * s.circle_cos[static_cast<size_t>(k)], cy + ry * s.circle_sin[static_cast<size_t>(k)], rim});
  }
  if (outline)
    emit_strip(p.data(), p.size());
  else
    emit_fan(p.data(), p.size());
}

void roundrect(double x1, double y1, double x2, double y2, double rx, double ry, uint32_t centre, uint32_t rim,
               bool outline) {
  box(x1, y1, x2, y2);
  rx = std::clamp(rx, 0.0, (x2 - x1) / 2);
  ry = std::clamp(ry, 0.0, (y2 - y1) / 2);
  const DrawState& s = draw_state();
  const int quarter = s.circle_precision / 4;
  // The corners' centres, going round from the bottom right as the angles do (y points down).
  const double corner_x[] = {x2 - rx, x1 + rx, x1 + rx, x2 - rx};
  const double corner_y[] = {y2 - ry, y2 - ry, y1 + ry, y1 + ry};
  std::vector<Point>& p = scratch();
  if (!outline) p.push_back({(x1 + x2) / 2, (y1 + y2) / 2, centre});
  for (int corner = 0; corner < 4; ++corner) {
    for (int k = 0; k <= quarter; ++k) {
      const auto at = static_cast<size_t>(corner * quarter + k);
      p.push_back({corner_x[corner] + rx * s.circle_cos[at], corner_y[corner] + ry * s.circle_sin[at], rim});
    }
  }
  const Point first_on_rim = p[outline ? 0 : 1];
  p.push_back(first_on_rim);  // closes the rim
  if (outline)
    emit_strip(p.data(), p.size());
  else
    emit_fan(p.data(), p.size());
}

// The primitive that the program is building.
struct OpenPrimitive {
  int kind = 0;
  std::vector<Point> points;
};
OpenPrimitive& open_primitive() {
  static OpenPrimitive open;
  return open;
}
constexpr size_t PRIMITIVE_VERTEX_LIMIT = 1001;

}  // namespace

void draw_clear_alpha(double colour, double alpha) {
  batch_flush();
  const auto c = static_cast<uint32_t>(static_cast<int64_t>(colour));
  platform::gpu().clear((c & 0xFF) / 255.0f, ((c >> 8) & 0xFF) / 255.0f, ((c >> 16) & 0xFF) / 255.0f,
                        static_cast<float>(std::clamp(alpha, 0.0, 1.0)));
  note_target_cleared(c, alpha);
}

void draw_point(double x, double y) { draw_point_colour(x, y, draw_state().colour); }

void draw_point_colour(double x, double y, double colour) {
  const Point p{x, y, word(colour)};
  emit_points(&p, 1);
}

void draw_line(double x1, double y1, double x2, double y2) {
  draw_line_colour(x1, y1, x2, y2, draw_state().colour, draw_state().colour);
}

void draw_line_colour(double x1, double y1, double x2, double y2, double colour1, double colour2) {
  emit_line({x1, y1, word(colour1)}, {x2, y2, word(colour2)});
}

void draw_line_width(double x1, double y1, double x2, double y2, double width) {
  draw_line_width_colour(x1, y1, x2, y2, width, draw_state().colour, draw_state().colour);
}

void draw_line_width_colour(double x1, double y1, double x2, double y2, double width, double colour1, double colour2) {
  const double length = std::hypot(x2 - x1, y2 - y1);
  // A line of no length still shows as a square of its width.
  const double dx = length > 0 ? (x2 - x1) / length : 1, dy = length > 0 ? (y2 - y1) / length : 0;
  const double nx = -dy * width / 2, ny = dx * width / 2;
  const uint32_t a = word(colour1), b = word(colour2);
  const Point quad[] = {{x1 + nx, y1 + ny, a}, {x2 + nx, y2 + ny, b}, {x2 - nx, y2 - ny, b}, {x1 - nx, y1 - ny, a}};
  emit_fan(quad, 4);
}

void draw_rectangle(double x1, double y1, double x2, double y2, bool outline) {
  const double c = draw_state().colour;
  draw_rectangle_colour(x1, y1, x2, y2, c, c, c, c, outline);
}

void draw_rectangle_colour(double x1, double y1, double x2, double y2, double c1, double c2, double c3, double c4,
                           bool outline) {
  box(x1, y1, x2, y2);
  const Point corners[] = {
      {x1, y1, word(c1)}, {x2, y1, word(c2)}, {x2, y2, word(c3)}, {x1, y2, word(c4)}, {x1, y1, word(c1)}};
  if (!outline) return emit_fan(corners, 4);
  // The strip leaves each line's last pixel; the corner points fill them.
  emit_strip(corners, 5);
  emit_points(corners, 4);
}

void draw_roundrect_colour_ext(double x1, double y1, double x2, double y2, double rx, double ry, double colour1,
                               double colour2, bool outline) {
  roundrect(x1, y1, x2, y2, rx, ry, word(colour1), word(colour2), outline);
}

void draw_roundrect_ext(double x1, double y1, double x2, double y2, double rx, double ry, bool outline) {
  roundrect(x1, y1, x2, y2, rx, ry, current_word(), current_word(), outline);
}

// The short forms have corners of radius 10.
void draw_roundrect(double x1, double y1, double x2, double y2, bool outline) {
  draw_roundrect_ext(x1, y1, x2, y2, 10, 10, outline);
}

void draw_roundrect_colour(double x1, double y1, double x2, double y2, double colour1, double colour2, bool outline) {
  draw_roundrect_colour_ext(x1, y1, x2, y2, 10, 10, colour1, colour2, outline);
}

void draw_circle(double x, double y, double r, bool outline) {
  ellipse(x - r, y - r, x + r, y + r, current_word(), current_word(), outline);
}

void draw_circle_colour(double x, double y, double r, double colour1, double colour2, bool outline) {
  ellipse(x - r, y - r, x + r, y + r, word(colour1), word(colour2), outline);
}

void draw_ellipse(double x1, double y1, double x2, double y2, bool outline) {
  ellipse(x1, y1, x2, y2, current_word(), current_word(), outline);
}

void draw_ellipse_colour(double x1, double y1, double x2, double y2, double colour1, double colour2, bool outline) {
  ellipse(x1, y1, x2, y2, word(colour1), word(colour2), outline);
}

void draw_triangle(double x1, double y1, double x2, double y2, double x3, double y3, bool outline) {
  const double c = draw_state().colour;
  draw_triangle_colour(x1, y1, x2, y2, x3, y3, c, c, c, outline);
}

void draw_triangle_colour(double x1, double y1, double x2, double y2, double x3, double y3, double c1, double c2,
                          double c3, bool outline) {
  const Point corners[] = {{x1, y1, word(c1)}, {x2, y2, word(c2)}, {x3, y3, word(c3)}, {x1, y1, word(c1)}};
  if (outline)
    emit_strip(corners, 4);
  else
    emit_fan(corners, 3);
}

void draw_set_circle_precision(double n) { set_circle_precision(n); }

void draw_primitive_begin(double kind) {
  OpenPrimitive& open = open_primitive();
  open.kind = static_cast<int>(kind);
  open.points.clear();
}

void draw_vertex(double x, double y) { draw_vertex_colour(x, y, draw_state().colour, draw_state().alpha); }

void draw_vertex_colour(double x, double y, double colour, double alpha) {
  OpenPrimitive& open = open_primitive();
  if (open.points.size() < PRIMITIVE_VERTEX_LIMIT) open.points.push_back({x, y, colour_word(colour, alpha)});
}

void draw_primitive_end() {
  OpenPrimitive& open = open_primitive();
  const std::vector<Point>& p = open.points;
  switch (open.kind) {
    case 1:
      emit_points(p.data(), p.size());
      break;
    case 2:
      for (size_t k = 0; k + 1 < p.size(); k += 2) emit_line(p[k], p[k + 1]);
      break;
    case 3:
      emit_strip(p.data(), p.size());
      break;
    case 4:
      for (size_t k = 0; k + 2 < p.size(); k += 3) emit_fan(&p[k], 3);
      break;
    case 5:
      emit_triangle_strip(p.data(), p.size());
      break;
    case 6:
      emit_fan(p.data(), p.size());
      break;
    default:
      break;  // an unknown kind draws nothing
  }
  open.points.clear();
}
