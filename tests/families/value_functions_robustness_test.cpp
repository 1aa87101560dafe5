// Every value function of the text and number families, fed what a learner
// may write: words, empty and odd texts, quotes, placeholders, huge
// numbers. Nothing may throw or hang, and where a function takes numbers a
// text counts as 0.
#include "families/families.h"
#include "families/funzioni_di_casualita.h"
#include "support/program_fixture.h"

namespace {

// Every key of the five families. VALORE goes first, where the rounding
// functions look for it; a function passes over the keys it doesn't know.
const std::vector<std::string> KEYS = {
    "VALORE",    "VALORE_1",     "VALORE_2",       "VALORE_3", "VALORE_4", "VALORE_5", "VALORE_6",
    "VALORE_7",  "VALORE_8",     "VARIABILE",      "BASE",     "ESPONENTE", "DIVIDENDO", "DIVISORE",
    "TESTO",     "PAROLA",       "NUOVA_PAROLA",   "TESTO_INSERITO", "POSIZIONE", "LUNGHEZZA", "ANGOLO",
    "X_1",       "Y_1",          "X_2",            "Y_2"};

// Arguments that are no numbers.
const std::vector<std::string> NOT_NUMBERS = {
    "ciao", "parola_sconosciuta", "\"\"", "\"testo con spazi\"", "\"< nessuno >\"", "\"a > b < c\"", "\"<<>>\"",
};
// Arguments that must merely not break anything.
const std::vector<std::string> ODD_VALUES = {
    "1e308", "-1e308", "99999999999999999999999", "0.0000000001", "-0", "\"< N >\"", "\"<\"", "\">\"",
    "\"il \\\"gatto\\\"\"", "\"%d %s\"", "\"àèìòù\"", "N", "N*N",
};

class ValueFunctionsRobustness : public ProgramTest {
 protected:
  // The value that `function` stores in X with every key given `value`,
  // and UNITA too when `with_unit`, from a fresh program with the generator
  // at its start. N is a text whose placeholders name N itself, twice.
  std::string result(std::string_view function, const std::string& value, bool with_unit) {
    std::string arguments;
    for (const std::string& key : KEYS) arguments += (arguments.empty() ? "" : ", ") + key + ": " + value;
    if (with_unit) arguments += ", UNITA: " + value;
    const std::string call = "X = " + std::string(function) + " (" + arguments + ")";
    forget_programs();
    ripristina_casualita_di_avvio();
    ProgramInstance& p = runnable("INIZIA\nN = \"<N> e <N>\"\n" + call + "\nCICLO CONTINUO");
    EXPECT_NO_THROW(run_inizia(p)) << call;
    // A run that an expression stopped ends here; the next case runs anew.
    run_ends().clear();
    return stored(p, "X");
  }
};

TEST_F(ValueFunctionsRobustness, AnyArgumentGivesAValueAndATextCountsAsZeroForNumbers) {
  const Family* families[] = {&funzioni_sulle_stringhe, &funzioni_matematiche, &funzioni_trigonometriche_e_vettoriali,
                              &funzioni_di_casualita, &funzioni_logiche};
  int functions = 0;
  for (const Family* family : families) {
    const bool of_numbers = family != &funzioni_sulle_stringhe;
    for (const FamilyFunction& function : family->functions) {
      if (function.shape != CallShape::Value) continue;
      ++functions;
      for (const std::string& value : NOT_NUMBERS) result(function.name, value, true);
      for (const std::string& value : ODD_VALUES) result(function.name, value, true);

      // The expression in a text and the choice among written texts take
      // their arguments as texts; every other number function reads a text as 0.
      if (!of_numbers || function.name == "ottieni_risultato_espressione_da_testo") continue;
      const std::string zero = result(function.name, "0", false);
      for (const std::string& value : NOT_NUMBERS) {
        if (function.name == "ottieni_uno_a_caso_di_questi_valori" && value.starts_with('"')) continue;
        EXPECT_EQ(result(function.name, value, false), zero) << function.name << " with " << value;
      }
    }
  }
  EXPECT_EQ(functions, 11 + 24 + 14 + 3 + 1);
}

}  // namespace
