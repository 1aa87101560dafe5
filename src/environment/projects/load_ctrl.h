// load_ctrl: the open screen. It lists the saved projects as cards; a card
// opens its project, and the two icons of the card under the pointer rename
// or delete it after a question. ". . ." opens any text file the desktop's
// chooser gives. The program comes back to the editor cut into slides.
#pragma once

#include <cstdint>
#include <string>

#include "environment/projects/project_screen.h"

class LoadCtrl : public ProjectScreen {
 public:
  using ProjectScreen::ProjectScreen;

  void create();
  void step();
  void draw();
  void alarm_0();  // into the file room
  void alarm_2();  // back in the editor, nothing opened
  void alarm_3();  // back in the editor with the program
  void alarm_4();  // the desktop's chooser

  // The answers of the rename and delete questions about card `index`.
  void delete_card(int index);
  // False, with the question left standing, for a name that can't be used.
  bool rename_card(int index);

  int rinomina = 0, elimina = 0;  // 1 while the pointer is on that icon of the card under it
  std::string opened;             // the program read, on its way to the editor

 private:
  void press();
  void open_card(int index);
  void ask_rename(int index);
  void ask_delete(int index);
  void draw_card_icons(int index) const;
};

// The open screen, or null.
LoadCtrl* load_ctrl();
int32_t define_load_ctrl();
