// Process-ending misuse of the array family, run one case per process by ctest.
#include <zqcore/containers/ZQArrayForwardIterator.h>
#include <zqcore/containers/ZQArrayNativeType.h>

#include "FatalDriver.h"

using namespace Velmora::Tessara::ZQ::Core;

namespace {

using Doubles = ZQArrayNativeType<double, long long>;
using Walk = ZQArrayForwardIterator<double const, long long>;

// A full array of the given shape: Resize(d0) or Resize(d0, d1).
Doubles Shaped(long long d0, long long d1 = -1) {
  Doubles array;
  d1 < 0 ? array.Resize(d0) : array.Resize(d0, d1);
  return array;
}

} // namespace

int main(int argc, char **argv) {
  zqtest::FatalCases const cases = {
      // Reserve never changes a rank that is set.
      {"reserve_of_another_rank", [] { Shaped(2, 3).Reserve(10); }},
      {"reserve_dim_beyond_rank", [] { Shaped(5).ReserveDim(1, 3); }},
      {"resize_dim_beyond_rank", [] { Shaped(2, 3).ResizeDim(2, 4); }},
      {"resize_dim_negative", [] { Shaped(2, 3).ResizeDim(-1, 4); }},
      {"resize_dim_beyond_max_rank_at_rank_zero", [] { Doubles().ResizeDim(3, 4); }},
      {"sort_at_rank_two", [] { Shaped(2, 3).Sort(false); }},
      // The walk of an array that never had a shape has no rank to follow.
      {"iterator_dereference_at_rank_zero", [] { static_cast<void>(*Walk(Doubles())); }},
      {"iterator_advance_at_rank_zero", [] { ++Walk(Doubles()); }},
      // Growing the full array would free the element being appended.
      {"append_own_element_when_full",
       [] {
         Doubles line = Shaped(4);
         line.Append(line(3));
       }},
  };
  return zqtest::RunFatalCase(argc, argv, cases);
}
