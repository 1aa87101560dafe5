// The batch: vertices go straight into one growing buffer for the current
// primitive list and texture, and reach the graphics device only when
// either changes, when the draw state changes, or at the end of the frame.
// Strips are written as lists and fans as indexed triangles, so that one
// batch holds many shapes. An opaque shape drawn again exactly where it
// stands, with nothing drawn over it since, is left out, and a batch is
// sent when it is full: a loop that draws at every pass stays cheap.
#pragma once

#include <cstddef>
#include <cstdint>

#include "runtime/Platform/Gpu.h"

// Room for `count` vertices of `type` with `texture` (0 for none), flushing
// the open batch first when it is of another type or texture. The pointer
// is good until the next call.
platform::Vertex* batch_reserve(platform::Primitive type, platform::TextureId texture, size_t count);
// Room for the `count` vertices of a triangle fan with `texture`, centre
// first; null for fewer than three.
platform::Vertex* batch_reserve_fan(platform::TextureId texture, size_t count);
// Sends the open batch to the device.
void batch_flush();
// Sends the open batch, and tells the batch the blend factors that come
// next, on which it depends whether a shape drawn twice looks drawn once.
void batch_set_blend(int source, int destination);
// How many batches have gone to the device so far: what any drawing changes.
uint64_t batch_sends();
// How many vertices have gone to the device so far, for measurements.
uint64_t batch_vertices_sent();
// A textured quad from its corners in the order top left, top right, bottom
// right, bottom left, as two triangles.
void batch_quad(platform::TextureId texture, const platform::Vertex (&corners)[4]);
