#include "families/family_contract.h"

#include <algorithm>

#include "language/evaluation/numeric_expression.h"
#include "language/evaluation/program_instance.h"
#include "language/tokenizer/text_edit.h"
#include "runtime/Code/Conversions.h"
#include "runtime/Function/StringFunctions.h"

namespace {

// Where the argument triples of a call begin.
int first_triple(int i, CallShape shape) { return shape == CallShape::Value ? i + 4 : i + 2; }

}  // namespace

void conta_argomenti(ProgramInstance& p, int i) {
  std::vector<int>& memo = p.program.mem_argn;
  if (i < 0) return;
  if (static_cast<size_t>(i) >= memo.size()) memo.resize(static_cast<size_t>(i) + 1, 0);
  FamilyCall& call = p.call;
  if (memo[static_cast<size_t>(i)] != 0) {
    call.arg_count = memo[static_cast<size_t>(i)];
    return;
  }
  call.arg_count = 0;
  const int size = static_cast<int>(p.program.tok.size());
  for (int scan = first_triple(i, p.token_text(i + 1) == "f=" ? CallShape::Value : CallShape::Statement); scan < size;
       scan += 3) {
    if (!p.token_text(scan).starts_with('(')) {
      memo[static_cast<size_t>(i)] = call.arg_count;
      return;
    }
    ++call.arg_count;
  }
}

void read_arguments(ProgramInstance& p, int i, CallShape shape, std::span<const ArgumentKey> keys) {
  conta_argomenti(p, i);
  FamilyCall& call = p.call;
  for (const ArgumentKey& key : keys) {
    if (key.keeps_earlier) continue;
    call.args[static_cast<size_t>(key.slot)] =
        key.default_number ? RValue::number(*key.default_number) : RValue::text(key.default_text);
  }
  if (shape == CallShape::Value) call.args[0] = RValue::text(p.token_text(i));
  const int first = first_triple(i, shape);
  for (int k = 0; k < call.arg_count; ++k) {
    const std::string_view written = p.token_text(first + 3 * k);
    for (const ArgumentKey& key : keys) {
      if (written != key.key) continue;
      const int value = first + 3 * k + 1;
      if (value < static_cast<int>(p.program.tok.size())) {
        call.args[static_cast<size_t>(key.slot)] = p.program.tok[static_cast<size_t>(value)];
      }
    }
  }
}

double argument_number(ProgramInstance& p, const RValue& slot) {
  if (slot.is(Kind::String)) return string_is_real(calculate_string(p, slot.string_view()));
  if (slot.is(Kind::Number) || slot.is(Kind::Bool)) return slot.real;
  return 0;
}

std::string argument_text(const RValue& slot) {
  std::string text = slot.is(Kind::String) ? std::string(slot.string_view()) : value_to_text(slot);
  std::erase(text, '"');
  return text;
}

void output_exact(ProgramInstance& p, double result) { p.call.output_result = RValue::number(result); }

void output_short(ProgramInstance& p, double result) {
  p.call.output_result = RValue::text(value_to_text(RValue::number(result)));
}

void output_text(ProgramInstance& p, std::string_view result) { p.call.output_result = RValue::text(result); }

void aggiorna_variabile_tramite_funzione(ProgramInstance& p, int i) {
  // A number becomes text with 30 decimals; a text stays as it is.
  const RValue stored = rt::string_format(p.call.output_result, -1, 30);
  const std::string_view text = stored.string_view();
  const std::string_view name = p.token_text(i);

  // The reserved names are looked at on the first entry of the table, so
  // an empty table takes even them as variables.
  if (p.vari_size > 0) {
    if (name == "larghezza_finestra" || name == "altezza_finestra") {
      const double size = std::max(string_is_real(text), 1.0);
      (name == "larghezza_finestra" ? p.larghezza_finestra : p.altezza_finestra) = size;
      return;
    }
    if (name == "colore_sfondo") {
      p.colore_sfondo = string_is_real(text);
      return;
    }
    if (name == "nome_finestra") {
      p.room_caption.assign(text);
      p.nome_finestra.assign(text);
      std::erase(p.nome_finestra, '"');
      return;
    }
  }
  if (const int k = p.find_variable(name); k >= 0) {
    p.val[static_cast<size_t>(k)] = stored;
  } else {
    p.append_variable(name, stored);
  }
}

std::string fill_text_template(ProgramInstance& p, std::string_view written) {
  static constexpr std::string_view OPEN = "< ";
  static constexpr std::string_view PASSED = "@<@<@";
  std::string text(written);
  std::erase(text, '"');

  // Each expression from its "< " up to the next ">"; the "< " already
  // taken is hidden so that the next search finds the next one.
  std::vector<std::string> expressions;
  for (size_t n = text_edit::count(text, OPEN); n > 0; --n) {
    const size_t at = text_edit::find(text, OPEN);
    if (at == text_edit::npos) break;
    const size_t close = text.find('>', at);
    expressions.push_back(text.substr(at, close == std::string::npos ? std::string::npos : close - at));
    text.replace(at, OPEN.size(), PASSED);
  }
  text_edit::replace_all(text, PASSED, OPEN);

  for (std::string& expression : expressions) {
    expression.erase(0, OPEN.size());
    std::erase(expression, ' ');
    text_edit::replace_all(text, std::string(OPEN) + expression + " >", p.calculate_var(expression));
  }
  return text;
}
