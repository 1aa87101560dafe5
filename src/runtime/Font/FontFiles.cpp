#include "runtime/Font/FontFiles.h"
#include "runtime/IO/FileNames.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <unordered_map>
#include <vector>

namespace {

namespace fs = std::filesystem;

// A free face in the look of a name, by style; "" where the face has no
// such style of its own (the regular one is then thickened or slanted).
struct StandIn {
  std::string_view name;  // in lower case
  std::string_view regular, bold, italic, bold_italic;
};

constexpr StandIn STAND_INS[] = {
    {"arial.ttf", "LiberationSans-Regular.ttf", "LiberationSans-Bold.ttf", "LiberationSans-Italic.ttf",
     "LiberationSans-BoldItalic.ttf"},
    {"times_new_roman.ttf", "LiberationSerif-Regular.ttf", "LiberationSerif-Bold.ttf", "LiberationSerif-Italic.ttf",
     "LiberationSerif-BoldItalic.ttf"},
    {"verdana.ttf", "DejaVuSans.ttf", "DejaVuSans-Bold.ttf", "DejaVuSans-Oblique.ttf", "DejaVuSans-BoldOblique.ttf"},
    // Narrower than Verdana, as the face it stands for is.
    {"tahoma.ttf", "DejaVuSansCondensed.ttf", "DejaVuSansCondensed-Bold.ttf", "DejaVuSansCondensed-Oblique.ttf",
     "DejaVuSansCondensed-BoldOblique.ttf"},
    {"comic_sans.ttf", "ComicNeue-Regular.otf", "ComicNeue-Bold.otf", "ComicNeue-Italic.otf",
     "ComicNeue-BoldItalic.otf"},
    {"brush_script.ttf", "KaushanScript-Regular.otf", "", "", ""},
    {"old_english_text.ttf", "Blankenburg_UNZ1A.ttf", "", "", ""},
    // Thin, tall and jittery.
    {"chiller.ttf", "Kristi.ttf", "", "", ""},
    // Heavy display capitals; it has the accented letters that stencil faces lack.
    {"stencil.ttf", "FerriteCoreDX-Black.otf", "", "", ""},
    {"gigi.ttf", "DancingScript-Regular.otf", "DancingScript-Bold.otf", "", ""},
    // Rounded geometric, and heavy.
    {"bauhaus_93.ttf", "Comfortaa-Bold.ttf", "", "", ""},
    // The text style of a program that names the environment's own font.
    {"global.font.ttf", "DejaVuSansMono.ttf", "DejaVuSansMono-Bold.ttf", "DejaVuSansMono-Oblique.ttf",
     "DejaVuSansMono-BoldOblique.ttf"},
};

std::string lower_case(std::string_view text) {
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return lower;
}

std::vector<fs::path> font_folders() {
  std::vector<fs::path> folders = {"/usr/share/fonts", "/usr/local/share/fonts"};
  if (const char* home = std::getenv("HOME"); home && *home) {
    folders.emplace_back(fs::path(home) / ".local/share/fonts");
    folders.emplace_back(fs::path(home) / ".fonts");
  }
  return folders;
}

// The files of the font folders by their names in lower case, made at the
// first look-up: the folders hold a few hundred files, walked once.
const std::unordered_map<std::string, std::string>& font_folder_index() {
  static const std::unordered_map<std::string, std::string> index = [] {
    std::unordered_map<std::string, std::string> files;
    for (const fs::path& folder : font_folders()) {
      std::error_code error;
      for (fs::recursive_directory_iterator it(folder, fs::directory_options::skip_permission_denied, error), end;
           !error && it != end; it.increment(error)) {
        if (!it->is_regular_file(error)) continue;
        files.try_emplace(lower_case(it->path().filename().string()), it->path().string());
      }
    }
    return files;
  }();
  return index;
}

const StandIn* stand_in_for(std::string_view name) {
  const std::string lower = lower_case(name);
  for (const StandIn& s : STAND_INS) {
    if (s.name == lower) return &s;
  }
  return nullptr;
}

std::string stand_in_file(const StandIn& s, bool bold, bool italic) {
  const std::string_view styled = bold ? (italic ? s.bold_italic : s.bold) : (italic ? s.italic : s.regular);
  if (!styled.empty()) {
    if (std::string path = system_font_file(styled); !path.empty()) return path;
  }
  return system_font_file(s.regular);
}

}  // namespace

std::string system_font_file(std::string_view file_name) {
  const auto& index = font_folder_index();
  auto it = index.find(lower_case(file_name));
  return it == index.end() ? std::string() : it->second;
}

std::string font_file_find(std::string_view name, bool bold, bool italic) {
  if (name.empty()) return {};
  if (std::string path = file_read_path(name); !path.empty()) return path;
  if (std::string path = system_font_file(fs::path(name).filename().string()); !path.empty()) return path;
  const StandIn* stand_in = stand_in_for(name);
  return stand_in ? stand_in_file(*stand_in, bold, italic) : std::string();
}
