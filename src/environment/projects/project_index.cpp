#include "environment/projects/project_index.h"

#include <algorithm>
#include <filesystem>
#include <string_view>

#include "runtime/Function/DateFunctions.h"
#include "runtime/IO/FileNames.h"
#include "runtime/IO/IniFile.h"
#include "runtime/IO/WholeFile.h"

namespace {

constexpr const char* INDEX = "Progetti salvati/Progetti salvati.ini";
constexpr std::string_view FOLDER = "Progetti salvati/";
constexpr std::string_view UNSAFE = ":/?><|";

// The number of the first section that doesn't exist: the count of projects plus one.
int first_free_section() {
  int files = 1;
  while (ini_section_exists(std::to_string(files))) ++files;
  return files;
}

}  // namespace

std::vector<SavedProject> read_project_index() {
  ini_open(INDEX);
  std::vector<SavedProject> projects;
  for (int section = 1, end = first_free_section(); section < end; ++section) {
    const std::string name = std::to_string(section);
    projects.push_back({section, ini_read_string(name, "titolo", ""), ini_read_real(name, "data", 0)});
  }
  ini_close();
  // Newest first; a damaged date reads 0 and sorts last.
  std::stable_sort(projects.begin(), projects.end(),
                   [](const SavedProject& a, const SavedProject& b) { return a.data > b.data; });
  return projects;
}

std::string safe_title(std::string title) {
  std::erase_if(title, [](char c) { return UNSAFE.find(c) != std::string_view::npos; });
  return title;
}

std::string project_path(const std::string& titolo) {
  return file_save_path(std::string(FOLDER) + titolo + ".txt");
}

bool save_project(const std::string& titolo, const std::string& text) {
  const std::string path = project_path(titolo);
  std::error_code ignored;
  std::filesystem::create_directories(std::filesystem::path(path).parent_path(), ignored);
  if (path.empty() || !file_write_whole(path, text)) return false;
  ini_open(INDEX);
  const int files = first_free_section();
  const double now = date_current_datetime();
  bool listed = false;
  for (int k = 1; k < files; ++k) {
    if (ini_read_string(std::to_string(k), "titolo", "") != titolo) continue;
    ini_write_real(std::to_string(k), "data", now);
    listed = true;
  }
  if (!listed) {
    ini_write_string(std::to_string(files), "titolo", titolo);
    ini_write_real(std::to_string(files), "data", now);
  }
  ini_close();
  return true;
}

void delete_project(const SavedProject& project) {
  ini_open(INDEX);
  const int files = first_free_section() - 1;
  const std::string titolo = ini_read_string(std::to_string(project.section), "titolo", "");
  for (int k = project.section; k < files; ++k) {
    const std::string above = std::to_string(k + 1), here = std::to_string(k);
    ini_write_string(here, "data", ini_read_string(above, "data", "0"));
    ini_write_string(here, "titolo", ini_read_string(above, "titolo", ""));
  }
  if (files >= 1) ini_section_delete(std::to_string(files));
  ini_close();
  std::error_code ignored;
  std::filesystem::remove(project_path(titolo), ignored);
}

bool rename_project(const SavedProject& project, const std::string& new_name) {
  if (new_name.empty() || new_name.find('/') != std::string::npos || new_name == project.titolo) {
    return new_name == project.titolo;
  }
  const std::vector<SavedProject> all = read_project_index();
  if (std::any_of(all.begin(), all.end(), [&](const SavedProject& p) { return p.titolo == new_name; })) return false;
  std::error_code failed;
  std::filesystem::rename(project_path(project.titolo), project_path(new_name), failed);
  if (failed) return false;
  ini_open(INDEX);
  ini_write_string(std::to_string(project.section), "titolo", new_name);
  ini_close();
  return true;
}
