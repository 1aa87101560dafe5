#include "environment/colouring/code_box_colouring.h"

#include <algorithm>

#include "environment/colouring/colour_phrases.h"
#include "environment/colouring/draw_text_custom.h"
#include "runtime/Font/TextLayout.h"
#include "runtime/Font/TextState.h"
#include "runtime/Graphics/DrawState.h"
#include "runtime/Graphics/Primitives.h"
#include "runtime/IO/FileNames.h"
#include "runtime/IO/WholeFile.h"

namespace {

constexpr double MARK_WIDTH = 8, UNDERLINE = 2;

constexpr std::string_view DEFINE = "definisci funzione", IMPORT = "importa funzione esterna", INCLUDE = "includi";

// The name behind position `at`: a text in double quotes, or a word up to a
// blank, a bracket, a brace, ";" or the line's end; underscores stand for blanks.
std::string name_at(const std::string& text, size_t at) {
  at = text.find_first_not_of(' ', at);
  if (at == std::string::npos) return "";
  std::string name;
  if (text[at] == '"') {
    const size_t close = text.find('"', at + 1);
    name = text.substr(at + 1, close == std::string::npos ? std::string::npos : close - at - 1);
  } else {
    name = text.substr(at, text.find_first_of(" {};#\n\r", at) - at);
  }
  return name;
}

// A defined function's name: underscores stand for blanks.
std::string defined_name(std::string name) {
  std::ranges::replace(name, '_', ' ');
  return name;
}

void add_once(std::vector<std::string>& names, std::string name) {
  if (!name.empty() && std::ranges::find(names, name) == names.end()) names.push_back(std::move(name));
}

// The functions that `text` defines, and the external functions it imports by their "(TESTO:" name.
void find_functions(const std::string& text, CodeColouring& c) {
  for (size_t at = text.find(DEFINE); at != std::string::npos; at = text.find(DEFINE, at + 1)) {
    add_once(c.user_functions, defined_name(name_at(text, at + DEFINE.size())));
  }
  for (size_t at = text.find(IMPORT); at != std::string::npos; at = text.find(IMPORT, at + 1)) {
    const size_t label = text.find("(TESTO:", at);
    if (label == std::string::npos) break;
    std::string name = name_at(text, label + 7);
    if (const size_t arrow = name.find("-->"); arrow != std::string::npos) name.erase(arrow);
    add_once(c.external_functions, name);
  }
}

// The texts of the files `program` includes, where the file name rule finds them.
std::string included_texts(const std::string& program) {
  std::string all;
  for (size_t at = program.find(INCLUDE); at != std::string::npos; at = program.find(INCLUDE, at + 1)) {
    std::string name = name_at(program, at + INCLUDE.size());
    if (name.empty()) continue;
    if (name.find(".txt") == std::string::npos) name += ".txt";
    std::string text;
    file_read_whole(file_read_path(name), text);
    all += text;
    all += '\n';
  }
  return all;
}

int state_of(const std::vector<int>& states, int zc) {
  return zc >= 0 && zc < static_cast<int>(states.size()) ? states[static_cast<size_t>(zc)] : 0;
}

}  // namespace

void CodeBoxColouring::scan(const std::string& program) {
  if (program == scanned_) return;
  scanned_ = program;
  CodeColouring found;
  find_functions(program + "\n" + included_texts(program), found);
  if (found.user_functions != state_.user_functions || found.external_functions != state_.external_functions) {
    state_.user_functions = std::move(found.user_functions);
    state_.external_functions = std::move(found.external_functions);
    // Every line may call a function that came or went.
    previous_version_.clear();
  }
}

void CodeBoxColouring::prepare(const ObjInputText& box, std::vector<std::string>& keys) {
  scan(box.text_utf8());
  tagged_.assign(keys.size(), "");
  const size_t most = keys.size() + 2;
  state_.multiline_string.resize(std::max(state_.multiline_string.size(), most), 0);
  state_.multiline_comment.resize(std::max(state_.multiline_comment.size(), most), 0);
  if (previous_version_.size() < most) {
    previous_version_.resize(most);
    previous_color_code_.resize(most);
    previous_states_.resize(most);
  }
  for (size_t k = 0; k < keys.size(); ++k) {
    const int zc = static_cast<int>(k) + 1;
    const std::string line = (k > 0 ? "\n" : "") + keys[k];
    // A line is coloured again when it changed, or when what the line above leaves open changed.
    const std::string version = line + '\x1f' + static_cast<char>('0' + state_of(state_.multiline_string, zc - 1)) +
                                static_cast<char>('0' + state_of(state_.multiline_comment, zc - 1)) +
                                static_cast<char>('0' + state_of(state_.multiline_comment, zc));
    if (previous_version_[k + 1] != version) {
      previous_color_code_[k + 1] = code_editor(line, zc, state_);
      previous_version_[k + 1] = version;
      previous_states_[k + 1] = {state_of(state_.multiline_string, zc), state_of(state_.multiline_comment, zc),
                                 state_of(state_.multiline_comment, zc + 1)};
      ++lines_coloured_;
    } else {
      const LineStates& s = previous_states_[k + 1];
      state_.multiline_string[k + 1] = s.string_here;
      state_.multiline_comment[k + 1] = s.comment_here;
      state_.multiline_comment[k + 2] = s.comment_next;
    }
    tagged_[k] = previous_color_code_[k + 1];
  }
  plain_ = keys;
  add_marks(box, keys);
  for (size_t k = 0; k < keys.size(); ++k) keys[k] += '\x1f' + tagged_[k];
}

void CodeBoxColouring::add_marks(const ObjInputText& box, const std::vector<std::string>& keys) {
  // The caret on a bracket, as a line and a column of characters.
  const int line = std::clamp(box.cursor_line, 0, static_cast<int>(keys.size()) - 1);
  const int column = box.caret() - 1 - box.new_line_list[static_cast<size_t>(line)];
  marks_.clear();
  if (!box.has_selection() && box.caret() <= static_cast<int>(box.text.size())) {
    marks_ = bracket_marks(keys, static_cast<size_t>(line), static_cast<size_t>(std::max(column, 0)), last_page);
  }
  const std::string selected = box.has_selection() ? utf8_of(box.text, static_cast<size_t>(box.selection_start_ordered - 1),
                                                             static_cast<size_t>(box.selection_end_ordered - 1))
                                                   : "";
  for (LineMark& m : selection_echo(keys, selected, state_.multiline_string)) marks_.push_back(m);
  for (LineMark& m : arrow_and_debug_marks(keys, tagged_, state_.multiline_string)) marks_.push_back(m);
}

void CodeBoxColouring::paint(const ObjInputText&, size_t line, double x, double y) {
  if (line >= tagged_.size()) return;
  const std::string& tagged = tagged_[line];
  // A line inside a block comment keeps the plain layer's colour.
  if (state_of(state_.multiline_comment, static_cast<int>(line) + 1) == 0 || tagged.find("*/") != std::string::npos) {
    draw_text_custom(x, y, colour_tag(TAG_PLAIN) + tagged);
  }
}

void CodeBoxColouring::paint_over(const ObjInputText& box) {
  // The marks go over the text, translucent, so that it still reads through them.
  const double alpha = draw_state().alpha;
  const int32_t font = text_state().font;
  draw_set_font(box.font);  // the places are measured in the box's own font
  for (const LineMark& m : marks_) {
    if (m.line >= tagged_.size()) continue;
    const double top = box.y + box.offset_y + box.v_align_offset + static_cast<double>(m.line) * box.line_separation;
    if (top < box.y || top + box.line_separation > box.y + box.height) continue;
    const Chars chars = chars_of(plain_[m.line]);
    const double left = box.x + box.offset_x + string_width(utf8_of(chars, 0, m.from));
    const double right = box.x + box.offset_x + string_width(utf8_of(chars, 0, m.to));
    draw_state().alpha = m.alpha;
    const double bottom = top + box.line_separation - 1;
    draw_rectangle_colour(left, m.underline ? bottom - UNDERLINE + 1 : top, std::max(right, left + MARK_WIDTH) - 1,
                          bottom, m.colour, m.colour_to, m.colour_to, m.colour, false);
  }
  draw_state().alpha = alpha;
  draw_set_font(font);
}
