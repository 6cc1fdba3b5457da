// ZQMPT: the maps of message buffers, their selection, packing and unpacking, and the two
// ways of filling a receive buffer without a point-to-point message.
#include <zqcore/parallel/ZQMPT.h>
#include <zqcore/parallel/ZQMPTBuffer.h>
#include <zqcore/wmpi.h>

#include "core/detail/Fatal.h"
#include "parallel/detail/BufferSelection.h"
#include "parallel/detail/ElementTypes.h"

#include <algorithm>

namespace Velmora::Tessara::ZQ::Core {

using detail::NarrowToInt32;

namespace {

using Buffers = std::map<int, ZQMPTBuffer>;

// Least capacity given for any positive size hint.
constexpr long long MinimumInitialCapacity = 4096;

// The buffer under `key`, created (with the map) if missing.
ZQMPTBuffer &Obtain(Buffers *&buffers, int key) {
  if (buffers == nullptr) {
    buffers = new Buffers;
  }
  return (*buffers)[key];
}

// The buffer under `key`, or null when there is no map or no such key.
template <typename Map> auto Lookup(Map *buffers, int key) -> decltype(&buffers->find(key)->second) {
  if (buffers == nullptr) {
    return nullptr;
  }
  auto const found = buffers->find(key);
  return found == buffers->end() ? nullptr : &found->second;
}

// The buffer under `key`: the one remembered in `found`, else looked up and remembered. A
// missing map or key ends the job.
ZQMPTBuffer &Find(Buffers *buffers, int key, ZQMPTBuffer *&found) {
  if (found == nullptr) {
    found = Lookup(buffers, key);
    if (found == nullptr) {
      detail::FatalError();
    }
  }
  return *found;
}

long long SizeUnder(Buffers const *buffers, int key) {
  ZQMPTBuffer const *buffer = Lookup(buffers, key);
  return buffer == nullptr ? 0 : buffer->GetData().GetSize();
}

// sizes[0 .. count-1] by key; keys outside that range have no slot and are left out.
void FillSizes(Buffers const *buffers, long long *sizes, int count) {
  if (sizes == nullptr) {
    return;
  }
  std::fill_n(sizes, std::max(count, 0), 0LL);
  if (buffers == nullptr) {
    return;
  }
  for (auto const &[key, buffer] : *buffers) {
    if (key >= 0 && key < count) {
      sizes[key] = buffer.GetData().GetSize();
    }
  }
}

long long TotalCapacity(Buffers const *buffers) {
  long long total = 0;
  if (buffers != nullptr) {
    for (auto const &entry : *buffers) {
      total += entry.second.GetData().GetCapacity();
    }
  }
  return total;
}

// Room for `needed` bytes, grown by at least the growth step; the size stays.
void GrowForPacking(ZQMPTArray<unsigned char> &bytes, long long needed) {
  long long const size = bytes.GetSize();
  bytes.Resize(std::max(needed, size + bytes.GetGrowth()));
  bytes.Resize(size);
}

void Delete(Buffers *&buffers) {
  delete buffers;
  buffers = nullptr;
}

} // namespace

void ZQMPT::SetBufferMode(Types::BufferMode_t mode) {
  if (mode == bufferMode) {
    return;
  }
  ResetBuffers();
  bufferMode = mode;
}

Types::BufferMode_t ZQMPT::GetBufferMode() const { return bufferMode; }

int ZQMPT::KeyOf(int peer) const { return bufferMode == Types::BufferMode_t::PerProcess ? peer : 0; }

void ZQMPT::InitBuffer(ZQMPTBuffer &buffer, long long size) const {
  ZQMPTArray<unsigned char> &bytes = buffer.GetData();
  bytes.Resize(0);
  if (size < 1) {
    bytes.SetGrowth(bufferIncrement);
    return;
  }
  long long const target = std::max(size, MinimumInitialCapacity);
  if (target > bytes.GetCapacity()) {
    bytes.Resize(target);
    bytes.Resize(0);
  }
  bytes.SetGrowth(target / 2);
}

void ZQMPT::InitSendBuffer(int peer, long long size) {
  SelectSendBuffer(peer);
  InitBuffer(Obtain(sendBuffers, selectedSendBuffer), size);
}

void ZQMPT::InitReceiveBuffer(int peer, long long size) {
  SelectReceiveBuffer(peer);
  ZQMPTBuffer &buffer = Obtain(receiveBuffers, selectedReceiveBuffer);
  InitBuffer(buffer, size);
  if (size >= 1) {
    // Room for exactly `size` bytes to be received.
    buffer.GetData().Resize(size);
  }
}

void ZQMPT::SelectSendBuffer(int peer) { detail::SelectKey(selectedSendBuffer, foundSendBuffer, KeyOf(peer)); }

void ZQMPT::SelectReceiveBuffer(int peer) {
  detail::SelectKey(selectedReceiveBuffer, foundReceiveBuffer, KeyOf(peer));
}

int ZQMPT::GetSelectedSendBuffer() const { return selectedSendBuffer; }

int ZQMPT::GetSelectedReceiveBuffer() const { return selectedReceiveBuffer; }

ZQMPTBuffer *ZQMPT::GetSendBuffer(int key) { return Lookup(sendBuffers, key); }

ZQMPTBuffer *ZQMPT::GetReceiveBuffer(int key) { return Lookup(receiveBuffers, key); }

ZQMPTBuffer &ZQMPT::FindSendBuffer() { return Find(sendBuffers, selectedSendBuffer, foundSendBuffer); }

ZQMPTBuffer &ZQMPT::FindReceiveBuffer() { return Find(receiveBuffers, selectedReceiveBuffer, foundReceiveBuffer); }

void ZQMPT::ResetBuffers() {
  Delete(sendBuffers);
  Delete(receiveBuffers);
  foundSendBuffer = nullptr;
  foundReceiveBuffer = nullptr;
}

long long ZQMPT::GetSendBufferSize(int key) const { return SizeUnder(sendBuffers, key); }

long long ZQMPT::GetReceiveBufferSize(int key) const { return SizeUnder(receiveBuffers, key); }

void ZQMPT::GetSendBufferSizes(long long *sizes) const { FillSizes(sendBuffers, sizes, nProcs); }

void ZQMPT::GetReceiveBufferSizes(long long *sizes) const { FillSizes(receiveBuffers, sizes, nProcs); }

long long ZQMPT::GetTotalBufferSizes() const { return TotalCapacity(sendBuffers) + TotalCapacity(receiveBuffers); }

long long ZQMPT::GetAutoBufferResetThreshold() const { return autoBufferResetThreshold; }

void ZQMPT::SetAutoBufferResetThreshold(long long threshold) { autoBufferResetThreshold = threshold; }

void ZQMPT::Pack(void *data, long long count, int datatype) {
  // A count below 1 packs nothing, whatever the datatype.
  if (count >= 1) {
    PackElements(data, count, datatype, detail::ElementWidth(datatype));
  }
}

void ZQMPT::Pack(void *, long long) { detail::FatalError(); }

ZQMPTArray<unsigned char> &ZQMPT::MakeRoomToPack(long long count, long long width) {
  ZQMPTArray<unsigned char> &bytes = FindSendBuffer().GetData();
  // Each narrowing ends the job when its value does not fit. The count is checked ahead of
  // growing, so that an oversized one ends the job without allocating for it.
  NarrowToInt32(count);
  long long const needed = bytes.GetSize() + width * count;
  if (needed > bytes.GetCapacity()) {
    GrowForPacking(bytes, needed);
  }
  NarrowToInt32(bytes.GetCapacity());
  NarrowToInt32(bytes.GetSize());
  return bytes;
}

ZQMPTBuffer &ZQMPT::CheckBufferToUnpack(long long count) {
  ZQMPTBuffer &buffer = FindReceiveBuffer();
  // Each narrowing ends the job when its value does not fit.
  NarrowToInt32(buffer.GetData().GetSize());
  NarrowToInt32(buffer.GetUnpackPos());
  NarrowToInt32(count);
  return buffer;
}

void ZQMPT::CopySendToReceiveBuffer(int peer) {
  SelectSendBuffer(peer);
  ZQMPTBuffer const &send = FindSendBuffer();
  long long const size = send.GetData().GetSize();
  // The receive buffer is created and selected as InitReceiveBuffer would; its bytes are
  // then replaced wholesale by a private copy of the send buffer's.
  SelectReceiveBuffer(peer);
  ZQMPTBuffer &receive = Obtain(receiveBuffers, selectedReceiveBuffer);
  receive.GetData().DeepCopy(send.GetData());
  receive.PrepareUnpack(size);
}

void ZQMPT::BroadcastBuffer(int root) {
  if (procRank == root) {
    ZQMPTBuffer &send = FindSendBuffer();
    ZQMPTArray<unsigned char> &bytes = send.GetData();
    long long size = bytes.GetSize();
    Check(WMPI_Bcast(&size, 1, WMPI_LONG_LONG, root, comm));
    Check(WMPI_Bcast(bytes.GetData(), NarrowToInt32(size), WMPI_BYTE, root, comm));
    send.AutoDataReset(autoBufferResetThreshold);
    return;
  }
  long long size = 0;
  Check(WMPI_Bcast(&size, 1, WMPI_LONG_LONG, root, comm));
  InitReceiveBuffer(root, size);
  ZQMPTBuffer &receive = FindReceiveBuffer();
  ZQMPTArray<unsigned char> &bytes = receive.GetData();
  Check(WMPI_Bcast(bytes.GetData(), NarrowToInt32(bytes.GetSize()), WMPI_BYTE, root, comm));
  receive.PrepareUnpack(size);
}

} // namespace Velmora::Tessara::ZQ::Core
