#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "runtime/Code/Conversions.h"
#include "runtime/Code/Error.h"
#include "runtime/Platform/Dialogs.h"
#include "support/MessageRecorder.h"

namespace {

using Where = ErrorSite::Where;

// The report `body` ends in while `site` is running.
QvScriptException report_at(const ErrorSite& site, const std::function<void()>& body) {
  set_error_site(site);
  QvScriptException report;  // stays empty without a fatal report
  try {
    body();
  } catch (const QvScriptException& e) {
    report = e;
  }
  set_error_site({});
  return report;
}

}  // namespace

TEST(ReportError, LongMessageNamesTheSiteAndTheTopFrame) {
  QvScriptException e = report_at({Where::Event, "Step Event2", "main_code_ctrl", 0}, [] {
    CallTraceScope outer("tokenization", 12);
    CallTraceScope inner("calculate_string");
    ReportError("unable to convert string \"%s\" to number", "x");
  });
  EXPECT_EQ(e.message, "unable to convert string \"x\" to number");
  EXPECT_EQ(e.longMessage,
            "ERROR in\naction number 2\nof Step Event2\nfor object main_code_ctrl:\n\n\n"
            "unable to convert string \"x\" to number\nat calculate_string\n");
  EXPECT_EQ(e.script, "calculate_string");
  EXPECT_EQ(e.stacktrace, (std::vector<std::string>{"calculate_string", "tokenization (line 12)"}));
  EXPECT_EQ(call_trace_top(), nullptr);  // every frame popped on the way out

  // Without frames: action 1 for an event without a number, and no "at" line.
  const struct { ErrorSite site; const char* long_message; } sites[] = {
      {{Where::Event, "Create Event", "editor_ctrl", 0},
       "ERROR in\naction number 1\nof Create Event\nfor object editor_ctrl:\n\n\nboom"},
      {{Where::TimeLine, "", "tl_demo", 4},
       "ERROR in\naction number 1\nat time step4\nof time line tl_demo:\n\n\nboom"},
      {{Where::RoomCreation, "", "main_room", 0}, "FATAL ERROR in Room Creation Code for room main_room\n\n\nboom\n"},
  };
  for (const auto& row : sites) {
    e = report_at(row.site, [] { ReportError("boom"); });
    EXPECT_EQ(e.longMessage, row.long_message);
    EXPECT_EQ(e.script, "unknown");
  }
}

TEST(ReportError, SuppressedErrorsAreRecordedAndTheCallerGoesOn) {
  SuppressErrors quiet;
  EXPECT_FALSE(quiet.error_happened());
  EXPECT_EQ(value_to_real(RValue::text("abc")), 0);
  EXPECT_TRUE(quiet.error_happened());
}

TEST(TopLevelCatch, ShowsCodeErrorLogsAndExitsWithOne) {
  std::vector<std::string> shown;
  platform::set_dialogs(std::make_unique<MessageRecorder>(&shown));
  char* logged = nullptr;
  size_t logged_size = 0;
  std::FILE* debug = open_memstream(&logged, &logged_size);
  set_debug_output_file(debug);
  set_error_site({Where::Event, "Draw Event0", "main_code_ctrl", 0});
  const int status = run_with_top_level_catch([]() -> int {
    CallTraceScope frame("execute_function_ext", 3);
    value_to_real(RValue::text("\tzero"));
    return 0;
  });
  set_debug_output_file(nullptr);
  set_error_site({});
  platform::set_dialogs(nullptr);

  EXPECT_EQ(status, 1);
  const std::string rule(92, '#');
  const std::string text = rule + "\nERROR in\naction number 0\nof Draw Event0\nfor object main_code_ctrl:\n\n\n" +
                           "unable to convert string \"\tzero\" to number\nat execute_function_ext (line 3)\n" +
                           rule + "\nexecute_function_ext (line 3)\n";
  // The dialog widens tabs to seven spaces under a rule of underscores.
  std::string laid_out = text;
  laid_out.replace(laid_out.find('\t'), 1, std::string(7, ' '));
  EXPECT_EQ(shown, std::vector<std::string>{"Code Error|\n" + std::string(43, '_') + "\n" + laid_out});
  std::fclose(debug);
  EXPECT_EQ(std::string(logged, logged_size), "ERROR!!! :: " + text);
  std::free(logged);

  EXPECT_EQ(run_with_top_level_catch([] { return 0; }), 0);
}
