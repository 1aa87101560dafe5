#include "runtime/IO/BinaryFile.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>

#include "runtime/Code/Builtins.h"
#include "runtime/Code/Error.h"
#include "runtime/IO/FileNames.h"

namespace {

constexpr int MAX_BINARY_FILES = 32;

struct BinaryFile {
  std::FILE* stream = nullptr;
  std::string path;
  BinaryMode mode = BinaryMode::Read;
  bool writing = false;  // the last use wrote: the stream is repositioned before it reads again, and the reverse
};

// A stream that both reads and writes must be repositioned between the two.
void turn_to(BinaryFile& f, bool writing) {
  if (f.writing != writing) std::fseek(f.stream, 0, SEEK_CUR);
  f.writing = writing;
}

std::array<BinaryFile, MAX_BINARY_FILES + 1> g_files;  // handles 1 to 32; 0 is unused

int free_handle() {
  for (int h = 1; h <= MAX_BINARY_FILES; ++h) {
    if (!g_files[static_cast<size_t>(h)].stream) return h;
  }
  ReportError("Cannot open another file (maximum exceeded).");
  return -1;
}

// The open file of `handle`; fatal when there is none.
BinaryFile* file_of(int handle) {
  if (handle >= 1 && handle <= MAX_BINARY_FILES && g_files[static_cast<size_t>(handle)].stream) {
    return &g_files[static_cast<size_t>(handle)];
  }
  ReportError("Trying to use a binary file that has not been opened.");
  return nullptr;
}

// The stream for `name`: read where the file name rule finds it; written,
// or read and written, in the save area, where a file of the bundle folder
// is first copied so that what it holds is kept.
std::FILE* open_stream(const std::string& name, BinaryMode mode, std::string& path) {
  if (mode == BinaryMode::Read) {
    path = file_read_path(name);
    return path.empty() ? nullptr : std::fopen(path.c_str(), "rb");
  }
  path = file_save_path(name);
  if (path.empty()) return nullptr;
  std::error_code ignored;
  const std::filesystem::path folder = std::filesystem::path(path).parent_path();
  if (!folder.empty()) std::filesystem::create_directories(folder, ignored);
  if (mode == BinaryMode::Write) return std::fopen(path.c_str(), "wb");
  if (const std::string found = file_read_path(name); !found.empty() && found != path) {
    std::filesystem::copy_file(found, path, std::filesystem::copy_options::overwrite_existing, ignored);
  }
  std::FILE* stream = std::fopen(path.c_str(), "r+b");
  return stream ? stream : std::fopen(path.c_str(), "w+b");
}

BUILTIN_ADAPTER(file_bin_open) {
  result = RValue::number(file_bin_open(std::string(arg_text(args, 0)), arg_int32(args, 1)));
}
BUILTIN_ADAPTER(file_bin_close) { file_bin_close(arg_int32(args, 0)); }
BUILTIN_ADAPTER(file_bin_read_byte) { result = RValue::number(file_bin_read_byte(arg_int32(args, 0))); }
BUILTIN_ADAPTER(file_bin_write_byte) { file_bin_write_byte(arg_int32(args, 0), arg_int32(args, 1)); }
BUILTIN_ADAPTER(file_bin_size) { result = RValue::number(static_cast<double>(file_bin_size(arg_int32(args, 0)))); }
BUILTIN_ADAPTER(file_bin_position) {
  result = RValue::number(static_cast<double>(file_bin_position(arg_int32(args, 0))));
}
BUILTIN_ADAPTER(file_bin_seek) { file_bin_seek(arg_int32(args, 0), static_cast<long>(arg_real(args, 1))); }
BUILTIN_ADAPTER(file_bin_rewrite) { file_bin_rewrite(arg_int32(args, 0)); }

}  // namespace

int file_bin_open(const std::string& name, int mode) {
  const int h = free_handle();
  if (h < 0) return -1;
  const BinaryMode use = mode == 1 ? BinaryMode::Write : mode == 2 ? BinaryMode::Both : BinaryMode::Read;
  BinaryFile& f = g_files[static_cast<size_t>(h)];
  f.stream = open_stream(name, use, f.path);
  f.mode = use;
  f.writing = false;
  if (!f.stream) {
    debug_output("ERROR!!! :: Failed to open file: " + name + "\n");
    f = {};
    return -1;
  }
  return h;
}

void file_bin_close(int handle) {
  BinaryFile* f = file_of(handle);
  if (!f) return;
  if (std::fclose(f->stream) != 0) debug_output("ERROR!!! :: Failed to write file: " + f->path + "\n");
  *f = {};
}

int file_bin_read_byte(int handle) {
  BinaryFile* f = file_of(handle);
  if (!f) return -1;
  turn_to(*f, false);
  const int byte = std::fgetc(f->stream);
  return byte == EOF ? -1 : byte;
}

void file_bin_write_byte(int handle, int byte) {
  BinaryFile* f = file_of(handle);
  if (!f) return;
  turn_to(*f, true);
  std::fputc(byte & 0xFF, f->stream);
}

long file_bin_size(int handle) {
  BinaryFile* f = file_of(handle);
  if (!f) return -1;
  const long at = std::ftell(f->stream);
  std::fseek(f->stream, 0, SEEK_END);
  const long size = std::ftell(f->stream);
  std::fseek(f->stream, at, SEEK_SET);
  return size;
}

long file_bin_position(int handle) {
  BinaryFile* f = file_of(handle);
  return f ? std::ftell(f->stream) : -1;
}

void file_bin_seek(int handle, long position) {
  if (BinaryFile* f = file_of(handle)) std::fseek(f->stream, std::max(position, 0L), SEEK_SET);
}

void file_bin_rewrite(int handle) {
  BinaryFile* f = file_of(handle);
  // A file opened for reading may be Velant's own data or a file the user chose: it is never emptied.
  if (!f || f->mode == BinaryMode::Read) return;
  std::FILE* emptied = std::freopen(nullptr, "w+b", f->stream);
  if (!emptied) {
    debug_output("ERROR!!! :: Failed to write file: " + f->path + "\n");
    *f = {};
    return;
  }
  f->stream = emptied;
}

void register_binary_file_builtins() {
  builtin_register("file_bin_open", builtin_file_bin_open, 2);
  builtin_register("file_bin_close", builtin_file_bin_close, 1);
  builtin_register("file_bin_read_byte", builtin_file_bin_read_byte, 1);
  builtin_register("file_bin_write_byte", builtin_file_bin_write_byte, 2);
  builtin_register("file_bin_size", builtin_file_bin_size, 1);
  builtin_register("file_bin_position", builtin_file_bin_position, 1);
  builtin_register("file_bin_seek", builtin_file_bin_seek, 2);
  builtin_register("file_bin_rewrite", builtin_file_bin_rewrite, 1);
}
