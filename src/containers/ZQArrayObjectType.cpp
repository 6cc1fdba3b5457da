#include <zqcore/containers/ZQArrayObjectType.h>
#include <zqcore/strings/ZQString.h>

namespace Velmora::Tessara::ZQ::Core {

template <typename T, typename I> ZQArrayObjectType<T, I>::ZQArrayObjectType() : ZQArray<T, I>() {}

template class ZQArrayObjectType<ZQString, long long>;

} // namespace Velmora::Tessara::ZQ::Core
