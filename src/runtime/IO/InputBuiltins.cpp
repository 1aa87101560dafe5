// The input built-ins by name, over the input state of the frame.
#include "runtime/Code/Builtins.h"
#include "runtime/Code/Registration.h"
#include "runtime/IO/Input.h"

namespace {

BUILTIN_ADAPTER(keyboard_check) { result = RValue::boolean(keyboard_check(arg_int32(args, 0))); }
BUILTIN_ADAPTER(keyboard_check_pressed) { result = RValue::boolean(keyboard_check_pressed(arg_int32(args, 0))); }
BUILTIN_ADAPTER(keyboard_check_released) { result = RValue::boolean(keyboard_check_released(arg_int32(args, 0))); }
BUILTIN_ADAPTER(mouse_check_button) { result = RValue::boolean(mouse_check_button(arg_int32(args, 0))); }
BUILTIN_ADAPTER(mouse_check_button_pressed) {
  result = RValue::boolean(mouse_check_button_pressed(arg_int32(args, 0)));
}
BUILTIN_ADAPTER(mouse_check_button_released) {
  result = RValue::boolean(mouse_check_button_released(arg_int32(args, 0)));
}
BUILTIN_ADAPTER(mouse_clear) { mouse_clear(arg_int32(args, 0)); }
BUILTIN_ADAPTER(mouse_wheel_up) { result = RValue::boolean(wheel_up()); }
BUILTIN_ADAPTER(mouse_wheel_down) { result = RValue::boolean(wheel_down()); }
// A desktop has no virtual keyboard: its status is undefined and showing it
// does nothing. The result is already undefined.
BUILTIN_ADAPTER(keyboard_virtual_status) {}
BUILTIN_ADAPTER(keyboard_virtual_show) {}
BUILTIN_ADAPTER(window_mouse_get_x) { result = RValue::number(mouse_x()); }
BUILTIN_ADAPTER(window_mouse_get_y) { result = RValue::number(mouse_y()); }

}  // namespace

void register_input_builtins() {
  builtin_register("keyboard_check", builtin_keyboard_check, 1);
  builtin_register("keyboard_check_pressed", builtin_keyboard_check_pressed, 1);
  builtin_register("keyboard_check_released", builtin_keyboard_check_released, 1);
  builtin_register("mouse_check_button", builtin_mouse_check_button, 1);
  builtin_register("mouse_check_button_pressed", builtin_mouse_check_button_pressed, 1);
  builtin_register("mouse_check_button_released", builtin_mouse_check_button_released, 1);
  builtin_register("mouse_clear", builtin_mouse_clear, 1);
  builtin_register("mouse_wheel_up", builtin_mouse_wheel_up, 0);
  builtin_register("mouse_wheel_down", builtin_mouse_wheel_down, 0);
  builtin_register("keyboard_virtual_status", builtin_keyboard_virtual_status, 0);
  builtin_register("keyboard_virtual_show", builtin_keyboard_virtual_show, 4);
  builtin_register("window_mouse_get_x", builtin_window_mouse_get_x, 0);
  builtin_register("window_mouse_get_y", builtin_window_mouse_get_y, 0);
}
