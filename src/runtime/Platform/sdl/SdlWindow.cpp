// The system window through SDL2, with an OpenGL 3.3 core context.
#include "runtime/Platform/sdl/SdlWindow.h"

#include <SDL.h>

#include <array>
#include <utility>

#include "runtime/Platform/KeyCodes.h"
#include "runtime/Platform/Window.h"

namespace platform {
namespace {

// Keys whose SDL code isn't a letter or a digit, by the code the runtime
// gives them. Both keys of a pair (shift, control, alt) count as one.
constexpr std::pair<SDL_Keycode, int> kKeyTable[] = {
    {SDLK_BACKSPACE, KEY_BACKSPACE},
    {SDLK_TAB, KEY_TAB},
    {SDLK_RETURN, KEY_ENTER},
    {SDLK_KP_ENTER, KEY_ENTER},
    {SDLK_LSHIFT, KEY_SHIFT},
    {SDLK_RSHIFT, KEY_SHIFT},
    {SDLK_LCTRL, KEY_CONTROL},
    {SDLK_RCTRL, KEY_CONTROL},
    {SDLK_LALT, KEY_ALT},
    {SDLK_RALT, KEY_ALT},
    {SDLK_PAUSE, 19},
    {SDLK_CAPSLOCK, 20},
    {SDLK_ESCAPE, KEY_ESCAPE},
    {SDLK_SPACE, KEY_SPACE},
    {SDLK_PAGEUP, KEY_PAGE_UP},
    {SDLK_PAGEDOWN, KEY_PAGE_DOWN},
    {SDLK_END, KEY_END},
    {SDLK_HOME, KEY_HOME},
    {SDLK_LEFT, KEY_LEFT},
    {SDLK_UP, KEY_UP},
    {SDLK_RIGHT, KEY_RIGHT},
    {SDLK_DOWN, KEY_DOWN},
    {SDLK_PRINTSCREEN, 44},
    {SDLK_INSERT, KEY_INSERT},
    {SDLK_DELETE, KEY_DELETE},
    {SDLK_LGUI, 91},
    {SDLK_RGUI, 92},
    {SDLK_APPLICATION, 93},
    {SDLK_KP_0, KEY_NUMPAD_0},
    {SDLK_KP_1, KEY_NUMPAD_0 + 1},
    {SDLK_KP_2, KEY_NUMPAD_0 + 2},
    {SDLK_KP_3, KEY_NUMPAD_0 + 3},
    {SDLK_KP_4, KEY_NUMPAD_0 + 4},
    {SDLK_KP_5, KEY_NUMPAD_0 + 5},
    {SDLK_KP_6, KEY_NUMPAD_0 + 6},
    {SDLK_KP_7, KEY_NUMPAD_0 + 7},
    {SDLK_KP_8, KEY_NUMPAD_0 + 8},
    {SDLK_KP_9, KEY_NUMPAD_0 + 9},
    {SDLK_KP_MULTIPLY, 106},
    {SDLK_KP_PLUS, 107},
    {SDLK_KP_MINUS, 109},
    {SDLK_KP_PERIOD, 110},
    {SDLK_KP_DIVIDE, 111},
    {SDLK_F1, KEY_F1},
    {SDLK_F2, KEY_F1 + 1},
    {SDLK_F3, KEY_F1 + 2},
    {SDLK_F4, KEY_F1 + 3},
    {SDLK_F5, KEY_F1 + 4},
    {SDLK_F6, KEY_F1 + 5},
    {SDLK_F7, KEY_F1 + 6},
    {SDLK_F8, KEY_F1 + 7},
    {SDLK_F9, KEY_F1 + 8},
    {SDLK_F10, KEY_F1 + 9},
    {SDLK_F11, KEY_F1 + 10},
    {SDLK_F12, KEY_F1 + 11},
    {SDLK_NUMLOCKCLEAR, 144},
    {SDLK_SCROLLLOCK, 145},
    {SDLK_SEMICOLON, 186},
    {SDLK_EQUALS, 187},
    {SDLK_COMMA, 188},
    {SDLK_MINUS, 189},
    {SDLK_PERIOD, 190},
    {SDLK_SLASH, 191},
    {SDLK_BACKQUOTE, 192},
    {SDLK_LEFTBRACKET, 219},
    {SDLK_BACKSLASH, 220},
    {SDLK_RIGHTBRACKET, 221},
    {SDLK_QUOTE, 222},
    // The keys of an Italian keyboard that a US one lacks, by the code of
    // the key they sit on: è, +, ò, à, ù, ì and <.
    {0xE8, 186},
    {SDLK_PLUS, 187},
    {0xF2, 192},
    {0xE0, 222},
    {0xF9, 191},
    {0xEC, 221},
    {SDLK_LESS, 226},
};

SDL_SystemCursor system_cursor(CursorShape shape) {
  switch (shape) {
    case CursorShape::Cross: return SDL_SYSTEM_CURSOR_CROSSHAIR;
    case CursorShape::IBeam: return SDL_SYSTEM_CURSOR_IBEAM;
    case CursorShape::SizeNESW: return SDL_SYSTEM_CURSOR_SIZENESW;
    case CursorShape::SizeNS: return SDL_SYSTEM_CURSOR_SIZENS;
    case CursorShape::SizeNWSE: return SDL_SYSTEM_CURSOR_SIZENWSE;
    case CursorShape::SizeWE: return SDL_SYSTEM_CURSOR_SIZEWE;
    case CursorShape::Wait: return SDL_SYSTEM_CURSOR_WAIT;
    case CursorShape::Hand: return SDL_SYSTEM_CURSOR_HAND;
    case CursorShape::No: return SDL_SYSTEM_CURSOR_NO;
    case CursorShape::ArrowWait: return SDL_SYSTEM_CURSOR_WAITARROW;
    case CursorShape::SizeAll: return SDL_SYSTEM_CURSOR_SIZEALL;
    default: return SDL_SYSTEM_CURSOR_ARROW;
  }
}

class SdlWindow final : public Window {
 public:
  ~SdlWindow() override { destroy(); }

  bool create(int width, int height, const std::string& caption, const WindowOptions& options) override {
    destroy();
    if (SDL_InitSubSystem(SDL_INIT_VIDEO) != 0) return false;
    video_ = true;
    // A click on the close button is the runtime's to judge (it may be held
    // back), so SDL must not turn it into a quit of its own.
    SDL_SetHint(SDL_HINT_QUIT_ON_LAST_WINDOW_CLOSE, "0");
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_PROFILE_MASK, SDL_GL_CONTEXT_PROFILE_CORE);
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_MAJOR_VERSION, 3);
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_MINOR_VERSION, 3);
    SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);
    Uint32 flags = SDL_WINDOW_OPENGL | SDL_WINDOW_HIDDEN;
    if (options.sizeable) flags |= SDL_WINDOW_RESIZABLE;
    if (options.borderless) flags |= SDL_WINDOW_BORDERLESS;
    window_ = SDL_CreateWindow(caption.c_str(), SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, width, height, flags);
    if (!window_) return false;
    if (!options.hidden) show(width, height, options);
    context_ = SDL_GL_CreateContext(window_);
    if (context_) SDL_GL_MakeCurrent(window_, context_);
    SDL_StartTextInput();
    return true;
  }

  std::string failure() const override { return SDL_GetError(); }

  void set_size(int width, int height) override {
    if (window_) SDL_SetWindowSize(window_, width, height);
  }

  WindowSize size() const override {
    WindowSize s;
    if (window_) SDL_GetWindowSize(window_, &s.width, &s.height);
    return s;
  }

  void set_position(int x, int y) override {
    if (window_) SDL_SetWindowPosition(window_, x, y);
  }

  WindowPosition position() const override {
    WindowPosition p;
    if (window_) SDL_GetWindowPosition(window_, &p.x, &p.y);
    return p;
  }

  void set_caption(const std::string& caption) override {
    if (window_) SDL_SetWindowTitle(window_, caption.c_str());
  }

  std::string caption() const override { return window_ ? SDL_GetWindowTitle(window_) : ""; }

  void set_fullscreen(bool on) override {
    if (window_) SDL_SetWindowFullscreen(window_, on ? SDL_WINDOW_FULLSCREEN_DESKTOP : 0);
  }

  bool fullscreen() const override { return window_ && (SDL_GetWindowFlags(window_) & SDL_WINDOW_FULLSCREEN) != 0; }

  void set_borderless(bool on) override {
    if (window_) SDL_SetWindowBordered(window_, on ? SDL_FALSE : SDL_TRUE);
  }

  void set_cursor_visible(bool visible) override { SDL_ShowCursor(visible ? SDL_ENABLE : SDL_DISABLE); }

  bool cursor_visible() const override { return SDL_ShowCursor(SDL_QUERY) == SDL_ENABLE; }

  void set_cursor(CursorShape shape) override {
    set_cursor_visible(shape != CursorShape::None);
    if (shape == CursorShape::None) return;
    SDL_Cursor*& cursor = cursors_[static_cast<size_t>(shape)];
    if (!cursor) cursor = SDL_CreateSystemCursor(system_cursor(shape));
    if (cursor) SDL_SetCursor(cursor);
  }

  WindowSize display_size() const override {
    SDL_DisplayMode mode{};
    if (!video_ || SDL_GetCurrentDisplayMode(0, &mode) != 0) return {};
    return {mode.w, mode.h};
  }

  void poll_events(InputListener& input) override {
    // One key press a frame, and the keys as they stand right after it: a
    // program acts on the frame's last key and on the keys held at its end,
    // so what follows a press (a second key typed fast, a key's Enter, the
    // release of the key or of its Ctrl) waits in the queue for the next frame.
    SDL_PumpEvents();
    SDL_Event event;
    bool pressed = false;
    while (SDL_PeepEvents(&event, 1, SDL_PEEKEVENT, SDL_FIRSTEVENT, SDL_LASTEVENT) == 1) {
      const bool key = (event.type == SDL_KEYDOWN && !event.key.repeat) || event.type == SDL_KEYUP;
      if (key && pressed) break;
      pressed = pressed || event.type == SDL_KEYDOWN;
      SDL_PeepEvents(&event, 1, SDL_GETEVENT, SDL_FIRSTEVENT, SDL_LASTEVENT);
      handle(event, input);
    }
  }

  void swap() override {
    if (window_ && context_) SDL_GL_SwapWindow(window_);
  }

  bool gl_context_ready() const override { return context_ && SDL_GL_GetCurrentContext() == context_; }

 private:
  // Fits the window to the screen's free area, centres it, and shows it.
  void show(int width, int height, const WindowOptions& options) {
    const int display = SDL_GetWindowDisplayIndex(window_);
    SDL_Rect area{};
    if (display >= 0 && SDL_GetDisplayUsableBounds(display, &area) == 0) {
      int top = 0, bottom = 0;
      // The frame's size is known only where the window system tells it
      // before the window is shown; elsewhere the area is taken whole.
      if (!options.borderless) SDL_GetWindowBordersSize(window_, &top, nullptr, &bottom, nullptr);
      const WindowSize fitted = fit_window_size(width, height, area.w, area.h - top - bottom, options.keep_aspect);
      SDL_SetWindowSize(window_, fitted.width, fitted.height);
      SDL_SetWindowPosition(window_, SDL_WINDOWPOS_CENTERED_DISPLAY(display), SDL_WINDOWPOS_CENTERED_DISPLAY(display));
    }
    if (options.fullscreen) set_fullscreen(true);
    SDL_ShowWindow(window_);
  }

  void handle(const SDL_Event& event, InputListener& input) {
    switch (event.type) {
      case SDL_QUIT: note_quit(); break;
      case SDL_WINDOWEVENT: handle_window(event.window); break;
      case SDL_KEYDOWN:
      case SDL_KEYUP: input.key(key_code_from_sdl(event.key.keysym.sym), event.type == SDL_KEYDOWN); break;
      case SDL_TEXTINPUT: input.text(event.text.text); break;
      case SDL_MOUSEMOTION: input.mouse_move(event.motion.x, event.motion.y); break;
      case SDL_MOUSEBUTTONDOWN:
      case SDL_MOUSEBUTTONUP:
        input.mouse_move(event.button.x, event.button.y);
        input.mouse_button(mouse_button_from_sdl(event.button.button), event.type == SDL_MOUSEBUTTONDOWN);
        break;
      case SDL_MOUSEWHEEL:
        input.wheel(event.wheel.direction == SDL_MOUSEWHEEL_FLIPPED ? -event.wheel.y : event.wheel.y);
        break;
      default: break;
    }
  }

  void handle_window(const SDL_WindowEvent& event) {
    switch (event.event) {
      case SDL_WINDOWEVENT_CLOSE: simulate_close_request(); break;
      // RESIZED comes only from the user's resizing, not from set_size,
      // which brings SIZE_CHANGED alone.
      case SDL_WINDOWEVENT_RESIZED: note_resized(); break;
      case SDL_WINDOWEVENT_FOCUS_GAINED: note_focus(true); break;
      case SDL_WINDOWEVENT_FOCUS_LOST: note_focus(false); break;
      default: break;
    }
  }

  void destroy() {
    if (context_) SDL_GL_DeleteContext(context_);
    context_ = nullptr;
    for (SDL_Cursor*& cursor : cursors_) {
      if (cursor) SDL_FreeCursor(cursor);
      cursor = nullptr;
    }
    if (window_) SDL_DestroyWindow(window_);
    window_ = nullptr;
    if (video_) SDL_QuitSubSystem(SDL_INIT_VIDEO);
    video_ = false;
  }

  bool video_ = false;  // this window holds a reference on SDL's video
  SDL_Window* window_ = nullptr;
  SDL_GLContext context_ = nullptr;
  std::array<SDL_Cursor*, static_cast<size_t>(CursorShape::SizeAll) + 1> cursors_{};
};

}  // namespace

int key_code_from_sdl(int sdl_keycode) {
  if (sdl_keycode >= SDLK_a && sdl_keycode <= SDLK_z) return KEY_LETTER_A + (sdl_keycode - SDLK_a);
  if (sdl_keycode >= SDLK_0 && sdl_keycode <= SDLK_9) return KEY_DIGIT_0 + (sdl_keycode - SDLK_0);
  for (const auto& [sdl, code] : kKeyTable)
    if (sdl == sdl_keycode) return code;
  return 0;
}

int mouse_button_from_sdl(int sdl_button) {
  switch (sdl_button) {
    case SDL_BUTTON_LEFT: return MOUSE_LEFT;
    case SDL_BUTTON_RIGHT: return MOUSE_RIGHT;
    case SDL_BUTTON_MIDDLE: return MOUSE_MIDDLE;
    default: return 0;
  }
}

std::unique_ptr<Window> make_system_window() { return std::make_unique<SdlWindow>(); }

}  // namespace platform
