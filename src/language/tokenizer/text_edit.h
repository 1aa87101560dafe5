// Edits of program text with the rules of the string built-ins: a match
// counts only where it starts at a character, and positions and counts are
// in characters. The tokeniser rewrites its text in place through these, so
// a rewrite that finds nothing costs one search and no allocation.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace text_edit {

inline constexpr size_t npos = std::string_view::npos;

// The byte offset of the first `sub` at a character start at or after byte `from` (a character start), or npos.
size_t find(std::string_view text, std::string_view sub, size_t from = 0);
// Whether `text` holds `sub`.
inline bool contains(std::string_view text, std::string_view sub) { return find(text, sub) != npos; }
// The number of character positions where `sub` starts, overlaps included (string_count).
size_t count(std::string_view text, std::string_view sub);
// Replaces every `from`, left to right and without overlaps; false when there was none.
bool replace_all(std::string& text, std::string_view from, std::string_view to);
// Replaces the first `from`; false when there was none.
bool replace_first(std::string& text, std::string_view from, std::string_view to);

// A rewrite of the program text: every `from` becomes `to`.
struct Rewrite {
  std::string_view from;
  std::string_view to;
};
// Applies each rewrite to the whole text in turn, replacing all occurrences.
void replace_all(std::string& text, std::span<const Rewrite> rewrites);
// Applies each rewrite in turn, replacing the first occurrence only.
void replace_first(std::string& text, std::span<const Rewrite> rewrites);

// The number of characters of `text`.
size_t length(std::string_view text);
// The byte offset of the character at 0-based index `index` (the size when beyond).
size_t offset_of(std::string_view text, size_t index);
// The byte offset of the character after the one at byte `at`.
size_t next(std::string_view text, size_t at);

// The text between the n-th and the (n+1)-th `delimiter`: n times, everything
// up to and including the first delimiter goes; then everything from the
// next delimiter on.
std::string string_extract(std::string_view text, std::string_view delimiter, int n);

}  // namespace text_edit
