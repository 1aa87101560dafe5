// Test helper: runs `velant run` on a program in a folder of the test's
// own and gives back its exit status, its output and its screenshot.
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "runtime/Graphics/ImageFile.h"

struct RunResult {
  int status = -1;
  std::string out;
};

class RunFixture : public ::testing::Test {
 protected:
  void SetUp() override {
    dir_ = std::filesystem::temp_directory_path() /
           ("velant_run_" + std::to_string(::getpid()) + "_" +
            ::testing::UnitTest::GetInstance()->current_test_info()->name());
    std::filesystem::create_directories(dir_);
  }
  void TearDown() override { std::filesystem::remove_all(dir_); }

  // Runs `velant run` on `program` in the test's folder with `options`.
  RunResult run(const std::string& program, const std::string& options) {
    std::ofstream(dir_ / "programma.txt", std::ios::binary) << program;
    // Mesa's driver leaves allocations at exit, which a sanitizer build would report as the run's own.
    const std::string command = "cd '" + dir_.string() + "' && ASAN_OPTIONS=detect_leaks=0 '" VELANT_BINARY
                                "' run programma.txt --headless " +
                                options + " 2>/dev/null";
    RunResult result;
    FILE* pipe = ::popen(command.c_str(), "r");
    char buffer[4096];
    for (size_t n; (n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;) result.out.append(buffer, n);
    const int status = ::pclose(pipe);
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
  }

  Image screenshot() {
    Image image;
    image_load((dir_ / "schermo.png").string(), image);
    return image;
  }
  static const uint8_t* at(const Image& image, int x, int y) {
    return &image.rgba[static_cast<size_t>((y * image.width + x) * 4)];
  }

  std::filesystem::path dir_;
};

// The value of `name` in the printed table, or "absent".
inline std::string printed_value(const std::string& printed, const std::string& name) {
  const std::string out = "\n" + printed;
  const size_t at = out.find("\n" + name + " = ");
  if (at == std::string::npos) return "absent";
  const size_t begin = at + name.size() + 4;
  return out.substr(begin, out.find('\n', begin) - begin);
}
