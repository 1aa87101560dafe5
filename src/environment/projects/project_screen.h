// What the save screen and the open screen share: the list of saved
// projects as cards in columns of five, newest first, that scroll sideways
// when they run past the window; the name field; the buttons; and the way
// back to the editor. A screen is made in the editor room, lives on in the
// file room, and ends back in the editor room.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "environment/projects/project_index.h"
#include "runtime/Object/Instance.h"

class ObjInputText;

// What the desktop's chooser offers for a project: text files.
inline constexpr const char* PROJECT_FILES = "text |*.txt";

class ProjectScreen : public CInstance {
 public:
  using CInstance::CInstance;

  // Reads the index again: the cards follow it.
  void read_index();
  // The card under the pointer, counted from 0, or -1.
  int card_under_pointer() const;
  // Where card k stands: its left edge and top, with the scroll.
  double card_left(int k) const;
  double card_top(int k) const;

  std::vector<SavedProject> progetto;  // newest first
  double cc = 0;                       // the sideways scroll, 0 or less
  int32_t box_titolo = -1;             // the name field, while there is one

  // Takes the name field away.
  void close_name_field();

 protected:
  // The screen's ground, under everything.
  void draw_ground() const;
  // The cards in colours of `hue`; the hovered one darker when `hover`,
  // and the one titled `match` marked as about to be overwritten.
  void draw_cards(double hue, bool hover, const std::string& match, double pulse) const;
  // Moves the list when the pointer nears a side of the window and the last column is out of sight.
  void scroll();
  // A button centred at (x, 75) with its label, faded when `dimmed`.
  static void draw_button(const char* label, double x, const char* art, double width, bool dimmed);
  // The name field at (x, y), `width` wide, holding `text`, taking the keys.
  ObjInputText& make_name_field(double x, double y, double width, const std::string& text);
  ObjInputText* name_field() const;
  // Back in the editor room, where alarm `alarm_index` ends the screen.
  void back_to_editor(int alarm_index);
  // The code box takes the keys again, and the screen is over.
  void end_in_editor();
  // A press on the window's close button acts as "Annulla".
  void answer_close_request();
};

// The white rounded frame of a name field, and the label over it.
void draw_name_frame(double x1, double y1, double x2, double y2);
