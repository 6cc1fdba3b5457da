// Typed point-to-point messages, their tag sequences, the collectives and the reductions.
#include <zqcore/parallel/ZQMPT.h>
#include <zqcore/wmpi.h>

#include "MpiTestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <vector>

using Velmora::Tessara::ZQ::Core::ZQMPT;

namespace {

int Next(ZQMPT const &mpt) { return (mpt.GetProcRank() + 1) % mpt.GetNProcs(); }
int Previous(ZQMPT const &mpt) { return (mpt.GetProcRank() + mpt.GetNProcs() - 1) % mpt.GetNProcs(); }

// Takes the next message from `source` with any tag and says whether it carried `tag`.
bool NextTagFrom(ZQMPT const &mpt, int source, int tag) {
  int payload = 0;
  WMPI_Status status{};
  return WMPI_Recv(&payload, 1, WMPI_INT, source, WMPI_ANY_TAG, mpt.GetMPIComm(), &status) == 0 &&
         status.MPI_TAG == tag;
}

// Every rank sends two values to the next one; the second tells the sender apart.
template <typename T> bool ShiftCarries(ZQMPT &mpt, T value) {
  T sent[2] = {value, static_cast<T>(value + mpt.GetProcRank())};
  T got[2] = {};
  mpt.BSend(sent, 2, Next(mpt));
  mpt.BReceive(got, 2, Previous(mpt));
  return got[0] == value && got[1] == static_cast<T>(value + Previous(mpt));
}

template <typename T> bool ReductionsAgree(ZQMPT &mpt) {
  int const n = mpt.GetNProcs();
  T in[2] = {static_cast<T>(mpt.GetProcRank()), static_cast<T>(-mpt.GetProcRank())};
  T out[2] = {};
  mpt.Sum(in, out, 2);
  bool ok = out[0] == static_cast<T>(n * (n - 1) / 2) && out[1] == static_cast<T>(-n * (n - 1) / 2);
  mpt.Min(in, out, 2);
  ok = ok && out[0] == 0 && out[1] == static_cast<T>(1 - n);
  mpt.Max(in, 2);
  ok = ok && in[0] == static_cast<T>(n - 1) && in[1] == 0;
  mpt.Min(in, 1);
  mpt.Sum(in, 1);
  return ok && in[0] == static_cast<T>(n * (n - 1));
}

} // namespace

// Tags run 1, 2, ... 32766, 0, 1, ... per peer and direction.
TEST(MPTTags, RunFromOnePerPeerAndDirectionAndWrapAfter32766) {
  ZQMPT mpt;
  int const self = mpt.GetProcRank();
  int payload = 0;
  bool ok = true;
  for (int message = 1; message <= 32768; ++message) {
    mpt.BSend(&payload, 1, Next(mpt));
    ok = NextTagFrom(mpt, Previous(mpt), message % 32767) && ok;
  }
  // Another peer starts its own sequence; alone, the "other" peer is the same one.
  mpt.BSend(&payload, 1, self);
  ok = NextTagFrom(mpt, self, mpt.GetNProcs() == 1 ? 2 : 1) && ok;
  // Everything sent here is taken: a receive from any peer must accept the stray tag 500.
  int stray = 77;
  ok = WMPI_Send(&stray, 1, WMPI_INT, self, 500, mpt.GetMPIComm()) == 0 && ok;
  mpt.BReceive(&payload, 1, WMPI_ANY_SOURCE);
  EXPECT_TRUE(zqtest::AllRanks(ok && payload == 77));
}

TEST(MPTMessages, SendReceiveAndExchangeCarryEveryElementType) {
  ZQMPT mpt;
  // Braced lists run every exchange, in order, even after one fails: no rank is left waiting.
  bool const carried[] = {ShiftCarries<char>(mpt, 'a'),          ShiftCarries<wchar_t>(mpt, L'\x263a'),
                          ShiftCarries<unsigned char>(mpt, 250), ShiftCarries<short>(mpt, -300),
                          ShiftCarries<int>(mpt, 1 << 20),       ShiftCarries<long long>(mpt, 1LL << 40),
                          ShiftCarries<float>(mpt, 2.5f),        ShiftCarries<double>(mpt, -0.125)};
  bool const ok = std::count(std::begin(carried), std::end(carried), false) == 0;
  long long mine[2] = {mpt.GetProcRank(), 1LL << 33};
  long long theirs[2] = {};
  mpt.BSendReceive(mine, 2, Next(mpt), theirs, 2, Previous(mpt));
  EXPECT_TRUE(zqtest::AllRanks(ok && theirs[0] == Previous(mpt) && theirs[1] == mine[1]));
}

TEST(MPTCollectives, BroadcastGatherAndAllToAll) {
  ZQMPT mpt;
  int const n = mpt.GetNProcs();
  int const rank = mpt.GetProcRank();
  wchar_t text[2] = {L'z', rank == n - 1 ? L'!' : L'0'};
  mpt.Broadcast(text, 2, n - 1);
  double pair[2] = {rank + 0.5, rank * 10.0};
  std::vector<double> gathered(2 * n);
  std::vector<int> blocks(n);
  std::vector<int> swapped(n);
  for (int i = 0; i < n; ++i) {
    blocks[i] = rank * 100 + i;
  }
  mpt.AllGather(pair, gathered.data(), 2);
  mpt.AllToAll(blocks.data(), swapped.data(), 1);
  bool ok = text[1] == L'!';
  for (int i = 0; i < n; ++i) {
    ok = ok && gathered[2 * i] == i + 0.5 && gathered[2 * i + 1] == i * 10.0 && swapped[i] == i * 100 + rank;
  }
  EXPECT_TRUE(zqtest::AllRanks(ok));
}

// Sum, Min and Max of every numeric type, and the logical checks: all must hold for
// CheckTrue, one is enough for CheckFalse.
TEST(MPTCollectives, ReductionsOfEveryNumericTypeAndLogicalChecks) {
  ZQMPT mpt;
  bool ok = ReductionsAgree<short>(mpt) && ReductionsAgree<int>(mpt) && ReductionsAgree<long long>(mpt) &&
            ReductionsAgree<float>(mpt) && ReductionsAgree<double>(mpt);
  bool const alone = mpt.GetNProcs() == 1;
  bool const first = mpt.GetProcRank() == 0;
  ok = ok && mpt.CheckTrue(true) && !mpt.CheckTrue(false) && mpt.CheckTrue(first) == alone;
  ok = ok && mpt.CheckFalse(true) && !mpt.CheckFalse(false) && mpt.CheckFalse(first);
  // An empty in-place reduction returns without joining a collective: only rank 0 calls it.
  double untouched = 3.0;
  if (first) {
    mpt.Sum(&untouched, 0);
  }
  mpt.Barrier();
  EXPECT_TRUE(zqtest::AllRanks(ok && untouched == 3.0));
}

TEST(MPTCollectives, SizeOfGivesTheElementWidths) {
  int const codes[] = {WMPI_CHAR,  WMPI_UNSIGNED_CHAR, WMPI_SHORT,     WMPI_INT,
                       WMPI_FLOAT, WMPI_DOUBLE,        WMPI_LONG_LONG, WMPI_WCHAR};
  long long const widths[] = {1, 1, 2, 4, 4, 8, 8, sizeof(wchar_t)};
  for (int i = 0; i < 8; ++i) {
    EXPECT_EQ(widths[i], ZQMPT::SizeOf(codes[i])) << "type code " << codes[i];
  }
}
