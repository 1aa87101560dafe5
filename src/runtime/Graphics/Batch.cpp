#include "runtime/Graphics/Batch.h"

#include <algorithm>
#include <memory>

namespace {

// A buffer that grows and is never cleared: callers write every element
// they reserve, so nothing is zeroed first.
template <typename T>
struct GrowingBuffer {
  std::unique_ptr<T[]> items;
  size_t size = 0, capacity = 0;

  // Room for `count` more items, good until the next call.
  T* reserve(size_t count) {
    if (size + count > capacity) {
      const size_t bigger = std::max({size + count, capacity * 2, size_t{4096}});
      auto grown = std::make_unique_for_overwrite<T[]>(bigger);
      std::copy(items.get(), items.get() + size, grown.get());
      items = std::move(grown);
      capacity = bigger;
    }
    T* at = items.get() + size;
    size += count;
    return at;
  }
};

// The open batch. Triangle batches are indexed; point and line batches aren't.
struct Batch {
  platform::Primitive type = platform::Primitive::Triangles;
  platform::TextureId texture = 0;
  GrowingBuffer<platform::Vertex> vertices;
  GrowingBuffer<uint32_t> indices;
  uint64_t sends = 0;
};

Batch& batch() {
  static Batch b;
  return b;
}

// Room for `count` vertices in a batch of `type` and `texture`, flushing the
// open batch first when it is of another kind.
platform::Vertex* open_batch(platform::Primitive type, platform::TextureId texture, size_t count) {
  Batch& b = batch();
  if (b.vertices.size > 0 && (b.type != type || b.texture != texture)) batch_flush();
  b.type = type;
  b.texture = texture;
  return b.vertices.reserve(count);
}

}  // namespace

platform::Vertex* batch_reserve(platform::Primitive type, platform::TextureId texture, size_t count) {
  platform::Vertex* at = open_batch(type, texture, count);
  Batch& b = batch();
  if (type == platform::Primitive::Triangles) {
    const auto first = static_cast<uint32_t>(b.vertices.size - count);
    uint32_t* index = b.indices.reserve(count);
    for (uint32_t k = 0; k < count; ++k) index[k] = first + k;
  }
  return at;
}

platform::Vertex* batch_reserve_fan(platform::TextureId texture, size_t count) {
  if (count < 3) return nullptr;
  platform::Vertex* at = open_batch(platform::Primitive::Triangles, texture, count);
  Batch& b = batch();
  const auto centre = static_cast<uint32_t>(b.vertices.size - count);
  uint32_t* index = b.indices.reserve(3 * (count - 2));
  for (uint32_t k = 1; k + 1 < count; ++k, index += 3) {
    index[0] = centre;
    index[1] = centre + k;
    index[2] = centre + k + 1;
  }
  return at;
}

void batch_flush() {
  Batch& b = batch();
  if (b.vertices.size == 0) return;
  platform::gpu().draw(b.type, b.texture, {b.vertices.items.get(), b.vertices.size},
                       {b.indices.items.get(), b.indices.size});
  b.vertices.size = 0;
  b.indices.size = 0;
  ++b.sends;
}

uint64_t batch_sends() { return batch().sends; }

void batch_quad(platform::TextureId texture, const platform::Vertex (&corners)[4]) {
  std::copy(std::begin(corners), std::end(corners), batch_reserve_fan(texture, 4));
}
