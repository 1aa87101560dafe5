// The desktop's clipboard; a headless run has none.
#pragma once

#ifdef VELANT_ABOVE_RUNTIME
#error "the layers above the runtime reach the platform through the runtime's functions"
#endif

#include <string>

namespace platform {

void clipboard_set_text(const std::string& text);

}  // namespace platform
