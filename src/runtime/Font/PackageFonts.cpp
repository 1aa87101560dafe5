#include "runtime/Font/PackageFonts.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "runtime/Code/Error.h"
#include "runtime/Font/Font.h"
#include "runtime/Support/AssetIndex.h"

namespace {

struct PackageFont {
  std::string_view asset;
  // Font files in the order they are tried; "" for none.
  std::array<std::string_view, 2> files;
  double size;  // pixels
  bool bold;
};

// In asset index order. The sizes are those at which each face has the
// cells the editor counts with.
constexpr PackageFont PACKAGE_FONTS[] = {
    {"fnt_editor", {"DejaVuSansMono.ttf", "LiberationMono-Regular.ttf"}, 12, false},
    {"fnt_editor_grassetto", {"DejaVuSansMono-Bold.ttf", "LiberationMono-Bold.ttf"}, 12, true},
    {"fnt_titolo", {"LiberationSans-Bold.ttf", "DejaVuSans-Bold.ttf"}, 48, true},
    {"fnt_etichette", {"LiberationSans-Regular.ttf", "DejaVuSans.ttf"}, 16, false},
    {"fnt_etichette_grassetto", {"LiberationSans-Bold.ttf", "DejaVuSans-Bold.ttf"}, 16, true},
    {"fnt_dislessia", {"OpenDyslexicMono-Regular.otf", ""}, 12, false},
    // The face has no bold of its own: thickened, it keeps its cells.
    {"fnt_dislessia_grassetto", {"OpenDyslexicMono-Regular.otf", ""}, 12, true},
};

std::unique_ptr<CFontQm> load_package_font(std::string_view asset) {
  const PackageFont& entry = *std::ranges::find(PACKAGE_FONTS, asset, &PackageFont::asset);
  std::unique_ptr<CFontQm> font = font_load_first({entry.files[0], entry.files[1]}, entry.size, entry.bold, false);
  if (!font) {
    debug_output("Font " + std::string(entry.asset) + ": no font file found, it takes the default font's face\n");
    font = font_load_default_face(entry.size, entry.bold);
  }
  font->name = entry.asset;
  return font;
}

}  // namespace

void register_package_fonts() {
  for (const PackageFont& entry : PACKAGE_FONTS) {
    font_put_on_first_use(asset_add(AssetKind::Font, entry.asset), std::string(entry.asset), load_package_font);
  }
}
