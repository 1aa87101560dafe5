#include "runtime/Extension/WindowHook.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "runtime/Code/Builtins.h"
#include "runtime/Platform/Window.h"
#include "support/CallBuiltin.h"

namespace {

const double CLOSE = WINDOW_COMMAND_CLOSE;
const double MINIMIZE = 61472;  // a system command that nothing here sends

// The truth a built-in gave; fails the test for anything but a bool.
bool truth(const RValue& v) {
  EXPECT_TRUE(v.is(Kind::Bool)) << "kind " << kind_name(v.kind());
  return v.real != 0.0;
}

class WindowHook : public ::testing::Test {
 protected:
  void SetUp() override {
    register_runtime_builtins();
    window_ = &platform::make_window(true);
  }
  void TearDown() override { forget_hooks(); }
  // The hook state outlives the window: leave nothing held for what comes next.
  static void forget_hooks() {
    window_command_unhook(WINDOW_COMMAND_CLOSE);
    window_command_unhook(static_cast<int32_t>(MINIMIZE));
    window_command_set_active(WINDOW_COMMAND_CLOSE, true);
    ex_patch_window_close_capture(false);
  }

  // Plays a script of steps separated by spaces, checking each answer as it comes:
  //   click                  a click on the close button
  //   quit=B held=B          the window quits / holds its close button back
  //   hook unhook check run active
  //                          window_command_<step> of the close command, or of
  //                          another with ":min"; "=B" checks the answer
  //   disable enable         window_command_set_active of the close command
  //   capture release event  ex_patch_window_close_capture(true / false), _event
  void play(const std::string& script) {
    std::istringstream steps(script);
    for (std::string step; steps >> step;) {
      SCOPED_TRACE("step " + step + " of \"" + script + "\"");
      const size_t equals = step.find('=');
      const int expected = equals == std::string::npos ? -1 : step[equals + 1] - '0';
      const std::string name = step.substr(0, std::min(equals, step.find(':')));
      const RValue command = RValue::number(step.find(":min") != std::string::npos ? MINIMIZE : CLOSE);
      const auto answer = [&](bool actual) { EXPECT_TRUE(expected < 0 || actual == (expected == 1)) << actual; };
      if (name == "click") window_->simulate_close_request();
      else if (name == "quit") answer(window_->should_quit());
      else if (name == "held") answer(window_->close_held());
      else if (name == "disable" || name == "enable")
        call_builtin("window_command_set_active", {command, RValue::boolean(name == "enable")});
      else if (name == "capture" || name == "release")
        answer(truth(call_builtin("ex_patch_window_close_capture", {RValue::boolean(name == "capture")})));
      else if (name == "event") answer(truth(call_builtin("ex_patch_window_close_event")));
      else if (name == "active") answer(truth(call_builtin("window_command_get_active", {command})));
      else answer(truth(call_builtin("window_command_" + name, {command})));
    }
  }

  platform::Window* window_ = nullptr;
};

TEST_F(WindowHook, ScriptsOfClicksHooksAndCapturesGetTheirAnswers) {
  const struct { const char* what; const char* script; } scripts[] = {
      // Two clicks before a check count once; hooking again keeps the one hook.
      {"a hooked close click is reported once and does not quit",
       "check=0 hook=1 held=1 click quit=0 check=1 check=0 click click check=1 check=0 "
       "hook=1 click check=1 check=0 quit=0"},
      {"an unhooked close click quits and an unchecked click is forgotten",
       "hook click unhook=1 unhook=0 held=0 check=0 quit=0 click quit=1 check=0"},
      // The capture doesn't report to an unhooked command; a release forgets a click not yet asked for.
      {"a captured close is reported once until released",
       "capture=1 click quit=0 event=1 event=0 click click event=1 event=0 check=0 "
       "click release=1 event=0 quit=0 click quit=1"},
      // Whichever is asked first, both have the click; the capture alone still holds the close.
      {"hook and capture each report the same click once",
       "hook capture click check=1 event=1 check=0 event=0 click event=1 check=1 "
       "unhook click quit=0 check=0 event=1 release click quit=1"},
      {"a click goes only to what held the close when it came", "hook click capture event=0 check=1"},
      {"other commands are hooked and checked but nothing sends them",
       "hook:min=1 held=0 click quit=1 check:min=0 run:min=0 unhook:min=1"},
      {"running the close command closes past the hook, which holds later clicks", "hook run=1 quit=1 check=0 held=1"},
      // Each command has its own state.
      {"a disabled close command drops clicks, held or not",
       "active=1 active:min=1 hook capture disable active=0 active:min=1 click quit=0 check=0 event=0 "
       "unhook release click quit=0 enable click quit=1"},
  };
  for (const auto& [what, script] : scripts) {
    SCOPED_TRACE(what);
    // Each script starts from a new window and nothing hooked.
    forget_hooks();
    window_ = &platform::make_window(true);
    play(script);
  }
}

TEST_F(WindowHook, CloseMessageAndWindowStatesReadBackWhatWasSet) {
  const std::string default_message = "Are you sure you want to quit? You may lose any unsaved progress!";
  call_builtin("ex_patch_window_close_initialize");
  EXPECT_EQ(call_builtin("ex_patch_window_close_get_message").string_view(), default_message);
  call_builtin("ex_patch_window_close_set_message", {RValue::text("Vuoi davvero uscire?")});
  EXPECT_EQ(ex_patch_window_close_get_message(), "Vuoi davvero uscire?");
  ex_patch_window_close_initialize();
  EXPECT_EQ(ex_patch_window_close_get_message(), default_message);

  const struct { const char* getter; const char* setter; bool initially; } states[] = {
      {"window_get_topmost", "window_set_topmost", false},
      {"window_get_taskbar_button_visible", "window_set_taskbar_button_visible", true},
      {"window_get_background_redraw", "window_set_background_redraw", true},
      {nullptr, "window_set_visible_w", true},  // read back directly: no built-in by name
  };
  for (const auto& state : states) {
    SCOPED_TRACE(state.setter);
    const auto get = [&] { return state.getter ? truth(call_builtin(state.getter)) : window_get_visible_w(); };
    EXPECT_EQ(get(), state.initially);
    call_builtin(state.setter, {RValue::boolean(!state.initially)});
    EXPECT_EQ(get(), !state.initially);
    call_builtin(state.setter, {RValue::number(state.initially)});  // a number will do
    EXPECT_EQ(get(), state.initially);
  }

  const RValue handle = call_builtin("window_handle");
  EXPECT_TRUE(handle.is(Kind::Ptr) && handle.ptr == window_);
}

}  // namespace
