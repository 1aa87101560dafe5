// Message dialogs and the debug stream: show_message, show_question, their
// asynchronous forms, and show_debug_message.
//
// The modal forms stop the frame until the user answers. The asynchronous
// forms give an id at once; the dialog runs on a worker thread and its end
// arrives as Other event 63 with `async_load` holding "id", "status" and
// "result". In a headless run every dialog is printed and answered at once.
#pragma once

#include <cstdio>

#include "runtime/Code/RValue.h"

// The title of the message boxes: the game's display name.
inline constexpr const char* DIALOG_TITLE = "Velant";
// The Other event that reports a finished asynchronous dialog.
inline constexpr int OTHER_ASYNC_DIALOG = 63;

// Shows the text form of `v` and waits for it to be acknowledged.
void show_message(const RValue& v);
// Asks the text form of `v` with "Yes" and "No"; true for "Yes".
bool show_question(const RValue& v);
// Starts a message dialog and gives its id; its "status" will be 1.
int show_message_async(const RValue& v);
// Starts a question dialog and gives its id; its "status" will be 1 for "Yes", 0 for "No".
int show_question_async(const RValue& v);
// Writes the text form of `v` and a newline to the debug stream.
void show_debug_message(const RValue& v);
// From now on messages are written to `messages` and errors to `errors`, each
// followed by an empty line, and every question takes its default answer:
// for command-line tools that have nobody to click a box.
void show_messages_on_streams(std::FILE* messages, std::FILE* errors);
