// Test helper: dialogs that remember what they were asked to show instead
// of showing it. Messages and questions leave their text, errors
// "title|text"; every question is answered "Yes".
#pragma once

#include <string>
#include <vector>

#include "runtime/Platform/Dialogs.h"

struct MessageRecorder : platform::Dialogs {
  std::vector<std::string>* shown;
  explicit MessageRecorder(std::vector<std::string>* s) : shown(s) {}
  void message(const std::string&, const std::string& text) override { shown->push_back(text); }
  bool question(const std::string&, const std::string& text) override {
    shown->push_back(text);
    return true;
  }
  platform::ErrorChoice error(const std::string& title, const std::string& text, bool) override {
    shown->push_back(title + "|" + text);
    return platform::ErrorChoice::Abort;
  }
};
