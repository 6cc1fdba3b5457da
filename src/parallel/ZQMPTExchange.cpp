// Non-blocking exchange of ZQMPT: raw requests, buffers sent as a size and a data message,
// the waits on one, all or any peer, the probes, and the release of outstanding requests.
#include <zqcore/parallel/ZQMPT.h>
#include <zqcore/parallel/ZQMPTBuffer.h>
#include <zqcore/wmpi.h>

#include "core/detail/Fatal.h"
#include "parallel/detail/BufferSelection.h"

#include <climits>

namespace Velmora::Tessara::ZQ::Core {

namespace {

// One pass over the wait scratch arrays. Slots are taken in order; a pass that would run
// past their 2 x nProcs entries (a set naming more buffers than there are processes) ends
// the job rather than writing beyond them.
class WaitSlots {
public:
  WaitSlots(unsigned long long *slotRequests, WMPI_Status *slotStatuses, int nProcs)
      : requests(slotRequests), statuses(slotStatuses), capacity(slotRequests == nullptr ? 0 : 2LL * nProcs) {}

  void Put(unsigned long long request) { requests[Next()] = request; }
  void TakeBack(unsigned long long &request, WMPI_Status &status) { TakeBackFrom(Next(), request, status); }
  void TakeBackFrom(long long slot, unsigned long long &request, WMPI_Status &status) const {
    request = requests[slot];
    status = statuses[slot];
  }
  long long Used() const { return used; }
  void Rewind() { used = 0; }

private:
  long long Next() {
    if (used >= capacity) {
      detail::FatalError();
    }
    return used++;
  }

  unsigned long long *requests;
  WMPI_Status *statuses;
  long long capacity;
  long long used = 0;
};

// The requests of one buffer's exchange, in wire order: the size message's unless the
// exchange is data-only, then the data message's.
void PutExchange(WaitSlots &slots, ZQMPTBuffer &buffer, bool dataOnly) {
  if (!dataOnly) {
    slots.Put(buffer.GetSizeRequest());
  }
  slots.Put(buffer.GetDataRequest());
}

void TakeBackExchange(WaitSlots &slots, ZQMPTBuffer &buffer, bool dataOnly) {
  if (!dataOnly) {
    slots.TakeBack(buffer.GetSizeRequest(), buffer.GetSizeStatus());
  }
  slots.TakeBack(buffer.GetDataRequest(), buffer.GetDataStatus());
}

// Requests of the map's buffers that are still outstanding; the waits set finished ones to -1.
long long CountPending(std::map<int, ZQMPTBuffer> const *buffers) {
  if (buffers == nullptr) {
    return 0;
  }
  long long pending = 0;
  for (auto const &entry : *buffers) {
    pending += entry.second.GetSizeRequest() != WMPI_REQUEST_NULL ? 1 : 0;
    pending += entry.second.GetDataRequest() != WMPI_REQUEST_NULL ? 1 : 0;
  }
  return pending;
}

// The member at position `slot` of the set, counting only members other than -1.
int MemberAt(std::set<int> const &peers, long long slot) {
  for (int member : peers) {
    if (member != WMPI_ANY_SOURCE && slot-- == 0) {
      return member;
    }
  }
  return WMPI_ANY_SOURCE;
}

} // namespace

// ---- Raw requests on caller memory -------------------------------------------------------

void ZQMPT::NBSend(void *data, long long count, int datatype, int peer, unsigned long long *request) {
  int const tag = SendTagFor(peer);
  Check(WMPI_Isend(data, detail::NarrowToInt32(count), datatype, peer, tag, comm, request));
}

void ZQMPT::NBReceive(void *data, long long count, int datatype, int peer, unsigned long long *request) {
  int const tag = RecvTagFor(peer);
  Check(WMPI_Irecv(data, detail::NarrowToInt32(count), datatype, peer, tag, comm, request));
}

void ZQMPT::Wait(unsigned long long *request, WMPI_Status *status) { Check(WMPI_Wait(request, status)); }

void ZQMPT::WaitAll(long long count, unsigned long long *requests, WMPI_Status *statuses) {
  Check(WMPI_Waitall(detail::NarrowToInt32(count), requests, statuses));
}

void ZQMPT::WaitAny(long long count, unsigned long long *requests, WMPI_Status *statuses, long long &index) {
  index = LLONG_MAX;
  int const n = detail::NarrowToInt32(count);
  int finished = -1;
  WMPI_Status status{};
  Check(WMPI_Waitany(n, requests, &finished, &status));
  // -1 means no request was active: there is no slot to write.
  if (finished >= 0 && statuses != nullptr) {
    statuses[finished] = status;
  }
  index = finished;
}

// ---- Buffer exchange ---------------------------------------------------------------------

void ZQMPT::NBSendBuffer(int peer, bool dataOnly) {
  if (peer == WMPI_ANY_SOURCE) {
    return;
  }
  ZQMPTBuffer &buffer = FindSendBuffer();
  if (!dataOnly) {
    // The proxy keeps its value and address while the size message is in flight.
    long long *announcedSize = buffer.GetDataSizeProxyPtr();
    Check(WMPI_Isend(announcedSize, 1, WMPI_LONG_LONG, peer, GetSendTag(peer), comm, buffer.GetSizeRequestPtr()));
  }
  int const tag = GetSendTag(peer);
  ZQMPTArray<unsigned char> &bytes = buffer.GetData();
  Check(WMPI_Isend(bytes.GetData(), detail::NarrowToInt32(bytes.GetSize()), WMPI_BYTE, peer, tag, comm,
                   buffer.GetDataRequestPtr()));
}

void ZQMPT::NBSendBuffers(std::set<int> const &peers, bool dataOnly) {
  detail::SelectionKeeper keep(selectedSendBuffer, foundSendBuffer);
  for (int member : peers) {
    if (member != WMPI_ANY_SOURCE) {
      SelectSendBuffer(member);
      NBSendBuffer(member, dataOnly);
    }
  }
}

void ZQMPT::NBReceiveBuffer(int peer, bool dataOnly) {
  if (peer == WMPI_ANY_SOURCE) {
    return;
  }
  ZQMPTBuffer &buffer = SelectedBufferOf(peer, true);
  int const tag = GetRecvTag(peer);
  if (dataOnly) {
    ZQMPTArray<unsigned char> &bytes = buffer.GetData();
    Check(WMPI_Irecv(bytes.GetData(), detail::NarrowToInt32(bytes.GetSize()), WMPI_BYTE, peer, tag, comm,
                     buffer.GetDataRequestPtr()));
  } else {
    // Only the size is asked for here; the wait posts the data receive once it is known.
    Check(WMPI_Irecv(buffer.GetDataSizeProxyPtr(), 1, WMPI_LONG_LONG, peer, tag, comm, buffer.GetSizeRequestPtr()));
  }
}

void ZQMPT::NBReceiveBuffers(std::set<int> const &peers, bool dataOnly) {
  detail::SelectionKeeper keep(selectedReceiveBuffer, foundReceiveBuffer);
  for (int member : peers) {
    NBReceiveBuffer(member, dataOnly);
  }
}

void ZQMPT::WaitSendBuffer(int peer, bool dataOnly) {
  if (peer == WMPI_ANY_SOURCE) {
    return;
  }
  ZQMPTBuffer &buffer = FindSendBuffer();
  if (dataOnly) {
    Check(WMPI_Wait(buffer.GetDataRequestPtr(), buffer.GetDataStatusPtr()));
  } else {
    InitWaitStructures();
    WaitSlots slots(waitRequests, waitStatuses, nProcs);
    PutExchange(slots, buffer, false);
    Check(WMPI_Waitall(2, waitRequests, waitStatuses));
    slots.Rewind();
    TakeBackExchange(slots, buffer, false);
  }
  buffer.AutoDataReset(autoBufferResetThreshold);
}

void ZQMPT::WaitAllSendBuffers(std::set<int> const &peers, bool dataOnly) {
  if (peers.empty()) {
    return;
  }
  detail::SelectionKeeper keep(selectedSendBuffer, foundSendBuffer);
  WaitAllBufferExchanges(peers, false, dataOnly);
}

void ZQMPT::WaitReceiveBuffer(int peer, bool dataOnly) {
  if (peer == WMPI_ANY_SOURCE) {
    return;
  }
  ZQMPTBuffer &buffer = FindReceiveBuffer();
  if (dataOnly) {
    Check(WMPI_Wait(buffer.GetDataRequestPtr(), buffer.GetDataStatusPtr()));
  } else {
    Check(WMPI_Wait(buffer.GetSizeRequestPtr(), buffer.GetSizeStatusPtr()));
    ReceiveAnnouncedData(peer, buffer);
  }
  buffer.SetUnpackPos(0);
}

void ZQMPT::WaitAllReceiveBuffers(std::set<int> const &peers, bool dataOnly) {
  if (peers.empty()) {
    return;
  }
  if (dataOnly) {
    WaitAllBufferExchanges(peers, true, true);
    return;
  }
  // Full exchanges are completed in order of arrival of their size messages.
  std::set<int> pending(peers);
  while (!pending.empty()) {
    int arrived = WMPI_ANY_SOURCE;
    WaitAnyReceiveBuffers(pending, false, arrived);
    // -1: no member has a receive in flight, so none of the rest can ever arrive.
    if (arrived == WMPI_ANY_SOURCE) {
      return;
    }
    pending.erase(arrived);
  }
}

void ZQMPT::WaitAnyReceiveBuffers(std::set<int> const &peers, bool dataOnly, int &peer) {
  peer = WMPI_ANY_SOURCE;
  InitWaitStructures();
  WaitSlots slots(waitRequests, waitStatuses, nProcs);
  for (int member : peers) {
    if (member != WMPI_ANY_SOURCE) {
      ZQMPTBuffer &buffer = SelectedBufferOf(member, true);
      slots.Put(dataOnly ? buffer.GetDataRequest() : buffer.GetSizeRequest());
    }
  }
  int finished = -1;
  WMPI_Status status{};
  Check(WMPI_Waitany(detail::NarrowToInt32(slots.Used()), waitRequests, &finished, &status));
  if (finished < 0) {
    return;
  }
  waitStatuses[finished] = status;

  peer = MemberAt(peers, finished);
  ZQMPTBuffer &buffer = SelectedBufferOf(peer, true);
  if (dataOnly) {
    slots.TakeBackFrom(finished, buffer.GetDataRequest(), buffer.GetDataStatus());
  } else {
    slots.TakeBackFrom(finished, buffer.GetSizeRequest(), buffer.GetSizeStatus());
    ReceiveAnnouncedData(peer, buffer);
  }
  buffer.SetUnpackPos(0);
}

// ---- Probes ------------------------------------------------------------------------------

void ZQMPT::BProbe(int peer, long long &size) {
  size = 0;
  WMPI_Status status{};
  Check(WMPI_Probe(peer, WMPI_ANY_TAG, comm, &status));
  int count = 0;
  Check(WMPI_Get_count(&status, WMPI_UNSIGNED_CHAR, &count));
  size = count;
}

void ZQMPT::BProbe(std::set<int> const &peers, int &peer, long long &size) {
  peer = WMPI_ANY_SOURCE;
  size = 0;
  if (peers.empty()) {
    return;
  }
  // Spins without sleeping or time limit, as a blocking probe of several sources must.
  while (!NBProbe(peers, peer, size)) {
  }
}

bool ZQMPT::NBProbe(int peer, long long &size) {
  size = 0;
  int flag = 0;
  WMPI_Status status{};
  Check(WMPI_Iprobe(peer, WMPI_ANY_TAG, comm, &flag, &status));
  if (flag == 0) {
    return false;
  }
  int count = 0;
  Check(WMPI_Get_count(&status, WMPI_UNSIGNED_CHAR, &count));
  size = count;
  return true;
}

bool ZQMPT::NBProbe(std::set<int> const &peers, int &peer, long long &size) {
  peer = WMPI_ANY_SOURCE;
  size = 0;
  for (int member : peers) {
    // -1 is not skipped here: a set names real ranks, the lowest with a message wins.
    if (member < 0 || member >= nProcs) {
      detail::FatalError();
    }
    if (NBProbe(member, size)) {
      peer = member;
      return true;
    }
  }
  return false;
}

// ---- Requests in flight ------------------------------------------------------------------

long long ZQMPT::GetNPendingSendBufferRequests() const { return CountPending(sendBuffers); }

long long ZQMPT::GetNPendingReceiveBufferRequests() const { return CountPending(receiveBuffers); }

long long ZQMPT::GetNPendingBufferRequests() const {
  return GetNPendingSendBufferRequests() + GetNPendingReceiveBufferRequests();
}

// ---- Private helpers ---------------------------------------------------------------------

ZQMPTBuffer &ZQMPT::SelectedBufferOf(int peer, bool receiving) {
  if (receiving) {
    SelectReceiveBuffer(peer);
    return FindReceiveBuffer();
  }
  SelectSendBuffer(peer);
  return FindSendBuffer();
}

void ZQMPT::WaitAllBufferExchanges(std::set<int> const &peers, bool receiving, bool dataOnly) {
  InitWaitStructures();
  WaitSlots slots(waitRequests, waitStatuses, nProcs);
  for (int member : peers) {
    if (member != WMPI_ANY_SOURCE) {
      PutExchange(slots, SelectedBufferOf(member, receiving), dataOnly);
    }
  }
  WaitAll(slots.Used(), waitRequests, waitStatuses);
  slots.Rewind();
  for (int member : peers) {
    if (member != WMPI_ANY_SOURCE) {
      ZQMPTBuffer &buffer = SelectedBufferOf(member, receiving);
      TakeBackExchange(slots, buffer, dataOnly);
      if (receiving) {
        buffer.SetUnpackPos(0);
      }
    }
  }
}

void ZQMPT::ReceiveAnnouncedData(int peer, ZQMPTBuffer &buffer) {
  InitReceiveBuffer(peer, buffer.GetDataSizeProxy());
  NBReceiveBuffer(peer, true);
  Check(WMPI_Wait(buffer.GetDataRequestPtr(), buffer.GetDataStatusPtr()));
}

void ZQMPT::InitWaitStructures() {
  if (nProcs < 1) {
    return;
  }
  auto const slots = 2 * static_cast<std::size_t>(nProcs);
  if (waitRequests == nullptr) {
    waitRequests = new unsigned long long[slots];
  }
  if (waitStatuses == nullptr) {
    waitStatuses = new WMPI_Status[slots];
  }
}

void ZQMPT::ResetWaitStructures() {
  delete[] waitRequests;
  waitRequests = nullptr;
  delete[] waitStatuses;
  waitStatuses = nullptr;
}

void ZQMPT::CancelRequest(unsigned long long *request) {
  if (request == nullptr || *request == WMPI_REQUEST_NULL) {
    return;
  }
  // Released, not cancelled: a message already under way still completes.
  Check(WMPI_Request_free(request));
}

void ZQMPT::CancelBufferRequests() {
  CancelBufferRequests(sendBuffers);
  CancelBufferRequests(receiveBuffers);
}

void ZQMPT::CancelBufferRequests(BufferMap *buffers) {
  if (buffers == nullptr) {
    return;
  }
  for (auto &entry : *buffers) {
    CancelRequest(entry.second.GetSizeRequestPtr());
    CancelRequest(entry.second.GetDataRequestPtr());
  }
}

} // namespace Velmora::Tessara::ZQ::Core
