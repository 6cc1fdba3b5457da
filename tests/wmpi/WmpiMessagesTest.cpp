// Point-to-point traffic: waits that clear finished handles, what a status reports, and
// the any-source and any-tag conventions.
#include "WmpiFixture.h"

#include <climits>

namespace {

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

TEST_F(WmpiOnDup, RingWithWaitallClearsEveryHandleAndReportsEachMessage) {
  double outgoing[3] = {rank + 0.5, rank + 1.5, rank + 2.5};
  double incoming[3] = {};
  unsigned long long requests[3] = {WMPI_REQUEST_NULL, WMPI_REQUEST_NULL, WMPI_REQUEST_NULL};
  EXPECT_EQ(0, WMPI_Irecv(incoming, 3, WMPI_DOUBLE, Left(), 11, comm, &requests[0]));
  EXPECT_EQ(0, WMPI_Isend(outgoing, 3, WMPI_DOUBLE, Right(), 11, comm, &requests[2]));
  WMPI_Status statuses[3];
  EXPECT_EQ(0, WMPI_Waitall(3, requests, statuses));

  EXPECT_EQ(WMPI_REQUEST_NULL, requests[0]);
  EXPECT_EQ(WMPI_REQUEST_NULL, requests[2]);
  EXPECT_EQ(Left() + 2.5, incoming[2]);
  EXPECT_EQ(Left(), statuses[0].MPI_SOURCE);
  EXPECT_EQ(11, statuses[0].MPI_TAG);
  EXPECT_EQ(24, statuses[0].count_lo);
  EXPECT_EQ(0, statuses[0].count_hi_and_cancelled);
  EXPECT_EQ(3, CountOf(statuses[0], WMPI_DOUBLE));
  EXPECT_EQ(-1, statuses[1].MPI_TAG); // the inactive entry has an empty status
}

TEST_F(WmpiOnDup, WaitanyFinishesEachRequestOnceThenAnswersNone) {
  long long outgoing = rank;
  long long incoming = -1;
  unsigned long long requests[2] = {WMPI_REQUEST_NULL, WMPI_REQUEST_NULL};
  EXPECT_EQ(0, WMPI_Irecv(&incoming, 1, WMPI_LONG_LONG, Left(), 2, comm, &requests[0]));
  EXPECT_EQ(0, WMPI_Isend(&outgoing, 1, WMPI_LONG_LONG, Right(), 2, comm, &requests[1]));
  int first = -1;
  int second = -1;
  EXPECT_EQ(0, WMPI_Waitany(2, requests, &first, nullptr));
  EXPECT_EQ(0, WMPI_Waitany(2, requests, &second, nullptr));
  EXPECT_EQ(1, first + second); // 0 and 1, in either order
  EXPECT_EQ(WMPI_REQUEST_NULL, requests[0]);
  EXPECT_EQ(WMPI_REQUEST_NULL, requests[1]);
  EXPECT_EQ(Left(), incoming);

  int none = 5;
  EXPECT_EQ(0, WMPI_Waitany(2, requests, &none, nullptr));
  EXPECT_EQ(-1, none);
  none = 5;
  EXPECT_EQ(0, WMPI_Waitany(0, nullptr, &none, nullptr));
  EXPECT_EQ(-1, none);
}

TEST_F(WmpiOnDup, TagMinusOneIsSendableAndComesBackAsAnyTag) {
  int outgoing[2] = {rank, -rank};
  int incoming[2] = {-9, -9};
  WMPI_Status status{};
  EXPECT_EQ(0, WMPI_Sendrecv(outgoing, 2, WMPI_INT, Right(), -1, incoming, 2, WMPI_INT, -1, -1, comm, &status));
  EXPECT_EQ(Left(), incoming[0]);
  EXPECT_EQ(Left(), status.MPI_SOURCE);
  EXPECT_EQ(-1, status.MPI_TAG);
}

TEST_F(WmpiOnDup, ProbesSeeAnySourceAndReportTheLength) {
  char text[5] = {'a', 'b', 'c', 'd', 'e'};
  unsigned long long request = WMPI_REQUEST_NULL;
  EXPECT_EQ(0, WMPI_Isend(text, 5, WMPI_CHAR, Right(), 4, comm, &request));
  WMPI_Status status{};
  EXPECT_EQ(0, WMPI_Probe(-1, -1, comm, &status));
  EXPECT_EQ(Left(), status.MPI_SOURCE);
  EXPECT_EQ(4, status.MPI_TAG);
  EXPECT_EQ(5, CountOf(status, WMPI_UNSIGNED_CHAR));
  EXPECT_EQ(WMPI_UNDEFINED, CountOf(status, WMPI_SHORT));
  char received[5] = {};
  EXPECT_EQ(0, WMPI_Recv(received, 5, WMPI_CHAR, -1, -1, comm, nullptr));
  EXPECT_EQ(0, WMPI_Wait(&request, nullptr));
  EXPECT_EQ('e', received[4]);
  // Every rank has taken its one message, so nothing is left to probe.
  EXPECT_TRUE(zqtest::AllRanks(WMPI_Barrier(comm) == 0));
  int flag = 1;
  EXPECT_EQ(0, WMPI_Iprobe(-1, -1, comm, &flag, &status));
  EXPECT_EQ(0, flag);
}

TEST(WmpiStatus, CountIsReassembledFromBothWordsAndChecked) {
  EXPECT_EQ(2, CountOf(StatusOfBytes(8, false), WMPI_INT));
  EXPECT_EQ(WMPI_UNDEFINED, CountOf(StatusOfBytes(9, false), WMPI_INT));
  EXPECT_EQ(9, CountOf(StatusOfBytes(9, true), WMPI_BYTE)); // the cancelled bit is no part of the count
  EXPECT_EQ(1 << 29, CountOf(StatusOfBytes(1ull << 32, false), WMPI_LONG_LONG));
  EXPECT_EQ(WMPI_UNDEFINED, CountOf(StatusOfBytes(1ull << 32, false), WMPI_BYTE));
  EXPECT_EQ(INT_MAX, CountOf(StatusOfBytes(INT_MAX, false), WMPI_BYTE));
  EXPECT_EQ(3, CountOf(StatusOfBytes(3 * sizeof(wchar_t), false), WMPI_WCHAR));
  int count = 0;
  EXPECT_NE(0, WMPI_Get_count(nullptr, WMPI_INT, &count));
}
