// The picture of a frame, around the draw events: the room is drawn on the
// application surface (or straight on the window when it is off), which is
// then drawn on the window, and the interface goes on top in window pixels.
#pragma once

#include <string>

struct Image;

// Before Pre-Draw: the application surface ready, the window as target.
void screen_frame_begin();
// After Pre-Draw: the room's target, cleared with the room's colour.
void screen_room_begin();
// After Draw End: back to the window; fatal when the program left a surface target set.
void screen_room_end();
// After Post-Draw: the application surface on the window, and the projection of the interface.
void screen_gui_begin();
// After the interface: everything sent to the device, ready to be shown.
void screen_frame_end();

// The colour (blue-green-red) of a pixel of the current target, in its coordinates.
double draw_getpixel(double x, double y);
// Reads what the window shows, every pixel opaque; false without a graphics device.
bool screen_read(Image& image);
// Writes what the window shows as a PNG file in the save area, every pixel
// opaque; false when the name is refused or the file cannot be written.
bool screen_save(const std::string& file);
