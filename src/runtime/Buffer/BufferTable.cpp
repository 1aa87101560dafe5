// The table of buffers: ids are slot numbers, a new buffer takes the lowest
// free slot, and the table doubles from 32 slots when full. Worker threads
// create buffers too, so every change of the table holds g_pBufferMutex.
#include <memory>
#include <mutex>
#include <vector>

#include "runtime/Buffer/IBuffer.h"
#include "runtime/Code/Error.h"

namespace {

struct Slot {
  std::unique_ptr<IBuffer> buffer;
  // Deleted by the program while sounds still borrow its bytes: the id no
  // longer names a buffer, but the slot stays taken until the last user leaves.
  bool deleted = false;
};

std::mutex g_pBufferMutex;

std::vector<Slot>& slots() {
  static std::vector<Slot> table(32);
  return table;
}

// The slot of `id`, deleted or not, or null; the caller holds the mutex.
Slot* slot_of(int32_t id) {
  std::vector<Slot>& table = slots();
  if (id < 0 || static_cast<size_t>(id) >= table.size() || !table[static_cast<size_t>(id)].buffer) return nullptr;
  return &table[static_cast<size_t>(id)];
}

int32_t round_up_to_power_of_two(int32_t n) {
  int32_t power = 1;
  while (power < n) power *= 2;
  return power;
}

int32_t insert(std::unique_ptr<IBuffer> buffer) {
  std::lock_guard<std::mutex> lock(g_pBufferMutex);
  std::vector<Slot>& table = slots();
  size_t id = 0;
  while (id < table.size() && table[id].buffer) ++id;
  if (id == table.size()) table.resize(table.size() * 2);
  table[id].buffer = std::move(buffer);
  table[id].deleted = false;
  return static_cast<int32_t>(id);
}

}  // namespace

int32_t buffer_create(int32_t size, int32_t type, int32_t alignment) {
  if (size < 0) {
    ReportError("buffer_create: Illegal size %d", size);
    return -1;
  }
  if (alignment < 1 || alignment > 1024) {
    ReportError("buffer_create: Illegal alignment size %d", alignment);
    return -1;
  }
  alignment = round_up_to_power_of_two(alignment);
  switch (type) {
    case buffer_fixed:
    case buffer_grow:
    case buffer_wrap:
      return insert(std::make_unique<Buffer_Standard>(size, type, alignment));
    case buffer_fast:
      return insert(std::make_unique<Buffer_Fast>(size, alignment));
    default:
      ReportError("Unknown buffer type, should be one of buffer_fixed, buffer_grow, buffer_wrap, buffer_fast, "
                  "buffer_vbuffer");
      return -1;
  }
}

IBuffer* buffer_lookup(int32_t id) {
  std::lock_guard<std::mutex> lock(g_pBufferMutex);
  const Slot* slot = slot_of(id);
  return slot && !slot->deleted ? slot->buffer.get() : nullptr;
}

RValue buffer_exists(int32_t id) { return RValue::boolean(buffer_lookup(id) != nullptr); }

void buffer_delete(int32_t id) {
  std::unique_ptr<IBuffer> freed;  // destroyed after the lock is let go
  {
    std::lock_guard<std::mutex> lock(g_pBufferMutex);
    Slot* slot = slot_of(id);
    if (slot && !slot->deleted) {
      if (slot->buffer->users() > 0) {
        slot->deleted = true;
      } else {
        freed = std::move(slot->buffer);
      }
      return;
    }
  }
  ReportError("Illegal Buffer Index %d", id);
}

bool buffer_add_user(int32_t id) {
  std::lock_guard<std::mutex> lock(g_pBufferMutex);
  Slot* slot = slot_of(id);
  if (!slot || slot->deleted) return false;
  slot->buffer->add_user();
  return true;
}

void buffer_remove_user(int32_t id) {
  std::unique_ptr<IBuffer> freed;
  bool below_zero = false;
  {
    std::lock_guard<std::mutex> lock(g_pBufferMutex);
    Slot* slot = slot_of(id);
    if (!slot) return;
    below_zero = !slot->buffer->remove_user();
    if (slot->deleted && slot->buffer->users() == 0) {
      freed = std::move(slot->buffer);
      slot->deleted = false;
    }
  }
  if (below_zero) debug_output("Decrementing buffer ref count to less than zero\n");
}
