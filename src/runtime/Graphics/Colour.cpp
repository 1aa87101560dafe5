#include "runtime/Graphics/Colour.h"

#include <algorithm>
#include <cmath>

#include "runtime/Code/Builtins.h"
#include "runtime/Code/Registration.h"
#include "runtime/Graphics/DrawState.h"

namespace {

uint32_t channel(double c) { return static_cast<uint32_t>(std::clamp(c, 0.0, 255.0)); }
uint32_t as_colour(double c) { return static_cast<uint32_t>(static_cast<int64_t>(c)) & 0xFFFFFF; }

}  // namespace

double make_colour_rgb(double red, double green, double blue) {
  return channel(red) | (channel(green) << 8) | (channel(blue) << 16);
}

double make_colour_hsv(double hue, double saturation, double value) {
  const double h = std::fmod(std::max(hue, 0.0), 255.0) / 255.0 * 6.0;
  const double s = std::clamp(saturation, 0.0, 255.0) / 255.0;
  const double v = std::clamp(value, 0.0, 255.0);
  const int sector = static_cast<int>(h) % 6;
  const double f = h - std::floor(h);
  const double p = v * (1 - s), q = v * (1 - s * f), t = v * (1 - s * (1 - f));
  switch (sector) {
    case 0:
      return make_colour_rgb(v, t, p);
    case 1:
      return make_colour_rgb(q, v, p);
    case 2:
      return make_colour_rgb(p, v, t);
    case 3:
      return make_colour_rgb(p, q, v);
    case 4:
      return make_colour_rgb(t, p, v);
    default:
      return make_colour_rgb(v, p, q);
  }
}

double merge_colour(double a, double b, double amount) {
  const uint32_t ca = as_colour(a), cb = as_colour(b);
  uint32_t out = 0;
  for (int shift = 0; shift <= 16; shift += 8) {
    const double x = (ca >> shift) & 0xFF, y = (cb >> shift) & 0xFF;
    out |= channel(x + (y - x) * amount) << shift;
  }
  return out;
}

double colour_get_red(double colour) { return as_colour(colour) & 0xFF; }
double colour_get_green(double colour) { return (as_colour(colour) >> 8) & 0xFF; }
double colour_get_blue(double colour) { return (as_colour(colour) >> 16) & 0xFF; }

uint32_t colour_word(double colour, double alpha) {
  const auto a = static_cast<uint32_t>(std::lround(std::clamp(alpha, 0.0, 1.0) * 255.0));
  return (a << 24) | as_colour(colour);
}

namespace {

BUILTIN_ADAPTER(make_colour_rgb) {
  result = RValue::number(make_colour_rgb(arg_real(args, 0), arg_real(args, 1), arg_real(args, 2)));
}
BUILTIN_ADAPTER(make_colour_hsv) {
  result = RValue::number(make_colour_hsv(arg_real(args, 0), arg_real(args, 1), arg_real(args, 2)));
}
BUILTIN_ADAPTER(merge_colour) {
  result = RValue::number(merge_colour(arg_real(args, 0), arg_real(args, 1), arg_real(args, 2)));
}
BUILTIN_ADAPTER(colour_get_red) { result = RValue::number(colour_get_red(arg_real(args, 0))); }
BUILTIN_ADAPTER(colour_get_green) { result = RValue::number(colour_get_green(arg_real(args, 0))); }
BUILTIN_ADAPTER(colour_get_blue) { result = RValue::number(colour_get_blue(arg_real(args, 0))); }
BUILTIN_ADAPTER(draw_set_colour) { draw_state().colour = as_colour(arg_real(args, 0)); }
BUILTIN_ADAPTER(draw_set_alpha) { draw_state().alpha = std::clamp(arg_real(args, 0), 0.0, 1.0); }
BUILTIN_ADAPTER(draw_get_colour) { result = RValue::number(draw_state().colour); }
BUILTIN_ADAPTER(draw_get_alpha) { result = RValue::number(draw_state().alpha); }

}  // namespace

void register_colour_builtins() {
  // Both spellings of "colour" are the same built-in.
  for (const char* spelling : {"colour", "color"}) {
    const std::string c = spelling;
    builtin_register(("make_" + c + "_rgb").c_str(), builtin_make_colour_rgb, 3);
    builtin_register(("make_" + c + "_hsv").c_str(), builtin_make_colour_hsv, 3);
    builtin_register(("merge_" + c).c_str(), builtin_merge_colour, 3);
    builtin_register((c + "_get_red").c_str(), builtin_colour_get_red, 1);
    builtin_register((c + "_get_green").c_str(), builtin_colour_get_green, 1);
    builtin_register((c + "_get_blue").c_str(), builtin_colour_get_blue, 1);
    builtin_register(("draw_set_" + c).c_str(), builtin_draw_set_colour, 1);
    builtin_register(("draw_get_" + c).c_str(), builtin_draw_get_colour, 0);
  }
  builtin_register("draw_set_alpha", builtin_draw_set_alpha, 1);
  builtin_register("draw_get_alpha", builtin_draw_get_alpha, 0);
}
