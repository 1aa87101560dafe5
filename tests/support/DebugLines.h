// Test helper: what the runtime's debug stream receives while `body` runs.
#pragma once

#include <cstdio>
#include <functional>
#include <string>

#include "runtime/Code/Error.h"

inline std::string debug_lines(const std::function<void()>& body) {
  std::FILE* file = std::tmpfile();
  set_debug_output_file(file);
  body();
  set_debug_output_file(nullptr);
  std::rewind(file);
  std::string all;
  for (int c; (c = std::fgetc(file)) != EOF;) all.push_back(static_cast<char>(c));
  std::fclose(file);
  return all;
}
