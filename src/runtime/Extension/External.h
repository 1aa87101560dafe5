// External functions: routines of shared libraries that a program defines
// by library and name, then calls by the index of their row.
//
// A row records how the routine was found: by its plain name, by the
// decorated name "_name@bytes", or as a routine with the built-in
// signature, which is then called as a built-in is.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "runtime/Code/RValue.h"
#include "runtime/Extension/ExternalCall.h"

enum class ExternalNameForm : int32_t { Plain = 0, Decorated = 1, Builtin = 2 };

// Argument and result types: 0 a number (a double), 1 a string (a text pointer).
inline constexpr int32_t EXTERNAL_TYPE_NUMBER = 0;
inline constexpr int32_t EXTERNAL_TYPE_STRING = 1;

// One row of the external function table.
struct DLL_RFunction {
  std::string library;  // the resolved path
  void* library_handle = nullptr;
  std::string function;
  void* routine = nullptr;
  ExternalNameForm name_form = ExternalNameForm::Plain;
  int32_t argument_count = 0;
  int32_t argument_types[EXTERNAL_MAX_ARGUMENTS] = {};
  int32_t result_type = EXTERNAL_TYPE_NUMBER;
};

// Defines `function` of `library` with these types and gives its row
// index. A row of the same library and function is reused with the types
// refreshed. A library that doesn't load is fatal; a function that isn't
// there gives -1 with a debug line.
int external_define(std::string_view library, std::string_view function, int32_t result_type,
                    std::span<const int32_t> argument_types);
// Calls row `index` with `argc` arguments: -1 for an index below 0, 0 for a
// missing row or routine or a count that differs from the definition.
RValue external_call(int index, int argc, RValue* args, CInstance* self = nullptr, CInstance* other = nullptr);
// Closes every library and empties the table.
void external_free();
// Closes `library`; its rows stay, without routine, so that calls give 0.
void external_free(std::string_view library);
// Row `index`, or null.
const DLL_RFunction* external_row(int index);
