// Sprites with pictures: loaded from PNG and JPEG files or cut from a
// surface, drawn with scale, rotation, tint and alpha. Frames stand side by
// side in the picture they come from.
#pragma once

#include <cstdint>
#include <string>

class CInstance;

// A new sprite from a picture file, cut into `frames` frames side by side;
// `remove_back` makes the colour of the bottom-left pixel transparent.
// -1 when the file can't be read as a picture.
int32_t sprite_add(const std::string& file, double frames, bool remove_back, bool smooth, double xorigin,
                   double yorigin);
// A new sprite from a rectangle of a surface; -1 when there is no such surface.
int32_t sprite_create_from_surface(double surface, double x, double y, double width, double height, bool remove_back,
                                   bool smooth, double xorigin, double yorigin);
// Takes a sprite away with its textures.
void sprite_delete(double sprite);
// A rectangle mask (kind 1) or a precise one, solid where alpha is above `tolerance` (0 to 255).
void sprite_collision_mask(double sprite, double kind, double tolerance);

// Frame `subimage` (wrapped into the frames) at (x, y), its origin there; fatal for a sprite that doesn't exist.
void draw_sprite(double sprite, double subimage, double x, double y);
void draw_sprite_ext(double sprite, double subimage, double x, double y, double xscale, double yscale, double angle,
                     double colour, double alpha);
void draw_sprite_stretched(double sprite, double subimage, double x, double y, double width, double height);
void draw_sprite_stretched_ext(double sprite, double subimage, double x, double y, double width, double height,
                               double colour, double alpha);
// An instance as it looks without a draw event of its own: its sprite with its frame, scale, angle, tint and alpha.
void draw_self(const CInstance& instance);

