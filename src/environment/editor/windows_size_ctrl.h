// windows_size_ctrl: it lives through every room and keeps the editor's
// window where the learner left it. It remembers the window's size and
// place as the editor is left, gives them back ten steps after the editor
// is entered again, and centres the window on the display three steps after
// any other room starts (a run may have resized it).
#pragma once

#include <cstdint>

#include "runtime/Object/Instance.h"

class WindowsSizeCtrl : public CInstance {
 public:
  using CInstance::CInstance;

  void create();
  void room_start();
  void room_end();
  void alarm_centre();
  void alarm_restore();

  int mem_width = 0, mem_height = 0, mem_x = 0, mem_y = 0;

 private:
  void remember();
};

int32_t define_windows_size_ctrl();
