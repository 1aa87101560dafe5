// The token program of an instance: the flat array of token texts that the
// statement walk runs on, with its block positions and per-position memos.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "runtime/Code/RValue.h"

struct FamilyFunction;

// Whether `token` still holds the text that `held` was read from: at once
// when it is the very string held (which can't have been freed and made
// again meanwhile), by comparing the texts otherwise, holding an equal text
// made anew from then on.
inline bool still_reads(RValue& held, const RValue& token) {
  if (!held.is(Kind::String) || !token.is(Kind::String)) return false;
  if (held.str == token.str) return true;
  if (held.string_view() != token.string_view()) return false;
  held = token;
  return true;
}

// The positions of one name in a variable table, found once and kept while
// the table's names stand as they did (`version` is the table's count of
// changes to its names; 0: not found yet) and, for a program's own slots,
// while the plan's reading of the name stands.
struct VariableSlots {
  uint64_t version = 0;
  uint64_t reading = 0;
  int limit = -1;
  std::vector<int> slots;
};

// Plans are shared by the elements of a class, each with its own table:
// every program keeps the slots of a plan's names in its own table itself,
// in TokenProgram::own_slots, at an index that the plan gives out at the
// first lookup and keeps from reading to reading. A plan stamps each reading
// of its names, and slots found for another reading are stale.
inline constexpr uint32_t NO_OWN_SLOTS = UINT32_MAX;
// A stamp for a new reading of a plan's names, never given before.
inline uint64_t new_reading() {
  static uint64_t last = 0;
  return ++last;
}

// How an expression token is worked out, read at its first evaluation: a
// plain numeral, a lone name, or a chain of whole-number operands joined by
// "+", "-" and "*". Each shortcut gives the text the rewriting evaluator
// would; any other token, or a value it can't take, goes the general way.
struct ExpressionPlan {
  enum class Shape : uint8_t { Unread, General, Numeral, Name, Chain };
  struct Operand {
    std::string name;      // "" for a number written in the expression
    double number = 0;
    bool negated = false;  // behind a "-", which the evaluator turns into "+" and the opposite
    bool multiplies = false;  // behind a "*": a factor of the term before
    bool ends_term = false;   // the last factor of its term
  };
  Shape shape = Shape::Unread;
  std::string token;          // the token the plan was read from
  VariableSlots main_slots;   // an element's lone name in the main table, whose string would win
  uint64_t main_version = 0;  // the main table's names when the plan was read
  std::vector<Operand> operands;
  std::vector<uint32_t> own_slots;  // the index of each operand's own slots, kept from reading to reading
  uint64_t reading = 0;             // the stamp of the operands' reading
  bool sums = false;          // any "+" or "-": the answer is a sum, without trailing zeros
  bool whole_numeral = false; // a numeral of a whole number,
  double numeral = 0;         // and that number
};

// A statement at one position, read at its first run: "aumenta" and
// "diminuisci" with their amount, or an assignment with its expression; the
// name's slots and its element attribute resolved once.
struct StatementPlan {
  enum class Shape : uint8_t { Unread, General, Change, Assignment };
  // The position's first word and the token behind it as the walk last read them, held.
  enum class Word : uint8_t { Other, Aumenta, Diminuisci, Finche, Ripeti, Se };
  RValue word_token, next_token;
  Word word = Word::Other;
  bool assigns = false;  // "=" stands behind the word

  Shape shape = Shape::Unread;
  RValue name_token, value_token;  // the tokens the plan was read from, held (see still_reads)
  int attribute = -1;              // the element attribute the name writes through, or -1
  bool fixed_amount = false;       // "aumenta": the amount is a numeral, worked out once
  double amount = 0;
  bool unit_step = false;          // the fixed amount is 1
  uint32_t own_slots = NO_OWN_SLOTS;  // the index of the name's own slots
  uint64_t reading = 0;               // the stamp of the name's reading
  VariableSlots main_slots;        // an element's name in the main table, which the assignment reaches too
  ExpressionPlan value;            // an assignment's expression
};

// A condition as its tokens stood when it was first worked out, for the
// conditions that are a chain of plain comparisons ("n >= 700 e n < 1400"):
// operands, each worked out on its own, alternating with comparison signs
// and logic words.
struct ConditionPlan {
  bool read = false;
  bool plain = false;
  bool comparison_chain = false;  // comparisons by one-letter signs joined by logic words
  std::vector<std::string> tokens;  // the tokens after "se" up to the brace
  std::vector<RValue> held;         // the same tokens, held (see still_reads)
  std::vector<std::string> signs;   // each sign's letter in the formula; empty for an operand
  std::vector<ExpressionPlan> operands;  // the plan of each operand, by the token's index
  // The brace behind the tokens, held, and whether it opens a dark block
  // (known once the "se" has read it: the held text can't change).
  RValue brace;
  bool brace_read = false;
  bool brace_dark = false;
  // Scratch of each reading, kept with its capacity: the formula with the
  // signs in their letters, and where each token's part of it ends.
  std::string lettered;
  std::vector<uint32_t> ends;
  std::string value;  // an operand's value
};

// The plans of a program's positions: what each statement and condition
// means, read at its first run. Nothing in them belongs to one table but the
// slots in the main table, which every element reaches alike: the elements
// of a class run the same tokens and share one PositionPlans.
struct PositionPlans {
  // The plans of the conditions met so far, by the position of their "se".
  std::vector<ConditionPlan> conditions;
  // The plans of the statements met so far, by position.
  std::vector<StatementPlan> statements;
  // The own slots' indexes given out so far.
  uint32_t own_slot_count = 0;
  // The texts that marks gave each token, by position, with the text it had
  // before: every program that writes a text into a token takes the same
  // string, which the plans find as the very string they hold.
  std::vector<std::vector<RValue>> token_forms;
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
  std::vector<int> next_ok;              // the first position from each one on that can, or tok_ok's size
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
  // The plans of the positions, made ready by mem_function; the elements of
  // a class share theirs (see PositionPlans), each keeping its own slots.
  std::shared_ptr<PositionPlans> plans = std::make_shared<PositionPlans>();
  std::vector<VariableSlots> own_slots;
  // The shared plans of each object's code, by the index of tok_ogg, once its first element made them.
  std::vector<std::shared_ptr<PositionPlans>> plans_ogg;
};
