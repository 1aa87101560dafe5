#include "language/evaluation/condition_formula.h"

#include <algorithm>
#include <vector>

#include "language/tokenizer/marks.h"
#include "language/evaluation/numeric_expression.h"
#include "language/evaluation/string_expression.h"
#include "language/tokenizer/text_edit.h"
#include "runtime/Code/Operators.h"
#include "runtime/Function/Utf8.h"

namespace {

// Every sign gets a blank on each side so that the formula can be cut at
// blanks. The letters are also found inside strings and numbers; the blanks
// that land in a string go again when the pieces lose theirs. A quote loses
// the blank behind it, so that the cut ends a string right at its quote.
constexpr text_edit::Rewrite SPACING[] = {
    {"[", "[ "},  {"]", " ]"},  {"e", " e "}, {"o", " o "}, {"x", " x "}, {"=", " = "},  {">", " > "},
    {"<", " < "}, {"#", " # "}, {"@", " @ "}, {"ù", " ù "}, {"n", " n "}, {"\" ", "\""},
};

constexpr std::string_view COMPARISON_SIGNS[] = {"=", ">", "<", "#", "@", "ù"};
constexpr std::string_view OTHER_SIGNS[] = {"n", "e", "o", "x", "[", "]"};

bool is_comparison_sign(std::string_view piece) {
  return std::find(std::begin(COMPARISON_SIGNS), std::end(COMPARISON_SIGNS), piece) != std::end(COMPARISON_SIGNS);
}

bool is_sign(std::string_view piece) {
  return is_comparison_sign(piece) ||
         std::find(std::begin(OTHER_SIGNS), std::end(OTHER_SIGNS), piece) != std::end(OTHER_SIGNS);
}

bool holds_quote(std::string_view text) { return text_edit::contains(text, "\""); }

// The truth text of a value: "1" or "0".
std::string truth(bool value) { return std::string(1, value ? '1' : '0'); }

// A bare value is true from 0.5 on.
bool number_is_true(double number) { return number >= 0.5; }

// An operand of "e", "o" and "x": a string counts as true.
bool operand_is_true(std::string_view entry) { return holds_quote(entry) || number_is_true(string_is_real(entry)); }

// Cuts the spaced formula at blanks, as the tokeniser cuts: a piece that
// begins with a double quote runs to its second one. Then every piece loses
// its blanks, those inside strings too, so that "ciao mondo" and "ciaomondo"
// compare equal. A blank next to a blank leaves an empty piece, and the
// last piece may be empty: the later steps give empty pieces meaning.
std::vector<std::string> cut_at_blanks(std::string_view f) {
  std::vector<std::string> pieces(1);
  const char* const end = f.data() + f.size();
  for (const char* p = f.data(); p < end;) {
    const char* next = utf8::next(p, end);
    std::string& current = pieces.back();
    current.append(p, next);
    const bool one_byte = next - p == 1;
    const bool in_string = current.front() == '"';
    if ((one_byte && *p == ' ' && !in_string) ||
        (in_string && one_byte && *p == '"' && text_edit::count(current, "\"") == 2)) {
      pieces.emplace_back();
    }
    p = next;
  }
  for (std::string& piece : pieces) std::erase(piece, ' ');
  return pieces;
}

// One comparison. With a string on either side, "=" and "ù" compare texts,
// placeholders filled in; everything else compares numbers, so a text
// compared with ">" counts as 0.
bool compare(ExpressionContext& ctx, std::string_view left, std::string_view sign, std::string_view right) {
  if ((holds_quote(left) || holds_quote(right)) && (sign == "=" || sign == "ù")) {
    const auto side = [&](std::string_view value) {
      return holds_quote(value) ? calculate_string(ctx, calculate_expression_in_string(ctx, value))
                                : calculate_string(ctx, value);
    };
    const std::string l = side(left);
    const std::string r = side(right);
    return (l == r) == (sign == "=");
  }
  return compare_numbers(string_is_real(left), sign, string_is_real(right));
}

// Each comparison sign with its left and right pieces becomes "1" or "0";
// the pieces that took no part stay in their order; empty ones go.
std::vector<std::string> comparisons(ExpressionContext& ctx, std::vector<std::string>& p) {
  std::vector<char> used(p.size(), 0);
  std::vector<std::string> outcome(p.size());
  for (size_t i = 0; i < p.size(); ++i) {
    text_edit::replace_all(p[i], DARK_MARK, "");
    if (!is_comparison_sign(p[i])) continue;
    const std::string_view left = i > 0 ? std::string_view(p[i - 1]) : std::string_view();
    const std::string_view right = i + 1 < p.size() ? std::string_view(p[i + 1]) : std::string_view();
    outcome[i] = truth(compare(ctx, left, p[i], right));
    if (i > 0) used[i - 1] = 1;
    used[i] = 1;
    if (i + 1 < p.size()) used[i + 1] = 1;
    ++i;  // the right piece is used up
  }
  std::vector<std::string> q;
  for (size_t i = 0; i < p.size(); ++i) {
    if (!outcome[i].empty()) q.push_back(std::move(outcome[i]));
    else if (!used[i] && !p[i].empty()) q.push_back(std::move(p[i]));
  }
  return q;
}

// "n" before a value becomes the negation of that value, which goes. An "n"
// before a bracket waits until the bracket has become a value.
void negations(std::vector<std::string>& q) {
  for (size_t i = 0; i < q.size(); ++i) {
    if (!text_edit::contains(q[i], "n") || holds_quote(q[i]) || i + 1 >= q.size() || q[i + 1] == "[") continue;
    q[i] = truth(!number_is_true(string_is_real(q[i + 1])));
    q.erase(q.begin() + static_cast<std::ptrdiff_t>(i) + 1);
  }
}

// "e", "o" and "x" from left to right, each between two values: its result
// takes the place of its right operand, so that the next sign takes it as
// its left one, and its left operand goes. A sign next to a bracket, an "n"
// or nothing waits for a later stage.
std::vector<std::string> logic(std::vector<std::string>& q) {
  std::vector<std::string> r;
  if (q.empty()) return r;
  r.push_back(q[0]);
  for (size_t i = 1; i < q.size();) {
    const std::string& sign = q[i];
    const bool logic_sign = sign == "e" || sign == "o" || sign == "x";
    if (!logic_sign || q[i - 1] == "]" || i + 1 >= q.size() || q[i + 1] == "[" || q[i + 1] == "n" ||
        q[i + 1].empty()) {
      r.push_back(q[i]);
      ++i;
      continue;
    }
    const bool a = operand_is_true(q[i - 1]);
    const bool b = operand_is_true(q[i + 1]);
    const bool value = sign == "e" ? a && b : sign == "o" ? a || b : a != b;
    r.back().clear();
    r.push_back(truth(value));
    q[i + 1] = r.back();
    i += 2;
  }
  return r;
}

// The formula that most conditions bring: two numbers and one sign between
// them ("21>10"). It gives what the stages below give, without cutting.
bool single_comparison(ExpressionContext& ctx, std::string_view f, bool& out) {
  const auto is_number_char = [](char c) { return (c >= '0' && c <= '9') || c == '.' || c == '-'; };
  const size_t sign = f.find_first_not_of("0123456789.-");
  if (sign == 0 || sign == std::string_view::npos || sign + 1 >= f.size()) return false;
  if (!is_comparison_sign(f.substr(sign, 1))) return false;
  const std::string_view right = f.substr(sign + 1);
  if (!std::all_of(right.begin(), right.end(), is_number_char)) return false;
  out = compare(ctx, f.substr(0, sign), f.substr(sign, 1), right);
  return true;
}

}  // namespace

bool compare_numbers(double x, std::string_view sign, double y) {
  // As the runtime's comparisons of two numbers answer.
  const int order = CompareNumbers(x, y);
  if (sign == "=") return order == 0;
  if (sign == ">") return order > 0;
  if (sign == "<") return order < 0;
  if (sign == "#") return order >= 0;
  if (sign == "@") return order <= 0;
  return order != 0;
}

bool plain_comparisons(ExpressionContext& ctx, std::string_view f, std::string& out) {
  bool result = false;
  char joined_by = 0;
  size_t start = 0;
  for (size_t i = 0; i <= f.size(); ++i) {
    if (i < f.size() && f[i] != 'e' && f[i] != 'o' && f[i] != 'x') continue;
    bool value = false;
    if (!single_comparison(ctx, f.substr(start, i - start), value)) return false;
    result = joined_by == 0     ? value
             : joined_by == 'e' ? result && value
             : joined_by == 'o' ? result || value
                                : result != value;
    if (i < f.size()) joined_by = f[i];
    start = i + 1;
  }
  out = truth(result);
  return true;
}

std::string boolean_parse(ExpressionContext& ctx, std::string_view formula) {
  if (formula == "1" || formula == "0") return std::string(formula);
  if (std::string plain; plain_comparisons(ctx, formula, plain)) return plain;
  std::string f(formula);
  // Without logic, brackets can only group a comparison: they go.
  if (!text_edit::contains(f, "e") && !text_edit::contains(f, "o") && !text_edit::contains(f, "x") &&
      !text_edit::contains(f, "n")) {
    std::erase(f, '[');
    std::erase(f, ']');
  }
  text_edit::replace_all(f, SPACING);
  std::vector<std::string> p = cut_at_blanks(f);

  const bool compares = std::any_of(std::begin(COMPARISON_SIGNS), std::end(COMPARISON_SIGNS),
                                    [&](std::string_view sign) { return text_edit::contains(f, sign); });
  std::vector<std::string> q = compares ? comparisons(ctx, p) : std::move(p);

  // Normal form: every value that isn't a string becomes a truth value.
  f.clear();
  for (std::string& entry : q) {
    if (!entry.empty() && !holds_quote(entry) && !is_sign(entry)) entry = truth(number_is_true(string_is_real(entry)));
    f += entry;
  }
  if (f == "1" || f == "0") return f;

  negations(q);
  f.clear();
  for (const std::string& entry : logic(q)) f += entry;
  text_edit::replace_all(f, "[0]", "0");
  text_edit::replace_all(f, "[1]", "1");
  return f;
}

std::string reduce_condition(ExpressionContext& ctx, std::string_view formula) {
  std::string f(formula);
  // A stage that changes nothing ends the loop. Each useful stage takes away
  // at least a bracket level, so the count of stages is bounded besides by
  // the length, and no formula can keep the loop going.
  for (size_t stages = 2 * f.size() + 8; f != "1" && f != "0"; --stages) {
    std::string next = boolean_parse(ctx, f);
    if (next == f || stages == 0) return "0";
    f = std::move(next);
  }
  return f;
}
