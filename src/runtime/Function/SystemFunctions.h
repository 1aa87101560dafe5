// What programs ask of the system around them: the clipboard, shared with
// the desktop's other programs, and the environment's variables.
#pragma once

#include <string>

// Replaces the clipboard's text; an empty text empties it.
void clipboard_set_text(const std::string& text);
// The clipboard's text as UTF-8, "" when it holds none.
std::string clipboard_get_text();
bool clipboard_has_text();
// The value of the environment variable `name`, "" when it isn't set.
std::string environment_get_variable(const std::string& name);
// Whether the machine is on a network (an interface besides the loopback is up).
bool os_is_network_connected();

// clipboard_*, environment_get_variable, os_is_network_connected as built-ins.
void register_system_builtins();
