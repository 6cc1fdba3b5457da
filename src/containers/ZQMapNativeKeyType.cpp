// The instances the library uses, exported from it.
#include <zqcore/containers/ZQMapNativeKeyType.h>
#include <zqcore/strings/ZQString.h>

namespace Velmora::Tessara::ZQ::Core {

template class ZQMapNativeKeyType<long long, ZQString>;

} // namespace Velmora::Tessara::ZQ::Core
