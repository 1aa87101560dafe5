// The main loop in a real window, paced at 30 frames a second: the 90
// frames after the first should take 3 seconds. Needs a display (`make
// bench` runs under xvfb-run).
#include <benchmark/benchmark.h>

#include <cstdlib>

#include "runtime/Object/Objects.h"
#include "runtime/Platform/Clock.h"
#include "runtime/Room/Room.h"
#include "runtime/Run/MainLoop.h"

namespace {

int64_t g_first_step = 0, g_last_step = 0;
int g_steps = 0;

void BM_paced_frames_in_a_window(benchmark::State& state) {
  if (!std::getenv("DISPLAY")) {
    state.SkipWithError("no display: run under xvfb-run");
    return;
  }
  RuntimeOptions options;
  options.max_frames = 91;
  for (auto _ : state) {
    g_steps = 0;
    runtime_run(options, [] {
      // One instance notes when the first and the last Step ran.
      const int32_t clock = object_add("clock");
      object_set_event(clock, ev::STEP, ev::STEP_NORMAL, [](CInstance&, CInstance*) {
        const int64_t now = platform::clock_microseconds();
        if (g_steps++ == 0) g_first_step = now;
        g_last_step = now;
      });
      room_add(RoomDescription{"stanza", 640, 480, false, 30, {{clock, 0, 0, nullptr}}, nullptr});
    });
  }
  const double seconds = static_cast<double>(g_last_step - g_first_step) / 1e6;
  state.counters["seconds_for_90_frames"] = seconds;
  state.counters["frames_per_second"] = 90.0 / seconds;
}
BENCHMARK(BM_paced_frames_in_a_window)->Iterations(1)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
