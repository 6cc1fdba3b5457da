// Logging across ranks through the context's registry, and the process and time services.
#include "HostExample.h"

#include <cstdio>
#include <fstream>
#include <string>

namespace HostExample {

namespace {

long long CountLines(char const *path) {
  std::ifstream in(path);
  long long lines = 0;
  for (std::string line; std::getline(in, line);) {
    ++lines;
  }
  return lines;
}

} // namespace

// The console is the registry's root logger, spoken to on rank 0; each rank also keeps a
// file of its own. A pushed error reaches both by itself, and so does a progress line.
void LogThroughTheContext(zq::ZQContext &context) {
  zq::ZQLogging &logging = context.GetLogging();
  zq::ZQMPT &mpt = context.GetMPT();
  int const rank = mpt.GetProcRank();
  logging.SetMPT(&mpt, false);
  zq::ZQString tag("[rank ");
  tag.Add(rank, "%d");
  tag += "] ";
  logging.SetPrefix(tag);

  // One file per rank: the handler appends "_proc<rank>" and labels every line.
  zq::ZQLogger *file = logging.GetLogger("per-rank file", "Logger");
  auto *fileHandler = zq::ZQLogFileHandler::Create("${ZQ_TMPDIR}/zq_host_example.log", &mpt);
  fileHandler->SetMPT(&mpt, true);
  zq::ZQString const fileName = fileHandler->GetFileName();
  zq::ZQLogHandler *handler = fileHandler;
  file->AddHandler("file", handler);
  file->SetLevel(static_cast<int>(zq::Types::LogLevel_t::DEBUG));

  zq::ZQLogger *console = logging.GetLogger("", "");
  console->Info("logging is bound to the job; the console speaks on rank 0", 0);
  file->Debug("debug detail goes to the file only");

  zq::ZQErrorStack &stack = context.GetErrorStack();
  stack.SetAutoLogMsg(true);
  stack("mesh region 7 has no cells (logged by the error stack itself)");
  stack.SetAutoLogMsg(false);
  stack.Clear();

  context.SetVerbosityLevel(1);
  zq::ZQAPI::ProgressCallback(100);
  logging.Flush();
  std::printf("[rank %d] %lld lines in %s\n", rank, CountLines(fileName.c_str()), fileName.c_str());
  // The handler keeps writing to the open file; removing its name keeps /tmp clean between runs.
  zq::ZQFileUtil::Remove(&context, fileName.c_str(), true);
}

// Clocks, the machine and the floating-point unit, told by rank 0.
void ShowClocksAndMachine(int rank) {
  zq::ZQTimer timer;
  zq::ZQString now;
  zq::ZQSysUtil::GetDateAndTime(now);
  long long nCPUs = 0;
  zq::ZQResult const status = zq::ZQSysUtil::GetNCPUs(nCPUs);
  zq::String controls;
  zq::Math::GetFloatingPointControls(controls);
  double const block[4] = {};
  zq::ZQString const alignment = zq::ZQSysUtil::MemoryAlignmentToString("a double array", block, false);
  int const progress = zq::ZQUtil::CountToProgress(3, 4, 0, 100, true);
  if (rank == 0) {
    std::printf("[rank %d] local time %s, %lld CPUs (%s)\n", rank, now.c_str(), nCPUs,
                status.ToString(nullptr).c_str());
    std::printf("[rank %d] floating-point controls: %s\n", rank, controls.c_str());
    std::printf("[rank %d] %s; 3 of 4 done is %d%%; this took %.6f s\n", rank, alignment.c_str(), progress,
                timer.GetElapsedTimeInSeconds(false));
  }
}

} // namespace HostExample
