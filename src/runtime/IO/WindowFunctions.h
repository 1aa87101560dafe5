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

// window_set_size, window_get_width, window_get_height, window_set_fullscreen,
// window_get_fullscreen, window_set_caption, window_get_caption.
void register_window_builtins();
