// Every function of the tables, text files and objects, fed what a learner
// may write in every key: huge numbers, empty and odd texts, words, paths
// outside the save area. The run goes on past each call, or stops with the
// program's error message where the language reads a number that isn't
// one; nothing else escapes, hangs or crashes.
#include "families/families.h"
#include "families/funzioni_sulle_tabelle.h"
#include "language/elements/element_templates.h"
#include "language/evaluation/error_frame.h"
#include "runtime/Run/Frame.h"
#include "support/SaveArea.h"
#include "support/program_fixture.h"

namespace {

const std::vector<std::string> KEYS = {
    "NOME",      "RIGHE",    "COLONNE",    "X",          "Y",          "RIGA",    "COLONNA", "NUOVO_VALORE",
    "PERCORSO",  "TESTO",    "COLONNA_1",  "OGGETTO",    "ELEMENTO",   "ELEMENTO_1", "ELEMENTO_2",
    "ELEMENTO_COINVOLTO", "ESEMPLARE", "VARIABILE", "VALORE", "BASE", "ALTEZZA", "RAGGIO", "VELOCITA",
    "DICE",      "PENSA",    "TASTO",      "IMMAGINE",   "SCALA_ASSE_X", "DURATA", "TIMER_1", "PUNTI"};

const std::vector<std::string> VALUES = {"1e308",   "-1e308", "\"\"",        "ciao", "tutti", "\"a|b|\"",
                                         "99999999999", "-5", "\"/etc/passwd\"", "X*X"};

class StatementsRobustness : public ProgramTest {
 protected:
  void SetUp() override {
    ProgramTest::SetUp();
    define_tabella();
    define_element_objects([] { return -1; });
    objects_prepare();
  }
  SaveArea save_area_;
};

TEST_F(StatementsRobustness, AnyArgumentLetsTheRunGoOn) {
  for (const Family* family : {&funzioni_sulle_tabelle, &funzioni_sui_file_di_testo, &funzioni_sugli_oggetti}) {
    for (const FamilyFunction& f : family->functions) {
      for (const std::string& value : VALUES) {
        std::string arguments;
        for (const std::string& key : KEYS) arguments += (arguments.empty() ? "" : ", ") + key + ": " + value;
        const std::string call = (f.shape == CallShape::Value ? "V = " : "") + std::string(f.name) + " --> (" + arguments + ")";
        forget_programs();
        set_run_stopped_by_error(false);
        ProgramInstance& p = runnable("INIZIA\ncrea un esemplare (OGGETTO: \"sasso\", NOME: \"s\")\n" + call +
                                      "\nfatto = 1\nCICLO CONTINUO\n" + call + "\n");
        guarded_run([&] { run_inizia(p); });
        for (int frame = 1; frame <= 3; ++frame) {
          p.time = frame;
          guarded_run([&] { run_frame(p); });
          frame_run();
        }
        EXPECT_TRUE(stored(p, "fatto") == "1" || run_stopped_by_error()) << call;
      }
    }
  }
}

}  // namespace
