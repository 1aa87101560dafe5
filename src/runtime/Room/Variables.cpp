#include "runtime/Room/Variables.h"

#include <unordered_map>
#include <vector>

#include "runtime/Code/Array.h"
#include "runtime/Code/Conversions.h"
#include "runtime/Code/Error.h"
#include "runtime/Object/Objects.h"
#include "runtime/Room/With.h"
#include "runtime/Room/Room.h"

namespace {

struct VariableTable {
  bool filled = false;
  std::vector<BuiltinVariable> rows;
  std::vector<std::string> plain_names;  // by id - FIRST_PLAIN_VARIABLE_ID
  std::unordered_map<std::string, int32_t> ids;
};

// The table, with every built-in row in place before the first plain name
// takes an id: the rows must hold the lowest ids.
VariableTable& table() {
  static VariableTable t;
  if (!t.filled) {
    // Set first: adding the rows comes back here.
    t.filled = true;
    add_builtin_variable_rows();
  }
  return t;
}

CInstance* as_instance(QvObjectBase& object) {
  return object.object_kind == QvObjectBase::Instance ? static_cast<CInstance*>(&object) : nullptr;
}

// The row that serves `id` on `object`, or null when the id lives in the
// variable map. A struct has no instance fields: `x` of a struct is a plain
// variable of it.
const BuiltinVariable* row_for(QvObjectBase& object, int32_t id) {
  const BuiltinVariable* row = builtin_variable(id);
  if (row && row->per_instance && !as_instance(object)) return nullptr;
  return row;
}

// The slot of `id` along the prototype chain, or null; reading makes none.
const RValue* find_without_making(const QvObjectBase& object, int32_t id) {
  // A prototype chain longer than this is a loop.
  int guard = 0;
  for (const QvObjectBase* o = &object; o && guard < 1000; o = o->prototype, ++guard) {
    if (const RValue* slot = o->lookup_variable(id)) return slot;
  }
  return nullptr;
}

// What a bad index report names as the variable's owner: the instance id,
// global, or -1 for any other object.
int32_t owner_number(QvObjectBase& object) {
  if (const CInstance* instance = as_instance(object)) return instance->id;
  return &object == &global_object() ? KEYWORD_GLOBAL : -1;
}

CInstance* first_active(const std::vector<CInstance*>& list) {
  for (CInstance* i : list) {
    if (i->active()) return i;
  }
  return nullptr;
}

// The one object a read through `target` goes to; null after reporting
// that there is none.
QvObjectBase* read_owner(int32_t target, int32_t id, int32_t index) {
  QvObjectBase* owner = nullptr;
  if (target == KEYWORD_GLOBAL) return &global_object();
  if (target >= FIRST_INSTANCE_ID) {
    owner = instance_find(target);
  } else if (target >= 0) {
    const CObject* object = object_get(target);
    owner = object ? first_active(object->instances_recursive) : nullptr;
  } else if (target == KEYWORD_SELF || target == KEYWORD_SELF_AGAIN) {
    owner = current_self();
  } else if (target == KEYWORD_OTHER) {
    owner = current_other();
  } else if (target == KEYWORD_ALL) {
    owner = current_room() ? first_active(current_room()->active) : nullptr;
  }
  if (owner) return owner;
  if (target >= 0) {
    const CObject* object = target < FIRST_INSTANCE_ID ? object_get(target) : nullptr;
    ReportError("Unable to find any instance for object index '%d' name '%s'", target,
                object ? object->name.c_str() : "<undefined>");
  } else {
    // The target, then the variable and the array index.
    ReportError("Variable Get %d (%d, %d)", target, id, index);
  }
  return nullptr;
}

}  // namespace

int32_t builtin_variable_add(const char* name, VariableGetter get, VariableSetter set, bool per_instance) {
  VariableTable& t = table();
  if (static_cast<int32_t>(t.rows.size()) >= MAX_BUILTIN_VARIABLES) {
    ReportError("INTERNAL ERROR: Adding too many variables");
    return -1;
  }
  const auto id = static_cast<int32_t>(t.rows.size());
  t.rows.push_back({name, get, set, set != nullptr, per_instance});
  t.ids.insert_or_assign(name, id);
  return id;
}

const BuiltinVariable* builtin_variable(int32_t id) {
  const VariableTable& t = table();
  if (id < 0 || id >= static_cast<int32_t>(t.rows.size())) return nullptr;
  return &t.rows[static_cast<size_t>(id)];
}

int32_t builtin_variable_count() { return static_cast<int32_t>(table().rows.size()); }

int32_t variable_id(const std::string& name) {
  VariableTable& t = table();
  if (auto it = t.ids.find(name); it != t.ids.end()) return it->second;
  const auto id = FIRST_PLAIN_VARIABLE_ID + static_cast<int32_t>(t.plain_names.size());
  t.plain_names.push_back(name);
  t.ids.emplace(name, id);
  return id;
}

const std::string& variable_name(int32_t id) {
  static const std::string unknown = "<unknown variable>";
  const VariableTable& t = table();
  if (const BuiltinVariable* row = builtin_variable(id)) return row->name;
  const int64_t plain = static_cast<int64_t>(id) - FIRST_PLAIN_VARIABLE_ID;
  if (plain < 0 || plain >= static_cast<int64_t>(t.plain_names.size())) return unknown;
  return t.plain_names[static_cast<size_t>(plain)];
}

QvObjectBase& global_object() {
  static QvObjectBase global(QvObjectBase::Struct, "Object");
  return global;
}

void variable_get(QvObjectBase& object, int32_t id, int32_t index, RValue& out) {
  out.clear();
  if (const BuiltinVariable* row = row_for(object, id)) {
    row->get(row->per_instance ? as_instance(object) : nullptr, index, out);
    return;
  }
  const RValue* slot = find_without_making(object, id);
  if (index == NO_ARRAY_INDEX) {
    if (slot) out = *slot;
    return;
  }
  // A variable never set is no array: indexing it fails with its words.
  out = array_get_variable(slot ? *slot : RValue(), index);
}

void variable_set(QvObjectBase& object, int32_t id, int32_t index, const RValue& value) {
  if (const BuiltinVariable* row = row_for(object, id)) {
    if (!row->writable) {
      ReportError("unable to set built in variable %s\n", row->name.c_str());
      return;
    }
    row->set(row->per_instance ? as_instance(object) : nullptr, index, value);
    return;
  }
  RValue* slot = object.find_variable(id);
  if (index == NO_ARRAY_INDEX) {
    *slot = value;
    return;
  }
  // The value may be an element of this very array, which may move as it grows.
  const RValue kept = value;
  RValue* element = array_slot(*slot, index);
  if (element) {
    *element = kept;
  } else if (index < 0) {
    // The index, the array's length, then owner.variable and (variable, index).
    const int32_t length = slot->is(Kind::Array) && slot->arr ? slot->arr->length : 0;
    ReportError("Variable Index [%d] out of range [%d] - %d.%d(%d,%d)", index, length, owner_number(object), id, id,
                index);
  }
}

void variable_get_of(const RValue& target, int32_t id, int32_t index, RValue& out) {
  if (target.is(Kind::Object) && target.obj) {
    variable_get(*target.obj, id, index, out);
    return;
  }
  const int32_t number = value_to_int32(target);
  out.clear();
  if (number == KEYWORD_NOONE) {
    out.clear(Kind::Undefined);
    return;
  }
  if (QvObjectBase* owner = read_owner(number, id, index)) variable_get(*owner, id, index, out);
}

void variable_set_of(const RValue& target, int32_t id, int32_t index, const RValue& value, bool must_exist) {
  if (target.is(Kind::Object) && target.obj) {
    variable_set(*target.obj, id, index, value);
    return;
  }
  const int32_t number = value_to_int32(target);
  const RValue kept = value;
  if (number == KEYWORD_GLOBAL) {
    variable_set(global_object(), id, index, kept);
  } else if (number >= FIRST_INSTANCE_ID) {
    if (CInstance* instance = instance_find(number)) {
      variable_set(*instance, id, index, kept);
    } else if (must_exist) {
      ReportError("Unable to find any instance for object index '%d'", number);
    }
  } else {
    // self, other, all and object indexes: every instance that `with` would visit.
    for (CInstance* instance : with_snapshot(number, current_self(), current_other())) {
      variable_set(*instance, id, index, kept);
    }
  }
}
