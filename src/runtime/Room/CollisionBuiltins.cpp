// The collision built-ins: meeting at a place or a point, and the nearest
// and furthest instance. They only look: no event runs, and an instance
// moved to test a place is back where it was when the built-in returns.
#include <algorithm>
#include <cmath>
#include <vector>

#include "runtime/Code/Builtins.h"
#include "runtime/Code/Registration.h"
#include "runtime/Room/Collision.h"
#include "runtime/Room/With.h"
#include "runtime/Support/AssetIndex.h"

namespace {

// Calls `visit` on each active instance that `target` names, in creation
// order, until it returns true; whether one did.
template <class Visit>
bool any_target(int32_t target, Visit visit) {
  const std::vector<CInstance*> found = with_snapshot(target, current_self(), current_other());
  // The snapshot holds the newest first, as `with` visits them.
  return std::any_of(found.rbegin(), found.rend(), [&visit](CInstance* i) { return visit(*i); });
}

// Puts an instance at another place for as long as it lives, box included,
// and then back as it was.
class HypotheticalMove {
 public:
  HypotheticalMove(CInstance& instance, float x, float y)
      : instance_(instance),
        x_(instance.x),
        y_(instance.y),
        box_{instance.bbox_left, instance.bbox_top, instance.bbox_right, instance.bbox_bottom},
        dirty_(instance.has(instance_flag::BBOX_DIRTY)) {
    instance.x = x;
    instance.y = y;
    instance.set(instance_flag::BBOX_DIRTY, true);
  }
  ~HypotheticalMove() {
    instance_.x = x_;
    instance_.y = y_;
    instance_.bbox_left = box_.left;
    instance_.bbox_top = box_.top;
    instance_.bbox_right = box_.right;
    instance_.bbox_bottom = box_.bottom;
    instance_.set(instance_flag::BBOX_DIRTY, dirty_);
  }
  HypotheticalMove(const HypotheticalMove&) = delete;
  HypotheticalMove& operator=(const HypotheticalMove&) = delete;

 private:
  CInstance& instance_;
  float x_, y_;
  BBox box_;
  bool dirty_;
};

// The instance of `target` whose distance to (x, y) `better` prefers; the first of equals.
template <class Better>
CInstance* extreme_by_distance(double x, double y, int32_t target, Better better) {
  CInstance* found = nullptr;
  double found_distance = 0;
  any_target(target, [&](CInstance& i) {
    const double distance = std::hypot(i.x - x, i.y - y);
    if (!found || better(distance, found_distance)) {
      found = &i;
      found_distance = distance;
    }
    return false;
  });
  return found;
}

// The target argument: an instance or object ref gives its index, anything
// else is read as a whole number.
int32_t arg_target(const RValue* args, int i) {
  const RValue& v = args[i];
  if (v.is(Kind::Ref)) {
    const bool names_instances = v.ref_type() == REF_INSTANCE || v.ref_type() == static_cast<uint32_t>(AssetKind::Object);
    return names_instances ? v.ref_index() : KEYWORD_NOONE;
  }
  return arg_int32(args, i);
}

// The instance a built-in runs for: the caller's self, else the running code's.
CInstance* calling_instance(CInstance* self) { return self ? self : current_self(); }

// An instance's id as a ref, or noone.
RValue instance_result(const CInstance* i) {
  return i ? RValue::ref(REF_INSTANCE, i->id) : RValue::number(KEYWORD_NOONE);
}

BUILTIN_ADAPTER(place_meeting) {
  CInstance* me = calling_instance(self);
  result = RValue::boolean(me && place_meeting(*me, arg_float(args, 0), arg_float(args, 1), arg_target(args, 2)));
}

BUILTIN_ADAPTER(instance_place) {
  CInstance* me = calling_instance(self);
  result = instance_result(me ? instance_place(*me, arg_float(args, 0), arg_float(args, 1), arg_target(args, 2))
                              : nullptr);
}

BUILTIN_ADAPTER(instance_nearest) {
  result = instance_result(instance_nearest(arg_real(args, 0), arg_real(args, 1), arg_target(args, 2)));
}

BUILTIN_ADAPTER(instance_furthest) {
  result = instance_result(instance_furthest(arg_real(args, 0), arg_real(args, 1), arg_target(args, 2)));
}

BUILTIN_ADAPTER(position_meeting) {
  result = RValue::boolean(position_meeting(arg_float(args, 0), arg_float(args, 1), arg_target(args, 2)));
}

}  // namespace

bool place_meeting(CInstance& self, float x, float y, int32_t target) {
  return instance_place(self, x, y, target) != nullptr;
}

CInstance* instance_place(CInstance& self, float x, float y, int32_t target) {
  const HypotheticalMove move(self, x, y);
  CInstance* met = nullptr;
  any_target(target, [&](CInstance& other) {
    if (&other == &self || !instances_collide(self, other)) return false;
    met = &other;
    return true;
  });
  return met;
}

CInstance* instance_nearest(double x, double y, int32_t target) {
  return extreme_by_distance(x, y, target, [](double d, double best) { return d < best; });
}

CInstance* instance_furthest(double x, double y, int32_t target) {
  return extreme_by_distance(x, y, target, [](double d, double best) { return d > best; });
}

bool position_meeting(float x, float y, int32_t target) {
  return any_target(target, [x, y](CInstance& i) { return instance_contains_point(i, x, y); });
}

void register_collision_builtins() {
  builtin_register("place_meeting", builtin_place_meeting, 3);
  builtin_register("instance_place", builtin_instance_place, 3);
  builtin_register("instance_nearest", builtin_instance_nearest, 3);
  builtin_register("instance_furthest", builtin_instance_furthest, 3);
  builtin_register("position_meeting", builtin_position_meeting, 3);
}
