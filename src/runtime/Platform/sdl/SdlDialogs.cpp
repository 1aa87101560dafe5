// Dialogs through SDL2's message boxes.
#include <SDL.h>

#include <cstdlib>
#include <string>

#include "runtime/Platform/Clipboard.h"
#include "runtime/Platform/Dialogs.h"

namespace platform {
namespace {

enum Button { kYes = 1, kNo = 0, kCopy = 10, kClear = 11, kAbort = 12, kIgnore = 13 };

int show(Uint32 flags, const std::string& title, const std::string& text, const SDL_MessageBoxButtonData* buttons,
         int count) {
  SDL_MessageBoxData data{};
  data.flags = flags;
  data.title = title.c_str();
  data.message = text.c_str();
  data.numbuttons = count;
  data.buttons = buttons;
  int pressed = -1;
  if (SDL_ShowMessageBox(&data, &pressed) != 0) return -1;
  return pressed;
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
