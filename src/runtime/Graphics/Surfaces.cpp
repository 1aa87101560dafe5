#include "runtime/Graphics/Surfaces.h"

#include <algorithm>
#include <array>
#include <unordered_map>
#include <vector>

#include "runtime/Code/Error.h"
#include "runtime/Graphics/Batch.h"
#include "runtime/Graphics/Blit.h"
#include "runtime/Graphics/Colour.h"
#include "runtime/Graphics/DrawState.h"
#include "runtime/Graphics/ImageFile.h"
#include "runtime/IO/FileNames.h"

namespace {

struct Surface {
  platform::TextureId texture = 0;
  uint64_t generation = 0;  // the device context it was made on
  int width = 0, height = 0;
  uint64_t version = 0;  // changes whenever the contents may have
};

// A target as the stack keeps it: the surface (or the window) with the
// projection and size it had.
struct Target {
  int32_t surface = NO_SURFACE;
  int width = 0, height = 0;
  std::array<float, 16> projection{};
};

// The last clear of a target, and what had been drawn by then.
struct Clear {
  int32_t surface = NO_SURFACE - 1;  // no target at all
  uint64_t version = 0;
  uint64_t sends = 0;
  uint32_t colour = 0;
  double alpha = 0;
};

struct Surfaces {
  std::unordered_map<int32_t, Surface> table;
  uint64_t versions = 0;
  Clear clear;
  int32_t next_id = 0;
  std::vector<Target> stack;  // targets set by the program, each with the one before it
  Target current;
  int32_t application = NO_SURFACE;
  bool application_enabled = true;
  int pending_width = 0, pending_height = 0;  // a resize of the application surface, for the next frame
};

Surfaces& surfaces() {
  static Surfaces s;
  return s;
}

int32_t id_of(double surface) { return static_cast<int32_t>(surface); }

// The surface record when it exists on the device as it is now; a surface
// of an earlier context is forgotten.
Surface* find(double id) {
  Surfaces& s = surfaces();
  auto it = s.table.find(id_of(id));
  if (it == s.table.end()) return nullptr;
  if (!platform::gpu().ready() || it->second.generation != platform::gpu().generation()) {
    s.table.erase(it);
    return nullptr;
  }
  return &it->second;
}

bool on_stack(int32_t id) {
  const Surfaces& s = surfaces();
  return s.current.surface == id ||
         std::any_of(s.stack.begin(), s.stack.end(), [&](const Target& t) { return t.surface == id; });
}

void make_current(const Target& target) {
  batch_flush();
  Surfaces& s = surfaces();
  s.current = target;
  Surface* surface = target.surface == NO_SURFACE ? nullptr : find(target.surface);
  // Whatever is drawn from now on may change it.
  if (surface) surface->version = ++s.versions;
  platform::gpu().set_target(surface ? surface->texture : 0, target.width, target.height);
  draw_state().projection = target.projection;
  apply_transform();
}

bool make_texture(Surface& surface, int width, int height) {
  platform::Gpu& gpu = platform::gpu();
  surface = {gpu.create_texture(width, height, platform::TextureFormat::Rgba8, {}, true), gpu.generation(), width,
             height, ++surfaces().versions};
  return surface.texture != 0;
}

}  // namespace

int32_t surface_create(double width, double height, double format) {
  if (width < 1 || height < 1) {
    ReportError("Can't create a surface with either a width or height with a value less than or equal to zero");
    return NO_SURFACE;
  }
  if (static_cast<int>(format) != 6) {
    ReportError("Surface can't be created with format %d\n", static_cast<int>(format));
    return NO_SURFACE;
  }
  Surfaces& s = surfaces();
  const int32_t id = s.next_id++;
  Surface surface;
  // Without a graphics device the id is given all the same; the surface doesn't exist.
  if (make_texture(surface, static_cast<int>(width), static_cast<int>(height))) s.table[id] = surface;
  return id;
}

bool surface_exists(double surface) { return find(surface) != nullptr; }

double surface_get_width(double surface) {
  const Surface* s = find(surface);
  return s ? s->width : -1;
}

double surface_get_height(double surface) {
  const Surface* s = find(surface);
  return s ? s->height : -1;
}

platform::TextureId surface_texture(double surface) {
  const Surface* s = find(surface);
  return s ? s->texture : 0;
}

bool surface_set_target(double surface) {
  const Surface* record = find(surface);
  if (!record) {
    ReportError("Trying to set a surface target that does not exist.");
    return false;
  }
  Surfaces& s = surfaces();
  s.stack.push_back(s.current);
  make_current({id_of(surface), record->width, record->height,
                ortho_matrix(static_cast<float>(record->width), static_cast<float>(record->height))});
  return true;
}

void surface_reset_target() {
  Surfaces& s = surfaces();
  if (s.stack.empty()) {
    return ReportError("Unbalanced surface stack. you are trying to pop a surface that has not been set.");
  }
  const Target previous = s.stack.back();
  s.stack.pop_back();
  make_current(previous);
}

size_t surface_stack_depth() { return surfaces().stack.size(); }

void surface_free(double surface) {
  if (surface < 0) return;
  if (on_stack(id_of(surface)) && !surfaces().stack.empty()) {
    return ReportError(
        "Surface in use via surface_set_target(). It can not be freed until it has been removed from the surface "
        "stack.");
  }
  if (Surface* s = find(surface)) {
    batch_flush();
    platform::gpu().free_texture(s->texture);
    surfaces().table.erase(id_of(surface));
  }
}

void surface_resize(double surface, double width, double height) {
  if (width < 1 || height < 1 || width > 8192 || height > 8192) return ReportError("Invalid surface dimensions");
  Surface* record = find(surface);
  if (!record) return ReportError("Surface does not exist");
  Surfaces& s = surfaces();
  if (id_of(surface) == s.application) {
    s.pending_width = static_cast<int>(width);
    s.pending_height = static_cast<int>(height);
    return;
  }
  if (on_stack(id_of(surface)) && !s.stack.empty()) {
    return ReportError(
        "Surface in use via surface_set_target(). It can not be resized until it has been removed from the surface "
        "stack.");
  }
  batch_flush();
  platform::gpu().free_texture(record->texture);
  if (!make_texture(*record, static_cast<int>(width), static_cast<int>(height))) s.table.erase(id_of(surface));
}

void reapply_target() { make_current(surfaces().current); }

uint64_t surface_version(double surface) {
  const Surface* s = find(surface);
  return s ? s->version : 0;
}

void note_target_cleared(uint32_t colour, double alpha) {
  Surfaces& s = surfaces();
  s.clear = {s.current.surface, surface_version(s.current.surface), batch_sends(), colour, alpha};
}

bool target_holds_its_clear(ClearTarget& target) {
  batch_flush();
  const Surfaces& s = surfaces();
  const Clear& clear = s.clear;
  if (clear.surface != s.current.surface || clear.sends != batch_sends() ||
      clear.version != surface_version(s.current.surface)) {
    return false;
  }
  target = {clear.colour, clear.alpha, s.current.width, s.current.height};
  return true;
}

void read_target_pixels(int x, int y, int width, int height, uint8_t* rgba) {
  batch_flush();
  platform::gpu().read_pixels(x, y, width, height, {rgba, static_cast<size_t>(width) * height * 4});
}

double surface_getpixel(double surface, double x, double y) {
  const Surface* record = find(surface);
  if (!record || x < 0 || y < 0 || x >= record->width || y >= record->height) return 0;
  const Target saved = surfaces().current;
  make_current({id_of(surface), record->width, record->height, draw_state().projection});
  uint8_t pixel[4];
  read_target_pixels(static_cast<int>(x), static_cast<int>(y), 1, 1, pixel);
  make_current(saved);
  return make_colour_rgb(pixel[0], pixel[1], pixel[2]);
}

bool surface_save(double surface, const std::string& file) {
  const Surface* record = find(surface);
  if (!record) return false;
  Image image{record->width, record->height,
              std::vector<uint8_t>(static_cast<size_t>(record->width) * record->height * 4)};
  const Target saved = surfaces().current;
  make_current({id_of(surface), record->width, record->height, draw_state().projection});
  read_target_pixels(0, 0, image.width, image.height, image.rgba.data());
  make_current(saved);
  const std::string path = file_save_path(file);
  return !path.empty() && image_save_png(path, image);
}

namespace {

void draw_part(double surface, double left, double top, double width, double height, const BlitPlacement& placement) {
  const Surface* record = find(surface);
  if (!record) return;
  blit({record->texture, static_cast<double>(record->width), static_cast<double>(record->height), left, top, width,
        height},
       placement);
}

uint32_t plain_tint() { return colour_word(0xFFFFFF, draw_state().alpha); }

}  // namespace

void draw_surface(double surface, double x, double y) {
  draw_part(surface, 0, 0, surface_get_width(surface), surface_get_height(surface),
            {x, y, 0, 0, 1, 1, 0, plain_tint()});
}

void draw_surface_selected(double surface, double mask, double x, double y, double xscale, double yscale,
                           double angle, const SelectionColours& colours) {
  const auto channels = [](double colour, double alpha, float (&out)[4]) {
    const auto c = static_cast<uint32_t>(colour);
    out[0] = static_cast<float>(c & 0xFF) / 255.0f;
    out[1] = static_cast<float>((c >> 8) & 0xFF) / 255.0f;
    out[2] = static_cast<float>((c >> 16) & 0xFF) / 255.0f;
    out[3] = static_cast<float>(alpha);
  };
  float text[4], background[4];
  channels(colours.text, colours.text_alpha, text);
  channels(colours.background, colours.background_alpha, background);
  // The mask holds for these draws alone: what is batched before and after draws plainly.
  batch_flush();
  platform::gpu().set_selection_mask(surface_texture(mask), text, background);
  draw_surface_ext(surface, x, y, xscale, yscale, angle, COLOUR_WHITE, draw_state().alpha);
  batch_flush();
  platform::gpu().set_selection_mask(0, text, background);
}

void draw_surface_ext(double surface, double x, double y, double xscale, double yscale, double angle, double colour,
                      double alpha) {
  draw_part(surface, 0, 0, surface_get_width(surface), surface_get_height(surface),
            {x, y, 0, 0, xscale, yscale, angle, colour_word(colour, alpha)});
}

void draw_surface_stretched(double surface, double x, double y, double width, double height) {
  const double w = surface_get_width(surface), h = surface_get_height(surface);
  if (w <= 0 || h <= 0) return;
  draw_part(surface, 0, 0, w, h, {x, y, 0, 0, width / w, height / h, 0, plain_tint()});
}

void draw_surface_part(double surface, double left, double top, double width, double height, double x, double y) {
  draw_part(surface, left, top, width, height, {x, y, 0, 0, 1, 1, 0, plain_tint()});
}

int32_t application_surface() { return surfaces().application; }
void application_surface_enable(bool on) { surfaces().application_enabled = on; }
bool application_surface_enabled() { return surfaces().application_enabled; }

void set_base_target(int32_t surface, int width, int height) {
  Surfaces& s = surfaces();
  if (!s.stack.empty()) {
    s.stack.clear();
    make_current({NO_SURFACE, width, height, ortho_matrix(static_cast<float>(width), static_cast<float>(height))});
    ReportError("Unbalanced surface stack. You MUST use surface_reset_target() for each set.");
  }
  make_current({surface, width, height, ortho_matrix(static_cast<float>(width), static_cast<float>(height))});
}

void prepare_application_surface(int width, int height) {
  Surfaces& s = surfaces();
  if (s.pending_width > 0) {
    width = s.pending_width;
    height = s.pending_height;
    s.pending_width = s.pending_height = 0;
  }
  Surface* record = s.application == NO_SURFACE ? nullptr : find(s.application);
  if (record && record->width == width && record->height == height) return;
  if (record) {
    batch_flush();
    platform::gpu().free_texture(record->texture);
    s.table.erase(s.application);
  }
  Surface fresh;
  if (s.application == NO_SURFACE) s.application = s.next_id++;
  if (make_texture(fresh, width, height)) s.table[s.application] = fresh;
}
