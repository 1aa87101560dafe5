#include "runtime/IO/Input.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "runtime/Code/Builtins.h"

namespace {

class InputTest : public ::testing::Test {
 protected:
  void SetUp() override { input_reset(); }
};

// Three per-frame answers as one text, so that a frame's state reads in one line:
// "down pressed released", with "-" for each that is false.
std::string states(bool down, bool pressed, bool released) {
  return std::string(down ? "down" : "-") + (pressed ? " pressed" : " -") + (released ? " released" : " -");
}
std::string key_state(int code) { return states(key_down(code), key_pressed(code), key_released(code)); }
std::string check_state(int code) {
  return states(keyboard_check(code), keyboard_check_pressed(code), keyboard_check_released(code));
}
std::string button_state(int button) {
  return states(mouse_check_button(button), mouse_check_button_pressed(button), mouse_check_button_released(button));
}

// Calls a built-in by name and hands back its result.
RValue call(const char* name, std::vector<RValue> args = {}) {
  register_runtime_builtins();
  RValue result;
  EXPECT_TRUE(builtin_call(name, result, nullptr, nullptr, static_cast<int>(args.size()), args.data())) << name;
  return result;
}

// A truth value as the built-ins give it: kind bool, 1 or 0.
::testing::AssertionResult is_truth(const RValue& v, bool expected) {
  if (!v.is(Kind::Bool)) return ::testing::AssertionFailure() << "kind " << kind_name(v.kind());
  if (v.real != (expected ? 1.0 : 0.0)) return ::testing::AssertionFailure() << "value " << v.real;
  return ::testing::AssertionSuccess();
}

TEST_F(InputTest, KeyPressShowsFromTheNextFrameAndPressedLastsOneFrame) {
  input_key_event(KEY_LEFT, true);
  EXPECT_EQ(key_state(KEY_LEFT), "- - -") << "events wait for the frame";
  input_begin_frame();
  EXPECT_EQ(key_state(KEY_LEFT), "down pressed -");
  input_begin_frame();
  EXPECT_EQ(key_state(KEY_LEFT), "down - -");
  input_key_event(KEY_LEFT, false);
  input_begin_frame();
  EXPECT_EQ(key_state(KEY_LEFT), "- - released");
  input_begin_frame();
  EXPECT_EQ(key_state(KEY_LEFT), "- - -");
  EXPECT_EQ(key_state(KEY_RIGHT), "- - -");

  // Down and up between two frames: both show, and the key counts as down for that frame.
  input_key_event(KEY_ENTER, true);
  input_key_event(KEY_ENTER, false);
  input_begin_frame();
  EXPECT_EQ(key_state(KEY_ENTER), "down pressed released");
  input_begin_frame();
  EXPECT_EQ(key_state(KEY_ENTER), "- - -");
}

TEST_F(InputTest, RepeatedDownIsNoNewPressAndUnheldReleaseIsIgnored) {
  input_key_event(65, true);
  input_begin_frame();
  input_key_event(65, true);
  input_begin_frame();
  EXPECT_EQ(key_state(65), "down - -");
  input_key_event(66, false);
  input_begin_frame();
  EXPECT_FALSE(key_released(66));
  EXPECT_FALSE(any_key_released());
}

TEST_F(InputTest, CodesOutsideTwoTo255AreNoKeys) {
  for (const int code : {KEY_NONE, KEY_ANY, 256, -5}) input_key_event(code, true);
  input_begin_frame();
  EXPECT_FALSE(any_key_down());
  EXPECT_FALSE(any_key_pressed());
  EXPECT_FALSE(key_down(256));
  EXPECT_EQ(keyboard_lastkey(), 0);
  input_key_event(255, true);
  input_begin_frame();
  EXPECT_TRUE(key_down(255));
}

TEST_F(InputTest, KeyboardChecksReadZeroAsNoKeyAndOneAsAnyKey) {
  input_begin_frame();
  EXPECT_EQ(check_state(KEY_NONE), "down pressed released");
  EXPECT_EQ(check_state(KEY_ANY), "- - -");

  input_key_event(KEY_F1 + 4, true);
  input_begin_frame();
  EXPECT_EQ(check_state(KEY_NONE), "- - released");
  EXPECT_EQ(check_state(KEY_ANY), "down pressed -");
  EXPECT_EQ(check_state(116), "down pressed -");
  EXPECT_EQ(check_state(117), "- - -");
  EXPECT_EQ(check_state(256), "- - -");
  EXPECT_EQ(check_state(-1), "- - -");

  input_key_event(116, false);
  input_begin_frame();
  EXPECT_EQ(check_state(KEY_NONE), "down pressed -");
  EXPECT_EQ(check_state(KEY_ANY), "- - released");
  EXPECT_EQ(check_state(116), "- - released");
}

TEST_F(InputTest, MouseButtonsFollowTheFramesWithNoneAndAny) {
  input_begin_frame();
  EXPECT_EQ(button_state(MOUSE_NONE), "down pressed released");
  EXPECT_EQ(button_state(MOUSE_ANY), "- - -");

  input_mouse_button_event(MOUSE_RIGHT, true);
  input_mouse_button_event(4, true);
  input_begin_frame();
  EXPECT_TRUE(mouse_button_down(MOUSE_RIGHT));
  EXPECT_TRUE(mouse_button_pressed(MOUSE_RIGHT));
  EXPECT_FALSE(mouse_button_down(MOUSE_LEFT));
  EXPECT_EQ(button_state(MOUSE_RIGHT), "down pressed -");
  EXPECT_EQ(button_state(MOUSE_ANY), "down pressed -");
  EXPECT_EQ(button_state(MOUSE_NONE), "- - released");
  EXPECT_EQ(button_state(4), "- - -");
  EXPECT_EQ(mouse_button(), MOUSE_RIGHT);
  EXPECT_EQ(mouse_lastbutton(), MOUSE_RIGHT);

  input_begin_frame();
  EXPECT_EQ(button_state(MOUSE_RIGHT), "down - -");
  EXPECT_TRUE(mouse_check_button_pressed(MOUSE_NONE));

  input_mouse_button_event(MOUSE_RIGHT, false);
  input_mouse_button_event(MOUSE_MIDDLE, true);
  input_mouse_button_event(MOUSE_MIDDLE, false);
  input_begin_frame();
  EXPECT_TRUE(mouse_check_button_released(MOUSE_RIGHT));
  EXPECT_EQ(button_state(MOUSE_MIDDLE), "down pressed released");
  EXPECT_FALSE(mouse_check_button_released(MOUSE_LEFT));
  EXPECT_TRUE(any_mouse_button_released());
  EXPECT_EQ(mouse_button(), 0);
  EXPECT_EQ(mouse_lastbutton(), MOUSE_MIDDLE);
}

TEST_F(InputTest, MouseClearForgetsTheButtonUntilItIsPressedAgain) {
  input_mouse_button_event(MOUSE_LEFT, true);
  input_mouse_button_event(MOUSE_RIGHT, true);
  input_begin_frame();
  mouse_clear(MOUSE_LEFT);
  EXPECT_EQ(button_state(MOUSE_LEFT), "- - -");
  EXPECT_TRUE(mouse_check_button(MOUSE_RIGHT));
  input_begin_frame();
  EXPECT_FALSE(mouse_check_button(MOUSE_LEFT)) << "still held, but cleared";
  input_mouse_button_event(MOUSE_LEFT, false);
  input_begin_frame();
  EXPECT_FALSE(mouse_check_button_released(MOUSE_LEFT));
  input_mouse_button_event(MOUSE_LEFT, true);
  input_begin_frame();
  EXPECT_TRUE(mouse_check_button_pressed(MOUSE_LEFT));

  mouse_clear(MOUSE_ANY);
  EXPECT_TRUE(mouse_check_button(MOUSE_NONE));
  EXPECT_EQ(mouse_button(), 0);
  input_begin_frame();
  EXPECT_FALSE(mouse_check_button(MOUSE_ANY));
}

TEST_F(InputTest, WheelFlagsAndMousePositionAreTakenAtTheFrameStart) {
  const auto wheel = [] { return std::string(wheel_up() ? "up" : "-") + (wheel_down() ? " down" : " -"); };
  input_wheel(2);
  input_begin_frame();
  EXPECT_EQ(wheel(), "up -");
  input_wheel(-1);
  input_wheel(1);
  input_begin_frame();
  EXPECT_EQ(wheel(), "up down");
  input_wheel(0);
  input_begin_frame();
  EXPECT_EQ(wheel(), "- -");

  input_mouse_move(120, 45);
  EXPECT_EQ(mouse_x(), 0);
  input_begin_frame();
  input_mouse_move(7, 9);
  EXPECT_EQ(mouse_x(), 120);
  EXPECT_EQ(mouse_y(), 45);
  input_begin_frame();
  EXPECT_EQ(mouse_x(), 7);
  EXPECT_EQ(mouse_y(), 9);
}

TEST_F(InputTest, TypedTextAndBackspaceBuildKeyboardString) {
  input_text("caff");
  input_text("è");
  EXPECT_EQ(keyboard_string(), "caffè");
  EXPECT_EQ(keyboard_lastchar(), "è");
  input_key_event(KEY_BACKSPACE, true);
  EXPECT_EQ(keyboard_string(), "caff") << "backspace takes the whole two-byte character";
  input_key_event(KEY_BACKSPACE, true);
  EXPECT_EQ(keyboard_string(), "caf") << "a repeat takes one more";
  input_key_event(KEY_BACKSPACE, false);
  set_keyboard_string("");
  input_key_event(KEY_BACKSPACE, true);
  EXPECT_EQ(keyboard_string(), "");
  input_text("ok€");
  EXPECT_EQ(keyboard_lastchar(), "€");
}

TEST_F(InputTest, LastKeyStaysWhileTheKeyHeldIsLetGo) {
  input_key_event(KEY_CONTROL, true);
  input_key_event(KEY_LETTER_A + 2, true);
  EXPECT_EQ(keyboard_key(), 67);
  EXPECT_EQ(keyboard_lastkey(), 67);
  input_key_event(KEY_CONTROL, false);
  EXPECT_EQ(keyboard_key(), 67) << "another key went up";
  input_key_event(67, false);
  EXPECT_EQ(keyboard_key(), 0);
  EXPECT_EQ(keyboard_lastkey(), 67);
}

TEST_F(InputTest, BuiltinsByNameGiveTruthValues) {
  input_key_event(KEY_SPACE, true);
  input_mouse_button_event(MOUSE_LEFT, true);
  input_mouse_move(31, 17);
  input_wheel(-3);
  input_begin_frame();

  EXPECT_TRUE(is_truth(call("keyboard_check", {RValue::number(32)}), true));
  EXPECT_TRUE(is_truth(call("keyboard_check", {RValue::number(0)}), false));
  EXPECT_TRUE(is_truth(call("keyboard_check_pressed", {RValue::number(1)}), true));
  EXPECT_TRUE(is_truth(call("keyboard_check_pressed", {RValue::number(300)}), false));
  EXPECT_TRUE(is_truth(call("keyboard_check_released", {RValue::number(0)}), true));
  EXPECT_TRUE(is_truth(call("mouse_check_button", {RValue::number(1)}), true));
  EXPECT_TRUE(is_truth(call("mouse_check_button_pressed", {RValue::number(-1)}), true));
  EXPECT_TRUE(is_truth(call("mouse_check_button_released", {RValue::number(0)}), true));
  EXPECT_TRUE(is_truth(call("mouse_wheel_up"), false));
  EXPECT_TRUE(is_truth(call("mouse_wheel_down"), true));
  EXPECT_EQ(call("window_mouse_get_x").real, 31);
  EXPECT_EQ(call("window_mouse_get_y").real, 17);
  EXPECT_TRUE(call("keyboard_virtual_status").is(Kind::Undefined));
  EXPECT_TRUE(call("keyboard_virtual_show", {RValue::number(0), RValue::number(0), RValue::number(0),
                                             RValue::boolean(false)})
                  .is(Kind::Undefined));

  call("mouse_clear", {RValue::number(1)});
  EXPECT_TRUE(is_truth(call("mouse_check_button", {RValue::number(1)}), false));
}

}  // namespace
