// ZQMPTArray: growth, sharing and copying of the byte store behind a message buffer.
#include <zqcore/parallel/ZQMPTArray.h>

#include "core/detail/Fatal.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace Velmora::Tessara::ZQ::Core {

namespace {

// A new uninitialised block of `n` elements. A block that cannot be had (a size hint or an
// announced length beyond memory) is a fatal path like any other failure of message passing.
template <typename T> T *AllocateOrDie(long long n) {
  T *block = new (std::nothrow) T[static_cast<std::size_t>(n)];
  if (block == nullptr) {
    detail::FatalError();
  }
  return block;
}

} // namespace

template <typename T> ZQMPTArray<T>::ZQMPTArray() = default;

template <typename T> ZQMPTArray<T>::ZQMPTArray(ZQMPTArray const &other) { Share(other); }

template <typename T> ZQMPTArray<T> &ZQMPTArray<T>::operator=(ZQMPTArray const &other) {
  if (this != &other) {
    Share(other);
  }
  return *this;
}

template <typename T> ZQMPTArray<T>::~ZQMPTArray() = default;

template <typename T> void ZQMPTArray<T>::ResizeOutsideCapacity(long long n) {
  if (n < 0) {
    size = 0;
    return;
  }
  // Left uninitialised: packing or a receive writes the bytes before anything reads them.
  std::shared_ptr<T[]> grown(AllocateOrDie<T>(n));
  if (size > 0) {
    std::memcpy(grown.get(), data, static_cast<std::size_t>(std::min(size, n)) * sizeof(T));
  }
  storage = std::move(grown);
  data = storage.get();
  capacity = n;
  size = n;
}

template <typename T> void ZQMPTArray<T>::Reset() {
  capacity = 0;
  size = 0;
  growth = DefaultGrowth;
  storage.reset();
  data = nullptr;
}

template <typename T> void ZQMPTArray<T>::DeepCopy(ZQMPTArray const &other) {
  if (this == &other) {
    return;
  }
  Reset();
  capacity = other.capacity;
  size = other.size;
  growth = other.growth;
  if (other.data != nullptr) {
    storage.reset(AllocateOrDie<T>(capacity));
    data = storage.get();
    std::memcpy(data, other.data, static_cast<std::size_t>(capacity) * sizeof(T));
  }
}

template <typename T> void ZQMPTArray<T>::Share(ZQMPTArray const &other) {
  Reset();
  capacity = other.capacity;
  size = other.size;
  growth = other.growth;
  storage = other.storage;
  data = other.data;
}

template class ZQMPTArray<unsigned char>;

} // namespace Velmora::Tessara::ZQ::Core
