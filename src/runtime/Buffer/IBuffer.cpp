// What all buffer types share: the block, the position, seeking, resizing,
// block copies and fills.
#include "runtime/Buffer/IBuffer.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <string>

#include "runtime/Buffer/BufferValue.h"

IBuffer::IBuffer(int32_t size, int32_t type, int32_t alignment) : alignment_(alignment), type_(type) {
  allocate(size);
}

void IBuffer::allocate(int32_t size) {
  const size_t bytes = static_cast<size_t>(size) + static_cast<size_t>(alignment_);
  std::unique_ptr<uint8_t[]> block = std::make_unique<uint8_t[]>(bytes);  // zeroed
  const uintptr_t mask = static_cast<uintptr_t>(alignment_) - 1;
  uint8_t* data = reinterpret_cast<uint8_t*>((reinterpret_cast<uintptr_t>(block.get()) + mask) & ~mask);
  if (data_) std::memcpy(data, data_, static_cast<size_t>(std::min(size_, size)));
  raw_ = std::move(block);
  data_ = data;
  size_ = size;
}

int32_t IBuffer::seek(int32_t base, int32_t offset) {
  switch (base) {
    case buffer_seek_start:
      // An absolute position names a byte of the block, so the alignment
      // counts from the block's start again.
      position_ = std::max(offset, 0);
      wrap_offset_ = 0;
      break;
    case buffer_seek_relative: {
      const int64_t target = static_cast<int64_t>(position_) + offset;
      if (type_ == buffer_wrap && size_ > 0) {
        wrap_to(target);
      } else {
        position_ = static_cast<int32_t>(std::clamp<int64_t>(target, 0, INT32_MAX));
      }
      break;
    }
    case buffer_seek_end:
      position_ = static_cast<int32_t>(std::clamp<int64_t>(static_cast<int64_t>(size_) - offset, 0, size_));
      wrap_offset_ = 0;
      break;
    default:
      break;
  }
  return position_;
}

void IBuffer::resize(int32_t new_size) {
  if (new_size < 0) return;
  allocate(new_size);
  if (position_ >= new_size) {
    position_ = 0;
    wrap_offset_ = 0;
  }
  used_size_ = std::min(used_size_, new_size);
}

void IBuffer::raise_used_size(int32_t size) { used_size_ = std::max(used_size_, std::min(size, size_)); }

void IBuffer::store(int64_t offset, const uint8_t* bytes, int64_t count) {
  if (offset < 0 || count <= 0) return;
  if (type_ == buffer_grow && !grow_to(offset + count)) return;
  if (type_ == buffer_wrap) {
    if (size_ == 0) return;
    int64_t at = offset % size_;
    const bool goes_round = at + count >= size_;
    while (count > 0) {
      const int64_t chunk = std::min(count, size_ - at);
      std::memcpy(data_ + at, bytes, static_cast<size_t>(chunk));
      bytes += chunk;
      count -= chunk;
      at = (at + chunk) % size_;
    }
    raise_used_size(goes_round ? size_ : static_cast<int32_t>(at));
    return;
  }
  if (offset >= size_) return;
  const int64_t kept = std::min(count, size_ - offset);
  std::memcpy(data_ + offset, bytes, static_cast<size_t>(kept));
  raise_used_size(static_cast<int32_t>(offset + kept));
}

void IBuffer::fill(int32_t offset, int32_t data_type, const RValue& value, int32_t length) {
  std::string bytes;
  if (offset < 0 || length <= 0 || !accepts(data_type) || !buffer_encode(data_type, value, bytes)) return;
  if (bytes.empty()) return;
  int64_t end = static_cast<int64_t>(offset) + length;
  if (type_ == buffer_grow && !grow_to(end)) return;
  end = std::min<int64_t>(end, size_);
  const int64_t value_size = static_cast<int64_t>(bytes.size());
  int64_t written_end = -1;
  for (int64_t at = aligned(offset); at + value_size <= end; at = aligned(at + value_size)) {
    std::memcpy(data_ + at, bytes.data(), bytes.size());
    written_end = at + value_size;
  }
  if (written_end >= 0) raise_used_size(static_cast<int32_t>(written_end));
}

bool IBuffer::remove_user() {
  if (users_ == 0) return false;
  --users_;
  return true;
}

int64_t IBuffer::aligned(int64_t position) const {
  const int64_t from_grid = position + wrap_offset_;
  return (from_grid + alignment_ - 1) / alignment_ * alignment_ - wrap_offset_;
}

bool IBuffer::accepts(int32_t data_type) const { return buffer_type_size(data_type) >= 0; }

bool IBuffer::grow_to(int64_t needed) {
  if (needed <= size_) return true;
  int64_t new_size = size_;
  while (new_size < needed) new_size = new_size == 0 ? 4 : new_size * 2;
  if (new_size > INT32_MAX) return false;
  allocate(static_cast<int32_t>(new_size));
  return true;
}

void IBuffer::wrap_to(int64_t position) {
  int64_t turns = position / size_;
  if (position % size_ < 0) --turns;
  position_ = static_cast<int32_t>(position - turns * size_);
  const int64_t shift = (size_ % alignment_) * turns % alignment_;
  wrap_offset_ = static_cast<int32_t>(((wrap_offset_ + shift) % alignment_ + alignment_) % alignment_);
}
