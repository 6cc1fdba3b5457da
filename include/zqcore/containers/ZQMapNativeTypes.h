// ZQMapNativeTypes: a map with plain keys and plain values.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/containers/ZQMap.h>

namespace Velmora::Tessara::ZQ::Core {

/// A ZQMap whose keys and values are plain values; it adds nothing to ZQMap.
template <typename K, typename V> class ZQCORE_EXPORT ZQMapNativeTypes : public ZQMap<K, V> {
public:
  using ZQMap<K, V>::ZQMap;
  /// Empty.
  ZQMapNativeTypes() = default;
};

} // namespace Velmora::Tessara::ZQ::Core
