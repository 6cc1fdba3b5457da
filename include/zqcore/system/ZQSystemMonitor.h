// ZQSystemMonitor: one log line per sample of the process's memory use and elapsed time.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/containers/ZQMapObjectTypes.h>
#include <zqcore/containers/ZQSetObjectType.h>
#include <zqcore/core/ZQCoreFwd.h>
#include <zqcore/core/ZQResult.h>
#include <zqcore/strings/ZQString.h>
#include <zqcore/system/ZQTimer.h>

namespace Velmora::Tessara::ZQ::Core {

/// Samples the memory figures of /proc/<pid>/status and the time since the last sample,
/// and writes them as one line through the context's logging: to the named logger, or to
/// every logger of the registry when no name is set. Each process writes its own line.
/// Without a context it samples and writes nothing. One thread per monitor.
class ZQCORE_EXPORT ZQSystemMonitor {
public:
  ZQSystemMonitor();
  /// The context is not owned; it may be null.
  explicit ZQSystemMonitor(ZQContext *context);
  /// The context is shared, the rest copied.
  ZQSystemMonitor(ZQSystemMonitor const &other);
  ZQSystemMonitor &operator=(ZQSystemMonitor const &other);
  virtual ~ZQSystemMonitor();

  /// Status 0.
  ZQResult SetContext(ZQContext *context);
  void SetLoggerName(ZQString const &name);
  ZQString const &GetLoggerName() const;
  /// The level of the lines; 0 means not chosen, and Initialize makes it INFO (20).
  void SetLogLevel(int level);
  int GetLogLevel() const;

  /// Chooses the level, switches a named logger on (giving it the monitor's level if it
  /// has none), restarts the timer, selects "VmPeak", "VmSize", "VmHWM", "VmRSS",
  /// "PeakWorkingSetSize", "WorkingSetSize" and "ElapsedTime", and logs the build date as a
  /// first line. The status is that of the line's sample.
  ZQResult Initialize();
  /// The names to report are chosen.
  bool IsInitialized() const;
  /// Takes one sample and logs it as "[label] name = value, ...", the brackets only with a
  /// label. A failed sample logs nothing and gives its status
  /// (SystemMonitorReadProcStatusError without a readable status file).
  ZQResult Log(ZQString const &label);
  /// Back to the defaults, without names or sample; the context stays.
  void Reset();
  /// The title line, then the logger name and a chosen level, each line after `prefix`;
  /// "<not initialized>" before Initialize.
  ZQString ToString(ZQString const &prefix, ZQString const &title) const;

protected:
  /// Replaces the sample: the memory figures and, when selected, the time since the last
  /// sample (which restarts the timer).
  ZQResult CollectMonitorData();
  /// Adds the selected lines of the process status file to the sample, as "key" to the
  /// text after the colon (colons dropped, white space stripped). With `report` a failure
  /// is pushed on the context's stack.
  ZQResult ReadProcStatusFile(bool report);
  void Copy(ZQSystemMonitor const &other);

private:
  bool IsSelected(ZQString const &name) const;

  ZQContext *context;
  ZQString loggerName;
  int logLevel;
  ZQTimer timer;
  ZQSetObjectType<ZQString> names;
  ZQMapObjectTypes<ZQString, ZQString> data;
};

} // namespace Velmora::Tessara::ZQ::Core
