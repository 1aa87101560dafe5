// The machine-level call of a routine in an external library, whose
// argument list is known only at run time.
//
// Up to 4 arguments may mix doubles and pointers; 5 to 16 are all doubles.
// The calling convention puts doubles and pointers in different registers,
// so every such signature is its own function type, generated at compile
// time and picked from a table by argument count and pointer mask.
#pragma once

#include <cstdint>

// One argument as the routine receives it: the bits of a double or of a pointer.
using ExternalSlot = uint64_t;

inline constexpr int EXTERNAL_MAX_ARGUMENTS = 16;
inline constexpr int EXTERNAL_MAX_MIXED_ARGUMENTS = 4;

// Calls `routine` with `argc` arguments from `slots`; bit i of
// `pointer_mask` makes argument i a pointer (only for argc <= 4), the
// others are doubles. The routine returns a double.
double external_invoke_number(void* routine, int argc, unsigned pointer_mask, const ExternalSlot* slots);
// The same for a routine that returns a text pointer.
const char* external_invoke_text(void* routine, int argc, unsigned pointer_mask, const ExternalSlot* slots);
