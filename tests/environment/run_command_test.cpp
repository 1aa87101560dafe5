// `velant run` from end to end: a program file in, its messages, variables,
// exit status and last picture out, as people and scripts use it.
#include <filesystem>

#include "run_fixture.h"

namespace {

using RunCommand = RunFixture;

size_t count(const std::string& text, const std::string& words) {
  size_t n = 0;
  for (size_t at = text.find(words); at != std::string::npos; at = text.find(words, at + 1)) ++n;
  return n;
}

TEST_F(RunCommand, RunsAProgramAndPrintsItsMessagesAndVariables) {
  const RunResult r = run("INIZIA\nX = 5\naumenta X di 2\ndebug X\nN = \"Anna\"\nCICLO CONTINUO\naumenta X di 1\n",
                          "--frames 4 --vars");
  EXPECT_EQ(r.status, 0);
  // The message box's text and an empty line; then the table in its order.
  EXPECT_EQ(r.out.substr(0, 3), "7\n\n");
  // "CICLO CONTINUO" runs from the second drawn frame: frames 2 to 4.
  EXPECT_EQ(r.value("X"), "10") << r.out;
  EXPECT_EQ(r.value("N"), "\"Anna\"");
  EXPECT_EQ(r.value("larghezza_finestra"), "1000");
  // code.txt is the hand-over, and stays; it goes into the save area, and
  // the folder the command ran in gets nothing new.
  EXPECT_TRUE(std::filesystem::exists(folder_ / SAVE_AREA / "code.txt"));
  EXPECT_FALSE(std::filesystem::exists(folder_ / "code.txt"));
}

TEST_F(RunCommand, AProgramErrorLetsTheStatementsUnderWayFinish) {
  // The statements after an error in the same block still run, a later
  // "debug" still shows, a second error shows its own message.
  const RunResult r = run("INIZIA\nX = 0\nZ = 0\naumenta X di 2*(1+)\naumenta Z di 1\ndebug \"dopo\"\n"
                          "aumenta X di 3^-2\nCICLO CONTINUO\n",
                          "--frames 10 --vars");
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(count(r.out, "Esecuzione fallita: impossibile interpretare correttamente il codice!"), 2u) << r.out;
  EXPECT_NE(r.out.find("\ndopo\n\n"), std::string::npos) << r.out;
  EXPECT_EQ(r.value("Z"), "1");

  // Every literal division by zero shows its message at the start, and nothing runs.
  const RunResult zero = run("INIZIA\nX = 10/0\nY = 4/0\ndebug \"mai\"\nCICLO CONTINUO\n", "--frames 10");
  EXPECT_EQ(zero.status, 1);
  EXPECT_EQ(count(zero.out, "Errore: non si può dividere per zero!"), 2u) << zero.out;
  EXPECT_EQ(zero.out.find("mai"), std::string::npos);
}

TEST_F(RunCommand, TheTokenListingPrintsItsMessagesToStandardError) {
  folder_.write("zero.txt", "INIZIA\nX = 1/0\nCICLO CONTINUO\n");
  const std::string command =
      "cd '" + folder_.path().string() + "' && '" VELANT_BINARY "' tokens zero.txt >out.txt 2>err.txt";
  EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 1);
  EXPECT_EQ(read_whole_file(folder_ / "err.txt"), "Errore: non si può dividere per zero!\n\n");
  EXPECT_EQ(std::filesystem::file_size(folder_ / "out.txt"), 0u);
}

TEST_F(RunCommand, UsageAndFileErrorsAreStatusTwo) {
  for (const char* words : {" run", " run nessun_file.txt --headless", " run x.txt --frames tre"}) {
    const std::string command = VELANT_BINARY + std::string(words) + " 2>/dev/null";
    EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 2) << words;
  }
}

TEST_F(RunCommand, TheGridShowsUntilABackgroundColourReplacesIt) {
  ASSERT_EQ(run("INIZIA\nX = 1\nCICLO CONTINUO\n", "--frames 3 --screenshot schermo.png").status, 0);
  const Image grid = picture();
  ASSERT_EQ(grid.width, 1000);
  ASSERT_EQ(grid.height, 700);
  EXPECT_TRUE(shows(grid, 12, 12, WHITE)) << "white between the lines";
  EXPECT_TRUE(shows(grid, 50, 40, {192, 192, 192})) << "a grid line";

  ASSERT_EQ(run("INIZIA\ncolore_sfondo = rosso\nCICLO CONTINUO\n", "--frames 3 --screenshot schermo.png").status, 0);
  const Image red = picture();
  EXPECT_TRUE(shows(red, 12, 12, RED));
  EXPECT_TRUE(shows(red, 50, 40, RED)) << "no grid line";
}

TEST_F(RunCommand, OnlyWhatTheLoopDrawsStaysOnAWindowOfTheProgramsSize) {
  ASSERT_EQ(run("INIZIA\nlarghezza_finestra = 400\naltezza_finestra = 300\n"
                "disegna cerchio (X: 100, Y: 100, RAGGIO: 50, COLORE: rosso)\n"
                "CICLO CONTINUO\ndisegna cerchio (X: 300, Y: 100, RAGGIO: 50, COLORE: blu)\n",
                "--frames 3 --screenshot schermo.png")
                .status,
            0);
  const Image picture = this->picture();
  EXPECT_EQ(picture.width, 400);
  EXPECT_EQ(picture.height, 300);
  // "INIZIA" drew once, before a frame cleared it; the loop draws in every frame.
  EXPECT_TRUE(shows(picture, 110, 110, WHITE)) << "the grid's white, not the red circle";
  EXPECT_TRUE(shows(picture, 310, 110, BLUE));
}

}  // namespace

namespace {

TEST_F(RunCommand, TheCheckBeforeTheRunStopsAFaultAndWarnsOfASingleRun) {
  const RunResult fault = run("INIZIA\nCICLO CONTINUO\nse X è uguale a 1 allora\nX = 2\n", "--frames 2");
  EXPECT_EQ(fault.status, 1);
  EXPECT_EQ(fault.out.find("ERRORE: una parentesi graffa non è stata chiusa"), 0u) << fault.out;
  EXPECT_FALSE(std::filesystem::exists(folder_ / SAVE_AREA / "code.txt")) << "nothing goes to the run";

  const RunResult once = run("INIZIA\nX = 5\n", "--frames 3 --vars");
  EXPECT_EQ(once.status, 0);
  EXPECT_EQ(once.out.find("ATTENZIONE: non hai utilizzato l'evento CICLO CONTINUO"), 0u) << once.out;
  EXPECT_EQ(once.value("X"), "5");
}

}  // namespace
