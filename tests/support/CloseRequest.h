// Test helper: what a window manager sends when the user closes a window
// (WM_DELETE_WINDOW), sent to an X window directly, as there is no window
// manager on the test display.
#pragma once

#include <X11/Xlib.h>

#include <cstdlib>

inline bool send_close_request(unsigned long window) {
  Display* display = XOpenDisplay(nullptr);
  if (!display) return false;
  XEvent event{};
  event.xclient.type = ClientMessage;
  event.xclient.window = window;
  event.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", False);
  event.xclient.format = 32;
  event.xclient.data.l[0] = static_cast<long>(XInternAtom(display, "WM_DELETE_WINDOW", False));
  event.xclient.data.l[1] = CurrentTime;
  const bool sent = XSendEvent(display, window, False, NoEventMask, &event) != 0;
  XFlush(display);
  XCloseDisplay(display);
  return sent;
}
