// The evaluators as a program's loop meets them in every frame, against the
// variable table of a running program holding 50 variables, with the names
// an expression uses spread through it.
#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <vector>

#include "language/evaluation/numeric_expression.h"
#include "language/evaluation/plans.h"
#include "language/evaluation/string_expression.h"
#include "running_program.h"

namespace {

// The program of main_code_ctrl with 50 variables, the names an
// expression uses spread through them: a used name every tenth entry, the
// last at the end of the table.
void add_variables(ProgramInstance& program) {
  const std::vector<std::pair<std::string, std::string>> used = {
      {"A", "12"}, {"B", "30.5"}, {"C", "7"}, {"D", "2.25"}, {"X", "4"}};
  for (int i = 0; i < 50; ++i) {
    if (i % 10 == 9) {
      const auto& [name, value] = used[static_cast<size_t>(i / 10)];
      program.append_variable(name, RValue::text(value));
    } else {
      program.append_variable("variabile_" + std::to_string(i), RValue::text(std::to_string(i * 3) + ".5"));
    }
  }
}

// Evaluates `text` with `evaluator` in a loop, after checking the value once.
template <class Evaluator>
void run(benchmark::State& state, Evaluator evaluator, std::string_view text, std::string_view expected) {
  RunningProgram running;
  ProgramInstance& table = running.program();
  add_variables(table);
  if (evaluator(table, text) != expected) {
    state.SkipWithError("wrong value");
    return;
  }
  for (auto _ : state) benchmark::DoNotOptimize(evaluator(table, text));
  state.SetItemsProcessed(state.iterations());
}

void BM_calculate_string_product_and_sum(benchmark::State& state) {
  run(state, calculate_string, "2+3*X", "14");
}
BENCHMARK(BM_calculate_string_product_and_sum);

void BM_calculate_string_brackets(benchmark::State& state) {
  run(state, calculate_string, "[A+B]*[C-D]/2", "100.9375000000");
}
BENCHMARK(BM_calculate_string_brackets);

void BM_calculate_expression_in_string_three_names(benchmark::State& state) {
  run(state, calculate_expression_in_string, "\"Punti: <A>, vite: <B>, livello: <C>\"",
      "\"Punti: 12, vite: 30.5, livello: 7\"");
}
BENCHMARK(BM_calculate_expression_in_string_three_names);

// The mixed body's expression, by the general evaluator and by its plan.
void BM_calculate_string_mixed_body_expression(benchmark::State& state) {
  run(state, calculate_string, "X*2+1", "9");
}
BENCHMARK(BM_calculate_string_mixed_body_expression);

void BM_planned_value_mixed_body_expression(benchmark::State& state) {
  ExpressionPlan plan;
  std::string out;
  run(
      state,
      [&](ProgramInstance& table, std::string_view text) {
        if (!table.planned_value(plan, text, out)) out = calculate_string(table, text);
        return out;
      },
      "X*2+1", "9");
}
BENCHMARK(BM_planned_value_mixed_body_expression);

}  // namespace
