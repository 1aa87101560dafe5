// INI files, one open at a time, in the text form the environment's settings
// and project index are kept in: "[section]" lines and key="value" lines,
// CR LF line ends, new sections and keys at the head of their lists.
#pragma once

#include <string>
#include <string_view>

// Writes the open file if it was changed, then reads `name` where the file
// name rule finds it (a missing file is an empty one); it is written back
// into the save area. An empty name does nothing.
void ini_open(const std::string& name);
// Writes the open file if it changed and closes it; its text.
std::string ini_close();
// The value of `key` in `section`, or `fallback`. Fatal without an open file.
std::string ini_read_string(std::string_view section, std::string_view key, std::string_view fallback);
double ini_read_real(std::string_view section, std::string_view key, double fallback);
// Sets `key` in `section` (as "%f" for a number). Section "SYSTEM_COMMAND",
// key "INI_FILE_FLUSH", value "TRUE" writes the file instead. Fatal without
// an open file.
void ini_write_string(std::string_view section, std::string_view key, std::string_view value);
void ini_write_real(std::string_view section, std::string_view key, double value);
bool ini_section_exists(std::string_view section);
bool ini_key_exists(std::string_view section, std::string_view key);
void ini_section_delete(std::string_view section);
void ini_key_delete(std::string_view section, std::string_view key);

// ini_* as built-ins.
void register_ini_builtins();
