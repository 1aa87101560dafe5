// `velant run` from end to end: a program file in, its messages, variables,
// exit status and last picture out, as people and scripts use it.
#include "run_fixture.h"

namespace {

using RunCommand = RunFixture;

TEST_F(RunCommand, RunsAProgramAndPrintsItsMessagesAndVariables) {
  const RunResult r = run("INIZIA\nX = 5\naumenta X di 2\ndebug X\nN = \"Anna\"\nCICLO CONTINUO\naumenta X di 1\n",
                          "--frames 4 --vars");
  EXPECT_EQ(r.status, 0);
  // The message box's text and an empty line; then the table in its order.
  EXPECT_EQ(r.out.substr(0, 3), "7\n\n");
  // "CICLO CONTINUO" runs from the second drawn frame: frames 2 to 4.
  EXPECT_NE(r.out.find("X = 10\n"), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("N = \"Anna\"\n"), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("larghezza_finestra = 1000\n"), std::string::npos);
  // code.txt is the hand-over, and stays.
  EXPECT_TRUE(std::filesystem::exists(dir_ / "code.txt"));
}

size_t count(const std::string& text, const std::string& words) {
  size_t n = 0;
  for (size_t at = text.find(words); at != std::string::npos; at = text.find(words, at + 1)) ++n;
  return n;
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
  EXPECT_EQ(printed_value(r.out, "Z"), "1");

  // Every literal division by zero shows its message at the start, and nothing runs.
  const RunResult zero = run("INIZIA\nX = 10/0\nY = 4/0\ndebug \"mai\"\nCICLO CONTINUO\n", "--frames 10");
  EXPECT_EQ(zero.status, 1);
  EXPECT_EQ(count(zero.out, "Errore: non si può dividere per zero!"), 2u) << zero.out;
  EXPECT_EQ(zero.out.find("mai"), std::string::npos);

  // An endless "ripeti finche" stops after 250001 passes; the walk runs its
  // body once more, and the run ends as a program error.
  const RunResult endless = run("INIZIA\nN = 0\nripeti finche N >= 0 { aumenta N di 1 }\nCICLO CONTINUO\n",
                                "--frames 3 --vars");
  EXPECT_EQ(endless.status, 1);
  EXPECT_NE(endless.out.find("Ciclo 'ripeti finche' fallito!"), std::string::npos);
  EXPECT_EQ(printed_value(endless.out, "N"), "250002");
}

TEST_F(RunCommand, TheTokenListingPrintsItsMessagesToStandardError) {
  std::ofstream(dir_ / "zero.txt") << "INIZIA\nX = 1/0\nCICLO CONTINUO\n";
  const std::string command = "cd '" + dir_.string() + "' && '" VELANT_BINARY "' tokens zero.txt >out.txt 2>err.txt";
  EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 1);
  std::ifstream err(dir_ / "err.txt");
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(err), {}), "Errore: non si può dividere per zero!\n\n");
  EXPECT_EQ(std::filesystem::file_size(dir_ / "out.txt"), 0u);
}

TEST_F(RunCommand, UsageAndFileErrorsAreStatusTwo) {
  const std::string velant = VELANT_BINARY;
  EXPECT_EQ(WEXITSTATUS(std::system((velant + " run 2>/dev/null").c_str())), 2);
  EXPECT_EQ(WEXITSTATUS(std::system((velant + " run nessun_file.txt --headless 2>/dev/null").c_str())), 2);
  EXPECT_EQ(WEXITSTATUS(std::system((velant + " run x.txt --frames tre 2>/dev/null").c_str())), 2);
}

TEST_F(RunCommand, TheGridShowsUntilABackgroundColourReplacesIt) {
  ASSERT_EQ(run("INIZIA\nX = 1\nCICLO CONTINUO\n", "--frames 3 --screenshot schermo.png").status, 0);
  Image grid = screenshot();
  ASSERT_EQ(grid.width, 1000);
  ASSERT_EQ(grid.height, 700);
  EXPECT_EQ(at(grid, 12, 12)[0], 255) << "white between the lines";
  EXPECT_EQ(at(grid, 12, 12)[2], 255);
  EXPECT_EQ(at(grid, 50, 40)[0], 192) << "a grid line";

  ASSERT_EQ(run("INIZIA\ncolore_sfondo = rosso\nCICLO CONTINUO\n", "--frames 3 --screenshot schermo.png").status, 0);
  Image red = screenshot();
  EXPECT_EQ(at(red, 12, 12)[0], 255);
  EXPECT_EQ(at(red, 12, 12)[1], 0);
  EXPECT_EQ(at(red, 50, 40)[1], 0) << "no grid line";
}

TEST_F(RunCommand, OnlyWhatTheLoopDrawsStaysOnTheScreen) {
  ASSERT_EQ(run("INIZIA\ndisegna cerchio (X: 100, Y: 100, RAGGIO: 50, COLORE: rosso)\n"
                "CICLO CONTINUO\ndisegna cerchio (X: 300, Y: 100, RAGGIO: 50, COLORE: blu)\n",
                "--frames 3 --screenshot schermo.png")
                .status,
            0);
  const Image picture = screenshot();
  ASSERT_EQ(picture.width, 1000);
  // "INIZIA" drew once, before a frame cleared it; the loop draws in every frame.
  EXPECT_EQ(at(picture, 110, 110)[0], 255);
  EXPECT_EQ(at(picture, 110, 110)[1], 255) << "the grid's white, not the red circle";
  EXPECT_EQ(at(picture, 310, 110)[2], 255);
  EXPECT_EQ(at(picture, 310, 110)[0], 0) << "the blue circle";
}

TEST_F(RunCommand, TheWindowTakesTheSizeTheProgramGivesIt) {
  ASSERT_EQ(run("INIZIA\nlarghezza_finestra = 400\naltezza_finestra = 300\nCICLO CONTINUO\n",
                "--frames 3 --screenshot schermo.png --vars")
                .status,
            0);
  const Image small = screenshot();
  EXPECT_EQ(small.width, 400);
  EXPECT_EQ(small.height, 300);
}

}  // namespace
