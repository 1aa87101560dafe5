#include "environment/colouring/code_box_marks.h"

#include <algorithm>

#include "environment/text_control/input_text.h"

namespace {

constexpr uint32_t CYAN = 16776960, WARNING_RED = 255, WARNING_ORANGE = 4235519, ECHO = 0xE6B450;
constexpr double BRACKET_ALPHA = 0.45, ECHO_ALPHA = 0.3;

struct Place {
  size_t line, column;
};

LineMark mark_at(Place p, uint32_t from_colour, uint32_t to_colour, double alpha) {
  return {p.line, p.column, p.column + 1, from_colour, to_colour, alpha};
}

// The next character of the page, across line ends; false at the page's end.
bool step_forward(const std::vector<Chars>& text, Place& p) {
  for (;;) {
    if (p.column + 1 < text[p.line].size()) {
      ++p.column;
      return true;
    }
    if (p.line + 1 >= text.size()) return false;
    ++p.line;
    p.column = static_cast<size_t>(-1);  // the next step makes it 0
  }
}

// The character before, across line starts; false at the page's start.
bool step_back(const std::vector<Chars>& text, Place& p) {
  for (;;) {
    if (p.column > 0) {
      --p.column;
      return true;
    }
    if (p.line == 0) return false;
    --p.line;
    p.column = text[p.line].size();
  }
}

}  // namespace

std::vector<LineMark> bracket_marks(const std::vector<std::string>& lines, size_t line, size_t column, bool last_page) {
  std::vector<Chars> text;
  for (const std::string& l : lines) text.push_back(chars_of(l));
  if (line >= text.size() || column >= text[line].size()) return {};
  const uint32_t here = text[line][column];
  const bool opening = here == U'{' || here == U'(';
  if (!opening && here != U'}' && here != U')') return {};
  const uint32_t open = here == U'{' || here == U'}' ? U'{' : U'(', close = open == U'{' ? U'}' : U')';
  std::vector<LineMark> marks{mark_at({line, column}, CYAN, CYAN, BRACKET_ALPHA)};
  int depth = 0;
  // Forward from an opening bracket, backward from a closing one, through the page.
  for (Place p{line, column};;) {
    const uint32_t c = text[p.line][p.column];
    depth += c == open ? 1 : c == close ? -1 : 0;
    if (depth == 0) {
      marks.push_back(mark_at(p, CYAN, CYAN, BRACKET_ALPHA));
      return marks;
    }
    if (!(opening ? step_forward(text, p) : step_back(text, p))) {
      // No partner on the page.
      if (!opening) {
        marks.back() = mark_at({line, column}, WARNING_RED, WARNING_ORANGE, 1);
      } else if (last_page) {
        const size_t last = text.size() - 1;
        marks.push_back(mark_at({last, text[last].size()}, WARNING_RED, WARNING_ORANGE, 1));
      }
      return marks;
    }
  }
}

std::vector<LineMark> selection_echo(const std::vector<std::string>& lines, const std::string& selected,
                                     const std::vector<int>& in_string) {
  std::vector<LineMark> marks;
  if (selected.empty() || selected == " " || selected == "  ") return marks;
  const Chars wanted = chars_of(selected);
  for (size_t line = 0; line < lines.size(); ++line) {
    if (line + 1 < in_string.size() && in_string[line + 1] == 1) continue;
    Chars text = chars_of(lines[line]);
    // Before any comment mark.
    for (const char32_t* mark : {U"//", U"/*"}) {
      const auto at = std::search(text.begin(), text.end(), mark, mark + 2);
      text.erase(at, text.end());
    }
    for (auto at = std::search(text.begin(), text.end(), wanted.begin(), wanted.end()); at != text.end();
         at = std::search(at + static_cast<long>(wanted.size()), text.end(), wanted.begin(), wanted.end())) {
      const auto from = static_cast<size_t>(at - text.begin());
      marks.push_back({line, from, from + wanted.size(), ECHO, ECHO, ECHO_ALPHA});
    }
  }
  return marks;
}
