#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "runtime/Code/Conversions.h"
#include "runtime/Code/Error.h"
#include "runtime/Platform/Dialogs.h"
#include "support/MessageRecorder.h"

namespace {

std::string read_all(std::FILE* f) {
  std::rewind(f);
  std::string s;
  char buf[4096];
  size_t n;
  while ((n = std::fread(buf, 1, sizeof buf, f)) > 0) s.append(buf, n);
  return s;
}

QvScriptException catch_report(const std::function<void()>& body) {
  try {
    body();
  } catch (const QvScriptException& e) {
    return e;
  }
  ADD_FAILURE() << "no fatal report";
  return {};
}

}  // namespace

TEST(ReportError, LongMessageNamesTheEventTheObjectAndTheTopFrame) {
  set_error_site({ErrorSite::Where::Event, "Step Event2", "main_code_ctrl", 0});
  QvScriptException e = catch_report([] {
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

  set_error_site({ErrorSite::Where::Event, "Create Event", "editor_ctrl", 0});
  e = catch_report([] { ReportError("boom"); });
  EXPECT_EQ(e.longMessage, "ERROR in\naction number 1\nof Create Event\nfor object editor_ctrl:\n\n\nboom");
  EXPECT_EQ(e.script, "unknown");

  set_error_site({ErrorSite::Where::TimeLine, "", "tl_demo", 4});
  e = catch_report([] { ReportError("boom"); });
  EXPECT_EQ(e.longMessage, "ERROR in\naction number 1\nat time step4\nof time line tl_demo:\n\n\nboom");

  set_error_site({ErrorSite::Where::RoomCreation, "", "main_room", 0});
  e = catch_report([] { ReportError("boom"); });
  EXPECT_EQ(e.longMessage, "FATAL ERROR in Room Creation Code for room main_room\n\n\nboom\n");
  set_error_site({});
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
  std::FILE* debug = std::tmpfile();
  set_debug_output_file(debug);
  set_error_site({ErrorSite::Where::Event, "Draw Event0", "main_code_ctrl", 0});

  const int status = run_with_top_level_catch([]() -> int {
    CallTraceScope frame("execute_function_ext", 3);
    value_to_real(RValue::text("\tzero"));
    return 0;
  });

  set_debug_output_file(nullptr);
  set_error_site({});
  platform::set_dialogs(nullptr);
  EXPECT_EQ(status, 1);
  ASSERT_EQ(shown.size(), 1u);
  const std::string rule(92, '#');
  const std::string text = rule + "\nERROR in\naction number 0\nof Draw Event0\nfor object main_code_ctrl:\n\n\n" +
                           "unable to convert string \"\tzero\" to number\nat execute_function_ext (line 3)\n" +
                           rule + "\nexecute_function_ext (line 3)\n";
  std::string laid_out = text;
  laid_out.replace(laid_out.find('\t'), 1, std::string(7, ' '));
  EXPECT_EQ(shown[0], "Code Error|\n" + std::string(43, '_') + "\n" + laid_out);
  EXPECT_EQ(read_all(debug), "ERROR!!! :: " + text);
  std::fclose(debug);

  EXPECT_EQ(run_with_top_level_catch([] { return 0; }), 0);
}
