// funzioni_trigonometriche_e_vettoriali: both units and the words that are
// no unit, the inverse functions outside their domain, vectors and points,
// and the number form of each function.
#include <cmath>
#include <numbers>

#include "language/evaluation/numeric_expression.h"
#include "support/program_fixture.h"

namespace {

// A value in the exact form: 30 decimals, and the number `expected`.
testing::AssertionResult is_exact(const std::string& text, double expected) {
  const size_t point = text.find('.');
  if (point == std::string::npos || text.size() - point - 1 != 30) {
    return testing::AssertionFailure() << text << " has not 30 decimals";
  }
  if (std::fabs(string_is_real(text) - expected) > 1e-9) {
    return testing::AssertionFailure() << text << " is not " << expected;
  }
  return testing::AssertionSuccess();
}

class FunzioniTrigonometriche : public ProgramTest {
 protected:
  // A program whose block INIZIA holds `statements`, run once.
  ProgramInstance& run(const std::string& statements) {
    ProgramInstance& p = runnable("INIZIA\n" + statements + "\nCICLO CONTINUO");
    run_inizia(p);
    return p;
  }
};

TEST_F(FunzioniTrigonometriche, SinesAndCosinesWorkInRadiansOrInDegrees) {
  ProgramInstance& p = run(
      "S0 = ottieni_il_seno_di\n"
      "S1 = ottieni_il_seno_di (VALORE: 30, UNITA: gradi)\n"
      "S2 = ottieni_il_seno_di (VALORE: Pi_greco/2, UNITA: radianti)\n"
      "S3 = ottieni_il_seno_di (UNITA: gradi, VALORE: 90)\n"
      "C1 = ottieni_il_coseno_di (VALORE: 60, UNITA: gradi)\n"
      "C2 = ottieni_il_coseno_di (VALORE: 0)\n"
      "T1 = ottieni_la_tangente_di (VALORE: 45, UNITA: gradi)\n"
      "T2 = ottieni_la_tangente_di (VALORE: 0)\n"
      "T3 = ottieni_la_tangente_di (VALORE: 1)");
  EXPECT_TRUE(is_exact(stored(p, "S0"), 0));
  EXPECT_TRUE(is_exact(stored(p, "S1"), 0.5));
  EXPECT_TRUE(is_exact(stored(p, "S2"), 1));
  EXPECT_TRUE(is_exact(stored(p, "S3"), 1));
  EXPECT_TRUE(is_exact(stored(p, "C1"), 0.5));
  EXPECT_EQ(stored(p, "C2"), "1.000000000000000000000000000000");
  // The tangent is short: two decimals, none for a whole number.
  EXPECT_EQ(stored(p, "T1"), "1.00");
  EXPECT_EQ(stored(p, "T2"), "0");
  EXPECT_EQ(stored(p, "T3"), "1.56");
}

TEST_F(FunzioniTrigonometriche, AWordThatIsNoBareUnitComputesNothing) {
  ProgramInstance& p = run(
      "Q = ottieni_il_coseno_di (VALORE: 0)\n"
      "A = ottieni_il_seno_di (VALORE: 30, UNITA: \"gradi\")\n"
      "B = ottieni_la_tangente_di (VALORE: 30, UNITA: Gradi)\n"
      "C = 7\n"
      "C = ottieni_l'arcotangente_2_di (VALORE_1: 1, UNITA: centigradi)\n"
      "D = ottieni_l'arcoseno_di (VALORE: 1, UNITA: gradi)");
  // Each takes what the last value function left: the cosine of 0.
  EXPECT_EQ(stored(p, "A"), "1.000000000000000000000000000000");
  EXPECT_EQ(stored(p, "B"), "1.000000000000000000000000000000");
  EXPECT_EQ(stored(p, "C"), "1.000000000000000000000000000000");
  EXPECT_EQ(stored(p, "D"), "90");

  // Before any value function has given something there is nothing to
  // take, and the variable keeps its value.
  programs_.clear();
  set_main_program(nullptr);
  ProgramInstance& first = run("Z = 5\nZ = ottieni_il_seno_di (VALORE: 30, UNITA: gradi_sessagesimali)");
  EXPECT_EQ(stored(first, "Z"), "5");
}

TEST_F(FunzioniTrigonometriche, InverseFunctionsGiveZeroOutsideTheirDomain) {
  ProgramInstance& p = run(
      "AS = ottieni_l'arcoseno_di (VALORE: 1, UNITA: gradi)\n"
      "AR = ottieni_l'arcoseno_di (VALORE: 0.5)\n"
      "AE = ottieni_l'arcoseno_di (VALORE: 1.000001, UNITA: gradi)\n"
      "AF = ottieni_l'arcoseno_di (VALORE: 2, UNITA: gradi)\n"
      "AC = ottieni_l'arcocoseno_di (VALORE: 0, UNITA: gradi)\n"
      "AD = ottieni_l'arcocoseno_di (VALORE: -3)\n"
      "AT = ottieni_l'arcotangente_di (VALORE: 1, UNITA: gradi)\n"
      "A1 = ottieni_l'arcotangente_2_di (VALORE_1: 1, VALORE_2: 0, UNITA: gradi)\n"
      "A2 = ottieni_l'arcotangente_2_di (VALORE_1: 0, VALORE_2: -1)");
  EXPECT_EQ(stored(p, "AS"), "90");  // short
  EXPECT_EQ(stored(p, "AR"), "0.52");
  // A value a hair beyond 1 is 1, as the runtime's rounding allows.
  EXPECT_EQ(stored(p, "AE"), "90");
  EXPECT_EQ(stored(p, "AF"), "0");
  EXPECT_TRUE(is_exact(stored(p, "AC"), 90));
  EXPECT_TRUE(is_exact(stored(p, "AD"), 0));
  EXPECT_TRUE(is_exact(stored(p, "AT"), 45));
  // VALORE_1 is the y of the point and VALORE_2 its x.
  EXPECT_TRUE(is_exact(stored(p, "A1"), 90));
  EXPECT_TRUE(is_exact(stored(p, "A2"), std::numbers::pi));
  EXPECT_TRUE(messages_.empty());
  EXPECT_TRUE(run_ends().empty());
}

TEST_F(FunzioniTrigonometriche, ConversionsAreExactAndVectorsAndPointsShort) {
  ProgramInstance& p = run(
      "G = ottieni_il_valore_convertito_da_radianti_a_gradi_di (VALORE: 1)\n"
      "R = ottieni_il_valore_convertito_da_gradi_a_radianti_di (VALORE: 180)\n"
      "X0 = ottieni_la_componente_x_del_vettore_dato_angolo_e_lunghezza (LUNGHEZZA: 10, ANGOLO: 0)\n"
      "X1 = ottieni_la_componente_x_del_vettore_dato_angolo_e_lunghezza (LUNGHEZZA: 10, ANGOLO: 60)\n"
      "Y1 = ottieni_la_componente_y_del_vettore_dato_angolo_e_lunghezza (LUNGHEZZA: 10, ANGOLO: 90)\n"
      "Y0 = ottieni_la_componente_y_del_vettore_dato_angolo_e_lunghezza (ANGOLO: 90)\n"
      "DI = ottieni_distanza_tra_due_punti (X_1: 1, Y_1: 1, X_2: 4, Y_2: 5)\n"
      "SU = ottieni_direzione_tra_due_punti (X_2: 0, Y_2: -10)\n"
      "SX = ottieni_direzione_tra_due_punti (X_1: 5, Y_1: 5, X_2: -5, Y_2: 5)\n"
      "GI = ottieni_direzione_tra_due_punti (X_1: 0, Y_1: 0, X_2: 0, Y_2: 10)\n"
      "DE = ottieni_direzione_tra_due_punti (X_1: 0, Y_1: 0, X_2: 10, Y_2: -10)\n"
      "FE = ottieni_direzione_tra_due_punti\n"
      "AN = ottieni_differenza_angolare_tra (VALORE_1: 10, VALORE_2: 350)\n"
      "AM = ottieni_differenza_angolare_tra (VALORE_1: 350, VALORE_2: 10)");
  EXPECT_TRUE(is_exact(stored(p, "G"), 180 / std::numbers::pi));
  EXPECT_TRUE(is_exact(stored(p, "R"), std::numbers::pi));
  EXPECT_EQ(stored(p, "X0"), "10");
  EXPECT_EQ(stored(p, "X1"), "5.00");
  EXPECT_EQ(stored(p, "Y1"), "-10");  // up the screen, where y grows downwards
  EXPECT_EQ(stored(p, "Y0"), "0");
  EXPECT_EQ(stored(p, "DI"), "5");
  // Counter-clockwise on the screen: up is 90, left 180, down 270.
  EXPECT_EQ(stored(p, "SU"), "90");
  EXPECT_EQ(stored(p, "SX"), "180");
  EXPECT_EQ(stored(p, "GI"), "270");
  EXPECT_EQ(stored(p, "DE"), "45");
  EXPECT_EQ(stored(p, "FE"), "0");
  EXPECT_EQ(stored(p, "AN"), "20");
  EXPECT_EQ(stored(p, "AM"), "-20");
}

}  // namespace
