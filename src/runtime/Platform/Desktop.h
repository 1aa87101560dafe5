// What the desktop does for a program: opening a web address or a file in
// the user's own programs, and letting the user choose a file.
#pragma once

#ifdef VELANT_ABOVE_RUNTIME
#error "the layers above the runtime reach the platform through the runtime's functions"
#endif

#include <deque>
#include <memory>
#include <string>
#include <vector>

namespace platform {

// Hands `url` to the desktop's opener without waiting for it. False when the
// address has no protocol the opener could take or the opener can't start.
bool open_url(const std::string& url);

struct FileFilter {
  std::string name;                   // what the user reads: "text "
  std::vector<std::string> patterns;  // "*.txt", ...
};

struct FileQuestion {
  bool save = false;
  std::vector<FileFilter> filters;
  std::string default_name;
};

class FileChooser {
 public:
  virtual ~FileChooser() = default;
  // The path the user chose, "" when the choice was cancelled.
  virtual std::string choose(const FileQuestion& question) = 0;
};

// Answers from a script, in order, and "" once the script is used up; keeps
// every question it was asked. Headless runs and tests use it.
class ScriptedFileChooser : public FileChooser {
 public:
  explicit ScriptedFileChooser(std::deque<std::string> answers) : answers_(std::move(answers)) {}
  std::string choose(const FileQuestion& question) override;
  const std::vector<FileQuestion>& asked() const { return asked_; }

 private:
  std::deque<std::string> answers_;
  std::vector<FileQuestion> asked_;
};

// The chooser in use: the desktop's own one under a display; in a headless
// run a scripted one that reads its answers, one per line, from the file
// that VELANT_FILE_ANSWERS names (none: every choice is cancelled).
FileChooser& file_chooser();
void set_file_chooser(std::unique_ptr<FileChooser> chooser);
std::unique_ptr<FileChooser> make_desktop_file_chooser();

}  // namespace platform
