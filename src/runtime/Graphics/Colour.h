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

// Colours named in more than one place, by the language's names for them.
inline constexpr double COLOUR_WHITE = 16777215;      // bianco
inline constexpr double COLOUR_LIGHT_GREY = 12632256; // grigio chiaro
inline constexpr double COLOUR_DARK_GREY = 4210752;   // grigio scuro
inline constexpr double COLOUR_OLIVE = 32896;         // verde oliva
inline constexpr double COLOUR_DARK_GREEN = 32768;    // verde scuro
inline constexpr double COLOUR_RED = 255;             // rosso
