// Velant as a new learner meets it: the real program in a real window on
// the X display, driven by real key presses and clicks (xdotool) and read
// back from the X server's pixels. It types a program, runs it, comes back
// with Esc, meets the check's fault, is asked before closing unsaved work,
// and is killed in the middle of typing to find its work recovered at the
// next start. The pictures stay beside the test program as
// editor_window_*.png for a person to look at.
#include "environment/editor_window/velant_window.h"
#include "support/CloseRequest.h"

namespace {

using namespace std::chrono_literals;
using namespace velant_window;

TEST(EditorWindow, ALearnerWritesRunsMeetsAFaultClosesAndRecoversAfterACrash) {
  if (!x_tools_present()) GTEST_SKIP() << "needs an X display, xdotool and xwd";
  const XServerHold keep_server_up = hold_x_server();
  ASSERT_NE(keep_server_up, nullptr);
  TempFolder data("velant_window");
  const std::filesystem::path area = data.path() / "Velant";
  const Rgb header = rgb_of(make_colour_hsv(96, 150, 150));
  const auto type_lines = [](const Velant& velant, const std::vector<std::string>& lines) {
    for (const std::string& line : lines) ASSERT_TRUE(velant.type(line) && velant.key("Return"));
  };

  Velant velant(data.path().string());
  ASSERT_NE(velant.window(), 0u) << velant.report();
  Image shown = velant.screen();
  EXPECT_TRUE(near(shown, 250, 10, header)) << "the header strip";
  EXPECT_TRUE(near(shown, 600, 400, {255, 255, 255})) << "an empty page";

  // A program, typed as a learner would, and run with F5.
  type_lines(velant, {"INIZIA", "CICLO CONTINUO", "disegna cerchio (X: 300, Y: 300, RAGGIO: 80, COLORE: rosso)"});
  ASSERT_TRUE(velant.type("scrivi (\"ciao\")"));
  shown = velant.screen("program", 1500ms);
  EXPECT_GT(inked(shown, 50, 50, 500, 110), 300) << "the program's text";
  ASSERT_TRUE(velant.key("F5"));
  shown = velant.screen("run", 1500ms);
  EXPECT_TRUE(near(shown, 300, 300, {255, 0, 0}, 40)) << "the run draws the red circle";
  EXPECT_EQ(read_whole_file(area / "code.txt"),
            "INIZIA\nCICLO CONTINUO\ndisegna cerchio (X: 300, Y: 300, RAGGIO: 80, COLORE: rosso)\nscrivi (\"ciao\")");

  // Esc: the editor as it was, the caret still at the end of the text.
  ASSERT_TRUE(velant.key("Escape"));
  shown = velant.screen("back", 1500ms);
  EXPECT_TRUE(near(shown, 250, 10, header));
  ASSERT_TRUE(velant.type(" ok"));
  EXPECT_TRUE(wait_until([&] { return read_whole_file(area / "backup.txt").ends_with("scrivi (\"ciao\") ok"); }))
      << read_whole_file(area / "backup.txt");

  // A brace left open: the check's message, and the program stays in the editor.
  ASSERT_TRUE(velant.key("ctrl+a"));
  type_lines(velant, {"INIZIA", "se (1 = 1) allora", "scrivi (1)"});
  ASSERT_TRUE(velant.type("CICLO CONTINUO"));
  ASSERT_TRUE(wait_until([&] { return read_whole_file(area / "backup.txt").ends_with("CICLO CONTINUO"); }));
  ASSERT_TRUE(velant.key("F5"));
  // A message box is a second window called "Velant".
  const auto message_up = [&velant] {
    const std::vector<unsigned long> ids = velant_windows();
    return std::any_of(ids.begin(), ids.end(), [&velant](unsigned long id) { return id != velant.window(); });
  };
  ASSERT_TRUE(wait_until(message_up)) << "the check's message box";
  EXPECT_TRUE(read_whole_file(area / "code.txt").ends_with("scrivi (\"ciao\")")) << "no run was handed over";
  for (const unsigned long id : velant_windows()) {
    if (id == velant.window()) continue;
    Image message;
    ASSERT_TRUE(window_capture::capture(id, message));
    image_save_png("editor_window_fault_message.png", message);
    // Its one button, "OK", fills the bottom of the box.
    sh("xdotool mousemove --window " + std::to_string(id) + " " + std::to_string(message.width / 2) + " " +
       std::to_string(message.height - 15) + " click 1");
  }
  ASSERT_TRUE(wait_until([&] { return !message_up(); }));
  shown = velant.screen("fault");
  EXPECT_TRUE(near(shown, 250, 10, header)) << "still the editor";
  EXPECT_GT(inked(shown, 50, 50, 200, 110), 200) << "with the program in it";

  // Closing with unsaved work: the question, and "Annulla" keeps everything.
  ASSERT_TRUE(send_close_request(velant.window()));
  shown = velant.screen("question");
  EXPECT_TRUE(near(shown, 650, 200, {56, 128, 80}, 35)) << "the question's green band";
  EXPECT_NE(read_whole_file(area / "setting.ini").find("Crash=\"0.000000\""), std::string::npos);
  ASSERT_TRUE(velant.click(700, 550));
  EXPECT_TRUE(near(velant.screen(), 650, 200, {255, 255, 255})) << "the question is gone";
  EXPECT_TRUE(velant.running());

  // Killed in the middle of typing: the next start recovers the backup. A
  // click below the text gives the box the keys again, with the caret at the end.
  ASSERT_TRUE(velant.click(600, 400));
  std::thread typing([&velant] { velant.type("disegna rettangolo (X: 10, Y: 10, LARGHEZZA: 100)"); });
  std::this_thread::sleep_for(1500ms);
  velant.kill(SIGKILL);
  typing.join();
  const std::string backup = read_whole_file(area / "backup.txt");
  EXPECT_NE(backup.find("CICLO CONTINUOdisegna"), std::string::npos) << backup;

  Velant again(data.path().string());
  ASSERT_NE(again.window(), 0u) << again.report();
  shown = again.screen("recovery", 1500ms);
  EXPECT_TRUE(near(shown, 650, 200, {53, 112, 158}, 35)) << "the recovery notice's blue band";
  EXPECT_EQ(read_whole_file(area / "backup.txt"), backup) << "the recovered text is the editor's";
  ASSERT_TRUE(again.click(650, 550));  // "Ok"
  EXPECT_TRUE(near(again.screen(), 650, 200, {255, 255, 255}));
  // The recovered text counts as the starting point: closing asks nothing.
  ASSERT_TRUE(send_close_request(again.window()));
  ASSERT_TRUE(wait_until([&again] { return !again.running(); }));
  EXPECT_EQ(again.exit_status(), 0);
  EXPECT_NE(read_whole_file(area / "setting.ini").find("Crash=\"0.000000\""), std::string::npos);
}

}  // namespace
