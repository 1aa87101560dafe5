// The condition of "se" and "ripeti finche": its tokens, up to the first
// that holds "{", become a short formula over the values of the operands,
// which the formula reducer brings down to "1" or "0".
#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "language/condition_formula.h"
#include "language/error_frame.h"
#include "language/marks.h"
#include "language/numeric_expression.h"
#include "language/program_instance.h"
#include "language/text_edit.h"

namespace {

constexpr std::string_view MISSING_BRACE_CAUSES[] = {
    "1 - Manca una parentesi graffa aperta '{' o il costrutto 'allora' dopo la condizione",
};

// The words of a condition as the formula reducer spells them.
constexpr text_edit::Rewrite FORMULA_ALPHABET[] = {
    {"non", "n"}, {"o_esclusivamente", "x"}, {"==", "="}, {">=", "#"}, {"<=", "@"}, {"!=", "ù"},
};

// One-byte signs: in UTF-8 every such byte starts a character.
bool holds_comparison(std::string_view t) { return t.find_first_of("=><") != std::string_view::npos; }

bool is_logic_word(std::string_view t) { return t == "e" || t == "o" || t == "o_esclusivamente"; }

bool brackets_balance(std::string_view t) { return text_edit::count(t, "[") == text_edit::count(t, "]"); }

// Takes off the brackets that belong to the formula rather than to the
// operand's expression, from the end and then from the front, one character
// at a time until the operand's own brackets pair up; gives how many went at
// each end, so that as many can be put back.
struct StrippedBrackets {
  size_t closing = 0;
  size_t opening = 0;
};
StrippedBrackets strip_formula_brackets(std::string& t) {
  StrippedBrackets stripped;
  if (t.ends_with(']') && text_edit::count(t, "[") < text_edit::count(t, "]")) {
    while (!brackets_balance(t)) {
      size_t last = t.size() - 1;
      while (last > 0 && (static_cast<unsigned char>(t[last]) & 0xC0) == 0x80) --last;
      t.erase(last);
      ++stripped.closing;
    }
  }
  if (t.starts_with('[') && text_edit::count(t, "[") > text_edit::count(t, "]")) {
    while (!brackets_balance(t)) {
      t.erase(0, text_edit::next(t, 0));
      ++stripped.opening;
    }
  }
  return stripped;
}

}  // namespace

std::string ProgramInstance::tokenizza_boolean(int j) {
  // Scans stop at the end of the program, or of the array where it is shorter.
  const int64_t end = std::min<int64_t>(program.totale_tok, static_cast<int64_t>(program.tok.size()));
  const auto token = [&](int64_t k) { return k < 0 || k >= end ? std::string_view() : token_text(static_cast<int>(k)); };
  std::vector<std::string> tb(1);  // tb[0] stands before the first token and is never filled
  for (int64_t z = 1; !text_edit::contains(token(j + z), "{"); ++z) {
    tb.push_back(without_marks(token(j + z)));
    std::string& t = tb[static_cast<size_t>(z)];
    std::string& before = tb[static_cast<size_t>(z) - 1];
    // "non" right behind a comparison sign negates the value that follows: "X = non Y".
    if (z > 1 && text_edit::contains(t, "non") && text_edit::length(before) <= 2 && holds_comparison(before)) t.assign(1, '!');
    if (!holds_comparison(t) && !is_logic_word(t) && !text_edit::contains(t, "non")) {
      const StrippedBrackets stripped = strip_formula_brackets(t);
      if (before == "!") {
        t = negation_of(t);
        before.clear();
      } else if (t != "!") {
        t = calculate_string(*this, t);
      }
      t.insert(0, stripped.opening, '[');
      t.append(stripped.closing, ']');
    }
    if (j + z + 1 >= end) {
      stop_run_with_error(error_frame("Errore nell'istruzione condizionale:", faulty_tokens(j), MISSING_BRACE_CAUSES,
                                       "\r\n\t"),
                          "Editor");
      return "error";
    }
  }
  std::string formula;
  for (const std::string& t : tb) formula += t;
  text_edit::replace_all(formula, FORMULA_ALPHABET);
  return reduce_condition(*this, formula);
}
