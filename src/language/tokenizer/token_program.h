// The token program of an instance: the flat array of token texts that the
// statement walk runs on, with its block positions and per-position memos.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "runtime/Code/RValue.h"

struct FamilyFunction;

// A condition as its tokens stood when it was first worked out, for the
// conditions that are a chain of plain comparisons ("n >= 700 e n < 1400"):
// operands, each worked out on its own, alternating with comparison signs
// and logic words.
struct ConditionPlan {
  bool plain = false;
  std::vector<std::string> tokens;  // the tokens after "se" up to the brace
  std::vector<std::string> signs;   // each sign's letter in the formula; empty for an operand
  // Scratch of each reading, kept with its capacity: the formula with the
  // signs in their letters, and where each token's part of it ends.
  std::string lettered;
  std::vector<uint32_t> ends;
};

struct TokenProgram {
  // Token texts. Index 0 holds "INIZIA", then the program's tokens, an empty
  // text, and "FINE" at `totale_tok`, which stops scans that run ahead. The
  // statement walk writes its marks into these texts.
  std::vector<RValue> tok;
  int totale_tok = 0;
  int INIZIA = 0;   // the position of "INIZIA": the block run once
  int DISEGNA = 0;  // the position of "CICLO_CONTINUO": the block run every frame
  std::vector<int> tok_ok;               // 1 where a position can start a statement
  std::vector<int> mem_argn;             // arguments counted for the call at a position; 0 not yet
  std::vector<std::string> pixel_art;    // the picture text of a pixel-art call at a position
  std::vector<int> pixel_surf;           // its cached surface, -4 for none
  std::vector<std::string> tok_var_name;
  // The keyword table with each entry's first blank joined, as the tokeniser left it.
  std::vector<std::string> ctrl_keyword;
  // The code of objects, from 1 to tot_ogg - 1: the object's name as its raw
  // token left it (with its trailing blank, "not_set" when free), the text of
  // its code, and its tokens once the first element of the object made them.
  std::vector<std::string> ogg;
  std::vector<std::string> contenuto_ogg;
  std::vector<std::vector<RValue>> tok_ogg;
  int tot_ogg = 1;
  // The names of the imported external functions, in the order of import.
  std::vector<std::string> funzioni_esterne;

  // Made by mem_function for the positions that can start a statement: the
  // family functions that may act there, in the order of the calls. A
  // position's functions are candidates[candidates_from[i]] up to
  // candidates[candidates_from[i + 1]].
  std::vector<const FamilyFunction*> candidates;
  std::vector<uint32_t> candidates_from;
  // The plans of the conditions met so far, by the position of their "se".
  std::unordered_map<int, ConditionPlan> condition_plans;
};
