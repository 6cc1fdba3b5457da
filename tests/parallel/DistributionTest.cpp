// Distribution and partition: shares of totals from 0 up to the 64-bit limit, offsets
// gathered from every rank (negative values, sums out of range), and partitions of sets.
#include <zqcore/containers/ZQArrayNativeType.h>
#include <zqcore/containers/ZQMapNativeTypes.h>
#include <zqcore/containers/ZQSetNativeType.h>
#include <zqcore/core/ZQContext.h>
#include <zqcore/core/ZQErrorStack.h>
#include <zqcore/parallel/ZQMPTUtil.h>
#include <zqcore/strings/ZQString.h>

#include "MpiTestSupport.h"

#include <gtest/gtest.h>
#include <mpi.h>

#include <algorithm>
#include <climits>
#include <string>
#include <vector>

using namespace Velmora::Tessara::ZQ::Core;

namespace {

template <typename T> std::vector<T> Elements(ZQArrayNativeType<T, long long> const &array) {
  std::vector<T> values;
  for (long long i = 0; i < array.GetSize(0); ++i) {
    values.push_back(array(i));
  }
  return values;
}

// Offset r of `total` over n processes in closed form: r whole shares, plus one for each
// lower rank that takes part of the remainder.
template <typename T> std::vector<T> ExpectedShares(T total, int n) {
  T const share = total / n;
  T const remainder = total % n;
  std::vector<T> offsets;
  for (T r = 0; r <= n; ++r) {
    offsets.push_back(r * share + std::min(r, remainder));
  }
  return offsets;
}

// A distribution array that starts out in another shape.
template <typename T> ZQArrayNativeType<T, long long> Reshaped() {
  ZQArrayNativeType<T, long long> array;
  array.Resize(3, 3);
  return array;
}

std::string LastMessage(ZQContext &context) { return context.GetErrorStack().GetLastMsg().c_str(); }

char const *const NegativeValue = "value < 0 given, distribution can not be computed.";

} // namespace

TEST(Distribute, SharesEveryTotalWithTheRemainderOnTheLowestRanks) {
  ZQContext context;
  int const n = ZQContext::GetNProcs(&context);
  for (int total : {0, 1, 2, n - 1, n, 10, 1000003, INT_MAX}) {
    ZQArrayNativeType<int, long long> distribution = Reshaped<int>();
    EXPECT_TRUE(ZQMPTUtil::Distribute(&context, total, distribution));
    EXPECT_EQ(distribution.GetRank(), 1);
    EXPECT_EQ(Elements(distribution), ExpectedShares(total, n)) << "total " << total;
  }
  for (long long total : {0LL, 10LL, 1LL << 31, (1LL << 31) + 5, 3 * (1LL << 32) + 1, (1LL << 62) + 7, LLONG_MAX}) {
    ZQArrayNativeType<long long, long long> distribution = Reshaped<long long>();
    EXPECT_TRUE(ZQMPTUtil::Distribute(&context, total, distribution));
    EXPECT_EQ(Elements(distribution), ExpectedShares(total, n)) << "total " << total;
  }
}

TEST(Distribute, KnownSplitsForThisNumberOfProcesses) {
  ZQContext context;
  int const n = ZQContext::GetNProcs(&context);
  ZQArrayNativeType<int, long long> distribution;
  ASSERT_TRUE(ZQMPTUtil::Distribute(&context, 10, distribution));
  std::vector<std::vector<int>> const tenOver = {{}, {0, 10}, {0, 5, 10}, {0, 4, 7, 10}, {0, 3, 6, 8, 10}};
  if (n < static_cast<int>(tenOver.size())) {
    EXPECT_EQ(Elements(distribution), tenOver[n]);
  }
  ASSERT_TRUE(ZQMPTUtil::Distribute(&context, 2, distribution));
  if (n == 4) {
    EXPECT_EQ(Elements(distribution), (std::vector<int>{0, 1, 2, 2, 2}));
  }
  ASSERT_TRUE(ZQMPTUtil::Distribute(&context, 0, distribution));
  EXPECT_EQ(Elements(distribution), std::vector<int>(n + 1, 0));
}

TEST(Distribute, NullContextIsOneProcess) {
  ZQArrayNativeType<long long, long long> distribution = Reshaped<long long>();
  EXPECT_TRUE(ZQMPTUtil::Distribute(nullptr, 1LL << 40, distribution));
  EXPECT_EQ(Elements(distribution), (std::vector<long long>{0, 1LL << 40}));
}

TEST(Distribute, NegativeTotalFailsWithZeroedOffsets) {
  ZQContext context;
  int const n = ZQContext::GetNProcs(&context);
  ZQArrayNativeType<int, long long> distribution;
  ZQMPTUtil::Distribute(&context, 9, distribution);
  EXPECT_FALSE(ZQMPTUtil::Distribute(&context, -1, distribution));
  EXPECT_EQ(Elements(distribution), std::vector<int>(n + 1, 0));
  EXPECT_EQ(LastMessage(context), NegativeValue);

  long long const messages = context.GetErrorStack().GetNMsg();
  ZQArrayNativeType<long long, long long> wide;
  EXPECT_FALSE(ZQMPTUtil::Distribute(nullptr, LLONG_MIN, wide));
  EXPECT_EQ(Elements(wide), (std::vector<long long>{0, 0}));
  EXPECT_EQ(context.GetErrorStack().GetNMsg(), messages);
}

TEST(InitDistribution, OffsetsOfEveryRanksCountInRankOrder) {
  ZQContext context;
  int const n = ZQContext::GetNProcs(&context);
  int const rank = ZQContext::GetProcRank(&context);
  std::vector<int> const given = {3, 0, 5, 2};
  ZQArrayNativeType<int, long long> distribution = Reshaped<int>();
  ASSERT_TRUE(ZQMPTUtil::InitDistribution(&context, given[rank % 4], distribution));
  std::vector<int> expected = {0};
  for (int r = 0; r < n; ++r) {
    expected.push_back(expected.back() + given[r % 4]);
  }
  EXPECT_EQ(Elements(distribution), expected);

  // Beyond 32 bits and up to the 64-bit limit.
  ZQArrayNativeType<long long, long long> wide;
  ASSERT_TRUE(ZQMPTUtil::InitDistribution(&context, (1LL << 31) + rank, wide));
  EXPECT_EQ(wide(n), n * (1LL << 31) + n * (n - 1LL) / 2);
  ASSERT_TRUE(ZQMPTUtil::InitDistribution(&context, rank == 0 ? LLONG_MAX - (n - 1) : 1LL, wide));
  EXPECT_EQ(wide(n), LLONG_MAX);
}

// The test is on the running offset ahead of each addition: a negative first value fails on
// every rank, a negative last one passes. On one process nothing is tested.
TEST(InitDistribution, NegativeRunningOffsetFailsOnEveryRank) {
  ZQContext context;
  int const n = ZQContext::GetNProcs(&context);
  int const rank = ZQContext::GetProcRank(&context);
  long long const messages = context.GetErrorStack().GetNMsg();
  ZQArrayNativeType<int, long long> distribution;
  bool const firstNegative = ZQMPTUtil::InitDistribution(&context, rank == 0 ? -1 : 4, distribution);
  if (n == 1) {
    EXPECT_TRUE(firstNegative);
    EXPECT_EQ(Elements(distribution), (std::vector<int>{0, -1}));
    return;
  }
  EXPECT_FALSE(firstNegative);
  EXPECT_EQ(LastMessage(context), NegativeValue);
  EXPECT_EQ(context.GetErrorStack().GetNMsg(), messages + 1);
  std::vector<int> kept(n + 1, 4);
  kept[0] = 0;
  kept[1] = -1;
  EXPECT_EQ(Elements(distribution), kept);

  ASSERT_TRUE(ZQMPTUtil::InitDistribution(&context, rank == n - 1 ? -1 : 4, distribution));
  EXPECT_EQ(distribution(n), 4 * (n - 1) - 1);
}

// Sums are checked in the width of the form: INT_MAX + 1 in 32 bits, and 2^62 + 2^62 in
// 64 bits, whose low 32 bits are all 0.
TEST(InitDistribution, SumOutOfRangeFailsOnEveryRank) {
  ZQContext context;
  int const n = ZQContext::GetNProcs(&context);
  int const rank = ZQContext::GetProcRank(&context);
  ZQArrayNativeType<int, long long> narrow;
  bool const narrowOk = ZQMPTUtil::InitDistribution(&context, rank == 0 ? INT_MAX : 1, narrow);
  ZQArrayNativeType<long long, long long> wide;
  long long const messages = context.GetErrorStack().GetNMsg();
  bool const wideOk = ZQMPTUtil::InitDistribution(&context, 1LL << 62, wide);
  if (n == 1) {
    EXPECT_TRUE(narrowOk && wideOk);
    return;
  }
  EXPECT_FALSE(narrowOk);
  std::vector<int> kept(n + 1, 1);
  kept[0] = 0;
  kept[1] = INT_MAX;
  EXPECT_EQ(Elements(narrow), kept);
  EXPECT_FALSE(wideOk);
  EXPECT_EQ(context.GetErrorStack().GetNMsg(), messages + 1);
  EXPECT_EQ(wide(2), 1LL << 62);
}

namespace {

// Every rank's owners must match; compared through the lowest and highest fingerprint.
template <typename T> bool SameOnEveryRank(ZQMapNativeTypes<T, T> const &owners) {
  long long fingerprint = static_cast<long long>(owners.size());
  for (auto const &[element, owner] : owners) {
    fingerprint = fingerprint * 1000003 + static_cast<long long>(element) * 31 + owner;
  }
  long long low = 0;
  long long high = 0;
  MPI_Allreduce(&fingerprint, &low, 1, MPI_LONG_LONG, MPI_MIN, MPI_COMM_WORLD);
  MPI_Allreduce(&fingerprint, &high, 1, MPI_LONG_LONG, MPI_MAX, MPI_COMM_WORLD);
  return low == high;
}

// Walking the set in order, the owners form consecutive runs of the distributed lengths.
template <typename T>
bool CutIntoRuns(ZQSetNativeType<T> const &elements, ZQMapNativeTypes<T, T> const &owners, int n) {
  std::vector<T> const offsets = ExpectedShares(static_cast<T>(elements.size()), n);
  T position = 0;
  for (T element : elements) {
    auto const found = owners.find(element);
    T const expected = static_cast<T>(std::upper_bound(offsets.begin(), offsets.end(), position) - offsets.begin() - 1);
    if (found == owners.end() || found->second != expected) {
      return false;
    }
    ++position;
  }
  return owners.size() == elements.size();
}

} // namespace

TEST(Partition, CutsAnOrderedSetIntoRunsLongestFirstIdenticallyOnEveryRank) {
  ZQContext context;
  int const n = ZQContext::GetNProcs(&context);
  ZQSetNativeType<int> small = {30, 7, 20, 9, 8};
  ZQMapNativeTypes<int, int> owners;
  owners[99] = 5;
  ASSERT_TRUE(ZQMPTUtil::Partition(&context, small, owners));
  EXPECT_TRUE(CutIntoRuns(small, owners, n));
  if (n == 2) {
    EXPECT_EQ(owners, (ZQMapNativeTypes<int, int>{{7, 0}, {8, 0}, {9, 0}, {20, 1}, {30, 1}}));
  }
  EXPECT_TRUE(SameOnEveryRank(owners));

  ZQSetNativeType<long long> large;
  for (long long i = 0; i < 53; ++i) {
    large.insert((1LL << 40) - 7 * i * i);
  }
  ZQMapNativeTypes<long long, long long> wideOwners;
  ASSERT_TRUE(ZQMPTUtil::Partition(&context, large, wideOwners));
  EXPECT_TRUE(CutIntoRuns(large, wideOwners, n));
  EXPECT_TRUE(SameOnEveryRank(wideOwners));
}

TEST(Partition, EmptySetOrNoContext) {
  ZQContext context;
  ZQMapNativeTypes<int, int> owners;
  owners[1] = 1;
  EXPECT_TRUE(ZQMPTUtil::Partition(&context, ZQSetNativeType<int>{}, owners));
  EXPECT_TRUE(owners.empty());

  ZQMapNativeTypes<long long, long long> alone;
  EXPECT_TRUE(ZQMPTUtil::Partition(nullptr, ZQSetNativeType<long long>{5, 1LL << 50}, alone));
  EXPECT_EQ(alone, (ZQMapNativeTypes<long long, long long>{{5, 0}, {1LL << 50, 0}}));
}
