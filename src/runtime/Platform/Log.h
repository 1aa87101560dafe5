// What the platform has to tell about itself (a graphics device that can't
// draw, say) goes to the runtime's debug stream, which the runtime names here.
#pragma once

#ifdef VELANT_ABOVE_RUNTIME
#error "the layers above the runtime reach the platform through the runtime's functions"
#endif

#include <string>

namespace platform {

// Where log lines go; without one, nowhere.
void set_log(void (*write_line)(const std::string& text));
void log(const std::string& text);

}  // namespace platform
