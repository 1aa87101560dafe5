#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "language/evaluation/condition_formula.h"
#include "language/evaluation/numeric_expression.h"
#include "language/evaluation/string_expression.h"
#include "language/tokenizer/sound_assets.h"
#include "runtime/Code/Builtins.h"
#include "runtime/Code/Conversions.h"
#include "runtime/Function/StringFunctions.h"
#include "runtime/Platform/Dialogs.h"
#include "runtime/Support/AssetIndex.h"
#include "support/Fatal.h"
#include "support/MessageRecorder.h"
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
  void TearDown() override { platform::set_dialogs(nullptr); }

  std::string eval(std::string_view text) { return calculate_string(ctx_, text); }

  FakeContext ctx_;
  std::vector<std::string> messages_;
};

using Texts = std::vector<std::string>;

// The framed message of an expression error, lines ended by "\r\n".
std::string expression_message(const std::string& faulty, const Texts& causes) {
  const std::string rule(71, '_');
  std::string m = "Errore nell'espressione:\r\n" + rule + "\r\n\r\n" + faulty + "\r\n" + rule +
                  "\r\n\r\nEsecuzione fallita: impossibile interpretare correttamente il codice!\r\n\r\n"
                  "Ecco le possibili cause:";
  for (const std::string& cause : causes) m += "\r\n" + cause;
  return m;
}

bool is_truth(const std::string& text) { return text == "1" || text == "0"; }

const Texts EXTRA_OPERATOR = {"1 - Hai scritto un operatore di troppo ( + , - , * , / , ^ ) ",
                              "2 - Hai scritto troppi spazi bianchi tra i valori oppure sei andato a capo"};

}  // namespace

TEST_F(Expressions, GiveTheValueOfTheirText) {
  ctx_.variables = {{"X", "2.125"}, {"prezzo", "1.50"}, {"saluto", "\"ciao\""}};
  const std::pair<const char*, const char*> cases[] = {
      // Brackets first (round ones are arithmetic too), then powers from left
      // to right, products and sums. A product or quotient left alone keeps
      // ten decimals; a computed sum loses its trailing zeros; a quotient of 0
      // isn't pasted in, so the sum goes on from the dividend.
      {"2-3*4", "-10"}, {"2^3+1", "9"}, {"(2+3)*4", "20.0000000000"}, {"[[1+2]*[3+1]]+1", "13"},
      {"2^3^2", "64.0000000000"}, {"0/5+1", "1"}, {"10/4", "2.5000000000"}, {"1.50+0", "1.5"},
      // Every step is rounded to ten decimals.
      {"1/3*3", "0.9999999999"}, {"2/3+0", "0.6666666667"},
      // The right side of a subtraction has two decimals; a leading "-" and one
      // behind "*" belong to their number; the sign of a subtracted base goes
      // into the power; "--" is one "-".
      {"5-0.126", "4.87"}, {"10-X", "7.88"}, {"-3+5", "2"}, {"3*-2", "-6.0000000000"}, {"8-2^2", "12"}, {"5--2", "3"},
      // Single values come back as they are; with an operator a string counts
      // as 0; a line break makes a value no expression.
      {"prezzo", "1.50"}, {"0.50", "0.50"}, {"sconosciuto", "0"}, {"", "0"}, {"\"testo 2+2\"", "\"testo 2+2\""},
      {"saluto", "\"ciao\""}, {"saluto+1", "1"}, {"saluto*2", "0.0000000000"}, {"1+/carriage_return/", ""},
  };
  for (const auto& [text, value] : cases) EXPECT_EQ(eval(text), value) << text;
  EXPECT_TRUE(messages_.empty());

  // The text between steps is what the runtime's format prints with ten decimals.
  for (double x : {0.0, -0.0, -2.5, 1.0 / 3, 123456789.123456789, 1e-11, -1e-11, 5e-11, 1e20, 1e300, -7.25e-5}) {
    std::string printed(rt::string_format(x, 20, 10).string_view());
    std::erase(printed, ' ');
    EXPECT_EQ(ten_decimal_text(x), printed) << x;
  }
}

TEST_F(Expressions, PiecesAreValuesAndSignsWithSubtractionTurnedToAddition) {
  ctx_.variables = {{"X", "7"}, {"T", "\"a+b\""}};
  const std::pair<const char*, Texts> cases[] = {
      {"2+3*X", {"2", "+", "3", "*", "7"}}, {"5-0.126", {"5", "+", "-0.13"}}, {"5-X", {"5", "+", "-7"}},
      {"3^-2", {"3", "^-", "2"}},           {"2*+3", {"2", "*+", "3"}},        {"4-", {"4", "-"}},
      // A "-" before a name isn't a sign: "-Y" is a name of its own, unknown.
      {"-Y+|not_set|", {"0", "+", "|not_set|"}}, {"a/carriage_return/b", {""}}, {"", {}},
  };
  for (const auto& [text, expected] : cases) {
    const ExpressionPieces p = tokenizza_espressione(ctx_, text);
    Texts pieces;
    for (size_t k = 1; k <= p.count(); ++k) pieces.emplace_back(p.piece(k));
    EXPECT_EQ(pieces, expected) << text;
  }
  // The count is of the joined values, cut again: a string holding "+" adds pieces.
  for (const auto& [text, count] : {std::pair{"1+T", 5}, {"2*+3", 3}, {"è+1", 3}}) {
    EXPECT_EQ(calculate_bl(tokenizza_espressione(ctx_, text)), count) << text;
  }
  // Only names are asked for: not numbers, signs, the mark of a value not
  // set, nor the numbers that the steps of an evaluation paste in.
  EXPECT_EQ(eval("2+3*X"), "23");
  EXPECT_EQ(ctx_.asked, (Texts{"X", "X", "-Y", "T", "è", "X"}));
}

TEST_F(Expressions, NumbersAreReadAndPoweredAsTheRuntimeDoes) {
  const std::pair<const char*, double> cases[] = {{"abc", 0}, {"12abc", 12}, {"1.5abc", 0}, {"\"5\"", 0},
                                                  {"ref instance 100004", 100004}};
  for (const auto& [text, number] : cases) EXPECT_EQ(string_is_real(text), number) << text;
  // Digits without a point and no number in front are the runtime's `real` failure.
  EXPECT_FATAL(string_is_real("a1"), "unable to convert string \"a1\" to number");

  // Plain numerals up to the longest that the quick reading takes, and past
  // it, come out as the C library reads them, to the last bit.
  std::mt19937 random(3);
  for (int round = 0; round < 10000; ++round) {
    std::string numeral = random() % 4 == 0 ? "-" : "";
    const int digits = 1 + static_cast<int>(random() % 17);
    const int point = static_cast<int>(random() % (digits + 1));
    for (int k = 0; k < digits; ++k) {
      if (k == point && k > 0) numeral += '.';
      numeral += static_cast<char>('0' + random() % 10);
    }
    ASSERT_EQ(string_is_real(numeral), std::strtod(numeral.c_str(), nullptr)) << numeral;
  }

  // A base that the modulus divides gives 0; the remainder keeps the sign of the base.
  const double powers[][4] = {{4, 13, 497, 445}, {3, 0, 7, 1}, {14, 3, 7, 0}, {-2, 3, 5, -3}};
  for (const auto& c : powers) EXPECT_EQ(modular_power(c[0], c[1], c[2]), c[3]) << c[0] << "^" << c[1] << " % " << c[2];
  EXPECT_TRUE(std::isnan(modular_power(2, INFINITY, 5)));
  EXPECT_FATAL(modular_power(2, 3, 0), "unable to mod by 0");
}

TEST_F(Expressions, ErrorsStopTheRunButThePermissiveTwinReportsInItsResult) {
  // Unpaired brackets go back to the editor, after the sound, the message,
  // the close capture off and every sound stopped, in this order.
  EXPECT_EQ(eval("[1+2"), "0");
  const int sound = static_cast<int>(value_to_real(asset_get_index("suono_errore")));
  EXPECT_EQ(g_actions, (Texts{"audio_play_sound " + std::to_string(sound) + " 1 0", "show_message",
                              "ex_patch_window_close_capture 0", "audio_stop_all"}));
  // An extra operator and reversed brackets go back to the first room. Alone,
  // ")1(" is one piece: a single value, which is an unknown name.
  EXPECT_EQ(eval("3^-2"), "0");
  EXPECT_EQ(eval(")1+2("), "0");
  EXPECT_EQ(eval(")1("), "0");
  // An error inside a bracket shows the bracket's text, and the evaluation around it goes on with 0.
  EXPECT_EQ(eval("2*(1+)"), "0.0000000000");
  // The permissive twin stops nothing; nor does it look the whole text up as a variable.
  for (const char* text : {"[1+2", "3^-2", ")1+2("}) {
    EXPECT_EQ(calculate_string_permessive(ctx_, text), "\"Impossibile risolvere l'espressione\"") << text;
  }
  ctx_.variables["2+2"] = "\"quattro\"";
  EXPECT_EQ(eval("2+2"), "\"quattro\"");
  EXPECT_EQ(calculate_string_permessive(ctx_, "2+2"), "4");
  EXPECT_EQ(messages_,
            (Texts{expression_message("(1+2", {"1 - Manca un operatore tra due valori ( + , - , * , / , ^ ) ",
                                               "2 - Il nome di una variabile composta da più parole è scritto in "
                                               "modo sbagliato (ad esempio 'gatto blu' al posto di 'gatto_blu')"}),
                   expression_message("3^-2", EXTRA_OPERATOR),
                   expression_message(")1+2(", {"1 - Hai invertito le parentesi tonde: hai scritto ')' prima di '('"}),
                   expression_message("1+", EXTRA_OPERATOR)}));
  EXPECT_EQ(run_ends(), (std::vector{RunEnd::ToEditor, RunEnd::ToStart, RunEnd::ToStart, RunEnd::ToStart}));
}

TEST_F(Expressions, PlaceholdersAreFilledWithNamesAndExpressions) {
  ctx_.variables = {{"nome", "\"Mario\""}, {"punti", "10"}, {"prodotto", "6.0000000000"}, {"MAX", "5"},
                    {"segreto", "\"§CRIPTO§x<y>\""}};
  ctx_.attributes = {{"|x", "12.5"}, {"MA|x", "1"}, {"TRASPAREN|zA", "2"}, {"|scala_asse_y", "3"}, {"timer_3", "4"}};
  const std::pair<const char*, const char*> cases[] = {
      {"\"<nome> e <nome>: <sconosciuto>\"", "\"Mario e Mario: 0\""},
      // A variable shows its stored text in full, a computed number two decimals at most.
      {"<prodotto>", "6.0000000000"}, {"<punti/3>", "3.33"}, {"<punti/4>", "2.50"}, {"<punti*2>", "20"},
      {"<punti+0.5>", "10.5"},
      // "<" and ">" are always brackets: a comparison in a text is filled in.
      // A "<" with no ">" behind it runs to the end of the text and is left;
      // only the first round brackets turn square; cipher texts stay as they are.
      {"\"a<b>c\"", "\"a0c\""}, {"\"a < b\"", "\"a < b\""}, {"\"ciao (a) (b)\"", "\"ciao [a] (b)\""},
      {"\"§CRIPTO§a<b>c\"", "\"a<b>c\""}, {"\"<segreto>!\"", "\"x<y>!\""},
      // Any capital X in a name is read as the element's attribute, and the
      // order of the rewrites breaks names with a Z in them.
      {"\"x=<X>\"", "\"x=12.5\""}, {"<MAX>", "1"}, {"<TRASPARENZA>", "2"}, {"<SCALA_ASSE_Y>", "3"}, {"<timer3>", "4"},
  };
  for (const auto& [text, filled] : cases) EXPECT_EQ(calculate_expression_in_string(ctx_, text), filled) << text;
  // The name loses the blanks around it, but the text keeps them, and so isn't filled.
  EXPECT_EQ(calculate_expression_in_string(ctx_, "\"< X >\""), "\" <  X  > \"");
  EXPECT_EQ(ctx_.asked.back(), "|x");
  EXPECT_TRUE(messages_.empty());
}

// The formula's letters: "=", ">", "<", "#" (at least), "@" (at most) and
// "ù" (differs) compare; "e", "o", "x" (one or the other) and "n" (not) join;
// square brackets group.
TEST(ConditionFormula, ReducesToATruthValueOneBracketLevelAStage) {
  register_runtime_builtins();
  FakeContext ctx;
  ctx.variables["nome"] = "\"Mario\"";
  const std::pair<const char*, const char*> cases[] = {
      // Every sign; numbers compare with the runtime's epsilon.
      {"1=2", "0"}, {"3>2", "1"}, {"3<2", "0"}, {"3#3", "1"}, {"2@1", "0"}, {"2ù3", "1"}, {"2ù2", "0"},
      {"-1.5<0", "1"}, {"1.000001=1", "1"}, {"1.001=1", "0"},
      // Logic from left to right: "e" has no precedence over "o".
      {"1=1e2=2", "1"}, {"1=1e2=3", "0"}, {"1=2o2=2", "1"}, {"1=2o2=3", "0"}, {"1=1x2=2", "0"}, {"1=1x1=2", "1"},
      {"1=1o1=2e2=3", "0"}, {"1=2e1=1o2=2", "1"}, {"[[1=1]o[1=2]]e1", "1"},
      // "n" negates the value behind it, before a bracket once the bracket is a value.
      {"n0", "1"}, {"n0.7", "0"}, {"n[1=2]e1", "1"}, {"1=1en1=1", "0"},
      // A bare value is true from one half.
      {"0.49999", "0"}, {"0.5", "1"}, {"0.4e1", "0"}, {"0.4o0.6", "1"},
      // Strings compare as texts with their blanks ignored and their placeholders
      // filled; against a number the quotes differ; with any other sign a text
      // is a number, hence 0; in logic a text is true.
      {"\"ciao\"=\"Ciao\"", "0"}, {"\"ciao mondo\"=\"ciaomondo\"", "1"}, {"\"a\"ù\"a\"", "0"}, {"\"5\"=5", "0"},
      {"\"b\">\"a\"", "0"}, {"\"<nome>\"=\"Mario\"", "1"}, {"\"a\"e0", "0"}, {"0o\"zero\"", "1"},
      // A formula that stops changing is false.
      {"1x", "0"}, {"e", "0"}, {"", "0"}, {"[[[", "0"}, {"1e[1", "0"},
  };
  for (const auto& [formula, truth] : cases) EXPECT_EQ(reduce_condition(ctx, formula), truth) << formula;
  // A stage takes one bracket level; without logic the brackets go at once.
  const std::pair<const char*, const char*> stages[] = {
      {"[2>1]", "1"}, {"[1=1]e[2=1]", "1e0"}, {"1e0", "0"}, {"[[1=1]o[1=2]]e1", "[1o0]e1"}, {"n[1=1]", "n1"}, {"1x", "1x"},
      {"1", "1"}, {"0", "0"},
  };
  for (const auto& [formula, next] : stages) EXPECT_EQ(boolean_parse(ctx, formula), next) << formula;
}

// Random texts from the pieces of expressions, placeholders and formulas,
// raw bytes included: every evaluator ends, the permissive twin never stops
// the run, a condition always ends on a truth value, and the only fatal
// report is the runtime's own for a text that `real` can't read.
TEST_F(Expressions, RandomTextsEndWithoutCrashing) {
  const Texts parts = {"0", "1", "2", "7.5", "-", "+", "*", "/", "^", "[", "]", "(", ")", "\"", "<", ">", "< ", "=",
                       "#", "@", "ù", "e", "o", "x", "n", "X", "MAX", "punti", "nome", "§CRIPTO§", "/carriage_return/",
                       "<--d-->", "ref instance ", ".", " ", "--", "\xC3", "\xA8", "\xFF", "\x80", "è", "a1",
                       "|not_set|", "rif"};
  ctx_.variables = {{"punti", "10"}, {"nome", "\"Mario (x)\""}, {"rif", "\"1+[rif]\""}};
  ctx_.attributes = {{"|x", "3.5"}};
  std::mt19937 random(1234567);
  for (int round = 0; round < 20000; ++round) {
    std::string text;
    for (int n = 1 + static_cast<int>(random() % 12); n > 0; --n) text += parts[random() % parts.size()];
    SCOPED_TRACE(text);
    const auto guarded = [&](const auto& body) {
      try {
        body();
      } catch (const QvScriptException& e) {
        EXPECT_TRUE(e.message.starts_with("unable to convert string")) << e.message;
      }
    };
    guarded([&] { calculate_string(ctx_, text); });
    const size_t shown = messages_.size();
    guarded([&] { calculate_string_permessive(ctx_, text); });
    EXPECT_EQ(messages_.size(), shown);
    guarded([&] { calculate_expression_in_string(ctx_, text); });
    guarded([&] { EXPECT_PRED1(is_truth, reduce_condition(ctx_, text)); });
  }
  EXPECT_GT(messages_.size(), 0u);  // the texts did reach the error paths

  // A bracket that pastes in a string holding the bracket again: the nesting
  // is cut off with 0 before the stack runs out.
  messages_.clear();
  EXPECT_EQ(eval("1+[rif]"), "0");
  EXPECT_TRUE(messages_.empty());
}
