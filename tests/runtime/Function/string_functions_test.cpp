#include "runtime/Function/StringFunctions.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <string>
#include <vector>

#include "runtime/Code/Builtins.h"
#include "runtime/Code/Error.h"
#include "runtime/Function/Utf8.h"

using namespace rt;

namespace {

// The text of a string result; fails the test for any other kind.
std::string text(const RValue& v) {
  EXPECT_TRUE(v.is(Kind::String)) << "kind " << kind_name(v.kind());
  return std::string(v.string_view());
}

// Calls a built-in by name and hands back its result.
RValue call(const char* name, std::initializer_list<RValue> arguments) {
  register_runtime_builtins();
  std::vector<RValue> args(arguments);
  RValue result;
  EXPECT_TRUE(builtin_call(name, result, nullptr, nullptr, static_cast<int>(args.size()), args.data())) << name;
  return result;
}

// The short message of the fatal error a call by name raises.
std::string call_error(const char* name, std::initializer_list<RValue> arguments) {
  try {
    call(name, arguments);
  } catch (const QvScriptException& e) {
    return e.message;
  }
  return "(no error)";
}

// Steps one character at a time: what utf8::advance must agree with.
const char* step_one_by_one(const char* p, const char* limit, const char* end, size_t max_chars, size_t& counted) {
  for (; p < limit && max_chars > 0; --max_chars, ++counted) p = utf8::next(p, end);
  return p;
}

// The character starts of `t`, one by one, and the end.
std::vector<size_t> character_starts(const std::string& t) {
  std::vector<size_t> starts;
  const char* end = t.data() + t.size();
  for (const char* p = t.data(); p < end; p = utf8::next(p, end)) starts.push_back(static_cast<size_t>(p - t.data()));
  starts.push_back(t.size());
  return starts;
}

// Every byte from 0x80 on, for find_first_of.
const std::string& high_bytes() {
  static const std::string bytes = [] {
    std::string b;
    for (int c = 0x80; c < 0x100; ++c) b += static_cast<char>(c);
    return b;
  }();
  return bytes;
}

// The 1-based positions of the character starts of `t` where `sub` stands, tried one by one.
std::vector<size_t> positions_by_trying(const std::string& t, const std::string& sub) {
  const std::vector<size_t> starts = character_starts(t);
  std::vector<size_t> positions;
  for (size_t k = 0; k + 1 < starts.size(); ++k) {
    if (t.size() - starts[k] >= sub.size() && t.compare(starts[k], sub.size(), sub) == 0) positions.push_back(k + 1);
  }
  return positions;
}

// The characters of `t` from 0-based index `first` on, at most `n` of them, stepped one by one.
std::string characters_by_stepping(const std::string& t, size_t first, size_t n = std::string::npos) {
  const std::vector<size_t> starts = character_starts(t);
  const size_t last = starts.size() - 1;
  const size_t a = std::min(first, last), b = a + std::min(n, last - a);
  return t.substr(starts[a], starts[b] - starts[a]);
}

}  // namespace

TEST(Utf8, LeadByteDecidesTheLengthWithoutValidation) {
  EXPECT_EQ(utf8::sequence_length('a'), 1u);
  EXPECT_EQ(utf8::sequence_length(0xC3), 2u);
  EXPECT_EQ(utf8::sequence_length(0x80), 2u);  // a stray follow byte steps as a 2-byte lead
  EXPECT_EQ(utf8::sequence_length(0xE2), 3u);
  EXPECT_EQ(utf8::sequence_length(0xA0), 3u);
  EXPECT_EQ(utf8::sequence_length(0xF0), 4u);
  EXPECT_EQ(utf8::sequence_length(0xF8), 3u);

  EXPECT_EQ(utf8::length("città è"), 7u);
  EXPECT_EQ(utf8::length("\xC3" "a"), 1u);      // the lead swallows the 'a'
  EXPECT_EQ(utf8::length("ab\xE2"), 3u);        // cut short by the end
  EXPECT_EQ(utf8::offset_of("aèb", 2), 3u);
  EXPECT_EQ(utf8::offset_of("aèb", 9), 4u);

  // Long ASCII runs with one accented letter far in: the word-at-a-time path
  // must stop on it.
  const std::string long_text = std::string(70, 'x') + "è" + std::string(40, 'y');
  EXPECT_EQ(utf8::length(long_text), 111u);
  EXPECT_EQ(utf8::offset_of(long_text, 71), 72u);
  EXPECT_EQ(utf8::code_point("€", "€" + 3), 0x20ACu);
  char out[4];
  EXPECT_EQ(std::string(out, utf8::encode(0x20AC, out)), "€");
  EXPECT_EQ(std::string(out, utf8::encode(0x1F600, out)), "😀");
}

TEST(Utf8, BlockSteppingAgreesWithOneByOneOnWellFormedAndMalformedText) {
  // Pieces that make long runs of ASCII, characters of every length that
  // cross the 64-byte blocks, and malformed bytes here and there.
  const char* pieces[] = {"abcdefgh", "a", " ", "è", "à", "€", "😀", "\x80", "\xC3", "\xE2", "\xF0", "\xFF", "\xBF"};
  uint32_t seed = 12345;
  auto random = [&seed](uint32_t n) {
    seed = seed * 1664525u + 1013904223u;
    return (seed >> 8) % n;
  };
  for (int round = 0; round < 2000; ++round) {
    std::string t;
    const bool malformed = round % 4 == 0;
    const uint32_t piece_count = malformed ? 13 : 7;
    const uint32_t length = random(400);
    while (t.size() < length) t += pieces[random(round % 3 == 0 ? 2 : piece_count)];
    const char* end = t.data() + t.size();
    const char* limit = t.data() + random(static_cast<uint32_t>(t.size()) + 1);
    const size_t max_chars = round % 2 ? SIZE_MAX : random(300);
    size_t fast = 7, slow = 7;
    const char* p_fast = utf8::advance(t.data(), limit, end, max_chars, fast);
    const char* p_slow = step_one_by_one(t.data(), limit, end, max_chars, slow);
    ASSERT_EQ(p_fast - t.data(), p_slow - t.data()) << "round " << round;
    ASSERT_EQ(fast, slow) << "round " << round;

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
    const size_t first_non_ascii = t.find_first_of(high_bytes());
    ASSERT_EQ(head == t.size(), first_non_ascii == std::string::npos) << "round " << round;
    ASSERT_LE(head, first_non_ascii);
    ASSERT_EQ(copy_here.substr(0, head), t.substr(0, head));
    ASSERT_EQ(copy_portable.substr(0, head), t.substr(0, head));
  }
}

TEST(StringFunctions, SearchesAgreeWithTryingEveryCharacterStart) {
  // Long texts where matches lie far in, behind runs of plain ASCII, in
  // accented text, or inside malformed characters.
  const char* pieces[] = {"abcdefgh ", "xyz", "è", "ab", "€", "\xC3", "\xE2", "b"};
  uint32_t seed = 777;
  auto random = [&seed](uint32_t n) {
    seed = seed * 1664525u + 1013904223u;
    return (seed >> 8) % n;
  };
  for (int round = 0; round < 600; ++round) {
    std::string t;
    const uint32_t length = random(700);
    while (t.size() < length) t += pieces[random(round % 2 ? 3 : 8)];
    const std::string sub = round % 3 == 0 ? std::string(pieces[random(8)]) + "a" : pieces[random(8)];
    const std::vector<size_t> starts = character_starts(t);

    double first = 0, count = 0;
    std::string replaced;
    size_t copied = 0;
    for (size_t k = 0; k + 1 < starts.size(); ++k) {
      if (t.compare(starts[k], sub.size(), sub) != 0 || t.size() - starts[k] < sub.size()) continue;
      if (first == 0) first = static_cast<double>(k + 1);
      ++count;
      if (starts[k] >= copied) {
        replaced += t.substr(copied, starts[k] - copied) + "#";
        copied = starts[k] + sub.size();
      }
    }
    replaced += t.substr(std::min(copied, t.size()));

    ASSERT_EQ(string_pos(sub, t), first) << "round " << round;
    ASSERT_EQ(string_count(sub, t), count) << "round " << round;
    ASSERT_EQ(text(string_replace_all(t, sub, "#")), replaced) << "round " << round;
    const int from = static_cast<int>(random(static_cast<uint32_t>(starts.size())) + 1);
    double from_there = 0;
    for (size_t k = static_cast<size_t>(from) - 1; k + 1 < starts.size() && from_there == 0; ++k) {
      if (t.size() - starts[k] >= sub.size() && t.compare(starts[k], sub.size(), sub) == 0) from_there = static_cast<double>(k + 1);
    }
    ASSERT_EQ(string_pos_ext(sub, t, from), from_there) << "round " << round;
  }
}

TEST(StringFunctions, AsciiShortcutsAgreeWithSteppingAroundBlockEdges) {
  // A match and the ends of a range placed at every offset around the
  // 64-byte blocks, in plain ASCII and behind an accented letter, a stray
  // follow byte, or a cut lead that swallows the bytes after it. Many bytes
  // equal the first byte of `sub` without a match.
  const std::string sub = "FI";
  const char* marks[] = {"", "è", "€", "\x80", "\xC3", "\xE2"};
  for (const size_t length : {2u, 9u, 64u, 65u, 66u, 127u, 128u, 129u, 130u, 193u, 258u, 1030u}) {
    std::string plain;
    while (plain.size() < length) plain += "F x Fy Fz ";
    plain.resize(length);
    for (const size_t at : {0u, 1u, 7u, 8u, 62u, 63u, 64u, 65u, 66u, 126u, 127u, 128u, 129u, 191u, 192u, 256u, 1000u}) {
      if (at + sub.size() > length) continue;
      std::string t = plain;
      t.replace(at, sub.size(), sub);
      for (const char* mark : marks) {
        // The mark right before the match, or at the start of the text.
        for (const size_t mark_at : {at > 0 ? at - 1 : 0, size_t{0}}) {
          std::string marked = t;
          marked.insert(mark_at, mark);
          const std::string where = std::to_string(length) + " " + std::to_string(at) + " " + mark + " " + std::to_string(mark_at);
          const std::vector<size_t> positions = positions_by_trying(marked, sub);
          ASSERT_EQ(string_pos(sub, marked), positions.empty() ? 0 : positions[0]) << where;
          ASSERT_EQ(string_count(sub, marked), positions.size()) << where;
          const auto behind_3 = std::find_if(positions.begin(), positions.end(), [](size_t k) { return k >= 3; });
          ASSERT_EQ(string_pos_ext(sub, marked, 3), behind_3 == positions.end() ? 0 : *behind_3) << where;

          for (const size_t first : {size_t{0}, at / 2, at}) {
            const int i = static_cast<int>(first) + 1;
            for (const size_t n : {size_t{1}, size_t{63}, size_t{64}, size_t{65}, at, at + 1, marked.size()}) {
              const std::string copied = characters_by_stepping(marked, first, n);
              ASSERT_EQ(text(string_copy(marked, i, static_cast<int>(n))), copied) << where << " " << i << " " << n;
              ASSERT_EQ(text(string_delete(marked, i, static_cast<int>(n))),
                        characters_by_stepping(marked, 0, first) + characters_by_stepping(marked, first + n))
                  << where << " " << i << " " << n;
            }
            ASSERT_EQ(text(string_char_at(marked, i)), characters_by_stepping(marked, first, 1)) << where;
            ASSERT_EQ(text(string_insert("<>", marked, i)),
                      characters_by_stepping(marked, 0, first) + "<>" + characters_by_stepping(marked, first))
                << where;
          }
        }
      }
    }
  }
}

TEST(StringFunctions, NearMissesDifferingInAnyByteAreNotMatches) {
  // Before the match, one near miss for each byte of `word` after the first,
  // so every byte of the comparison decides one candidate.
  for (size_t size = 2; size <= 24; ++size) {
    std::string word;
    for (size_t k = 0; k < size; ++k) word += static_cast<char>('a' + k);
    std::string t = "x";
    for (size_t k = 1; k < size; ++k) {
      std::string miss = word;
      miss[k] = 'X';
      t += miss + " ";
    }
    const double expected = static_cast<double>(t.size() + 1);
    t += word;
    EXPECT_EQ(string_pos(word, t), expected) << size;
    EXPECT_EQ(string_count(word, t), 1) << size;
    EXPECT_EQ(string_pos(word, t + "è"), expected) << size;
  }
}

TEST(StringFunctions, LengthAndPositionsCountCharacters) {
  EXPECT_EQ(string_length(""), 0);
  EXPECT_EQ(string_length("abc"), 3);
  EXPECT_EQ(string_length("è"), 1);
  EXPECT_EQ(string_length("perché sì"), 9);
  EXPECT_EQ(string_pos("è", "aè"), 2);
  EXPECT_EQ(string_pos("sì", "perché sì"), 8);
  EXPECT_EQ(string_pos("", "abc"), 1);
  EXPECT_EQ(string_pos("", ""), 1);
  EXPECT_EQ(string_pos("b", "abcb"), 2);
  EXPECT_EQ(string_pos("x", "abc"), 0);
  EXPECT_EQ(string_pos("abcd", "abc"), 0);
  EXPECT_EQ(string_pos("a", ""), 0);
}

TEST(StringFunctions, PosExtSearchesFromAStartPosition) {
  EXPECT_EQ(string_pos_ext("b", "abcb", 3), 4);
  EXPECT_EQ(string_pos_ext("b", "abcb", 2), 2);
  EXPECT_EQ(string_pos_ext("b", "abcb", 0), 2);   // 0 counts as 1
  EXPECT_EQ(string_pos_ext("a", "abcb", -1), 0);  // below 0 gives 0
  EXPECT_EQ(string_pos_ext("b", "abcb", 5), 0);
  EXPECT_EQ(string_pos_ext("b", "abcb", 99), 0);
  EXPECT_EQ(string_pos_ext("abcde", "abcb", 1), 0);
  EXPECT_EQ(string_pos_ext("à", "àbà", 2), 3);
  EXPECT_EQ(string_pos_ext("", "abc", 2), 2);
}

TEST(StringFunctions, MatchesOnlyAtCharacterStarts) {
  // "\xC3" "a" is one (malformed) character, so its 'a' is not a match.
  EXPECT_EQ(string_pos("a", "\xC3" "ab"), 0);
  EXPECT_EQ(string_pos("b", "\xC3" "ab"), 2);
  EXPECT_EQ(string_pos("a", "\xC3" "aa"), 2);
  EXPECT_EQ(string_count("a", "\xC3" "aa"), 1);
  EXPECT_EQ(text(string_replace_all("\xC3" "aa", "a", "x")), "\xC3" "ax");
  EXPECT_EQ(text(string_replace("\xC3" "aa", "a", "x")), "\xC3" "ax");
  // A follow byte that starts `sub` never matches inside a well-formed character.
  EXPECT_EQ(string_pos("\xA8", "è\xA8"), 2);
}

TEST(StringFunctions, CountCountsOverlappingStarts) {
  EXPECT_EQ(string_count("aa", "aaaa"), 3);
  EXPECT_EQ(string_count("aa", "aaa"), 2);
  EXPECT_EQ(string_count("", "abc"), 3);
  EXPECT_EQ(string_count("", "èè"), 2);
  EXPECT_EQ(string_count("", ""), 0);
  EXPECT_EQ(string_count("a", ""), 0);
  EXPECT_EQ(string_count("è", "èaèè"), 3);
  EXPECT_EQ(string_count("xyz", "ab"), 0);
}

TEST(StringFunctions, CharAtAndOrdAtReadOneCharacter) {
  EXPECT_EQ(text(string_char_at("abc", 0)), "a");
  EXPECT_EQ(text(string_char_at("abc", -5)), "a");
  EXPECT_EQ(text(string_char_at("abc", 3)), "c");
  EXPECT_EQ(text(string_char_at("abc", 4)), "");
  EXPECT_EQ(text(string_char_at("aèb", 2)), "è");
  EXPECT_EQ(text(string_char_at("", 1)), "");

  EXPECT_EQ(string_ord_at("abc", 1), 'a');
  EXPECT_EQ(string_ord_at("abc", 0), 'a');
  EXPECT_EQ(string_ord_at("abc", 4), 0);
  EXPECT_EQ(string_ord_at("abc", 5), -1);
  EXPECT_EQ(string_ord_at("", 1), 0);
  EXPECT_EQ(string_ord_at("", 2), -1);
  EXPECT_EQ(string_ord_at("aè", 2), 0xE8);
  EXPECT_EQ(string_ord_at("€", 1), 0x20AC);
  EXPECT_EQ(string_ord_at("😀", 1), 0x1F600);
}

TEST(StringFunctions, CopyDeleteInsertClampTheirPositions) {
  EXPECT_EQ(text(string_copy("abc", 0, 2)), "ab");
  EXPECT_EQ(text(string_copy("abc", 2, 5)), "bc");
  EXPECT_EQ(text(string_copy("abc", 2, -1)), "");
  EXPECT_EQ(text(string_copy("abc", 4, 1)), "");
  EXPECT_EQ(text(string_copy("città è", 4, 3)), "tà ");

  EXPECT_EQ(text(string_delete("abc", 0, 1)), "abc");
  EXPECT_EQ(text(string_delete("abc", 1, 0)), "abc");
  EXPECT_EQ(text(string_delete("abc", 2, 1)), "ac");
  EXPECT_EQ(text(string_delete("abc", 2, 9)), "a");
  EXPECT_EQ(text(string_delete("abc", 4, 1)), "abc");
  EXPECT_EQ(text(string_delete("aèb", 2, 1)), "ab");

  EXPECT_EQ(text(string_insert("X", "abc", 1)), "Xabc");
  EXPECT_EQ(text(string_insert("X", "abc", -3)), "Xabc");
  EXPECT_EQ(text(string_insert("X", "abc", 3)), "abXc");
  EXPECT_EQ(text(string_insert("X", "abc", 4)), "abcX");
  EXPECT_EQ(text(string_insert("X", "abc", 40)), "abcX");
  EXPECT_EQ(text(string_insert("é", "èè", 2)), "èéè");
}

TEST(StringFunctions, ReplaceAndReplaceAll) {
  EXPECT_EQ(text(string_replace("a-b-c", "-", "+")), "a+b-c");
  EXPECT_EQ(text(string_replace("abc", "x", "+")), "abc");
  EXPECT_EQ(text(string_replace("abc", "", "+")), "abc");
  EXPECT_EQ(text(string_replace("più più", "ù", "u")), "piu più");

  EXPECT_EQ(text(string_replace_all("aaa", "a", "aa")), "aaaaaa");
  EXPECT_EQ(text(string_replace_all("aaaa", "aa", "a")), "aa");
  EXPECT_EQ(text(string_replace_all("abc", "", "x")), "abc");
  EXPECT_EQ(text(string_replace_all("a b c", " ", "§space§")), "a§space§b§space§c");
  EXPECT_EQ(text(string_replace_all("", "a", "b")), "");
  EXPECT_EQ(text(string_replace_all("abcabc", "abc", "")), "");

  // Well past the first 256 bytes, so the result has to grow several times.
  const std::string long_text(1000, 'a');
  EXPECT_EQ(text(string_replace_all(long_text, "a", "bb")), std::string(2000, 'b'));
  EXPECT_EQ(text(string_replace_all(long_text + "x", "x", "y")), long_text + "y");
}

TEST(StringFunctions, UpperAndLowerChangeAccentedLettersToo) {
  EXPECT_EQ(text(string_upper("città è già")), "CITTÀ È GIÀ");
  EXPECT_EQ(text(string_lower("ÀÉÌÒÙ Perché")), "àéìòù perché");
  EXPECT_EQ(text(string_upper("αβγ ñ")), "ΑΒΓ Ñ");
  EXPECT_EQ(text(string_upper("abc 123 xyz!")), "ABC 123 XYZ!");
  EXPECT_EQ(text(string_lower("ABC 123 XYZ!")), "abc 123 xyz!");
  // Above the Basic Multilingual Plane nothing changes.
  EXPECT_EQ(text(string_upper("😀𐐨")), "😀𐐨");
  EXPECT_EQ(text(string_lower("𐐀")), "𐐀");
  // Some letters change their byte length: a dotless i becomes a one-byte
  // capital, a 2-byte letter a 3-byte one (the most a result can grow).
  EXPECT_EQ(text(string_upper("ı")), "I");
  EXPECT_EQ(text(string_upper("ɐɐɐɐ")), "ⱯⱯⱯⱯ");
  EXPECT_EQ(text(string_lower("ẞ")), "ß");
  // Malformed bytes stay as they are.
  EXPECT_EQ(text(string_upper("a\xC3")), "A\xC3");
  EXPECT_EQ(text(string_upper("\xFF" "b")), "\xFF" "b");
  // The process locale is not touched.
  EXPECT_STREQ(std::setlocale(LC_CTYPE, nullptr), "C");
}

TEST(StringFunctions, DigitsAndLettersKeepAsciiCharacters) {
  EXPECT_EQ(text(string_digits("a1è2b 3.5")), "1235");
  EXPECT_EQ(text(string_letters("a1è2b 3.5Z")), "abZ");
  EXPECT_EQ(text(string_digits("")), "");
  // A digit inside a malformed character is not a character of its own.
  EXPECT_EQ(text(string_digits("\xC3" "12")), "2");
}

TEST(StringFunctions, FormatPadsBeforeThePointAndRounds) {
  EXPECT_EQ(text(string_format(1.5, 3, 2)), "  1.50");
  EXPECT_EQ(text(string_format(3, 0, 2)), "3.00");
  EXPECT_EQ(text(string_format(-1.25, 4, 1)), "  -1.2");
  EXPECT_EQ(text(string_format(2.5, -1, -1)), "2");
  EXPECT_EQ(text(string_format(123456, 2, 0)), "123456");
  EXPECT_EQ(text(string_format(RValue::text("x"), 5, 5)), "x");
  EXPECT_EQ(text(string_format(RValue::number(0.5), 1, 3)), "0.500");

  // The same widths and rounding as "%*.*f" in the C locale, for a spread of values.
  char expected[512];
  for (double v : {0.0, -0.0, 0.125, 0.375, 2.675, -3.14159, 1e20, 123.456, 1e-7, 99.995}) {
    for (int tot : {0, 1, 5, 12}) {
      for (int dec : {0, 1, 2, 6}) {
        const int width = tot + dec + (dec > 0 ? 1 : 0);
        std::snprintf(expected, sizeof expected, "%*.*f", width, dec, v);
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

TEST(StringFunctions, HashToNewline) {
  EXPECT_EQ(text(string_hash_to_newline("a#b")), "a\r\nb");
  EXPECT_EQ(text(string_hash_to_newline("#a##")), "\r\na\r\n\r\n");
  EXPECT_EQ(text(string_hash_to_newline("a\\#b")), "a#b");
  EXPECT_EQ(text(string_hash_to_newline("\\\\#")), "\\#");
  EXPECT_EQ(text(string_hash_to_newline("\\a\\")), "\\a\\");
  EXPECT_EQ(text(string_hash_to_newline("")), "");
}

TEST(StringFunctions, Sha1MatchesKnownDigests) {
  EXPECT_EQ(text(sha1_string_utf8("abc")), "a9993e364706816aba3e25717850c26c9cd0d89d");
  EXPECT_EQ(text(sha1_string_utf8("")), "da39a3ee5e6b4b0d3255bfef95601890afd80709");
  EXPECT_EQ(text(sha1_string_utf8("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq")),
            "84983e441c3bd26ebaae4aa1f95129e5e54670f1");
  EXPECT_EQ(text(sha1_string_utf8("città")), "bbabb14b749893686a6fb7dc0c7fff807c5a263f");
  // Tails around the block edge take one or two padding blocks.
  EXPECT_EQ(text(sha1_string_utf8(std::string(55, 'a'))), "c1c8bbdc22796e28c0e15163d20899b65621d65a");
  EXPECT_EQ(text(sha1_string_utf8(std::string(56, 'a'))), "c2db330f6083854c99d4b5bfb6e8f29f201be699");
  EXPECT_EQ(text(sha1_string_utf8(std::string(64, 'a'))), "0098ba824b5c16427bd7a1122a5a442a25ec644d");
  EXPECT_EQ(text(sha1_string_utf8(std::string(119, 'a'))), "ee971065aaa017e0632a8ca6c77bb3bf8b1dfc56");
  EXPECT_EQ(text(sha1_string_utf8(std::string(1000000, 'a'))), "34aa973cd4c4daa4f61eeb2bdbad27316534016f");
}

TEST(StringBuiltins, CallsByNameReadAnyValueAsText) {
  EXPECT_EQ(call("string_length", {RValue::text("città")}).real, 5);
  EXPECT_EQ(call("string_length", {RValue::number(123)}).real, 3);
  EXPECT_EQ(call("string_length", {RValue::number(1.5)}).real, 4);  // "1.50"
  EXPECT_EQ(call("string_length", {RValue::undefined()}).real, 9);  // "undefined"
  EXPECT_EQ(call("string_length", {RValue::boolean(true)}).real, 1);
  EXPECT_TRUE(call("string_length", {RValue::text("")}).is(Kind::Number));

  EXPECT_EQ(call("string_pos", {RValue::text("è"), RValue::text("aè")}).real, 2);
  EXPECT_EQ(call("string_pos", {RValue::number(3), RValue::number(123)}).real, 3);
  EXPECT_EQ(call("string_pos_ext", {RValue::text("b"), RValue::text("abcb"), RValue::number(3)}).real, 4);
  EXPECT_EQ(call("string_count", {RValue::text("aa"), RValue::text("aaaa")}).real, 3);
  EXPECT_EQ(text(call("string_char_at", {RValue::text("abc"), RValue::text("2")})), "b");
  EXPECT_EQ(call("string_ord_at", {RValue::text("abc"), RValue::number(5)}).real, -1);
  EXPECT_EQ(text(call("string_copy", {RValue::number(12345), RValue::number(2), RValue::number(3.9)})), "234");
  EXPECT_EQ(text(call("string_delete", {RValue::text("abc"), RValue::int32(2), RValue::number(1)})), "ac");
  EXPECT_EQ(text(call("string_insert", {RValue::undefined(), RValue::text("<>"), RValue::number(2)})),
            "<undefined>");
  EXPECT_EQ(text(call("string_replace", {RValue::text("a.b.c"), RValue::text("."), RValue::text("")})), "ab.c");
  EXPECT_EQ(text(call("string_replace_all", {RValue::text("a.b.c"), RValue::text("."), RValue::number(0)})),
            "a0b0c");
  EXPECT_EQ(text(call("string_upper", {RValue::text("è")})), "È");
  EXPECT_EQ(text(call("string_lower", {RValue::text("È")})), "è");
  EXPECT_EQ(text(call("string_digits", {RValue::number(-3.5)})), "350");
  EXPECT_EQ(text(call("string_letters", {RValue::text("a1b")})), "ab");
  EXPECT_EQ(text(call("string_hash_to_newline", {RValue::text("a#b")})), "a\r\nb");
  EXPECT_EQ(text(call("sha1_string_utf8", {RValue::text("abc")})), "a9993e364706816aba3e25717850c26c9cd0d89d");

  EXPECT_EQ(text(call("string_format", {RValue::number(1.5), RValue::number(3), RValue::number(2)})), "  1.50");
  EXPECT_EQ(text(call("string_format", {RValue::text("12"), RValue::number(3), RValue::number(2)})), "12");
  EXPECT_EQ(text(call("string_format", {RValue::int32(7), RValue::number(0), RValue::number(1)})), "7.0");
}

TEST(StringBuiltins, RegisteredWithTheirArgumentCounts) {
  register_runtime_builtins();
  const std::pair<const char*, int> rows[] = {
      {"string_replace_all", 3}, {"string_pos", 2},      {"string_count", 2},   {"string_ord_at", 2},
      {"string_char_at", 2},     {"string_replace", 3},  {"string_length", 1},  {"string_delete", 3},
      {"string_copy", 3},        {"string_insert", 3},   {"string_upper", 1},   {"string_lower", 1},
      {"string_format", 3},      {"string_digits", 1},   {"string_letters", 1}, {"string_pos_ext", 3},
      {"string_hash_to_newline", 1}, {"sha1_string_utf8", 1}};
  for (const auto& [name, argc] : rows) {
    const BuiltinRow* row = builtin_row(builtin_find(name));
    ASSERT_NE(row, nullptr) << name;
    EXPECT_EQ(row->argc, argc) << name;
  }
}

TEST(StringBuiltins, WrongArgumentKindsAreFatalWithTheGetterWords) {
  EXPECT_EQ(call_error("string_length", {RValue()}),
            "string_length argument 1 incorrect type (unset) expecting a String (QvGS)");
  EXPECT_EQ(call_error("string_pos", {RValue::text("a"), RValue()}),
            "string_pos argument 2 incorrect type (unset) expecting a String (QvGS)");
  EXPECT_EQ(call_error("string_char_at", {RValue::text("abc"), RValue::undefined()}),
            "string_char_at argument 2 incorrect type (undefined) expecting a Number (QvGI32)");
  EXPECT_EQ(call_error("string_copy", {RValue::text("abc"), RValue::number(1), RValue::text("x")}),
            "string_copy argument 3 incorrect type (string) expecting a Number (QvGI32)");
  EXPECT_EQ(call_error("string_format", {RValue::undefined(), RValue::number(1), RValue::number(1)}),
            "string_format argument 1 incorrect type (undefined) expecting a Number (QvGR)");
}
