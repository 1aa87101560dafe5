// The statement walk: how many statements a second a program runs, in the
// loops that learners write. Each iteration runs the block "INIZIA" once.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "families/family_contract.h"
#include "language/evaluation/numeric_expression.h"
#include "running_program.h"

namespace {

// A value function as every family serves one: argument by key, a short
// number back into the variable on the left.
void ottieni_il_doppio_di(ProgramInstance& p, int i) {
  static constexpr ArgumentKey KEYS[] = {{"(VALORE:", 1, "0"}};
  read_arguments(p, i, CallShape::Value, KEYS);
  output_short(p, 2 * argument_number(p, p.call.args[1]));
  aggiorna_variabile_tramite_funzione(p, i);
}
constexpr FamilyFunction BENCH_FUNCTIONS[] = {{"ottieni_il_doppio_di", CallShape::Value, ottieni_il_doppio_di}};
const Family bench_family{"funzioni_di_prova", OTTIENI_GUARD, OTTIENI_GUARD, BENCH_FUNCTIONS};

// Runs the block "INIZIA" of `text`, whose loop makes `statements` statements,
// checking that `name` ends as `expected`.
void run(benchmark::State& state, const std::string& text, double statements, std::string_view name,
         double expected) {
  RunningProgram running;
  std::vector<const Family*> families(language_families().begin(), language_families().end());
  families.push_back(&bench_family);
  install_families(families);
  for (auto _ : state) {
    state.PauseTiming();
    if (!running.load(text)) return state.SkipWithError("the program doesn't tokenise");
    ProgramInstance& p = running.program();
    state.ResumeTiming();
    p.execute_function_ext(p.program.INIZIA, p.program.DISEGNA);
    state.PauseTiming();
    const int k = p.find_variable(name);
    if (k < 0 || string_is_real(p.val[static_cast<size_t>(k)].string_view()) != expected) {
      return state.SkipWithError("wrong result");
    }
    state.ResumeTiming();
  }
  state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * statements));
}

void BM_walk_increase(benchmark::State& state) {
  run(state, "INIZIA X = 0\nripeti per 1000000 volte {\naumenta X di 1\n}\nCICLO CONTINUO", 1e6, "X", 1e6);
}
BENCHMARK(BM_walk_increase)->Unit(benchmark::kMillisecond);

// Four statements a pass, as a learner's loop mixes them: an assignment with
// an expression, a condition, an increase and a decrease (the condition's own
// increase runs in most passes and isn't counted); `extra` is a fifth.
std::string mixed_body(const std::string& extra) {
  return "INIZIA X = 0 Y = 0 Z = 0 V = 0 W = 0\n"
         "ripeti per 100000 volte {\n"
         "Y = X*2+1\n"
         "se Y > 10 allora aumenta Z di 1 .\n"
         "aumenta X di 1\n" +
         extra +
         "diminuisci W di 1\n"
         "}\nCICLO CONTINUO";
}

void BM_walk_mixed_body(benchmark::State& state) { run(state, mixed_body(""), 4e5, "W", -1e5); }
BENCHMARK(BM_walk_mixed_body)->Unit(benchmark::kMillisecond);

// The mixed body with a value function of a family as a fifth statement.
void BM_walk_mixed_body_with_a_value_function(benchmark::State& state) {
  run(state, mixed_body("V = ottieni_il_doppio_di (VALORE: X)\n"), 5e5, "W", -1e5);
}
BENCHMARK(BM_walk_mixed_body_with_a_value_function)->Unit(benchmark::kMillisecond);

// The conditions of the 2,000-shapes program without its drawing: three
// chains of comparisons a pass, of which one is true; counted are the
// assignment and the three conditions.
void BM_walk_conditions(benchmark::State& state) {
  run(state,
      "INIZIA n = 0 X = 0\n"
      "ripeti per 2100 volte {\n"
      "n = ripetizione\n"
      "se n < 700 allora aumenta X di 1 .\n"
      "se n >= 700 e n < 1400 allora aumenta X di 1 .\n"
      "se n >= 1400 allora aumenta X di 1 .\n"
      "}\nCICLO CONTINUO",
      4 * 2100, "X", 2100);
}
BENCHMARK(BM_walk_conditions)->Unit(benchmark::kMillisecond);

}  // namespace
