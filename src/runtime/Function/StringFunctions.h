// The string built-ins, as plain functions that the interpreter calls
// directly; register_string_builtins (Registration.h) also makes each one
// callable by name.
//
// Positions and lengths are in characters (see Utf8.h), positions count from
// 1. Every function that makes text allocates its result once and hands it
// back as a string value; texts come in as views (the runtime's texts are
// NUL-terminated, but only the view's size is read).
#pragma once

#include <string_view>

#include "runtime/Code/RValue.h"

namespace rt {

// The number of characters of `s`.
double string_length(std::string_view s);
// The position of the first `sub` in `s` at a character start, 0 if none; an empty `sub` gives 1.
double string_pos(std::string_view sub, std::string_view s);
// As string_pos from position `start` on (0 counts as 1); 0 for a negative start or one past the last possible.
double string_pos_ext(std::string_view sub, std::string_view s, int start);
// The number of character positions where `sub` starts, overlaps included; an empty `sub` counts every character.
double string_count(std::string_view sub, std::string_view s);
// The character at position `i` (below 1 reads 1); "" beyond the end.
RValue string_char_at(std::string_view s, int i);
// The code point at position `i` (below 1 reads 1); 0 just behind the last character, -1 farther.
double string_ord_at(std::string_view s, int i);
// `n` characters from position `i` (below 1 reads 1; a negative `n` reads 0), stopping at the end.
RValue string_copy(std::string_view s, int i, int n);
// `s` without `n` characters from position `i`; `s` itself when `i` or `n` is below 1.
RValue string_delete(std::string_view s, int i, int n);
// `s` with `sub` placed before position `i` (below 1 reads 1; beyond the end appends).
RValue string_insert(std::string_view sub, std::string_view s, int i);
// `s` with its first `sub` replaced by `replacement`.
RValue string_replace(std::string_view s, std::string_view sub, std::string_view replacement);
// `s` with every `sub`, left to right and without overlaps, replaced by `replacement`.
RValue string_replace_all(std::string_view s, std::string_view sub, std::string_view replacement);
// `s` in capitals, accented letters of the Basic Multilingual Plane included.
RValue string_upper(std::string_view s);
// `s` in small letters, accented letters of the Basic Multilingual Plane included.
RValue string_lower(std::string_view s);
// The ASCII digits of `s`.
RValue string_digits(std::string_view s);
// The ASCII letters of `s`.
RValue string_letters(std::string_view s);
// `value` printed with `dec` decimals (at least 0) right-aligned to `tot` places before the point.
RValue string_format(double value, int tot, int dec);
// A string `v` as it is; any other value formatted as a number as above.
RValue string_format(const RValue& v, int tot, int dec);
// `s` with each "#" turned into "\r\n" and each "\#" into "#".
RValue string_hash_to_newline(std::string_view s);
// The SHA-1 of the bytes of `s` as 40 lower-case hexadecimal digits.
RValue sha1_string_utf8(std::string_view s);

}  // namespace rt
