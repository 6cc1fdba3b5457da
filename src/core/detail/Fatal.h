// The library's one way of giving up, and the guarded narrowing of 64-bit counts.
#pragma once

#include <climits>

namespace Velmora::Tessara::ZQ::Core::detail {

/// Writes the fatal banner to standard output, with a line end and a flush.
void WriteFatalBanner();

/// Banner, then ZQ_Abort(-1): ends the whole job.
[[noreturn]] void FatalError();

/// A count for a 32-bit interface; a value that does not fit ends the job.
inline int NarrowToInt32(long long count) {
  if (count < INT_MIN || count > INT_MAX) {
    FatalError();
  }
  return static_cast<int>(count);
}

} // namespace Velmora::Tessara::ZQ::Core::detail
