// Test helper: calls a registered built-in by name, as a program would.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "runtime/Code/Builtins.h"

inline RValue call_builtin(const std::string& name, std::vector<RValue> args = {}) {
  RValue result;
  EXPECT_TRUE(builtin_call(name, result, nullptr, nullptr, static_cast<int>(args.size()), args.data())) << name;
  return result;
}
