// Program errors that stop a run: the framed message that tells the learner
// what went wrong and why, and what the run does around it.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "language/evaluation/run_end.h"

// The framed message: the head line, a rule, the faulty text, a rule, the
// failure line, "Ecco le possibili cause:" and the numbered causes, one a
// line, with `line_end` between the lines ("\r\n", or "\r\n\t" for loops).
std::string error_frame(std::string_view head, std::string_view faulty_text,
                        std::span<const std::string_view> causes, std::string_view line_end);

// Stops the run on a program error: the error sound, the message,
// window-close capture off, every sound stopped, and the run's end for
// `reason`. Statements under way go on until the walk returns.
void stop_run_with_error(const std::string& message, RunEnd reason = RunEnd::ToEditor);
// Runs `work`, a statement walk or a start of a program; a program error
// that the runtime raises in it stops the run with its message.
void guarded_run(const std::function<void()>& work);
// Whether a program error stopped the run since the flag was last cleared.
bool run_stopped_by_error();
void set_run_stopped_by_error(bool stopped);

// Shows `message` in a message box and ends the run as a program error,
// without the sound and the rest of stop_run_with_error.
void stop_run_with_message(const std::string& message, RunEnd reason = RunEnd::ToEditor);
