// Process id and environment look-ups.
#include <zqcore/system/ZQOSUtil.h>

#include <zqcore/strings/ZQString.h>

#include <cstdlib>
#include <unistd.h>

namespace Velmora::Tessara::ZQ::Core {

int ZQOSUtil::GetPID() { return static_cast<int>(getpid()); }

bool ZQOSUtil::GetEnv(ZQContext *, char const *name, ZQString &value) {
  value.Clear();
  char const *found = std::getenv(name != nullptr ? name : "");
  if (found == nullptr) {
    return false;
  }
  value = found;
  return true;
}

bool ZQOSUtil::GetEnv(ZQContext *context, wchar_t const *name, ZQString &value) {
  return GetEnv(context, ZQString(name).c_str(), value);
}

} // namespace Velmora::Tessara::ZQ::Core
