// Test helper: compares a text with its golden file line by line, naming
// the first line that differs. VELANT_UPDATE_GOLDEN=1 writes the file anew,
// for a deliberate change that a diff then shows.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "support/TempFolder.h"

inline void expect_golden(const std::filesystem::path& file, const std::string& actual) {
  if (std::getenv("VELANT_UPDATE_GOLDEN")) std::ofstream(file, std::ios::binary) << actual;
  const std::string expected = read_whole_file(file);
  std::vector<std::string> want, got;
  for (std::istringstream in_want(expected); std::getline(in_want, want.emplace_back());) {}
  for (std::istringstream in_got(actual); std::getline(in_got, got.emplace_back());) {}
  want.resize(std::max(want.size(), got.size()));
  got.resize(want.size());
  for (size_t row = 0; row < want.size(); ++row) {
    ASSERT_EQ(got[row], want[row]) << file.filename() << ", line " << row + 1 << " (VELANT_UPDATE_GOLDEN=1 rewrites it)";
  }
}
