// Whether this process runs without a window: set by the command line, or by
// VELANT_HEADLESS in the environment (tests set it).
#pragma once

namespace platform {

bool headless();
void set_headless(bool headless);

}  // namespace platform
