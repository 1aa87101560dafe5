// The shapes: points, lines, boxes, round boxes, circles, ellipses,
// triangles, and primitives that the program builds vertex by vertex. All
// take room coordinates and the current colour and alpha unless they name
// colours of their own; `outline` draws the edge instead of the area.
//
// A box (rectangle, round rectangle) sorts its corners and adds 0.01 to a
// whole-number right or bottom edge, so that it covers the pixels it names;
// points and lines sit on pixel centres.
#pragma once

#include <cstdint>

void draw_clear_alpha(double colour, double alpha);
void draw_point(double x, double y);
void draw_point_colour(double x, double y, double colour);
void draw_line(double x1, double y1, double x2, double y2);
void draw_line_colour(double x1, double y1, double x2, double y2, double colour1, double colour2);
// A quad `width` wide around the line.
void draw_line_width(double x1, double y1, double x2, double y2, double width);
void draw_line_width_colour(double x1, double y1, double x2, double y2, double width, double colour1, double colour2);
void draw_rectangle(double x1, double y1, double x2, double y2, bool outline);
// Colours of the corners: top left, top right, bottom right, bottom left.
void draw_rectangle_colour(double x1, double y1, double x2, double y2, double c1, double c2, double c3, double c4,
                           bool outline);
// Corners rounded with radii `rx`, `ry` (held to half the box); colour 1 at the centre, colour 2 at the rim.
void draw_roundrect_colour_ext(double x1, double y1, double x2, double y2, double rx, double ry, double colour1,
                               double colour2, bool outline);
void draw_roundrect_ext(double x1, double y1, double x2, double y2, double rx, double ry, bool outline);
void draw_roundrect(double x1, double y1, double x2, double y2, bool outline);
void draw_roundrect_colour(double x1, double y1, double x2, double y2, double colour1, double colour2, bool outline);
void draw_circle(double x, double y, double r, bool outline);
// Colour 1 at the centre, colour 2 at the rim.
void draw_circle_colour(double x, double y, double r, double colour1, double colour2, bool outline);
void draw_ellipse(double x1, double y1, double x2, double y2, bool outline);
void draw_ellipse_colour(double x1, double y1, double x2, double y2, double colour1, double colour2, bool outline);
void draw_triangle(double x1, double y1, double x2, double y2, double x3, double y3, bool outline);
void draw_triangle_colour(double x1, double y1, double x2, double y2, double x3, double y3, double c1, double c2,
                          double c3, bool outline);
// Points on a full circle: below 4 reads 4, above 64 reads 64, else down to a multiple of 4.
void draw_set_circle_precision(double n);

// A primitive of `kind` (1 points, 2 lines, 3 line strip, 4 triangles, 5
// triangle strip, 6 triangle fan) from the vertices given until
// draw_primitive_end; vertices after the 1001st are ignored.
void draw_primitive_begin(double kind);
void draw_vertex(double x, double y);
void draw_vertex_colour(double x, double y, double colour, double alpha);
void draw_primitive_end();

void register_primitive_builtins();
