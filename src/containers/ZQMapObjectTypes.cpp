// The instances the library uses, exported from it.
#include <zqcore/containers/ZQMapNativeKeyType.h>
#include <zqcore/containers/ZQMapObjectTypes.h>
#include <zqcore/containers/ZQSetNativeType.h>
#include <zqcore/strings/ZQString.h>

namespace Velmora::Tessara::ZQ::Core {

template class ZQMapObjectTypes<ZQString, ZQString>;
template class ZQMapObjectTypes<ZQString, ZQSetNativeType<int>>;
template class ZQMapObjectTypes<ZQString, ZQSetNativeType<long long>>;
template class ZQMapObjectTypes<ZQString, ZQMapNativeKeyType<long long, ZQString>>;

} // namespace Velmora::Tessara::ZQ::Core
