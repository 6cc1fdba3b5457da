// A file logger under load: 1,000,000 short formatted lines through a ZQLogger with one
// ZQLogFileHandler, against the same bytes through spdlog's basic file sink flushed at
// every line, as ours is.
#include <zqcore/logging/ZQLogFileHandler.h>
#include <zqcore/logging/ZQLogger.h>

#include "RatioReporter.h"

#include <benchmark/benchmark.h>
#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/spdlog.h>

#include <cstdio>
#include <string>
#include <unistd.h>

using namespace Velmora::Tessara::ZQ::Core;

namespace {

constexpr int kLines = 1000000;

std::string BenchFile(char const *name) {
  char const *directory = std::getenv("TMPDIR");
  return std::string(directory != nullptr ? directory : "/tmp") + "/zq_bench_log_" + std::to_string(getpid()) + "_" +
         name;
}

// The same line for both: a step, a residual and a short word.
int FormatLine(char *buffer, std::size_t size, int i) {
  return std::snprintf(buffer, size, "step %d residual %.6e cells %s", i, 1.0 / (i + 1), i % 2 == 0 ? "ok" : "odd");
}

template <typename WriteLine> void LogLines(benchmark::State &state, WriteLine writeLine) {
  long long bytes = 0;
  char line[128];
  for (int i = 0; i < kLines; ++i) {
    int const length = FormatLine(line, sizeof line, i);
    writeLine(line, length);
    bytes += length + 1;
  }
  state.SetItemsProcessed(state.items_processed() + kLines);
  state.SetBytesProcessed(state.bytes_processed() + bytes);
}

void LogOurs(benchmark::State &state) {
  std::string const path = BenchFile("zq.log");
  for (auto _ : state) {
    std::remove(path.c_str());
    ZQLogger logger(0);
    ZQLogHandler *file = ZQLogFileHandler::Create(path.c_str());
    logger.AddHandler("file", file);
    LogLines(state, [&](char const *line, int) { logger.Info(line); });
  }
  std::remove(path.c_str());
}

void LogSpdlog(benchmark::State &state) {
  std::string const path = BenchFile("spdlog.log");
  for (auto _ : state) {
    std::remove(path.c_str());
    auto sink = std::make_shared<spdlog::sinks::basic_file_sink_st>(path, true);
    spdlog::logger logger("bench", sink);
    logger.set_pattern("%v");
    logger.set_level(spdlog::level::trace);
    logger.flush_on(spdlog::level::trace);
    LogLines(state, [&](char const *line, int length) {
      logger.log(spdlog::level::info, spdlog::string_view_t(line, static_cast<std::size_t>(length)));
    });
  }
  std::remove(path.c_str());
}

} // namespace

int main(int argc, char **argv) {
  benchmark::RegisterBenchmark("FileLogLines/zq", LogOurs)->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark("FileLogLines/spdlog", LogSpdlog)->Unit(benchmark::kMillisecond);
  return zqbench::RunWithRatios(argc, argv);
}
