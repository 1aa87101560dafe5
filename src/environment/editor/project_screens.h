// The way from the editor to the project screens: saving the program, and
// the list of saved projects to open. A screen is an object of its own,
// made in the editor room when it is part of the build.
#pragma once

// Opens the screen `object` ("load_ctrl", "save_ctrl"); false when the build has no such screen.
bool open_project_screen(const char* object);
// Starts saving the whole program; the slide on show counts as saved from here.
void save_program();
