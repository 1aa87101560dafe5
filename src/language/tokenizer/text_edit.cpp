#include "language/tokenizer/text_edit.h"

#include "runtime/Function/CharCursor.h"
#include "runtime/Function/Utf8.h"

namespace text_edit {

namespace {

// Texts up to this length are checked for wide characters before a search:
// in the short texts of tokens and values the check is cheaper than the
// character-aware cursor it saves.
constexpr size_t SHORT_TEXT = 64;

// Whether `text` is short and plain ASCII, so that every byte starts a character.
bool is_short_ascii(std::string_view text) {
  if (text.size() > SHORT_TEXT) return false;
  unsigned char wide = 0;
  for (const char c : text) wide |= static_cast<unsigned char>(c);
  return wide < 0x80;
}

}  // namespace

size_t find(std::string_view text, std::string_view sub, size_t from) {
  if (from > text.size()) return npos;
  if (is_short_ascii(text)) return text.find(sub, from);
  CharCursor cursor(text.substr(from));
  if (!cursor.find(sub)) return npos;
  return from + static_cast<size_t>(cursor.p - (text.data() + from));
}

size_t count(std::string_view text, std::string_view sub) {
  if (text.empty()) return 0;
  if (sub.empty()) return length(text);
  if (is_short_ascii(text)) {
    size_t n = 0;
    for (size_t at = text.find(sub); at != npos; at = text.find(sub, at + 1)) ++n;
    return n;
  }
  CharCursor cursor(text);
  size_t n = 0;
  while (cursor.find(sub)) {
    ++n;
    cursor.skip(1);
  }
  return n;
}

bool replace_all(std::string& text, std::string_view from, std::string_view to) {
  if (from.empty()) return false;
  size_t at = find(text, from);
  if (at == npos) return false;
  // One scratch buffer for every rewrite: it swaps with the text, so after
  // the first few rewrites neither needs to grow again.
  static std::string out;
  out.clear();
  size_t copied = 0;
  while (at != npos) {
    out.append(text, copied, at - copied);
    out.append(to);
    copied = at + from.size();
    // The scan goes on behind the replaced text, never into the replacement.
    at = find(text, from, copied);
  }
  out.append(text, copied, npos);
  text.swap(out);
  return true;
}

bool replace_first(std::string& text, std::string_view from, std::string_view to) {
  if (from.empty()) return false;
  const size_t at = find(text, from);
  if (at == npos) return false;
  text.replace(at, from.size(), to);
  return true;
}

void replace_all(std::string& text, std::span<const Rewrite> rewrites) {
  for (const Rewrite& r : rewrites) replace_all(text, r.from, r.to);
}

void replace_first(std::string& text, std::span<const Rewrite> rewrites) {
  for (const Rewrite& r : rewrites) replace_first(text, r.from, r.to);
}

size_t length(std::string_view text) { return utf8::length(text); }

size_t offset_of(std::string_view text, size_t index) { return utf8::offset_of(text, index); }

size_t next(std::string_view text, size_t at) {
  return static_cast<size_t>(utf8::next(text.data() + at, text.data() + text.size()) - text.data());
}

std::string string_extract(std::string_view text, std::string_view delimiter, int n) {
  std::string s(text);
  for (int i = 0; i < n; ++i) {
    const size_t at = find(s, delimiter);
    if (at == npos) continue;  // string_delete at position 0 deletes nothing
    s.erase(0, at + delimiter.size());
  }
  if (const size_t at = find(s, delimiter); at != npos) s.erase(at);
  return s;
}

}  // namespace text_edit
