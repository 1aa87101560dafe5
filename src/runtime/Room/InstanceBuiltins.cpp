// The instance built-ins by name: making and destroying instances, asking
// whether they exist and how many there are, running an event, changing
// room, ending the game, and variables of instances and globals by name.
#include <algorithm>
#include <string>

#include "runtime/Code/Builtins.h"
#include "runtime/Code/Error.h"
#include "runtime/Code/Registration.h"
#include "runtime/Object/Objects.h"
#include "runtime/Room/Variables.h"
#include "runtime/Room/With.h"
#include "runtime/Room/Room.h"
#include "runtime/Room/Events.h"

namespace {

// Rooms have one layer for now, at depth 0: every layer argument, an id or
// a name, stands for it, so no layer can be missing.
constexpr float ROOM_LAYER_DEPTH = 0;

RValue instance_ref(const CInstance* instance) {
  return RValue::ref(REF_INSTANCE, instance ? instance->id : KEYWORD_NOONE);
}

bool is_active(const CInstance* instance) { return instance->active(); }

// The id of a variable named by argument `i`.
int32_t variable_argument(const RValue* args, int i) { return variable_id(std::string(arg_text(args, i))); }

// A variable that was never set reads undefined here, not unset.
void unset_to_undefined(RValue& result) {
  if (result.is(Kind::Unset)) result.clear(Kind::Undefined);
}

BUILTIN_ADAPTER(instance_create_layer) {
  const float x = arg_float(args, 0);
  const float y = arg_float(args, 1);
  // A name is any text; an id must at least be a number.
  if (!args[2].is(Kind::String)) static_cast<void>(arg_int32(args, 2));
  const int32_t object = arg_int32(args, 3);
  const QvObjectBase* variables = nullptr;
  if (argc > 4) {
    if (!args[4].is(Kind::Object) || !args[4].obj) {
      ReportError("argument 5 needs to be a struct");
      return;
    }
    variables = args[4].obj;
  }
  // The struct's variables arrive between PreCreate and Create.
  CInstance* made = instance_create(x, y, object, ROOM_LAYER_DEPTH, [variables](CInstance& instance) {
    if (!variables) return;
    variables->variables().for_each(
        [&instance](int32_t id, const RValue& value) { variable_set(instance, id, NO_ARRAY_INDEX, value); });
  });
  result = instance_ref(made);
}

BUILTIN_ADAPTER(instance_create_depth) {
  result = instance_ref(instance_create(arg_float(args, 0), arg_float(args, 1), arg_int32(args, 3), arg_float(args, 2)));
}

// Without a target the instance destroys itself; the target is resolved as
// `with` would, and each instance still in the game goes.
BUILTIN_ADAPTER(instance_destroy) {
  const bool run_destroy = argc > 1 ? arg_bool(args, 1) : true;
  if (argc == 0) {
    if (!self) {
      ReportError("not an instance");
      return;
    }
    instance_destroy(*self, run_destroy);
    return;
  }
  if (args[0].is(Kind::Object) && (!args[0].obj || args[0].obj->object_kind != QvObjectBase::Instance)) {
    ReportError("not an instance");
    return;
  }
  for (CInstance* instance : with_snapshot(args[0], self, other)) instance_destroy(*instance, run_destroy);
}

// Whether argument 0 names an active instance: a ref of another type than
// instance or object, undefined and an array name none, untested.
bool names_active_instance(const RValue* args, CInstance* self, CInstance* other) {
  const RValue& target = args[0];
  if (target.is(Kind::Ref) && target.ref_type() != REF_INSTANCE && target.ref_type() != REF_OBJECT) return false;
  if (target.is(Kind::Undefined) || target.is(Kind::Array)) return false;
  if (target.is(Kind::Object)) {
    return target.obj && target.obj->object_kind == QvObjectBase::Instance &&
           static_cast<const CInstance*>(target.obj)->active();
  }
  const auto found = with_snapshot(arg_int32(args, 0), self, other);
  return std::any_of(found.begin(), found.end(), is_active);
}

BUILTIN_ADAPTER(instance_exists) { result = RValue::number(names_active_instance(args, self, other) ? 1 : 0); }

BUILTIN_ADAPTER(instance_number) {
  const auto found = with_snapshot(arg_int32(args, 0), self, other);
  result = RValue::number(static_cast<double>(std::count_if(found.begin(), found.end(), is_active)));
}

// The event of the instance's own object, with the caller's `other`.
BUILTIN_ADAPTER(event_perform) {
  PerformEvent(self, other, self ? self->object_index : -1, arg_int32(args, 0), arg_int32(args, 1));
}

BUILTIN_ADAPTER(room_goto) {
  const int32_t room = arg_ref(args, 0, REF_ROOM, room_count());
  if (room >= 0) room_goto(room);
}

BUILTIN_ADAPTER(room_restart) { room_restart(); }

BUILTIN_ADAPTER(game_end) { game_end(argc > 0 ? arg_int32(args, 0) : 0); }

BUILTIN_ADAPTER(object_get_name) {
  const CObject* object = object_get(arg_int32(args, 0));
  result = RValue::text(object ? object->name : "<undefined>");
}

BUILTIN_ADAPTER(variable_instance_get) {
  variable_get_of(args[0], variable_argument(args, 1), NO_ARRAY_INDEX, result);
  unset_to_undefined(result);
}

BUILTIN_ADAPTER(variable_instance_set) {
  variable_set_of(args[0], variable_argument(args, 1), NO_ARRAY_INDEX, args[2]);
}

BUILTIN_ADAPTER(variable_global_get) {
  variable_get(global_object(), variable_argument(args, 0), NO_ARRAY_INDEX, result);
  unset_to_undefined(result);
}

BUILTIN_ADAPTER(variable_global_set) {
  variable_set(global_object(), variable_argument(args, 0), NO_ARRAY_INDEX, args[1]);
}

}  // namespace

void register_instance_builtins() {
  builtin_register("instance_create_layer", builtin_instance_create_layer, -1);
  builtin_register("instance_create_depth", builtin_instance_create_depth, 4);
  builtin_register("instance_destroy", builtin_instance_destroy, -1);
  builtin_register("instance_exists", builtin_instance_exists, 1);
  builtin_register("instance_number", builtin_instance_number, 1);
  builtin_register("event_perform", builtin_event_perform, 2);
  builtin_register("room_goto", builtin_room_goto, 1);
  builtin_register("room_restart", builtin_room_restart, 0);
  builtin_register("game_end", builtin_game_end, -1);
  builtin_register("object_get_name", builtin_object_get_name, 1);
  builtin_register("variable_instance_get", builtin_variable_instance_get, 2);
  builtin_register("variable_instance_set", builtin_variable_instance_set, 3);
  builtin_register("variable_global_get", builtin_variable_global_get, 1);
  builtin_register("variable_global_set", builtin_variable_global_set, 2);
}
