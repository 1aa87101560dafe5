#include "runtime/Function/DialogFunctions.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "runtime/Code/Builtins.h"
#include "runtime/Code/Error.h"
#include "runtime/Platform/Dialogs.h"
#include "runtime/Platform/Headless.h"
#include "runtime/Support/AsyncQueue.h"
#include "runtime/Support/DsMap.h"
#include "support/Fatal.h"

namespace {

struct DialogCall {
  std::string kind;  // "message" or "question"
  std::string title;
  std::string text;
  std::thread::id thread;
};

// Dialogs that note every call and answer questions as told; asynchronous
// dialogs call them from a worker thread.
class RecordingDialogs final : public platform::Dialogs {
 public:
  RecordingDialogs(std::vector<DialogCall>& calls, std::mutex& lock, bool answer)
      : calls_(calls), lock_(lock), answer_(answer) {}
  void message(const std::string& title, const std::string& text) override { note("message", title, text); }
  bool question(const std::string& title, const std::string& text) override {
    note("question", title, text);
    return answer_;
  }
  platform::ErrorChoice error(const std::string& title, const std::string& text, bool) override {
    note("error", title, text);
    return platform::ErrorChoice::Abort;
  }

 private:
  void note(const char* kind, const std::string& title, const std::string& text) {
    std::lock_guard<std::mutex> guard(lock_);
    calls_.push_back({kind, title, text, std::this_thread::get_id()});
  }
  std::vector<DialogCall>& calls_;
  std::mutex& lock_;
  bool answer_;
};

RValue call(const char* name, std::vector<RValue> args) {
  RValue result;
  EXPECT_TRUE(builtin_call(name, result, nullptr, nullptr, static_cast<int>(args.size()), args.data())) << name;
  return result;
}

// All that was written to a temporary file.
std::string contents(std::FILE* file) {
  std::fflush(file);
  std::rewind(file);
  std::string all;
  for (int c; (c = std::fgetc(file)) != EOF;) all.push_back(static_cast<char>(c));
  return all;
}

class DialogFunctions : public ::testing::Test {
 protected:
  void SetUp() override {
    register_runtime_builtins();
    platform::set_headless(true);
    async_events_take();
  }
  void TearDown() override {
    platform::set_dialogs(platform::make_headless_dialogs(stdout, stderr));
    platform::set_headless(true);
  }
  void answer_questions(bool answer) {
    platform::set_dialogs(std::make_unique<RecordingDialogs>(calls_, lock_, answer));
  }
  std::vector<DialogCall> recorded() {
    std::lock_guard<std::mutex> guard(lock_);
    return calls_;
  }

  std::vector<DialogCall> calls_;
  std::mutex lock_;
};

// The "id", "status" and "result" of an async dialog's map, then frees it.
struct DialogReport {
  double id, status;
  std::string result;
};
DialogReport take_report(const AsyncEvent& event) {
  EXPECT_EQ(event.other_subtype, OTHER_ASYNC_DIALOG);
  const RValue map = RValue::ref(REF_DS_MAP, event.map_id);
  EXPECT_EQ(ds_map_size(map), 3);
  DialogReport report{ds_map_find_value(map, RValue::text("id")).real,
                      ds_map_find_value(map, RValue::text("status")).real,
                      std::string(ds_map_find_value(map, RValue::text("result")).string_view())};
  ds_map_destroy(map);
  return report;
}

}  // namespace

TEST_F(DialogFunctions, MessageAndQuestionShowTheTextFormUnderTheGameName) {
  answer_questions(false);
  EXPECT_TRUE(call("show_message", {RValue::number(3.5)}).is(Kind::Undefined));
  const RValue no = call("show_question", {RValue::text("Salvare?")});
  EXPECT_TRUE(no.is(Kind::Number));
  EXPECT_EQ(no.real, 0);
  answer_questions(true);
  EXPECT_EQ(call("show_question", {RValue::boolean(true)}).real, 1);

  const std::vector<DialogCall> calls = recorded();
  ASSERT_EQ(calls.size(), 3u);
  EXPECT_EQ(calls[0].kind, "message");
  EXPECT_EQ(calls[0].title, "Velant");
  EXPECT_EQ(calls[0].text, "3.50");
  EXPECT_EQ(calls[1].kind, "question");
  EXPECT_EQ(calls[1].text, "Salvare?");
  EXPECT_EQ(calls[2].text, "1");
  EXPECT_FATAL(call("show_message", {RValue()}), "STRING argument is unset");
}

TEST_F(DialogFunctions, HeadlessDialogsPrintTheTextAndAnswerYes) {
  std::FILE* out = std::tmpfile();
  std::FILE* err = std::tmpfile();
  platform::set_dialogs(platform::make_headless_dialogs(out, err));
  call("show_message", {RValue::text("riga uno\nriga due")});
  EXPECT_EQ(call("show_question", {RValue::text("Continuare?")}).real, 1);
  EXPECT_EQ(contents(out), "riga uno\nriga due\n\nContinuare?\n\n");
  EXPECT_EQ(contents(err), "");
  platform::set_dialogs(platform::make_headless_dialogs(stdout, stderr));
  std::fclose(out);
  std::fclose(err);
}

TEST_F(DialogFunctions, AsyncDialogsReportToOther63InOrderWhenHeadless) {
  answer_questions(false);
  const RValue question = call("show_question_async", {RValue::text("Pronto?")});
  const RValue message = call("show_message_async", {RValue::number(7)});
  ASSERT_TRUE(question.is(Kind::Number));
  EXPECT_EQ(message.real, question.real + 1);

  const std::vector<AsyncEvent> events = async_events_take();
  ASSERT_EQ(events.size(), 2u);
  const DialogReport first = take_report(events[0]);
  EXPECT_EQ(first.id, question.real);
  EXPECT_EQ(first.status, 0);  // "No"
  EXPECT_EQ(first.result, "");
  const DialogReport second = take_report(events[1]);
  EXPECT_EQ(second.id, message.real);
  EXPECT_EQ(second.status, 1);

  const std::vector<DialogCall> calls = recorded();
  ASSERT_EQ(calls.size(), 2u);
  EXPECT_EQ(calls[0].kind, "question");
  EXPECT_EQ(calls[0].text, "Pronto?");
  EXPECT_EQ(calls[1].kind, "message");
  EXPECT_EQ(calls[1].text, "7");
  EXPECT_EQ(calls[1].thread, std::this_thread::get_id());
}

TEST_F(DialogFunctions, AsyncDialogWithAWindowRunsOnAWorkerAndReportsLater) {
  answer_questions(true);
  platform::set_headless(false);
  const int id = show_question_async(RValue::text("Da un altro filo?"));
  std::vector<AsyncEvent> events;
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  while (events.empty() && std::chrono::steady_clock::now() < deadline) {
    events = async_events_take();
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  ASSERT_EQ(events.size(), 1u);
  const DialogReport report = take_report(events[0]);
  EXPECT_EQ(report.id, id);
  EXPECT_EQ(report.status, 1);
  const std::vector<DialogCall> calls = recorded();
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_EQ(calls[0].text, "Da un altro filo?");
  EXPECT_NE(calls[0].thread, std::this_thread::get_id());
}

TEST_F(DialogFunctions, DebugMessageWritesTheTextFormAndANewline) {
  std::FILE* debug = std::tmpfile();
  set_debug_output_file(debug);
  call("show_debug_message", {RValue::text("ciao")});
  call("show_debug_message", {RValue::number(0.5)});
  call("show_debug_message", {RValue::text("già a capo\n")});
  const std::string long_text(3000, 'x');
  show_debug_message(RValue::text(long_text));
  set_debug_output_file(nullptr);
  EXPECT_EQ(contents(debug), "ciao\n0.50\ngià a capo\n\n" + long_text + "\n");
  std::fclose(debug);
}
