#include "language/evaluation/run_end.h"

namespace {
void (*g_handler)(RunEnd) = nullptr;
}  // namespace

void set_run_end_handler(void (*handler)(RunEnd reason)) { g_handler = handler; }

void end_run(RunEnd reason) {
  if (g_handler) g_handler(reason);
}
