// Whether this process runs without a window: set by the command line, or by
// VELANT_HEADLESS in the environment (tests set it).
#pragma once

#ifdef VELANT_ABOVE_RUNTIME
#error "the layers above the runtime reach the platform through the runtime's functions"
#endif

namespace platform {

bool headless();
void set_headless(bool headless);

}  // namespace platform
