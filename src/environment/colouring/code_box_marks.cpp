#include "environment/colouring/code_box_marks.h"

#include <algorithm>

#include "environment/text_control/input_text.h"

namespace {

constexpr uint32_t CYAN = 16776960, WARNING_RED = 255, WARNING_ORANGE = 4235519, ECHO = 0xE6B450, ARROW_RED = 255,
                   DEBUG_AMBER = 0x00A5FF;
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

// Where `wanted` stands in `text`, in characters.
std::vector<size_t> places_of(const Chars& text, const Chars& wanted) {
  std::vector<size_t> places;
  for (auto at = std::search(text.begin(), text.end(), wanted.begin(), wanted.end()); at != text.end();
       at = std::search(at + static_cast<long>(wanted.size()), text.end(), wanted.begin(), wanted.end())) {
    places.push_back(static_cast<size_t>(at - text.begin()));
  }
  return places;
}

// `text` up to its first comment mark.
Chars before_comments(Chars text) {
  for (const char32_t* mark : {U"//", U"/*"}) text.erase(std::search(text.begin(), text.end(), mark, mark + 2), text.end());
  return text;
}

bool in_a_string(const std::vector<int>& in_string, size_t line) {
  return line + 1 < in_string.size() && in_string[line + 1] == 1;
}

std::vector<LineMark> arrow_and_debug_marks(const std::vector<std::string>& lines,
                                            const std::vector<std::string>& tagged, const std::vector<int>& in_string) {
  std::vector<LineMark> marks;
  const Chars arrow = chars_of("-->"), debug = chars_of("debug");
  for (size_t line = 0; line < lines.size(); ++line) {
    const Chars text = chars_of(lines[line]);
    if (line < tagged.size() && tagged[line].find("[$=255]-->") != std::string::npos) {
      for (const size_t at : places_of(text, arrow)) marks.push_back({line, at, at + 3, ARROW_RED, ARROW_RED, 1, true});
    }
    if (in_a_string(in_string, line)) continue;
    for (const size_t at : places_of(before_comments(text), debug)) {
      marks.push_back({line, at, at + 5, DEBUG_AMBER, DEBUG_AMBER, 1, true});
    }
  }
  return marks;
}

std::vector<LineMark> selection_echo(const std::vector<std::string>& lines, const std::string& selected,
                                     const std::vector<int>& in_string) {
  std::vector<LineMark> marks;
  if (selected.empty() || selected == " " || selected == "  ") return marks;
  const Chars wanted = chars_of(selected);
  for (size_t line = 0; line < lines.size(); ++line) {
    if (in_a_string(in_string, line)) continue;
    for (const size_t from : places_of(before_comments(chars_of(lines[line])), wanted)) {
      marks.push_back({line, from, from + wanted.size(), ECHO, ECHO, ECHO_ALPHA});
    }
  }
  return marks;
}
