#include "runtime/Code/FrameArena.h"

#include <cstdlib>
#include <cstring>
#include <new>

namespace {
char* new_block(size_t size) {
  auto* p = static_cast<char*>(std::malloc(size));
  if (!p) throw std::bad_alloc();
  return p;
}
}  // namespace

FrameArena::FrameArena(size_t initial) {
  blocks_.push_back({new_block(initial), initial});
  total_ = initial;
}

FrameArena::~FrameArena() {
  for (Block& b : blocks_) std::free(b.memory);
}

char* FrameArena::allocate(size_t bytes) {
  bytes = (bytes + 7) & ~size_t{7};
  Block* last = &blocks_.back();
  if (used_ + bytes > last->size) {
    // Earlier blocks stay where they are: pointers handed out this frame remain valid.
    size_t size = last->size + last->size / 2;
    while (size < bytes) size += size / 2;
    blocks_.push_back({new_block(size), size});
    total_ += size;
    used_ = 0;
    last = &blocks_.back();
  }
  char* p = last->memory + used_;
  used_ += bytes;
  return p;
}

std::string_view FrameArena::copy(std::string_view text) {
  char* p = allocate(text.size() + 1);
  if (!text.empty()) std::memcpy(p, text.data(), text.size());
  p[text.size()] = '\0';
  return {p, text.size()};
}

void FrameArena::reset() {
  if (blocks_.size() > 1) {
    for (Block& b : blocks_) std::free(b.memory);
    blocks_.clear();
    blocks_.push_back({new_block(total_), total_});
  }
  used_ = 0;
}

FrameArena& frame_arena() {
  static FrameArena arena;
  return arena;
}
