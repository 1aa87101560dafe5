// The tokeniser on a realistic program of 1,000 lines, made of the example
// programs' statements repeated.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <unistd.h>

#include "language/tokenizer/sound_assets.h"
#include "language/tokenizer/tokenization.h"
#include "runtime/Code/Builtins.h"

namespace {

namespace fs = std::filesystem;

// The statements of every example, without their block words.
std::vector<std::string> example_statements() {
  std::vector<std::string> lines;
  for (const auto& entry : fs::directory_iterator(fs::path(VELANT_SOURCE_DIR) / "examples")) {
    if (entry.path().extension() != ".txt") continue;
    std::ifstream in(entry.path());
    for (std::string line; std::getline(in, line);) {
      if (line == "INIZIA" || line == "CICLO CONTINUO") continue;
      lines.push_back(line);
    }
  }
  return lines;
}

// A folder holding code.txt with `count` lines: "INIZIA", half the
// statements, "CICLO CONTINUO", the other half.
std::string write_program(int count) {
  const std::vector<std::string> statements = example_statements();
  std::ostringstream text;
  text << "INIZIA\n";
  for (int i = 0; i < count - 2; ++i) {
    if (i == (count - 2) / 2) text << "CICLO CONTINUO\n";
    text << statements[static_cast<size_t>(i) % statements.size()] << "\n";
  }
  const fs::path dir = fs::temp_directory_path() / ("velant_bench_" + std::to_string(::getpid()));
  fs::create_directories(dir);
  std::ofstream(dir / "code.txt") << text.str();
  return dir.string() + "/";
}

void BM_tokenization_1000_lines(benchmark::State& state) {
  register_runtime_builtins();
  register_language_sounds();
  const std::string folder = write_program(1000);
  TokenProgram program;
  for (auto _ : state) {
    tokenization(program, folder);
    benchmark::DoNotOptimize(program.totale_tok);
  }
  state.counters["tokens"] = program.totale_tok;
  fs::remove_all(folder);
}
BENCHMARK(BM_tokenization_1000_lines)->Unit(benchmark::kMillisecond);

}  // namespace
