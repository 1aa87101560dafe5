// The desktop's file chooser, driven as a user would: real key presses sent
// to the dialog's window on the X display the tests run on. Each dialog is
// shown by a child process, so that a dialog the keys never reach can be
// killed instead of hanging the suite.
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>

#include "runtime/Platform/Desktop.h"

namespace {

struct Choice {
  bool ended = false;  // the dialog closed by itself before the deadline
  std::string path;
};

// Shows `question` in a child process, types `keys` into the dialog titled
// `title` once it shows, and gives what the child's chooser answered.
Choice choose_by_keys(const platform::FileQuestion& question, const std::string& title, const std::string& keys) {
  int answer[2];
  if (::pipe(answer) != 0) return {};
  const pid_t child = ::fork();
  if (child == 0) {
    ::close(answer[0]);
    std::unique_ptr<platform::FileChooser> chooser = platform::make_desktop_file_chooser();
    const std::string path = chooser ? chooser->choose(question) : "no chooser";
    const ssize_t written = ::write(answer[1], path.data(), path.size());
    ::_exit(written == static_cast<ssize_t>(path.size()) ? 0 : 1);
  }
  ::close(answer[1]);
  // Another test's window may take the focus before the keys arrive: then they are sent again.
  const std::string command = "timeout 20 xdotool search --sync --onlyvisible --name '^" + title +
                              "$' windowfocus --sync %1 sleep 0.3 key " + keys + " > /dev/null";
  Choice choice;
  for (int attempt = 0; attempt < 5 && !choice.ended; ++attempt) {
    // An attempt may miss the window while it maps; what counts is that the dialog closed as told.
    if (std::system(command.c_str()) != 0) std::this_thread::sleep_for(std::chrono::milliseconds(200));
    for (int wait = 0; wait < 40 && !choice.ended; ++wait) {
      choice.ended = ::waitpid(child, nullptr, WNOHANG) == child;
      if (!choice.ended) std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
  }
  if (!choice.ended) {
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
  }
  char buffer[4096];
  for (ssize_t n; (n = ::read(answer[0], buffer, sizeof buffer)) > 0;) choice.path.append(buffer, static_cast<size_t>(n));
  ::close(answer[0]);
  return choice;
}

TEST(DesktopFileChooser, SavesUnderTheGivenNameAndCancelsWithEscape) {
  if (!std::getenv("DISPLAY") || std::system("command -v xdotool > /dev/null") != 0) {
    GTEST_SKIP() << "needs an X display and xdotool";
  }
  // GTK keeps its settings in memory: the test machine has no settings service.
  ::setenv("GSETTINGS_BACKEND", "memory", 1);

  const Choice saved = choose_by_keys({true, {{"text ", {"*.txt"}}}, "progetto.txt"}, "Salva", "Return");
  EXPECT_TRUE(saved.ended);
  EXPECT_EQ(std::filesystem::path(saved.path).filename(), "progetto.txt") << saved.path;
  EXPECT_TRUE(std::filesystem::path(saved.path).is_absolute()) << saved.path;

  const Choice cancelled = choose_by_keys({false, {}, ""}, "Apri", "Escape");
  EXPECT_TRUE(cancelled.ended);
  EXPECT_EQ(cancelled.path, "");
}

}  // namespace
