// ZQMapObjectTypes: a map with object keys and object values.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/containers/ZQMap.h>

namespace Velmora::Tessara::ZQ::Core {

/// A ZQMap whose keys and values are objects (ZQString keys, ZQString, set or map values); it adds nothing to ZQMap.
template <typename K, typename V> class ZQCORE_EXPORT ZQMapObjectTypes : public ZQMap<K, V> {
public:
  using ZQMap<K, V>::ZQMap;
  /// Empty.
  ZQMapObjectTypes() = default;
};

} // namespace Velmora::Tessara::ZQ::Core
