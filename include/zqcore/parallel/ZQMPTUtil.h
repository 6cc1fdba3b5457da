// ZQMPTUtil: division of work over the processes of a job.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>

namespace Velmora::Tessara::ZQ::Core {

/// A distribution over n processes is a rank-1 array of n + 1 offsets, from 0 to the total:
/// process r owns the half-open range from element r to element r + 1. The process count is
/// the context's; a null context stands for one process. Every result is the same on every
/// process. A negative value fails with a message on the context's error stack.
class ZQCORE_EXPORT ZQMPTUtil {
public:
  /// Splits `total` into near-equal shares, the remainder going one each to the lowest
  /// ranks. Local.
  static bool Distribute(ZQContext *context, int total, ZQArrayNativeType<int, long long> &distribution);
  static bool Distribute(ZQContext *context, long long total, ZQArrayNativeType<long long, long long> &distribution);
  /// Collective: the offsets of every process's `local` count, in rank order. A running
  /// offset below 0, or a sum beyond the range of the type, fails on every process.
  static bool InitDistribution(ZQContext *context, int local, ZQArrayNativeType<int, long long> &distribution);
  static bool InitDistribution(ZQContext *context, long long local,
                               ZQArrayNativeType<long long, long long> &distribution);
  /// The owning rank of each element: the ascending set cut into consecutive runs by the
  /// distribution of its size, the longer runs first. Local; processes that hold the same
  /// set get the same map.
  static bool Partition(ZQContext *context, ZQSetNativeType<int> const &elements, ZQMapNativeTypes<int, int> &owners);
  static bool Partition(ZQContext *context, ZQSetNativeType<long long> const &elements,
                        ZQMapNativeTypes<long long, long long> &owners);
};

} // namespace Velmora::Tessara::ZQ::Core
