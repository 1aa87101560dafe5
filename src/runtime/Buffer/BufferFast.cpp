// Reads and writes of the fast buffer: single bytes, no alignment, and
// neutral results instead of reports, since it serves audio data in bulk.
#include "runtime/Buffer/IBuffer.h"
#include "runtime/Code/Conversions.h"

RValue Buffer_Fast::read(int32_t data_type) {
  if (data_type != buffer_u8 || position_ >= size_) return RValue::number(0);
  return RValue::int32(data_[position_++]);
}

int32_t Buffer_Fast::write(int32_t data_type, const RValue& value) {
  if (data_type != buffer_u8) return -4;
  if (position_ >= size_) return -2;
  data_[position_++] = static_cast<uint8_t>(value_to_int32(value));
  raise_used_size(position_);
  return 0;
}
