// The statement walk: the program runs straight off its token array, from
// left to right, and at each position that can start a statement it tries
// everything it knows. Blocks are switched on and off by marks in the
// tokens (blocks.cpp), so the walk itself never jumps.
#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string>
#include <unordered_map>
#include <vector>

#include "language/tokenizer/marks.h"
#include "language/evaluation/numeric_expression.h"
#include "language/evaluation/plans.h"
#include "language/evaluation/program_instance.h"
#include "language/walk/statement_walk.h"
#include "language/tokenizer/text_edit.h"
#include "runtime/Code/Conversions.h"
#include "runtime/Function/DialogFunctions.h"

namespace {

// ---------------------------------------------------------------------------
// [SECTION] The installed families

// A function with its place in the order of the calls.
struct Candidate {
  uint32_t order;
  const FamilyFunction* function;
  const FamilyGuard* guard;
};

struct FunctionIndex {
  // By name, each list in the order of the calls.
  std::unordered_map<std::string_view, std::vector<Candidate>> statements;
  std::unordered_map<std::string_view, std::vector<Candidate>> values;
};

FunctionIndex& function_index() {
  static FunctionIndex index;
  return index;
}

bool guard_passes(const FamilyGuard& guard, std::string_view first, std::string_view function) {
  if (guard.word.empty()) return true;
  return (guard.in_first && text_edit::contains(first, guard.word)) ||
         (guard.in_function && text_edit::contains(function, guard.word));
}

// ---------------------------------------------------------------------------
// [SECTION] Positions that can start a statement

// A statement function's name holds one of these, or is one of the words below.
constexpr std::string_view STATEMENT_WORD_PARTS[] = {
    "disegna_", "elimina_", "crea_",      "suona",    "_suono",       "distruggi_", "modifica_", "imposta_", "muovi_",
    "_tabella", "_file",    "attiva_",    "elemento_", "_elemento",   "interrompi_", "_programma", "cambia_",
};
constexpr std::string_view STATEMENT_WORDS[] = {
    "salva_schermata", "usa_gioco_delle_direzioni", "CICLO_CONTINUO", "debug", "invia_testo_ad_Arduino",
    "cancella_timbri", "copia_negli_appunti",       "aumenta",        "diminuisci", "finche",
    "ripeti",          "se",
};
// At most this many imported external functions start statements.
constexpr size_t STATEMENT_EXTERNAL_FUNCTIONS = 20;

bool starts_statement(std::string_view token, std::string_view next, std::span<const std::string> external) {
  if (next == "=" || next == "<--d-->=" || next == "f=") return true;
  for (std::string_view part : STATEMENT_WORD_PARTS) {
    if (text_edit::contains(token, part)) return true;
  }
  if (std::ranges::find(STATEMENT_WORDS, token) != std::end(STATEMENT_WORDS)) return true;
  return std::ranges::find(external.first(std::min(external.size(), STATEMENT_EXTERNAL_FUNCTIONS)), token) !=
         external.end();
}

}  // namespace

void install_families(std::span<const Family* const> families) {
  FunctionIndex& index = function_index();
  index = {};
  uint32_t order = 0;
  for (const Family* family : families) {
    for (const FamilyFunction& function : family->functions) {
      auto& by_name = function.shape == CallShape::Statement ? index.statements : index.values;
      by_name[function.name].push_back({order++, &function, &guard_of(*family, function)});
    }
  }
}

const FamilyGuard& guard_of(const Family& family, const FamilyFunction& function) {
  if (function.guard) return *function.guard;
  return function.shape == CallShape::Statement ? family.statement_guard : family.value_guard;
}

// ---------------------------------------------------------------------------
// [SECTION] mem_function

void ProgramInstance::mem_function(int from, int to, std::shared_ptr<PositionPlans> shared) {
  vlen = static_cast<int>(vari.size());
  from = std::max(from, 0);
  to = std::min(to, program.totale_tok);
  program.tok_ok.assign(static_cast<size_t>(std::max(program.totale_tok, 0)), 0);
  program.candidates.clear();
  // The shared plans when they are of tokens as many, else plans of its own.
  if (shared && shared->statements.size() == program.tok_ok.size()) {
    program.plans = std::move(shared);
  } else {
    program.plans = std::make_shared<PositionPlans>();
    program.plans->conditions.resize(program.tok_ok.size());
    program.plans->statements.resize(program.tok_ok.size());
  }
  program.own_slots.clear();
  program.candidates_from.assign(program.tok_ok.size() + 1, 0);

  const FunctionIndex& index = function_index();
  std::vector<Candidate> found;
  for (int i = 0; i < program.totale_tok; ++i) {
    program.candidates_from[static_cast<size_t>(i)] = static_cast<uint32_t>(program.candidates.size());
    if (i < from || i >= to || !starts_statement(token_text(i), token_text(i + 1), program.funzioni_esterne)) continue;
    program.tok_ok[static_cast<size_t>(i)] = 1;
    // The guards read the tokens as they were before any mark: a mark
    // adds no guard word, and a marked name matches no function.
    const std::string_view first = unmarked(token_text(i));
    const std::string_view function = unmarked(token_text(i + 2));
    found.clear();
    if (auto it = index.statements.find(first); it != index.statements.end()) found = it->second;
    if (auto it = index.values.find(function); it != index.values.end()) {
      found.insert(found.end(), it->second.begin(), it->second.end());
    }
    std::ranges::sort(found, {}, &Candidate::order);
    for (const Candidate& c : found) {
      if (guard_passes(*c.guard, first, function)) program.candidates.push_back(c.function);
    }
  }
  program.candidates_from.back() = static_cast<uint32_t>(program.candidates.size());
  // The walk goes from one position that can start a statement to the next.
  program.next_ok.assign(program.tok_ok.size() + 1, static_cast<int>(program.tok_ok.size()));
  for (size_t i = program.tok_ok.size(); i-- > 0;) {
    program.next_ok[i] = program.tok_ok[i] ? static_cast<int>(i) : program.next_ok[i + 1];
  }
}

// ---------------------------------------------------------------------------
// [SECTION] execute_function_ext

void ProgramInstance::execute_function_ext(int from, int to) {
  using Word = StatementPlan::Word;
  const int end = std::min({to, static_cast<int>(program.tok_ok.size()), static_cast<int>(program.plans->statements.size())});
  if (program.next_ok.size() != program.tok_ok.size() + 1) return;
  for (int j = std::max(from, 0); j < end; ++j) {
    j = program.next_ok[static_cast<size_t>(j)];
    if (j >= end) break;
    // The word and the token behind it are read again only when their tokens are no longer the strings held.
    // Until the conditions and loops below, nothing writes the tokens: a reference is enough.
    StatementPlan& at = program.plans->statements[static_cast<size_t>(j)];
    const RValue& token = program.tok[static_cast<size_t>(j)];
    if (!still_reads(at.word_token, token)) {
      const std::string_view tkk = token.is(Kind::String) ? token.string_view() : std::string_view();
      at.word_token = token;
      at.word = tkk == "aumenta"      ? Word::Aumenta
                : tkk == "diminuisci" ? Word::Diminuisci
                : tkk == "finche"     ? Word::Finche
                : tkk == "ripeti"     ? Word::Ripeti
                : tkk == "se"         ? Word::Se
                                      : Word::Other;
    }
    const Word word = at.word;

    if (word == Word::Aumenta || word == Word::Diminuisci) {
      const double sign = word == Word::Aumenta ? 1 : -1;
      if (!planned_change(j, sign)) {
        change_variable(*this, j, sign, true);
        // An object's code changes the program-wide variable too.
        if (ProgramInstance* main = main_program(); esemplare && main && main != this) {
          change_variable(*main, j, sign, false);
        }
      }
    }
    if (static_cast<size_t>(j) + 1 < program.tok.size()) {
      const RValue& next = program.tok[static_cast<size_t>(j) + 1];
      if (!still_reads(at.next_token, next)) {
        at.next_token = next;
        at.assigns = next.is(Kind::String) && next.string_view() == "=";
      }
      if (at.assigns) var_update_direct(token.is(Kind::String) ? token.string_view() : std::string_view(), j);
    }

    const uint32_t first = program.candidates_from[static_cast<size_t>(j)];
    const uint32_t last = program.candidates_from[static_cast<size_t>(j) + 1];
    for (uint32_t c = first; c < last; ++c) {
      const FamilyFunction& function = *program.candidates[c];
      const int at = function.shape == CallShape::Statement ? j : j + 2;
      if (token_text(at) == function.name) function.act(*this, j);
    }

    // Only the loops' and the condition's own words can start them.
    if (word == Word::Finche) execute_while_ext(j);
    if (word == Word::Ripeti) execute_repeat_ext(j);
    if (word == Word::Se) execute_if_ext(j);
  }
}

void ProgramInstance::change_variable(ProgramInstance& table, int j, double sign, bool write_through) {
  const std::string_view name = token_text(j + 1);
  const int end = table.change_limit();
  for (int v = table.find_variable(name); v >= 0 && v < end; v = table.next_variable(name, v)) {
    const double amount = text_to_real(calculate_string(*this, token_text(j + 3)).c_str());
    RValue& value = table.val[static_cast<size_t>(v)];
    if (value.is(Kind::String) && value.string_view() == "|not_set|") value = RValue::text("0");
    const std::string text = increased_text(value_to_real(value) + sign * amount);
    value = RValue::text(text);
    if (write_through) write_attribute(name, text);
  }
}

namespace {
constexpr FamilyFunction DEBUG_FUNCTIONS[] = {
    {"debug", CallShape::Statement, [](ProgramInstance& p, int i) { p.debug_function(i); }},
};
}  // namespace

const Family debug_family{"debug_function", NO_GUARD, NO_GUARD, DEBUG_FUNCTIONS};

void ProgramInstance::debug_function(int j) {
  if (token_text(j) != "debug") return;
  std::string value = calculate_string(*this, token_text(j + 1));
  std::erase(value, '"');
  show_message(RValue::text(value));
}
