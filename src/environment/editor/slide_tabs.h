// The slide tabs, `scheda`: one on the right edge for each slide of the
// program while there are two or more. A press shows its slide; the tab of
// the slide on show stands in front. From five slides on the tabs shrink so
// that all of them stay on screen.
#pragma once

#include <cstdint>

#include "runtime/Object/Instance.h"

class Scheda : public CInstance {
 public:
  using CInstance::CInstance;

  void step();
  void draw();

  int index = 1;   // the slide it stands for
  int attiva = 0;  // 1 on the tab of the slide on show
};

inline constexpr float TAB_X = 1280, TAB_TOP = 50, TAB_STEP = 140;

// The tab of slide `slide`, made where its number puts it.
void create_tab(int slide);
void destroy_tabs();
void show_tabs(bool visible);
int32_t define_scheda();
