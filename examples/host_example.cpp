// An example host program: brings MPI up, starts ZQCore, shows how the library was built,
// uses its context's error stack, reports each rank's place in the job and passes a packed
// buffer around the ring of ranks.
#include <zqcore/ZQCore.h>

#include <mpi.h>

#include <cstdio>
#include <string>

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
  std::printf("[rank %d] %s; the error stack holds %lld messages, newest first:\n", rank,
              result.ToString(nullptr).c_str(), stack.GetNMsg());
  while (!stack.IsEmpty()) {
    std::printf("[rank %d]   %s\n", rank, stack.Pop().c_str());
  }
}

// Each rank packs a record for the next rank (its rank, a text and three numbers) and
// unpacks the one that the previous rank sent: a full exchange, so the receiver needs no
// size in advance.
void PassAroundTheRing(zq::ZQMPT &mpt) {
  int const rank = mpt.GetProcRank();
  int const nProcs = mpt.GetNProcs();
  int const next = (rank + 1) % nProcs;
  int const previous = (rank + nProcs - 1) % nProcs;

  mpt.InitReceiveBuffer(previous, 0);
  mpt.NBReceiveBuffer(previous, false);

  std::string text = "greetings from rank " + std::to_string(rank);
  long long textSize = static_cast<long long>(text.size());
  double values[3] = {rank + 0.25, rank * 2.0, 100.0 - rank};
  int sender = rank;
  mpt.InitSendBuffer(next, 0);
  mpt.Pack(&sender, 1);
  mpt.Pack(&textSize, 1);
  mpt.Pack(text.data(), textSize);
  mpt.Pack(values, 3);
  mpt.NBSendBuffer(next, false);

  mpt.WaitReceiveBuffer(previous, false);
  int from = -1;
  long long receivedSize = 0;
  mpt.Unpack(&from, 1);
  mpt.Unpack(&receivedSize, 1);
  std::string received(static_cast<std::size_t>(receivedSize), '\0');
  mpt.Unpack(received.data(), receivedSize);
  double numbers[3] = {};
  mpt.Unpack(numbers, 3);
  mpt.WaitSendBuffer(next, false);

  std::printf("[rank %d] received from rank %d: \"%s\" and %g, %g, %g\n", rank, from, received.c_str(), numbers[0],
              numbers[1], numbers[2]);
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
  std::printf("[rank %d] process %d of %d; communicator '%s' has %d processes, this one is rank %d\n", rank, rank + 1,
              nProcs, mpt.GetName(), mpt.GetNProcs(), mpt.GetProcRank());
  ExerciseErrorStack(*context, rank);
  PassAroundTheRing(mpt);

  zq::API::Finalize();
  MPI_Finalize();
  return 0;
}
