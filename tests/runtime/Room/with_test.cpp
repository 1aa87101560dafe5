#include "runtime/Room/With.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "room_values.h"
#include "runtime/Code/Array.h"
#include "runtime/Code/Builtins.h"
#include "runtime/Code/Conversions.h"
#include "runtime/Object/Objects.h"
#include "runtime/Room/Events.h"
#include "runtime/Room/Room.h"
#include "runtime/Room/Variables.h"
#include "support/CallBuiltin.h"
#include "support/Fatal.h"

namespace {

using Instances = std::vector<CInstance*>;

RValue ref(const CInstance* i) { return RValue::ref(REF_INSTANCE, i->id); }

class With : public ::testing::Test {
 protected:
  void SetUp() override { register_runtime_builtins(); }
  void TearDown() override {
    rooms_clear();
    objects_clear();
  }
  // Prepares the object table, with every event set so far, and enters a room.
  static void enter_room() {
    objects_prepare();
    set_room_target(room_add(RoomDescription{"stanza"}));
    room_change(true);
  }
  // Runs `body` as the handler of User Defined 0 of `self`'s object, so
  // that `self` and `other` are those of a running event.
  static void in_event(CInstance* self, CInstance* other, const std::function<void()>& body) {
    object_set_event(self->object_index, ev::OTHER, 10, [&body](CInstance&, CInstance*) { body(); });
    objects_prepare();
    PerformEvent(self, other, self->object_index, ev::OTHER, 10);
  }
  static Instances visits(const RValue& target) {
    Instances seen;
    with_instances(target, [&seen](CInstance& self, CInstance*) { seen.push_back(&self); });
    return seen;
  }
};

TEST_F(With, BodyRunsOnTheNewestFirstWithTheOuterSelfAsOtherUntilTheLoopEnds) {
  const int32_t object = object_add("oggetto"), outsider = object_add("estraneo");
  CInstance* seen_in_event = nullptr;
  object_set_event(object, ev::OTHER, 11, [&](CInstance&, CInstance*) { seen_in_event = current_self(); });
  enter_room();
  CInstance* a = instance_create(1, 0, object, 0);
  CInstance* b = instance_create(2, 0, object, 0);
  CInstance* c = instance_create(3, 0, object, 0);
  CInstance* caller = instance_create(4, 0, outsider, 0);
  const int32_t x = variable_id("x");
  in_event(caller, nullptr, [&] {
    Instances seen;
    with_instances(number(object), [&](CInstance& self, CInstance* other) {
      seen.push_back(&self);
      EXPECT_EQ(std::pair(other, current_other()), std::pair(caller, caller));
      EXPECT_EQ(current_self(), &self);
      RValue mine, theirs;
      variable_get_of(number(KEYWORD_SELF), x, NO_ARRAY_INDEX, mine);
      variable_get_of(number(KEYWORD_OTHER), x, NO_ARRAY_INDEX, theirs);
      EXPECT_EQ(std::pair(mine.real, theirs.real), std::pair(double(self.x), 4.0));
      // An event run from the body has a self of its own; the body's comes back after it.
      PerformEvent(caller, &self, object, ev::OTHER, 11);
      EXPECT_EQ(seen_in_event, caller);
      EXPECT_EQ(current_self(), &self);
    });
    EXPECT_EQ(seen, (Instances{c, b, a}));
    EXPECT_EQ(current_self(), caller);

    // Breaking out or failing, the loop gives self and other back.
    {
      WithIteration loop(number(object));
      ASSERT_TRUE(loop.next());
      EXPECT_EQ(std::pair(loop.self(), current_self()), std::pair(c, c));
    }
    EXPECT_EQ(current_self(), caller) << "after breaking out";
    EXPECT_THROW(with_instances(number(object), [](CInstance&, CInstance*) { throw std::runtime_error("fuori"); }),
                 std::runtime_error);
    EXPECT_EQ(std::pair(current_self(), current_other()), std::pair(caller, static_cast<CInstance*>(nullptr)));
  });
  // Instances destroyed while the loop runs keep their pass.
  Instances seen;
  with_instances(number(object), [&](CInstance& self, CInstance*) {
    seen.push_back(&self);
    if (&self == c) instance_destroy(*b);
  });
  EXPECT_EQ(seen, (Instances{c, b, a}));
  EXPECT_EQ(visits(number(object)), (Instances{c, a}));
}

TEST_F(With, TargetsNameObjectsWithDescendantsInstancesAndKeywords) {
  const int32_t parent = object_add("genitore"), child = object_add("figlio", parent);
  enter_room();
  CInstance* p = instance_create(0, 0, parent, 0);
  CInstance* c = instance_create(0, 0, child, 0);
  CInstance* gone = instance_create(0, 0, child, 0);
  instance_destroy(*gone);
  in_event(p, c, [&] {
    const std::pair<RValue, Instances> targets[] = {
        {number(parent), {c, p}},        {RValue::ref(REF_OBJECT, child), {c}}, {number(KEYWORD_ALL), {c, p}},
        {ref(gone), {}},                 {ref(p), {p}},                         {object_value(*c), {c}},
        {RValue::text("1"), {c}},        {number(42), {}},                      {RValue::undefined(), {}},
        {number(KEYWORD_SELF), {p}},     {number(KEYWORD_SELF_AGAIN), {p}},     {number(KEYWORD_OTHER), {c}},
        {number(KEYWORD_NOONE), {}},     {number(-9), {}},
    };
    for (size_t n = 0; n < std::size(targets); ++n) EXPECT_EQ(visits(targets[n].first), targets[n].second) << n;
    // `other` inside a body on `other` is the outer self, and the outer one comes back after.
    with_instances(number(KEYWORD_OTHER), [&](CInstance&, CInstance* other) {
      EXPECT_EQ(std::pair(other, current_other()), std::pair(p, p));
    });
    EXPECT_EQ(current_other(), c);
  });
  EXPECT_FATAL(visits(array_create(2)), "invalid with reference");
}

TEST_F(With, CreatingByNameGivesInstanceRefs) {
  const int32_t object = object_add("oggetto");
  enter_room();
  // The instance made last, which the answer must name.
  const auto made = [](const std::string& answer) {
    CInstance* i = current_room()->active.back();
    EXPECT_EQ(answer, "ref:ref instance " + std::to_string(i->id));
    return i;
  };
  CInstance* i = made(call_shown("instance_create_depth", {number(4), number(5), number(-10), number(object)}));
  EXPECT_EQ(std::pair(i->x, i->depth), std::pair(4.0f, -10.0f));
  // A layer is a name or a number; the object may come as a ref.
  const RValue by_ref = RValue::ref(REF_OBJECT, object);
  EXPECT_EQ(made(call_shown("instance_create_layer", {number(1), number(2), number(3), by_ref}))->object_index, object);
  // A struct's variables arrive before Create.
  QvObjectBase fields(QvObjectBase::Struct, "Object");
  variable_set(fields, variable_id("x"), NO_ARRAY_INDEX, number(30));
  variable_set(fields, variable_id("nome"), NO_ARRAY_INDEX, RValue::text("primo"));
  const RValue layer = RValue::text("Instances");
  CInstance* filled =
      made(call_shown("instance_create_layer", {number(1), number(2), layer, number(object), object_value(fields)}));
  EXPECT_EQ(std::pair(filled->x, filled->depth), std::pair(30.0f, 0.0f));
  EXPECT_EQ(call_shown("variable_instance_get", {ref(filled), RValue::text("nome")}), "string:primo");
  EXPECT_FATAL(call_shown("instance_create_layer", {number(1), number(2), number(0), number(object), number(7)}),
               "argument 5 needs to be a struct");
  EXPECT_FATAL(call_shown("instance_create_depth", {number(0), number(0), number(0), number(99)}),
               "Creating instance for non-existing object: 99");
}

TEST_F(With, ExistenceCountAndDestroyingByName) {
  const int32_t object = object_add("oggetto"), unrelated = object_add("altro");
  int destroy_events = 0;
  bool ran_to_end = false;
  object_set_event(object, ev::STEP, 0, [&](CInstance& self, CInstance* other) {
    call_builtin("instance_destroy", {}, &self, other);
    ran_to_end = true;
  });
  object_set_event(object, ev::DESTROY, 0, [&](CInstance&, CInstance*) { ++destroy_events; });
  enter_room();
  CInstance* a = instance_create(0, 0, object, 0);
  CInstance* b = instance_create(0, 0, object, 0);
  // Refs of other types, undefined and arrays name no instance.
  const std::pair<RValue, const char*> rows[] = {
      {number(object), "number:1"}, {RValue::ref(REF_OBJECT, object), "number:1"}, {ref(a), "number:1"},
      {object_value(*a), "number:1"}, {number(unrelated), "number:0"}, {RValue::ref(REF_SPRITE, object), "number:0"},
      {RValue::undefined(), "number:0"}, {array_create(1), "number:0"},
  };
  for (const auto& [target, answer] : rows) {
    EXPECT_EQ(call_shown("instance_exists", {target}), answer) << kind_name(target.kind());
  }
  EXPECT_EQ(call_shown("instance_exists", {number(KEYWORD_SELF)}, a), "number:1");
  EXPECT_EQ(call_shown("instance_number", {number(object)}), "number:2");

  // Destroying itself, an instance lets its event run to the end.
  PerformEvent(a, a, object, ev::STEP, 0);
  EXPECT_TRUE(ran_to_end);
  EXPECT_EQ(destroy_events, 1);
  EXPECT_EQ(call_shown("instance_exists", {ref(a)}), "number:0");
  EXPECT_EQ(call_shown("instance_exists", {object_value(*a)}), "number:0");
  CInstance* quiet = instance_create(0, 0, object, 0);
  call_builtin("instance_destroy", {ref(quiet), RValue::boolean(false)});
  EXPECT_EQ(destroy_events, 1) << "Destroy not asked for";
  EXPECT_TRUE(quiet->has(instance_flag::MARKED));
  call_builtin("instance_destroy", {number(object)});
  EXPECT_EQ(destroy_events, 2);
  EXPECT_TRUE(b->has(instance_flag::MARKED));
  QvObjectBase plain(QvObjectBase::Struct, "Object");
  EXPECT_FATAL(call_shown("instance_destroy", {object_value(plain)}), "not an instance");
  EXPECT_FATAL(call_shown("instance_destroy", {}), "not an instance");
}

TEST_F(With, EventsRoomsVariablesAndTheEndOfTheGameByName) {
  const int32_t object = object_add("oggetto");
  CInstance* ran_on = nullptr;
  object_set_event(object, ev::OTHER, 12, [&](CInstance& self, CInstance*) { ran_on = &self; });
  enter_room();
  const int32_t next = room_add(RoomDescription{"seconda"});
  CInstance* i = instance_create(0, 0, object, 0);
  call_builtin("event_perform", {number(ev::OTHER), number(12)}, i, i);
  EXPECT_EQ(ran_on, i);
  EXPECT_FATAL(call_shown("event_perform", {number(ev::OTHER), number(12)}),
               "Attempt to dispatch event on non-instance object");
  EXPECT_EQ(call_shown("object_get_name", {number(object)}), "string:oggetto");
  EXPECT_EQ(call_shown("object_get_name", {number(9)}), "string:<undefined>");

  call_builtin("variable_instance_set", {ref(i), RValue::text("vite"), number(3)});
  EXPECT_EQ(call_shown("variable_instance_get", {ref(i), RValue::text("vite")}), "number:3");
  EXPECT_EQ(call_shown("variable_instance_get", {ref(i), RValue::text("mai_vista")}), "undefined:undefined");
  call_builtin("variable_global_set", {RValue::text("livello"), number(4)});
  EXPECT_EQ(call_shown("variable_global_get", {RValue::text("livello")}), "number:4");
  EXPECT_EQ(call_shown("variable_global_get", {RValue::text("mai_globale")}), "undefined:undefined");

  EXPECT_FATAL(call_shown("room_goto", {number(2)}), "room_goto argument 1 invalid reference to (room)");
  call_builtin("room_goto", {RValue::ref(REF_ROOM, next)});
  EXPECT_EQ(room_target(), next);
  set_room_target(ROOM_NONE);
  call_builtin("room_restart");
  EXPECT_EQ(room_target(), current_room_index());
  set_room_target(ROOM_NONE);
  call_builtin("game_end", {number(3)});
  EXPECT_EQ(std::pair(room_target(), game_exit_status()), std::pair(ROOM_END_GAME, 3));
}

}  // namespace
