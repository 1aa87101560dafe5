#include "runtime/Graphics/Batch.h"

#include <algorithm>
#include <memory>

namespace {

// The open batch. Its storage grows and is never cleared: callers write
// every field of the vertices they reserve, so nothing is zeroed first.
struct Batch {
  platform::Primitive type = platform::Primitive::Triangles;
  platform::TextureId texture = 0;
  std::unique_ptr<platform::Vertex[]> vertices;
  size_t size = 0, capacity = 0;
};

Batch& batch() {
  static Batch b;
  return b;
}

void grow(Batch& b, size_t needed) {
  const size_t capacity = std::max({needed, b.capacity * 2, size_t{4096}});
  auto bigger = std::make_unique_for_overwrite<platform::Vertex[]>(capacity);
  std::copy(b.vertices.get(), b.vertices.get() + b.size, bigger.get());
  b.vertices = std::move(bigger);
  b.capacity = capacity;
}

}  // namespace

platform::Vertex* batch_reserve(platform::Primitive type, platform::TextureId texture, size_t count) {
  Batch& b = batch();
  if (b.size > 0 && (b.type != type || b.texture != texture)) batch_flush();
  b.type = type;
  b.texture = texture;
  if (b.size + count > b.capacity) grow(b, b.size + count);
  platform::Vertex* at = b.vertices.get() + b.size;
  b.size += count;
  return at;
}

void batch_flush() {
  Batch& b = batch();
  if (b.size == 0) return;
  platform::gpu().draw(b.type, b.texture, {b.vertices.get(), b.size});
  b.size = 0;
}

void batch_quad(platform::TextureId texture, const platform::Vertex (&corners)[4]) {
  platform::Vertex* v = batch_reserve(platform::Primitive::Triangles, texture, 6);
  v[0] = corners[0];
  v[1] = corners[1];
  v[2] = corners[2];
  v[3] = corners[0];
  v[4] = corners[2];
  v[5] = corners[3];
}
