// The C message-passing layer: handles, failures as statuses, point-to-point traffic and
// what a status reports, collectives over every datatype code, and packing.
#include "MpiTestSupport.h"

#include <zqcore/wmpi.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <string>
#include <vector>

namespace {

// A private duplicate of the world for each test, so that no message of one test can be
// matched or probed by another.
class WmpiOnDup : public ::testing::Test {
protected:
  void SetUp() override {
    // Every rank stops together if any rank lacks its duplicate.
    ASSERT_TRUE(zqtest::AllRanks(WMPI_Comm_dup(WMPI_COMM_WORLD, &comm) == 0));
    EXPECT_EQ(0, WMPI_Comm_rank(comm, &rank));
    EXPECT_EQ(0, WMPI_Comm_size(comm, &size));
  }
  void TearDown() override { EXPECT_EQ(0, WMPI_Comm_free(&comm)); }

  int Right() const { return (rank + 1) % size; }
  int Left() const { return (rank + size - 1) % size; }

  unsigned long long comm = WMPI_COMM_NULL;
  int rank = -1;
  int size = 1;
};

WMPI_Status StatusOfBytes(unsigned long long bytes, bool cancelled) {
  WMPI_Status status{};
  status.count_lo = static_cast<int>(static_cast<unsigned>(bytes));
  status.count_hi_and_cancelled = static_cast<int>(static_cast<unsigned>((bytes >> 32) << 1 | (cancelled ? 1 : 0)));
  return status;
}

int CountOf(WMPI_Status const &status, int datatype) {
  int count = -1;
  EXPECT_EQ(0, WMPI_Get_count(&status, datatype, &count));
  return count;
}

} // namespace

TEST(WmpiCommunicators, DuplicatesWorkFreeRetiresTheirHandlesAndOthersAreRefused) {
  unsigned long long first = WMPI_COMM_NULL;
  unsigned long long second = WMPI_COMM_NULL;
  EXPECT_EQ(0, WMPI_Comm_dup(WMPI_COMM_WORLD, &first));
  EXPECT_EQ(0, WMPI_Comm_dup(first, &second));
  int rank = -1;
  EXPECT_EQ(0, WMPI_Comm_rank(second, &rank));
  EXPECT_EQ(zqtest::WorldRank(), rank);

  unsigned long long const stale = first;
  EXPECT_EQ(0, WMPI_Comm_free(&first));
  EXPECT_EQ(WMPI_COMM_NULL, first);
  EXPECT_EQ(0, WMPI_Comm_free(&second));
  int size = 0;
  EXPECT_EQ(0, WMPI_Comm_size(WMPI_COMM_SELF, &size));
  EXPECT_EQ(1, size);

  // Freed, predefined, null and made-up handles are refused without harm.
  unsigned long long const bogus = 123456789ull;
  for (unsigned long long refused : {stale, WMPI_COMM_WORLD, WMPI_COMM_SELF, WMPI_COMM_NULL, bogus}) {
    unsigned long long handle = refused;
    EXPECT_NE(0, WMPI_Comm_free(&handle));
    EXPECT_EQ(refused, handle);
  }
  unsigned long long copy = 0;
  EXPECT_NE(0, WMPI_Comm_dup(stale, &copy));
  EXPECT_EQ(WMPI_COMM_NULL, copy);
  EXPECT_NE(0, WMPI_Barrier(WMPI_COMM_NULL));
  EXPECT_NE(0, WMPI_Comm_size(WMPI_COMM_WORLD, nullptr));
}

TEST_F(WmpiOnDup, RequestHandlesAreCheckedAndFreedOnce) {
  int incoming = 0;
  unsigned long long request = WMPI_REQUEST_NULL;
  EXPECT_EQ(0, WMPI_Irecv(&incoming, 1, WMPI_INT, rank, 9, comm, &request));
  unsigned long long twice[2] = {request, request}; // one request twice in one wait
  EXPECT_NE(0, WMPI_Waitall(2, twice, nullptr));

  EXPECT_EQ(0, WMPI_Request_free(&request)); // the refused wait left the request usable
  EXPECT_EQ(WMPI_REQUEST_NULL, request);
  EXPECT_NE(0, WMPI_Request_free(&request));
  int index = 7;
  EXPECT_NE(0, WMPI_Waitany(1, twice, &index, nullptr)); // a freed handle is stale

  // The released receive is still posted: match it so that it leaves nothing behind.
  EXPECT_EQ(0, WMPI_Send(&incoming, 1, WMPI_INT, rank, 9, comm));
}

TEST_F(WmpiOnDup, FailuresComeBackAsStatusesAndTheJobGoesOn) {
  int value = rank;
  int const sendStatus = WMPI_Send(&value, 1, WMPI_INT, size, 0, comm); // no such rank
  EXPECT_NE(0, sendStatus);
  EXPECT_NE(0, WMPI_Send(&value, 1, WMPI_INT, size, 0, WMPI_COMM_WORLD));
  unsigned long long request = WMPI_REQUEST_NULL;
  EXPECT_NE(0, WMPI_Isend(&value, 1, WMPI_INT, -1, 0, comm, &request));
  EXPECT_NE(0, WMPI_Send(&value, 1, 4, Right(), 0, comm)); // no such datatype
  EXPECT_NE(0, WMPI_Send(&value, -1, WMPI_INT, Right(), 0, comm));
  EXPECT_NE(0, WMPI_Send(nullptr, 1, WMPI_INT, Right(), 0, comm));
  EXPECT_NE(0, WMPI_Allreduce(&value, &value, 1, WMPI_INT, 4, comm)); // no such operation

  char text[WMPI_MAX_ERROR_STRING];
  int length = -1;
  EXPECT_EQ(0, WMPI_Error_string(sendStatus, text, &length));
  EXPECT_GT(length, 0);
  EXPECT_EQ(static_cast<size_t>(length), std::strlen(text));
  // Still a working job: every rank meets again, on the duplicate and on the world.
  EXPECT_TRUE(zqtest::AllRanks(WMPI_Barrier(comm) == 0 && WMPI_Barrier(WMPI_COMM_WORLD) == 0));
}

TEST_F(WmpiOnDup, RingWaitsClearFinishedHandlesStatusesReportEachMessageAndTagMinusOneIsAnyTag) {
  double outgoing[3] = {rank + 0.5, rank + 1.5, rank + 2.5};
  double incoming[3] = {};
  unsigned long long requests[3] = {WMPI_REQUEST_NULL, WMPI_REQUEST_NULL, WMPI_REQUEST_NULL};
  EXPECT_EQ(0, WMPI_Irecv(incoming, 3, WMPI_DOUBLE, Left(), 11, comm, &requests[0]));
  EXPECT_EQ(0, WMPI_Isend(outgoing, 3, WMPI_DOUBLE, Right(), 11, comm, &requests[2]));
  WMPI_Status statuses[3];
  EXPECT_EQ(0, WMPI_Waitall(3, requests, statuses));
  EXPECT_EQ(Left() + 2.5, incoming[2]);
  EXPECT_EQ(Left(), statuses[0].MPI_SOURCE);
  EXPECT_EQ(11, statuses[0].MPI_TAG);
  EXPECT_EQ(24, statuses[0].count_lo);
  EXPECT_EQ(0, statuses[0].count_hi_and_cancelled);
  EXPECT_EQ(-1, statuses[1].MPI_TAG); // the inactive entry has an empty status
  EXPECT_EQ(WMPI_REQUEST_NULL, requests[0]);
  EXPECT_EQ(WMPI_REQUEST_NULL, requests[2]);

  // Waitany finishes each request once, then answers that none is left.
  EXPECT_EQ(0, WMPI_Irecv(incoming, 3, WMPI_DOUBLE, Left(), 12, comm, &requests[0]));
  EXPECT_EQ(0, WMPI_Isend(outgoing, 3, WMPI_DOUBLE, Right(), 12, comm, &requests[1]));
  int first = -1, second = -1, none = 5;
  EXPECT_EQ(0, WMPI_Waitany(3, requests, &first, nullptr));
  EXPECT_EQ(0, WMPI_Waitany(3, requests, &second, nullptr));
  EXPECT_EQ(1, first + second); // 0 and 1, in either order
  EXPECT_EQ(0, WMPI_Waitany(3, requests, &none, nullptr));
  EXPECT_EQ(-1, none); // so both handles were cleared

  // Tag -1 is sendable, and it comes back as "any tag".
  int mine = rank, theirs = -1;
  WMPI_Status status{};
  EXPECT_EQ(0, WMPI_Sendrecv(&mine, 1, WMPI_INT, Right(), -1, &theirs, 1, WMPI_INT, -1, -1, comm, &status));
  EXPECT_EQ(Left(), theirs);
  EXPECT_EQ(Left(), status.MPI_SOURCE);
  EXPECT_EQ(-1, status.MPI_TAG);
}

TEST_F(WmpiOnDup, ProbesSeeAnySourceOnTheirOwnCommunicatorAndReportTheLength) {
  char text[5] = {'a', 'b', 'c', 'd', 'e'};
  unsigned long long request = WMPI_REQUEST_NULL;
  EXPECT_EQ(0, WMPI_Isend(text, 5, WMPI_CHAR, Right(), 4, comm, &request));
  WMPI_Status status{};
  EXPECT_EQ(0, WMPI_Probe(-1, -1, comm, &status));
  EXPECT_EQ(Left(), status.MPI_SOURCE);
  EXPECT_EQ(4, status.MPI_TAG);
  EXPECT_EQ(5, CountOf(status, WMPI_UNSIGNED_CHAR));
  int flag = 1;
  EXPECT_EQ(0, WMPI_Iprobe(-1, -1, WMPI_COMM_WORLD, &flag, nullptr)); // the message is on the duplicate only
  EXPECT_EQ(0, flag);
  char received[5] = {};
  EXPECT_EQ(0, WMPI_Recv(received, 5, WMPI_CHAR, -1, -1, comm, nullptr));
  EXPECT_EQ(0, WMPI_Wait(&request, nullptr));
}

TEST(WmpiStatus, CountIsReassembledFromBothWordsAndChecked) {
  EXPECT_EQ(2, CountOf(StatusOfBytes(8, false), WMPI_INT));
  EXPECT_EQ(WMPI_UNDEFINED, CountOf(StatusOfBytes(9, false), WMPI_INT));
  EXPECT_EQ(9, CountOf(StatusOfBytes(9, true), WMPI_BYTE)); // the cancelled bit is no part of the count
  EXPECT_EQ(1 << 29, CountOf(StatusOfBytes(1ull << 32, false), WMPI_LONG_LONG));
  EXPECT_EQ(WMPI_UNDEFINED, CountOf(StatusOfBytes(1ull << 32, false), WMPI_BYTE));
  EXPECT_EQ(INT_MAX, CountOf(StatusOfBytes(INT_MAX, false), WMPI_BYTE));
  int count = 0;
  EXPECT_NE(0, WMPI_Get_count(nullptr, WMPI_INT, &count));
}

TEST_F(WmpiOnDup, CollectivesCarryEveryDatatype) {
  // Values wide enough that a narrowed transfer (a two-byte wide character, say) shows up.
  auto const gathers = [this](auto zero, int code, long long base) {
    using T = decltype(zero);
    T mine[2] = {static_cast<T>(base + 2 * rank), static_cast<T>(base + 2 * rank + 1)};
    std::vector<T> all(2 * size);
    bool ok = WMPI_Allgather(mine, 2, code, all.data(), 2, code, comm) == 0;
    for (int i = 0; i < 2 * size; ++i) {
      ok = ok && all[i] == static_cast<T>(base + i);
    }
    return zqtest::AllRanks(ok);
  };
  EXPECT_TRUE(gathers(char(), WMPI_CHAR, 'A'));
  EXPECT_TRUE(gathers(short(), WMPI_SHORT, 30000));
  EXPECT_TRUE(gathers(int(), WMPI_INT, 1 << 30));
  EXPECT_TRUE(gathers(float(), WMPI_FLOAT, 1 << 20));
  EXPECT_TRUE(gathers(double(), WMPI_DOUBLE, 1LL << 50));
  EXPECT_TRUE(gathers(static_cast<unsigned char>(0), WMPI_UNSIGNED_CHAR, 200));
  EXPECT_TRUE(gathers(static_cast<unsigned char>(0), WMPI_BYTE, 240));
  EXPECT_TRUE(gathers(0LL, WMPI_LONG_LONG, 1LL << 40));
  EXPECT_TRUE(gathers(wchar_t(), WMPI_WCHAR, 0x1F600));
  EXPECT_EQ(0, WMPI_Allreduce(nullptr, nullptr, 0, WMPI_DOUBLE, WMPI_SUM, comm)); // nothing to reduce needs no memory
}

TEST(WmpiPacking, ElementsRoundTripAndOutOfBoundsRequestsMoveNothing) {
  int ints[3] = {7, -8, 1 << 30};
  wchar_t wide[2] = {L'\u00e9', static_cast<wchar_t>(0x1F600)};
  int const packed = 12 + 2 * static_cast<int>(sizeof(wchar_t));
  char buffer[64];
  std::memset(buffer, 0x5A, sizeof buffer);
  int position = 0;
  EXPECT_EQ(0, WMPI_Pack(ints, 3, WMPI_INT, buffer, packed, &position, WMPI_COMM_SELF));
  EXPECT_EQ(0, WMPI_Pack(wide, 2, WMPI_WCHAR, buffer, packed, &position, WMPI_COMM_WORLD));  // fits exactly
  EXPECT_NE(0, WMPI_Pack(ints, 1, WMPI_INT, buffer, packed + 3, &position, WMPI_COMM_SELF)); // one byte short
  EXPECT_NE(0, WMPI_Pack(ints, -1, WMPI_INT, buffer, 64, &position, WMPI_COMM_SELF));
  EXPECT_NE(0, WMPI_Pack(ints, 1, WMPI_INT, buffer, 64, nullptr, WMPI_COMM_SELF));
  for (int outside : {packed + 1, -1}) {
    EXPECT_NE(0, WMPI_Pack(ints, 0, WMPI_INT, buffer, packed, &outside, WMPI_COMM_SELF));
  }
  EXPECT_EQ(packed, position);
  EXPECT_EQ(std::string(64 - packed, 0x5A), std::string(buffer + packed, 64 - packed));

  int intsOut[3] = {};
  wchar_t wideOut[2] = {};
  position = 0;
  EXPECT_EQ(0, WMPI_Unpack(buffer, packed, &position, intsOut, 3, WMPI_INT, WMPI_COMM_SELF));
  EXPECT_NE(0, WMPI_Unpack(buffer, packed - 1, &position, wideOut, 2, WMPI_WCHAR, WMPI_COMM_SELF));
  EXPECT_EQ(0, WMPI_Unpack(buffer, packed, &position, wideOut, 2, WMPI_WCHAR, WMPI_COMM_SELF));
  EXPECT_EQ(packed, position);
  EXPECT_EQ(0, std::memcmp(ints, intsOut, sizeof ints));
  EXPECT_EQ(0, std::memcmp(wide, wideOut, sizeof wide));
}
