// Modal message boxes: a real one through the window system, or, in a
// headless run, text on the standard streams with the default answer taken.
#pragma once

#ifdef VELANT_ABOVE_RUNTIME
#error "the layers above the runtime reach the platform through the runtime's functions"
#endif

#include <cstdio>
#include <memory>
#include <string>

namespace platform {

enum class ErrorChoice { Abort, Ignore };

class Dialogs {
 public:
  virtual ~Dialogs() = default;
  // A message with one button; returns when it is acknowledged.
  virtual void message(const std::string& title, const std::string& text) = 0;
  // A question with "Yes" and "No"; true for "Yes".
  virtual bool question(const std::string& title, const std::string& text) = 0;
  // The error dialog with "Copy", "Clear", "Abort" and, when the error can
  // be continued, "Ignore".
  virtual ErrorChoice error(const std::string& title, const std::string& text, bool can_continue) = 0;
};

// The dialogs in use: headless when VELANT_HEADLESS is set or no display can
// be opened, the window system's otherwise, unless set_dialogs chose.
Dialogs& dialogs();
void set_dialogs(std::unique_ptr<Dialogs> dialogs);

std::unique_ptr<Dialogs> make_window_dialogs();
// Messages go to `out` followed by an empty line, errors to `err`; every
// question takes its default answer, "Yes".
std::unique_ptr<Dialogs> make_headless_dialogs(std::FILE* out, std::FILE* err);

}  // namespace platform
