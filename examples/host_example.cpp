// An example host program: brings MPI up, starts ZQCore and shows each capability in turn,
// on every rank of the job. The sections live in one source file each (HostExample.h).
#include "HostExample.h"

#include <mpi.h>

#include <cstdio>
#include <string>

namespace zq = Velmora::Tessara::ZQ::Core;
using namespace HostExample;

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
  zq::ZQSystemMonitor monitor = StartMonitor(*context, rank);
  zq::ZQMPT &mpt = context->GetMPT();
  mpt.SetName("host");
  std::printf("[rank %d] process %d of %d; communicator '%s' has %d processes, this one is rank %d\n", rank, rank + 1,
              nProcs, mpt.GetName(), mpt.GetNProcs(), mpt.GetProcRank());
  ExerciseErrorStack(*context, rank);
  LogThroughTheContext(*context);
  ShowClocksAndMachine(rank);
  PassAroundTheRing(mpt);
  ShowValuesWithUnits(argc, argv, *context, rank);
  DivideTheWork(*context);
  ExchangeWithAPattern(*context);
  EvaluateSurfaceOnRanks(*context, rank, nProcs);
  std::string const hdf5File = StoreAndReadBackHDF5(*context, rank, nProcs);
  DigestAndRemoveFile(*context, rank, hdf5File);
  monitor.Log("end of the host example");

  zq::API::Finalize();
  MPI_Finalize();
  return 0;
}
