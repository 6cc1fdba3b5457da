// ZQMapNativeValueType: a map with object keys and plain values.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/containers/ZQMap.h>

namespace Velmora::Tessara::ZQ::Core {

/// A ZQMap whose keys are objects (ZQString) and whose values are plain values; it adds nothing to ZQMap.
template <typename K, typename V> class ZQCORE_EXPORT ZQMapNativeValueType : public ZQMap<K, V> {
public:
  using ZQMap<K, V>::ZQMap;
  /// Empty.
  ZQMapNativeValueType() = default;
};

} // namespace Velmora::Tessara::ZQ::Core
