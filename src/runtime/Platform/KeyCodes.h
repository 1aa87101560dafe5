// The runtime's key and mouse button codes, whatever the window system:
// each window backend maps its own codes to these.
#pragma once

// Key codes.
inline constexpr int KEY_NONE = 0;
inline constexpr int KEY_ANY = 1;
inline constexpr int KEY_BACKSPACE = 8;
inline constexpr int KEY_TAB = 9;
inline constexpr int KEY_ENTER = 13;
inline constexpr int KEY_SHIFT = 16;
inline constexpr int KEY_CONTROL = 17;
inline constexpr int KEY_ALT = 18;
inline constexpr int KEY_ESCAPE = 27;
inline constexpr int KEY_SPACE = 32;
inline constexpr int KEY_PAGE_UP = 33;
inline constexpr int KEY_PAGE_DOWN = 34;
inline constexpr int KEY_END = 35;
inline constexpr int KEY_HOME = 36;
inline constexpr int KEY_LEFT = 37;
inline constexpr int KEY_UP = 38;
inline constexpr int KEY_RIGHT = 39;
inline constexpr int KEY_DOWN = 40;
inline constexpr int KEY_INSERT = 45;
inline constexpr int KEY_DELETE = 46;
inline constexpr int KEY_DIGIT_0 = 48;  // to 57 for 9
inline constexpr int KEY_LETTER_A = 65;  // to 90 for Z, either case
inline constexpr int KEY_NUMPAD_0 = 96;  // to 105 for 9
inline constexpr int KEY_F1 = 112;  // to 123 for F12
inline constexpr int KEY_COUNT = 256;

// Mouse buttons, and the two codes that mean "none" and "any" in queries.
inline constexpr int MOUSE_ANY = -1;
inline constexpr int MOUSE_NONE = 0;
inline constexpr int MOUSE_LEFT = 1;
inline constexpr int MOUSE_RIGHT = 2;
inline constexpr int MOUSE_MIDDLE = 3;
