// Objects of the runtime that hold variables, and the instance of a game
// object.
//
// QvObjectBase is the base of everything a program can hold a reference to:
// it owns a map from variable id to value and may have a prototype to look
// further in. CInstance is an instance of a game object: the built-in
// fields that the frame loop moves and draws, its alarms and flags, and its
// place in the room and object lists. Application objects are C++ classes
// derived from CInstance, with their events as methods.
//
// Collection. Strings and arrays are reclaimed by their reference counts
// (RValue.h, Array.h); an instance lives until the deletion pass after its
// destruction, owned by the room's table of instances by id. No other kind
// of object is made by the application, so no tracing collector runs: what
// is reachable from a variable stays valid, and what is not is freed as soon
// as the last reference goes.
#pragma once

#include <cstdint>
#include <memory>

#include "runtime/Code/RValue.h"
#include "runtime/Object/VariableMap.h"

class CInstanceBase {
 public:
  virtual ~CInstanceBase() = default;
};

class QvObjectBase : public CInstanceBase {
 public:
  // What an object is, for the collector and for messages.
  enum ObjectKind : int32_t { Struct = 0, Instance = 1, ScriptRef = 3, Accessor = 4, ArrayThing = 5, WeakRef = 6,
                              Container = 7, Exception = 29 };

  QvObjectBase(ObjectKind kind, const char* class_name) : class_name(class_name), object_kind(kind) {}

  // The slot of variable `id`, following the prototype chain; made in this
  // object (unset) when no object of the chain has it.
  RValue* find_variable(int32_t id);
  // The slot of `id` in this object alone, made when missing.
  RValue* own_variable(int32_t id) { return variables_.find_or_insert(id); }
  // The slot of `id` in this object alone, or null.
  RValue* lookup_variable(int32_t id) const { return variables_.find(id); }
  const VariableMap& variables() const { return variables_; }

  QvObjectBase* prototype = nullptr;
  const char* class_name;
  ObjectKind object_kind;
  uint32_t flags = 1;  // bit 0: extensible

 private:
  VariableMap variables_;
};

// Instance flags.
namespace instance_flag {
inline constexpr uint32_t MARKED = 1;            // left the game; freed at the next deletion point
inline constexpr uint32_t DEACTIVATED = 2;
inline constexpr uint32_t CREATED = 4;           // Create has run
inline constexpr uint32_t BBOX_DIRTY = 8;
inline constexpr uint32_t VISIBLE = 16;
inline constexpr uint32_t SOLID = 32;
inline constexpr uint32_t PERSISTENT = 64;
inline constexpr uint32_t DESTROYED = 128;       // Destroy has run
inline constexpr uint32_t CARRIED_OVER = 0x100;  // from the previous room: Create must not run again
inline constexpr uint32_t ON_LAYER = 0x400;
inline constexpr uint32_t OUTSIDE = 0x2000;      // outside the room at the last test
inline constexpr uint32_t PLAIN_TRANSFORM = 0x4000;
inline constexpr uint32_t PENDING_DESTRUCTION = 0x100000;
// An instance with none of these takes part in iteration and events.
inline constexpr uint32_t INACTIVE = MARKED | DEACTIVATED | PENDING_DESTRUCTION;
}  // namespace instance_flag

// Ids of instances start here; smaller values name objects, negative ones keywords.
inline constexpr int32_t FIRST_INSTANCE_ID = 100000;
inline constexpr int32_t KEYWORD_SELF = -1, KEYWORD_OTHER = -2, KEYWORD_ALL = -3, KEYWORD_NOONE = -4,
                         KEYWORD_GLOBAL = -5, KEYWORD_SELF_AGAIN = -6, KEYWORD_NO_TARGET = -7;

class CInstance : public QvObjectBase {
 public:
  CInstance(float x, float y, int32_t id, int32_t object_index);
  ~CInstance() override = default;

  bool active() const { return (instance_flags & instance_flag::INACTIVE) == 0; }
  bool has(uint32_t flag) const { return (instance_flags & flag) != 0; }
  void set(uint32_t flag, bool on) { instance_flags = on ? (instance_flags | flag) : (instance_flags & ~flag); }

  // Motion: writing one side derives the other (see Variables.h).
  void set_direction(float d);
  void set_speed(float s);
  void set_hspeed(float h);
  void set_vspeed(float v);
  // Friction, then gravity, as the frame applies them before moving.
  void apply_friction_and_gravity();

  uint32_t instance_flags;
  int32_t id;
  int32_t object_index;
  int32_t sprite_index = -1;
  float image_index = 0, image_speed = 1;
  float image_xscale = 1, image_yscale = 1, image_angle = 0, image_alpha = 1;
  int32_t image_blend = 0xFFFFFF;
  float x, y, xstart, ystart, xprevious, yprevious;
  float direction = 0, speed = 0, friction = 0, gravity = 0, gravity_direction = 270, hspeed = 0, vspeed = 0;
  float bbox_left = 0, bbox_top = 0, bbox_right = 0, bbox_bottom = 0;
  int32_t alarm[12] = {-1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1};
  int32_t mask_index = -1;
  int32_t layer = -1;
  float depth = 0;
  // The walk counter's value when the instance was made: event walks that
  // started earlier pass over it.
  uint64_t creation_stamp = 0;
  // Whether the mouse was over it at the last test (Mouse Enter and Leave).
  bool mouse_inside = false;

 private:
  // Direction and speed from hspeed and vspeed, and back.
  void derive_speeds();
  void derive_direction();
};

// Reads the name of the running event's object etc. for messages: the
// instance's object name (or "<unknown>").
const char* instance_object_name(const CInstance* instance);
