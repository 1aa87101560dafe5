// Reads and writes of the fixed, grow and wrap buffers.
#include <algorithm>
#include <cstring>
#include <string>

#include "runtime/Buffer/BufferValue.h"
#include "runtime/Buffer/IBuffer.h"
#include "runtime/Code/Error.h"

namespace {

RValue read_outside() {
  ReportError("Attempting to read from outside the buffer, returning 0");
  return RValue::number(0);
}

}  // namespace

bool Buffer_Standard::reach(int64_t p) {
  if (p < size_) {
    position_ = static_cast<int32_t>(p);
    return true;
  }
  if (type_ != buffer_wrap || size_ == 0) return false;
  wrap_to(p);
  return true;
}

void Buffer_Standard::step_round() {
  if (++position_ >= size_) wrap_to(position_);
}

RValue Buffer_Standard::read_text() {
  const uint8_t* start = data_ + position_;
  const size_t left = static_cast<size_t>(size_ - position_);
  const auto* zero = static_cast<const uint8_t*>(std::memchr(start, 0, left));
  const size_t length = zero ? static_cast<size_t>(zero - start) : left;
  position_ += static_cast<int32_t>(zero ? length + 1 : length);
  return RValue::text({reinterpret_cast<const char*>(start), length});
}

RValue Buffer_Standard::read(int32_t data_type) {
  const int32_t length = buffer_type_size(data_type);
  if (length < 0) return RValue::undefined();
  if (!reach(aligned(position_))) return read_outside();
  if (length == 0) return read_text();
  uint8_t bytes[8];
  if (position_ + length <= size_) {
    std::memcpy(bytes, data_ + position_, static_cast<size_t>(length));
    position_ += length;
  } else {
    if (type_ != buffer_wrap) return read_outside();
    for (int32_t i = 0; i < length; ++i) {
      bytes[i] = data_[position_];
      step_round();
    }
  }
  return buffer_decode(data_type, bytes);
}

int32_t Buffer_Standard::write(int32_t data_type, const RValue& value) {
  std::string bytes;
  if (!buffer_encode(data_type, value, bytes)) return -1;
  const int64_t p = aligned(position_);
  const int64_t length = static_cast<int64_t>(bytes.size());
  if (type_ == buffer_grow) {
    if (!grow_to(p + length)) return -2;
    position_ = static_cast<int32_t>(p);
  } else if (!reach(p)) {
    return -2;
  }
  int32_t written_end;
  if (position_ + length <= size_) {
    std::memcpy(data_ + position_, bytes.data(), bytes.size());
    position_ += static_cast<int32_t>(length);
    written_end = position_;
  } else {
    if (type_ != buffer_wrap) return -2;
    // Going round means every byte up to the end has been written.
    for (char byte : bytes) {
      data_[position_] = static_cast<uint8_t>(byte);
      step_round();
    }
    written_end = size_;
  }
  raise_used_size(written_end);
  return 0;
}
