// The asynchronous queue: a list under its own lock, so that a worker never
// waits for the frame loop longer than one append.
#include "runtime/Support/AsyncQueue.h"

#include <mutex>

namespace {

std::mutex g_queue_mutex;
std::vector<AsyncEvent> g_pending;

}  // namespace

void async_event_queue(int map_id, int other_subtype) {
  std::lock_guard<std::mutex> lock(g_queue_mutex);
  g_pending.push_back({map_id, other_subtype});
}

std::vector<AsyncEvent> async_events_take() {
  std::lock_guard<std::mutex> lock(g_queue_mutex);
  std::vector<AsyncEvent> taken;
  taken.swap(g_pending);
  return taken;
}
