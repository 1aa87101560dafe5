// The desktop's own file chooser through GTK 3's native dialog, which hands
// the question to the desktop portal where one runs (and so shows the
// chooser the user knows), and shows GTK's own dialog elsewhere.
//
// GTK is loaded when the first dialog opens, not at start: Velant starts
// as fast without it, and runs where it is missing (no dialog then).
#include <dlfcn.h>
#include <gtk/gtk.h>

#include "runtime/Platform/Desktop.h"

namespace platform {
namespace {

// The GTK functions the chooser calls, looked up in the loaded library.
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
  decltype(&gtk_events_pending) events_pending;
  decltype(&gtk_main_iteration) main_iteration;
  decltype(&g_free) free;
  decltype(&g_object_unref) object_unref;
};

template <class F>
bool look_up(void* library, const char* name, F& function) {
  function = reinterpret_cast<F>(dlsym(library, name));
  return function != nullptr;
}

// GTK, loaded and started once; null when it can't be.
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
        look_up(library, "gtk_events_pending", g.events_pending) &&
        look_up(library, "gtk_main_iteration", g.main_iteration) && look_up(library, "g_free", g.free) &&
        look_up(library, "g_object_unref", g.object_unref);
    return found && g.init_check(nullptr, nullptr) ? &g : nullptr;
  }();
  return loaded;
}

class DesktopFileChooser : public FileChooser {
 public:
  explicit DesktopFileChooser(const Gtk& gtk) : g_(gtk) {}

  std::string choose(const FileQuestion& question) override {
    GtkFileChooserNative* native = g_.native_new(
        question.save ? "Salva" : "Apri", nullptr,
        question.save ? GTK_FILE_CHOOSER_ACTION_SAVE : GTK_FILE_CHOOSER_ACTION_OPEN, nullptr, nullptr);
    // The native dialog is a file chooser: the same object seen through that interface.
    auto* chooser = reinterpret_cast<GtkFileChooser*>(native);
    for (const FileFilter& wanted : question.filters) {
      GtkFileFilter* filter = g_.filter_new();
      g_.filter_set_name(filter, wanted.name.c_str());
      for (const std::string& pattern : wanted.patterns) g_.filter_add_pattern(filter, pattern.c_str());
      g_.add_filter(chooser, filter);
    }
    // A default with a folder in it opens there, with the rest as the name.
    const size_t slash = question.default_name.rfind('/');
    const std::string folder = slash == std::string::npos ? "" : question.default_name.substr(0, slash + 1);
    const std::string name = question.default_name.substr(slash == std::string::npos ? 0 : slash + 1);
    if (!folder.empty()) g_.set_current_folder(chooser, folder.c_str());
    if (question.save) {
      g_.confirm_overwrite(chooser, TRUE);
      if (!name.empty()) g_.set_current_name(chooser, name.c_str());
    }
    // The dialog runs its own loop: the program waits, as for any modal dialog.
    std::string path;
    if (g_.dialog_run(reinterpret_cast<GtkNativeDialog*>(native)) == GTK_RESPONSE_ACCEPT) {
      if (char* chosen = g_.get_filename(chooser)) {
        path = chosen;
        g_.free(chosen);
      }
    }
    g_.object_unref(native);
    // The closed dialog leaves the screen only once GTK has had its events.
    while (g_.events_pending()) g_.main_iteration();
    return path;
  }

 private:
  const Gtk& g_;
};

}  // namespace

std::unique_ptr<FileChooser> make_desktop_file_chooser() {
  const Gtk* loaded = gtk();
  if (!loaded) return nullptr;
  return std::make_unique<DesktopFileChooser>(*loaded);
}

}  // namespace platform
