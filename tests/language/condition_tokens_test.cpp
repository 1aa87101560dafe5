#include <random>

#include "runtime/Code/Error.h"
#include "support/program_fixture.h"

namespace {

class ConditionTokens : public ProgramTest {
 protected:
  // A program of its own: the assignments `setup` ran, then "se `condition` allora".
  ProgramInstance& condition_program(const std::string& setup, const std::string& condition) {
    forget_programs();
    ProgramInstance& p = program("INIZIA\n" + setup + "\nse " + condition + " allora\n}\n");
    for (int k = 0; k + 1 < position(p, "se"); ++k) {
      if (p.token_text(k + 1) == "=") p.var_update_direct(p.token_text(k), k);
    }
    return p;
  }
};

// The framed message of a condition without its opening brace.
std::string missing_brace_message(const std::string& faulty) {
  const std::string rule(71, '_');
  return "Errore nell'istruzione condizionale:\r\n\t" + rule + "\r\n\t\r\n\t" + faulty + "\r\n\t" + rule +
         "\r\n\t\r\n\tEsecuzione fallita: impossibile interpretare correttamente il codice!\r\n\t\r\n\t"
         "Ecco le possibili cause:\r\n\t"
         "1 - Manca una parentesi graffa aperta '{' o il costrutto 'allora' dopo la condizione";
}

}  // namespace

TEST_F(ConditionTokens, OperandsSignsAndWordsBecomeTheFormula) {
  struct Case { const char* setup; const char* condition; const char* truth; };
  const Case cases[] = {
      // The logic words and every sign, in words or symbols; expressions on either side.
      {"X = 1\nY = 2", "X = 1 e Y = 2", "1"}, {"X = 7\nY = 2", "X = 1 o Y = 2", "1"},
      {"X = 1\nY = 2", "X = 1 o esclusivamente Y = 2", "0"}, {"X = 3", "X è maggiore o uguale a 3", "1"},
      {"X = 3", "X >= 4", "0"}, {"X = 3", "X <= 3", "1"}, {"X = 3", "X è diverso da 3", "0"},
      {"A = \"ciao\"", "A != \"mondo\"", "1"}, {"X = 3", "X * 2 > X + 2", "1"}, {"X = 1", "[X + 1] * 2 = 4", "1"},
      // "non" negates a value; behind a comparison sign, the value that follows.
      {"X = 1", "non X", "0"}, {"X = 0", "non X", "1"}, {"X = 0\nY = 2", "X = non Y", "1"},
      {"X = 1\nY = 2", "X = non Y", "0"}, {"X = 1\nY = 0", "X = non Y e Y = 0", "1"},
      // A bare operand is its value; an unknown name is 0.
      {"X = 0.49", "X", "0"}, {"", "sconosciuto", "0"},
      // "(X = 1)" leaves the token "[X": the bracket belongs to the formula, not to X.
      {"X = 1", "(X = 1)", "1"}, {"X = 2", "(X = 1)", "0"},
  };
  for (const Case& c : cases) {
    ProgramInstance& p = condition_program(c.setup, c.condition);
    EXPECT_EQ(p.tokenizza_boolean(position(p, "se")), c.truth) << c.setup << " / " << c.condition;
  }
  EXPECT_TRUE(messages_.empty());
}

TEST_F(ConditionTokens, FormulaBracketsAreTakenOffTheOperandsAndPutBack) {
  // X = 1 o (Y = 5 e Z = 3), with the closing bracket on the last operand:
  // 1 or (0 and 0); without the brackets, (1 or 0) and 0 would be false.
  ProgramInstance& p = condition_program("X = 1\nY = 9\nZ = 4", "X = 1 o (Y = 5 e Z = 3)");
  const int se = position(p, "se");
  ASSERT_EQ(p.token_text(se + 5), "[Y");
  ASSERT_EQ(p.token_text(se + 11), "3");
  p.program.tok[static_cast<size_t>(se) + 11] = RValue::text("3]");
  EXPECT_EQ(p.tokenizza_boolean(se), "1");
  EXPECT_TRUE(messages_.empty());
}

TEST_F(ConditionTokens, MarksOfTheWalkAreNotRead) {
  ProgramInstance& p = condition_program("X = 1\nY = 2", "X = 1 e Y = 2");
  const int se = position(p, "se");
  for (int k = se + 1; k <= se + 8; ++k) {
    p.program.tok[static_cast<size_t>(k)] = RValue::text("<--w--><--d-->" + std::string(p.token_text(k)));
  }
  EXPECT_EQ(p.tokenizza_boolean(se), "1");
}

TEST_F(ConditionTokens, AMissingBraceStopsTheRunWithItsMessage) {
  ProgramInstance& p = program("INIZIA\nX = 1\nse X = 1\nY = 2\nCICLO CONTINUO\nZ = 3\nW = 4\nse W = 4\n");
  const int first = position(p, "se");
  EXPECT_EQ(p.tokenizza_boolean(first), "error");
  // At most eleven tokens, each with a blank behind it; near the end of the
  // program the text stops with the array.
  EXPECT_EQ(p.tokenizza_boolean(position(p, "se", first + 1)), "error");
  EXPECT_EQ(messages_, (std::vector<std::string>{missing_brace_message("se X == 1 Y = 2 CICLO_CONTINUO Z = 3 "),
                                                 missing_brace_message("se W == 4  FINE ")}));
  EXPECT_EQ(run_ends(), (std::vector{RunEnd::ToEditor, RunEnd::ToEditor}));
}

// Chains of comparisons are read by a plan made at their first reading;
// whatever their operands hold, and after the walk marks their tokens, the
// answer is the general reading's.
TEST_F(ConditionTokens, PlainConditionsAnswerAsTheGeneralReading) {
  const std::vector<std::string> operands = {"0", "700", "2.5", "X", "Y", "T", "N", "Q", "M", "sconosciuto"};
  const std::vector<std::string> signs = {"=", "==", ">", "<", ">=", "<=", "!=", "e", "o", "o esclusivamente"};
  std::mt19937 random(5);
  int plain = 0;
  for (int round = 0; round < 300; ++round) {
    std::string condition = operands[random() % operands.size()];
    for (int k = static_cast<int>(random() % 4); k > 0; --k) {
      condition += " " + signs[random() % signs.size()] + " " + operands[random() % operands.size()];
    }
    ProgramInstance& p = condition_program("X = 5\nY = 700\nT = \"ciao\"\nN = \"nonno\"\nQ = \"a==b\"\nM = 0 - 3",
                                           condition);
    const int se = position(p, "se");
    // The answer, or the runtime's words where a text can't be a number.
    const auto answer = [&](std::string (ProgramInstance::*reading)(int)) {
      try {
        return (p.*reading)(se);
      } catch (const QvScriptException& e) {
        return "fatal: " + e.message;
      }
    };
    const std::string general = answer(&ProgramInstance::read_condition);
    ASSERT_EQ(answer(&ProgramInstance::tokenizza_boolean), general) << condition;
    ASSERT_EQ(answer(&ProgramInstance::tokenizza_boolean), general) << condition;
    plain += p.program.plans->conditions.at(se).plain ? 1 : 0;
    p.program.tok[static_cast<size_t>(se) + 1] = RValue::text("<--d-->" + std::string(p.token_text(se + 1)));
    ASSERT_EQ(answer(&ProgramInstance::tokenizza_boolean), answer(&ProgramInstance::read_condition)) << condition;
  }
  EXPECT_GT(plain, 50);  // the plans were really used
}

TEST_F(ConditionTokens, AnyTokenArrayGivesAnAnswer) {
  ProgramInstance& p = bare_program();
  const std::vector<std::string> pool = {"{",   "<--d-->{", "}",  "(", ")",  "[",      "]",     "[X", "1]", "non",
                                         "=",   "==",      ">=", "!", "e",  "o",      "0.5",   "2",  "X",  "\"a b\"",
                                         "o_esclusivamente", "<", "n", "",  "\"non\"", "[[1", "]]"};
  std::mt19937 random(11);
  for (int round = 0; round < 400; ++round) {
    p.program.tok.clear();
    for (int k = static_cast<int>(random() % 20); k > 0; --k) p.program.tok.push_back(RValue::text(pool[random() % pool.size()]));
    p.program.totale_tok = static_cast<int>(random() % 25);
    const int j = static_cast<int>(random() % 22) - 1;
    try {
      const std::string answer = p.tokenizza_boolean(j);
      ASSERT_TRUE(answer == "1" || answer == "0" || answer == "error") << answer;
      // A plan made for an earlier array never answers for this one.
      if (answer != "error") {
        ASSERT_EQ(answer, p.read_condition(j));
      }
    } catch (const QvScriptException&) {
      // "non" before a text asks the runtime for the text's number: its fatal report ends the run.
    }
  }
}
