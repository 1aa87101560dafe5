// Colours are whole numbers with red in the low byte, then green, then
// blue (65535 is yellow); alpha is kept apart as a number from 0 to 1.
#pragma once

#include <cstdint>

double make_colour_rgb(double red, double green, double blue);
// Hue, saturation and value, each from 0 to 255.
double make_colour_hsv(double hue, double saturation, double value);
// `a` and `b` mixed channel by channel: all of `a` at 0, all of `b` at 1.
double merge_colour(double a, double b, double amount);
double colour_get_red(double colour);
double colour_get_green(double colour);
double colour_get_blue(double colour);
// The colour word of a vertex: alpha as a byte (rounded) on top of the colour.
uint32_t colour_word(double colour, double alpha);

void register_colour_builtins();
