// How a run ends. The language says why a run is over; the environment
// decides where that leads (the editor, or the start of the environment),
// so no room is named below it.
#pragma once

enum class RunEnd {
  ToEditor,  // Esc, the close button, most program errors, the program's own end
  ToStart,   // the expression errors that send the learner back to the start
};

// The environment's answer to each reason; it asks the runtime for the change
// of room, which happens at the end of the frame.
void set_run_end_handler(void (*handler)(RunEnd reason));
// Ends the running program for `reason`; without a handler, nothing happens.
void end_run(RunEnd reason);
