#include "runtime/Platform/Files.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace platform {

namespace {

// Writes all of `bytes` to `fd`, going on after short writes and signals.
bool write_all(int fd, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(fd, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    bytes.remove_prefix(static_cast<size_t>(written));
  }
  return true;
}

}  // namespace

std::string user_data_folder() {
  if (const char* data = std::getenv("XDG_DATA_HOME"); data && data[0] == '/') return data;
  const char* home = std::getenv("HOME");
  if (!home || !*home) {
    const passwd* user = ::getpwuid(::getuid());
    home = user ? user->pw_dir : "/tmp";
  }
  return std::string(home) + "/.local/share";
}

bool write_file_atomically(const std::string& path, std::string_view bytes) {
  // A link is followed: the file it names is the one replaced.
  std::string target = path;
  if (char* resolved = ::realpath(path.c_str(), nullptr)) {
    target = resolved;
    std::free(resolved);
  }
  // The new file keeps the old one's permissions.
  struct stat old {};
  const mode_t mode = ::stat(target.c_str(), &old) == 0 ? (old.st_mode & 07777) : 0644;
  // Beside the file, so that the rename stays on one file system and is
  // atomic; its name is unique, so that two threads writing one file never share it.
  std::string temporary = target + ".velant-XXXXXX";
  const int fd = ::mkostemp(temporary.data(), O_CLOEXEC);
  if (fd < 0) return false;
  const bool written = ::fchmod(fd, mode) == 0 && write_all(fd, bytes) && ::fsync(fd) == 0;
  const bool closed = ::close(fd) == 0;
  if (!written || !closed || std::rename(temporary.c_str(), target.c_str()) != 0) {
    ::unlink(temporary.c_str());
    return false;
  }
  return true;
}

}  // namespace platform
