// Distribution of totals, offsets gathered from every rank, and partitions of sets.
#include <zqcore/containers/ZQArrayNativeType.h>
#include <zqcore/containers/ZQMapNativeTypes.h>
#include <zqcore/containers/ZQSetNativeType.h>
#include <zqcore/core/ZQContext.h>
#include <zqcore/core/ZQErrorStack.h>
#include <zqcore/parallel/ZQMPTUtil.h>
#include <zqcore/strings/ZQString.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <string>
#include <vector>

using namespace Velmora::Tessara::ZQ::Core;

namespace {

template <typename T> using Offsets = ZQArrayNativeType<T, long long>;

// The offsets as a vector; a rank-1 array is expected, whatever shape it had before.
template <typename T> std::vector<T> Elements(Offsets<T> const &array) {
  std::vector<T> values(static_cast<size_t>(array.GetRank() == 1 ? array.GetSize(0) : 0));
  std::copy_n(array.GetData(), values.size(), values.begin());
  return values;
}

// Offset r in closed form: r whole shares, plus one for each lower rank given a remainder.
template <typename T> std::vector<T> Shares(T total, int n) {
  std::vector<T> offsets;
  for (T r = 0; r <= n; ++r) {
    offsets.push_back(r * (total / n) + std::min(r, total % n));
  }
  return offsets;
}

template <typename T> std::vector<T> Distributed(ZQContext *context, T total) {
  Offsets<T> offsets;
  offsets.Resize(3, 3);
  EXPECT_TRUE(ZQMPTUtil::Distribute(context, total, offsets));
  return Elements(offsets);
}

std::string LastMessage(ZQContext &context) { return context.GetErrorStack().GetLastMsg().c_str(); }

} // namespace

TEST(Distribute, SharesTotalsUpToThe64BitLimitWithTheRemainderOnTheLowestRanks) {
  ZQContext context;
  int const n = ZQContext::GetNProcs(&context);
  for (int total : {0, 2, 10, n + 1, INT_MAX}) {
    EXPECT_EQ(Distributed(&context, total), Shares(total, n)) << total;
  }
  for (long long total : {1LL << 31, 3 * (1LL << 32) + 1, LLONG_MAX}) {
    EXPECT_EQ(Distributed(&context, total), Shares(total, n)) << total;
  }
  if (n == 4) {
    EXPECT_EQ(Distributed(&context, 10), (std::vector<int>{0, 3, 6, 8, 10}));
  }
  EXPECT_EQ(Distributed<long long>(nullptr, 1LL << 40), (std::vector<long long>{0, 1LL << 40}));

  Offsets<int> offsets;
  EXPECT_FALSE(ZQMPTUtil::Distribute(&context, -1, offsets));
  EXPECT_EQ(Elements(offsets), std::vector<int>(n + 1, 0));
  EXPECT_EQ(LastMessage(context), "value < 0 given, distribution can not be computed.");
  EXPECT_FALSE(ZQMPTUtil::Distribute(nullptr, -1, offsets));
}

// Values 3, 0, 5, 2, ... in rank order; then the test on the running offset ahead of each
// addition (a negative first value fails on every rank, a negative last one passes) and the
// range of each width (INT_MAX + 1, and 2^62 + 2^62 whose low 32 bits are 0).
TEST(InitDistribution, GathersOffsetsAndFailsAlikeOnEveryRank) {
  ZQContext context;
  int const n = ZQContext::GetNProcs(&context);
  int const rank = ZQContext::GetProcRank(&context);
  std::vector<int> const given = {3, 0, 5, 2};
  std::vector<int> expected = {0};
  for (int r = 0; r < n; ++r) {
    expected.push_back(expected.back() + given[r % 4]);
  }
  Offsets<int> offsets;
  offsets.Resize(2, 2);
  EXPECT_TRUE(ZQMPTUtil::InitDistribution(&context, given[rank % 4], offsets));
  EXPECT_EQ(Elements(offsets), expected);
  Offsets<long long> wide;
  EXPECT_TRUE(ZQMPTUtil::InitDistribution(&context, rank == 0 ? LLONG_MAX - (n - 1) : 1LL, wide));
  EXPECT_EQ(wide(n), LLONG_MAX);

  long long const messages = context.GetErrorStack().GetNMsg();
  bool const negativeFirst = ZQMPTUtil::InitDistribution(&context, rank == 0 ? -1 : 4, offsets);
  std::vector<int> kept = Elements(offsets);
  EXPECT_TRUE(ZQMPTUtil::InitDistribution(&context, rank == n - 1 ? -1 : 4, offsets));
  EXPECT_EQ(offsets(n), 4 * (n - 1) - 1);
  bool const narrowSum = ZQMPTUtil::InitDistribution(&context, rank == 0 ? INT_MAX : 1, offsets);
  bool const wideSum = ZQMPTUtil::InitDistribution(&context, 1LL << 62, wide);
  EXPECT_EQ(negativeFirst || narrowSum || wideSum, n == 1);
  if (n > 1) {
    // The offsets summed so far, and the gathered values after them.
    EXPECT_EQ(kept[1], -1);
    EXPECT_EQ(kept[n], 4);
    EXPECT_EQ(offsets(1), INT_MAX);
    EXPECT_EQ(offsets(2), 1);
    EXPECT_EQ(wide(2), 1LL << 62);
    EXPECT_EQ(context.GetErrorStack().GetNMsg(), messages + 3);
  }
}

// The ascending set is cut into consecutive runs of the distributed lengths; an empty set
// gives an empty map, and no context gives everything to rank 0.
TEST(Partition, CutsTheOrderedSetIntoRunsOfTheDistributedLengths) {
  ZQContext context;
  int const n = ZQContext::GetNProcs(&context);
  ZQSetNativeType<long long> elements;
  for (long long i = 0; i < 53; ++i) {
    elements.insert((1LL << 40) - 7 * i * i);
  }
  ZQMapNativeTypes<long long, long long> owners;
  ASSERT_TRUE(ZQMPTUtil::Partition(&context, elements, owners));
  std::vector<long long> const offsets = Shares(static_cast<long long>(elements.size()), n);
  long long position = 0;
  bool runs = owners.size() == elements.size();
  for (long long element : elements) {
    long long const owner = std::upper_bound(offsets.begin(), offsets.end(), position++) - offsets.begin() - 1;
    runs = runs && owners[element] == owner;
  }
  EXPECT_TRUE(runs);

  ZQMapNativeTypes<int, int> small = {{99, 5}};
  ASSERT_TRUE(ZQMPTUtil::Partition(&context, ZQSetNativeType<int>{30, 7, 20, 9, 8}, small));
  if (n == 2) {
    EXPECT_EQ(small, (ZQMapNativeTypes<int, int>{{7, 0}, {8, 0}, {9, 0}, {20, 1}, {30, 1}}));
  }
  EXPECT_TRUE(ZQMPTUtil::Partition(&context, ZQSetNativeType<int>{}, small));
  EXPECT_TRUE(small.empty());
  EXPECT_TRUE(ZQMPTUtil::Partition(nullptr, ZQSetNativeType<int>{4, 1}, small));
  EXPECT_EQ(small, (ZQMapNativeTypes<int, int>{{1, 0}, {4, 0}}));
}
