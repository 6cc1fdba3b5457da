// ZQMPTUtil: distributions of totals and of per-process counts, and partitions of sets.
// The 32-bit and 64-bit forms share one body each, in the width of their type.
#include <zqcore/parallel/ZQMPTUtil.h>

#include <zqcore/containers/ZQArrayNativeType.h>
#include <zqcore/containers/ZQMapNativeTypes.h>
#include <zqcore/containers/ZQSetNativeType.h>
#include <zqcore/core/ZQContext.h>
#include <zqcore/parallel/ZQMPT.h>

#include "core/detail/Fatal.h"

#include <algorithm>
#include <cstddef>
#include <type_traits>

namespace Velmora::Tessara::ZQ::Core {

namespace {

template <typename T> using Distribution = ZQArrayNativeType<T, long long>;

char const *const NegativeValue = "value < 0 given, distribution can not be computed.";
char const *const SumOutOfRange = "sum of values out of range, distribution can not be computed.";

void Report(ZQContext *context, char const *message) {
  if (context != nullptr) {
    context->GetErrorStack().Push(message);
  }
}

// Sizes the distribution to n + 1 zeroed offsets and gives n.
template <typename T> int Prepare(ZQContext *context, Distribution<T> &distribution) {
  int const n = ZQContext::GetNProcs(context);
  distribution.Resize(static_cast<long long>(n) + 1);
  std::fill_n(distribution.GetData(), distribution.Size(), T{0});
  return n;
}

template <typename T> bool DistributeTotal(ZQContext *context, T total, Distribution<T> &distribution) {
  int const n = Prepare(context, distribution);
  if (total < 0) {
    Report(context, NegativeValue);
    return false;
  }
  if (n <= 1) {
    distribution(1) = total;
    return true;
  }
  T const share = total / n;
  T remainder = total - share * n;
  for (long long i = 0; i < n; ++i) {
    distribution(i + 1) = distribution(i) + share + (remainder > 0 ? 1 : 0);
    if (remainder > 0) {
      --remainder;
    }
  }
  return true;
}

template <typename T> bool GatherDistribution(ZQContext *context, T local, Distribution<T> &distribution) {
  int const n = Prepare(context, distribution);
  if (n <= 1) {
    distribution(1) = local;
    return true;
  }
  // Two or more processes: there is a context. Every process gathers the same values, so
  // every process stops at the same offset.
  context->GetMPT().AllGather(&local, &distribution(1), 1);
  for (long long i = 0; i < n; ++i) {
    if (distribution(i) < 0) {
      Report(context, NegativeValue);
      return false;
    }
    T sum = 0;
    if (__builtin_add_overflow(distribution(i), distribution(i + 1), &sum)) {
      Report(context, SumOutOfRange);
      return false;
    }
    distribution(i + 1) = sum;
  }
  return true;
}

// The element count in the width of the set's type; beyond 32 bits the 32-bit form ends the job.
template <typename T> T CountOf(std::size_t size) {
  if constexpr (std::is_same_v<T, int>) {
    return detail::NarrowToInt32(static_cast<long long>(size));
  } else {
    return static_cast<T>(size);
  }
}

template <typename T>
bool PartitionSet(ZQContext *context, ZQSetNativeType<T> const &elements, ZQMapNativeTypes<T, T> &owners) {
  int const n = ZQContext::GetNProcs(context);
  owners.clear();
  Distribution<T> distribution;
  if (!DistributeTotal(context, CountOf<T>(elements.size()), distribution)) {
    return false;
  }
  auto element = elements.begin();
  for (int rank = 0; rank < n; ++rank) {
    for (T position = distribution(rank); position < distribution(rank + 1); ++position, ++element) {
      owners[*element] = static_cast<T>(rank);
    }
  }
  return true;
}

} // namespace

bool ZQMPTUtil::Distribute(ZQContext *context, int total, ZQArrayNativeType<int, long long> &distribution) {
  return DistributeTotal(context, total, distribution);
}

bool ZQMPTUtil::Distribute(ZQContext *context, long long total, ZQArrayNativeType<long long, long long> &distribution) {
  return DistributeTotal(context, total, distribution);
}

bool ZQMPTUtil::InitDistribution(ZQContext *context, int local, ZQArrayNativeType<int, long long> &distribution) {
  return GatherDistribution(context, local, distribution);
}

bool ZQMPTUtil::InitDistribution(ZQContext *context, long long local,
                                 ZQArrayNativeType<long long, long long> &distribution) {
  return GatherDistribution(context, local, distribution);
}

bool ZQMPTUtil::Partition(ZQContext *context, ZQSetNativeType<int> const &elements,
                          ZQMapNativeTypes<int, int> &owners) {
  return PartitionSet(context, elements, owners);
}

bool ZQMPTUtil::Partition(ZQContext *context, ZQSetNativeType<long long> const &elements,
                          ZQMapNativeTypes<long long, long long> &owners) {
  return PartitionSet(context, elements, owners);
}

} // namespace Velmora::Tessara::ZQ::Core
