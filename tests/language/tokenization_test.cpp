#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>

#include "language/tokenizer/sound_assets.h"
#include "language/tokenizer/token_cut.h"
#include "language/tokenizer/tokenization.h"
#include "language/tokenizer/tokenizer.h"
#include "language/tokenizer/text_edit.h"
#include "runtime/Code/Builtins.h"
#include "runtime/Platform/Dialogs.h"
#include "support/MessageRecorder.h"

namespace {

namespace fs = std::filesystem;

class Tokenization : public ::testing::Test {
 protected:
  void SetUp() override {
    register_runtime_builtins();
    register_language_sounds();
    dir_ = fs::temp_directory_path() / ("velant_tok_" + std::to_string(::getpid()) + "_" +
                                        ::testing::UnitTest::GetInstance()->current_test_info()->name());
    fs::create_directories(dir_);
    platform::set_dialogs(std::make_unique<MessageRecorder>(&messages_));
  }
  void TearDown() override {
    platform::set_dialogs(nullptr);
    fs::remove_all(dir_);
  }

  std::string folder() const { return dir_.string() + "/"; }
  void write(const std::string& name, const std::string& text) const {
    std::ofstream(dir_ / name, std::ios::binary) << text;
  }

  // The program text after stages 1 to `stage`.
  std::string text_after(const std::string& program, int stage) {
    write("code.txt", program);
    TokenProgram p;
    const std::string dir = folder();
    const std::string file = dir + "code.txt";
    Tokenizer t(p, dir, file);
    t.run_stages(stage);
    return t.message();
  }

  // Every token, 0 to totale_tok.
  std::vector<std::string> tokens(const std::string& program, TokenizationResult expected = TokenizationResult::Ready) {
    write("code.txt", program);
    program_ = TokenProgram();
    EXPECT_EQ(tokenization(program_, folder()), expected);
    std::vector<std::string> out;
    for (int i = 0; i <= program_.totale_tok && i < static_cast<int>(program_.tok.size()); ++i) {
      const RValue& v = program_.tok[static_cast<size_t>(i)];
      out.emplace_back(v.is(Kind::String) ? v.string_view() : "<undefined>");
    }
    return out;
  }

  // The tokens a statement text makes between "INIZIA" and the header on one
  // side and "CICLO_CONTINUO" on the other.
  std::vector<std::string> statement(const std::string& text) {
    const std::vector<std::string> all = tokens("INIZIA\n" + text + "\nCICLO CONTINUO\n");
    return {all.begin() + 13, all.begin() + program_.DISEGNA};
  }

  fs::path dir_;
  TokenProgram program_;
  std::vector<std::string> messages_;
};

using Tokens = std::vector<std::string>;
const std::string HEADER = " colore sfondo = -1 altezza finestra = 700 larghezza finestra = 1000 nome finestra = \"Velant\"";

TEST_F(Tokenization, ReadGuardsTypedHashesAndEndsEachLineWithHash) {
  EXPECT_EQ(text_after("a#b\nc", 1), "a§hash§b#c#");
  EXPECT_EQ(text_after("a\r\nb\n\n", 1), "a#b##");
  EXPECT_EQ(text_after(std::string("ab\0cd\nx", 7), 1), "ab#x#");
  EXPECT_EQ(text_after("", 1), "");
}

TEST_F(Tokenization, MissingOrEmptyProgramGivesTheBareBlocks) {
  const Tokens expected = {"INIZIA", "colore_sfondo", "=", "-1", "altezza_finestra", "=", "700", "larghezza_finestra",
                           "=", "1000", "nome_finestra", "=", "\"Velant\"", "CICLO_CONTINUO", "", "FINE"};
  EXPECT_EQ(tokens(""), expected);
  EXPECT_EQ(program_.INIZIA, 0);
  EXPECT_EQ(program_.DISEGNA, 13);
  EXPECT_EQ(program_.totale_tok, 15);
  program_ = TokenProgram();
  EXPECT_EQ(tokenization(program_, folder() + "no_such_folder/"), TokenizationResult::Ready);
  EXPECT_EQ(program_.totale_tok, 15);
}

TEST_F(Tokenization, IncludeServesTheFirstOnlyAndAddsTxt) {
  write("libreria.txt", "y = 2");
  EXPECT_EQ(text_after("includi \"libreria\"\nx = 1\nincludi \"altro\"", 2), "y = 2##x = 1#includi \"altro\"#");
  EXPECT_EQ(text_after("includi \"manca\"\nx = 1", 2), "includi \"manca\"#x = 1#");
}

TEST_F(Tokenization, MandatoryBlocksAndTheDefaultHeader) {
  EXPECT_EQ(text_after("INIZIA", 4), "CICLO_CONTINUO #INIZIA#" + HEADER);
  EXPECT_EQ(text_after("", 4), "INIZIA " + HEADER + "#CICLO_CONTINUO #");
  EXPECT_EQ(text_after("INIZIA\nCICLO CONTINUO", 4), "INIZIA#" + HEADER + "CICLO CONTINUO#");
}

TEST_F(Tokenization, CommentsGoBeforeStringsAreProtected) {
  const std::string body = "x=1 //c\ny=2";
  EXPECT_NE(text_after(body, 8).find("x=1 #y=2#"), std::string::npos);
  // "//" inside a string starts a comment too.
  EXPECT_NE(text_after("scrivi \"a//b\"\nz", 8).find("scrivi \"a#z#"), std::string::npos);
  // Only the first 1000 characters of a long comment go.
  const std::string long_comment = text_after("//" + std::string(1200, 'a') + "\nq", 8);
  EXPECT_NE(long_comment.find("#" + std::string(202, 'a') + "#q#"), std::string::npos);
  EXPECT_NE(text_after("a/*x\ny*/b", 9).find("#CICLO_CONTINUO #ab#"), std::string::npos);
  const std::string unclosed = text_after("/*" + std::string(1100, 'c'), 9);
  EXPECT_NE(unclosed.find("#CICLO_CONTINUO #" + std::string(100, 'c') + "#"), std::string::npos);
}

TEST_F(Tokenization, CommasAreDecimalPointsOrArgumentSeparators) {
  EXPECT_EQ(statement("x = 3,5"), statement("x = 3.5"));
  EXPECT_EQ(statement("x = 3,5"), (Tokens{"x", "=", "3.5"}));
  EXPECT_EQ(statement("disegna cerchio (X: 10, Y: 20)"),
            (Tokens{"disegna_cerchio", "-->", "(X:", "10", ")", "(Y:", "20", ")"}));
}

TEST_F(Tokenization, StringsKeepTheirSignsAndATypedHash) {
  EXPECT_EQ(statement("s = \"a # b, c = (d)!\""), (Tokens{"s", "=", "\"a # b, c = (d)!\""}));
  // Rewrites of words reach into strings all the same.
  const Tokens t = statement("s = \"finché finché Verdana a:b\"");
  ASSERT_EQ(t.size(), 3u);
  EXPECT_EQ(t[2], "\"finche finche Verdana.ttf a: b\"");
  // A string with one of the block words once collapses to the word.
  EXPECT_EQ(statement("s = \"finché\"")[2], "finche");
  // A string that is exactly a two-word keyword takes the joined form.
  EXPECT_EQ(statement("s = \"disegna cerchio\"")[2], "\"disegna_cerchio\"");
  // A line break inside a string is kept as a marker for whoever shows it.
  EXPECT_EQ(statement("s = \"uno\ndue\"")[2], "\"uno/carriage_return/due\"");
}

TEST_F(Tokenization, FullStopClosesABlockOnlyAwayFromDigits) {
  EXPECT_EQ(statement("se x = 1 allora\ny = 5 .\n"), (Tokens{"se", "x", "==", "1", "{", "y", "=", "5", "}"}));
  EXPECT_EQ(statement("se x = 1 allora\ny = 5.\n"), (Tokens{"se", "x", "==", "1", "{", "y", "=", "5."}));
  EXPECT_EQ(statement("x = .5"), (Tokens{"x", "=", ".5"}));
}

TEST_F(Tokenization, ConditionsCompareAndAssignmentsAssign) {
  EXPECT_EQ(statement("se X = 1 allora"), (Tokens{"se", "X", "==", "1", "{"}));
  EXPECT_EQ(statement("X = 1"), (Tokens{"X", "=", "1"}));
  EXPECT_EQ(statement("ripeti finché X = 3 {"), (Tokens{"ripeti", "finche", "X", "==", "3", "{"}));
  EXPECT_EQ(statement("se X è uguale a 2 o Y = 3 allora"),
            (Tokens{"se", "X", "==", "2", "o", "Y", "==", "3", "{"}));
}

TEST_F(Tokenization, ValueCallsAndKeys) {
  EXPECT_EQ(statement("Y = ottieni il seno di (VALORE: 30)"),
            (Tokens{"Y", "f=", "ottieni_il_seno_di", "-->", "(VALORE:", "30", ")"}));
  EXPECT_EQ(statement("disegna testo (X 1: 5)"), (Tokens{"disegna_testo", "-->", "(X_1:", "5", ")"}));
  // A key with nothing behind it gets the value 0.
  EXPECT_EQ(statement("disegna cerchio (X:)"), (Tokens{"disegna_cerchio", "-->", "(X:", "0", ")"}));
}

TEST_F(Tokenization, TruthWordsConstantsNotesAndSounds) {
  EXPECT_EQ(statement("X = vero"), (Tokens{"X", "=", "1"}));
  EXPECT_EQ(statement("X = niente"), (Tokens{"X", "=", "0"}));
  EXPECT_EQ(statement("X = (vero+1)*2"), (Tokens{"X", "=", "[1"}));  // the whole token is replaced
  EXPECT_EQ(statement("X = rosso"), (Tokens{"X", "=", "255"}));
  EXPECT_EQ(statement("X = grigio scuro"), (Tokens{"X", "=", "4210752"}));
  EXPECT_EQ(statement("X = Pi greco"), (Tokens{"X", "=", "3.1415926535"}));
  EXPECT_EQ(statement("Do = Re"), (Tokens{"1", "=", "1.122137404580153"}));
  EXPECT_EQ(statement("X = al centro"), (Tokens{"X", "=", "\"al centro\""}));
  EXPECT_EQ(statement("suona (SUONO: suono miao)"), (Tokens{"suona", "-->", "(SUONO:", "4", ")"}));
  EXPECT_EQ(statement("X = suono beee"), (Tokens{"X", "=", "suono_beee"}));
}

TEST_F(Tokenization, KeywordsCollapseEvenInsideWords) {
  EXPECT_EQ(statement("s = \"non diminuisci mai\""), (Tokens{"s", "=", "diminuisci"}));
  EXPECT_EQ(statement("aumentato = 1"), (Tokens{"aumenta", "=", "1"}));
  EXPECT_EQ(statement("x = ottieni la componente x del vettore dato angolo e lunghezza"),
            (Tokens{"x", "f=", "ottieni_la_componente_x_del_vettore_dato_angolo_e_lunghezza"}));
  EXPECT_EQ(statement("tasto freccia su è premuto"), (Tokens{"tasto_freccia_su_e_premuto"}));
}

TEST_F(Tokenization, BracketsOfArithmetic) {
  EXPECT_EQ(statement("x = (2+3)*4"), (Tokens{"x", "=", "[2+3]*4"}));
  // A token ending in "]" loses its first bracket pair.
  EXPECT_EQ(statement("x = (2+3)"), (Tokens{"x", "=", "2+3"}));
  EXPECT_EQ(statement("x = 30%"), (Tokens{"x", "=", "30/100"}));
}

TEST_F(Tokenization, CustomFunctionNamesOfSeveralWordsBecomeOneWord) {
  const Tokens t = statement("definisci funzione saluta tutti\n{\n}\nsaluta tutti\ns = \"saluta tutti\"");
  EXPECT_EQ(std::count(t.begin(), t.end(), "saluta_tutti"), 2);
  EXPECT_EQ(t.back(), "\"saluta_tutti\"");
  // The rest of the line behind "argomenti" is one string token.
  EXPECT_EQ(statement("definisci funzione f\nargomenti a b\n"),
            (Tokens{"definisci_funzione", "f", "argomenti", "\" a b \""}));
}

TEST_F(Tokenization, LiteralDivisionByZeroEndsTheStart) {
  tokens("INIZIA\nx = 10/0\n", TokenizationResult::DivisionByZero);
  EXPECT_EQ(messages_, (std::vector<std::string>{"Errore: non si può dividere per zero!"}));
  messages_.clear();
  tokens("INIZIA\nx = 10/0.5\ns = \"a/0\"\n");
  EXPECT_TRUE(messages_.empty());
}

TEST_F(Tokenization, OnlyAProgramThatBeginsWithInitiaIsSafe) {
  // "INIZIA" in a string keeps the word from being added in front: the
  // compaction then moves the program's first token away.
  const Tokens t = tokens("x = 7\ns = \"INIZIA\"\nCICLO CONTINUO\n");
  EXPECT_EQ(std::count(t.begin(), t.end(), "x"), 0);
  EXPECT_EQ(std::count(t.begin(), t.end(), "7"), 1);
}

TEST(TokenCut, SeparatorsStayAndStringsDontCut) {
  std::vector<std::string> t;
  EXPECT_EQ(cut_tokens("x \"a b\" y;z#w", CUT_C, t), 5u);
  EXPECT_EQ(t, (std::vector<std::string>{"x ", "\"a b\"", " ", "y;", "z#", "w"}));
  EXPECT_EQ(cut_tokens("y;z", CUT_A, t), 0u);
  EXPECT_EQ(t[0], "y;z");
  EXPECT_EQ(cut_tokens("a#b", CUT_D, t), 0u);
  EXPECT_EQ(t[0], "a#b");
}

TEST(TokenCut, CompactionPutsTheFirstTokenLast) {
  std::vector<RValue> t = {RValue::text(""), RValue::text("A"), RValue::text(""), RValue::text("B"),
                           RValue::text("C")};
  EXPECT_EQ(compact_tokens(t, 4), 3u);
  EXPECT_TRUE(t[0].is(Kind::Undefined));
  EXPECT_EQ(t[1].string_view(), "B");
  EXPECT_EQ(t[2].string_view(), "C");
  EXPECT_EQ(t[3].string_view(), "A");
}

TEST(TextEdit, StringExtractTakesTheTextBetweenDelimiters) {
  EXPECT_EQ(text_edit::string_extract(" \"libreria\"", "\"", 1), "libreria");
  EXPECT_EQ(text_edit::string_extract("a,b,c", ",", 0), "a");
  EXPECT_EQ(text_edit::string_extract("a,b,c", ",", 2), "c");
  EXPECT_EQ(text_edit::string_extract("nessuno", "\"", 1), "nessuno");
}

TEST(TextEdit, RewritesMatchOnlyAtCharacterStarts) {
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
  const fs::path golden = fs::path(VELANT_SOURCE_DIR) / "tests/language/golden";
  int compared = 0;
  for (const auto& entry : fs::directory_iterator(golden)) {
    const fs::path example = examples / entry.path().stem().replace_extension(".txt");
    TokenProgram p;
    ASSERT_EQ(tokenization_of_file(p, example.string()), TokenizationResult::Ready) << example;
    std::ifstream in(entry.path());
    const std::string expected((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    EXPECT_EQ(token_listing(p), expected) << example;
    ++compared;
  }
  EXPECT_GE(compared, 5);
}

// Any text at all gives a token array or the division message: random
// programs from pieces of the language, signs, markers and raw bytes.
TEST_F(Tokenization, AnyTextGivesTokensNeverACrashOrAHang) {
  static const std::vector<std::string> pieces = {
      "INIZIA", "CICLO CONTINUO", "se ", " allora ", "{", "}", ".", ",", ", ", "(", ")", "[", "]", ":", "\"", "#",
      "//", "/*", "*/", "$", "\n", " ", "  ", "includi \"", "argomenti ", "definisci funzione ", "x", "Y", "=",
      "<", ">", "!", "%", "/0", "3,5", "è", "§space§", "/str_safe", "ottieni il seno di", "disegna cerchio",
      "(X: ", "vero]", "[falso", "ripeti per ", " volte", "finché", "aumenta ", "\t", "\r", "\xC3", "\xFF", "\x80",
      std::string(1, '\0'), "della ", " o ", "tasto invio è premuto", "suono bau", "Verdana"};
  std::mt19937 rng(20261122);
  for (int round = 0; round < 300; ++round) {
    std::string text;
    const int parts = static_cast<int>(rng() % 120);
    for (int i = 0; i < parts; ++i) {
      if (rng() % 5 == 0) text.push_back(static_cast<char>(rng() % 256));
      else text += pieces[rng() % pieces.size()];
    }
    write("code.txt", text);
    TokenProgram p;
    if (tokenization(p, folder()) == TokenizationResult::Ready) {
      ASSERT_EQ(p.tok.size(), static_cast<size_t>(p.totale_tok) + 1) << "round " << round;
      ASSERT_EQ(p.tok[static_cast<size_t>(p.totale_tok)].string_view(), "FINE") << "round " << round;
      ASSERT_EQ(p.tok[0].string_view(), "INIZIA");
    }
  }
}

}  // namespace
