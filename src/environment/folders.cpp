#include "environment/folders.h"

#include <filesystem>

#include "runtime/Code/Error.h"
#include "runtime/IO/FileNames.h"

namespace fs = std::filesystem;

namespace {

// The folders of the save area that the environment's screens fill.
constexpr const char* SAVE_AREA_FOLDERS[] = {"Progetti salvati", "Immagini", "Suoni"};

// Installed, the data stands in share/velant beside the bin folder; run
// from the build, it is the source tree's.
std::string bundle_folder() {
  const std::string installed = program_folder() + "../share/velant/";
  std::error_code failed;
  return fs::is_directory(installed, failed) ? installed : VELANT_SOURCE_BUNDLE;
}

}  // namespace

bool prepare_folders(const std::string& run_file_folder, std::string& problem) {
  const std::string save_area = user_data_folder() + APPLICATION_FOLDER + "/";
  file_folders_set({save_area, bundle_folder(), run_file_folder});
  debug_output("SavePrePend = " + file_folders().save_area + "\n");
  std::error_code failed;
  for (const char* folder : SAVE_AREA_FOLDERS) {
    fs::create_directories(save_area + folder, failed);
    if (failed) {
      problem = "impossibile creare la cartella " + save_area + folder + ": " + failed.message();
      return false;
    }
  }
  return true;
}
