// The instances the library uses, exported from it.
#include <zqcore/containers/ZQSetObjectType.h>
#include <zqcore/strings/ZQString.h>

namespace Velmora::Tessara::ZQ::Core {

template class ZQSetObjectType<ZQString>;

} // namespace Velmora::Tessara::ZQ::Core
