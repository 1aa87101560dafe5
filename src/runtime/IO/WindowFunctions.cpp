#include "runtime/IO/WindowFunctions.h"

#include "runtime/Code/Builtins.h"
#include "runtime/Code/Conversions.h"
#include "runtime/Platform/Window.h"

void window_set_size(int width, int height) { platform::window().set_size(width, height); }
int window_get_width() { return platform::window().size().width; }
int window_get_height() { return platform::window().size().height; }
void window_set_fullscreen(bool full) { platform::window().set_fullscreen(full); }
bool window_get_fullscreen() { return platform::window().fullscreen(); }
void window_set_caption(const std::string& caption) { platform::window().set_caption(caption); }
std::string window_get_caption() { return platform::window().caption(); }

namespace {

BUILTIN_ADAPTER(window_set_size) { window_set_size(arg_int32(args, 0), arg_int32(args, 1)); }
BUILTIN_ADAPTER(window_get_width) { result = RValue::number(window_get_width()); }
BUILTIN_ADAPTER(window_get_height) { result = RValue::number(window_get_height()); }
BUILTIN_ADAPTER(window_set_fullscreen) { window_set_fullscreen(arg_bool(args, 0)); }
BUILTIN_ADAPTER(window_get_fullscreen) { result = RValue::boolean(window_get_fullscreen()); }
BUILTIN_ADAPTER(window_set_caption) { window_set_caption(std::string(arg_text(args, 0))); }
BUILTIN_ADAPTER(window_get_caption) { result = RValue::text(window_get_caption()); }

}  // namespace

void register_window_builtins() {
  builtin_register("window_set_size", builtin_window_set_size, 2);
  builtin_register("window_get_width", builtin_window_get_width, 0);
  builtin_register("window_get_height", builtin_window_get_height, 0);
  builtin_register("window_set_fullscreen", builtin_window_set_fullscreen, 1);
  builtin_register("window_get_fullscreen", builtin_window_get_fullscreen, 0);
  builtin_register("window_set_caption", builtin_window_set_caption, 1);
  builtin_register("window_get_caption", builtin_window_get_caption, 0);
}
