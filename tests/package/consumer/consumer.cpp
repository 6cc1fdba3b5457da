#include <zqcore/ZQCore.h>

#include <mpi.h>

#include <cstdio>

namespace zq = Velmora::Tessara::ZQ::Core;

int main(int argc, char **argv) {
  MPI_Init(&argc, &argv);
  zq::API::Unlock(nullptr);
  zq::API::Initialize(&argc, &argv);
  std::printf("ZQCore %s on %d process(es)\n", zq::VersionInfo::GetVersionInfo(),
              zq::ZQContext::GetNProcs(zq::ZQAPI::GetContext()));
  zq::API::Finalize();
  MPI_Finalize();
  return 0;
}
