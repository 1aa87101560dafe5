// The command-line commands of the velant program.
#pragma once

// `velant tokens FILE [--element OGGETTO]`: prints the token array the
// language makes of the program in FILE, or the one an element of class
// OGGETTO would run: its head with a new element's attributes, then the
// code the program gives that object. Returns the exit status.
int tokens_command(int argc, char** argv);

// `velant run FILE [--frames N] [--headless] [--screenshot PNG] [--vars]`:
// runs the program in FILE as the Run button would. Returns 0 when the run
// ended normally, 1 when a program error ended it, 2 for a usage or file error.
int run_command(int argc, char** argv);

// Velant itself: the editor, and the programs run from it.
int environment_command();
