// The XML layer's text type, empty in this build.
#include <zqcore/strings/ZQXercesString.h>

#include <zqcore/strings/ZQString.h>

namespace Velmora::Tessara::ZQ::Core {

ZQXercesString::ZQXercesString(char const *) {}

void ZQXercesString::AsZQString(ZQString &out, bool) const { out.Clear(); }

void const *ZQXercesString::AsNative() const { return nullptr; }

} // namespace Velmora::Tessara::ZQ::Core
