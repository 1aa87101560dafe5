#include "runtime/Graphics/Batch.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <string_view>

namespace {

// A batch is sent once it holds this many vertices, so that a frame that
// draws without end (a loop that never stops) keeps a bounded buffer here
// and in the driver.
constexpr size_t BATCH_VERTEX_LIMIT = 1 << 16;

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

// One shape of the open batch: where its vertices and indices stand, and
// the box that holds it.
struct Shape {
  size_t first_vertex = 0, vertex_count = 0, first_index = 0, index_count = 0;
  size_t hash = 0;
  float left = 0, top = 0, right = 0, bottom = 0;

  bool overlaps(const Shape& other) const {
    // A pixel on the rim may be covered by both: the boxes count one unit wider.
    return left <= other.right + 1 && other.left <= right + 1 && top <= other.bottom + 1 &&
           other.top <= bottom + 1;
  }
};

// The shapes last kept in the open batch, oldest first. A shape drawn again
// exactly as one of these, opaque, with nothing drawn over that one since,
// would leave every pixel as it is: a loop that draws the same picture at
// every pass costs the device one shape, not one per pass.
constexpr size_t RECENT_SHAPES = 8;

// The open batch. Triangle batches are indexed; point and line batches aren't.
struct Batch {
  platform::Primitive type = platform::Primitive::Triangles;
  platform::TextureId texture = 0;
  GrowingBuffer<platform::Vertex> vertices;
  GrowingBuffer<uint32_t> indices;
  uint64_t sends = 0;
  uint64_t vertices_sent = 0;
  bool repeats_invisible = true;  // the blend mode draws an opaque shape the same twice
  bool copy_blend = false;        // the blend mode copies, alpha and all
  Shape pending;                  // the shape last reserved, written by its caller
  bool has_pending = false;
  std::array<Shape, RECENT_SHAPES> recent;
  size_t recent_count = 0;
};

Batch& batch() {
  static Batch b;
  return b;
}

std::string_view bytes_of(const Batch& b, const Shape& s) {
  return {reinterpret_cast<const char*>(b.vertices.items.get() + s.first_vertex),
          s.vertex_count * sizeof(platform::Vertex)};
}

// Whether drawing `s` a second time can change no pixel: every colour it
// blends is opaque, or the blend copies, and it samples no texture.
bool repeat_is_invisible(const Batch& b, const Shape& s) {
  if (!b.repeats_invisible || b.texture != 0) return false;
  if (b.copy_blend) return true;
  for (size_t k = s.first_vertex; k < s.first_vertex + s.vertex_count; ++k) {
    const platform::Vertex& v = b.vertices.items[k];
    if ((v.colour >> 24) != 0xFF || (v.sides > 0 && (v.centre_colour >> 24) != 0xFF)) return false;
  }
  return true;
}

void remember(Batch& b, const Shape& s) {
  if (b.recent_count == RECENT_SHAPES) {
    std::move(b.recent.begin() + 1, b.recent.end(), b.recent.begin());
    --b.recent_count;
  }
  b.recent[b.recent_count++] = s;
}

// The shape last reserved is written now: it stays in the batch, or goes
// when it repeats a recent shape that nothing has covered since.
void settle_pending(Batch& b) {
  if (!b.has_pending) return;
  b.has_pending = false;
  Shape s = b.pending;
  s.hash = std::hash<std::string_view>{}(bytes_of(b, s));
  const platform::Vertex* v = b.vertices.items.get() + s.first_vertex;
  s.left = s.right = v[0].x;
  s.top = s.bottom = v[0].y;
  for (size_t k = 1; k < s.vertex_count; ++k) {
    s.left = std::min(s.left, v[k].x);
    s.right = std::max(s.right, v[k].x);
    s.top = std::min(s.top, v[k].y);
    s.bottom = std::max(s.bottom, v[k].y);
  }
  if (repeat_is_invisible(b, s)) {
    for (size_t e = b.recent_count; e-- > 0;) {
      const Shape& earlier = b.recent[e];
      if (earlier.hash != s.hash || earlier.vertex_count != s.vertex_count || earlier.index_count != s.index_count ||
          bytes_of(b, earlier) != bytes_of(b, s)) {
        continue;
      }
      const bool covered = std::any_of(b.recent.begin() + static_cast<std::ptrdiff_t>(e) + 1,
                                       b.recent.begin() + static_cast<std::ptrdiff_t>(b.recent_count),
                                       [&](const Shape& later) { return later.overlaps(earlier); });
      if (covered) break;
      b.vertices.size = s.first_vertex;
      b.indices.size = s.first_index;
      // Its pixels stand now as if the earlier shape had just been drawn.
      std::rotate(b.recent.begin() + static_cast<std::ptrdiff_t>(e),
                  b.recent.begin() + static_cast<std::ptrdiff_t>(e) + 1,
                  b.recent.begin() + static_cast<std::ptrdiff_t>(b.recent_count));
      return;
    }
  }
  remember(b, s);
}

// Room for `count` vertices and `index_count` indices in a batch of `type`
// and `texture`, flushing the open batch first when it is of another kind
// or full.
platform::Vertex* open_batch(platform::Primitive type, platform::TextureId texture, size_t count,
                             size_t index_count) {
  Batch& b = batch();
  settle_pending(b);
  if (b.vertices.size > 0 &&
      (b.type != type || b.texture != texture || b.vertices.size + count > BATCH_VERTEX_LIMIT)) {
    batch_flush();
  }
  b.type = type;
  b.texture = texture;
  b.pending = {b.vertices.size, count, b.indices.size, index_count};
  b.has_pending = true;
  return b.vertices.reserve(count);
}

}  // namespace

platform::Vertex* batch_reserve(platform::Primitive type, platform::TextureId texture, size_t count) {
  const bool indexed = type == platform::Primitive::Triangles;
  platform::Vertex* at = open_batch(type, texture, count, indexed ? count : 0);
  if (indexed) {
    Batch& b = batch();
    const auto first = static_cast<uint32_t>(b.vertices.size - count);
    uint32_t* index = b.indices.reserve(count);
    for (uint32_t k = 0; k < count; ++k) index[k] = first + k;
  }
  return at;
}

platform::Vertex* batch_reserve_fan(platform::TextureId texture, size_t count) {
  if (count < 3) return nullptr;
  platform::Vertex* at = open_batch(platform::Primitive::Triangles, texture, count, 3 * (count - 2));
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
  settle_pending(b);
  b.recent_count = 0;
  if (b.vertices.size == 0) return;
  platform::gpu().draw(b.type, b.texture, {b.vertices.items.get(), b.vertices.size},
                       {b.indices.items.get(), b.indices.size});
  b.vertices_sent += b.vertices.size;
  b.vertices.size = 0;
  b.indices.size = 0;
  ++b.sends;
}

void batch_set_blend(int source, int destination) {
  Batch& b = batch();
  batch_flush();
  // Factors by number: 1 zero, 2 one, 5 source alpha, 6 one minus source alpha.
  b.copy_blend = source == 2 && destination == 1;
  b.repeats_invisible = b.copy_blend || (source == 5 && destination == 6);
}

uint64_t batch_sends() { return batch().sends; }
uint64_t batch_vertices_sent() { return batch().vertices_sent; }

void batch_quad(platform::TextureId texture, const platform::Vertex (&corners)[4]) {
  std::copy(std::begin(corners), std::end(corners), batch_reserve_fan(texture, 4));
}
