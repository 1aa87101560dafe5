// The desktop's services as built-ins: url_open, get_open_filename and
// get_save_filename.
#pragma once

#include <string>
#include <vector>

#include "runtime/Platform/Desktop.h"

// Opens `url` in the user's own program for it. A name without a protocol
// is a file of the program's: opened from the save area, or from Velant's
// data, and fatal when it is in neither; a protocol the desktop can't take
// is fatal too.
void url_open(const std::string& url);
// The filters of a filter text "name|*.ext|name|*.a;*.b"; a text without
// "|" is one pattern, and ".ext" stands for "*.ext".
std::vector<platform::FileFilter> file_filters(const std::string& filter);
// The path the user chose in the desktop's dialog, or "" when cancelled.
// The program may then use that path wherever it is.
std::string get_open_filename(const std::string& filter, const std::string& default_name);
std::string get_save_filename(const std::string& filter, const std::string& default_name);

void register_desktop_builtins();
