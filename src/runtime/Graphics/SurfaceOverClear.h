// A surface drawn on a freshly cleared target, as the grid is in every
// frame: the outcome is the same from frame to frame, so it is worked out
// once and then copied, which a software renderer does for a third of the
// cost of blending.
#pragma once

// Draws `surface` at (0, 0) as draw_surface does. When the target holds
// nothing but its last clear, the picture of the surface over that clear is
// kept on a surface of its own (made again when anything it depends on
// changes) and copied onto the target.
void draw_surface_over_clear(double surface);
