// Communication patterns: exchanges among every rank through a data handler (ring,
// all-to-all with its own length per pair, one-way pairs, empty partner sets), what the
// handler sees while packing, failing handlers, and unpacking in order of arrival.
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

#include <algorithm>
#include <chrono>
#include <functional>
#include <map>
#include <string>
#include <vector>

using namespace Velmora::Tessara::ZQ::Core;

namespace {

using Sizes = std::map<int, long long>;
// Bytes that `from` sends to `to`, 0 for none.
using LengthOf = std::function<long long(int from, int to)>;

unsigned char ByteAt(int from, int to, long long i) { return static_cast<unsigned char>(from * 37 + to * 11 + i * 3); }

std::vector<unsigned char> Payload(int from, int to, long long length) {
  std::vector<unsigned char> bytes(static_cast<size_t>(length));
  for (long long i = 0; i < length; ++i) {
    bytes[static_cast<size_t>(i)] = ByteAt(from, to, i);
  }
  return bytes;
}

// How PackBuffers uses the callback.
enum class Callback { Never, AfterEachHalf, TwiceAfterEach };

// Sends and expects what `length` says, packs each buffer in two halves, and records what
// it sees: the ZQMPT it is handed, the maps it is given, the requests in flight while it
// packs, the order of arrivals and whether each arrival holds the right bytes.
class RecordingHandler : public ZQCommDataHandler {
public:
  RecordingHandler(ZQContext &context, LengthOf lengthOf)
      : own(&context.GetMPT()), rank(context.GetMPT().GetProcRank()), nProcs(context.GetMPT().GetNProcs()),
        length(std::move(lengthOf)) {}

  // Settings.
  Callback callback = Callback::AfterEachHalf;
  long long shortBy = 0; // bytes packed less than announced
  bool failSizes = false;
  bool failPack = false;
  bool failFirstUnpack = false;
  Sizes extraSend; // entries given as they are, on top of the plan
  Sizes extraRecv;

  // Observations.
  bool mapsArrivedEmpty = true;
  bool ownMPTEveryTime = true;
  int packCalls = 0;
  long long receivesPostedAtPacking = -1;
  std::vector<long long> pendingSends; // after each callback
  std::vector<int> arrivals;
  bool arrivalsIntact = true;

  bool DetermineBufferSizes(ZQMPT *mpt, Sizes *sendSizes, Sizes *recvSizes) override {
    ownMPTEveryTime = ownMPTEveryTime && mpt == own;
    mapsArrivedEmpty = mapsArrivedEmpty && sendSizes->empty() && recvSizes->empty();
    for (int peer = 0; peer < nProcs; ++peer) {
      if (peer != rank && length(rank, peer) > 0) {
        (*sendSizes)[peer] = length(rank, peer);
      }
      if (peer != rank && length(peer, rank) > 0) {
        (*recvSizes)[peer] = length(peer, rank);
      }
    }
    sendSizes->insert(extraSend.begin(), extraSend.end());
    recvSizes->insert(extraRecv.begin(), extraRecv.end());
    return !failSizes;
  }

  bool PackBuffers(ZQMPT *mpt, SendReadyCallback send, ZQCommPatterns *patterns) override {
    ownMPTEveryTime = ownMPTEveryTime && mpt == own;
    ++packCalls;
    receivesPostedAtPacking = mpt->GetNPendingReceiveBufferRequests();
    for (int peer = 0; peer < nProcs; ++peer) {
      long long const packed = peer == rank ? 0 : length(rank, peer) - shortBy;
      if (packed <= 0) {
        continue;
      }
      std::vector<unsigned char> bytes = Payload(rank, peer, packed);
      long long const half = packed / 2;
      // The callback moves the selection, so each part selects its buffer again.
      mpt->SelectSendBuffer(peer);
      mpt->Pack(bytes.data(), half);
      CallBack(mpt, send, patterns, Callback::AfterEachHalf);
      mpt->SelectSendBuffer(peer);
      mpt->Pack(bytes.data() + half, packed - half);
      CallBack(mpt, send, patterns, Callback::AfterEachHalf);
      CallBack(mpt, send, patterns, Callback::TwiceAfterEach);
      CallBack(mpt, send, patterns, Callback::TwiceAfterEach);
    }
    return !failPack;
  }

  bool UnpackBuffer(ZQMPT *mpt, int peer) override {
    ownMPTEveryTime = ownMPTEveryTime && mpt == own;
    bool const first = arrivals.empty();
    arrivals.push_back(peer);
    arrivalsIntact = arrivalsIntact && HoldsPayloadOf(*mpt, peer);
    return !(failFirstUnpack && first);
  }

  // The peers this rank expects a buffer from.
  int ReceiveCount() const {
    int count = 0;
    for (int peer = 0; peer < nProcs; ++peer) {
      count += peer != rank && length(peer, rank) > 0 ? 1 : 0;
    }
    return count;
  }

protected:
  ZQMPT *own;
  int rank;
  int nProcs;
  LengthOf length;

private:
  void CallBack(ZQMPT *mpt, SendReadyCallback send, ZQCommPatterns *patterns, Callback when) {
    if (callback == when) {
      send(patterns);
      pendingSends.push_back(mpt->GetNPendingSendBufferRequests());
    }
  }

  // The selected buffer is the peer's, read from its start, with the announced length and
  // the bytes that were packed.
  bool HoldsPayloadOf(ZQMPT &mpt, int peer) const {
    long long const announced = length(peer, rank);
    ZQMPTBuffer *buffer = mpt.GetReceiveBuffer(peer);
    bool ok = mpt.GetSelectedReceiveBuffer() == peer && buffer != nullptr && buffer->GetUnpackPos() == 0 &&
              mpt.GetReceiveBufferSize(peer) == announced;
    std::vector<unsigned char> got(static_cast<size_t>(announced - shortBy));
    mpt.Unpack(got.data(), static_cast<long long>(got.size()));
    return ok && got == Payload(peer, rank, announced - shortBy);
  }
};

// `count` peers from `first` on, `step` apart.
std::vector<int> PeersFrom(int count, int step, int first) {
  std::vector<int> peers;
  for (int i = 0; i < count; ++i) {
    peers.push_back(first + i * step);
  }
  return peers;
}

bool Contains(std::vector<int> const &list, int value) {
  return std::find(list.begin(), list.end(), value) != list.end();
}

} // namespace

TEST(Patterns, RingDeliversEachBufferIntactAndLeavesPerProcessMode) {
  ZQContext context;
  ZQMPT &mpt = context.GetMPT();
  int const n = mpt.GetNProcs();
  mpt.SetBufferMode(Types::BufferMode_t::Single);
  RecordingHandler handler(context, [n](int from, int to) { return to == (from + 1) % n ? 100 + from : 0; });
  ZQCommPatterns patterns(&context);

  bool const result = patterns.NBSendReceive(&handler);

  bool ok = result && handler.ownMPTEveryTime && handler.arrivalsIntact;
  if (n == 1) {
    // Nobody to exchange with: the handler is never called and the mode stays.
    ok = ok && handler.packCalls == 0 && mpt.GetBufferMode() == Types::BufferMode_t::Single;
  } else {
    int const prev = (mpt.GetProcRank() + n - 1) % n;
    ok = ok && handler.packCalls == 1 && handler.arrivals == std::vector<int>{prev} &&
         mpt.GetBufferMode() == Types::BufferMode_t::PerProcess && mpt.GetNPendingBufferRequests() == 0;
  }
  EXPECT_TRUE(zqtest::AllRanks(ok));
}

// Three runs on one pattern object, each with other lengths: the maps reach the handler
// empty every time and the tags of one run never meet those of another.
TEST(Patterns, AllToAllWithItsOwnLengthPerPairRunsRepeatedly) {
  ZQContext context;
  ZQMPT &mpt = context.GetMPT();
  int const n = mpt.GetNProcs();
  int const rank = mpt.GetProcRank();
  ZQCommPatterns patterns(&context);
  bool ok = true;
  for (int round = 0; round < 3; ++round) {
    // One pair per round gets a buffer past the least initial capacity.
    RecordingHandler handler(context, [n, round](int from, int to) {
      return (from * n + to + 1) * 5LL + round * 7 + (from == round % n && to == (round + 1) % n ? 9000 : 0);
    });
    ok = patterns.NBSendReceive(&handler) && ok;
    ok = ok && handler.mapsArrivedEmpty && handler.arrivalsIntact && handler.ownMPTEveryTime;
    ok = ok && static_cast<int>(handler.arrivals.size()) == (n - 1);
    for (int peer = 0; peer < n; ++peer) {
      ok = ok && (peer == rank || Contains(handler.arrivals, peer));
    }
  }
  EXPECT_TRUE(zqtest::AllRanks(ok));
}

// Inside PackBuffers every receive is already posted, sends are data-only (one request each)
// and a buffer leaves when its packed size reaches the announced one, and only once.
TEST(Patterns, BuffersLeaveOnceWhenFullWhilePacking) {
  ZQContext context;
  int const n = context.GetMPT().GetNProcs();
  bool ok = true;
  for (Callback use : {Callback::AfterEachHalf, Callback::TwiceAfterEach}) {
    RecordingHandler handler(context, [](int from, int to) { return 40LL + from + 3 * to; });
    handler.callback = use;
    ZQCommPatterns patterns(&context);
    ok = patterns.NBSendReceive(&handler) && ok && handler.arrivalsIntact;
    std::vector<long long> expected;
    for (long long sent = 1; sent < n; ++sent) {
      // After each half, or after each of two calls on a full buffer.
      expected.push_back(use == Callback::AfterEachHalf ? sent - 1 : sent);
      expected.push_back(sent);
    }
    ok = ok && handler.pendingSends == expected;
    ok = ok && (n == 1 || handler.receivesPostedAtPacking == n - 1);
  }
  // Nothing was sent twice.
  context.GetMPT().Barrier();
  ok = ok && !context.GetMPT().HasPendingMessages();
  EXPECT_TRUE(zqtest::AllRanks(ok));
}

// A buffer packed short of its announced length is not sent by the callback but at the end,
// and the receiver keeps the announced length with the bytes that came first.
TEST(Patterns, ShortBufferLeavesAtTheEndWithTheBytesItHas) {
  ZQContext context;
  int const n = context.GetMPT().GetNProcs();
  RecordingHandler handler(context, [n](int from, int to) { return to == (from + 1) % n ? 64 : 0; });
  handler.shortBy = 5;
  ZQCommPatterns patterns(&context);
  bool ok = patterns.NBSendReceive(&handler) && handler.arrivalsIntact;
  ok = ok && handler.pendingSends == std::vector<long long>(n > 1 ? 2 : 0, 0LL);
  ok = ok && static_cast<int>(handler.arrivals.size()) == (n > 1 ? 1 : 0);
  EXPECT_TRUE(zqtest::AllRanks(ok));
}

// Even ranks send to the next one only, odd ranks only receive, and a last even rank has no
// partner at all. Entries for the own rank, of size 0 and below are ignored: no buffer, no
// message. The handler never calls back, so everything leaves at the end.
TEST(Patterns, OneWayPairsAndEmptyPartnerSetsComplete) {
  ZQContext context;
  ZQMPT &mpt = context.GetMPT();
  int const n = mpt.GetNProcs();
  int const rank = mpt.GetProcRank();
  RecordingHandler handler(context, [n](int from, int to) { return from % 2 == 0 && to == from + 1 ? 300 : 0; });
  handler.callback = Callback::Never;
  // A rank that is no partner gets entries of size 0 and below.
  int const ignored = (rank + 2) % n;
  bool const ignoredIsStranger = ignored != rank && ignored != rank + 1 && ignored != rank - 1;
  handler.extraSend = {{rank, 12}};
  handler.extraRecv = {{rank, 12}};
  if (ignoredIsStranger) {
    handler.extraSend[ignored] = 0;
    handler.extraRecv[ignored] = -4;
  }
  ZQCommPatterns patterns(&context);

  bool ok = patterns.NBSendReceive(&handler) && handler.arrivalsIntact && handler.pendingSends.empty();
  ok = ok && handler.packCalls == (n > 1 ? 1 : 0);
  ok = ok && static_cast<int>(handler.arrivals.size()) == handler.ReceiveCount();
  ok = ok && mpt.GetSendBuffer(rank) == nullptr && mpt.GetReceiveBuffer(rank) == nullptr;
  ok =
      ok && (!ignoredIsStranger || (mpt.GetSendBuffer(ignored) == nullptr && mpt.GetReceiveBuffer(ignored) == nullptr));
  mpt.Barrier();
  ok = ok && !mpt.HasPendingMessages();
  EXPECT_TRUE(zqtest::AllRanks(ok));
}

// Rank 0 fails its sizes, rank 1 its first unpack, rank 3 its packing: each of them, and
// no other rank, returns false, nothing is pushed, and every buffer still arrives intact.
TEST(Patterns, FailingHandlerFailsOnlyItsRankAndTheExchangeCompletes) {
  ZQContext context;
  ZQMPT &mpt = context.GetMPT();
  int const n = mpt.GetNProcs();
  int const rank = mpt.GetProcRank();
  RecordingHandler handler(context, [](int from, int to) { return 20LL + 2 * from + to; });
  handler.failSizes = rank == 0;
  handler.failFirstUnpack = rank == 1;
  handler.failPack = rank == 3;
  long long const messagesBefore = context.GetErrorStack().GetNMsg();
  ZQCommPatterns patterns(&context);

  bool const result = patterns.NBSendReceive(&handler);

  bool const fails = n > 1 && (rank == 0 || rank == 1 || rank == 3);
  bool ok = result == !fails && handler.arrivalsIntact;
  ok = ok && static_cast<int>(handler.arrivals.size()) == n - 1;
  ok = ok && context.GetErrorStack().GetNMsg() == messagesBefore;
  EXPECT_TRUE(zqtest::AllRanks(ok));
}

TEST(Patterns, NullHandlerFailsWithAMessageOnlyWhereThereIsAContext) {
  ZQContext context;
  ZQCommPatterns patterns(&context);
  EXPECT_FALSE(patterns.NBSendReceive(nullptr));
  EXPECT_EQ(std::string(context.GetErrorStack().GetLastMsg().c_str()),
            "data handler is not initialized, communication pattern can not be executed.");

  ZQCommPatterns alone;
  EXPECT_FALSE(alone.NBSendReceive(nullptr));
  // Without a context the pattern stands for one process: the handler is not called.
  RecordingHandler handler(context, [](int, int) { return 8LL; });
  handler.failSizes = handler.failPack = true;
  EXPECT_TRUE(alone.NBSendReceive(&handler));
  EXPECT_EQ(handler.packCalls, 0);
}

namespace {

// World-communicator tag of the go-ahead that rank 0 gives while it unpacks.
constexpr int GoAheadTag = 4242;
// Long enough for a loaded machine; a wrong order then fails instead of hanging.
constexpr auto GoAheadWait = std::chrono::seconds(20);

// Everyone but rank 0 sends to rank 0; rank k > 0 packs only once rank 0 has unpacked the
// buffer of rank k + 1, so the buffers can only arrive from the highest rank down.
class ChainedHandler : public RecordingHandler {
public:
  explicit ChainedHandler(ZQContext &context)
      : RecordingHandler(context, [](int from, int to) { return from > 0 && to == 0 ? 48LL + from : 0; }) {}

  bool PackBuffers(ZQMPT *mpt, SendReadyCallback send, ZQCommPatterns *patterns) override {
    if (rank > 0 && rank < nProcs - 1) {
      waited = AwaitGoAhead();
    }
    return RecordingHandler::PackBuffers(mpt, send, patterns);
  }

  bool UnpackBuffer(ZQMPT *mpt, int peer) override {
    bool const ok = RecordingHandler::UnpackBuffer(mpt, peer);
    if (peer > 1) {
      int go = 1;
      MPI_Send(&go, 1, MPI_INT, peer - 1, GoAheadTag, MPI_COMM_WORLD);
    }
    return ok;
  }

  // Takes a go-ahead that came after the bounded wait, so that none is left behind.
  void Settle() {
    if (rank > 0 && rank < nProcs - 1 && !waited) {
      Receive();
    }
  }

private:
  bool AwaitGoAhead() {
    auto const deadline = std::chrono::steady_clock::now() + GoAheadWait;
    int flag = 0;
    while (!flag && std::chrono::steady_clock::now() < deadline) {
      MPI_Iprobe(0, GoAheadTag, MPI_COMM_WORLD, &flag, MPI_STATUS_IGNORE);
    }
    if (flag) {
      Receive();
    }
    return flag != 0;
  }

  static void Receive() {
    int go = 0;
    MPI_Recv(&go, 1, MPI_INT, 0, GoAheadTag, MPI_COMM_WORLD, MPI_STATUS_IGNORE);
  }

  bool waited = false;
};

} // namespace

TEST(Patterns, BuffersAreUnpackedInOrderOfArrival) {
  ZQContext context;
  int const n = context.GetMPT().GetNProcs();
  int const rank = context.GetMPT().GetProcRank();
  ChainedHandler handler(context);
  ZQCommPatterns patterns(&context);

  bool ok = patterns.NBSendReceive(&handler) && handler.arrivalsIntact;
  handler.Settle();
  if (rank == 0) {
    ok = ok && handler.arrivals == PeersFrom(n - 1, -1, n - 1);
  }
  EXPECT_TRUE(zqtest::AllRanks(ok));
}
