// The call that a family is serving: its argument slots and the value that
// a value function hands back. They belong to the instance that runs the
// program and each call overwrites them.
#pragma once

#include <array>
#include <vector>

#include "runtime/Code/RValue.h"

struct FamilyCall {
  // arg0 to arg29: the source text of each argument, or a number default.
  std::array<RValue, 30> args;
  // arg[n], for the functions with many arguments of one kind.
  std::vector<RValue> arg;
  // The number of argument triples of the call.
  int arg_count = 0;
  // What a value function gives back: a number, stored with 30 decimals,
  // or a text, stored as it is.
  RValue output_result;
};
