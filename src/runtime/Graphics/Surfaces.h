// Surfaces: pictures that can be drawn on and drawn, kept on the graphics
// device. Ids come from a counter and are never reused before it reaches
// them again; -1 is no surface. The program draws on a surface between
// surface_set_target and surface_reset_target, which nest.
//
// A surface lives as long as the device's context: when the context is made
// anew its surfaces are gone, and surface_exists says so, so that a program
// that checks makes them again.
#pragma once

#include <cstdint>
#include <string>

#include "runtime/Platform/Gpu.h"

inline constexpr int32_t NO_SURFACE = -1;

// A new surface of `width` x `height`, cleared to transparent; fatal for a side below 1 or a format other than 6.
int32_t surface_create(double width, double height, double format = 6);
bool surface_exists(double surface);
double surface_get_width(double surface);
double surface_get_height(double surface);
// The device texture of a surface, 0 when there is none.
platform::TextureId surface_texture(double surface);
// Draws on `surface` until the matching surface_reset_target; fatal when it doesn't exist.
bool surface_set_target(double surface);
// Goes back to the target before the last surface_set_target; fatal without one.
void surface_reset_target();
// How many targets the program has set and not reset.
size_t surface_stack_depth();
void surface_free(double surface);
// New sizes (1 to 8192), contents lost; the application surface changes at the start of the next frame.
void surface_resize(double surface, double width, double height);
// The colour (blue-green-red) of one pixel of a surface, 0 outside it.
double surface_getpixel(double surface, double x, double y);
// Writes a surface as a PNG file in the save area.
bool surface_save(double surface, const std::string& file);

void draw_surface(double surface, double x, double y);
void draw_surface_ext(double surface, double x, double y, double xscale, double yscale, double angle, double colour,
                      double alpha);
// Selected text, as red, green, blue colours with their alphas.
struct SelectionColours {
  double text, text_alpha, background, background_alpha;
};
// draw_surface_ext, with the pixels that `mask` covers (a surface of the
// same size) painted as selected text: the surface's shapes in the text
// colour over the background colour.
void draw_surface_selected(double surface, double mask, double x, double y, double xscale, double yscale,
                           double angle, const SelectionColours& colours);
void draw_surface_stretched(double surface, double x, double y, double width, double height);
void draw_surface_part(double surface, double left, double top, double width, double height, double x, double y);

// The surface that a frame draws the room on, when enabled.
int32_t application_surface();
void application_surface_enable(bool on);
bool application_surface_enabled();

// The frame's own targets, below anything the program sets: the window
// (`surface` NO_SURFACE) of `width` x `height`, or a surface.
void set_base_target(int32_t surface, int width, int height);
// Makes the application surface exist at `width` x `height`, or at the size a resize asked for.
void prepare_application_surface(int width, int height);
// Gives the device the current target again, after something drew or read elsewhere.
void reapply_target();
// Reads the pixels of the current target, rows from the top.
void read_target_pixels(int x, int y, int width, int height, uint8_t* rgba);

// A number that changes whenever the surface's contents may have changed
// (it became a target, or was made or resized); 0 for no surface.
uint64_t surface_version(double surface);
// Records that the current target was just cleared to `colour` and `alpha`.
void note_target_cleared(uint32_t colour, double alpha);
// The current target when it holds nothing but its last clear.
struct ClearTarget {
  uint32_t colour = 0;
  double alpha = 0;
  int width = 0, height = 0;
  bool operator==(const ClearTarget&) const = default;
};
// Whether the current target holds nothing but its last clear, and which.
bool target_holds_its_clear(ClearTarget& target);

