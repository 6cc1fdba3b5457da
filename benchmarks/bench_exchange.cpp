// Irregular exchange among the ranks of a job: ZQMPT's buffered exchange beside the same
// exchange written with raw MPI, on the same data in the same run.
//
// Every ordered pair of distinct ranks moves its own byte count, spread evenly from 1 KiB to
// 1 MiB. Each repetition runs six variants, in an order shuffled anew for every repetition
// (the same on every rank), so that no variant always follows the same one:
//   full zq    InitReceiveBuffer + NBReceiveBuffers, then per peer InitSendBuffer, Pack and
//              NBSendBuffer (size and data message); WaitAnyReceiveBuffers and Unpack per
//              arrival; WaitAllSendBuffers. The receiver does not know the sizes.
//   full raw   MPI_Irecv/MPI_Isend of the sizes and MPI_Waitall, then the same for the data.
//   data zq    as "full zq", data-only: receive buffers are sized beforehand.
//   data raw   MPI_Irecv/MPI_Isend of the data, MPI_Waitall.
//   pattern    ZQCommPatterns::NBSendReceive with a data handler that packs each peer's
//              buffer whole and calls back after each, and unpacks each arrival.
//   pattern raw the same exchange as "data raw", measured beside it.
// The raw variants copy into a send buffer per peer and out of a receive buffer per peer, as
// Pack and Unpack do, so the ratio measures the protocol and not the packing. Every variant
// has buffers of its own (a ZQMPT, the context's, or a set of raw vectors), touched once per
// repetition: shared buffers would stay warmer in cache for the variants that share them. A
// repetition's time is that of the slowest rank; rank 0 prints best and median per variant
// and the ratios. On few cores the ratios of one run spread widely: compare the medians of
// several runs.
// Every received byte is checked after every repetition, outside the timing.
//
// Built with the project (target bench_exchange). Run it from the build directory, on 4 ranks
// as designed (any count of 2 or more works):
//   export OMPI_ALLOW_RUN_AS_ROOT=1 OMPI_ALLOW_RUN_AS_ROOT_CONFIRM=1 OMPI_MCA_rmaps_base_oversubscribe=1
//   mpiexec -n 4 benchmarks/bench_exchange [repetitions, default 200]
#include <zqcore/core/ZQContext.h>
#include <zqcore/parallel/ZQCommDataHandler.h>
#include <zqcore/parallel/ZQCommPatterns.h>
#include <zqcore/parallel/ZQMPT.h>

#include <mpi.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <random>
#include <set>
#include <vector>

using Velmora::Tessara::ZQ::Core::ZQCommDataHandler;
using Velmora::Tessara::ZQ::Core::ZQCommPatterns;
using Velmora::Tessara::ZQ::Core::ZQContext;
using Velmora::Tessara::ZQ::Core::ZQMPT;

namespace {

using Bytes = std::vector<unsigned char>;

constexpr long long MinPairBytes = 1024;
constexpr long long MaxPairBytes = 1024 * 1024;
constexpr int WarmUpRounds = 5;

long long PairBytes(int from, int to, int nProcs) {
  long long const slots = std::max(1, nProcs * nProcs - 1);
  return MinPairBytes + (from * nProcs + to) * (MaxPairBytes - MinPairBytes) / slots;
}

unsigned char PatternByte(int from, int to, size_t i) { return static_cast<unsigned char>(from * 7 + to * 13 + i); }

// The data of one rank: what it sends to each peer and where what it receives lands.
struct Exchange {
  Exchange(int selfRank, int size) : rank(selfRank), nProcs(size), outgoing(size), incoming(size) {
    for (int p = 0; p < nProcs; ++p) {
      if (p == rank) {
        continue;
      }
      peers.insert(p);
      outgoing[p].resize(static_cast<size_t>(PairBytes(rank, p, nProcs)));
      for (size_t i = 0; i < outgoing[p].size(); ++i) {
        outgoing[p][i] = PatternByte(rank, p, i);
      }
    }
  }

  // Zeroes what arrived; data-only variants also need the lengths in advance.
  void ClearIncoming(bool sized) {
    for (int p : peers) {
      incoming[p].assign(sized ? static_cast<size_t>(PairBytes(p, rank, nProcs)) : 0, 0);
    }
  }

  bool IncomingIsRight() const {
    for (int p : peers) {
      Bytes const &got = incoming[p];
      if (static_cast<long long>(got.size()) != PairBytes(p, rank, nProcs)) {
        return false;
      }
      for (size_t i = 0; i < got.size(); ++i) {
        if (got[i] != PatternByte(p, rank, i)) {
          return false;
        }
      }
    }
    return true;
  }

  int rank;
  int nProcs;
  std::set<int> peers;
  std::vector<Bytes> outgoing;
  std::vector<Bytes> incoming;
};

void ExchangeWithZQ(ZQMPT &mpt, Exchange &x, bool dataOnly) {
  for (int p : x.peers) {
    mpt.InitReceiveBuffer(p, static_cast<long long>(x.incoming[p].size()));
  }
  mpt.NBReceiveBuffers(x.peers, dataOnly);
  for (int p : x.peers) {
    mpt.InitSendBuffer(p, static_cast<long long>(x.outgoing[p].size()));
    mpt.Pack(x.outgoing[p].data(), static_cast<long long>(x.outgoing[p].size()));
    mpt.NBSendBuffer(p, dataOnly);
  }
  std::set<int> waiting = x.peers;
  while (!waiting.empty()) {
    int from = -1;
    mpt.WaitAnyReceiveBuffers(waiting, dataOnly, from);
    long long const size = mpt.GetReceiveBufferSize(from);
    x.incoming[from].resize(static_cast<size_t>(size));
    mpt.Unpack(x.incoming[from].data(), size);
    waiting.erase(from);
  }
  mpt.WaitAllSendBuffers(x.peers, dataOnly);
}

// The same exchange as a data handler of the pattern: the lengths are known on both sides.
class ExchangeHandler : public ZQCommDataHandler {
public:
  explicit ExchangeHandler(Exchange &exchange) : x(exchange) {}

  bool DetermineBufferSizes(ZQMPT *, std::map<int, long long> *sendSizes,
                            std::map<int, long long> *recvSizes) override {
    for (int p : x.peers) {
      (*sendSizes)[p] = static_cast<long long>(x.outgoing[p].size());
      (*recvSizes)[p] = static_cast<long long>(x.incoming[p].size());
    }
    return true;
  }

  bool PackBuffers(ZQMPT *mpt, SendReadyCallback sendReady, ZQCommPatterns *patterns) override {
    for (int p : x.peers) {
      mpt->SelectSendBuffer(p);
      mpt->Pack(x.outgoing[p].data(), static_cast<long long>(x.outgoing[p].size()));
      sendReady(patterns);
    }
    return true;
  }

  bool UnpackBuffer(ZQMPT *mpt, int peer) override {
    mpt->Unpack(x.incoming[peer].data(), static_cast<long long>(x.incoming[peer].size()));
    return true;
  }

private:
  Exchange &x;
};

// Send and receive buffers per peer, kept across repetitions like ZQMPT's.
struct RawBuffers {
  explicit RawBuffers(int nProcs) : send(nProcs), receive(nProcs), sendSize(nProcs), receiveSize(nProcs) {
    requests.reserve(2 * static_cast<size_t>(nProcs));
  }
  std::vector<Bytes> send;
  std::vector<Bytes> receive;
  std::vector<long long> sendSize;
  std::vector<long long> receiveSize;
  std::vector<MPI_Request> requests;
};

void ExchangeWithMPI(MPI_Comm comm, Exchange &x, RawBuffers &raw, bool dataOnly) {
  std::vector<MPI_Request> &requests = raw.requests;
  if (!dataOnly) {
    requests.clear();
    for (int p : x.peers) {
      requests.emplace_back();
      MPI_Irecv(&raw.receiveSize[p], 1, MPI_LONG_LONG, p, 1, comm, &requests.back());
    }
    for (int p : x.peers) {
      raw.sendSize[p] = static_cast<long long>(x.outgoing[p].size());
      requests.emplace_back();
      MPI_Isend(&raw.sendSize[p], 1, MPI_LONG_LONG, p, 1, comm, &requests.back());
    }
    MPI_Waitall(static_cast<int>(requests.size()), requests.data(), MPI_STATUSES_IGNORE);
    for (int p : x.peers) {
      x.incoming[p].resize(static_cast<size_t>(raw.receiveSize[p]));
    }
  }
  requests.clear();
  for (int p : x.peers) {
    raw.receive[p].resize(x.incoming[p].size());
    requests.emplace_back();
    MPI_Irecv(raw.receive[p].data(), static_cast<int>(raw.receive[p].size()), MPI_BYTE, p, 2, comm, &requests.back());
  }
  for (int p : x.peers) {
    raw.send[p].assign(x.outgoing[p].begin(), x.outgoing[p].end());
    requests.emplace_back();
    MPI_Isend(raw.send[p].data(), static_cast<int>(raw.send[p].size()), MPI_BYTE, p, 2, comm, &requests.back());
  }
  MPI_Waitall(static_cast<int>(requests.size()), requests.data(), MPI_STATUSES_IGNORE);
  for (int p : x.peers) {
    std::memcpy(x.incoming[p].data(), raw.receive[p].data(), raw.receive[p].size());
  }
}

enum class Way { Buffers, Pattern, Raw };

struct Variant {
  char const *name;
  bool dataOnly;
  Way way;
  int pair;
  std::vector<double> seconds;
};

double Best(std::vector<double> times) { return *std::min_element(times.begin(), times.end()); }

double Median(std::vector<double> times) {
  std::nth_element(times.begin(), times.begin() + static_cast<long>(times.size() / 2), times.end());
  return times[times.size() / 2];
}

} // namespace

int main(int argc, char **argv) {
  MPI_Init(&argc, &argv);
  int rank = 0;
  int nProcs = 1;
  MPI_Comm_rank(MPI_COMM_WORLD, &rank);
  MPI_Comm_size(MPI_COMM_WORLD, &nProcs);
  int const repetitions = argc > 1 ? std::max(1, std::atoi(argv[1])) : 200;
  if (nProcs < 2) {
    if (rank == 0) {
      std::printf("bench_exchange needs at least 2 ranks (designed for mpiexec -n 4)\n");
    }
    MPI_Finalize();
    return 1;
  }

  bool allRight = true;
  std::vector<Variant> variants = {{"full zq", false, Way::Buffers, 0, {}}, {"full raw", false, Way::Raw, 0, {}},
                                   {"data zq", true, Way::Buffers, 1, {}},  {"data raw", true, Way::Raw, 1, {}},
                                   {"pattern", true, Way::Pattern, 2, {}},  {"pattern raw", true, Way::Raw, 2, {}}};
  {
    ZQMPT mpts[2];
    ZQContext context;
    ZQCommPatterns patterns(&context);
    MPI_Comm rawComm = MPI_COMM_NULL;
    MPI_Comm_dup(MPI_COMM_WORLD, &rawComm);
    Exchange x(rank, nProcs);
    std::vector<RawBuffers> raws(3, RawBuffers(nProcs));
    ExchangeHandler handler(x);
    std::vector<Variant *> order;
    for (Variant &variant : variants) {
      order.push_back(&variant);
    }
    std::mt19937 shuffler(20261123u);
    for (int round = 0; round < WarmUpRounds + repetitions; ++round) {
      std::shuffle(order.begin(), order.end(), shuffler);
      for (Variant *each : order) {
        Variant &variant = *each;
        x.ClearIncoming(variant.dataOnly);
        MPI_Barrier(MPI_COMM_WORLD);
        double const start = MPI_Wtime();
        if (variant.way == Way::Buffers) {
          ExchangeWithZQ(mpts[variant.pair], x, variant.dataOnly);
        } else if (variant.way == Way::Pattern) {
          patterns.NBSendReceive(&handler);
        } else {
          ExchangeWithMPI(rawComm, x, raws[variant.pair], variant.dataOnly);
        }
        double const local = MPI_Wtime() - start;
        double slowest = 0;
        MPI_Allreduce(&local, &slowest, 1, MPI_DOUBLE, MPI_MAX, MPI_COMM_WORLD);
        allRight = allRight && x.IncomingIsRight();
        if (round >= WarmUpRounds) {
          variant.seconds.push_back(slowest);
        }
      }
    }
    MPI_Comm_free(&rawComm);
  }

  int const right = allRight ? 1 : 0;
  int everywhere = 0;
  MPI_Reduce(&right, &everywhere, 1, MPI_INT, MPI_MIN, 0, MPI_COMM_WORLD);
  if (rank == 0) {
    long long total = 0;
    for (int from = 0; from < nProcs; ++from) {
      for (int to = 0; to < nProcs; ++to) {
        total += from == to ? 0 : PairBytes(from, to, nProcs);
      }
    }
    std::printf("irregular exchange: %d ranks, %d pairs of 1 KiB .. 1 MiB, %.2f MiB per round, %d repetitions, "
                "data %s\n",
                nProcs, nProcs * (nProcs - 1), static_cast<double>(total) / (1 << 20), repetitions,
                everywhere != 0 ? "verified" : "WRONG");
    std::printf("%-8s %14s %14s %14s %14s %10s %10s\n", "", "zq best ms", "raw best ms", "zq median ms",
                "raw median ms", "best x", "median x");
    for (size_t i = 0; i < variants.size(); i += 2) {
      Variant const &ours = variants[i];
      Variant const &theirs = variants[i + 1];
      double const ob = Best(ours.seconds) * 1e3;
      double const tb = Best(theirs.seconds) * 1e3;
      double const om = Median(ours.seconds) * 1e3;
      double const tm = Median(theirs.seconds) * 1e3;
      std::printf("%-8s %14.3f %14.3f %14.3f %14.3f %10.2f %10.2f\n", ours.name, ob, tb, om, tm, ob / tb, om / tm);
    }
  }
  MPI_Finalize();
  return everywhere != 0 || rank != 0 ? 0 : 1;
}
