// The colouring of the code box: a page of 40 lines of the showcase
// example coloured line by line, and one line coloured again, as a
// keystroke asks.
#include <benchmark/benchmark.h>

#include <fstream>
#include <string>
#include <vector>

#include "environment/colouring/code_editor.h"

namespace {

std::vector<std::string> showcase_page() {
  std::ifstream in(std::string(VELANT_SOURCE_DIR) + "/examples/vetrina.txt", std::ios::binary);
  std::vector<std::string> page;
  for (std::string line; page.size() < 40 && std::getline(in, line);) page.push_back((page.empty() ? "" : "\n") + line);
  return page;
}

void BM_colour_a_40_line_page(benchmark::State& state) {
  const std::vector<std::string> page = showcase_page();
  for (auto _ : state) {
    CodeColouring c;
    for (size_t k = 0; k < page.size(); ++k) benchmark::DoNotOptimize(code_editor(page[k], static_cast<int>(k) + 1, c));
  }
}
BENCHMARK(BM_colour_a_40_line_page)->Unit(benchmark::kMillisecond);

void BM_colour_one_changed_line(benchmark::State& state) {
  const std::vector<std::string> page = showcase_page();
  // The longest line of code on the page, comments left out.
  size_t longest = 1;
  for (size_t k = 1; k < page.size(); ++k) {
    if (page[k].find("//") == std::string::npos && page[k].size() > page[longest].size()) longest = k;
  }
  CodeColouring c;
  for (auto _ : state) benchmark::DoNotOptimize(code_editor(page[longest], static_cast<int>(longest) + 1, c));
  state.counters["characters"] = static_cast<double>(page[longest].size());
}
BENCHMARK(BM_colour_one_changed_line)->Unit(benchmark::kMicrosecond);

}  // namespace
