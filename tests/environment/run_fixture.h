// Test helper: runs `velant run` on a program in a folder of the test's
// own and gives back its exit status, its output and the pictures it saved,
// whose pixels are the program's own coordinates.
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "runtime/Graphics/ImageFile.h"
#include "support/TempFolder.h"
#include "support/test_pictures.h"

struct RunResult {
  int status = -1;
  std::string out;

  // The value of `name` in the printed table of variables, or "absent".
  std::string value(const std::string& name) const {
    const std::string printed = "\n" + out;
    const size_t at = printed.find("\n" + name + " = ");
    if (at == std::string::npos) return "absent";
    const size_t begin = at + name.size() + 4;
    return printed.substr(begin, printed.find('\n', begin) - begin);
  }
};

// Runs `velant run` on `program`, written into `folder`, with `options`; the user's data folder is
// "dati" in it, so the save area is SAVE_AREA there.
inline RunResult run_velant(const std::filesystem::path& folder_path, const std::string& program, const std::string& options) {
  std::ofstream(folder_path / "programma.txt", std::ios::binary) << program;
  // Mesa's driver leaves allocations at exit, which a sanitizer build would report as the run's own.
  const std::string folder = folder_path.string();
  const std::string command = "cd '" + folder + "' && XDG_DATA_HOME='" + folder + "/dati' ASAN_OPTIONS=detect_leaks=0 '" +
                              VELANT_BINARY "' run programma.txt --headless " + options + " 2>/dev/null";
  RunResult result;
  FILE* pipe = ::popen(command.c_str(), "r");
  char buffer[4096];
  for (size_t n; (n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;) result.out.append(buffer, n);
  const int status = ::pclose(pipe);
  result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  return result;
}

class RunFixture : public ::testing::Test {
 protected:
  // Runs `velant run` on `program` in the test's folder with `options`.
  RunResult run(const std::string& program, const std::string& options) { return run_velant(folder_.path(), program, options); }

  // The picture `file` of the test's folder: by default the one that --screenshot schermo.png saves.
  Image picture(const std::string& file = "schermo.png") const {
    Image image;
    EXPECT_TRUE(image_load((folder_ / file).string(), image)) << file;
    return image;
  }
  // Whether pixel (x, y) is colour `c`, each channel within `tolerance`.
  static ::testing::AssertionResult shows(const Image& image, int x, int y, Rgb c, int tolerance = 3) {
    const Rgb p = pixel(image, x, y);
    if (same_colour(p, c, tolerance)) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "(" << x << ", " << y << ") is " << p.r << " " << p.g << " " << p.b
                                         << ", not " << c.r << " " << c.g << " " << c.b;
  }

  static constexpr const char* SAVE_AREA = "dati/Velant/";
  TempFolder folder_{"velant_run"};
};
