#include "runtime/Room/With.h"

#include <algorithm>

#include "runtime/Code/Conversions.h"
#include "runtime/Code/Error.h"
#include "runtime/Object/Objects.h"
#include "runtime/Room/Room.h"

namespace {

WithScope* g_top = nullptr;

bool same_event(const CurrentEvent& a, const CurrentEvent& b) {
  return a.self == b.self && a.other == b.other && a.object == b.object && a.type == b.type &&
         a.subtype == b.subtype;
}

// The active instances of a list, most recent last.
void take_active(const std::vector<CInstance*>& list, std::vector<CInstance*>& out) {
  for (CInstance* i : list) {
    if (i->active()) out.push_back(i);
  }
}

}  // namespace

WithScope::WithScope(CInstance* self, CInstance* other)
    : self_(self), other_(other), event_(current_event()), previous_(g_top) {
  g_top = this;
}

WithScope::~WithScope() { g_top = previous_; }

bool WithScope::in_force() const { return same_event(event_, current_event()); }

CInstance* current_self() { return g_top && g_top->in_force() ? g_top->self_ : current_event().self; }

CInstance* current_other() { return g_top && g_top->in_force() ? g_top->other_ : current_event().other; }

std::vector<CInstance*> with_snapshot(int32_t target, CInstance* self, CInstance* other) {
  std::vector<CInstance*> found;
  if (target == KEYWORD_SELF || target == KEYWORD_SELF_AGAIN) {
    if (self) found.push_back(self);
  } else if (target == KEYWORD_OTHER) {
    if (other) found.push_back(other);
  } else if (target == KEYWORD_ALL) {
    if (const Room* room = current_room()) take_active(room->active, found);
  } else if (target >= FIRST_INSTANCE_ID) {
    if (CInstance* i = instance_find(target)) found.push_back(i);
  } else if (target >= 0) {
    if (const CObject* object = object_get(target)) take_active(object->instances_recursive, found);
  }
  // noone, global, no target and every other negative value: no pass.
  // The lists hold the oldest first; the loop visits the newest first.
  std::reverse(found.begin(), found.end());
  return found;
}

std::vector<CInstance*> with_snapshot(const RValue& target, CInstance* self, CInstance* other) {
  switch (target.kind()) {
    case Kind::Undefined:
      return {};
    case Kind::Object: {
      // An instance held as a value is visited as it stands; a struct holds
      // no instance to run the body on.
      if (target.obj && target.obj->object_kind == QvObjectBase::Instance) {
        return {static_cast<CInstance*>(target.obj)};
      }
      return {};
    }
    case Kind::Number:
    case Kind::String:
    case Kind::Int32:
    case Kind::Int64:
    case Kind::Bool:
    case Kind::Ref:
      return with_snapshot(value_to_int32(target), self, other);
    default:
      ReportError("invalid with reference");
      return {};
  }
}

WithIteration::WithIteration(const RValue& target)
    : outer_self_(current_self()), snapshot_(with_snapshot(target, outer_self_, current_other())) {}

bool WithIteration::next() {
  if (position_ >= snapshot_.size()) return false;
  CInstance* instance = snapshot_[position_++];
  if (scope_) {
    scope_->retarget(instance);
  } else {
    scope_.emplace(instance, outer_self_);
  }
  return true;
}

void with_instances(const RValue& target, const std::function<void(CInstance& self, CInstance* other)>& body) {
  for (WithIteration loop(target); loop.next();) body(*loop.self(), loop.other());
}
