// System services: each rank writes its own output file, reads it back and prints its
// SHA-1 digest; a system monitor logs each rank's memory use and run time.
#include "HostExample.h"

#include <cstdio>
#include <string>
#include <vector>

namespace HostExample {

namespace {

// The rank's output: a few lines that differ from rank to rank.
std::string RankOutput(int rank, int nProcs) {
  std::string text;
  for (int line = 0; line < 4; ++line) {
    text += "rank " + std::to_string(rank) + " of " + std::to_string(nProcs) + ", line " + std::to_string(line) + "\n";
  }
  return text;
}

// Pops and prints what the library pushed on the stack.
void PrintErrors(zq::ZQContext &context, int rank) {
  while (!context.GetErrorStack().IsEmpty()) {
    std::printf("[rank %d]   error: %s\n", rank, context.GetErrorStack().Pop().c_str());
  }
}

} // namespace

void DigestOwnOutput(zq::ZQContext &context, int rank) {
  int const nProcs = zq::ZQContext::GetNProcs(&context);
  zq::ZQString tmp;
  if (!zq::ZQOSUtil::GetEnv(&context, "TMPDIR", tmp)) {
    tmp = "/tmp";
  }
  zq::ZQString const directory = zq::ZQFileUtil::JoinPath(&context, tmp, "zq_host_example/output");
  if (!zq::ZQFileUtil::IsExistent(&context, directory.c_str())) {
    // Ranks race to create the directory; one that loses finds it there.
    zq::ZQFileUtil::MakeDir(&context, directory, true);
  }
  zq::ZQString const name =
      zq::ZQFileUtil::JoinPath(&context, directory, ("rank" + std::to_string(rank) + ".txt").c_str());

  std::string const output = RankOutput(rank, nProcs);
  std::FILE *file = zq::ZQFileUtil::OpenFile(&context, name.c_str(), "wb", 0);
  if (file == nullptr) {
    std::printf("[rank %d] cannot write %s\n", rank, name.c_str());
    PrintErrors(context, rank);
    return;
  }
  std::fwrite(output.data(), 1, output.size(), file);
  std::fclose(file);

  long long size = 0;
  zq::ZQFileUtil::GetSize(&context, name.c_str(), size, true);
  std::vector<unsigned char> bytes(static_cast<std::size_t>(size));
  zq::ZQFileUtil::Read(&context, name.c_str(), size, bytes.data(), true);
  zq::ZQSHA1 const ofFile(&context, name.c_str());
  zq::ZQSHA1 const ofBytes(bytes.data(), size);
  std::printf("[rank %d] %s: %lld bytes, SHA-1 %s (read back: %s)\n", rank, name.c_str(), size,
              ofFile.ToString(nullptr).c_str(),
              ofFile.ToString(nullptr) == ofBytes.ToString(nullptr) ? "same" : "DIFFERS");
  zq::ZQFileUtil::Remove(&context, name.c_str(), true);
  PrintErrors(context, rank);
}

// The monitor writes through a logger of its own whose lines carry the rank.
zq::ZQSystemMonitor StartMonitor(zq::ZQContext &context, int rank) {
  std::string const prefix = "[rank " + std::to_string(rank) + "] ";
  context.GetLogging().GetLogger("monitor", "")->SetPrefix(prefix.c_str());
  zq::ZQSystemMonitor monitor(&context);
  monitor.SetLoggerName("monitor");
  monitor.Initialize();
  return monitor;
}

} // namespace HostExample
