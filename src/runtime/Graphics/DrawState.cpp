#include "runtime/Graphics/DrawState.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "runtime/Graphics/Batch.h"
#include "runtime/Platform/Gpu.h"

namespace {

void make_circle_table(DrawState& s, double n) {
  const int precision = n < 4 ? 4 : n > 64 ? 64 : static_cast<int>(n) / 4 * 4;
  s.circle_precision = precision;
  s.circle_cos.resize(static_cast<size_t>(precision) + 1);
  s.circle_sin.resize(static_cast<size_t>(precision) + 1);
  for (int k = 0; k <= precision; ++k) {
    const double angle = 2 * std::numbers::pi * k / precision;
    s.circle_cos[static_cast<size_t>(k)] = std::cos(angle);
    s.circle_sin[static_cast<size_t>(k)] = std::sin(angle);
  }
}

}  // namespace

DrawState& draw_state() {
  static DrawState state = [] {
    DrawState s;
    s.world = s.view = s.projection = identity_matrix();
    make_circle_table(s, s.circle_precision);
    return s;
  }();
  return state;
}

void set_circle_precision(double n) { make_circle_table(draw_state(), n); }

std::array<float, 16> identity_matrix() { return {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}; }

std::array<float, 16> ortho_matrix(float width, float height) {
  // z from -32000 to 32000 stays inside the view whatever the depth.
  std::array<float, 16> m{};
  m[0] = 2 / std::max(width, 1.0f);
  m[5] = -2 / std::max(height, 1.0f);
  m[10] = 1 / 32000.0f;
  m[12] = -1;
  m[13] = 1;
  m[15] = 1;
  return m;
}

namespace {

std::array<float, 16> multiply(const std::array<float, 16>& a, const std::array<float, 16>& b) {
  std::array<float, 16> out{};
  for (int column = 0; column < 4; ++column) {
    for (int row = 0; row < 4; ++row) {
      float sum = 0;
      for (int k = 0; k < 4; ++k) sum += a[k * 4 + row] * b[column * 4 + k];
      out[column * 4 + row] = sum;
    }
  }
  return out;
}

}  // namespace

void apply_transform() {
  batch_flush();
  const DrawState& s = draw_state();
  const std::array<float, 16> m = multiply(s.projection, multiply(s.view, s.world));
  float matrix[16];
  std::copy(m.begin(), m.end(), matrix);
  platform::gpu().set_transform(matrix);
}

void set_blend_mode(int source, int destination) {
  batch_set_blend(source, destination);
  draw_state().blend_source = source;
  draw_state().blend_destination = destination;
  platform::gpu().set_blend(source, destination);
}

void set_texture_filter(bool linear) {
  batch_flush();
  draw_state().texture_filter = linear;
  platform::gpu().set_filter(linear);
}
