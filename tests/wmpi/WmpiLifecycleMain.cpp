// The layer before MPI is up and after it has ended: calls give error statuses and never
// reach MPI. Exits with the number of failed checks.
#include <zqcore/wmpi.h>

#include <mpi.h>

#include <cstdio>

namespace {

int failures = 0;

void Check(bool ok, char const *what) {
  if (!ok) {
    std::printf("FAILED: %s\n", what);
    ++failures;
  }
}

void CheckRefusedWithoutMpi(unsigned long long comm, char const *when) {
  int flag = 1, size = 0, length = -1;
  char text[WMPI_MAX_ERROR_STRING];
  unsigned long long request = WMPI_REQUEST_NULL;
  Check(WMPI_Initialized(&flag) == 0 && flag == 0, when);
  Check(WMPI_Comm_size(comm, &size) != 0, when);
  Check(WMPI_Error_string(1, text, &length) != 0 && length == 0, when);
  Check(WMPI_Waitall(1, &request, nullptr) != 0, when);
}

} // namespace

int main(int argc, char **argv) {
  CheckRefusedWithoutMpi(WMPI_COMM_WORLD, "before MPI_Init");
  MPI_Init(&argc, &argv);
  int flag = 0;
  Check(WMPI_Initialized(&flag) == 0 && flag == 1, "initialized flag while running");
  unsigned long long comm = WMPI_COMM_NULL;
  Check(WMPI_Comm_dup(WMPI_COMM_WORLD, &comm) == 0, "duplicate while running");
  MPI_Finalize();
  CheckRefusedWithoutMpi(comm, "after MPI_Finalize");
  Check(WMPI_Comm_free(&comm) != 0, "free after MPI_Finalize");
  std::printf("%d failed checks\n", failures);
  return failures;
}
