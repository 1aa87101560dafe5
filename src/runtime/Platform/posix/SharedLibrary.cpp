// Shared libraries through the dynamic loader (dlopen, dlsym).
#include "runtime/Platform/SharedLibrary.h"

#include <dlfcn.h>
#include <elf.h>
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <fstream>

namespace platform {
namespace {

// The machine this process was built for, as an ELF header names it.
constexpr int process_machine_type() {
#if defined(__x86_64__)
  return EM_X86_64;
#elif defined(__aarch64__)
  return EM_AARCH64;
#elif defined(__i386__)
  return EM_386;
#elif defined(__arm__)
  return EM_ARM;
#else
  return 0;
#endif
}

// The machine field of an ELF file's header, or 0 when the file isn't one.
// e_machine sits at the same offset in 32- and 64-bit headers.
int file_machine_type(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  unsigned char header[EI_NIDENT + 4] = {};
  if (!file.read(reinterpret_cast<char*>(header), sizeof header)) return 0;
  if (std::memcmp(header, ELFMAG, SELFMAG) != 0) return 0;
  const bool little_endian = header[EI_DATA] == ELFDATA2LSB;
  const unsigned char* field = header + EI_NIDENT + 2;
  return little_endian ? field[0] | field[1] << 8 : field[0] << 8 | field[1];
}

// The loader leaves no error number behind, so the file's own opening
// tells: why it can't be opened, or, when it can, that its content isn't a
// library this process can load.
int open_error_code(const std::string& path) {
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) return errno;
  close(file);
  return ENOEXEC;
}

}  // namespace

void* library_open(const std::string& path, LibraryError& error) {
  dlerror();
  void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library) return library;
  const char* text = dlerror();
  error.text = text ? text : "";
  error.code = open_error_code(path);
  const int machine = file_machine_type(path);
  const bool mismatch = machine != 0 && machine != process_machine_type();
  error.file_machine = mismatch ? machine : 0;
  error.process_machine = mismatch ? process_machine_type() : 0;
  return nullptr;
}

void* library_symbol(void* library, const char* name) { return library ? dlsym(library, name) : nullptr; }

void library_close(void* library) {
  if (library) dlclose(library);
}

std::string executable_folder() {
  char path[4096];
  const ssize_t length = readlink("/proc/self/exe", path, sizeof path - 1);
  if (length <= 0) return "";
  std::string folder(path, static_cast<size_t>(length));
  return folder.substr(0, folder.rfind('/') + 1);
}

}  // namespace platform
