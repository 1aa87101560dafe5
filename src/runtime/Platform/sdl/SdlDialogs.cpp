// Dialogs of the window system: the desktop's message box through GTK,
// SDL2's own where GTK can't be had, and the terminal when neither can show.
#include <SDL.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "runtime/Platform/Clipboard.h"
#include "runtime/Platform/Dialogs.h"
#include "runtime/Platform/gtk/GtkMessageBox.h"

namespace platform {
namespace {

enum Button { kYes = 1, kNo = 0, kCopy = 10, kClear = 11, kAbort = 12, kIgnore = 13 };

// Shows `text` with `buttons` and returns the id of the one pressed; the
// button marked for Return is the default, the one marked for Escape
// answers a box closed otherwise.
int show(Uint32 flags, const std::string& title, const std::string& text, const SDL_MessageBoxButtonData* buttons,
         int count) {
  std::vector<DialogButton> listed;
  int default_id = buttons[0].buttonid, escape_id = buttons[count - 1].buttonid;
  for (int k = 0; k < count; ++k) {
    listed.push_back({buttons[k].buttonid, buttons[k].text});
    if (buttons[k].flags & SDL_MESSAGEBOX_BUTTON_RETURNKEY_DEFAULT) default_id = buttons[k].buttonid;
    if (buttons[k].flags & SDL_MESSAGEBOX_BUTTON_ESCAPEKEY_DEFAULT) escape_id = buttons[k].buttonid;
  }
  const bool error = (flags & SDL_MESSAGEBOX_ERROR) != 0;
  if (const int answer = gtk_message_box(error, title, text, listed.data(), count, default_id, escape_id); answer != -1) {
    return answer;
  }
  SDL_MessageBoxData data{};
  data.flags = flags;
  data.title = title.c_str();
  data.message = text.c_str();
  data.numbuttons = count;
  data.buttons = buttons;
  int pressed = -1;
  if (SDL_ShowMessageBox(&data, &pressed) == 0) return pressed;
  // Nothing could show it: the text still reaches the user, on the terminal.
  std::fprintf(stderr, "%s: %s\n", title.c_str(), text.c_str());
  return default_id;
}

class WindowDialogs final : public Dialogs {
 public:
  void message(const std::string& title, const std::string& text) override {
    const SDL_MessageBoxButtonData ok[] = {{SDL_MESSAGEBOX_BUTTON_RETURNKEY_DEFAULT, kYes, "OK"}};
    show(SDL_MESSAGEBOX_INFORMATION, title, text, ok, 1);
  }

  bool question(const std::string& title, const std::string& text) override {
    const SDL_MessageBoxButtonData buttons[] = {{SDL_MESSAGEBOX_BUTTON_RETURNKEY_DEFAULT, kYes, "Yes"},
                                                {SDL_MESSAGEBOX_BUTTON_ESCAPEKEY_DEFAULT, kNo, "No"}};
    return show(SDL_MESSAGEBOX_INFORMATION, title, text, buttons, 2) != kNo;
  }

  // "Copy" and "Clear" act on the text and show the dialog again; the
  // dialog ends with "Abort" or, where allowed, "Ignore".
  ErrorChoice error(const std::string& title, const std::string& text, bool can_continue) override {
    // The terminal keeps the error too, where it can be copied from after the box is gone.
    std::fprintf(stderr, "%s\n%s\n", title.c_str(), text.c_str());
    std::string shown = text;
    const SDL_MessageBoxButtonData buttons[] = {{0, kCopy, "Copy"},
                                                {0, kClear, "Clear"},
                                                {SDL_MESSAGEBOX_BUTTON_ESCAPEKEY_DEFAULT, kAbort, "Abort"},
                                                {SDL_MESSAGEBOX_BUTTON_RETURNKEY_DEFAULT, kIgnore, "Ignore"}};
    for (;;) {
      const int pressed = show(SDL_MESSAGEBOX_ERROR, title, shown, buttons, can_continue ? 4 : 3);
      if (pressed == kCopy) clipboard_set_text(shown);
      else if (pressed == kClear) shown.clear();
      else if (pressed == kIgnore) return ErrorChoice::Ignore;
      else return ErrorChoice::Abort;
    }
  }
};

}  // namespace

std::unique_ptr<Dialogs> make_window_dialogs() {
  if (!SDL_WasInit(SDL_INIT_VIDEO) && SDL_InitSubSystem(SDL_INIT_VIDEO) != 0) return nullptr;
  return std::make_unique<WindowDialogs>();
}

}  // namespace platform
