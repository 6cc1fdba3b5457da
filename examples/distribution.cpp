// Work distribution and communication patterns: a total divided over the ranks, a set
// partitioned among them, and one exchange through a data handler.
#include "HostExample.h"

#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace HostExample {

// Divides a total, then the ranks' own counts, and partitions a set of primes.
void DivideTheWork(zq::ZQContext &context) {
  int const rank = zq::ZQContext::GetProcRank(&context);

  zq::ZQArrayNativeType<long long, long long> shares;
  zq::ZQMPTUtil::Distribute(&context, 1000003LL, shares);
  std::printf("[rank %d] owns items [%lld, %lld) of 1000003\n", rank, shares(rank), shares(rank + 1));

  zq::ZQArrayNativeType<int, long long> offsets;
  zq::ZQMPTUtil::InitDistribution(&context, 10 * (rank + 1), offsets);
  std::printf("[rank %d] holds %d cells, numbered from %d\n", rank, offsets(rank + 1) - offsets(rank), offsets(rank));

  zq::ZQSetNativeType<int> primes = {2, 3, 5, 7, 11, 13, 17, 19, 23, 29};
  zq::ZQMapNativeTypes<int, int> owners;
  zq::ZQMPTUtil::Partition(&context, primes, owners);
  std::string mine;
  for (auto const &[prime, owner] : owners) {
    if (owner == rank) {
      mine += " " + std::to_string(prime);
    }
  }
  std::printf("[rank %d] owns the primes:%s\n", rank, mine.empty() ? " none" : mine.c_str());
}

namespace {

// Every rank sends each other rank its own rank as many times as the receiver's rank + 1,
// followed by one number; the lengths are known to both sides beforehand.
class GreetingHandler : public zq::ZQCommDataHandler {
public:
  explicit GreetingHandler(int selfRank, int size) : rank(selfRank), nProcs(size) {}

  bool DetermineBufferSizes(zq::ZQMPT *, std::map<int, long long> *sendSizes,
                            std::map<int, long long> *recvSizes) override {
    for (int peer = 0; peer < nProcs; ++peer) {
      (*sendSizes)[peer] = BytesFor(peer);
      (*recvSizes)[peer] = BytesFor(rank);
    }
    return true;
  }

  bool PackBuffers(zq::ZQMPT *mpt, SendReadyCallback sendReady, zq::ZQCommPatterns *patterns) override {
    for (int peer = 0; peer < nProcs; ++peer) {
      if (peer == rank) {
        continue;
      }
      std::vector<int> ranks(static_cast<std::size_t>(peer + 1), rank);
      double weight = rank + 0.5;
      mpt->SelectSendBuffer(peer);
      mpt->Pack(ranks.data(), static_cast<long long>(ranks.size()));
      mpt->Pack(&weight, 1);
      // This buffer is complete: it leaves now, while the next one is packed.
      sendReady(patterns);
    }
    return true;
  }

  bool UnpackBuffer(zq::ZQMPT *mpt, int peer) override {
    std::vector<int> ranks(static_cast<std::size_t>(rank + 1));
    double weight = 0;
    mpt->Unpack(ranks.data(), static_cast<long long>(ranks.size()));
    mpt->Unpack(&weight, 1);
    std::printf("[rank %d] received from rank %d: %zu x %d and %g\n", rank, peer, ranks.size(), ranks.front(), weight);
    return ranks.back() == peer;
  }

private:
  static long long BytesFor(int receiver) {
    return static_cast<long long>((receiver + 1) * sizeof(int) + sizeof(double));
  }

  int rank;
  int nProcs;
};

} // namespace

void ExchangeWithAPattern(zq::ZQContext &context) {
  GreetingHandler handler(zq::ZQContext::GetProcRank(&context), zq::ZQContext::GetNProcs(&context));
  zq::ZQCommPatterns patterns(&context);
  bool const ok = patterns.NBSendReceive(&handler);
  std::printf("[rank %d] pattern exchange %s\n", zq::ZQContext::GetProcRank(&context), ok ? "complete" : "FAILED");
}

} // namespace HostExample
