#include "runtime/Function/DialogFunctions.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <string>
#include <thread>
#include <vector>

#include "runtime/Code/Builtins.h"
#include "runtime/Code/Conversions.h"
#include "runtime/Code/Error.h"
#include "runtime/Platform/Dialogs.h"
#include "runtime/Platform/Headless.h"
#include "runtime/Support/AsyncQueue.h"
#include "runtime/Support/DsMap.h"
#include "support/Fatal.h"
#include "support/CallBuiltin.h"

namespace {

using Texts = std::vector<std::string>;

// Dialogs that note every call as "kind|title|text", with the thread it came
// from, and answer questions as told. An asynchronous dialog calls them from
// a worker thread, which has noted its call before its event is queued.
struct RecordingDialogs final : platform::Dialogs {
  void message(const std::string& title, const std::string& text) override { note("message|" + title + "|" + text); }
  bool question(const std::string& title, const std::string& text) override {
    note("question|" + title + "|" + text);
    return answer;
  }
  platform::ErrorChoice error(const std::string&, const std::string&, bool) override {
    return platform::ErrorChoice::Abort;
  }
  void note(const std::string& call) {
    calls.push_back(call);
    threads.push_back(std::this_thread::get_id());
  }
  bool answer = true;
  Texts calls;
  std::vector<std::thread::id> threads;
};

// All that was written to a temporary file, which is then closed.
std::string contents_and_close(std::FILE* file) {
  std::rewind(file);
  std::string all;
  for (int c; (c = std::fgetc(file)) != EOF;) all.push_back(static_cast<char>(c));
  std::fclose(file);
  return all;
}

// The "id", "status" and "result" of an async dialog's map, as one text; the map is freed.
std::string report_of(const AsyncEvent& event) {
  EXPECT_EQ(event.other_subtype, OTHER_ASYNC_DIALOG);
  const RValue map = RValue::ref(REF_DS_MAP, event.map_id);
  EXPECT_EQ(ds_map_size(map), 3);
  std::string report;
  for (const char* key : {"id", "status", "result"}) {
    report += value_to_text(ds_map_find_value(map, RValue::text(key))) + ";";
  }
  ds_map_destroy(map);
  return report;
}

class DialogFunctions : public ::testing::Test {
 protected:
  void SetUp() override {
    register_runtime_builtins();
    platform::set_headless(true);
    async_events_take();
    auto dialogs = std::make_unique<RecordingDialogs>();
    dialogs_ = dialogs.get();
    platform::set_dialogs(std::move(dialogs));
  }
  void TearDown() override {
    show_messages_on_streams(stdout, stderr);
    platform::set_headless(true);
  }

  RecordingDialogs* dialogs_ = nullptr;  // owned by the platform until TearDown
};

}  // namespace

TEST_F(DialogFunctions, MessageAndQuestionShowTheTextFormUnderTheGameName) {
  dialogs_->answer = false;
  EXPECT_TRUE(call_builtin("show_message", {RValue::number(3.5)}).is(Kind::Undefined));
  const RValue no = call_builtin("show_question", {RValue::text("Salvare?")});
  EXPECT_TRUE(no.is(Kind::Number));
  EXPECT_EQ(no.real, 0);
  dialogs_->answer = true;
  EXPECT_EQ(call_builtin("show_question", {RValue::boolean(true)}).real, 1);
  EXPECT_EQ(dialogs_->calls, (Texts{"message|Velant|3.50", "question|Velant|Salvare?", "question|Velant|1"}));
  EXPECT_FATAL(call_builtin("show_message", {RValue()}), "STRING argument is unset");
}

TEST_F(DialogFunctions, HeadlessDialogsPrintTheTextAndAnswerYes) {
  std::FILE* out = std::tmpfile();
  std::FILE* err = std::tmpfile();
  show_messages_on_streams(out, err);
  call_builtin("show_message", {RValue::text("riga uno\nriga due")});
  EXPECT_EQ(call_builtin("show_question", {RValue::text("Continuare?")}).real, 1);
  show_messages_on_streams(stdout, stderr);
  EXPECT_EQ(contents_and_close(out), "riga uno\nriga due\n\nContinuare?\n\n");
  EXPECT_EQ(contents_and_close(err), "");
}

TEST_F(DialogFunctions, AsyncDialogsReportToOther63InOrderWhenHeadless) {
  dialogs_->answer = false;
  const RValue question = call_builtin("show_question_async", {RValue::text("Pronto?")});
  const RValue message = call_builtin("show_message_async", {RValue::number(7)});
  ASSERT_TRUE(question.is(Kind::Number));
  EXPECT_EQ(message.real, question.real + 1);
  const std::vector<AsyncEvent> events = async_events_take();
  ASSERT_EQ(events.size(), 2u);
  // The question was answered "No"; no text is asked for.
  EXPECT_EQ(report_of(events[0]), value_to_text(question) + ";0;;");
  EXPECT_EQ(report_of(events[1]), value_to_text(message) + ";1;;");
  EXPECT_EQ(dialogs_->calls, (Texts{"question|Velant|Pronto?", "message|Velant|7"}));
}

TEST_F(DialogFunctions, AsyncDialogWithAWindowRunsOnAWorkerAndReportsLater) {
  platform::set_headless(false);
  const int id = show_question_async(RValue::text("Da un altro filo?"));
  std::vector<AsyncEvent> events;
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  while (events.empty() && std::chrono::steady_clock::now() < deadline) {
    events = async_events_take();
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  ASSERT_EQ(events.size(), 1u);
  EXPECT_EQ(report_of(events[0]), std::to_string(id) + ";1;;");
  EXPECT_EQ(dialogs_->calls, (Texts{"question|Velant|Da un altro filo?"}));
  EXPECT_NE(dialogs_->threads.at(0), std::this_thread::get_id());
}

TEST_F(DialogFunctions, DebugMessageWritesTheTextFormAndANewline) {
  std::FILE* debug = std::tmpfile();
  set_debug_output_file(debug);
  call_builtin("show_debug_message", {RValue::number(0.5)});
  call_builtin("show_debug_message", {RValue::text("già a capo\n")});
  const std::string long_text(3000, 'x');
  show_debug_message(RValue::text(long_text));
  set_debug_output_file(nullptr);
  EXPECT_EQ(contents_and_close(debug), "0.50\ngià a capo\n\n" + long_text + "\n");
}
