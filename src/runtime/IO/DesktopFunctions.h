// The desktop's services as built-ins: url_open, get_open_filename and
// get_save_filename, and the file filters of the dialogs.
#pragma once

#include <string>
#include <vector>

#include "runtime/IO/DesktopOpen.h"
namespace platform {
struct FileFilter;
}

// The filters of a filter text "name|*.ext|name|*.a;*.b"; a text without
// "|" is one pattern, and ".ext" stands for "*.ext".
std::vector<platform::FileFilter> file_filters(const std::string& filter);
// The path the user chose in the desktop's dialog, or "" when cancelled.
// The program may then use that path wherever it is.
std::string get_open_filename(const std::string& filter, const std::string& default_name);
std::string get_save_filename(const std::string& filter, const std::string& default_name);

void register_desktop_builtins();
