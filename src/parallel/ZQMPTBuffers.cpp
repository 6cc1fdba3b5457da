// ZQMPT: the maps of message buffers, their selection, packing and unpacking, and the two
// ways of filling a receive buffer without a point-to-point message.
#include <zqcore/parallel/ZQMPT.h>
#include <zqcore/parallel/ZQMPTBuffer.h>
#include <zqcore/wmpi.h>

#include "core/detail/Fatal.h"
#include "parallel/detail/ElementTypes.h"

#include <algorithm>

namespace Velmora::Tessara::ZQ::Core {

using detail::NarrowToInt32;
using detail::TypeCodeOf;

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

// Looks `key` up and remembers the buffer in `found`; a missing map or key ends the job.
[[gnu::noinline]] ZQMPTBuffer &LookUpAndRemember(Buffers *buffers, int key, ZQMPTBuffer *&found, int &foundKey) {
  found = Lookup(buffers, key);
  if (found == nullptr) {
    detail::FatalError();
  }
  foundKey = key;
  return *found;
}

// The buffer under `key`: the one remembered in `found` while the key is the same.
inline ZQMPTBuffer &Find(Buffers *buffers, int key, ZQMPTBuffer *&found, int &foundKey) {
  if (found != nullptr && foundKey == key) {
    return *found;
  }
  return LookUpAndRemember(buffers, key, found, foundKey);
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

// Room for `needed` bytes, grown by at least the growth step; the size stays. Kept out of
// line so that the common path of Pack, which has the room, stays small.
[[gnu::noinline]] void GrowForPacking(ZQMPTArray<unsigned char> &bytes, long long needed) {
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

void ZQMPT::SelectSendBuffer(int peer) { selectedSendBuffer = KeyOf(peer); }

void ZQMPT::SelectReceiveBuffer(int peer) { selectedReceiveBuffer = KeyOf(peer); }

int ZQMPT::GetSelectedSendBuffer() const { return selectedSendBuffer; }

int ZQMPT::GetSelectedReceiveBuffer() const { return selectedReceiveBuffer; }

ZQMPTBuffer *ZQMPT::GetSendBuffer(int key) { return Lookup(sendBuffers, key); }

ZQMPTBuffer *ZQMPT::GetReceiveBuffer(int key) { return Lookup(receiveBuffers, key); }

ZQMPTBuffer &ZQMPT::FindSendBuffer() { return Find(sendBuffers, selectedSendBuffer, foundSendBuffer, foundSendKey); }

ZQMPTBuffer &ZQMPT::FindReceiveBuffer() {
  return Find(receiveBuffers, selectedReceiveBuffer, foundReceiveBuffer, foundReceiveKey);
}

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
  if (count < 1) {
    return;
  }
  ZQMPTArray<unsigned char> &bytes = FindSendBuffer().GetData();
  long long const width = detail::ElementWidth(datatype);
  // Checked ahead of growing: an oversized count ends the job without allocating for it.
  int const count32 = NarrowToInt32(count);
  long long const size = bytes.GetSize();
  long long const needed = size + width * count;
  if (needed > bytes.GetCapacity()) {
    GrowForPacking(bytes, needed);
  }
  int const capacity32 = NarrowToInt32(bytes.GetCapacity());
  int position = NarrowToInt32(size);
  Check(WMPI_Pack(data, count32, datatype, bytes.GetData(), capacity32, &position, comm));
  bytes.Resize(position);
}

void ZQMPT::Pack(void *, long long) { detail::FatalError(); }

void ZQMPT::Unpack(void *data, long long count, int datatype) {
  if (count < 1) {
    return;
  }
  ZQMPTBuffer &buffer = FindReceiveBuffer();
  ZQMPTArray<unsigned char> &bytes = buffer.GetData();
  int const size32 = NarrowToInt32(bytes.GetSize());
  int position = NarrowToInt32(buffer.GetUnpackPos());
  int const count32 = NarrowToInt32(count);
  // An overrun is refused by the layer, and its failure status ends the job.
  Check(WMPI_Unpack(bytes.GetData(), size32, &position, data, count32, datatype, comm));
  buffer.SetUnpackPos(position);
  if (position == size32) {
    buffer.AutoDataReset(autoBufferResetThreshold);
  }
}

template <typename T, typename> void ZQMPT::Pack(T *data, long long count) {
  Pack(static_cast<void *>(data), count, TypeCodeOf<T>());
}

template <typename T, typename> void ZQMPT::Unpack(T *data, long long count) {
  Unpack(static_cast<void *>(data), count, TypeCodeOf<T>());
}

#define ZQ_INSTANTIATE_PACKING(T)                                                                                      \
  template void ZQMPT::Pack<T, void>(T *, long long);                                                                  \
  template void ZQMPT::Unpack<T, void>(T *, long long);
ZQ_MPT_ELEMENT_TYPES(ZQ_INSTANTIATE_PACKING)
#undef ZQ_INSTANTIATE_PACKING

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
