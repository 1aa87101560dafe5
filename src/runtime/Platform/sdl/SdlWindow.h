// The SDL2 window's translation of SDL's input codes into the runtime's.
#pragma once

namespace platform {

// The runtime's key code (runtime/IO/Input.h) for an SDL key code; 0 for a
// key that has none.
int key_code_from_sdl(int sdl_keycode);
// The runtime's mouse button (1 left, 2 right, 3 middle) for an SDL button
// number; 0 for the others.
int mouse_button_from_sdl(int sdl_button);

}  // namespace platform
