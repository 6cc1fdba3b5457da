// ZQMPT: tag sequences, blocking point-to-point messages, collectives and reductions.
#include <zqcore/parallel/ZQMPT.h>
#include <zqcore/wmpi.h>

#include "core/detail/Fatal.h"
#include "parallel/detail/ElementTypes.h"

#include <algorithm>
#include <memory>

namespace Velmora::Tessara::ZQ::Core {

using detail::NarrowToInt32;

namespace {

// Tags of one direction to one peer run 1, 2, ... bound - 1, 0, 1, ...: each side counts
// its own messages, and the two agree because matching calls come in the same order.
int AdvanceTag(int &last, int bound) {
  last = (last + 1) % bound;
  return last;
}

// Reduces into a temporary and copies back. A count below 1 returns before the
// collective, so this process takes no part in it.
template <typename T> void ReduceInPlace(ZQMPT &mpt, T *data, long long count, int operation) {
  if (count < 1) {
    return;
  }
  // Checked before allocating, so that an oversized count ends the job without trying.
  std::unique_ptr<T[]> const reduced(new T[static_cast<std::size_t>(NarrowToInt32(count))]);
  mpt.AllReduce(data, reduced.get(), count, MPTTypeCodeOf<T>(), operation);
  std::copy_n(reduced.get(), count, data);
}

} // namespace

int ZQMPT::GetSendTag(int peer) { return useTags ? AdvanceTag(sendTags[peer], tagBound) : WMPI_ANY_TAG; }

int ZQMPT::GetRecvTag(int peer) { return useTags ? AdvanceTag(recvTags[peer], tagBound) : WMPI_ANY_TAG; }

// A message to or from any peer carries any tag and leaves every sequence alone.
int ZQMPT::SendTagFor(int peer) { return peer == WMPI_ANY_SOURCE ? WMPI_ANY_TAG : GetSendTag(peer); }

int ZQMPT::RecvTagFor(int peer) { return peer == WMPI_ANY_SOURCE ? WMPI_ANY_TAG : GetRecvTag(peer); }

long long ZQMPT::SizeOf(int datatype) { return detail::ElementWidth(datatype); }

void ZQMPT::BSend(void *data, long long count, int datatype, int peer) {
  int const tag = SendTagFor(peer);
  Check(WMPI_Send(data, NarrowToInt32(count), datatype, peer, tag, comm));
}

void ZQMPT::BReceive(void *data, long long count, int datatype, int peer) {
  int const tag = RecvTagFor(peer);
  WMPI_Status status;
  Check(WMPI_Recv(data, NarrowToInt32(count), datatype, peer, tag, comm, &status));
}

void ZQMPT::BSendReceive(void *sendData, long long sendCount, int sendType, int sendPeer, void *receiveData,
                         long long receiveCount, int receiveType, int receivePeer) {
  int const sendTag = SendTagFor(sendPeer);
  int const receiveTag = RecvTagFor(receivePeer);
  int const sendCount32 = NarrowToInt32(sendCount);
  int const receiveCount32 = NarrowToInt32(receiveCount);
  WMPI_Status status;
  Check(WMPI_Sendrecv(sendData, sendCount32, sendType, sendPeer, sendTag, receiveData, receiveCount32, receiveType,
                      receivePeer, receiveTag, comm, &status));
}

void ZQMPT::Broadcast(void *data, long long count, int datatype, int root) {
  Check(WMPI_Bcast(data, NarrowToInt32(count), datatype, root, comm));
}

void ZQMPT::AllGather(void *sendData, long long sendCount, int sendType, void *receiveData, long long receiveCount,
                      int receiveType) {
  int const sendCount32 = NarrowToInt32(sendCount);
  int const receiveCount32 = NarrowToInt32(receiveCount);
  Check(WMPI_Allgather(sendData, sendCount32, sendType, receiveData, receiveCount32, receiveType, comm));
}

void ZQMPT::AllToAll(void *sendData, long long sendCount, int sendType, void *receiveData, long long receiveCount,
                     int receiveType) {
  int const sendCount32 = NarrowToInt32(sendCount);
  int const receiveCount32 = NarrowToInt32(receiveCount);
  Check(WMPI_Alltoall(sendData, sendCount32, sendType, receiveData, receiveCount32, receiveType, comm));
}

void ZQMPT::AllReduce(void *sendData, void *receiveData, long long count, int datatype, int operation) {
  Check(WMPI_Allreduce(sendData, receiveData, NarrowToInt32(count), datatype, operation, comm));
}

void ZQMPT::Barrier() { Check(WMPI_Barrier(comm)); }

bool ZQMPT::CheckTrue(bool value) {
  int local = value ? 1 : 0;
  int result = 0;
  Check(WMPI_Allreduce(&local, &result, 1, WMPI_INT, WMPI_LAND, comm));
  return result != 0;
}

// Negated on the way in and out: true as soon as one process passed true.
bool ZQMPT::CheckFalse(bool value) {
  int local = value ? 0 : 1;
  int result = 0;
  Check(WMPI_Allreduce(&local, &result, 1, WMPI_INT, WMPI_LAND, comm));
  return result == 0;
}

template <typename T, typename> void ZQMPT::BSend(T *data, long long count, int peer) {
  BSend(static_cast<void *>(data), count, MPTTypeCodeOf<T>(), peer);
}

template <typename T, typename> void ZQMPT::BReceive(T *data, long long count, int peer) {
  BReceive(static_cast<void *>(data), count, MPTTypeCodeOf<T>(), peer);
}

template <typename T, typename>
void ZQMPT::BSendReceive(T *sendData, long long sendCount, int sendPeer, T *receiveData, long long receiveCount,
                         int receivePeer) {
  BSendReceive(static_cast<void *>(sendData), sendCount, MPTTypeCodeOf<T>(), sendPeer, static_cast<void *>(receiveData),
               receiveCount, MPTTypeCodeOf<T>(), receivePeer);
}

template <typename T, typename> void ZQMPT::Broadcast(T *data, long long count, int root) {
  Broadcast(static_cast<void *>(data), count, MPTTypeCodeOf<T>(), root);
}

template <typename T, typename> void ZQMPT::AllGather(T *sendData, T *receiveData, long long count) {
  AllGather(static_cast<void *>(sendData), count, MPTTypeCodeOf<T>(), static_cast<void *>(receiveData), count,
            MPTTypeCodeOf<T>());
}

template <typename T, typename> void ZQMPT::AllToAll(T *sendData, T *receiveData, long long count) {
  AllToAll(static_cast<void *>(sendData), count, MPTTypeCodeOf<T>(), static_cast<void *>(receiveData), count,
           MPTTypeCodeOf<T>());
}

template <typename T, typename> void ZQMPT::Min(T *sendData, T *receiveData, long long count) {
  AllReduce(sendData, receiveData, count, MPTTypeCodeOf<T>(), WMPI_MIN);
}

template <typename T, typename> void ZQMPT::Min(T *data, long long count) {
  ReduceInPlace(*this, data, count, WMPI_MIN);
}

template <typename T, typename> void ZQMPT::Max(T *sendData, T *receiveData, long long count) {
  AllReduce(sendData, receiveData, count, MPTTypeCodeOf<T>(), WMPI_MAX);
}

template <typename T, typename> void ZQMPT::Max(T *data, long long count) {
  ReduceInPlace(*this, data, count, WMPI_MAX);
}

template <typename T, typename> void ZQMPT::Sum(T *sendData, T *receiveData, long long count) {
  AllReduce(sendData, receiveData, count, MPTTypeCodeOf<T>(), WMPI_SUM);
}

template <typename T, typename> void ZQMPT::Sum(T *data, long long count) {
  ReduceInPlace(*this, data, count, WMPI_SUM);
}

#define ZQ_INSTANTIATE_MESSAGES(T)                                                                                     \
  template void ZQMPT::BSend<T, void>(T *, long long, int);                                                            \
  template void ZQMPT::BReceive<T, void>(T *, long long, int);                                                         \
  template void ZQMPT::BSendReceive<T, void>(T *, long long, int, T *, long long, int);                                \
  template void ZQMPT::Broadcast<T, void>(T *, long long, int);
ZQ_MPT_ELEMENT_TYPES(ZQ_INSTANTIATE_MESSAGES)
#undef ZQ_INSTANTIATE_MESSAGES

#define ZQ_INSTANTIATE_COLLECTIVES(T)                                                                                  \
  template void ZQMPT::AllGather<T, void>(T *, T *, long long);                                                        \
  template void ZQMPT::AllToAll<T, void>(T *, T *, long long);                                                         \
  template void ZQMPT::Min<T, void>(T *, T *, long long);                                                              \
  template void ZQMPT::Min<T, void>(T *, long long);                                                                   \
  template void ZQMPT::Max<T, void>(T *, T *, long long);                                                              \
  template void ZQMPT::Max<T, void>(T *, long long);                                                                   \
  template void ZQMPT::Sum<T, void>(T *, T *, long long);                                                              \
  template void ZQMPT::Sum<T, void>(T *, long long);
ZQ_MPT_NUMBER_TYPES(ZQ_INSTANTIATE_COLLECTIVES)
#undef ZQ_INSTANTIATE_COLLECTIVES

} // namespace Velmora::Tessara::ZQ::Core
