// The plans of statements and expressions: read once, checked against the
// tokens at every run, and given up to the general way wherever they can't
// be sure of giving the same text.
#include "language/evaluation/plans.h"

#include <algorithm>
#include <climits>
#include <cmath>

#include "language/evaluation/numeric_expression.h"
#include "language/evaluation/program_instance.h"
#include "runtime/Code/Conversions.h"

namespace {

// Whole numbers up to this size are exact doubles, and so is every step between them.
constexpr double EXACT_LIMIT = 9007199254740992.0;  // 2^53

bool is_digit(char c) { return c >= '0' && c <= '9'; }
bool is_name_start(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; }
bool is_name_char(char c) { return is_name_start(c) || is_digit(c); }

// A name that the general lookup finds in the table: not an element's
// attribute, itself, or another element's variable.
bool is_table_name(std::string_view t) {
  if (t.empty() || !is_name_start(t[0]) || t == "se_stesso" || t.find("_del_") != std::string_view::npos) return false;
  for (const char c : t) {
    if (!is_name_char(c)) return false;
  }
  return true;
}

// A whole number of at most 15 digits, with a minus sign when `signed_ok`;
// "-0" is the negative zero, as the general reading makes it.
bool read_whole_number(std::string_view t, bool signed_ok, double& out) {
  const bool negative = signed_ok && !t.empty() && t[0] == '-';
  if (negative) t.remove_prefix(1);
  if (t.empty() || t.size() > 15) return false;
  int64_t digits = 0;
  for (const char c : t) {
    if (!is_digit(c)) return false;
    digits = digits * 10 + (c - '0');
  }
  out = negative ? -static_cast<double>(digits) : static_cast<double>(digits);
  return true;
}

// The number of a value that is a whole number's text, from the string's
// own knowledge when a plan wrote it, else from its digits.
bool whole_value(const RValue& value, double& out) {
  if (value.str && value.str->number_is_digits) {
    out = value.str->number;
    return true;
  }
  return read_whole_number(value.string_view(), true, out);
}

// The text that the evaluator gives for a sum: ten decimals with the zeros
// at the end taken off, which for a whole number are its digits.
struct WholeText {
  char digits[24];
  size_t begin = sizeof digits;
  // The digits from the last, two at a time: faster than the general writer for the small numbers of a loop.
  explicit WholeText(double x) {
    static constexpr char PAIRS[] =
        "00010203040506070809101112131415161718192021222324252627282930313233343536373839"
        "40414243444546474849505152535455565758596061626364656667686970717273747576777879"
        "8081828384858687888990919293949596979899";
    const bool negative = std::signbit(x);
    auto n = static_cast<uint64_t>(negative ? -x : x);
    while (n >= 100) {
      const char* pair = PAIRS + 2 * (n % 100);
      n /= 100;
      digits[--begin] = pair[1];
      digits[--begin] = pair[0];
    }
    if (n >= 10) {
      digits[--begin] = PAIRS[2 * n + 1];
      digits[--begin] = PAIRS[2 * n];
    } else {
      digits[--begin] = static_cast<char>('0' + n);
    }
    if (negative) digits[--begin] = '-';
  }
  std::string_view view() const { return {digits + begin, sizeof digits - begin}; }
};

// The range check first: within it the conversion to a whole number is exact
// and inline, where std::trunc is a call.
bool is_whole(double x) { return std::fabs(x) < 1e15 && x == static_cast<double>(static_cast<int64_t>(x)); }

// Steps the digits of a whole number's text one up or down where it stands,
// when nobody else holds the text and its length stays: "41" becomes "42"
// without writing the number anew. False for any other text or step, which
// are written the long way.
bool step_in_place(RValue& value, bool up) {
  RefString* s = value.is(Kind::String) ? value.str : nullptr;
  if (!s || s->refcount != 1 || s->size <= 0 || s->size > 16) return false;
  char* text = s->data();
  const bool negative = text[0] == '-';
  char* first = negative ? text + 1 : text;
  char* last = text + s->size - 1;
  // A text that a plan wrote is known to be digits; any other is looked at.
  if (!s->number_is_digits) {
    if (first > last || (*first == '0' && (last > first || negative))) return false;
    for (const char* c = first; c <= last; ++c) {
      if (*c < '0' || *c > '9') return false;
    }
  } else if (*first == '0' && negative) {
    return false;  // "-0"
  }
  // The magnitude grows for +1 on a positive number and for -1 on a negative one.
  if (up != negative) {
    char* c = last;
    while (c >= first && *c == '9') --c;
    if (c < first) return false;  // all nines: one digit more
    ++*c;
    for (char* d = c + 1; d <= last; ++d) *d = '0';
  } else {
    if (*first == '0') return false;  // 0 - 1
    char* c = last;
    while (*c == '0') --c;
    // "1" to "0" keeps its length; "10" to "9" or "-1" to "0" doesn't.
    if (c == first && *c == '1' && (last > first || negative)) return false;
    --*c;
    for (char* d = c + 1; d <= last; ++d) *d = '9';
  }
  return true;
}

// Reads a chain of operands joined by single "+", "-" and "*": names of the
// table and numerals of whole numbers. False for any other text.
bool read_chain(std::string_view text, ExpressionPlan& plan) {
  plan.operands.clear();
  plan.sums = false;
  bool negated = false, multiplies = false;
  for (size_t at = 0;;) {
    size_t end = at;
    while (end < text.size() && text[end] != '+' && text[end] != '-' && text[end] != '*') ++end;
    const std::string_view operand = text.substr(at, end - at);
    ExpressionPlan::Operand made;
    made.negated = negated;
    if (!operand.empty() && is_digit(operand[0])) {
      if (!read_whole_number(operand, false, made.number)) return false;
    } else if (is_table_name(operand)) {
      made.name.assign(operand);
    } else {
      return false;
    }
    made.multiplies = multiplies;
    // A term ends where the next sign is no product.
    made.ends_term = end == text.size() || text[end] != '*';
    plan.operands.push_back(std::move(made));
    if (end == text.size()) break;
    const char sign = text[end];
    negated = sign == '-';
    multiplies = sign == '*';
    plan.sums = plan.sums || !multiplies;
    at = end + 1;
  }
  return plan.operands.size() > 1;
}

// A value text that the general way gives back whole for a lone name: a
// string, or text that no operator sign or bracket cuts (a minus sign in
// front cuts nothing).
bool stands_whole(std::string_view value) {
  if (!value.empty() && value[0] == '"') return true;
  if (!value.empty() && value[0] == '-') value.remove_prefix(1);
  return is_one_piece(value);
}

}  // namespace

bool is_digits_number(double x) { return is_whole(x) && !(x == 0 && std::signbit(x)); }

std::string increased_text(double x) {
  // A whole number has only zeros to take off: its digits are the answer.
  if (is_digits_number(x)) return std::string(WholeText(x).view());
  std::string text = ten_decimal_text(x);
  if (text.find('.') != std::string::npos) {
    text.erase(text.find_last_not_of('0') + 1);
    if (text.ends_with('.')) text.pop_back();
  }
  return text;
}

const std::vector<int>& ProgramInstance::find_slots(VariableSlots& cache, std::string_view name, int limit) const {
  cache.slots.clear();
  for (int v = find_variable(name); v >= 0 && v < limit; v = next_variable(name, v)) cache.slots.push_back(v);
  // Read after the lookups, which may have made the index anew.
  cache.version = names_version_;
  cache.limit = limit;
  return cache.slots;
}

const std::vector<int>& ProgramInstance::find_own_slots(uint32_t& index, uint64_t reading, std::string_view name,
                                                        int limit) {
  if (index == NO_OWN_SLOTS) index = program.plans->own_slot_count++;
  if (index >= program.own_slots.size()) program.own_slots.resize(index + 1);
  VariableSlots& cache = program.own_slots[index];
  cache.reading = reading;
  return find_slots(cache, name, limit);
}

// ---------------------------------------------------------------------------
// [SECTION] Expressions

void ProgramInstance::read_expression_plan(ExpressionPlan& plan, std::string_view text) {
  ProgramInstance& main = main_table();
  using Shape = ExpressionPlan::Shape;
  plan.token.assign(text);
  // The general way first asks the main table for the whole text as a name. A lone name is that lookup
  // itself; a numeral or a chain that is a name of the main table is not itself.
  if (is_table_name(text)) plan.shape = Shape::Name;
  else if (text.empty() || text[0] == '"' || main.find_variable(text) >= 0) plan.shape = Shape::General;
  else if (is_digit(text[0]) && is_one_piece(text)) plan.shape = Shape::Numeral;
  else plan.shape = read_chain(text, plan) ? Shape::Chain : Shape::General;
  if (plan.shape == Shape::Name) plan.operands.assign(1, {});
  plan.whole_numeral = plan.shape == Shape::Numeral && read_whole_number(text, false, plan.numeral);
  // The names are read anew: the slots found for them are stale, in every program that runs the plan.
  if (plan.own_slots.size() < plan.operands.size()) plan.own_slots.resize(plan.operands.size(), NO_OWN_SLOTS);
  plan.reading = new_reading();
  plan.main_slots = {};
  // Read after the lookups, which may have made the index anew.
  plan.main_version = main.names_version();
}

bool ProgramInstance::element_reads_main_string(ExpressionPlan& plan, std::string_view name) {
  ProgramInstance& main = main_table();
  const std::vector<int>& slots = main.slots_of(plan.main_slots, name, INT_MAX);
  if (slots.empty() || static_cast<size_t>(slots[0]) >= main.val.size()) return false;
  const RValue& value = main.val[static_cast<size_t>(slots[0])];
  return !value.is(Kind::String) || value.string_view().starts_with('"');
}

bool ProgramInstance::chain_number(ExpressionPlan& plan, double& out) {
  // Products first, then the sum of the terms, from left to right; each step
  // a whole number within the exact range, as the text between the steps
  // would give it back.
  double sum = 0, product = 0;
  bool first_term = true;
  for (size_t k = 0; k < plan.operands.size(); ++k) {
    const ExpressionPlan::Operand& operand = plan.operands[k];
    double v = operand.number;
    if (!operand.name.empty()) {
      const RValue* value = named_value(plan, k, operand.name);
      if (!value || !whole_value(*value, v)) return false;
    }
    if (operand.negated) v = 0 - v;
    product = operand.multiplies ? product * v : v;
    if (std::fabs(product) > EXACT_LIMIT) return false;
    if (operand.ends_term) {
      sum = first_term ? product : sum + product;
      first_term = false;
      if (std::fabs(sum) > EXACT_LIMIT) return false;
    }
  }
  out = sum;
  return true;
}

bool ProgramInstance::planned_value(ExpressionPlan& plan, std::string_view text, std::string& out, double* number,
                                    bool verified) {
  if (!expression_plan_ready(plan, text, verified)) return false;
  switch (plan.shape) {
    case ExpressionPlan::Shape::Numeral: out.assign(text); return true;
    case ExpressionPlan::Shape::Name: {
      if (main_string_wins(plan, text)) return false;
      const RValue* value = named_value(plan, 0, text);
      if (!value || !stands_whole(value->string_view())) return false;
      out.assign(value->string_view());
      return true;
    }
    case ExpressionPlan::Shape::Chain: {
      double sum = 0;
      if (!chain_number(plan, sum)) return false;
      if (plan.sums) out.assign(WholeText(sum).view());
      else out = ten_decimal_text(sum);
      // Either text reads back as the number itself.
      if (number) *number = sum;
      return true;
    }
    default: return false;
  }
}

bool ProgramInstance::planned_number(ExpressionPlan& plan, std::string_view text, double& number, bool verified) {
  if (!expression_plan_ready(plan, text, verified)) return false;
  switch (plan.shape) {
    case ExpressionPlan::Shape::Numeral:
      number = plan.numeral;
      return plan.whole_numeral;
    case ExpressionPlan::Shape::Name: {
      if (main_string_wins(plan, text)) return false;
      const RValue* value = named_value(plan, 0, text);
      return value && whole_value(*value, number);
    }
    case ExpressionPlan::Shape::Chain: return chain_number(plan, number);
    default: return false;
  }
}

// ---------------------------------------------------------------------------
// [SECTION] Statements

bool ProgramInstance::planned_change(int j, double sign) {
  if (!plans_enabled() || j < 0 || static_cast<size_t>(j) + 3 >= program.tok.size() ||
      static_cast<size_t>(j) >= program.plans->statements.size()) {
    return false;
  }
  StatementPlan& plan = program.plans->statements[static_cast<size_t>(j)];
  const RValue& name_token = program.tok[static_cast<size_t>(j) + 1];
  const RValue& amount_token = program.tok[static_cast<size_t>(j) + 3];
  if (!name_token.is(Kind::String) || !amount_token.is(Kind::String)) return false;
  ProgramInstance& main = main_table();
  if (plan.shape != StatementPlan::Shape::Change || !still_reads(plan.name_token, name_token) ||
      !still_reads(plan.value_token, amount_token) || plan.value.main_version != main.names_version()) {
    const std::string_view amount_text = amount_token.string_view();
    plan.shape = StatementPlan::Shape::Change;
    plan.name_token = name_token;
    plan.value_token = amount_token;
    plan.attribute = written_attribute(name_token.string_view());
    plan.reading = new_reading();
    plan.main_slots = {};
    // A numeral's amount is the same at every run, unless a variable of the main table bears it as its name.
    plan.fixed_amount = !amount_text.empty() && is_digit(amount_text[0]) && is_one_piece(amount_text) &&
                        main.find_variable(amount_text) < 0;
    if (plan.fixed_amount) plan.amount = text_to_real(calculate_string(*this, amount_text).c_str());
    plan.unit_step = plan.fixed_amount && plan.amount == 1;
    plan.value.main_version = main.names_version();
  }
  const std::string_view name = plan.name_token.string_view();
  change_by_plan(plan, *this, own_slots_of(plan.own_slots, plan.reading, name, change_limit()), sign, true);
  // An element's increase reaches the program-wide variable of the name too.
  if (esemplare && &main != this) {
    change_by_plan(plan, main, main.slots_of(plan.main_slots, name, main.change_limit()), sign, false);
  }
  return true;
}

void ProgramInstance::change_by_plan(StatementPlan& plan, ProgramInstance& table, const std::vector<int>& slots,
                                     double sign, bool write_through) {
  for (const int v : slots) {
    RValue& value = table.val[static_cast<size_t>(v)];
    double written = 0;
    // The commonest step: one up or down on a text that a plan wrote as digits, moved in place.
    if (plan.unit_step && value.is(Kind::String) && value.str->number_is_digits && step_in_place(value, sign > 0)) {
      written = value.str->number + sign;
      value.str->number = written;
    } else {
      const double amount = plan.fixed_amount
                                ? plan.amount
                                : text_to_real(calculate_string(*this, plan.value_token.string_view()).c_str());
      if (value.is(Kind::String) && value.string_view() == "|not_set|") value = RValue::text("0");
      const bool known = value.is(Kind::String) && value.str && value.str->number_known;
      const double x = (known ? value.str->number : value_to_real(value)) + sign * amount;
      // A whole number's text reads back as the number itself; a step of one moves its digits in place.
      written = x;
      if (plan.unit_step && is_whole(x) && step_in_place(value, sign > 0)) {
        value.str->remember_number(x);
        value.str->number_is_digits = true;
      } else if (is_digits_number(x)) {
        value.set_number_text(WholeText(x).view(), x, true);
      } else {
        value = RValue::text(increased_text(x));
        written = value_to_real(value);
      }
    }
    if (write_through && plan.attribute >= 0) write_attribute_number(plan.attribute, written);
  }
}

bool ProgramInstance::planned_assignment(std::string_view name, int j) {
  if (!plans_enabled() || j < 0 || static_cast<size_t>(j) + 2 >= program.tok.size() ||
      static_cast<size_t>(j) >= program.plans->statements.size()) {
    return false;
  }
  StatementPlan& plan = program.plans->statements[static_cast<size_t>(j)];
  const RValue& name_token = program.tok[static_cast<size_t>(j)];
  const RValue& value_token = program.tok[static_cast<size_t>(j) + 2];
  if (!name_token.is(Kind::String) || !value_token.is(Kind::String)) return false;
  // The walk hands the token's own text; anything else is compared.
  if (name.data() != name_token.string_view().data() && name != name_token.string_view()) return false;
  const std::string_view value_text = value_token.string_view();
  if (plan.shape == StatementPlan::Shape::Unread || !still_reads(plan.name_token, name_token) ||
      !still_reads(plan.value_token, value_token)) {
    plan.name_token = name_token;
    plan.value_token = value_token;
    // The window's names and a negation take the general way.
    const bool reserved = name == "larghezza_finestra" || name == "altezza_finestra" || name == "colore_sfondo" ||
                          name == "nome_finestra";
    plan.shape = reserved || value_text == "non" ? StatementPlan::Shape::General : StatementPlan::Shape::Assignment;
    plan.attribute = written_attribute(name);
    plan.reading = new_reading();
    plan.main_slots = {};
    plan.value.shape = ExpressionPlan::Shape::Unread;
  }
  if (plan.shape != StatementPlan::Shape::Assignment) return false;
  const std::vector<int>& slots = own_slots_of(plan.own_slots, plan.reading, name, INT_MAX);
  // Each entry of a name met twice works its value out again: a chance can differ.
  if (slots.size() > 1) return false;
  // An element's assignment reaches a program-wide variable of the name too, the general way.
  ProgramInstance& main = main_table();
  const bool reaches_main = esemplare && &main != this && !main.slots_of(plan.main_slots, name, INT_MAX).empty();
  if (slots.empty()) {
    if (reaches_main) assign_in_table(main, name, j);
    return true;
  }
  RValue& stored = val[static_cast<size_t>(slots[0])];
  double number = 0;
  // The statement's plan has checked the token: its expression's plan was read from it. A sum is
  // written straight from its digits.
  bool number_written = true;  // the stored text reads back as `number`
  if (expression_plan_ready(plan.value, value_text, true) && plan.value.shape == ExpressionPlan::Shape::Chain &&
      plan.value.sums && chain_number(plan.value, number)) {
    stored.set_number_text(WholeText(number).view(), number, std::fabs(number) < 1e15);
  } else {
    std::string value;
    if (planned_value(plan.value, value_text, value, &number, true)) {
      if (plan.value.shape == ExpressionPlan::Shape::Chain) {
        stored.set_number_text(value, number);
      } else {
        stored = RValue::text(value);
        number_written = false;
      }
    } else {
      stored = RValue::text(calculate_string(*this, value_text));
      number_written = false;
    }
  }
  if (plan.attribute >= 0) write_attribute_number(plan.attribute, number_written ? number : value_to_real(stored));
  if (reaches_main) assign_in_table(main, name, j);
  return true;
}
