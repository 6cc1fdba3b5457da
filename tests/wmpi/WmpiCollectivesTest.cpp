// Collectives over every datatype code, reductions, and packing.
#include "WmpiFixture.h"

#include <cstring>
#include <string>
#include <vector>

namespace {

// Values wide enough that a narrowed transfer (a two-byte wide character, say) shows up.
template <class T> bool GathersEveryRanksValues(int code, long long base, unsigned long long comm, int rank, int size) {
  T mine[2] = {static_cast<T>(base + 2 * rank), static_cast<T>(base + 2 * rank + 1)};
  std::vector<T> all(2 * size);
  bool ok = WMPI_Allgather(mine, 2, code, all.data(), 2, code, comm) == 0;
  for (int i = 0; i < 2 * size; ++i) {
    ok = ok && all[i] == static_cast<T>(base + i);
  }
  return ok;
}

} // namespace

TEST_F(WmpiOnDup, CollectivesCarryEveryDatatype) {
  EXPECT_TRUE(zqtest::AllRanks(GathersEveryRanksValues<char>(WMPI_CHAR, 'A', comm, rank, size)));
  EXPECT_TRUE(zqtest::AllRanks(GathersEveryRanksValues<short>(WMPI_SHORT, 30000, comm, rank, size)));
  EXPECT_TRUE(zqtest::AllRanks(GathersEveryRanksValues<int>(WMPI_INT, 1 << 30, comm, rank, size)));
  EXPECT_TRUE(zqtest::AllRanks(GathersEveryRanksValues<float>(WMPI_FLOAT, 1 << 20, comm, rank, size)));
  EXPECT_TRUE(zqtest::AllRanks(GathersEveryRanksValues<double>(WMPI_DOUBLE, 1LL << 50, comm, rank, size)));
  EXPECT_TRUE(zqtest::AllRanks(GathersEveryRanksValues<unsigned char>(WMPI_UNSIGNED_CHAR, 200, comm, rank, size)));
  EXPECT_TRUE(zqtest::AllRanks(GathersEveryRanksValues<unsigned char>(WMPI_BYTE, 240, comm, rank, size)));
  EXPECT_TRUE(zqtest::AllRanks(GathersEveryRanksValues<long long>(WMPI_LONG_LONG, 1LL << 40, comm, rank, size)));
  EXPECT_TRUE(zqtest::AllRanks(GathersEveryRanksValues<wchar_t>(WMPI_WCHAR, 0x1F600, comm, rank, size)));
}

TEST_F(WmpiOnDup, BroadcastAndAlltoallPutBlocksInPlace) {
  int root = size - 1;
  long long fromRoot = rank == root ? 1LL << 40 : 0;
  EXPECT_EQ(0, WMPI_Bcast(&fromRoot, 1, WMPI_LONG_LONG, root, comm));
  EXPECT_EQ(1LL << 40, fromRoot);

  std::vector<int> outgoing(size);
  std::vector<int> incoming(size, -1);
  for (int peer = 0; peer < size; ++peer) {
    outgoing[peer] = rank * 100 + peer;
  }
  EXPECT_EQ(0, WMPI_Alltoall(outgoing.data(), 1, WMPI_INT, incoming.data(), 1, WMPI_INT, comm));
  for (int peer = 0; peer < size; ++peer) {
    EXPECT_EQ(peer * 100 + rank, incoming[peer]);
  }
}

TEST_F(WmpiOnDup, AllreduceAppliesEachOperation) {
  int local[2] = {rank + 1, rank % 2 == 0 ? 1 : 0};
  int result[2] = {-1, -1};
  EXPECT_EQ(0, WMPI_Allreduce(local, result, 1, WMPI_INT, WMPI_MAX, comm));
  EXPECT_EQ(size, result[0]);
  EXPECT_EQ(0, WMPI_Allreduce(local, result, 1, WMPI_INT, WMPI_MIN, comm));
  EXPECT_EQ(1, result[0]);
  EXPECT_EQ(0, WMPI_Allreduce(local, result, 2, WMPI_INT, WMPI_SUM, comm));
  EXPECT_EQ(size * (size + 1) / 2, result[0]);
  EXPECT_EQ(0, WMPI_Allreduce(local, result, 2, WMPI_INT, WMPI_LAND, comm));
  EXPECT_EQ(1, result[0]);
  EXPECT_EQ(size == 1 ? 1 : 0, result[1]);

  EXPECT_EQ(0, WMPI_Allreduce(nullptr, nullptr, 0, WMPI_DOUBLE, WMPI_SUM, comm));
}

TEST(WmpiPacking, ElementsRoundTripInPackingOrder) {
  int ints[3] = {7, -8, 1 << 30};
  wchar_t wide[2] = {L'\u00e9', static_cast<wchar_t>(0x1F600)};
  char buffer[64];
  int position = 0;
  EXPECT_EQ(0, WMPI_Pack(ints, 3, WMPI_INT, buffer, 64, &position, WMPI_COMM_SELF));
  EXPECT_EQ(12, position);
  EXPECT_EQ(0, WMPI_Pack(wide, 2, WMPI_WCHAR, buffer, 64, &position, WMPI_COMM_WORLD));
  int const packed = 12 + 2 * static_cast<int>(sizeof(wchar_t));
  EXPECT_EQ(packed, position);

  int intsOut[3] = {};
  wchar_t wideOut[2] = {};
  position = 0;
  EXPECT_EQ(0, WMPI_Unpack(buffer, packed, &position, intsOut, 3, WMPI_INT, WMPI_COMM_SELF));
  EXPECT_EQ(0, WMPI_Unpack(buffer, packed, &position, wideOut, 2, WMPI_WCHAR, WMPI_COMM_SELF));
  EXPECT_EQ(packed, position);
  EXPECT_EQ(0, std::memcmp(ints, intsOut, sizeof ints));
  EXPECT_EQ(0, std::memcmp(wide, wideOut, sizeof wide));
}

TEST(WmpiPacking, OutOfBoundsRequestsWriteNothing) {
  int pair[2] = {1, 2};
  char buffer[8];
  std::memset(buffer, 0x5A, sizeof buffer);
  int position = 4;
  EXPECT_NE(0, WMPI_Pack(pair, 2, WMPI_INT, buffer, 8, &position, WMPI_COMM_SELF)); // one int too many
  EXPECT_NE(0, WMPI_Pack(pair, -1, WMPI_INT, buffer, 8, &position, WMPI_COMM_SELF));
  EXPECT_NE(0, WMPI_Pack(pair, 1, WMPI_INT, buffer, 8, &position, 987654321ull));
  EXPECT_NE(0, WMPI_Pack(pair, 1, WMPI_INT, buffer, 8, nullptr, WMPI_COMM_SELF));
  EXPECT_EQ(4, position);
  for (int outside : {9, -1}) {
    EXPECT_NE(0, WMPI_Pack(pair, 0, WMPI_INT, buffer, 8, &outside, WMPI_COMM_SELF));
  }
  EXPECT_EQ(std::string(8, 0x5A), std::string(buffer, 8));
  EXPECT_EQ(0, WMPI_Pack(pair, 1, WMPI_INT, buffer, 8, &position, WMPI_COMM_SELF)); // fits exactly
  EXPECT_EQ(8, position);

  int out = -3;
  position = 4;
  EXPECT_NE(0, WMPI_Unpack(buffer, 7, &position, &out, 1, WMPI_INT, WMPI_COMM_SELF));
  EXPECT_EQ(4, position);
  EXPECT_EQ(-3, out);
  EXPECT_EQ(0, WMPI_Unpack(buffer, 8, &position, &out, 1, WMPI_INT, WMPI_COMM_SELF));
  EXPECT_EQ(1, out);
}
