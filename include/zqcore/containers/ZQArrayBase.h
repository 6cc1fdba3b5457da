// ZQArrayBase: the shape of an array of rank 0 to 3, and the operations on the shape alone.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>

namespace Velmora::Tessara::ZQ::Core {

/// Rank, capacities, sizes and growth step of an array. Capacities fix the strides (row
/// major, last dimension fastest), sizes say what is in use; entries at and beyond the
/// rank are 0. Misuse (a rank outside 0 to 3, a rank that must not change, a missing
/// dimension) writes the fatal banner and ends the job. `I` is the index type.
template <typename I> class ZQCORE_EXPORT ZQArrayBase {
public:
  /// Largest rank: the number of entries of the capacity and size fields.
  static constexpr int MaxRank = 3;

  /// Rank 0, everything zero.
  ZQArrayBase();
  virtual ~ZQArrayBase();

  /// Back to rank 0: zero shape and growth step (the element classes also drop the buffer).
  virtual void Reset();
  /// Shares the other array's buffer and copies its shape; `other` has the same element type.
  virtual void Copy(ZQArrayBase<I> const &other) = 0;
  /// Takes the shape of `other`: Reset at rank 0, else reserves its capacities (when
  /// `alsoReserve`) and resizes to its sizes.
  virtual void ResizeLike(ZQArrayBase<I> const &other, bool alsoReserve);
  /// Grows capacities to at least the extents, keeping the sizes. At rank 0 the rank
  /// becomes the number of extents; any other rank that differs from it is fatal.
  virtual void Reserve(I d0, I d1, I d2);
  virtual void Reserve(I d0, I d1);
  virtual void Reserve(I d0);
  /// Reserve with `n` for one dimension and the current sizes for the others; at rank 0 the
  /// rank becomes `dimension` + 1. A dimension that does not exist is fatal.
  virtual void ReserveDim(I dimension, I n);
  /// Sets the sizes; reallocates when an extent exceeds its capacity, and changes the rank
  /// when the number of extents differs from it (keeping the flat contents).
  virtual void Resize(I d0, I d1, I d2) = 0;
  virtual void Resize(I d0, I d1) = 0;
  virtual void Resize(I d0) = 0;
  /// Resize with `n` for one dimension and the current sizes for the others; at rank 0 the
  /// rank becomes `dimension` + 1. A dimension that does not exist is fatal.
  virtual void ResizeDim(I dimension, I n);
  /// Sorts positions [start, end) of a rank-1 array in place; any rank above 1 is fatal.
  virtual void Sort(I start, I end, bool descending) = 0;
  /// Sorts the whole used range of a rank-1 array.
  virtual void Sort(bool descending) = 0;

  /// Zeroes the sizes alone: rank, capacities and elements stay.
  void Clear();

  /// Number of dimensions in use, 0 before the first Resize or Reserve.
  I GetRank() const { return rank; }
  /// Used and allocated extent of a dimension; 0 at and beyond the rank and for a
  /// dimension outside 0 to 2.
  I GetSize(I dimension) const { return IsDimension(dimension) ? size[dimension] : 0; }
  I GetCapacity(I dimension) const { return IsDimension(dimension) ? capacity[dimension] : 0; }
  /// Elements an append adds to a full array; 0 or less stands for 16.
  I GetGrowthStep() const { return growthStep; }
  /// Product of the sizes (of the capacities) over the rank; 0 at rank 0.
  I Size() const { return Product(size); }
  I Capacity() const { return Product(capacity); }
  /// Size() is 0.
  bool IsEmpty() const { return Size() == 0; }
  /// The rank is set: a cleared array is empty and still initialized.
  bool IsInitialized() const { return rank > 0; }

protected:
  ZQArrayBase(ZQArrayBase const &other) = default;
  ZQArrayBase &operator=(ZQArrayBase const &other) = default;

  /// Zeroes capacities and sizes, keeping rank and growth step.
  void ClearShape();

  I rank;
  I capacity[MaxRank];
  I size[MaxRank];
  I growthStep;

private:
  static bool IsDimension(I dimension) { return dimension >= 0 && dimension < MaxRank; }
  I Product(I const *extents) const {
    I product = rank > 0 ? 1 : 0;
    for (I d = 0; d < rank; ++d) {
      product *= extents[d];
    }
    return product;
  }

  /// Calls the Reserve or Resize that takes `count` extents.
  void ReserveExtents(I count, I const *extents);
  void ResizeExtents(I count, I const *extents);
  /// The shared logic of the three Reserve forms, and of ReserveDim and ResizeDim.
  void ReserveShape(I count, I const *extents);
  void ChangeDimension(I dimension, I n, bool reserve);
};

} // namespace Velmora::Tessara::ZQ::Core
