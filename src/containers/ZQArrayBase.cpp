#include <zqcore/containers/ZQArrayBase.h>

#include "core/detail/Fatal.h"

namespace Velmora::Tessara::ZQ::Core {

template <typename I> ZQArrayBase<I>::ZQArrayBase() : rank(0), capacity{0, 0, 0}, size{0, 0, 0}, growthStep(0) {}

template <typename I> ZQArrayBase<I>::~ZQArrayBase() = default;

template <typename I> void ZQArrayBase<I>::Reset() {
  rank = 0;
  ClearShape();
  growthStep = 0;
}

template <typename I> void ZQArrayBase<I>::ClearShape() {
  for (int d = 0; d < MaxRank; ++d) {
    capacity[d] = 0;
    size[d] = 0;
  }
}

template <typename I> void ZQArrayBase<I>::Clear() {
  for (I &extent : size) {
    extent = 0;
  }
}

template <typename I> void ZQArrayBase<I>::ResizeLike(ZQArrayBase<I> const &other, bool alsoReserve) {
  if (other.rank == 0) {
    Reset();
    return;
  }
  if (other.rank < 0 || other.rank > MaxRank) {
    detail::FatalError();
  }
  // Copies, since `other` may be this array.
  I const capacities[MaxRank] = {other.capacity[0], other.capacity[1], other.capacity[2]};
  I const sizes[MaxRank] = {other.size[0], other.size[1], other.size[2]};
  I const otherRank = other.rank;
  if (alsoReserve) {
    ReserveExtents(otherRank, capacities);
  }
  ResizeExtents(otherRank, sizes);
}

template <typename I> void ZQArrayBase<I>::Reserve(I d0, I d1, I d2) {
  I const extents[] = {d0, d1, d2};
  ReserveShape(3, extents);
}

template <typename I> void ZQArrayBase<I>::Reserve(I d0, I d1) {
  I const extents[] = {d0, d1};
  ReserveShape(2, extents);
}

template <typename I> void ZQArrayBase<I>::Reserve(I d0) { ReserveShape(1, &d0); }

template <typename I> void ZQArrayBase<I>::ReserveDim(I dimension, I n) { ChangeDimension(dimension, n, true); }

template <typename I> void ZQArrayBase<I>::ResizeDim(I dimension, I n) { ChangeDimension(dimension, n, false); }

template <typename I> void ZQArrayBase<I>::ReserveShape(I count, I const *extents) {
  if (rank == 0) {
    rank = count;
  } else if (rank != count) {
    detail::FatalError();
  }
  bool fits = true;
  for (I d = 0; d < count; ++d) {
    fits = fits && extents[d] <= capacity[d];
  }
  if (fits) {
    return;
  }
  I const sizes[MaxRank] = {size[0], size[1], size[2]};
  ResizeExtents(count, extents);
  for (int d = 0; d < MaxRank; ++d) {
    size[d] = sizes[d];
  }
}

// The other dimensions keep their sizes, which serve as their capacities too.
template <typename I> void ZQArrayBase<I>::ChangeDimension(I dimension, I n, bool reserve) {
  if (rank == 0) {
    rank = dimension + 1;
  }
  if (rank < 1 || rank > MaxRank || dimension < 0 || dimension >= rank) {
    detail::FatalError();
  }
  I extents[MaxRank] = {size[0], size[1], size[2]};
  extents[dimension] = n;
  if (reserve) {
    ReserveExtents(rank, extents);
  } else {
    ResizeExtents(rank, extents);
  }
}

template <typename I> void ZQArrayBase<I>::ReserveExtents(I count, I const *extents) {
  switch (count) {
  case 1:
    Reserve(extents[0]);
    break;
  case 2:
    Reserve(extents[0], extents[1]);
    break;
  case 3:
    Reserve(extents[0], extents[1], extents[2]);
    break;
  default:
    detail::FatalError();
  }
}

template <typename I> void ZQArrayBase<I>::ResizeExtents(I count, I const *extents) {
  switch (count) {
  case 1:
    Resize(extents[0]);
    break;
  case 2:
    Resize(extents[0], extents[1]);
    break;
  case 3:
    Resize(extents[0], extents[1], extents[2]);
    break;
  default:
    detail::FatalError();
  }
}

template class ZQArrayBase<long long>;

} // namespace Velmora::Tessara::ZQ::Core
