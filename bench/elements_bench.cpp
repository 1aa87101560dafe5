// Elements running their object's code headless: N elements of one class,
// each running five statements a frame (two moves, a test of the edge with
// its change, a program-wide count), for 300 frames. Frames a second, at
// 100 and at 1,000 elements.
#include <benchmark/benchmark.h>

#include "language/elements/element_templates.h"
#include "language/elements/esemplare.h"
#include "running_program.h"
#include "runtime/Run/Frame.h"

namespace {

constexpr int FRAMES = 300;

constexpr const char* PROGRAM =
    "INIZIA\n"
    "passi = 0\n"
    "palla esegue al suo interno questo codice\n"
    "{\n"
    "  X = X + 3\n"
    "  Y = Y + 1\n"
    "  se X > 990 allora\n"
    "    X = 10\n"
    "  }\n"
    "  aumenta passi di 1\n"
    "}\n"
    "CICLO CONTINUO\n";

void BM_elements_running_their_code(benchmark::State& state) {
  RunningProgram running;
  define_element_objects([] { return -1; });
  objects_prepare();
  if (!running.load(PROGRAM)) return state.SkipWithError("the program doesn't run");
  const int32_t esemplare = object_find("esemplare");
  for (int k = 0; k < state.range(0); ++k) {
    auto* e = static_cast<Esemplare*>(instance_create(static_cast<float>(k % 900), static_cast<float>(k % 600), esemplare, 0));
    e->ogg = "palla";
    e->nome = "p" + std::to_string(k);
  }
  for (auto _ : state) {
    for (int f = 0; f < FRAMES; ++f) frame_run();
  }
  state.counters["frames_per_second"] =
      benchmark::Counter(static_cast<double>(state.iterations()) * FRAMES, benchmark::Counter::kIsRate);
}
BENCHMARK(BM_elements_running_their_code)->Arg(100)->Arg(300)->Arg(1000)->Arg(3000)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
