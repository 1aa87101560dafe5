// The desktop's clipboard, as UTF-8 text; a headless run keeps one of its own.
#pragma once

#ifdef VELANT_ABOVE_RUNTIME
#error "the layers above the runtime reach the platform through the runtime's functions"
#endif

#include <string>

namespace platform {

// Replaces the clipboard's text; an empty text empties it.
void clipboard_set_text(const std::string& text);
// The clipboard's text, "" when it holds none.
std::string clipboard_get_text();
bool clipboard_has_text();

}  // namespace platform
