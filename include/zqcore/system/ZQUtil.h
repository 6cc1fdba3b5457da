// ZQUtil: counting and the scaling of work done to a progress value.
#pragma once

#include <zqcore/ZQCoreExport.h>

namespace Velmora::Tessara::ZQ::Core {

/// Static helpers without shared state.
class ZQCORE_EXPORT ZQUtil {
public:
  static void IncrementByOne(int &value);
  static void IncrementByOne(long long &value);
  static void DecrementByOne(int &value);
  static void DecrementByOne(long long &value);
  /// `from` plus (to - from) times count / total, truncated toward zero. A total of 0
  /// counts as a fraction of 100, on purpose: clamped, that gives `to`. With `clamp` the
  /// value is held between `from` and `to`, which may count down.
  static int CountToProgress(long long count, long long total, int from, int to, bool clamp);
  /// The same with a fraction on the scale of 0 to 1 (0.5 is half way), not a percentage.
  static int PercentageToProgress(double fraction, int from, int to, bool clamp);
};

} // namespace Velmora::Tessara::ZQ::Core
