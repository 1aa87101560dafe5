#include "runtime/Function/StringFunctions.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <string>
#include <vector>

#include "runtime/Code/Builtins.h"
#include "runtime/Code/Conversions.h"
#include "runtime/Function/Utf8.h"
#include "support/CallBuiltin.h"
#include "support/Fatal.h"

using namespace rt;

namespace {

// The text of a string result; fails the test for any other kind.
std::string text(const RValue& v) {
  EXPECT_TRUE(v.is(Kind::String)) << "kind " << kind_name(v.kind());
  return std::string(v.string_view());
}

// A small generator of its own, so that the texts are the same on every machine.
struct Lcg {
  uint32_t seed;
  uint32_t operator()(uint32_t n) {
    seed = seed * 1664525u + 1013904223u;
    return (seed >> 8) % n;
  }
};

// The character starts of `t`, stepped one by one, and the end.
std::vector<size_t> character_starts(const std::string& t) {
  std::vector<size_t> starts;
  const char* end = t.data() + t.size();
  for (const char* p = t.data(); p < end; p = utf8::next(p, end)) starts.push_back(static_cast<size_t>(p - t.data()));
  starts.push_back(t.size());
  return starts;
}

// The characters of `t` from 0-based index `first` on, at most `n` of them, stepped one by one.
std::string characters(const std::string& t, size_t first, size_t n = std::string::npos) {
  const std::vector<size_t> starts = character_starts(t);
  const size_t last = starts.size() - 1;
  const size_t a = std::min(first, last), b = a + std::min(n, last - a);
  return t.substr(starts[a], starts[b] - starts[a]);
}

}  // namespace

TEST(Utf8, LeadByteDecidesTheLengthWithoutValidation) {
  // A stray follow byte steps as a 2-byte lead, 0xA0 and 0xF8 as 3-byte ones.
  const std::pair<unsigned char, size_t> leads[] = {{'a', 1}, {0xC3, 2}, {0x80, 2}, {0xE2, 3},
                                                     {0xA0, 3}, {0xF0, 4}, {0xF8, 3}};
  for (const auto& [lead, length] : leads) EXPECT_EQ(utf8::sequence_length(lead), length) << int{lead};
  EXPECT_EQ(utf8::length("\xC3" "a"), 1u);  // the lead swallows the 'a'
  EXPECT_EQ(utf8::length("ab\xE2"), 3u);    // cut short by the end
  EXPECT_EQ(utf8::offset_of("aèb", 2), 3u);
  EXPECT_EQ(utf8::offset_of("aèb", 9), 4u);
  // A long ASCII run with one accented letter far in: the word-at-a-time path must stop on it.
  const std::string long_text = std::string(70, 'x') + "è" + std::string(40, 'y');
  EXPECT_EQ(utf8::length(long_text), 111u);
  EXPECT_EQ(utf8::offset_of(long_text, 71), 72u);
  char out[4];
  EXPECT_EQ(std::string(out, utf8::encode(0x1F600, out)), "😀");
}

TEST(Utf8, BlockSteppingAgreesWithOneByOneOnWellFormedAndMalformedText) {
  // Long runs of ASCII, characters of every length that cross the 64-byte
  // blocks, and (every fourth round) malformed bytes here and there.
  const char* pieces[] = {"abcdefgh", "a", " ", "è", "à", "€", "😀", "\x80", "\xC3", "\xE2", "\xF0", "\xFF", "\xBF"};
  Lcg random{12345};
  for (int round = 0; round < 1000; ++round) {
    SCOPED_TRACE(round);
    std::string t;
    for (const uint32_t length = random(400); t.size() < length;) {
      t += pieces[random(round % 3 == 0 ? 2 : round % 4 == 0 ? 13 : 7)];
    }
    const char* end = t.data() + t.size();
    const char* limit = t.data() + random(static_cast<uint32_t>(t.size()) + 1);
    const size_t max_chars = round % 2 ? SIZE_MAX : random(300);
    size_t fast = 7, slow = 7;
    const char* p_slow = t.data();
    for (size_t left = max_chars; p_slow < limit && left > 0; --left, ++slow) p_slow = utf8::next(p_slow, end);
    ASSERT_EQ(utf8::advance(t.data(), limit, end, max_chars, fast) - t.data(), p_slow - t.data());
    ASSERT_EQ(fast, slow);

    // The portable block reader agrees with the one this processor uses.
    size_t chars_here = 0, chars_portable = 0;
    ASSERT_EQ(utf8::step_long_run(t.data(), t.size(), max_chars, chars_here),
              utf8::step_blocks_portable(t.data(), t.size(), max_chars, chars_portable));
    ASSERT_EQ(chars_here, chars_portable);
    const std::string sub = round % 5 == 0 ? "è" : round % 5 == 1 ? "ab" : "a";
    bool found_here = false, found_portable = false;
    ASSERT_EQ(utf8::search_ascii_head(t.data(), t.size(), sub, found_here),
              utf8::search_blocks_portable(t.data(), t.size(), sub, found_portable));
    ASSERT_EQ(found_here, found_portable);

    // The ASCII head is the same with either reader, copied or not: only
    // ASCII bytes, and all of them when there is nothing else.
    std::string copy_here(t.size(), '\0'), copy_portable(t.size(), '\0');
    const size_t head = utf8::ascii_head(t.data(), t.size(), copy_here.data());
    ASSERT_EQ(head, utf8::head_blocks_portable(t.data(), t.size(), copy_portable.data()));
    ASSERT_EQ(head, utf8::ascii_head(t.data(), t.size()));
    ASSERT_EQ(head, utf8::head_blocks_portable(t.data(), t.size(), nullptr));
    const auto high = std::ranges::find_if(t, [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
    ASSERT_EQ(head == t.size(), high == t.end());
    ASSERT_LE(head, static_cast<size_t>(high - t.begin()));
    ASSERT_EQ(copy_here.substr(0, head), t.substr(0, head));
    ASSERT_EQ(copy_portable.substr(0, head), t.substr(0, head));
  }
}

// The searches and the ranges take shortcuts over plain ASCII and whole
// blocks; stepping one character at a time must give the same answers. The
// texts put a match and the ends of a range at every offset around the
// 64-byte blocks, in plain ASCII and behind an accented letter, a stray
// follow byte or a cut lead that swallows the bytes after it, with many bytes
// equal to the first byte of `sub`; then come random texts of such pieces.
TEST(StringFunctions, ShortcutsAgreeWithSteppingOneCharacterAtATime) {
  struct Case { std::string t, sub; size_t at; };
  std::vector<Case> cases;
  const char* marks[] = {"", "è", "€", "\x80", "\xC3", "\xE2"};
  for (const size_t length : {2u, 9u, 64u, 65u, 66u, 127u, 128u, 129u, 130u, 193u, 258u, 1030u}) {
    std::string plain;
    while (plain.size() < length) plain += "F x Fy Fz ";
    plain.resize(length);
    for (const size_t at : {0u, 1u, 7u, 8u, 62u, 63u, 64u, 65u, 66u, 126u, 127u, 128u, 129u, 191u, 192u, 256u, 1000u}) {
      if (at + 2 > length) continue;
      for (const char* mark : marks) {
        for (const size_t mark_at : {at > 0 ? at - 1 : 0, size_t{0}}) {
          cases.push_back({plain.substr(0, at) + "FI" + plain.substr(at + 2), "FI", at});
          cases.back().t.insert(mark_at, mark);
        }
      }
    }
  }
  const char* pieces[] = {"abcdefgh ", "xyz", "è", "ab", "€", "\xC3", "\xE2", "b"};
  Lcg random{777};
  for (int round = 0; round < 300; ++round) {
    std::string t;
    for (const uint32_t length = random(700); t.size() < length;) t += pieces[random(round % 2 ? 3 : 8)];
    const std::string sub = std::string(pieces[random(8)]) + (round % 3 == 0 ? "a" : "");
    cases.push_back({t, sub, random(static_cast<uint32_t>(t.size()) + 1)});
  }

  for (const auto& [t, sub, at] : cases) {
    SCOPED_TRACE(testing::Message() << t.size() << " bytes, " << at);
    const std::vector<size_t> starts = character_starts(t);
    std::vector<size_t> positions;  // 1-based, of every match at a character start
    std::string replaced;           // with "#" for every match not overlapping the one before
    size_t copied = 0;
    for (size_t k = 0; k + 1 < starts.size(); ++k) {
      if (t.size() - starts[k] < sub.size() || t.compare(starts[k], sub.size(), sub) != 0) continue;
      positions.push_back(k + 1);
      if (starts[k] < copied) continue;
      replaced += t.substr(copied, starts[k] - copied) + "#";
      copied = starts[k] + sub.size();
    }
    replaced += t.substr(copied);
    ASSERT_EQ(string_pos(sub, t), positions.empty() ? 0 : positions[0]);
    ASSERT_EQ(string_count(sub, t), positions.size());
    ASSERT_EQ(text(string_replace_all(t, sub, "#")), replaced);
    for (const size_t from : {size_t{3}, at + 1}) {
      const auto there = std::ranges::lower_bound(positions, from);
      ASSERT_EQ(string_pos_ext(sub, t, static_cast<int>(from)), there == positions.end() ? 0 : *there) << from;
    }
    for (const size_t first : {size_t{0}, at / 2, at}) {
      const int i = static_cast<int>(first) + 1;
      for (const size_t n : {size_t{1}, size_t{63}, size_t{64}, size_t{65}, at, at + 1, t.size()}) {
        ASSERT_EQ(text(string_copy(t, i, static_cast<int>(n))), characters(t, first, n)) << i << " " << n;
        ASSERT_EQ(text(string_delete(t, i, static_cast<int>(n))), characters(t, 0, first) + characters(t, first + n))
            << i << " " << n;
      }
      ASSERT_EQ(text(string_char_at(t, i)), characters(t, first, 1)) << i;
      ASSERT_EQ(text(string_insert("<>", t, i)), characters(t, 0, first) + "<>" + characters(t, first)) << i;
    }
  }
}

TEST(StringFunctions, NearMissesDifferingInAnyByteAreNotMatches) {
  // Before the match, one near miss for each byte of `word` after the first,
  // so every byte of the comparison decides one candidate.
  for (size_t size = 2; size <= 24; ++size) {
    std::string word, t = "x";
    for (size_t k = 0; k < size; ++k) word += static_cast<char>('a' + k);
    for (size_t k = 1; k < size; ++k) t += word.substr(0, k) + "X" + word.substr(k + 1) + " ";
    const double expected = static_cast<double>(t.size() + 1);
    t += word;
    EXPECT_EQ(string_pos(word, t), expected) << size;
    EXPECT_EQ(string_count(word, t), 1) << size;
    EXPECT_EQ(string_pos(word, t + "è"), expected) << size;
  }
}

// Called by name, as programs call them: positions and lengths count
// characters, and any value reads as its text form.
TEST(StringBuiltins, GiveTheirResultsByName) {
  struct Case { const char* name; std::vector<Arg> args; std::string result; };
  const std::string a1000(1000, 'a');
  const Case cases[] = {
      {"string_length", {""}, "0"}, {"string_length", {"perché sì"}, "9"}, {"string_length", {1.5}, "4"} /* "1.50" */,
      // An empty `sub` is found at once; a match counts only at a character start.
      {"string_pos", {"sì", "perché sì"}, "8"}, {"string_pos", {"", "abc"}, "1"}, {"string_pos", {"", ""}, "1"},
      {"string_pos", {"abcd", "abc"}, "0"}, {"string_pos", {"a", "\xC3" "aa"}, "2"},
      {"string_pos", {"\xA8", "è\xA8"}, "2"},
      // From a start position: 0 counts as 1, below 0 finds nothing.
      {"string_pos_ext", {"b", "abcb", 0}, "2"}, {"string_pos_ext", {"a", "abcb", -1}, "0"},
      {"string_pos_ext", {"b", "abcb", 5}, "0"}, {"string_pos_ext", {"à", "àbà", 2}, "3"},
      {"string_pos_ext", {"", "abc", 2}, "2"},
      // Overlapping matches count; an empty `sub` counts every character.
      {"string_count", {"aa", "aaaa"}, "3"}, {"string_count", {"", "èè"}, "2"}, {"string_count", {"", ""}, "0"},
      {"string_count", {"a", "\xC3" "aa"}, "1"},
      {"string_char_at", {"abc", -5}, "a"}, {"string_char_at", {"abc", 4}, ""}, {"string_char_at", {"", 1}, ""},
      // 0 just behind the last character, -1 farther.
      {"string_ord_at", {"abc", 0}, "97"}, {"string_ord_at", {"abc", 4}, "0"}, {"string_ord_at", {"abc", 5}, "-1"},
      {"string_ord_at", {"aè", 2}, "232"}, {"string_ord_at", {"€", 1}, "8364"}, {"string_ord_at", {"😀", 1}, "128512"},
      {"string_copy", {"abc", 0, 2}, "ab"}, {"string_copy", {"abc", 2, -1}, ""}, {"string_copy", {"abc", 4, 1}, ""},
      {"string_delete", {"abc", 0, 1}, "abc"}, {"string_delete", {"abc", 1, 0}, "abc"},
      {"string_delete", {"abc", 4, 1}, "abc"}, {"string_insert", {"X", "abc", -3}, "Xabc"},
      {"string_insert", {"X", "abc", 40}, "abcX"},
      {"string_insert", {RValue::undefined(), "<>", 2}, "<undefined>"},
      {"string_replace", {"a-b-c", "-", "+"}, "a+b-c"}, {"string_replace", {"abc", "x", "+"}, "abc"},
      {"string_replace", {"abc", "", "+"}, "abc"}, {"string_replace", {"\xC3" "aa", "a", "x"}, "\xC3" "ax"},
      // Left to right, without overlaps; past 256 bytes the result grows several times.
      {"string_replace_all", {"aaa", "a", "aa"}, "aaaaaa"}, {"string_replace_all", {"aaaa", "aa", "a"}, "aa"},
      {"string_replace_all", {"abc", "", "x"}, "abc"}, {"string_replace_all", {"", "a", "b"}, ""},
      {"string_replace_all", {a1000, "a", "bb"}, std::string(2000, 'b')},
      {"string_replace_all", {a1000 + "x", "x", "y"}, a1000 + "y"},  // a long run without a match
      // Accented letters change too, nothing above the Basic Multilingual Plane
      // or in malformed bytes; some letters change their byte length (a 2-byte
      // letter to a 3-byte one is the most a result can grow).
      {"string_upper", {"città è già, xyz!"}, "CITTÀ È GIÀ, XYZ!"}, {"string_upper", {"😀𐐨"}, "😀𐐨"},
      {"string_upper", {"ı"}, "I"}, {"string_upper", {"ɐɐɐɐ"}, "ⱯⱯⱯⱯ"}, {"string_upper", {"a\xC3"}, "A\xC3"},
      {"string_upper", {"\xFF" "b"}, "\xFF" "b"}, {"string_lower", {"ẞ"}, "ß"},
      {"string_lower", {"ÀÉÌÒÙ Perché, XYZ!"}, "àéìòù perché, xyz!"},
      // ASCII digits and letters only; a digit inside a malformed character is not one of its own.
      {"string_digits", {"a1è2b 3.5"}, "1235"}, {"string_digits", {"\xC3" "12"}, "2"},
      {"string_letters", {"a1è2b 3.5Z"}, "abZ"},
      // A string goes back as it is; widths and decimals below 0 count as 0.
      {"string_format", {1.5, 3, 2}, "  1.50"}, {"string_format", {2.5, -1, -1}, "2"},
      {"string_format", {"x", 5, 5}, "x"},
      {"string_hash_to_newline", {"#a##"}, "\r\na\r\n\r\n"}, {"string_hash_to_newline", {"a\\#b"}, "a#b"},
      {"string_hash_to_newline", {"\\a\\"}, "\\a\\"},
      // Tails around the block edge take one or two padding blocks.
      {"sha1_string_utf8", {"abc"}, "a9993e364706816aba3e25717850c26c9cd0d89d"},
      {"sha1_string_utf8", {""}, "da39a3ee5e6b4b0d3255bfef95601890afd80709"},
      {"sha1_string_utf8", {std::string(55, 'a')}, "c1c8bbdc22796e28c0e15163d20899b65621d65a"},
      {"sha1_string_utf8", {std::string(56, 'a')}, "c2db330f6083854c99d4b5bfb6e8f29f201be699"},
      {"sha1_string_utf8", {std::string(64, 'a')}, "0098ba824b5c16427bd7a1122a5a442a25ec644d"},
      {"sha1_string_utf8", {std::string(1000000, 'a')}, "34aa973cd4c4daa4f61eeb2bdbad27316534016f"},
  };
  const std::vector<std::string> numeric = {"string_length", "string_pos", "string_pos_ext", "string_count",
                                            "string_ord_at"};
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << c.name << " " << value_to_text(c.args[0].value).substr(0, 20));
    const RValue result = call_by_name(c.name, c.args);
    EXPECT_EQ(result.kind(), std::ranges::count(numeric, c.name) ? Kind::Number : Kind::String);
    EXPECT_EQ(value_to_text(result), c.result);
  }
  // The letters are changed without touching the process locale.
  EXPECT_STREQ(std::setlocale(LC_CTYPE, nullptr), "C");
}

TEST(StringFunctions, FormatPadsAndRoundsAsPrintfInTheCLocale) {
  char expected[512];
  for (double v : {0.0, -0.0, 0.125, 0.375, 2.675, -3.14159, 1e20, 123.456, 1e-7, 99.995}) {
    for (int tot : {0, 1, 5, 12}) {
      for (int dec : {0, 1, 2, 6}) {
        std::snprintf(expected, sizeof expected, "%*.*f", tot + dec + (dec > 0 ? 1 : 0), dec, v);
        EXPECT_EQ(text(string_format(v, tot, dec)), expected) << v << " " << tot << " " << dec;
      }
    }
  }
  // A locale whose decimal mark is a comma doesn't change the point.
  const std::string previous = std::setlocale(LC_NUMERIC, nullptr);
  if (std::setlocale(LC_NUMERIC, "it_IT.UTF-8")) {
    EXPECT_EQ(text(string_format(1.5, 0, 2)), "1.50");
    std::setlocale(LC_NUMERIC, previous.c_str());
  }
}
