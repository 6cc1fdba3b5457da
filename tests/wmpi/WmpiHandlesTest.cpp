// Handles of communicators and requests, and failures that come back as statuses.
#include "WmpiFixture.h"

#include <cstring>

namespace {

constexpr unsigned long long bogusHandle = 123456789ull;

} // namespace

TEST(WmpiCommunicators, DuplicatesLiveInReusedSlotsAndFreeClearsTheHandle) {
  unsigned long long first = WMPI_COMM_NULL;
  unsigned long long second = WMPI_COMM_NULL;
  EXPECT_EQ(0, WMPI_Comm_dup(WMPI_COMM_WORLD, &first));
  EXPECT_EQ(0, WMPI_Comm_dup(first, &second));
  int rank = -1;
  EXPECT_EQ(0, WMPI_Comm_rank(second, &rank));
  EXPECT_EQ(zqtest::WorldRank(), rank);

  unsigned long long const firstValue = first;
  EXPECT_EQ(0, WMPI_Comm_free(&first));
  EXPECT_EQ(WMPI_COMM_NULL, first);
  EXPECT_NE(0, WMPI_Comm_rank(firstValue, &rank)); // stale until the slot is handed out again
  EXPECT_EQ(0, WMPI_Comm_dup(WMPI_COMM_SELF, &first));
  EXPECT_EQ(firstValue, first);
  int size = 0;
  EXPECT_EQ(0, WMPI_Comm_size(first, &size));
  EXPECT_EQ(1, size);
  EXPECT_EQ(0, WMPI_Comm_free(&first));
  EXPECT_EQ(0, WMPI_Comm_free(&second));
  EXPECT_NE(0, WMPI_Comm_free(&second));
}

TEST(WmpiCommunicators, PredefinedAndBogusHandlesAreRefusedWithoutHarm) {
  for (unsigned long long refused : {WMPI_COMM_WORLD, WMPI_COMM_SELF, bogusHandle}) {
    unsigned long long handle = refused;
    EXPECT_NE(0, WMPI_Comm_free(&handle));
    EXPECT_EQ(refused, handle);
  }
  unsigned long long copy = 0;
  EXPECT_NE(0, WMPI_Comm_dup(bogusHandle, &copy));
  EXPECT_EQ(WMPI_COMM_NULL, copy);
  EXPECT_NE(0, WMPI_Barrier(WMPI_COMM_NULL));
  EXPECT_NE(0, WMPI_Comm_size(WMPI_COMM_WORLD, nullptr));
}

TEST_F(WmpiOnDup, MessagesOnADuplicateStayOnIt) {
  int value = rank;
  unsigned long long request = WMPI_REQUEST_NULL;
  EXPECT_EQ(0, WMPI_Isend(&value, 1, WMPI_INT, rank, 3, comm, &request));
  EXPECT_EQ(0, WMPI_Probe(rank, 3, comm, nullptr));
  int flag = 1;
  EXPECT_EQ(0, WMPI_Iprobe(rank, -1, WMPI_COMM_WORLD, &flag, nullptr));
  EXPECT_EQ(0, flag);
  EXPECT_EQ(0, WMPI_Recv(&value, 1, WMPI_INT, rank, 3, comm, nullptr));
  EXPECT_EQ(0, WMPI_Wait(&request, nullptr));
}

TEST_F(WmpiOnDup, RequestHandlesAreCheckedAndFreedOnce) {
  int incoming = 0;
  unsigned long long request = WMPI_REQUEST_NULL;
  EXPECT_EQ(0, WMPI_Irecv(&incoming, 1, WMPI_INT, rank, 9, comm, &request));
  unsigned long long twice[2] = {request, request}; // one request twice in one wait
  EXPECT_NE(0, WMPI_Waitall(2, twice, nullptr));
  EXPECT_EQ(request, twice[0]);

  unsigned long long stale = request;
  EXPECT_EQ(0, WMPI_Request_free(&request));
  EXPECT_EQ(WMPI_REQUEST_NULL, request);
  EXPECT_NE(0, WMPI_Request_free(&request));
  int index = 7;
  EXPECT_NE(0, WMPI_Waitany(1, &stale, &index, nullptr));
  EXPECT_NE(WMPI_REQUEST_NULL, stale);

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
  EXPECT_EQ(WMPI_REQUEST_NULL, request);
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
