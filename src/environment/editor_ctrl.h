// The editor room's controller and its run button, as far as running a
// program needs them: the program's text in tabs (slide_text), and
// tasto_esegui, which joins the tabs, writes code.txt and starts the run.
// The editor screen itself stands on top of these.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "runtime/Object/Instance.h"

class EditorCtrl : public CInstance {
 public:
  using CInstance::CInstance;

  void create();
  void draw();

  // The program's text, one entry a tab, slide_text[1] to slide_text[n_slide]; entry 0 is unused.
  std::vector<std::string> slide_text;
  int n_slide = 0;
};

class TastoEsegui : public CInstance {
 public:
  using CInstance::CInstance;

  // The click or F5: the run starts one frame later, after the notice has been drawn once.
  void press();
  void alarm_0();
  void draw_end();

  int esegui = 0;
  std::string str, original_str;
  int fatal_error = 0;
};

// Over the whole of a `width` x `height` room, a veil at `veil_alpha`
// darkening towards the bottom, and "Interpretazione in corso ..." in its
// middle, while a run gets ready.
void draw_interpretation_notice(double width, double height, double veil_alpha);

// The editor controller, or null when there is none.
EditorCtrl* editor_ctrl();

int32_t define_editor_ctrl();
int32_t define_tasto_esegui();
