// Non-blocking exchange: buffers in a ring and all-to-all, the tag sequence they leave,
// the waits, the probes, raw requests on caller memory and the "Single" buffer mode.
#include <zqcore/parallel/ZQMPT.h>
#include <zqcore/parallel/ZQMPTBuffer.h>
#include <zqcore/wmpi.h>

#include "MpiTestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <vector>

using Velmora::Tessara::ZQ::Core::Types;
using Velmora::Tessara::ZQ::Core::ZQMPT;

namespace {

// Every ordered pair gets its own length; rank 0 to itself gets an empty buffer.
long long Length(int from, int to) { return 7LL * (from * 4 + to); }

std::vector<unsigned char> Payload(int from, int to) {
  std::vector<unsigned char> bytes(static_cast<size_t>(Length(from, to)));
  for (size_t i = 0; i < bytes.size(); ++i) {
    bytes[i] = static_cast<unsigned char>(from * 31 + to * 7 + i);
  }
  return bytes;
}

void PackFor(ZQMPT &mpt, int to, long long hint) {
  std::vector<unsigned char> bytes = Payload(mpt.GetProcRank(), to);
  mpt.InitSendBuffer(to, hint);
  mpt.Pack(bytes.data(), static_cast<long long>(bytes.size()));
}

// Reads the whole selected receive buffer and compares it with what `from` packed.
bool UnpacksPayloadOf(ZQMPT &mpt, int from) {
  std::vector<unsigned char> expected = Payload(from, mpt.GetProcRank());
  std::vector<unsigned char> got(expected.size());
  bool const sized = mpt.GetReceiveBufferSize(mpt.GetSelectedReceiveBuffer()) == Length(from, mpt.GetProcRank());
  mpt.Unpack(got.data(), static_cast<long long>(got.size()));
  return sized && got == expected;
}

// One message through NBSend and BReceive: gives the tag it travelled with. The receive
// only matches if this rank's receive sequence for `from` agrees with `from`'s send one.
int NextTag(ZQMPT &mpt, int to, int from) {
  int out = mpt.GetProcRank();
  int in = -1;
  unsigned long long request = WMPI_REQUEST_NULL;
  mpt.NBSend(&out, 1, WMPI_INT, to, &request);
  WMPI_Status status{};
  WMPI_Probe(from, WMPI_ANY_TAG, mpt.GetMPIComm(), &status);
  mpt.BReceive(&in, 1, from);
  mpt.Wait(&request, nullptr);
  return in == from ? status.MPI_TAG : -2;
}

} // namespace

// In "Single" mode every peer's exchange goes through buffer 0.
TEST(Exchange, RingMovesTagsByTwoPerFullAndOnePerDataOnlyExchange) {
  for (auto mode : {Types::BufferMode_t::PerProcess, Types::BufferMode_t::Single}) {
    ZQMPT mpt;
    mpt.SetBufferMode(mode);
    int const n = mpt.GetNProcs();
    int const next = (mpt.GetProcRank() + 1) % n;
    int const prev = (mpt.GetProcRank() + n - 1) % n;
    bool const single = mode == Types::BufferMode_t::Single;
    mpt.SetAutoBufferResetThreshold(1000);

    PackFor(mpt, next, 100);
    mpt.InitReceiveBuffer(prev, 0);
    mpt.NBReceiveBuffer(prev, false);
    mpt.NBSendBuffer(next, false);
    bool ok = mpt.GetNPendingSendBufferRequests() == 2 && mpt.GetNPendingReceiveBufferRequests() == 1;
    mpt.NBSendBuffer(-1, false);
    mpt.WaitSendBuffer(-1, true);
    mpt.WaitReceiveBuffer(-1, false);
    ok = ok && mpt.GetNPendingBufferRequests() == 3;
    mpt.WaitReceiveBuffer(prev, false);
    mpt.WaitSendBuffer(next, false);
    // Past the threshold, a completed send gives its memory back.
    ok = ok && mpt.GetNPendingBufferRequests() == 0 && mpt.GetSelectedReceiveBuffer() == (single ? 0 : prev) &&
         UnpacksPayloadOf(mpt, prev) && mpt.GetSendBuffer(single ? 0 : next)->GetData().GetCapacity() == 0;
    ok = NextTag(mpt, next, prev) == 3 && ok;

    PackFor(mpt, next, 0);
    mpt.InitReceiveBuffer(prev, Length(prev, mpt.GetProcRank()));
    mpt.NBReceiveBuffers({prev}, true);
    mpt.NBSendBuffers({next}, true);
    ok = ok && mpt.GetNPendingBufferRequests() == 2;
    mpt.WaitReceiveBuffer(prev, true);
    mpt.WaitSendBuffer(next, true);
    ok = NextTag(mpt, next, prev) == 5 && ok && mpt.GetNPendingBufferRequests() == 0 && UnpacksPayloadOf(mpt, prev);
    EXPECT_TRUE(zqtest::AllRanks(ok)) << (single ? "Single" : "PerProcess");
  }
}

TEST(Exchange, AllToAllDeliversEveryPairWithItsOwnLength) {
  ZQMPT mpt;
  int const n = mpt.GetNProcs();
  std::set<int> peers{-1};
  // A low threshold shows that waiting for all sends keeps their memory.
  mpt.SetAutoBufferResetThreshold(1);
  bool ok = true;
  // A full exchange completed one arrival at a time, then a data-only and a full one
  // completed by the waits for all.
  for (int round = 0; round < 3; ++round) {
    bool const dataOnly = round == 1;
    for (int p = 0; p < n; ++p) {
      peers.insert(p);
      PackFor(mpt, p, 16);
      mpt.InitReceiveBuffer(p, dataOnly ? Length(p, mpt.GetProcRank()) : 0);
    }
    // Key n belongs to no member: the set operations must leave that selection as they found it.
    mpt.SelectSendBuffer(n);
    mpt.SelectReceiveBuffer(n);
    mpt.NBReceiveBuffers(peers, dataOnly);
    mpt.NBSendBuffers(peers, dataOnly);
    ok = ok && mpt.GetSelectedSendBuffer() == n && mpt.GetSelectedReceiveBuffer() == n;
    ok = ok && mpt.GetNPendingSendBufferRequests() == (dataOnly ? n : 2 * n) &&
         mpt.GetNPendingReceiveBufferRequests() == n;
    if (round == 0) {
      std::set<int> waiting = peers;
      for (int arrival = 0; arrival < n; ++arrival) {
        int peer = -1;
        mpt.WaitAnyReceiveBuffers(waiting, false, peer);
        ok = ok && waiting.erase(peer) == 1 && peer != -1 && mpt.GetSelectedReceiveBuffer() == peer &&
             UnpacksPayloadOf(mpt, peer);
      }
      // Only -1 is left: nothing to wait for, and the peer stays -1.
      int none = 0;
      mpt.WaitAnyReceiveBuffers(waiting, false, none);
      mpt.WaitAllReceiveBuffers(waiting, false);
      ok = ok && none == -1;
    } else {
      mpt.WaitAllReceiveBuffers(peers, dataOnly);
      ok = ok && (!dataOnly || mpt.GetSelectedReceiveBuffer() == n - 1);
      for (int p = 0; p < n; ++p) {
        mpt.SelectReceiveBuffer(p);
        ok = ok && UnpacksPayloadOf(mpt, p);
      }
    }
    mpt.WaitAllSendBuffers(peers, dataOnly);
    ok = ok && mpt.GetSelectedSendBuffer() == n && mpt.GetNPendingBufferRequests() == 0 &&
         mpt.GetSendBuffer(0)->GetData().GetCapacity() >= 4096;
  }
  // Packing after a set operation goes to the buffer of the selection it restored, not to
  // that of the last member it went through.
  mpt.SelectSendBuffer(0);
  long long const packed = mpt.GetSendBufferSize(0);
  mpt.WaitAllSendBuffers(peers, false);
  char mark = 'm';
  mpt.Pack(&mark, 1);
  ok = ok && mpt.GetSendBufferSize(0) == packed + 1;
  ok = NextTag(mpt, (mpt.GetProcRank() + 1) % n, (mpt.GetProcRank() + n - 1) % n) == 2 + 1 + 2 + 1 && ok;
  EXPECT_TRUE(zqtest::AllRanks(ok));
}

TEST(Exchange, ProbesFindTheLowestPeerAndWaitAnyNamesEachArrival) {
  ZQMPT mpt;
  int const n = mpt.GetNProcs();
  std::vector<unsigned char> out(static_cast<size_t>(3 * (mpt.GetProcRank() + 1)), 1);
  std::vector<unsigned long long> sends(static_cast<size_t>(n), WMPI_REQUEST_NULL);
  std::set<int> remaining;
  for (int p = 0; p < n; ++p) {
    mpt.NBSend(out.data(), static_cast<long long>(out.size()), WMPI_UNSIGNED_CHAR, p, &sends[p]);
    remaining.insert(p);
  }
  int peer = 0;
  long long size = 1;
  bool ok = !mpt.NBProbe({}, peer, size) && peer == -1 && size == 0;
  for (int p : remaining) {
    mpt.BProbe(p, size);
    ok = ok && size == 3 * (p + 1);
  }
  // Every message is here now: a set probe must name its lowest member each time.
  while (!remaining.empty()) {
    int const lowest = *remaining.begin();
    ok = ok && mpt.NBProbe(remaining, peer, size) && peer == lowest && size == 3 * (lowest + 1);
    mpt.BProbe(remaining, peer, size);
    ok = ok && peer == lowest && size == 3 * (lowest + 1);
    remaining.erase(lowest);
  }

  std::vector<unsigned char> in(static_cast<size_t>(3 * n * n));
  std::vector<unsigned long long> receives(static_cast<size_t>(n), WMPI_REQUEST_NULL);
  std::vector<WMPI_Status> statuses(static_cast<size_t>(n));
  for (int p = 0; p < n; ++p) {
    mpt.NBReceive(&in[3 * n * p], 3 * (p + 1), WMPI_UNSIGNED_CHAR, p, &receives[p]);
  }
  long long index = 0;
  for (int round = 0; round <= n; ++round) {
    mpt.WaitAny(n, receives.data(), statuses.data(), index);
    ok = ok && (round == n ? index == -1 : receives[index] == WMPI_REQUEST_NULL && statuses[index].MPI_SOURCE == index);
  }
  mpt.WaitAll(n, sends.data(), nullptr);
  ok = ok && !mpt.NBProbe(0, size) && size == 0 && std::count(sends.begin(), sends.end(), WMPI_REQUEST_NULL) == n;
  EXPECT_TRUE(zqtest::AllRanks(ok));
}

TEST(Exchange, ResetFreesOutstandingRequestsAndSkipsFinishedOnes) {
  ZQMPT mpt;
  int const self = mpt.GetProcRank();
  PackFor(mpt, self, 0);
  mpt.InitReceiveBuffer(self, 0);
  mpt.NBSendBuffer(self, false);
  mpt.NBReceiveBuffer(self, false);
  mpt.WaitReceiveBuffer(self, false);
  // The send's two requests are still held, the receive's are done (-1): freeing one of those would end the job.
  bool const ok = mpt.GetNPendingBufferRequests() == 2;
  mpt.Reset();
  EXPECT_TRUE(zqtest::AllRanks(ok));
}
