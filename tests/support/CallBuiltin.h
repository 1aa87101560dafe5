// Test helper: calls a registered built-in by name, as a program would.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "runtime/Code/Builtins.h"
#include "runtime/Code/Conversions.h"

// The result of built-in `name`, run for `self` with `other` as the other instance.
inline RValue call_builtin(const std::string& name, std::vector<RValue> args = {}, CInstance* self = nullptr,
                           CInstance* other = nullptr) {
  RValue result;
  EXPECT_TRUE(builtin_call(name, result, self, other, static_cast<int>(args.size()), args.data())) << name;
  return result;
}

// A value as its kind and text form: "bool:1", "number:-4", "ref:ref instance 100001".
inline std::string shown(const RValue& v) { return kind_name(v.kind()) + (":" + value_to_text(v)); }

// What call_builtin gives, as shown() writes it: one text to compare at once.
inline std::string call_shown(const std::string& name, std::vector<RValue> args = {}, CInstance* self = nullptr,
                              CInstance* other = nullptr) {
  return shown(call_builtin(name, std::move(args), self, other));
}

// An argument of a call by name: a text, a number, or any other value.
struct Arg {
  Arg(const char* t) : value(RValue::text(t)) {}
  Arg(const std::string& t) : value(RValue::text(t)) {}
  Arg(int n) : value(RValue::number(n)) {}
  Arg(double n) : value(RValue::number(n)) {}
  Arg(RValue v) : value(std::move(v)) {}
  RValue value;
};

// Calls a built-in by name, as compiled code does; the number of arguments
// must be the one it is registered with, unless it takes any number.
inline RValue call_by_name(const char* name, const std::vector<Arg>& arguments = {}) {
  register_runtime_builtins();
  std::vector<RValue> args;
  for (const Arg& a : arguments) args.push_back(a.value);
  const BuiltinRow* row = builtin_row(builtin_find(name));
  EXPECT_TRUE(row && (row->argc == -1 || row->argc == static_cast<int>(args.size()))) << name;
  return call_builtin(name, std::move(args));
}
