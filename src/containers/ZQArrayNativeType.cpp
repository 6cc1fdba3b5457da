#include <zqcore/containers/ZQArrayNativeType.h>

#include "core/detail/Fatal.h"

namespace Velmora::Tessara::ZQ::Core {

namespace {

constexpr long long DefaultGrowthStep = 16;

} // namespace

template <typename T, typename I> ZQArrayNativeType<T, I>::ZQArrayNativeType() : ZQArray<T, I>() {}

template <typename T, typename I> void ZQArrayNativeType<T, I>::Append(T const &value) {
  I const used = this->size[0];
  if (used >= this->capacity[0]) {
    if (this->Contains(&value)) {
      detail::FatalError();
    }
    I const step = this->growthStep > 0 ? this->growthStep : static_cast<I>(DefaultGrowthStep);
    this->Resize(used + step);
  }
  this->size[0] = used + 1;
  this->GetData()[used] = value;
}

template class ZQArrayNativeType<int, long long>;
template class ZQArrayNativeType<long long, long long>;
template class ZQArrayNativeType<float, long long>;
template class ZQArrayNativeType<double, long long>;
template class ZQArrayNativeType<unsigned char, long long>;

} // namespace Velmora::Tessara::ZQ::Core
