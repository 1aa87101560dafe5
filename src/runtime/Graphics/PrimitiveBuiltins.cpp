// The shapes by name, for calls from scripts and the families.
#include "runtime/Code/Builtins.h"
#include "runtime/Code/Registration.h"
#include "runtime/Graphics/Primitives.h"

namespace {

BUILTIN_ADAPTER(draw_clear_alpha) { draw_clear_alpha(arg_real(args, 0), arg_real(args, 1)); }
BUILTIN_ADAPTER(draw_point) { draw_point(arg_real(args, 0), arg_real(args, 1)); }
BUILTIN_ADAPTER(draw_point_colour) { draw_point_colour(arg_real(args, 0), arg_real(args, 1), arg_real(args, 2)); }
BUILTIN_ADAPTER(draw_line) { draw_line(arg_real(args, 0), arg_real(args, 1), arg_real(args, 2), arg_real(args, 3)); }
BUILTIN_ADAPTER(draw_line_colour) {
  draw_line_colour(arg_real(args, 0), arg_real(args, 1), arg_real(args, 2), arg_real(args, 3), arg_real(args, 4),
                   arg_real(args, 5));
}
BUILTIN_ADAPTER(draw_line_width) {
  draw_line_width(arg_real(args, 0), arg_real(args, 1), arg_real(args, 2), arg_real(args, 3), arg_real(args, 4));
}
BUILTIN_ADAPTER(draw_line_width_colour) {
  draw_line_width_colour(arg_real(args, 0), arg_real(args, 1), arg_real(args, 2), arg_real(args, 3), arg_real(args, 4),
                         arg_real(args, 5), arg_real(args, 6));
}
BUILTIN_ADAPTER(draw_rectangle) {
  draw_rectangle(arg_real(args, 0), arg_real(args, 1), arg_real(args, 2), arg_real(args, 3), arg_bool(args, 4));
}
BUILTIN_ADAPTER(draw_rectangle_colour) {
  draw_rectangle_colour(arg_real(args, 0), arg_real(args, 1), arg_real(args, 2), arg_real(args, 3), arg_real(args, 4),
                        arg_real(args, 5), arg_real(args, 6), arg_real(args, 7), arg_bool(args, 8));
}
BUILTIN_ADAPTER(draw_roundrect) {
  draw_roundrect(arg_real(args, 0), arg_real(args, 1), arg_real(args, 2), arg_real(args, 3), arg_bool(args, 4));
}
BUILTIN_ADAPTER(draw_roundrect_colour) {
  draw_roundrect_colour(arg_real(args, 0), arg_real(args, 1), arg_real(args, 2), arg_real(args, 3), arg_real(args, 4),
                        arg_real(args, 5), arg_bool(args, 6));
}
BUILTIN_ADAPTER(draw_roundrect_ext) {
  draw_roundrect_ext(arg_real(args, 0), arg_real(args, 1), arg_real(args, 2), arg_real(args, 3), arg_real(args, 4),
                     arg_real(args, 5), arg_bool(args, 6));
}
BUILTIN_ADAPTER(draw_roundrect_colour_ext) {
  draw_roundrect_colour_ext(arg_real(args, 0), arg_real(args, 1), arg_real(args, 2), arg_real(args, 3),
                            arg_real(args, 4), arg_real(args, 5), arg_real(args, 6), arg_real(args, 7),
                            arg_bool(args, 8));
}
BUILTIN_ADAPTER(draw_circle) {
  draw_circle(arg_real(args, 0), arg_real(args, 1), arg_real(args, 2), arg_bool(args, 3));
}
BUILTIN_ADAPTER(draw_circle_colour) {
  draw_circle_colour(arg_real(args, 0), arg_real(args, 1), arg_real(args, 2), arg_real(args, 3), arg_real(args, 4),
                     arg_bool(args, 5));
}
BUILTIN_ADAPTER(draw_ellipse) {
  draw_ellipse(arg_real(args, 0), arg_real(args, 1), arg_real(args, 2), arg_real(args, 3), arg_bool(args, 4));
}
BUILTIN_ADAPTER(draw_ellipse_colour) {
  draw_ellipse_colour(arg_real(args, 0), arg_real(args, 1), arg_real(args, 2), arg_real(args, 3), arg_real(args, 4),
                      arg_real(args, 5), arg_bool(args, 6));
}
BUILTIN_ADAPTER(draw_triangle) {
  draw_triangle(arg_real(args, 0), arg_real(args, 1), arg_real(args, 2), arg_real(args, 3), arg_real(args, 4),
                arg_real(args, 5), arg_bool(args, 6));
}
BUILTIN_ADAPTER(draw_triangle_colour) {
  draw_triangle_colour(arg_real(args, 0), arg_real(args, 1), arg_real(args, 2), arg_real(args, 3), arg_real(args, 4),
                       arg_real(args, 5), arg_real(args, 6), arg_real(args, 7), arg_real(args, 8), arg_bool(args, 9));
}
BUILTIN_ADAPTER(draw_set_circle_precision) { draw_set_circle_precision(arg_real(args, 0)); }
BUILTIN_ADAPTER(draw_primitive_begin) { draw_primitive_begin(arg_real(args, 0)); }
BUILTIN_ADAPTER(draw_vertex) { draw_vertex(arg_real(args, 0), arg_real(args, 1)); }
BUILTIN_ADAPTER(draw_vertex_colour) {
  draw_vertex_colour(arg_real(args, 0), arg_real(args, 1), arg_real(args, 2), arg_real(args, 3));
}
BUILTIN_ADAPTER(draw_primitive_end) { draw_primitive_end(); }

}  // namespace

void register_primitive_builtins() {
  builtin_register("draw_clear_alpha", builtin_draw_clear_alpha, 2);
  builtin_register("draw_point", builtin_draw_point, 2);
  builtin_register("draw_point_colour", builtin_draw_point_colour, 3);
  builtin_register("draw_point_color", builtin_draw_point_colour, 3);
  builtin_register("draw_line", builtin_draw_line, 4);
  builtin_register("draw_line_colour", builtin_draw_line_colour, 6);
  builtin_register("draw_line_color", builtin_draw_line_colour, 6);
  builtin_register("draw_line_width", builtin_draw_line_width, 5);
  builtin_register("draw_line_width_colour", builtin_draw_line_width_colour, 7);
  builtin_register("draw_line_width_color", builtin_draw_line_width_colour, 7);
  builtin_register("draw_rectangle", builtin_draw_rectangle, 5);
  builtin_register("draw_rectangle_colour", builtin_draw_rectangle_colour, 9);
  builtin_register("draw_rectangle_color", builtin_draw_rectangle_colour, 9);
  builtin_register("draw_roundrect", builtin_draw_roundrect, 5);
  builtin_register("draw_roundrect_colour", builtin_draw_roundrect_colour, 7);
  builtin_register("draw_roundrect_color", builtin_draw_roundrect_colour, 7);
  builtin_register("draw_roundrect_ext", builtin_draw_roundrect_ext, 7);
  builtin_register("draw_roundrect_colour_ext", builtin_draw_roundrect_colour_ext, 9);
  builtin_register("draw_roundrect_color_ext", builtin_draw_roundrect_colour_ext, 9);
  builtin_register("draw_circle", builtin_draw_circle, 4);
  builtin_register("draw_circle_colour", builtin_draw_circle_colour, 6);
  builtin_register("draw_circle_color", builtin_draw_circle_colour, 6);
  builtin_register("draw_ellipse", builtin_draw_ellipse, 5);
  builtin_register("draw_ellipse_colour", builtin_draw_ellipse_colour, 7);
  builtin_register("draw_ellipse_color", builtin_draw_ellipse_colour, 7);
  builtin_register("draw_triangle", builtin_draw_triangle, 7);
  builtin_register("draw_triangle_colour", builtin_draw_triangle_colour, 10);
  builtin_register("draw_triangle_color", builtin_draw_triangle_colour, 10);
  builtin_register("draw_set_circle_precision", builtin_draw_set_circle_precision, 1);
  builtin_register("draw_primitive_begin", builtin_draw_primitive_begin, 1);
  builtin_register("draw_vertex", builtin_draw_vertex, 2);
  builtin_register("draw_vertex_colour", builtin_draw_vertex_colour, 4);
  builtin_register("draw_vertex_color", builtin_draw_vertex_colour, 4);
  builtin_register("draw_primitive_end", builtin_draw_primitive_end, 0);
}
