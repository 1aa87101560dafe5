// The Step of obj_input_text: key repeat, the one action of the Step in
// its order, then the follow-up every action has.
#include <algorithm>

#include "environment/rooms.h"
#include "environment/text_control/edit_menu.h"
#include "environment/text_control/input_text.h"
#include "runtime/Function/MathFunctions.h"
#include "runtime/Function/SystemFunctions.h"
#include "runtime/IO/Input.h"
#include "runtime/Room/FrameState.h"
#include "runtime/Room/Room.h"

namespace {

constexpr double FIRST_REPEAT = 380000, NEXT_REPEAT = 26000;  // microseconds
constexpr uint32_t REPLACEMENT_CHARACTER = 0xFFFD;
// The editor's undo button, and the undo states the code box keeps from its first edit.
constexpr double UNDO_BUTTON_LEFT = 960, UNDO_BUTTON_RIGHT = 995, UNDO_BUTTON_TOP = 5, UNDO_BUTTON_BOTTOM = 40;
constexpr int CODE_BOX_KEPT_STATES = 2;

Chars without(const Chars& chars, uint32_t dropped) {
  Chars kept;
  kept.reserve(chars.size());
  for (const uint32_t c : chars) {
    if (c != dropped) kept.push_back(c);
  }
  return kept;
}

bool in_editor_room() { return current_room_index() == ROOM_EDITOR; }

}  // namespace

void ObjInputText::set_text_from_outside(std::string_view utf8) { text_change_from_outside = without(chars_of(utf8), '\r'); }

void ObjInputText::replace_from_outside(int from, int to, std::string_view utf8) {
  // Measured as the box will hold it: without carriage returns.
  const Chars inserted = without(chars_of(utf8), '\r');
  Chars changed = text_change_from_outside.value_or(text);
  from = std::clamp(from, 1, static_cast<int>(changed.size()) + 1);
  to = std::clamp(to, from, static_cast<int>(changed.size()) + 1);
  changed.erase(changed.begin() + (from - 1), changed.begin() + (to - 1));
  changed.insert(changed.begin() + (from - 1), inserted.begin(), inserted.end());
  text_change_from_outside = std::move(changed);
  cursor_special = 1;
  cursor_position = from + static_cast<int>(inserted.size());
  selection_start = selection_end = 0;
}

void ObjInputText::update_key_repeat() {
  key_pressed = 0;
  if (any_key_pressed()) {
    key_pressed_timer = FIRST_REPEAT;
    key_down = keyboard_lastkey();
    key_pressed = key_down;
    return;
  }
  key_pressed_timer -= static_cast<double>(frame_state().delta_time);
  if (key_pressed_timer <= 0) {
    key_pressed_timer = NEXT_REPEAT;
    if (key_down != 0 && ::key_down(key_down)) key_pressed = key_down;
  }
}

Chars ObjInputText::selected() const {
  if (!has_selection()) return {};
  return Chars(text.begin() + (selection_start_ordered - 1), text.begin() + (selection_end_ordered - 1));
}

void ObjInputText::delete_range(int from, int to) {
  from = std::clamp(from, 1, static_cast<int>(text.size()) + 1);
  to = std::clamp(to, from, static_cast<int>(text.size()) + 1);
  text.erase(text.begin() + (from - 1), text.begin() + (to - 1));
  cursor_position = from;
}

int ObjInputText::choose_action(Chars& insertion) {
  if (text_change_from_outside) {
    text = std::move(*text_change_from_outside);
    text_change_from_outside.reset();
    if (cursor_special != 1) cursor_position = static_cast<int>(text.size()) + 1;
    cursor_position = std::clamp(cursor_position, 1, static_cast<int>(text.size()) + 1);
    cursor_special = 0;
    selection_start = selection_end = 0;
    return ACTION_SET_TEXT;
  }
  if (transformation_was_changed) {
    transformation_was_changed = false;
    return ACTION_TRANSFORM;
  }
  if (!enabled) return ACTION_NONE;
  const bool ctrl = ::key_down(KEY_CONTROL), shift = ::key_down(KEY_SHIFT);
  const int key = key_pressed;
  const int letter_c = KEY_LETTER_A + 2, letter_x = KEY_LETTER_A + 23, letter_y = KEY_LETTER_A + 24,
            letter_z = KEY_LETTER_A + 25, letter_a = KEY_LETTER_A, letter_v = KEY_LETTER_A + 21;
  if (has_selection() && ctrl && (key == letter_c || key == letter_x)) {
    clipboard_set_text(utf8_of(selected()));
    if (key == letter_x) return ACTION_CUT;
  }
  if (key == KEY_TAB) {
    insertion.assign(4, U' ');
    return ACTION_INSERT;
  }
  const bool redo = ctrl && (key == letter_y || (shift && key == letter_z));
  if (redo && undo_redo_position + 1 < static_cast<int>(undo_redo_text_list.size())) {
    ++undo_redo_position;
    restore_undo_state();
    return ACTION_UNDO_REDO;
  }
  const bool undo_click = in_editor_room() && mouse_button_pressed(MOUSE_LEFT) && mouse_x() >= UNDO_BUTTON_LEFT &&
                          mouse_x() <= UNDO_BUTTON_RIGHT && mouse_y() >= UNDO_BUTTON_TOP &&
                          mouse_y() <= UNDO_BUTTON_BOTTOM;
  const int lowest = in_editor_room() ? CODE_BOX_KEPT_STATES : 0;
  if (((ctrl && key == letter_z) || undo_click) && !shift && undo_redo_position > lowest) {
    --undo_redo_position;
    restore_undo_state();
    return ACTION_UNDO_REDO;
  }
  if (ctrl && key == letter_a) {
    keep_selection_ = true;
    selection_start = 1;
    cursor_position = static_cast<int>(text.size()) + 1;
    return ACTION_CARET;
  }
  double px = 0, py = 0;
  pointer(px, py);
  const bool fresh_click = mouse_button_pressed(MOUSE_LEFT) && pointer_inside() && !edit_menu_under_pointer();
  const bool drag = selection_enabled && mouse_button_down(MOUSE_LEFT) && !mouse_button_pressed(MOUSE_LEFT) &&
                    (px != m_x_previous || py != m_y_previous) && pressed_inside_;
  const bool vertical_key =
      multiline && (key == KEY_UP || key == KEY_DOWN || key == KEY_PAGE_UP || key == KEY_PAGE_DOWN);
  if (fresh_click || drag || vertical_key) {
    if (place_caret(fresh_click, fresh_click || drag)) {
      select_word();
      keep_selection_ = true;
    }
    return ACTION_CARET;
  }
  if (ctrl && key == letter_v && clipboard_pasting_enabled && clipboard_has_text()) {
    insertion = without(chars_of(clipboard_get_text()), '\r');
    if (!multiline) insertion = without(insertion, '\n');
    return ACTION_PASTE;
  }
  if (key == KEY_ENTER && multiline) {
    if (enter_in_code_box && enter_in_code_box(*this)) return ACTION_INSERT;
    insertion.assign(1, U'\n');
    return ACTION_INSERT;
  }
  if (key == KEY_DELETE || key == KEY_BACKSPACE) {
    if (!has_selection()) {
      const int p = caret();
      if (key == KEY_DELETE) delete_range(p, ctrl ? word_end_after(p) : p + 1);
      else if (p > 1) delete_range(ctrl ? word_start_before(p) : p - 1, p);
    }
    return ACTION_DELETE;
  }
  if (key == KEY_HOME) {
    cursor_position = multiline && !ctrl ? new_line_list[static_cast<size_t>(cursor_line)] + 1 : 1;
    return ACTION_CARET;
  }
  if (key == KEY_END) {
    cursor_position = multiline && !ctrl ? caret_for_line_end(cursor_line) : static_cast<int>(text.size()) + 1;
    return ACTION_CARET;
  }
  if (key == KEY_LEFT || key == KEY_RIGHT) {
    move_horizontally(key, ctrl);
    return ACTION_CARET;
  }
  if (!keyboard_string().empty()) {
    insertion = without(chars_of(keyboard_string()), REPLACEMENT_CHARACTER);
    return ACTION_TYPE;
  }
  return ACTION_NONE;
}

void ObjInputText::apply(int action, const Chars& insertion) {
  set_keyboard_string("");
  if (action == ACTION_CARET || action == ACTION_TRANSFORM) return;
  if (has_selection()) {
    delete_range(selection_start_ordered, selection_end_ordered);
    selection_start = selection_end = 0;
  }
  const int p = caret();
  text.insert(text.begin() + (p - 1), insertion.begin(), insertion.end());
  cursor_position = p + static_cast<int>(insertion.size());
  keep_max_length();
}

void ObjInputText::keep_max_length() {
  if (max_length < 0 || static_cast<int>(text.size()) <= max_length) return;
  const int excess = static_cast<int>(text.size()) - max_length;
  const int p = caret();
  const int from = std::max(1, p - excess);
  delete_range(from, p);
  cursor_position = from;
}

bool ObjInputText::keep_max_lines() {
  while (max_lines > 0 && lines > max_lines) {
    const int p = caret();
    cursor_line = line_of(p);
    const int excess = lines - max_lines;
    if (excess == 1 && p > 1) {
      delete_range(p - 1, p);
    } else if (cursor_line >= excess) {
      // The line ends just before the caret go, with what stands between them.
      delete_range(new_line_list[static_cast<size_t>(cursor_line - excess)] + 1, p);
    } else {
      // The caret stands too high for that: the code box takes its text back, another box drops the tail.
      if (enter_in_code_box) return false;
      const int cut = new_line_list[static_cast<size_t>(max_lines)];
      text.resize(static_cast<size_t>(text[static_cast<size_t>(cut - 1)] == U'\n' ? cut - 1 : cut));
      cursor_position = std::min(p, static_cast<int>(text.size()) + 1);
    }
    rebuild_lines();
  }
  return true;
}

void ObjInputText::track_selection(int action, bool extend) {
  if (action != ACTION_CARET) return;
  if (!extend) {
    selection_start = selection_end = 0;
    return;
  }
  if (selection_start == 0) selection_start = cursor_position_previous;
  selection_end = caret();
  if (selection_start == selection_end) {
    selection_start = selection_end = 0;
    return;
  }
  selection_start_ordered = std::min(selection_start, selection_end);
  selection_end_ordered = std::max(selection_start, selection_end);
  selection_start_line = line_of(selection_start);
  selection_end_line = line_of(selection_end);
  selection_start_line_ordered = std::min(selection_start_line, selection_end_line);
  selection_end_line_ordered = std::max(selection_start_line, selection_end_line);
}

void ObjInputText::restore_undo_state() {
  const auto at = static_cast<size_t>(undo_redo_position);
  text = undo_redo_text_list[at];
  cursor_position = std::clamp(undo_redo_cursor_position_list[at], 1, static_cast<int>(text.size()) + 1);
  selection_start = selection_end = 0;
}

void ObjInputText::take_undo_snapshot(int action, const Chars& before) {
  if (max_undo_redo_states == 0 || action == ACTION_NONE || action == ACTION_TRANSFORM || action == action_previous) {
    return;
  }
  if (action == ACTION_CARET && caret() == cursor_position_previous) return;
  const bool between_caret_and_undo = (action == ACTION_CARET && action_previous == ACTION_UNDO_REDO) ||
                                      (action == ACTION_UNDO_REDO && action_previous == ACTION_CARET);
  if (!between_caret_and_undo) {
    if (action == ACTION_UNDO_REDO) {
      --undo_redo_position;
    } else {
      const auto kept = static_cast<size_t>(std::max(0, undo_redo_position));
      undo_redo_text_list.resize(kept);
      undo_redo_cursor_position_list.resize(kept);
    }
    undo_redo_text_list.push_back(before);
    undo_redo_cursor_position_list.push_back(cursor_position_previous);
    if (max_undo_redo_states > 0 && static_cast<int>(undo_redo_text_list.size()) > max_undo_redo_states) {
      const auto excess = static_cast<long>(undo_redo_text_list.size()) - max_undo_redo_states;
      undo_redo_text_list.erase(undo_redo_text_list.begin(), undo_redo_text_list.begin() + excess);
      undo_redo_cursor_position_list.erase(undo_redo_cursor_position_list.begin(),
                                           undo_redo_cursor_position_list.begin() + excess);
      undo_redo_position = std::max(0, undo_redo_position - static_cast<int>(excess));
    }
    undo_redo_position = std::max(0, undo_redo_position) + 1;
  }
  action_previous = action;
}

void ObjInputText::update_blink(bool caret_moved) {
  cursor_timer -= static_cast<double>(frame_state().delta_time);
  if (caret_moved || cursor_timer <= -cursor_time) cursor_timer = cursor_time;
}

void ObjInputText::step() {
  // A right click in the editor closes the menu of the text; on the code box it opens a new one.
  if (in_editor_room() && mouse_button_pressed(MOUSE_RIGHT)) edit_menu_open(*this, pointer_inside());
  if (enabled) {
    ++enabled_step;
    update_key_repeat();
  }
  const Chars before = text;
  const int selection_before[2] = {selection_start, selection_end};
  const double offsets_before[2] = {offset_x, offset_y};
  cursor_position_previous = caret();
  const bool fresh_press = mouse_button_pressed(MOUSE_LEFT);
  Chars insertion;
  const int action = choose_action(insertion);
  if (action != ACTION_NONE) apply(action, insertion);
  if (action != ACTION_NONE && action != ACTION_CARET) {
    rebuild_lines();
    if (!keep_max_lines()) {
      set_text_from_outside(slide_text_backup);
      return;
    }
  }
  const bool extend = ::key_down(KEY_SHIFT) || (mouse_button_down(MOUSE_LEFT) && !fresh_press) || keep_selection_;
  track_selection(action, extend);
  keep_selection_ = false;
  const bool pressed_here = fresh_press && pointer_inside();
  pressed_inside_ = mouse_button_down(MOUSE_LEFT) && (pressed_inside_ || pressed_here);
  update_caret_offsets();
  scroll_to_caret();
  take_undo_snapshot(action, before);
  update_blink(caret() != cursor_position_previous);
  if (action != ACTION_NONE || selection_before[0] != selection_start || selection_before[1] != selection_end ||
      offsets_before[0] != offset_x || offsets_before[1] != offset_y) {
    update_surfaces = true;
  }
  // In the code box an empty first line still draws as a line.
  if (in_editor_room() && !text_draw.empty() && text_draw.front() == '\n') text_draw.front() = ' ';
}
