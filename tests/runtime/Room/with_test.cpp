#include "runtime/Room/With.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "runtime/Code/Array.h"
#include "runtime/Code/Builtins.h"
#include "runtime/Object/Objects.h"
#include "runtime/Room/Variables.h"
#include "runtime/Room/Room.h"
#include "support/Fatal.h"

namespace {

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
    RoomDescription description;
    description.name = "stanza";
    set_room_target(room_add(std::move(description)));
    room_change(true);
  }
  // One object, "oggetto", and a room to put its instances in.
  static int32_t object_in_room() {
    const int32_t object = object_add("oggetto");
    enter_room();
    return object;
  }
  // Runs `body` as the handler of User Defined 0 of `self`'s object, so
  // that `self` and `other` are those of a running event.
  static void in_event(CInstance* self, CInstance* other, const std::function<void()>& body) {
    object_set_event(self->object_index, ev::OTHER, 10, [&body](CInstance&, CInstance*) { body(); });
    objects_prepare();
    PerformEvent(self, other, self->object_index, ev::OTHER, 10);
  }
  static std::vector<CInstance*> visits(const RValue& target) {
    std::vector<CInstance*> seen;
    with_instances(target, [&seen](CInstance& self, CInstance*) { seen.push_back(&self); });
    return seen;
  }
  static RValue call(const char* name, std::vector<RValue> args, CInstance* self = nullptr,
                     CInstance* other = nullptr) {
    RValue result;
    EXPECT_TRUE(builtin_call(name, result, self, other, static_cast<int>(args.size()), args.data())) << name;
    return result;
  }
  static RValue number(double d) { return RValue::number(d); }
};

RValue object_value(QvObjectBase& object) {
  RValue v = RValue::undefined();
  v.obj = &object;
  v.kind_word = static_cast<uint32_t>(Kind::Object);
  return v;
}

using Instances = std::vector<CInstance*>;

}  // namespace

TEST_F(With, VisitsTheMostRecentInstanceFirstWithTheOuterSelfAsOther) {
  const int32_t object = object_add("oggetto");
  const int32_t outsider = object_add("estraneo");
  enter_room();
  CInstance* a = instance_create(0, 0, object, 0);
  CInstance* b = instance_create(0, 0, object, 0);
  CInstance* c = instance_create(0, 0, object, 0);
  CInstance* caller = instance_create(0, 0, outsider, 0);

  in_event(caller, nullptr, [&] {
    Instances seen;
    with_instances(number(object), [&](CInstance& self, CInstance* other) {
      seen.push_back(&self);
      EXPECT_EQ(other, caller);
      EXPECT_EQ(current_self(), &self);
      EXPECT_EQ(current_other(), caller);
    });
    EXPECT_EQ(seen, (Instances{c, b, a}));
    EXPECT_EQ(current_self(), caller);
    EXPECT_EQ(current_other(), nullptr);
  });
}

TEST_F(With, ObjectTargetsTakeDescendantsAndSkipInactiveInstances) {
  const int32_t parent = object_add("genitore");
  const int32_t child = object_add("figlio", parent);
  enter_room();
  CInstance* p = instance_create(0, 0, parent, 0);
  CInstance* c = instance_create(0, 0, child, 0);
  CInstance* gone = instance_create(0, 0, child, 0);
  instance_destroy(*gone);
  EXPECT_EQ(visits(number(parent)), (Instances{c, p}));
  EXPECT_EQ(visits(RValue::ref(REF_OBJECT, child)), (Instances{c}));
  EXPECT_EQ(visits(number(KEYWORD_ALL)), (Instances{c, p}));
  EXPECT_EQ(visits(number(gone->id)), Instances{});
  EXPECT_EQ(visits(RValue::ref(REF_INSTANCE, p->id)), (Instances{p}));
  EXPECT_EQ(visits(object_value(*c)), (Instances{c}));
  EXPECT_EQ(visits(RValue::text("1")), (Instances{c}));
  EXPECT_EQ(visits(number(42)), Instances{}) << "no such object";
}

TEST_F(With, KeywordsNameSelfOtherOrNothing) {
  const int32_t object = object_in_room();
  CInstance* me = instance_create(0, 0, object, 0);
  CInstance* you = instance_create(0, 0, object, 0);
  in_event(me, you, [&] {
    for (const int32_t self_keyword : {KEYWORD_SELF, KEYWORD_SELF_AGAIN}) {
      int passes = 0;
      with_instances(number(self_keyword), [&](CInstance& self, CInstance* other) {
        ++passes;
        EXPECT_EQ(&self, me);
        EXPECT_EQ(other, me);
      });
      EXPECT_EQ(passes, 1);
    }
    int passes = 0;
    with_instances(number(KEYWORD_OTHER), [&](CInstance& self, CInstance* other) {
      ++passes;
      EXPECT_EQ(&self, you);
      EXPECT_EQ(other, me);
      EXPECT_EQ(current_other(), me);
    });
    EXPECT_EQ(passes, 1);
    EXPECT_EQ(current_other(), you);
  });
  for (const int32_t nothing : {KEYWORD_NOONE, KEYWORD_GLOBAL, KEYWORD_NO_TARGET, -9}) {
    EXPECT_EQ(visits(number(nothing)), Instances{}) << nothing;
  }
  EXPECT_EQ(visits(RValue::undefined()), Instances{});
  EXPECT_FATAL(visits(array_create(2)), "invalid with reference");
  EXPECT_FATAL(visits(RValue()), "invalid with reference");
  EXPECT_FATAL(visits(RValue::pointer(nullptr)), "invalid with reference");
}

TEST_F(With, InstancesDestroyedDuringTheLoopKeepTheirPass) {
  const int32_t object = object_in_room();
  CInstance* a = instance_create(0, 0, object, 0);
  CInstance* b = instance_create(0, 0, object, 0);
  CInstance* c = instance_create(0, 0, object, 0);
  Instances seen;
  with_instances(number(object), [&](CInstance& self, CInstance*) {
    seen.push_back(&self);
    if (&self == c) {
      instance_destroy(*a);
      instance_destroy(*b);
    }
  });
  EXPECT_EQ(seen, (Instances{c, b, a}));
  EXPECT_FALSE(a->active());
  EXPECT_EQ(visits(number(object)), (Instances{c}));
}

TEST_F(With, BreakingOutOrFailingRestoresSelfAndOther) {
  const int32_t object = object_in_room();
  CInstance* a = instance_create(0, 0, object, 0);
  CInstance* b = instance_create(0, 0, object, 0);
  in_event(a, nullptr, [&] {
    {
      WithIteration loop(number(object));
      ASSERT_TRUE(loop.next());
      EXPECT_EQ(loop.self(), b);
      EXPECT_EQ(current_self(), b);
    }
    EXPECT_EQ(current_self(), a);
    EXPECT_THROW(with_instances(number(object), [](CInstance&, CInstance*) { throw std::runtime_error("fuori"); }),
                 std::runtime_error);
    EXPECT_EQ(current_self(), a);
    EXPECT_EQ(current_other(), nullptr);
  });
}

TEST_F(With, AnEventRunFromTheBodyHasItsOwnSelf) {
  const int32_t object = object_in_room();
  CInstance* a = instance_create(0, 0, object, 0);
  CInstance* b = instance_create(0, 0, object, 0);
  CInstance* seen_in_event = nullptr;
  object_set_event(object, ev::OTHER, 11, [&](CInstance&, CInstance*) { seen_in_event = current_self(); });
  in_event(a, nullptr, [&] {
    with_instances(RValue::ref(REF_INSTANCE, b->id), [&](CInstance& self, CInstance*) {
      PerformEvent(a, &self, object, ev::OTHER, 11);
      EXPECT_EQ(current_self(), b) << "the body's self again after the event";
    });
  });
  EXPECT_EQ(seen_in_event, a);
}

TEST_F(With, VariablesOfSelfAndOtherFollowTheLoop) {
  const int32_t object = object_in_room();
  CInstance* a = instance_create(1, 0, object, 0);
  CInstance* b = instance_create(2, 0, object, 0);
  const int32_t x = variable_id("x");
  in_event(a, nullptr, [&] {
    with_instances(RValue::ref(REF_INSTANCE, b->id), [&](CInstance&, CInstance*) {
      RValue mine, theirs;
      variable_get_of(number(KEYWORD_SELF), x, NO_ARRAY_INDEX, mine);
      variable_get_of(number(KEYWORD_OTHER), x, NO_ARRAY_INDEX, theirs);
      EXPECT_EQ(mine.real, 2);
      EXPECT_EQ(theirs.real, 1);
      variable_set_of(number(KEYWORD_OTHER), x, NO_ARRAY_INDEX, number(10));
    });
  });
  EXPECT_EQ(a->x, 10);
}

// ---------------------------------------------------------------------------
// The instance built-ins by name

TEST_F(With, CreatingByNameGivesInstanceRefs) {
  const int32_t object = object_in_room();
  const RValue made = call("instance_create_depth", {number(4), number(5), number(-10), number(object)});
  ASSERT_TRUE(made.is(Kind::Ref));
  EXPECT_EQ(made.ref_type(), REF_INSTANCE);
  CInstance* i = instance_find(made.ref_index());
  ASSERT_NE(i, nullptr);
  EXPECT_EQ(i->x, 4);
  EXPECT_EQ(i->depth, -10);
  EXPECT_TRUE(i->has(instance_flag::CREATED));

  const RValue by_name = call("instance_create_layer", {number(1), number(2), RValue::text("Instances"), number(object)});
  EXPECT_EQ(instance_find(by_name.ref_index())->depth, 0);
  const RValue by_id = call("instance_create_layer", {number(1), number(2), number(3), RValue::ref(REF_OBJECT, object)});
  EXPECT_EQ(instance_find(by_id.ref_index())->object_index, object);

  QvObjectBase fields(QvObjectBase::Struct, "Object");
  variable_set(fields, variable_id("x"), NO_ARRAY_INDEX, number(30));
  variable_set(fields, variable_id("nome"), NO_ARRAY_INDEX, RValue::text("primo"));
  const RValue with_struct =
      call("instance_create_layer", {number(1), number(2), RValue::text("Instances"), number(object), object_value(fields)});
  CInstance* filled = instance_find(with_struct.ref_index());
  EXPECT_EQ(filled->x, 30);
  RValue name;
  variable_get(*filled, variable_id("nome"), NO_ARRAY_INDEX, name);
  EXPECT_EQ(name.string_view(), "primo");

  EXPECT_FATAL(call("instance_create_layer", {number(1), number(2), number(0), number(object), number(7)}),
               "argument 5 needs to be a struct");
  EXPECT_FATAL(call("instance_create_depth", {number(0), number(0), number(0), number(99)}),
               "Creating instance for non-existing object: 99");
}

TEST_F(With, DestroyingOneselfLetsTheEventRunToItsEnd) {
  const int32_t object = object_add("oggetto");
  int destroy_events = 0;
  bool ran_to_end = false;
  object_set_event(object, ev::STEP, 0, [&](CInstance& self, CInstance* other) {
    RValue ignored;
    builtin_call("instance_destroy", ignored, &self, other, 0, nullptr);
    ran_to_end = true;
  });
  object_set_event(object, ev::DESTROY, 0, [&](CInstance&, CInstance*) { ++destroy_events; });
  enter_room();
  CInstance* i = instance_create(0, 0, object, 0);
  PerformEvent(i, i, object, ev::STEP, 0);
  EXPECT_TRUE(ran_to_end);
  EXPECT_EQ(destroy_events, 1);
  EXPECT_EQ(call("instance_exists", {RValue::ref(REF_INSTANCE, i->id)}).real, 0);

  CInstance* quiet = instance_create(0, 0, object, 0);
  CInstance* loud = instance_create(0, 0, object, 0);
  call("instance_destroy", {RValue::ref(REF_INSTANCE, quiet->id), RValue::boolean(false)});
  EXPECT_EQ(destroy_events, 1) << "Destroy not asked for";
  EXPECT_TRUE(quiet->has(instance_flag::MARKED));
  call("instance_destroy", {number(object)});
  EXPECT_EQ(destroy_events, 2);
  EXPECT_TRUE(loud->has(instance_flag::MARKED));

  QvObjectBase plain(QvObjectBase::Struct, "Object");
  EXPECT_FATAL(call("instance_destroy", {object_value(plain)}), "not an instance");
  EXPECT_FATAL(call("instance_destroy", {}), "not an instance");
}

TEST_F(With, ExistenceAndCountFollowActiveInstances) {
  const int32_t object = object_add("oggetto");
  const int32_t other = object_add("altro");
  enter_room();
  EXPECT_EQ(call("instance_exists", {number(object)}).real, 0);
  CInstance* a = instance_create(0, 0, object, 0);
  instance_create(0, 0, object, 0);
  const RValue yes = call("instance_exists", {number(object)});
  EXPECT_TRUE(yes.is(Kind::Number));
  EXPECT_EQ(yes.real, 1);
  EXPECT_EQ(call("instance_exists", {RValue::ref(REF_OBJECT, object)}).real, 1);
  EXPECT_EQ(call("instance_exists", {RValue::ref(REF_INSTANCE, a->id)}).real, 1);
  EXPECT_EQ(call("instance_exists", {object_value(*a)}).real, 1);
  EXPECT_EQ(call("instance_exists", {number(other)}).real, 0);
  EXPECT_EQ(call("instance_exists", {RValue::ref(REF_SPRITE, object)}).real, 0) << "another type is never tested";
  EXPECT_EQ(call("instance_exists", {RValue::undefined()}).real, 0);
  EXPECT_EQ(call("instance_exists", {array_create(1)}).real, 0);
  EXPECT_EQ(call("instance_exists", {number(KEYWORD_ALL)}).real, 1);
  EXPECT_EQ(call("instance_exists", {number(KEYWORD_NOONE)}).real, 0);
  EXPECT_EQ(call("instance_exists", {number(KEYWORD_SELF)}, a).real, 1);

  EXPECT_EQ(call("instance_number", {number(object)}).real, 2);
  EXPECT_EQ(call("instance_number", {number(KEYWORD_ALL)}).real, 2);
  instance_destroy(*a);
  EXPECT_EQ(call("instance_number", {number(object)}).real, 1);
  EXPECT_EQ(call("instance_exists", {RValue::ref(REF_INSTANCE, a->id)}).real, 0);
  EXPECT_EQ(call("instance_exists", {object_value(*a)}).real, 0);
}

TEST_F(With, EventsRoomsAndTheEndOfTheGameByName) {
  const int32_t object = object_add("oggetto");
  CInstance* ran_on = nullptr;
  object_set_event(object, ev::OTHER, 12, [&](CInstance& self, CInstance*) { ran_on = &self; });
  enter_room();
  RoomDescription second;
  second.name = "seconda";
  const int32_t next = room_add(std::move(second));
  CInstance* i = instance_create(0, 0, object, 0);
  call("event_perform", {number(ev::OTHER), number(12)}, i, i);
  EXPECT_EQ(ran_on, i);
  EXPECT_FATAL(call("event_perform", {number(ev::OTHER), number(12)}),
               "Attempt to dispatch event on non-instance object");

  EXPECT_FATAL(call("room_goto", {number(2)}), "room_goto argument 1 invalid reference to (room)");
  call("room_goto", {RValue::ref(REF_ROOM, next)});
  EXPECT_EQ(room_target(), next);
  set_room_target(ROOM_NONE);
  call("room_restart", {});
  EXPECT_EQ(room_target(), current_room_index());
  set_room_target(ROOM_NONE);
  call("game_end", {number(3)});
  EXPECT_EQ(room_target(), ROOM_END_GAME);
  EXPECT_EQ(game_exit_status(), 3);

  EXPECT_EQ(call("object_get_name", {number(object)}).string_view(), "oggetto");
  EXPECT_EQ(call("object_get_name", {number(9)}).string_view(), "<undefined>");
}

TEST_F(With, VariablesByName) {
  const int32_t object = object_in_room();
  CInstance* i = instance_create(0, 0, object, 0);
  const RValue ref = RValue::ref(REF_INSTANCE, i->id);
  call("variable_instance_set", {ref, RValue::text("vite"), number(3)});
  EXPECT_EQ(call("variable_instance_get", {ref, RValue::text("vite")}).real, 3);
  call("variable_instance_set", {ref, RValue::text("x"), number(12)});
  EXPECT_EQ(i->x, 12);
  EXPECT_TRUE(call("variable_instance_get", {ref, RValue::text("mai_vista")}).is(Kind::Undefined));

  call("variable_global_set", {RValue::text("livello"), number(4)});
  EXPECT_EQ(call("variable_global_get", {RValue::text("livello")}).real, 4);
  EXPECT_TRUE(call("variable_global_get", {RValue::text("mai_globale")}).is(Kind::Undefined));
  EXPECT_EQ(call("variable_global_get", {RValue::text("room")}).real, current_room_index());
}
