// The window command hook and the close patch: two ways for a screen to
// hold back the window's close button and be told, once, that it was
// clicked, so that it can stop, save or ask first.
//
// Both stand on the window's one close hold-back (runtime/Platform/Window.h).
// A click that the window held back goes to every mechanism that holds the
// close at that moment: with the close command hooked and the close captured,
// window_command_check(WINDOW_COMMAND_CLOSE) and ex_patch_window_close_event
// each report it once. The window closes on a click again only when neither
// holds it.
//
// The window functions that have nothing to act on here (topmost, taskbar
// button, background redraw, visibility) keep their state, so that a program
// reads back what it set.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// The system's command for closing a window: a click on the close button.
inline constexpr int32_t WINDOW_COMMAND_CLOSE = 61536;

// Hooks `command`: it no longer acts, and each arrival is reported by window_command_check. True.
bool window_command_hook(int32_t command);
// Removes the hook of `command` and forgets an arrival not yet reported; false if it wasn't hooked.
bool window_command_unhook(int32_t command);
// True once if the hooked `command` arrived since the last check; several arrivals count once.
bool window_command_check(int32_t command);
// Runs `command` past any hook: the close command closes the window; others do nothing here. True if it acted.
bool window_command_run(int32_t command);
// Whether `command` is enabled (true until set otherwise).
bool window_command_get_active(int32_t command);
// Enables or disables `command`; a disabled close command ignores clicks.
void window_command_set_active(int32_t command, bool active);

// Whether the window was asked to stay above others (false at start).
bool window_get_topmost();
// Asks the window to stay above others (kept, not acted on).
void window_set_topmost(bool on);
// Whether the window was asked to show a taskbar button (true at start).
bool window_get_taskbar_button_visible();
// Asks for a taskbar button or none (kept, not acted on).
void window_set_taskbar_button_visible(bool on);
// Whether the window was asked to keep drawing without the focus (true at start).
bool window_get_background_redraw();
// Asks the window to keep drawing without the focus (kept, not acted on).
void window_set_background_redraw(bool on);
// Whether the window was asked to be shown (true at start).
bool window_get_visible_w();
// Asks to show or hide the window (kept, not acted on).
void window_set_visible_w(bool on);
// The window in use as an opaque handle; null before the window is made.
void* window_handle();

// Attaches the close patch: sets its message to the default.
void ex_patch_window_close_initialize();
// Captures the close button (true) or lets it close the window (false). True.
bool ex_patch_window_close_capture(bool on);
// True once after a captured close; several clicks before a call count once.
bool ex_patch_window_close_event();
// The close patch's message, "Are you sure you want to quit? You may lose any unsaved progress!" by default.
std::string ex_patch_window_close_get_message();
// Sets the close patch's message.
void ex_patch_window_close_set_message(std::string_view message);
