#include "language/tokenizer/controllo_errori.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/TempFolder.h"

namespace {

bool online() { return true; }
bool offline() { return false; }

// The outcome in short: "ok", "W1", or the start of the failure's text.
std::string outcome(const std::string& program, bool (*network)() = online) {
  std::string to_run = program;
  const PreRunCheck check = controllo_errori(program + "filler ", to_run, network);
  if (!check.passed) return check.message;
  return check.single_run ? "W1" : "ok";
}

TEST(ControlloErrori, EachFaultHasItsMessage) {
  const std::string F2 = "ERRORE: non puoi scrivere codice prima dell'evento INIZIA",
                    F3 = "ERRORE: non puoi scrivere più volte l'evento INIZIA",
                    F4 = "ERRORE: non puoi scrivere più volte l'evento CICLO CONTINUO",
                    F5 = "ERRORE: una parentesi tonda non è stata chiusa o aperta correttamente",
                    F6 = "ERRORE: un costrutto ripeti per n volte non è stato scritto correttamente",
                    F7 = "ERRORE: una parentesi graffa non è stata chiusa o aperta correttamente, oppure manca un "
                         "punto \" . \" alla fine del costrutto \"allora\"";
  const struct {
    const char* program;
    std::string expected;
  } rows[] = {
      {"INIZIA\nX = 1\nCICLO CONTINUO\ndisegna cerchio (X: 1)\n", "ok"},
      {"X = 1\n", "ok"},  // nothing but statements: both blocks are added
      {"// prima di tutto\nINIZIA\nX = 1\nCICLO CONTINUO\n", "ok"},  // a comment isn't code
      {"/* un\ncommento */INIZIA\nCICLO CONTINUO\n", "ok"},
      {"X = 1\nINIZIA\nCICLO CONTINUO\n", F2},
      {"INIZIA\nINIZIA\nCICLO CONTINUO\n", F3},
      {"INIZIA\nCICLO CONTINUO\nCICLO CONTINUO\n", F4},
      {"INIZIA\nCICLO CONTINUO\ndisegna cerchio (X: 1\n", F5},
      {"INIZIA\nX = (2 + 3) * 4\nCICLO CONTINUO\n", "ok"},  // arithmetic brackets
      {"INIZIA\nT = \"una { e una (\"\nCICLO CONTINUO\n", "ok"},  // a string is harmless
      {"INIZIA\nCICLO CONTINUO\nse X è uguale a 1 allora\nX = 2\n", F7},
      {"INIZIA\nCICLO CONTINUO\nse X è uguale a 1 allora {\nX = 2\n}\n", F7},  // "allora" opens the block itself
      {"INIZIA\nCICLO CONTINUO\nse X è uguale a 1 allora\nX = 2 .\n", "ok"},  // a stop closes the block
      {"INIZIA\nCICLO CONTINUO\nse X è uguale a 1 allora\nX = rosso.\n", "ok"},     // behind a letter
      {"INIZIA\nCICLO CONTINUO\nse X è uguale a 1 allora\nX = f(1).\n", "ok"},     // behind a bracket
      {"INIZIA\nCICLO CONTINUO\nse X è uguale a 1 allora\nX = 2.\n", F7},          // a decimal point isn't a stop
      {"INIZIA\nCICLO CONTINUO\nse X è uguale a 1 allora\nX = 2\n}\n", "ok"},
      {"INIZIA\nCICLO CONTINUO\nripeti per 3 volte {\nX = 2\n}\n", "ok"},
      {"INIZIA\nCICLO CONTINUO\nripeti per 3 {\nX = 2\n}\n", F6},
      {"INIZIA\nX = 1\n", "W1"},
  };
  for (const auto& row : rows) EXPECT_EQ(outcome(row.program), row.expected) << row.program;
}

TEST(ControlloErrori, ASingleRunIsAWarningAndWebResourcesNeedTheNetwork) {
  std::string to_run = "INIZIA\nX = 1";
  const PreRunCheck check = controllo_errori(to_run + "filler ", to_run, online);
  EXPECT_TRUE(check.passed);
  EXPECT_EQ(to_run, "INIZIA\nX = 1 CICLO CONTINUO");
  EXPECT_EQ(check.message.substr(0, 43), "ATTENZIONE: non hai utilizzato l'evento CIC");
  EXPECT_NE(check.message.find("\r\n\t\r\n\tTutte le funzioni"), std::string::npos);

  const std::string web = "INIZIA\nX = ottieni immagine (NOME: \"internet/a.png\")\nCICLO CONTINUO\n";
  EXPECT_EQ(outcome(web, online), "ok");
  EXPECT_EQ(outcome(web, offline).substr(0, 60), "ERRORE: questo codice ha bisogno della connessione internet ");
}

TEST(ControlloErrori, EveryExamplePasses) {
  for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::path(VELANT_SOURCE_DIR) / "examples")) {
    if (entry.path().extension() != ".txt") continue;
    EXPECT_EQ(outcome(read_whole_file(entry.path())), "ok") << entry.path().filename();
  }
}

}  // namespace
