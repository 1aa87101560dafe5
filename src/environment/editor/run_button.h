// The run button, tasto_esegui: a click or F5 shows "Interpretazione in
// corso ...", checks the program, and hands it to the run room through
// code.txt; a fault keeps the learner in the editor with its message.
#pragma once

#include <cstdint>
#include <string>

#include "environment/editor/header_buttons.h"

class TastoEsegui : public HeaderButton {
 public:
  using HeaderButton::HeaderButton;

  // The click or F5: the run starts one frame later, after the notice has been drawn once.
  void press() override;
  void key_f5();
  void alarm_0();
  void draw_end();
  void room_start();

  int esegui = 0;
  std::string str, original_str;
  int fatal_error = 0;
};

// Over the whole of a `width` x `height` room, a veil at `veil_alpha`
// darkening towards the bottom, and "Interpretazione in corso ..." in its
// middle, while a run gets ready.
void draw_interpretation_notice(double width, double height, double veil_alpha);

int32_t define_tasto_esegui();
