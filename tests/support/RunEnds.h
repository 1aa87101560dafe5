// Test helper: records how the language ended a run instead of changing room.
#pragma once

#include <vector>

#include "language/evaluation/run_end.h"

inline std::vector<RunEnd>& run_ends() {
  static std::vector<RunEnd> ends;
  return ends;
}

// From now on every end of a run is recorded, and nothing else happens.
inline void record_run_ends() {
  run_ends().clear();
  set_run_end_handler([](RunEnd reason) { run_ends().push_back(reason); });
}
