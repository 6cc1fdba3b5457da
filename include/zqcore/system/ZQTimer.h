// ZQTimer: elapsed time on the monotonic clock.
#pragma once

#include <zqcore/ZQCoreExport.h>

namespace Velmora::Tessara::ZQ::Core {

/// Measures from its start, in nanoseconds of the monotonic clock. One thread.
class ZQCORE_EXPORT ZQTimer {
public:
  /// Starts at once.
  ZQTimer();
  ZQTimer(ZQTimer const &other);
  ZQTimer &operator=(ZQTimer const &other);
  virtual ~ZQTimer();

  /// Starts again.
  void Reset();
  /// Seconds since the start. With `reset` the timer starts again on a second reading of
  /// the clock, so the moment between the two readings belongs to no interval.
  double GetElapsedTimeInSeconds(bool reset);

private:
  void Copy(ZQTimer const &other);

  long long start;
};

} // namespace Velmora::Tessara::ZQ::Core
