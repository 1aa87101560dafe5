#include "runtime/IO/WholeFile.h"

#include <fstream>
#include <iterator>

#include "runtime/Platform/Files.h"

bool file_write_whole(const std::string& path, std::string_view text) {
  return platform::write_file_atomically(path, text);
}

bool file_read_whole(const std::string& path, std::string& out) {
  std::ifstream file(path, std::ios::binary);
  if (!file) return false;
  out.assign(std::istreambuf_iterator<char>(file), {});
  return true;
}
