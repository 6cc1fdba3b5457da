// An example host program: brings MPI up, starts ZQCore, shows how the library was built,
// uses its context's error stack and reports each rank's place in the job.
#include <zqcore/ZQCore.h>

#include <mpi.h>

#include <cstdio>

namespace zq = Velmora::Tessara::ZQ::Core;

namespace {

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
  std::printf("[rank %d] %s holds %lld messages; newest first:\n", rank, result.ToString(nullptr).c_str(),
              stack.GetNMsg());
  while (!stack.IsEmpty()) {
    std::printf("[rank %d]   %s\n", rank, stack.Pop().c_str());
  }
}

} // namespace

int main(int argc, char **argv) {
  MPI_Init(&argc, &argv);

  zq::API::Unlock(nullptr);
  zq::API::Initialize(&argc, &argv);
  zq::ZQContext *context = zq::ZQAPI::GetContext();
  int const rank = zq::ZQContext::GetProcRank(context);
  int const nProcs = zq::ZQContext::GetNProcs(context);

  if (rank == 0) {
    PrintBuildTables();
  }
  zq::ZQMPT &mpt = context->GetMPT();
  mpt.SetName("host");
  std::printf("[rank %d] process %d of %d; communicator '%s' has %d processes, this one is rank %d\n", rank,
              rank + 1, nProcs, mpt.GetName(), mpt.GetNProcs(), mpt.GetProcRank());
  ExerciseErrorStack(*context, rank);

  zq::API::Finalize();
  MPI_Finalize();
  return 0;
}
