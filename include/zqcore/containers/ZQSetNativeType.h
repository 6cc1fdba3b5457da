// ZQSetNativeType: a set of plain values.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/containers/ZQSet.h>

namespace Velmora::Tessara::ZQ::Core {

/// A ZQSet whose elements are plain values, such as int or long long; it adds nothing to ZQSet.
template <typename T> class ZQCORE_EXPORT ZQSetNativeType : public ZQSet<T> {
public:
  using ZQSet<T>::ZQSet;
  /// Empty.
  ZQSetNativeType() = default;
};

} // namespace Velmora::Tessara::ZQ::Core
