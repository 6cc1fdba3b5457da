// The instances the library uses, exported from it.
#include <zqcore/containers/ZQMap.h>
#include <zqcore/containers/ZQMapNativeKeyType.h>
#include <zqcore/containers/ZQSetNativeType.h>
#include <zqcore/strings/ZQString.h>

namespace Velmora::Tessara::ZQ::Core {

template class ZQMap<ZQString, ZQString>;
template class ZQMap<int, int>;
template class ZQMap<long long, long long>;
template class ZQMap<ZQString, int>;
template class ZQMap<ZQString, long long>;
template class ZQMap<long long, ZQString>;
template class ZQMap<ZQString, ZQSetNativeType<int>>;
template class ZQMap<ZQString, ZQSetNativeType<long long>>;
template class ZQMap<ZQString, ZQMapNativeKeyType<long long, ZQString>>;

} // namespace Velmora::Tessara::ZQ::Core
