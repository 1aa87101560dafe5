// The table of game objects: each has a name, a parent, a sprite and mask,
// flags, its event handlers keyed by (type, subtype), a factory that makes
// its instances, and the lists of its instances.
//
// Application objects are C++ classes derived from CInstance; an
// ObjectDefinition<T> registers one with its events as member functions.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "runtime/Object/Instance.h"

// Event types.
namespace ev {
inline constexpr int CREATE = 0, DESTROY = 1, ALARM = 2, STEP = 3, COLLISION = 4, KEYBOARD = 5, MOUSE = 6,
                     OTHER = 7, DRAW = 8, KEYPRESS = 9, KEYRELEASE = 10, CLEANUP = 12, PRECREATE = 14;
// Subtypes of Step.
inline constexpr int STEP_NORMAL = 0, STEP_BEGIN = 1, STEP_END = 2;
// Subtypes of Draw.
inline constexpr int DRAW_NORMAL = 0, DRAW_GUI = 64, DRAW_RESIZE = 65, DRAW_BEGIN = 72, DRAW_END = 73,
                     DRAW_GUI_BEGIN = 74, DRAW_GUI_END = 75, DRAW_PRE = 76, DRAW_POST = 77;
// Subtypes of Other.
inline constexpr int OTHER_OUTSIDE = 0, OTHER_BOUNDARY = 1, OTHER_GAME_START = 2, OTHER_GAME_END = 3,
                     OTHER_ROOM_START = 4, OTHER_ROOM_END = 5, OTHER_ANIMATION_END = 7, OTHER_END_OF_PATH = 8,
                     OTHER_CLOSE_BUTTON = 30, OTHER_DIALOG = 63, OTHER_SYSTEM_EVENT = 75;
}  // namespace ev

// The name of an event in messages ("Create Event", "Alarm Event for alarm 3", ...).
std::string event_name(int type, int subtype);

using EventHandler = std::function<void(CInstance& self, CInstance* other)>;
using InstanceFactory = std::function<std::unique_ptr<CInstance>(float x, float y, int32_t id, int32_t object)>;

namespace object_flag {
inline constexpr uint32_t SOLID = 1, VISIBLE = 2, PERSISTENT = 4, MANAGED = 128;
}

struct CObject {
  std::string name;
  int32_t parent = -1;
  int32_t sprite = -1;
  int32_t mask = -1;
  float depth = 0;
  uint32_t flags = object_flag::VISIBLE;
  std::unordered_map<uint32_t, EventHandler> events;  // by event_key(type, subtype)
  InstanceFactory factory;
  std::vector<CInstance*> instances;            // direct instances, in creation order
  std::vector<CInstance*> instances_recursive;  // with the instances of all descendants
};

inline constexpr uint32_t event_key(int type, int subtype) {
  return (static_cast<uint32_t>(type) << 16) | static_cast<uint32_t>(subtype & 0xFFFF);
}

// Adds an object; its instances are plain CInstances unless a factory is given.
int32_t object_add(const std::string& name, int32_t parent = -1, InstanceFactory factory = nullptr);
void object_set_event(int32_t object, int type, int subtype, EventHandler handler);
CObject* object_get(int32_t index);
int32_t object_count();
// The index of the object with this name, or -1.
int32_t object_find(const std::string& name);
// Whether `object` is `ancestor` or descends from it.
bool object_is_ancestor(int32_t object, int32_t ancestor);
// Copies parents' events to children and builds the per-event object lists;
// run once after every object is added (and again after adding more).
void objects_prepare();
// The objects that have a handler for (type, subtype), in ascending order.
const std::vector<int32_t>& objects_with_event(int type, int subtype);
// Whether any object handles an event of this type, whatever the subtype.
bool objects_have_event_type(int type);
// The handler of (type, subtype) of an object, or null.
const EventHandler* object_event(int32_t object, int type, int subtype);
// Forgets every object (tests and a restart of the game).
void objects_clear();

// Registers an application object whose instances are T, with its events
// as member functions `void T::event()` or `void T::event(CInstance* other)`.
template <class T>
class ObjectDefinition {
 public:
  explicit ObjectDefinition(const std::string& name, int32_t parent = -1)
      : index_(object_add(name, parent, [](float x, float y, int32_t id, int32_t object) {
          return std::unique_ptr<CInstance>(std::make_unique<T>(x, y, id, object));
        })) {}

  ObjectDefinition& on(int type, int subtype, void (T::*method)()) {
    object_set_event(index_, type, subtype, [method](CInstance& self, CInstance*) { (static_cast<T&>(self).*method)(); });
    return *this;
  }
  ObjectDefinition& on(int type, int subtype, void (T::*method)(CInstance* other)) {
    object_set_event(index_, type, subtype,
                     [method](CInstance& self, CInstance* other) { (static_cast<T&>(self).*method)(other); });
    return *this;
  }
  ObjectDefinition& flags(uint32_t f) {
    object_get(index_)->flags = f;
    return *this;
  }
  ObjectDefinition& sprite(int32_t s) {
    object_get(index_)->sprite = s;
    return *this;
  }
  ObjectDefinition& depth(float d) {
    object_get(index_)->depth = d;
    return *this;
  }
  int32_t index() const { return index_; }

 private:
  int32_t index_;
};
