#include <zqcore/containers/ZQArray.h>
#include <zqcore/strings/ZQString.h>

#include "containers/detail/QuickSort.h"
#include "core/detail/Fatal.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <string>

namespace Velmora::Tessara::ZQ::Core {

namespace {

template <typename I> I ProductOf(I count, I const *extents) {
  I product = 1;
  for (I d = 0; d < count; ++d) {
    product *= extents[d];
  }
  return product;
}

// A new block of `count` elements, or none; native elements are left uninitialized.
template <typename T, typename I> std::unique_ptr<T[]> NewBlock(I count) {
  return std::unique_ptr<T[]>(count > 0 ? new T[static_cast<std::size_t>(count)] : nullptr);
}

} // namespace

template <typename T, typename I>
ZQArray<T, I>::ZQArray() : ZQArrayBase<I>(), block(nullptr), referenceCount(nullptr), data(nullptr) {}

template <typename T, typename I>
ZQArray<T, I>::ZQArray(ZQArray const &other)
    : ZQArrayBase<I>(), block(nullptr), referenceCount(nullptr), data(nullptr) {
  Duplicate(other);
}

template <typename T, typename I> ZQArray<T, I> &ZQArray<T, I>::operator=(ZQArray const &other) {
  Duplicate(other);
  return *this;
}

template <typename T, typename I> ZQArray<T, I>::~ZQArray() { Release(); }

template <typename T, typename I> void ZQArray<T, I>::Reset() {
  Release();
  ZQArrayBase<I>::Reset();
}

template <typename T, typename I> void ZQArray<T, I>::Copy(ZQArrayBase<I> const &other) {
  Copy(static_cast<ZQArray<T, I> const &>(other));
}

template <typename T, typename I> void ZQArray<T, I>::Copy(ZQArray<T, I> const &other) {
  if (this == &other) {
    return;
  }
  Reset();
  ZQArrayBase<I>::operator=(other);
  Share(other);
}

template <typename T, typename I> void ZQArray<T, I>::Duplicate(ZQArray const &other) {
  if (this == &other) {
    return;
  }
  Reset();
  ZQArrayBase<I>::operator=(other);
  I const count = this->Capacity();
  std::unique_ptr<T[]> fresh = NewBlock<T>(count);
  if (fresh) {
    std::copy(other.data, other.data + count, fresh.get());
  }
  Adopt(fresh.release());
}

template <typename T, typename I> void ZQArray<T, I>::Release() {
  if (referenceCount != nullptr && --*referenceCount == 0) {
    delete referenceCount;
    delete[] block;
  }
  block = nullptr;
  referenceCount = nullptr;
  data = nullptr;
}

template <typename T, typename I> void ZQArray<T, I>::Share(ZQArray const &other) {
  block = other.block;
  referenceCount = other.referenceCount;
  data = other.data;
  if (referenceCount != nullptr) {
    ++*referenceCount;
  }
}

template <typename T, typename I> void ZQArray<T, I>::Adopt(T *fresh) {
  std::unique_ptr<T[]> owner(fresh);
  long long *count = owner ? new long long(1) : nullptr;
  Release();
  block = owner.release();
  referenceCount = count;
  data = block;
}

template <typename T, typename I> void ZQArray<T, I>::Transfer(T *from, I count, T *to) const {
  if (count <= 0) {
    return;
  }
  if (referenceCount != nullptr && *referenceCount == 1) {
    std::move(from, from + count, to);
  } else {
    std::copy(from, from + count, to);
  }
}

template <typename T, typename I> bool ZQArray<T, I>::Contains(T const *element) const {
  std::less<T const *> const before;
  return data != nullptr && !before(element, data) && before(element, data + this->Capacity());
}

template <typename T, typename I> void ZQArray<T, I>::Resize(I d0, I d1, I d2) {
  I const extents[] = {d0, d1, d2};
  ResizeShape(3, extents);
}

template <typename T, typename I> void ZQArray<T, I>::Resize(I d0, I d1) {
  I const extents[] = {d0, d1};
  ResizeShape(2, extents);
}

template <typename T, typename I> void ZQArray<T, I>::Resize(I d0) { ResizeShape(1, &d0); }

template <typename T, typename I> void ZQArray<T, I>::ResizeShape(I count, I const *extents) {
  if (this->rank != count) {
    ChangeRank(count, extents);
    return;
  }
  bool fits = true;
  for (I d = 0; d < count; ++d) {
    fits = fits && extents[d] <= this->capacity[d];
  }
  if (!fits) {
    GrowSameRank(count, extents);
    return;
  }
  // Within capacity the strides stay and no element moves.
  for (I d = 0; d < count; ++d) {
    this->size[d] = extents[d];
  }
}

template <typename T, typename I> void ZQArray<T, I>::GrowSameRank(I count, I const *extents) {
  std::unique_ptr<T[]> fresh = NewBlock<T>(ProductOf(count, extents));
  if (count == 1) {
    Transfer(data, this->capacity[0], fresh.get());
  } else {
    // Leading dimensions padded with extent 1 make ranks 2 and 3 one case: rows along the
    // last dimension, copied over the old sizes at the old strides to the new ones. The
    // old sizes are not clamped to the new extents.
    int const pad = ZQArrayBase<I>::MaxRank - static_cast<int>(count);
    I oldCapacity[] = {1, 1, 1};
    I oldSize[] = {1, 1, 1};
    I newCapacity[] = {1, 1, 1};
    for (int d = pad; d < ZQArrayBase<I>::MaxRank; ++d) {
      oldCapacity[d] = this->capacity[d - pad];
      oldSize[d] = this->size[d - pad];
      newCapacity[d] = extents[d - pad];
    }
    for (I i = 0; i < oldSize[0]; ++i) {
      for (I j = 0; j < oldSize[1]; ++j) {
        Transfer(data + (i * oldCapacity[1] + j) * oldCapacity[2], oldSize[2],
                 fresh.get() + (i * newCapacity[1] + j) * newCapacity[2]);
      }
    }
  }
  Adopt(fresh.release());
  for (I d = 0; d < count; ++d) {
    this->capacity[d] = extents[d];
    this->size[d] = extents[d];
  }
}

// The flat contents stay in place: element (i, j) of the new shape is what its flat
// position held before.
template <typename T, typename I> void ZQArray<T, I>::ChangeRank(I count, I const *extents) {
  I const oldTotal = this->Capacity();
  I const newTotal = ProductOf(count, extents);
  if (oldTotal < newTotal) {
    std::unique_ptr<T[]> fresh = NewBlock<T>(newTotal);
    Transfer(data, oldTotal, fresh.get());
    Adopt(fresh.release());
  }
  bool const keepsBlock = oldTotal >= newTotal && oldTotal > 0;
  this->ClearShape();
  I others = 1;
  for (I d = 0; d < count; ++d) {
    this->size[d] = extents[d];
    this->capacity[d] = extents[d];
    if (d > 0) {
      others *= std::max<I>(extents[d], 1);
    }
  }
  // A kept block loses no room: the first dimension takes whatever the others leave.
  if (keepsBlock) {
    this->capacity[0] = oldTotal / others;
  }
  this->rank = count;
}

template <typename T, typename I> void ZQArray<T, I>::Sort(I start, I end, bool descending) {
  if (this->rank == 0) {
    return;
  }
  if (this->rank != 1) {
    detail::FatalError();
  }
  start = std::max<I>(start, 0);
  end = std::min(end, this->size[0]);
  if (descending) {
    detail::QuickSort(data, start, end, [](T const &a, T const &b) { return b < a; });
  } else {
    detail::QuickSort(data, start, end, [](T const &a, T const &b) { return a < b; });
  }
}

template <typename T, typename I> void ZQArray<T, I>::Sort(bool descending) { Sort(0, this->size[0], descending); }

template class ZQArray<int, long long>;
template class ZQArray<long long, long long>;
template class ZQArray<float, long long>;
template class ZQArray<double, long long>;
template class ZQArray<unsigned char, long long>;
template class ZQArray<char, long long>;
template class ZQArray<char const *, long long>;
template class ZQArray<std::string, long long>;
template class ZQArray<ZQString, long long>;

} // namespace Velmora::Tessara::ZQ::Core
