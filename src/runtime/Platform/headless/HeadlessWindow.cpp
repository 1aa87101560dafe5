// The window of a headless run: no system window, only its state, and for
// drawing a hidden window on SDL's offscreen driver, whose OpenGL context
// Mesa gives without any display. Without that driver the run goes on
// without drawing.
#include <SDL.h>

#include "runtime/Platform/Window.h"

namespace platform {
namespace {

class HeadlessWindow final : public Window {
 public:
  bool create(int width, int height, const std::string& caption, const WindowOptions& options) override {
    size_ = {width, height};
    caption_ = caption;
    fullscreen_ = options.fullscreen;
    surface_ = make_offscreen_surface(width, height);
    return true;
  }
  std::string failure() const override { return ""; }

  void set_size(int width, int height) override {
    size_ = {width, height};
    // The drawing surface follows, so that the default framebuffer has the
    // window's size as it would with a real window.
    if (surface_) surface_->set_size(width, height);
  }

  WindowSize size() const override { return size_; }
  void set_position(int x, int y) override { position_ = {x, y}; }
  WindowPosition position() const override { return position_; }
  void set_caption(const std::string& caption) override { caption_ = caption; }
  std::string caption() const override { return caption_; }
  void set_fullscreen(bool on) override { fullscreen_ = on; }
  bool fullscreen() const override { return fullscreen_; }
  void set_borderless(bool) override {}
  void set_cursor_visible(bool visible) override { cursor_visible_ = visible; }
  bool cursor_visible() const override { return cursor_visible_; }
  void set_cursor(CursorShape shape) override { cursor_visible_ = shape != CursorShape::None; }
  // Without a display the window is its own screen.
  WindowSize display_size() const override { return size_; }
  // Input of a headless run comes from whoever feeds the input state.
  void poll_events(InputListener&) override {}

  void swap() override {
    if (surface_) surface_->swap();
  }

  bool gl_context_ready() const override { return surface_ && surface_->gl_context_ready(); }

 private:
  // A hidden system window on the offscreen driver, or null. The driver is
  // forced only while SDL's video starts; SDL's own signal handlers stay
  // off, since nobody reads the quit they would post and Ctrl+C must still
  // end a headless run.
  static std::unique_ptr<Window> make_offscreen_surface(int width, int height) {
    const bool starting_video = !SDL_WasInit(SDL_INIT_VIDEO);
    if (starting_video) {
      SDL_SetHintWithPriority(SDL_HINT_VIDEODRIVER, "offscreen", SDL_HINT_OVERRIDE);
      SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    }
    std::unique_ptr<Window> surface = make_system_window();
    WindowOptions options;
    options.hidden = true;
    const bool made = surface->create(width, height, "", options) && surface->gl_context_ready();
    if (starting_video) {
      SDL_ResetHint(SDL_HINT_VIDEODRIVER);
      SDL_ResetHint(SDL_HINT_NO_SIGNAL_HANDLERS);
    }
    if (!made) surface.reset();
    return surface;
  }

  WindowSize size_;
  WindowPosition position_;
  std::string caption_;
  bool fullscreen_ = false;
  bool cursor_visible_ = true;
  std::unique_ptr<Window> surface_;
};

}  // namespace

std::unique_ptr<Window> make_headless_window() { return std::make_unique<HeadlessWindow>(); }

}  // namespace platform
