// ReportError, the call trace, and the top-level catch around the main loop.
#include "runtime/Code/Error.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>

#include "runtime/Platform/Dialogs.h"

namespace {

bool g_errors_suppressed = false;
bool g_error_happened = false;
CallFrame* g_call_trace = nullptr;
ErrorSite g_error_site;
std::FILE* g_debug_file = nullptr;

// The number at the tail of an event's name ("Alarm Event3" -> 3), or -1.
int trailing_number(const std::string& name) {
  size_t end = name.size();
  size_t start = end;
  while (start > 0 && name[start - 1] >= '0' && name[start - 1] <= '9') --start;
  if (start == end) return -1;
  return std::atoi(name.c_str() + start);
}

std::string frame_text(const CallFrame& f) {
  char buf[512];
  if (f.line < 0) return f.name;
  std::snprintf(buf, sizeof buf, "%s (line %d)", f.name, f.line);
  return buf;
}

std::string compose_long_message(const std::string& message) {
  static char buf[32767];
  const ErrorSite& site = g_error_site;
  switch (site.where) {
    case ErrorSite::Where::TimeLine:
      std::snprintf(buf, sizeof buf, "%sERROR in\naction number %d\nat time step%d\nof time line %s:\n\n\n%s", "",
                    1, site.time_step, site.object_name.c_str(), message.c_str());
      break;
    case ErrorSite::Where::RoomCreation:
      std::snprintf(buf, sizeof buf, "%sFATAL ERROR in Room Creation Code for room %s\n\n\n%s\n", "",
                    site.object_name.c_str(), message.c_str());
      break;
    case ErrorSite::Where::Event: {
      int action = trailing_number(site.event_name);
      if (action < 0) action = 1;
      std::snprintf(buf, sizeof buf, "%sERROR in\naction number %d\nof %s\nfor object %s:\n\n\n%s", "", action,
                    site.event_name.c_str(), site.object_name.c_str(), message.c_str());
      break;
    }
  }
  std::string text = buf;
  if (g_call_trace) text += "\nat " + frame_text(*g_call_trace) + "\n";
  return text;
}

// The dialog's layout: a rule of 43 underscores, then the lines with tabs
// widened to 7 spaces.
std::string dialog_layout(const std::string& text) {
  std::string out = "\n" + std::string(43, '_') + "\n";
  for (char c : text) {
    if (c == '\t') out.append(7, ' ');
    else if (c != '\r') out.push_back(c);
  }
  return out;
}

}  // namespace

void ReportError(const char* format, ...) {
  char message[1024];
  va_list args;
  va_start(args, format);
  std::vsnprintf(message, sizeof message, format, args);
  va_end(args);

  if (g_errors_suppressed) {
    g_error_happened = true;
    return;
  }
  QvScriptException e;
  e.message = message;
  e.longMessage = compose_long_message(e.message);
  e.script = g_call_trace ? g_call_trace->name : "unknown";
  e.line = g_call_trace ? g_call_trace->line : -1;
  for (CallFrame* f = g_call_trace; f; f = f->previous) e.stacktrace.push_back(frame_text(*f));
  throw e;
}

SuppressErrors::SuppressErrors() : previous_suppressed_(g_errors_suppressed), previous_happened_(g_error_happened) {
  g_errors_suppressed = true;
  g_error_happened = false;
}
SuppressErrors::~SuppressErrors() {
  g_errors_suppressed = previous_suppressed_;
  g_error_happened = previous_happened_;
}
bool SuppressErrors::error_happened() const { return g_error_happened; }

CallFrame* call_trace_top() { return g_call_trace; }
CallTraceScope::CallTraceScope(const char* name, int line) : frame_{name, line, g_call_trace} { g_call_trace = &frame_; }
CallTraceScope::~CallTraceScope() { g_call_trace = frame_.previous; }

void set_error_site(const ErrorSite& site) { g_error_site = site; }
const ErrorSite& error_site() { return g_error_site; }

std::string uncaught_error_text(const QvScriptException& e) {
  const std::string rule(92, '#');
  std::string text = rule + "\n" + e.longMessage + rule + "\n";
  for (const std::string& line : e.stacktrace) text += line + "\n";
  return text;
}

int run_with_top_level_catch(const std::function<int()>& body) {
  try {
    return body();
  } catch (const QvScriptException& e) {
    const std::string text = uncaught_error_text(e);
    platform::dialogs().error("Code Error", dialog_layout(text), false);
    debug_output("ERROR!!! :: " + text);
    return 1;
  }
}

void debug_output(const std::string& text) {
  // Without a file the stream goes nowhere, unless VELANT_DEBUG asks for standard error.
  static const bool to_stderr = [] {
    const char* env = std::getenv("VELANT_DEBUG");
    return env && *env && *env != '0';
  }();
  std::FILE* out = g_debug_file ? g_debug_file : (to_stderr ? stderr : nullptr);
  if (!out) return;
  std::fwrite(text.data(), 1, text.size(), out);
  if (text.empty() || text.back() != '\n') std::fputc('\n', out);
  std::fflush(out);
}

void set_debug_output_file(std::FILE* file) { g_debug_file = file; }
