// Rewrites of the program text that the tokeniser and the check before a
// run both make: brackets drawn to their contents, comments taken out.
#pragma once

#include <string>

// " )" becomes ")", "(  " becomes "(" and the like.
void tighten_bracket_blanks(std::string& text);
// Takes out each "//" comment up to `line_end`, which stays.
void remove_comments_up_to(std::string& text, char line_end);
// Takes out each "/* ... */" comment, line ends inside it included.
void remove_block_comments(std::string& text);
