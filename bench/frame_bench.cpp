// The frame loop with many instances: each has a Step event, moves, and has
// a Collision event with the others of its kind. 300 frames back to back,
// at the same density for 1,000 and 10,000 instances.
#include <benchmark/benchmark.h>

#include <cmath>
#include <random>

#include "runtime/Object/Objects.h"
#include "runtime/Room/Room.h"
#include "runtime/Run/Frame.h"
#include "runtime/Sprite/Sprite.h"

namespace {

int64_t g_collisions = 0;

void BM_frames_with_instances(benchmark::State& state) {
  const int count = static_cast<int>(state.range(0));
  // About one instance per 60 by 60 pixels, whatever the count.
  const int side = static_cast<int>(std::sqrt(static_cast<double>(count)) * 60);
  for (auto _ : state) {
    state.PauseTiming();
    rooms_clear();
    objects_clear();
    sprites_clear();
    const int32_t box = sprite_add_shape("bench_box", 16, 16, 8, 8);
    const int32_t mover = object_add("mover");
    object_get(mover)->sprite = box;
    object_set_event(mover, ev::STEP, ev::STEP_NORMAL, [side](CInstance& self, CInstance*) {
      // Wraps round the room, so that the density stays.
      if (self.x < 0) self.x += static_cast<float>(side);
      if (self.x > static_cast<float>(side)) self.x -= static_cast<float>(side);
      if (self.y < 0) self.y += static_cast<float>(side);
      if (self.y > static_cast<float>(side)) self.y -= static_cast<float>(side);
    });
    object_set_event(mover, ev::COLLISION, mover, [](CInstance&, CInstance*) { ++g_collisions; });
    room_add(RoomDescription{"bench", side, side});
    objects_prepare();
    set_room_target(0);
    room_change(true);
    std::mt19937 rng(7);
    std::uniform_real_distribution<float> place(0, static_cast<float>(side)), turn(0, 360);
    for (int i = 0; i < count; ++i) {
      CInstance* instance = instance_create(place(rng), place(rng), mover, 0);
      instance->set_speed(2);
      instance->set_direction(turn(rng));
    }
    g_collisions = 0;
    state.ResumeTiming();
    for (int frame = 0; frame < 300; ++frame) frame_run();
  }
  state.counters["frames_per_second"] =
      benchmark::Counter(300.0 * static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
  state.counters["collision_events"] = static_cast<double>(g_collisions);
  game_finish();
  rooms_clear();
  objects_clear();
  sprites_clear();
}
BENCHMARK(BM_frames_with_instances)->Arg(1000)->Arg(10000)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
