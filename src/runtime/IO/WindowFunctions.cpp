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
void window_set_position(int x, int y) { platform::window().set_position(x, y); }
int window_get_x() { return platform::window().position().x; }
int window_get_y() { return platform::window().position().y; }
void window_set_showborder(bool show) { platform::window().set_borderless(!show); }
int display_get_width() { return platform::window().display_size().width; }
int display_get_height() { return platform::window().display_size().height; }

namespace {

int g_cursor = 0;

// The shape a cursor constant stands for; false for a constant of none.
bool shape_of(int cursor, platform::CursorShape& shape) {
  using platform::CursorShape;
  switch (cursor) {
    case 0: case -2: case -10: shape = CursorShape::Arrow; return true;
    case -1: case -5: shape = CursorShape::None; return true;
    case -3: shape = CursorShape::Cross; return true;
    case -4: shape = CursorShape::IBeam; return true;
    case -6: shape = CursorShape::SizeNESW; return true;
    case -7: shape = CursorShape::SizeNS; return true;
    case -8: shape = CursorShape::SizeNWSE; return true;
    case -9: shape = CursorShape::SizeWE; return true;
    case -11: shape = CursorShape::Wait; return true;
    case -12: case -21: shape = CursorShape::Hand; return true;
    case -19: shape = CursorShape::ArrowWait; return true;
    case -22: shape = CursorShape::SizeAll; return true;
    default:
      if (cursor <= -13 && cursor >= -18) {
        shape = CursorShape::No;
        return true;
      }
      return false;
  }
}

}  // namespace

void window_set_cursor(int cursor) {
  g_cursor = cursor;
  if (platform::CursorShape shape; shape_of(cursor, shape)) platform::window().set_cursor(shape);
}

int window_get_cursor() { return g_cursor; }

namespace {

BUILTIN_ADAPTER(window_set_size) { window_set_size(arg_int32(args, 0), arg_int32(args, 1)); }
BUILTIN_ADAPTER(window_get_width) { result = RValue::number(window_get_width()); }
BUILTIN_ADAPTER(window_get_height) { result = RValue::number(window_get_height()); }
BUILTIN_ADAPTER(window_set_fullscreen) { window_set_fullscreen(arg_bool(args, 0)); }
BUILTIN_ADAPTER(window_get_fullscreen) { result = RValue::boolean(window_get_fullscreen()); }
BUILTIN_ADAPTER(window_set_caption) { window_set_caption(std::string(arg_text(args, 0))); }
BUILTIN_ADAPTER(window_get_caption) { result = RValue::text(window_get_caption()); }
BUILTIN_ADAPTER(window_set_position) { window_set_position(arg_int32(args, 0), arg_int32(args, 1)); }
BUILTIN_ADAPTER(window_get_x) { result = RValue::number(window_get_x()); }
BUILTIN_ADAPTER(window_get_y) { result = RValue::number(window_get_y()); }
BUILTIN_ADAPTER(window_set_showborder) { window_set_showborder(arg_bool(args, 0)); }
BUILTIN_ADAPTER(window_set_cursor) { window_set_cursor(arg_int32(args, 0)); }
BUILTIN_ADAPTER(window_get_cursor) { result = RValue::number(window_get_cursor()); }
BUILTIN_ADAPTER(display_get_width) { result = RValue::number(display_get_width()); }
BUILTIN_ADAPTER(display_get_height) { result = RValue::number(display_get_height()); }

}  // namespace

void register_window_builtins() {
  builtin_register("window_set_size", builtin_window_set_size, 2);
  builtin_register("window_get_width", builtin_window_get_width, 0);
  builtin_register("window_get_height", builtin_window_get_height, 0);
  builtin_register("window_set_fullscreen", builtin_window_set_fullscreen, 1);
  builtin_register("window_get_fullscreen", builtin_window_get_fullscreen, 0);
  builtin_register("window_set_caption", builtin_window_set_caption, 1);
  builtin_register("window_get_caption", builtin_window_get_caption, 0);
  builtin_register("window_set_position", builtin_window_set_position, 2);
  builtin_register("window_get_x", builtin_window_get_x, 0);
  builtin_register("window_get_y", builtin_window_get_y, 0);
  builtin_register("window_set_showborder", builtin_window_set_showborder, 1);
  builtin_register("window_set_cursor", builtin_window_set_cursor, 1);
  builtin_register("window_get_cursor", builtin_window_get_cursor, 0);
  builtin_register("display_get_width", builtin_display_get_width, 0);
  builtin_register("display_get_height", builtin_display_get_height, 0);
}
