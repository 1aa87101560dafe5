// The fatal error report, the call trace it prints, and the top-level catch.
//
// Every fatal error of the runtime goes through ReportError: it formats the
// short message, composes the long one with the running event and the call
// trace, and throws QvScriptException. While errors are suppressed it only
// records that one happened and returns, and the caller goes on with its
// neutral result.
#pragma once

#include <cstdio>
#include <exception>
#include <functional>
#include <string>
#include <vector>

class QvScriptException : public std::exception {
 public:
  std::string message;      // the short message
  std::string longMessage;  // the message framed by the running event and the stack
  std::string script;       // the innermost frame's name, or "unknown"
  int line = -1;
  std::vector<std::string> stacktrace;  // innermost first

  const char* what() const noexcept override { return message.c_str(); }
  // The exception's text form: its long message.
  std::string toString() const { return longMessage; }
};

// Formats, then throws QvScriptException; returns only while errors are suppressed.
void ReportError(const char* format, ...) __attribute__((format(printf, 1, 2)));

// While a scope of this kind lives, ReportError records instead of throwing.
class SuppressErrors {
 public:
  SuppressErrors();
  ~SuppressErrors();
  SuppressErrors(const SuppressErrors&) = delete;
  SuppressErrors& operator=(const SuppressErrors&) = delete;
  // Whether an error was reported inside this scope.
  bool error_happened() const;

 private:
  bool previous_suppressed_;
  bool previous_happened_;
};

// One frame of the call trace: compiled functions push one on entry,
// keep its line up to date, and pop it on every way out.
struct CallFrame {
  const char* name;
  int line;
  CallFrame* previous;
};
CallFrame* call_trace_top();
class CallTraceScope {
 public:
  explicit CallTraceScope(const char* name, int line = -1);
  ~CallTraceScope();
  CallTraceScope(const CallTraceScope&) = delete;
  CallTraceScope& operator=(const CallTraceScope&) = delete;
  void set_line(int line) { frame_.line = line; }

 private:
  CallFrame frame_;
};

// What is running when an error strikes, told by the event dispatcher.
struct ErrorSite {
  enum class Where { Event, TimeLine, RoomCreation };
  Where where = Where::Event;
  std::string event_name;   // e.g. "Step Event0"; its trailing number is the action number
  std::string object_name;  // the object, the time line, or the room
  int time_step = 0;        // time lines only
};
void set_error_site(const ErrorSite& site);
const ErrorSite& error_site();

// The text the error dialog shows for an uncaught exception: a rule of 92
// '#', the long message, the rule again, then the stack lines.
std::string uncaught_error_text(const QvScriptException& e);

// Runs `body`; a QvScriptException that escapes it is shown in the "Code
// Error" dialog, logged as "ERROR!!! :: ..." and turned into exit status 1.
int run_with_top_level_catch(const std::function<int()>& body);

// The runtime's debug stream: plain text lines for developers. It goes to
// the file set here, or to standard error when VELANT_DEBUG is set, else nowhere.
void debug_output(const std::string& text);
// Sends the debug stream to `file` (null: back to the default).
void set_debug_output_file(std::FILE* file);
