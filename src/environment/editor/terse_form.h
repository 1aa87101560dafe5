// Ctrl+B in the editor: the program rewritten in the language's terse form,
// arrows gone, arguments joined by commas, comparisons as symbols, blocks in
// braces. A second pass changes nothing more.
#pragma once

#include <string>

std::string terse_form(std::string program);
