// The dialog built-ins over the platform's dialogs.
#include "runtime/Function/DialogFunctions.h"

#include <atomic>
#include <string>
#include <thread>

#include "runtime/Code/Builtins.h"
#include "runtime/Code/Conversions.h"
#include "runtime/Code/Error.h"
#include "runtime/Code/Registration.h"
#include "runtime/Platform/Dialogs.h"
#include "runtime/Platform/Headless.h"
#include "runtime/Support/AsyncQueue.h"
#include "runtime/Support/DsMap.h"

namespace {

std::atomic<int> g_next_dialog_id{0};

// Shows one dialog and reports its end through the asynchronous queue. It
// gets its text as a copy: values stay on the main thread.
void run_async_dialog(int id, bool question, const std::string& text) {
  bool answer = true;
  if (question) answer = platform::dialogs().question(DIALOG_TITLE, text);
  else platform::dialogs().message(DIALOG_TITLE, text);
  const int map = ds_map_create().ref_index();
  ds_map_add_from_worker(map, "id", RValue::number(id));
  ds_map_add_from_worker(map, "status", RValue::number(answer ? 1 : 0));
  // No text is asked for, so the result is empty.
  ds_map_add_from_worker(map, "result", RValue::text(""));
  async_event_queue(map, OTHER_ASYNC_DIALOG);
}

int start_async_dialog(bool question, const RValue& v) {
  const int id = g_next_dialog_id++;
  std::string text = value_to_text(v);
  // A headless run has nobody to wait for: the answer is there at once.
  if (platform::headless()) run_async_dialog(id, question, text);
  else std::thread(run_async_dialog, id, question, std::move(text)).detach();
  return id;
}

BUILTIN_ADAPTER(show_message) { show_message(args[0]); }
BUILTIN_ADAPTER(show_question) { result = RValue::number(show_question(args[0]) ? 1 : 0); }
BUILTIN_ADAPTER(show_message_async) { result = RValue::number(show_message_async(args[0])); }
BUILTIN_ADAPTER(show_question_async) { result = RValue::number(show_question_async(args[0])); }
BUILTIN_ADAPTER(show_debug_message) { show_debug_message(args[0]); }

}  // namespace

void show_messages_on_streams(std::FILE* messages, std::FILE* errors) {
  platform::set_dialogs(platform::make_headless_dialogs(messages, errors));
}

void show_message(const RValue& v) { platform::dialogs().message(DIALOG_TITLE, value_to_text(v)); }

bool show_question(const RValue& v) { return platform::dialogs().question(DIALOG_TITLE, value_to_text(v)); }

int show_message_async(const RValue& v) { return start_async_dialog(false, v); }

int show_question_async(const RValue& v) { return start_async_dialog(true, v); }

// A bounded output buffer would take a long text in pieces of 1023 bytes;
// the debug stream takes it whole, which writes the same bytes.
void show_debug_message(const RValue& v) { debug_output(value_to_text(v) + "\n"); }

void register_dialog_builtins() {
  builtin_register("show_message", builtin_show_message, 1);
  builtin_register("show_question", builtin_show_question, 1);
  builtin_register("show_message_async", builtin_show_message_async, 1);
  builtin_register("show_question_async", builtin_show_question_async, 1);
  builtin_register("show_debug_message", builtin_show_debug_message, 1);
}
