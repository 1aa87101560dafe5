// Real key presses on the X display reach a text box in a real window
// (xdotool types an accented letter by mapping it to a spare key for a
// moment, so those go slowly, one by one):
// xdotool types into it while frames run, then the widget's text and the
// window's pixels are read back. The picture is kept as
// typing_window.png beside the test program for a person to look at.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <future>

#include "environment/text_box_room.h"
#include "environment/text_control/input_text.h"
#include "runtime/Code/Builtins.h"
#include "runtime/Graphics/ImageFile.h"
#include "runtime/Graphics/Screen.h"
#include "runtime/IO/Input.h"
#include "runtime/Object/Objects.h"
#include "runtime/Platform/Headless.h"
#include "runtime/Platform/Window.h"
#include "runtime/Room/Room.h"
#include "runtime/Run/Frame.h"
#include "support/test_pictures.h"

namespace {

TEST(TypingInAWindow, RealKeysReachTheBoxWhichShowsTextCaretAndSelection) {
  if (!std::getenv("DISPLAY") || std::system("command -v xdotool > /dev/null") != 0) {
    GTEST_SKIP() << "needs an X display and xdotool";
  }
  // This test, alone of the suite, shows its window on the X display (ctest runs each test in a process of its own).
  setenv("SDL_VIDEODRIVER", "x11", 1);
  register_runtime_builtins();
  platform::set_headless(false);
  platform::Window& window = platform::make_window(false);
  window.create(600, 160, "Velant scrittura", {});
  open_text_box_room(600, 160);
  ObjInputText& box = made_box("input_text_create_multiline", {RValue::number(20), RValue::number(20),
                                                               RValue::number(560), RValue::number(120),
                                                               RValue::number(-1), RValue::number(-1)});
  RValue enable[] = {RValue::number(box.id), RValue::boolean(true)}, ignored;
  builtin_call("input_text_set_enabled", ignored, nullptr, nullptr, 2, enable);

  std::future<int> typing = std::async(std::launch::async, [] {
    return std::system(
        "timeout 30 xdotool search --sync --onlyvisible --name '^Velant scrittura$' windowfocus --sync %1 "
        "sleep 0.5 type --delay 60 'perch' && xdotool type --delay 250 'é è' && xdotool type --delay 60 ' cos' && "
        "xdotool type --delay 250 'ì' && sleep 0.2 && xdotool key Return && sleep 0.2 && "
        "xdotool type --delay 60 'seconda riga' && xdotool key shift+Home");
  });
  // Frames run while the keys arrive, and a few more after.
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(40);
  for (int after = 0; after < 10 && std::chrono::steady_clock::now() < deadline;) {
    window.poll_events(input_from_window());
    frame_run();
    if (typing.wait_for(std::chrono::milliseconds(5)) == std::future_status::ready) ++after;
  }
  ASSERT_EQ(typing.get(), 0);
  EXPECT_EQ(box.text_utf8(), "perché è così\nseconda riga");
  EXPECT_EQ(box.selection_start_ordered, 15);
  EXPECT_EQ(box.selection_end_ordered, 27) << "Shift+Home selected the second line";

  Image shown;
  ASSERT_TRUE(screen_read(shown));
  image_save_png("typing_window.png", shown);
  const int line = static_cast<int>(box.line_separation);
  // The first line: dark text on white. The second: white text on the dark selection.
  EXPECT_GT(count_colour(shown, 20, 20, 200, 20 + line - 1, BLACK, 40), 30);
  EXPECT_GT(count_colour(shown, 20, 20 + line, 80, 20 + 2 * line - 1, {102, 102, 102}, 20), 200)
      << "the selection's back";
  EXPECT_GT(count_colour(shown, 20, 20 + line, 80, 20 + 2 * line - 1, WHITE, 40), 30) << "its white letters";
  EXPECT_EQ(count_colour(shown, 300, 20 + line, 580, 20 + 2 * line - 1, {102, 102, 102}, 20), 0)
      << "nothing selected past it";

  // End drops the selection: the caret shows behind the last letter.
  typing = std::async(std::launch::async, [] { return std::system("xdotool key End"); });
  for (int after = 0; after < 5;) {
    window.poll_events(input_from_window());
    frame_run();
    if (typing.wait_for(std::chrono::milliseconds(5)) == std::future_status::ready) ++after;
  }
  ASSERT_FALSE(box.has_selection());
  ASSERT_TRUE(screen_read(shown));
  image_save_png("typing_window_caret.png", shown);
  const int caret_x = 20 + static_cast<int>(box.cursor_offset_x);
  EXPECT_GE(count_colour(shown, caret_x, 20 + line, caret_x + 1, 20 + 2 * line - 1, BLACK, 40),
            static_cast<int>(box.char_height) - 2)
      << "the caret";
  EXPECT_GT(count_colour(shown, 20, 20 + line, 80, 20 + 2 * line - 1, WHITE, 10), 61 * line / 2)
      << "the second line is back to dark letters on white";

  close_text_box_room();
}

}  // namespace
