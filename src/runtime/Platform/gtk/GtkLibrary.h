// GTK 3, for the dialogs of the desktop: the file chooser and the message
// boxes. It is loaded when the first dialog opens, not at start: Velant
// starts as fast without it, and runs where it is missing.
#pragma once

#include <gtk/gtk.h>

namespace platform {

// The GTK functions the dialogs call, looked up in the loaded library.
struct Gtk {
  decltype(&gtk_init_check) init_check;
  decltype(&gtk_file_chooser_native_new) native_new;
  decltype(&gtk_file_filter_new) filter_new;
  decltype(&gtk_file_filter_set_name) filter_set_name;
  decltype(&gtk_file_filter_add_pattern) filter_add_pattern;
  decltype(&gtk_file_chooser_add_filter) add_filter;
  decltype(&gtk_file_chooser_set_do_overwrite_confirmation) confirm_overwrite;
  decltype(&gtk_file_chooser_set_current_name) set_current_name;
  decltype(&gtk_file_chooser_set_current_folder) set_current_folder;
  decltype(&gtk_native_dialog_run) dialog_run;
  decltype(&gtk_file_chooser_get_filename) get_filename;
  decltype(&gtk_message_dialog_new) message_dialog_new;
  decltype(&gtk_window_set_title) window_set_title;
  decltype(&gtk_window_set_keep_above) window_set_keep_above;
  decltype(&gtk_dialog_add_button) dialog_add_button;
  decltype(&gtk_dialog_set_default_response) dialog_set_default_response;
  decltype(&gtk_dialog_run) message_dialog_run;
  decltype(&gtk_widget_destroy) widget_destroy;
  decltype(&gtk_events_pending) events_pending;
  decltype(&gtk_main_iteration) main_iteration;
  decltype(&g_free) free;
  decltype(&g_object_unref) object_unref;

  // Lets GTK finish what its closed dialogs left, so that they leave the screen.
  void settle() const {
    while (events_pending()) main_iteration();
  }
};

// GTK, loaded and started once; null when it can't be.
const Gtk* gtk();

}  // namespace platform
