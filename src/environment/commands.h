// The command-line commands of the velant program.
#pragma once

// `velant tokens FILE`: prints the token array the language makes of the
// program in FILE. Returns the exit status.
int tokens_command(int argc, char** argv);
