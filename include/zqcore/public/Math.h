// Math: the state of the floating-point unit.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>

namespace Velmora::Tessara::ZQ::Core {

/// Static only.
class ZQCORE_EXPORT Math {
public:
  /// The names of the control flags set on this thread, joined by "|": flush of
  /// denormals, exception masks, rounding. The default state reads
  /// "_EM_INVALID|_EM_DENORMAL|_EM_ZERODIVIDE|_EM_OVERFLOW|_EM_UNDERFLOW|_EM_INEXACT".
  static void GetFloatingPointControls(String &text);
};

} // namespace Velmora::Tessara::ZQ::Core
