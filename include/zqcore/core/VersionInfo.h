// VersionInfo: the library's version numbers.
#pragma once

#include <zqcore/ZQCoreExport.h>

namespace Velmora::Tessara::ZQ::Core {

class ZQCORE_EXPORT VersionInfo {
public:
  static int GetMajorVersion();
  static int GetMinorVersion();
  static int GetMicroVersion();
  /// Major in bits 16 and up, minor in bits 8 to 15, micro in bits 0 to 7.
  static int GetVersion();
  /// "major.minor.micro".
  static char const *GetVersionInfo();
  static char const *GetVelmoraRelease();

  static char const *const __VELMORA_RELEASE_22_2__;
};

} // namespace Velmora::Tessara::ZQ::Core
