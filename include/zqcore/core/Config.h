// Config: which optional parts this build of the library contains.
#pragma once

#include <zqcore/ZQCoreExport.h>

namespace Velmora::Tessara::ZQ::Core {

/// Static answers for this build.
class ZQCORE_EXPORT Config {
public:
  static bool IsWithHDF5();
  static bool IsWithMPI();
  static bool IsWithRelayport();
  static bool IsWithDRXUnits();
  static bool IsWithXerces();
  /// By name, ignoring surrounding white space and case; false for an unknown name.
  static bool IsWith(char const *feature);
  static bool IsWith(wchar_t const *feature);
  static char const *VELMORA_RELEASE();
};

} // namespace Velmora::Tessara::ZQ::Core
