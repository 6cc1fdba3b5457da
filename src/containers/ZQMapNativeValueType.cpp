// The instances the library uses, exported from it.
#include <zqcore/containers/ZQMapNativeValueType.h>
#include <zqcore/strings/ZQString.h>

namespace Velmora::Tessara::ZQ::Core {

template class ZQMapNativeValueType<ZQString, int>;
template class ZQMapNativeValueType<ZQString, long long>;

} // namespace Velmora::Tessara::ZQ::Core
