// The user's data folder, and whole files written so that a crash, a kill
// or a full disk in the middle of the write never leaves a file half old
// and half new.
#pragma once

#ifdef VELANT_ABOVE_RUNTIME
#error "the layers above the runtime reach the platform through the runtime's functions"
#endif

#include <string>
#include <string_view>

namespace platform {

// Writes `bytes` as the whole of the file at `path`: into a temporary file
// beside it, flushed to the disk, then renamed over the old one. False when
// any step fails; then the old file is as it was and no temporary is left.
bool write_file_atomically(const std::string& path, std::string_view bytes);

// The folder for the user's data of programs: $XDG_DATA_HOME when it is a
// full path, else ~/.local/share.
std::string user_data_folder();

}  // namespace platform
