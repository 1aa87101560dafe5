// The folders Velant works with: the save area in the user's data folder,
// where every file of the user's goes; the bundle folder of Velant's own
// read-only data (the examples and their pictures); and, for a program run
// from the command line, the folder the program stands in.
#pragma once

#include <string>

// The name of the save area's folder and of Velant's data.
inline constexpr const char* APPLICATION_FOLDER = "Velant";

// Sets the folders for the file name rule and makes the save area and its
// folders where they are missing; `run_file_folder` is the folder of a
// program run from the command line, "" in the environment. False, with `problem` telling why, when
// the save area can't be made; the folders are set all the same.
bool prepare_folders(const std::string& run_file_folder, std::string& problem);
