// Running events: one event on one instance (PerformEvent), on every
// instance (EventAll), or on the instances of the objects that handle it
// (event_dispatch, the frame's way). The running event is recorded for
// `event_type`, `event_number`, `event_object` and error messages.
#pragma once

#include <cstdint>

#include "runtime/Object/Instance.h"

struct CurrentEvent {
  CInstance* self = nullptr;
  CInstance* other = nullptr;
  int32_t object = -1;
  int type = -1;
  int subtype = 0;
};
const CurrentEvent& current_event();

// Runs the handler of (type, subtype) of `object_index` on `self`; nothing
// without a handler. Fatal beyond 32 nested events.
void PerformEvent(CInstance* self, CInstance* other, int32_t object_index, int type, int subtype);
// The event on every active instance of the room, in list order; nothing
// while a room change is pending.
void EventAll(int type, int subtype);
// The event on every active instance of every object with a handler for it,
// object by object in ascending order; instances made during the walk are
// passed over.
void event_dispatch(int type, int subtype);
// `event_perform` of the program: the event on the current instance.
void event_perform(int type, int subtype);
