// Cutting program text into tokens, and the compaction that takes the empty
// tokens out.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "runtime/Code/RValue.h"

// The separators of the four cuts.
inline constexpr std::string_view CUT_A = "#}{ ";
inline constexpr std::string_view CUT_B = "#}{ ;";
inline constexpr std::string_view CUT_C = "#}{ ;";
inline constexpr std::string_view CUT_D = "}{ ;";

// Cuts `text` into tokens written to `tokens` from index 0 on (the vector
// grows as needed; entries behind the last index written keep what they
// held). A separator stays at the end of the token it ends; nothing inside a
// string (a token that begins with a double quote) cuts, and a string ends
// at its second double quote. Returns the last index written.
size_t cut_tokens(std::string_view text, std::string_view separators, std::vector<std::string>& tokens);
size_t cut_tokens(std::string_view text, std::string_view separators, std::vector<RValue>& tokens);

// Takes the non-empty texts of tokens[0..last] out and writes them back as the
// runtime's priority queue would hand them out: the first token to position
// n, the others to positions 1 to n-1 in program order, and undefined to
// position 0, with n their number. Returns n.
size_t compact_tokens(std::vector<RValue>& tokens, size_t last);
// The same for raw token texts; the entries behind the last one kept are emptied.
size_t compact_tokens(std::vector<std::string>& tokens, size_t last);

// Whether a token value is a text, and whether it begins with a double quote.
inline bool is_text(const RValue& v) { return v.is(Kind::String); }
inline bool is_string_token(const RValue& v) {
  return v.is(Kind::String) && !v.string_view().empty() && v.string_view().front() == '"';
}
