// One frame: the Update steps in their fixed order, then the draw events.
//
// The order is part of what programs see: an alarm set to 1 in Create fires
// in the first frame, an instance destroyed in Step has no Draw, a room
// change asked for in Step skips the rest of the frame, an instance made in
// Step gets End Step and Draw but not Step.
#include "runtime/Run/Frame.h"

#include <algorithm>
#include <cmath>

#include "runtime/Code/FrameArena.h"
#include "runtime/Graphics/Screen.h"
#include "runtime/Graphics/SpriteDrawing.h"
#include "runtime/IO/Http.h"
#include "runtime/IO/Input.h"
#include "runtime/Room/Collision.h"
#include "runtime/Object/Objects.h"
#include "runtime/Platform/Clock.h"
#include "runtime/Room/Room.h"
#include "runtime/Support/AsyncQueue.h"
#include "runtime/Room/Events.h"
#include "runtime/Room/FrameState.h"
#include "runtime/Sprite/Sprite.h"
#include "runtime/Support/DsMap.h"

namespace {

// Pending activations and depth re-sorting come with layers; nothing is
// pending yet, so housekeeping is the room-change test alone.
void housekeeping() {}

// Housekeeping, then whether a room change ends the Update.
bool check() {
  housekeeping();
  return room_change_pending();
}

// The active instances of the room, in list order, that exist when called.
template <class Visit>
void for_each_active(Visit visit) {
  Room* room = current_room();
  if (!room) return;
  const size_t count = room->active.size();
  for (size_t i = 0; i < count && i < room->active.size(); ++i) {
    CInstance* instance = room->active[i];
    if (instance->active()) visit(*instance);
  }
}

// 2. Previous positions, and the animation frame moves on.
void advance_animation() {
  for_each_active([](CInstance& i) {
    i.xprevious = i.x;
    i.yprevious = i.y;
    const CSprite* sprite = sprite_get(i.sprite_index);
    if (!sprite) {
      i.image_index += i.image_speed;
      return;
    }
    i.image_index += i.image_speed * sprite_frames_per_step(*sprite, static_cast<float>(frame_state().game_speed));
    const float frames = static_cast<float>(sprite->frames);
    bool ended = false;
    if (i.image_index >= frames) {
      i.image_index -= frames;
      ended = true;
    } else if (i.image_index < 0) {
      i.image_index += frames;
      ended = true;
    }
    if (ended) PerformEvent(&i, &i, i.object_index, ev::OTHER, ev::OTHER_ANIMATION_END);
  });
}

// 7. An alarm counts down only where its object has the event; it fires on
// reaching exactly 0, and -1 rests.
void run_alarms() {
  for (int alarm = 0; alarm < 12; ++alarm) {
    const uint64_t stamp = next_walk_stamp();
    for (const int32_t object_index : objects_with_event(ev::ALARM, alarm)) {
      const CObject* object = object_get(object_index);
      for (size_t k = 0; k < object->instances.size(); ++k) {
        CInstance* i = object->instances[k];
        if (!i->active() || i->creation_stamp > stamp || i->alarm[alarm] < 0) continue;
        if (--i->alarm[alarm] == 0) PerformEvent(i, i, object_index, ev::ALARM, alarm);
      }
    }
  }
}

// 8. Keyboard, Key Press and Key Release for each key, then for "any key" (1) or "no key" (0).
void run_keyboard() {
  for (int key = 8; key < 256; ++key) {
    if (key_down(key) || key_pressed(key)) event_dispatch(ev::KEYBOARD, key);
    if (key_pressed(key)) event_dispatch(ev::KEYPRESS, key);
    if (key_released(key)) event_dispatch(ev::KEYRELEASE, key);
  }
  event_dispatch(ev::KEYBOARD, any_key_down() ? 1 : 0);
  event_dispatch(ev::KEYPRESS, any_key_pressed() ? 1 : 0);
  event_dispatch(ev::KEYRELEASE, any_key_released() ? 1 : 0);
}

// A mouse event on the instances under the mouse only.
void dispatch_local_mouse(int subtype, float mx, float my) {
  const uint64_t stamp = next_walk_stamp();
  for (const int32_t object_index : objects_with_event(ev::MOUSE, subtype)) {
    const CObject* object = object_get(object_index);
    for (size_t k = 0; k < object->instances.size(); ++k) {
      CInstance* i = object->instances[k];
      if (!i->active() || i->creation_stamp > stamp || !instance_contains_point(*i, mx, my)) continue;
      PerformEvent(i, i, object_index, ev::MOUSE, subtype);
    }
  }
}

// 10. Pressed, then held, then released, for left, right and middle; then
// enter and leave; then the wheel.
void run_mouse() {
  const float mx = static_cast<float>(mouse_x());
  const float my = static_cast<float>(mouse_y());
  for (int b = 0; b < 3; ++b) {
    if (!mouse_button_pressed(b + 1)) continue;
    dispatch_local_mouse(4 + b, mx, my);
    event_dispatch(ev::MOUSE, 53 + b);
  }
  bool any_held = false;
  for (int b = 0; b < 3; ++b) {
    if (!mouse_button_down(b + 1) && !mouse_button_pressed(b + 1)) continue;
    any_held = true;
    dispatch_local_mouse(b, mx, my);
    event_dispatch(ev::MOUSE, 50 + b);
  }
  if (!any_held) dispatch_local_mouse(3, mx, my);
  for (int b = 0; b < 3; ++b) {
    if (!mouse_button_released(b + 1)) continue;
    dispatch_local_mouse(7 + b, mx, my);
    event_dispatch(ev::MOUSE, 56 + b);
  }
  const bool enter_or_leave = !objects_with_event(ev::MOUSE, 10).empty() || !objects_with_event(ev::MOUSE, 11).empty();
  if (enter_or_leave) {
    for_each_active([mx, my](CInstance& i) {
      const bool inside = instance_contains_point(i, mx, my);
      if (inside == i.mouse_inside) return;
      i.mouse_inside = inside;
      PerformEvent(&i, &i, i.object_index, ev::MOUSE, inside ? 10 : 11);
    });
  }
  if (wheel_up()) event_dispatch(ev::MOUSE, 60);
  if (wheel_down()) event_dispatch(ev::MOUSE, 61);
}

// 13. Friction and gravity, then the move by the speeds.
void run_motion() {
  for_each_active([](CInstance& i) {
    i.apply_friction_and_gravity();
    if (i.hspeed == 0 && i.vspeed == 0) return;
    i.x += i.hspeed;
    i.y += i.vspeed;
    i.set(instance_flag::BBOX_DIRTY, true);
  });
}

// 14. Outside Room when an instance goes from inside to outside; Intersect
// Boundary while its box crosses the room's edge.
void run_outside_room() {
  const bool outside_handlers = !objects_with_event(ev::OTHER, ev::OTHER_OUTSIDE).empty();
  const bool boundary_handlers = !objects_with_event(ev::OTHER, ev::OTHER_BOUNDARY).empty();
  if (!outside_handlers && !boundary_handlers) return;
  const Room* room = current_room();
  const auto w = static_cast<float>(room->width), h = static_cast<float>(room->height);
  for_each_active([&](CInstance& i) {
    BBox box;
    bool outside, crossing;
    if (instance_bbox(i, box)) {
      outside = box.right < 0 || box.left > w || box.bottom < 0 || box.top > h;
      crossing = !outside && (box.left < 0 || box.right > w || box.top < 0 || box.bottom > h);
    } else {
      outside = i.x < 0 || i.x > w || i.y < 0 || i.y > h;
      crossing = false;
    }
    const bool was_outside = i.has(instance_flag::OUTSIDE);
    i.set(instance_flag::OUTSIDE, outside);
    if (outside && !was_outside) PerformEvent(&i, &i, i.object_index, ev::OTHER, ev::OTHER_OUTSIDE);
    if (crossing) PerformEvent(&i, &i, i.object_index, ev::OTHER, ev::OTHER_BOUNDARY);
  });
}

// 15. Each finished piece of asynchronous work: its map as `async_load`,
// its Other event on every instance that handles it; the map goes after.
void run_async() {
  http_deliver();
  for (const AsyncEvent& e : async_events_take()) {
    frame_state().async_load = e.map_id;
    event_dispatch(ev::OTHER, e.other_subtype);
    frame_state().async_load = -1;
    const RValue map = RValue::ref(REF_DS_MAP, e.map_id);
    ds_map_destroy(map);
  }
}

// The Collision handler of `self` for `other`'s object or its nearest ancestor.
int collision_subtype(const CInstance& self, const CInstance& other) {
  for (int32_t o = other.object_index, steps = 0; o >= 0 && steps <= object_count(); ++steps) {
    if (object_event(self.object_index, ev::COLLISION, o)) return o;
    o = object_get(o)->parent;
  }
  return -1;
}

void move_back(CInstance& i) {
  i.x = i.xprevious;
  i.y = i.yprevious;
  i.set(instance_flag::BBOX_DIRTY, true);
}

// 16. Solid instances step back before their events, move again after, and
// step back once more if they still collide.
void run_collisions() {
  if (!objects_have_event_type(ev::COLLISION)) return;
  static std::vector<std::pair<CInstance*, CInstance*>> pairs;
  pairs.clear();
  find_collision_pairs(pairs);
  for (auto [a, b] : pairs) {
    if (!a->active() || !b->active()) continue;
    const bool solid = a->has(instance_flag::SOLID) || b->has(instance_flag::SOLID);
    if (solid) {
      move_back(*a);
      move_back(*b);
    }
    if (const int s = collision_subtype(*a, *b); s >= 0) PerformEvent(a, b, a->object_index, ev::COLLISION, s);
    if (const int s = collision_subtype(*b, *a); s >= 0 && a->active() && b->active()) {
      PerformEvent(b, a, b->object_index, ev::COLLISION, s);
    }
    if (solid) {
      for (CInstance* i : {a, b}) {
        i->x += i->hspeed;
        i->y += i->vspeed;
        i->set(instance_flag::BBOX_DIRTY, true);
      }
      if (instances_collide(*a, *b)) {
        move_back(*a);
        move_back(*b);
      }
    }
  }
}

// A draw event on the visible instances that handle it. The normal Draw
// goes over every visible instance, deepest first: one without a handler
// of its own shows its sprite.
void dispatch_draw(int subtype) {
  static std::vector<CInstance*> drawn;
  drawn.clear();
  if (subtype == ev::DRAW_NORMAL) {
    for (CInstance* i : current_room()->active) {
      if (i->active() && i->has(instance_flag::VISIBLE)) drawn.push_back(i);
    }
    // Depth order, and creation order among equals.
    std::stable_sort(drawn.begin(), drawn.end(), [](const CInstance* a, const CInstance* b) {
      return a->depth > b->depth || (a->depth == b->depth && a->creation_stamp < b->creation_stamp);
    });
  } else {
    for (const int32_t object_index : objects_with_event(ev::DRAW, subtype)) {
      for (CInstance* i : object_get(object_index)->instances) {
        if (i->active() && i->has(instance_flag::VISIBLE)) drawn.push_back(i);
      }
    }
  }
  for (CInstance* i : drawn) {
    if (!i->active()) continue;
    if (subtype != ev::DRAW_NORMAL || object_event(i->object_index, ev::DRAW, ev::DRAW_NORMAL)) {
      PerformEvent(i, i, i->object_index, ev::DRAW, subtype);
    } else {
      draw_self(*i);
    }
  }
  housekeeping();
}

}  // namespace

void frame_update() {
  if (!current_room()) return;
  FrameState& state = frame_state();
  if (state.window_resized) {
    state.window_resized = false;
    deletion_pass();
    EventAll(ev::DRAW, ev::DRAW_RESIZE);
    housekeeping();
    deletion_pass();
  }
  advance_animation();                              // 2
  event_dispatch(ev::STEP, ev::STEP_BEGIN);         // 3
  if (check()) return;
  // 4 to 6: networking, time lines and time sources have nothing to run.
  run_alarms();                                     // 7
  if (check()) return;
  run_keyboard();                                   // 8
  if (check()) return;
  // 9: no joysticks.
  run_mouse();                                      // 10
  if (check()) return;
  event_dispatch(ev::STEP, ev::STEP_NORMAL);        // 12
  if (check()) return;
  run_motion();                                     // 13
  if (check()) return;
  run_outside_room();                               // 14
  if (check()) return;
  run_async();                                      // 15
  if (check()) return;
  run_collisions();                                 // 16
  if (check()) return;
  event_dispatch(ev::STEP, ev::STEP_END);           // 17
  check();
}

void frame_draw() {
  if (!current_room()) return;
  ++frame_state().frames_drawn;
  screen_frame_begin();
  dispatch_draw(ev::DRAW_PRE);
  screen_room_begin();
  dispatch_draw(ev::DRAW_BEGIN);
  dispatch_draw(ev::DRAW_NORMAL);
  dispatch_draw(ev::DRAW_END);
  screen_room_end();
  dispatch_draw(ev::DRAW_POST);
  screen_gui_begin();
  dispatch_draw(ev::DRAW_GUI_BEGIN);
  dispatch_draw(ev::DRAW_GUI);
  dispatch_draw(ev::DRAW_GUI_END);
  screen_frame_end();
}

bool frame_run() {
  FrameState& state = frame_state();
  frame_arena().reset();
  const int64_t now = platform::clock_microseconds();
  state.delta_time = state.last_frame_start == 0 ? 0 : now - state.last_frame_start;
  state.last_frame_start = now;
  input_begin_frame();
  frame_update();
  if (!room_change_pending()) {
    deletion_pass();
    frame_draw();
  }
  // Frames of the past second.
  ++state.frames_this_second;
  if (now / 1000000 != state.second) {
    state.second = now / 1000000;
    state.fps = state.frames_this_second;
    state.frames_this_second = 0;
  }
  const int32_t target = room_target();
  if (target == ROOM_LEAVE || target == ROOM_END_GAME) return false;
  if (target >= 0) room_change(false);
  return true;
}

FrameState& frame_state() {
  static FrameState state;
  return state;
}

int32_t frames_per_second() { return frame_state().fps; }
