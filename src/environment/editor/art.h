// The environment's pictures: icons and frames made at build time into the
// art folder (share/velant/assets when installed), loaded as sprites on
// first use.
#pragma once

#include <cstdint>
#include <string>

// The sprite of picture `name` (no extension), its origin in the middle; -1
// when the picture is missing, and then nothing is drawn for it.
int32_t art_sprite(const std::string& name);

// The sprite of picture `name` cut into `frames` frames side by side, its
// origin at the top left (or in the middle): the palette's cards, keys and swatches.
int32_t panel_art(const std::string& name, int frames = 1, bool centred = false);

// Draws picture `name` centred at (x, y) at `scale`, with `alpha`.
void draw_art(const std::string& name, double x, double y, double scale, double alpha);
