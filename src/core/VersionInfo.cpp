#include <zqcore/core/VersionInfo.h>

#define ZQ_STRINGIFY_VALUE(x) #x
#define ZQ_STRINGIFY(x) ZQ_STRINGIFY_VALUE(x)

namespace Velmora::Tessara::ZQ::Core {

char const *const VersionInfo::__VELMORA_RELEASE_22_2__ = "22.2";

int VersionInfo::GetMajorVersion() { return ZQ_VERSION_MAJOR; }

int VersionInfo::GetMinorVersion() { return ZQ_VERSION_MINOR; }

int VersionInfo::GetMicroVersion() { return ZQ_VERSION_MICRO; }

int VersionInfo::GetVersion() { return (ZQ_VERSION_MAJOR << 16) | (ZQ_VERSION_MINOR << 8) | ZQ_VERSION_MICRO; }

char const *VersionInfo::GetVersionInfo() {
  return ZQ_STRINGIFY(ZQ_VERSION_MAJOR) "." ZQ_STRINGIFY(ZQ_VERSION_MINOR) "." ZQ_STRINGIFY(ZQ_VERSION_MICRO);
}

char const *VersionInfo::GetVelmoraRelease() { return __VELMORA_RELEASE_22_2__; }

} // namespace Velmora::Tessara::ZQ::Core
