// Text on the screen: the glyphs that the font module lays out, drawn as
// textured quads from the glyph pages, in the current colour and alpha or
// with a colour at each corner of the text's box.
#pragma once

#include <string_view>

void draw_text(double x, double y, std::string_view text);
// With line separation and wrap width (-1 for the defaults).
void draw_text_ext(double x, double y, std::string_view text, double separation, double width);
// Scaled and turned by `angle` degrees counter-clockwise about (x, y).
void draw_text_transformed(double x, double y, std::string_view text, double xscale, double yscale, double angle);
void draw_text_ext_transformed(double x, double y, std::string_view text, double separation, double width,
                               double xscale, double yscale, double angle);
// Colours c1 to c4 at the top left, top right, bottom right and bottom left of the text's box.
void draw_text_colour(double x, double y, std::string_view text, double c1, double c2, double c3, double c4,
                      double alpha);
void draw_text_ext_colour(double x, double y, std::string_view text, double separation, double width, double c1,
                          double c2, double c3, double c4, double alpha);
void draw_text_transformed_colour(double x, double y, std::string_view text, double xscale, double yscale,
                                  double angle, double c1, double c2, double c3, double c4, double alpha);

void register_text_drawing_builtins();
