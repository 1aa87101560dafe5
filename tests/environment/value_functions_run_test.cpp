// The value functions of texts and numbers through `velant run --vars`:
// defaults, keys and the two number forms, as a learner's program gets them.
#include "run_fixture.h"

namespace {

using ValueFunctionsRun = RunFixture;

TEST_F(ValueFunctionsRun, NumbersComeBackExactOrShortAsEachFunctionGivesThem) {
  const RunResult r = run(
      "INIZIA\n"
      "M = ottieni_il_massimo_tra (VALORE_1: 3, VALORE_2: 9.5, VALORE_3: 4)\n"
      "N = ottieni_il_minimo_tra (VALORE_1: 3, VALORE_2: 9.5)\n"
      "Q = ottieni_il_quadrato_di (VALORE: 1.5)\n"
      "R = ottieni_la_radice_quadrata_di (VALORE: 2)\n"
      "D = ottieni_il_valore_assoluto_di\n"
      "S = ottieni_il_seno_di (VALORE: 90, UNITA: gradi)\n"
      "CICLO CONTINUO\n",
      "--frames 2 --vars");
  ASSERT_EQ(r.status, 0) << r.out;
  EXPECT_EQ(printed_value(r.out, "M"), "9.500000000000000000000000000000");
  EXPECT_EQ(printed_value(r.out, "N"), "3");
  EXPECT_EQ(printed_value(r.out, "Q"), "2.25");
  EXPECT_EQ(printed_value(r.out, "R"), "1.41");
  EXPECT_EQ(printed_value(r.out, "D"), "0") << "no argument: the default";
  EXPECT_EQ(printed_value(r.out, "S"), "1.000000000000000000000000000000");
}

TEST_F(ValueFunctionsRun, TextsKeepTheirQuotesAndCountCharacters) {
  const RunResult r = run(
      "INIZIA\n"
      "L = ottieni_lunghezza_testo (TESTO: \"città\")\n"
      "U = ottieni_testo_maiuscolo (TESTO: \"ciao\")\n"
      "B = ottieni_la_negazione_di (VALORE: 0)\n"
      "CICLO CONTINUO\n",
      "--frames 2 --vars");
  ASSERT_EQ(r.status, 0) << r.out;
  EXPECT_EQ(printed_value(r.out, "L"), "5.000000000000000000000000000000");
  EXPECT_EQ(printed_value(r.out, "U"), "\"CIAO\"");
  EXPECT_EQ(printed_value(r.out, "B"), "1");
}

TEST_F(ValueFunctionsRun, ChanceDrawsTheSameNumbersAtEveryRun) {
  const std::string program =
      "INIZIA\n"
      "A = ottieni_un_valore_intero_compreso_tra_questi (VALORE_1: 1, VALORE_2: 1000)\n"
      "B = ottieni_un_valore_intero_compreso_tra_questi (VALORE_1: 1, VALORE_2: 1000)\n"
      "CICLO CONTINUO\n";
  const RunResult first = run(program, "--frames 2 --vars");
  const RunResult second = run(program, "--frames 2 --vars");
  ASSERT_NE(printed_value(first.out, "A"), "absent");
  EXPECT_EQ(printed_value(first.out, "A"), printed_value(second.out, "A"));
  EXPECT_EQ(printed_value(first.out, "B"), printed_value(second.out, "B"));
  const int a = std::stoi(printed_value(first.out, "A"));
  EXPECT_GE(a, 1);
  EXPECT_LE(a, 1000);
}

TEST_F(ValueFunctionsRun, TheExamplesRunToTheEnd) {
  for (const char* name : {"dadi.txt", "tabelline.txt", "testo_rovesciato.txt"}) {
    std::ifstream file(std::filesystem::path(VELANT_SOURCE_DIR) / "examples" / name, std::ios::binary);
    const std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    const RunResult r = run(text, "--frames 5 --vars");
    EXPECT_EQ(r.status, 0) << name << "\n" << r.out;
  }
}

}  // namespace
