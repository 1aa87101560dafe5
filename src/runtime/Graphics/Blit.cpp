#include "runtime/Graphics/Blit.h"

#include <cmath>
#include <numbers>

#include "runtime/Graphics/Batch.h"
#include "runtime/Graphics/DrawState.h"

void blit(const BlitSource& source, const BlitPlacement& p) {
  if (!source.texture || source.texture_width <= 0 || source.texture_height <= 0) return;
  const double radians = p.angle * std::numbers::pi / 180;
  const double c = std::cos(radians), s = std::sin(radians);
  const float u0 = static_cast<float>(source.left / source.texture_width);
  const float v0 = static_cast<float>(source.top / source.texture_height);
  const float u1 = static_cast<float>((source.left + source.width) / source.texture_width);
  const float v1 = static_cast<float>((source.top + source.height) / source.texture_height);
  const float z = draw_state().depth;
  // A corner of the part, relative to the origin, scaled and turned (y points down on the screen).
  const auto corner = [&](double px, double py, float u, float v) {
    const double dx = (px - p.xorigin) * p.xscale, dy = (py - p.yorigin) * p.yscale;
    return platform::Vertex{
        static_cast<float>(p.x + dx * c + dy * s), static_cast<float>(p.y - dx * s + dy * c), z, p.colour, u, v};
  };
  const platform::Vertex corners[4] = {corner(0, 0, u0, v0), corner(source.width, 0, u1, v0),
                                       corner(source.width, source.height, u1, v1), corner(0, source.height, u0, v1)};
  batch_quad(source.texture, corners);
}
