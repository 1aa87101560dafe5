// The saved projects: each one the file "Progetti salvati/<title>.txt" in
// the save area, listed in the index "Progetti salvati/Progetti salvati.ini"
// with one section per project, named "1", "2", ... without gaps, holding
// its `titolo` and the `data` of its last save. Every file and the index are
// written whole through a temporary file, so that a crash while saving
// leaves the previous version intact.
#pragma once

#include <string>
#include <vector>

struct SavedProject {
  int section = 0;        // its section in the index
  std::string titolo;     // its name, also its file's name
  double data = 0;        // the date of its last save
};

// The projects of the index, newest first. A missing index lists none.
std::vector<SavedProject> read_project_index();
// The name a title is saved under: the title without ':', '/', '?', '>', '<', '|'.
std::string safe_title(std::string title);
// The path of project `titolo`'s file in the save area.
std::string project_path(const std::string& titolo);

// Writes `text` as project `titolo` and dates its entry now, adding it to the
// index if it is new. False, with the index untouched, when the file can't be written.
bool save_project(const std::string& titolo, const std::string& text);
// Removes `project` from the index, moving the sections above it down one,
// and deletes its file.
void delete_project(const SavedProject& project);
// Gives `project` the name `new_name`, in the index and on its file. False,
// with nothing changed, for an empty name, a name in use by another project,
// or a file that can't be renamed.
bool rename_project(const SavedProject& project, const std::string& new_name);
