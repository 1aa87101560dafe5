// What all families share, through two families of the tests' own that the
// walk calls as it calls the language's: arguments by key with defaults,
// the order of the calls, the guards, and results stored back.
#include "families/family_contract.h"

#include "families/families.h"
#include "language/evaluation/numeric_expression.h"
#include "support/program_fixture.h"
#include "runtime/Code/Conversions.h"

namespace {

std::vector<std::string> g_calls;

std::string number_text(double x) { return value_to_text(RValue::number(x)); }

// disegna_prova (X: 150, TESTO: "ciao", COLORE: 12632256)
void disegna_prova(ProgramInstance& p, int i) {
  static constexpr ArgumentKey KEYS[] = {
      {"(X:", 1, "150"}, {"(TESTO:", 2, "\"ciao\""}, {"(COLORE:", 3, "", 12632256.0}};
  read_arguments(p, i, CallShape::Statement, KEYS);
  const auto& args = p.call.args;
  g_calls.push_back("A " + std::to_string(p.call.arg_count) + " " + number_text(argument_number(p, args[1])) + " " +
                    argument_text(args[2]) + " " + number_text(argument_number(p, args[3])));
}
double value_argument(ProgramInstance& p, int i) {
  static constexpr ArgumentKey KEYS[] = {{"(VALORE:", 1, "0"}};
  read_arguments(p, i, CallShape::Value, KEYS);
  return argument_number(p, p.call.args[1]);
}
// Half of VALORE, given back in the number form of `OUTPUT`.
template <void (*OUTPUT)(ProgramInstance&, double)>
void half_of(ProgramInstance& p, int i) {
  OUTPUT(p, value_argument(p, i) / 2);
  aggiorna_variabile_tramite_funzione(p, i);
}
void ottieni_testo(ProgramInstance& p, int i) {
  output_text(p, "\"ciao\"");
  aggiorna_variabile_tramite_funzione(p, i);
}

constexpr FamilyFunction FAMILY_A[] = {
    {"disegna_prova", CallShape::Statement, disegna_prova},
    {"crea_prova", CallShape::Statement, [](ProgramInstance&, int) { g_calls.push_back("guarded"); }},
    {"crea_libera", CallShape::Statement, [](ProgramInstance&, int) { g_calls.push_back("free"); }, &NO_GUARD},
    {"ottieni_la_metà_di", CallShape::Value, half_of<output_exact>},
    {"ottieni_corto_di", CallShape::Value, half_of<output_short>},
    {"ottieni_testo", CallShape::Value, ottieni_testo},
};
constexpr FamilyFunction FAMILY_B[] = {
    {"disegna_prova", CallShape::Statement, [](ProgramInstance&, int) { g_calls.push_back("B"); }}};
const Family family_a{"famiglia_a", FamilyGuard{"disegna", true, false}, OTTIENI_GUARD, FAMILY_A};
const Family family_b{"famiglia_b", NO_GUARD, NO_GUARD, FAMILY_B};
constexpr const Family* TEST_FAMILIES[] = {&family_a, &family_b};

class FamilyContract : public ProgramTest {
 protected:
  void SetUp() override {
    ProgramTest::SetUp();
    install_families(TEST_FAMILIES);
    g_calls.clear();
  }
  void TearDown() override {
    register_families();
    ProgramTest::TearDown();
  }
};

TEST_F(FamilyContract, ArgumentsAreFoundByKeyAndDefaultedAsSourceTextWhereNoGuardStops) {
  ProgramInstance& p = runnable(
      "INIZIA N = 2 X = 0 disegna_prova (X: N+3, TESTO: \"buon giorno\")\n"
      "disegna_prova\n"
      "disegna_prova (COLORE: 255, X: 1, ALTRO: 9, X: 7)\n"
      "crea_prova crea_libera se X = 1 { disegna_prova crea_libera } CICLO CONTINUO");
  run_inizia(p);
  const std::vector<std::string> expected = {
      "A 2 5 buon giorno 12632256", "B",  // every family, in order, at the same position
      "A 0 150 ciao 12632256",      "B",  // no argument: all defaults
      "A 4 7 ciao 255",             "B",  // the last of a key twice wins, an unknown key is passed over
      // "crea_prova" lacks the guard's word; "crea_libera" stands outside the guard; the dark block runs nothing.
      "free",
  };
  EXPECT_EQ(g_calls, expected);
  // Counts are kept per position; a call without arguments keeps 0 and is counted each time.
  const int first = position(p, "disegna_prova");
  EXPECT_EQ(p.program.mem_argn[static_cast<size_t>(first)], 2);
  EXPECT_EQ(p.program.mem_argn[static_cast<size_t>(position(p, "disegna_prova", first + 1))], 0);
  g_calls.clear();
  run_inizia(p);
  EXPECT_EQ(g_calls, expected);
}

TEST_F(FamilyContract, ValueFunctionsStoreTheirResultInOneOfTwoNumberFormsOrActOnTheWindow) {
  ProgramInstance& p = runnable(
      "INIZIA M = ottieni_la_metà_di (VALORE: 1)\nC = ottieni_corto_di (VALORE: 7)\n"
      "W = ottieni_corto_di (VALORE: 8)\nT = ottieni_testo\nN = ottieni_la_metà_di (VALORE: M*4)\n"
      "Q = ottieni_ciò_che_nessuno_sa\nR = 5\nR = ottieni_ciò_che_nessuno_sa\n"
      "larghezza_finestra = ottieni_la_metà_di (VALORE: 0)\naltezza_finestra = ottieni_la_metà_di (VALORE: 500)\n"
      "colore_sfondo = ottieni_corto_di (VALORE: 510)\nnome_finestra = ottieni_testo\nCICLO CONTINUO");
  p.remove_variable("N");
  run_inizia(p);
  // A function that no family has leaves the variable as it was.
  EXPECT_EQ(stored(p, {"M", "C", "W", "T", "Q", "R"}),
            (std::vector<std::string>{"0.500000000000000000000000000000", "3.50", "4", "\"ciao\"", "|not_set|", "5"}));
  // A name not in the table springs into being at the end of it.
  EXPECT_EQ(p.find_variable("N"), p.vari_size - 1);
  EXPECT_EQ(string_is_real(stored(p, "N")), 1);
  // The reserved names act on the window and leave the table as it was.
  EXPECT_EQ(p.larghezza_finestra, 1);  // a window can't be narrower than 1
  EXPECT_EQ(p.altezza_finestra, 250);
  EXPECT_EQ(p.colore_sfondo, 255);
  EXPECT_EQ(p.nome_finestra, "ciao");
  EXPECT_EQ(stored(p, "larghezza_finestra"), "1000");
  EXPECT_EQ(stored(p, "nome_finestra"), "\"Velant\"");
}

TEST_F(FamilyContract, ArgumentsRunningToTheEndOfTheArrayAreCountedEachTime) {
  ProgramInstance& p = bare_program();
  for (std::string_view t : {"INIZIA", "disegna_prova", "-->", "(X:", "4", ")"}) p.program.tok.push_back(RValue::text(t));
  p.program.totale_tok = static_cast<int>(p.program.tok.size());
  for (int pass = 0; pass < 2; ++pass) {
    conta_argomenti(p, 1);
    EXPECT_EQ(p.call.arg_count, 1);
    EXPECT_EQ(p.program.mem_argn[1], 0);
  }
}

TEST_F(FamilyContract, TextTemplatesFillInVariables) {
  ProgramInstance& p = runnable("INIZIA punti = 12 vite = 3 CICLO CONTINUO");
  run_inizia(p);
  EXPECT_EQ(fill_text_template(p, "\"hai < punti > punti e < vite > vite, < ignoto >, <punti>\""),
            "hai 12 punti e 3 vite, no var, <punti>");
}

}  // namespace
