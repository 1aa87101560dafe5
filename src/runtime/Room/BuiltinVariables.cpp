// The rows of the built-in variable table: the fields of an instance, and
// the global values of the room, the frame, the input and the running event.
//
// Instance fields are single precision floats: a value written to `x` reads
// back rounded to float. A row without a setter is read-only.
#include <algorithm>
#include <cmath>
#include <limits>

#include "runtime/Code/Conversions.h"
#include "runtime/Code/Error.h"
#include "runtime/IO/FileNames.h"
#include "runtime/IO/Input.h"
#include "runtime/Object/Objects.h"
#include "runtime/Room/Collision.h"
#include "runtime/Room/Variables.h"
#include "runtime/Platform/Clock.h"
#include "runtime/Room/Room.h"
#include "runtime/Room/Events.h"
#include "runtime/Room/FrameState.h"
#include "runtime/Sprite/Sprite.h"
#include "runtime/Support/DsMap.h"

namespace {

using namespace instance_flag;


float to_float(const RValue& v) { return static_cast<float>(value_to_real(v)); }

// Floors to a whole number that fits 32 bits; NaN counts as 0.
int32_t floor_to_int32(double d) {
  if (std::isnan(d)) return 0;
  d = std::clamp(std::floor(d), static_cast<double>(INT32_MIN), static_cast<double>(INT32_MAX));
  return static_cast<int32_t>(d);
}

// Alarms 0 to 11; any other index, and none, means alarm 0.
int32_t alarm_slot(int32_t index) { return index >= 0 && index < 12 ? index : 0; }

// The fast draw path needs the untouched look: scales 1, angle 0, white, opaque.
void update_plain_transform(CInstance& i) {
  i.set(PLAIN_TRANSFORM, i.image_xscale == 1 && i.image_yscale == 1 && i.image_angle == 0 &&
                             i.image_blend == 0xFFFFFF && i.image_alpha == 1);
}

// ---------------------------------------------------------------------------
// Getters and setters of instance fields

template <float CInstance::*field>
void get_float(CInstance* i, int32_t, RValue& out) {
  out = RValue::number(i->*field);
}
// A side of the bounding box, computed again first when the shape changed.
template <float CInstance::*field>
void get_bbox(CInstance* i, int32_t, RValue& out) {
  BBox box;
  instance_bbox(*i, box);
  out = RValue::number(i->*field);
}
template <float CInstance::*field>
void set_float(CInstance* i, int32_t, const RValue& v) {
  i->*field = to_float(v);
}
template <int32_t CInstance::*field>
void get_int(CInstance* i, int32_t, RValue& out) {
  out = RValue::number(i->*field);
}
template <int32_t CInstance::*field>
void set_int(CInstance* i, int32_t, const RValue& v) {
  i->*field = value_to_int32(v);
}
template <uint32_t flag>
void get_flag(CInstance* i, int32_t, RValue& out) {
  out = RValue::number(i->has(flag) ? 1 : 0);
}
template <uint32_t flag>
void set_flag(CInstance* i, int32_t, const RValue& v) {
  i->set(flag, value_to_bool(v));
}

// x and y: a move makes the box stale.
template <float CInstance::*field>
void set_position(CInstance* i, int32_t, const RValue& v) {
  const float value = to_float(v);
  if (value == i->*field) return;
  i->*field = value;
  i->set(BBOX_DIRTY, true);
}

// Scales and angle: they change the box and the look.
template <float CInstance::*field>
void set_shape(CInstance* i, int32_t, const RValue& v) {
  i->*field = to_float(v);
  i->set(BBOX_DIRTY, true);
  update_plain_transform(*i);
}

void set_image_alpha(CInstance* i, int32_t, const RValue& v) {
  i->image_alpha = to_float(v);
  update_plain_transform(*i);
}

void set_image_blend(CInstance* i, int32_t, const RValue& v) {
  // Colours are whole numbers up to 0xFFFFFF; wider values keep their low 32 bits.
  i->image_blend = static_cast<int32_t>(value_to_int64(v));
  update_plain_transform(*i);
}

void set_direction(CInstance* i, int32_t, const RValue& v) { i->set_direction(to_float(v)); }
void set_speed(CInstance* i, int32_t, const RValue& v) { i->set_speed(to_float(v)); }
void set_hspeed(CInstance* i, int32_t, const RValue& v) { i->set_hspeed(to_float(v)); }
void set_vspeed(CInstance* i, int32_t, const RValue& v) { i->set_vspeed(to_float(v)); }

void get_id(CInstance* i, int32_t, RValue& out) { out = RValue::ref(REF_INSTANCE, i->id); }

void get_object_index(CInstance* i, int32_t, RValue& out) { out = RValue::ref(REF_OBJECT, i->object_index); }

// Another object: the instance leaves the lists of the old object and its
// ancestors and joins those of the new one at the tail, so that `with` and
// the event walks see it as an instance of what it now is.
void set_object_index(CInstance* i, int32_t, const RValue& v) {
  const int32_t object = value_to_int32(v);
  if (object == i->object_index) return;
  const int32_t old = i->object_index;
  for (int32_t o = 0; o < object_count(); ++o) {
    CObject* lists = object_get(o);
    if (o == old) std::erase(lists->instances, i);
    if (object_is_ancestor(old, o)) std::erase(lists->instances_recursive, i);
    if (o == object) lists->instances.push_back(i);
    if (object_is_ancestor(object, o)) lists->instances_recursive.push_back(i);
  }
  i->object_index = object;
}

void get_alarm(CInstance* i, int32_t index, RValue& out) { out = RValue::number(i->alarm[alarm_slot(index)]); }

void set_alarm(CInstance* i, int32_t index, const RValue& v) {
  i->alarm[alarm_slot(index)] = floor_to_int32(value_to_real(v));
}

void set_visible(CInstance* i, int32_t, const RValue& v) { i->set(VISIBLE, std::round(value_to_real(v)) != 0); }

// The frame shown stays unless the new sprite hasn't that many frames.
void set_sprite_index(CInstance* i, int32_t, const RValue& v) {
  const int32_t sprite = value_to_int32(v);
  if (sprite != i->sprite_index) {
    i->sprite_index = sprite;
    if (i->image_index >= static_cast<float>(sprite_get_number(sprite))) i->image_index = 0;
  }
  i->set(BBOX_DIRTY, true);
}

void set_mask_index(CInstance* i, int32_t, const RValue& v) {
  i->mask_index = value_to_int32(v);
  i->set(BBOX_DIRTY, true);
}

// ---------------------------------------------------------------------------
// Global values

void get_room(CInstance*, int32_t, RValue& out) { out = RValue::number(current_room_index()); }
void set_room(CInstance*, int32_t, const RValue& v) { room_goto(value_to_int32(v)); }

template <int32_t Room::*field>
void get_room_size(CInstance*, int32_t, RValue& out) {
  const Room* room = current_room();
  out = RValue::number(room ? room->*field : 0);
}
template <int32_t Room::*field>
void set_room_size(CInstance*, int32_t, const RValue& v) {
  if (Room* room = current_room()) room->*field = value_to_int32(v);
}

void get_room_speed(CInstance*, int32_t, RValue& out) { out = RValue::number(frame_state().game_speed); }
void set_room_speed(CInstance*, int32_t, const RValue& v) {
  const double speed = std::round(value_to_real(v));
  if (!(speed >= 1)) {
    ReportError("Trying to set the room speed to a value <= 0.");
    return;
  }
  frame_state().game_speed = static_cast<int32_t>(std::min(speed, static_cast<double>(INT32_MAX)));
}

void get_instance_count(CInstance*, int32_t, RValue& out) {
  const Room* room = current_room();
  const auto count = room ? std::count_if(room->active.begin(), room->active.end(),
                                          [](const CInstance* i) { return i->active(); })
                          : 0;
  out = RValue::number(static_cast<double>(count));
}

void get_working_directory(CInstance*, int32_t, RValue& out) { out = RValue::text(start_folder()); }
void get_program_directory(CInstance*, int32_t, RValue& out) { out = RValue::text(program_folder()); }
void get_temp_directory(CInstance*, int32_t, RValue& out) { out = RValue::text(temporary_folder()); }

void get_fps(CInstance*, int32_t, RValue& out) { out = RValue::number(frame_state().fps); }
// The rate the last frame's length would give over a whole second.
void get_fps_real(CInstance*, int32_t, RValue& out) {
  const int64_t delta = frame_state().delta_time;
  out = RValue::number(delta > 0 ? 1000000.0 / static_cast<double>(delta) : 0.0);
}
void get_delta_time(CInstance*, int32_t, RValue& out) {
  out = RValue::number(static_cast<double>(frame_state().delta_time));
}
// Milliseconds since the start, truncated from the microsecond clock.
void get_current_time(CInstance*, int32_t, RValue& out) {
  out = RValue::number(static_cast<double>(platform::clock_microseconds() / 1000));
}

void get_mouse_x(CInstance*, int32_t, RValue& out) { out = RValue::number(mouse_x()); }
void get_mouse_y(CInstance*, int32_t, RValue& out) { out = RValue::number(mouse_y()); }
void read_keyboard_string(CInstance*, int32_t, RValue& out) { out = RValue::text(keyboard_string()); }
void write_keyboard_string(CInstance*, int32_t, const RValue& v) { set_keyboard_string(value_to_text(v)); }

void get_event_type(CInstance*, int32_t, RValue& out) { out = RValue::number(current_event().type); }
void get_event_number(CInstance*, int32_t, RValue& out) { out = RValue::number(current_event().subtype); }
void get_event_object(CInstance*, int32_t, RValue& out) { out = RValue::number(current_event().object); }

void get_undefined(CInstance*, int32_t, RValue& out) { out = RValue::undefined(); }
void get_nan(CInstance*, int32_t, RValue& out) { out = RValue::number(std::numeric_limits<double>::quiet_NaN()); }
void get_infinity(CInstance*, int32_t, RValue& out) {
  out = RValue::number(std::numeric_limits<double>::infinity());
}

// The map of the running asynchronous event, or -1 outside one.
void get_async_load(CInstance*, int32_t, RValue& out) {
  const int32_t map = frame_state().async_load;
  out = map >= 0 ? RValue::ref(REF_DS_MAP, map) : RValue::number(-1);
}

struct Row {
  const char* name;
  VariableGetter get;
  VariableSetter set;
};

// The application reads x and y most of all: they come first.
const Row instance_rows[] = {
    {"x", get_float<&CInstance::x>, set_position<&CInstance::x>},
    {"y", get_float<&CInstance::y>, set_position<&CInstance::y>},
    {"xprevious", get_float<&CInstance::xprevious>, set_float<&CInstance::xprevious>},
    {"yprevious", get_float<&CInstance::yprevious>, set_float<&CInstance::yprevious>},
    {"xstart", get_float<&CInstance::xstart>, set_float<&CInstance::xstart>},
    {"ystart", get_float<&CInstance::ystart>, set_float<&CInstance::ystart>},
    {"hspeed", get_float<&CInstance::hspeed>, set_hspeed},
    {"vspeed", get_float<&CInstance::vspeed>, set_vspeed},
    {"direction", get_float<&CInstance::direction>, set_direction},
    {"speed", get_float<&CInstance::speed>, set_speed},
    {"friction", get_float<&CInstance::friction>, set_float<&CInstance::friction>},
    {"gravity", get_float<&CInstance::gravity>, set_float<&CInstance::gravity>},
    {"gravity_direction", get_float<&CInstance::gravity_direction>, set_float<&CInstance::gravity_direction>},
    {"object_index", get_object_index, set_object_index},
    {"id", get_id, nullptr},
    {"alarm", get_alarm, set_alarm},
    {"solid", get_flag<SOLID>, set_flag<SOLID>},
    {"visible", get_flag<VISIBLE>, set_visible},
    {"persistent", get_flag<PERSISTENT>, set_flag<PERSISTENT>},
    // Layers re-sort by depth when they come; until then the value is all there is.
    {"depth", get_float<&CInstance::depth>, set_float<&CInstance::depth>},
    {"bbox_left", get_bbox<&CInstance::bbox_left>, nullptr},
    {"bbox_right", get_bbox<&CInstance::bbox_right>, nullptr},
    {"bbox_top", get_bbox<&CInstance::bbox_top>, nullptr},
    {"bbox_bottom", get_bbox<&CInstance::bbox_bottom>, nullptr},
    {"sprite_index", get_int<&CInstance::sprite_index>, set_sprite_index},
    {"image_index", get_float<&CInstance::image_index>, set_float<&CInstance::image_index>},
    {"image_speed", get_float<&CInstance::image_speed>, set_float<&CInstance::image_speed>},
    {"image_xscale", get_float<&CInstance::image_xscale>, set_shape<&CInstance::image_xscale>},
    {"image_yscale", get_float<&CInstance::image_yscale>, set_shape<&CInstance::image_yscale>},
    {"image_angle", get_float<&CInstance::image_angle>, set_shape<&CInstance::image_angle>},
    {"image_alpha", get_float<&CInstance::image_alpha>, set_image_alpha},
    {"image_blend", get_int<&CInstance::image_blend>, set_image_blend},
    {"mask_index", get_int<&CInstance::mask_index>, set_mask_index},
    {"layer", get_int<&CInstance::layer>, set_int<&CInstance::layer>},
};

const Row global_rows[] = {
    {"room", get_room, set_room},
    {"room_width", get_room_size<&Room::width>, set_room_size<&Room::width>},
    {"room_height", get_room_size<&Room::height>, set_room_size<&Room::height>},
    {"room_speed", get_room_speed, set_room_speed},
    {"instance_count", get_instance_count, nullptr},
    {"working_directory", get_working_directory, nullptr},
    {"program_directory", get_program_directory, nullptr},
    {"temp_directory", get_temp_directory, nullptr},
    {"fps", get_fps, nullptr},
    {"fps_real", get_fps_real, nullptr},
    {"delta_time", get_delta_time, nullptr},
    {"current_time", get_current_time, nullptr},
    {"mouse_x", get_mouse_x, nullptr},
    {"mouse_y", get_mouse_y, nullptr},
    {"keyboard_string", read_keyboard_string, write_keyboard_string},
    {"event_type", get_event_type, nullptr},
    {"event_number", get_event_number, nullptr},
    {"event_object", get_event_object, nullptr},
    {"undefined", get_undefined, nullptr},
    {"NaN", get_nan, nullptr},
    {"infinity", get_infinity, nullptr},
    {"async_load", get_async_load, nullptr},
};

}  // namespace

void add_builtin_variable_rows() {
  for (const Row& row : instance_rows) builtin_variable_add(row.name, row.get, row.set, true);
  for (const Row& row : global_rows) builtin_variable_add(row.name, row.get, row.set, false);
}
