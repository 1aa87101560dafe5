#include "runtime/IO/Input.h"

#include <gtest/gtest.h>

#include <vector>

#include "runtime/Code/Builtins.h"

namespace {

class InputTest : public ::testing::Test {
 protected:
  void SetUp() override { input_reset(); }
};

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
  EXPECT_FALSE(key_down(KEY_LEFT)) << "events wait for the frame";
  input_begin_frame();
  EXPECT_TRUE(key_down(KEY_LEFT));
  EXPECT_TRUE(key_pressed(KEY_LEFT));
  EXPECT_FALSE(key_released(KEY_LEFT));
  input_begin_frame();
  EXPECT_TRUE(key_down(KEY_LEFT));
  EXPECT_FALSE(key_pressed(KEY_LEFT));
  input_key_event(KEY_LEFT, false);
  input_begin_frame();
  EXPECT_FALSE(key_down(KEY_LEFT));
  EXPECT_TRUE(key_released(KEY_LEFT));
  input_begin_frame();
  EXPECT_FALSE(key_released(KEY_LEFT));
  EXPECT_FALSE(key_down(KEY_RIGHT));
}

TEST_F(InputTest, PressAndReleaseBetweenFramesShowBothAndTheKeyAsDown) {
  input_key_event(KEY_ENTER, true);
  input_key_event(KEY_ENTER, false);
  input_begin_frame();
  EXPECT_TRUE(key_pressed(KEY_ENTER));
  EXPECT_TRUE(key_released(KEY_ENTER));
  EXPECT_TRUE(key_down(KEY_ENTER));
  input_begin_frame();
  EXPECT_FALSE(key_down(KEY_ENTER));
  EXPECT_FALSE(key_pressed(KEY_ENTER));
  EXPECT_FALSE(key_released(KEY_ENTER));
}

TEST_F(InputTest, RepeatedDownIsNoNewPressAndUnheldReleaseIsIgnored) {
  input_key_event(65, true);
  input_begin_frame();
  input_key_event(65, true);
  input_begin_frame();
  EXPECT_TRUE(key_down(65));
  EXPECT_FALSE(key_pressed(65));
  input_key_event(66, false);
  input_begin_frame();
  EXPECT_FALSE(key_released(66));
  EXPECT_FALSE(any_key_released());
}

TEST_F(InputTest, CodesOutsideTwoTo255AreNoKeys) {
  input_key_event(KEY_NONE, true);
  input_key_event(KEY_ANY, true);
  input_key_event(256, true);
  input_key_event(-5, true);
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
  EXPECT_TRUE(keyboard_check(KEY_NONE));
  EXPECT_FALSE(keyboard_check(KEY_ANY));
  EXPECT_TRUE(keyboard_check_pressed(KEY_NONE));
  EXPECT_FALSE(keyboard_check_pressed(KEY_ANY));
  EXPECT_TRUE(keyboard_check_released(KEY_NONE));
  EXPECT_FALSE(keyboard_check_released(KEY_ANY));

  input_key_event(KEY_F1 + 4, true);
  input_begin_frame();
  EXPECT_FALSE(keyboard_check(KEY_NONE));
  EXPECT_TRUE(keyboard_check(KEY_ANY));
  EXPECT_TRUE(keyboard_check(116));
  EXPECT_FALSE(keyboard_check(117));
  EXPECT_FALSE(keyboard_check_pressed(KEY_NONE));
  EXPECT_TRUE(keyboard_check_pressed(KEY_ANY));
  EXPECT_TRUE(keyboard_check_pressed(116));
  EXPECT_TRUE(keyboard_check_released(KEY_NONE));
  EXPECT_FALSE(keyboard_check(256));
  EXPECT_FALSE(keyboard_check_pressed(-1));

  input_key_event(116, false);
  input_begin_frame();
  EXPECT_TRUE(keyboard_check(KEY_NONE));
  EXPECT_TRUE(keyboard_check_pressed(KEY_NONE));
  EXPECT_FALSE(keyboard_check_released(KEY_NONE));
  EXPECT_TRUE(keyboard_check_released(KEY_ANY));
  EXPECT_TRUE(keyboard_check_released(116));
}

TEST_F(InputTest, MouseButtonsFollowTheFramesWithNoneAndAny) {
  input_begin_frame();
  EXPECT_TRUE(mouse_check_button(MOUSE_NONE));
  EXPECT_FALSE(mouse_check_button(MOUSE_ANY));

  input_mouse_button_event(MOUSE_RIGHT, true);
  input_mouse_button_event(4, true);
  input_begin_frame();
  EXPECT_TRUE(mouse_button_down(MOUSE_RIGHT));
  EXPECT_TRUE(mouse_button_pressed(MOUSE_RIGHT));
  EXPECT_FALSE(mouse_button_down(MOUSE_LEFT));
  EXPECT_TRUE(mouse_check_button(MOUSE_RIGHT));
  EXPECT_TRUE(mouse_check_button(MOUSE_ANY));
  EXPECT_FALSE(mouse_check_button(MOUSE_NONE));
  EXPECT_TRUE(mouse_check_button_pressed(MOUSE_ANY));
  EXPECT_FALSE(mouse_check_button(4));
  EXPECT_EQ(mouse_button(), MOUSE_RIGHT);
  EXPECT_EQ(mouse_lastbutton(), MOUSE_RIGHT);

  input_begin_frame();
  EXPECT_TRUE(mouse_check_button(MOUSE_RIGHT));
  EXPECT_FALSE(mouse_check_button_pressed(MOUSE_RIGHT));
  EXPECT_TRUE(mouse_check_button_pressed(MOUSE_NONE));

  input_mouse_button_event(MOUSE_RIGHT, false);
  input_mouse_button_event(MOUSE_MIDDLE, true);
  input_mouse_button_event(MOUSE_MIDDLE, false);
  input_begin_frame();
  EXPECT_TRUE(mouse_check_button_released(MOUSE_RIGHT));
  EXPECT_TRUE(mouse_check_button_released(MOUSE_MIDDLE));
  EXPECT_TRUE(mouse_check_button_pressed(MOUSE_MIDDLE));
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
  EXPECT_FALSE(mouse_check_button(MOUSE_LEFT));
  EXPECT_FALSE(mouse_check_button_pressed(MOUSE_LEFT));
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

TEST_F(InputTest, WheelFlagsLastOneFrame) {
  input_wheel(2);
  input_begin_frame();
  EXPECT_TRUE(wheel_up());
  EXPECT_FALSE(wheel_down());
  input_wheel(-1);
  input_wheel(1);
  input_begin_frame();
  EXPECT_TRUE(wheel_up());
  EXPECT_TRUE(wheel_down());
  input_wheel(0);
  input_begin_frame();
  EXPECT_FALSE(wheel_up());
  EXPECT_FALSE(wheel_down());
}

TEST_F(InputTest, MousePositionIsTakenAtTheFrameStart) {
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
