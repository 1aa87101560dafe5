#include "runtime/Platform/gtk/GtkMessageBox.h"

#include "runtime/Platform/gtk/GtkLibrary.h"

namespace platform {

int gtk_message_box(bool error, const std::string& title, const std::string& text, const DialogButton* buttons,
                    int count, int default_id, int escape_id) {
  const Gtk* g = gtk();
  if (!g) return -1;
  GtkWidget* box = g->message_dialog_new(nullptr, GTK_DIALOG_MODAL, error ? GTK_MESSAGE_ERROR : GTK_MESSAGE_INFO,
                                         GTK_BUTTONS_NONE, "%s", text.c_str());
  auto* dialog = reinterpret_cast<GtkDialog*>(box);
  auto* window = reinterpret_cast<GtkWindow*>(box);
  g->window_set_title(window, title.c_str());
  // Without a parent the box could fall behind the program's window.
  g->window_set_keep_above(window, TRUE);
  for (int k = 0; k < count; ++k) g->dialog_add_button(dialog, buttons[k].label, buttons[k].id);
  g->dialog_set_default_response(dialog, default_id);
  const int answer = g->message_dialog_run(dialog);
  g->widget_destroy(box);
  g->settle();
  return answer < 0 ? escape_id : answer;
}

}  // namespace platform
