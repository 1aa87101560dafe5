#include "runtime/Room/Events.h"

#include "runtime/Code/Error.h"
#include "runtime/Object/Objects.h"
#include "runtime/Room/Room.h"

namespace {

CurrentEvent g_current;
int g_depth = 0;

// Whether an event may run while a room change is pending: only Create,
// Destroy, Alarm, Other and PreCreate, and only on instances that survive
// the change.
bool allowed_during_room_change(const CInstance& self, int type) {
  if (type != ev::CREATE && type != ev::DESTROY && type != ev::ALARM && type != ev::OTHER && type != ev::PRECREATE) {
    return false;
  }
  const Room* room = current_room();
  return self.has(instance_flag::PERSISTENT) || (room && room->persistent);
}

}  // namespace

const CurrentEvent& current_event() { return g_current; }

void PerformEvent(CInstance* self, CInstance* other, int32_t object_index, int type, int subtype) {
  if (!self) {
    ReportError("Attempt to dispatch event on non-instance object");
    return;
  }
  if (!current_room()) return;
  // Cleanup always runs: it is how instances left behind by a room change go.
  if (type != ev::CLEANUP && room_change_pending() && !allowed_during_room_change(*self, type)) return;
  const EventHandler* handler = object_event(object_index, type, subtype);
  if (!handler) return;
  if (g_depth >= 32) {
    ReportError("PerformEvent recursion depth failure - check for infinite loops, check objects for parenting");
    return;
  }
  // The record of the running event, restored on every way out.
  struct Scope {
    CurrentEvent saved = g_current;
    ErrorSite saved_site = error_site();
    Scope() { ++g_depth; }
    ~Scope() {
      --g_depth;
      g_current = saved;
      set_error_site(saved_site);
    }
  } scope;
  g_current = {self, other, object_index, type, subtype};
  const CObject* object = object_get(object_index);
  set_error_site({ErrorSite::Where::Event, event_name(type, subtype), object ? object->name : "<unknown>", 0});
  (*handler)(*self, other);
}

void EventAll(int type, int subtype) {
  Room* room = current_room();
  if (!room || room_change_pending()) return;
  const uint64_t stamp = next_walk_stamp();
  // By index: the list may grow while the walk runs; newcomers are passed over.
  for (size_t i = 0; i < room->active.size(); ++i) {
    CInstance* instance = room->active[i];
    if (!instance->active() || instance->creation_stamp > stamp) continue;
    PerformEvent(instance, instance, instance->object_index, type, subtype);
  }
}

void event_dispatch(int type, int subtype) {
  const uint64_t stamp = next_walk_stamp();
  for (const int32_t object_index : objects_with_event(type, subtype)) {
    const CObject* object = object_get(object_index);
    for (size_t i = 0; i < object->instances.size(); ++i) {
      CInstance* instance = object->instances[i];
      if (!instance->active() || instance->creation_stamp > stamp) continue;
      PerformEvent(instance, instance, object_index, type, subtype);
    }
  }
}

void event_perform(int type, int subtype) {
  CInstance* self = g_current.self;
  if (!self) {
    ReportError("Attempt to dispatch event on non-instance object");
    return;
  }
  PerformEvent(self, g_current.other, self->object_index, type, subtype);
}
