// A bump arena for text that lives one frame: the text form of non-string
// arguments handed to built-ins. It grows by half when full and is reset at
// the start of every frame; a built-in never frees what it took from it.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

class FrameArena {
 public:
  explicit FrameArena(size_t initial = 4096);
  ~FrameArena();
  FrameArena(const FrameArena&) = delete;
  FrameArena& operator=(const FrameArena&) = delete;

  char* allocate(size_t bytes);
  // A NUL-terminated copy of `text` that lives until the next reset.
  std::string_view copy(std::string_view text);
  // Forgets everything; keeps one block as large as all that was used.
  void reset();
  size_t capacity() const { return total_; }

 private:
  struct Block {
    char* memory;
    size_t size;
  };
  std::vector<Block> blocks_;
  size_t used_ = 0;   // in the last block
  size_t total_ = 0;  // of all blocks
};

// The arena of the frame loop.
FrameArena& frame_arena();
