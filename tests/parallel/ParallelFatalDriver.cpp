// Process-ending cases of the message-passing frame, run one per process by ctest.
#include <zqcore/core/ZQExports.h>
#include <zqcore/parallel/ZQMPT.h>

#include "FatalDriver.h"

#include <cerrno>

using Velmora::Tessara::ZQ::Core::ZQMPT;

namespace {

// Clears the started mark, sets errno for the variants that print it, then ends the process.
std::function<void()> AfterFinalize(void (*end)(int), int code) {
  return [end, code] {
    ZQMPT::Finalize();
    errno = ENOENT;
    end(code);
  };
}

} // namespace

int main(int argc, char **argv) {
  zqtest::FatalCases const cases = {
      // With the started mark cleared, the exports are plain exits with the code.
      {"abort_after_finalize", AfterFinalize(ZQ_Abort, 3)},
      {"exit_after_finalize", AfterFinalize(ZQ_Exit, 4)},
      {"abort_with_errno_after_finalize", AfterFinalize(ZQ_AbortWithErrno, 5)},
      {"exit_with_errno_after_finalize", AfterFinalize(ZQ_ExitWithErrno, 6)},
      // With the mark set, ZQ_Abort ends the whole job through the layer.
      {"abort_started", [] { ZQ_Abort(7); }},
      {"abort_world", [] { ZQMPT::AbortWorld(8); }},
      {"exit_started", [] { ZQ_Exit(9); }},
      {"abort_own_communicator", [] { ZQMPT().Abort(10); }},
      // A failing call of the layer takes the checked-call tail: banner, abort with -1.
      {"bad_communicator_handle", [] { ZQMPT mpt(12345ULL); }},
      // Copying is refused once message passing is marked as stopped.
      {"copy_after_finalize",
       [] {
         ZQMPT source;
         ZQMPT::Finalize();
         ZQMPT copy(source);
       }},
  };
  return zqtest::RunFatalCase(argc, argv, cases);
}
