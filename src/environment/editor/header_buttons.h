// The buttons of the editor's header strip: run, open, save, new project,
// the palette icons (icona_gen, which open the palette's panels) and the
// resource folder. Each shows its icon at three
// quarters of its size and, while the pointer is over it, its name.
#pragma once

#include <cstdint>

#include "runtime/Object/Instance.h"

// The fonts of the environment's package by index.
inline constexpr int32_t FONT_EDITOR = 0, FONT_TITLE = 2, FONT_LABEL = 3, FONT_LABEL_BOLD = 4;

class HeaderButton : public CInstance {
 public:
  using CInstance::CInstance;

  void step();
  void draw();
  // What a left press on the button does, with no modal box up.
  virtual void press();
  // Whether the pointer is within half the icon's size of the button's centre.
  bool hovered() const;

  int entry = 0;   // the button's row in the header's table
  int select = 0;  // a palette icon whose panel is open
};

// The header's buttons, in the order of its table; the run button is one of them.
void create_header_buttons();
// Whether button `object` (an icona_gen: of `image_index`) stays shown in the tutorial's mode.
bool shown_in_tutorial(int32_t object, float image_index);
int32_t define_header_buttons();
