#include "runtime/Room/Variables.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "runtime/Code/Array.h"
#include "runtime/Code/Builtins.h"
#include "runtime/Code/Operators.h"
#include "runtime/Object/Objects.h"
#include "runtime/Room/Room.h"
#include "runtime/Room/Events.h"
#include "runtime/Room/FrameState.h"
#include "runtime/Sprite/Sprite.h"
#include "support/Fatal.h"

namespace {

using namespace instance_flag;

class Variables : public ::testing::Test {
 protected:
  void TearDown() override {
    rooms_clear();
    objects_clear();
    sprites_clear();
    frame_state() = FrameState();
  }

  // Adds an object and prepares the object table again.
  static int32_t add_object(const char* name, int32_t parent = -1) {
    const int32_t index = object_add(name, parent);
    objects_prepare();
    return index;
  }
  // A room with one instance of a plain object.
  static CInstance* one_instance() {
    add_object("oggetto");
    enter_room();
    return instance_create(0, 0, 0, 0);
  }
  static void enter_room(int32_t width = 640, int32_t height = 480) {
    RoomDescription description;
    description.name = "stanza";
    description.width = width;
    description.height = height;
    set_room_target(room_add(std::move(description)));
    room_change(true);
  }

  static RValue get(QvObjectBase& object, const char* name, int32_t index = NO_ARRAY_INDEX) {
    RValue out;
    variable_get(object, variable_id(name), index, out);
    return out;
  }
  static void set(QvObjectBase& object, const char* name, const RValue& value, int32_t index = NO_ARRAY_INDEX) {
    variable_set(object, variable_id(name), index, value);
  }
  static RValue get_of(const RValue& target, const char* name) {
    RValue out;
    variable_get_of(target, variable_id(name), NO_ARRAY_INDEX, out);
    return out;
  }
  static RValue number(double d) { return RValue::number(d); }
  static RValue text_form(const RValue& v) {
    register_runtime_builtins();
    RValue result;
    RValue arg = v;
    builtin_call("string", result, nullptr, nullptr, 1, &arg);
    return result;
  }
};

RValue object_value(QvObjectBase& object) {
  RValue v = RValue::undefined();
  v.obj = &object;
  v.kind_word = static_cast<uint32_t>(Kind::Object);
  return v;
}

}  // namespace

TEST_F(Variables, NamesHaveFixedIdsWithBuiltinRowsBelowTenThousand) {
  const int32_t x = variable_id("x");
  EXPECT_LT(x, FIRST_PLAIN_VARIABLE_ID);
  EXPECT_EQ(variable_id("x"), x);
  EXPECT_EQ(variable_name(x), "x");
  EXPECT_LT(variable_id("room_speed"), FIRST_PLAIN_VARIABLE_ID);

  const int32_t mine = variable_id("punteggio_della_prova");
  EXPECT_GE(mine, FIRST_PLAIN_VARIABLE_ID);
  EXPECT_EQ(variable_id("punteggio_della_prova"), mine);
  EXPECT_EQ(variable_id("altro_nome_della_prova"), mine + 1);
  EXPECT_EQ(variable_name(mine), "punteggio_della_prova");
  EXPECT_EQ(builtin_variable(mine), nullptr);
  EXPECT_EQ(variable_name(FIRST_PLAIN_VARIABLE_ID + 99999), "<unknown variable>");

  ASSERT_NE(builtin_variable(variable_id("id")), nullptr);
  EXPECT_FALSE(builtin_variable(variable_id("id"))->writable);
  EXPECT_TRUE(builtin_variable(variable_id("x"))->writable);
  EXPECT_TRUE(builtin_variable(variable_id("x"))->per_instance);
  EXPECT_FALSE(builtin_variable(variable_id("room"))->per_instance);
}

TEST_F(Variables, TableRefusesRowsBeyondFiveHundred) {
  const VariableGetter nothing = [](CInstance*, int32_t, RValue& out) { out = RValue::undefined(); };
  const int32_t before = builtin_variable_count();
  for (int32_t n = before; n < MAX_BUILTIN_VARIABLES; ++n) {
    const std::string name = "riga_di_riempimento_" + std::to_string(n);
    EXPECT_EQ(builtin_variable_add(name.c_str(), nothing, nullptr, false), n);
  }
  EXPECT_FATAL(builtin_variable_add("una_di_troppo", nothing, nullptr, false),
               "INTERNAL ERROR: Adding too many variables");
  EXPECT_EQ(builtin_variable_count(), MAX_BUILTIN_VARIABLES);
  // Other names still get plain ids.
  EXPECT_GE(variable_id("una_di_troppo"), FIRST_PLAIN_VARIABLE_ID);
}

TEST_F(Variables, CoordinatesAreSinglePrecisionAndMovesMakeTheBoxStale) {
  CInstance* i = one_instance();
  set(*i, "x", number(0.1));
  const RValue x = get(*i, "x");
  EXPECT_TRUE(x.is(Kind::Number));
  EXPECT_EQ(x.real, 0.10000000149011612);
  EXPECT_TRUE(x == number(0.1));

  i->set(BBOX_DIRTY, false);
  set(*i, "x", number(0.1));
  EXPECT_FALSE(i->has(BBOX_DIRTY)) << "the same place is no move";
  set(*i, "y", number(7));
  EXPECT_TRUE(i->has(BBOX_DIRTY));
  EXPECT_EQ(i->y, 7.0f);

  set(*i, "xstart", number(3.5));
  set(*i, "gravity_direction", number(180));
  EXPECT_EQ(get(*i, "xstart").real, 3.5);
  EXPECT_EQ(get(*i, "gravity_direction").real, 180);
}

TEST_F(Variables, MotionVariablesDeriveEachOther) {
  CInstance* i = one_instance();
  set(*i, "direction", number(-90));
  EXPECT_EQ(get(*i, "direction").real, 270);

  set(*i, "speed", number(5));
  set(*i, "direction", number(90));
  EXPECT_EQ(get(*i, "hspeed").real, 0.0);
  EXPECT_EQ(get(*i, "vspeed").real, -5.0);

  set(*i, "hspeed", number(3));
  set(*i, "vspeed", number(4));
  EXPECT_EQ(get(*i, "speed").real, 5.0);
  EXPECT_NEAR(get(*i, "direction").real, 306.87, 0.01);
}

TEST_F(Variables, IdAndObjectIndexReadAsRefsAndReadOnlyRowsRefuseWrites) {
  const int32_t object = add_object("oggetto");
  enter_room();
  CInstance* first = instance_create(0, 0, object, 0);
  CInstance* i = instance_create(0, 0, object, 0);
  EXPECT_EQ(i->id, first->id + 1);

  const RValue id = get(*i, "id");
  ASSERT_TRUE(id.is(Kind::Ref));
  EXPECT_EQ(text_form(id).string_view(), "ref instance " + std::to_string(i->id));
  EXPECT_TRUE(id == number(i->id));
  EXPECT_FALSE(id == number(first->id));
  EXPECT_EQ(text_form(get(*i, "object_index")).string_view(), "ref object 0");

  EXPECT_FATAL(set(*i, "id", number(5)), "unable to set built in variable id\n");
  EXPECT_FATAL(set(*i, "bbox_left", number(5)), "unable to set built in variable bbox_left\n");
  EXPECT_FATAL(set(global_object(), "instance_count", number(5)), "unable to set built in variable instance_count\n");
  i->bbox_right = 12.5f;
  EXPECT_EQ(get(*i, "bbox_right").real, 12.5);
}

TEST_F(Variables, AlarmIndexBeyondElevenMeansAlarmZero) {
  CInstance* i = one_instance();
  EXPECT_EQ(get(*i, "alarm", 4).real, -1);
  set(*i, "alarm", number(7), 12);
  EXPECT_EQ(i->alarm[0], 7);
  EXPECT_EQ(get(*i, "alarm", 12).real, 7);
  set(*i, "alarm", number(2.7), 3);
  EXPECT_EQ(i->alarm[3], 2);
  EXPECT_EQ(get(*i, "alarm", 3).real, 2);
  set(*i, "alarm", number(9), 11);
  EXPECT_EQ(i->alarm[11], 9);
  EXPECT_EQ(i->alarm[0], 7);
}

TEST_F(Variables, FlagsFollowVisibleSolidAndPersistent) {
  CInstance* i = one_instance();
  EXPECT_EQ(get(*i, "visible").real, 1);
  // Any value that rounds to non-zero shows the instance.
  for (const auto& [value, shown] : {std::pair{0.4, false}, {0.6, true}, {-3.0, true}}) {
    set(*i, "visible", number(value));
    EXPECT_EQ(i->has(VISIBLE), shown) << value;
    EXPECT_EQ(get(*i, "visible").real, shown ? 1 : 0) << value;
  }

  set(*i, "solid", RValue::boolean(true));
  EXPECT_TRUE(i->has(SOLID));
  EXPECT_EQ(get(*i, "solid").real, 1);
  set(*i, "persistent", number(1));
  EXPECT_TRUE(i->has(PERSISTENT));
  set(*i, "persistent", number(0));
  EXPECT_FALSE(i->has(PERSISTENT));
}

TEST_F(Variables, LookVariablesRecomputeThePlainTransform) {
  CInstance* i = one_instance();
  EXPECT_TRUE(i->has(PLAIN_TRANSFORM));
  i->set(BBOX_DIRTY, false);
  set(*i, "image_xscale", number(2));
  EXPECT_FALSE(i->has(PLAIN_TRANSFORM));
  EXPECT_TRUE(i->has(BBOX_DIRTY));
  set(*i, "image_xscale", number(1));
  EXPECT_TRUE(i->has(PLAIN_TRANSFORM));

  i->set(BBOX_DIRTY, false);
  set(*i, "image_alpha", number(0.5));
  EXPECT_FALSE(i->has(PLAIN_TRANSFORM));
  EXPECT_FALSE(i->has(BBOX_DIRTY)) << "transparency leaves the box";
  EXPECT_EQ(get(*i, "image_alpha").real, 0.5);
  set(*i, "image_alpha", number(1));
  set(*i, "image_blend", number(255));
  EXPECT_FALSE(i->has(PLAIN_TRANSFORM));
  EXPECT_EQ(get(*i, "image_blend").real, 255);
  set(*i, "image_blend", number(0xFFFFFF));
  set(*i, "image_angle", number(45));
  EXPECT_FALSE(i->has(PLAIN_TRANSFORM));
  set(*i, "image_angle", number(0));
  EXPECT_TRUE(i->has(PLAIN_TRANSFORM));
}

TEST_F(Variables, ImageIndexGoesBackToZeroOnlyBeyondTheNewSpritesFrames) {
  const int32_t three = sprite_add_shape("tre_fotogrammi", 8, 8, 0, 0, 3);
  const int32_t two = sprite_add_shape("due_fotogrammi", 8, 8, 0, 0, 2);
  CInstance* i = one_instance();
  set(*i, "image_index", number(2));
  set(*i, "sprite_index", number(three));
  EXPECT_EQ(get(*i, "image_index").real, 2);
  EXPECT_EQ(get(*i, "sprite_index").real, three);

  set(*i, "image_index", number(17.5));
  EXPECT_EQ(get(*i, "image_index").real, 17.5) << "stored without a limit";
  set(*i, "sprite_index", RValue::ref(REF_SPRITE, two));
  EXPECT_EQ(i->sprite_index, two);
  EXPECT_EQ(get(*i, "image_index").real, 0);

  i->set(BBOX_DIRTY, false);
  set(*i, "mask_index", number(three));
  EXPECT_TRUE(i->has(BBOX_DIRTY));
  EXPECT_EQ(get(*i, "mask_index").real, three);
}

TEST_F(Variables, WritingObjectIndexMovesTheInstanceBetweenObjectLists) {
  const int32_t parent = add_object("genitore");
  const int32_t a = add_object("primo", parent);
  const int32_t b = add_object("secondo");
  enter_room();
  CInstance* i = instance_create(0, 0, a, 0);
  set(*i, "object_index", RValue::ref(REF_OBJECT, b));
  EXPECT_EQ(i->object_index, b);
  EXPECT_TRUE(object_get(a)->instances.empty());
  EXPECT_TRUE(object_get(a)->instances_recursive.empty());
  EXPECT_TRUE(object_get(parent)->instances_recursive.empty());
  EXPECT_EQ(object_get(b)->instances, std::vector<CInstance*>{i});
  EXPECT_EQ(object_get(b)->instances_recursive, std::vector<CInstance*>{i});
}

TEST_F(Variables, PlainVariablesHoldValuesAndArrays) {
  CInstance* i = one_instance();
  EXPECT_TRUE(get(*i, "mai_scritta").is(Kind::Unset));
  set(*i, "punti", number(3));
  EXPECT_EQ(get(*i, "punti").real, 3);

  set(*i, "tabella", number(9), 2);
  const RValue table = get(*i, "tabella");
  ASSERT_TRUE(table.is(Kind::Array));
  EXPECT_EQ(table.arr->length, 3);
  EXPECT_EQ(get(*i, "tabella", 2).real, 9);
  EXPECT_EQ(get(*i, "tabella", 0).real, 0) << "gaps read as zero";

  const int32_t id = variable_id("tabella");
  const std::string words = "Variable Index [-1] out of range [3] - " + std::to_string(i->id) + "." +
                            std::to_string(id) + "(" + std::to_string(id) + ",-1)";
  EXPECT_FATAL(set(*i, "tabella", number(1), -1), words);
  EXPECT_FATAL(get(*i, "mai_scritta", 0), "trying to index a variable which is not an array");
  EXPECT_FATAL(get(*i, "tabella", 5), "index out of bounds request 5 maximum size is 3");
}

TEST_F(Variables, StructsKeepInstanceNamesAsPlainVariables) {
  QvObjectBase plain(QvObjectBase::Struct, "Object");
  set(plain, "x", number(0.1));
  EXPECT_EQ(get(plain, "x").real, 0.1) << "a double, not a float field";
  EXPECT_NE(plain.lookup_variable(variable_id("x")), nullptr);
  EXPECT_FATAL(set(plain, "fps", number(1)), "unable to set built in variable fps\n");

  QvObjectBase prototype(QvObjectBase::Struct, "Object");
  set(prototype, "ereditata", number(4));
  plain.prototype = &prototype;
  EXPECT_EQ(get(plain, "ereditata").real, 4);
}

TEST_F(Variables, ReadsThroughAValueFindTheirOwner) {
  const int32_t object = add_object("oggetto");
  const int32_t empty = add_object("vuoto");
  enter_room();
  EXPECT_FATAL(get_of(number(object), "x"), "Unable to find any instance for object index '0' name 'oggetto'");
  CInstance* a = instance_create(1, 0, object, 0);
  CInstance* b = instance_create(2, 0, object, 0);

  EXPECT_TRUE(get_of(number(KEYWORD_NOONE), "x").is(Kind::Undefined));
  EXPECT_EQ(get_of(number(object), "x").real, 1) << "the oldest instance";
  EXPECT_EQ(get_of(RValue::ref(REF_OBJECT, object), "x").real, 1);
  EXPECT_EQ(get_of(number(KEYWORD_ALL), "x").real, 1);
  EXPECT_EQ(get_of(RValue::ref(REF_INSTANCE, b->id), "x").real, 2);
  EXPECT_EQ(get_of(object_value(*b), "x").real, 2);
  EXPECT_FATAL(get_of(number(empty), "x"), "Unable to find any instance for object index '1' name 'vuoto'");
  EXPECT_FATAL(get_of(number(5), "x"), "Unable to find any instance for object index '5' name '<undefined>'");

  instance_destroy(*a);
  EXPECT_EQ(get_of(number(object), "x").real, 2) << "a destroyed instance is passed over";
  const std::string gone = "Unable to find any instance for object index '" + std::to_string(a->id) + "' name '<undefined>'";
  EXPECT_FATAL(get_of(number(a->id), "x"), gone);
  const std::string words = "Variable Get -7 (" + std::to_string(variable_id("x")) + ", " +
                            std::to_string(NO_ARRAY_INDEX) + ")";
  EXPECT_FATAL(get_of(number(KEYWORD_NO_TARGET), "x"), words);

  variable_set_of(number(KEYWORD_GLOBAL), variable_id("totale_globale"), NO_ARRAY_INDEX, number(11));
  EXPECT_EQ(get_of(number(KEYWORD_GLOBAL), "totale_globale").real, 11);
  EXPECT_EQ(get(global_object(), "totale_globale").real, 11);
}

TEST_F(Variables, WritesThroughAValueReachEveryInstanceNamed) {
  const int32_t object = add_object("oggetto");
  const int32_t other = add_object("altro");
  enter_room();
  CInstance* a = instance_create(0, 0, object, 0);
  CInstance* b = instance_create(0, 0, object, 0);
  CInstance* c = instance_create(0, 0, other, 0);
  const int32_t x = variable_id("x");

  variable_set_of(number(object), x, NO_ARRAY_INDEX, number(5));
  EXPECT_EQ(a->x, 5);
  EXPECT_EQ(b->x, 5);
  EXPECT_EQ(c->x, 0);
  variable_set_of(number(KEYWORD_ALL), x, NO_ARRAY_INDEX, number(6));
  EXPECT_EQ(a->x, 6);
  EXPECT_EQ(c->x, 6);
  variable_set_of(RValue::ref(REF_INSTANCE, c->id), variable_id("elenco"), 1, number(8));
  EXPECT_EQ(get(*c, "elenco", 1).real, 8);
  variable_set_of(number(KEYWORD_NOONE), x, NO_ARRAY_INDEX, number(9));
  EXPECT_EQ(a->x, 6);

  variable_set_of(number(c->id + 50), x, NO_ARRAY_INDEX, number(1));
  const std::string words = "Unable to find any instance for object index '" + std::to_string(c->id + 50) + "'";
  EXPECT_FATAL(variable_set_of(number(c->id + 50), x, NO_ARRAY_INDEX, number(1), true), words);
}

TEST_F(Variables, GlobalRowsReadTheRoomTheFrameAndTheEvent) {
  const int32_t object = add_object("oggetto");
  enter_room(800, 600);
  QvObjectBase& g = global_object();
  EXPECT_EQ(get(g, "room").real, 0);
  EXPECT_EQ(get(g, "room_width").real, 800);
  EXPECT_EQ(get(g, "room_height").real, 600);
  set(g, "room_width", number(1024));
  EXPECT_EQ(current_room()->width, 1024);

  EXPECT_EQ(get(g, "room_speed").real, 30);
  set(g, "room_speed", number(59.6));
  EXPECT_EQ(frame_state().game_speed, 60);
  EXPECT_FATAL(set(g, "room_speed", number(0.4)), "Trying to set the room speed to a value <= 0.");
  EXPECT_FATAL(set(g, "room_speed", number(-30)), "Trying to set the room speed to a value <= 0.");
  EXPECT_EQ(frame_state().game_speed, 60);

  CInstance* a = instance_create(0, 0, object, 0);
  CInstance* b = instance_create(0, 0, object, 0);
  EXPECT_EQ(get(g, "instance_count").real, 2);
  instance_destroy(*a);
  EXPECT_EQ(get(g, "instance_count").real, 1);

  frame_state().fps = 29;
  frame_state().delta_time = 40000;
  for (const auto& [name, value] : {std::pair{"fps", 29}, {"fps_real", 25}, {"delta_time", 40000}, {"async_load", -1}})
    EXPECT_EQ(get(g, name).real, value) << name;
  frame_state().async_load = 3;
  EXPECT_EQ(text_form(get(g, "async_load")).string_view(), "ref ds_map 3");

  const std::string folder = get(g, "working_directory").c_str();
  ASSERT_FALSE(folder.empty());
  EXPECT_EQ(folder.back(), '/');
  EXPECT_GE(get(g, "current_time").real, 0);

  EXPECT_TRUE(get(g, "undefined").is(Kind::Undefined));
  EXPECT_TRUE(std::isnan(get(g, "NaN").real));
  EXPECT_TRUE(std::isinf(get(g, "infinity").real));

  set(g, "keyboard_string", RValue::text("ciao"));
  EXPECT_EQ(get(g, "keyboard_string").string_view(), "ciao");
  set(g, "keyboard_string", RValue::text(""));
  EXPECT_TRUE(get(g, "mouse_x").is(Kind::Number));

  RValue seen[3];
  object_set_event(object, ev::OTHER, 11, [&seen](CInstance& self, CInstance*) {
    seen[0] = get(self, "event_type");
    seen[1] = get(self, "event_number");
    seen[2] = get(self, "event_object");
  });
  objects_prepare();
  PerformEvent(b, b, object, ev::OTHER, 11);
  EXPECT_EQ(seen[0].real, ev::OTHER);
  EXPECT_EQ(seen[1].real, 11);
  EXPECT_EQ(seen[2].real, object);
}

TEST_F(Variables, WritingRoomGoesToThatRoom) {
  enter_room();
  RoomDescription next;
  next.name = "seconda";
  const int32_t second = room_add(std::move(next));
  set(global_object(), "room", number(second));
  EXPECT_EQ(room_target(), second);
  set_room_target(ROOM_NONE);
  EXPECT_FATAL(set(global_object(), "room", number(7)), "Unexisting room number: 7");
}
