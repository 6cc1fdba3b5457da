// ZQSetObjectType: a set of objects.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/containers/ZQSet.h>

namespace Velmora::Tessara::ZQ::Core {

/// A ZQSet whose elements are objects, such as ZQString; it adds nothing to ZQSet.
template <typename T> class ZQCORE_EXPORT ZQSetObjectType : public ZQSet<T> {
public:
  using ZQSet<T>::ZQSet;
  /// Empty.
  ZQSetObjectType() = default;
};

} // namespace Velmora::Tessara::ZQ::Core
