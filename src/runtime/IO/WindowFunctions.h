// The window as programs see it: its size, caption and full-screen state,
// as built-ins and as functions for the application's own code.
#pragma once

#include <string>

// Size of the window's client area in pixels; setting it brings no resize notice.
void window_set_size(int width, int height);
int window_get_width();
int window_get_height();
// Full screen on the window's display, or back to a window.
void window_set_fullscreen(bool full);
bool window_get_fullscreen();
// The text in the title bar.
void window_set_caption(const std::string& caption);
std::string window_get_caption();
// Position of the client area on the screen.
void window_set_position(int x, int y);
int window_get_x();
int window_get_y();
// With or without the window's border and caption.
void window_set_showborder(bool show);
// The pointer's shape by the runtime's constant: 0 and -2 the arrow, -1 and
// -5 none, -3 cross, -4 I-beam, -6 to -9 the sizing arrows (NE-SW, N-S,
// NW-SE, W-E), -10 up arrow, -11 wait, -12 and -21 hand, -13 to -18 no
// entry, -19 arrow with wait, -22 size-all. Any other value is remembered
// and changes nothing.
void window_set_cursor(int cursor);
int window_get_cursor();
// Size of the main display in pixels.
int display_get_width();
int display_get_height();

// The window_* and display_* functions above as built-ins.
void register_window_builtins();
