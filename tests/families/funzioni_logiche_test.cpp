// funzioni_logiche: the negation by the runtime's rule of truth, in the short form.
#include "support/program_fixture.h"

namespace {

class FunzioniLogiche : public ProgramTest {};

TEST_F(FunzioniLogiche, NegationCountsOnlyNumbersAboveOneHalfAsTrue) {
  ProgramInstance& p = runnable(
      "INIZIA\n"
      "acceso = 1\n"
      "N0 = ottieni_la_negazione_di (VALORE: 0)\n"
      "N1 = ottieni_la_negazione_di (VALORE: 1)\n"
      "N4 = ottieni_la_negazione_di (VALORE: 0.4)\n"
      "N5 = ottieni_la_negazione_di (VALORE: 0.5)\n"
      "N6 = ottieni_la_negazione_di (VALORE: 0.6)\n"
      "NM = ottieni_la_negazione_di (VALORE: -3)\n"
      "NV = ottieni_la_negazione_di (VALORE: acceso)\n"
      "NE = ottieni_la_negazione_di (VALORE: acceso*3-3)\n"
      "NT = ottieni_la_negazione_di (VALORE: \"vero\")\n"
      "ND = ottieni_la_negazione_di\n"
      "CICLO CONTINUO");
  run_inizia(p);
  EXPECT_EQ(stored(p, "N0"), "1");
  EXPECT_EQ(stored(p, "N1"), "0");
  EXPECT_EQ(stored(p, "N4"), "1");
  EXPECT_EQ(stored(p, "N5"), "1");  // one half itself is false
  EXPECT_EQ(stored(p, "N6"), "0");
  EXPECT_EQ(stored(p, "NM"), "1");
  EXPECT_EQ(stored(p, "NV"), "0");
  EXPECT_EQ(stored(p, "NE"), "1");
  EXPECT_EQ(stored(p, "NT"), "1");  // a text is no number: 0, false
  EXPECT_EQ(stored(p, "ND"), "1");
}

}  // namespace
