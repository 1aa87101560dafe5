// Encoding and decoding of the data types of buffer_read and buffer_write.
#include "runtime/Buffer/BufferValue.h"

#include <bit>
#include <cmath>

#include "runtime/Buffer/Buffer.h"
#include "runtime/Code/Conversions.h"

namespace {

// Bytes are placed by shifting, not by copying the host's words, so the
// order is little-endian on any machine.
void append_le(std::string& out, uint64_t v, int bytes) {
  for (int i = 0; i < bytes; ++i) out.push_back(static_cast<char>(static_cast<uint8_t>(v >> (8 * i))));
}

uint64_t load_le(const uint8_t* in, int bytes) {
  uint64_t v = 0;
  for (int i = 0; i < bytes; ++i) v |= static_cast<uint64_t>(in[i]) << (8 * i);
  return v;
}

// Rounds `value >> shift` to nearest, ties to even.
uint32_t shift_rounded(uint32_t value, uint32_t shift) {
  const uint32_t kept = value >> shift;
  const uint32_t rest = value & ((1u << shift) - 1);
  const uint32_t half = 1u << (shift - 1);
  return (rest > half || (rest == half && (kept & 1))) ? kept + 1 : kept;
}

}  // namespace

int32_t buffer_type_size(int32_t data_type) {
  switch (data_type) {
    case buffer_u8:
    case buffer_s8:
    case buffer_bool:
      return 1;
    case buffer_u16:
    case buffer_s16:
    case buffer_f16:
      return 2;
    case buffer_u32:
    case buffer_s32:
    case buffer_f32:
      return 4;
    case buffer_f64:
    case buffer_u64:
      return 8;
    case buffer_string:
    case buffer_text:
      return 0;
    default:
      return -1;
  }
}

bool buffer_encode(int32_t data_type, const RValue& value, std::string& bytes) {
  bytes.clear();
  switch (data_type) {
    case buffer_u8:
    case buffer_s8:
      append_le(bytes, static_cast<uint32_t>(value_to_int32(value)), 1);
      return true;
    case buffer_bool:
      append_le(bytes, value_to_int32(value) != 0 ? 1 : 0, 1);
      return true;
    case buffer_u16:
    case buffer_s16:
      append_le(bytes, static_cast<uint32_t>(value_to_int32(value)), 2);
      return true;
    case buffer_s32:
      append_le(bytes, static_cast<uint32_t>(value_to_int32(value)), 4);
      return true;
    case buffer_u32:
      append_le(bytes, static_cast<uint64_t>(value_to_int64(value)), 4);
      return true;
    case buffer_u64:
      append_le(bytes, static_cast<uint64_t>(value_to_int64(value)), 8);
      return true;
    case buffer_f16:
      append_le(bytes, float_to_half(static_cast<float>(value_to_real(value))), 2);
      return true;
    case buffer_f32:
      append_le(bytes, std::bit_cast<uint32_t>(static_cast<float>(value_to_real(value))), 4);
      return true;
    case buffer_f64:
      append_le(bytes, std::bit_cast<uint64_t>(value_to_real(value)), 8);
      return true;
    case buffer_string:
    case buffer_text:
      bytes = value_to_text(value);
      if (data_type == buffer_string) bytes.push_back('\0');
      return true;
    default:
      return false;
  }
}

RValue buffer_decode(int32_t data_type, const uint8_t* bytes) {
  switch (data_type) {
    case buffer_u8:
    case buffer_bool:
      return RValue::int32(bytes[0]);
    case buffer_s8:
      return RValue::int32(static_cast<int8_t>(bytes[0]));
    case buffer_u16:
      return RValue::int32(static_cast<uint16_t>(load_le(bytes, 2)));
    case buffer_s16:
      return RValue::int32(static_cast<int16_t>(load_le(bytes, 2)));
    case buffer_s32:
      return RValue::int32(static_cast<int32_t>(load_le(bytes, 4)));
    case buffer_u32:
      return RValue::int64(static_cast<int64_t>(load_le(bytes, 4)));
    case buffer_u64:
      return RValue::int64(static_cast<int64_t>(load_le(bytes, 8)));
    case buffer_f16:
      return RValue::number(half_to_float(static_cast<uint16_t>(load_le(bytes, 2))));
    case buffer_f32:
      return RValue::number(std::bit_cast<float>(static_cast<uint32_t>(load_le(bytes, 4))));
    case buffer_f64:
      return RValue::number(std::bit_cast<double>(load_le(bytes, 8)));
    default:
      return RValue::undefined();
  }
}

uint16_t float_to_half(float f) {
  const uint32_t bits = std::bit_cast<uint32_t>(f);
  const uint32_t sign = (bits >> 16) & 0x8000u;
  const int32_t exponent = static_cast<int32_t>((bits >> 23) & 0xFF);
  const uint32_t mantissa = bits & 0x7FFFFFu;
  if (exponent == 0xFF) return static_cast<uint16_t>(sign | 0x7C00u | (mantissa ? 0x200u : 0u));
  const int32_t half_exponent = exponent - 127 + 15;
  if (half_exponent >= 31) return static_cast<uint16_t>(sign | 0x7C00u);
  if (half_exponent <= 0) {
    // Too small for a normal half: a subnormal, or zero below its range.
    if (half_exponent < -10) return static_cast<uint16_t>(sign);
    const uint32_t shift = static_cast<uint32_t>(14 - half_exponent);
    return static_cast<uint16_t>(sign | shift_rounded(mantissa | 0x800000u, shift));
  }
  // A carry out of the mantissa rounds into the exponent, up to infinity.
  const uint32_t rounded = shift_rounded(mantissa, 13) + (static_cast<uint32_t>(half_exponent) << 10);
  return static_cast<uint16_t>(sign | rounded);
}

float half_to_float(uint16_t half) {
  const bool negative = half & 0x8000u;
  const int exponent = (half >> 10) & 0x1F;
  const int mantissa = half & 0x3FF;
  float magnitude;
  if (exponent == 0) {
    magnitude = std::ldexp(static_cast<float>(mantissa), -24);
  } else if (exponent == 31) {
    magnitude = mantissa ? NAN : INFINITY;
  } else {
    magnitude = std::ldexp(static_cast<float>(mantissa | 0x400), exponent - 25);
  }
  return negative ? -magnitude : magnitude;
}
