// What the value functions of the text and number families share: the
// numbers and texts of their argument slots, the hand-back of a result in
// one of its two number forms, and the keys VALORE_1 to VALORE_8 of the
// functions that take a list of values.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "families/family_contract.h"

// The number form in which a value function hands its result back.
enum class NumberForm : uint8_t {
  Exact,  // stored with 30 decimals
  Short,  // the runtime's short text: no decimals when whole, else two
};

// The number of argument slot `slot` of the call being served; 0 for a text that holds none.
double slot_number(ProgramInstance& p, int slot);
// The source text of argument slot `slot`, as written, quotes included; "" for a slot never filled.
std::string slot_source(const ProgramInstance& p, int slot);

// Hands `result` back to the variable of the value call at `i`, in `form`.
void give_number(ProgramInstance& p, int i, double result, NumberForm form);
// Hands a text back to the variable of the value call at `i`, stored as it is.
void give_text(ProgramInstance& p, int i, std::string_view result);
// Hands back whatever the last value function left in output_result: what
// a function gives that computes nothing. Before any value function has
// given something, the variable keeps its value.
void give_previous(ProgramInstance& p, int i);

// VALORE_1 to VALORE_8, in slots 1 to 8, each with the default "0".
inline constexpr std::array<ArgumentKey, 8> VALORE_KEYS = {{
    {"(VALORE_1:", 1, "0"},
    {"(VALORE_2:", 2, "0"},
    {"(VALORE_3:", 3, "0"},
    {"(VALORE_4:", 4, "0"},
    {"(VALORE_5:", 5, "0"},
    {"(VALORE_6:", 6, "0"},
    {"(VALORE_7:", 7, "0"},
    {"(VALORE_8:", 8, "0"},
}};
// The number of the list slots that a call of VALORE_1 to VALORE_8 uses:
// the first arg_count of them, whichever keys it gave.
int listed_count(const ProgramInstance& p);
// The numbers of the list slots that the call uses, in slot order.
std::vector<double> listed_numbers(ProgramInstance& p);

// `text` with every double quote taken out.
std::string without_quotes(std::string_view text);

// The name a table or a file gets when the call names none: "senza nome "
// and a random number in the short form.
std::string unnamed_default();
// The source text of `slot`, or unnamed_default() when the call left it empty.
std::string slot_name_or_unnamed(const ProgramInstance& p, int slot);
