// The input state of the runtime: keyboard keys by code 0 to 255, the three
// mouse buttons, the wheel, the mouse position and the typed text.
//
// Two layers. Events arrive at any moment from the window (or from tests
// feeding a headless run) and are collected. Once a frame, at its start,
// input_begin_frame moves what was collected into the frame's state, which
// stays fixed while the frame's events and built-ins read it. So a key
// pressed and released between two frames still shows as pressed and as
// released in the next one, and a key pressed in it reads as down there.
//
// Key codes are the runtime's own, whatever the window system
// (runtime/Platform/KeyCodes.h). Codes 0 and 1 never name a key: in the queries they mean
// "no key" and "any key".
#pragma once

#include <string>
#include <string_view>

#include "runtime/Platform/KeyCodes.h"

namespace platform {
class InputListener;
}

// --- Events, collected until the next frame -------------------------------

// A key went down or up. A down of a key already down (the keyboard's own
// repeat) is no new press, but still counts as the last key and, for
// backspace, still takes a character off `keyboard_string`. Codes outside
// 2..255 are ignored.
void input_key_event(int code, bool down);
// A mouse button (1 left, 2 right, 3 middle) went down or up; others are ignored.
void input_mouse_button_event(int button, bool down);
// The mouse moved to (x, y) in window pixels.
void input_mouse_move(int x, int y);
// The wheel turned: positive away from the user (up), negative towards.
void input_wheel(int dy);
// Text typed, in UTF-8: appended to `keyboard_string`; its last character
// becomes `keyboard_lastchar`.
void input_text(std::string_view utf8);
// The listener that hands the window's events to the functions above.
platform::InputListener& input_from_window();

// --- The frame's state -----------------------------------------------------

// Starts the frame's input: forgets the pressed, released and wheel flags of
// the last frame and takes in the events collected since.
void input_begin_frame();
// Forgets everything: keys, buttons, wheel, typed text and the last keys.
void input_reset();

// Key `code` (2..255) is down in this frame; false for other codes.
bool key_down(int code);
// Key `code` was pressed since the previous frame.
bool key_pressed(int code);
// Key `code` was released since the previous frame.
bool key_released(int code);
// Some key is down / was pressed / was released in this frame.
bool any_key_down();
bool any_key_pressed();
bool any_key_released();

// Button 1, 2 or 3 is down / was pressed / was released in this frame.
bool mouse_button_down(int button);
bool mouse_button_pressed(int button);
bool mouse_button_released(int button);
// Some button is down / was pressed / was released in this frame.
bool any_mouse_button_down();
bool any_mouse_button_pressed();
bool any_mouse_button_released();
// Makes the button (or all, for MOUSE_ANY) read as up and untouched until it
// is pressed again.
void mouse_clear(int button);
// The mouse position in window pixels, as it stood at the frame's start.
int mouse_x();
int mouse_y();
// The wheel turned up / down since the previous frame.
bool wheel_up();
bool wheel_down();

// --- The script-visible input variables ------------------------------------

// `keyboard_string`: the text typed, less what backspace took back.
const std::string& keyboard_string();
void set_keyboard_string(std::string_view text);
// `keyboard_lastkey`: the code of the last key that went down.
int keyboard_lastkey();
// `keyboard_key`: the code of the key held now, 0 once it is let go.
int keyboard_key();
// `keyboard_lastchar`: the last character typed, as UTF-8.
const std::string& keyboard_lastchar();
// `mouse_lastbutton`: the last button that went down.
int mouse_lastbutton();
// `mouse_button`: the button held now, 0 once it is let go.
int mouse_button();

// --- Built-ins over this state (Registration.h registers them) -------------

// `keyboard_check(k)`: k 0: no key is down; 1: any key is; 2..255 that key.
bool keyboard_check(int code);
// `keyboard_check_pressed(k)`, `keyboard_check_released(k)`: the same for
// presses and releases since the previous frame.
bool keyboard_check_pressed(int code);
bool keyboard_check_released(int code);
// `mouse_check_button(b)`: b 0: no button is down; -1: any is; 1..3 that one.
bool mouse_check_button(int button);
// `mouse_check_button_pressed(b)`, `mouse_check_button_released(b)`: the
// same for presses and releases.
bool mouse_check_button_pressed(int button);
bool mouse_check_button_released(int button);
