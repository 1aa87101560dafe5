#include "runtime/Object/Objects.h"

#include <map>

#include "runtime/Code/Error.h"

namespace {

struct ObjectTable {
  std::vector<CObject> objects;
  // Per-event object lists: the objects with a handler, in ascending order.
  std::unordered_map<uint32_t, std::vector<int32_t>> with_event;
};

ObjectTable& table() {
  static ObjectTable t;
  return t;
}

const char* key_name(int key) {
  switch (key) {
    case 0: return "<no key>";
    case 1: return "<any key>";
    case 13: return "<Enter>";
    case 27: return "<Escape>";
    case 32: return "<Space>";
    case 37: return "<Left>";
    case 38: return "<Up>";
    case 39: return "<Right>";
    case 40: return "<Down>";
    default: return nullptr;
  }
}

std::string key_text(int key) {
  if (const char* name = key_name(key)) return name;
  if ((key >= '0' && key <= '9') || (key >= 'A' && key <= 'Z')) return std::string(1, static_cast<char>(key));
  if (key >= 112 && key <= 123) return std::string("F").append(std::to_string(key - 111));
  return std::to_string(key);
}

const char* mouse_name(int subtype) {
  static const std::map<int, const char*> names = {
      {0, "Left Button"},        {1, "Right Button"},       {2, "Middle Button"},       {3, "No Button"},
      {4, "Left Pressed"},       {5, "Right Pressed"},      {6, "Middle Pressed"},      {7, "Left Released"},
      {8, "Right Released"},     {9, "Middle Released"},    {10, "Mouse Enter"},        {11, "Mouse Leave"},
      {50, "Glob Left Button"},  {51, "Glob Right Button"}, {52, "Glob Middle Button"}, {53, "Glob Left Pressed"},
      {54, "Glob Right Pressed"}, {55, "Glob Middle Pressed"}, {56, "Glob Left Released"},
      {57, "Glob Right Released"}, {58, "Glob Middle Released"}, {60, "Mouse Wheel Up"}, {61, "Mouse Wheel Down"}};
  auto it = names.find(subtype);
  return it == names.end() ? "Unknown" : it->second;
}

std::string other_name(int subtype) {
  static const std::map<int, const char*> names = {
      {0, "Outside Room"},   {1, "Intersect Boundary"}, {2, "Game Start"},     {3, "Game End"},
      {4, "Room Start"},     {5, "Room End"},           {6, "No More Lives"},  {7, "Animation End"},
      {8, "End Of Path"},    {9, "No More Health"},     {30, "Close Button"},  {58, "Animation Update"},
      {60, "Image Loaded"},  {61, "Sound Loaded"},      {62, "HTTP"},          {63, "Dialog"},
      {66, "IAP"},           {67, "Cloud"},             {68, "Networking"},    {69, "Steam"},
      {70, "Social"},        {71, "Push"},              {72, "Save-Load"},     {73, "Audio Recording"},
      {74, "Audio Playback"}, {75, "System Event"},     {80, "Audio Playback Ended"}};
  if (subtype >= 10 && subtype <= 25) return "User Defined " + std::to_string(subtype - 10);
  if (subtype >= 40 && subtype <= 47) return "Outside View " + std::to_string(subtype - 40);
  if (subtype >= 50 && subtype <= 57) return "Boundary View " + std::to_string(subtype - 50);
  auto it = names.find(subtype);
  const std::string name = it == names.end() ? "Unknown" : it->second;
  return subtype >= 60 ? "Async Event: " + name : "Other Event: " + name;
}

}  // namespace

std::string event_name(int type, int subtype) {
  switch (type) {
    case ev::CREATE: return "Create Event";
    case ev::DESTROY: return "Destroy Event";
    case ev::ALARM: return "Alarm Event for alarm " + std::to_string(subtype);
    case ev::STEP:
      return subtype == ev::STEP_BEGIN ? "Begin Step Event" : subtype == ev::STEP_END ? "End Step Event" : "Step Event";
    case ev::COLLISION: {
      const CObject* other = object_get(subtype);
      return "Collision Event with " + (other ? other->name : std::to_string(subtype));
    }
    case ev::KEYBOARD: return "Keyboard Event for " + key_text(subtype) + " Key";
    case ev::MOUSE: return std::string("Mouse Event for ") + mouse_name(subtype);
    case ev::OTHER: return other_name(subtype);
    case ev::DRAW: return "Draw Event";
    case ev::KEYPRESS: return "Key Press Event for " + key_text(subtype) + " Key";
    case ev::KEYRELEASE: return "Key Release Event for " + key_text(subtype) + " Key";
    case ev::CLEANUP: return "Clean Up Event";
    case ev::PRECREATE: return "PreCreate Event";
  }
  return "Unknown Event";
}

int32_t object_add(const std::string& name, int32_t parent, InstanceFactory factory) {
  CObject object;
  object.name = name;
  object.parent = parent;
  object.factory = factory ? std::move(factory) : [](float x, float y, int32_t id, int32_t index) {
    return std::make_unique<CInstance>(x, y, id, index);
  };
  table().objects.push_back(std::move(object));
  return static_cast<int32_t>(table().objects.size() - 1);
}

void object_set_event(int32_t object, int type, int subtype, EventHandler handler) {
  if (CObject* o = object_get(object)) o->events[event_key(type, subtype)] = std::move(handler);
}

CObject* object_get(int32_t index) {
  auto& objects = table().objects;
  if (index < 0 || index >= static_cast<int32_t>(objects.size())) return nullptr;
  return &objects[static_cast<size_t>(index)];
}

int32_t object_count() { return static_cast<int32_t>(table().objects.size()); }

int32_t object_find(const std::string& name) {
  const auto& objects = table().objects;
  for (size_t i = 0; i < objects.size(); ++i) {
    if (objects[i].name == name) return static_cast<int32_t>(i);
  }
  return -1;
}

bool object_is_ancestor(int32_t object, int32_t ancestor) {
  // A parent chain of more objects than there are is a loop: stop there.
  for (int32_t steps = 0; object >= 0 && steps <= object_count(); ++steps) {
    if (object == ancestor) return true;
    const CObject* o = object_get(object);
    object = o ? o->parent : -1;
  }
  return false;
}

void objects_prepare() {
  ObjectTable& t = table();
  // Children take every event of their ancestors that they don't handle
  // themselves, so that one lookup by (type, subtype) suffices.
  for (size_t i = 0; i < t.objects.size(); ++i) {
    CObject& child = t.objects[i];
    int32_t parent = child.parent;
    for (int32_t steps = 0; parent >= 0 && steps < object_count(); ++steps) {
      const CObject& p = t.objects[static_cast<size_t>(parent)];
      for (const auto& [key, handler] : p.events) child.events.try_emplace(key, handler);
      parent = p.parent;
    }
  }
  t.with_event.clear();
  for (size_t i = 0; i < t.objects.size(); ++i) {
    for (const auto& entry : t.objects[i].events) t.with_event[entry.first].push_back(static_cast<int32_t>(i));
  }
}

const std::vector<int32_t>& objects_with_event(int type, int subtype) {
  static const std::vector<int32_t> none;
  const auto& lists = table().with_event;
  auto it = lists.find(event_key(type, subtype));
  return it == lists.end() ? none : it->second;
}

bool objects_have_event_type(int type) {
  for (const auto& entry : table().with_event) {
    if (static_cast<int>(entry.first >> 16) == type) return true;
  }
  return false;
}

const EventHandler* object_event(int32_t object, int type, int subtype) {
  const CObject* o = object_get(object);
  if (!o) return nullptr;
  auto it = o->events.find(event_key(type, subtype));
  return it == o->events.end() ? nullptr : &it->second;
}

void objects_clear() { table() = ObjectTable(); }
