// A table of 10 rows and 5 columns drawn by disegna_tabella, as a program's
// frame draws it, headless on Mesa's software renderer: the time of a frame's
// table and the draw calls it makes.
#include <benchmark/benchmark.h>

#include "running_program.h"
#include "families/funzioni_sulle_tabelle.h"
#include "runtime/Graphics/Batch.h"
#include "runtime/Graphics/Surfaces.h"
#include "runtime/Platform/Gpu.h"
#include "runtime/Platform/Window.h"

namespace {

constexpr const char* PROGRAM =
    "INIZIA\n"
    "crea tabella (NOME: \"registro\")\n"
    "riempi tabella (NOME: \"registro\", COLONNA 1: \"Anna|Bruno|Carla|Dario|Elena|Franco|Gina|Ugo|Irene|Luca|\", "
    "COLONNA 2: \"7|6|9|8|7|6|9|8|7|6|\", COLONNA 3: \"8|7|10|6|8|7|10|6|8|7|\", "
    "COLONNA 4: \"presente|assente|presente|presente|assente|presente|presente|assente|presente|presente|\", "
    "COLONNA 5: \"3A|3A|3A|3A|3A|3B|3B|3B|3B|3B|\")\n"
    "CICLO CONTINUO\n"
    "disegna tabella (NOME: \"registro\", X: 20, Y: 20, RIGHE: 10, COLONNE: 5)\n";

void BM_draw_table_10_by_5(benchmark::State& state) {
  platform::Window& window = platform::make_window(true);
  RunningProgram running;
  define_tabella();
  objects_prepare();
  if (!window.create(800, 600, "bench", {}) || !platform::gpu().ready()) {
    return state.SkipWithError("no OpenGL context");
  }
  if (!running.load(PROGRAM)) return state.SkipWithError("the program doesn't run");
  ProgramInstance& p = running.program();
  p.execute_function_ext(p.program.INIZIA, p.program.DISEGNA);
  const int32_t frame = surface_create(800, 600);
  uint64_t calls = 0;
  for (auto _ : state) {
    platform::gpu().reset_draw_calls();
    surface_set_target(frame);
    p.execute_function_ext(p.program.DISEGNA, p.program.totale_tok);
    surface_reset_target();
    batch_flush();
    calls = platform::gpu().draw_calls();
    // Reading a pixel waits until the device has drawn the table.
    benchmark::DoNotOptimize(surface_getpixel(frame, 30, 30));
  }
  state.counters["draw_calls_per_frame"] = static_cast<double>(calls);
}
BENCHMARK(BM_draw_table_10_by_5)->Unit(benchmark::kMicrosecond)->UseRealTime();

}  // namespace
