// A message box of the desktop's look, through GTK: the text, a title, and
// buttons that answer with their ids.
#pragma once

#include <string>

namespace platform {

struct DialogButton {
  int id;
  const char* label;
};

// The id of the button pressed, `escape_id` when the box was closed
// otherwise, or -1 when GTK can't be had.
int gtk_message_box(bool error, const std::string& title, const std::string& text, const DialogButton* buttons,
                    int count, int default_id, int escape_id);

}  // namespace platform
