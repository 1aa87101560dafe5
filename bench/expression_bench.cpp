// The evaluators as a program's loop meets them in every frame, against the
// variable table of a running program holding 50 variables, with the names
// an expression uses spread through it.
#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <vector>

#include "language/numeric_expression.h"
#include "language/program_instance.h"
#include "language/string_expression.h"
#include "runtime/Code/Builtins.h"
#include "runtime/Object/Objects.h"
#include "runtime/Room/Room.h"

namespace {

// The program of main_code_ctrl in a running room, with its 50 variables.
class RunningProgram {
 public:
  RunningProgram() {
    register_runtime_builtins();
    rooms_clear();
    objects_clear();
    const int32_t object = object_add("main_code_ctrl");
    room_add(RoomDescription{"main_room"});
    objects_prepare();
    set_room_target(0);
    room_change(true);
    program_ = std::make_unique<ProgramInstance>(*instance_create(0, 0, object, 0), false);
    set_main_program(program_.get());
    const std::vector<std::pair<std::string, std::string>> used = {
        {"A", "12"}, {"B", "30.5"}, {"C", "7"}, {"D", "2.25"}, {"X", "4"}};
    for (int i = 0; i < 50; ++i) {
      // A used name every tenth entry, the last at the end of the table.
      if (i % 10 == 9) {
        const auto& [name, value] = used[static_cast<size_t>(i / 10)];
        program_->append_variable(name, RValue::text(value));
      } else {
        program_->append_variable("variabile_" + std::to_string(i), RValue::text(std::to_string(i * 3) + ".5"));
      }
    }
  }
  ~RunningProgram() {
    set_main_program(nullptr);
    program_.reset();
    game_finish();
    rooms_clear();
    objects_clear();
  }
  ProgramInstance& program() { return *program_; }

 private:
  std::unique_ptr<ProgramInstance> program_;
};

// Evaluates `text` with `evaluator` in a loop, after checking the value once.
template <class Evaluator>
void run(benchmark::State& state, Evaluator evaluator, std::string_view text, std::string_view expected) {
  RunningProgram running;
  ProgramInstance& table = running.program();
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
