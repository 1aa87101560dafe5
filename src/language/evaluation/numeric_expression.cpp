// The numeric evaluator.
//
// [SECTION] Characters and the cut of an expression into pieces
// [SECTION] Numbers: reading value texts, ten-decimal text
// [SECTION] Pieces: tokenizza_espressione, calculate_bl
// [SECTION] Workspaces
// [SECTION] The evaluation: errors, brackets, powers, products, sums
// [SECTION] Entry points
//
// The text is rewritten after every step and cut again, so that what a
// program sees (the ten decimals between steps, the short right side of a
// subtraction, values cut again after they are pasted) is what it would see
// if every step went through text. Only a text that hasn't changed since it
// was cut isn't cut again: its pieces would come out the same. The speed
// comes from doing this without allocating: each nesting level of evaluation
// has a workspace whose strings keep their capacity from one call to the
// next, the pieces are ranges of one text, and numbers are written with
// to_chars.
#include "language/evaluation/numeric_expression.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <deque>
#include <limits>
#include <span>

#include "language/evaluation/error_frame.h"
#include "language/tokenizer/text_edit.h"
#include "runtime/Code/Conversions.h"
#include "runtime/Code/Operators.h"
#include "runtime/Function/MathFunctions.h"
#include "runtime/Function/Utf8.h"

namespace {

// ---------------------------------------------------------------------------
// [SECTION] Characters and the cut of an expression into pieces

// Codes of what stands around a character besides plain one-byte characters.
constexpr int NO_CHARACTER = -1;    // before the first or behind the last
constexpr int WIDE_CHARACTER = -2;  // a character of two bytes or more

bool is_plus_slash_or_star(int c) { return c == '+' || c == '/' || c == '*'; }

// Whether the text is cut behind character `c`. The ten tests are taken
// together by exclusive or: so every operator sign stands alone, while a "-"
// at the start or behind "+", "/" or "*" stays with the number behind it as
// its sign. "^" has no such exception, which is why "3^-2" is malformed.
bool cut_behind(int previous, int c, int next, bool first) {
  bool cut = false;
  cut ^= c == '^';
  cut ^= next == '+';
  cut ^= next == '-' && !is_plus_slash_or_star(c);
  cut ^= c == '/';
  cut ^= c == '-' && !is_plus_slash_or_star(previous) && !first;
  cut ^= c == '*';
  cut ^= c == '+';
  cut ^= next == '^';
  cut ^= next == '/';
  cut ^= next == '*';
  return cut;
}

// The code of the character at byte `at` (its byte when it is one byte
// long), and the offset of the next one. The walk is by characters, as the
// string built-ins count.
int character_at(std::string_view text, size_t at, size_t& next) {
  const auto byte = static_cast<unsigned char>(text[at]);
  if (byte < 0x80) {
    next = at + 1;
    return byte;
  }
  next = static_cast<size_t>(utf8::next(text.data() + at, text.data() + text.size()) - text.data());
  return next - at == 1 ? byte : WIDE_CHARACTER;
}

// Calls `at_cut` with the byte offset behind each cut of `text`, in order.
template <class AtCut>
void for_each_cut(std::string_view text, AtCut&& at_cut) {
  if (text.empty()) return;
  size_t after = 0;
  int c = character_at(text, 0, after);
  int previous = NO_CHARACTER;
  for (bool first = true;; first = false) {
    size_t after_next = after;
    const int next = after < text.size() ? character_at(text, after, after_next) : NO_CHARACTER;
    if (cut_behind(previous, c, next, first)) at_cut(after);
    if (after >= text.size()) return;
    previous = c;
    c = next;
    after = after_next;
  }
}

// Whether `text` holds the one-byte character `c` at a character start.
// Expressions are short and plain ASCII: a byte loop answers until the first
// wide character, the character-aware search the rest.
bool holds(std::string_view text, char c) {
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == c) return true;
    if (static_cast<unsigned char>(text[i]) >= 0x80) {
      return text_edit::find(text, std::string_view(&c, 1), i) != text_edit::npos;
    }
  }
  return false;
}

bool begins_with_quote(std::string_view text) { return !text.empty() && text.front() == '"'; }

bool is_operator_char(char c) { return c == '+' || c == '-' || c == '*' || c == '/' || c == '^'; }
bool is_operator_piece(std::string_view piece) { return piece.size() == 1 && is_operator_char(piece[0]); }

bool is_digit(char c) { return c >= '0' && c <= '9'; }
bool is_letter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

// Pieces that are their own value, which the context isn't asked about:
// operator signs, numbers (texts that begin with a digit or a blank, a "-"
// before a digit) and the mark of a variable not yet set. Signs that the cut
// leaves together ("^-" in "3^-2") stay signs: as a value of 0 they would
// hide the extra sign from the consistency test.
bool is_self_valued(std::string_view piece) {
  if (piece.empty()) return false;
  if (std::all_of(piece.begin(), piece.end(), is_operator_char)) return true;
  if (piece[0] == ' ' || is_digit(piece[0])) return true;
  if (piece[0] == '-' && piece.size() > 1 && is_digit(piece[1])) return true;
  return piece == "|not_set|";
}

// ---------------------------------------------------------------------------
// [SECTION] Numbers: reading value texts, ten-decimal text

// The runtime's `real` of a text: its number, or the runtime's fatal words
// for a text that doesn't read as one.
double real_of_text(std::string_view text) {
  char small[64];
  std::string large;
  const char* terminated = small;
  if (text.size() < sizeof small) {
    std::memcpy(small, text.data(), text.size());
    small[text.size()] = '\0';
  } else {
    large.assign(text);
    terminated = large.c_str();
  }
  double number = 0;
  if (parse_number(terminated, number)) return number;
  return value_to_real(RValue::text(text));
}

// Appends `x` as string_format(x, 20, 10) prints it, without the blanks of its
// padding; both are to_chars with ten fixed decimals, free of the locale.
void append_ten_decimals(std::string& out, double x) {
  char buffer[352];  // 309 digits before the point, sign, point and ten decimals
  const char* end = std::to_chars(buffer, buffer + sizeof buffer, x, std::chars_format::fixed, 10).ptr;
  out.append(buffer, static_cast<size_t>(end - buffer));
}

// ---------------------------------------------------------------------------
// [SECTION] Pieces: tokenizza_espressione, calculate_bl

// Cuts `x` into `pieces`, each name replaced by its value, and turns each
// subtraction into the addition of the opposite of its right side, written
// by the runtime's `string`, which keeps two decimals: so 5-0.126 is worked
// out as 5 + -0.13. `cuts` is scratch. Gives the number of pieces that the
// join cuts into (calculate_bl) when every piece stands as written, so that
// the join is `x` and its cuts are known; otherwise 0.
int tokenise(ExpressionContext& ctx, std::string_view x, ExpressionPieces& pieces, std::vector<uint32_t>& cuts) {
  pieces.clear();
  if (x.empty()) return 1;
  // A value with a line break in it is no expression.
  if (std::memchr(x.data(), '/', x.size()) && text_edit::contains(x, "/carriage_return/")) {
    pieces.push("");
    return 1;
  }
  cuts.clear();
  for_each_cut(x, [&](size_t at) { cuts.push_back(static_cast<uint32_t>(at)); });
  const int cut_count = static_cast<int>(cuts.size());
  if (cuts.empty() || cuts.back() != x.size()) cuts.push_back(static_cast<uint32_t>(x.size()));

  size_t begin = 0;
  bool negate = false;
  bool as_written = true;
  std::string named;
  for (size_t k = 0; k < cuts.size(); ++k) {
    const std::string_view raw = x.substr(begin, cuts[k] - begin);
    begin = cuts[k];
    std::string_view value = raw;
    if (!is_self_valued(raw)) {
      named = ctx.cal_var_and_const(raw);
      value = named;
      as_written = false;
    }
    if (negate) {
      char buffer[352];
      pieces.push({buffer, format_number(0 - string_is_real(value), buffer)});
      negate = false;
    } else if (value == "-" && k + 1 < cuts.size()) {
      pieces.push("+");
      negate = true;
      as_written = false;
    } else {
      pieces.push(value);
    }
  }
  return as_written ? cut_count + 1 : 0;
}

// ---------------------------------------------------------------------------
// [SECTION] Workspaces

// The strings of one evaluation. Evaluations nest (a bracket is an
// evaluation of its own, and a context may evaluate an owner's name), so
// there is one workspace per nesting level, kept for the next evaluation at
// that level with the capacity its strings have grown to.
struct Workspace {
  std::string x;      // the expression as it is rewritten
  std::string next;   // the next text being built
  std::string inner;  // the text of the bracket at hand
  ExpressionPieces t;
  std::vector<uint32_t> cuts;
};

// Nesting deeper than this could only come from values that hold their own
// name in brackets, and would end in a stack overflow.
constexpr size_t MAX_NESTING = 256;

// The workspaces by nesting level. Evaluation runs on the main thread only.
std::deque<Workspace> g_workspaces;
size_t g_nesting = 0;

// The workspace of the next nesting level, for the life of one evaluation.
class WorkspaceLease {
 public:
  WorkspaceLease() : level_(g_nesting++) {
    if (g_workspaces.size() <= level_) g_workspaces.emplace_back();
  }
  ~WorkspaceLease() { --g_nesting; }
  WorkspaceLease(const WorkspaceLease&) = delete;
  WorkspaceLease& operator=(const WorkspaceLease&) = delete;

  Workspace& workspace() const { return g_workspaces[level_]; }
  bool too_deep() const { return level_ >= MAX_NESTING; }

 private:
  size_t level_;
};

// ---------------------------------------------------------------------------
// [SECTION] The evaluation: errors, brackets, powers, products, sums

struct ExpressionError {
  std::span<const std::string_view> causes;
  RunEnd room;
};

constexpr std::string_view MISSING_OPERATOR_CAUSES[] = {
    "1 - Manca un operatore tra due valori ( + , - , * , / , ^ ) ",
    "2 - Il nome di una variabile composta da più parole è scritto in modo sbagliato (ad esempio 'gatto blu' al "
    "posto di 'gatto_blu')",
};
constexpr std::string_view EXTRA_OPERATOR_CAUSES[] = {
    "1 - Hai scritto un operatore di troppo ( + , - , * , / , ^ ) ",
    "2 - Hai scritto troppi spazi bianchi tra i valori oppure sei andato a capo",
};
constexpr std::string_view REVERSED_BRACKETS_CAUSES[] = {
    "1 - Hai invertito le parentesi tonde: hai scritto ')' prima di '('",
};

// Brackets that don't pair up go back to the editor; the other two errors go back to the start.
constexpr ExpressionError MISSING_OPERATOR{MISSING_OPERATOR_CAUSES, RunEnd::ToEditor};
constexpr ExpressionError EXTRA_OPERATOR{EXTRA_OPERATOR_CAUSES, RunEnd::ToStart};
constexpr ExpressionError REVERSED_BRACKETS{REVERSED_BRACKETS_CAUSES, RunEnd::ToStart};

std::string evaluate(ExpressionContext& ctx, std::string_view text, bool permissive);

// One evaluation past its first checks: the text `x`, its pieces `t` and
// their count `bl`, as the steps rewrite them.
class Evaluation {
 public:
  Evaluation(ExpressionContext& ctx, Workspace& w, bool permissive) : ctx_(ctx), w_(w), permissive_(permissive) {}

  std::string run(std::string_view text);

 private:
  std::string_view piece(size_t k) const { return w_.t.piece(k); }
  double number(size_t k) const { return string_is_real(piece(k)); }

  // The pieces and their count, made anew from the text.
  void anew() {
    bl_ = tokenise(ctx_, w_.x, w_.t, w_.cuts);
    if (bl_ == 0) bl_ = calculate_bl(w_.t);
  }
  // The joined pieces become the text, cut anew. Pieces that all stand as
  // written join to the text itself, which would cut into the same pieces.
  void rejoin() {
    if (w_.t.joined() == w_.x) return;
    w_.x.assign(w_.t.joined());
    anew();
  }

  bool consistent() const;
  std::string fail(const ExpressionError& error);
  std::string brackets();
  size_t leftmost(bool (*is_sign)(std::string_view)) const;
  size_t count_signs(bool (*is_sign)(std::string_view)) const;
  void finish_step(size_t k, double calc, bool paste);
  double powers();
  double products();
  double sums();
  std::string result(double calc) const;

  ExpressionContext& ctx_;
  Workspace& w_;
  bool permissive_;
  int bl_ = 0;
};

bool is_power_sign(std::string_view p) { return p == "^"; }
bool is_product_sign(std::string_view p) { return p == "*" || p == "/"; }

std::string Evaluation::run(std::string_view text) {
  std::string& x = w_.x;
  x.assign(text);
  // Each rewrite and count is looked for first, as most texts have none of them.
  if (x.find("--") != std::string::npos) text_edit::replace_first(x, "--", "-");
  // Round brackets are taken for arithmetic ones where the text still has them.
  if (holds(x, '(')) text_edit::replace_first(x, "(", "[");
  if (holds(x, ')')) text_edit::replace_first(x, ")", "]");
  if ((holds(x, '[') || holds(x, ']')) && text_edit::count(x, "[") != text_edit::count(x, "]")) {
    return fail(MISSING_OPERATOR);
  }

  anew();
  // A single value comes back as it is, with its own decimals.
  if (bl_ < 3) return w_.t.count() > 0 ? std::string(piece(1)) : std::string("0");
  // A "[-" is let through: the count can't tell a bracketed negative number from an extra sign.
  if (!consistent() && !(holds(x, '[') && text_edit::contains(x, "[-"))) return fail(EXTRA_OPERATOR);
  if (holds(x, '[')) return brackets();

  double calc = 0;
  if (holds(x, '^')) calc = powers();
  if (holds(x, '*') || holds(x, '/')) calc = products();
  if (holds(x, '+') || holds(x, '-')) calc = sums();
  return result(calc);
}

// Operators and values alternate: one operator fewer than values, and no
// round bracket left in a piece.
bool Evaluation::consistent() const {
  int n_oper = 0, n_val = 0, n_par_o = 0, n_par_c = 0;
  for (size_t k = 1; k <= static_cast<size_t>(bl_); ++k) {
    const std::string_view p = piece(k);
    if (is_operator_piece(p)) ++n_oper;
    else if (p != "[" && p != "]" && !p.empty() && p != " ") ++n_val;
    if (holds(p, '(')) ++n_par_o;
    if (holds(p, ')')) ++n_par_c;
  }
  return n_oper == n_val - 1 && n_par_o == 0 && n_par_c == 0;
}

std::string Evaluation::fail(const ExpressionError& error) {
  if (permissive_) return std::string(PERMESSIVE_FAILURE);
  // The learner wrote round brackets: show them round.
  std::string shown = w_.x;
  text_edit::replace_all(shown, "[", "(");
  text_edit::replace_all(shown, "]", ")");
  stop_run_with_error(error_frame("Errore nell'espressione:", shown, error.causes, "\r\n"), error.room);
  return "0";
}

// The rightmost "[" opens a bracket with no other inside it: its text is
// worked out on its own, pasted in, and the whole evaluated again.
std::string Evaluation::brackets() {
  std::string& x = w_.x;
  size_t open = 0;
  for (size_t at = text_edit::find(x, "["); at != text_edit::npos; at = text_edit::find(x, "[", at + 1)) open = at;
  const size_t close = text_edit::find(x, "]", open + 1);
  if (close == text_edit::npos) return fail(REVERSED_BRACKETS);
  w_.inner.assign(x, open + 1, close - open - 1);
  const std::string value = evaluate(ctx_, w_.inner, permissive_);
  w_.next.clear();
  w_.next += '[';
  w_.next += w_.inner;
  w_.next += ']';
  text_edit::replace_first(x, w_.next, value);
  return evaluate(ctx_, x, permissive_);
}

// The position of the leftmost sign piece, 0 when there is none.
size_t Evaluation::leftmost(bool (*is_sign)(std::string_view)) const {
  for (size_t k = 1; k <= w_.t.count(); ++k) {
    if (is_sign(piece(k))) return k;
  }
  return 0;
}

size_t Evaluation::count_signs(bool (*is_sign)(std::string_view)) const {
  size_t n = 0;
  for (size_t k = 1; k <= w_.t.count(); ++k) n += is_sign(piece(k)) ? 1 : 0;
  return n;
}

// Ends the step at operator piece `k`: with `paste`, the left piece becomes
// `calc` as ten-decimal text and the operator and the right piece go; then
// the pieces are joined into the text and cut anew.
void Evaluation::finish_step(size_t k, double calc, bool paste) {
  if (!paste) return rejoin();
  const ExpressionPieces& t = w_.t;
  const std::string_view joined = t.joined();
  w_.next.assign(joined.substr(0, k >= 2 ? t.begin_of(k - 1) : 0));
  append_ten_decimals(w_.next, calc);
  if (k < t.count()) w_.next.append(joined.substr(t.begin_of(k + 2)));
  w_.x.swap(w_.next);
  anew();
}

// Powers from left to right, so 2^3^2 is 64. As many steps as there were
// signs; a power of 0 isn't pasted in, so the steps after it find the same
// sign again and change nothing.
//
// This step and the next start from the pieces of the text as it stands.
// They are not cut again: every change of the text has cut it anew already,
// and a name gives the same value twice within one evaluation.
double Evaluation::powers() {
  double calc = 0;
  for (size_t steps = count_signs(is_power_sign); steps > 0 && bl_ >= 3; --steps) {
    const size_t k = leftmost(is_power_sign);
    if (k == 0) break;
    calc = rt::power(number(k - 1), number(k + 1));
    finish_step(k, calc, calc != 0);
  }
  return calc;
}

// Products and quotients together, from left to right. A quotient of 0 isn't
// pasted in; a division by 0 gives what IEEE 754 gives.
double Evaluation::products() {
  double calc = 0;
  for (size_t steps = count_signs(is_product_sign); steps > 0 && bl_ >= 3; --steps) {
    const size_t k = leftmost(is_product_sign);
    if (k == 0) break;
    const bool times = piece(k) == "*";
    calc = times ? number(k - 1) * number(k + 1) : number(k - 1) / number(k + 1);
    finish_step(k, calc, calc != 0 || times);
  }
  return calc;
}

// The sum of all terms, in one pass. Subtractions have become additions by
// now, so the "-" cases only serve a sign left at the end of the text.
double Evaluation::sums() {
  rejoin();
  const std::string_view t1 = piece(1), t2 = piece(2);
  double calc = 0;
  if (t2 == "+") calc = number(1) + number(3);
  if (t2 == "-") calc = number(1) - number(3);
  if (t2 != "+" && t2 != "-" && t1 != "+" && t1 != "-") calc = number(1);
  if (t1 == "-") {
    w_.next.clear();
    w_.next += t1;
    w_.next += t2;
    calc = string_is_real(w_.next);
  }
  for (size_t i = 4; i + 1 <= static_cast<size_t>(bl_); ++i) {
    if (piece(i) == "+") calc += number(i + 1);
    else if (piece(i) == "-") calc -= number(i + 1);
  }
  return calc;
}

// The last step's value without trailing zeros; or, when the steps have left
// a single piece, that piece as it stands, ten decimals and all.
std::string Evaluation::result(double calc) const {
  if (bl_ < 3) {
    std::string single(piece(1));
    std::erase(single, ' ');
    return single;
  }
  std::string text;
  append_ten_decimals(text, calc);
  if (holds(text, '.')) {
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
  }
  return text;
}

std::string evaluate(ExpressionContext& ctx, std::string_view text, bool permissive) {
  if (begins_with_quote(text)) return std::string(text);
  // A name of a string variable gives its text; the twin for typed text doesn't look.
  if (!permissive) {
    std::string value = ctx.calculate_var(text);
    if (begins_with_quote(value)) return value;
  }
  // A lone number or name, the commonest expression, is its own value or the
  // value of the name; where that value is one piece too, the steps below
  // would give it back unchanged.
  if (!text.empty() && is_one_piece(text)) {
    if (is_self_valued(text)) return std::string(text);
    std::string value = ctx.cal_var_and_const(text);
    if (is_one_piece(value)) return value;
  }
  const WorkspaceLease lease;
  if (lease.too_deep()) return permissive ? std::string(PERMESSIVE_FAILURE) : std::string("0");
  return Evaluation(ctx, lease.workspace(), permissive).run(text);
}

}  // namespace

// ---------------------------------------------------------------------------
// [SECTION] Entry points

bool is_one_piece(std::string_view text) {
  return std::none_of(text.begin(), text.end(), [](char c) {
    return is_operator_char(c) || c == '(' || c == ')' || c == '[' || c == ']';
  });
}

std::string_view ExpressionPieces::piece(size_t k) const {
  if (k == 0 || k > ends_.size()) return {};
  const size_t begin = begin_of(k);
  return std::string_view(text_).substr(begin, ends_[k - 1] - begin);
}

void ExpressionPieces::clear() {
  text_.clear();
  ends_.clear();
}

void ExpressionPieces::push(std::string_view piece) {
  text_ += piece;
  ends_.push_back(static_cast<uint32_t>(text_.size()));
}

std::string calculate_string(ExpressionContext& ctx, std::string_view text) { return evaluate(ctx, text, false); }

std::string calculate_string_permessive(ExpressionContext& ctx, std::string_view text) {
  return evaluate(ctx, text, true);
}

ExpressionPieces tokenizza_espressione(ExpressionContext& ctx, std::string_view text) {
  ExpressionPieces pieces;
  std::vector<uint32_t> cuts;
  tokenise(ctx, text, pieces, cuts);
  return pieces;
}

int calculate_bl(const ExpressionPieces& pieces) {
  int cuts = 0;
  for_each_cut(pieces.joined(), [&](size_t) { ++cuts; });
  return cuts + 1;
}

namespace {

// Reads a plain numeral, "-" and up to 15 digits with at most one point
// between them, the way most value texts are written. Both the digits as an
// integer and the power of ten are exact doubles, so their quotient is the
// correctly rounded number that the general parser gives too.
bool read_plain_numeral(std::string_view text, double& out) {
  constexpr double POWERS_OF_TEN[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
  const bool negative = !text.empty() && text[0] == '-';
  if (negative) text.remove_prefix(1);
  if (text.empty() || !is_digit(text.front()) || !is_digit(text.back())) return false;
  int64_t digits = 0;
  int count = 0, decimals = -1;
  for (const char c : text) {
    if (c == '.' && decimals < 0) {
      decimals = 0;
      continue;
    }
    if (!is_digit(c) || ++count > 15) return false;
    digits = digits * 10 + (c - '0');
    if (decimals >= 0) ++decimals;
  }
  const double number = decimals > 0 ? static_cast<double>(digits) / POWERS_OF_TEN[decimals] : static_cast<double>(digits);
  out = negative ? -number : number;
  return true;
}

}  // namespace

double string_is_real(std::string_view text) {
  if (double number; read_plain_numeral(text, number)) return number;
  if (std::none_of(text.begin(), text.end(), is_digit)) return 0;
  // An instance id written as text.
  constexpr std::string_view INSTANCE = "ref instance ";
  if (text.starts_with(INSTANCE)) text.remove_prefix(INSTANCE.size());
  const bool quoted = holds(text, '"');
  if (!holds(text, '.') && !quoted) return real_of_text(text);
  // With a point, only a text without letters is a number: "1.5abc" isn't.
  if (!quoted && std::none_of(text.begin(), text.end(), is_letter)) return real_of_text(text);
  return 0;
}

double modular_power(double base, double exponent, double modulus) {
  const auto mod = [](double a, double b) {
    RValue left = RValue::number(a);
    value_modulo(left, RValue::number(b));
    return left.real;
  };
  double result = 1;
  base = mod(base, modulus);
  if (base == 0) return 0;
  // No number of halvings brings an infinite exponent down to 0.
  if (std::isinf(exponent) && exponent > 0) return std::numeric_limits<double>::quiet_NaN();
  while (exponent > 0) {
    if (mod(exponent, 2) == 1) result = mod(result * base, modulus);
    exponent = std::trunc(exponent / 2);
    base = mod(base * base, modulus);
  }
  return result;
}

std::string ten_decimal_text(double x) {
  std::string text;
  append_ten_decimals(text, x);
  return text;
}
