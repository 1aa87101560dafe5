// The input state: switches for keys and mouse buttons, each with what was
// collected since the last frame and what the frame sees.
#include "runtime/IO/Input.h"

#include <bitset>
#include <cstddef>

#include "runtime/Platform/Window.h"

namespace {

// A bank of on/off inputs (keys, or mouse buttons) and their frame state.
template <size_t N>
class SwitchBank {
 public:
  // Notes a change of switch `i`; true for a new press. Going down while
  // down, or up while up, changes nothing: a repeat, or the release of a
  // switch that mouse_clear took away.
  bool event(size_t i, bool down) {
    if (held_[i] == down) return false;
    held_[i] = down;
    (down ? pressed_since_ : released_since_)[i] = true;
    return down;
  }

  // A switch pressed since the last frame is down in this one even if it
  // came up again already, so that its press is seen as a held key too.
  void begin_frame() {
    pressed_ = pressed_since_;
    released_ = released_since_;
    down_ = held_ | pressed_;
    pressed_since_.reset();
    released_since_.reset();
  }

  void clear(size_t i) {
    held_[i] = pressed_since_[i] = released_since_[i] = false;
    down_[i] = pressed_[i] = released_[i] = false;
  }

  void clear_all() { *this = SwitchBank(); }

  bool down(size_t i) const { return down_[i]; }
  bool pressed(size_t i) const { return pressed_[i]; }
  bool released(size_t i) const { return released_[i]; }
  bool any_down() const { return down_.any(); }
  bool any_pressed() const { return pressed_.any(); }
  bool any_released() const { return released_.any(); }

 private:
  std::bitset<N> held_, pressed_since_, released_since_;  // collected from events
  std::bitset<N> down_, pressed_, released_;              // the frame's state
};

struct InputState {
  SwitchBank<KEY_COUNT> keys;
  SwitchBank<MOUSE_MIDDLE + 1> buttons;  // slot 0 stays empty
  int live_x = 0, live_y = 0;
  int frame_x = 0, frame_y = 0;
  bool wheel_up_since = false, wheel_down_since = false;
  bool wheel_up = false, wheel_down = false;
  std::string keyboard_string;
  std::string keyboard_lastchar;
  int keyboard_lastkey = 0;
  int keyboard_key = 0;
  int mouse_lastbutton = 0;
  int mouse_button = 0;
};

InputState& state() {
  static InputState input;
  return input;
}

bool is_key(int code) { return code >= 2 && code < KEY_COUNT; }
bool is_button(int button) { return button >= MOUSE_LEFT && button <= MOUSE_MIDDLE; }

// Where the last character of `text` begins: behind the UTF-8 continuation
// bytes that end the text.
size_t last_character_start(std::string_view text) {
  size_t start = text.size();
  while (start > 0) {
    --start;
    if ((static_cast<unsigned char>(text[start]) & 0xC0) != 0x80) break;
  }
  return start;
}

// The three forms every key and button query takes: "none", "any" and one.
bool check(int code, int none_code, int any_code, bool (*one)(int), bool (*any)()) {
  if (code == none_code) return !any();
  if (code == any_code) return any();
  return one(code);
}

}  // namespace

void input_key_event(int code, bool down) {
  if (!is_key(code)) return;
  InputState& s = state();
  s.keys.event(static_cast<size_t>(code), down);
  if (down) {
    s.keyboard_lastkey = code;
    s.keyboard_key = code;
    // Backspace edits the typed text as a text box would, at every repeat.
    if (code == KEY_BACKSPACE) s.keyboard_string.resize(last_character_start(s.keyboard_string));
  } else if (s.keyboard_key == code) {
    s.keyboard_key = 0;
  }
}

void input_mouse_button_event(int button, bool down) {
  if (!is_button(button)) return;
  InputState& s = state();
  if (s.buttons.event(static_cast<size_t>(button), down)) {
    s.mouse_lastbutton = button;
    s.mouse_button = button;
  } else if (!down && s.mouse_button == button) {
    s.mouse_button = 0;
  }
}

void input_mouse_move(int x, int y) {
  state().live_x = x;
  state().live_y = y;
}

void input_wheel(int dy) {
  if (dy > 0) state().wheel_up_since = true;
  if (dy < 0) state().wheel_down_since = true;
}

void input_text(std::string_view utf8) {
  if (utf8.empty()) return;
  InputState& s = state();
  s.keyboard_string += utf8;
  s.keyboard_lastchar = utf8.substr(last_character_start(utf8));
}

void input_begin_frame() {
  InputState& s = state();
  s.keys.begin_frame();
  s.buttons.begin_frame();
  s.frame_x = s.live_x;
  s.frame_y = s.live_y;
  s.wheel_up = s.wheel_up_since;
  s.wheel_down = s.wheel_down_since;
  s.wheel_up_since = s.wheel_down_since = false;
}

void input_reset() { state() = InputState(); }

bool key_down(int code) { return is_key(code) && state().keys.down(static_cast<size_t>(code)); }
bool key_pressed(int code) { return is_key(code) && state().keys.pressed(static_cast<size_t>(code)); }
bool key_released(int code) { return is_key(code) && state().keys.released(static_cast<size_t>(code)); }
bool any_key_down() { return state().keys.any_down(); }
bool any_key_pressed() { return state().keys.any_pressed(); }
bool any_key_released() { return state().keys.any_released(); }

bool mouse_button_down(int button) { return is_button(button) && state().buttons.down(static_cast<size_t>(button)); }
bool mouse_button_pressed(int button) {
  return is_button(button) && state().buttons.pressed(static_cast<size_t>(button));
}
bool mouse_button_released(int button) {
  return is_button(button) && state().buttons.released(static_cast<size_t>(button));
}
// Slot 0 of the button bank is never set, so "any" reads the three buttons.
bool any_mouse_button_down() { return state().buttons.any_down(); }
bool any_mouse_button_pressed() { return state().buttons.any_pressed(); }
bool any_mouse_button_released() { return state().buttons.any_released(); }

void mouse_clear(int button) {
  InputState& s = state();
  if (button == MOUSE_ANY) s.buttons.clear_all();
  else if (is_button(button)) s.buttons.clear(static_cast<size_t>(button));
  if (button == MOUSE_ANY || button == s.mouse_button) s.mouse_button = 0;
}

int mouse_x() { return state().frame_x; }
int mouse_y() { return state().frame_y; }
bool wheel_up() { return state().wheel_up; }
bool wheel_down() { return state().wheel_down; }

const std::string& keyboard_string() { return state().keyboard_string; }
void set_keyboard_string(std::string_view text) { state().keyboard_string = text; }
int keyboard_lastkey() { return state().keyboard_lastkey; }
int keyboard_key() { return state().keyboard_key; }
const std::string& keyboard_lastchar() { return state().keyboard_lastchar; }
int mouse_lastbutton() { return state().mouse_lastbutton; }
int mouse_button() { return state().mouse_button; }

bool keyboard_check(int code) { return check(code, KEY_NONE, KEY_ANY, key_down, any_key_down); }
bool keyboard_check_pressed(int code) { return check(code, KEY_NONE, KEY_ANY, key_pressed, any_key_pressed); }
bool keyboard_check_released(int code) { return check(code, KEY_NONE, KEY_ANY, key_released, any_key_released); }

bool mouse_check_button(int button) {
  return check(button, MOUSE_NONE, MOUSE_ANY, mouse_button_down, any_mouse_button_down);
}
bool mouse_check_button_pressed(int button) {
  return check(button, MOUSE_NONE, MOUSE_ANY, mouse_button_pressed, any_mouse_button_pressed);
}
bool mouse_check_button_released(int button) {
  return check(button, MOUSE_NONE, MOUSE_ANY, mouse_button_released, any_mouse_button_released);
}

namespace {

struct WindowInput final : platform::InputListener {
  void key(int code, bool down) override { input_key_event(code, down); }
  void text(const char* utf8) override { input_text(utf8); }
  void mouse_move(int x, int y) override { input_mouse_move(x, y); }
  void mouse_button(int button, bool down) override { input_mouse_button_event(button, down); }
  void wheel(int dy) override { input_wheel(dy); }
};

}  // namespace

platform::InputListener& input_from_window() {
  static WindowInput listener;
  return listener;
}
