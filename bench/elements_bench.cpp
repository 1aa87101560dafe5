// Elements headless. N elements of one class, each running five statements
// a frame (two moves, a test of the edge with its change, a program-wide
// count), for 300 frames; and 300 elements with pictures, moving, that the
// program tests for collision every frame. Frames a second.
#include <benchmark/benchmark.h>

#include "language/elements/element_templates.h"
#include "language/elements/esemplare.h"
#include "runtime/IO/FileNames.h"
#include "running_program.h"
#include "runtime/Platform/Gpu.h"
#include "runtime/Platform/Window.h"
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

// 300 stars on a grid 70 by 50 pixels apart, all moving the same way, so that
// they are tested every frame and never meet.
void BM_elements_tested_for_collision(benchmark::State& state) {
  platform::Window& window = platform::make_window(true);
  RunningProgram running;
  define_element_objects([] { return -1; });
  objects_prepare();
  if (!window.create(1000, 750, "bench", {}) || !platform::gpu().ready()) return state.SkipWithError("no OpenGL context");
  const std::string picture = std::string(VELANT_SOURCE_DIR) + "/examples/immagini/stella";
  const std::string program =
      "INIZIA\n"
      "crea un oggetto (NOME: \"sasso\", IMMAGINE: \"" + picture + "\", VELOCITA: 2, DIREZIONE: 0)\n"
      "riga = 0\n"
      "ripeti per 15 volte\n"
      "{\n"
      "  colonna = 0\n"
      "  ripeti per 20 volte\n"
      "  {\n"
      "    crea un esemplare (OGGETTO: \"sasso\", X: colonna * 70, Y: riga * 50)\n"
      "    aumenta colonna di 1\n"
      "  }\n"
      "  aumenta riga di 1\n"
      "}\n"
      "CICLO CONTINUO\n"
      "distruggi questi elementi quando collidono tra loro (ELEMENTO_1: \"sasso\", ELEMENTO_2: \"sasso\")\n";
  if (!running.load(program)) return state.SkipWithError("the program doesn't run");
  ProgramInstance& p = running.program();
  file_sandbox_set(false);
  p.execute_function_ext(p.program.INIZIA, p.program.DISEGNA);
  for (auto _ : state) {
    for (int f = 0; f < FRAMES; ++f) {
      frame_run();
      ++p.time;
      p.execute_function_ext(p.program.DISEGNA, p.program.totale_tok);
    }
  }
  state.counters["elements"] = static_cast<double>(object_get(object_find("esemplare"))->instances.size());
  state.counters["frames_per_second"] =
      benchmark::Counter(static_cast<double>(state.iterations()) * FRAMES, benchmark::Counter::kIsRate);
}
BENCHMARK(BM_elements_tested_for_collision)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
