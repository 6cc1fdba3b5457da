// ZQMPTArray: the growing byte store behind a message buffer.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>

#include <memory>

namespace Velmora::Tessara::ZQ::Core {

/// A plain array that only grows, with storage shared between copies by a reference
/// count. Instantiated for `unsigned char`. Contents beyond what was written are not
/// initialised. Local; one thread at a time.
template <typename T> class ZQCORE_EXPORT ZQMPTArray {
public:
  /// Least growth step of a fresh or reset array.
  static constexpr long long DefaultGrowth = 10;

  /// Empty: no allocation, capacity and size 0.
  ZQMPTArray();
  /// Shares `other`'s storage and takes its capacity, size and growth.
  ZQMPTArray(ZQMPTArray const &other);
  /// As the copy constructor; the storage held before loses a reference.
  ZQMPTArray &operator=(ZQMPTArray const &other);
  virtual ~ZQMPTArray();

  /// Elements allocated; never shrinks except by Reset.
  long long GetCapacity() const { return capacity; }
  /// Elements in use.
  long long GetSize() const { return size; }
  /// Least step by which packing grows the array.
  long long GetGrowth() const { return growth; }
  void SetGrowth(long long step) { growth = step; }
  /// The first element, null without an allocation. Owned by the array (and its sharers).
  T *GetData() { return data; }
  T const *GetData() const { return data; }
  /// True when the array holds an allocation.
  bool HasAllocation() const { return data != nullptr; }

  /// Size := n. Beyond the capacity, a new allocation of exactly n elements takes the
  /// first min(size, n) elements and capacity becomes n. A negative n is taken as 0.
  void Resize(long long n) {
    // Inline, since packing sets the size after every value and rarely grows. Taken as
    // unsigned, a negative n fails the one comparison as a growing one does.
    if (static_cast<unsigned long long>(n) <= static_cast<unsigned long long>(capacity)) {
      size = n;
    } else {
      ResizeOutsideCapacity(n);
    }
  }
  /// Capacity and size 0, growth 10, and this array's reference to the storage dropped.
  void Reset();
  /// Resets, then takes capacity, size and growth of `other` and a private copy of all its
  /// `capacity` elements, used or not. No allocation when `other` has none.
  void DeepCopy(ZQMPTArray const &other);

private:
  void ResizeOutsideCapacity(long long n);
  void Share(ZQMPTArray const &other);

  long long capacity = 0;
  long long size = 0;
  long long growth = DefaultGrowth;
  std::shared_ptr<T[]> storage;
  T *data = nullptr;
};

} // namespace Velmora::Tessara::ZQ::Core
