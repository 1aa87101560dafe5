// The buffer behind an id: its block of bytes, its position, and the rules
// by which reads and writes move that position.
//
// Buffer_Standard serves the fixed, grow and wrap types: every read and write
// is aligned first, a wrap buffer goes round, a grow buffer doubles. A wrap
// buffer whose size isn't a multiple of its alignment keeps its values
// aligned as if the bytes ran on without end: the wrap offset remembers by
// how much each turn shifts the grid. Buffer_Fast serves the fast type: u8
// values alone, no alignment, and failures give neutral results quietly.
#pragma once

#include <cstdint>
#include <memory>

#include "runtime/Buffer/Buffer.h"

class IBuffer {
 public:
  IBuffer(int32_t size, int32_t type, int32_t alignment);
  virtual ~IBuffer() = default;
  IBuffer(const IBuffer&) = delete;
  IBuffer& operator=(const IBuffer&) = delete;

  // Reads one value at the position and moves past it.
  virtual RValue read(int32_t data_type) = 0;
  // Writes one value at the position and moves past it: 0, or below 0 on failure.
  virtual int32_t write(int32_t data_type, const RValue& value) = 0;

  // Moves the position by one of the seek bases; returns the new position.
  int32_t seek(int32_t base, int32_t offset);
  // A new block of `new_size` bytes keeping the old bytes that fit; a position past the new end goes to 0.
  void resize(int32_t new_size);
  // Raises the used size to `size`, at most the buffer's size.
  void raise_used_size(int32_t size);
  // Copies bytes in at `offset` without moving the position: a wrap buffer goes round, a grow buffer
  // grows, the others keep what fits.
  void store(int64_t offset, const uint8_t* bytes, int64_t count);
  // Writes one value again and again over `length` bytes from `offset` without moving the position.
  void fill(int32_t offset, int32_t data_type, const RValue& value, int32_t length);

  // Counts one borrower more.
  void add_user() { ++users_; }
  // Counts one borrower less; false when there was none (the count stays 0).
  bool remove_user();

  uint8_t* data() const { return data_; }
  int32_t size() const { return size_; }
  int32_t used_size() const { return used_size_; }
  int32_t type() const { return type_; }
  int32_t alignment() const { return alignment_; }
  int32_t position() const { return position_; }
  int32_t users() const { return users_; }

 protected:
  // The position rounded up to the next multiple of the alignment, counted from the wrap offset.
  virtual int64_t aligned(int64_t position) const;
  // Whether the buffer holds values of this data type at all.
  virtual bool accepts(int32_t data_type) const;
  // Grows a grow buffer by doubling (0 becomes 4) until it holds `needed` bytes; false if it can't.
  bool grow_to(int64_t needed);
  // Puts any position inside a wrap buffer, shifting the wrap offset by the size once for each turn.
  void wrap_to(int64_t position);

  int32_t size_ = 0;
  int32_t alignment_;
  int32_t type_;
  int32_t position_ = 0;
  int32_t used_size_ = 0;
  int32_t wrap_offset_ = 0;  // always below the alignment
  uint8_t* data_ = nullptr;  // the first address in raw_ that is a multiple of the alignment

 private:
  // A zeroed block with room for `size` bytes at an aligned address.
  void allocate(int32_t size);

  std::unique_ptr<uint8_t[]> raw_;  // size + alignment bytes
  int32_t users_ = 0;
};

class Buffer_Standard final : public IBuffer {
 public:
  using IBuffer::IBuffer;
  RValue read(int32_t data_type) override;
  int32_t write(int32_t data_type, const RValue& value) override;

 private:
  // Makes the aligned position `p` the position: true when it lies inside, after going round in a wrap buffer.
  bool reach(int64_t p);
  // Moves one byte on, going round at the end of a wrap buffer.
  void step_round();
  // Reads text up to the first zero byte or the end, and moves past the zero.
  RValue read_text();
};

class Buffer_Fast final : public IBuffer {
 public:
  Buffer_Fast(int32_t size, int32_t alignment) : IBuffer(size, buffer_fast, alignment) {}
  RValue read(int32_t data_type) override;
  int32_t write(int32_t data_type, const RValue& value) override;

 protected:
  int64_t aligned(int64_t position) const override { return position; }
  bool accepts(int32_t data_type) const override { return data_type == buffer_u8; }
};
