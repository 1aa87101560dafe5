// The buffer operations on ids: each finds its buffer, or reports the id.
#include "runtime/Buffer/Buffer.h"

#include <algorithm>

#include "runtime/Buffer/IBuffer.h"
#include "runtime/Code/Error.h"

namespace {

IBuffer* buffer_or_report(int32_t id) {
  IBuffer* buffer = buffer_lookup(id);
  if (!buffer) ReportError("Illegal Buffer Index %d", id);
  return buffer;
}

}  // namespace

int32_t buffer_seek(int32_t id, int32_t base, int32_t offset) {
  IBuffer* buffer = buffer_or_report(id);
  return buffer ? buffer->seek(base, offset) : -1;
}

int32_t buffer_tell(int32_t id) {
  IBuffer* buffer = buffer_or_report(id);
  return buffer ? buffer->position() : -1;
}

int32_t buffer_get_size(int32_t id) {
  IBuffer* buffer = buffer_or_report(id);
  return buffer ? buffer->size() : -1;
}

int32_t buffer_get_used_size(int32_t id) {
  IBuffer* buffer = buffer_or_report(id);
  return buffer ? buffer->used_size() : -1;
}

RValue buffer_get_address(int32_t id) {
  IBuffer* buffer = buffer_or_report(id);
  return RValue::pointer(buffer ? buffer->data() : nullptr);
}

void buffer_resize(int32_t id, int32_t new_size) {
  if (IBuffer* buffer = buffer_or_report(id)) buffer->resize(new_size);
}

void buffer_set_used_size(int32_t id, int32_t size) {
  IBuffer* buffer = buffer_or_report(id);
  if (!buffer) return;
  if (size < 0) {
    ReportError("Illegal size passed to buffer_set_used_size %d", size);
    return;
  }
  buffer->raise_used_size(size);
}

RValue buffer_read(int32_t id, int32_t data_type) {
  IBuffer* buffer = buffer_or_report(id);
  return buffer ? buffer->read(data_type) : RValue::undefined();
}

int32_t buffer_write(int32_t id, int32_t data_type, const RValue& value) {
  IBuffer* buffer = buffer_or_report(id);
  return buffer ? buffer->write(data_type, value) : -1;
}

void buffer_copy(int32_t source, int32_t offset, int32_t size, int32_t destination, int32_t destination_offset) {
  IBuffer* from = buffer_lookup(source);
  if (!from) {
    ReportError("Illegal Source Buffer Index %d", source);
    return;
  }
  IBuffer* to = buffer_lookup(destination);
  if (!to) {
    ReportError("Illegal Destination Buffer Index %d", destination);
    return;
  }
  if (from == to) {
    ReportError("Source and Destination buffers can't be the same");
    return;
  }
  if (offset < 0) return;
  // Only what has been written to the source is copied.
  const int32_t count = std::min(size, from->used_size() - offset);
  if (count > 0) to->store(destination_offset, from->data() + offset, count);
}

void buffer_fill(int32_t id, int32_t offset, int32_t data_type, const RValue& value, int32_t size) {
  if (IBuffer* buffer = buffer_or_report(id)) buffer->fill(offset, data_type, value, size);
}
