// The example games from end to end, as a learner runs them: a catch game
// clicked, bricks hit by the ball, an aquarium whose clicked fish speaks.
#include <filesystem>

#include "run_fixture.h"

namespace {

class ExampleGames : public RunFixture {
 protected:
  // Runs examples/`name`.txt from the test's folder, with the examples' pictures beside it.
  RunResult play(const std::string& name, const std::string& options) {
    const std::filesystem::path examples = std::filesystem::path(VELANT_SOURCE_DIR) / "examples";
    std::filesystem::copy(examples / "immagini", folder_.path() / "immagini",
                          std::filesystem::copy_options::overwrite_existing | std::filesystem::copy_options::recursive);
    return run(read_whole_file(examples / (name + ".txt")), "--frames 90 --vars --screenshot schermo.png " + options);
  }
};

TEST_F(ExampleGames, AClickedOrangeScoresAndGoes) {
  // The first orange falls from (500, 0) at 3 pixels a frame: near y = 87 at frame 30, y = 267 at frame 90.
  constexpr Rgb ORANGE{240, 138, 36};
  const RunResult missed = play("acchiappa_le_arance", "");
  EXPECT_EQ(missed.status, 0) << missed.out;
  EXPECT_EQ(missed.value("punti"), "0");
  EXPECT_TRUE(shows(picture(), 500, 267, ORANGE, 50));
  const RunResult caught = play("acchiappa_le_arance", "--click 500,87@30");
  EXPECT_EQ(caught.value("punti"), "1") << caught.out;
  EXPECT_FALSE(shows(picture(), 500, 267, ORANGE, 50)) << "the orange caught is gone";
}

TEST_F(ExampleGames, TheBallKnocksOutABrick) {
  const RunResult r = play("mattoni", "");
  EXPECT_EQ(r.status, 0) << r.out;
  EXPECT_EQ(r.value("rimasti"), "15");
  EXPECT_TRUE(shows(picture(), 125, 95, {192, 70, 46}, 30)) << "the bricks far from the ball stand";
}

TEST_F(ExampleGames, TheClickedFishSaysHello) {
  const RunResult quiet = play("acquario", "");
  EXPECT_EQ(quiet.value("parla"), "0");
  const Image water = picture();
  // Nemo swims left from (300, 200) at 2 pixels a frame: at frame 60 it stands near x = 184.
  const RunResult r = play("acquario", "--click 215,222@60");
  EXPECT_EQ(r.status, 0) << r.out;
  EXPECT_EQ(r.value("parla"), "29") << "a minute of speech, half gone";
  const Image talking = picture();
  EXPECT_TRUE(shows(talking, 230, 145, WHITE, 20)) << "the balloon above the fish";
  EXPECT_FALSE(shows(water, 230, 145, WHITE, 20)) << "no balloon without the click";
}

TEST_F(ExampleGames, ABalloonNearTheRightEdgeStaysInsideTheWindow) {
  const RunResult r = run(
      "INIZIA\ncolore_sfondo = 16711680\ncrea un esemplare (OGGETTO: \"pesce\", NOME: \"a\", X: 960, Y: 300)\n"
      "CICLO CONTINUO\nfai parlare un elemento (ELEMENTO: \"a\", DICE: \"Ciao a tutti quanti\")\n",
      "--frames 5 --screenshot schermo.png");
  EXPECT_EQ(r.status, 0) << r.out;
  const Image shown = picture();
  // The box ends 10 pixels short of the edge, whatever the text's width; its top stands 50 above the text's height.
  bool balloon_inside = false;
  for (int y = 220; y < 260; ++y) balloon_inside = balloon_inside || shows(shown, 985, y, {238, 238, 238}, 20);
  EXPECT_TRUE(balloon_inside) << "the balloon reaches in to x = 990";
  for (int y = 200; y < 280; ++y) EXPECT_TRUE(shows(shown, 995, y, BLUE, 10)) << "nothing of it past x = 990, y = " << y;
}

TEST_F(ExampleGames, AStampStaysWhenItsElementGoesUntilTheStampsAreCleared) {
  const std::string program =
      "INIZIA\ncolore_sfondo = 16711680\ncrea un esemplare (OGGETTO: \"p\", NOME: \"a\", X: 300, Y: 300)\nt = 0\n"
      "CICLO CONTINUO\naumenta t di 1\nse t = 3 allora\n  timbra con questo elemento (ELEMENTO: \"a\")\n"
      "  distruggi un esemplare (ESEMPLARE: a)\n}\n";
  constexpr Rgb ORANGE{240, 138, 36};
  ASSERT_EQ(run(program, "--frames 10 --screenshot schermo.png").status, 0);
  EXPECT_TRUE(shows(picture(), 300, 300, ORANGE, 50)) << "the stamp of the ball that went";
  ASSERT_EQ(run(program + "se t = 6 allora\n  cancella timbri\n}\n", "--frames 10 --screenshot schermo.png").status, 0);
  EXPECT_TRUE(shows(picture(), 300, 300, BLUE, 10)) << "cleared";
}

}  // namespace
