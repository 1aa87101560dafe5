// funzioni_matematiche: each function's result, keys and defaults, and the
// number form it is stored in; the division checks and their message.
#include "support/program_fixture.h"
#include "runtime/Function/StringFunctions.h"

namespace {

// The 30-decimal text of a number, as the exact form stores it.
std::string exact(double x) { return std::string(rt::string_format(x, -1, 30).string_view()); }

class FunzioniMatematiche : public ProgramTest {
 protected:
  // A program whose block INIZIA holds `statements`, run once.
  ProgramInstance& run(const std::string& statements) {
    ProgramInstance& p = runnable("INIZIA\n" + statements + "\nCICLO CONTINUO");
    run_inizia(p);
    return p;
  }
};

TEST_F(FunzioniMatematiche, RoundingReadsItsValueOnlyAsTheFirstArgument) {
  ProgramInstance& p = run(
      "A = ottieni_l'arrotondamento_per_difetto_di (VALORE: 2.5)\n"
      "B = ottieni_l'arrotondamento_per_difetto_di (VALORE: 3.5)\n"
      "C = ottieni_l'arrotondamento_per_difetto_di (VALORE: 2.7)\n"
      "D = ottieni_l'arrotondamento_per_eccesso_di (VALORE: 2.1)\n"
      "E = ottieni_l'arrotondamento_per_eccesso_di (X: 1, VALORE: 2.1)\n"
      "F = ottieni_l'arrotondamento_per_difetto_di\n"
      "G = ottieni_il_valore_intero_di (VALORE: -2.5)\n"
      "H = ottieni_il_valore_intero_di (X: 1, VALORE: 7.9)\n"
      "I = ottieni_il_valore_decimale_di (VALORE: -2.75)\n"
      "J = ottieni_il_valore_assoluto_di (VALORE: 3-7)\n"
      "K = ottieni_il_segno_di (VALORE: -0.2)\n"
      "L = ottieni_il_segno_di");
  EXPECT_EQ(stored(p, "A"), "2");  // halves go to the even neighbour
  EXPECT_EQ(stored(p, "B"), "4");
  EXPECT_EQ(stored(p, "C"), "3");
  EXPECT_EQ(stored(p, "D"), "3");
  EXPECT_EQ(stored(p, "E"), "0");  // VALORE in second place goes unseen
  EXPECT_EQ(stored(p, "F"), "0");
  EXPECT_EQ(stored(p, "G"), "-3");
  EXPECT_EQ(stored(p, "H"), "7");  // the other functions find their key anywhere
  EXPECT_EQ(stored(p, "I"), "-0.75");
  EXPECT_EQ(stored(p, "J"), "4");
  EXPECT_EQ(stored(p, "K"), "-1");
  EXPECT_EQ(stored(p, "L"), "0");
}

TEST_F(FunzioniMatematiche, ListsUseTheFirstArgCountSlotsAndOnlyTheMaximumIsExact) {
  ProgramInstance& p = run(
      "MA = ottieni_il_massimo_tra (VALORE_1: 1, VALORE_2: 2)\n"
      "MI = ottieni_il_minimo_tra (VALORE_1: 1, VALORE_2: 2)\n"
      "MN = ottieni_il_minimo_tra (VALORE_2: 1.5, VALORE_1: 2.25)\n"
      "M2 = ottieni_il_massimo_tra (VALORE_2: 5)\n"
      "M3 = ottieni_il_massimo_tra (VALORE_1: -3, VALORE_2: -7)\n"
      "M8 = ottieni_il_massimo_tra (VALORE_1: 1, VALORE_2: 2, VALORE_3: 3, VALORE_4: 4, VALORE_5: 5, "
      "VALORE_6: 6, VALORE_7: 7, VALORE_8: 8, VALORE_9: 9)\n"
      "ME = ottieni_la_media_tra (VALORE_1: 1, VALORE_2: 2, VALORE_3: 4)\n"
      "M0 = ottieni_la_media_tra\n"
      "MD = ottieni_il_valore_più_vicino_alla_media_tra (VALORE_1: 10, VALORE_2: 1, VALORE_3: 3, VALORE_4: 2)\n"
      "MX = ottieni_il_massimo_tra (VALORE_1: 4, VALORE_3: 9)");
  EXPECT_EQ(stored(p, "MA"), "2.000000000000000000000000000000");
  EXPECT_EQ(stored(p, "MI"), "1");
  EXPECT_EQ(stored(p, "MN"), "1.50");
  // Only VALORE_2 given: one argument, so VALORE_1 at its default alone counts.
  EXPECT_EQ(stored(p, "M2"), exact(0));
  EXPECT_EQ(stored(p, "M3"), exact(-3));
  // A ninth key counts as an argument but there are eight slots.
  EXPECT_EQ(stored(p, "M8"), exact(8));
  EXPECT_EQ(stored(p, "ME"), "2.33");
  EXPECT_EQ(stored(p, "M0"), "0");
  EXPECT_EQ(stored(p, "MD"), "3");  // the upper of the two middles
  // Two arguments: VALORE_1 and VALORE_2 (its default 0); VALORE_3 isn't among them.
  EXPECT_EQ(stored(p, "MX"), exact(4));
}

TEST_F(FunzioniMatematiche, InterpolationBoundsPowersAndLogarithmsAreShort) {
  ProgramInstance& p = run(
      "N = 4\n"
      "LI = ottieni_l'interpolazione_lineare_tra (VALORE_1: 10, VALORE_2: 20, VALORE_3: 0.25)\n"
      "LA = ottieni_il_valore_limitato_del_variabile_tra (VALORE_1: 1, VALORE_2: 5, VARIABILE: 9)\n"
      "LB = ottieni_il_valore_limitato_del_variabile_tra (VARIABILE: -2, VALORE_2: 5, VALORE_1: 1)\n"
      "LC = ottieni_il_valore_limitato_del_variabile_tra (VALORE_1: 1, VALORE_2: 5, VARIABILE: N)\n"
      "EX = ottieni_la_funzione_esponenziale_di (VALORE: 1)\n"
      "LN = ottieni_il_logaritmo_naturale_di (VALORE: 1)\n"
      "L2 = ottieni_il_logaritmo_in_base_2_di (VALORE: 8)\n"
      "LX = ottieni_il_logaritmo_in_base_10_di (VALORE: 1000)\n"
      "LO = ottieni_il_logaritmo_in_base_n_di (VALORE: 2, BASE: 8)\n"
      "PO = ottieni_la_potenza_di (VALORE: 2, ESPONENTE: N*2+2)\n"
      "P0 = ottieni_la_potenza_di (VALORE: 5)\n"
      "QU = ottieni_il_quadrato_di (VALORE: 1.5)\n"
      "RQ = ottieni_la_radice_quadrata_di (VALORE: 16)\n"
      "RD = ottieni_la_radice_quadrata_di (VALORE: 2)\n"
      "RN = ottieni_la_radice_quadrata_di (VALORE: -1)");
  EXPECT_EQ(stored(p, "LI"), "12.50");
  EXPECT_EQ(stored(p, "LA"), "5");
  EXPECT_EQ(stored(p, "LB"), "1");
  EXPECT_EQ(stored(p, "LC"), "4");
  EXPECT_EQ(stored(p, "EX"), "2.72");
  EXPECT_EQ(stored(p, "LN"), "0");
  EXPECT_EQ(stored(p, "L2"), "3");
  EXPECT_EQ(stored(p, "LX"), "3");
  EXPECT_EQ(stored(p, "LO"), "3");  // the logarithm of BASE in base VALORE
  EXPECT_EQ(stored(p, "PO"), "1024");
  EXPECT_EQ(stored(p, "P0"), "1");  // ESPONENTE at its default 0
  EXPECT_EQ(stored(p, "QU"), "2.25");
  EXPECT_EQ(stored(p, "RQ"), "4");
  EXPECT_EQ(stored(p, "RD"), "1.41");
  // No root of a negative number: 0, exact, and no message.
  EXPECT_EQ(stored(p, "RN"), exact(0));
  EXPECT_TRUE(messages_.empty());
  EXPECT_TRUE(run_ends().empty());
}

TEST_F(FunzioniMatematiche, DivisionByZeroShowsTheArgumentsAsWrittenAndGivesAnExactZero) {
  ProgramInstance& p = run(
      "N = 7\n"
      "Q1 = ottieni_il_quoziente_del_divisione_tra (DIVIDENDO: 7, DIVISORE: 2)\n"
      "Q2 = ottieni_il_quoziente_del_divisione_tra (DIVIDENDO: -7, DIVISORE: 2)\n"
      "Q3 = ottieni_il_quoziente_del_divisione_tra (DIVIDENDO: 7.9, DIVISORE: 2.9)\n"
      "Q4 = ottieni_il_quoziente_del_divisione_tra (DIVIDENDO: N, DIVISORE: 0.5)\n"
      "R1 = ottieni_il_resto_del_divisione_tra (DIVIDENDO: 7, DIVISORE: 3)\n"
      "R2 = ottieni_il_resto_del_divisione_tra (DIVIDENDO: -7, DIVISORE: 3)\n"
      "R3 = ottieni_il_resto_del_divisione_tra (DIVIDENDO: 7.5, DIVISORE: 2)\n"
      "R4 = ottieni_il_resto_del_divisione_tra (DIVIDENDO: 1, DIVISORE: 0.5)\n"
      "R5 = ottieni_il_resto_del_divisione_tra (DIVIDENDO: N+1, DIVISORE: N-N)\n"
      "MP = ottieni_potenza_modulare_di (VALORE: 4, ESPONENTE: 13, DIVISORE: 497)\n"
      "M0 = ottieni_potenza_modulare_di (VALORE: 4, ESPONENTE: 13)\n"
      "Q0 = ottieni_il_quoziente_del_divisione_tra");
  EXPECT_EQ(stored(p, "Q1"), "3");
  EXPECT_EQ(stored(p, "Q2"), "-3");
  EXPECT_EQ(stored(p, "Q3"), "3");  // the integer parts divide: 7 by 2
  EXPECT_EQ(stored(p, "Q4"), exact(0));
  EXPECT_EQ(stored(p, "R1"), "1");
  EXPECT_EQ(stored(p, "R2"), "-1");  // the sign of the dividend
  EXPECT_EQ(stored(p, "R3"), "1.50");
  EXPECT_EQ(stored(p, "R4"), "0");  // a fraction is a divisor like any other here
  EXPECT_EQ(stored(p, "R5"), exact(0));
  EXPECT_EQ(stored(p, "MP"), "445");
  EXPECT_EQ(stored(p, "M0"), exact(0));
  EXPECT_EQ(stored(p, "Q0"), exact(0));
  const std::vector<std::string> expected = {
      "Errore: impossibile dividere per zero! (N/0.5)",
      "Errore: impossibile dividere per zero! (N+1/N-N)",
      "Errore: impossibile dividere per zero! (4/0)",
      "Errore: impossibile dividere per zero! (0/0)",
  };
  EXPECT_EQ(messages_, expected);
  // The run goes on after the message.
  EXPECT_TRUE(run_ends().empty());
}

TEST_F(FunzioniMatematiche, ExpressionsWrittenInATextAreWorkedOutWithoutStoppingTheRun) {
  ProgramInstance& p = run(
      "N = 4\n"
      "domanda = \"2*5\"\n"
      "E1 = ottieni_risultato_espressione_da_testo (TESTO: \"3+4*2\")\n"
      "E2 = ottieni_risultato_espressione_da_testo (TESTO: domanda)\n"
      "E3 = ottieni_risultato_espressione_da_testo (TESTO: \"<N>/8\")\n"
      "E4 = ottieni_risultato_espressione_da_testo (TESTO: \"3+\")\n"
      "E5 = ottieni_risultato_espressione_da_testo");
  EXPECT_EQ(stored(p, "E1"), "11");
  // A variable's name stands for its text; the result is the evaluator's
  // own text, where a product or a quotient alone keeps ten decimals.
  EXPECT_EQ(stored(p, "E2"), "10.0000000000");
  EXPECT_EQ(stored(p, "E3"), "0.5000000000");
  EXPECT_EQ(stored(p, "E4"), "\"Impossibile risolvere l'espressione\"");
  EXPECT_EQ(stored(p, "E5"), "0");
  EXPECT_TRUE(run_ends().empty());
  EXPECT_TRUE(messages_.empty());
}

}  // namespace
