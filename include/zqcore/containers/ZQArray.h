// ZQArray: an array of rank 0 to 3 over a reference-counted element block.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/containers/ZQArrayBase.h>

namespace Velmora::Tessara::ZQ::Core {

/// Elements of type `T` at the positions fixed by the capacities: i; i * capacity[1] + j;
/// (i * capacity[1] + j) * capacity[2] + k. The virtual Copy shares the block (one more
/// reference); the copy constructor and assignment make a deep copy of it. A buffer is
/// replaced when it grows, never changed in size, so arrays that shared it part there.
/// Element access checks nothing.
template <typename T, typename I> class ZQCORE_EXPORT ZQArray : public ZQArrayBase<I> {
public:
  /// Rank 0, no block.
  ZQArray();
  /// Deep copies: the source's shape and capacities, and a block of their own holding
  /// every element within the capacities, gaps included.
  ZQArray(ZQArray const &other);
  ZQArray &operator=(ZQArray const &other);
  /// Drops this array's reference to the block.
  ~ZQArray() override;

  /// Drops the block and returns to rank 0.
  void Reset() override;
  /// Shallow copy from an array of this element type: see Copy(ZQArray const &).
  void Copy(ZQArrayBase<I> const &other) override;
  /// Same rank and every extent within its capacity: only the sizes change. An extent
  /// beyond its capacity: a new block of exactly the requested extents; rank 1 copies the
  /// old capacity linearly, ranks 2 and 3 copy the old sizes row by row at the new strides
  /// (without clamping them to the new extents: grow every dimension or none). Another
  /// number of extents changes the rank and keeps the flat contents as they are.
  void Resize(I d0, I d1, I d2) override;
  void Resize(I d0, I d1) override;
  void Resize(I d0) override;
  /// Unstable in-place sort of positions [start, end), clamped to the used range, by the
  /// element's less-than (reversed when `descending`). Rank 0 does nothing; rank 2 or 3 is
  /// fatal.
  void Sort(I start, I end, bool descending) override;
  void Sort(bool descending) override;
  /// Shallow copy: shape of `other`, and its block shared. Copying oneself does nothing.
  virtual void Copy(ZQArray<T, I> const &other);

  /// The element block, null when there is none.
  T *GetData() { return data; }
  T const *GetData() const { return data; }

  /// Element at its position by the capacity strides; no checks.
  T &operator()(I i) { return data[i]; }
  T &operator()(I i, I j) { return data[i * this->capacity[1] + j]; }
  T &operator()(I i, I j, I k) { return data[(i * this->capacity[1] + j) * this->capacity[2] + k]; }
  T const &operator()(I i) const { return data[i]; }
  T const &operator()(I i, I j) const { return data[i * this->capacity[1] + j]; }
  T const &operator()(I i, I j, I k) const { return data[(i * this->capacity[1] + j) * this->capacity[2] + k]; }

protected:
  /// True when `element` lies within the capacity of this array's block.
  bool Contains(T const *element) const;

private:
  /// Gives up this array's reference; the last one frees the count and the block.
  void Release();
  /// Takes another reference to `other`'s block.
  void Share(ZQArray const &other);
  /// Drops the current block for `fresh` (owned from here on; null for none).
  void Adopt(T *fresh);
  /// Moves `count` elements when this array holds the only reference, else copies them.
  void Transfer(T *from, I count, T *to) const;
  /// Deep copy, the work of the copy constructor and assignment.
  void Duplicate(ZQArray const &other);
  /// The common body of the three Resize forms, and its two reallocating cases.
  void ResizeShape(I count, I const *extents);
  void ChangeRank(I count, I const *extents);
  void GrowSameRank(I count, I const *extents);

  T *block;
  long long *referenceCount;
  T *data;
};

} // namespace Velmora::Tessara::ZQ::Core
