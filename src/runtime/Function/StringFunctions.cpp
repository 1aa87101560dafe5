// The string built-ins and their by-name adapters.
//
// A search gives the same result as trying `sub` at every character start,
// at the speed of a byte search: over plain ASCII it searches and counts in
// one pass; elsewhere a byte match is taken only where it stands at a
// character start (for well-formed text every byte match of a well-formed
// `sub` does; for malformed text the stepping decides, as for positions).
#include "runtime/Function/StringFunctions.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <locale.h>
#include <new>
#include <wctype.h>

#include "runtime/Code/Builtins.h"
#include "runtime/Code/Conversions.h"
#include "runtime/Code/Registration.h"
#include "runtime/Function/CharCursor.h"
#include "runtime/Function/Sha1.h"
#include "runtime/Function/Utf8.h"

namespace rt {
namespace {

// A string value of at most `capacity` bytes, written by `fill`, which
// returns the length it wrote: the one allocation of a result.
template <class Fill>
RValue make_text(size_t capacity, Fill fill) {
  RefString* s = RefString::allocate(static_cast<uint32_t>(capacity));
  const size_t length = fill(s->data());
  // A result that fills its room, as a concatenation does, has nothing to give back.
  if (length == capacity) return RValue::adopt(RefString::finish_in_place(s, static_cast<uint32_t>(length)));
  return RValue::adopt(RefString::finish(s, static_cast<uint32_t>(length)));
}

// Concatenation of two or three pieces in one allocation.
RValue join(std::string_view a, std::string_view b, std::string_view c = {}) {
  return make_text(a.size() + b.size() + c.size(), [&](char* out) {
    char* o = out;
    for (std::string_view piece : {a, b, c}) {
      if (!piece.empty()) std::memcpy(o, piece.data(), piece.size());
      o += piece.size();
    }
    return static_cast<size_t>(o - out);
  });
}

// The 0-based index of 1-based position `i`, read from 1 when below it, and
// at most the size: no text has more characters than bytes.
size_t index_of_position(std::string_view s, int i) {
  return std::min(i > 1 ? static_cast<size_t>(i) - 1 : 0, s.size());
}

// The byte offset of the character with 0-based index `index`, where the
// first `head` bytes are plain ASCII: there a byte is a character, and
// stepping starts behind them.
size_t offset_behind_ascii(std::string_view s, size_t head, size_t index) {
  if (index <= head) return index;
  return head + utf8::offset_of(s.substr(head), index - head);
}

// The byte offset of 1-based position `i`, read from 1 when below it.
size_t offset_of_position(std::string_view s, int i) {
  const size_t index = index_of_position(s, i);
  return offset_behind_ascii(s, utf8::ascii_head(s.data(), index), index);
}

// The byte offset `chars` characters behind `from`, at most the size.
size_t offset_after(std::string_view s, size_t from, size_t chars) {
  // Every character takes a byte at least, so as many characters as bytes reach the end.
  if (chars >= s.size() - from) return s.size();
  size_t ignored = 0;
  const char* end = s.data() + s.size();
  return static_cast<size_t>(utf8::advance(s.data() + from, end, end, chars, ignored) - s.data());
}

// `s` with room for `capacity` bytes and the NUL, the text right behind the
// header in the same block; null when there is no memory, `s` untouched.
RefString* with_room(RefString* s, size_t capacity) {
  auto* grown = static_cast<RefString*>(std::realloc(s, sizeof(RefString) + capacity + 1));
  if (grown) grown->text = grown->data();
  return grown;
}

// The first `chars` characters of `text`, fewer than its bytes. Plain ASCII
// is checked as it is copied, so the text is read once, and all ASCII the
// copy is exactly `chars` bytes; behind a longer character the copy goes on
// in the room it then needs.
RValue copy_checking_ascii(std::string_view text, size_t chars) {
  RefString* out = RefString::allocate(static_cast<uint32_t>(chars));
  const size_t ascii = utf8::ascii_head(text.data(), chars, out->data());
  if (ascii == chars) return RValue::adopt(RefString::finish_in_place(out, static_cast<uint32_t>(chars)));
  const size_t to = offset_after(text, ascii, chars - ascii);
  RefString* grown = with_room(out, to);
  if (!grown) {
    std::free(out);
    throw std::bad_alloc();
  }
  std::memcpy(grown->data() + ascii, text.data() + ascii, to - ascii);
  return RValue::adopt(RefString::finish_in_place(grown, static_cast<uint32_t>(to)));
}

// The case conversions read Unicode's tables of a UTF-8 locale of their own,
// so the process locale stays "C" for every other conversion.
locale_t utf8_ctype_locale() {
  static const locale_t loc = [] {
    locale_t l = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    return l ? l : newlocale(LC_CTYPE_MASK, "C", nullptr);
  }();
  return loc;
}

using WideConversion = wint_t (*)(wint_t, locale_t);

// Maps every character of the Basic Multilingual Plane through `convert`;
// characters that don't change keep their bytes, malformed ones included.
RValue change_case(std::string_view s, WideConversion convert, char ascii_from, char ascii_to) {
  // A 2-byte character can become a 3-byte one, nothing grows more.
  return make_text(s.size() + s.size() / 2, [&](char* out) {
    const locale_t loc = utf8_ctype_locale();
    const char* p = s.data();
    const char* end = p + s.size();
    char* o = out;
    while (p < end) {
      const char c = *p;
      if (static_cast<unsigned char>(c) < 0x80) {
        *o++ = (c >= ascii_from && c <= ascii_from + 25) ? static_cast<char>(c - ascii_from + ascii_to) : c;
        ++p;
        continue;
      }
      const char* q = utf8::next(p, end);
      const size_t n = static_cast<size_t>(q - p);
      if (n < 4 && n == utf8::sequence_length(static_cast<unsigned char>(c))) {
        const uint32_t cp = utf8::code_point(p, end);
        const auto mapped = static_cast<uint32_t>(convert(cp, loc));
        if (mapped != cp && mapped <= 0xFFFF) {
          o += utf8::encode(mapped, o);
          p = q;
          continue;
        }
      }
      std::memcpy(o, p, n);
      o += n;
      p = q;
    }
    return static_cast<size_t>(o - out);
  });
}

// Keeps the characters whose lead byte passes `keep` (all of them ASCII, one byte).
template <class Keep>
RValue keep_characters(std::string_view s, Keep keep) {
  return make_text(s.size(), [&](char* out) {
    const char* p = s.data();
    const char* end = p + s.size();
    char* o = out;
    while (p < end) {
      if (keep(*p)) *o++ = *p;
      p = utf8::next(p, end);
    }
    return static_cast<size_t>(o - out);
  });
}

// Widths and decimals beyond any sensible text keep the result within what a
// string can hold.
constexpr int MAX_FORMAT_PLACES = 1 << 20;

// A result that grows by doubling, from 256 bytes, and is trimmed to size at
// the end.
class GrowingText {
 public:
  GrowingText() : s_(RefString::allocate(static_cast<uint32_t>(capacity_))) {}
  ~GrowingText() { std::free(s_); }
  GrowingText(const GrowingText&) = delete;
  GrowingText& operator=(const GrowingText&) = delete;

  void append(const char* p, size_t n) {
    if (length_ + n > capacity_) grow(length_ + n);
    if (n > 0) std::memcpy(s_->data() + length_, p, n);
    length_ += n;
  }
  RValue finish() {
    RefString* s = RefString::finish(s_, static_cast<uint32_t>(length_));
    s_ = nullptr;
    return RValue::adopt(s);
  }

 private:
  void grow(size_t needed) {
    while (capacity_ < needed) capacity_ *= 2;
    RefString* grown = with_room(s_, capacity_);
    if (!grown) throw std::bad_alloc();
    s_ = grown;
  }

  size_t capacity_ = 256;
  size_t length_ = 0;
  RefString* s_;
};

}  // namespace

double string_length(std::string_view s) { return static_cast<double>(utf8::length(s)); }

double string_pos(std::string_view sub, std::string_view s) { return string_pos_ext(sub, s, 1); }

double string_pos_ext(std::string_view sub, std::string_view s, int start) {
  if (start < 0) return 0;
  const size_t first = start == 0 ? 1 : static_cast<size_t>(start);
  CharCursor cursor(s);
  if (first > 1) {
    cursor.skip(first - 1);
    // Short of `first`: the start lies beyond the position behind the last character.
    if (cursor.position != first) return 0;
  }
  return cursor.find(sub) ? static_cast<double>(cursor.position) : 0;
}

double string_count(std::string_view sub, std::string_view s) {
  if (s.empty()) return 0;
  if (sub.empty()) return string_length(s);
  CharCursor cursor(s);
  size_t count = 0;
  while (cursor.find(sub)) {
    ++count;
    // Overlapping matches count: go on from the next character.
    cursor.skip(1);
  }
  return static_cast<double>(count);
}

RValue string_char_at(std::string_view s, int i) {
  const size_t from = offset_of_position(s, i);
  return RValue::text(s.substr(from, offset_after(s, from, 1) - from));
}

double string_ord_at(std::string_view s, int i) {
  const size_t wanted = i > 1 ? static_cast<size_t>(i) - 1 : 0;
  CharCursor cursor(s);
  cursor.skip(wanted);
  if (cursor.p < cursor.end) return utf8::code_point(cursor.p, cursor.end);
  // Just behind the last character reads 0, anything farther -1.
  return cursor.position - 1 == wanted ? 0 : -1;
}

RValue string_copy(std::string_view s, int i, int n) {
  const size_t index = index_of_position(s, i);
  const size_t chars = n > 0 ? static_cast<size_t>(n) : 0;
  // The ASCII head is read a block into the range: a long copy short of the
  // end that starts in plain ASCII, as in program text, is then most likely
  // all ASCII, and accented text doesn't start a copy it would have to grow.
  const size_t head = utf8::ascii_head(s.data(), std::min(index + 64, s.size()));
  const std::string_view rest = s.substr(offset_behind_ascii(s, head, index));
  if (chars >= 64 && chars < rest.size() && head == index + 64) return copy_checking_ascii(rest, chars);
  return RValue::text(rest.substr(0, offset_after(rest, 0, chars)));
}

RValue string_delete(std::string_view s, int i, int n) {
  if (i < 1 || n < 1) return RValue::text(s);
  const size_t from = offset_of_position(s, i);
  const size_t to = offset_after(s, from, static_cast<size_t>(n));
  return join(s.substr(0, from), s.substr(to));
}

RValue string_insert(std::string_view sub, std::string_view s, int i) {
  const size_t at = offset_of_position(s, i);
  return join(s.substr(0, at), sub, s.substr(at));
}

RValue string_replace(std::string_view s, std::string_view sub, std::string_view replacement) {
  CharCursor cursor(s);
  if (sub.empty() || !cursor.find(sub)) return RValue::text(s);
  const size_t at = static_cast<size_t>(cursor.p - s.data());
  return join(s.substr(0, at), replacement, s.substr(at + sub.size()));
}

RValue string_replace_all(std::string_view s, std::string_view sub, std::string_view replacement) {
  if (sub.empty()) return RValue::text(s);
  GrowingText out;
  CharCursor cursor(s);
  const char* copied = s.data();
  while (cursor.find(sub)) {
    out.append(copied, static_cast<size_t>(cursor.p - copied));
    out.append(replacement.data(), replacement.size());
    copied = cursor.p + sub.size();
    // The scan goes on behind the replaced text, never into the replacement.
    cursor.advance_to(copied);
  }
  out.append(copied, static_cast<size_t>(cursor.end - copied));
  return out.finish();
}

RValue string_upper(std::string_view s) { return change_case(s, towupper_l, 'a', 'A'); }

RValue string_lower(std::string_view s) { return change_case(s, towlower_l, 'A', 'a'); }

RValue string_digits(std::string_view s) {
  return keep_characters(s, [](char c) { return c >= '0' && c <= '9'; });
}

RValue string_letters(std::string_view s) {
  return keep_characters(s, [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); });
}

RValue string_format(double value, int tot, int dec) {
  const int decimals = std::clamp(dec, 0, MAX_FORMAT_PLACES);
  const int width = std::clamp(tot, 0, MAX_FORMAT_PLACES) + decimals + (decimals > 0 ? 1 : 0);
  // A double has at most 309 digits before the point, plus sign and point.
  const size_t room = static_cast<size_t>(std::max(width, 312 + decimals));
  return make_text(room, [&](char* out) {
    // to_chars rounds as "%.*f" does and writes a point whatever the locale.
    const size_t length = static_cast<size_t>(
        std::to_chars(out, out + room, value, std::chars_format::fixed, decimals).ptr - out);
    const size_t padded = static_cast<size_t>(width);
    if (length >= padded) return length;
    std::memmove(out + (padded - length), out, length);
    std::memset(out, ' ', padded - length);
    return padded;
  });
}

RValue string_format(const RValue& v, int tot, int dec) {
  if (v.is(Kind::String)) return v;
  return string_format(value_to_real(v), tot, dec);
}

RValue string_hash_to_newline(std::string_view s) {
  return make_text(s.size() * 2, [&](char* out) {
    const char* p = s.data();
    const char* end = p + s.size();
    char* o = out;
    while (const auto* hash = static_cast<const char*>(std::memchr(p, '#', static_cast<size_t>(end - p)))) {
      const size_t n = static_cast<size_t>(hash - p);
      std::memcpy(o, p, n);
      o += n;
      // The byte before a '#' is never another '#', so it is still in the output.
      if (hash > s.data() && hash[-1] == '\\') {
        o[-1] = '#';
      } else {
        *o++ = '\r';
        *o++ = '\n';
      }
      p = hash + 1;
    }
    std::memcpy(o, p, static_cast<size_t>(end - p));
    o += end - p;
    return static_cast<size_t>(o - out);
  });
}

RValue sha1_string_utf8(std::string_view s) {
  const Sha1Digest digest = sha1(s);
  return make_text(40, [&](char* out) {
    static constexpr char hex[] = "0123456789abcdef";
    for (size_t i = 0; i < digest.size(); ++i) {
      out[2 * i] = hex[digest[i] >> 4];
      out[2 * i + 1] = hex[digest[i] & 15];
    }
    return size_t{40};
  });
}

}  // namespace rt

// ---------------------------------------------------------------------------
// Calls by name. The getters make every argument work: numbers and other
// values read as their text form, positions as whole numbers.

namespace {

BUILTIN_ADAPTER(string_length) { result = RValue::number(rt::string_length(arg_text(args, 0))); }

BUILTIN_ADAPTER(string_pos) {
  const std::string_view sub = arg_text(args, 0);
  result = RValue::number(rt::string_pos(sub, arg_text(args, 1)));
}

BUILTIN_ADAPTER(string_pos_ext) {
  const std::string_view sub = arg_text(args, 0);
  const std::string_view s = arg_text(args, 1);
  result = RValue::number(rt::string_pos_ext(sub, s, arg_int32(args, 2)));
}

BUILTIN_ADAPTER(string_count) {
  const std::string_view sub = arg_text(args, 0);
  result = RValue::number(rt::string_count(sub, arg_text(args, 1)));
}

BUILTIN_ADAPTER(string_char_at) {
  const std::string_view s = arg_text(args, 0);
  result = rt::string_char_at(s, arg_int32(args, 1));
}

BUILTIN_ADAPTER(string_ord_at) {
  const std::string_view s = arg_text(args, 0);
  result = RValue::number(rt::string_ord_at(s, arg_int32(args, 1)));
}

BUILTIN_ADAPTER(string_copy) {
  const std::string_view s = arg_text(args, 0);
  const int32_t i = arg_int32(args, 1);
  result = rt::string_copy(s, i, arg_int32(args, 2));
}

BUILTIN_ADAPTER(string_delete) {
  const std::string_view s = arg_text(args, 0);
  const int32_t i = arg_int32(args, 1);
  result = rt::string_delete(s, i, arg_int32(args, 2));
}

BUILTIN_ADAPTER(string_insert) {
  const std::string_view sub = arg_text(args, 0);
  const std::string_view s = arg_text(args, 1);
  result = rt::string_insert(sub, s, arg_int32(args, 2));
}

BUILTIN_ADAPTER(string_replace) {
  const std::string_view s = arg_text(args, 0);
  const std::string_view sub = arg_text(args, 1);
  result = rt::string_replace(s, sub, arg_text(args, 2));
}

BUILTIN_ADAPTER(string_replace_all) {
  const std::string_view s = arg_text(args, 0);
  const std::string_view sub = arg_text(args, 1);
  result = rt::string_replace_all(s, sub, arg_text(args, 2));
}

BUILTIN_ADAPTER(string_upper) { result = rt::string_upper(arg_text(args, 0)); }

BUILTIN_ADAPTER(string_lower) { result = rt::string_lower(arg_text(args, 0)); }

BUILTIN_ADAPTER(string_digits) { result = rt::string_digits(arg_text(args, 0)); }

BUILTIN_ADAPTER(string_letters) { result = rt::string_letters(arg_text(args, 0)); }

BUILTIN_ADAPTER(string_format) {
  // A string goes back as it is; anything else must read as a number.
  const RValue value = args[0].is(Kind::String) ? args[0] : RValue::number(arg_real(args, 0));
  const int32_t tot = arg_int32(args, 1);
  result = rt::string_format(value, tot, arg_int32(args, 2));
}

BUILTIN_ADAPTER(string_hash_to_newline) { result = rt::string_hash_to_newline(arg_text(args, 0)); }

BUILTIN_ADAPTER(sha1_string_utf8) { result = rt::sha1_string_utf8(arg_text(args, 0)); }

}  // namespace

void register_string_builtins() {
  builtin_register("string_length", builtin_string_length, 1);
  builtin_register("string_pos", builtin_string_pos, 2);
  builtin_register("string_pos_ext", builtin_string_pos_ext, 3);
  builtin_register("string_count", builtin_string_count, 2);
  builtin_register("string_char_at", builtin_string_char_at, 2);
  builtin_register("string_ord_at", builtin_string_ord_at, 2);
  builtin_register("string_copy", builtin_string_copy, 3);
  builtin_register("string_delete", builtin_string_delete, 3);
  builtin_register("string_insert", builtin_string_insert, 3);
  builtin_register("string_replace", builtin_string_replace, 3);
  builtin_register("string_replace_all", builtin_string_replace_all, 3);
  builtin_register("string_upper", builtin_string_upper, 1);
  builtin_register("string_lower", builtin_string_lower, 1);
  builtin_register("string_digits", builtin_string_digits, 1);
  builtin_register("string_letters", builtin_string_letters, 1);
  builtin_register("string_format", builtin_string_format, 3);
  builtin_register("string_hash_to_newline", builtin_string_hash_to_newline, 1);
  builtin_register("sha1_string_utf8", builtin_sha1_string_utf8, 1);
}
