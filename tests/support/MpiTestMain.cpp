// GoogleTest main for every test binary: MPI up first, rank 0 reports normally, other
// ranks report only their failures, and every rank exits with the worst result.
#include "MpiTestSupport.h"

#include <gtest/gtest.h>
#include <mpi.h>

#include <cstdio>

namespace {

class FailuresOnlyPrinter : public ::testing::EmptyTestEventListener {
public:
  explicit FailuresOnlyPrinter(int worldRank) : rank(worldRank) {}

  void OnTestPartResult(::testing::TestPartResult const &result) override {
    if (result.failed()) {
      std::printf("[rank %d] %s:%d: Failure\n%s\n", rank, result.file_name() ? result.file_name() : "?",
                  result.line_number(), result.summary());
      std::fflush(stdout);
    }
  }

private:
  int rank;
};

} // namespace

int main(int argc, char **argv) {
  MPI_Init(&argc, &argv);
  ::testing::InitGoogleTest(&argc, argv);

  int const rank = zqtest::WorldRank();
  if (rank != 0) {
    auto &listeners = ::testing::UnitTest::GetInstance()->listeners();
    delete listeners.Release(listeners.default_result_printer());
    listeners.Append(new FailuresOnlyPrinter(rank));
  }

  int const result = RUN_ALL_TESTS();
  int worst = 0;
  MPI_Allreduce(&result, &worst, 1, MPI_INT, MPI_MAX, MPI_COMM_WORLD);
  MPI_Finalize();
  return worst;
}
