#include "runtime/IO/TextFile.h"

#include <array>
#include <filesystem>

#include "runtime/Code/Builtins.h"
#include "runtime/Code/Error.h"
#include "runtime/IO/FileNames.h"
#include "runtime/IO/WholeFile.h"

namespace {

constexpr int MAX_TEXT_FILES = 31;

enum class Use { Free, Reading, Writing };

struct TextFile {
  Use use = Use::Free;
  std::string path;
  std::string text;  // all of a file read, or all that was written
  size_t at = 0;     // where reading goes on
};

std::array<TextFile, MAX_TEXT_FILES + 1> g_files;  // handles 1 to 31; 0 is unused

// The lowest free handle; fatal when none is free.
int free_handle() {
  for (int h = 1; h <= MAX_TEXT_FILES; ++h) {
    if (g_files[static_cast<size_t>(h)].use == Use::Free) return h;
  }
  ReportError("Cannot open another file (maximum exceeded).");
  return -1;
}

// The file of `handle` when it is open for `use`; fatal with `words` otherwise.
TextFile* file_of(int handle, Use use, const char* words) {
  if (handle >= 1 && handle <= MAX_TEXT_FILES && g_files[static_cast<size_t>(handle)].use == use) {
    return &g_files[static_cast<size_t>(handle)];
  }
  ReportError("%s", words);
  return nullptr;
}

void tell_failed_open(const std::string& name) { debug_output("ERROR!!! :: Failed to open file: " + name + "\n"); }

int open_for_writing(const std::string& name, bool keep) {
  const int h = free_handle();
  if (h < 0) return -1;
  const std::string path = file_save_path(name);
  if (path.empty()) {
    tell_failed_open(name);
    return -1;
  }
  std::error_code ignored;
  const std::filesystem::path folder = std::filesystem::path(path).parent_path();
  if (!folder.empty()) std::filesystem::create_directories(folder, ignored);
  TextFile& f = g_files[static_cast<size_t>(h)];
  f = {Use::Writing, path, {}, 0};
  // A file kept from the bundle folder is copied into the save area.
  if (keep) file_read_whole(file_read_path(name), f.text);
  // The file is made now, empty or as it was, so that a name that can't be written is told at once.
  if (!file_write_whole(path, f.text)) {
    tell_failed_open(name);
    f = {};
    return -1;
  }
  return h;
}

BUILTIN_ADAPTER(file_text_open_read) { result = RValue::number(file_text_open_read(std::string(arg_text(args, 0)))); }
BUILTIN_ADAPTER(file_text_open_write) { result = RValue::number(file_text_open_write(std::string(arg_text(args, 0)))); }
BUILTIN_ADAPTER(file_text_open_append) {
  result = RValue::number(file_text_open_append(std::string(arg_text(args, 0))));
}
BUILTIN_ADAPTER(file_text_close) { file_text_close(arg_int32(args, 0)); }
BUILTIN_ADAPTER(file_text_read_string) { result = RValue::text(file_text_read_string(arg_int32(args, 0))); }
BUILTIN_ADAPTER(file_text_readln) { result = RValue::text(file_text_readln(arg_int32(args, 0))); }
BUILTIN_ADAPTER(file_text_eof) { result = RValue::boolean(file_text_eof(arg_int32(args, 0))); }
BUILTIN_ADAPTER(file_text_write_string) { file_text_write_string(arg_int32(args, 0), arg_text(args, 1)); }
BUILTIN_ADAPTER(file_text_writeln) { file_text_writeln(arg_int32(args, 0)); }

}  // namespace

int file_text_open_read(const std::string& name) {
  const int h = free_handle();
  if (h < 0) return -1;
  TextFile& f = g_files[static_cast<size_t>(h)];
  const std::string path = file_read_path(name);
  if (path.empty() || !file_read_whole(path, f.text)) {
    tell_failed_open(name);
    f = {};
    return -1;
  }
  f.use = Use::Reading;
  f.path = path;
  f.at = 0;
  return h;
}

int file_text_open_write(const std::string& path) { return open_for_writing(path, false); }
int file_text_open_append(const std::string& path) { return open_for_writing(path, true); }

void file_text_close(int handle) {
  if (handle < 1 || handle > MAX_TEXT_FILES) return ReportError("Trying to close text file that has not been opened.");
  TextFile& f = g_files[static_cast<size_t>(handle)];
  // A handle closed twice has nothing left to close.
  if (f.use == Use::Free) return;
  if (f.use == Use::Writing && !file_write_whole(f.path, f.text)) {
    debug_output("ERROR!!! :: Failed to write file: " + f.path + "\n");
  }
  f = {};
}

std::string file_text_read_string(int handle) {
  TextFile* f = file_of(handle, Use::Reading, "File is not opened for reading.");
  if (!f) return "";
  const size_t end = std::min(f->text.find_first_of("\r\n", f->at), f->text.size());
  std::string line = f->text.substr(f->at, end - f->at);
  f->at = end;
  return line;
}

std::string file_text_readln(int handle) {
  TextFile* f = file_of(handle, Use::Reading, "File is not opened for reading.");
  if (!f) return "";
  if (f->at >= f->text.size()) return "";
  const size_t line_end = f->text.find('\n', f->at);
  const size_t end = line_end == std::string::npos ? f->text.size() : line_end + 1;
  std::string line = f->text.substr(f->at, end - f->at);
  f->at = end;
  return line;
}

bool file_text_eof(int handle) {
  const TextFile* f = file_of(handle, Use::Reading, "File is not opened for reading.");
  return !f || f->at >= f->text.size();
}

void file_text_write_string(int handle, std::string_view text) {
  TextFile* f = file_of(handle, Use::Writing, "File not opened for writing.");
  if (!f) return;
  for (size_t k = 0; k < text.size(); ++k) {
    if (text[k] == '\n' && (k == 0 || text[k - 1] != '\r')) f->text += '\r';
    f->text += text[k];
  }
}

void file_text_writeln(int handle) { file_text_write_string(handle, "\r\n"); }

void register_text_file_builtins() {
  builtin_register("file_text_open_read", builtin_file_text_open_read, 1);
  builtin_register("file_text_open_write", builtin_file_text_open_write, 1);
  builtin_register("file_text_open_append", builtin_file_text_open_append, 1);
  builtin_register("file_text_close", builtin_file_text_close, 1);
  builtin_register("file_text_read_string", builtin_file_text_read_string, 1);
  builtin_register("file_text_readln", builtin_file_text_readln, 1);
  builtin_register("file_text_eof", builtin_file_text_eof, 1);
  builtin_register("file_text_write_string", builtin_file_text_write_string, 2);
  builtin_register("file_text_writeln", builtin_file_text_writeln, 1);
}
