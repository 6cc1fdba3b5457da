// What curve and surface evaluation share: the degree limit and the copy to outputs.
#pragma once

#include "core/detail/Fatal.h"

namespace Velmora::Tessara::ZQ::Core::detail {

/// A degree beyond the tables is a bug in the caller, not a condition to report: the
/// fatal banner, then the end of the job. The test is signed and on the full 64 bits.
inline void RequireSplineDegree(long long degree) {
  if (degree > 31) {
    FatalError();
  }
}

/// Copies x, y, z to `out` when it is not null.
inline void CopyPointIfWanted(double const *from, double *out) {
  if (out != nullptr) {
    out[0] = from[0];
    out[1] = from[1];
    out[2] = from[2];
  }
}

} // namespace Velmora::Tessara::ZQ::Core::detail
