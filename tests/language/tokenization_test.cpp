#include <gtest/gtest.h>

#include <filesystem>
#include <random>

#include "language/elements/esemplare.h"
#include "language/tokenizer/text_edit.h"
#include "language/tokenization_fixture.h"

namespace {

const std::string HEADER = " colore sfondo = -1 altezza finestra = 700 larghezza finestra = 1000 nome finestra = \"Velant\"";

TEST_F(Tokenization, EarlyStagesReadIncludeAndAddTheBlocks) {
  folder_.write("libreria.txt", "y = 2");
  struct Case { const char* program; int stage; std::string text; };
  const Case cases[] = {
      // Reading guards typed hashes and ends each line with a hash.
      {"a#b\nc", 1, "a§hash§b#c#"}, {"a\r\nb\n\n", 1, "a#b##"}, {"", 1, ""},
      // The first "includi" is served, with ".txt" added; a missing file leaves the line.
      {"includi \"libreria\"\nx = 1\nincludi \"altro\"", 2, "y = 2##x = 1#includi \"altro\"#"},
      {"includi \"manca\"\nx = 1", 2, "includi \"manca\"#x = 1#"},
      // The mandatory blocks and the default header.
      {"INIZIA", 4, "CICLO_CONTINUO #INIZIA#" + HEADER}, {"", 4, "INIZIA " + HEADER + "#CICLO_CONTINUO #"},
      {"INIZIA\nCICLO CONTINUO", 4, "INIZIA#" + HEADER + "CICLO CONTINUO#"},
  };
  for (const Case& c : cases) EXPECT_EQ(text_after(c.program, c.stage), c.text) << c.program;
  // A zero byte ends its line.
  EXPECT_EQ(text_after(std::string("ab\0cd\nx", 7), 1), "ab#x#");
}

TEST_F(Tokenization, CommentsGoBeforeStringsAreProtected) {
  struct Case { std::string program; int stage; std::string part; };
  const Case cases[] = {
      {"x=1 //c\ny=2", 8, "x=1 #y=2#"},
      {"scrivi \"a//b\"\nz", 8, "scrivi \"a#z#"},  // "//" inside a string starts a comment too
      // Only the first 1000 characters of a long comment go.
      {"//" + std::string(1200, 'a') + "\nq", 8, "#" + std::string(202, 'a') + "#q#"},
      {"a/*x\ny*/b", 9, "#CICLO_CONTINUO #ab#"},
      {"/*" + std::string(1100, 'c'), 9, "#CICLO_CONTINUO #" + std::string(100, 'c') + "#"},
  };
  for (const Case& c : cases) EXPECT_NE(text_after(c.program, c.stage).find(c.part), std::string::npos) << c.part;
}

TEST_F(Tokenization, MissingEmptyOrHeadlessProgramsGetTheBareBlocks) {
  EXPECT_EQ(tokens(""), (Tokens{"INIZIA", "colore_sfondo", "=", "-1", "altezza_finestra", "=", "700",
                                "larghezza_finestra", "=", "1000", "nome_finestra", "=", "\"Velant\"",
                                "CICLO_CONTINUO", "", "FINE"}));
  EXPECT_EQ(program_.DISEGNA, 13);
  TokenProgram missing;
  EXPECT_EQ(tokenization(missing, folder_path() + "no_such_folder/"), TokenizationResult::Ready);
  EXPECT_EQ(missing.totale_tok, 15);
  // "INIZIA" in a string keeps the word from being added in front: the
  // compaction then moves the program's first token away.
  const Tokens t = tokens("x = 7\ns = \"INIZIA\"\nCICLO CONTINUO\n");
  EXPECT_EQ(std::count(t.begin(), t.end(), "x"), 0);
  EXPECT_EQ(std::count(t.begin(), t.end(), "7"), 1);
}

TEST_F(Tokenization, StatementsBecomeTheirTokens) {
  // What the example programs hold is in their golden tokens; these are the rest.
  const std::pair<const char*, Tokens> cases[] = {
      // Strings keep their signs and a typed hash, but rewrites of words reach
      // into them; a string that is one block word collapses to the word, one
      // that is exactly a two-word keyword takes the joined form; a line break
      // is kept as a marker for whoever shows it.
      {"s = \"a # b, c = (d)!\"", {"s", "=", "\"a # b, c = (d)!\""}},
      {"s = \"finché finché Verdana a:b\"", {"s", "=", "\"finche finche Verdana.ttf a: b\""}},
      {"s = \"finché\"", {"s", "=", "finche"}}, {"s = \"disegna cerchio\"", {"s", "=", "\"disegna_cerchio\""}},
      {"s = \"uno\ndue\"", {"s", "=", "\"uno/carriage_return/due\""}},
      // A full stop closes a block only away from digits; a key with nothing behind it gets the value 0.
      {"se x = 1 allora\ny = 5.\n", {"se", "x", "==", "1", "{", "y", "=", "5."}}, {"x = .5", {"x", "=", ".5"}},
      {"disegna cerchio (X:)", {"disegna_cerchio", "-->", "(X:", "0", ")"}},
      // Truth words, constants, notes and sounds; a word inside a token replaces the whole token.
      {"X = vero", {"X", "=", "1"}}, {"X = niente", {"X", "=", "0"}}, {"X = (vero+1)*2", {"X", "=", "[1"}},
      {"X = Pi greco", {"X", "=", "3.1415926535"}}, {"Do = Re", {"1", "=", "1.122137404580153"}},
      {"suona (SUONO: suono miao)", {"suona", "-->", "(SUONO:", "4", ")"}}, {"X = suono beee", {"X", "=", "suono_beee"}},
      // Keywords collapse even inside words.
      {"s = \"non diminuisci mai\"", {"s", "=", "diminuisci"}}, {"aumentato = 1", {"aumenta", "=", "1"}},
      {"x = ottieni la componente x del vettore dato angolo e lunghezza",
       {"x", "f=", "ottieni_la_componente_x_del_vettore_dato_angolo_e_lunghezza"}},
      // Round brackets of arithmetic turn square; a token ending in "]" loses its first pair.
      {"x = (2+3)*4", {"x", "=", "[2+3]*4"}}, {"x = (2+3)", {"x", "=", "2+3"}}, {"x = 30%", {"x", "=", "30/100"}},
      // The rest of the line behind "argomenti" is one string token; the name
      // of a function of the program's own becomes one word, in strings too.
      {"definisci funzione f\nargomenti a b\n", {"definisci_funzione", "f", "argomenti", "\" a b \""}},
      {"definisci funzione saluta tutti\n{\n}\nsaluta tutti\ns = \"saluta tutti\"",
       {"definisci_funzione", "saluta_tutti", "{", "}", "saluta_tutti", "s", "=", "\"saluta_tutti\""}},
  };
  for (const auto& [text, expected] : cases) EXPECT_EQ(statement(text), expected) << text;
  EXPECT_TRUE(messages_.empty());
}

TEST_F(Tokenization, LiteralDivisionByZeroEndsTheStart) {
  tokens("INIZIA\nx = 10/0.5\ns = \"a/0\"\n");
  EXPECT_TRUE(messages_.empty());
  tokens("INIZIA\nx = 10/0\n", TokenizationResult::DivisionByZero);
  EXPECT_EQ(messages_, (std::vector<std::string>{"Errore: non si può dividere per zero!"}));
}

TEST(TextEdit, ExtractsBetweenDelimitersAndRewritesOnlyAtCharacterStarts) {
  EXPECT_EQ(text_edit::string_extract("nessuno", "\"", 1), "nessuno");
  // 0xC3 is a two-byte lead: the "a" behind it is inside that character.
  std::string malformed = "\xC3" "ab ab";
  EXPECT_TRUE(text_edit::replace_all(malformed, "ab", "X"));
  EXPECT_EQ(malformed, "\xC3" "ab X");
  std::string s = "aaa";
  EXPECT_TRUE(text_edit::replace_all(s, "a", "aa"));
  EXPECT_EQ(s, "aaaaaa");
  EXPECT_EQ(text_edit::count("aaaa", "aa"), 3u);
}

TEST_F(Tokenization, ExampleProgramsMatchTheirGoldenTokens) {
  const fs::path examples = fs::path(VELANT_SOURCE_DIR) / "examples";
  int compared = 0;
  for (const auto& entry : fs::directory_iterator(fs::path(VELANT_SOURCE_DIR) / "tests/language/golden")) {
    // "programma.tokens" is the program's; "programma.palla.tokens" is what an element of class palla runs.
    const fs::path stem = entry.path().stem();
    const fs::path example = examples / (stem.stem().string() + ".txt");
    TokenProgram p, element;
    ASSERT_EQ(tokenization_of_file(p, example.string()), TokenizationResult::Ready) << example;
    const bool of_element = stem.has_extension();
    if (of_element) {
      ASSERT_TRUE(element_token_program(p, stem.extension().string().substr(1), element));
    }
    EXPECT_EQ(token_listing(of_element ? element : p), read_whole_file(entry.path())) << entry.path();
    ++compared;
  }
  EXPECT_GE(compared, 5);
}

// Any text at all gives a token array or the division message: random
// programs from pieces of the language, signs, markers and raw bytes.
TEST_F(Tokenization, AnyTextGivesTokensNeverACrashOrAHang) {
  const Tokens pieces = {
      "INIZIA", "CICLO CONTINUO", "se ", " allora ", "{", "}", ".", ",", ", ", "(", ")", "[", "]", ":", "\"", "#",
      "//", "/*", "*/", "$", "\n", " ", "  ", "includi \"", "argomenti ", "definisci funzione ", "esegue al suo interno questo codice", "< \"", "x", "Y", "=",
      "<", ">", "!", "%", "/0", "3,5", "è", "§space§", "/str_safe", "ottieni il seno di", "disegna cerchio",
      "(X: ", "vero]", "[falso", "ripeti per ", " volte", "finché", "aumenta ", "\t", "\r", "\xC3", "\xFF", "\x80",
      std::string(1, '\0'), "della ", " o ", "tasto invio è premuto", "suono bau", "Verdana"};
  std::mt19937 rng(20261122);
  for (int round = 0; round < 300; ++round) {
    std::string text;
    for (int i = static_cast<int>(rng() % 120); i > 0; --i) {
      if (rng() % 5 == 0) text.push_back(static_cast<char>(rng() % 256));
      else text += pieces[rng() % pieces.size()];
    }
    folder_.write("code.txt", text);
    TokenProgram p;
    if (tokenization(p, folder_path()) == TokenizationResult::Ready) {
      ASSERT_EQ(p.tok.size(), static_cast<size_t>(p.totale_tok) + 1) << "round " << round;
      ASSERT_EQ(p.tok[static_cast<size_t>(p.totale_tok)].string_view(), "FINE") << "round " << round;
      ASSERT_EQ(p.tok[0].string_view(), "INIZIA");
    }
  }
}

}  // namespace
