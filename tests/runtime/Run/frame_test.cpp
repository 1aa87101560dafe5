#include "runtime/Run/Frame.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "runtime/IO/Input.h"
#include "runtime/Object/Objects.h"
#include "runtime/Room/Events.h"
#include "runtime/Room/FrameState.h"
#include "runtime/Room/Room.h"
#include "runtime/Sprite/Sprite.h"
#include "runtime/Support/AsyncQueue.h"
#include "runtime/Support/DsMap.h"
#include "support/Fatal.h"

namespace {

// What ran, as "object:what" items joined by ", ".
std::string g_log;
// The log so far, which starts again empty.
std::string taken_log() { return std::exchange(g_log, ""); }

// An event that does `act`, if any, then notes "object:what" followed by what `act` gave.
struct Logged {
  int type, subtype;
  std::string what;
  std::function<std::string(CInstance& self)> act = nullptr;
};
void logs(int32_t object, const std::vector<Logged>& events) {
  for (const Logged& e : events) {
    object_set_event(object, e.type, e.subtype, [e](CInstance& self, CInstance*) {
      const std::string more = e.act ? e.act(self) : "";
      g_log += (g_log.empty() ? "" : ", ") + (instance_object_name(&self) + (":" + e.what)) + more;
    });
  }
}

class Frame : public ::testing::Test {
 protected:
  void SetUp() override { reset(); }
  void TearDown() override { reset(); }
  static void reset() {
    game_finish();
    rooms_clear();
    objects_clear();
    input_reset();
    g_log.clear();
  }
  // Prepares the objects and enters room 0 (made if none was added).
  static void start(int32_t width = 640, int32_t height = 480) {
    if (room_count() == 0) room_add(RoomDescription{"stanza", width, height});
    objects_prepare();
    set_room_target(0);
    room_change(true);
  }
  static CInstance* make(int32_t object, float x = 0, float y = 0) { return instance_create(x, y, object, 0); }
};

TEST_F(Frame, OneFrameRunsItsEventsInTheirOrder) {
  const int32_t o = object_add("o");
  logs(o, {{ev::CREATE, 0, "create", [](CInstance& self) { self.alarm[0] = 1; return ""; }},
           {ev::OTHER, ev::OTHER_GAME_START, "game start"}, {ev::OTHER, ev::OTHER_ROOM_START, "room start"},
           {ev::STEP, ev::STEP_BEGIN, "begin step"}, {ev::ALARM, 0, "alarm 0"}, {ev::KEYBOARD, 'A', "keyboard A"},
           {ev::KEYPRESS, 'A', "press A"}, {ev::KEYBOARD, 1, "keyboard any"}, {ev::MOUSE, 53, "global left pressed"},
           // An instance without a shape is under no mouse: its own Left Pressed never runs.
           {ev::MOUSE, 4, "left pressed"}, {ev::STEP, ev::STEP_NORMAL, "step"},
           // Asynchronous work: its map is async_load while its event runs.
           {ev::OTHER, ev::OTHER_DIALOG, "async_load ",
            [](CInstance&) { return std::to_string(frame_state().async_load); }},
           {ev::STEP, ev::STEP_END, "end step"}, {ev::DRAW, ev::DRAW_BEGIN, "draw begin"},
           {ev::DRAW, ev::DRAW_NORMAL, "draw"}, {ev::DRAW, ev::DRAW_END, "draw end"},
           {ev::DRAW, ev::DRAW_GUI_END, "draw gui end"}});
  room_add(RoomDescription{"stanza", 640, 480, false, 30, {{o, 10, 10, nullptr}}, nullptr});
  start();
  input_key_event('A', true);
  input_mouse_move(10, 10);
  input_mouse_button_event(MOUSE_LEFT, true);
  const RValue map = ds_map_create();
  async_event_queue(map.ref_index(), ev::OTHER_DIALOG);
  ASSERT_TRUE(frame_run());
  EXPECT_EQ(taken_log(), "o:create, o:game start, o:room start, o:begin step, o:alarm 0, o:keyboard A, "
                         "o:press A, o:keyboard any, o:global left pressed, o:step, o:async_load " +
                             std::to_string(map.ref_index()) +
                             ", o:end step, o:draw begin, o:draw, o:draw end, o:draw gui end");
  EXPECT_EQ(frame_state().async_load, -1);
  EXPECT_FALSE(ds_map_add_from_worker(map.ref_index(), "chiave", RValue::number(1))) << "the map goes with its event";
}

// An alarm counts down only where its object has the event; set to 1 in Create, it fires in the first
// frame (OneFrameRunsItsEventsInTheirOrder).
TEST_F(Frame, AlarmsCountDownWhereTheObjectHasTheEventAndRestAtMinusOne) {
  const int32_t with_alarm = object_add("with_alarm"), without = object_add("without");
  logs(with_alarm, {{ev::ALARM, 0, "alarm"}});
  start();
  CInstance* a = make(with_alarm);
  CInstance* b = make(without);
  a->alarm[0] = 1;
  b->alarm[0] = 3;
  frame_run();
  EXPECT_EQ(taken_log(), "with_alarm:alarm");
  frame_run();
  EXPECT_EQ(taken_log(), "") << "0 counts down to -1 without firing again";
  EXPECT_EQ(std::pair(a->alarm[0], b->alarm[0]), std::pair(-1, 3));
}

// A Step that destroys its instance, makes one, or changes room.
TEST_F(Frame, WhatAStepDoesShapesTheRestOfTheFrame) {
  const int32_t o = object_add("o"), made = object_add("made");
  room_add(RoomDescription{"prima"});
  room_add(RoomDescription{"seconda"});
  static int what;
  const std::vector<Logged> end_step_and_draw = {{ev::STEP, ev::STEP_END, "end step"}, {ev::DRAW, 0, "draw"}};
  logs(o, end_step_and_draw);
  logs(made, end_step_and_draw);
  logs(made, {{ev::STEP, 0, "step"}});
  logs(o, {{ev::DESTROY, 0, "destroy"}, {ev::OTHER, ev::OTHER_ROOM_END, "room end"},
           {ev::STEP, 0, "step", [made](CInstance& self) {
              if (what == 0) instance_destroy(self);
              if (what == 1 && object_get(made)->instances.empty()) instance_create(0, 0, made, 0);
              if (what == 2) room_goto(1);
              return "";
            }}});
  start();
  what = 0;
  make(o);
  EXPECT_TRUE(frame_run());
  EXPECT_EQ(taken_log(), "o:destroy, o:step") << "the Step ends, but no End Step and no Draw once destroyed";
  EXPECT_TRUE(current_room()->active.empty());
  what = 1;
  make(o);
  frame_run();
  EXPECT_EQ(taken_log(), "o:step, o:end step, made:end step, o:draw, made:draw") << "no Step when made";
  frame_run();
  EXPECT_EQ(taken_log(), "o:step, made:step, o:end step, made:end step, o:draw, made:draw");
  what = 2;
  EXPECT_TRUE(frame_run());
  EXPECT_EQ(taken_log(), "o:step, o:room end") << "a room change stops the frame, other Steps too";
  EXPECT_EQ(current_room_index(), 1);
}

TEST_F(Frame, EventRecursionFailsAtDepth33WithFixedWords) {
  const int32_t o = object_add("o");
  static int depth;
  depth = 0;
  object_set_event(o, ev::OTHER, 10, [](CInstance&, CInstance*) {
    ++depth;
    event_perform(ev::OTHER, 10);
  });
  start();
  CInstance* i = make(o);
  EXPECT_FATAL(PerformEvent(i, i, o, ev::OTHER, 10),
               "PerformEvent recursion depth failure - check for infinite loops, check objects for parenting");
  EXPECT_EQ(depth, 32);
}

TEST_F(Frame, PersistentInstanceSurvivesARoomChangeWithoutASecondCreate) {
  const int32_t keeper = object_add("keeper"), plain = object_add("plain");
  object_get(keeper)->flags |= object_flag::PERSISTENT;
  logs(keeper, {{ev::CREATE, 0, "create"}, {ev::OTHER, ev::OTHER_ROOM_START, "room start"}});
  logs(plain, {{ev::CLEANUP, 0, "cleanup"}});
  room_add(RoomDescription{"prima", 640, 480, false, 30, {{keeper, 1, 1, nullptr}, {plain, 2, 2, nullptr}}, nullptr});
  room_add(RoomDescription{"seconda"});
  start();
  CInstance* kept = object_get(keeper)->instances.at(0);
  room_goto(1);
  frame_run();
  EXPECT_EQ(taken_log(), "keeper:create, keeper:room start, plain:cleanup, keeper:room start");
  EXPECT_EQ(current_room()->active, std::vector<CInstance*>{kept});
  EXPECT_EQ(instance_find(kept->id), kept);
}

TEST_F(Frame, MotionWithFrictionAndGravityAndOutsideRoomOnceOnLeaving) {
  const int32_t o = object_add("o");
  logs(o, {{ev::OTHER, ev::OTHER_OUTSIDE, "outside"}});
  start(200, 200);
  CInstance* i = make(o, 100, 100);
  i->set_speed(5);
  i->set_direction(0);
  i->friction = 1;
  for (int k = 0; k < 11; ++k) frame_run();
  EXPECT_EQ(std::pair(i->x, i->speed), std::pair(100.0f + 4 + 3 + 2 + 1, 0.0f)) << "slows first, stops, never reverses";
  i->friction = 0;
  i->gravity = 0.5f;  // downward by default
  frame_run();
  frame_run();
  EXPECT_EQ(std::pair(i->y, i->vspeed), std::pair(101.5f, 1.0f));
  EXPECT_FLOAT_EQ(i->direction, 270);

  make(o, 195, 50)->set_hspeed(4);
  frame_run();
  EXPECT_EQ(taken_log(), "") << "at 199: still inside";
  frame_run();
  frame_run();
  EXPECT_EQ(taken_log(), "o:outside") << "at 203 it leaves; at 207 it was outside already";
}

TEST_F(Frame, SolidInstancesStepBackAndBothCollisionEventsRun) {
  const int32_t a = object_add("a"), b = object_add("b");
  object_get(a)->sprite = object_get(b)->sprite = sprite_add_shape("quadrato", 10, 10, 0, 0);
  object_get(b)->flags |= object_flag::SOLID;
  const auto at = [](CInstance& self) { return std::to_string(static_cast<int>(self.x)); };
  logs(a, {{ev::COLLISION, b, "hit at ", at}});
  logs(b, {{ev::COLLISION, a, "hit at ", at}});
  start();
  CInstance* mover = make(a, 0, 0);
  make(b, 15, 0);
  mover->set_hspeed(4);
  frame_run();
  EXPECT_EQ(taken_log(), "") << "at 4: apart";
  frame_run();
  EXPECT_EQ(taken_log(), "a:hit at 4, b:hit at 15") << "at 8 they meet: back to 4 for the events";
  EXPECT_EQ(mover->x, 4) << "and back again after, still meeting the solid one";
}

}  // namespace
