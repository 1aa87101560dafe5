// Test helper: a running room of its own, `width` by `height`, in which text
// boxes can be made, on a white ground; and its end.
#pragma once

#include "environment/text_control/input_text.h"
#include "runtime/Code/Builtins.h"
#include "runtime/IO/Input.h"
#include "runtime/Object/Objects.h"
#include "runtime/Room/Room.h"

inline void open_text_box_room(int width, int height) {
  register_runtime_builtins();
  rooms_clear();
  objects_clear();
  input_reset();
  define_obj_input_text();
  room_add(RoomDescription{"prova", width, height});
  objects_prepare();
  set_room_target(0);
  room_change(true);
  current_room()->background_colour = 0xFFFFFF;
}

inline void close_text_box_room() {
  game_finish();
  rooms_clear();
  objects_clear();
  input_reset();
}

// The box the built-in `name` makes with `args`.
inline ObjInputText& made_box(const std::string& name, std::vector<RValue> args) {
  RValue id;
  builtin_call(name, id, nullptr, nullptr, static_cast<int>(args.size()), args.data());
  return *dynamic_cast<ObjInputText*>(instance_find(static_cast<int32_t>(id.real)));
}
