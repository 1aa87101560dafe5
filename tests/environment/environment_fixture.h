// Test helper: the whole environment in a headless window of 1300 x 700,
// started in a save area of the test's own, with dialogs recorded instead
// of shown; frames run one at a time, and keys and clicks are fed to the
// input as the window would.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "environment/editor/editor_ctrl.h"
#include "environment/rooms.h"
#include "runtime/Code/Builtins.h"
#include "runtime/IO/Input.h"
#include "runtime/Object/Objects.h"
#include "runtime/Platform/Dialogs.h"
#include "runtime/Platform/Window.h"
#include "runtime/Room/Room.h"
#include "runtime/Run/Frame.h"
#include "support/MessageRecorder.h"
#include "support/SaveArea.h"

class EnvironmentTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::filesystem::current_path(folder_.path());
    start();
  }
  void TearDown() override {
    stop();
    platform::set_dialogs(nullptr);
    std::filesystem::current_path(previous_);
  }

  // The environment from its start, as a new process would run it; Intro goes on to the editor.
  void start() {
    register_runtime_builtins();
    platform::set_dialogs(std::make_unique<MessageRecorder>(&messages_));
    platform::make_window(true).create(1300, 700, "Velant", {});
    rooms_clear();
    objects_clear();
    input_reset();
    define_environment(Startup::Environment);
    objects_prepare();
    room_change(true);
    frames(2);
  }
  static void stop() {
    game_finish();
    rooms_clear();
    objects_clear();
  }

  static void frames(int n) {
    for (int k = 0; k < n; ++k) frame_run();
  }
  static void key(int code) {
    input_key_event(code, true);
    frame_run();
    input_key_event(code, false);
  }
  static void click(int x, int y) {
    input_mouse_move(x, y);
    input_mouse_button_event(MOUSE_LEFT, true);
    frame_run();
    input_mouse_button_event(MOUSE_LEFT, false);
    frame_run();
  }
  static EditorCtrl& editor() { return *editor_ctrl(); }
  static size_t count_of(const char* object) { return object_get(object_find(object))->instances.size(); }

  std::string saved(const std::string& name) const { return read_whole_file(folder_.path() / name); }

  const std::filesystem::path previous_ = std::filesystem::current_path();
  SaveArea folder_{"velant_editor"};
  std::vector<std::string> messages_;
};
