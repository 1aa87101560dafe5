// The evaluators as a program's loop meets them in every frame, against a
// table of 50 variables. The table is looked up as a running program's is:
// a linear walk over parallel arrays of names and values, with the names an
// expression uses spread through it.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "language/numeric_expression.h"
#include "language/string_expression.h"

namespace {

class VariableTable : public ExpressionContext {
 public:
  VariableTable() {
    const std::vector<std::pair<std::string, std::string>> used = {
        {"A", "12"}, {"B", "30.5"}, {"C", "7"}, {"D", "2.25"}, {"X", "4"}};
    for (int i = 0; i < 50; ++i) {
      // A used name every tenth entry, the last at the end of the table.
      if (i % 10 == 9) {
        vari_.push_back(used[static_cast<size_t>(i / 10)].first);
        val_.push_back(used[static_cast<size_t>(i / 10)].second);
      } else {
        vari_.push_back("variabile_" + std::to_string(i));
        val_.push_back(std::to_string(i * 3) + ".5");
      }
    }
  }

  std::string cal_var_and_const(std::string_view piece) override {
    const std::string* value = find(piece);
    return value ? *value : std::string("0");
  }
  std::string calculate_var(std::string_view name) override {
    const std::string* value = find(name);
    return value ? *value : std::string("no var");
  }

 private:
  const std::string* find(std::string_view name) const {
    for (size_t i = 0; i < vari_.size(); ++i) {
      if (vari_[i] == name) return &val_[i];
    }
    return nullptr;
  }

  std::vector<std::string> vari_, val_;
};

// Evaluates `text` with `evaluator` in a loop, after checking the value once.
template <class Evaluator>
void run(benchmark::State& state, Evaluator evaluator, std::string_view text, std::string_view expected) {
  VariableTable table;
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

}  // namespace
