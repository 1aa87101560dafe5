// Test helper: a folder of the test's own under the system's temporary
// folder, named after the process and the running test, removed with it.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

// The whole of the file at `path`, "" when there is none.
inline std::string read_whole_file(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

class TempFolder {
 public:
  explicit TempFolder(const std::string& prefix = "velant")
      : path_(std::filesystem::temp_directory_path() /
              (prefix + "_" + std::to_string(::getpid()) + "_" + test_name())) {
    std::filesystem::create_directories(path_);
  }
  ~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }
  // The path of `name` in the folder.
  std::filesystem::path operator/(const std::string& name) const { return path_ / name; }
  // Writes `text` to `name` in the folder, whole; gives its path.
  std::filesystem::path write(const std::string& name, const std::string& text) const {
    std::ofstream(path_ / name, std::ios::binary) << text;
    return path_ / name;
  }

 private:
  static std::string test_name() {
    const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
    return info ? info->name() : "outside_a_test";
  }
  std::filesystem::path path_;
};
