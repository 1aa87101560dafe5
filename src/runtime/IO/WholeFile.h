// The one way the system writes a whole file that a user's work lives in
// (the program handed to a run, backups, projects, settings, indexes).
#pragma once

#include <string>
#include <string_view>

// Writes `text` as the whole of `path`, through a temporary file beside it
// renamed over the old one: a crash, a kill or a full disk in the middle
// leaves the old file whole. False, with the old file untouched, on failure.
bool file_write_whole(const std::string& path, std::string_view text);
// The whole of the file at `path` into `out`; false, with `out` untouched, when it can't be read.
bool file_read_whole(const std::string& path, std::string& out);
