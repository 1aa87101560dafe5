#include "runtime/Graphics/Screen.h"

#include <algorithm>
#include <vector>

#include "runtime/Graphics/Batch.h"
#include "runtime/Graphics/Colour.h"
#include "runtime/Graphics/DrawState.h"
#include "runtime/Graphics/ImageFile.h"
#include "runtime/Graphics/Primitives.h"
#include "runtime/Graphics/Surfaces.h"
#include "runtime/Platform/Window.h"
#include "runtime/Room/Room.h"
#include "runtime/IO/FileNames.h"

namespace {

// The window's size; a frame drawn before any window exists draws on a
// window of one pixel, which the device (absent then) ignores.
platform::WindowSize window_size() {
  const platform::Window* window = platform::window_if_made();
  const platform::WindowSize size = window ? window->size() : platform::WindowSize{1, 1};
  return {std::max(size.width, 1), std::max(size.height, 1)};
}

bool drawing_on_application_surface() { return application_surface_enabled() && surface_exists(application_surface()); }

}  // namespace

void screen_frame_begin() {
  const platform::WindowSize size = window_size();
  if (application_surface_enabled()) prepare_application_surface(size.width, size.height);
  set_base_target(NO_SURFACE, size.width, size.height);
}

void screen_room_begin() {
  if (drawing_on_application_surface()) {
    set_base_target(application_surface(), static_cast<int>(surface_get_width(application_surface())),
                    static_cast<int>(surface_get_height(application_surface())));
  }
  if (const Room* room = current_room(); room && room->show_background) {
    draw_clear_alpha(room->background_colour, 1);
  }
}

void screen_room_end() {
  const platform::WindowSize size = window_size();
  set_base_target(NO_SURFACE, size.width, size.height);
}

void screen_gui_begin() {
  if (drawing_on_application_surface()) {
    const platform::WindowSize size = window_size();
    // The room's picture replaces what the window held, alpha and all.
    const int source = draw_state().blend_source, destination = draw_state().blend_destination;
    set_blend_mode(2, 1);
    draw_surface_stretched(application_surface(), 0, 0, size.width, size.height);
    set_blend_mode(source, destination);
  }
}

void screen_frame_end() { batch_flush(); }

double draw_getpixel(double x, double y) {
  uint8_t pixel[4];
  read_target_pixels(static_cast<int>(x), static_cast<int>(y), 1, 1, pixel);
  return make_colour_rgb(pixel[0], pixel[1], pixel[2]);
}

bool screen_read(Image& image) {
  const platform::WindowSize size = window_size();
  image = {size.width, size.height, std::vector<uint8_t>(static_cast<size_t>(size.width) * size.height * 4)};
  if (!platform::gpu().ready()) return false;
  // Whatever the program targets now, the window is read.
  batch_flush();
  platform::gpu().set_target(0, size.width, size.height);
  platform::gpu().read_pixels(0, 0, size.width, size.height, image.rgba);
  reapply_target();
  for (size_t p = 3; p < image.rgba.size(); p += 4) image.rgba[p] = 255;
  return true;
}

bool screen_save(const std::string& file) {
  Image image;
  const std::string path = file_save_path(file);
  return !path.empty() && screen_read(image) && image_save_png(path, image);
}
