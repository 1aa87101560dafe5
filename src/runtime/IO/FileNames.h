// Where a program's file names lead. Programs name files relative to the
// folder they were started in, or by the full paths of that folder; every
// file built-in maps such a name into the folders Velant owns:
//
// - reads look in the save area, then the program's own folder (a program
//   run from the command line), then the bundle folder of Velant's
//   read-only data, and take the first that has the file;
// - writes always go to the save area.
//
// A full path outside these folders is refused, with a debug line, unless
// the user chose it in a file dialog during this run or the sandbox is off.
#pragma once

#include <string>
#include <string_view>

struct FileFolders {
  std::string save_area;  // the user's files; each folder ends with "/"
  std::string bundle;     // Velant's read-only data
  std::string program;    // the folder of a program run from a file, or ""
};

// The folders in use. Until they are set, all three are the start folder.
void file_folders_set(FileFolders folders);
const FileFolders& file_folders();
// The folder that was current at start, with its "/".
const std::string& start_folder();
// The system's folder for temporary files, with its "/".
const std::string& temporary_folder();
// The folder of Velant's executable, with its "/".
std::string program_folder();
// The folder where programs keep the user's data ($XDG_DATA_HOME, or
// ~/.local/share), with its "/".
std::string user_data_folder();

// With the sandbox off, any full path is used as it stands.
void file_sandbox_set(bool on);
// Lets the run use `path` as it stands (a path chosen in a file dialog).
void file_allow(const std::string& path);
// Forgets the paths allowed so far: a new run starts without them.
void file_allowed_clear();

// The path to read `name` from: the first folder that has it as a file, or
// as a folder when `folder` is true. "" when none has it or it is refused.
std::string file_read_path(std::string_view name, bool folder = false);
// The path to write `name` to, "" when it is refused.
std::string file_save_path(std::string_view name);

// file_exists, file_delete, file_rename, directory_exists, directory_create.
void register_file_name_builtins();
