#include "runtime/Extension/WindowHook.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "runtime/Code/Builtins.h"
#include "runtime/Platform/Window.h"

namespace {

const double CLOSE = WINDOW_COMMAND_CLOSE;
const double MINIMIZE = 61472;  // a system command that nothing here sends

// Calls a built-in by name and hands back its result.
RValue call(const char* name, std::vector<RValue> args = {}) {
  RValue result;
  EXPECT_TRUE(builtin_call(name, result, nullptr, nullptr, static_cast<int>(args.size()), args.data())) << name;
  return result;
}

// The truth a built-in gave; fails the test for anything but a bool.
bool truth(const RValue& v) {
  EXPECT_TRUE(v.is(Kind::Bool)) << "kind " << kind_name(v.kind());
  return v.real != 0.0;
}

bool call_truth(const char* name, std::vector<RValue> args = {}) { return truth(call(name, std::move(args))); }

RValue number(double d) { return RValue::number(d); }
RValue boolean(bool b) { return RValue::boolean(b); }

class WindowHook : public ::testing::Test {
 protected:
  void SetUp() override {
    register_runtime_builtins();
    window_ = &platform::make_window(true);
  }
  // The hook state outlives the window: leave nothing held for the next test.
  void TearDown() override {
    window_command_unhook(WINDOW_COMMAND_CLOSE);
    window_command_unhook(static_cast<int32_t>(MINIMIZE));
    window_command_set_active(WINDOW_COMMAND_CLOSE, true);
    ex_patch_window_close_capture(false);
  }
  void click() { window_->simulate_close_request(); }

  platform::Window* window_ = nullptr;
};

TEST_F(WindowHook, HookedCloseClickIsReportedOnceAndDoesNotQuit) {
  EXPECT_FALSE(call_truth("window_command_check", {number(CLOSE)})) << "nothing hooked, nothing arrived";
  EXPECT_TRUE(call_truth("window_command_hook", {number(CLOSE)}));
  EXPECT_TRUE(window_->close_held());
  click();
  EXPECT_FALSE(window_->should_quit());
  EXPECT_TRUE(call_truth("window_command_check", {number(CLOSE)}));
  EXPECT_FALSE(call_truth("window_command_check", {number(CLOSE)})) << "one click, one report";

  click();
  click();
  EXPECT_TRUE(window_command_check(WINDOW_COMMAND_CLOSE));
  EXPECT_FALSE(window_command_check(WINDOW_COMMAND_CLOSE)) << "two clicks before a check count once";

  EXPECT_TRUE(window_command_hook(WINDOW_COMMAND_CLOSE)) << "hooking again keeps the one hook";
  click();
  EXPECT_TRUE(window_command_check(WINDOW_COMMAND_CLOSE));
  EXPECT_FALSE(window_command_check(WINDOW_COMMAND_CLOSE));
  EXPECT_FALSE(window_->should_quit());
}

TEST_F(WindowHook, UnhookedCloseClickQuitsAndAnUncheckedClickIsForgotten) {
  window_command_hook(WINDOW_COMMAND_CLOSE);
  click();
  EXPECT_TRUE(call_truth("window_command_unhook", {number(CLOSE)}));
  EXPECT_FALSE(call_truth("window_command_unhook", {number(CLOSE)})) << "no hook left to remove";
  EXPECT_FALSE(window_->close_held());
  EXPECT_FALSE(window_command_check(WINDOW_COMMAND_CLOSE)) << "the click before the unhook isn't reported";
  EXPECT_FALSE(window_->should_quit());

  click();
  EXPECT_TRUE(window_->should_quit());
  EXPECT_FALSE(window_command_check(WINDOW_COMMAND_CLOSE));
}

TEST_F(WindowHook, CapturedCloseIsReportedOnceUntilReleased) {
  EXPECT_TRUE(call_truth("ex_patch_window_close_capture", {boolean(true)}));
  click();
  EXPECT_FALSE(window_->should_quit());
  EXPECT_TRUE(call_truth("ex_patch_window_close_event"));
  EXPECT_FALSE(call_truth("ex_patch_window_close_event"));

  click();
  click();
  EXPECT_TRUE(ex_patch_window_close_event());
  EXPECT_FALSE(ex_patch_window_close_event()) << "two clicks before a call count once";
  EXPECT_FALSE(window_command_check(WINDOW_COMMAND_CLOSE)) << "the capture doesn't report to an unhooked command";

  click();
  EXPECT_TRUE(call_truth("ex_patch_window_close_capture", {boolean(false)}));
  EXPECT_FALSE(ex_patch_window_close_event()) << "released before the event was asked";
  EXPECT_FALSE(window_->should_quit());
  click();
  EXPECT_TRUE(window_->should_quit());
}

TEST_F(WindowHook, HookAndCaptureEachReportTheSameClickOnce) {
  window_command_hook(WINDOW_COMMAND_CLOSE);
  ex_patch_window_close_capture(true);
  click();
  EXPECT_TRUE(window_command_check(WINDOW_COMMAND_CLOSE));
  EXPECT_TRUE(ex_patch_window_close_event());
  EXPECT_FALSE(window_command_check(WINDOW_COMMAND_CLOSE));
  EXPECT_FALSE(ex_patch_window_close_event());

  // The event asked first takes the click for both alike.
  click();
  EXPECT_TRUE(ex_patch_window_close_event());
  EXPECT_TRUE(window_command_check(WINDOW_COMMAND_CLOSE));

  window_command_unhook(WINDOW_COMMAND_CLOSE);
  click();
  EXPECT_FALSE(window_->should_quit()) << "the capture still holds the close";
  EXPECT_FALSE(window_command_check(WINDOW_COMMAND_CLOSE));
  EXPECT_TRUE(ex_patch_window_close_event());

  ex_patch_window_close_capture(false);
  click();
  EXPECT_TRUE(window_->should_quit());
}

TEST_F(WindowHook, ClickGoesOnlyToWhatHeldTheCloseWhenItCame) {
  window_command_hook(WINDOW_COMMAND_CLOSE);
  click();
  ex_patch_window_close_capture(true);
  EXPECT_FALSE(ex_patch_window_close_event()) << "captured after the click";
  EXPECT_TRUE(window_command_check(WINDOW_COMMAND_CLOSE));
}

TEST_F(WindowHook, OtherCommandsAreHookedAndCheckedButNothingSendsThem) {
  EXPECT_TRUE(call_truth("window_command_hook", {number(MINIMIZE)}));
  EXPECT_FALSE(window_->close_held()) << "hooking another command leaves the close alone";
  click();
  EXPECT_TRUE(window_->should_quit());
  EXPECT_FALSE(call_truth("window_command_check", {number(MINIMIZE)}));
  EXPECT_FALSE(call_truth("window_command_run", {number(MINIMIZE), number(1)}));
  EXPECT_TRUE(call_truth("window_command_unhook", {number(MINIMIZE)}));
}

TEST_F(WindowHook, RunningTheCloseCommandClosesPastTheHook) {
  window_command_hook(WINDOW_COMMAND_CLOSE);
  EXPECT_TRUE(call_truth("window_command_run", {number(CLOSE)}));
  EXPECT_TRUE(window_->should_quit());
  EXPECT_FALSE(window_command_check(WINDOW_COMMAND_CLOSE)) << "a run is no click to report";
  EXPECT_TRUE(window_->close_held()) << "the hook holds later clicks again";
}

TEST_F(WindowHook, DisabledCloseCommandIgnoresClicks) {
  EXPECT_TRUE(call_truth("window_command_get_active", {number(CLOSE)}));
  EXPECT_TRUE(call_truth("window_command_get_active", {number(MINIMIZE)}));
  window_command_hook(WINDOW_COMMAND_CLOSE);
  ex_patch_window_close_capture(true);
  call("window_command_set_active", {number(CLOSE), boolean(false)});
  EXPECT_FALSE(call_truth("window_command_get_active", {number(CLOSE)}));
  EXPECT_TRUE(window_command_get_active(static_cast<int32_t>(MINIMIZE))) << "each command has its own state";

  click();
  EXPECT_FALSE(window_->should_quit());
  EXPECT_FALSE(window_command_check(WINDOW_COMMAND_CLOSE)) << "a click on a disabled button is dropped";
  EXPECT_FALSE(ex_patch_window_close_event());

  window_command_unhook(WINDOW_COMMAND_CLOSE);
  ex_patch_window_close_capture(false);
  click();
  EXPECT_FALSE(window_->should_quit()) << "disabled, the button closes nothing even unheld";

  window_command_set_active(WINDOW_COMMAND_CLOSE, true);
  click();
  EXPECT_TRUE(window_->should_quit());
}

TEST_F(WindowHook, CloseMessageHasItsDefaultAndKeepsWhatIsSet) {
  const std::string default_message = "Are you sure you want to quit? You may lose any unsaved progress!";
  call("ex_patch_window_close_initialize");
  EXPECT_EQ(call("ex_patch_window_close_get_message").string_view(), default_message);
  call("ex_patch_window_close_set_message", {RValue::text("Vuoi davvero uscire?")});
  EXPECT_EQ(call("ex_patch_window_close_get_message").string_view(), "Vuoi davvero uscire?");
  EXPECT_EQ(ex_patch_window_close_get_message(), "Vuoi davvero uscire?");
  ex_patch_window_close_initialize();
  EXPECT_EQ(ex_patch_window_close_get_message(), default_message);
}

TEST_F(WindowHook, WindowStatesReadBackWhatWasSet) {
  EXPECT_FALSE(call_truth("window_get_topmost"));
  call("window_set_topmost", {boolean(true)});
  EXPECT_TRUE(call_truth("window_get_topmost"));
  call("window_set_topmost", {number(0)});
  EXPECT_FALSE(call_truth("window_get_topmost"));

  EXPECT_TRUE(call_truth("window_get_taskbar_button_visible"));
  call("window_set_taskbar_button_visible", {boolean(false)});
  EXPECT_FALSE(call_truth("window_get_taskbar_button_visible"));
  call("window_set_taskbar_button_visible", {boolean(true)});
  EXPECT_TRUE(call_truth("window_get_taskbar_button_visible"));

  EXPECT_TRUE(call_truth("window_get_background_redraw"));
  call("window_set_background_redraw", {boolean(false)});
  EXPECT_FALSE(call_truth("window_get_background_redraw"));
  call("window_set_background_redraw", {boolean(true)});
  EXPECT_TRUE(call_truth("window_get_background_redraw"));

  EXPECT_TRUE(window_get_visible_w());
  call("window_set_visible_w", {boolean(false)});
  EXPECT_FALSE(window_get_visible_w());
  call("window_set_visible_w", {boolean(true)});
  EXPECT_TRUE(window_get_visible_w());

  const RValue handle = call("window_handle");
  ASSERT_TRUE(handle.is(Kind::Ptr));
  EXPECT_EQ(handle.ptr, window_);
}

}  // namespace
