// main_code_ctrl: the one instance of the room main_room that runs a
// Velant program. Its Create makes the tokens and the variables from
// code.txt; one frame later the block "INIZIA" runs once; from the second
// Draw on, every Draw runs the block "CICLO CONTINUO". Around the program it
// draws the grid, the stamps, the rulers and the protractor, keeps the
// window the size the program asks for, and ends the run at Esc, at the
// window's close button or at a program error, going back to the room Editor.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "language/evaluation/program_instance.h"
#include "runtime/Object/Instance.h"

class MainCodeCtrl : public CInstance {
 public:
  MainCodeCtrl(float x, float y, int32_t id, int32_t object);
  ~MainCodeCtrl() override;

  void create();
  void alarm_0();
  void step();
  void draw_begin();
  void draw();
  void draw_end();
  void draw_gui_end();
  void room_end();
  void key_escape();

  ProgramInstance& program() { return *program_; }

  // Steps since the start (the Draws are the program's `time`).
  int64_t step_count = 0;
  int fullscreen = 0;
  int restart = 0, restart_time = 0;
  bool debug = false;
  int debug_scroll = 0;

 private:
  // Runs positions `from` to `to` of the program, guarded.
  void run_block(int from, int to);

  std::unique_ptr<ProgramInstance> program_;
};

// Registers main_code_ctrl; returns its object index.
int32_t define_main_code_ctrl();

// The variable table of the last run, as it stood when the run ended: names and value texts in table order.
const std::vector<std::pair<std::string, std::string>>& last_run_variables();
