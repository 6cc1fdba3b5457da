// ZQArrayObjectType: an array of objects with constructors.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/containers/ZQArray.h>

namespace Velmora::Tessara::ZQ::Core {

/// An array of objects (ZQString): every element of a new block is default-constructed,
/// and all of them are destroyed with the block's last reference. Copy construction and
/// assignment are deep; the virtual Copy shares.
template <typename T, typename I> class ZQCORE_EXPORT ZQArrayObjectType : public ZQArray<T, I> {
public:
  /// Rank 0, no block.
  ZQArrayObjectType();
};

} // namespace Velmora::Tessara::ZQ::Core
