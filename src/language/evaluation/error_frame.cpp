#include "language/evaluation/error_frame.h"

#include "runtime/Code/Builtins.h"
#include "runtime/Code/Error.h"
#include "runtime/Support/AssetIndex.h"

namespace {

constexpr std::string_view RULE = "_______________________________________________________________________";
static_assert(RULE.size() == 71);

// Calls a built-in by name for its effect. One that isn't there (the close
// patch is an external library that may be missing) does nothing.
void call_by_name(std::string_view name, std::span<RValue> args = {}) {
  RValue result;
  builtin_call(name, result, nullptr, nullptr, static_cast<int>(args.size()), args.data());
}

void show_message_box(const std::string& message) {
  RValue text[] = {RValue::text(message)};
  call_by_name("show_message", text);
}

}  // namespace

std::string error_frame(std::string_view head, std::string_view faulty_text,
                        std::span<const std::string_view> causes, std::string_view line_end) {
  std::string text;
  const auto line = [&](std::string_view words) {
    text += words;
    text += line_end;
  };
  line(head);
  line(RULE);
  line("");
  line(faulty_text);
  line(RULE);
  line("");
  line("Esecuzione fallita: impossibile interpretare correttamente il codice!");
  line("");
  text += "Ecco le possibili cause:";
  for (std::string_view cause : causes) {
    text += line_end;
    text += cause;
  }
  return text;
}

namespace {
bool g_stopped_by_error = false;
}  // namespace

bool run_stopped_by_error() { return g_stopped_by_error; }
void set_run_stopped_by_error(bool stopped) { g_stopped_by_error = stopped; }

void stop_run_with_error(const std::string& message, RunEnd reason) {
  g_stopped_by_error = true;
  RValue sound[] = {asset_get_index("suono_errore"), RValue::number(1), RValue::number(0)};
  call_by_name("audio_play_sound", sound);
  show_message_box(message);
  RValue capture[] = {RValue::boolean(false)};
  call_by_name("ex_patch_window_close_capture", capture);
  call_by_name("audio_stop_all");
  end_run(reason);
}

void stop_run_with_message(const std::string& message, RunEnd reason) {
  g_stopped_by_error = true;
  show_message_box(message);
  end_run(reason);
}

void guarded_run(const std::function<void()>& work) {
  try {
    work();
  } catch (const QvScriptException& error) {
    stop_run_with_error("Errore durante l'esecuzione del programma:\r\n\r\n" + error.message);
  }
}
