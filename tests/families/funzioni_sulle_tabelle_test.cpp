// funzioni_sulle_tabelle: tables filled, changed, read and destroyed by
// name; the way out to a semicolon file and back; a spreadsheet's file; a
// missing file or table; the drawing of a table on the run's surface.
#include "families/funzioni_sulle_tabelle.h"

#include "support/SaveArea.h"
#include "support/program_fixture.h"

namespace {

class FunzioniSulleTabelle : public ProgramTest {
 protected:
  void SetUp() override {
    ProgramTest::SetUp();
    define_tabella();
    objects_prepare();
  }
  static int tables() {
    const auto& all = object_get(object_find("tabella"))->instances;
    return static_cast<int>(std::count_if(all.begin(), all.end(), [](const CInstance* t) { return t->active(); }));
  }

  SaveArea save_area_;
};

TEST_F(FunzioniSulleTabelle, CellsAreFilledChangedAndReadByName) {
  ProgramInstance& p = started(
      "crea tabella (NOME: \"classe\")\n"
      "riempi tabella (NOME: \"classe\", COLONNA_1: \"Anna|Bruno|\", COLONNA_2: \"uno|due\")\n"
      "modifica tabella (NOME: \"classe\", RIGA: 1+1, COLONNA: 3, NUOVO_VALORE: \"bravo\")\n"
      "modifica tabella (NOME: \"classe\", RIGA: 300, COLONNA: 20, NUOVO_VALORE: 8)\n"
      "a = ottieni dato da tabella (NOME: \"classe\", RIGA: 2, COLONNA: 1)\n"
      "b = ottieni dato da tabella (NOME: \"classe\", RIGA: 1, COLONNA: 2)\n"
      "c = ottieni dato da tabella (NOME: \"classe\", RIGA: 2, COLONNA: 2)\n"
      "d = ottieni dato da tabella (NOME: \"classe\", RIGA: 2, COLONNA: 3)\n"
      "e = ottieni dato da tabella (NOME: \"classe\", RIGA: 300, COLONNA: 20)\n"
      "f = ottieni dato da tabella (NOME: \"classe\", RIGA: 299, COLONNA: 19)\n"
      "g = ottieni dato da tabella (NOME: \"altra\", RIGA: 1, COLONNA: 1)\n"
      "distruggi tabella (NOME: \"classe\")\n"
      "h = ottieni dato da tabella (NOME: \"classe\", RIGA: 1, COLONNA: 1)");
  EXPECT_EQ(stored(p, "a"), "Bruno");
  EXPECT_EQ(stored(p, "b"), "uno") << "what follows the last | is no cell";
  EXPECT_EQ(stored(p, "c"), "");
  EXPECT_EQ(stored(p, "d"), "\"bravo\"") << "a quoted text stays quoted";
  EXPECT_EQ(stored(p, "e"), "8");
  EXPECT_EQ(stored(p, "f"), "") << "beyond what was written";
  EXPECT_EQ(stored(p, "g"), "0." + std::string(30, '0')) << "no table: the number 0";
  EXPECT_EQ(stored(p, "h"), stored(p, "g")) << "a destroyed table is no table";
  EXPECT_EQ(tables(), 0);
}

TEST_F(FunzioniSulleTabelle, AnExportedTableImportsBackWithItsTextsQuoted) {
  ProgramInstance& p = started(
      "crea tabella (NOME: \"voti\")\n"
      "modifica tabella (NOME: \"voti\", RIGA: 1, COLONNA: 1, NUOVO_VALORE: \"Anna Rossi\")\n"
      "modifica tabella (NOME: \"voti\", RIGA: 1, COLONNA: 2, NUOVO_VALORE: 7.5)\n"
      "modifica tabella (NOME: \"voti\", RIGA: 2, COLONNA: 1, NUOVO_VALORE: \"3A\")\n"
      "esporta tabella (NOME: \"voti\", PERCORSO: \"voti\")\n"
      "crea tabella (NOME: \"voti\")\n"
      "importa tabella (NOME: \"voti\", PERCORSO: \"voti.csv\")\n"
      "a = ottieni dato da tabella (NOME: \"voti\", RIGA: 1, COLONNA: 1)\n"
      "b = ottieni dato da tabella (NOME: \"voti\", RIGA: 1, COLONNA: 2)\n"
      "c = ottieni dato da tabella (NOME: \"voti\", RIGA: 2, COLONNA: 1)\n"
      "d = ottieni dato da tabella (NOME: \"voti\", RIGA: 2, COLONNA: 2)");
  const std::string file = read_whole_file(save_area_.path() / "voti.csv");
  EXPECT_TRUE(file.starts_with("\"Anna Rossi\";7.5;;;;;;;;;;;;;;;\r\n\"3A\";;")) << file;
  EXPECT_EQ(std::count(file.begin(), file.end(), '\n'), 200);
  EXPECT_EQ(stored(p, "a"), "\"Anna Rossi\"");
  EXPECT_EQ(stored(p, "b"), "7.5");
  EXPECT_EQ(stored(p, "c"), "3A") << "a text that starts with a digit stays unquoted";
  EXPECT_EQ(stored(p, "d"), "\"\"") << "an empty cell is an empty text";
  EXPECT_EQ(tables(), 1) << "the import replaces every table of the name";
}

TEST_F(FunzioniSulleTabelle, ASpreadsheetFileReadsAsTheLearnerSawIt) {
  save_area_.write("registro.csv", "\xEF\xBB\xBFNome;Voto;Classe\r\n\"Rossi, Mario\";7,5;3A\r\nBianchi;8;\r\n");
  ProgramInstance& p = started(
      "importa tabella (NOME: \"r\", PERCORSO: \"registro\")\n"
      "a = ottieni dato da tabella (NOME: \"r\", RIGA: 1, COLONNA: 1)\n"
      "b = ottieni dato da tabella (NOME: \"r\", RIGA: 2, COLONNA: 1)\n"
      "c = ottieni dato da tabella (NOME: \"r\", RIGA: 2, COLONNA: 2)\n"
      "d = ottieni dato da tabella (NOME: \"r\", RIGA: 2, COLONNA: 3)\n"
      "e = ottieni dato da tabella (NOME: \"r\", RIGA: 3, COLONNA: 2)");
  EXPECT_EQ(stored(p, "a"), "\"Nome\"");
  EXPECT_EQ(stored(p, "b"), "\"Rossi, Mario\"");
  EXPECT_EQ(stored(p, "c"), "7,5") << "a decimal comma keeps its cell";
  EXPECT_EQ(stored(p, "d"), "3A");
  EXPECT_EQ(stored(p, "e"), "8");
  EXPECT_TRUE(messages_.empty());
}

// Sizes past all reason draw what a window can hold, and the run goes on.
TEST_F(FunzioniSulleTabelle, AMissingFileIsToldAndLeavesAnEmptyTable) {
  ProgramInstance& p = started(
      "importa tabella (NOME: \"r\", PERCORSO: \"manca\")\n"
      "disegna tabella (NOME: \"r\", RIGHE: 99999999999, COLONNE: 99999999999)\n"
      "a = ottieni dato da tabella (NOME: \"r\", RIGA: 1, COLONNA: 1)");
  ASSERT_EQ(messages_.size(), 1u);
  EXPECT_EQ(messages_[0], "ATTENZIONE: Il file .csv specificato nella funzione importa tabella (manca.csv) non esiste!");
  EXPECT_EQ(stored(p, "a"), "");
  EXPECT_EQ(tables(), 1);
}

}  // namespace
