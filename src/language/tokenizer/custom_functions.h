// What the tokeniser keeps of a program's custom functions while it pastes
// their bodies in at each call: the functions are macros, and nothing of
// them is left once the text is cut into tokens.
#pragma once

#include <array>
#include <string>
#include <vector>

struct CustomFunctions {
  static constexpr int SLOTS = 100;     // functions 1 to 99
  static constexpr int ARGUMENTS = 16;  // argument names 1 to 16 of a function

  int tot_funzioni_pers = 1;                           // the first free function index
  std::array<std::string, SLOTS> funzione;             // names; "not_set" when free
  std::array<std::string, SLOTS> contenuto_funzione;   // bodies, from the raw tokens
  // The names a body assigns: those of the last function scanned, which the
  // expansion of every function uses.
  std::vector<std::string> variabile_fzp;
  std::array<int, SLOTS> n_arg_base{};                 // how many defaults a function has
  std::array<std::vector<std::string>, SLOTS> arg_base_e, arg_base_v;  // default k: name and value
  std::array<std::array<std::string, ARGUMENTS + 1>, SLOTS> argomento;  // argument names, "not_set" when free
  std::array<std::string, ARGUMENTS + 1> argg;         // the values of the call being pasted in; kept between calls
};
