#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <string_view>

#include "language/tokenizer/constant_tables.h"
#include "language/tokenizer/keyword_table.h"

namespace {

// Index of the first entry equal to `phrase`, or -1.
int first_index(std::string_view phrase) {
  auto it = std::ranges::find(ctrl_keyword_table, phrase);
  return it == ctrl_keyword_table.end() ? -1 : static_cast<int>(it - ctrl_keyword_table.begin());
}

// The joined form of a phrase: every blank becomes "_".
std::string with_underscores(std::string_view phrase) {
  std::string joined(phrase);
  std::ranges::replace(joined, ' ', '_');
  return joined;
}

}  // namespace

TEST(KeywordTable, KeepsOddSpellingsAndUtf8Letters) {
  // Misspellings and half-rewritten forms are matched as they stand; the
  // misspelt one stands where the right one would, after its x twin.
  EXPECT_EQ(ctrl_keyword_table[first_index("ottieni normalizzazione componente x del vettore") + 1],
            "ottieni nomralizzazione componente y del vettore");
  EXPECT_GE(first_index("COLORE INIZiale"), 0);
  EXPECT_EQ(first_index("COLORE INIZIALE"), -1);
  // "quest’area" has the typographic apostrophe; accented letters are UTF-8.
  EXPECT_GE(first_index("distruggi elementi che si trovano in quest\xE2\x80\x99" "area circolare"), 0);
  EXPECT_EQ(first_index("distruggi elementi che si trovano in quest'area circolare"), -1);
  EXPECT_GE(first_index("attiva casualit\xC3\xA0 diversa per ogni avvio"), 0);
}

TEST(KeywordTable, OrderLetsEveryPhraseBeJoinedWhole) {
  // Joining works on single blanks between words, so no entry may carry others.
  for (std::string_view phrase : ctrl_keyword_table) {
    ASSERT_FALSE(phrase.empty());
    EXPECT_TRUE(phrase.front() != ' ' && phrase.back() != ' ' && phrase.find("  ") == std::string_view::npos)
        << phrase;
  }
  // A phrase that holds a shorter one must come first: joining the shorter one
  // first would break the longer phrase apart (e.g. "crea casella di testo
  // multilinea" before "crea casella di testo").
  for (std::string_view phrase : ctrl_keyword_table) {
    std::string text(phrase);
    for (std::string_view keyword : ctrl_keyword_table) {
      const std::string from(keyword), to = with_underscores(keyword);
      for (size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
      }
    }
    EXPECT_EQ(text, with_underscores(phrase));
  }
}

TEST(ConstantLookups, FindWholeNamesOnly) {
  // Red is the lowest byte of a colour number, blue the highest.
  const std::pair<const char*, int> colours[] = {
      {"rosso", 255}, {"blu", 255 << 16}, {"giallo", 0xFFFF}, {"grigio_scuro", 0x404040}, {"giada", 210 * 256 + (134 << 16)},
      {"rosa_vivo", 255 + (127 << 16)}};
  for (const auto& [name, number] : colours) EXPECT_STREQ(colour_constant(name), std::to_string(number).c_str()) << name;
  // A note is its semitone's frequency in hertz over Do's 131; enharmonic names are equal.
  EXPECT_STREQ(note_constant("Do"), "1");
  EXPECT_STREQ(note_constant("Fa"), "1.33587786259542");
  EXPECT_NEAR(std::strtod(note_constant("La"), nullptr) * 131, 220, 1e-9);
  EXPECT_STREQ(note_constant("Si_bemolle"), note_constant("La_diesis"));
  // The texts keep their own digits: "un_nono" has nine decimals, the others ten.
  EXPECT_STREQ(numeric_constant("Pi_greco"), "3.1415926535");
  EXPECT_STREQ(numeric_constant("un_nono"), "0.111111111");
  EXPECT_STREQ(numeric_constant("mezza"), "0.5");

  for (const char* name : {"", "Rosso", "ross", "rossoo", "verde scuro", "Do"}) EXPECT_EQ(colour_constant(name), nullptr) << name;
  for (const char* name : {"", "do", "Do diesis", "Mi_diesis", "Sol_", "rosso"}) EXPECT_EQ(note_constant(name), nullptr) << name;
  for (const char* name : {"", "pi_greco", "Pi greco", "mezz", "un_quarto_", "Do"}) EXPECT_EQ(numeric_constant(name), nullptr) << name;
  // A view into a longer text is looked up by its own characters only.
  EXPECT_STREQ(colour_constant(std::string_view("giallo_chiaro").substr(0, 6)), "65535");
  EXPECT_STREQ(note_constant(std::string_view("Solfeggio").substr(0, 3)), "1.49618320610687");
  EXPECT_STREQ(numeric_constant(std::string_view("mezzanotte").substr(0, 5)), "0.5");
}

