// SystemMonitor: the public face of ZQSystemMonitor.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>

namespace Velmora::Tessara::ZQ::Core {

/// Logs the process's memory figures and the time since the last sample through the
/// context's logging, one line per Log on every process. Owns its inner monitor; the
/// context is borrowed.
class ZQCORE_EXPORT SystemMonitor {
public:
  /// A monitor of `context`, which may be null (it then samples and writes nothing).
  SystemMonitor(Context *context = nullptr);
  /// Copies share the context and copy the rest.
  SystemMonitor(SystemMonitor const &other);
  SystemMonitor &operator=(SystemMonitor const &other);
  virtual ~SystemMonitor();

  Result SetContext(Context *context);
  /// The logger to write to; empty means every logger of the context.
  void SetLoggerName(String const &name);
  String GetLoggerName() const;
  /// The level of the lines; 0 until Initialize chooses INFO.
  void SetLogLevel(int level);
  int GetLogLevel() const;
  /// Starts sampling and logs the build date as a first line.
  Result Initialize();
  bool IsInitialized() const;
  /// One sample as one line, "[label] " first when the label is not empty.
  Result Log(String const &label);
  void Reset();
  String ToString(String const &prefix, String const &title) const;

private:
  void Copy(SystemMonitor const &other);

  ZQSystemMonitor *monitor;
};

} // namespace Velmora::Tessara::ZQ::Core
