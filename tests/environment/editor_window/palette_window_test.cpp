// The palette through the real window: a learner who types nothing opens
// Funzioni, goes down to the drawing functions, picks "disegna cerchio",
// presses F5 and sees the circle. The panel is kept as a picture
// (editor_window_palette_funzioni.png) beside the run's (editor_window_palette_run.png).
#include "environment/editor_window/velant_window.h"

namespace {

using namespace std::chrono_literals;
using namespace velant_window;

TEST(PaletteWindow, AFunctionPickedFromThePanelDrawsWhenRun) {
  if (!x_tools_present()) GTEST_SKIP() << "needs an X display, xdotool and xwd";
  const XServerHold keep_server_up = hold_x_server();
  ASSERT_NE(keep_server_up, nullptr);
  TempFolder data("velant_palette");
  const std::filesystem::path area = data.path() / "Velant";

  Velant velant(data.path().string());
  ASSERT_NE(velant.window(), 0u) << velant.report();
  ASSERT_TRUE(velant.click(410, 23));   // Funzioni
  ASSERT_TRUE(velant.click(370, 120));  // the drawing group
  ASSERT_TRUE(velant.click(550, 105));  // "Disegno geometrico"
  Image shown = velant.screen("palette_funzioni");
  EXPECT_GT(inked(shown, 830, 72, 960, 104), 200) << "the pill of \"disegna cerchio\"";
  ASSERT_TRUE(velant.click(880, 88));
  EXPECT_TRUE(wait_until([&] { return read_whole_file(area / "backup.txt") == "disegna cerchio -->  "; }))
      << read_whole_file(area / "backup.txt");
  shown = velant.screen("palette_inserted");
  EXPECT_EQ(inked(shown, 830, 72, 960, 104), 0) << "the press closed the panel";

  ASSERT_TRUE(velant.key("F5"));
  shown = velant.screen("palette_run", 1500ms);
  EXPECT_TRUE(near(shown, 150, 150, {0, 0, 0})) << "the circle that the call draws with its defaults";
  EXPECT_TRUE(near(shown, 412, 412, {255, 255, 255}));
  ASSERT_TRUE(velant.key("Escape"));
}

}  // namespace
