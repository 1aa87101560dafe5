// code_editor: one line of program text as the code box shows it, with
// colour tags "[$=N]" in front of each coloured piece and "[$=0]" behind it.
// The tagged line is painted over the plain text by draw_text_custom.
//
// The colouring is no lexer: it finds the language's phrases wherever they
// stand, inside words too, a longer phrase winning over the shorter ones in
// it; strings and comments then take their own colours, and what a string
// or a block comment opens carries on to the lines below.
#pragma once

#include <string>
#include <vector>

// What the colouring of a page knows besides the line: the functions the
// program defines or imports, and which lines lie in a string or a block
// comment opened above, by line number from 1.
struct CodeColouring {
  std::vector<std::string> user_functions;
  std::vector<std::string> external_functions;
  std::vector<int> multiline_string;   // 1: the line lies in a string, or opens one
  std::vector<int> multiline_comment;  // 1: in a comment opened above; 2: closes one
};

// Line `zc` of the page (from 1; every line but the first begins with its
// line feed), tagged. Updates the string and comment state of `c`.
std::string code_editor(std::string line, int zc, CodeColouring& c);

// The tag of `colour`: "[$=" + colour + "]".
std::string colour_tag(uint32_t colour);
