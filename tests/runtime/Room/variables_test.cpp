#include "runtime/Room/Variables.h"

#include <gtest/gtest.h>

#include <iterator>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include "room_values.h"
#include "runtime/Code/Conversions.h"
#include "runtime/IO/Input.h"
#include "runtime/Object/Objects.h"
#include "runtime/Room/Events.h"
#include "runtime/Room/FrameState.h"
#include "runtime/Room/Room.h"
#include "runtime/Sprite/Sprite.h"
#include "support/Fatal.h"

namespace {

using namespace instance_flag;

// A value as "kind value", with digits enough to tell a float from a double
// and -0 as 0: "number 0.100000001", "ref instance 100001", "string ciao".
std::string shown(const RValue& v) {
  std::ostringstream out;
  out.precision(9);
  out << kind_name(v.kind());
  if (v.is(Kind::Ref)) return value_to_text(v);  // the runtime's own text form: "ref instance 100001"
  if (v.is(Kind::String)) out << " " << v.string_view();
  if (v.is(Kind::Number) || v.is(Kind::Bool)) out << " " << v.real + 0.0;
  return out.str();
}

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
  static void enter_room(int32_t width = 640, int32_t height = 480) {
    set_room_target(room_add(RoomDescription{"stanza", width, height}));
    room_change(true);
  }
  // Reads and writes a variable through the value that names its owner.
  static std::string get(const RValue& target, const char* name, int32_t index = NO_ARRAY_INDEX) {
    RValue out;
    variable_get_of(target, variable_id(name), index, out);
    return shown(out);
  }
  static void set(const RValue& target, const char* name, const RValue& value, int32_t index = NO_ARRAY_INDEX) {
    variable_set_of(target, variable_id(name), index, value);
  }
};

TEST_F(Variables, NamesHaveFixedIdsBuiltinRowsBelowTenThousandAndNoMoreThanFiveHundred) {
  const int32_t x = variable_id("x"), mine = variable_id("punteggio_della_prova");
  EXPECT_LT(x, FIRST_PLAIN_VARIABLE_ID);
  EXPECT_GE(mine, FIRST_PLAIN_VARIABLE_ID);
  EXPECT_EQ(std::pair(variable_id("x"), variable_id("punteggio_della_prova")), std::pair(x, mine)) << "every time";
  EXPECT_EQ(variable_name(x) + " " + variable_name(mine), "x punteggio_della_prova");
  EXPECT_EQ(variable_name(FIRST_PLAIN_VARIABLE_ID + 99999), "<unknown variable>");

  const VariableGetter nothing = [](CInstance*, int32_t, RValue& out) { out = RValue::undefined(); };
  for (int32_t n = builtin_variable_count(); n < MAX_BUILTIN_VARIABLES; ++n) {
    EXPECT_EQ(builtin_variable_add(("riga_di_riempimento_" + std::to_string(n)).c_str(), nothing, nullptr, false), n);
  }
  EXPECT_FATAL(builtin_variable_add("una_di_troppo", nothing, nullptr, false),
               "INTERNAL ERROR: Adding too many variables");
  EXPECT_EQ(builtin_variable_count(), MAX_BUILTIN_VARIABLES);
  EXPECT_GE(variable_id("una_di_troppo"), FIRST_PLAIN_VARIABLE_ID) << "other names still get plain ids";
}

TEST_F(Variables, InstanceRowsKeepTheirFieldsAndMarkTheBoxAndTheLook) {
  const int32_t three = sprite_add_shape("tre_fotogrammi", 8, 8, 0, 0, 3);
  const int32_t two = sprite_add_shape("due_fotogrammi", 8, 8, 0, 0, 2);
  const int32_t parent = add_object("genitore"), object = add_object("oggetto", parent), other = add_object("altro");
  enter_room();
  CInstance* i = instance_create(0, 0, object, 0);
  const RValue none, self = object_value(*i);
  const std::string sprite_three = "number " + std::to_string(three);
  // In order: the row, the value written (none: a read alone), what reads back,
  // whether the write left the box "kept" or "stale" (when it matters),
  // whether the look is plain after it, and the array index.
  const struct { const char* name; RValue write; std::string read; const char* box = nullptr; bool plain = true;
                 int32_t index = NO_ARRAY_INDEX; } rows[] = {
      // Single precision; a move makes the box stale, but the same place is no move.
      {"x", number(0.1), "number 0.100000001", "stale"}, {"x", number(0.1), "number 0.100000001", "kept"},
      // Motion rows derive each other.
      {"direction", number(-90), "number 270"}, {"speed", number(5), "number 5"},
      {"direction", number(90), "number 90"}, {"vspeed", none, "number -5"}, {"hspeed", number(3), "number 3"},
      {"vspeed", number(4), "number 4"}, {"speed", none, "number 5"}, {"direction", none, "number 306.869904"},
      // Alarms 0 to 11, whole numbers; any other index means alarm 0.
      {"alarm", number(7), "number 7", nullptr, true, 12}, {"alarm", number(2.7), "number 2", nullptr, true, 3},
      {"alarm", number(9), "number 9", nullptr, true, 11}, {"alarm", none, "number 7", nullptr, true, 0},
      // Any value that rounds to non-zero shows the instance.
      {"visible", number(0.4), "number 0"}, {"visible", number(0.6), "number 1"},
      {"solid", RValue::boolean(true), "number 1"}, {"persistent", number(0), "number 0"},
      // Scales and angle change the box and the look; transparency and colour the look alone.
      {"image_xscale", number(2), "number 2", "stale", false}, {"image_xscale", number(1), "number 1", "stale"},
      {"image_alpha", number(0.5), "number 0.5", "kept", false}, {"image_alpha", number(1), "number 1"},
      {"image_blend", number(255), "number 255", "kept", false}, {"image_blend", number(0xFFFFFF), "number 16777215"},
      {"image_angle", number(45), "number 45", "stale", false}, {"image_angle", number(0), "number 0", "stale"},
      // The frame shown is stored without a limit; it goes back to zero beyond the new sprite's frames only.
      {"image_index", number(2), "number 2"}, {"sprite_index", number(three), sprite_three, "stale"},
      {"image_index", none, "number 2"}, {"image_index", number(17.5), "number 17.5", "kept"},
      {"sprite_index", RValue::ref(REF_SPRITE, two), "number " + std::to_string(two), "stale"},
      {"image_index", none, "number 0"}, {"mask_index", number(three), sprite_three, "stale"},
      {"bbox_right", none, "number 7"},
      // Id and object index read as refs.
      {"id", none, "ref instance " + std::to_string(i->id)},
      {"object_index", none, "ref object " + std::to_string(object)},
  };
  EXPECT_TRUE(i->has(PLAIN_TRANSFORM));
  for (size_t n = 0; n < std::size(rows); ++n) {
    const auto& row = rows[n];
    if (!row.write.is(Kind::Unset)) {
      i->set(BBOX_DIRTY, false);
      set(self, row.name, row.write, row.index);
      EXPECT_EQ(i->has(PLAIN_TRANSFORM), row.plain) << "row " << n << ": " << row.name;
      if (row.box) {
        EXPECT_EQ(i->has(BBOX_DIRTY) ? "stale" : "kept", std::string(row.box)) << "row " << n;
      }
    }
    EXPECT_EQ(get(self, row.name, row.index), row.read) << "row " << n << ": " << row.name;
  }
  EXPECT_FATAL(set(self, "bbox_left", number(5)), "unable to set built in variable bbox_left\n");

  // Another object: the instance leaves the lists of the old one and its ancestors.
  set(self, "object_index", RValue::ref(REF_OBJECT, other));
  EXPECT_EQ(i->object_index, other);
  for (const int32_t old : {object, parent}) EXPECT_TRUE(object_get(old)->instances_recursive.empty()) << old;
  EXPECT_TRUE(object_get(object)->instances.empty());
  EXPECT_EQ(object_get(other)->instances, std::vector<CInstance*>{i});
  EXPECT_EQ(object_get(other)->instances_recursive, std::vector<CInstance*>{i});
}

TEST_F(Variables, StructsKeepInstanceNamesAsPlainOnesAndReadThroughTheirPrototypes) {
  QvObjectBase plain(QvObjectBase::Struct, "Object"), prototype(QvObjectBase::Struct, "Object");
  set(object_value(plain), "x", number(0.1));
  EXPECT_EQ(get(object_value(plain), "x"), "number 0.1") << "a double, not a float field";
  set(object_value(prototype), "ereditata", number(4));
  plain.prototype = &prototype;
  EXPECT_EQ(get(object_value(plain), "ereditata"), "number 4");
  // Many variables: the table grows, entries move along, and each still reads back its own value.
  for (int n = 0; n < 64; ++n) set(object_value(plain), ("campo_" + std::to_string(n)).c_str(), number(n));
  for (int n = 0; n < 64; ++n) {
    EXPECT_EQ(get(object_value(plain), ("campo_" + std::to_string(n)).c_str()), "number " + std::to_string(n));
  }
}

TEST_F(Variables, ReadsAndWritesThroughAValueFindTheirOwners) {
  const int32_t object = add_object("oggetto"), empty = add_object("vuoto"), other = add_object("altro");
  enter_room();
  CInstance* a = instance_create(1, 0, object, 0);
  CInstance* b = instance_create(2, 0, object, 0);
  CInstance* c = instance_create(0, 0, other, 0);
  // A read goes to the oldest instance of an object, or of the room for all.
  const std::pair<RValue, const char*> reads[] = {
      {number(KEYWORD_NOONE), "undefined"},       {number(object), "number 1"},
      {RValue::ref(REF_OBJECT, object), "number 1"}, {number(KEYWORD_ALL), "number 1"},
      {RValue::ref(REF_INSTANCE, b->id), "number 2"}, {object_value(*b), "number 2"},
  };
  for (const auto& [target, read] : reads) EXPECT_EQ(get(target, "x"), read) << shown(target);
  EXPECT_FATAL(get(number(empty), "x"), "Unable to find any instance for object index '1' name 'vuoto'");
  const std::string words = "Variable Get -7 (" + std::to_string(variable_id("x")) + ", " +
                            std::to_string(NO_ARRAY_INDEX) + ")";
  EXPECT_FATAL(get(number(KEYWORD_NO_TARGET), "x"), words);

  // A write goes to every instance named.
  const auto xs = [&] { return std::tuple(a->x, b->x, c->x); };
  set(number(object), "x", number(5));
  EXPECT_EQ(xs(), std::tuple(5, 5, 0));
  set(number(KEYWORD_ALL), "x", number(6));
  EXPECT_EQ(xs(), std::tuple(6, 6, 6));
  set(RValue::ref(REF_INSTANCE, c->id), "elenco", number(8), 1);
  EXPECT_EQ(get(object_value(*c), "elenco", 1), "number 8");
  const std::string id = std::to_string(variable_id("elenco"));
  EXPECT_FATAL(set(object_value(*c), "elenco", number(1), -1),
               "Variable Index [-1] out of range [2] - " + std::to_string(c->id) + "." + id + "(" + id + ",-1)");
  EXPECT_EQ(get(object_value(*c), "mai_scritta"), "unset");
  EXPECT_FATAL(get(object_value(*c), "mai_scritta", 0), "trying to index a variable which is not an array");
  set(number(c->id + 50), "x", number(1));
  const std::string missing = std::to_string(c->id + 50);
  EXPECT_FATAL(variable_set_of(number(c->id + 50), variable_id("x"), NO_ARRAY_INDEX, number(1), true),
               "Unable to find any instance for object index '" + missing + "'");
  set(number(KEYWORD_GLOBAL), "totale_globale", number(11));
  EXPECT_EQ(get(number(KEYWORD_GLOBAL), "totale_globale"), "number 11");

  instance_destroy(*a);
  EXPECT_EQ(get(number(object), "x"), "number 6") << "a destroyed instance is passed over";
  EXPECT_FATAL(get(number(a->id), "x"),
               "Unable to find any instance for object index '" + std::to_string(a->id) + "' name '<undefined>'");
}

TEST_F(Variables, GlobalRowsReadTheRoomTheFrameTheInputAndTheEvent) {
  const int32_t object = add_object("oggetto");
  enter_room(800, 600);
  const int32_t second = room_add(RoomDescription{"seconda"});
  instance_destroy(*instance_create(0, 0, object, 0));
  CInstance* i = instance_create(0, 0, object, 0);
  frame_state().fps = 29;
  frame_state().delta_time = 40000;
  input_reset();
  input_mouse_move(5, 6);
  input_begin_frame();
  const RValue none, global = object_value(global_object());
  const struct { const char* name; RValue write; const char* read; } rows[] = {
      {"room", none, "number 0"}, {"room_height", none, "number 600"}, {"room_width", number(1024), "number 1024"},
      {"room_speed", none, "number 30"}, {"room_speed", number(59.6), "number 60"}, {"fps", none, "number 29"},
      {"instance_count", none, "number 1"}, {"fps_real", none, "number 25"}, {"delta_time", none, "number 40000"},
      {"async_load", none, "number -1"}, {"mouse_x", none, "number 5"}, {"mouse_y", none, "number 6"},
      {"keyboard_string", RValue::text("ciao"), "string ciao"}, {"undefined", none, "undefined"},
      {"NaN", none, "number nan"}, {"infinity", none, "number inf"},
  };
  for (const auto& row : rows) {
    if (!row.write.is(Kind::Unset)) set(global, row.name, row.write);
    EXPECT_EQ(get(global, row.name), row.read) << row.name;
  }
  EXPECT_FATAL(set(global, "room_speed", number(0.4)), "Trying to set the room speed to a value <= 0.");
  frame_state().async_load = 3;
  EXPECT_EQ(get(global, "async_load"), "ref ds_map 3");
  EXPECT_EQ(get(global, "working_directory").back(), '/');
  EXPECT_GE(std::stod(get(global, "current_time").substr(7)), 0);

  // The running event, as its code sees it.
  std::string seen;
  object_set_event(object, ev::OTHER, 11, [&seen](CInstance&, CInstance*) {
    const RValue global = object_value(global_object());
    seen = get(global, "event_type") + ", " + get(global, "event_number") + ", " + get(global, "event_object");
  });
  objects_prepare();
  PerformEvent(i, i, object, ev::OTHER, 11);
  EXPECT_EQ(seen, "number " + std::to_string(ev::OTHER) + ", number 11, number " + std::to_string(object));

  // Writing room goes to that room.
  set(global, "room", number(second));
  EXPECT_EQ(room_target(), second);
  set_room_target(ROOM_NONE);
  EXPECT_FATAL(set(global, "room", number(7)), "Unexisting room number: 7");
}

}  // namespace
