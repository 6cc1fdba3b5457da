// ZQCommPatterns: the exchange with lengths settled up front, sends as soon as a buffer is
// full, and unpacking in order of arrival.
#include <zqcore/parallel/ZQCommPatterns.h>

#include <zqcore/core/ZQContext.h>
#include <zqcore/parallel/ZQCommDataHandler.h>
#include <zqcore/parallel/ZQMPT.h>
#include <zqcore/wmpi.h>

#include <vector>

namespace Velmora::Tessara::ZQ::Core {

namespace {

// Every transfer of the pattern is data-only: both ends know each length beforehand.
constexpr bool DataOnly = true;

} // namespace

ZQCommPatterns::ZQCommPatterns(ZQContext *owner) : context(owner), mpt(owner != nullptr ? &owner->GetMPT() : nullptr) {}

ZQCommPatterns::~ZQCommPatterns() = default;

bool ZQCommPatterns::NBSendReceive(ZQCommDataHandler *handler) {
  if (handler == nullptr) {
    if (context != nullptr) {
      context->GetErrorStack().Push("data handler is not initialized, communication pattern can not be executed.");
    }
    return false;
  }
  // A single process has nobody to exchange with; its handler is not called at all.
  if (mpt == nullptr || mpt->GetNProcs() < 2) {
    return true;
  }
  int const ownRank = mpt->GetProcRank();
  mpt->SetBufferMode(Types::BufferMode_t::PerProcess);
  ClearState();

  // A failing handler operation does not stop the run: the partners rely on every
  // announced transfer taking place.
  bool const sizesOk = handler->DetermineBufferSizes(mpt, &sendSizes, &recvSizes);
  PrepareBuffers(sendSizes, sendPeers, &ZQMPT::InitSendBuffer, ownRank);
  PrepareBuffers(recvSizes, recvPeers, &ZQMPT::InitReceiveBuffer, ownRank);
  mpt->NBReceiveBuffers(recvPeers, DataOnly);

  pendingSendPeers = sendPeers;
  bool const packOk = handler->PackBuffers(mpt, TryToNBSend, this);
  // What has not left yet goes now, with the length it has.
  mpt->NBSendBuffers(pendingSendPeers, DataOnly);

  bool const unpackOk = UnpackArrivals(*handler);
  mpt->WaitAllSendBuffers(sendPeers, DataOnly);
  return sizesOk && packOk && unpackOk;
}

void ZQCommPatterns::TryToNBSend(ZQCommPatterns *patterns) {
  ZQMPT &mpt = *patterns->mpt;
  std::vector<int> sent;
  for (int peer : patterns->pendingSendPeers) {
    long long const size = mpt.GetSendBufferSize(peer);
    if (size > 0 && size == patterns->sendSizes[peer]) {
      mpt.SelectSendBuffer(peer);
      mpt.NBSendBuffer(peer, DataOnly);
      sent.push_back(peer);
    }
  }
  for (int peer : sent) {
    patterns->pendingSendPeers.erase(peer);
  }
}

void ZQCommPatterns::ClearState() {
  sendPeers.clear();
  recvPeers.clear();
  sendSizes.clear();
  recvSizes.clear();
}

void ZQCommPatterns::PrepareBuffers(std::map<int, long long> const &sizes, std::set<int> &peers,
                                    void (ZQMPT::*initBuffer)(int, long long), int ownRank) {
  for (auto const &[peer, size] : sizes) {
    if (peer != ownRank && size > 0) {
      peers.insert(peer);
      (mpt->*initBuffer)(peer, size);
    }
  }
}

bool ZQCommPatterns::UnpackArrivals(ZQCommDataHandler &handler) {
  bool ok = true;
  while (!recvPeers.empty()) {
    int peer = WMPI_ANY_SOURCE;
    mpt->WaitAnyReceiveBuffers(recvPeers, DataOnly, peer);
    recvPeers.erase(peer);
    if (!handler.UnpackBuffer(mpt, peer)) {
      ok = false;
    }
  }
  return ok;
}

} // namespace Velmora::Tessara::ZQ::Core
