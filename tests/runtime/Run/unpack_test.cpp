// Files of the start folder whose names spell a path with "@" go to that path.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "runtime/Run/MainLoop.h"

namespace {

TEST(UnpackFolderFiles, NamesWithAtSignsBecomePaths) {
  const auto dir = std::filesystem::temp_directory_path() / ("velant_unpack_" + std::to_string(::getpid()));
  std::filesystem::create_directories(dir);
  const auto previous = std::filesystem::current_path();
  std::filesystem::current_path(dir);
  std::ofstream("Suoni@miao.wav") << "1";
  std::ofstream("a@b@c.txt") << "2";
  std::ofstream("normale.txt") << "3";
  unpack_folder_files();
  EXPECT_TRUE(std::filesystem::exists("Suoni/miao.wav"));
  EXPECT_TRUE(std::filesystem::exists("a/b/c.txt")) << "two signs: two folders deep";
  EXPECT_FALSE(std::filesystem::exists("a@b@c.txt"));
  EXPECT_TRUE(std::filesystem::exists("normale.txt"));
  std::ifstream moved("a/b/c.txt");
  std::string content;
  moved >> content;
  EXPECT_EQ(content, "2");
  std::filesystem::current_path(previous);
  std::filesystem::remove_all(dir);
}

}  // namespace
