#include "MpiTestSupport.h"

#include <mpi.h>

namespace zqtest {

int WorldRank() {
  int rank = 0;
  MPI_Comm_rank(MPI_COMM_WORLD, &rank);
  return rank;
}

int WorldSize() {
  int size = 1;
  MPI_Comm_size(MPI_COMM_WORLD, &size);
  return size;
}

bool AllRanks(bool ok) {
  int local = ok ? 1 : 0;
  int all = 0;
  MPI_Allreduce(&local, &all, 1, MPI_INT, MPI_LAND, MPI_COMM_WORLD);
  return all != 0;
}

} // namespace zqtest
