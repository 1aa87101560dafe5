// Start-up, the main loop and shutdown of the runtime.
//
// The game itself (its objects and rooms) is set up by a function that the
// application hands in; the runtime brings up its modules, the window and
// the first room around it, runs frames until the game ends, and restarts
// it when asked.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

struct RuntimeOptions {
  std::string game;            // -game: the asset package
  std::string exit_game;       // -exit: the package to start when this one ends
  std::string debug_output;    // -debugoutput: the file of the debug stream
  bool output_debug_string = false;  // -outputdebugstring: the debug stream to standard error
  bool headless = false;       // -headless: no window; frames back to back
  bool no_audio = false;       // -noaudio
  bool in_a_window = false;    // -inawindow: never full screen
  bool no_errors = false;      // -noerrors: no error dialog
  int32_t sleep_margin_ms = 10;  // -sleepmargin
  int64_t max_frames = -1;     // frames to run before stopping, -1 for no limit (runners and tests)
  std::function<void()> after_frame;  // called after each frame, before it is shown
};

// Splits a command line into words: characters below 33 separate words
// unless a double quote is open; double quotes are dropped and toggle that
// state; a word keeps at most 4095 characters.
std::vector<std::string> split_command_line(const std::string& line);
// Reads the runtime's options from the words (the program's name first);
// unknown words are skipped.
RuntimeOptions parse_command_line(const std::vector<std::string>& words);

// Moves each file of the current folder whose name holds "@" to the path
// that the name spells with "@" as a folder separator, making the folders.
void unpack_folder_files();

// The microseconds to wait before the next frame: the frame's share of a
// second at `frame_rate` less `elapsed`, between 0 and one second.
int64_t frame_wait(int32_t frame_rate, int64_t elapsed);

// Brings the runtime up, calls `setup_game` to register objects and rooms,
// enters the first room and runs frames until the game ends; a restart of
// the game goes round again. Returns the exit status.
int runtime_run(const RuntimeOptions& options, const std::function<void()>& setup_game);
