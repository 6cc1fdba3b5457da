// Float64Array: the public array of doubles.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>

namespace Velmora::Tessara::ZQ::Core {

/// A rank-1 array of doubles that owns its inner array. Copies are deep: the copy has the
/// source's capacity and elements, and shares nothing with it.
class ZQCORE_EXPORT Float64Array {
public:
  /// Rank 0, no elements.
  Float64Array();
  /// Rank 1 with `n` elements, not cleared.
  Float64Array(long long n);
  /// Deep copies.
  Float64Array(Float64Array const &other);
  Float64Array &operator=(Float64Array const &other);
  virtual ~Float64Array();

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
  void Set(long long i, double value);
  double Get(long long i) const;
  /// The inner ZQArrayNativeType<double, long long>, owned by this object: how the library reaches it.
  void *GetArray();
  void const *GetArray() const;

private:
  void Copy(Float64Array const &other);

  ZQArrayNativeType<double, long long> *array;
};

} // namespace Velmora::Tessara::ZQ::Core
