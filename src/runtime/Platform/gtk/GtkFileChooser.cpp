// The desktop's own file chooser through GTK 3's native dialog, which hands
// the question to the desktop portal where one runs (and so shows the
// chooser the user knows), and shows GTK's own dialog elsewhere.
#include <gtk/gtk.h>

#include "runtime/Platform/Desktop.h"

namespace platform {
namespace {

class DesktopFileChooser : public FileChooser {
 public:
  std::string choose(const FileQuestion& question) override {
    GtkFileChooserNative* native = gtk_file_chooser_native_new(
        question.save ? "Salva" : "Apri", nullptr,
        question.save ? GTK_FILE_CHOOSER_ACTION_SAVE : GTK_FILE_CHOOSER_ACTION_OPEN, nullptr, nullptr);
    GtkFileChooser* chooser = GTK_FILE_CHOOSER(native);
    for (const FileFilter& wanted : question.filters) {
      GtkFileFilter* filter = gtk_file_filter_new();
      gtk_file_filter_set_name(filter, wanted.name.c_str());
      for (const std::string& pattern : wanted.patterns) gtk_file_filter_add_pattern(filter, pattern.c_str());
      gtk_file_chooser_add_filter(chooser, filter);
    }
    if (question.save) {
      gtk_file_chooser_set_do_overwrite_confirmation(chooser, TRUE);
      if (!question.default_name.empty()) gtk_file_chooser_set_current_name(chooser, question.default_name.c_str());
    }
    // The dialog runs its own loop: the program waits, as for any modal dialog.
    std::string path;
    if (gtk_native_dialog_run(GTK_NATIVE_DIALOG(native)) == GTK_RESPONSE_ACCEPT) {
      if (char* chosen = gtk_file_chooser_get_filename(chooser)) {
        path = chosen;
        g_free(chosen);
      }
    }
    g_object_unref(native);
    // The closed dialog leaves the screen only once GTK has had its events.
    while (gtk_events_pending()) gtk_main_iteration();
    return path;
  }
};

}  // namespace

std::unique_ptr<FileChooser> make_desktop_file_chooser() {
  static const bool started = gtk_init_check(nullptr, nullptr);
  if (!started) return nullptr;
  return std::make_unique<DesktopFileChooser>();
}

}  // namespace platform
