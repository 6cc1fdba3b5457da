// The arrays' Sort against std::sort on the same data in the same run: 10 million doubles
// and 1 million short strings (4 to 12 bytes), ascending.
#include <zqcore/containers/ZQArrayNativeType.h>
#include <zqcore/containers/ZQArrayObjectType.h>
#include <zqcore/strings/ZQString.h>

#include "RatioReporter.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

using Velmora::Tessara::ZQ::Core::ZQArrayNativeType;
using Velmora::Tessara::ZQ::Core::ZQArrayObjectType;
using Velmora::Tessara::ZQ::Core::ZQString;

namespace {

constexpr long long kDoubles = 10000000;
constexpr long long kStrings = 1000000;

std::vector<double> const &Doubles() {
  static std::vector<double> const values = [] {
    std::vector<double> built(kDoubles);
    std::mt19937_64 random(42);
    std::uniform_real_distribution<double> value(-1.0e6, 1.0e6);
    for (double &v : built)
      v = value(random);
    return built;
  }();
  return values;
}

// Lower-case words of 4 to 12 letters: short enough to stay inside the string object.
std::vector<ZQString> const &Strings() {
  static std::vector<ZQString> const values = [] {
    std::vector<ZQString> built;
    built.reserve(kStrings);
    std::mt19937_64 random(7);
    std::uniform_int_distribution<int> length(4, 12);
    std::uniform_int_distribution<int> letter('a', 'z');
    std::string word;
    for (long long i = 0; i < kStrings; ++i) {
      word.resize(static_cast<std::size_t>(length(random)));
      for (char &c : word)
        c = static_cast<char>(letter(random));
      built.emplace_back(word.c_str());
    }
    return built;
  }();
  return values;
}

// Each iteration sorts a fresh copy of the source; the copy is not timed.
template <typename Array, typename Source> void SortOurs(benchmark::State &state, Source const &source) {
  Array array;
  array.Resize(static_cast<long long>(source.size()));
  for (auto _ : state) {
    state.PauseTiming();
    std::copy(source.begin(), source.end(), array.GetData());
    state.ResumeTiming();
    array.Sort(false);
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * static_cast<int64_t>(source.size())));
}

template <typename Source> void SortPlain(benchmark::State &state, Source const &source) {
  Source values = source;
  for (auto _ : state) {
    state.PauseTiming();
    std::copy(source.begin(), source.end(), values.begin());
    state.ResumeTiming();
    std::sort(values.begin(), values.end());
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * static_cast<int64_t>(source.size())));
}

} // namespace

int main(int argc, char **argv) {
  // Build the data before any timing starts.
  Doubles();
  Strings();
  benchmark::RegisterBenchmark("SortDoubles10M/zq", [](benchmark::State &state) {
    SortOurs<ZQArrayNativeType<double, long long>>(state, Doubles());
  })->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark("SortDoubles10M/std::sort", [](benchmark::State &state) {
    SortPlain(state, Doubles());
  })->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark("SortStrings1M/zq", [](benchmark::State &state) {
    SortOurs<ZQArrayObjectType<ZQString, long long>>(state, Strings());
  })->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark("SortStrings1M/std::sort", [](benchmark::State &state) {
    SortPlain(state, Strings());
  })->Unit(benchmark::kMillisecond);

  // A sort of this size runs about once per repetition, so the ratio takes the median of
  // five unless the command line asks otherwise. Given as a flag, the repetitions leave
  // the names that pair the runs unchanged.
  std::vector<char *> args(argv, argv + argc);
  std::string repetitions = "--benchmark_repetitions=5";
  args.insert(args.begin() + 1, repetitions.data());
  int count = static_cast<int>(args.size());
  return zqbench::RunWithRatios(count, args.data());
}
