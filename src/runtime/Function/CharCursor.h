// A cursor over the character starts of a UTF-8 text, which knows the
// 1-based position of the character it stands on. Searches find a candidate
// with a byte search and accept it only where it stands at a character start,
// as the string built-ins count.
#pragma once

#include <cstdint>
#include <string_view>

#include "runtime/Function/Utf8.h"

struct CharCursor {
  const char* p;
  const char* end;
  size_t position = 1;

  explicit CharCursor(std::string_view s) : p(s.data()), end(s.data() + s.size()) {}

  // Moves over `chars` characters, or to the end of the text.
  void skip(size_t chars) { p = utf8::advance(p, end, end, chars, position); }
  // Moves to the first character start at or beyond `target`.
  void advance_to(const char* target) { p = utf8::advance(p, target, end, SIZE_MAX, position); }

  // Moves to the first `sub` at a character start from here on; false if
  // there is none (the cursor is then somewhere behind its old place).
  bool find(std::string_view sub) {
    if (!sub.empty()) {
      // Plain ASCII first: search and count in the same pass.
      bool found = false;
      const size_t ascii = utf8::search_ascii_head(p, static_cast<size_t>(end - p), sub, found);
      p += ascii;
      position += ascii;
      if (found) return true;
    }
    const char* from = p;
    while (static_cast<size_t>(end - from) >= sub.size()) {
      const size_t at = std::string_view(from, static_cast<size_t>(end - from)).find(sub);
      if (at == std::string_view::npos) return false;
      const char* hit = from + at;
      advance_to(hit);
      if (p == hit) return true;
      // The bytes between the hit and the next character start are inside a character.
      from = p;
    }
    return false;
  }
};

