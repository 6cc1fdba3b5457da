// The instances the library uses, exported from it.
#include <zqcore/containers/ZQSet.h>
#include <zqcore/strings/ZQString.h>

namespace Velmora::Tessara::ZQ::Core {

template class ZQSet<ZQString>;
template class ZQSet<int>;
template class ZQSet<long long>;

} // namespace Velmora::Tessara::ZQ::Core
