// ZQArrayIterator: the state of a walk over an array that may have capacity gaps.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>

#include <type_traits>

namespace Velmora::Tessara::ZQ::Core {

/// A snapshot of an array's shape and data pointer, taken when the iterator is made:
/// later changes of the array's shape do not reach it. `T` may be const-qualified.
template <typename T, typename I> class ZQCORE_EXPORT ZQArrayIterator {
public:
  /// The element type without const, the one of the array walked.
  using Element = std::remove_const_t<T>;

  /// Zeroes every field.
  virtual ~ZQArrayIterator();

protected:
  /// Takes the array's rank, capacities, sizes and data, with all indexes at 0. An array
  /// without used elements gives no data: the walk is over before it starts.
  explicit ZQArrayIterator(ZQArray<Element, I> const &array);
  ZQArrayIterator(ZQArrayIterator const &other) = default;
  ZQArrayIterator &operator=(ZQArrayIterator const &other) = default;

  I rank;
  I capacity[3];
  I size[3];
  I index[3];
  Element const *data;
};

} // namespace Velmora::Tessara::ZQ::Core
