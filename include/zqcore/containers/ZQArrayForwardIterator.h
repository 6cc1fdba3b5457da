// ZQArrayForwardIterator: walks the used elements of an array in storage order.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/containers/ZQArrayIterator.h>

namespace Velmora::Tessara::ZQ::Core {

/// Visits every used element once, last dimension fastest, and skips the gaps between
/// sizes and capacities:
///   for (ZQArrayForwardIterator<double const, long long> it(array); it.IsValid(); ++it) use(*it);
/// A rank outside 1 to 3 at dereference or advance is fatal.
template <typename T, typename I> class ZQCORE_EXPORT ZQArrayForwardIterator : public ZQArrayIterator<T, I> {
public:
  using Element = typename ZQArrayIterator<T, I>::Element;

  /// Starts at the first element; `array` must outlive the walk and keep its block.
  explicit ZQArrayForwardIterator(ZQArray<Element, I> const &array);

  /// False once every used element has been visited, and at once for an empty array.
  bool IsValid() const { return this->data != nullptr; }
  /// The current element; only while IsValid().
  T const &operator*() const;
  /// Moves to the next used element, or ends the walk after the last one.
  ZQArrayForwardIterator &operator++();
};

} // namespace Velmora::Tessara::ZQ::Core
