// What the frame loop keeps from one frame to the next and what built-in
// variables read: speed, timing, the `async_load` of the running event.
#pragma once

#include <cstdint>

struct FrameState {
  int32_t game_speed = 30;        // frames a second asked for (`room_speed`)
  int32_t fps = 0;                // frames of the past second
  int64_t frames_drawn = 0;       // frames whose draw events ran
  int32_t frames_this_second = 0;
  int64_t second = 0;             // the clock's whole second of the count
  int64_t last_frame_start = 0;   // microseconds
  int64_t delta_time = 0;         // microseconds since the previous frame
  int32_t async_load = -1;        // the map of the running asynchronous event, -1 outside one
  bool window_resized = false;    // the window changed size since the last frame
};

FrameState& frame_state();
