// The instances the library uses, exported from it.
#include <zqcore/containers/ZQSetNativeType.h>

namespace Velmora::Tessara::ZQ::Core {

template class ZQSetNativeType<int>;
template class ZQSetNativeType<long long>;

} // namespace Velmora::Tessara::ZQ::Core
