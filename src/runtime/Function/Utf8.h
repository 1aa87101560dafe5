// Character stepping over UTF-8 text, as every string built-in counts.
//
// Positions and lengths of strings are in characters. A character starts at a
// lead byte and the lead byte alone decides how many bytes it takes; the
// bytes after it are not checked. So malformed text still steps the same way
// every time, and a sequence cut short by the end of the text stops there.
//
// Long texts are stepped 64 bytes at a time where they are well formed, and
// plain ASCII, the common case of program text, at the speed of the widest
// vector loads the processor has; short runs of ASCII go eight bytes at a
// time, and only what is left goes one character at a time. A search over
// plain ASCII counts positions in the same pass, since there a byte is a
// character, and a copy of plain ASCII checks its bytes as it copies them.
//
// [SECTION] One character: sequence_length, next
// [SECTION] 64-byte blocks: take_block, step_blocks, search_blocks, head_blocks
// [SECTION] Block readers: PortableBlocks, Avx2Blocks, and the choice between them
// [SECTION] Stepping and counting: advance, length, offset_of
// [SECTION] Code points: code_point, encode
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace utf8 {

// ---------------------------------------------------------------------------
// [SECTION] One character

// The number of bytes of the character that begins with `lead`.
inline size_t sequence_length(unsigned char lead) {
  if (lead < 0x80) return 1;
  if ((lead & 0xF8) == 0xF0) return 4;
  if (lead & 0x20) return 3;
  return 2;
}

// The start of the character after the one at `p`, never beyond `end`.
inline const char* next(const char* p, const char* end) {
  const size_t room = static_cast<size_t>(end - p);
  const size_t n = sequence_length(static_cast<unsigned char>(*p));
  return p + (n < room ? n : room);
}

// The number of leading bytes below 0x80 in the 8-byte word at `p`: 8 when
// all are.
inline size_t ascii_prefix(const char* p) {
  uint64_t word;
  std::memcpy(&word, p, sizeof word);
  const uint64_t high = word & 0x8080808080808080ull;
  if (high == 0) return 8;
  if constexpr (std::endian::native == std::endian::little) return static_cast<size_t>(std::countr_zero(high)) / 8;
  return static_cast<size_t>(std::countl_zero(high)) / 8;
}

// The end of the plain ASCII bytes from offset `i` of the `n` bytes at `p`,
// read a word and then a byte at a time; copied to `out` too if given.
[[gnu::always_inline]] inline size_t ascii_words(const char* p, size_t i, size_t n, char* out) {
  for (; n - i >= 8 && ascii_prefix(p + i) == 8; i += 8) {
    if (out) std::memcpy(out + i, p + i, 8);
  }
  for (; i < n && static_cast<unsigned char>(p[i]) < 0x80; ++i) {
    if (out) out[i] = p[i];
  }
  return i;
}

// ---------------------------------------------------------------------------
// [SECTION] 64-byte blocks

// Byte classes of a 64-byte block, bit i for byte i.
struct BlockMasks {
  uint64_t high;        // 0x80 and above
  uint64_t follow;      // 0x80 to 0xBF
  uint64_t three_plus;  // leads of three bytes or more: 0xE0 and above
  uint64_t four;        // leads of four bytes: 0xF0 to 0xF7
};

// Steps over the 64-byte block `m` in one go when it is well formed: every
// lead followed by exactly the follow bytes its length asks for, and no other
// follow bytes. Stepping then lands on every byte that isn't a follow byte and
// on nothing else. A character running past the block is left for the next
// block. Returns the bytes taken, 0 for a malformed block, and adds the
// characters to `chars`.
[[gnu::always_inline]] inline size_t take_block(const BlockMasks& m, size_t& chars) {
  const uint64_t lead = m.high & ~m.follow;
  const uint64_t expected_follow = (lead << 1) | (m.three_plus << 2) | (m.four << 3);
  if (expected_follow != m.follow) return 0;
  const uint64_t runs_past = (lead >> 63) | (m.three_plus >> 62) | (m.four >> 61);
  // The character running past the block starts at its last non-follow byte.
  const size_t taken = runs_past ? static_cast<size_t>(63 - std::countl_zero(~m.follow)) : 64;
  const uint64_t taken_bits = taken == 64 ? ~uint64_t{0} : (uint64_t{1} << taken) - 1;
  chars += static_cast<size_t>(std::popcount(~m.follow & taken_bits));
  return taken;
}

// Steps block by block from the character start `p` over the `n` bytes
// there, while a whole block and 64 more characters fit and the blocks are
// well formed. Returns the bytes stepped over and adds the characters to
// `chars`. `Blocks` reads blocks: ascii_blocks(p, n), the bytes of the plain
// ASCII blocks at the head of `n` bytes, and masks(p) of one block.
template <class Blocks>
[[gnu::always_inline]] inline size_t step_blocks(const char* p, size_t n, size_t max_chars, size_t& chars) {
  // In plain ASCII a byte is a character. The first run is taken before
  // the loop, so that a text all ASCII never sets up the masks.
  size_t i = Blocks::ascii_blocks(p, std::min(n, max_chars)), stepped = i;
  while (n - i >= 64 && max_chars - stepped >= 64) {
    const size_t taken = take_block(Blocks::masks(p + i), stepped);
    if (taken == 0) break;
    i += taken;
    const size_t ascii = Blocks::ascii_blocks(p + i, std::min(n - i, max_chars - stepped));
    i += ascii;
    stepped += ascii;
  }
  chars += stepped;
  return i;
}

// Whether the bytes at `p` after the first equal those of `sub` after its
// first, eight at a time. Compared here rather than by a library call: most
// candidates differ at once, and a call inside a block reader costs it the
// vector registers it keeps.
[[gnu::always_inline]] inline bool same_tail(const char* p, std::string_view sub) {
  size_t k = 1;
  for (; sub.size() - k >= 8; k += 8) {
    uint64_t a, b;
    std::memcpy(&a, p + k, sizeof a);
    std::memcpy(&b, sub.data() + k, sizeof b);
    if (a != b) return false;
  }
  for (; k < sub.size(); ++k) {
    if (p[k] != sub[k]) return false;
  }
  return true;
}

// The first of the offsets `block` plus a bit of `starts` where `sub` stands
// in the `n` bytes at `p`; `n` if none.
[[gnu::always_inline]] inline size_t first_match(const char* p, size_t n, std::string_view sub, size_t block,
                                                 uint64_t starts) {
  for (; starts != 0; starts &= starts - 1) {
    const size_t at = block + static_cast<size_t>(std::countr_zero(starts));
    // The first byte is known to match.
    if (n - at >= sub.size() && same_tail(p + at, sub)) return at;
  }
  return n;
}

// Looks for `sub` (not empty) in the plain ASCII blocks at the head of the
// `n` bytes at `p`, where every byte is a character start. Sets `found` and
// returns the offset of the first match, or returns the bytes of the ASCII
// blocks searched without one. Blocks also gives equal_bits(p, c) of a block.
template <class Blocks>
[[gnu::always_inline]] inline size_t search_blocks(const char* p, size_t n, std::string_view sub, bool& found) {
  found = false;
  size_t i = 0;
  // The first block is read here, as most matches are near: the run of
  // quiet blocks is looked for only behind it.
  while (n - i >= 64) {
    if (Blocks::ascii_blocks(p + i, 64) != 64) return i;
    const size_t at = first_match(p, n, sub, i, Blocks::equal_bits(p + i, sub[0]));
    if (at != n) {
      found = true;
      return at;
    }
    i += 64;
    i += Blocks::quiet_blocks(p + i, n - i, sub[0]);
  }
  // The last bytes, read as a block that overlaps the ones already searched.
  if (n - i >= 64 || i == 0 || i == n || Blocks::ascii_blocks(p + n - 64, 64) != 64) return i;
  const size_t block = n - 64, searched = i - block;
  const size_t at = first_match(p, n, sub, block, Blocks::equal_bits(p + block, sub[0]) >> searched << searched);
  found = at != n;
  return at;
}

// The length of the plain ASCII head of the `n` bytes at `p`: `n` when every
// byte is ASCII, otherwise at most the offset of the first byte that isn't.
// With `out`, the head is copied there as it is checked, so a copy of ASCII
// text reads it once. Blocks also gives copy_ascii_blocks(out, p, n), which
// copies the plain ASCII blocks at the head of `n` bytes.
template <class Blocks>
[[gnu::always_inline]] inline size_t head_blocks(const char* p, size_t n, char* out) {
  size_t i = out ? Blocks::copy_ascii_blocks(out, p, n) : Blocks::ascii_blocks(p, n);
  // Done, or stopped at a block that isn't plain ASCII.
  if (i == n || n - i >= 64) return i;
  if (n >= 64) {
    // The last bytes, as a block that overlaps the ones already read.
    const size_t last = n - 64;
    const size_t tail = out ? Blocks::copy_ascii_blocks(out + last, p + last, 64) : Blocks::ascii_blocks(p + last, 64);
    return tail == 64 ? n : i;
  }
  return ascii_words(p, i, n, out);
}

// ---------------------------------------------------------------------------
// [SECTION] Block readers

// Blocks read eight bytes at a time, or with SSE2 where the target has it.
struct PortableBlocks {
  static size_t ascii_blocks(const char* p, size_t n) {
    size_t i = 0;
    for (; n - i >= 64; i += 64) {
      uint64_t w[8];
      std::memcpy(w, p + i, sizeof w);
      if (((w[0] | w[1] | w[2] | w[3] | w[4] | w[5] | w[6] | w[7]) & 0x8080808080808080ull) != 0) break;
    }
    return i;
  }
  static size_t copy_ascii_blocks(char* out, const char* p, size_t n) {
    size_t i = 0;
    for (; n - i >= 64 && ascii_blocks(p + i, 64) == 64; i += 64) std::memcpy(out + i, p + i, 64);
    return i;
  }
  static size_t quiet_blocks(const char* p, size_t n, char c) {
    size_t i = 0;
    while (n - i >= 64 && ascii_blocks(p + i, 64) == 64 && equal_bits(p + i, c) == 0) i += 64;
    return i;
  }
  static uint64_t equal_bits(const char* p, char c) {
    uint64_t bits = 0;
#if defined(__SSE2__)
    for (int k = 0; k < 4; ++k) {
      const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 16 * k));
      bits |= static_cast<uint64_t>(static_cast<uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(v, _mm_set1_epi8(c)))))
              << (16 * k);
    }
#else
    for (int i = 0; i < 64; ++i) bits |= static_cast<uint64_t>(p[i] == c) << i;
#endif
    return bits;
  }
  static BlockMasks masks(const char* p) {
    BlockMasks m{};
#if defined(__SSE2__)
    for (int k = 0; k < 4; ++k) {
      const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 16 * k));
      const auto bits = [k](__m128i mask) {
        return static_cast<uint64_t>(static_cast<uint32_t>(_mm_movemask_epi8(mask))) << (16 * k);
      };
      m.high |= bits(v);
      // As signed bytes, 0x80-0xBF are the ones below -64, 0xE0-0xFF the negative ones above -33.
      m.follow |= bits(_mm_cmplt_epi8(v, _mm_set1_epi8(-64)));
      m.three_plus |= bits(_mm_and_si128(_mm_cmpgt_epi8(v, _mm_set1_epi8(-33)), v));
      m.four |= bits(_mm_cmpeq_epi8(_mm_and_si128(v, _mm_set1_epi8(static_cast<char>(0xF8))),
                                    _mm_set1_epi8(static_cast<char>(0xF0))));
    }
#else
    for (int i = 0; i < 64; ++i) {
      const auto b = static_cast<unsigned char>(p[i]);
      const uint64_t bit = uint64_t{1} << i;
      if (b >= 0x80) m.high |= bit;
      if ((b & 0xC0) == 0x80) m.follow |= bit;
      if (b >= 0xE0) m.three_plus |= bit;
      if ((b & 0xF8) == 0xF0) m.four |= bit;
    }
#endif
    return m;
  }
};

// Out of line, as the AVX2 readers are: inlined, they would swell advance and
// the searches, which then stop being inlined where they step a few bytes.
[[gnu::noinline]] inline size_t step_blocks_portable(const char* p, size_t n, size_t max_chars, size_t& chars) {
  return step_blocks<PortableBlocks>(p, n, max_chars, chars);
}
[[gnu::noinline]] inline size_t head_blocks_portable(const char* p, size_t n, char* out) {
  return head_blocks<PortableBlocks>(p, n, out);
}
[[gnu::noinline]] inline size_t search_blocks_portable(const char* p, size_t n, std::string_view sub, bool& found) {
  return search_blocks<PortableBlocks>(p, n, sub, found);
}

#if defined(__x86_64__)
// Blocks read as two 32-byte vectors, on processors with AVX2 (chosen at run
// time, the build targets plain x86-64).
struct Avx2Blocks {
  __attribute__((target("avx2"))) static __m256i load(const char* p) {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
  }
  __attribute__((target("avx2"))) static uint64_t bits(__m256i lo, __m256i hi) {
    return static_cast<uint32_t>(_mm256_movemask_epi8(lo)) |
           (static_cast<uint64_t>(static_cast<uint32_t>(_mm256_movemask_epi8(hi))) << 32);
  }
  __attribute__((target("avx2"))) static size_t ascii_blocks(const char* p, size_t n) {
    size_t i = 0;
    for (; n - i >= 128; i += 128) {
      const __m256i any = _mm256_or_si256(_mm256_or_si256(load(p + i), load(p + i + 32)),
                                          _mm256_or_si256(load(p + i + 64), load(p + i + 96)));
      if (_mm256_movemask_epi8(any) != 0) break;
    }
    for (; n - i >= 64; i += 64) {
      if (_mm256_movemask_epi8(_mm256_or_si256(load(p + i), load(p + i + 32))) != 0) break;
    }
    return i;
  }
  __attribute__((target("avx2"))) static size_t copy_ascii_blocks(char* out, const char* p, size_t n) {
    size_t i = 0;
    for (; n - i >= 128; i += 128) {
      const __m256i a = load(p + i), b = load(p + i + 32), c = load(p + i + 64), d = load(p + i + 96);
      if (_mm256_movemask_epi8(_mm256_or_si256(_mm256_or_si256(a, b), _mm256_or_si256(c, d))) != 0) break;
      _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + i), a);
      _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + i + 32), b);
      _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + i + 64), c);
      _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + i + 96), d);
    }
    for (; n - i >= 64; i += 64) {
      const __m256i lo = load(p + i), hi = load(p + i + 32);
      if (_mm256_movemask_epi8(_mm256_or_si256(lo, hi)) != 0) break;
      _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + i), lo);
      _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + i + 32), hi);
    }
    return i;
  }
  __attribute__((target("avx2"))) static size_t quiet_blocks(const char* p, size_t n, char c) {
    // A non-ASCII byte can't be in a quiet block.
    if (c < 0) return ascii_blocks(p, n);
    const __m256i w = _mm256_set1_epi8(c);
    size_t i = 0;
    for (; n - i >= 128; i += 128) {
      const __m256i least = _mm256_min_epi8(_mm256_min_epi8(apart(p + i, w), apart(p + i + 32, w)),
                                            _mm256_min_epi8(apart(p + i + 64, w), apart(p + i + 96, w)));
      if (!all_positive(least)) break;
    }
    for (; n - i >= 64; i += 64) {
      if (!all_positive(_mm256_min_epi8(apart(p + i, w), apart(p + i + 32, w)))) break;
    }
    return i;
  }
  // The 32 bytes at `p` xor those of `w` (ASCII), as signed bytes: 0 where
  // they are equal, negative on non-ASCII bytes, positive on the others.
  __attribute__((target("avx2"))) static __m256i apart(const char* p, __m256i w) {
    return _mm256_xor_si256(load(p), w);
  }
  // Whether every signed byte of `v` is above 0: subtracting 1 with
  // saturation leaves the sign bit on exactly the others.
  __attribute__((target("avx2"))) static bool all_positive(__m256i v) {
    return _mm256_movemask_epi8(_mm256_subs_epi8(v, _mm256_set1_epi8(1))) == 0;
  }
  __attribute__((target("avx2"))) static uint64_t equal_bits(const char* p, char c) {
    const __m256i wanted = _mm256_set1_epi8(c);
    return bits(_mm256_cmpeq_epi8(load(p), wanted), _mm256_cmpeq_epi8(load(p + 32), wanted));
  }
  __attribute__((target("avx2"))) static BlockMasks masks(const char* p) {
    const __m256i lo = load(p), hi = load(p + 32);
    const __m256i below_c0 = _mm256_set1_epi8(-64), above_df = _mm256_set1_epi8(-33);
    const __m256i top5 = _mm256_set1_epi8(static_cast<char>(0xF8)), f0 = _mm256_set1_epi8(static_cast<char>(0xF0));
    return {
        bits(lo, hi),
        bits(_mm256_cmpgt_epi8(below_c0, lo), _mm256_cmpgt_epi8(below_c0, hi)),
        bits(_mm256_and_si256(_mm256_cmpgt_epi8(lo, above_df), lo), _mm256_and_si256(_mm256_cmpgt_epi8(hi, above_df), hi)),
        bits(_mm256_cmpeq_epi8(_mm256_and_si256(lo, top5), f0), _mm256_cmpeq_epi8(_mm256_and_si256(hi, top5), f0)),
    };
  }
};

__attribute__((target("avx2,popcnt"))) inline size_t step_blocks_avx2(const char* p, size_t n, size_t max_chars,
                                                                       size_t& chars) {
  return step_blocks<Avx2Blocks>(p, n, max_chars, chars);
}
__attribute__((target("avx2"))) inline size_t head_blocks_avx2(const char* p, size_t n, char* out) {
  return head_blocks<Avx2Blocks>(p, n, out);
}
__attribute__((target("avx2"))) inline size_t search_blocks_avx2(const char* p, size_t n, std::string_view sub,
                                                                  bool& found) {
  return search_blocks<Avx2Blocks>(p, n, sub, found);
}

inline bool cpu_has_avx2() {
  static const bool has = [] {
    __builtin_cpu_init();
    return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("popcnt");
  }();
  return has;
}
#endif

// step_blocks with the widest blocks this processor reads.
inline size_t step_long_run(const char* p, size_t n, size_t max_chars, size_t& chars) {
#if defined(__x86_64__)
  if (cpu_has_avx2()) return step_blocks_avx2(p, n, max_chars, chars);
#endif
  return step_blocks_portable(p, n, max_chars, chars);
}

// search_blocks with the widest blocks this processor reads: the search of a
// plain ASCII head, where positions need no stepping.
inline size_t search_ascii_head(const char* p, size_t n, std::string_view sub, bool& found) {
#if defined(__x86_64__)
  if (cpu_has_avx2()) return search_blocks_avx2(p, n, sub, found);
#endif
  return search_blocks_portable(p, n, sub, found);
}

// head_blocks with the widest blocks this processor reads: the length of
// the plain ASCII head of the `n` bytes at `p`, copied to `out` if given.
// Less than a block is read right here, for less than a call costs.
inline size_t ascii_head(const char* p, size_t n, char* out = nullptr) {
  if (n < 64) return ascii_words(p, 0, n, out);
#if defined(__x86_64__)
  if (cpu_has_avx2()) return head_blocks_avx2(p, n, out);
#endif
  return head_blocks_portable(p, n, out);
}

// ---------------------------------------------------------------------------
// [SECTION] Stepping and counting

// Steps from the character start `p` over at most `max_chars` characters,
// stopping at the first character start at or beyond `limit` (limit <= end).
// Adds the characters stepped over to `counted` and returns where it stopped.
inline const char* advance(const char* p, const char* limit, const char* end, size_t max_chars, size_t& counted) {
  size_t left = max_chars;
  while (p < limit && left > 0) {
    if (limit - p >= 64 && left >= 64) {
      size_t chars = 0;
      const size_t bytes = step_long_run(p, static_cast<size_t>(limit - p), left, chars);
      p += bytes;
      left -= chars;
      // Stopped at a malformed block: step through it one character at a time.
      if (bytes > 0) continue;
    }
    if (limit - p >= 8 && left >= 8) {
      const size_t ascii = ascii_prefix(p);
      p += ascii;
      left -= ascii;
      if (ascii == 8) continue;
    }
    p = next(p, end);
    --left;
  }
  counted += max_chars - left;
  return p;
}

// The number of characters of `text`.
inline size_t length(std::string_view text) {
  size_t n = 0;
  advance(text.data(), text.data() + text.size(), text.data() + text.size(), SIZE_MAX, n);
  return n;
}

// The byte offset of the character with 0-based index `index`; the size of
// the text when the text has no more than `index` characters.
inline size_t offset_of(std::string_view text, size_t index) {
  size_t n = 0;
  const char* end = text.data() + text.size();
  return static_cast<size_t>(advance(text.data(), end, end, index, n) - text.data());
}

// ---------------------------------------------------------------------------
// [SECTION] Code points

// Decodes the character at `p` (a character start before `end`) to its code
// point, from the lead byte's payload bits and six bits of each byte after
// it; bytes cut off by the end read as 0.
inline uint32_t code_point(const char* p, const char* end) {
  const auto* b = reinterpret_cast<const unsigned char*>(p);
  const size_t n = sequence_length(b[0]);
  const size_t room = static_cast<size_t>(end - p);
  auto tail = [&](size_t i) -> uint32_t { return i < room ? (b[i] & 0x3Fu) : 0u; };
  switch (n) {
    case 1: return b[0];
    case 2: return ((b[0] & 0x1Fu) << 6) | tail(1);
    case 3: return ((b[0] & 0x0Fu) << 12) | (tail(1) << 6) | tail(2);
    default: return ((b[0] & 0x07u) << 18) | (tail(1) << 12) | (tail(2) << 6) | tail(3);
  }
}

// Writes `cp` (at most 0x10FFFF) as UTF-8 at `out`; returns the bytes written.
inline size_t encode(uint32_t cp, char* out) {
  auto* o = reinterpret_cast<unsigned char*>(out);
  if (cp < 0x80) {
    o[0] = static_cast<unsigned char>(cp);
    return 1;
  }
  if (cp < 0x800) {
    o[0] = static_cast<unsigned char>(0xC0 | (cp >> 6));
    o[1] = static_cast<unsigned char>(0x80 | (cp & 0x3F));
    return 2;
  }
  if (cp < 0x10000) {
    o[0] = static_cast<unsigned char>(0xE0 | (cp >> 12));
    o[1] = static_cast<unsigned char>(0x80 | ((cp >> 6) & 0x3F));
    o[2] = static_cast<unsigned char>(0x80 | (cp & 0x3F));
    return 3;
  }
  o[0] = static_cast<unsigned char>(0xF0 | (cp >> 18));
  o[1] = static_cast<unsigned char>(0x80 | ((cp >> 12) & 0x3F));
  o[2] = static_cast<unsigned char>(0x80 | ((cp >> 6) & 0x3F));
  o[3] = static_cast<unsigned char>(0x80 | (cp & 0x3F));
  return 4;
}

}  // namespace utf8
