// The editor's code box under typing: one character typed into a box of 40
// lines of code (the box's own Step and Draw, and the whole frame around
// it), an idle box's frame, and an empty frame of the same room to set
// them against: on a software renderer the frame itself costs milliseconds.
#include <benchmark/benchmark.h>

#include <string>

#include "environment/text_control/input_text.h"
#include "runtime/Code/Builtins.h"
#include "runtime/Graphics/Surfaces.h"
#include "runtime/IO/Input.h"
#include "runtime/Object/Objects.h"
#include "runtime/Platform/Gpu.h"
#include "runtime/Platform/Window.h"
#include "runtime/Room/FrameState.h"
#include "runtime/Room/Room.h"
#include "runtime/Run/Frame.h"

namespace {

// A room of 1300 x 700 holding an enabled box of 1000 x 700 with 40 lines of code in it.
ObjInputText& code_box() {
  register_runtime_builtins();
  platform::make_window(true).create(1300, 700, "Velant", {});
  rooms_clear();
  objects_clear();
  input_reset();
  define_obj_input_text();
  room_add(RoomDescription{"prova", 1300, 700});
  objects_prepare();
  set_room_target(0);
  room_change(true);
  RValue args[] = {RValue::number(50), RValue::number(0), RValue::number(1000), RValue::number(700),
                   RValue::number(-1), RValue::number(-1)};
  RValue id;
  builtin_call("input_text_create_multiline", id, nullptr, nullptr, 6, args);
  auto& box = *dynamic_cast<ObjInputText*>(instance_find(static_cast<int32_t>(id.real)));
  std::string code;
  for (int line = 0; line < 40; ++line) {
    code += "disegna rettangolo (X: " + std::to_string(line * 10) + ", Y: 100, BASE: 50, ALTEZZA: 30, COLORE: rosso)\n";
  }
  box.set_text_from_outside(code);
  box.enabled = true;
  frame_update();
  frame_draw();
  return box;
}

// The device has drawn everything asked of it: reading a pixel waits for that.
void wait_for_the_device() {
  uint8_t pixel[4];
  read_target_pixels(0, 0, 1, 1, pixel);
}

// The box's own work for a typed character: its Step, its Draw (both
// surfaces redrawn, then shown), and the device done with it.
void BM_type_one_character_into_a_40_line_box(benchmark::State& state) {
  ObjInputText& box = code_box();
  for (auto _ : state) {
    input_text("a");
    input_begin_frame();
    box.step();
    box.draw();
    wait_for_the_device();
    // The next character goes where this one went: the text keeps its size.
    state.PauseTiming();
    input_key_event(KEY_BACKSPACE, true);
    input_begin_frame();
    box.step();
    input_key_event(KEY_BACKSPACE, false);
    state.ResumeTiming();
  }
  state.counters["lines"] = box.lines;
  game_finish();
}
BENCHMARK(BM_type_one_character_into_a_40_line_box)->Unit(benchmark::kMillisecond);

// A whole frame of the room with the box in it, from the key to the frame drawn.
void BM_frame_with_one_character_typed(benchmark::State& state) {
  code_box();
  for (auto _ : state) {
    input_text("a");
    frame_update();
    frame_draw();
    wait_for_the_device();
    state.PauseTiming();
    input_key_event(KEY_BACKSPACE, true);
    frame_update();
    input_key_event(KEY_BACKSPACE, false);
    state.ResumeTiming();
  }
  game_finish();
}
BENCHMARK(BM_frame_with_one_character_typed)->Unit(benchmark::kMillisecond);

void BM_idle_40_line_box(benchmark::State& state) {
  ObjInputText& box = code_box();
  double draws = 0, frames = 0;
  for (auto _ : state) {
    platform::gpu().reset_draw_calls();
    frame_update();
    frame_draw();
    wait_for_the_device();
    draws += static_cast<double>(platform::gpu().draw_calls());
    ++frames;
    benchmark::DoNotOptimize(box.update_surfaces);
  }
  state.counters["draw_calls_a_frame"] = draws / frames;
  game_finish();
}
BENCHMARK(BM_idle_40_line_box)->Unit(benchmark::kMillisecond);

// The same room and frame without the box: what every frame costs on this device whatever it shows.
void BM_empty_frame(benchmark::State& state) {
  ObjInputText& box = code_box();
  instance_destroy(box);
  for (auto _ : state) {
    frame_update();
    frame_draw();
    wait_for_the_device();
  }
  game_finish();
}
BENCHMARK(BM_empty_frame)->Unit(benchmark::kMillisecond);

}  // namespace
