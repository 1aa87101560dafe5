#include "runtime/Object/Instance.h"

#include <cmath>

#include "runtime/Object/Objects.h"

namespace {

constexpr float PI = 3.1415927f;

// Motion values within 0.0001 of a whole number are that number.
float snap(float v) {
  const float whole = std::round(v);
  return std::fabs(v - whole) < 0.0001f ? whole : v;
}

}  // namespace

RValue* QvObjectBase::find_variable(int32_t id) {
  // A prototype chain longer than this is a loop.
  int guard = 0;
  for (QvObjectBase* o = this; o && guard < 1000; o = o->prototype, ++guard) {
    if (RValue* slot = o->lookup_variable(id)) return slot;
  }
  return own_variable(id);
}

CInstance::CInstance(float x, float y, int32_t id, int32_t object_index)
    : QvObjectBase(Instance, "[[Instance]]"),
      instance_flags(instance_flag::VISIBLE | instance_flag::BBOX_DIRTY | instance_flag::PLAIN_TRANSFORM),
      id(id),
      object_index(object_index),
      x(x),
      y(y),
      xstart(x),
      ystart(y),
      xprevious(x),
      yprevious(y) {
  if (const CObject* o = object_get(object_index)) {
    sprite_index = o->sprite;
    mask_index = o->mask;
    depth = o->depth;
    set(instance_flag::VISIBLE, (o->flags & object_flag::VISIBLE) != 0);
    set(instance_flag::SOLID, (o->flags & object_flag::SOLID) != 0);
    set(instance_flag::PERSISTENT, (o->flags & object_flag::PERSISTENT) != 0);
  }
}

void CInstance::derive_speeds() {
  hspeed = snap(std::cos(direction * PI / 180.0f) * speed);
  vspeed = snap(-std::sin(direction * PI / 180.0f) * speed);
  set(instance_flag::BBOX_DIRTY, true);
}

void CInstance::derive_direction() {
  if (hspeed == 0) {
    direction = vspeed > 0 ? 270.0f : (vspeed < 0 ? 90.0f : 0.0f);
  } else {
    direction = std::fmod(snap(-std::atan2(vspeed, hspeed) * 180.0f / PI), 360.0f);
    if (direction < 0) direction += 360.0f;
  }
  speed = snap(std::sqrt(hspeed * hspeed + vspeed * vspeed));
}

void CInstance::set_direction(float d) {
  direction = std::fmod(d, 360.0f);
  if (direction < 0) direction += 360.0f;
  derive_speeds();
}

void CInstance::set_speed(float s) {
  if (s == speed) return;
  speed = s;
  derive_speeds();
}

void CInstance::set_hspeed(float h) {
  if (h == hspeed) return;
  hspeed = h;
  derive_direction();
}

void CInstance::set_vspeed(float v) {
  if (v == vspeed) return;
  vspeed = v;
  derive_direction();
}

void CInstance::apply_friction_and_gravity() {
  if (friction != 0 && speed != 0) {
    // Friction slows down to a stop, never past it.
    const float slower = std::fabs(speed) - friction;
    set_speed(slower <= 0 ? 0.0f : std::copysign(slower, speed));
  }
  if (gravity != 0) {
    hspeed += std::cos(gravity_direction * PI / 180.0f) * gravity;
    vspeed += -std::sin(gravity_direction * PI / 180.0f) * gravity;
    derive_direction();
  }
}

const char* instance_object_name(const CInstance* instance) {
  const CObject* o = instance ? object_get(instance->object_index) : nullptr;
  return o ? o->name.c_str() : "<unknown>";
}
