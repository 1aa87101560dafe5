// The one window of the process, with its OpenGL context: a system window
// through SDL2, or, in a headless run, a window that only keeps its state
// and draws into a hidden offscreen surface when the system has one.
//
// poll_events hands keys, buttons, mouse motion, wheel and text to the
// listener it is given (the runtime's input state) and notes here what
// concerns the window itself: a close request, a resize by the user, a
// change of focus.
//
// Close requests. Normally a click on the close button ends the program:
// should_quit turns true. A screen that must stop, save or ask first holds
// the close back with hold_close(true); then the click doesn't end anything
// but is reported once, by take_close_request.
#pragma once

#ifdef VELANT_ABOVE_RUNTIME
#error "the layers above the runtime reach the platform through the runtime's functions"
#endif

#include <memory>
#include <string>

namespace platform {

struct WindowOptions {
  bool fullscreen = false;
  bool sizeable = false;
  bool borderless = false;
  bool keep_aspect = false;  // shrink both sides alike when the screen is too small
  bool hidden = false;       // not shown, and not fitted to the screen
};

struct WindowSize {
  int width = 0;
  int height = 0;
};

struct WindowPosition {
  int x = 0;
  int y = 0;
};

// What the user does with keys, buttons, mouse and wheel, in the runtime's
// codes: key codes as the runtime counts them, buttons 1 left, 2 right,
// 3 middle, window coordinates, text as UTF-8.
class InputListener {
 public:
  virtual ~InputListener() = default;
  virtual void key(int code, bool down) = 0;
  virtual void text(const char* utf8) = 0;
  virtual void mouse_move(int x, int y) = 0;
  virtual void mouse_button(int button, bool down) = 0;
  virtual void wheel(int dy) = 0;
};

// The system's pointer shapes that a window can show.
enum class CursorShape {
  Arrow, None, Cross, IBeam, SizeNESW, SizeNS, SizeNWSE, SizeWE, Wait, Hand, No, ArrowWait, SizeAll
};

class Window {
 public:
  virtual ~Window() = default;

  // Makes the window, centred on the screen, with an OpenGL 3.3 core context;
  // false if no window could be made. A window made without a context is
  // still a window: gl_context_ready tells.
  virtual bool create(int width, int height, const std::string& caption, const WindowOptions& options) = 0;
  // Why the last create failed, in the window system's words.
  virtual std::string failure() const = 0;
  // Size of the client area in pixels. A size set here brings no resize notice.
  virtual void set_size(int width, int height) = 0;
  virtual WindowSize size() const = 0;
  // Position of the client area on the screen.
  virtual void set_position(int x, int y) = 0;
  virtual WindowPosition position() const = 0;
  // The text in the title bar.
  virtual void set_caption(const std::string& caption) = 0;
  virtual std::string caption() const = 0;
  // Full screen on the window's display, or back to a window.
  virtual void set_fullscreen(bool on) = 0;
  virtual bool fullscreen() const = 0;
  // With or without caption and frame.
  virtual void set_borderless(bool on) = 0;
  // Shows or hides the pointer over the window.
  virtual void set_cursor_visible(bool visible) = 0;
  virtual bool cursor_visible() const = 0;
  // The pointer's shape over the window; None hides it.
  virtual void set_cursor(CursorShape shape) = 0;
  // Size of the main display in pixels.
  virtual WindowSize display_size() const = 0;

  // Takes the window system's pending events: input goes to `input`,
  // close, resize and focus are noted here.
  virtual void poll_events(InputListener& input) = 0;
  // Shows what was drawn into the context since the last swap.
  virtual void swap() = 0;
  // The OpenGL context exists and is current on this thread.
  virtual bool gl_context_ready() const = 0;

  // Holds back the close button's requests (true) or lets them end the program.
  void hold_close(bool held);
  // Close requests are being held back.
  bool close_held() const { return close_held_; }
  // A held-back close request waits to be taken.
  bool close_requested() const { return close_pending_; }
  // True once for held-back close requests since the last call; several
  // clicks before a call count as one.
  bool take_close_request();
  // A close request that wasn't held back, or the system's order to quit.
  bool should_quit() const { return quit_; }
  // What a click on the close button does; tests call it to stand for one.
  void simulate_close_request();
  // True once after the user changed the window's size.
  bool take_resized();
  // The window has the keyboard focus (`window_has_focus`).
  bool has_focus() const { return focus_; }

 protected:
  void note_quit() { quit_ = true; }
  void note_resized() { resized_ = true; }
  void note_focus(bool focus) { focus_ = focus; }

 private:
  bool close_held_ = false;
  bool close_pending_ = false;
  bool quit_ = false;
  bool resized_ = false;
  // A window without a system behind it counts as focused, so that a frame
  // that waits for the focus still runs headless.
  bool focus_ = true;
};

// The window in use; made on first use, headless or not as platform::headless() says.
Window& window();
// The window in use, or null when none was made yet.
Window* window_if_made();
// Makes a new window of the chosen kind (not yet created) and puts it in use.
Window& make_window(bool headless);

// The size a window of `width` x `height` gets on a screen area of the given
// size: a side longer than the area is cut to it; with `keep_aspect` the
// other side shrinks in proportion.
WindowSize fit_window_size(int width, int height, int area_width, int area_height, bool keep_aspect);

// A window of the window system, through SDL2 (sdl/SdlWindow.cpp).
std::unique_ptr<Window> make_system_window();
// A window that keeps its state and draws offscreen (headless/HeadlessWindow.cpp).
std::unique_ptr<Window> make_headless_window();

}  // namespace platform
