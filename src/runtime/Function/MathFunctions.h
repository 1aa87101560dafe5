// The math built-ins: rounding, powers and logarithms, trigonometry in
// radians and degrees, the statistics over many arguments, and the angle and
// distance helpers of 2D movement.
//
// They live in namespace rt because their names are those of the C library.
// All of them work in doubles except angle_difference and point_distance,
// which work in single precision. The random built-ins are in Random.h.
#pragma once

#include <span>

#include "runtime/Code/RValue.h"

namespace rt {

// Rounding.
double floor(double x);  // the largest whole number not above x
double ceil(double x);   // the smallest whole number not below x
// The nearest whole number, exact halves to the even one (2.5 -> 2, 3.5 -> 4); infinities and NaN unchanged.
double round(double x);
double frac(double x);  // the fractional part with the sign of x (-2.75 -> -0.75)

// Powers and logarithms.
double sqr(double x);   // x * x
double sqrt(double x);  // the square root; fatal for a negative number or NaN
double exp(double x);   // e to the x
double ln(double x);    // the natural logarithm
double log2(double x);  // the logarithm in base 2
double log10(double x);              // the logarithm in base 10
double logn(double n, double x);     // the logarithm of x in base n
double power(double b, double e);    // b to the e

// Trigonometry in radians.
double sin(double r);  // sine
double cos(double r);  // cosine
double tan(double r);  // tangent
// The angle whose sine is x; x a hair outside [-1, 1] is taken as the bound, farther is fatal.
double arcsin(double x);
// The angle whose cosine is x; x a hair outside [-1, 1] is taken as the bound, farther is fatal.
double arccos(double x);
double arctan(double x);             // the angle whose tangent is x
double arctan2(double y, double x);  // the angle of the point (x, y), in (-pi, pi]

// Trigonometry in degrees.
double dsin(double d);                // sine of an angle in degrees
double dcos(double d);                // cosine of an angle in degrees
double dtan(double d);                // tangent of an angle in degrees
double darcsin(double x);             // arcsin in degrees
double darccos(double x);             // arccos in degrees
double darctan(double x);             // arctan in degrees
double darctan2(double y, double x);  // arctan2 in degrees
double radtodeg(double r);            // radians to degrees
double degtorad(double d);            // degrees to radians

// Ranges and statistics.
double clamp(double x, double lo, double hi);  // x held within [lo, hi]
double lerp(double a, double b, double t);     // the point at fraction t of the way from a to b
double mean(std::span<const double> values);   // the average; 0 for none
// The middle value after sorting, the upper one of the two middles for an even count; 0 for none.
double median(std::span<const double> values);
double abs(double x);   // the distance from 0
double sign(double x);  // -1, 0 or 1 by the sign of x
// The smallest value by number, returned as it is with its kind; the first of equals; the number 0 for none.
RValue min(std::span<const RValue> values);
// The largest value by number, returned as it is with its kind; the first of equals; the number 0 for none.
RValue max(std::span<const RValue> values);

// Angles and distances in the plane, where y grows downward.
// The signed turn from b to a, in [-180, 180).
double angle_difference(float a, float b);
double point_distance(float x1, float y1, float x2, float y2);  // the length of the segment
double lengthdir_x(double len, double dir);  // the x step of a move of len toward dir degrees
double lengthdir_y(double len, double dir);  // the y step of that move: up the screen for 90 degrees

// Microseconds since the process started, on the frame timer's clock.
double get_timer();

}  // namespace rt
