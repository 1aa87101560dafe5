// Test helper: a text of numbered lines, long enough to fill pages and slides.
#pragma once

#include <string>

// "riga `first`\n...\nriga `last`", without a line feed after the last line.
inline std::string numbered_lines(int first, int last) {
  std::string text;
  for (int k = first; k <= last; ++k) text += (k > first ? "\n" : "") + ("riga " + std::to_string(k));
  return text;
}
