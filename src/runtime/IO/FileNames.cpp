#include "runtime/IO/FileNames.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <vector>

#include "runtime/Code/Builtins.h"
#include "runtime/Code/Error.h"
#include "runtime/Platform/Files.h"
#include "runtime/Platform/SharedLibrary.h"

namespace fs = std::filesystem;

namespace {

std::string with_separator(std::string folder) {
  if (!folder.empty() && folder.back() != '/') folder += '/';
  return folder;
}

std::string current_folder() {
  std::error_code failed;
  return with_separator(fs::current_path(failed).string());
}

FileFolders& folders() {
  static FileFolders in_use{start_folder(), start_folder(), ""};
  return in_use;
}

bool g_sandbox = true;
std::vector<std::string> g_allowed;  // full paths chosen in dialogs

// `name` as a full path without "." and ".." parts.
std::string full_path(std::string_view name) {
  fs::path path{std::string(name)};
  if (path.is_relative()) path = fs::path(current_folder()) / path;
  return path.lexically_normal().string();
}

// The part of `full` behind the deepest known folder it lies in.
std::optional<std::string> part_inside_known_folder(const std::string& full) {
  const FileFolders& f = folders();
  const std::string known[] = {current_folder(), start_folder(), f.bundle, f.save_area, f.program};
  std::optional<std::string> part;
  size_t deepest = 0;
  const std::string full_as_folder = with_separator(full);
  for (const std::string& folder : known) {
    if (folder.empty() || folder.size() <= deepest || !full_as_folder.starts_with(folder)) continue;
    deepest = folder.size();
    part = full.size() >= folder.size() ? full.substr(folder.size()) : std::string();
  }
  return part;
}

bool chosen(const std::string& full) { return std::ranges::find(g_allowed, full) != g_allowed.end(); }
bool allowed(const std::string& full) { return !g_sandbox || chosen(full); }

void refuse(std::string_view name) {
  debug_output("Error! not allowing file operation with filename '" + std::string(name) + "'.\n");
}

bool present(const std::string& path, bool folder) {
  std::error_code failed;
  return folder ? fs::is_directory(path, failed) : fs::is_regular_file(path, failed);
}

int file_delete(std::string_view name) {
  const std::string path = file_save_path(name);
  std::error_code failed;
  return !path.empty() && present(path, false) && fs::remove(path, failed) ? 1 : 0;
}

int file_rename(std::string_view from, std::string_view to) {
  const std::string old_path = file_save_path(from), new_path = file_save_path(to);
  // A file already under the new name is never replaced.
  std::error_code failed;
  if (old_path.empty() || new_path.empty() || !present(old_path, false) || fs::exists(new_path, failed)) return 0;
  fs::rename(old_path, new_path, failed);
  return failed ? 0 : 1;
}

int directory_create(std::string_view name) {
  const std::string path = file_save_path(name);
  if (path.empty()) return 0;
  std::error_code failed;
  fs::create_directories(path, failed);
  return present(path, true) ? 1 : 0;
}

BUILTIN_ADAPTER(file_exists) { result = RValue::boolean(!file_read_path(arg_text(args, 0)).empty()); }
BUILTIN_ADAPTER(file_delete) { result = RValue::number(file_delete(arg_text(args, 0))); }
BUILTIN_ADAPTER(file_rename) { result = RValue::number(file_rename(arg_text(args, 0), arg_text(args, 1))); }
BUILTIN_ADAPTER(directory_exists) { result = RValue::boolean(!file_read_path(arg_text(args, 0), true).empty()); }
BUILTIN_ADAPTER(directory_create) { result = RValue::number(directory_create(arg_text(args, 0))); }

}  // namespace

const std::string& start_folder() {
  static const std::string folder = current_folder();
  return folder;
}

const std::string& temporary_folder() {
  static const std::string folder = [] {
    std::error_code failed;
    return with_separator(fs::temp_directory_path(failed).string());
  }();
  return folder;
}

std::string program_folder() { return platform::executable_folder(); }
std::string user_data_folder() { return with_separator(platform::user_data_folder()); }

void file_folders_set(FileFolders f) {
  // Compared with normalised full paths, so kept normalised themselves.
  for (std::string* folder : {&f.save_area, &f.bundle, &f.program}) {
    if (!folder->empty()) *folder = with_separator(fs::path(*folder).lexically_normal().string());
  }
  folders() = std::move(f);
}

const FileFolders& file_folders() { return folders(); }

void file_sandbox_set(bool on) { g_sandbox = on; }
void file_allow(const std::string& path) { g_allowed.push_back(full_path(path)); }
void file_allowed_clear() { g_allowed.clear(); }

std::string file_read_path(std::string_view name, bool folder) {
  if (name.empty()) return "";
  const std::string full = full_path(name);
  // A path the user chose is used as it stands, wherever it lies.
  if (chosen(full)) return present(full, folder) ? full : "";
  if (const std::optional<std::string> part = part_inside_known_folder(full)) {
    const FileFolders& f = folders();
    for (const std::string* base : {&f.save_area, &f.program, &f.bundle}) {
      if (!base->empty() && present(*base + *part, folder)) return *base + *part;
    }
    return "";
  }
  if (!allowed(full)) {
    refuse(name);
    return "";
  }
  return present(full, folder) ? full : "";
}

std::string file_save_path(std::string_view name) {
  if (name.empty()) return "";
  const std::string full = full_path(name);
  if (chosen(full)) return full;
  if (const std::optional<std::string> part = part_inside_known_folder(full)) return folders().save_area + *part;
  if (!allowed(full)) {
    refuse(name);
    return "";
  }
  return full;
}

void register_file_name_builtins() {
  builtin_register("file_exists", builtin_file_exists, 1);
  builtin_register("file_delete", builtin_file_delete, 1);
  builtin_register("file_rename", builtin_file_rename, 2);
  builtin_register("directory_exists", builtin_directory_exists, 1);
  builtin_register("directory_create", builtin_directory_create, 1);
}
