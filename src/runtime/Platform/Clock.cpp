// The process clock on std::chrono: steady for intervals, system for seeding.
#include "runtime/Platform/Clock.h"

#include <chrono>

namespace platform {
namespace {

using std::chrono::steady_clock;

steady_clock::time_point& start_time() {
  static steady_clock::time_point start = steady_clock::now();
  return start;
}

}  // namespace

void clock_start() { start_time() = steady_clock::now(); }

int64_t clock_microseconds() {
  return std::chrono::duration_cast<std::chrono::microseconds>(steady_clock::now() - start_time()).count();
}

int64_t clock_wall_seconds() {
  return std::chrono::duration_cast<std::chrono::seconds>(std::chrono::system_clock::now().time_since_epoch())
      .count();
}

}  // namespace platform
