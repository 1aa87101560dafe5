// Test helper: an obj_input_text in a room of its own, driven Step by Step
// with fed keys, typed text and clicks, each Step a frame of 1/30 s.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "environment/text_box_room.h"
#include "environment/text_control/input_text.h"
#include "runtime/Code/Builtins.h"
#include "runtime/Function/SystemFunctions.h"
#include "runtime/IO/Input.h"
#include "runtime/Object/Objects.h"
#include "runtime/Platform/Window.h"
#include "runtime/Room/FrameState.h"
#include "runtime/Room/Room.h"

class TextBoxTest : public ::testing::Test {
 protected:
  static constexpr int64_t FRAME = 33333;  // microseconds

  void SetUp() override {
    platform::make_window(true).create(800, 600, "Velant", {});
    open_text_box_room(800, 600);
  }
  void TearDown() override { close_text_box_room(); }

  // A box made by the built-in `name` with `args`, enabled.
  ObjInputText& make(const std::string& name, std::vector<RValue> args) {
    ObjInputText& made = made_box(name, std::move(args));
    enable(made);
    return made;
  }
  // Gives `box` the keys, as input_text_set_enabled does.
  static void enable(ObjInputText& box) {
    RValue args[] = {RValue::number(box.id), RValue::boolean(true)}, ignored;
    builtin_call("input_text_set_enabled", ignored, nullptr, nullptr, 2, args);
  }
  // A many-line box at (10, 10), 300 by 200, in the default font, wrapping at `wrap` (-1 none).
  ObjInputText& multiline(double wrap = -1) {
    return make("input_text_create_multiline", {n(10), n(10), n(300), n(200), n(-1), n(wrap)});
  }
  ObjInputText& singleline() { return make("input_text_create_singleline", {n(10), n(10), n(300), n(-1)}); }

  static RValue n(double d) { return RValue::number(d); }

  // One Step, `microseconds` after the last.
  static void step(ObjInputText& box, int64_t microseconds = FRAME) {
    input_begin_frame();
    frame_state().delta_time = microseconds;
    box.step();
  }
  // Text typed through text input events, then a Step.
  static void type(ObjInputText& box, const std::string& utf8) {
    input_text(utf8);
    step(box);
  }
  // `key` pressed and let go, with Ctrl and Shift held if asked: a Step with the key down, and one more.
  static void press(ObjInputText& box, int key, bool ctrl = false, bool shift = false) {
    if (ctrl) input_key_event(KEY_CONTROL, true);
    if (shift) input_key_event(KEY_SHIFT, true);
    input_key_event(key, true);
    step(box);
    input_key_event(key, false);
    if (ctrl) input_key_event(KEY_CONTROL, false);
    if (shift) input_key_event(KEY_SHIFT, false);
  }
  // A left click at (x, y) in the window.
  static void click(ObjInputText& box, int x, int y) {
    input_mouse_move(x, y);
    input_mouse_button_event(MOUSE_LEFT, true);
    step(box);
    input_mouse_button_event(MOUSE_LEFT, false);
    step(box);
  }
  static void set_text(ObjInputText& box, const std::string& utf8) {
    box.set_text_from_outside(utf8);
    step(box);
  }
};
