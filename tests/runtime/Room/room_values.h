// Shared by the room tests: the values that name instances and objects, as
// programs hand them to the runtime.
#pragma once

#include <cstdint>

#include "runtime/Code/RValue.h"
#include "runtime/Object/Objects.h"

inline RValue number(double d) { return RValue::number(d); }

// An object as a value, as a struct or an instance is held in a variable.
inline RValue object_value(QvObjectBase& object) {
  RValue v = RValue::undefined();
  v.obj = &object;
  v.kind_word = static_cast<uint32_t>(Kind::Object);
  return v;
}
