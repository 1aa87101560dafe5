// Shared libraries loaded at run time: open a file, find a symbol, close it,
// and say why an open failed. The external function table is built on this.
#pragma once

#ifdef VELANT_ABOVE_RUNTIME
#error "the layers above the runtime reach the platform through the runtime's functions"
#endif

#include <string>

namespace platform {

// Why an open failed: an error number (why the file couldn't be opened, or
// ENOEXEC when it opened but didn't load), the loader's text, and the
// machine types of the file and of this process when they differ (both 0
// when the file's type couldn't be read or matches).
struct LibraryError {
  int code = 0;
  std::string text;
  int file_machine = 0;
  int process_machine = 0;
};

// Opens the library at `path`; null on failure, and then `error` says why.
void* library_open(const std::string& path, LibraryError& error);
// The address of the exported symbol `name`, or null.
void* library_symbol(void* library, const char* name);
// Lets go of a library that library_open gave.
void library_close(void* library);

// The folder of the running executable, with a trailing separator; "" if
// the system can't tell.
std::string executable_folder();

}  // namespace platform
