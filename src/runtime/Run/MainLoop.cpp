#include "runtime/Run/MainLoop.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <thread>

#include "runtime/Code/Builtins.h"
#include "runtime/Code/Error.h"
#include "runtime/Graphics/Batch.h"
#include "runtime/Graphics/Blit.h"
#include "runtime/Graphics/ImageFile.h"
#include "runtime/Graphics/Primitives.h"
#include "runtime/Graphics/Surfaces.h"
#include "runtime/IO/Input.h"
#include "runtime/Object/Objects.h"
#include "runtime/Platform/SharedLibrary.h"
#include "runtime/Platform/Gpu.h"
#include "runtime/Platform/Clock.h"
#include "runtime/Platform/Headless.h"
#include "runtime/Platform/Log.h"
#include "runtime/Platform/Window.h"
#include "runtime/Room/Room.h"
#include "runtime/Run/Frame.h"
#include "runtime/Room/FrameState.h"

namespace {

// Options that take the next word as their argument.
bool takes_argument(const std::string& word) {
  return word == "-game" || word == "-exit" || word == "-dir" || word == "-minidumpdir" || word == "-debugoutput" ||
         word == "-sleepmargin" || word == "-monitor";
}

void debug_line(const char* line) { debug_output(line); }

// "splash.png" of the bundle folder, if there is one, five frames long on
// black, filling the window with its proportions kept. A file that can't be
// read shows nothing.
void show_splash(platform::Window& window) {
  constexpr int SPLASH_FRAMES = 5;
  Image image;
  if (!image_load(platform::executable_folder() + "splash.png", image)) return;
  platform::Gpu& gpu = platform::gpu();
  const platform::TextureId texture =
      gpu.create_texture(image.width, image.height, platform::TextureFormat::Rgba8, image.rgba, false);
  const platform::WindowSize size = window.size();
  const double scale = std::min(static_cast<double>(size.width) / image.width,
                                static_cast<double>(size.height) / image.height);
  for (int frame = 0; frame < SPLASH_FRAMES; ++frame) {
    set_base_target(NO_SURFACE, size.width, size.height);
    draw_clear_alpha(0, 1);
    blit({texture, static_cast<double>(image.width), static_cast<double>(image.height), 0, 0,
          static_cast<double>(image.width), static_cast<double>(image.height)},
         {(size.width - image.width * scale) / 2, (size.height - image.height * scale) / 2, 0, 0, scale, scale, 0,
          0xFFFFFFFF});
    batch_flush();
    window.swap();
  }
  gpu.free_texture(texture);
}

// Waits for the next frame: the kernel sleeps for all but the sleep margin,
// a busy loop does the rest, so the frame starts on time.
void wait_for_frame(int64_t wait, int32_t sleep_margin_ms) {
  if (wait <= 0) return;
  const int64_t until = platform::clock_microseconds() + std::min<int64_t>(wait, 3000000);
  const int64_t sleep_ms = (wait - sleep_margin_ms * 1000) / 1000;
  if (sleep_ms > 0) std::this_thread::sleep_for(std::chrono::milliseconds(sleep_ms));
  while (platform::clock_microseconds() < until) {
    std::this_thread::yield();
  }
}

// One run of the game, from start-up to its end; true when it is to restart.
bool run_game(const RuntimeOptions& options, const std::function<void()>& setup_game) {
  debug_line("Create Error Form\n");
  register_runtime_builtins();
  // The game's objects and rooms stand in for the asset package.
  setup_game();
  debug_line("Get Resolution\n");
  debug_line("Create Window\n");
  platform::Window& window = platform::window();
  // The window takes the first room's size; the game's display name is its caption.
  const RoomDescription* first = room_description(0);
  if (!window.create(first ? first->width : 1024, first ? first->height : 768, "Velant", {}) && !options.headless) {
    // Without a window nothing could be shown or typed: say why, and stop.
    std::fprintf(stderr, "Velant non riesce ad aprire la sua finestra: %s\n", window.failure().c_str());
    set_game_exit_status(1);
    return false;
  }
  debug_line("Init Graphics\n");
  debug_line("IO Init\n");
  window.poll_events(input_from_window());
  debug_line("Process Messages\n");
  if (!options.headless) {
    debug_line("Splash!\n");
    show_splash(window);
  }
  debug_line("Start Frame\n");
  debug_line("VM Init\n");
  debug_line("Create Load Form\n");
  debug_line("Do The Work\n");
  debug_line("LoadGameData()\n");
  debug_line("Variable_Global_Init()\n");
  debug_line("PrepareGame()\n");
  objects_prepare();
  debug_line("Finished PrepareGame() \n");
  debug_line("Run_Start\n");
  debug_line("Done ObjectLists\n");
  debug_line("About to startroom\n");
  if (room_count() == 0) {
    debug_line("Game ended before loading first room\n");
    return false;
  }
  if (room_target() == ROOM_NONE) set_room_target(0);
  room_change(true);
  debug_line("**********************************.\n");
  debug_line("Entering main loop.\n");
  debug_line("**********************************.\n");

  int64_t frames = 0;
  bool restart = false;
  for (;;) {
    const int64_t frame_start = platform::clock_microseconds();
    window.poll_events(input_from_window());
    if (window.should_quit()) {
      debug_line("###game_end###254\n");
      break;
    }
    if (window.take_resized()) frame_state().window_resized = true;
    if (room_target() == ROOM_RESTART_GAME) {
      restart = true;
      break;
    }
    const bool going_on = frame_run();
    if (options.after_frame) options.after_frame();
    if (!going_on) break;
    window.swap();
    if (options.max_frames >= 0 && ++frames >= options.max_frames) break;
    if (!options.headless) {
      const int64_t elapsed = platform::clock_microseconds() - frame_start;
      wait_for_frame(frame_wait(frame_state().game_speed, elapsed), options.sleep_margin_ms);
    }
  }
  game_finish();
  rooms_clear();
  objects_clear();
  return restart;
}

}  // namespace

std::vector<std::string> split_command_line(const std::string& line) {
  std::vector<std::string> words;
  std::string word;
  bool quoted = false, any = false;
  for (const char c : line) {
    if (c == '"') {
      quoted = !quoted;
      any = true;
    } else if (static_cast<unsigned char>(c) < 33 && !quoted) {
      if (any) words.push_back(word);
      word.clear();
      any = false;
    } else {
      if (word.size() < 4095) word.push_back(c);
      any = true;
    }
  }
  if (any) words.push_back(word);
  return words;
}

RuntimeOptions parse_command_line(const std::vector<std::string>& words) {
  RuntimeOptions o;
  for (size_t i = 1; i < words.size(); ++i) {
    const std::string& w = words[i];
    const std::string next = takes_argument(w) && i + 1 < words.size() ? words[i + 1] : std::string();
    if (w == "-game") o.game = next;
    else if (w == "-exit") o.exit_game = next;
    else if (w == "-debugoutput") o.debug_output = next;
    else if (w == "-sleepmargin") o.sleep_margin_ms = std::atoi(next.c_str());
    else if (w == "-outputdebugstring") o.output_debug_string = true;
    else if (w == "-headless") o.headless = true;
    else if (w == "-noaudio") o.no_audio = true;
    else if (w == "-inawindow") o.in_a_window = true;
    else if (w == "-noerrors") o.no_errors = true;
    if (takes_argument(w)) ++i;
  }
  return o;
}

int64_t frame_wait(int32_t frame_rate, int64_t elapsed) {
  const int64_t share = 1000000 / (frame_rate > 0 ? frame_rate : 30);
  return std::clamp<int64_t>(share - elapsed, 0, 1000000);
}

void unpack_folder_files() {
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(".", error)) {
    const std::string name = entry.path().filename().string();
    if (!entry.is_regular_file(error) || name.find('@') == std::string::npos) continue;
    std::string target = name;
    std::replace(target.begin(), target.end(), '@', '/');
    const std::filesystem::path path(target);
    std::filesystem::create_directories(path.parent_path(), error);
    std::filesystem::rename(entry.path(), path, error);
  }
}

int runtime_run(const RuntimeOptions& options, const std::function<void()>& setup_game) {
  std::FILE* debug_file = nullptr;
  if (!options.debug_output.empty()) debug_file = std::fopen(options.debug_output.c_str(), "w");
  set_debug_output_file(debug_file ? debug_file : (options.output_debug_string ? stderr : nullptr));
  platform::set_headless(options.headless);
  platform::set_log(debug_output);
  platform::clock_start();
  unpack_folder_files();
  platform::make_window(options.headless);
  set_game_exit_status(0);
  while (run_game(options, setup_game)) {
  }
  set_debug_output_file(nullptr);
  if (debug_file) std::fclose(debug_file);
  return game_exit_status();
}
