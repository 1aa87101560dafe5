#include <gtest/gtest.h>

#include "runtime/Object/Objects.h"
#include "runtime/Platform/Window.h"
#include "runtime/Room/Room.h"
#include "runtime/Run/MainLoop.h"

namespace {

TEST(CommandLine, WordsSplitAtBlanksOutsideQuotes) {
  EXPECT_EQ(split_command_line("velant  -game \"/tmp/my game/data.win\"\t-headless"),
            (std::vector<std::string>{"velant", "-game", "/tmp/my game/data.win", "-headless"}));
  EXPECT_EQ(split_command_line("a\"b c\"d"), (std::vector<std::string>{"ab cd"}));
  EXPECT_EQ(split_command_line(std::string(5000, 'x'))[0].size(), 4095u);
  EXPECT_TRUE(split_command_line("   ").empty());
}

TEST(CommandLine, OptionsAreReadAndUnknownWordsSkipped) {
  const RuntimeOptions o = parse_command_line(
      {"velant", "-weird", "-game", "pkg.win", "-noaudio", "-inawindow", "-sleepmargin", "4", "-debugoutput", "log.txt",
       "-headless", "-minidumpdir", "-headless-not"});
  EXPECT_EQ(o.game, "pkg.win");
  EXPECT_TRUE(o.no_audio);
  EXPECT_TRUE(o.in_a_window);
  EXPECT_TRUE(o.headless);
  EXPECT_EQ(o.sleep_margin_ms, 4);
  EXPECT_EQ(o.debug_output, "log.txt");
  EXPECT_FALSE(parse_command_line({"velant", "-Headless"}).headless);  // compared in full, case and all
  EXPECT_EQ(parse_command_line({"velant"}).sleep_margin_ms, 10);
}

TEST(FramePacing, WaitIsTheFramesShareLessTheTimeSpent) {
  EXPECT_EQ(frame_wait(30, 0), 33333);
  EXPECT_EQ(frame_wait(30, 10000), 23333);
  EXPECT_EQ(frame_wait(30, 50000), 0);
  EXPECT_EQ(frame_wait(0, 0), 33333);  // no speed: 30 a second
  EXPECT_EQ(frame_wait(1, 0), 1000000);
}

// A game of one room whose one instance counts its frames and presses the
// window's close button at frame 5.
TEST(MainLoop, RunsFramesUntilTheCloseRequestAndStopsAtMaxFrames) {
  static int frames;
  frames = 0;
  const auto setup = [] {
    const int32_t counter = object_add("counter");
    object_set_event(counter, ev::STEP, ev::STEP_NORMAL, [](CInstance&, CInstance*) {
      if (++frames == 5) platform::window().simulate_close_request();
    });
    room_add(RoomDescription{"stanza", 320, 240, false, 30, {{counter, 0, 0, nullptr}}, nullptr});
  };
  RuntimeOptions options;
  options.headless = true;
  EXPECT_EQ(runtime_run(options, setup), 0);
  EXPECT_EQ(frames, 5);
  EXPECT_EQ(room_count(), 0);  // everything is freed at the end

  frames = -1000;  // never reaches the close
  options.max_frames = 12;
  EXPECT_EQ(runtime_run(options, setup), 0);
  EXPECT_EQ(frames, -1000 + 12);
}

TEST(MainLoop, GameEndGivesItsExitStatusAndRestartRunsTheGameAgain) {
  static int starts;
  starts = 0;
  const auto setup = [] {
    const int32_t o = object_add("o");
    object_set_event(o, ev::CREATE, 0, [](CInstance&, CInstance*) {
      if (++starts == 1) set_room_target(ROOM_RESTART_GAME);
      else game_end(3);
    });
    room_add(RoomDescription{"stanza", 320, 240, false, 30, {{o, 0, 0, nullptr}}, nullptr});
  };
  RuntimeOptions options;
  options.headless = true;
  options.max_frames = 100;
  EXPECT_EQ(runtime_run(options, setup), 3);
  EXPECT_EQ(starts, 2);
}

}  // namespace
