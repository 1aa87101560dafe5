// funzioni_di_casualita: draws within their bounds and in their form, the
// choice among values by the road the first value decides, and the same
// draws at every run until a program asks for a different chance.
#include "families/funzioni_di_casualita.h"

#include <map>
#include <set>

#include "language/evaluation/numeric_expression.h"
#include "runtime/Function/Random.h"
#include "support/program_fixture.h"

namespace {

class FunzioniDiCasualita : public ProgramTest {
 protected:
  // The values that each variable of `names` takes over `runs` runs of a block INIZIA of `statements`.
  std::map<std::string, std::set<std::string>> drawn(const std::string& statements,
                                                     std::initializer_list<const char*> names, int runs) {
    ProgramInstance& p = runnable("INIZIA\n" + statements + "\nCICLO CONTINUO");
    std::map<std::string, std::set<std::string>> values;
    for (int run = 0; run < runs; ++run) {
      run_inizia(p);
      for (const char* name : names) values[name].insert(stored(p, name));
    }
    return values;
  }
  using Values = std::set<std::string>;
};

TEST_F(FunzioniDiCasualita, WholeNumbersFallBetweenTheWholeBoundsBothIncluded) {
  auto values = drawn(
      "D = ottieni_un_valore_intero_compreso_tra_questi (VALORE_1: 1, VALORE_2: 6)\n"
      "R = ottieni_un_valore_intero_compreso_tra_questi (VALORE_1: 3.9, VALORE_2: 1.9)\n"
      "Z = ottieni_un_valore_intero_compreso_tra_questi",
      {"D", "R", "Z"}, 600);
  EXPECT_EQ(values["D"], (Values{"1", "2", "3", "4", "5", "6"}));
  // Both bounds are taken whole, in either order.
  EXPECT_EQ(values["R"], (Values{"1", "2", "3"}));
  EXPECT_EQ(values["Z"], Values{"0"});
}

TEST_F(FunzioniDiCasualita, RealNumbersFallFromTheFirstBoundUpToTheSecondInTheShortForm) {
  auto values = drawn("X = ottieni_un_valore_compreso_tra_questi (VALORE_1: 2, VALORE_2: 3)", {"X"}, 200);
  bool fraction_seen = false;
  for (const std::string& x : values["X"]) {
    EXPECT_GE(string_is_real(x), 2);
    EXPECT_LE(string_is_real(x), 3);
    // Two decimals, or none at all for a whole number.
    const size_t point = x.find('.');
    if (point == std::string::npos) continue;
    EXPECT_EQ(x.size() - point, 3u) << x;
    fraction_seen = true;
  }
  EXPECT_TRUE(fraction_seen);
}

TEST_F(FunzioniDiCasualita, TheFirstValueDecidesWhetherNumbersOrWrittenTextsAreChosen) {
  auto values = drawn(
      "N = ottieni_uno_a_caso_di_questi_valori (VALORE_1: 5, VALORE_2: 3+4, VALORE_3: 9)\n"
      "T = ottieni_uno_a_caso_di_questi_valori (VALORE_1: \"testa\", VALORE_2: \"croce\", VALORE_3: 2+3)\n"
      "M = ottieni_uno_a_caso_di_questi_valori (VALORE_1: 1, VALORE_2: \"croce\")\n"
      "S = ottieni_uno_a_caso_di_questi_valori (VALORE_2: 7)\n"
      "Q = ottieni_la_negazione_di (VALORE: 0)\n"
      "V = ottieni_uno_a_caso_di_questi_valori",
      {"N", "T", "M", "S", "V"}, 300);
  EXPECT_EQ(values["N"], (Values{"5", "7", "9"}));
  EXPECT_EQ(values["T"], (Values{"\"testa\"", "\"croce\"", "2+3"}));
  // A number first: a text among the others counts as 0.
  EXPECT_EQ(values["M"], (Values{"1", "0"}));
  // One argument: VALORE_1 at its default is the only one.
  EXPECT_EQ(values["S"], Values{"0"});
  // No argument: the variable takes what the last value function left.
  EXPECT_EQ(values["V"], Values{"1"});
}

TEST_F(FunzioniDiCasualita, EveryRunDrawsTheSameUntilTheProgramAsksForADifferentChance) {
  const std::string draws =
      "A = ottieni_un_valore_intero_compreso_tra_questi (VALORE_1: 1, VALORE_2: 1000000)\n"
      "B = ottieni_un_valore_compreso_tra_questi (VALORE_1: 0, VALORE_2: 1000)\n"
      "C = ottieni_uno_a_caso_di_questi_valori (VALORE_1: 1, VALORE_2: 2, VALORE_3: 3, VALORE_4: 4)";
  // The draws of a run of a new program of `text`, with chance as each run starts it.
  const auto one_run = [&](const std::string& text) {
    ripristina_casualita_di_avvio();
    forget_programs();
    return drawn(text, {"A", "B", "C"}, 1);
  };
  const auto first = one_run(draws);
  rt::random(1);  // draws between the runs don't matter: each run starts anew
  EXPECT_EQ(one_run(draws), first);
  const std::string different = "attiva_casualità_diversa_per_ogni_avvio\n" + draws;
  const auto second = one_run(different);
  EXPECT_NE(second, first);
  EXPECT_NE(one_run(different), second);
}

}  // namespace
