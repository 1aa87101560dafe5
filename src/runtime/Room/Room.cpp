#include "runtime/Room/Room.h"

#include <algorithm>
#include <string>
#include <unordered_map>

#include "runtime/Code/Error.h"
#include "runtime/Object/Objects.h"
#include "runtime/Room/Events.h"

namespace {

struct World {
  std::vector<RoomDescription> descriptions;
  std::unique_ptr<Room> room;
  int32_t target = ROOM_NONE;
  int32_t exit_status = 0;
  int32_t next_id = FIRST_INSTANCE_ID;
  uint64_t walk_counter = 0;
  size_t marked = 0;  // instances marked since the last deletion pass
  std::unordered_map<int32_t, std::unique_ptr<CInstance>> by_id;
  // What a persistent room held when it was left: its own instances, in
  // order, and its colour, all as they stood, until it is entered again.
  struct KeptRoom {
    std::vector<std::unique_ptr<CInstance>> instances;
    uint32_t background_colour = 0;
    bool show_background = true;
  };
  std::unordered_map<int32_t, KeptRoom> kept;
};

World& world() {
  static World w;
  return w;
}

// Takes an instance into the object lists of its object and its ancestors.
void join_object_lists(CInstance* instance) {
  CObject* own = object_get(instance->object_index);
  if (!own) return;
  own->instances.push_back(instance);
  for (int32_t o = instance->object_index, steps = 0; o >= 0 && steps <= object_count(); ++steps) {
    CObject* object = object_get(o);
    if (!object) break;
    object->instances_recursive.push_back(instance);
    o = object->parent;
  }
}

// Every instance for which `gone` holds leaves the object lists, in one pass over each list.
template <class Gone>
void leave_object_lists(Gone gone) {
  for (int32_t o = 0; o < object_count(); ++o) {
    CObject* object = object_get(o);
    std::erase_if(object->instances, gone);
    std::erase_if(object->instances_recursive, gone);
  }
}

}  // namespace

int32_t room_add(RoomDescription description) {
  world().descriptions.push_back(std::move(description));
  return static_cast<int32_t>(world().descriptions.size() - 1);
}

RoomDescription* room_description(int32_t index) {
  auto& d = world().descriptions;
  if (index < 0 || index >= static_cast<int32_t>(d.size())) return nullptr;
  return &d[static_cast<size_t>(index)];
}

int32_t room_count() { return static_cast<int32_t>(world().descriptions.size()); }

Room* current_room() { return world().room.get(); }
int32_t current_room_index() { return world().room ? world().room->index : -1; }

int32_t room_target() { return world().target; }
void set_room_target(int32_t target) { world().target = target; }
bool room_change_pending() { return world().target != ROOM_NONE; }

void room_goto(int32_t r) {
  World& w = world();
  if (w.target == ROOM_LEAVE || w.target == ROOM_END_GAME) {
    debug_output("Unable to change room when exiting the game\n");
    return;
  }
  if (!room_description(r)) {
    w.target = ROOM_LEAVE;
    ReportError("Unexisting room number: %d", r);
    return;
  }
  w.target = r;
}

void room_restart() { room_goto(current_room_index()); }

void game_end(int32_t status) {
  world().exit_status = status;
  debug_output("###game_end###" + std::to_string(status) + "\n");
  world().target = ROOM_END_GAME;
}

int32_t game_exit_status() { return world().exit_status; }
void set_game_exit_status(int32_t status) { world().exit_status = status; }

uint64_t next_walk_stamp() { return ++world().walk_counter; }

CInstance* instance_create(float x, float y, int32_t object_index, float depth,
                           const std::function<void(CInstance&)>& before_create) {
  World& w = world();
  CObject* object = object_get(object_index);
  if (!object) {
    ReportError("Creating instance for non-existing object: %d", object_index);
    return nullptr;
  }
  if (!w.room) return nullptr;
  std::unique_ptr<CInstance> made = object->factory(x, y, w.next_id++, object_index);
  CInstance* instance = made.get();
  instance->depth = depth;
  // Later than every walk that has started: those walks pass over it.
  instance->creation_stamp = ++w.walk_counter;
  w.by_id[instance->id] = std::move(made);
  w.room->active.push_back(instance);
  join_object_lists(instance);
  PerformEvent(instance, instance, object_index, ev::PRECREATE, 0);
  if (before_create) before_create(*instance);
  PerformEvent(instance, instance, object_index, ev::CREATE, 0);
  instance->set(instance_flag::CREATED, true);
  return instance;
}

void instances_destroy(int32_t object) {
  const CObject* o = object_get(object);
  if (!o) return;
  // The list shrinks as they go: a copy is walked.
  for (CInstance* i : std::vector<CInstance*>(o->instances)) instance_destroy(*i);
}

void instance_destroy(CInstance& instance, bool run_destroy) {
  if (instance.has(instance_flag::MARKED) || instance.has(instance_flag::DEACTIVATED)) return;
  if (run_destroy && !instance.has(instance_flag::DESTROYED)) {
    instance.set(instance_flag::DESTROYED, true);
    PerformEvent(&instance, &instance, instance.object_index, ev::DESTROY, 0);
  }
  PerformEvent(&instance, &instance, instance.object_index, ev::CLEANUP, 0);
  instance.set(instance_flag::MARKED, true);
  ++world().marked;
}

CInstance* instance_find(int32_t id) {
  auto& by_id = world().by_id;
  auto it = by_id.find(id);
  if (it == by_id.end() || !it->second->active()) return nullptr;
  return it->second.get();
}

CInstance* first_active_instance(int32_t object) {
  const CObject* o = object_get(object);
  if (!o) return nullptr;
  for (CInstance* instance : o->instances) {
    if (instance->active()) return instance;
  }
  return nullptr;
}

void deletion_pass() {
  World& w = world();
  if (w.marked == 0 || !w.room) return;
  w.marked = 0;
  const auto gone = [](const CInstance* i) { return i->has(instance_flag::MARKED); };
  std::vector<CInstance*> leaving;
  for (CInstance* i : w.room->active) {
    if (gone(i)) leaving.push_back(i);
  }
  for (CInstance* i : w.room->deactivated) {
    if (gone(i)) leaving.push_back(i);
  }
  std::erase_if(w.room->active, gone);
  std::erase_if(w.room->deactivated, gone);
  leave_object_lists(gone);
  for (CInstance* i : leaving) w.by_id.erase(i->id);
}

namespace {

// The instances of the persistent room being left, but the persistent ones
// that go on: out of the room, the id table and the object lists, kept.
void keep_room(World& w) {
  World::KeptRoom& kept = w.kept[w.room->index];
  kept.background_colour = w.room->background_colour;
  kept.show_background = w.room->show_background;
  const auto stays = [](const CInstance* i) {
    return !i->has(instance_flag::PERSISTENT) && !i->has(instance_flag::MARKED);
  };
  for (CInstance* i : w.room->active) {
    if (!stays(i)) continue;
    auto owned = w.by_id.find(i->id);
    kept.instances.push_back(std::move(owned->second));
    w.by_id.erase(owned);
  }
  std::erase_if(w.room->active, stays);
  leave_object_lists([&kept](const CInstance* i) {
    return std::any_of(kept.instances.begin(), kept.instances.end(), [i](const auto& k) { return k.get() == i; });
  });
}

// Brings back what the room just entered kept; false when it kept nothing.
bool restore_room(World& w) {
  auto found = w.kept.find(w.room->index);
  if (found == w.kept.end()) return false;
  w.room->background_colour = found->second.background_colour;
  w.room->show_background = found->second.show_background;
  for (std::unique_ptr<CInstance>& owned : found->second.instances) {
    CInstance* i = owned.get();
    w.room->active.push_back(i);
    join_object_lists(i);
    w.by_id[i->id] = std::move(owned);
  }
  w.kept.erase(found);
  return true;
}

}  // namespace

void room_change(bool game_start) {
  World& w = world();
  const int32_t target = w.target;
  if (!room_description(target)) return;  // room_goto refuses such targets; a direct setter could not
  if (w.room) {
    // Room End runs with the target cleared, so that its events aren't dropped.
    deletion_pass();
    w.target = ROOM_NONE;
    EventAll(ev::OTHER, ev::OTHER_ROOM_END);
    deletion_pass();
    w.target = target;
  }
  // Persistent instances go on; a persistent room keeps the others; else they go with only their Cleanup.
  std::vector<CInstance*> carried;
  if (w.room) {
    for (CInstance* i : w.room->active) {
      if (i->has(instance_flag::PERSISTENT) && i->active()) {
        carried.push_back(i);
      } else if (w.room->persistent && i->active()) {
        continue;
      } else if (!i->has(instance_flag::MARKED)) {
        PerformEvent(i, i, i->object_index, ev::CLEANUP, 0);
        i->set(instance_flag::MARKED, true);
        ++w.marked;
      }
    }
    deletion_pass();
    if (w.room->persistent) keep_room(w);
  }
  const RoomDescription* description = room_description(target);
  auto room = std::make_unique<Room>();
  room->index = target;
  room->width = description->width;
  room->height = description->height;
  room->persistent = description->persistent;
  // Carried instances go to the head one by one, which reverses them.
  for (CInstance* i : carried) {
    i->set(instance_flag::CARRIED_OVER, true);
    room->active.insert(room->active.begin(), i);
  }
  w.room = std::move(room);
  w.target = ROOM_NONE;
  // A kept room comes back as it was left: no placement and no creation code run again.
  const bool returning = restore_room(w);
  for (size_t k = 0; !returning && k < description->placements.size(); ++k) {
    const InstancePlacement& placement = description->placements[k];
    const CObject* object = object_get(placement.object);
    CInstance* instance = instance_create(placement.x, placement.y, placement.object, object ? object->depth : 0);
    if (instance && placement.creation_code) placement.creation_code(*instance);
  }
  for (CInstance* i : carried) i->set(instance_flag::CARRIED_OVER, false);
  deletion_pass();
  if (game_start) {
    EventAll(ev::OTHER, ev::OTHER_GAME_START);
    deletion_pass();
  }
  if (description->creation_code && !returning) {
    set_error_site({ErrorSite::Where::RoomCreation, "", description->name, 0});
    description->creation_code();
  }
  EventAll(ev::OTHER, ev::OTHER_ROOM_START);
  deletion_pass();
}

void game_finish() {
  World& w = world();
  if (w.room) {
    const int32_t target = w.target;
    w.target = ROOM_NONE;
    EventAll(ev::OTHER, ev::OTHER_ROOM_END);
    EventAll(ev::OTHER, ev::OTHER_GAME_END);
    w.target = target;
    for (CInstance* i : w.room->active) {
      if (!i->has(instance_flag::MARKED)) {
        i->set(instance_flag::MARKED, true);
        ++w.marked;
      }
    }
    deletion_pass();
  }
  w.room.reset();
  w.by_id.clear();
  w.kept.clear();
}

void rooms_clear() {
  World& w = world();
  w.room.reset();
  w.kept.clear();
  for (int32_t o = 0; o < object_count(); ++o) {
    object_get(o)->instances.clear();
    object_get(o)->instances_recursive.clear();
  }
  w.by_id.clear();
  w.descriptions.clear();
  w.target = ROOM_NONE;
  w.next_id = FIRST_INSTANCE_ID;
  w.marked = 0;
}
