// What the rest of the system takes from funzioni_di_disegno: pictures
// loaded by the path a program writes, the missing-image placeholder, the
// background grid, and the cleaning up at the end of a run.
//
// A path may name a file with or without its extension, relative to the
// working directory, or a web address written "internet/...". Every picture
// loaded is noted in the image memory of the instance that runs the program
// (mem_ris and its sisters), so a program that draws it on every frame
// loads it once.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "language/evaluation/program_instance.h"

// What the drawing functions keep for one program between calls: the
// pictures loaded, by the path as written (mem_ris) with their sprite and
// origin; the frame counter of animated pictures; the grid and its surface;
// the surface that collects stamps.
struct DrawingMemory : FamilyMemory {
  std::vector<std::string> mem_ris = std::vector<std::string>(100);
  std::vector<int32_t> mem_ris_index = std::vector<int32_t>(100, -1);
  std::vector<double> mem_ris_x = std::vector<double>(100), mem_ris_y = std::vector<double>(100);
  int tot_mem_ris = 0;
  double subimage_index = 0;
  double sfondo_griglia = COLOUR_WHITE;
  double colore_griglia = COLOUR_LIGHT_GREY;
  double dimensione_griglia = 25;
  int32_t surf = -1;
  int32_t timbri = -1;
};
inline DrawingMemory& drawing_memory(ProgramInstance& p) { return p.family_memory<DrawingMemory>(); }

// The extensions that complete a file name written without one, in the
// order they are tried: ottieni_immagine tries ".gif" before ".jfif",
// disegna_immagine after.
inline constexpr std::string_view IMAGE_EXTENSIONS_OTTIENI[] = {".png", ".jpg", ".jpeg", ".bmp", ".gif", ".jfif"};
inline constexpr std::string_view IMAGE_EXTENSIONS_DISEGNA[] = {".png", ".jpg", ".jpeg", ".bmp", ".jfif", ".gif"};

// A path as a program wrote it, made ready to load.
struct ImagePath {
  std::string name;    // as written, quotes gone and extension completed; or the web address
  std::string file;    // where the file was found
  bool web = false;    // a web address
  bool found = false;  // a local file that exists
};

// Resolves `written`: backslashes become "/", "internet/" becomes
// "http://"; a file name without any of the known extensions takes the
// first of `extensions` for which a file exists. Files are looked for by
// the file name rule: the save area, the program's folder, Velant's data.
ImagePath resolve_image_path(std::string_view written, std::span<const std::string_view> extensions);

// How a picture becomes a sprite.
struct SpriteLoad {
  double frames = 1;         // side by side in the picture
  bool remove_back = false;  // the colour of the bottom-left pixel made transparent
  double xorigin = 0, yorigin = 0;
};

// Loads `path` as a sprite and counts it in global.tot_img_load. A
// picture that can't be had, and for now any web address (the web filter
// that must pass each one isn't there yet), gives the missing-image placeholder.
int32_t load_image_sprite(const ImagePath& path, const SpriteLoad& load);
// Notes `sprite`, with its origin, in the image memory of `p` under `memory_key`.
void remember_image(ProgramInstance& p, std::string_view memory_key, int32_t sprite, double xorigin, double yorigin);

// The missing-image placeholder: a grey box with a red cross, made in code
// at its first use and kept for the whole process.
int32_t missing_image_sprite();

// Draws the background grid of `p` on its surface `surf`, made or resized
// to the program's window: the colour sfondo_griglia, and every
// dimensione_griglia pixels a line in colore_griglia with its coordinate
// beside it at `label_scale`. The draw state is left as it was.
void draw_grid(ProgramInstance& p, double label_scale);

// What the run controller asks of the drawing functions around a run.
// At its start: the grid picture and the empty surface of the stamps.
void drawing_run_start(ProgramInstance& p);
// In every step: the stamps' surface made again when the device lost it.
void keep_stamps_surface(ProgramInstance& p);
// Before the frame is drawn: the grid picture made again when it was lost.
void keep_grid_picture(ProgramInstance& p);
// Onto the freshly cleared canvas: the grid, when it shows.
void draw_grid_picture(ProgramInstance& p);
// Over what the program drew: the stamps.
void draw_stamps(ProgramInstance& p);
// At the end of the run: its surfaces go, and every sprite that the drawing
// functions loaded or made for programs since the last run.
void drawing_run_end(ProgramInstance& p);

// Deletes every sprite that the drawing functions loaded or made for
// programs since the last call.
void delete_loaded_images();
