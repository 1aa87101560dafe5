#include <random>

#include "support/program_fixture.h"
#include "runtime/Code/Error.h"

namespace {

class ConditionTokens : public ProgramTest {
 protected:
  // The truth of "se `condition` allora" after the assignments `setup` ran.
  std::string truth(const std::string& setup, const std::string& condition) {
    programs_.clear();  // each condition in a program of its own
    ProgramInstance& p = program("INIZIA\n" + setup + "\nse " + condition + " allora\n}\n");
    run_assignments(p);
    return p.tokenizza_boolean(position(p, "se"));
  }
};

const std::string RULE(71, '_');

// The framed message of a condition without its opening brace.
std::string missing_brace_message(const std::string& faulty) {
  return "Errore nell'istruzione condizionale:\r\n\t" + RULE + "\r\n\t\r\n\t" + faulty + "\r\n\t" + RULE +
         "\r\n\t\r\n\tEsecuzione fallita: impossibile interpretare correttamente il codice!\r\n\t\r\n\t"
         "Ecco le possibili cause:\r\n\t"
         "1 - Manca una parentesi graffa aperta '{' o il costrutto 'allora' dopo la condizione";
}

}  // namespace

TEST_F(ConditionTokens, ComparisonsJoinedByLogicFromLeftToRight) {
  EXPECT_EQ(truth("X = 1\nY = 2", "X = 1 e Y = 2"), "1");
  EXPECT_EQ(truth("X = 1\nY = 3", "X = 1 e Y = 2"), "0");
  EXPECT_EQ(truth("X = 7\nY = 2", "X = 1 o Y = 2"), "1");
  // (1 or 1) and 0: "e" has no precedence over "o".
  EXPECT_EQ(truth("X = 1\nY = 2\nZ = 3", "X = 1 o Y = 2 e Z = 4"), "0");
  EXPECT_EQ(truth("X = 1\nY = 2", "X = 1 o esclusivamente Y = 2"), "0");
  EXPECT_EQ(truth("X = 1\nY = 5", "X = 1 o esclusivamente Y = 2"), "1");
  // Every sign, in words or symbols; expressions on either side.
  EXPECT_EQ(truth("X = 3", "X è maggiore o uguale a 3"), "1");
  EXPECT_EQ(truth("X = 3", "X >= 4"), "0");
  EXPECT_EQ(truth("X = 3", "X <= 3"), "1");
  EXPECT_EQ(truth("X = 3", "X è diverso da 3"), "0");
  EXPECT_EQ(truth("X = 3", "X * 2 > X + 2"), "1");
  EXPECT_EQ(truth("X = 1", "[X + 1] * 2 = 4"), "1");
}

TEST_F(ConditionTokens, NonNegatesAValue) {
  EXPECT_EQ(truth("X = 1", "non X"), "0");
  EXPECT_EQ(truth("X = 0", "non X"), "1");
  // Behind a comparison sign it negates the value that follows.
  EXPECT_EQ(truth("X = 0\nY = 2", "X = non Y"), "1");
  EXPECT_EQ(truth("X = 1\nY = 2", "X = non Y"), "0");
  EXPECT_EQ(truth("X = 1\nY = 0", "X = non Y e Y = 0"), "1");
}

TEST_F(ConditionTokens, ABareValueIsTrueFromOneHalf) {
  EXPECT_EQ(truth("", "0.4"), "0");
  EXPECT_EQ(truth("", "0.5"), "1");
  EXPECT_EQ(truth("X = 0.49", "X"), "0");
  EXPECT_EQ(truth("X = 2", "X"), "1");
  EXPECT_EQ(truth("", "sconosciuto"), "0");
}

TEST_F(ConditionTokens, TextsCompareAsTexts) {
  EXPECT_EQ(truth("A = \"ciao\"", "A = \"ciao\""), "1");
  EXPECT_EQ(truth("A = \"ciao\"", "A = \"Ciao\""), "0");
  EXPECT_EQ(truth("A = \"ciao\"", "A != \"mondo\""), "1");
  EXPECT_EQ(truth("A = \"ciao mondo\"", "A = \"ciaomondo\""), "1");
  // Compared with ">" a text counts as a number, hence 0.
  EXPECT_EQ(truth("A = \"b\"", "A > 0"), "0");
  // A text is true as an operand of "e".
  EXPECT_EQ(truth("A = \"b\"\nX = 1", "X = 1 e A"), "1");
}

TEST_F(ConditionTokens, FormulaBracketsAreTakenOffTheOperandsAndPutBack) {
  // "(X = 1)" leaves the token "[X": the bracket belongs to the formula, not to X.
  EXPECT_EQ(truth("X = 1", "(X = 1)"), "1");
  EXPECT_EQ(truth("X = 2", "(X = 1)"), "0");
  EXPECT_TRUE(messages_.empty());

  // X = 1 o (Y = 5 e Z = 3), with the closing bracket on the last operand.
  programs_.clear();
  ProgramInstance& p = program("INIZIA\nX = 1\nY = 9\nZ = 4\nse X = 1 o (Y = 5 e Z = 3) allora\n}\n");
  run_assignments(p);
  const int se = position(p, "se");
  ASSERT_EQ(p.token_text(se + 5), "[Y");
  ASSERT_EQ(p.token_text(se + 11), "3");
  p.program.tok[static_cast<size_t>(se) + 11] = RValue::text("3]");
  // 1 or (0 and 0); without the brackets, (1 or 0) and 0 would be false.
  EXPECT_EQ(p.tokenizza_boolean(se), "1");
  EXPECT_TRUE(messages_.empty());
}

TEST_F(ConditionTokens, MarksOfTheWalkAreNotRead) {
  ProgramInstance& p = program("INIZIA\nX = 1\nY = 2\nse X = 1 e Y = 2 allora\n}\n");
  run_assignments(p);
  const int se = position(p, "se");
  for (int k = se + 1; k <= se + 8; ++k) {
    const std::string marked = "<--w--><--d-->" + std::string(p.token_text(k));
    p.program.tok[static_cast<size_t>(k)] = RValue::text(marked);
  }
  EXPECT_EQ(p.tokenizza_boolean(se), "1");
}

TEST_F(ConditionTokens, AMissingBraceStopsTheRunWithItsMessage) {
  ProgramInstance& p = program("INIZIA\nX = 1\nse X = 1\nY = 2\nCICLO CONTINUO\nZ = 3\nW = 4\nse W = 4\n");
  const int first = position(p, "se");
  EXPECT_EQ(p.tokenizza_boolean(first), "error");
  ASSERT_EQ(messages_.size(), 1u);
  // At most eleven tokens, each with a blank behind it.
  EXPECT_EQ(messages_[0], missing_brace_message("se X == 1 Y = 2 CICLO_CONTINUO Z = 3 "));
  EXPECT_EQ(run_ends(), std::vector{RunEnd::ToEditor});

  // Near the end of the program the text stops with the array.
  const int last = position(p, "se", first + 1);
  EXPECT_EQ(p.tokenizza_boolean(last), "error");
  ASSERT_EQ(messages_.size(), 2u);
  EXPECT_EQ(messages_[1], missing_brace_message("se W == 4  FINE "));
}

// Chains of comparisons are read by a plan made at their first reading;
// whatever their operands hold, and after the walk marks their tokens, the
// answer is the general reading's.
TEST_F(ConditionTokens, PlainConditionsAnswerAsTheGeneralReading) {
  const std::vector<std::string> operands = {"0", "700", "2.5", "X", "Y", "T", "N", "Q", "M", "sconosciuto"};
  const std::vector<std::string> signs = {"=", "==", ">", "<", ">=", "<=", "!=", "e", "o", "o esclusivamente"};
  const std::string setup = "X = 5\nY = 700\nT = \"ciao\"\nN = \"nonno\"\nQ = \"a==b\"\nM = 0 - 3";
  std::mt19937 random(5);
  int plain = 0;
  for (int round = 0; round < 300; ++round) {
    std::string condition = operands[random() % operands.size()];
    for (int k = static_cast<int>(random() % 4); k > 0; --k) {
      condition += " " + signs[random() % signs.size()] + " " + operands[random() % operands.size()];
    }
    programs_.clear();
    ProgramInstance& p = program("INIZIA\n" + setup + "\nse " + condition + " allora\n}\n");
    const int se = position(p, "se");
    for (int k = 0; k + 1 < se; ++k) {
      if (p.token_text(k + 1) == "=") p.var_update_direct(p.token_text(k), k);
    }
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
    plain += p.program.condition_plans.at(se).plain ? 1 : 0;
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
    const int size = static_cast<int>(random() % 20);
    p.program.tok.clear();
    for (int k = 0; k < size; ++k) p.program.tok.push_back(RValue::text(pool[random() % pool.size()]));
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
