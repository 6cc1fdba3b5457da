// Console output of Google Benchmark plus a closing table that sets each of our figures
// beside the plain alternative measured in the same run.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace zqbench {

/// Pairs benchmarks by name: "<case>/zq" is ours, any other "<case>/<peer>" the
/// alternative. Compares their bytes_per_second, or else their items_per_second; with
/// --benchmark_repetitions, their medians.
class RatioReporter : public benchmark::ConsoleReporter {
public:
  void ReportRuns(std::vector<Run> const &runs) override {
    ConsoleReporter::ReportRuns(runs);
    // With repetitions, the median (reported after the single runs) replaces them.
    for (Run const &run : runs) {
      bool const median = run.run_type == Run::RT_Aggregate && run.aggregate_name == "median";
      if (!run.error_occurred && (run.run_type == Run::RT_Iteration || median)) {
        rates[run.run_name.str()] = Rate(run);
      }
    }
  }

  void Finalize() override {
    ConsoleReporter::Finalize();
    std::printf("\n%-36s %14s %14s %8s\n", "case (rate per second)", "zq", "peer", "zq/peer");
    for (auto const &[name, ours] : rates) {
      std::string const prefix = CaseOf(name);
      if (name != prefix + "/zq")
        continue;
      for (auto const &[peerName, peer] : rates) {
        if (peerName != name && CaseOf(peerName) == prefix && peer > 0) {
          std::printf("%-36s %14.4g %14.4g %8.2f  (peer: %s)\n", prefix.c_str(), ours, peer, ours / peer,
                      peerName.substr(prefix.size() + 1).c_str());
        }
      }
    }
  }

private:
  static std::string CaseOf(std::string const &name) { return name.substr(0, name.rfind('/')); }

  static double Rate(Run const &run) {
    for (char const *counter : {"bytes_per_second", "items_per_second"}) {
      auto const found = run.counters.find(counter);
      if (found != run.counters.end())
        return found->second.value;
    }
    return 0.0;
  }

  std::map<std::string, double> rates;
};

/// main() of a benchmark executable that ends with the ratio table.
inline int RunWithRatios(int argc, char **argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv))
    return 1;
  RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();
  return 0;
}

} // namespace zqbench
