// The rooms of the environment, by index, and the objects in them.
#pragma once

#include <cstdint>

// Rooms by index: the start, the project screens, the editor, the run.
inline constexpr int32_t ROOM_INTRO = 0, ROOM_PROGETTI = 1, ROOM_EDITOR = 2, ROOM_MAIN = 3;
// The environment's window; a run takes the size its program asks for.
inline constexpr int32_t ENVIRONMENT_WIDTH = 1300, ENVIRONMENT_HEIGHT = 700;

enum class Startup {
  Environment,  // the whole environment: Intro, then the editor
  Runner,       // one program from the command line: straight to the run, and the editor room ends it
};

// Registers the objects and the rooms, and points the runtime at the first room.
void define_environment(Startup startup);
