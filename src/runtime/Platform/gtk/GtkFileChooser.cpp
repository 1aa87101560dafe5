// The desktop's own file chooser through GTK 3's native dialog, which hands
// the question to the desktop portal where one runs (and so shows the
// chooser the user knows), and shows GTK's own dialog elsewhere.
#include "runtime/Platform/Desktop.h"
#include "runtime/Platform/gtk/GtkLibrary.h"

namespace platform {
namespace {

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
    g_.settle();
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
