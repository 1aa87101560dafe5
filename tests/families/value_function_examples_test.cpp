// The value functions of the text and number families by example: for
// each family a table of calls and what the variable holds after each (the
// result, the keys and defaults, the number form), and the example
// programs that leave the variables their comments promise.
#include <algorithm>
#include <cctype>
#include <set>

#include "language/evaluation/numeric_expression.h"
#include "support/program_fixture.h"

namespace {

// A call's arguments, and what the variable it sets holds after it: the
// text `expected`; or, with `within`, a number in the exact form within
// that of the number `expected`.
struct Case {
  std::string arguments, expected;
  double within = -1;
};
constexpr double CLOSE = 1e-9;
struct Calls {
  std::string function;
  std::vector<Case> cases;
};

class ValueFunctionExamples : public ProgramTest {
 protected:
  // A new program whose block INIZIA holds `prelude` and then every call of
  // the table in its order, V1 = ..., V2 = ..., run once; each variable checked.
  void expect_calls(const std::vector<Calls>& table, const std::string& prelude = "") {
    std::vector<std::pair<std::string, const Case*>> calls;
    std::string text = "INIZIA\n" + prelude + "\n";
    for (const Calls& f : table) {
      for (const Case& c : f.cases) {
        calls.emplace_back(f.function + (c.arguments.empty() ? "" : " (" + c.arguments + ")"), &c);
        text += "V" + std::to_string(calls.size()) + " = " + calls.back().first + "\n";
      }
    }
    ProgramInstance& p = sole_program(text + "CICLO CONTINUO");
    run_inizia(p);
    for (size_t n = 0; n < calls.size(); ++n) {
      SCOPED_TRACE(calls[n].first);
      const Case& c = *calls[n].second;
      const std::string value = stored(p, "V" + std::to_string(n + 1));
      if (c.within < 0) {
        EXPECT_EQ(value, c.expected);
        continue;
      }
      EXPECT_EQ(value.size() - value.find('.'), 31u) << value << " has not 30 decimals";
      EXPECT_NEAR(string_is_real(value), string_is_real(c.expected), c.within) << value;
    }
  }
};

// clang-format off
TEST_F(ValueFunctionExamples, FunzioniMatematicheELogiche) {
  expect_calls({
      // The rounding functions read VALORE only as the first argument; halves go to the even neighbour.
      {"ottieni_l'arrotondamento_per_difetto_di", {{"VALORE: 2.5", "2"}, {"VALORE: 3.5", "4"}, {"", "0"}}},
      {"ottieni_l'arrotondamento_per_eccesso_di", {{"VALORE: 2.1", "3"}, {"X: 1, VALORE: 2.1", "0"}}},
      {"ottieni_il_valore_intero_di", {{"VALORE: -2.5", "-3"}, {"X: 1, VALORE: 7.9", "7"}}},
      {"ottieni_il_valore_decimale_di", {{"VALORE: -2.75", "-0.75"}}},
      {"ottieni_il_valore_assoluto_di", {{"VALORE: 3-7", "4"}}},
      {"ottieni_il_segno_di", {{"VALORE: -0.2", "-1"}}},
      // Lists use the first of their eight slots, as many as the arguments: VALORE_2 alone is one
      // argument, VALORE_1 at its default 0. Only the maximum is exact.
      {"ottieni_il_massimo_tra",
       {{"VALORE_2: 5", exact(0)}, {"VALORE_1: -3, VALORE_2: -7", exact(-3)}, {"VALORE_1: 4, VALORE_3: 9", exact(4)},
        {"VALORE_1: 1, VALORE_2: 2, VALORE_3: 3, VALORE_4: 4, VALORE_5: 5, VALORE_6: 6, VALORE_7: 7, VALORE_8: 8, "
         "VALORE_9: 9", exact(8)}}},
      {"ottieni_il_minimo_tra", {{"VALORE_2: 1.5, VALORE_1: 2.25", "1.50"}}},
      {"ottieni_la_media_tra", {{"VALORE_1: 1, VALORE_2: 2, VALORE_3: 4", "2.33"}, {"", "0"}}},
      // The upper of the two middles.
      {"ottieni_il_valore_più_vicino_alla_media_tra", {{"VALORE_1: 10, VALORE_2: 1, VALORE_3: 3, VALORE_4: 2", "3"}}},
      {"ottieni_l'interpolazione_lineare_tra", {{"VALORE_1: 10, VALORE_2: 20, VALORE_3: 0.25", "12.50"}}},
      {"ottieni_il_valore_limitato_del_variabile_tra",
       {{"VALORE_1: 1, VALORE_2: 5, VARIABILE: 9", "5"}, {"VARIABILE: -2, VALORE_2: 5, VALORE_1: 1", "1"}}},
      {"ottieni_la_funzione_esponenziale_di", {{"VALORE: 1", "2.72"}}},
      {"ottieni_il_logaritmo_naturale_di", {{"VALORE: 1", "0"}}},
      {"ottieni_il_logaritmo_in_base_2_di", {{"VALORE: 8", "3"}}},
      {"ottieni_il_logaritmo_in_base_10_di", {{"VALORE: 1000", "3"}}},
      // The logarithm of BASE in base VALORE.
      {"ottieni_il_logaritmo_in_base_n_di", {{"VALORE: 2, BASE: 8", "3"}}},
      {"ottieni_la_potenza_di", {{"VALORE: 2, ESPONENTE: N*2+2", "1024"}, {"VALORE: 5", "1"}}},
      {"ottieni_il_quadrato_di", {{"VALORE: 1.5", "2.25"}}},
      // No root of a negative number: 0, exact, and no message.
      {"ottieni_la_radice_quadrata_di", {{"VALORE: 2", "1.41"}, {"VALORE: -1", exact(0)}}},
      // The integer parts divide; the remainder has the sign of the dividend.
      {"ottieni_il_quoziente_del_divisione_tra",
       {{"DIVIDENDO: -7, DIVISORE: 2", "-3"}, {"DIVIDENDO: 7.9, DIVISORE: 2.9", "3"},
        {"DIVIDENDO: N, DIVISORE: 0.5", exact(0)}, {"", exact(0)}}},
      {"ottieni_il_resto_del_divisione_tra",
       {{"DIVIDENDO: -7, DIVISORE: 3", "-1"}, {"DIVIDENDO: 7.5, DIVISORE: 2", "1.50"},
        {"DIVIDENDO: 1, DIVISORE: 0.5", "0"}, {"DIVIDENDO: N+1, DIVISORE: N-N", exact(0)}}},
      {"ottieni_potenza_modulare_di", {{"VALORE: 4, ESPONENTE: 13, DIVISORE: 497", "445"}, {"VALORE: 4", exact(0)}}},
      // A variable's name stands for its text; the result is the evaluator's own text, where a
      // product or a quotient alone keeps ten decimals.
      {"ottieni_risultato_espressione_da_testo",
       {{"TESTO: \"3+4*2\"", "11"}, {"TESTO: domanda", "10.0000000000"}, {"TESTO: \"<N>/8\"", "0.5000000000"},
        {"TESTO: \"3+\"", "\"Impossibile risolvere l'espressione\""}, {"", "0"}}},
      // The negation, of funzioni_logiche, counts only numbers above one half as true; a text is no number: 0, false.
      {"ottieni_la_negazione_di", {{"VALORE: 0.5", "1"}, {"VALORE: 0.6", "0"}, {"VALORE: -3", "1"}, {"VALORE: acceso", "0"},
                                   {"VALORE: acceso*3-3", "1"}, {"VALORE: \"vero\"", "1"}, {"", "1"}}},
  }, "N = 4\ndomanda = \"2*5\"\nacceso = 1");
  // A division by zero shows its arguments as written, and the run goes on.
  EXPECT_EQ(messages_, (std::vector<std::string>{
      "Errore: impossibile dividere per zero! (N/0.5)", "Errore: impossibile dividere per zero! (0/0)",
      "Errore: impossibile dividere per zero! (N+1/N-N)", "Errore: impossibile dividere per zero! (4/0)"}));
  EXPECT_TRUE(run_ends().empty());
}

TEST_F(ValueFunctionExamples, FunzioniTrigonometricheEVettoriali) {
  expect_calls({
      {"ottieni_il_seno_di",
       {{"", "0", CLOSE}, {"UNITA: gradi, VALORE: 30", "0.5", CLOSE}, {"VALORE: Pi_greco/2, UNITA: radianti", "1", CLOSE}}},
      {"ottieni_il_coseno_di", {{"VALORE: 60, UNITA: gradi", "0.5", CLOSE}, {"VALORE: 0", exact(1)}}},
      // A word that is no bare unit computes nothing: the variable takes what the last value
      // function left, here the cosine of 0.
      {"ottieni_il_seno_di", {{"VALORE: 30, UNITA: \"gradi\"", exact(1)}}},
      {"ottieni_la_tangente_di", {{"VALORE: 30, UNITA: Gradi", exact(1)}}},
      // The tangent is short: two decimals, none for a whole number.
      {"ottieni_la_tangente_di", {{"VALORE: 45, UNITA: gradi", "1.00"}, {"VALORE: 0", "0"}, {"VALORE: 1", "1.56"}}},
      // The inverse functions give 0 outside their domain; a hair beyond 1 is 1, as the runtime's rounding allows.
      {"ottieni_l'arcoseno_di",
       {{"VALORE: 1, UNITA: gradi", "90"}, {"VALORE: 0.5", "0.52"}, {"VALORE: 1.000001, UNITA: gradi", "90"},
        {"VALORE: 2, UNITA: gradi", "0"}}},
      {"ottieni_l'arcocoseno_di", {{"VALORE: 0, UNITA: gradi", "90", CLOSE}, {"VALORE: -3", "0", CLOSE}}},
      {"ottieni_l'arcotangente_di", {{"VALORE: 1, UNITA: gradi", "45", CLOSE}}},
      // VALORE_1 is the y of the point and VALORE_2 its x.
      {"ottieni_l'arcotangente_2_di",
       {{"VALORE_1: 1, VALORE_2: 0, UNITA: gradi", "90", CLOSE}, {"VALORE_1: 0, VALORE_2: -1", "3.14159265358979", CLOSE}}},
      {"ottieni_il_valore_convertito_da_radianti_a_gradi_di", {{"VALORE: 1", "57.2957795130823", CLOSE}}},
      {"ottieni_il_valore_convertito_da_gradi_a_radianti_di", {{"VALORE: 180", "3.14159265358979", CLOSE}}},
      {"ottieni_la_componente_x_del_vettore_dato_angolo_e_lunghezza", {{"LUNGHEZZA: 10, ANGOLO: 60", "5.00"}}},
      // Up the screen, where y grows downwards.
      {"ottieni_la_componente_y_del_vettore_dato_angolo_e_lunghezza",
       {{"LUNGHEZZA: 10, ANGOLO: 90", "-10"}, {"ANGOLO: 90", "0"}}},
      {"ottieni_distanza_tra_due_punti", {{"X_1: 1, Y_1: 1, X_2: 4, Y_2: 5", "5"}}},
      // Counter-clockwise on the screen: up is 90, left 180, down 270.
      {"ottieni_direzione_tra_due_punti",
       {{"X_2: 0, Y_2: -10", "90"}, {"X_1: 5, Y_1: 5, X_2: -5, Y_2: 5", "180"},
        {"X_1: 0, Y_1: 0, X_2: 0, Y_2: 10", "270"}, {"", "0"}}},
      {"ottieni_differenza_angolare_tra", {{"VALORE_1: 10, VALORE_2: 350", "20"}, {"VALORE_1: 350, VALORE_2: 10", "-20"}}},
  });
  // Before any value function has given something there is nothing to take, and the variable keeps its value.
  expect_calls({{"ottieni_il_seno_di", {{"VALORE: 30, UNITA: gradi_sessagesimali", "5"}}}}, "V1 = 5");
  EXPECT_TRUE(messages_.empty());
  EXPECT_TRUE(run_ends().empty());
}

TEST_F(ValueFunctionExamples, FunzioniSulleStringhe) {
  expect_calls({
      // Numbers keep only the digits, after every filling of the placeholders: a filling that brings
      // a placeholder is filled again, a comparison sign is no placeholder. A product alone keeps the
      // evaluator's ten decimals, and so their zeros. A text that holds its own placeholder isn't
      // filled, since each filling would multiply it; two texts that name each other go round ten times.
      {"ottieni_numero_da_testo",
       {{"TESTO: \"-3,5 euro\"", "35"}, {"TESTO: \"nessuna cifra\"", ""}, {"TESTO: \"Ho <anni> anni\"", "12"},
        {"TESTO: fuori", "12"}, {"TESTO: \"3 > 2\"", "32"}, {"", "0"}, {"TESTO: anni*2", "240000000000"},
        {"TESTO: eco", "77"}, {"TESTO: ping", "12121212121"}}},
      // Characters, not bytes; the default text is "0".
      {"ottieni_lunghezza_testo", {{"TESTO: \"perché\"", exact(6)}, {"", exact(1)}}},
      // No overlaps; placeholders filled in.
      {"ottieni_il_numero_di_parole_specificate_in_un_testo",
       {{"TESTO: \"aaaa\", PAROLA: \"aa\"", exact(2)}, {"TESTO: \"<nome> e <nome>\", PAROLA: nome", exact(2)}}},
      // Counted from 1.
      {"ottieni_il_simbolo_di_un_testo_a_una_determinata_posizione",
       {{"TESTO: \"ciao\", POSIZIONE: 2", "\"i\""}, {"TESTO: \"ciao\", POSIZIONE: 9", "\"\""}, {"POSIZIONE: 1", "\"0\""}}},
      // Pieces and positions count the opening quote as 0.
      {"ottieni_un_pezzo_di_questo_testo",
       {{"TESTO: \"ciao\", LUNGHEZZA: 2, POSIZIONE: 1", "\"ci\""},
        {"TESTO: \"ciao\", LUNGHEZZA: 2, POSIZIONE: 0", "\"\"c\""},
        {"TESTO: \"ciao\", LUNGHEZZA: 3, POSIZIONE: 50", "\"\""},
        {"TESTO: \"ciao <parola>\", LUNGHEZZA: 7, POSIZIONE: 1", "\"ciao mo\""}}},
      {"ottieni_posizione_parola",
       {{"TESTO: \"ciao mondo\", PAROLA: parola", "6"}, {"TESTO: \"ciao mondo\", PAROLA: \"luna\"", "-1"},
        {"TESTO: \"ciao\", PAROLA: \"c\"", "1"}}},
      // Counted from 1, without the quotes.
      {"ottieni_testo_con_inserito_altro_testo_a_una_determinata_posizione",
       {{"TESTO: \"ciao\", TESTO_INSERITO: \"XX\", POSIZIONE: 3", "\"ciXXao\""},
        {"TESTO: parola, TESTO_INSERITO: \"!\", POSIZIONE: 99", "\"mondo!\""}}},
      // Replacements and cases keep the quotes of their text.
      {"ottieni_testo_con_parola_sostituita",
       {{"TESTO: \"il gatto e il topo\", PAROLA: \"il\", NUOVA_PAROLA: \"un\"", "\"un gatto e un topo\""},
        {"TESTO: \"ciao X\", PAROLA: \"X\", NUOVA_PAROLA: \"<nome>\"", "\"ciao Ada\""}}},
      {"ottieni_testo_con_parola_sostituita_solo_la_prima_volta",
       {{"TESTO: \"il gatto e il topo\", PAROLA: \"il\", NUOVA_PAROLA: \"un\"", "\"un gatto e il topo\""}}},
      {"ottieni_testo_maiuscolo", {{"TESTO: nome", "\"ADA\""}, {"TESTO: \"<nome>!\"", "\"ADA!\""}}},
      {"ottieni_testo_minuscolo", {{"TESTO: \"CIAO È\"", "\"ciao è\""}, {"", "0"}}},
      // Empty words come last: an empty text changes how the tokeniser reads the texts after it.
      {"ottieni_il_numero_di_parole_specificate_in_un_testo", {{"TESTO: \"ciao\", PAROLA: \"\"", exact(0)}}},
      {"ottieni_testo_con_parola_sostituita", {{"TESTO: \"ciao\", PAROLA: \"\", NUOVA_PAROLA: \"z\"", "\"ciao\""}}},
  }, "anni = 12\ndentro = \"<anni>\"\nfuori = \"ne ho <dentro>\"\neco = \"7<eco>7<eco>\"\nping = \"1<pong>\"\n"
     "pong = \"2<ping>\"\nnome = \"Ada\"\nparola = \"mondo\"");
}

TEST_F(ValueFunctionExamples, StringSlotsWithoutADefaultKeepWhatTheLastCallLeftInThem) {
  // NUOVA_PAROLA, and POSIZIONE of a piece or an insertion, are those of the call before;
  // NUOVA_PAROLA at its default is the text "0".
  expect_calls({
      {"ottieni_testo_con_parola_sostituita_solo_la_prima_volta",
       {{"TESTO: \"a b a\", PAROLA: \"a\", NUOVA_PAROLA: \"x\"", "\"x b a\""},
        {"TESTO: \"a b a\", PAROLA: \"b\"", "\"a x a\""}}},
      {"ottieni_un_pezzo_di_questo_testo",
       {{"TESTO: \"abcdef\", LUNGHEZZA: 2, POSIZIONE: 3", "\"cd\""}, {"TESTO: \"uvwxyz\", LUNGHEZZA: 2", "\"wx\""}}},
      {"ottieni_testo_con_inserito_altro_testo_a_una_determinata_posizione",
       {{"TESTO: \"uvwxyz\", TESTO_INSERITO: \"-\"", "\"uv-wxyz\""}}},
      {"ottieni_testo_con_parola_sostituita", {{"TESTO: \"a b a\", PAROLA: \"a\"", "\"0 b 0\""}}},
  });
  // A slot that no call has filled yet is no text, and the number 0.
  expect_calls({
      {"ottieni_testo_con_parola_sostituita_solo_la_prima_volta", {{"TESTO: \"a b a\", PAROLA: \"a\"", "\" b a\""}}},
      {"ottieni_un_pezzo_di_questo_testo", {{"TESTO: \"ciao\", LUNGHEZZA: 2", "\"\"c\""}}},
  });
}
// clang-format on

TEST_F(ValueFunctionExamples, Tabelline) {
  ProgramInstance& p = example("tabelline.txt");
  run_inizia(p);
  const std::string primo = stored(p, "primo"), secondo = stored(p, "secondo");
  EXPECT_EQ(number(p, "risposta"), string_is_real(primo) * string_is_real(secondo));
  const std::string domanda = "Quanto fa " + primo + " per " + secondo + "?";
  EXPECT_EQ(stored(p, "domanda"), "\"" + domanda + "\"");
  EXPECT_EQ(messages_, std::vector<std::string>{domanda});
  EXPECT_EQ(stored(p, "tipo"), static_cast<int>(number(p, "risposta")) % 2 == 0 ? "\"pari\"" : "\"dispari\"");
  // The answer shows once Enter has been pressed.
  run_frame(p);
  EXPECT_EQ(stored(p, "mostra_risposta"), "0");
  input_key_event(KEY_ENTER, true);
  input_begin_frame();
  run_frame(p);
  EXPECT_EQ(stored(p, "mostra_risposta"), "1");
}

}  // namespace
