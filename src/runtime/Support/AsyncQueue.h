// The queue of finished asynchronous work. Worker threads (dialogs, HTTP,
// external libraries) put a record here; the frame loop takes them all once
// a frame and delivers each as an Other event with its map as `async_load`.
#pragma once

#include <vector>

struct AsyncEvent {
  int map_id;         // the ds_map that becomes `async_load`
  int other_subtype;  // the Other event to run: 63 dialogs, 62 HTTP, ...
};

// Appends a record; safe from any thread.
void async_event_queue(int map_id, int other_subtype);
// The pending records in the order they came, leaving the queue empty.
std::vector<AsyncEvent> async_events_take();
