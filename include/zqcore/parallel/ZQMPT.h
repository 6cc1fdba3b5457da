// ZQMPT: the message-passing object, owner of one private communicator.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/Types.h>
#include <zqcore/core/ZQCoreFwd.h>
#include <zqcore/core/ZQExports.h>
#include <zqcore/parallel/ZQMPTBuffer.h>
#include <zqcore/wmpi.h>

#include <climits>
#include <map>
#include <set>
#include <type_traits>

namespace Velmora::Tessara::ZQ::Core {

/// Element types of the typed messages: the eight that have a datatype code.
template <typename T>
inline constexpr bool IsMPTElement =
    std::is_same_v<T, char> || std::is_same_v<T, wchar_t> || std::is_same_v<T, unsigned char> ||
    std::is_same_v<T, short> || std::is_same_v<T, int> || std::is_same_v<T, long long> || std::is_same_v<T, float> ||
    std::is_same_v<T, double>;

/// The five numeric element types of the collectives and reductions.
template <typename T>
inline constexpr bool IsMPTNumber =
    std::is_same_v<T, short> || std::is_same_v<T, int> || std::is_same_v<T, long long> || std::is_same_v<T, float> ||
    std::is_same_v<T, double>;

/// The datatype code of an element type of the typed messages.
template <typename T> constexpr int MPTTypeCodeOf() {
  if constexpr (std::is_same_v<T, char>) {
    return WMPI_CHAR;
  } else if constexpr (std::is_same_v<T, wchar_t>) {
    return WMPI_WCHAR;
  } else if constexpr (std::is_same_v<T, unsigned char>) {
    return WMPI_UNSIGNED_CHAR;
  } else if constexpr (std::is_same_v<T, short>) {
    return WMPI_SHORT;
  } else if constexpr (std::is_same_v<T, int>) {
    return WMPI_INT;
  } else if constexpr (std::is_same_v<T, long long>) {
    return WMPI_LONG_LONG;
  } else if constexpr (std::is_same_v<T, float>) {
    return WMPI_FLOAT;
  } else {
    static_assert(std::is_same_v<T, double>, "not an element type of the typed messages");
    return WMPI_DOUBLE;
  }
}

/// Talks to the other processes of the job over its own duplicate of a communicator.
/// Every failure of the layer underneath is fatal: the banner is written and the job
/// ends. One thread at a time per object; the static started mark is shared, unguarded.
class ZQCORE_EXPORT ZQMPT {
public:
  static constexpr int NameSize = 256;
  static constexpr int ErrorMsgSize = 256;
  static constexpr int DefaultTagBound = 32767;
  static constexpr long long DefaultBufferIncrement = 32768;
  static constexpr long long DefaultAutoBufferResetThreshold = 0x7fffffff;

  /// Marks message passing as started (checking the layer once if it had been stopped).
  /// Local; both arguments are ignored.
  static void Initialize(int *argc, char ***argv);
  /// Clears the started mark after checking the layer once. Local.
  static void Finalize();
  /// The same operation as ZQ_Abort: ends the whole job with `code`.
  [[noreturn]] static void AbortWorld(int code);

  /// Collective over the world: duplicates the world communicator.
  ZQMPT();
  /// Collective over `comm`: duplicates it.
  explicit ZQMPT(unsigned long long comm);
  /// Collective over `other`'s communicator: a fresh duplicate with `other`'s settings
  /// but an empty name, no buffers and tags that start over.
  ZQMPT(ZQMPT const &other);
  /// As the copy constructor; the communicator held before is not released.
  ZQMPT &operator=(ZQMPT const &other);
  /// Collective: releases the communicator.
  virtual ~ZQMPT();

  /// Collective: back to a single process of rank 0 and releases the communicator.
  /// The name stays.
  void Reset();
  /// True while the object holds a communicator.
  bool IsInitialized() const;
  /// Ends the processes of this object's communicator with `code`.
  [[noreturn]] void Abort(int code);
  unsigned long long const &GetMPIComm() const;
  int GetNProcs() const;
  int NProcs() const;
  int GetProcRank() const;
  int ProcRank() const;
  char const *GetName() const;
  /// Copies up to 255 bytes of `name`; null empties the name.
  void SetName(char const *name);
  /// Local: probes each rank in turn for a message of any tag.
  bool HasPendingMessages() const;

  // ---- Typed point-to-point messages and collectives -------------------------------
  // Counts are 64-bit and must fit 32 bits, else the job ends. Point-to-point messages
  // take the next tag of the peer's sequence in their direction; peer -1 is any source.

  /// Width in bytes of an element of `datatype`; a code without a width ends the job.
  static long long SizeOf(int datatype);

  /// Blocking send to `peer`.
  void BSend(void *data, long long count, int datatype, int peer);
  template <typename T, typename = std::enable_if_t<IsMPTElement<T>>> void BSend(T *data, long long count, int peer);
  /// Blocking receive from `peer` (-1: any); the status is dropped.
  void BReceive(void *data, long long count, int datatype, int peer);
  template <typename T, typename = std::enable_if_t<IsMPTElement<T>>> void BReceive(T *data, long long count, int peer);
  /// Send and receive at once, without deadlock.
  void BSendReceive(void *sendData, long long sendCount, int sendType, int sendPeer, void *receiveData,
                    long long receiveCount, int receiveType, int receivePeer);
  template <typename T, typename = std::enable_if_t<IsMPTElement<T>>>
  void BSendReceive(T *sendData, long long sendCount, int sendPeer, T *receiveData, long long receiveCount,
                    int receivePeer);
  /// Collective: `root`'s data reaches every process.
  void Broadcast(void *data, long long count, int datatype, int root);
  template <typename T, typename = std::enable_if_t<IsMPTElement<T>>>
  void Broadcast(T *data, long long count, int root);
  /// Collective: each process's block to all, in rank order; counts are per process.
  void AllGather(void *sendData, long long sendCount, int sendType, void *receiveData, long long receiveCount,
                 int receiveType);
  template <typename T, typename = std::enable_if_t<IsMPTNumber<T>>>
  void AllGather(T *sendData, T *receiveData, long long count);
  /// Collective: block i of each process goes to process i; counts are per process.
  void AllToAll(void *sendData, long long sendCount, int sendType, void *receiveData, long long receiveCount,
                int receiveType);
  template <typename T, typename = std::enable_if_t<IsMPTNumber<T>>>
  void AllToAll(T *sendData, T *receiveData, long long count);
  /// Collective: element-wise reduction by operation code, the result on every process.
  void AllReduce(void *sendData, void *receiveData, long long count, int datatype, int operation);
  /// Collective reductions. The in-place forms return at once, without taking part, for a
  /// count below 1.
  template <typename T, typename = std::enable_if_t<IsMPTNumber<T>>>
  void Min(T *sendData, T *receiveData, long long count);
  template <typename T, typename = std::enable_if_t<IsMPTNumber<T>>> void Min(T *data, long long count);
  template <typename T, typename = std::enable_if_t<IsMPTNumber<T>>>
  void Max(T *sendData, T *receiveData, long long count);
  template <typename T, typename = std::enable_if_t<IsMPTNumber<T>>> void Max(T *data, long long count);
  template <typename T, typename = std::enable_if_t<IsMPTNumber<T>>>
  void Sum(T *sendData, T *receiveData, long long count);
  template <typename T, typename = std::enable_if_t<IsMPTNumber<T>>> void Sum(T *data, long long count);
  /// Collective: all processes meet.
  void Barrier();
  /// Collective: true when every process passed true.
  bool CheckTrue(bool value);
  /// Collective: false when every process passed false, true as soon as one passed true.
  bool CheckFalse(bool value);

  // ---- Message buffers and packing -------------------------------------------------
  // Buffers are keyed by peer in "PerProcess" mode and by 0 otherwise. Pack and Unpack
  // work on the selected buffer; a missing buffer ends the job. Local unless noted.

  /// A different mode deletes both buffer maps; the selections stay.
  void SetBufferMode(Types::BufferMode_t mode);
  Types::BufferMode_t GetBufferMode() const;
  /// Selects and prepares the send buffer of `peer`: empty, with room for `size` bytes.
  void InitSendBuffer(int peer, long long size);
  /// Selects and prepares the receive buffer of `peer`, sized to `size` when positive.
  void InitReceiveBuffer(int peer, long long size);
  void SelectSendBuffer(int peer);
  void SelectReceiveBuffer(int peer);
  int GetSelectedSendBuffer() const;
  int GetSelectedReceiveBuffer() const;
  /// The buffer under `key`, owned by this object; null when there is no map or no such key.
  ZQMPTBuffer *GetSendBuffer(int key);
  ZQMPTBuffer *GetReceiveBuffer(int key);
  /// Deletes both buffer maps, without looking at requests in flight.
  void ResetBuffers();
  /// Bytes in use in the buffer under `key`; 0 when there is none.
  long long GetSendBufferSize(int key) const;
  long long GetReceiveBufferSize(int key) const;
  /// Fills sizes[0 .. nProcs-1] by key; a null pointer does nothing.
  void GetSendBufferSizes(long long *sizes) const;
  void GetReceiveBufferSizes(long long *sizes) const;
  /// Sum of the capacities of all send and receive buffers.
  long long GetTotalBufferSizes() const;
  /// Largest capacity that a buffer keeps once its message is used up.
  long long GetAutoBufferResetThreshold() const;
  void SetAutoBufferResetThreshold(long long threshold);
  /// Appends `count` elements to the selected send buffer; nothing for a count below 1.
  void Pack(void *data, long long count, int datatype);
  template <typename T, typename = std::enable_if_t<IsMPTElement<T>>> void Pack(T *data, long long count);
  /// Has no element type to go by: ends the job.
  [[noreturn]] void Pack(void *data, long long count);
  /// Reads the next `count` elements of the selected receive buffer.
  void Unpack(void *data, long long count, int datatype);
  template <typename T, typename = std::enable_if_t<IsMPTElement<T>>> void Unpack(T *data, long long count);
  /// Delivers this process's send buffer for `peer` to its receive buffer, without a message.
  void CopySendToReceiveBuffer(int peer);
  /// Collective: the root's selected send buffer reaches every other process's receive
  /// buffer for `root`.
  void BroadcastBuffer(int root);

  // ---- Non-blocking exchange -------------------------------------------------------
  // A buffer travels as a size message (unless data-only) and a data message. Members -1
  // of a peer set are skipped; a single peer of -1 makes a buffer operation return at once.

  void NBSend(void *data, long long count, int datatype, int peer, unsigned long long *request);
  void NBReceive(void *data, long long count, int datatype, int peer, unsigned long long *request);
  void Wait(unsigned long long *request, WMPI_Status *status);
  void WaitAll(long long count, unsigned long long *requests, WMPI_Status *statuses);
  /// `index` becomes the position of the finished request (-1 when none was active).
  void WaitAny(long long count, unsigned long long *requests, WMPI_Status *statuses, long long &index);
  /// Starts sending the selected send buffer to `peer`.
  void NBSendBuffer(int peer, bool dataOnly);
  void NBSendBuffers(std::set<int> const &peers, bool dataOnly);
  /// Starts receiving from `peer` into its receive buffer.
  void NBReceiveBuffer(int peer, bool dataOnly);
  void NBReceiveBuffers(std::set<int> const &peers, bool dataOnly);
  void WaitSendBuffer(int peer, bool dataOnly);
  void WaitAllSendBuffers(std::set<int> const &peers, bool dataOnly);
  void WaitReceiveBuffer(int peer, bool dataOnly);
  /// Completes every member's receive; in order of arrival unless data-only.
  void WaitAllReceiveBuffers(std::set<int> const &peers, bool dataOnly);
  /// Completes one receive and names its peer (-1 when none); its buffer stays selected.
  void WaitAnyReceiveBuffers(std::set<int> const &peers, bool dataOnly, int &peer);
  /// Blocking probe: the byte length of the next message from `peer`.
  void BProbe(int peer, long long &size);
  /// Spins until a member of `peers` has a message; the lowest such member wins.
  void BProbe(std::set<int> const &peers, int &peer, long long &size);
  bool NBProbe(int peer, long long &size);
  /// A member outside 0 .. nProcs-1 ends the job.
  bool NBProbe(std::set<int> const &peers, int &peer, long long &size);
  long long GetNPendingSendBufferRequests() const;
  long long GetNPendingReceiveBufferRequests() const;
  long long GetNPendingBufferRequests() const;

private:
  friend void ::ZQ_Abort(int);
  friend void ::ZQ_Exit(int);

  static void DuplicateCommunicator(unsigned long long comm, unsigned long long *newComm);
  static void FreeCommunicator(unsigned long long *comm);
  static int DetermineNProcs(unsigned long long comm);
  static int DetermineProcRank(unsigned long long comm);
  static void GetErrorMessage(int code);
  [[noreturn]] static void HandleError(int code);
  /// Runs the fatal tail for a nonzero status of the layer. Inline: packing checks every call.
  static void Check(int status) {
    if (status != 0) {
      HandleError(status);
    }
  }
  using BufferMap = std::map<int, ZQMPTBuffer>;

  // Packing and unpacking are inline, value by value being their common use (see below).
  static bool IsCount32(long long value);
  void PackElements(void *data, long long count, int datatype, long long width);
  ZQMPTArray<unsigned char> &RoomToPack(long long count, long long width);
  ZQMPTBuffer &BufferToUnpack(long long count);
  ZQMPTArray<unsigned char> &MakeRoomToPack(long long count, long long width);
  ZQMPTBuffer &CheckBufferToUnpack(long long count);

  int GetSendTag(int peer);
  int GetRecvTag(int peer);
  /// The tag of the next message to or from `peer`: -1 for any peer, else GetSendTag/GetRecvTag.
  int SendTagFor(int peer);
  int RecvTagFor(int peer);
  int KeyOf(int peer) const;
  ZQMPTBuffer &FindSendBuffer();
  ZQMPTBuffer &FindReceiveBuffer();
  void InitBuffer(ZQMPTBuffer &buffer, long long size) const;
  /// Selects the receive (or send) buffer of `peer` and finds it; a missing one ends the job.
  ZQMPTBuffer &SelectedBufferOf(int peer, bool receiving);
  /// One wait over the exchanges of every member's buffer on one side; the requests and
  /// statuses go back to the buffers, and receive buffers are rewound for unpacking.
  void WaitAllBufferExchanges(std::set<int> const &peers, bool receiving, bool dataOnly);
  /// After the size message from `peer` arrived in `buffer`: sizes it, receives the data.
  void ReceiveAnnouncedData(int peer, ZQMPTBuffer &buffer);
  void InitWaitStructures();
  void ResetWaitStructures();
  void CancelRequest(unsigned long long *request);
  void CancelBufferRequests();
  void CancelBufferRequests(BufferMap *buffers);
  void InitMPT();
  void Copy(ZQMPT const &other);
  void SetMPIComm(unsigned long long comm);
  /// Tag sequences, scratch and buffer settings back to their defaults.
  void ResetExchangeState();

  static bool _isInitialized;
  static char _errorMsg[ErrorMsgSize];

  // Defaults before the first communicator is taken; InitMPT then sets the working values.
  unsigned long long comm = ~0ull;
  int nProcs = 1;
  int procRank = 0;
  char name[NameSize] = {};
  bool useTags = true;
  int tagBound = 0;
  std::map<int, int> sendTags;
  std::map<int, int> recvTags;
  unsigned long long *waitRequests = nullptr;
  WMPI_Status *waitStatuses = nullptr;
  Types::BufferMode_t bufferMode = Types::BufferMode_t::PerProcess;
  long long bufferIncrement = DefaultBufferIncrement;
  BufferMap *sendBuffers = nullptr;
  BufferMap *receiveBuffers = nullptr;
  int selectedSendBuffer = -1;
  int selectedReceiveBuffer = -1;
  // The buffers found under the current selections: packing and unpacking value by value
  // then look the map up only once per selection. A change of selection forgets its side's
  // buffer; the maps' nodes keep their addresses until a map is deleted, which forgets both.
  ZQMPTBuffer *foundSendBuffer = nullptr;
  ZQMPTBuffer *foundReceiveBuffer = nullptr;
  long long autoBufferResetThreshold = DefaultAutoBufferResetThreshold;
};

// ---- Packing and unpacking, inline ------------------------------------------------------
// The buffer remembered for the selection is taken when it has room and every length fits
// 32 bits. Anything else goes out of line, where the lookup, the growth and each narrowing
// check run in order and a failing one ends the job.

template <typename T, typename> inline void ZQMPT::Pack(T *data, long long count) {
  PackElements(data, count, MPTTypeCodeOf<T>(), static_cast<long long>(sizeof(T)));
}

inline void ZQMPT::Unpack(void *data, long long count, int datatype) {
  if (count < 1) {
    return;
  }
  ZQMPTBuffer &buffer = BufferToUnpack(count);
  ZQMPTArray<unsigned char> &bytes = buffer.GetData();
  int const size = static_cast<int>(bytes.GetSize());
  int position = static_cast<int>(buffer.GetUnpackPos());
  // An overrun is refused by the layer, and its failure status ends the job.
  Check(WMPI_Unpack(bytes.GetData(), size, &position, data, static_cast<int>(count), datatype, comm));
  buffer.SetUnpackPos(position);
  if (position == size) {
    buffer.AutoDataReset(autoBufferResetThreshold);
  }
}

template <typename T, typename> inline void ZQMPT::Unpack(T *data, long long count) {
  Unpack(data, count, MPTTypeCodeOf<T>());
}

// 0 .. INT_MAX in one comparison; a negative value, rare here, takes the checked path.
inline bool ZQMPT::IsCount32(long long value) { return static_cast<unsigned long long>(value) <= INT_MAX; }

inline void ZQMPT::PackElements(void *data, long long count, int datatype, long long width) {
  if (count < 1) {
    return;
  }
  ZQMPTArray<unsigned char> &bytes = RoomToPack(count, width);
  int position = static_cast<int>(bytes.GetSize());
  Check(WMPI_Pack(data, static_cast<int>(count), datatype, bytes.GetData(), static_cast<int>(bytes.GetCapacity()),
                  &position, comm));
  bytes.Resize(position);
}

inline ZQMPTArray<unsigned char> &ZQMPT::RoomToPack(long long count, long long width) {
  if (foundSendBuffer != nullptr && IsCount32(count)) {
    ZQMPTArray<unsigned char> &bytes = foundSendBuffer->GetData();
    if (bytes.GetSize() + width * count <= bytes.GetCapacity() && IsCount32(bytes.GetCapacity())) {
      return bytes;
    }
  }
  return MakeRoomToPack(count, width);
}

inline ZQMPTBuffer &ZQMPT::BufferToUnpack(long long count) {
  if (foundReceiveBuffer != nullptr && IsCount32(count) && IsCount32(foundReceiveBuffer->GetData().GetSize()) &&
      IsCount32(foundReceiveBuffer->GetUnpackPos())) {
    return *foundReceiveBuffer;
  }
  return CheckBufferToUnpack(count);
}

} // namespace Velmora::Tessara::ZQ::Core
