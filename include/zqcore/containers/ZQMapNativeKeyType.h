// ZQMapNativeKeyType: a map with plain keys and object values.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/containers/ZQMap.h>

namespace Velmora::Tessara::ZQ::Core {

/// A ZQMap whose keys are plain values and whose values are objects; it adds nothing to ZQMap.
template <typename K, typename V> class ZQCORE_EXPORT ZQMapNativeKeyType : public ZQMap<K, V> {
public:
  using ZQMap<K, V>::ZQMap;
  /// Empty.
  ZQMapNativeKeyType() = default;
};

} // namespace Velmora::Tessara::ZQ::Core
