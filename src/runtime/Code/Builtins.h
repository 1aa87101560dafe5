// The table of built-ins that can be called by name, and the argument
// getters every built-in uses.
//
// Each built-in is a plain C++ function under its own name for direct calls,
// and is also registered here by name through an adapter with the one
// signature that a call by name needs: result, self, other, argument count,
// arguments. Arguments are bit copies of the caller's values: an adapter
// reads them and never releases them. The result arrives undefined.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "runtime/Code/RValue.h"

using BuiltinRoutine = void (*)(RValue& result, CInstance* self, CInstance* other, int argc, RValue* args);

struct BuiltinRow {
  std::string name;
  BuiltinRoutine routine;
  int argc;  // -1 for any number
};

// Adds a row; a name registered twice keeps its first row. Returns the index.
int builtin_register(const char* name, BuiltinRoutine routine, int argc);
// The index of a name, or -1.
int builtin_find(std::string_view name);
const BuiltinRow* builtin_row(int index);
int builtin_count();

// Calls row `index` as compiled code does: the result is set to undefined,
// the row is remembered for the getters' words while the routine runs.
void builtin_call(int index, RValue& result, CInstance* self, CInstance* other, int argc, RValue* args);
// The same by name; false if there is no such built-in.
bool builtin_call(std::string_view name, RValue& result, CInstance* self, CInstance* other, int argc,
                  RValue* args);
// The name of the built-in being served, for error words ("" outside any).
const char* builtin_current_name();

// Registers every built-in of the runtime once.
void register_runtime_builtins();

// Argument getters: `i` is 0-based; the words report it 1-based with the
// built-in's name and the argument's kind.
double arg_real(const RValue* args, int i);
float arg_float(const RValue* args, int i);
int32_t arg_int32(const RValue* args, int i);
uint32_t arg_uint32(const RValue* args, int i);
int64_t arg_int64(const RValue* args, int i);
bool arg_bool(const RValue* args, int i);
// A string's own text (no copy), or the text form of any other value in the
// frame arena. Always NUL-terminated.
std::string_view arg_text(const RValue* args, int i);
void* arg_pointer(const RValue* args, int i);
// A number or a pointer, as a pointer-sized integer.
intptr_t arg_number_or_pointer(const RValue* args, int i);
// A ref of `type_code`, or a number taken as the index; checks the index
// against `count`. Returns -1 after reporting a wrong argument.
int32_t arg_ref(const RValue* args, int i, uint32_t type_code, int32_t count);
// The index a value names for handles of `type_code`: a ref of that type or
// a number; -1 for anything else, which nothing holds. Never fatal.
int32_t index_of_handle(const RValue& v, uint32_t type_code);
// An array; `for_write` also refuses an immutable one.
RefArray* arg_array(const RValue* args, int i, bool for_write = false);

// Declares the by-name adapter of a built-in: `builtin_<name>`.
#define BUILTIN_ADAPTER(name)                                                                         \
  void builtin_##name([[maybe_unused]] RValue& result, [[maybe_unused]] CInstance* self,              \
                      [[maybe_unused]] CInstance* other, [[maybe_unused]] int argc, \
                      [[maybe_unused]] RValue* args)
