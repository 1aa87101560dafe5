// controllo_errori: the check a program passes before it leaves the editor.
// It finds what would lead the tokeniser astray: code before "INIZIA", a
// block written twice, round brackets, braces and "ripeti per ... volte"
// that don't balance, and web resources while the computer is offline.
// Strings and comments can't mislead it: their contents are set aside first.
#pragma once

#include <string>

struct PreRunCheck {
  bool passed = true;
  std::string message;       // the failure's text, or the warning's
  bool with_sound = false;   // a failure that plays the error sound
  bool single_run = false;   // no "CICLO CONTINUO": the program runs "INIZIA" once
};

// Checks `program` (the editor's text, "filler " at its end). With the
// warning of a single run, " CICLO CONTINUO" is appended to `to_run`, the
// text that goes to the run. `online` is asked only for a program that
// fetches from the web.
PreRunCheck controllo_errori(std::string program, std::string& to_run, bool (*online)());
