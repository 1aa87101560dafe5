// obj_input_text: the text box that Velant draws itself, one line or many.
// It is the editor's code box, the name fields of the project screens and
// the text boxes a user's program makes: caret, selection, clipboard, undo
// and redo, scrolling, word wrap and key repeat.
//
// Positions count characters from 1; `cursor_position` is the position of
// the character behind the caret, 1 to length + 1. A negative caret is the
// same position shown at the end of a soft-wrapped line instead of at the
// start of the next one: -k stands for position k + 1.
//
// All state changes happen in Step, at most one action a Step; Draw only
// renders, from two surfaces redrawn when something changed.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "runtime/Object/Instance.h"

using Chars = std::vector<uint32_t>;

class ObjInputText;

// What a box shows over its plain lines: the code box's colours. The box
// asks for a key of each line it is to draw (a line whose key didn't change
// is not drawn again), then has the lines it draws painted over.
class LinePainter {
 public:
  virtual ~LinePainter() = default;
  // `keys` holds the plain lines on entry; a painter adds what it shows.
  virtual void prepare(const ObjInputText& box, std::vector<std::string>& keys) = 0;
  // Paints line `line` (from 0) over its plain text drawn at (x, y).
  virtual void paint(const ObjInputText& box, size_t line, double x, double y) = 0;
  // Paints over the box as shown in the room, each frame: marks that come and go with the caret.
  virtual void paint_over(const ObjInputText& box) = 0;
};

// What a Step did; it decides the follow-up (line table, undo, selection).
enum InputAction : int {
  ACTION_NONE = 0,
  ACTION_TYPE = 1,
  ACTION_DELETE = 2,
  ACTION_CARET = 3,
  ACTION_INSERT = 4,  // Tab, Enter
  ACTION_UNDO_REDO = 5,
  ACTION_CUT = 6,
  ACTION_PASTE = 7,
  ACTION_SET_TEXT = 8,
  ACTION_TRANSFORM = 9,
};

class ObjInputText : public CInstance {
 public:
  using CInstance::CInstance;

  void step();
  void draw();
  void draw_at_end();
  void destroy();

  // Sets everything a constructor gives; the rest keeps its defaults.
  void construct(bool multiline, double width, double height, int32_t font, uint32_t color, double alpha,
                 double wrapping_width, int max_length, int max_lines, double line_separation, int h_align,
                 int v_align, bool selection_enabled, int fit_style);

  // Takes the keys: the one box that does.
  void enable();
  // Paste, caret, undo depth, the selection's colours, and whether shaders draw it.
  void set_misc(bool paste, int caret_style, int undo_states, uint32_t selection_background,
                double selection_background_alpha, uint32_t selection_text, double selection_text_alpha,
                bool use_shaders);

  std::string text_utf8() const;
  // The text as it will be after the next Step: carriage returns dropped.
  void set_text_from_outside(std::string_view utf8);
  // The text with positions [from, to) replaced by `utf8` after the next Step, the caret behind it and no
  // selection: how the edit menu and the palette write into the box.
  void replace_from_outside(int from, int to, std::string_view utf8);
  // The caret as a position for editing: a negative caret turned back.
  int caret() const { return cursor_position < 0 ? -cursor_position + 1 : cursor_position; }
  bool has_selection() const { return selection_start != 0; }

  // Construction
  bool multiline = false;
  double width = 0, height = 0;
  int32_t font = -1;
  uint32_t color = 0;
  double alpha = 1;
  double wrapping_width = -1;
  int max_length = -1, max_lines = -1;
  double line_separation = -1;
  int h_align = 0, v_align = 0;
  bool selection_enabled = true;
  int fit_style = 0;
  double char_height = 0;

  // Text
  Chars text;
  std::string text_draw;
  std::optional<Chars> text_change_from_outside;
  double text_width = 0, text_height = 0;
  int lines = 1;
  std::vector<int> new_line_list{0, 1};  // line starts, 0-based, and the length + 1 after them
  int cursor_line = 0;

  // Caret
  int cursor_position = 1, cursor_position_previous = 1;
  double cursor_offset_x = 0, cursor_offset_y = 0;
  int cursor_style = 0;
  double cursor_time = 700000, cursor_timer = 700000;
  int cursor_special = 0;

  // Selection
  int selection_start = 0, selection_end = 0;
  int selection_start_ordered = 0, selection_end_ordered = 0;
  int selection_start_line = 0, selection_end_line = 0;
  int selection_start_line_ordered = 0, selection_end_line_ordered = 0;
  uint32_t selection_color_text = 0xFFFFFF, selection_color_background = 0;
  double selection_alpha_text = 1, selection_alpha_background = 0.6;
  double mouse_pressed_previous = -500000, double_click_time = 500000;
  double m_x_previous = 0, m_y_previous = 0;

  // View
  double offset_x = 0, offset_y = 0, v_align_offset = 0;
  double origin_x = 0, origin_y = 0;
  double local_scale_x = 1, local_scale_y = 1, global_scale_x = 1, global_scale_y = 1;
  bool transformation_was_changed = false;
  double eoln_width = 6;
  bool draw_end = false;
  bool update_surfaces = true;
  int32_t sf_main = -1, sf_selection = -1;
  bool shaders = true;

  // Input
  bool enabled = false;
  int enabled_step = 0;
  int key_pressed = 0, key_down = 0;
  double key_pressed_timer = 0;
  bool clipboard_pasting_enabled = true;

  // Undo
  int max_undo_redo_states = 32;
  std::vector<Chars> undo_redo_text_list;
  std::vector<int> undo_redo_cursor_position_list;
  int undo_redo_position = 0;
  int action_previous = ACTION_SET_TEXT;

  // The code box's hook for Enter: the editor's slides take the line feed
  // over when it returns true. Only the editor's box has one.
  bool (*enter_in_code_box)(ObjInputText& box) = nullptr;
  // The code box's colours; none for the other boxes.
  LinePainter* painter = nullptr;
  // The code box's text as it stood before the Step that overflowed it.
  std::string slide_text_backup;

 private:
  int choose_action(Chars& insertion);
  void apply(int action, const Chars& insertion);
  void delete_range(int from, int to);  // positions [from, to)
  void keep_max_length();
  bool keep_max_lines();
  void track_selection(int action, bool extend);
  void take_undo_snapshot(int action, const Chars& before);
  void restore_undo_state();
  void update_key_repeat();
  void update_blink(bool caret_moved);
  // Where the caret goes for a click, a drag or Up, Down, Page Up, Page Down; true for a double click.
  bool place_caret(bool fresh_click, bool by_pointer);
  // The pointer in the box's own pixels: turned back by its angle, divided by its scales.
  void pointer(double& px, double& py) const;
  bool pointer_inside() const;
  void select_word();
  int line_of(int position) const;
  int visible_end(int line) const;  // 0-based offset after the line's last shown character
  bool soft_wrapped(int line) const;
  int caret_for_line_end(int line) const;
  void move_horizontally(int key, bool ctrl);
  // The word jumps of Ctrl: the position a word boundary (or a line feed) further.
  int word_start_before(int position) const;
  int word_end_after(int position) const;
  void rebuild_lines();
  void update_caret_offsets();
  void scroll_to_caret();
  double width_of(int from, int to) const;  // 0-based [from, to)
  // False while the surfaces can't be made (no graphics device yet).
  bool draw_surfaces();
  // The text's lines onto the text surface, at (left, top): all of them, or those that changed.
  void draw_text_lines(bool lost, double left, double top);
  void draw_widget();
  Chars selected() const;

  bool keep_selection_ = false;  // a select-all or a double click made the selection of this Step
  bool pressed_inside_ = false;  // the left button went down in the box and is still held
  bool selection_drawn_ = false;  // the selection surface holds a selection
  // What the text surface holds: the lines of text_draw, drawn from (drawn_left_, drawn_top_).
  std::vector<std::string> drawn_lines_;
  double drawn_left_ = 0, drawn_top_ = 0;
};

// Characters of words: ASCII letters and digits and the Latin-1 letters.
bool is_word_char(uint32_t c);
Chars chars_of(std::string_view utf8);
std::string utf8_of(const Chars& chars, size_t from = 0, size_t to = SIZE_MAX);

// A box at (x, y), to be given its shape by construct().
ObjInputText* input_text_new(float x, float y);
// The object, its built-ins (input_text_*), and the object's index.
int32_t define_obj_input_text();
int32_t obj_input_text_object();
