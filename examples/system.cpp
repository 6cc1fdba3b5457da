// System services: each rank digests the HDF5 file it wrote, through the file utilities and
// SHA-1; a system monitor logs each rank's memory use and run time.
#include "HostExample.h"

#include <cstdio>
#include <string>
#include <vector>

namespace HostExample {

namespace {

// Pops and prints what the library pushed on the stack.
void PrintErrors(zq::ZQContext &context, int rank) {
  while (!context.GetErrorStack().IsEmpty()) {
    std::printf("[rank %d]   error: %s\n", rank, context.GetErrorStack().Pop().c_str());
  }
}

} // namespace

void DigestAndRemoveFile(zq::ZQContext &context, int rank, std::string const &path) {
  char const *name = path.c_str();
  long long size = 0;
  if (!zq::ZQFileUtil::GetSize(&context, name, size, true)) {
    std::printf("[rank %d] cannot digest %s\n", rank, name);
    PrintErrors(context, rank);
    return;
  }
  std::vector<unsigned char> bytes(static_cast<std::size_t>(size));
  zq::ZQFileUtil::Read(&context, name, size, bytes.data(), true);
  zq::ZQSHA1 const ofFile(&context, name);
  zq::ZQSHA1 const ofBytes(bytes.data(), size);
  std::printf("[rank %d] %s: %lld bytes, SHA-1 %s (of the bytes read: %s)\n", rank, name, size,
              ofFile.ToString(nullptr).c_str(),
              ofFile.ToString(nullptr) == ofBytes.ToString(nullptr) ? "same" : "DIFFERS");
  zq::ZQFileUtil::Remove(&context, name, true);
  PrintErrors(context, rank);
}

// The monitor has no logger of its own: its lines go to every logger of the context's
// registry, the console and, once there is one, the rank's log file.
zq::ZQSystemMonitor StartMonitor(zq::ZQContext &context, int rank) {
  std::string const prefix = "[rank " + std::to_string(rank) + "] ";
  context.GetLogging().SetPrefix(prefix.c_str());
  zq::ZQSystemMonitor monitor(&context);
  monitor.Initialize();
  return monitor;
}

} // namespace HostExample
