// funzioni_sulle_stringhe: what each function does with the quotes and the
// placeholders of its text, its positions, its defaults, and the slots
// without a default that keep what an earlier call left.
#include "support/program_fixture.h"

namespace {

class FunzioniSulleStringhe : public ProgramTest {
 protected:
  // A program whose block INIZIA holds `statements`, run once.
  ProgramInstance& run(const std::string& statements) {
    ProgramInstance& p = runnable("INIZIA\n" + statements + "\nCICLO CONTINUO");
    run_inizia(p);
    return p;
  }
};

TEST_F(FunzioniSulleStringhe, NumbersFromTextsKeepOnlyTheDigitsAfterEveryFilling) {
  ProgramInstance& p = run(
      "anni = 12\n"
      "dentro = \"<anni>\"\n"
      "fuori = \"ne ho <dentro>\"\n"
      "N1 = ottieni_numero_da_testo (TESTO: \"3,5 euro\")\n"
      "N2 = ottieni_numero_da_testo (TESTO: \"-2.5\")\n"
      "N3 = ottieni_numero_da_testo (TESTO: \"nessuna cifra\")\n"
      "N4 = ottieni_numero_da_testo (TESTO: \"Ho <anni> anni\")\n"
      "N5 = ottieni_numero_da_testo (TESTO: fuori)\n"
      "N6 = ottieni_numero_da_testo (TESTO: \"3 > 2\")\n"
      "N7 = ottieni_numero_da_testo (TESTO: anni+1)\n"
      "N8 = ottieni_numero_da_testo\n"
      "N9 = ottieni_numero_da_testo (TESTO: anni*2)\n"
      "eco = \"7<eco>7<eco>\"\n"
      "ping = \"1<pong>\"\n"
      "pong = \"2<ping>\"\n"
      "NE = ottieni_numero_da_testo (TESTO: eco)\n"
      "NP = ottieni_numero_da_testo (TESTO: ping)");
  EXPECT_EQ(stored(p, "N1"), "35");
  EXPECT_EQ(stored(p, "N2"), "25");  // the sign and the point are lost
  EXPECT_EQ(stored(p, "N3"), "");
  EXPECT_EQ(stored(p, "N4"), "12");
  EXPECT_EQ(stored(p, "N5"), "12");  // a filling that brings a placeholder is filled again
  EXPECT_EQ(stored(p, "N6"), "32");  // a comparison sign is no placeholder, and no endless filling
  EXPECT_EQ(stored(p, "N7"), "13");
  EXPECT_EQ(stored(p, "N8"), "0");
  // A product alone keeps the evaluator's ten decimals, and so their zeros.
  EXPECT_EQ(stored(p, "N9"), "240000000000");
  // A text that holds its own placeholder isn't filled, since each filling
  // would multiply it; two texts that name each other go round ten times.
  EXPECT_EQ(stored(p, "NE"), "77");
  EXPECT_EQ(stored(p, "NP"), "12121212121");
}

TEST_F(FunzioniSulleStringhe, LengthsCountsAndSymbolsTakeTheirTextWithoutQuotes) {
  ProgramInstance& p = run(
      "nome = \"Ada\"\n"
      "L1 = ottieni_lunghezza_testo (TESTO: \"ciao\")\n"
      "L2 = ottieni_lunghezza_testo (TESTO: nome)\n"
      "L3 = ottieni_lunghezza_testo (TESTO: \"perché\")\n"
      "L4 = ottieni_lunghezza_testo\n"
      "C1 = ottieni_il_numero_di_parole_specificate_in_un_testo (TESTO: \"aaaa\", PAROLA: \"aa\")\n"
      "C2 = ottieni_il_numero_di_parole_specificate_in_un_testo (TESTO: \"il gatto e il cane\", PAROLA: \"il\")\n"
      "C3 = ottieni_il_numero_di_parole_specificate_in_un_testo (TESTO: \"<nome> e <nome>\", PAROLA: nome)\n"
      "C4 = ottieni_il_numero_di_parole_specificate_in_un_testo (TESTO: \"ciao\", PAROLA: \"\")\n"
      "S1 = ottieni_il_simbolo_di_un_testo_a_una_determinata_posizione (TESTO: \"ciao\", POSIZIONE: 2)\n"
      "S2 = ottieni_il_simbolo_di_un_testo_a_una_determinata_posizione (TESTO: nome, POSIZIONE: 1)\n"
      "S3 = ottieni_il_simbolo_di_un_testo_a_una_determinata_posizione (TESTO: \"ciao\", POSIZIONE: 9)\n"
      "S4 = ottieni_il_simbolo_di_un_testo_a_una_determinata_posizione (POSIZIONE: 1)");
  EXPECT_EQ(stored(p, "L1"), "4.000000000000000000000000000000");
  EXPECT_EQ(stored(p, "L2"), "3.000000000000000000000000000000");
  EXPECT_EQ(stored(p, "L3"), "6.000000000000000000000000000000");  // characters, not bytes
  EXPECT_EQ(stored(p, "L4"), "1.000000000000000000000000000000");  // the text "0"
  EXPECT_EQ(stored(p, "C1"), "2.000000000000000000000000000000");  // no overlaps
  EXPECT_EQ(stored(p, "C2"), "2.000000000000000000000000000000");
  EXPECT_EQ(stored(p, "C3"), "2.000000000000000000000000000000");  // placeholders filled in
  EXPECT_EQ(stored(p, "C4"), "0.000000000000000000000000000000");
  EXPECT_EQ(stored(p, "S1"), "\"i\"");  // counted from 1
  EXPECT_EQ(stored(p, "S2"), "\"A\"");
  EXPECT_EQ(stored(p, "S3"), "\"\"");
  EXPECT_EQ(stored(p, "S4"), "\"0\"");
}

TEST_F(FunzioniSulleStringhe, PiecesAndPositionsCountTheOpeningQuoteAsZero) {
  ProgramInstance& p = run(
      "parola = \"mondo\"\n"
      "P1 = ottieni_un_pezzo_di_questo_testo (TESTO: \"ciao\", LUNGHEZZA: 2, POSIZIONE: 1)\n"
      "P2 = ottieni_un_pezzo_di_questo_testo (TESTO: \"ciao\", LUNGHEZZA: 2, POSIZIONE: 0)\n"
      "P3 = ottieni_un_pezzo_di_questo_testo (TESTO: \"ciao\", LUNGHEZZA: 3, POSIZIONE: 50)\n"
      "P4 = ottieni_un_pezzo_di_questo_testo (TESTO: \"ciao <parola>\", LUNGHEZZA: 7, POSIZIONE: 1)\n"
      "I1 = ottieni_posizione_parola (TESTO: \"ciao mondo\", PAROLA: \"mondo\")\n"
      "I2 = ottieni_posizione_parola (TESTO: \"ciao mondo\", PAROLA: parola)\n"
      "I3 = ottieni_posizione_parola (TESTO: \"ciao mondo\", PAROLA: \"luna\")\n"
      "I4 = ottieni_posizione_parola (TESTO: \"ciao\", PAROLA: \"c\")\n"
      "T1 = ottieni_testo_con_inserito_altro_testo_a_una_determinata_posizione "
      "(TESTO: \"ciao\", TESTO_INSERITO: \"XX\", POSIZIONE: 3)\n"
      "T2 = ottieni_testo_con_inserito_altro_testo_a_una_determinata_posizione "
      "(TESTO: parola, TESTO_INSERITO: \"!\", POSIZIONE: 99)");
  EXPECT_EQ(stored(p, "P1"), "\"ci\"");
  EXPECT_EQ(stored(p, "P2"), "\"\"c\"");  // position 0 is the opening quote
  EXPECT_EQ(stored(p, "P3"), "\"\"");
  EXPECT_EQ(stored(p, "P4"), "\"ciao mo\"");
  EXPECT_EQ(stored(p, "I1"), "6");
  EXPECT_EQ(stored(p, "I2"), "6");
  EXPECT_EQ(stored(p, "I3"), "-1");
  EXPECT_EQ(stored(p, "I4"), "1");
  EXPECT_EQ(stored(p, "T1"), "\"ciXXao\"");  // counted from 1, without the quotes
  EXPECT_EQ(stored(p, "T2"), "\"mondo!\"");
}

TEST_F(FunzioniSulleStringhe, SlotsWithoutADefaultKeepWhatTheLastCallLeftInThem) {
  ProgramInstance& p = run(
      "A = ottieni_testo_con_parola_sostituita_solo_la_prima_volta (TESTO: \"a b a\", PAROLA: \"a\", NUOVA_PAROLA: \"x\")\n"
      "B = ottieni_testo_con_parola_sostituita_solo_la_prima_volta (TESTO: \"a b a\", PAROLA: \"b\")\n"
      "C = ottieni_un_pezzo_di_questo_testo (TESTO: \"abcdef\", LUNGHEZZA: 2, POSIZIONE: 3)\n"
      "D = ottieni_un_pezzo_di_questo_testo (TESTO: \"uvwxyz\", LUNGHEZZA: 2)\n"
      "E = ottieni_testo_con_inserito_altro_testo_a_una_determinata_posizione (TESTO: \"uvwxyz\", TESTO_INSERITO: \"-\")\n"
      "F = ottieni_testo_con_parola_sostituita (TESTO: \"a b a\", PAROLA: \"a\")");
  EXPECT_EQ(stored(p, "A"), "\"x b a\"");
  EXPECT_EQ(stored(p, "B"), "\"a x a\"");
  EXPECT_EQ(stored(p, "C"), "\"cd\"");
  EXPECT_EQ(stored(p, "D"), "\"wx\"");   // POSIZIONE 3 from the call before
  EXPECT_EQ(stored(p, "E"), "\"uv-wxyz\"");
  // Here NUOVA_PAROLA has its default, the text "0".
  EXPECT_EQ(stored(p, "F"), "\"0 b 0\"");

  // A slot that no call has filled yet is no text, and the number 0.
  programs_.clear();
  set_main_program(nullptr);
  ProgramInstance& q = run(
      "G = ottieni_testo_con_parola_sostituita_solo_la_prima_volta (TESTO: \"a b a\", PAROLA: \"a\")\n"
      "H = ottieni_un_pezzo_di_questo_testo (TESTO: \"ciao\", LUNGHEZZA: 2)");
  EXPECT_EQ(stored(q, "G"), "\" b a\"");
  EXPECT_EQ(stored(q, "H"), "\"\"c\"");
}

TEST_F(FunzioniSulleStringhe, ReplacementsAndCasesKeepTheQuotesOfTheirText) {
  ProgramInstance& p = run(
      "nome = \"Ada\"\n"
      "R1 = ottieni_testo_con_parola_sostituita (TESTO: \"il gatto e il topo\", PAROLA: \"il\", NUOVA_PAROLA: \"un\")\n"
      "R2 = ottieni_testo_con_parola_sostituita_solo_la_prima_volta "
      "(TESTO: \"il gatto e il topo\", PAROLA: \"il\", NUOVA_PAROLA: \"un\")\n"
      "R3 = ottieni_testo_con_parola_sostituita (TESTO: \"ciao X\", PAROLA: \"X\", NUOVA_PAROLA: \"<nome>\")\n"
      "R4 = ottieni_testo_con_parola_sostituita (TESTO: \"ciao\", PAROLA: \"\", NUOVA_PAROLA: \"z\")\n"
      "M1 = ottieni_testo_maiuscolo (TESTO: \"ciao\")\n"
      "M2 = ottieni_testo_maiuscolo (TESTO: nome)\n"
      "M3 = ottieni_testo_minuscolo (TESTO: \"CIAO È\")\n"
      "M4 = ottieni_testo_maiuscolo (TESTO: \"<nome>!\")\n"
      "M5 = ottieni_testo_minuscolo");
  EXPECT_EQ(stored(p, "R1"), "\"un gatto e un topo\"");
  EXPECT_EQ(stored(p, "R2"), "\"un gatto e il topo\"");
  EXPECT_EQ(stored(p, "R3"), "\"ciao Ada\"");
  EXPECT_EQ(stored(p, "R4"), "\"ciao\"");
  EXPECT_EQ(stored(p, "M1"), "\"CIAO\"");
  EXPECT_EQ(stored(p, "M2"), "\"ADA\"");
  EXPECT_EQ(stored(p, "M3"), "\"ciao è\"");
  EXPECT_EQ(stored(p, "M5"), "0");
  const std::string filled = stored(p, "M4");
  EXPECT_TRUE(filled.starts_with('"') && filled.ends_with('"')) << filled;
  EXPECT_NE(filled.find("ADA"), std::string::npos) << filled;
}

}  // namespace
