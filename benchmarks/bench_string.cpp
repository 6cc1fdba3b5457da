// ZQString's search, replacement, formatted append and number parsing against the plain
// std::string / snprintf / strtod way of getting the same result.
#include <zqcore/strings/ZQString.h>

#include "RatioReporter.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

using Velmora::Tessara::ZQ::Core::ZQString;

namespace {

// 4 KiB of path-like text with many near misses of the searched text, which ends it, and
// "obj" 64 times in it.
std::string const &Haystack() {
  static std::string const text = [] {
    std::string built;
    for (int line = 0; built.size() < 4000; ++line) {
      built += "/work/mesh/part_" + std::to_string(line) + (line % 2 == 0 ? "/obj/data.h5 " : "/cells.h5 ");
    }
    return built + "/obj/cells.h5";
  }();
  return text;
}

constexpr char kNeedle[] = "/obj/cells.h5";

void FindOurs(benchmark::State &state) {
  ZQString const text(Haystack().c_str());
  for (auto _ : state)
    benchmark::DoNotOptimize(text.Find(kNeedle));
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * Haystack().size()));
}

void FindPlain(benchmark::State &state) {
  std::string const text = Haystack();
  for (auto _ : state)
    benchmark::DoNotOptimize(text.find(kNeedle));
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * Haystack().size()));
}

void ReplaceOurs(benchmark::State &state) {
  ZQString const original(Haystack().c_str());
  for (auto _ : state) {
    ZQString text(original);
    text.Replace("obj", "objects");
    benchmark::DoNotOptimize(text.c_str());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * Haystack().size()));
}

// The usual loop: find, replace in place, continue behind the new text.
void ReplacePlain(benchmark::State &state) {
  std::string const original = Haystack();
  std::string const from = "obj";
  std::string const to = "objects";
  for (auto _ : state) {
    std::string text(original);
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
      text.replace(at, from.size(), to);
    }
    benchmark::DoNotOptimize(text.data());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * Haystack().size()));
}

constexpr int kValuesPerIteration = 64;

template <typename Append> void AppendValues(benchmark::State &state, Append append) {
  std::string text;
  ZQString zqText;
  for (auto _ : state) {
    text.clear();
    zqText.Clear();
    for (int i = 0; i < kValuesPerIteration; ++i)
      append(text, zqText, i);
    benchmark::DoNotOptimize(text.data());
    benchmark::DoNotOptimize(zqText.c_str());
  }
  state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * kValuesPerIteration));
}

void AppendPrintf(std::string &text, char const *format, double value) {
  char buffer[64];
  int const length = std::snprintf(buffer, sizeof buffer, format, value);
  text.append(buffer, static_cast<std::size_t>(length));
}

void AppendPrintf(std::string &text, char const *format, int value) {
  char buffer[64];
  int const length = std::snprintf(buffer, sizeof buffer, format, value);
  text.append(buffer, static_cast<std::size_t>(length));
}

double ValueAt(int i) { return 1.0 / (i + 3) * 12345.678; }

std::vector<std::string> const &NumberTexts() {
  static std::vector<std::string> const texts = [] {
    std::vector<std::string> built;
    std::mt19937 random(5);
    std::uniform_real_distribution<double> mantissa(-1000.0, 1000.0);
    std::uniform_int_distribution<int> exponent(-30, 30);
    for (int i = 0; i < kValuesPerIteration; ++i) {
      char buffer[64];
      std::snprintf(buffer, sizeof buffer, i % 2 == 0 ? "%.17g" : "%.6g",
                    mantissa(random) * std::pow(10.0, exponent(random)));
      built.emplace_back(buffer);
    }
    return built;
  }();
  return texts;
}

void ParseOurs(benchmark::State &state) {
  std::vector<ZQString> texts;
  for (std::string const &text : NumberTexts())
    texts.emplace_back(text.c_str());
  for (auto _ : state) {
    for (ZQString const &text : texts)
      benchmark::DoNotOptimize(text.AsFloat64(false));
  }
  state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * kValuesPerIteration));
}

void ParsePlain(benchmark::State &state) {
  std::vector<std::string> const &texts = NumberTexts();
  for (auto _ : state) {
    for (std::string const &text : texts)
      benchmark::DoNotOptimize(std::strtod(text.c_str(), nullptr));
  }
  state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * kValuesPerIteration));
}

} // namespace

int main(int argc, char **argv) {
  benchmark::RegisterBenchmark("Find/zq", FindOurs);
  benchmark::RegisterBenchmark("Find/std::string", FindPlain);
  benchmark::RegisterBenchmark("Replace/zq", ReplaceOurs);
  benchmark::RegisterBenchmark("Replace/std::string", ReplacePlain);
  benchmark::RegisterBenchmark("AddIntFormat/zq", [](benchmark::State &state) {
    AppendValues(state, [](std::string &, ZQString &text, int i) { text.Add(i * 7919, "%d;"); });
  });
  benchmark::RegisterBenchmark("AddIntFormat/snprintf", [](benchmark::State &state) {
    AppendValues(state, [](std::string &text, ZQString &, int i) { AppendPrintf(text, "%d;", i * 7919); });
  });
  benchmark::RegisterBenchmark("AddDoubleDefaultFormat/zq", [](benchmark::State &state) {
    AppendValues(state, [](std::string &, ZQString &text, int i) { text.Add(ValueAt(i), nullptr); });
  });
  benchmark::RegisterBenchmark("AddDoubleDefaultFormat/snprintf", [](benchmark::State &state) {
    AppendValues(state, [](std::string &text, ZQString &, int i) { AppendPrintf(text, "%.16g", ValueAt(i)); });
  });
  benchmark::RegisterBenchmark("AddDoubleNoFormat/zq", [](benchmark::State &state) {
    AppendValues(state, [](std::string &, ZQString &text, int i) { text.Add(ValueAt(i)); });
  });
  benchmark::RegisterBenchmark("AddDoubleNoFormat/snprintf", [](benchmark::State &state) {
    AppendValues(state, [](std::string &text, ZQString &, int i) { AppendPrintf(text, "%.16g", ValueAt(i)); });
  });
  benchmark::RegisterBenchmark("AsFloat64/zq", ParseOurs);
  benchmark::RegisterBenchmark("AsFloat64/strtod", ParsePlain);
  return zqbench::RunWithRatios(argc, argv);
}
