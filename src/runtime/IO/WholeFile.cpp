#include "runtime/IO/WholeFile.h"

#include "runtime/Platform/Files.h"

bool file_write_whole(const std::string& path, std::string_view text) {
  return platform::write_file_atomically(path, text);
}
