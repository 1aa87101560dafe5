// Test helper: a folder of the test's own that is the save area and the
// bundle folder of the file name rule while it lives, so that programs
// name their files in it as they would in the user's save area.
#pragma once

#include "runtime/IO/FileNames.h"
#include "support/TempFolder.h"

class SaveArea : public TempFolder {
 public:
  explicit SaveArea(const std::string& prefix = "velant") : TempFolder(prefix), before_(file_folders()) {
    file_folders_set({path().string(), path().string(), ""});
  }
  ~SaveArea() { file_folders_set(before_); }

 private:
  FileFolders before_;
};
