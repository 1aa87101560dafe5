// Variables by id: the ids of names, the table of built-in variables, the
// global object, and reading and writing a variable of an object, or of the
// instances that a value names (self, other, all, global, an object, an id).
//
// Every name has one fixed id for the whole run. The rows of the built-in
// table take the ids below 10000 in the order they were added; any other
// name gets the next id from 10000 up the first time it is asked for. A
// built-in row is read and written through its getter and setter, by direct
// index, so `x` costs no hash lookup; every other id lives in the object's
// variable map.
//
// The rows themselves (x, y, speed, room, fps, ...) are in BuiltinVariables.cpp.
#pragma once

#include <cstdint>
#include <string>

#include "runtime/Object/Instance.h"

// Array index that means "no index": the variable itself, not an element.
inline constexpr int32_t NO_ARRAY_INDEX = INT32_MIN;
// Ids from here on are names that no built-in row holds.
inline constexpr int32_t FIRST_PLAIN_VARIABLE_ID = 10000;
// The built-in table holds at most this many rows.
inline constexpr int32_t MAX_BUILTIN_VARIABLES = 500;
// Reference type codes of game objects and rooms.
inline constexpr uint32_t REF_OBJECT = 0x1000000;
inline constexpr uint32_t REF_ROOM = 0x1000003;

// The getter and setter of a built-in row. `self` is the instance for an
// instance row and null for a global row; `index` is the array index or
// NO_ARRAY_INDEX.
using VariableGetter = void (*)(CInstance* self, int32_t index, RValue& out);
using VariableSetter = void (*)(CInstance* self, int32_t index, const RValue& value);

struct BuiltinVariable {
  std::string name;
  VariableGetter get;
  VariableSetter set;  // null for a read-only row
  bool writable;
  bool per_instance;  // a field of CInstance; objects that aren't instances keep it as a plain variable
};

// Adds a row and returns its id; fatal beyond MAX_BUILTIN_VARIABLES rows.
int32_t builtin_variable_add(const char* name, VariableGetter get, VariableSetter set, bool per_instance);
// The row of `id`, or null when `id` isn't a built-in row.
const BuiltinVariable* builtin_variable(int32_t id);
// The number of built-in rows.
int32_t builtin_variable_count();
// Adds every row of the runtime's built-in variables (called once, before
// the first id is handed out).
void add_builtin_variable_rows();

// The fixed id of a name: its row for a built-in variable, else an id of
// 10000 and up, the same one every time.
int32_t variable_id(const std::string& name);
// The name of an id, for messages; "<unknown variable>" for an id never handed out.
const std::string& variable_name(int32_t id);

// The object that holds the global variables, one for the whole run.
QvObjectBase& global_object();

// Reads variable `id` of `object` (element `index` unless NO_ARRAY_INDEX)
// into `out`, which is unset first: a built-in row through its getter, any
// other from the variable map. A variable never set reads unset.
void variable_get(QvObjectBase& object, int32_t id, int32_t index, RValue& out);
// Writes variable `id` of `object`, or its element `index`: a built-in row
// through its setter (fatal for a read-only one), any other into the map.
void variable_set(QvObjectBase& object, int32_t id, int32_t index, const RValue& value);

// Reads a variable through a value that names its owner: an object value
// directly; -1 self, -2 other, -5 global, -3 the first active instance of
// the room, -4 noone (undefined); 0..99999 the first active instance of
// that object or its descendants; an instance id. Fatal when nothing is found.
void variable_get_of(const RValue& target, int32_t id, int32_t index, RValue& out);
// Writes a variable through a value: -3 and an object index write to every
// active instance they name; an id that names no active instance is passed
// over, or is fatal when `must_exist`.
void variable_set_of(const RValue& target, int32_t id, int32_t index, const RValue& value,
                     bool must_exist = false);
