#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "language/evaluation/condition_formula.h"
#include "language/evaluation/error_frame.h"
#include "language/evaluation/numeric_expression.h"
#include "language/tokenizer/sound_assets.h"
#include "language/evaluation/string_expression.h"
#include "runtime/Code/Builtins.h"
#include "runtime/Code/Conversions.h"
#include "runtime/Function/StringFunctions.h"
#include "runtime/Platform/Dialogs.h"
#include "support/MessageRecorder.h"
#include "runtime/Support/AssetIndex.h"
#include "support/Fatal.h"
#include "support/RunEnds.h"

namespace {

// Names as a running program would serve them: program-wide variables
// answer both lookups, element attributes only the pieces of expressions.
struct FakeContext : ExpressionContext {
  std::map<std::string, std::string, std::less<>> variables;
  std::map<std::string, std::string, std::less<>> attributes;
  std::vector<std::string> asked;  // the pieces the evaluator asked about

  std::string cal_var_and_const(std::string_view piece) override {
    asked.emplace_back(piece);
    if (auto it = variables.find(piece); it != variables.end()) return it->second;
    if (auto it = attributes.find(piece); it != attributes.end()) return it->second;
    return "0";
  }
  std::string calculate_var(std::string_view name) override {
    auto it = variables.find(name);
    return it == variables.end() ? "no var" : it->second;
  }
};

// What the run did around an error, in order: built-ins by name and messages.
std::vector<std::string> g_actions;

// The runtime has no sound yet and the close patch is an external library:
// these stand in for them, registered before the runtime's own built-ins.
void record_play_sound(RValue&, CInstance*, CInstance*, int, RValue* args) {
  g_actions.push_back("audio_play_sound " + std::to_string(static_cast<int>(value_to_real(args[0]))) + " " +
                      value_to_text(args[1]) + " " + value_to_text(args[2]));
}
void record_close_capture(RValue&, CInstance*, CInstance*, int, RValue* args) {
  g_actions.push_back("ex_patch_window_close_capture " + value_to_text(args[0]));
}
void record_stop_all(RValue&, CInstance*, CInstance*, int, RValue*) { g_actions.push_back("audio_stop_all"); }
[[maybe_unused]] const bool g_fakes_registered =
    (builtin_register("audio_play_sound", record_play_sound, 3),
     builtin_register("ex_patch_window_close_capture", record_close_capture, 1),
     builtin_register("audio_stop_all", record_stop_all, 0), true);

// Notes each message among the run's actions too, so that their order can be checked.
struct RecordingDialogs : MessageRecorder {
  using MessageRecorder::MessageRecorder;
  void message(const std::string& title, const std::string& text) override {
    MessageRecorder::message(title, text);
    g_actions.push_back("show_message");
  }
};

class Expressions : public ::testing::Test {
 protected:
  void SetUp() override {
    register_runtime_builtins();
    register_language_sounds();
    record_run_ends();
    platform::set_dialogs(std::make_unique<RecordingDialogs>(&messages_));
    g_actions.clear();
  }
  void TearDown() override {
    platform::set_dialogs(nullptr);
  }

  std::string eval(std::string_view text) { return calculate_string(ctx_, text); }
  std::vector<std::string> pieces(std::string_view text) {
    const ExpressionPieces p = tokenizza_espressione(ctx_, text);
    std::vector<std::string> out;
    for (size_t k = 1; k <= p.count(); ++k) out.emplace_back(p.piece(k));
    return out;
  }
  std::string fill(std::string_view text) { return calculate_expression_in_string(ctx_, text); }

  FakeContext ctx_;
  std::vector<std::string> messages_;
};

const std::string RULE(71, '_');

// The framed message of an expression error, lines ended by "\r\n".
std::string expression_message(const std::string& faulty, const std::vector<std::string>& causes) {
  std::string m = "Errore nell'espressione:\r\n" + RULE + "\r\n\r\n" + faulty + "\r\n" + RULE +
                  "\r\n\r\nEsecuzione fallita: impossibile interpretare correttamente il codice!\r\n\r\n"
                  "Ecco le possibili cause:";
  for (const std::string& cause : causes) m += "\r\n" + cause;
  return m;
}

std::vector<std::string> error_actions() {
  const int sound = static_cast<int>(value_to_real(asset_get_index("suono_errore")));
  return {"audio_play_sound " + std::to_string(sound) + " 1 0", "show_message", "ex_patch_window_close_capture 0",
          "audio_stop_all"};
}

}  // namespace

TEST_F(Expressions, OperatorsTakeTheirTurnsBracketsFirst) {
  EXPECT_EQ(eval("2+3*4"), "14");
  EXPECT_EQ(eval("2-3*4"), "-10");
  EXPECT_EQ(eval("2^3+1"), "9");
  // Round brackets are taken as arithmetic ones.
  EXPECT_EQ(eval("(2+3)*4"), "20.0000000000");
  EXPECT_EQ(eval("[2+3]*4"), "20.0000000000");
  EXPECT_EQ(eval("[[1+2]*[3+1]]+1"), "13");
  // Powers go from left to right.
  EXPECT_EQ(eval("2^3^2"), "64.0000000000");
  EXPECT_EQ(eval("0/5+1"), "1");
  EXPECT_EQ(eval("0/5"), "0");
}

TEST_F(Expressions, EveryStepIsRoundedToTenDecimals) {
  EXPECT_EQ(eval("1/3*3"), "0.9999999999");
  EXPECT_EQ(eval("1/3+1/3+1/3"), "0.9999999999");
  EXPECT_EQ(eval("2/3+0"), "0.6666666667");
  // A computed sum loses its trailing zeros; a product left alone keeps them.
  EXPECT_EQ(eval("1.50+0"), "1.5");
  EXPECT_EQ(eval("0.25+0.25"), "0.5");
  EXPECT_EQ(eval("10/4"), "2.5000000000");
  for (double x : {0.0, -0.0, 1.0, -2.5, 1.0 / 3, 123456789.123456789, 1e-11, -1e-11, 5e-11, 1e20, 1e300,
                   -7.25e-5}) {
    std::string printed(rt::string_format(x, 20, 10).string_view());
    std::erase(printed, ' ');
    EXPECT_EQ(ten_decimal_text(x), printed) << x;
  }
}

TEST_F(Expressions, SignsAndSubtractionsKeepTheirOwnRules) {
  // The right side of a subtraction has two decimals.
  EXPECT_EQ(eval("5-0.126"), "4.87");
  ctx_.variables["X"] = "2.125";
  EXPECT_EQ(eval("10-X"), "7.88");
  // A leading "-" and one behind "*" belong to their number.
  EXPECT_EQ(eval("-3+5"), "2");
  EXPECT_EQ(eval("3*-2"), "-6.0000000000");
  // The sign of a subtracted base is taken into the power.
  EXPECT_EQ(eval("8-2^2"), "12");
  // "--" is read as one "-".
  EXPECT_EQ(eval("5--2"), "3");
}

TEST_F(Expressions, SingleValuesComeBackAsTheyAre) {
  ctx_.variables["prezzo"] = "1.50";
  ctx_.variables["saluto"] = "\"ciao\"";
  EXPECT_EQ(eval("prezzo"), "1.50");
  EXPECT_EQ(eval("0.50"), "0.50");
  EXPECT_EQ(eval("sconosciuto"), "0");
  EXPECT_EQ(eval(""), "0");
  EXPECT_EQ(eval("\"testo 2+2\""), "\"testo 2+2\"");
  EXPECT_EQ(eval("saluto"), "\"ciao\"");
  // With an operator a string is no number: it counts as 0.
  EXPECT_EQ(eval("saluto+1"), "1");
  EXPECT_EQ(eval("saluto*2"), "0.0000000000");
  // A line break makes a value no expression.
  EXPECT_EQ(eval("1+/carriage_return/"), "");
  EXPECT_TRUE(messages_.empty());
}

TEST_F(Expressions, OnlyNamesAreAskedFor) {
  ctx_.variables["X"] = "7";
  EXPECT_EQ(eval("2+3*X"), "23");
  EXPECT_EQ(ctx_.asked, (std::vector<std::string>{"X"}));
  ctx_.asked.clear();
  EXPECT_EQ(eval("-3+5*2.5"), "9.5");
  EXPECT_EQ(eval("|not_set|+1"), "1");
  EXPECT_TRUE(ctx_.asked.empty());
  // A "-" before a name isn't a sign: "-X" is a name of its own, unknown.
  EXPECT_EQ(eval("-X+1"), "1");
  EXPECT_EQ(ctx_.asked, (std::vector<std::string>{"-X"}));
}

TEST_F(Expressions, PiecesAreValuesAndSignsWithSubtractionTurnedToAddition) {
  ctx_.variables["X"] = "7";
  ctx_.variables["T"] = "\"a+b\"";
  EXPECT_EQ(pieces("2+3*X"), (std::vector<std::string>{"2", "+", "3", "*", "7"}));
  EXPECT_EQ(pieces("5-0.126"), (std::vector<std::string>{"5", "+", "-0.13"}));
  EXPECT_EQ(pieces("5-X"), (std::vector<std::string>{"5", "+", "-7"}));
  EXPECT_EQ(pieces("3^-2"), (std::vector<std::string>{"3", "^-", "2"}));
  EXPECT_EQ(pieces("2*+3"), (std::vector<std::string>{"2", "*+", "3"}));
  EXPECT_EQ(pieces("4-"), (std::vector<std::string>{"4", "-"}));
  EXPECT_EQ(pieces("a/carriage_return/b"), (std::vector<std::string>{""}));
  EXPECT_TRUE(pieces("").empty());
  // The count is of the joined values, cut again: a string holding "+" adds pieces.
  EXPECT_EQ(calculate_bl(tokenizza_espressione(ctx_, "1+T")), 5);
  EXPECT_EQ(calculate_bl(tokenizza_espressione(ctx_, "2*+3")), 3);
  EXPECT_EQ(calculate_bl(tokenizza_espressione(ctx_, "è+1")), 3);
}

TEST_F(Expressions, StringIsRealReadsNumbersOnly) {
  EXPECT_EQ(string_is_real(""), 0);
  EXPECT_EQ(string_is_real("abc"), 0);
  EXPECT_EQ(string_is_real("1.5"), 1.5);
  EXPECT_EQ(string_is_real("-0.25"), -0.25);
  EXPECT_EQ(string_is_real("12abc"), 12);
  EXPECT_EQ(string_is_real("1.5abc"), 0);
  EXPECT_EQ(string_is_real("\"5\""), 0);
  EXPECT_EQ(string_is_real("ref instance 100004"), 100004);
  EXPECT_EQ(string_is_real("6.0000000000"), 6);
  // Digits without a point and no number in front are the runtime's `real` failure.
  EXPECT_FATAL(string_is_real("a1"), "unable to convert string \"a1\" to number");

  // Plain numerals up to the longest that the quick reading takes, and past
  // it, come out as the C library reads them, to the last bit.
  std::mt19937 random(3);
  for (int round = 0; round < 20000; ++round) {
    std::string numeral = random() % 4 == 0 ? "-" : "";
    const int digits = 1 + static_cast<int>(random() % 17);
    const int point = static_cast<int>(random() % (digits + 1));
    for (int k = 0; k < digits; ++k) {
      if (k == point && k > 0) numeral += '.';
      numeral += static_cast<char>('0' + random() % 10);
    }
    ASSERT_EQ(string_is_real(numeral), std::strtod(numeral.c_str(), nullptr)) << numeral;
  }
}

TEST_F(Expressions, ModularPowerSquaresAndReduces) {
  EXPECT_EQ(modular_power(4, 13, 497), 445);
  EXPECT_EQ(modular_power(2, 10, 1000), 24);
  EXPECT_EQ(modular_power(3, 0, 7), 1);
  EXPECT_EQ(modular_power(14, 3, 7), 0);  // a base that the modulus divides
  EXPECT_EQ(modular_power(-2, 3, 5), -3);  // the remainder keeps the sign of the base
  EXPECT_TRUE(std::isnan(modular_power(2, INFINITY, 5)));
  EXPECT_FATAL(modular_power(2, 3, 0), "unable to mod by 0");
}

TEST(ErrorFrame, LinesEndAsTheCallerSays) {
  const std::string_view cause[] = {"1 - Manca una parentesi graffa chiusa '}'"};
  EXPECT_EQ(error_frame("Errore nell'istruzione iterativa:", "ripeti 3 ", cause, "\r\n\t"),
            "Errore nell'istruzione iterativa:\r\n\t" + RULE + "\r\n\t\r\n\tripeti 3 \r\n\t" + RULE +
                "\r\n\t\r\n\tEsecuzione fallita: impossibile interpretare correttamente il codice!\r\n\t\r\n\t"
                "Ecco le possibili cause:\r\n\t1 - Manca una parentesi graffa chiusa '}'");
}

TEST_F(Expressions, UnpairedBracketsStopTheRunToTheEditor) {
  EXPECT_EQ(eval("[1+2"), "0");
  ASSERT_EQ(messages_.size(), 1u);
  EXPECT_EQ(messages_[0],
            expression_message("(1+2", {"1 - Manca un operatore tra due valori ( + , - , * , / , ^ ) ",
                                         "2 - Il nome di una variabile composta da più parole è scritto in modo "
                                         "sbagliato (ad esempio 'gatto blu' al posto di 'gatto_blu')"}));
  EXPECT_EQ(g_actions, error_actions());
  EXPECT_EQ(run_ends(), std::vector{RunEnd::ToEditor});
}

TEST_F(Expressions, AnExtraOperatorStopsTheRunToTheFirstRoom) {
  const std::vector<std::string> causes = {
      "1 - Hai scritto un operatore di troppo ( + , - , * , / , ^ ) ",
      "2 - Hai scritto troppi spazi bianchi tra i valori oppure sei andato a capo"};
  EXPECT_EQ(eval("3^-2"), "0");
  ASSERT_EQ(messages_.size(), 1u);
  EXPECT_EQ(messages_[0], expression_message("3^-2", causes));
  EXPECT_EQ(g_actions, error_actions());
  EXPECT_EQ(run_ends(), std::vector{RunEnd::ToStart});

  // The faulty text is the text at hand, with its brackets shown round.
  run_ends().clear();
  EXPECT_EQ(eval("2*(3^-2)"), "0");
  ASSERT_EQ(messages_.size(), 2u);
  EXPECT_EQ(messages_[1], expression_message("2*(3^-2)", causes));
  // An error inside a bracket shows the bracket's text, and the evaluation
  // around it goes on with 0.
  EXPECT_EQ(eval("2*(1+)"), "0.0000000000");
  ASSERT_EQ(messages_.size(), 3u);
  EXPECT_EQ(messages_[2], expression_message("1+", causes));
}

TEST_F(Expressions, ReversedBracketsStopTheRunToTheFirstRoom) {
  EXPECT_EQ(eval(")1+2("), "0");
  ASSERT_EQ(messages_.size(), 1u);
  EXPECT_EQ(messages_[0],
            expression_message(")1+2(", {"1 - Hai invertito le parentesi tonde: hai scritto ')' prima di '('"}));
  EXPECT_EQ(g_actions, error_actions());
  EXPECT_EQ(run_ends(), std::vector{RunEnd::ToStart});
  // Alone, ")1(" is one piece: a single value, which is an unknown name.
  EXPECT_EQ(eval(")1("), "0");
  EXPECT_EQ(messages_.size(), 1u);
}

TEST_F(Expressions, ThePermissiveTwinReportsInItsResult) {
  for (const char* text : {"[1+2", "3^-2", ")1+2("}) {
    EXPECT_EQ(calculate_string_permessive(ctx_, text), "\"Impossibile risolvere l'espressione\"") << text;
  }
  EXPECT_TRUE(messages_.empty());
  EXPECT_TRUE(g_actions.empty());
  EXPECT_TRUE(run_ends().empty());
  EXPECT_EQ(calculate_string_permessive(ctx_, "(2+3)*4"), "20.0000000000");
  // It doesn't look the whole text up as a variable.
  ctx_.variables["2+2"] = "\"quattro\"";
  EXPECT_EQ(eval("2+2"), "\"quattro\"");
  EXPECT_EQ(calculate_string_permessive(ctx_, "2+2"), "4");
}

TEST_F(Expressions, PlaceholdersAreFilledWithNamesAndExpressions) {
  ctx_.variables["nome"] = "\"Mario\"";
  ctx_.variables["punti"] = "10";
  ctx_.variables["pi"] = "3.14159";
  ctx_.variables["prodotto"] = "6.0000000000";
  EXPECT_EQ(fill("\"Ciao <nome>!\""), "\"Ciao Mario!\"");
  EXPECT_EQ(fill("\"<nome> e <nome>: <punti>\""), "\"Mario e Mario: 10\"");
  EXPECT_EQ(fill("\"v=<sconosciuto>\""), "\"v=0\"");
  // A variable shows its stored text in full, a computed number two decimals at most.
  EXPECT_EQ(fill("<pi>"), "3.14159");
  EXPECT_EQ(fill("<prodotto>"), "6.0000000000");
  EXPECT_EQ(fill("<punti/3>"), "3.33");
  EXPECT_EQ(fill("<punti/4>"), "2.50");
  EXPECT_EQ(fill("<punti*2>"), "20");
  EXPECT_EQ(fill("<punti+0.5>"), "10.5");
  EXPECT_EQ(fill("<punti-0.126>"), "9.87");
  // "<" and ">" are always brackets: a comparison in a text is filled in.
  EXPECT_EQ(fill("\"a<b>c\""), "\"a0c\"");
  EXPECT_EQ(fill("\"3<4>5\""), "\"345\"");
}

TEST_F(Expressions, PlaceholderNamesReadElementAttributes) {
  ctx_.attributes["|x"] = "12.5";
  ctx_.variables["MAX"] = "5";
  EXPECT_EQ(fill("\"x=<X>\""), "\"x=12.5\"");
  fill("\"< X >\"");
  EXPECT_EQ(ctx_.asked.back(), "|x");
  // Any capital X in a name is read as the attribute.
  EXPECT_EQ(fill("<MAX>"), "0");
  EXPECT_EQ(ctx_.asked.back(), "MA|x");
  // The order of the rewrites breaks names with a Z in them.
  fill("<TRASPARENZA>");
  EXPECT_EQ(ctx_.asked.back(), "TRASPAREN|zA");
  fill("<SCALA_ASSE_Y>");
  EXPECT_EQ(ctx_.asked.back(), "|scala_asse_y");
  fill("<timer3>");
  EXPECT_EQ(ctx_.asked.back(), "timer_3");
}

TEST_F(Expressions, TextsWithoutPlaceholdersAndCipherTextsStayAsTheyAre) {
  // Only the first round brackets turn square.
  EXPECT_EQ(fill("\"ciao (a) (b)\""), "\"ciao [a] (b)\"");
  EXPECT_EQ(fill("\"§CRIPTO§a<b>c\""), "\"a<b>c\"");
  ctx_.variables["segreto"] = "\"§CRIPTO§x<y>\"";
  EXPECT_EQ(fill("\"<segreto>!\""), "\"x<y>!\"");
  // A "<" with no ">" behind it runs to the end of the text and is left.
  EXPECT_EQ(fill("\"a < b\""), "\"a < b\"");
  EXPECT_TRUE(messages_.empty());
}

// Random texts from the pieces of expressions, placeholders and formulas,
// raw bytes included: every evaluator ends, the permissive twin never stops
// the run, a condition always ends on a truth value, and the only fatal
// report is the runtime's own for a text that `real` can't read.
TEST_F(Expressions, RandomTextsEndWithoutCrashing) {
  const std::vector<std::string> parts = {
      "0", "1", "2", "7.5", "-", "+", "*", "/", "^", "[", "]", "(", ")", "\"", "<", ">", "< ", "=", "#",
      "@", "ù", "e", "o", "x", "n", "X", "MAX", "punti", "nome", "§CRIPTO§", "/carriage_return/", "<--d-->",
      "ref instance ", ".", " ", "--", "\xC3", "\xA8", "\xFF", "\x80", "è", "a1", "|not_set|", "rif"};
  ctx_.variables = {{"punti", "10"}, {"nome", "\"Mario (x)\""}, {"lista", "\"a+b<c>\""}, {"zero", "0"},
                     {"rif", "\"1+[rif]\""}};
  ctx_.attributes = {{"|x", "3.5"}};
  std::mt19937 random(1234567);
  std::uniform_int_distribution<size_t> pick(0, parts.size() - 1);
  std::uniform_int_distribution<int> length(1, 12);
  int fatal_reports = 0;
  const auto started = std::chrono::steady_clock::now();
  for (int round = 0; round < 20000; ++round) {
    std::string text;
    for (int n = length(random); n > 0; --n) text += parts[pick(random)];
    SCOPED_TRACE(text);
    run_ends().clear();
    const auto guarded = [&](const auto& body) {
      try {
        body();
      } catch (const QvScriptException& e) {
        ++fatal_reports;
        EXPECT_TRUE(e.message.starts_with("unable to convert string")) << e.message;
      }
    };
    guarded([&] { calculate_string(ctx_, text); });
    const size_t shown = messages_.size();
    guarded([&] { calculate_string_permessive(ctx_, text); });
    EXPECT_EQ(messages_.size(), shown);
    guarded([&] { calculate_expression_in_string(ctx_, text); });
    guarded([&] {
      const std::string truth = reduce_condition(ctx_, text);
      EXPECT_TRUE(truth == "1" || truth == "0") << truth;
    });
  }
  const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
  EXPECT_LT(seconds, 20.0);
  EXPECT_GT(messages_.size(), 0u);  // the texts did reach the error paths
  RecordProperty("fatal_reports", fatal_reports);
}

TEST_F(Expressions, AValueThatBringsBackItsOwnBracketEnds) {
  // Each bracket pastes in a string that holds the bracket again; the
  // nesting is cut off with 0 before the stack runs out.
  ctx_.variables["rif"] = "\"1+[rif]\"";
  EXPECT_EQ(eval("1+[rif]"), "0");
  EXPECT_TRUE(messages_.empty());
}
