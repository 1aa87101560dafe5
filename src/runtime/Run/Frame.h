// One frame of the main loop: input, the Update steps in their fixed order,
// the deletion pass and the draw events.
#pragma once

#include <cstdint>

// The frame's Update: begin step, alarms, keyboard, mouse, step, motion,
// outside room, asynchronous events, collisions, end step. Each step is
// followed by housekeeping; a pending room change ends the Update.
void frame_update();
// The draw events: Draw Begin, Draw, Draw End, Draw GUI Begin, Draw GUI,
// Draw GUI End and Post-Draw, on every visible instance that handles them.
void frame_draw();
// One whole frame: arena reset, input, Update, deletion pass and drawing
// when no room change is pending, then the room target acted on. False
// when the game is to stop.
bool frame_run();

// Frames a second: counted over each second of the clock.
int32_t frames_per_second();
