#include "environment/editor/art.h"

#include <filesystem>
#include <unordered_map>

#include "runtime/Code/Error.h"
#include "runtime/Graphics/SpriteDrawing.h"
#include "runtime/IO/FileNames.h"
#include "runtime/Sprite/Sprite.h"

namespace {

// Installed, the art stands in share/velant/assets beside the bin folder; run from the build, in the build's.
std::string art_folder() {
  const std::string installed = program_folder() + "../share/velant/assets/";
  std::error_code failed;
  return std::filesystem::is_directory(installed, failed) ? installed : VELANT_BUILD_ART;
}

// Loads picture `name` once, cut into `frames` frames side by side.
int32_t load_art(const std::string& name, int frames, bool centred) {
  static std::unordered_map<std::string, int32_t> loaded;
  // A missing picture is looked for once; a sprite table cleared since (a test) is filled again.
  if (auto found = loaded.find(name); found != loaded.end() && (found->second < 0 || sprite_exists(found->second))) {
    return found->second;
  }
  const std::string path = art_folder() + name + ".png";
  file_allow(path);
  const int32_t sprite = sprite_add(path, frames, false, true, 0, 0);
  if (sprite < 0) {
    debug_output("Velant: manca l'immagine " + path + "\n");
  } else if (centred) {
    CSprite* made = sprite_get(sprite);
    made->xorigin = made->width / 2;
    made->yorigin = made->height / 2;
  }
  loaded[name] = sprite;
  return sprite;
}

}  // namespace

int32_t art_sprite(const std::string& name) { return load_art(name, 1, true); }

int32_t panel_art(const std::string& name, int frames, bool centred) { return load_art(name, frames, centred); }

void draw_art(const std::string& name, double x, double y, double scale, double alpha) {
  const int32_t sprite = art_sprite(name);
  if (sprite >= 0) draw_sprite_ext(sprite, 0, x, y, scale, scale, 0, 0xFFFFFF, alpha);
}
