// The condition of "se" and "ripeti finche": its tokens, up to the first
// that holds "{", become a short formula over the values of the operands,
// which the formula reducer brings down to "1" or "0".
#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "language/evaluation/condition_formula.h"
#include "language/evaluation/error_frame.h"
#include "language/tokenizer/marks.h"
#include "language/evaluation/numeric_expression.h"
#include "language/evaluation/program_instance.h"
#include "language/tokenizer/text_edit.h"

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

// The comparison signs and logic words of a plain condition, with the
// letters that the formula alphabet turns them into.
constexpr text_edit::Rewrite PLAIN_SIGNS[] = {
    {"=", "="}, {"==", "="}, {">", ">"}, {"<", "<"}, {">=", "#"}, {"<=", "@"}, {"!=", "ù"},
    {"e", "e"}, {"o", "o"}, {"o_esclusivamente", "x"},
};

const text_edit::Rewrite* plain_sign(std::string_view t) {
  for (const text_edit::Rewrite& sign : PLAIN_SIGNS) {
    if (sign.from == t) return &sign;
  }
  return nullptr;
}

// An operand that the general reading works out on its own and whole: no
// sign, logic word or "non" in it, and no bracket that could belong to the
// formula.
bool is_plain_operand(std::string_view t) {
  return !t.empty() && !holds_comparison(t) && !is_logic_word(t) && !text_edit::contains(t, "non") &&
         t.find_first_of("[]") == std::string_view::npos;
}

// A value that the formula alphabet leaves alone and that touches no sign
// beside it: a number written with digits, points and minus signs only.
bool is_numeral(std::string_view value) {
  return !value.empty() && value.find_first_not_of("0123456789.-") == std::string_view::npos;
}

// The plan of the condition behind position `j`, read from its tokens: plain
// when they alternate operand, sign, operand ... and carry no mark.
ConditionPlan plan_condition(const ProgramInstance& p, int j, int64_t end) {
  ConditionPlan plan;
  bool operand_next = true;
  for (int64_t k = j + 1; k < end; ++k) {
    const std::string_view t = p.token_text(static_cast<int>(k));
    if (text_edit::contains(t, "{")) {
      plan.plain = !operand_next && !plan.tokens.empty();
      return plan;
    }
    if (without_marks(t) != t || unmarked(t) != t) return plan;
    const text_edit::Rewrite* sign = operand_next ? nullptr : plain_sign(t);
    if (operand_next ? !is_plain_operand(t) : !sign) return plan;
    plan.tokens.emplace_back(t);
    plan.signs.emplace_back(sign ? sign->to : std::string_view());
    operand_next = !operand_next;
  }
  return plan;
}

// Whether a plain condition is comparisons joined by logic words, as
// numeral_comparisons takes it: "!=" isn't among them (its letter is one the
// formula's one-byte reading doesn't know).
bool is_comparison_chain(const ConditionPlan& plan) {
  for (size_t k = 0;; k += 4) {
    if (k + 2 >= plan.tokens.size()) return false;
    const std::string_view sign = plan.signs[k + 1];
    if (sign != "=" && sign != ">" && sign != "<" && sign != "#" && sign != "@") return false;
    if (k + 3 >= plan.tokens.size()) return true;
    const std::string_view joined_by = plan.signs[k + 3];
    if (joined_by != "e" && joined_by != "o" && joined_by != "x") return false;
  }
}

// The comparisons of a comparison chain from the operands' numbers: what
// plain_comparisons reads from the lettered formula, without writing it and
// cutting it again. False when an operand has no number.
template <class NumberOf>
bool numeral_comparisons(const ConditionPlan& plan, NumberOf&& number_of, std::string& truth) {
  if (!plan.comparison_chain) return false;
  bool result = false;
  for (size_t k = 0; k < plan.tokens.size(); k += 4) {
    double left = 0, right = 0;
    if (!number_of(k, left) || !number_of(k + 2, right)) return false;
    const bool v = compare_numbers(left, plan.signs[k + 1], right);
    const char joined_by = k == 0 ? 0 : plan.signs[k - 1][0];
    result = joined_by == 0 ? v : joined_by == 'e' ? result && v : joined_by == 'o' ? result || v : result != v;
  }
  truth.assign(1, result ? '1' : '0');
  return true;
}

}  // namespace

bool ProgramInstance::plain_condition(int j, int64_t end, std::string& truth) {
  if (j < 0) return false;
  // A program that mem_function hasn't prepared gets its plans' room here.
  if (static_cast<size_t>(j) >= program.plans->conditions.size()) {
    program.plans->conditions.resize(std::max(static_cast<size_t>(j) + 1, program.tok.size()));
  }
  ConditionPlan& plan = program.plans->conditions[static_cast<size_t>(j)];
  if (!plan.read) {
    plan = plan_condition(*this, j, end);
    plan.read = true;
    plan.comparison_chain = plan.plain && is_comparison_chain(plan);
    plan.operands.resize(plan.tokens.size());
    for (size_t k = 0; k < plan.tokens.size(); ++k) plan.held.push_back(program.tok[static_cast<size_t>(j) + 1 + k]);
  }
  // The plan holds while the tokens and the brace behind them stand as they did.
  const int brace = j + 1 + static_cast<int>(plan.tokens.size());
  if (!plan.plain || brace >= end) return false;
  if (const RValue& brace_token = program.tok[static_cast<size_t>(brace)]; plan.brace.str != brace_token.str) {
    // The brace is one byte: wherever it stands it starts a character.
    if (!brace_token.is(Kind::String) || brace_token.string_view().find('{') == std::string_view::npos) return false;
    plan.brace = brace_token;
    plan.brace_read = false;
  }
  for (size_t k = 0; k < plan.tokens.size(); ++k) {
    if (!still_reads(plan.held[k], program.tok[static_cast<size_t>(j) + 1 + k])) return false;
  }
  condition_brace = brace;
  // Whole numbers for every operand: the comparisons need no formula.
  const auto whole_number = [&](size_t k, double& number) {
    return planned_number(plan.operands[k], plan.tokens[k], number, true);
  };
  if (numeral_comparisons(plan, whole_number, truth)) return true;
  // The formula with the signs already in the formula's letters: with
  // numbers for every operand the alphabet could change nothing else, so it
  // is the formula that the general reading would reach.
  std::string& lettered = plan.lettered;
  lettered.clear();
  plan.ends.clear();
  bool numerals = true;
  for (size_t k = 0; k < plan.tokens.size(); ++k) {
    if (!plan.signs[k].empty()) {
      lettered += plan.signs[k];
    } else {
      std::string& value = plan.value;
      if (!planned_value(plan.operands[k], plan.tokens[k], value, nullptr, true)) {
        value = calculate_string(*this, plan.tokens[k]);
      }
      numerals = numerals && is_numeral(value);
      lettered += value;
    }
    plan.ends.push_back(static_cast<uint32_t>(lettered.size()));
  }
  if (numerals) {
    const auto value_number = [&plan](size_t k, double& number) {
      const size_t begin = k == 0 ? 0 : plan.ends[k - 1];
      number = string_is_real(std::string_view(plan.lettered).substr(begin, plan.ends[k] - begin));
      return true;
    };
    if (!numeral_comparisons(plan, value_number, truth) && !plain_comparisons(*this, lettered, truth)) {
      truth = reduce_condition(*this, lettered);
    }
    return true;
  }
  // Otherwise the formula as the general reading writes it, signs as they stand.
  std::string formula;
  for (size_t k = 0, begin = 0; k < plan.tokens.size(); begin = plan.ends[k++]) {
    formula += plan.signs[k].empty() ? std::string_view(lettered).substr(begin, plan.ends[k] - begin)
                                     : std::string_view(plan.tokens[k]);
  }
  text_edit::replace_all(formula, FORMULA_ALPHABET);
  truth = reduce_condition(*this, formula);
  return true;
}

// Scans stop at the end of the program, or of the array where it is shorter.
int64_t ProgramInstance::condition_scan_end() const {
  return std::min<int64_t>(program.totale_tok, static_cast<int64_t>(program.tok.size()));
}

std::string ProgramInstance::tokenizza_boolean(int j) {
  condition_brace = -1;
  if (std::string truth; plans_enabled() && plain_condition(j, condition_scan_end(), truth)) return truth;
  return read_condition(j);
}

std::string ProgramInstance::read_condition(int j) {
  const int64_t end = condition_scan_end();
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
                                       "\r\n\t"));
      return "error";
    }
  }
  std::string formula;
  for (const std::string& t : tb) formula += t;
  text_edit::replace_all(formula, FORMULA_ALPHABET);
  return reduce_condition(*this, formula);
}
