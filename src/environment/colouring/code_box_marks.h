// The marks the code box draws over its lines: the bracket at the caret and
// its partner, a warning where a bracket has none, and every other place
// where the selected text stands.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct LineMark {
  size_t line;              // from 0
  size_t from, to;          // characters of the line, [from, to)
  uint32_t colour, colour_to;  // left and right colour
  double alpha;
  bool underline = false;   // a line under the characters instead of a box around them
};

// The marks of the bracket right of the caret (at `column` of `line`) and
// of its partner. A bracket without a partner gets the warning mark: a
// closing one at itself, an opening one at the end of the last line, but
// only on the program's last page, since its partner may stand on a later one.
std::vector<LineMark> bracket_marks(const std::vector<std::string>& lines, size_t line, size_t column, bool last_page);
// A light mark on each place where `selected` stands, on lines that aren't
// in a string, before any comment mark.
// A red line under each "-->" that the colouring made a function arrow, and
// an amber one under each "debug" that stands before any comment mark, on
// lines that aren't in a string: the places a learner looks for first.
std::vector<LineMark> arrow_and_debug_marks(const std::vector<std::string>& lines,
                                            const std::vector<std::string>& tagged, const std::vector<int>& in_string);
std::vector<LineMark> selection_echo(const std::vector<std::string>& lines, const std::string& selected,
                                     const std::vector<int>& in_string);
