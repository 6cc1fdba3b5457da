// The process-ending exports and the fatal banner.
#include <zqcore/core/ZQExports.h>
#include <zqcore/parallel/ZQMPT.h>
#include <zqcore/wmpi.h>

#include "core/detail/Fatal.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <iostream>

using Velmora::Tessara::ZQ::Core::ZQMPT;

namespace Velmora::Tessara::ZQ::Core::detail {

void WriteFatalBanner() {
  std::fputs("+++ FATAL ERROR +++ +++ FATAL ERROR +++ +++ FATAL ERROR +++ +++ FATAL ERROR +++ \n", stdout);
  std::fflush(stdout);
}

void FatalError() {
  WriteFatalBanner();
  ZQ_Abort(-1);
}

} // namespace Velmora::Tessara::ZQ::Core::detail

namespace {

// Puts the text of errno in a wide buffer and writes the buffer's address, not its text:
// only the exit code is meant to be relied on; the text is for SetMsgFromErrno.
void WriteErrnoLine() {
  char narrow[1024];
  char const *text = strerror_r(errno, narrow, sizeof narrow);
  wchar_t wide[1024];
  std::mbstate_t state{};
  if (std::mbsrtowcs(wide, &text, 1024, &state) == static_cast<std::size_t>(-1)) {
    wide[0] = L'\0';
  }
  wide[1023] = L'\0';
  std::cout << static_cast<void const *>(wide) << std::endl;
}

} // namespace

extern "C" {

void ZQ_Abort(int code) {
  if (!ZQMPT::_isInitialized) {
    std::exit(code);
  }
  ZQMPT::_isInitialized = false;
  int const status = WMPI_Abort(WMPI_COMM_WORLD, code);
  if (status == 0) {
    std::exit(code);
  }
  ZQMPT::HandleError(status);
}

void ZQ_AbortWithErrno(int code) {
  WriteErrnoLine();
  ZQ_Abort(code);
}

void ZQ_Exit(int code) {
  if (!ZQMPT::_isInitialized) {
    std::exit(code);
  }
  ZQMPT::_isInitialized = false;
  int flag = 0;
  int const status = WMPI_Initialized(&flag);
  if (status == 0) {
    std::exit(code);
  }
  // The mark is already clear, so the tail ends with exit(-1) without aborting the job.
  ZQMPT::HandleError(status);
}

void ZQ_ExitWithErrno(int code) {
  WriteErrnoLine();
  ZQ_Exit(code);
}

} // extern "C"
