// Test helper: the real velant program in a real window on the X display,
// driven by xdotool as a person would drive it, and read back from the X
// server's pixels.
#pragma once

#include <gtest/gtest.h>
#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <memory>
#include <sstream>
#include <thread>
#include <vector>

#include <X11/Xlib.h>

#include "runtime/Graphics/Colour.h"
#include "support/TempFolder.h"
#include "support/WindowCapture.h"

extern char** environ;

namespace velant_window {

using namespace std::chrono_literals;

inline bool wait_until(const std::function<bool()>& done, std::chrono::milliseconds limit = 15s) {
  for (const auto end = std::chrono::steady_clock::now() + limit; std::chrono::steady_clock::now() < end;) {
    if (done()) return true;
    std::this_thread::sleep_for(100ms);
  }
  return done();
}

// Whether there is a display to drive and the tools that drive and read it.
inline bool x_tools_present() {
  return std::getenv("DISPLAY") && std::system("command -v xdotool xwd > /dev/null") == 0;
}

// The X server starts afresh when its last client leaves, and refuses
// connections meanwhile: a connection of the test's own keeps it up between
// one velant and the next.
using XServerHold = std::unique_ptr<Display, int (*)(Display*)>;
inline XServerHold hold_x_server() { return {XOpenDisplay(nullptr), XCloseDisplay}; }

inline bool sh(const std::string& command) { return std::system(("timeout 60 " + command).c_str()) == 0; }

inline std::string output_of(const std::string& command) {
  std::string out;
  if (FILE* pipe = popen(command.c_str(), "r")) {
    for (int c; (c = std::fgetc(pipe)) != EOF;) out += static_cast<char>(c);
    pclose(pipe);
  }
  return out;
}

// The ids of the shown windows called "Velant": the program's, and a message
// box's while one is up. (xdotool's own test of visibility loses windows
// once a GTK client has been on the display: the X server's word is asked.)
inline std::vector<unsigned long> velant_windows() {
  std::vector<unsigned long> ids;
  std::istringstream found(output_of("xdotool search --name '^Velant$' 2>/dev/null"));
  for (unsigned long id; found >> id;) {
    if (output_of("xwininfo -id " + std::to_string(id) + " 2>/dev/null").find("IsViewable") != std::string::npos) {
      ids.push_back(id);
    }
  }
  return ids;
}

struct Rgb {
  int r, g, b;
};

inline bool near(const Image& image, int x, int y, Rgb c, int tolerance = 30) {
  if (x < 0 || y < 0 || x >= image.width || y >= image.height) return false;
  const uint8_t* p = &image.rgba[static_cast<size_t>((y * image.width + x) * 4)];
  return std::abs(p[0] - c.r) <= tolerance && std::abs(p[1] - c.g) <= tolerance && std::abs(p[2] - c.b) <= tolerance;
}

// How many pixels of the rectangle stand out from a white page.
inline int inked(const Image& image, int left, int top, int right, int bottom) {
  int n = 0;
  for (int y = top; y <= bottom; ++y) {
    for (int x = left; x <= right; ++x) n += !near(image, x, y, {255, 255, 255}, 60);
  }
  return n;
}

inline Rgb rgb_of(double colour) {
  return {static_cast<int>(colour_get_red(colour)), static_cast<int>(colour_get_green(colour)),
          static_cast<int>(colour_get_blue(colour))};
}

// One run of the velant program, with its save area in `data`.
class Velant {
 public:
  explicit Velant(const std::string& data) {
    std::vector<std::string> kept;
    for (char** e = environ; *e; ++e) {
      const std::string entry = *e;
      // The test program runs offscreen and headless; velant shows its window.
      if (entry.rfind("SDL_VIDEODRIVER=", 0) && entry.rfind("VELANT_HEADLESS=", 0) && entry.rfind("XDG_DATA_HOME=", 0) &&
          entry.rfind("ASAN_OPTIONS=", 0)) {
        kept.push_back(entry);
      }
    }
    kept.push_back("SDL_VIDEODRIVER=x11");
    // In a sanitized build Mesa's software driver leaves allocations behind at exit, as in the
    // test programs that open OpenGL: its exit status must tell how velant ended, not that.
    kept.push_back("ASAN_OPTIONS=detect_leaks=0");
    kept.push_back("XDG_DATA_HOME=" + data);
    std::vector<char*> env;
    for (std::string& entry : kept) env.push_back(entry.data());
    env.push_back(nullptr);
    char binary[] = VELANT_BINARY;
    char* argv[] = {binary, nullptr};
    // What it prints goes to a log in its data folder, for a failure to show.
    log_ = data + "/velant.log";
    posix_spawn_file_actions_t output;
    posix_spawn_file_actions_init(&output);
    posix_spawn_file_actions_addopen(&output, 1, log_.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0644);
    posix_spawn_file_actions_adddup2(&output, 1, 2);
    started_ = posix_spawn(&pid_, binary, &output, nullptr, argv, env.data()) == 0;
    posix_spawn_file_actions_destroy(&output);
  }
  // How the run went, for a failure's message.
  std::string report() {
    return std::string(running() ? "running" : "ended with " + std::to_string(status_)) + "; printed:\n" +
           read_whole_file(log_) + "windows:\n" + output_of("xwininfo -root -tree 2>&1 | head -40") + "stack:\n" +
           output_of("cat /proc/" + std::to_string(pid_) + "/wchan; echo; gdb -p " + std::to_string(pid_) + " -batch -ex 'thread apply all bt 8' 2>/dev/null | grep '^#' | head -40");
  }
  ~Velant() {
    if (running()) kill(SIGKILL);
  }

  bool running() {
    return started_ && pid_ > 0 && waitpid(pid_, &status_, WNOHANG) == 0;
  }
  void kill(int signal) {
    ::kill(pid_, signal);
    waitpid(pid_, &status_, 0);
    pid_ = 0;
  }
  int exit_status() const { return WIFEXITED(status_) ? WEXITSTATUS(status_) : -1; }
  // The program's window, once it shows.
  unsigned long window() {
    if (window_ != 0) return window_;
    wait_until([] { return !velant_windows().empty(); }, 30s);
    const std::vector<unsigned long> ids = velant_windows();
    window_ = ids.empty() ? 0 : ids.front();
    return window_;
  }

  // Keys go to the window that has the focus, as a person's would; there is no window manager to give it.
  bool type(const std::string& text) const { return sh(focus() + "type --delay 70 '" + text + "'"); }
  bool key(const std::string& keys) const { return sh(focus() + "key " + keys); }
  bool click(int x, int y) const {
    return sh("xdotool mousemove --window " + std::to_string(window_) + " " + std::to_string(x) + " " +
              std::to_string(y) + " click 1");
  }
  // What the window shows after the frames of `settle` have passed; kept as a picture when `name` is given.
  Image screen(const std::string& name = "", std::chrono::milliseconds settle = 800ms) const {
    std::this_thread::sleep_for(settle);
    Image image;
    EXPECT_TRUE(window_capture::capture(window_, image)) << "no picture of window " << window_;
    if (!name.empty()) image_save_png("editor_window_" + name + ".png", image);
    return image;
  }

 private:
  std::string focus() const { return "xdotool windowfocus --sync " + std::to_string(window_) + " "; }

  pid_t pid_ = 0;
  int status_ = 0;
  bool started_ = false;
  unsigned long window_ = 0;
  std::string log_;
};

}  // namespace velant_window
