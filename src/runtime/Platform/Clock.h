// The process clock: microseconds since start-up on a monotonic clock, which
// the frame timer and `get_timer` share, and the wall clock for seeding.
#pragma once

#include <cstdint>

namespace platform {

// Fixes the start of the process clock at this moment; start-up calls it once
// before the first frame (without a call the start is the clock's first use).
void clock_start();
// Microseconds since the start, on a clock that never goes back.
int64_t clock_microseconds();
// Whole seconds of the wall clock since 1970, to seed the random generator.
int64_t clock_wall_seconds();

}  // namespace platform
