// StringArray: the public array of strings.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>
#include <zqcore/public/String.h>

namespace Velmora::Tessara::ZQ::Core {

/// A rank-1 array of strings that owns its inner array. Copies are deep: the copy has the
/// source's capacity and elements, and shares nothing with it. Get returns a copy of the element.
class ZQCORE_EXPORT StringArray {
public:
  /// Rank 0, no elements.
  StringArray();
  /// Rank 1 with `n` elements, each empty.
  StringArray(long long n);
  /// Deep copies.
  StringArray(StringArray const &other);
  StringArray &operator=(StringArray const &other);
  virtual ~StringArray();

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
  void Set(long long i, String const &value);
  String Get(long long i) const;
  /// The inner ZQArrayObjectType<ZQString, long long>, owned by this object: how the library reaches it.
  void *GetArray();
  void const *GetArray() const;

private:
  void Copy(StringArray const &other);

  ZQArrayObjectType<ZQString, long long> *array;
};

} // namespace Velmora::Tessara::ZQ::Core
