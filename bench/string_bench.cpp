// The string built-ins against plain std::string code doing the same work,
// side by side in one run: BM_<name>/N and BM_baseline_<name>/N. N is the
// size of the text in bytes; texts are program-like ASCII unless the name
// says utf8.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "runtime/Code/Conversions.h"
#include "runtime/Function/StringFunctions.h"

namespace {

// `size` bytes of repeated `sentence`, cut at a character boundary.
std::string make_text(size_t size, const std::string& sentence) {
  std::string t;
  while (t.size() < size) t += sentence;
  t.resize(size);
  while (!t.empty() && (static_cast<unsigned char>(t.back()) & 0xC0) == 0x80) t.pop_back();
  if (!t.empty() && static_cast<unsigned char>(t.back()) >= 0x80) t.pop_back();
  return t;
}

std::string ascii_text(size_t size) { return make_text(size, "se x > 10 allora scrivi \"grande\" altrimenti y = y + 1 "); }
std::string utf8_text(size_t size) { return make_text(size, "la città è più bella perché c'è il sole; "); }

// Every one of the text benchmarks runs on 1 KB and 64 KB.
void text_sizes(benchmark::internal::Benchmark* b) { b->Arg(1024)->Arg(65536); }

// ---------------------------------------------------------------------------
// string_replace_all: every blank marked, as the program text passes do.

void BM_string_replace_all(benchmark::State& state) {
  const std::string s = ascii_text(static_cast<size_t>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(rt::string_replace_all(s, " ", "§space§"));
  state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_string_replace_all)->Apply(text_sizes);

void BM_baseline_string_replace_all(benchmark::State& state) {
  const std::string s = ascii_text(static_cast<size_t>(state.range(0)));
  const std::string sub = " ", replacement = "§space§";
  for (auto _ : state) {
    std::string out;
    size_t from = 0;
    for (size_t hit; (hit = s.find(sub, from)) != std::string::npos; from = hit + sub.size()) {
      out.append(s, from, hit - from);
      out += replacement;
    }
    out.append(s, from);
    benchmark::DoNotOptimize(out);
  }
  state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_baseline_string_replace_all)->Apply(text_sizes);

// ---------------------------------------------------------------------------
// string_pos: a word found only at the very end.

void BM_string_pos(benchmark::State& state) {
  const std::string s = ascii_text(static_cast<size_t>(state.range(0))) + "FINE";
  for (auto _ : state) benchmark::DoNotOptimize(rt::string_pos("FINE", s));
  state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_string_pos)->Apply(text_sizes);

void BM_baseline_string_pos(benchmark::State& state) {
  const std::string s = ascii_text(static_cast<size_t>(state.range(0))) + "FINE";
  for (auto _ : state) benchmark::DoNotOptimize(static_cast<double>(s.find("FINE") + 1));
  state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_baseline_string_pos)->Apply(text_sizes);

// ---------------------------------------------------------------------------
// string_copy: the middle half of the text.

void BM_string_copy(benchmark::State& state) {
  const std::string s = ascii_text(static_cast<size_t>(state.range(0)));
  const int quarter = static_cast<int>(s.size() / 4);
  for (auto _ : state) benchmark::DoNotOptimize(rt::string_copy(s, quarter + 1, 2 * quarter));
  state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_string_copy)->Apply(text_sizes);

void BM_baseline_string_copy(benchmark::State& state) {
  const std::string s = ascii_text(static_cast<size_t>(state.range(0)));
  const size_t quarter = s.size() / 4;
  for (auto _ : state) benchmark::DoNotOptimize(s.substr(quarter, 2 * quarter));
  state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_baseline_string_copy)->Apply(text_sizes);

// ---------------------------------------------------------------------------
// string_length: characters of ASCII and of Italian UTF-8 text. The baseline
// counts the bytes that aren't UTF-8 follow bytes.

size_t count_lead_bytes(const std::string& s) {
  size_t n = 0;
  for (unsigned char c : s) n += (c & 0xC0) != 0x80;
  return n;
}

void BM_string_length(benchmark::State& state) {
  const std::string s = ascii_text(static_cast<size_t>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(rt::string_length(s));
  state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_string_length)->Apply(text_sizes);

void BM_baseline_string_length(benchmark::State& state) {
  const std::string s = ascii_text(static_cast<size_t>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(static_cast<double>(count_lead_bytes(s)));
  state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_baseline_string_length)->Apply(text_sizes);

void BM_string_length_utf8(benchmark::State& state) {
  const std::string s = utf8_text(static_cast<size_t>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(rt::string_length(s));
  state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_string_length_utf8)->Apply(text_sizes);

void BM_baseline_string_length_utf8(benchmark::State& state) {
  const std::string s = utf8_text(static_cast<size_t>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(static_cast<double>(count_lead_bytes(s)));
  state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_baseline_string_length_utf8)->Apply(text_sizes);

// ---------------------------------------------------------------------------
// string_format: a number in a column of 5 places with 2 decimals.

void BM_string_format(benchmark::State& state) {
  double v = 3.14159;
  for (auto _ : state) {
    benchmark::DoNotOptimize(rt::string_format(v, 5, 2));
    v += 1.0;
  }
}
BENCHMARK(BM_string_format);

void BM_baseline_string_format(benchmark::State& state) {
  double v = 3.14159;
  char buffer[64];
  for (auto _ : state) {
    benchmark::DoNotOptimize(std::string(buffer, static_cast<size_t>(std::snprintf(buffer, sizeof buffer, "%8.2f", v))));
    v += 1.0;
  }
}
BENCHMARK(BM_baseline_string_format);

// ---------------------------------------------------------------------------
// real: a string value holding a number's text, read as a number.

void BM_real(benchmark::State& state) {
  const RValue v = RValue::text("12345.678");
  for (auto _ : state) benchmark::DoNotOptimize(value_to_real(v));
}
BENCHMARK(BM_real);

void BM_baseline_real(benchmark::State& state) {
  const std::string s = "12345.678";
  for (auto _ : state) benchmark::DoNotOptimize(std::strtod(s.c_str(), nullptr));
}
BENCHMARK(BM_baseline_real);

// ---------------------------------------------------------------------------
// string: the text form of a number with decimals.

void BM_string(benchmark::State& state) {
  double v = 0.25;
  for (auto _ : state) {
    benchmark::DoNotOptimize(value_to_text(RValue::number(v)));
    v += 1.0;
  }
}
BENCHMARK(BM_string);

void BM_baseline_string(benchmark::State& state) {
  double v = 0.25;
  char buffer[64];
  for (auto _ : state) {
    benchmark::DoNotOptimize(std::string(buffer, static_cast<size_t>(std::snprintf(buffer, sizeof buffer, "%.2f", v))));
    v += 1.0;
  }
}
BENCHMARK(BM_baseline_string);

}  // namespace
