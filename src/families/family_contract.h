// What every family does the same way: count the arguments of a call, read
// them by key with their defaults, evaluate them where they are used, and
// hand a value function's result back to the variable on the left.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "language/walk/statement_walk.h"
#include "runtime/Code/RValue.h"

class ProgramInstance;

// Sets call.arg_count for the call at `i`: the argument triples counted
// from i+4 behind "f=", else from i+2. The count is kept in mem_argn[i];
// a call whose triples run to the end of the array is counted every time.
void conta_argomenti(ProgramInstance& p, int i);

// A key that a function knows, with the slot it fills and its default.
struct ArgumentKey {
  std::string_view key;                    // the key token: "(X:", "(COLORE_SFONDO:"
  int slot;                                // 0 to 29: arg0 to arg29
  std::string_view default_text = "";      // source text a user could have written, quotes included
  std::optional<double> default_number{};  // the defaults that are numbers, not text
  // A key without a default: a call that doesn't give it leaves its slot as an earlier call left it.
  bool keeps_earlier = false;
};

// Fills the slots of `keys` for the call at `i`: each default (but for the
// keys that keep an earlier value), then, for a
// value call, arg0 with the receiving name, then the source text of each
// key found, unevaluated (the last of a key twice wins; unknown keys are
// passed over; keys compare with case).
void read_arguments(ProgramInstance& p, int i, CallShape shape, std::span<const ArgumentKey> keys);

// The number of an argument: a number default as it is, a text evaluated
// as an expression (0 when it gives no number).
double argument_number(ProgramInstance& p, const RValue& slot);
// The text of an argument with its double quotes taken out; a number default in the runtime's short form.
std::string argument_text(const RValue& slot);

// A value function's result: a number, which is stored with 30 decimals
// (the exact form).
void output_exact(ProgramInstance& p, double result);
// A number in the runtime's short form: no decimals when whole, else two.
void output_short(ProgramInstance& p, double result);
// A text, stored as it is (a string value keeps its double quotes).
void output_text(ProgramInstance& p, std::string_view result);

// Stores call.output_result in the variable named by tok[i]: the first
// entry of that name, or a new one at the end of the table. The four
// reserved names act on the program's window instead.
void aggiorna_variabile_tramite_funzione(ProgramInstance& p, int i);

// A text written by the user to be shown or written out, with its quotes
// taken out and each "< name >" replaced by the value of that variable
// ("no var" for a name that is none).
std::string fill_text_template(ProgramInstance& p, std::string_view text);
