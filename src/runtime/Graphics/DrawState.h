// The draw state of the process: what every drawing call reads and the
// program sets, kept across frames.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

struct DrawState {
  uint32_t colour = 0xFFFFFF;  // blue-green-red
  double alpha = 1;
  // Points on a full circle, 4 to 64 in steps of 4, with its table of
  // circle_cos[k], circle_sin[k] for k from 0 to precision.
  int circle_precision = 24;
  std::vector<double> circle_cos, circle_sin;
  float depth = 0;  // z of every vertex, the depth of what is being drawn
  bool texture_filter = false;
  int blend_source = 5, blend_destination = 6;  // source alpha, one minus source alpha
  // World, view and projection: 16 numbers each, column-major.
  std::array<float, 16> world{}, view{}, projection{};
};

DrawState& draw_state();

// Sets the circle precision by the rule of the built-in: below 4 reads 4,
// above 64 reads 64, otherwise down to a multiple of 4; and makes its table.
void set_circle_precision(double n);
// The identity matrix.
std::array<float, 16> identity_matrix();
// The orthographic projection of a target `width` x `height` with y down.
std::array<float, 16> ortho_matrix(float width, float height);
// Hands projection x view x world to the graphics device (after a flush).
void apply_transform();
// Source and destination blend factors by number (after a flush).
void set_blend_mode(int source, int destination);
// Linear texture filtering or nearest pixels (after a flush).
void set_texture_filter(bool linear);
