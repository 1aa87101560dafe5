#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "runtime/Code/Builtins.h"
#include "runtime/IO/Input.h"
#include "runtime/Object/Objects.h"
#include "runtime/Room/Room.h"
#include "runtime/Support/AsyncQueue.h"
#include "runtime/Room/Events.h"
#include "runtime/Run/Frame.h"
#include "runtime/Room/FrameState.h"
#include "runtime/Sprite/Sprite.h"
#include "runtime/Support/DsMap.h"
#include "support/Fatal.h"

namespace {

std::vector<std::string> g_log;

// Logs an event as "object:event" when it runs.
EventHandler logger(const std::string& what) {
  return [what](CInstance& self, CInstance*) { g_log.push_back(std::string(instance_object_name(&self)) + ":" + what); };
}

class Frame : public ::testing::Test {
 protected:
  void SetUp() override {
    rooms_clear();
    objects_clear();
    g_log.clear();
    input_reset();
  }
  void TearDown() override {
    game_finish();
    rooms_clear();
    objects_clear();
  }

  // Prepares the objects and enters room 0 (made if none was added).
  void start(int32_t width = 640, int32_t height = 480) {
    if (room_count() == 0) room_add(RoomDescription{"stanza", width, height});
    objects_prepare();
    set_room_target(0);
    room_change(true);
  }

  int32_t object(const std::string& name) { return object_add(name); }
  void on(int32_t object, int type, int subtype, EventHandler handler) {
    object_set_event(object, type, subtype, std::move(handler));
  }
  void log_event(int32_t object, int type, int subtype, const std::string& what) {
    on(object, type, subtype, logger(what));
  }
  CInstance* make(int32_t object, float x = 0, float y = 0) { return instance_create(x, y, object, 0); }
};

TEST_F(Frame, OneFrameRunsItsEventsInTheirOrder) {
  const int32_t o = object("o");
  on(o, ev::CREATE, 0, [](CInstance& self, CInstance*) {
    g_log.push_back("o:create");
    self.alarm[0] = 1;
  });
  log_event(o, ev::STEP, ev::STEP_BEGIN, "begin step");
  log_event(o, ev::ALARM, 0, "alarm 0");
  log_event(o, ev::KEYBOARD, 'A', "keyboard A");
  log_event(o, ev::KEYPRESS, 'A', "press A");
  log_event(o, ev::KEYBOARD, 1, "keyboard any");
  log_event(o, ev::MOUSE, 53, "global left pressed");
  log_event(o, ev::STEP, ev::STEP_NORMAL, "step");
  log_event(o, ev::OTHER, ev::OTHER_DIALOG, "async dialog");
  log_event(o, ev::STEP, ev::STEP_END, "end step");
  log_event(o, ev::DRAW, ev::DRAW_BEGIN, "draw begin");
  log_event(o, ev::DRAW, ev::DRAW_NORMAL, "draw");
  log_event(o, ev::DRAW, ev::DRAW_END, "draw end");
  log_event(o, ev::DRAW, ev::DRAW_GUI_END, "draw gui end");
  room_add(RoomDescription{"stanza", 640, 480, false, 30, {{o, 10, 10, nullptr}}, nullptr});
  log_event(o, ev::OTHER, ev::OTHER_GAME_START, "game start");
  log_event(o, ev::OTHER, ev::OTHER_ROOM_START, "room start");
  start();
  input_key_event('A', true);
  input_mouse_button_event(1, true);
  async_event_queue(ds_map_create().ref_index(), ev::OTHER_DIALOG);
  ASSERT_TRUE(frame_run());
  EXPECT_EQ(g_log, (std::vector<std::string>{"o:create", "o:game start", "o:room start", "o:begin step", "o:alarm 0",
                                             "o:keyboard A", "o:press A", "o:keyboard any", "o:global left pressed",
                                             "o:step", "o:async dialog", "o:end step", "o:draw begin", "o:draw",
                                             "o:draw end", "o:draw gui end"}));
}

TEST_F(Frame, AlarmSetInCreateFiresInFirstFrameAndOnlyObjectsWithTheEventCountDown) {
  const int32_t with_alarm = object("with_alarm");
  const int32_t without = object("without");
  on(with_alarm, ev::CREATE, 0, [](CInstance& self, CInstance*) { self.alarm[0] = 1; });
  log_event(with_alarm, ev::ALARM, 0, "alarm");
  start();
  CInstance* a = make(with_alarm);
  CInstance* b = make(without);
  b->alarm[0] = 3;
  frame_run();
  EXPECT_EQ(g_log, (std::vector<std::string>{"with_alarm:alarm"}));
  EXPECT_EQ(a->alarm[0], 0);
  EXPECT_EQ(b->alarm[0], 3);
  frame_run();
  EXPECT_EQ(a->alarm[0], -1);  // 0 counts down to -1 without firing again
  EXPECT_EQ(g_log.size(), 1u);
}

TEST_F(Frame, SelfDestructionInStepSkipsItsDrawButEndsItsStep) {
  const int32_t o = object("o");
  on(o, ev::STEP, 0, [](CInstance& self, CInstance*) {
    instance_destroy(self);
    g_log.push_back("step goes on");
  });
  log_event(o, ev::DESTROY, 0, "destroy");
  log_event(o, ev::DRAW, 0, "draw");
  start();
  make(o);
  frame_run();
  EXPECT_EQ(g_log, (std::vector<std::string>{"o:destroy", "step goes on"}));
  EXPECT_TRUE(current_room()->active.empty());
}

TEST_F(Frame, RoomGotoInStepSkipsEndStepAndDrawAndRunsRoomEnd) {
  const int32_t o = object("o");
  room_add(RoomDescription{"prima"});
  room_add(RoomDescription{"seconda"});
  on(o, ev::STEP, 0, [](CInstance&, CInstance*) { room_goto(1); });
  log_event(o, ev::STEP, ev::STEP_END, "end step");
  log_event(o, ev::DRAW, 0, "draw");
  log_event(o, ev::OTHER, ev::OTHER_ROOM_END, "room end");
  start();
  make(o);
  EXPECT_TRUE(frame_run());
  EXPECT_EQ(g_log, (std::vector<std::string>{"o:room end"}));
  EXPECT_EQ(current_room_index(), 1);
}

TEST_F(Frame, NewInstanceInStepGetsEndStepAndDrawButNotStep) {
  const int32_t maker = object("maker");
  const int32_t made = object("made");
  on(maker, ev::STEP, 0, [made](CInstance&, CInstance*) {
    if (object_get(made)->instances.empty()) instance_create(0, 0, made, 0);
  });
  log_event(made, ev::STEP, 0, "step");
  log_event(made, ev::STEP, ev::STEP_END, "end step");
  log_event(made, ev::DRAW, 0, "draw");
  start();
  make(maker);
  frame_run();
  EXPECT_EQ(g_log, (std::vector<std::string>{"made:end step", "made:draw"}));
  g_log.clear();
  frame_run();
  EXPECT_EQ(g_log, (std::vector<std::string>{"made:step", "made:end step", "made:draw"}));
}

TEST_F(Frame, EventRecursionFailsAtDepth33WithFixedWords) {
  const int32_t o = object("o");
  static int depth;
  depth = 0;
  on(o, ev::OTHER, 10, [](CInstance&, CInstance*) {
    ++depth;
    event_perform(ev::OTHER, 10);
  });
  start();
  CInstance* i = make(o);
  EXPECT_FATAL(PerformEvent(i, i, o, ev::OTHER, 10),
               "PerformEvent recursion depth failure - check for infinite loops, check objects for parenting");
  EXPECT_EQ(depth, 32);
  EXPECT_FATAL(PerformEvent(nullptr, nullptr, o, ev::OTHER, 10), "Attempt to dispatch event on non-instance object");
}

TEST_F(Frame, PersistentInstanceSurvivesARoomChangeWithoutASecondCreate) {
  const int32_t keeper = object("keeper");
  const int32_t plain = object("plain");
  object_get(keeper)->flags |= object_flag::PERSISTENT;
  log_event(keeper, ev::CREATE, 0, "create");
  log_event(plain, ev::CLEANUP, 0, "cleanup");
  log_event(keeper, ev::OTHER, ev::OTHER_ROOM_START, "room start");
  room_add(RoomDescription{"prima", 640, 480, false, 30, {{keeper, 1, 1, nullptr}, {plain, 2, 2, nullptr}}, nullptr});
  room_add(RoomDescription{"seconda"});
  start();
  const int32_t id = object_get(keeper)->instances.at(0)->id;
  room_goto(1);
  frame_run();
  EXPECT_EQ(g_log, (std::vector<std::string>{"keeper:create", "keeper:room start", "plain:cleanup", "keeper:room start"}));
  ASSERT_EQ(current_room()->active.size(), 1u);
  EXPECT_EQ(current_room()->active[0]->id, id);
  EXPECT_EQ(instance_find(id), current_room()->active[0]);
}

TEST_F(Frame, MouseClickOnAnInstanceWithoutShapeReachesGlobalEventsOnly) {
  const int32_t o = object("o");
  log_event(o, ev::MOUSE, 4, "left pressed");
  log_event(o, ev::MOUSE, 53, "global left pressed");
  start();
  make(o, 100, 100);
  input_mouse_move(100, 100);
  input_mouse_button_event(1, true);
  frame_run();
  EXPECT_EQ(g_log, (std::vector<std::string>{"o:global left pressed"}));
}

TEST_F(Frame, MotionWithFrictionAndGravity) {
  const int32_t o = object("o");
  start();
  CInstance* i = make(o, 100, 100);
  i->set_speed(5);
  i->set_direction(0);
  i->friction = 1;
  frame_run();
  EXPECT_FLOAT_EQ(i->x, 104);
  EXPECT_FLOAT_EQ(i->speed, 4);
  for (int k = 0; k < 10; ++k) frame_run();
  EXPECT_FLOAT_EQ(i->x, 104 + 3 + 2 + 1);
  EXPECT_FLOAT_EQ(i->speed, 0);  // stops, never reverses
  i->friction = 0;
  i->gravity = 0.5f;  // downward by default
  frame_run();
  frame_run();
  EXPECT_FLOAT_EQ(i->vspeed, 1);
  EXPECT_FLOAT_EQ(i->y, 101.5f);
  EXPECT_FLOAT_EQ(i->direction, 270);
}

TEST_F(Frame, OutsideRoomRunsWhenAnInstanceLeaves) {
  const int32_t o = object("o");
  log_event(o, ev::OTHER, ev::OTHER_OUTSIDE, "outside");
  start(200, 200);
  CInstance* i = make(o, 195, 50);
  i->set_hspeed(4);
  frame_run();
  EXPECT_TRUE(g_log.empty());
  frame_run();
  frame_run();
  EXPECT_EQ(g_log, (std::vector<std::string>{"o:outside"}));  // once, on leaving
}

TEST_F(Frame, AsynchronousWorkFillsAsyncLoadForItsEvent) {
  const int32_t o = object("o");
  static int32_t seen;
  seen = -2;
  on(o, ev::OTHER, ev::OTHER_DIALOG, [](CInstance&, CInstance*) { seen = frame_state().async_load; });
  start();
  make(o);
  const RValue map = ds_map_create();
  async_event_queue(map.ref_index(), ev::OTHER_DIALOG);
  frame_run();
  EXPECT_EQ(seen, map.ref_index());
  EXPECT_EQ(frame_state().async_load, -1);
  // The map goes with its event.
  register_runtime_builtins();
  RValue result, argument = map;
  EXPECT_FATAL(builtin_call("ds_map_size", result, nullptr, nullptr, 1, &argument),
               "ds_map_size argument 1 invalid reference to (ds_map)");
}

TEST_F(Frame, SolidInstancesStepBackAndBothCollisionEventsRun) {
  const int32_t box = sprite_add_shape("quadrato", 10, 10, 0, 0);
  const int32_t a = object("a");
  const int32_t b = object("b");
  object_get(a)->sprite = box;
  object_get(b)->sprite = box;
  object_get(b)->flags |= object_flag::SOLID;
  on(a, ev::COLLISION, b, [](CInstance& self, CInstance* other) {
    g_log.push_back("a hits " + std::string(instance_object_name(other)) + " at " + std::to_string(static_cast<int>(self.x)));
  });
  log_event(b, ev::COLLISION, a, "b hit");
  start();
  CInstance* mover = make(a, 0, 0);
  make(b, 15, 0);
  mover->set_hspeed(4);
  frame_run();  // at 4: apart
  EXPECT_TRUE(g_log.empty());
  frame_run();  // at 8: touching the solid box, so back to 4 for the events, and back again after
  EXPECT_EQ(g_log, (std::vector<std::string>{"a hits b at 4", "b:b hit"}));
  EXPECT_FLOAT_EQ(mover->x, 4);
}

}  // namespace
