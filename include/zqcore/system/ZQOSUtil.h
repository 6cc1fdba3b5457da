// ZQOSUtil: the process id and the environment.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>

namespace Velmora::Tessara::ZQ::Core {

/// Static, local queries of the operating system; no shared state.
class ZQCORE_EXPORT ZQOSUtil {
public:
  /// The id of this process.
  static int GetPID();
  /// Clears `value`, then gives the variable's value and true if `name` is set (a set but
  /// empty variable included), false otherwise. A null name is the empty name. Reports
  /// nothing; the context is not used.
  static bool GetEnv(ZQContext *context, char const *name, ZQString &value);
  /// As above, with the name transcoded to UTF-8 first.
  static bool GetEnv(ZQContext *context, wchar_t const *name, ZQString &value);
};

} // namespace Velmora::Tessara::ZQ::Core
