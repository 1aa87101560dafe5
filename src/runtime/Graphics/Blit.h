// Drawing part of a texture as a turned, scaled, tinted rectangle: what
// sprites and surfaces are drawn with.
#pragma once

#include <cstdint>

#include "runtime/Platform/Gpu.h"

struct BlitSource {
  platform::TextureId texture;
  double texture_width, texture_height;  // the texture's size in pixels
  double left, top, width, height;       // the part drawn, in texture pixels
};

struct BlitPlacement {
  double x, y;                      // where the origin lands
  double xorigin = 0, yorigin = 0;  // the origin, in pixels of the part
  double xscale = 1, yscale = 1;
  double angle = 0;              // degrees, counter-clockwise on the screen
  uint32_t colour = 0xFFFFFFFF;  // vertex colour word: the tint and alpha
};

void blit(const BlitSource& source, const BlitPlacement& placement);
