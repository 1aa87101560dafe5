// The system clipboard (an in-process one in headless runs).
#pragma once

#ifdef VELANT_ABOVE_RUNTIME
#error "the layers above the runtime reach the platform through the runtime's functions"
#endif

#include <string>

namespace platform {

void clipboard_set_text(const std::string& text);
std::string clipboard_get_text();
bool clipboard_has_text();

}  // namespace platform
