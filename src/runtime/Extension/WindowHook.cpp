// The window command hook and the close patch over the window's close
// hold-back, and their built-ins by name.
//
// The built-ins take their arguments as values, straight from the caller.
// No shared byte buffer carries them: such a buffer only serves to pass
// arguments across the boundary of a separate library, and these functions
// live in the runtime itself.
#include "runtime/Extension/WindowHook.h"

#include <unordered_map>

#include "runtime/Code/Builtins.h"
#include "runtime/Code/Registration.h"
#include "runtime/Platform/Window.h"

namespace {

const char* const DEFAULT_CLOSE_MESSAGE = "Are you sure you want to quit? You may lose any unsaved progress!";

struct CommandState {
  bool hooked = false;
  bool arrived = false;  // arrived while hooked, not yet reported
  bool active = true;
};

struct HookState {
  std::unordered_map<int32_t, CommandState> commands;
  bool close_captured = false;
  bool captured_close_arrived = false;
  std::string close_message = DEFAULT_CLOSE_MESSAGE;
  bool topmost = false;
  bool taskbar_button_visible = true;
  // Our frame loop draws whether or not the window has the focus.
  bool background_redraw = true;
  bool visible = true;
};

HookState& state() {
  static HookState s;
  return s;
}

// The state of `command`; a command never named is unhooked and active.
CommandState command_state(int32_t command) {
  const auto& commands = state().commands;
  const auto it = commands.find(command);
  return it == commands.end() ? CommandState{} : it->second;
}

// Hands a click that the window held back to each mechanism holding the
// close now, then sets the window's hold-back to what they want. Every
// change of hook, capture or activity passes here first, so a click is
// credited to the holders of the moment it was taken. Before the window
// exists nothing can be clicked; the hold reaches it at the first pass after.
void settle_close_requests() {
  platform::Window* window = platform::window_if_made();
  if (!window) return;
  HookState& s = state();
  const CommandState close = command_state(WINDOW_COMMAND_CLOSE);
  if (window->take_close_request() && close.active) {
    if (close.hooked) s.commands[WINDOW_COMMAND_CLOSE].arrived = true;
    if (s.close_captured) s.captured_close_arrived = true;
  }
  // A disabled close command holds the click too, and the pass above drops it.
  window->hold_close(close.hooked || s.close_captured || !close.active);
}

// Gives back `flag` and clears it.
bool take(bool& flag) {
  const bool was = flag;
  flag = false;
  return was;
}

}  // namespace

bool window_command_hook(int32_t command) {
  settle_close_requests();
  state().commands[command].hooked = true;
  settle_close_requests();
  return true;
}

bool window_command_unhook(int32_t command) {
  settle_close_requests();
  auto& commands = state().commands;
  const auto it = commands.find(command);
  if (it == commands.end() || !it->second.hooked) return false;
  it->second.hooked = false;
  it->second.arrived = false;
  settle_close_requests();
  return true;
}

bool window_command_check(int32_t command) {
  settle_close_requests();
  auto& commands = state().commands;
  const auto it = commands.find(command);
  return it != commands.end() && take(it->second.arrived);
}

bool window_command_run(int32_t command) {
  platform::Window* window = platform::window_if_made();
  if (command != WINDOW_COMMAND_CLOSE || !window) return false;
  settle_close_requests();
  // Past the hook: the click is let through once, then the hold comes back.
  window->hold_close(false);
  window->simulate_close_request();
  settle_close_requests();
  return true;
}

bool window_command_get_active(int32_t command) { return command_state(command).active; }

void window_command_set_active(int32_t command, bool active) {
  settle_close_requests();
  state().commands[command].active = active;
  settle_close_requests();
}

bool window_get_topmost() { return state().topmost; }
void window_set_topmost(bool on) { state().topmost = on; }
bool window_get_taskbar_button_visible() { return state().taskbar_button_visible; }
void window_set_taskbar_button_visible(bool on) { state().taskbar_button_visible = on; }
bool window_get_background_redraw() { return state().background_redraw; }
void window_set_background_redraw(bool on) { state().background_redraw = on; }
bool window_get_visible_w() { return state().visible; }
void window_set_visible_w(bool on) { state().visible = on; }
void* window_handle() { return platform::window_if_made(); }

void ex_patch_window_close_initialize() { state().close_message = DEFAULT_CLOSE_MESSAGE; }

bool ex_patch_window_close_capture(bool on) {
  settle_close_requests();
  HookState& s = state();
  s.close_captured = on;
  if (!on) s.captured_close_arrived = false;
  settle_close_requests();
  return true;
}

bool ex_patch_window_close_event() {
  settle_close_requests();
  return take(state().captured_close_arrived);
}

std::string ex_patch_window_close_get_message() { return state().close_message; }

void ex_patch_window_close_set_message(std::string_view message) { state().close_message = message; }

namespace {

BUILTIN_ADAPTER(window_command_hook) { result = RValue::boolean(window_command_hook(arg_int32(args, 0))); }
BUILTIN_ADAPTER(window_command_unhook) { result = RValue::boolean(window_command_unhook(arg_int32(args, 0))); }
BUILTIN_ADAPTER(window_command_check) { result = RValue::boolean(window_command_check(arg_int32(args, 0))); }
// The second argument, a parameter of the command, means nothing to the close command.
BUILTIN_ADAPTER(window_command_run) { result = RValue::boolean(window_command_run(arg_int32(args, 0))); }
BUILTIN_ADAPTER(window_command_get_active) {
  result = RValue::boolean(window_command_get_active(arg_int32(args, 0)));
}
BUILTIN_ADAPTER(window_command_set_active) { window_command_set_active(arg_int32(args, 0), arg_bool(args, 1)); }
BUILTIN_ADAPTER(window_get_topmost) { result = RValue::boolean(window_get_topmost()); }
BUILTIN_ADAPTER(window_set_topmost) { window_set_topmost(arg_bool(args, 0)); }
BUILTIN_ADAPTER(window_get_taskbar_button_visible) { result = RValue::boolean(window_get_taskbar_button_visible()); }
BUILTIN_ADAPTER(window_set_taskbar_button_visible) { window_set_taskbar_button_visible(arg_bool(args, 0)); }
BUILTIN_ADAPTER(window_get_background_redraw) { result = RValue::boolean(window_get_background_redraw()); }
BUILTIN_ADAPTER(window_set_background_redraw) { window_set_background_redraw(arg_bool(args, 0)); }
BUILTIN_ADAPTER(window_set_visible_w) { window_set_visible_w(arg_bool(args, 0)); }
BUILTIN_ADAPTER(window_handle) { result = RValue::pointer(window_handle()); }
BUILTIN_ADAPTER(ex_patch_window_close_initialize) { ex_patch_window_close_initialize(); }
BUILTIN_ADAPTER(ex_patch_window_close_capture) {
  result = RValue::boolean(ex_patch_window_close_capture(arg_bool(args, 0)));
}
BUILTIN_ADAPTER(ex_patch_window_close_event) { result = RValue::boolean(ex_patch_window_close_event()); }
BUILTIN_ADAPTER(ex_patch_window_close_get_message) { result = RValue::text(ex_patch_window_close_get_message()); }
BUILTIN_ADAPTER(ex_patch_window_close_set_message) { ex_patch_window_close_set_message(arg_text(args, 0)); }

}  // namespace

void register_window_hook_builtins() {
  builtin_register("window_command_hook", builtin_window_command_hook, 1);
  builtin_register("window_command_unhook", builtin_window_command_unhook, 1);
  builtin_register("window_command_check", builtin_window_command_check, 1);
  builtin_register("window_command_run", builtin_window_command_run, -1);
  builtin_register("window_command_get_active", builtin_window_command_get_active, 1);
  builtin_register("window_command_set_active", builtin_window_command_set_active, 2);
  builtin_register("window_get_topmost", builtin_window_get_topmost, 0);
  builtin_register("window_set_topmost", builtin_window_set_topmost, 1);
  builtin_register("window_get_taskbar_button_visible", builtin_window_get_taskbar_button_visible, 0);
  builtin_register("window_set_taskbar_button_visible", builtin_window_set_taskbar_button_visible, 1);
  builtin_register("window_get_background_redraw", builtin_window_get_background_redraw, 0);
  builtin_register("window_set_background_redraw", builtin_window_set_background_redraw, 1);
  builtin_register("window_set_visible_w", builtin_window_set_visible_w, 1);
  builtin_register("window_handle", builtin_window_handle, 0);
  builtin_register("ex_patch_window_close_initialize", builtin_ex_patch_window_close_initialize, 0);
  builtin_register("ex_patch_window_close_capture", builtin_ex_patch_window_close_capture, 1);
  builtin_register("ex_patch_window_close_event", builtin_ex_patch_window_close_event, 0);
  builtin_register("ex_patch_window_close_get_message", builtin_ex_patch_window_close_get_message, 0);
  builtin_register("ex_patch_window_close_set_message", builtin_ex_patch_window_close_set_message, 1);
}
