#include <zqcore/containers/ZQArray.h>
#include <zqcore/containers/ZQArrayForwardIterator.h>
#include <zqcore/strings/ZQString.h>

#include "core/detail/Fatal.h"

namespace Velmora::Tessara::ZQ::Core {

template <typename T, typename I>
ZQArrayForwardIterator<T, I>::ZQArrayForwardIterator(ZQArray<Element, I> const &array) : ZQArrayIterator<T, I>(array) {}

// Positions come from the capacities, as in the array itself.
template <typename T, typename I> T const &ZQArrayForwardIterator<T, I>::operator*() const {
  I const *at = this->index;
  I const *strides = this->capacity;
  switch (this->rank) {
  case 1:
    return this->data[at[0]];
  case 2:
    return this->data[at[0] * strides[1] + at[1]];
  case 3:
    return this->data[(at[0] * strides[1] + at[1]) * strides[2] + at[2]];
  default:
    detail::FatalError();
  }
}

// The walk follows the sizes: an index that reaches its size goes back to 0 and carries
// into the dimension above; the carry out of the first dimension ends the walk.
template <typename T, typename I> ZQArrayForwardIterator<T, I> &ZQArrayForwardIterator<T, I>::operator++() {
  I const dimensions = this->rank;
  if (dimensions < 1 || dimensions > 3) {
    detail::FatalError();
  }
  for (I d = dimensions - 1; d >= 0; --d) {
    if (++this->index[d] < this->size[d]) {
      return *this;
    }
    this->index[d] = 0;
  }
  this->data = nullptr;
  return *this;
}

template class ZQArrayForwardIterator<int const, long long>;
template class ZQArrayForwardIterator<long long const, long long>;
template class ZQArrayForwardIterator<double const, long long>;
template class ZQArrayForwardIterator<ZQString const, long long>;
template class ZQArrayForwardIterator<double, long long>;

} // namespace Velmora::Tessara::ZQ::Core
