// The pictures of funzioni_di_disegno: disegna_immagine, disegna_fotogramma,
// ottieni_immagine, and the loading of a picture by the path that a program
// writes, with the image memory that makes a picture load only once.
//
// A learner's picture may be missing, damaged or not a picture at all, and
// a handle may name no sprite: none of that ever reaches a built-in that
// would stop the run. What can't be had is drawn as the missing-image
// placeholder, or, for a handle that names nothing, not drawn.
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <vector>

#include "families/funzioni_di_disegno.h"
#include "families/funzioni_di_disegno_condivise.h"
#include "families/value_function.h"
#include "language/evaluation/numeric_expression.h"
#include "language/evaluation/program_instance.h"
#include "language/tokenizer/text_edit.h"
#include "runtime/Graphics/Primitives.h"
#include "runtime/IO/FileNames.h"
#include "runtime/Graphics/SpriteDrawing.h"
#include "runtime/Graphics/Surfaces.h"
#include "runtime/Room/FrameState.h"
#include "runtime/Sprite/Sprite.h"

namespace {

// [SECTION] Paths and the image memory

// Backslashes in a path become "/", and a drive letter that the tokeniser spaced ("C: /") is joined again.
std::string normalised_separators(std::string_view text) {
  std::string out(text);
  std::ranges::replace(out, '\\', '/');
  text_edit::replace_all(out, ": /", ":/");
  return out;
}


// The sprites loaded or made for programs, which the end of a run deletes.
std::vector<int32_t>& loaded_sprites() {
  static std::vector<int32_t> sprites;
  return sprites;
}

// `value` when it is a number within [low, high], else `otherwise`: what
// reaches the runtime's integer conversions is always in range.
double bounded(double value, double low, double high, double otherwise) {
  return value >= low && value <= high ? value : otherwise;
}

constexpr double LARGEST_ORIGIN = 1e6, MOST_FRAMES = 1e6, LARGEST_SURFACE = 8192;

// The sprite that a handle names, or -1 for a number that can name none.
// 0, what the default "Not found" and any unknown name come to, is the
// placeholder: sprite 0 is the environment's, or the placeholder itself
// where the environment has none, never a program's picture.
int32_t sprite_of_handle(double handle) {
  if (handle == 0) return missing_image_sprite();
  return static_cast<int32_t>(bounded(handle, 0, std::numeric_limits<int32_t>::max(), -1));
}

// [SECTION] The missing-image placeholder

constexpr std::string_view PLACEHOLDER_NAME = "__immagine_mancante";
constexpr int PLACEHOLDER_SIDE = 32;

// A light grey box with a dark edge, crossed corner to corner in red.
std::vector<uint8_t> placeholder_pixels() {
  std::vector<uint8_t> rgba(static_cast<size_t>(PLACEHOLDER_SIDE) * PLACEHOLDER_SIDE * 4);
  const int last = PLACEHOLDER_SIDE - 1;
  for (int y = 0; y < PLACEHOLDER_SIDE; ++y) {
    for (int x = 0; x < PLACEHOLDER_SIDE; ++x) {
      uint8_t* px = &rgba[(static_cast<size_t>(y) * PLACEHOLDER_SIDE + x) * 4];
      const bool edge = x == 0 || y == 0 || x == last || y == last;
      const bool cross = std::abs(x - y) <= 1 || std::abs(x + y - last) <= 1;
      const uint8_t grey = edge ? 96 : 200;
      px[0] = cross && !edge ? 255 : grey;
      px[1] = cross && !edge ? 0 : grey;
      px[2] = cross && !edge ? 0 : grey;
      px[3] = 255;
    }
  }
  return rgba;
}

// [SECTION] Drawing a picture

// Keys that disegna_immagine and disegna_fotogramma share.
constexpr int X = 1, Y = 2, XSCALE = 3, YSCALE = 4, TURN = 5, COLOUR = 6, ALPHA = 7, PICTURE = 8;
constexpr ArgumentKey PLACEMENT_KEYS[] = {
    {"(X:", X, "150"},
    {"(Y:", Y, "150"},
    {"(SCALA_ASSE_X:", XSCALE, "1"},
    {"(SCALA_ASSE_Y:", YSCALE, "1"},
    {"(ROTAZIONE:", TURN, "0"},
    {"(COLORE:", COLOUR, "16777215"},
    {"(TRASPARENZA:", ALPHA, "1"},
    {"(IMMAGINE:", PICTURE, "Not found"},
};

// The keys that both drawing statements share, and `more` of the statement's own.
template <size_t N>
constexpr std::array<ArgumentKey, std::size(PLACEMENT_KEYS) + N> placement_and(const ArgumentKey (&more)[N]) {
  std::array<ArgumentKey, std::size(PLACEMENT_KEYS) + N> keys{};
  std::ranges::copy(PLACEMENT_KEYS, keys.begin());
  std::ranges::copy(more, keys.begin() + std::size(PLACEMENT_KEYS));
  return keys;
}

void draw_placed(ProgramInstance& p, int32_t sprite, double frame) {
  draw_sprite_ext(sprite, frame, slot_number(p, X), slot_number(p, Y), slot_number(p, XSCALE), slot_number(p, YSCALE),
                  slot_number(p, TURN), slot_number(p, COLOUR), slot_number(p, ALPHA));
}

constexpr int32_t NOT_REMEMBERED = std::numeric_limits<int32_t>::min();

// Whether `entry` is `key` once its double quotes are left out.
bool same_without_quotes(std::string_view entry, std::string_view key) {
  size_t k = 0;
  for (const char c : entry) {
    if (c == '"') continue;
    if (k == key.size() || key[k] != c) return false;
    ++k;
  }
  return k == key.size();
}

// The sprite remembered under `key`, entries compared without their quotes; NOT_REMEMBERED when there is none.
int32_t remembered_image(ProgramInstance& p, std::string_view key) {
  const DrawingMemory& memory = drawing_memory(p);
  for (int k = 0; k < memory.tot_mem_ris; ++k) {
    if (same_without_quotes(memory.mem_ris[static_cast<size_t>(k)], key)) return memory.mem_ris_index[static_cast<size_t>(k)];
  }
  return NOT_REMEMBERED;
}


// [SECTION] ottieni_immagine

constexpr int NAME = 1, XORIGIN = 2, YORIGIN = 3, REMOVE_BACK = 4, FRAMES = 5, TINT = 6, SCALE_X = 7, SCALE_Y = 8,
              OPACITY = 9, ROTATION = 10, HEIGHT = 11, WIDTH = 12, CUT_X = 13, CUT_Y = 14;

// An origin key; "al centro" gives no centre here, only the corner.
double origin_of(ProgramInstance& p, int slot) {
  if (slot_source(p, slot) == "\"al centro\"") return 0;
  return bounded(slot_number(p, slot), -LARGEST_ORIGIN, LARGEST_ORIGIN, 0);
}

// A side of the rebuilt picture: the key's number unless it is "not_set", then the picture's own.
double side_of(ProgramInstance& p, int slot, double own) {
  const double side = slot_source(p, slot) == "not_set" ? own : slot_number(p, slot);
  return bounded(side, 1, LARGEST_SURFACE, side > LARGEST_SURFACE ? LARGEST_SURFACE : 1);
}

// A picture asked for with 0 frames is drawn once, scaled, turned, tinted,
// on a surface of the size asked, and the rectangle at (X, Y) of it becomes
// the sprite. The sprite as loaded is kept when that can't be done.
int32_t rebuilt(ProgramInstance& p, int32_t sprite, const SpriteLoad& load) {
  const double width = side_of(p, WIDTH, sprite_get_width(sprite));
  const double height = side_of(p, HEIGHT, sprite_get_height(sprite));
  const int32_t surface = surface_create(width, height);
  if (!surface_exists(surface)) return sprite;
  surface_set_target(surface);
  draw_clear_alpha(0, 0);
  draw_sprite_ext(sprite, 0, load.xorigin, load.yorigin, slot_number(p, SCALE_X), slot_number(p, SCALE_Y),
                  slot_number(p, ROTATION), slot_number(p, TINT), slot_number(p, OPACITY));
  surface_reset_target();
  const int32_t made = sprite_create_from_surface(surface, bounded(slot_number(p, CUT_X), 0, width - 1, 0),
                                                  bounded(slot_number(p, CUT_Y), 0, height - 1, 0), width, height,
                                                  false, true, load.xorigin, load.yorigin);
  surface_free(surface);
  if (made < 0) return sprite;
  std::erase(loaded_sprites(), sprite);
  sprite_delete(sprite);
  loaded_sprites().push_back(made);
  return made;
}

}  // namespace

// The sprite that IMMAGINE names: a path, loaded at
// its first use and found in the image memory after; or a handle.
int32_t picture_of(ProgramInstance& p, const std::string& written) {
  const std::string value = normalised_separators(calculate_string(p, written));
  if (!value.starts_with('"')) return sprite_of_handle(string_is_real(value));
  // The statement runs on every frame: a path found as written needs no
  // look at the disk to complete it.
  if (const int32_t remembered = remembered_image(p, without_quotes(value)); remembered != NOT_REMEMBERED) {
    return remembered;
  }
  const ImagePath path = resolve_image_path(value, IMAGE_EXTENSIONS_DISEGNA);
  const std::string key = path.web ? without_quotes(value) : path.name;
  if (const int32_t remembered = remembered_image(p, key); remembered != NOT_REMEMBERED) return remembered;
  const int32_t sprite = load_image_sprite(path, {});
  remember_image(p, key, sprite, 0, 0);
  return sprite;
}

ImagePath resolve_image_path(std::string_view written, std::span<const std::string_view> extensions) {
  static constexpr std::string_view WEB_PREFIX = "internet/";
  const std::string text = normalised_separators(written);
  ImagePath path{without_quotes(text)};
  if (text_edit::contains(text, WEB_PREFIX)) {
    text_edit::replace_all(path.name, WEB_PREFIX, "http://");
    path.web = true;
    return path;
  }
  const bool has_extension =
      std::ranges::any_of(extensions, [&](std::string_view e) { return text_edit::contains(path.name, e); });
  if (!has_extension) {
    for (std::string_view extension : extensions) {
      if (path.file = file_read_path(path.name + std::string(extension)); !path.file.empty()) {
        path.name += extension;
        break;
      }
    }
  }
  if (path.file.empty()) path.file = file_read_path(path.name);
  path.found = !path.file.empty();
  return path;
}

int32_t load_image_sprite(const ImagePath& path, const SpriteLoad& load) {
  set_global_number("tot_img_load", global_number("tot_img_load") + 1);
  // The placeholder comes before the first picture: where the environment
  // has no sprites of its own it takes sprite 0, the one a handle of 0 names.
  const int32_t placeholder = missing_image_sprite();
  if (path.web || !path.found) return placeholder;
  const int32_t sprite = sprite_add(path.file, bounded(load.frames, 1, MOST_FRAMES, 1), load.remove_back, true,
                                    bounded(load.xorigin, -LARGEST_ORIGIN, LARGEST_ORIGIN, 0),
                                    bounded(load.yorigin, -LARGEST_ORIGIN, LARGEST_ORIGIN, 0));
  if (!sprite_exists(sprite)) return placeholder;
  loaded_sprites().push_back(sprite);
  return sprite;
}

void remember_image(ProgramInstance& p, std::string_view memory_key, int32_t sprite, double xorigin, double yorigin) {
  DrawingMemory& memory = drawing_memory(p);
  const auto n = static_cast<size_t>(memory.tot_mem_ris);
  if (n >= memory.mem_ris.size()) {
    memory.mem_ris.resize(n + 1);
    memory.mem_ris_index.resize(n + 1, -1);
    memory.mem_ris_x.resize(n + 1);
    memory.mem_ris_y.resize(n + 1);
  }
  memory.mem_ris[n] = memory_key;
  memory.mem_ris_index[n] = sprite;
  memory.mem_ris_x[n] = xorigin;
  memory.mem_ris_y[n] = yorigin;
  ++memory.tot_mem_ris;
}

int32_t missing_image_sprite() {
  static int32_t index = -1;
  if (const CSprite* sprite = sprite_get(index);
      sprite && sprite->name == PLACEHOLDER_NAME && !sprite->images.empty()) {
    return index;
  }
  // The sprite's name keeps its index, so a table cleared by a restart gets it back in the same place.
  index = sprite_add_shape(std::string(PLACEHOLDER_NAME), PLACEHOLDER_SIDE, PLACEHOLDER_SIDE, 0, 0, 1);
  CSprite* sprite = sprite_get(index);
  sprite->images.resize(1);
  sprite->images[0].rgba = placeholder_pixels();
  return index;
}

void delete_loaded_images() {
  for (int32_t sprite : loaded_sprites()) {
    if (sprite_exists(sprite)) sprite_delete(sprite);
  }
  loaded_sprites().clear();
}

void disegna_immagine(ProgramInstance& p, int i) {
  static constexpr int SPEED = 9, BOX_WIDTH = 10, BOX_HEIGHT = 11;
  static constexpr ArgumentKey OWN_KEYS[] = {
      {"(VELOCITA_ANIMAZIONE:", SPEED, "100"}, {"(LARGHEZZA:", BOX_WIDTH, "?"}, {"(ALTEZZA:", BOX_HEIGHT, "?"}};
  static constexpr auto KEYS = placement_and(OWN_KEYS);
  read_arguments(p, i, CallShape::Statement, KEYS);
  const int32_t sprite = picture_of(p, slot_source(p, PICTURE));
  if (!sprite_exists(sprite)) return;

  // One frame counter for all the pictures of the instance, in frames a second of the game.
  double& frame = drawing_memory(p).subimage_index;
  frame += slot_number(p, SPEED) / std::max(frame_state().game_speed, 1);
  if (!(frame <= sprite_get_number(sprite))) frame = 0;

  if (slot_source(p, BOX_WIDTH) != "?" && slot_source(p, BOX_HEIGHT) != "?") {
    draw_sprite_stretched_ext(sprite, frame, slot_number(p, X), slot_number(p, Y),
                              slot_number(p, XSCALE) * slot_number(p, BOX_WIDTH),
                              slot_number(p, YSCALE) * slot_number(p, BOX_HEIGHT), slot_number(p, COLOUR),
                              slot_number(p, ALPHA));
  } else {
    draw_placed(p, sprite, frame);
  }
}

void disegna_fotogramma(ProgramInstance& p, int i) {
  static constexpr int FRAME = 9;
  static constexpr ArgumentKey OWN_KEYS[] = {{"(FOTOGRAMMA:", FRAME, "100"}};
  static constexpr auto KEYS = placement_and(OWN_KEYS);
  read_arguments(p, i, CallShape::Statement, KEYS);
  // IMMAGINE is a handle here, never a path.
  const int32_t sprite = sprite_of_handle(slot_number(p, PICTURE));
  if (!sprite_exists(sprite)) return;
  draw_placed(p, sprite, slot_number(p, FRAME));
}

void ottieni_immagine(ProgramInstance& p, int i) {
  static constexpr ArgumentKey KEYS[] = {
      {"(NOME:", NAME, "Not found"},
      {"(ORIGINE_X:", XORIGIN, "0"},
      {"(ORIGINE_Y:", YORIGIN, "0"},
      {"(RIMUOVI_SFONDO:", REMOVE_BACK, "0"},
      {"(FOTOGRAMMI:", FRAMES, "1"},
      {"(COLORE:", TINT, "16777215"},
      {"(SCALA_ASSE_X:", SCALE_X, "1"},
      {"(SCALA_ASSE_Y:", SCALE_Y, "1"},
      {"(TRASPARENZA:", OPACITY, "1"},
      {"(ROTAZIONE:", ROTATION, "0"},
      {"(ALTEZZA:", HEIGHT, "not_set"},
      {"(LARGHEZZA:", WIDTH, "not_set"},
      {"(X:", CUT_X, "0"},
      {"(Y:", CUT_Y, "0"},
  };
  read_arguments(p, i, CallShape::Value, KEYS);
  // A name loaded before, as written: the variable keeps what it has, so a
  // program may ask on every frame and load once.
  const std::string written = slot_source(p, NAME);
  const DrawingMemory& memory = drawing_memory(p);
  for (int k = 0; k < memory.tot_mem_ris; ++k) {
    if (memory.mem_ris[static_cast<size_t>(k)] == written) return;
  }
  const ImagePath path = resolve_image_path(written, IMAGE_EXTENSIONS_OTTIENI);
  const SpriteLoad load{slot_number(p, FRAMES), is_true(slot_number(p, REMOVE_BACK)), origin_of(p, XORIGIN),
                        origin_of(p, YORIGIN)};
  int32_t sprite = load_image_sprite(path, load);
  if (load.frames == 0 && sprite != missing_image_sprite()) sprite = rebuilt(p, sprite, load);
  remember_image(p, written, sprite, load.xorigin, load.yorigin);
  give_number(p, i, sprite, NumberForm::Exact);
}
