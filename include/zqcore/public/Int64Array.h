// Int64Array: the public array of 64-bit integers.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>

namespace Velmora::Tessara::ZQ::Core {

/// A rank-1 array of 64-bit integers that owns its inner array. Copies are deep: the copy has the
/// source's capacity and elements, and shares nothing with it.
class ZQCORE_EXPORT Int64Array {
public:
  /// Rank 0, no elements.
  Int64Array();
  /// Rank 1 with `n` elements, not cleared.
  Int64Array(long long n);
  /// Deep copies.
  Int64Array(Int64Array const &other);
  Int64Array &operator=(Int64Array const &other);
  virtual ~Int64Array();

  /// Back to rank 0, without elements.
  void Reset();
  /// Capacity of at least `n` (exactly `n` when it grows); the size stays.
  void Reserve(long long n);
  /// Size `n`; the capacity grows to exactly `n` when it is smaller, and never shrinks.
  void Resize(long long n);
  /// Size 0; rank, capacity and elements stay.
  void Clear();
  /// Allocated and used number of elements; 0 at rank 0.
  long long Capacity() const;
  long long Size() const;
  /// Size() is 0.
  bool IsEmpty() const;
  /// A Resize or Reserve has given the array its rank; Reset takes it back.
  bool IsInitialized() const;
  /// The element at flat position `i`, with no check at all: `i` must lie below Capacity().
  void Set(long long i, long long value);
  long long Get(long long i) const;
  /// The inner ZQArrayNativeType<long long, long long>, owned by this object: how the library reaches it.
  void *GetArray();
  void const *GetArray() const;

private:
  void Copy(Int64Array const &other);

  ZQArrayNativeType<long long, long long> *array;
};

} // namespace Velmora::Tessara::ZQ::Core
