// funzioni_di_casualita: draws within their bounds and in their form, the
// choice among values by the road the first value decides, and the same
// draws at every run until a program asks for a different chance.
#include "families/funzioni_di_casualita.h"

#include <set>

#include "language/evaluation/numeric_expression.h"
#include "support/program_fixture.h"
#include "runtime/Function/Random.h"

namespace {

class FunzioniDiCasualita : public ProgramTest {
 protected:
  // A program whose block INIZIA holds `statements`.
  ProgramInstance& ready(const std::string& statements) {
    return runnable("INIZIA\n" + statements + "\nCICLO CONTINUO");
  }

  // The values that `name` takes over `runs` runs of INIZIA.
  static std::vector<std::string> drawn(ProgramInstance& p, std::string_view name, int runs) {
    std::vector<std::string> values;
    for (int run = 0; run < runs; ++run) {
      run_inizia(p);
      values.push_back(stored(p, name));
    }
    return values;
  }
};

TEST_F(FunzioniDiCasualita, WholeNumbersFallBetweenTheWholeBoundsBothIncluded) {
  ProgramInstance& p = ready(
      "D = ottieni_un_valore_intero_compreso_tra_questi (VALORE_1: 1, VALORE_2: 6)\n"
      "R = ottieni_un_valore_intero_compreso_tra_questi (VALORE_1: 3.9, VALORE_2: 1.9)\n"
      "Z = ottieni_un_valore_intero_compreso_tra_questi");
  std::set<std::string> dice, reversed;
  for (int run = 0; run < 600; ++run) {
    run_inizia(p);
    dice.insert(stored(p, "D"));
    reversed.insert(stored(p, "R"));
    EXPECT_EQ(stored(p, "Z"), "0");
  }
  EXPECT_EQ(dice, (std::set<std::string>{"1", "2", "3", "4", "5", "6"}));
  // Both bounds are taken whole, in either order.
  EXPECT_EQ(reversed, (std::set<std::string>{"1", "2", "3"}));
}

TEST_F(FunzioniDiCasualita, RealNumbersFallFromTheFirstBoundUpToTheSecondInTheShortForm) {
  ProgramInstance& p = ready("X = ottieni_un_valore_compreso_tra_questi (VALORE_1: 2, VALORE_2: 3)");
  bool fraction_seen = false;
  for (const std::string& x : drawn(p, "X", 200)) {
    EXPECT_GE(string_is_real(x), 2);
    EXPECT_LE(string_is_real(x), 3);
    const size_t point = x.find('.');
    // Two decimals, or none at all for a whole number.
    if (point != std::string::npos) {
      EXPECT_EQ(x.size() - point, 3u) << x;
      fraction_seen = true;
    }
  }
  EXPECT_TRUE(fraction_seen);
}

TEST_F(FunzioniDiCasualita, TheFirstValueDecidesWhetherNumbersOrWrittenTextsAreChosen) {
  ProgramInstance& p = ready(
      "N = ottieni_uno_a_caso_di_questi_valori (VALORE_1: 5, VALORE_2: 3+4, VALORE_3: 9)\n"
      "T = ottieni_uno_a_caso_di_questi_valori (VALORE_1: \"testa\", VALORE_2: \"croce\", VALORE_3: 2+3)\n"
      "M = ottieni_uno_a_caso_di_questi_valori (VALORE_1: 1, VALORE_2: \"croce\")\n"
      "S = ottieni_uno_a_caso_di_questi_valori (VALORE_2: 7)\n"
      "Q = ottieni_la_negazione_di (VALORE: 0)\n"
      "V = ottieni_uno_a_caso_di_questi_valori");
  std::set<std::string> numbers, texts, mixed;
  for (int run = 0; run < 300; ++run) {
    run_inizia(p);
    numbers.insert(stored(p, "N"));
    texts.insert(stored(p, "T"));
    mixed.insert(stored(p, "M"));
    // One argument: VALORE_1 at its default is the only one.
    EXPECT_EQ(stored(p, "S"), "0");
    // No argument: the variable takes what the last value function left.
    EXPECT_EQ(stored(p, "V"), "1");
  }
  EXPECT_EQ(numbers, (std::set<std::string>{"5", "7", "9"}));
  EXPECT_EQ(texts, (std::set<std::string>{"\"testa\"", "\"croce\"", "2+3"}));
  // A number first: a text among the others counts as 0.
  EXPECT_EQ(mixed, (std::set<std::string>{"1", "0"}));
}

TEST_F(FunzioniDiCasualita, EveryRunDrawsTheSameUntilTheProgramAsksForADifferentChance) {
  const std::string draws =
      "A = ottieni_un_valore_intero_compreso_tra_questi (VALORE_1: 1, VALORE_2: 1000000)\n"
      "B = ottieni_un_valore_compreso_tra_questi (VALORE_1: 0, VALORE_2: 1000)\n"
      "C = ottieni_uno_a_caso_di_questi_valori (VALORE_1: 1, VALORE_2: 2, VALORE_3: 3, VALORE_4: 4)";
  const auto one_run = [&](const std::string& text) {
    ripristina_casualita_di_avvio();
    programs_.clear();
    set_main_program(nullptr);
    ProgramInstance& p = ready(text);
    run_inizia(p);
    return std::vector<std::string>{stored(p, "A"), stored(p, "B"), stored(p, "C")};
  };

  const std::vector<std::string> first = one_run(draws);
  rt::random(1);  // draws between the runs don't matter: each run starts anew
  EXPECT_EQ(one_run(draws), first);

  const std::string different = "attiva_casualità_diversa_per_ogni_avvio\n" + draws;
  const std::vector<std::string> second = one_run(different);
  EXPECT_NE(second, first);
  EXPECT_NE(one_run(different), second);
}

}  // namespace
