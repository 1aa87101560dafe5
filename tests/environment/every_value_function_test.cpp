// Every value function of texts and numbers through `velant run --vars`,
// family by family: each called with its keys, its value checked in the
// number form its family gives it (30 decimals for the exact form, no or
// two decimals for the short one).
#include <utility>
#include <vector>

#include "run_fixture.h"

namespace {

using EveryValueFunction = RunFixture;

void expect_values(const RunResult& r, const std::vector<std::pair<std::string, std::string>>& expected) {
  ASSERT_EQ(r.status, 0) << r.out;
  for (const auto& [name, value] : expected) EXPECT_EQ(printed_value(r.out, name), value) << name;
}

TEST_F(EveryValueFunction, Mathematics) {
  const RunResult r = run(
      "INIZIA\n"
      "A1 = ottieni_l'arrotondamento_per_difetto_di (VALORE: 2.7)\n"
      "A2 = ottieni_l'arrotondamento_per_eccesso_di (VALORE: 2.1)\n"
      "A3 = ottieni_il_valore_intero_di (VALORE: -2.5)\n"
      "A4 = ottieni_il_valore_decimale_di (VALORE: 2.75)\n"
      "A5 = ottieni_il_valore_assoluto_di (VALORE: -4)\n"
      "A6 = ottieni_il_segno_di (VALORE: -7)\n"
      "A7 = ottieni_il_massimo_tra (VALORE_1: 3, VALORE_2: 9.5)\n"
      "A8 = ottieni_il_minimo_tra (VALORE_1: 3, VALORE_2: 9.5)\n"
      "A9 = ottieni_la_media_tra (VALORE_1: 1, VALORE_2: 2, VALORE_3: 4)\n"
      "A10 = ottieni_il_valore_più_vicino_alla_media_tra (VALORE_1: 5, VALORE_2: 1, VALORE_3: 3)\n"
      "A11 = ottieni_l'interpolazione_lineare_tra (VALORE_1: 10, VALORE_2: 20, VALORE_3: 0.25)\n"
      "A12 = ottieni_il_valore_limitato_del_variabile_tra (VALORE_1: 0, VALORE_2: 10, VARIABILE: 15)\n"
      "A13 = ottieni_la_funzione_esponenziale_di (VALORE: 0)\n"
      "A14 = ottieni_il_logaritmo_naturale_di (VALORE: 1)\n"
      "A15 = ottieni_il_logaritmo_in_base_2_di (VALORE: 8)\n"
      "A16 = ottieni_il_logaritmo_in_base_10_di (VALORE: 1000)\n"
      "A17 = ottieni_il_logaritmo_in_base_n_di (VALORE: 2, BASE: 8)\n"
      "A18 = ottieni_la_potenza_di (VALORE: 2, ESPONENTE: 10)\n"
      "A19 = ottieni_il_quadrato_di (VALORE: 1.5)\n"
      "A20 = ottieni_la_radice_quadrata_di (VALORE: -4)\n"
      "A21 = ottieni_il_quoziente_del_divisione_tra (DIVIDENDO: 7, DIVISORE: 2)\n"
      "A22 = ottieni_il_resto_del_divisione_tra (DIVIDENDO: 7, DIVISORE: 2)\n"
      "A23 = ottieni_potenza_modulare_di (VALORE: 2, ESPONENTE: 10, DIVISORE: 1000)\n"
      "A24 = ottieni_risultato_espressione_da_testo (TESTO: \"2+3\")\n"
      "CICLO CONTINUO\n",
      "--frames 2 --vars");
  expect_values(r, {
      {"A1", "3"},
      {"A2", "3"},
      {"A3", "-3"},
      {"A4", "0.75"},
      {"A5", "4"},
      {"A6", "-1"},
      {"A7", "9.500000000000000000000000000000"},
      {"A8", "3"},
      {"A9", "2.33"},
      {"A10", "3"},
      {"A11", "12.50"},
      {"A12", "10"},
      {"A13", "1"},
      {"A14", "0"},
      {"A15", "3"},
      {"A16", "3"},
      {"A17", "3"},
      {"A18", "1024"},
      {"A19", "2.25"},
      {"A20", "0.000000000000000000000000000000"},
      {"A21", "3"},
      {"A22", "1"},
      {"A23", "24"},
      {"A24", "5"},
  });
}

TEST_F(EveryValueFunction, TrigonometryAndVectors) {
  const RunResult r = run(
      "INIZIA\n"
      "T1 = ottieni_il_seno_di (VALORE: 0)\n"
      "T2 = ottieni_il_coseno_di (VALORE: 0)\n"
      "T3 = ottieni_la_tangente_di (VALORE: 0)\n"
      "T4 = ottieni_l'arcoseno_di (VALORE: 1, UNITA: gradi)\n"
      "T5 = ottieni_l'arcocoseno_di (VALORE: 1)\n"
      "T6 = ottieni_l'arcotangente_di (VALORE: 0)\n"
      "T7 = ottieni_l'arcotangente_2_di (VALORE_1: 0, VALORE_2: 1)\n"
      "T8 = ottieni_il_valore_convertito_da_radianti_a_gradi_di (VALORE: 0)\n"
      "T9 = ottieni_il_valore_convertito_da_gradi_a_radianti_di (VALORE: 180)\n"
      "T10 = ottieni_la_componente_x_del_vettore_dato_angolo_e_lunghezza (LUNGHEZZA: 10, ANGOLO: 0)\n"
      "T11 = ottieni_la_componente_y_del_vettore_dato_angolo_e_lunghezza (LUNGHEZZA: 10, ANGOLO: 90)\n"
      "T12 = ottieni_distanza_tra_due_punti (X_1: 0, Y_1: 0, X_2: 3, Y_2: 4)\n"
      "T13 = ottieni_direzione_tra_due_punti (X_1: 0, Y_1: 0, X_2: 0, Y_2: -10)\n"
      "T14 = ottieni_differenza_angolare_tra (VALORE_1: 10, VALORE_2: 350)\n"
      "CICLO CONTINUO\n",
      "--frames 2 --vars");
  expect_values(r, {
      {"T1", "0.000000000000000000000000000000"},
      {"T2", "1.000000000000000000000000000000"},
      {"T3", "0"},
      {"T4", "90"},
      {"T5", "0.000000000000000000000000000000"},
      {"T6", "0.000000000000000000000000000000"},
      {"T7", "0.000000000000000000000000000000"},
      {"T8", "0.000000000000000000000000000000"},
      {"T9", "3.141592653589793115997963468544"},
      {"T10", "10"},
      {"T11", "-10"},
      {"T12", "5"},
      {"T13", "90"},
      {"T14", "20"},
  });
}

TEST_F(EveryValueFunction, TextsChanceAndLogic) {
  const RunResult r = run(
      "INIZIA\n"
      "S1 = ottieni_numero_da_testo (TESTO: \"anno 2024\")\n"
      "S2 = ottieni_il_simbolo_di_un_testo_a_una_determinata_posizione (TESTO: \"ciao\", POSIZIONE: 2)\n"
      "S3 = ottieni_il_numero_di_parole_specificate_in_un_testo (TESTO: \"la la la\", PAROLA: \"la\")\n"
      "S4 = ottieni_lunghezza_testo (TESTO: \"città\")\n"
      "S5 = ottieni_testo_con_parola_sostituita (TESTO: \"a-b-a\", PAROLA: \"a\", NUOVA_PAROLA: \"x\")\n"
      "S6 = ottieni_testo_con_parola_sostituita_solo_la_prima_volta (TESTO: \"a-b-a\", PAROLA: \"a\", NUOVA_PAROLA: \"x\")\n"
      "S7 = ottieni_testo_con_inserito_altro_testo_a_una_determinata_posizione (TESTO: \"ciao\", TESTO_INSERITO: \"!\", POSIZIONE: 2)\n"
      "S8 = ottieni_un_pezzo_di_questo_testo (TESTO: \"buongiorno\", LUNGHEZZA: 4, POSIZIONE: 1)\n"
      "S9 = ottieni_posizione_parola (TESTO: \"buongiorno\", PAROLA: \"giorno\")\n"
      "S10 = ottieni_testo_maiuscolo (TESTO: \"ciao\")\n"
      "S11 = ottieni_testo_minuscolo (TESTO: \"CIAO\")\n"
      "R1 = ottieni_uno_a_caso_di_questi_valori (VALORE_1: 7, VALORE_2: 7)\n"
      "R2 = ottieni_un_valore_compreso_tra_questi (VALORE_1: 5, VALORE_2: 5)\n"
      "L1 = ottieni_la_negazione_di (VALORE: 1)\n"
      "CICLO CONTINUO\n",
      "--frames 2 --vars");
  expect_values(r, {
      {"S1", "2024"},
      {"S2", "\"i\""},
      {"S3", "3.000000000000000000000000000000"},
      {"S4", "5.000000000000000000000000000000"},
      {"S5", "\"x-b-x\""},
      {"S6", "\"x-b-a\""},
      {"S7", "\"c!iao\""},
      {"S8", "\"buon\""},
      {"S9", "5"},
      {"S10", "\"CIAO\""},
      {"S11", "\"ciao\""},
      {"R1", "7"},
      {"R2", "5"},
      {"L1", "0"},
  });
}

}  // namespace
