// What every window does alike: the close hold-back, the resize and focus
// notes, the choice of the window in use, and fitting a size to the screen.
#include "runtime/Platform/Window.h"

#include "runtime/Platform/Headless.h"

namespace platform {
namespace {

std::unique_ptr<Window> g_window;

// Cuts `side` to `limit`; with `keep_aspect`, `other` shrinks by the same ratio.
void fit_side(int& side, int& other, int limit, bool keep_aspect) {
  if (limit <= 0 || side <= limit) return;
  if (keep_aspect) other = static_cast<int>(static_cast<long long>(other) * limit / side);
  side = limit;
}

}  // namespace

void Window::hold_close(bool held) { close_held_ = held; }

bool Window::take_close_request() {
  const bool pending = close_pending_;
  close_pending_ = false;
  return pending;
}

void Window::simulate_close_request() {
  if (close_held_) close_pending_ = true;
  else quit_ = true;
}

bool Window::take_resized() {
  const bool resized = resized_;
  resized_ = false;
  return resized;
}

Window& window() {
  if (!g_window) return make_window(headless());
  return *g_window;
}

Window* window_if_made() { return g_window.get(); }

Window& make_window(bool headless_window) {
  // The old window goes first: two windows would share one display
  // connection and one current context.
  g_window.reset();
  g_window = headless_window ? make_headless_window() : make_system_window();
  return *g_window;
}

WindowSize fit_window_size(int width, int height, int area_width, int area_height, bool keep_aspect) {
  fit_side(width, height, area_width, keep_aspect);
  fit_side(height, width, area_height, keep_aspect);
  return {width, height};
}

}  // namespace platform
