// Where the file of a font name is.
//
// A name is a file relative to the working directory (or a full path),
// else a file of that name in the system's font folders. Programs ask for
// fonts by the names of the faces that come with another desktop ("Arial.ttf",
// "Chiller.ttf", ...); where no such file exists, a free face of the same
// look stands in for it, from the font packages that the install script puts
// on the machine.
#pragma once

#include <string>
#include <string_view>

// The file of font `name` in the style asked; "" when there is none.
std::string font_file_find(std::string_view name, bool bold, bool italic);
// The file named `file_name` in the system's font folders, any case; "" when there is none.
std::string system_font_file(std::string_view file_name);
