// Conversions of values: to truth value, number, integers and text, each
// with its exact fatal words; and the parse of text as a number.
//
// All number text is read and written in the C locale, whatever the user's
// locale is: a point, never a comma.
#pragma once

#include <string>
#include <string_view>

#include "runtime/Code/RValue.h"

// Reads a number from text as the runtime does everywhere: "0b" binary, then
// the C library's decimal, hexadecimal, "inf" and "nan" forms (leading white
// space and trailing text allowed), then "ref N". False when nothing was read.
bool parse_number(const char* text, double& out);
// Reads an integer with strtoll in base 10, or base 2 after "0b".
bool parse_integer(const char* text, int64_t& out);
// The primitive number of a text: blank gives 0, "0x" reads hexadecimal,
// "Infinity" with a sign gives the infinities, otherwise strtod.
double primitive_number(const char* text);
// The number of a text as `real` reads it: fatal when it holds none.
double text_to_real(const char* text);

bool value_to_bool(const RValue& v);
double value_to_real(const RValue& v);
int32_t value_to_int32(const RValue& v);
int64_t value_to_int64(const RValue& v);

// The text form of a value, appended to `out` (the built-in `string`).
void append_text_form(std::string& out, const RValue& v);
std::string value_to_text(const RValue& v);
// The text of a number: "%lld" when it is whole, otherwise "%.2f".
// Writes at most 350 bytes into `buffer` and returns the length.
size_t format_number(double d, char* buffer);
