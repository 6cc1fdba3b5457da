// ZQArrayNativeType: an array of plain values, with the one growing append.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/containers/ZQArray.h>

namespace Velmora::Tessara::ZQ::Core {

/// An array of plain values (int, long long, float, double, unsigned char). New elements
/// are not cleared: they hold whatever the memory held. Copy construction and assignment
/// are deep; the virtual Copy shares.
template <typename T, typename I> class ZQCORE_EXPORT ZQArrayNativeType : public ZQArray<T, I> {
public:
  /// Rank 0, no block.
  ZQArrayNativeType();

  /// Appends at the end of a rank-1 (or rank-0) array. A full array grows by the growth
  /// step (16 when it is 0 or less) and never in proportion. Appending an element of this
  /// array's own full block is fatal, since the growth would leave it dangling.
  void Append(T const &value);
};

} // namespace Velmora::Tessara::ZQ::Core
