#include "runtime/Run/MainLoop.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <tuple>
#include <utility>

#include "runtime/Object/Objects.h"
#include "runtime/Platform/Window.h"
#include "runtime/Room/Room.h"
#include "support/TempFolder.h"

namespace {

// Makes `folder` the current folder while it lives: a run unpacks the files of the current folder.
class InFolder {
 public:
  explicit InFolder(const TempFolder& folder) { std::filesystem::current_path(folder.path()); }
  ~InFolder() { std::filesystem::current_path(previous_); }

 private:
  std::filesystem::path previous_ = std::filesystem::current_path();
};

TEST(CommandLine, WordsSplitAtBlanksOutsideQuotesAndOptionsAreRead) {
  EXPECT_EQ(split_command_line("velant  -game \"/tmp/my game/data.win\"\t-headless"),
            (std::vector<std::string>{"velant", "-game", "/tmp/my game/data.win", "-headless"}));
  EXPECT_EQ(split_command_line("a\"b c\"d"), (std::vector<std::string>{"ab cd"}));
  EXPECT_EQ(split_command_line(std::string(5000, 'x'))[0].size(), 4095u);
  EXPECT_TRUE(split_command_line("   ").empty());

  const RuntimeOptions o = parse_command_line({"velant", "-weird", "-game", "pkg.win", "-noaudio", "-inawindow",
                                               "-sleepmargin", "4", "-debugoutput", "log.txt", "-headless",
                                               "-minidumpdir", "-headless-not"});
  EXPECT_EQ(std::tuple(o.game, o.debug_output, o.sleep_margin_ms, o.no_audio, o.in_a_window, o.headless),
            std::tuple("pkg.win", "log.txt", 4, true, true, true));
  EXPECT_FALSE(parse_command_line({"velant", "-Headless"}).headless) << "compared in full, case and all";
  EXPECT_EQ(parse_command_line({"velant"}).sleep_margin_ms, 10);
}

TEST(FramePacing, WaitIsTheFramesShareLessTheTimeSpent) {
  // Frame rate, time spent, wait; no speed counts as 30 a second.
  for (const auto& [rate, spent, wait] : {std::tuple{30, 0, 33333}, {30, 10000, 23333}, {30, 50000, 0}, {0, 0, 33333},
                                          {1, 0, 1000000}})
    EXPECT_EQ(frame_wait(rate, spent), wait) << rate << " a second, " << spent << " spent";
}

TEST(UnpackFolderFiles, NamesWithAtSignsBecomePaths) {
  TempFolder folder("velant_unpack");
  for (const char* name : {"Suoni@miao.wav", "a@b@c.txt", "normale.txt"}) folder.write(name, name);
  {
    const InFolder inside(folder);
    unpack_folder_files();
  }
  // Each file of the folder as "path=what it holds".
  std::set<std::string> files;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.path())) {
    if (!entry.is_regular_file()) continue;
    std::ostringstream text;
    text << std::ifstream(entry.path()).rdbuf();
    files.insert(entry.path().lexically_relative(folder.path()).string() + "=" + text.str());
  }
  EXPECT_EQ(files, (std::set<std::string>{"Suoni/miao.wav=Suoni@miao.wav", "a/b/c.txt=a@b@c.txt",
                                             "normale.txt=normale.txt"}));
}

// A game of one room whose one instance restarts the game on its first
// Create, presses the window's close button at frame 5 and ends the game
// with status 3 at frame 100.
TEST(MainLoop, RunsFramesUntilCloseEndOrMaxFramesAndRestartsWhenAsked) {
  const TempFolder folder("velant_run");
  const InFolder inside(folder);
  static int starts, frames;
  starts = frames = 0;
  const auto setup = [] {
    const int32_t o = object_add("o");
    object_set_event(o, ev::CREATE, 0, [](CInstance&, CInstance*) {
      if (++starts == 1) set_room_target(ROOM_RESTART_GAME);
    });
    object_set_event(o, ev::STEP, ev::STEP_NORMAL, [](CInstance&, CInstance*) {
      if (++frames == 5) platform::window().simulate_close_request();
      if (frames == 100) game_end(3);
    });
    room_add(RoomDescription{"stanza", 320, 240, false, 30, {{o, 0, 0, nullptr}}, nullptr});
  };
  EXPECT_EQ(runtime_run(RuntimeOptions{.headless = true}, setup), 0);
  EXPECT_EQ(std::pair(starts, frames), std::pair(2, 5));
  EXPECT_EQ(room_count(), 0) << "everything is freed at the end";
  frames = -1000;  // never reaches the close
  EXPECT_EQ(runtime_run(RuntimeOptions{.headless = true, .max_frames = 12}, setup), 0);
  EXPECT_EQ(frames, -1000 + 12);
  frames = 90;
  EXPECT_EQ(runtime_run(RuntimeOptions{.headless = true}, setup), 3);
  EXPECT_EQ(frames, 100);
}

}  // namespace
