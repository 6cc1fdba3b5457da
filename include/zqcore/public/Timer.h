// Timer: the public face of ZQTimer.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>

namespace Velmora::Tessara::ZQ::Core {

/// Elapsed time on the monotonic clock. Owns its inner timer; copies are independent.
class ZQCORE_EXPORT Timer {
public:
  /// Starts at once.
  Timer();
  /// Starts where `timer` started.
  Timer(ZQTimer const &timer);
  Timer(Timer const &other);
  Timer &operator=(Timer const &other);
  virtual ~Timer();

  void Reset();
  /// Seconds since the start; with `reset` the timer starts again.
  double GetElapsedTimeInSeconds(bool reset);
  ZQTimer *GetTimer();
  ZQTimer const *GetTimer() const;

private:
  void Copy(Timer const &other);

  ZQTimer *timer;
};

} // namespace Velmora::Tessara::ZQ::Core
