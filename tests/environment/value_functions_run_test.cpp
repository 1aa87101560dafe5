// The value functions of texts and numbers through `velant run --vars`: a
// function of each family called with its keys or on its defaults, its
// value as the run leaves it. Each function's cases are checked in process
// in tests/families.
#include "run_fixture.h"

namespace {

using ValueFunctionsRun = RunFixture;

TEST_F(ValueFunctionsRun, EachFamilyGivesItsValuesToTheRunInTheirForm) {
  const std::string program =
      "INIZIA\n"
      "M = ottieni_il_massimo_tra (VALORE_1: 3, VALORE_2: 9.5, VALORE_3: 4)\n"
      "R = ottieni_la_radice_quadrata_di (VALORE: 2)\n"
      "D = ottieni_il_valore_assoluto_di\n"
      "S = ottieni_il_seno_di (VALORE: 90, UNITA: gradi)\n"
      "V = ottieni_distanza_tra_due_punti (X_1: 0, Y_1: 0, X_2: 3, Y_2: 4)\n"
      "L = ottieni_lunghezza_testo (TESTO: \"città\")\n"
      "U = ottieni_testo_maiuscolo (TESTO: \"ciao\")\n"
      "B = ottieni_la_negazione_di (VALORE: 0)\n"
      "A = ottieni_un_valore_intero_compreso_tra_questi (VALORE_1: 1, VALORE_2: 1000)\n"
      "CICLO CONTINUO\n";
  const RunResult first = run(program, "--frames 2 --vars");
  ASSERT_EQ(first.status, 0) << first.out;
  // The exact form has 30 decimals, the short one two or none; texts keep their quotes.
  for (const auto& [name, value] : std::initializer_list<std::pair<const char*, const char*>>{
           {"M", "9.500000000000000000000000000000"}, {"R", "1.41"}, {"D", "0"},
           {"S", "1.000000000000000000000000000000"}, {"V", "5"}, {"L", "5.000000000000000000000000000000"},
           {"U", "\"CIAO\""}, {"B", "1"}}) {
    EXPECT_EQ(first.value(name), value) << name;
  }
  // Chance starts from the same seed at every run.
  const int a = std::stoi(first.value("A"));
  EXPECT_GE(a, 1);
  EXPECT_LE(a, 1000);
  EXPECT_EQ(run(program, "--frames 2 --vars").value("A"), first.value("A"));
}

}  // namespace
