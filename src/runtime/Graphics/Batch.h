// The batch: vertices go straight into one growing buffer for the current
// primitive list and texture, and reach the graphics device only when
// either changes, when the draw state changes, or at the end of the frame.
// Strips are written as lists and fans as indexed triangles, so that one
// batch holds many shapes.
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
// How many batches have gone to the device so far: what any drawing changes.
uint64_t batch_sends();
// A textured quad from its corners in the order top left, top right, bottom
// right, bottom left, as two triangles.
void batch_quad(platform::TextureId texture, const platform::Vertex (&corners)[4]);
