// The instances the library uses, exported from it.
#include <zqcore/containers/ZQMapNativeTypes.h>

namespace Velmora::Tessara::ZQ::Core {

template class ZQMapNativeTypes<int, int>;
template class ZQMapNativeTypes<long long, long long>;

} // namespace Velmora::Tessara::ZQ::Core
