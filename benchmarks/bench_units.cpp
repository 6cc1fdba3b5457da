// Unit conversion of 10 million values: with the unit names given as text on every value
// (the converter looks them up each time) against normalising the names and one hash
// lookup per name done by hand, and with the factor taken once against a plain
// multiply-add loop over the same values.
#include <zqcore/core/ZQResult.h>
#include <zqcore/strings/ZQString.h>
#include <zqcore/values/ZQUnitsConverter.h>

#include "RatioReporter.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cctype>
#include <random>
#include <string>
#include <unordered_map>
#include <vector>

using Velmora::Tessara::ZQ::Core::ZQString;
using Velmora::Tessara::ZQ::Core::ZQUnitsConverter;

namespace {

constexpr std::size_t kValues = 10'000'000;

std::vector<double> const &Values() {
  static std::vector<double> const values = [] {
    std::mt19937_64 random(42);
    std::uniform_real_distribution<double> length(0, 1000);
    std::vector<double> drawn(kValues);
    std::generate(drawn.begin(), drawn.end(), [&] { return length(random); });
    return drawn;
  }();
  return values;
}

void Count(benchmark::State &state) { state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * kValues)); }

// The names as a caller would hand them over: mixed case, blanks and brackets.
char const *const kFrom = " [MM] ";
char const *const kTo = "In";

void TextOurs(benchmark::State &state) {
  ZQUnitsConverter converter;
  ZQString const from(kFrom);
  ZQString const to(kTo);
  std::vector<double> const &in = Values();
  std::vector<double> out(kValues);
  for (auto _ : state) {
    for (std::size_t i = 0; i < kValues; ++i) {
      double factor, offset;
      converter.GetConversionData(from, to, factor, offset);
      out[i] = in[i] * factor + offset;
    }
    benchmark::DoNotOptimize(out.data());
  }
  Count(state);
}

/// The least a text path must do: copy, trim, unbracket and lower each name, and look
/// each up once in a hash table.
std::string Normalised(char const *name) {
  std::string text(name);
  std::size_t const first = text.find_first_not_of(" \t\n\v\f\r");
  std::size_t const last = text.find_last_not_of(" \t\n\v\f\r");
  text = first == std::string::npos ? std::string() : text.substr(first, last - first + 1);
  if (text.size() >= 2 && text.front() == '[' && text.back() == ']') {
    text = text.substr(1, text.size() - 2);
  }
  std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::tolower(c); });
  return text;
}

char const *volatile opaqueFrom = kFrom;
char const *volatile opaqueTo = kTo;

void TextPlain(benchmark::State &state) {
  std::unordered_map<std::string, std::pair<double, double>> const table = {
      {"mm", {0.001, 1000}}, {"in", {0.0254, 39.37007874015748}}, {"m", {1, 1}}, {"ft", {0.3048, 3.2808}}};
  std::vector<double> const &in = Values();
  std::vector<double> out(kValues);
  for (auto _ : state) {
    for (std::size_t i = 0; i < kValues; ++i) {
      // Names read through volatile pointers, so that the work cannot leave the loop.
      char const *from = opaqueFrom;
      char const *to = opaqueTo;
      double const factor = table.find(Normalised(from))->second.first * table.find(Normalised(to))->second.second;
      out[i] = in[i] * factor + 0.0;
    }
    benchmark::DoNotOptimize(out.data());
  }
  Count(state);
}

void MultiplyAdd(std::vector<double> const &in, std::vector<double> &out, double factor, double offset) {
  for (std::size_t i = 0; i < kValues; ++i) {
    out[i] = in[i] * factor + offset;
  }
}

void FactorOnceOurs(benchmark::State &state) {
  ZQUnitsConverter converter;
  std::vector<double> const &in = Values();
  std::vector<double> out(kValues);
  for (auto _ : state) {
    double factor, offset;
    converter.GetConversionData(ZQString(kFrom), ZQString(kTo), factor, offset);
    MultiplyAdd(in, out, factor, offset);
    benchmark::DoNotOptimize(out.data());
  }
  Count(state);
}

void FactorOncePlain(benchmark::State &state) {
  std::vector<double> const &in = Values();
  std::vector<double> out(kValues);
  // Read through DoNotOptimize so that the compiler cannot fold the constants in.
  double factor = 0.001 * 39.37007874015748;
  double offset = 0;
  benchmark::DoNotOptimize(factor);
  benchmark::DoNotOptimize(offset);
  for (auto _ : state) {
    MultiplyAdd(in, out, factor, offset);
    benchmark::DoNotOptimize(out.data());
  }
  Count(state);
}

} // namespace

int main(int argc, char **argv) {
  Values();
  benchmark::RegisterBenchmark("TextEachValue/zq", TextOurs)->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark("TextEachValue/normalise+lookup", TextPlain)->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark("FactorOnce/zq", FactorOnceOurs)->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark("FactorOnce/multiply-add", FactorOncePlain)->Unit(benchmark::kMillisecond);
  return zqbench::RunWithRatios(argc, argv);
}
