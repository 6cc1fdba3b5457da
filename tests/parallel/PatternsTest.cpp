// Communication patterns: exchanges through a data handler among every rank.
#include <zqcore/core/ZQContext.h>
#include <zqcore/core/ZQErrorStack.h>
#include <zqcore/parallel/ZQCommDataHandler.h>
#include <zqcore/parallel/ZQCommPatterns.h>
#include <zqcore/parallel/ZQMPT.h>
#include <zqcore/parallel/ZQMPTBuffer.h>
#include <zqcore/strings/ZQString.h>

#include "MpiTestSupport.h"

#include <gtest/gtest.h>
#include <mpi.h>

#include <chrono>
#include <functional>
#include <map>
#include <string>
#include <vector>

using namespace Velmora::Tessara::ZQ::Core;

namespace {

using Sizes = std::map<int, long long>;
// Bytes that `from` sends to `to`; 0 for none.
using LengthOf = std::function<long long(int from, int to)>;

std::vector<unsigned char> Payload(int from, int to, long long length) {
  std::vector<unsigned char> bytes(static_cast<size_t>(std::max(length, 0LL)));
  for (size_t i = 0; i < bytes.size(); ++i) {
    bytes[i] = static_cast<unsigned char>(from * 37 + to * 11 + i * 3);
  }
  return bytes;
}

// Sends what `length` says, packing each buffer in two halves and calling back after each
// half, and records what it is shown.
class Handler : public ZQCommDataHandler {
public:
  Handler(ZQContext &context, LengthOf lengthOf)
      : own(&context.GetMPT()), rank(own->GetProcRank()), n(own->GetNProcs()), length(std::move(lengthOf)) {}

  int callBacks = 1;     // after each half
  long long shortBy = 0; // bytes packed less than announced
  bool failSizes = false;
  bool failPack = false;
  bool failFirstUnpack = false;
  Sizes extra; // entries added to both maps as they are

  bool ok = true; // the context's ZQMPT each time, empty maps, every arrival as packed
  int packCalls = 0;
  long long receivesPosted = -1;
  std::vector<long long> pendingSends; // after each callback
  std::vector<int> arrivals;
  int expected = 0; // receives announced

  bool DetermineBufferSizes(ZQMPT *mpt, Sizes *sendSizes, Sizes *recvSizes) override {
    ok = ok && mpt == own && sendSizes->empty() && recvSizes->empty();
    for (int peer = 0; peer < n; ++peer) {
      if (peer != rank && length(rank, peer) > 0) {
        (*sendSizes)[peer] = length(rank, peer);
      }
      if (peer != rank && length(peer, rank) > 0) {
        (*recvSizes)[peer] = length(peer, rank);
        ++expected;
      }
    }
    sendSizes->insert(extra.begin(), extra.end());
    recvSizes->insert(extra.begin(), extra.end());
    return !failSizes;
  }

  bool PackBuffers(ZQMPT *mpt, SendReadyCallback send, ZQCommPatterns *patterns) override {
    ok = ok && mpt == own;
    ++packCalls;
    receivesPosted = mpt->GetNPendingReceiveBufferRequests();
    for (int peer = 0; peer < n; ++peer) {
      std::vector<unsigned char> bytes = Payload(rank, peer, peer == rank ? 0 : length(rank, peer) - shortBy);
      long long const half = static_cast<long long>(bytes.size()) / 2;
      for (long long at : {0LL, half}) {
        long long const part = at == 0 ? half : static_cast<long long>(bytes.size()) - half;
        if (part == 0) {
          continue;
        }
        mpt->SelectSendBuffer(peer); // the callback moves the selection
        mpt->Pack(bytes.data() + at, part);
        for (int call = 0; call < callBacks; ++call) {
          send(patterns);
          pendingSends.push_back(mpt->GetNPendingSendBufferRequests());
        }
      }
    }
    return !failPack;
  }

  // The buffer is the peer's, selected, read from its start, with the announced length and
  // the bytes that were packed into it.
  bool UnpackBuffer(ZQMPT *mpt, int peer) override {
    long long const announced = length(peer, rank);
    ok = ok && mpt == own && mpt->GetSelectedReceiveBuffer() == peer &&
         mpt->GetReceiveBuffer(peer)->GetUnpackPos() == 0 && mpt->GetReceiveBufferSize(peer) == announced;
    std::vector<unsigned char> got(static_cast<size_t>(announced - shortBy));
    mpt->Unpack(got.data(), static_cast<long long>(got.size()));
    ok = ok && got == Payload(peer, rank, announced - shortBy);
    arrivals.push_back(peer);
    return !(failFirstUnpack && arrivals.size() == 1);
  }

protected:
  ZQMPT *own;
  int rank;
  int n;
  LengthOf length;
};

// Nothing left over: no message sent twice, to a peer without a positive size or to oneself.
bool NothingLeftOver(ZQMPT &mpt) {
  mpt.Barrier();
  return !mpt.HasPendingMessages();
}

} // namespace

// A ring, all-to-all with its own length per pair (one past the least capacity), and one-way
// pairs (odd ranks only receive; with an odd count the last rank has no partner), run one
// after another on one pattern. Entries for the own rank and of size 0 and below are ignored.
TEST(Patterns, RingAllToAllAndOneWayPairsRunOnOnePattern) {
  ZQContext context;
  ZQMPT &mpt = context.GetMPT();
  int const n = mpt.GetNProcs();
  int const rank = mpt.GetProcRank();
  mpt.SetBufferMode(Types::BufferMode_t::Single);
  std::vector<LengthOf> const plans = {
      [n](int from, int to) { return to == (from + 1) % n ? 100LL + from : 0LL; },
      [n](int from, int to) { return (from * n + to + 1) * 5LL + (from == 0 && to == n - 1 ? 9000 : 0); },
      [](int from, int to) { return from % 2 == 0 && to == from + 1 ? 300LL : 0LL; }};
  ZQCommPatterns patterns(&context);
  bool ok = true;
  for (LengthOf const &plan : plans) {
    Handler handler(context, plan);
    handler.extra = {{rank, 12}, {(rank + 2) % n, 0}, {(rank + 3) % n, -4}};
    ok = patterns.NBSendReceive(&handler) && handler.ok && ok;
    ok = ok && static_cast<int>(handler.arrivals.size()) == handler.expected && handler.packCalls == (n > 1);
  }
  // One process has nobody to exchange with: the handler is not called and the mode stays.
  Types::BufferMode_t const mode = n > 1 ? Types::BufferMode_t::PerProcess : Types::BufferMode_t::Single;
  ok = ok && mpt.GetBufferMode() == mode && mpt.GetSendBuffer(rank) == nullptr && NothingLeftOver(mpt);
  EXPECT_TRUE(zqtest::AllRanks(ok));
}

// Inside PackBuffers every receive is posted, and sends are data-only (one request each): a
// buffer leaves once, when its packed size reaches the announced one. A short one leaves at
// the end with the bytes it has.
TEST(Patterns, BuffersLeaveOnceWhenFullAndShortOnesAtTheEnd) {
  ZQContext context;
  int const n = context.GetMPT().GetNProcs();
  ZQCommPatterns patterns(&context);
  bool ok = true;
  for (int callBacks : {1, 2}) {
    for (long long shortBy : {0LL, 5LL}) {
      Handler handler(context, [](int from, int to) { return 40LL + from + 3 * to; });
      handler.callBacks = callBacks;
      handler.shortBy = shortBy;
      ok = patterns.NBSendReceive(&handler) && handler.ok && ok;
      std::vector<long long> expected;
      for (long long sent = 1; sent < n; ++sent) {
        for (long long half : {0, 1}) {
          expected.insert(expected.end(), callBacks, shortBy > 0 ? 0 : sent - 1 + half);
        }
      }
      ok = ok && handler.pendingSends == expected && (n == 1 || handler.receivesPosted == n - 1);
    }
  }
  EXPECT_TRUE(zqtest::AllRanks(ok && NothingLeftOver(context.GetMPT())));
}

// Rank 0 fails its sizes, rank 1 its first unpack, rank 3 its packing: those ranks alone
// return false, nothing is pushed, and every buffer still arrives as packed.
TEST(Patterns, FailingHandlerFailsOnlyItsRankAndNullHandlerIsReported) {
  ZQContext context;
  int const n = context.GetMPT().GetNProcs();
  int const rank = context.GetMPT().GetProcRank();
  Handler handler(context, [](int from, int to) { return 20LL + 2 * from + to; });
  handler.failSizes = rank == 0;
  handler.failFirstUnpack = rank == 1;
  handler.failPack = rank == 3;
  long long const messages = context.GetErrorStack().GetNMsg();
  ZQCommPatterns patterns(&context);
  bool const fails = n > 1 && (rank == 0 || rank == 1 || rank == 3);
  bool ok = patterns.NBSendReceive(&handler) == !fails && handler.ok;
  ok = ok && static_cast<int>(handler.arrivals.size()) == n - 1 && context.GetErrorStack().GetNMsg() == messages;
  EXPECT_TRUE(zqtest::AllRanks(ok));

  EXPECT_FALSE(patterns.NBSendReceive(nullptr));
  EXPECT_EQ(std::string(context.GetErrorStack().GetLastMsg().c_str()),
            "data handler is not initialized, communication pattern can not be executed.");
  // Without a context: one process, so a handler that would fail is never called.
  ZQCommPatterns alone;
  EXPECT_FALSE(alone.NBSendReceive(nullptr));
  handler.failSizes = handler.failPack = true;
  EXPECT_TRUE(alone.NBSendReceive(&handler));
  EXPECT_EQ(handler.packCalls, n > 1 ? 1 : 0);
}

namespace {

// World-communicator tag of the go-ahead that rank 0 gives while it unpacks.
constexpr int GoAheadTag = 4242;

// Every other rank sends to rank 0, and rank k packs only once rank 0 has unpacked the
// buffer of rank k + 1, so the buffers can only arrive from the highest rank down. The wait
// for the go-ahead is bounded: in any other order of unpacking the test fails, not hangs.
class ChainedHandler : public Handler {
public:
  explicit ChainedHandler(ZQContext &context)
      : Handler(context, [](int from, int to) { return from > 0 && to == 0 ? 48LL + from : 0LL; }) {}

  bool PackBuffers(ZQMPT *mpt, SendReadyCallback send, ZQCommPatterns *patterns) override {
    auto const deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    int arrived = waiting ? 0 : 1;
    while (!arrived && std::chrono::steady_clock::now() < deadline) {
      MPI_Iprobe(0, GoAheadTag, MPI_COMM_WORLD, &arrived, MPI_STATUS_IGNORE);
    }
    if (arrived && waiting) {
      TakeGoAhead();
    }
    return Handler::PackBuffers(mpt, send, patterns);
  }

  bool UnpackBuffer(ZQMPT *mpt, int peer) override {
    bool const result = Handler::UnpackBuffer(mpt, peer);
    int go = 1;
    if (peer > 1) {
      MPI_Send(&go, 1, MPI_INT, peer - 1, GoAheadTag, MPI_COMM_WORLD);
    }
    return result;
  }

  // A go-ahead still on its way after the bounded wait is taken, so that none is left behind.
  void TakeGoAhead() {
    int go = 0;
    MPI_Recv(&go, 1, MPI_INT, 0, GoAheadTag, MPI_COMM_WORLD, MPI_STATUS_IGNORE);
    waiting = false;
  }

  bool waiting = rank > 0 && rank < n - 1;
};

} // namespace

TEST(Patterns, BuffersAreUnpackedInOrderOfArrival) {
  ZQContext context;
  int const n = context.GetMPT().GetNProcs();
  ChainedHandler handler(context);
  ZQCommPatterns patterns(&context);
  bool ok = patterns.NBSendReceive(&handler) && handler.ok;
  if (handler.waiting) {
    handler.TakeGoAhead();
  }
  std::vector<int> highestFirst;
  for (int peer = n - 1; peer > 0 && context.GetMPT().GetProcRank() == 0; --peer) {
    highestFirst.push_back(peer);
  }
  EXPECT_TRUE(zqtest::AllRanks(ok && handler.arrivals == highestFirst));
}
