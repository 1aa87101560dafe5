#include "runtime/IO/Input.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "runtime/Code/Builtins.h"
#include "runtime/Platform/Window.h"
#include "support/CallBuiltin.h"

namespace {

class InputTest : public ::testing::Test {
 protected:
  void SetUp() override { input_reset(); }
};

// The keyboard or the mouse, as the frame's queries see them.
struct Bank {
  void (*event)(int, bool);
  bool (*down)(int), (*pressed)(int), (*released)(int);
  int (*held)(), (*last)();
  // A code's three answers in one text, "down pressed released", "-" for each that is false.
  std::string state(int code) const {
    return std::string(down(code) ? "down" : "-") + (pressed(code) ? " pressed" : " -") +
           (released(code) ? " released" : " -");
  }
};
const Bank keys{input_key_event, keyboard_check, keyboard_check_pressed, keyboard_check_released,
                keyboard_key, keyboard_lastkey};
const Bank buttons{input_mouse_button_event, mouse_check_button, mouse_check_button_pressed,
                   mouse_check_button_released, mouse_button, mouse_lastbutton};

// One frame: the events collected before it, then the answers it gives for
// some codes, and the code held and the last one down.
struct Frame {
  std::vector<std::pair<int, bool>> events;
  std::vector<std::pair<int, const char*>> states;
  int held, last;
};

// Feeds each frame's events, starts the frame and checks its answers.
void play(const Bank& bank, const std::vector<Frame>& frames) {
  for (size_t n = 0; n < frames.size(); ++n) {
    SCOPED_TRACE(testing::Message() << "frame " << n);
    for (const auto& [code, down] : frames[n].events) bank.event(code, down);
    input_begin_frame();
    for (const auto& [code, state] : frames[n].states) EXPECT_EQ(bank.state(code), state) << "code " << code;
    EXPECT_EQ(bank.held(), frames[n].held);
    EXPECT_EQ(bank.last(), frames[n].last);
  }
}

TEST_F(InputTest, KeysShowFromTheNextFrameWithZeroForNoKeyAndOneForAnyKey) {
  input_key_event(KEY_LEFT, true);
  EXPECT_EQ(keys.state(KEY_LEFT), "- - -") << "events wait for the frame";
  constexpr int LEFT = KEY_LEFT, ENTER = KEY_ENTER, CONTROL = KEY_CONTROL, A = KEY_LETTER_A, B = KEY_LETTER_A + 1;
  play(keys, {
      {{}, {{LEFT, "down pressed -"}, {KEY_ANY, "down pressed -"}, {KEY_NONE, "- - released"}}, LEFT, LEFT},
      {{}, {{LEFT, "down - -"}}, LEFT, LEFT},
      {{{LEFT, false}}, {{LEFT, "- - released"}, {KEY_ANY, "- - released"}, {KEY_NONE, "down pressed -"}}, 0, LEFT},
      {{}, {{LEFT, "- - -"}, {KEY_ANY, "- - -"}, {KEY_NONE, "down pressed released"}}, 0, LEFT},
      // Down and up between two frames: both show, and the key counts as down.
      {{{ENTER, true}, {ENTER, false}}, {{ENTER, "down pressed released"}}, 0, ENTER},
      // A repeated down is no new press; a release of a key not held is none,
      // and the key held stays while another goes up.
      {{{A, true}, {CONTROL, true}}, {}, CONTROL, CONTROL},
      {{{A, true}, {B, false}, {CONTROL, false}}, {{A, "down - -"}, {B, "- - -"}}, A, A},
      {{{A, false}}, {{A, "- - released"}}, 0, A},
      // Codes outside 2..255 are no keys.
      {{{KEY_NONE, true}, {KEY_ANY, true}, {256, true}, {-5, true}}, {{KEY_ANY, "- - -"}, {256, "- - -"}}, 0, A},
      {{{255, true}}, {{255, "down pressed -"}}, 255, 255},
  });
}

TEST_F(InputTest, MouseButtonsFollowTheFramesWithZeroForNoneAndMinusOneForAny) {
  play(buttons, {
      {{}, {{MOUSE_NONE, "down pressed released"}, {MOUSE_ANY, "- - -"}}, 0, 0},
      {{{MOUSE_RIGHT, true}, {4, true}},
       {{MOUSE_RIGHT, "down pressed -"}, {MOUSE_LEFT, "- - -"}, {4, "- - -"}, {MOUSE_ANY, "down pressed -"},
        {MOUSE_NONE, "- - released"}}, MOUSE_RIGHT, MOUSE_RIGHT},
      {{}, {{MOUSE_RIGHT, "down - -"}, {MOUSE_NONE, "- pressed released"}}, MOUSE_RIGHT, MOUSE_RIGHT},
      {{{MOUSE_RIGHT, false}, {MOUSE_MIDDLE, true}, {MOUSE_MIDDLE, false}},
       {{MOUSE_RIGHT, "- - released"}, {MOUSE_MIDDLE, "down pressed released"}, {MOUSE_LEFT, "- - -"}},
       0, MOUSE_MIDDLE},
  });
}

TEST_F(InputTest, MouseClearForgetsTheButtonUntilItIsPressedAgain) {
  play(buttons, {{{{MOUSE_LEFT, true}, {MOUSE_RIGHT, true}}, {}, MOUSE_RIGHT, MOUSE_RIGHT}});
  mouse_clear(MOUSE_LEFT);
  EXPECT_EQ(buttons.state(MOUSE_LEFT), "- - -");
  EXPECT_EQ(buttons.state(MOUSE_RIGHT), "down pressed -");
  // Still held, but cleared: no down, and no release when it comes up.
  play(buttons, {{{}, {{MOUSE_LEFT, "- - -"}}, MOUSE_RIGHT, MOUSE_RIGHT},
                 {{{MOUSE_LEFT, false}}, {{MOUSE_LEFT, "- - -"}}, MOUSE_RIGHT, MOUSE_RIGHT},
                 {{{MOUSE_LEFT, true}}, {{MOUSE_LEFT, "down pressed -"}}, MOUSE_LEFT, MOUSE_LEFT}});
  mouse_clear(MOUSE_ANY);
  EXPECT_EQ(buttons.state(MOUSE_NONE), "down pressed released");
  EXPECT_EQ(mouse_button(), 0);
  play(buttons, {{{}, {{MOUSE_ANY, "- - -"}}, 0, MOUSE_LEFT}});
}

TEST_F(InputTest, WheelAndMousePositionAreTakenAtTheFrameStart) {
  const auto wheel = [] { return std::string(wheel_up() ? "up" : "-") + (wheel_down() ? " down" : " -"); };
  for (const auto& [turns, expected] : std::vector<std::pair<std::vector<int>, const char*>>{
           {{2}, "up -"}, {{-1, 1}, "up down"}, {{0}, "- -"}}) {
    for (const int dy : turns) input_wheel(dy);
    input_begin_frame();
    EXPECT_EQ(wheel(), expected);
  }
  input_mouse_move(120, 45);
  EXPECT_EQ(mouse_x(), 0);
  input_begin_frame();
  input_mouse_move(7, 9);
  EXPECT_EQ(std::pair(mouse_x(), mouse_y()), std::pair(120, 45));
  input_begin_frame();
  EXPECT_EQ(std::pair(mouse_x(), mouse_y()), std::pair(7, 9));
}

TEST_F(InputTest, TypedTextAndBackspaceBuildKeyboardString) {
  input_text("caff");
  input_text("è");
  input_text("");
  EXPECT_EQ(keyboard_string(), "caffè");
  EXPECT_EQ(keyboard_lastchar(), "è");
  input_key_event(KEY_BACKSPACE, true);
  EXPECT_EQ(keyboard_string(), "caff") << "backspace takes the whole two-byte character";
  input_key_event(KEY_BACKSPACE, true);
  EXPECT_EQ(keyboard_string(), "caf") << "a repeat takes one more";
  set_keyboard_string("");
  input_key_event(KEY_BACKSPACE, true);
  EXPECT_EQ(keyboard_string(), "");
  input_text("ok€");
  EXPECT_EQ(keyboard_lastchar(), "€");
}

TEST_F(InputTest, BuiltinsByNameGiveTheFramesAnswers) {
  register_runtime_builtins();
  const auto n = [](double d) { return RValue::number(d); };
  input_key_event(KEY_SPACE, true);
  input_mouse_button_event(MOUSE_LEFT, true);
  input_mouse_move(31, 17);
  input_wheel(-3);
  input_begin_frame();
  const struct { const char* name; std::vector<RValue> args; const char* answer; } rows[] = {
      {"keyboard_check", {n(KEY_SPACE)}, "bool:1"},           {"keyboard_check", {n(KEY_NONE)}, "bool:0"},
      {"keyboard_check_pressed", {n(KEY_ANY)}, "bool:1"},     {"keyboard_check_pressed", {n(300)}, "bool:0"},
      {"keyboard_check_released", {n(KEY_NONE)}, "bool:1"},   {"mouse_check_button", {n(MOUSE_LEFT)}, "bool:1"},
      {"mouse_check_button_pressed", {n(MOUSE_ANY)}, "bool:1"},
      {"mouse_check_button_released", {n(MOUSE_NONE)}, "bool:1"},
      {"mouse_wheel_up", {}, "bool:0"},                       {"mouse_wheel_down", {}, "bool:1"},
      {"window_mouse_get_x", {}, "number:31"},                {"window_mouse_get_y", {}, "number:17"},
      {"keyboard_virtual_status", {}, "undefined:undefined"},
      {"keyboard_virtual_show", {n(0), n(0), n(0), RValue::boolean(false)}, "undefined:undefined"},
      {"mouse_clear", {n(MOUSE_LEFT)}, "undefined:undefined"}, {"mouse_check_button", {n(MOUSE_LEFT)}, "bool:0"},
  };
  for (const auto& row : rows) EXPECT_EQ(call_shown(row.name, row.args), row.answer) << row.name;
}

}  // namespace

namespace {

// The window as programs see it, on the headless window.
TEST(WindowFunctions, SizePositionCaptionAndCursorByTheirBuiltins) {
  platform::make_window(true).create(640, 480, "Velant", {});
  register_runtime_builtins();
  call_builtin("window_set_size", {RValue::number(800), RValue::number(600)});
  call_builtin("window_set_position", {RValue::number(20), RValue::number(30)});
  call_builtin("window_set_caption", {RValue::text("Il mio gioco")});
  EXPECT_EQ(call_builtin("window_get_width").real, 800);
  EXPECT_EQ(call_builtin("window_get_y").real, 30);
  EXPECT_EQ(call_builtin("window_get_caption").string_view(), "Il mio gioco");
  for (const double cursor : {-1.0, 77.0}) {
    call_builtin("window_set_cursor", {RValue::number(cursor)});
    EXPECT_EQ(call_builtin("window_get_cursor").real, cursor);
    EXPECT_FALSE(platform::window().cursor_visible()) << "77 is remembered and changes nothing";
  }
  call_builtin("window_set_cursor", {RValue::number(-4)});
  EXPECT_TRUE(platform::window().cursor_visible());
}

}  // namespace
