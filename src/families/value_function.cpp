#include "families/value_function.h"

#include <algorithm>

#include "language/evaluation/program_instance.h"
#include "runtime/Code/Conversions.h"
#include "runtime/Function/Random.h"

double slot_number(ProgramInstance& p, int slot) { return argument_number(p, p.call.args[static_cast<size_t>(slot)]); }

std::string slot_source(const ProgramInstance& p, int slot) {
  // A slot without a default that no call has filled yet reads as no text.
  const RValue& value = p.call.args[static_cast<size_t>(slot)];
  return value.is(Kind::Unset) ? std::string() : value_to_text(value);
}

void give_number(ProgramInstance& p, int i, double result, NumberForm form) {
  if (form == NumberForm::Exact) {
    output_exact(p, result);
  } else {
    output_short(p, result);
  }
  aggiorna_variabile_tramite_funzione(p, i);
}

void give_text(ProgramInstance& p, int i, std::string_view result) {
  output_text(p, result);
  aggiorna_variabile_tramite_funzione(p, i);
}

void give_previous(ProgramInstance& p, int i) {
  // Before the first value function of the run there is nothing to hand
  // back, and the variable stays as it is.
  if (p.call.output_result.is(Kind::Unset)) return;
  aggiorna_variabile_tramite_funzione(p, i);
}

int listed_count(const ProgramInstance& p) {
  return std::clamp(p.call.arg_count, 0, static_cast<int>(VALORE_KEYS.size()));
}

std::vector<double> listed_numbers(ProgramInstance& p) {
  std::vector<double> numbers;
  for (int k = 0; k < listed_count(p); ++k) numbers.push_back(slot_number(p, VALORE_KEYS[static_cast<size_t>(k)].slot));
  return numbers;
}

std::string unnamed_default() {
  char digits[352];
  const size_t length = format_number(rt::random(1000), digits);
  return "senza nome " + std::string(digits, length);
}

std::string slot_name_or_unnamed(const ProgramInstance& p, int slot) {
  std::string name = slot_source(p, slot);
  return name.empty() ? unnamed_default() : name;
}

std::string without_quotes(std::string_view text) {
  std::string out(text);
  std::erase(out, '"');
  return out;
}
