#include "runtime/Platform/gtk/GtkLibrary.h"

#include <dlfcn.h>

namespace platform {
namespace {

template <class F>
bool look_up(void* library, const char* name, F& function) {
  function = reinterpret_cast<F>(dlsym(library, name));
  return function != nullptr;
}

}  // namespace

const Gtk* gtk() {
  static const Gtk* loaded = []() -> const Gtk* {
    void* library = dlopen("libgtk-3.so.0", RTLD_NOW | RTLD_GLOBAL);
    if (!library) return nullptr;
    static Gtk g;
    const bool found =
        look_up(library, "gtk_init_check", g.init_check) && look_up(library, "gtk_file_chooser_native_new", g.native_new) &&
        look_up(library, "gtk_file_filter_new", g.filter_new) &&
        look_up(library, "gtk_file_filter_set_name", g.filter_set_name) &&
        look_up(library, "gtk_file_filter_add_pattern", g.filter_add_pattern) &&
        look_up(library, "gtk_file_chooser_add_filter", g.add_filter) &&
        look_up(library, "gtk_file_chooser_set_do_overwrite_confirmation", g.confirm_overwrite) &&
        look_up(library, "gtk_file_chooser_set_current_name", g.set_current_name) &&
        look_up(library, "gtk_file_chooser_set_current_folder", g.set_current_folder) &&
        look_up(library, "gtk_native_dialog_run", g.dialog_run) &&
        look_up(library, "gtk_file_chooser_get_filename", g.get_filename) &&
        look_up(library, "gtk_message_dialog_new", g.message_dialog_new) &&
        look_up(library, "gtk_window_set_title", g.window_set_title) &&
        look_up(library, "gtk_window_set_keep_above", g.window_set_keep_above) &&
        look_up(library, "gtk_dialog_add_button", g.dialog_add_button) &&
        look_up(library, "gtk_dialog_set_default_response", g.dialog_set_default_response) &&
        look_up(library, "gtk_dialog_run", g.message_dialog_run) &&
        look_up(library, "gtk_widget_destroy", g.widget_destroy) &&
        look_up(library, "gtk_events_pending", g.events_pending) &&
        look_up(library, "gtk_main_iteration", g.main_iteration) && look_up(library, "g_free", g.free) &&
        look_up(library, "g_object_unref", g.object_unref);
    return found && g.init_check(nullptr, nullptr) ? &g : nullptr;
  }();
  return loaded;
}

}  // namespace platform
