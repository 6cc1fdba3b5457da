#include <zqcore/containers/ZQArray.h>
#include <zqcore/containers/ZQArrayIterator.h>
#include <zqcore/strings/ZQString.h>

namespace Velmora::Tessara::ZQ::Core {

template <typename T, typename I>
ZQArrayIterator<T, I>::ZQArrayIterator(ZQArray<Element, I> const &array)
    : rank(array.GetRank()), capacity{}, size{}, index{0, 0, 0}, data(array.Size() > 0 ? array.GetData() : nullptr) {
  for (I d = 0; d < 3; ++d) {
    capacity[d] = array.GetCapacity(d);
    size[d] = array.GetSize(d);
  }
}

template <typename T, typename I> ZQArrayIterator<T, I>::~ZQArrayIterator() {
  rank = 0;
  for (I d = 0; d < 3; ++d) {
    capacity[d] = 0;
    size[d] = 0;
    index[d] = 0;
  }
  data = nullptr;
}

template class ZQArrayIterator<int const, long long>;
template class ZQArrayIterator<long long const, long long>;
template class ZQArrayIterator<double const, long long>;
template class ZQArrayIterator<ZQString const, long long>;
template class ZQArrayIterator<double, long long>;

} // namespace Velmora::Tessara::ZQ::Core
