// The arrays' sort: an iterative quicksort with a median-of-three pivot on an explicit
// stack of index pairs, finishing ranges of 8 or fewer elements by insertion sort.
#pragma once

#include <cmath>
#include <utility>
#include <vector>

namespace Velmora::Tessara::ZQ::Core::detail {

/// Ranges of at most this many elements go to insertion sort.
constexpr int InsertionSortLimit = 8;

/// Room for the pending ranges, in stack entries (two per range): the larger of 8 and four
/// times the rounded natural logarithm of the element count. It is also the growth step.
template <typename I> I QuickSortStackEntries(I count) {
  I const entries = static_cast<I>(std::log(static_cast<double>(count)) + 0.5) * 4;
  return entries > 8 ? entries : 8;
}

/// Sorts a[first..last] (inclusive) by insertion.
template <typename T, typename I, typename Less> void InsertionSort(T *a, I first, I last, Less less) {
  for (I j = first + 1; j <= last; ++j) {
    if (!less(a[j], a[j - 1])) {
      continue;
    }
    T value = std::move(a[j]);
    I i = j - 1;
    do {
      a[i + 1] = std::move(a[i]);
      --i;
    } while (i >= first && less(value, a[i]));
    a[i + 1] = std::move(value);
  }
}

/// Orders a[first..last] around the median of a[first], a[(first + last) / 2], a[last],
/// and returns the pivot's final position. The median sits at first + 1, where it stays
/// during the scans; a[first] and a[last] bound them, so no scan checks its index.
template <typename T, typename I, typename Less> I Partition(T *a, I first, I last, Less less) {
  using std::swap;
  swap(a[(first + last) / 2], a[first + 1]);
  if (less(a[last], a[first])) {
    swap(a[first], a[last]);
  }
  if (less(a[last], a[first + 1])) {
    swap(a[first + 1], a[last]);
  }
  if (less(a[first + 1], a[first])) {
    swap(a[first], a[first + 1]);
  }
  T const &pivot = a[first + 1];
  I i = first + 1;
  I j = last;
  for (;;) {
    // Both scans stop at an element equal to the pivot, which splits runs of duplicates
    // evenly.
    do {
      ++i;
    } while (less(a[i], pivot));
    do {
      --j;
    } while (less(pivot, a[j]));
    if (j < i) {
      break;
    }
    swap(a[i], a[j]);
  }
  if (j != first + 1) {
    swap(a[first + 1], a[j]);
  }
  return j;
}

/// Sorts a[first, end) by `less`, not stably.
template <typename T, typename I, typename Less> void QuickSort(T *a, I first, I end, Less less) {
  I const count = end - first;
  if (count < 2) {
    return;
  }
  I const step = QuickSortStackEntries(count);
  std::vector<I> stack(static_cast<std::size_t>(step));
  std::size_t top = 0;
  I low = first;
  I high = end - 1;
  for (;;) {
    if (high - low < InsertionSortLimit) {
      InsertionSort(a, low, high, less);
      if (top == 0) {
        return;
      }
      high = stack[--top];
      low = stack[--top];
      continue;
    }
    I const pivot = Partition(a, low, high, less);
    if (top + 2 > stack.size()) {
      stack.resize(stack.size() + static_cast<std::size_t>(step));
    }
    // The larger part waits on the stack; the smaller one goes on at once.
    if (high - pivot >= pivot - low) {
      stack[top++] = pivot + 1;
      stack[top++] = high;
      high = pivot - 1;
    } else {
      stack[top++] = low;
      stack[top++] = pivot - 1;
      low = pivot + 1;
    }
  }
}

} // namespace Velmora::Tessara::ZQ::Core::detail
