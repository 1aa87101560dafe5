// How each data type of a buffer becomes little-endian bytes and back.
//
// Integers go through the value's int conversion, floats through its number
// conversion, whatever the value's kind; the text types take the value's
// text form. Reading gives int32 for the small integers, int64 for u32 and
// u64, number for the floats and text for the text types.
#pragma once

#include <cstdint>
#include <string>

#include "runtime/Code/RValue.h"

// Bytes a data type takes: 0 for the text types, whose length is the text's; -1 for an unknown type.
int32_t buffer_type_size(int32_t data_type);
// Fills `bytes` with `value` written as `data_type`; buffer_string adds a zero byte. False for an unknown type.
bool buffer_encode(int32_t data_type, const RValue& value, std::string& bytes);
// The value of a fixed-size data type read from its little-endian bytes.
RValue buffer_decode(int32_t data_type, const uint8_t* bytes);

// A float rounded to half precision (nearest, ties to even), as its 16 bits.
uint16_t float_to_half(float f);
// The float that 16 half-precision bits stand for.
float half_to_float(uint16_t half);
