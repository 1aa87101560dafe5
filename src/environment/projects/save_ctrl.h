// save_ctrl: the save screen. It takes the whole program as it opens, asks
// for a name (the open project's, to start with), shows the saved projects
// with the one the name would overwrite beating, and saves into the
// projects folder or, through ". . .", wherever the desktop's chooser says,
// without touching the index.
#pragma once

#include <cstdint>
#include <string>

#include "environment/projects/project_screen.h"

class SaveCtrl : public ProjectScreen {
 public:
  using ProjectScreen::ProjectScreen;

  void create();
  void step();
  void draw();
  void alarm_0();  // into the file room
  void alarm_1();  // the name field
  void alarm_2();  // back in the editor
  void alarm_4();  // the desktop's chooser

  std::string str;  // the program to be written
  std::string titolo_safe;
  double pulse = -1, pulse_step = 0.2;  // the beating frame of the card to be overwritten

 private:
  std::string typed_name() const;
  void press();
  void save_here();
};

int32_t define_save_ctrl();
