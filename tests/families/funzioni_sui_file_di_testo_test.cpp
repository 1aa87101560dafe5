// funzioni_sui_file_di_testo: writing that creates, appends, adds a line or
// replaces; reading the whole text or one line; a name kept in a variable;
// a missing file read as empty.
#include "support/SaveArea.h"
#include "support/program_fixture.h"

namespace {

class FunzioniSuiFileDiTesto : public ProgramTest {
 protected:
  SaveArea save_area_;
};

TEST_F(FunzioniSuiFileDiTesto, WritingCreatesAppendsAndReplaces) {
  ProgramInstance& p = started(
      "punti = 12\n"
      "scrivi su questo file (NOME: \"record.txt\", TESTO: \"Anna\")\n"
      "scrivi su questo file (NOME: \"record.txt\", TESTO: \": < punti >\")\n"
      "scrivi una nuova linea su questo file (NOME: \"record.txt\", TESTO: \"fine/carriage_return/ok\")\n"
      "sovrascrivi su questo file (NOME: \"altro.txt\", TESTO: \"primo\")\n"
      "sovrascrivi su questo file (NOME: \"altro.txt\", TESTO: \"secondo\")");
  EXPECT_EQ(read_whole_file(save_area_.path() / "record.txt"), "Anna:   12 \r\nfine\r\nok");
  EXPECT_EQ(read_whole_file(save_area_.path() / "altro.txt"), "secondo");
  EXPECT_EQ(stored(p, "punti"), "12");
}

TEST_F(FunzioniSuiFileDiTesto, ReadingGivesTheTextOrOneLineWithItsLineFeed) {
  save_area_.write("dati.txt", "uno\r\ndue\r\ntre");
  ProgramInstance& p = started(
      "file = \"dati\"\n"
      "t = ottieni testo da questo file (NOME: \"dati.txt\")\n"
      "v = ottieni testo da questo file (NOME: file)\n"
      "u = ottieni una riga di testo da questo file (NOME: \"dati.txt\", RIGA: 2)\n"
      "w = ottieni una riga di testo da questo file (NOME: \"dati.txt\", RIGA: 0)\n"
      "x = ottieni una riga di testo da questo file (NOME: \"dati.txt\", RIGA: 9)\n"
      "m = ottieni testo da questo file (NOME: \"manca\")");
  EXPECT_EQ(stored(p, "t"), "uno\ndue\ntre\n");
  EXPECT_EQ(stored(p, "v"), "uno\ndue\ntre\n") << "the name in a variable, .txt added";
  EXPECT_EQ(stored(p, "u"), "due\n");
  EXPECT_EQ(stored(p, "w"), "uno\n");
  EXPECT_EQ(stored(p, "x"), "");
  EXPECT_EQ(stored(p, "m"), "");
  EXPECT_TRUE(messages_.empty());
}

}  // namespace
