// Choice of backends: headless or the window system's.
#include <SDL.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <mutex>

#include "runtime/Platform/Clipboard.h"
#include "runtime/Platform/Desktop.h"
#include "runtime/Platform/Dialogs.h"
#include "runtime/Platform/Headless.h"
#include "runtime/Platform/Log.h"

namespace platform {
namespace {

int g_headless = -1;  // -1: not decided yet
std::unique_ptr<Dialogs> g_dialogs;
std::mutex g_dialogs_mutex;  // asynchronous dialogs reach for them from worker threads
std::unique_ptr<FileChooser> g_file_chooser;
void (*g_log)(const std::string&) = nullptr;

}  // namespace

bool headless() {
  if (g_headless < 0) {
    const char* env = std::getenv("VELANT_HEADLESS");
    g_headless = env && *env && *env != '0';
  }
  return g_headless != 0;
}

void set_headless(bool value) { g_headless = value; }

void set_log(void (*write_line)(const std::string& text)) { g_log = write_line; }

void log(const std::string& text) {
  if (g_log) g_log(text);
}

Dialogs& dialogs() {
  std::lock_guard lock(g_dialogs_mutex);
  if (!g_dialogs) {
    if (!headless()) g_dialogs = make_window_dialogs();
    // Without a display the text still reaches the user on the terminal.
    if (!g_dialogs) g_dialogs = make_headless_dialogs(stdout, stderr);
  }
  return *g_dialogs;
}

void set_dialogs(std::unique_ptr<Dialogs> d) {
  std::lock_guard lock(g_dialogs_mutex);
  g_dialogs = std::move(d);
}

// The answers of a headless run's file dialogs: the lines of the file that
// VELANT_FILE_ANSWERS names.
std::deque<std::string> scripted_answers() {
  std::deque<std::string> answers;
  const char* script = std::getenv("VELANT_FILE_ANSWERS");
  if (!script) return answers;
  std::ifstream file(script);
  for (std::string line; std::getline(file, line);) answers.push_back(line);
  return answers;
}

FileChooser& file_chooser() {
  if (!g_file_chooser && !headless()) g_file_chooser = make_desktop_file_chooser();
  if (!g_file_chooser) g_file_chooser = std::make_unique<ScriptedFileChooser>(scripted_answers());
  return *g_file_chooser;
}

void set_file_chooser(std::unique_ptr<FileChooser> chooser) { g_file_chooser = std::move(chooser); }

// A headless run has no desktop clipboard: it keeps one of its own, and so
// does a run whose desktop refuses the text.
std::string& own_clipboard() {
  static std::string text;
  return text;
}

void clipboard_set_text(const std::string& text) {
  if (headless() || SDL_SetClipboardText(text.c_str()) != 0) own_clipboard() = text;
}

std::string clipboard_get_text() {
  if (headless() || !SDL_HasClipboardText()) return own_clipboard();
  char* text = SDL_GetClipboardText();
  std::string copy = text ? text : "";
  SDL_free(text);
  return copy;
}

bool clipboard_has_text() { return !clipboard_get_text().empty(); }

}  // namespace platform
