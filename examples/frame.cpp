// The frame: build tables and the context's error stack.
#include "HostExample.h"

#include <cstdio>

namespace HostExample {

void PrintBuildTables() {
  std::printf("ZQCore %s (version code %d, release %s)\n", zq::VersionInfo::GetVersionInfo(),
              zq::VersionInfo::GetVersion(), zq::VersionInfo::GetVelmoraRelease());
  std::printf("  build:  %s %s, %s, revision %s (%s), branch %s\n", zq::BuildInfo::GetBuildDate(),
              zq::BuildInfo::GetBuildTime(), zq::BuildInfo::GetConfigurationName(), zq::BuildInfo::GetGitRevision(),
              zq::BuildInfo::GetBuildID(), zq::BuildInfo::GetGitBranch());
  std::printf("  config: HDF5 %d, MPI %d, Relayport %d, DRXUnits %d, Xerces %d\n", zq::Config::IsWithHDF5(),
              zq::Config::IsWithMPI(), zq::Config::IsWithRelayport(), zq::Config::IsWithDRXUnits(),
              zq::Config::IsWithXerces());
}

// Pushes a few messages the way library calls report failures, then reads them back.
void ExerciseErrorStack(zq::ZQContext &context, int rank) {
  zq::ZQErrorStack &stack = context.GetErrorStack();
  stack.Clear();
  zq::ZQResult result(static_cast<long long>(zq::Types::StatusCode_t::OutOfRangeError));
  zq::ZQString message("rank ");
  message.Add(rank, nullptr);
  message += ": value out of range, status ";
  message += zq::Types::StatusCodeToString(static_cast<zq::Types::StatusCode_t>(result.GetStatusCode()));
  stack(message);
  stack(L"wide message: \u00e9l\u00e9ment \u2192 UTF-8");
  std::printf("[rank %d] %s; the error stack holds %lld messages, newest first:\n", rank,
              result.ToString(nullptr).c_str(), stack.GetNMsg());
  while (!stack.IsEmpty()) {
    std::printf("[rank %d]   %s\n", rank, stack.Pop().c_str());
  }
}

} // namespace HostExample
