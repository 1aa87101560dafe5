// Opening things in the user's own programs: addresses, files and folders.
#pragma once

#include <string>

// Opens `url` in the user's own program for it. A name without a protocol
// is a file of the program's: opened from the save area, or from Velant's
// data, and fatal when it is in neither; a protocol the desktop can't take
// is fatal too.
void url_open(const std::string& url);
// Shows the folder at `path` in the desktop's file manager.
void folder_open(const std::string& path);
