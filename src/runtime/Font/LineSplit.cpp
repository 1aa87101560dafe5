#include "runtime/Font/LineSplit.h"

#include <string>

#include "runtime/Code/Error.h"
#include "runtime/Font/Font.h"
#include "runtime/Function/Utf8.h"

namespace {

constexpr uint32_t LF = 10, CR = 13, SPACE = 32;

bool is_line_end(uint32_t c) { return c == CR || c == LF; }
bool is_white(uint32_t c) { return c == SPACE || (c >= 9 && c <= CR); }

void add_advance(CFontQm& font, uint32_t code_point, int32_t& width) {
  if (const CGlyph* glyph = font.glyph(code_point)) width = pen_after(width, *glyph, font.x_scale);
}

// Where the next line starts after the line end at `i`: past both
// characters of a CR LF or LF CR pair.
size_t after_line_end(std::span<const uint32_t> t, size_t i) {
  if (i + 1 < t.size() && is_line_end(t[i + 1]) && t[i + 1] != t[i]) return i + 2;
  return i + 1;
}

void split_at_line_ends(std::span<const uint32_t> t, std::vector<TextLine>& lines) {
  size_t start = 0;
  for (size_t i = 0; i < t.size();) {
    if (!is_line_end(t[i])) {
      ++i;
      continue;
    }
    lines.push_back({static_cast<uint32_t>(start), static_cast<uint32_t>(i), 0});
    i = start = after_line_end(t, i);
  }
  lines.push_back({static_cast<uint32_t>(start), static_cast<uint32_t>(t.size()), 0});
}

// The names of the running call trace, innermost first.
std::string call_trace_names() {
  std::string names;
  for (const CallFrame* frame = call_trace_top(); frame; frame = frame->previous) {
    if (!names.empty()) names += ", ";
    names += frame->name;
  }
  return names;
}

void split_within(CFontQm& font, std::span<const uint32_t> t, double limit, std::string_view text,
                  std::vector<TextLine>& lines) {
  const size_t n = t.size();
  size_t pos = 0;
  while (true) {
    const size_t start = pos;
    int32_t width = 0;
    // Spaces at the start of a line stay in it while they fit.
    while (pos < n && t[pos] == SPACE && width < limit) add_advance(font, t[pos++], width);
    while (pos < n && width < limit && !is_line_end(t[pos])) add_advance(font, t[pos++], width);
    // The character that passed the limit moves on to the next line, unless
    // it is all the line has: a word is never cut.
    if (width > limit && pos - start > 1) --pos;
    if (pos < n && is_line_end(t[pos])) {
      lines.push_back({static_cast<uint32_t>(start), static_cast<uint32_t>(pos), 0});
      pos = after_line_end(t, pos);
      continue;
    }
    if (pos == start && pos < n) {
      debug_output("string \"" + std::string(text) + "\" with width " + std::to_string(static_cast<int32_t>(limit)) +
                   " - unable to fit\ncallstack - " + call_trace_names() + "\n");
      return;
    }
    // In the middle of a word: break at the last space of the line, or, with
    // none, after the word, which then overflows.
    if (pos < n && !is_white(t[pos])) {
      size_t space = pos;
      while (space > start && t[space] != SPACE) --space;
      if (space > start) {
        pos = space;
      } else {
        while (pos < n && !is_white(t[pos])) ++pos;
      }
    }
    size_t end = pos;
    while (end > start && is_white(t[end - 1])) --end;
    lines.push_back({static_cast<uint32_t>(start), static_cast<uint32_t>(end), 0});
    if (pos >= n) return;
    // The break character is used up; a line end there starts one more
    // line even at the end of the text, as it does without a limit.
    const bool at_line_end = is_line_end(t[pos]);
    pos = at_line_end ? after_line_end(t, pos) : pos + 1;
    if (pos >= n && !at_line_end) return;
  }
}

}  // namespace

void decode_utf8(std::string_view text, std::vector<uint32_t>& code_points) {
  code_points.clear();
  const char* p = text.data();
  const char* end = p + text.size();
  while (p < end) {
    code_points.push_back(utf8::code_point(p, end));
    p = utf8::next(p, end);
  }
}

int32_t text_width(CFontQm& font, std::span<const uint32_t> code_points) {
  int32_t width = 0;
  for (uint32_t c : code_points) add_advance(font, c, width);
  return width;
}

void split_lines(CFontQm& font, std::span<const uint32_t> code_points, double width, std::string_view text,
                 std::vector<TextLine>& lines) {
  lines.clear();
  if (width < 0) {
    split_at_line_ends(code_points, lines);
  } else {
    split_within(font, code_points, width, text, lines);
  }
  for (TextLine& line : lines) line.width = text_width(font, code_points.subspan(line.begin, line.end - line.begin));
}
