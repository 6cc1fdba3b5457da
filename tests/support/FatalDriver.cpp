#include "FatalDriver.h"

#include <mpi.h>

#include <cstdio>

namespace zqtest {

int RunFatalCase(int argc, char **argv, FatalCases const &cases) {
  MPI_Init(&argc, &argv);
  auto const found = argc > 1 ? cases.find(argv[1]) : cases.end();
  if (found == cases.end()) {
    std::printf("unknown case; known cases:\n");
    for (auto const &entry : cases) {
      std::printf("  %s\n", entry.first.c_str());
    }
    MPI_Finalize();
    return 2;
  }
  found->second();
  std::printf("fatal case returned\n");
  std::fflush(stdout);
  MPI_Finalize();
  return 0;
}

} // namespace zqtest
