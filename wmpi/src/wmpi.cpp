// The C message-passing layer of ZQCore over an MPI library.
//
// Communicators and requests cross the interface as 64-bit handles. The predefined
// communicators have fixed values; every other handle is a slot index into a table owned
// here, so that a stale or made-up handle is refused with an error status instead of
// being dereferenced. Every communicator this layer hands out returns its errors, and so
// do the predefined ones for the duration of each call, so that failures reach the
// caller as statuses and the caller decides how the job ends.
#include <zqcore/wmpi.h>

#include <mpi.h>

#include <climits>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <new>
#include <vector>

namespace {

// ---------------------------------------------------------------------------------------
// Whether MPI may be called. Checked once per process while unknown; MPI_Finalize then
// marks it down through the delete callback of an attribute on MPI_COMM_SELF, so that
// calls after the end give an error status rather than undefined behaviour.

enum class Layer : unsigned char { Unknown, Up, Down };

struct LayerState {
  Layer layer = Layer::Unknown;
  bool wcharMatches = false;
};

LayerState layerState;

int MarkLayerDown(MPI_Comm, int, void *, void *) {
  layerState.layer = Layer::Down;
  return MPI_SUCCESS;
}

void WatchForFinalize() {
  int key = MPI_KEYVAL_INVALID;
  if (MPI_Comm_create_keyval(MPI_COMM_NULL_COPY_FN, MarkLayerDown, &key, nullptr) == MPI_SUCCESS) {
    MPI_Comm_set_attr(MPI_COMM_SELF, key, nullptr);
    // The attribute keeps the key alive until MPI_Finalize deletes it; only the attribute
    // needs it from here on, so the key is released at once and nothing is left behind.
    MPI_Comm_free_keyval(&key);
  }
}

// The first call after MPI_Init: checks the wide character and starts watching.
bool BringUp() {
  if (layerState.layer == Layer::Down) {
    return false;
  }
  int initialized = 0;
  int finalized = 0;
  MPI_Initialized(&initialized);
  MPI_Finalized(&finalized);
  if (!initialized) {
    return false; // may still come up later
  }
  if (finalized) {
    layerState.layer = Layer::Down;
    return false;
  }
  // Code 24 is the platform's wide character; MPI's must have the same width.
  int wcharSize = 0;
  MPI_Type_size(MPI_WCHAR, &wcharSize);
  layerState.wcharMatches = wcharSize == static_cast<int>(sizeof(wchar_t));
  WatchForFinalize();
  layerState.layer = Layer::Up;
  return true;
}

// Kept apart from BringUp so that the check on every call stays inline.
inline bool EnsureUp() { return layerState.layer == Layer::Up || BringUp(); }

// ---------------------------------------------------------------------------------------
// Datatype and operation codes.

// Indexed by code, so that the lookup on every call is one bounds check and one load;
// codes without a type have width 0.
struct TypeCode {
  int width;
  MPI_Datatype type;
};

constexpr int highestTypeCode = WMPI_WCHAR;

struct TypeTable {
  TypeCode byCode[highestTypeCode + 1];
};

TypeTable BuildTypeTable() {
  TypeTable table{};
  auto const add = [&table](int code, std::size_t width, MPI_Datatype type) {
    table.byCode[code] = TypeCode{static_cast<int>(width), type};
  };
  add(WMPI_CHAR, sizeof(char), MPI_CHAR);
  add(WMPI_SHORT, sizeof(short), MPI_SHORT);
  add(WMPI_INT, sizeof(int), MPI_INT);
  add(WMPI_FLOAT, sizeof(float), MPI_FLOAT);
  add(WMPI_DOUBLE, sizeof(double), MPI_DOUBLE);
  add(WMPI_UNSIGNED_CHAR, sizeof(unsigned char), MPI_UNSIGNED_CHAR);
  add(WMPI_BYTE, 1, MPI_BYTE);
  add(WMPI_LONG_LONG, sizeof(long long), MPI_LONG_LONG);
  add(WMPI_WCHAR, sizeof(wchar_t), MPI_WCHAR);
  return table;
}

TypeTable const typeTable = BuildTypeTable();

TypeCode const *FindTypeCode(int code) {
  if (code < 0 || code > highestTypeCode || typeTable.byCode[code].width == 0) {
    return nullptr;
  }
  return &typeTable.byCode[code];
}

int MpiTypeOf(int code, MPI_Datatype *type) {
  TypeCode const *entry = FindTypeCode(code);
  if (entry == nullptr || (code == WMPI_WCHAR && !layerState.wcharMatches)) {
    return MPI_ERR_TYPE;
  }
  *type = entry->type;
  return MPI_SUCCESS;
}

int MpiOpOf(int code, MPI_Op *op) {
  switch (code) {
  case WMPI_MAX:
    *op = MPI_MAX;
    return MPI_SUCCESS;
  case WMPI_MIN:
    *op = MPI_MIN;
    return MPI_SUCCESS;
  case WMPI_SUM:
    *op = MPI_SUM;
    return MPI_SUCCESS;
  case WMPI_LAND:
    *op = MPI_LAND;
    return MPI_SUCCESS;
  default:
    return MPI_ERR_OP;
  }
}

// A buffer of `count` elements: the count must not be negative and the pointer may only
// be null when there is nothing to move.
int CheckBuffer(void const *buffer, int count) {
  if (count < 0) {
    return MPI_ERR_COUNT;
  }
  return count > 0 && buffer == nullptr ? MPI_ERR_BUFFER : MPI_SUCCESS;
}

// The first failure among checks that were all made, in order; the checks themselves
// cost nothing worth skipping.
int FirstFailure(std::initializer_list<int> statuses) {
  for (int status : statuses) {
    if (status != MPI_SUCCESS) {
      return status;
    }
  }
  return MPI_SUCCESS;
}

// The datatype of a buffer and the buffer itself, as every data-moving call checks them.
int CheckTypedBuffer(int datatype, void const *buffer, int count, MPI_Datatype *type) {
  int const status = MpiTypeOf(datatype, type);
  return status != MPI_SUCCESS ? status : CheckBuffer(buffer, count);
}

// ---------------------------------------------------------------------------------------
// Peers and tags. -1 is "any" on the receiving side. A send with tag -1 goes out with a
// reserved tag that the library's tag sequence never produces, and a message carrying it
// reports tag -1 again.

constexpr int reservedSendTag = 32767;

int SendTag(int tag) { return tag == -1 ? reservedSendTag : tag; }
int RecvSource(int source) { return source == -1 ? MPI_ANY_SOURCE : source; }
int RecvTag(int tag) { return tag == -1 ? MPI_ANY_TAG : tag; }
int ReportedSource(int source) { return source == MPI_ANY_SOURCE ? -1 : source; }
int ReportedTag(int tag) { return tag == reservedSendTag || tag == MPI_ANY_TAG ? -1 : tag; }

// ---------------------------------------------------------------------------------------
// Errors on the predefined communicators. Their handler belongs to the application, so it
// is switched to MPI_ERRORS_RETURN only for the duration of a call and put back after it.

enum Predefined : unsigned char { NotPredefined = 0, OnWorld = 1, OnSelf = 2 };

class ErrorsReturnScope {
public:
  explicit ErrorsReturnScope(unsigned char predefined) {
    if (predefined & OnWorld) {
      Switch(MPI_COMM_WORLD);
    }
    if (predefined & OnSelf) {
      Switch(MPI_COMM_SELF);
    }
  }
  ~ErrorsReturnScope() {
    for (int i = count - 1; i >= 0; --i) {
      MPI_Comm_set_errhandler(saved[i].comm, saved[i].handler);
      MPI_Errhandler_free(&saved[i].handler);
    }
  }
  ErrorsReturnScope(ErrorsReturnScope const &) = delete;
  ErrorsReturnScope &operator=(ErrorsReturnScope const &) = delete;

private:
  struct Saved {
    MPI_Comm comm;
    MPI_Errhandler handler;
  };

  void Switch(MPI_Comm comm) {
    Saved &entry = saved[count];
    entry.comm = comm;
    if (MPI_Comm_get_errhandler(comm, &entry.handler) == MPI_SUCCESS) {
      MPI_Comm_set_errhandler(comm, MPI_ERRORS_RETURN);
      ++count;
    }
  }

  Saved saved[2];
  int count = 0;
};

// ---------------------------------------------------------------------------------------
// Handle tables. A handle is the index of its slot; released slots are reused, most
// recently released first. The free list always has room for every slot, so releasing
// never allocates.

template <class Payload> class SlotTable {
public:
  enum class State : unsigned char { Free, Reserved, Live, Claimed };
  struct Slot {
    Payload payload;
    State state;
  };

  /// Reserves a slot for an object about to be created; MPI_ERR_NO_MEM if none can be had.
  int Reserve(std::size_t *index) {
    if (!freeSlots.empty()) {
      *index = freeSlots.back();
      freeSlots.pop_back();
      slots[*index].state = State::Reserved;
      return MPI_SUCCESS;
    }
    try {
      slots.push_back(Slot{Payload{}, State::Reserved});
    } catch (std::bad_alloc const &) {
      return MPI_ERR_NO_MEM;
    }
    try {
      // Room for every slot in the free list now, so that releasing never allocates.
      freeSlots.reserve(slots.capacity());
    } catch (std::bad_alloc const &) {
      slots.pop_back();
      return MPI_ERR_NO_MEM;
    }
    *index = slots.size() - 1;
    return MPI_SUCCESS;
  }

  void Fill(std::size_t index, Payload const &payload) { slots[index] = Slot{payload, State::Live}; }

  /// Reserves a slot, then lets `make` create its object. The slot is taken first so that
  /// a full table never leaves an object without a handle; a failed `make` gives it back.
  template <class Make> int Emplace(std::size_t *index, Make make) {
    int status = Reserve(index);
    if (status != MPI_SUCCESS) {
      return status;
    }
    Payload payload{};
    status = make(&payload);
    if (status != MPI_SUCCESS) {
      Release(*index);
      return status;
    }
    Fill(*index, payload);
    return MPI_SUCCESS;
  }

  void Release(std::size_t index) {
    slots[index].state = State::Free;
    freeSlots.push_back(index);
  }

  /// The slot of `handle` if it is in the given state, else null.
  Slot *Find(unsigned long long handle, State state = State::Live) {
    if (handle >= slots.size() || slots[handle].state != state) {
      return nullptr;
    }
    return &slots[handle];
  }

private:
  std::vector<Slot> slots;
  std::vector<std::size_t> freeSlots;
};

SlotTable<MPI_Comm> communicators;

struct PendingRequest {
  MPI_Request request;
  unsigned char predefined; // the predefined communicator it runs on, if any
};

SlotTable<PendingRequest> requestTable;
using RequestState = SlotTable<PendingRequest>::State;

// ---------------------------------------------------------------------------------------
// Communicator handles.

struct CommRef {
  MPI_Comm comm;
  unsigned char predefined;
};

int ResolveComm(unsigned long long handle, CommRef *ref) {
  if (handle == WMPI_COMM_WORLD) {
    *ref = CommRef{MPI_COMM_WORLD, OnWorld};
    return MPI_SUCCESS;
  }
  if (handle == WMPI_COMM_SELF) {
    *ref = CommRef{MPI_COMM_SELF, OnSelf};
    return MPI_SUCCESS;
  }
  auto const *slot = communicators.Find(handle);
  if (slot == nullptr) {
    return MPI_ERR_COMM;
  }
  *ref = CommRef{slot->payload, NotPredefined};
  return MPI_SUCCESS;
}

// The common start of every call on a communicator.
int OpenComm(unsigned long long handle, CommRef *ref) {
  if (!EnsureUp()) {
    return MPI_ERR_OTHER;
  }
  return ResolveComm(handle, ref);
}

// ---------------------------------------------------------------------------------------
// Request handles. Before a wait the handles are claimed (checked, and marked so that the
// same one cannot be waited for twice in one call); after it they are settled: finished
// requests give up their slot and their handle becomes -1.

// Room for a wait's arrays: on the stack up to N entries, so that the common waits do not
// allocate, and on the heap beyond that.
template <class T, std::size_t N> class ScratchArray {
public:
  bool Allocate(std::size_t count) {
    if (count > N) {
      heap.reset(new (std::nothrow) T[count]);
      data = heap.get();
    }
    return data != nullptr;
  }
  T *Data() { return data; }

private:
  T local[N];
  std::unique_ptr<T[]> heap;
  T *data = local;
};

constexpr std::size_t inlineRequests = 64;

void UnclaimRequests(unsigned long long const *handles, int count) {
  for (int i = 0; i < count; ++i) {
    if (auto *slot = requestTable.Find(handles[i], RequestState::Claimed)) {
      slot->state = RequestState::Live;
    }
  }
}

int ClaimRequests(unsigned long long const *handles, int count, MPI_Request *mpiRequests, unsigned char *predefined) {
  for (int i = 0; i < count; ++i) {
    if (handles[i] == WMPI_REQUEST_NULL) {
      mpiRequests[i] = MPI_REQUEST_NULL;
      continue;
    }
    auto *slot = requestTable.Find(handles[i]);
    if (slot == nullptr) {
      UnclaimRequests(handles, i);
      return MPI_ERR_REQUEST;
    }
    slot->state = RequestState::Claimed;
    mpiRequests[i] = slot->payload.request;
    *predefined |= slot->payload.predefined;
  }
  return MPI_SUCCESS;
}

void SettleRequests(unsigned long long *handles, int count, MPI_Request const *mpiRequests) {
  for (int i = 0; i < count; ++i) {
    auto *slot = requestTable.Find(handles[i], RequestState::Claimed);
    if (slot == nullptr) {
      continue;
    }
    if (mpiRequests[i] == MPI_REQUEST_NULL) {
      requestTable.Release(handles[i]);
      handles[i] = WMPI_REQUEST_NULL;
    } else {
      slot->payload.request = mpiRequests[i];
      slot->state = RequestState::Live;
    }
  }
}

using StartRequest = int (*)(void *, int, MPI_Datatype, int, int, MPI_Comm, MPI_Request *);

// Isend and Irecv: a request handle for a transfer started on a checked communicator.
int StartTransfer(StartRequest start, void *buffer, int count, int datatype, int peer, int tag, unsigned long long comm,
                  unsigned long long *request) {
  if (request == nullptr) {
    return MPI_ERR_ARG;
  }
  CommRef ref{};
  MPI_Datatype type{};
  int status = FirstFailure({OpenComm(comm, &ref), CheckTypedBuffer(datatype, buffer, count, &type)});
  if (status != MPI_SUCCESS) {
    return status;
  }
  std::size_t slot = 0;
  status = requestTable.Emplace(&slot, [&](PendingRequest *pending) {
    pending->predefined = ref.predefined;
    ErrorsReturnScope scope(ref.predefined);
    return start(buffer, count, type, peer, tag, ref.comm, &pending->request);
  });
  if (status == MPI_SUCCESS) {
    *request = slot;
  }
  return status;
}

int StartSend(void *buffer, int count, MPI_Datatype type, int dest, int tag, MPI_Comm comm, MPI_Request *request) {
  return MPI_Isend(buffer, count, type, dest, SendTag(tag), comm, request);
}

int StartRecv(void *buffer, int count, MPI_Datatype type, int source, int tag, MPI_Comm comm, MPI_Request *request) {
  return MPI_Irecv(buffer, count, type, RecvSource(source), RecvTag(tag), comm, request);
}

// ---------------------------------------------------------------------------------------
// Collectives.

using BlockExchange = int (*)(void const *, int, MPI_Datatype, void *, int, MPI_Datatype, MPI_Comm);

// Allgather and Alltoall take the same arguments and are checked alike.
int ExchangeBlocks(BlockExchange exchange, void *send, int sendCount, int sendType, void *recv, int recvCount,
                   int recvType, unsigned long long comm) {
  CommRef ref{};
  MPI_Datatype sendMpiType{};
  MPI_Datatype recvMpiType{};
  int status = FirstFailure({OpenComm(comm, &ref), CheckTypedBuffer(sendType, send, sendCount, &sendMpiType),
                             CheckTypedBuffer(recvType, recv, recvCount, &recvMpiType)});
  if (status != MPI_SUCCESS) {
    return status;
  }
  ErrorsReturnScope scope(ref.predefined);
  return exchange(send, sendCount, sendMpiType, recv, recvCount, recvMpiType, ref.comm);
}

// ---------------------------------------------------------------------------------------
// Statuses. The byte count is split as low 32 bits, then high bits shifted left by one
// with the cancelled flag in bit 0.

void ReadCountAndCancelled(MPI_Status const &in, std::uint64_t *bytes, bool *cancelled) {
#if defined(OPEN_MPI)
  // Open MPI keeps both in the public status record; reading them directly spares two
  // library calls per status on the exchange path, where every request has one.
  *bytes = in._ucount;
  *cancelled = in._cancelled != 0;
#else
  MPI_Count count = 0;
  if (MPI_Get_elements_x(&in, MPI_BYTE, &count) != MPI_SUCCESS || count < 0) {
    count = 0;
  }
  int flag = 0;
  MPI_Test_cancelled(&in, &flag);
  *bytes = static_cast<std::uint64_t>(count);
  *cancelled = flag != 0;
#endif
}

void ToWmpiStatus(MPI_Status const &in, int error, WMPI_Status *out) {
  std::uint64_t count = 0;
  bool cancelled = false;
  ReadCountAndCancelled(in, &count, &cancelled);
  out->count_lo = static_cast<int>(static_cast<std::uint32_t>(count));
  out->count_hi_and_cancelled =
      static_cast<int>(static_cast<std::uint32_t>(((count >> 32) << 1) | (cancelled ? 1u : 0u)));
  out->MPI_SOURCE = ReportedSource(in.MPI_SOURCE);
  out->MPI_TAG = ReportedTag(in.MPI_TAG);
  out->MPI_ERROR = error;
}

std::uint64_t ByteCount(WMPI_Status const &status) {
  auto const low = static_cast<std::uint32_t>(status.count_lo);
  auto const high = static_cast<std::uint32_t>(status.count_hi_and_cancelled) >> 1;
  return (static_cast<std::uint64_t>(high) << 32) | low;
}

MPI_Status *StatusOrIgnore(WMPI_Status *status, MPI_Status *local) {
  return status != nullptr ? local : MPI_STATUS_IGNORE;
}

void ReportStatus(MPI_Status const &in, int error, WMPI_Status *out) {
  if (out != nullptr) {
    ToWmpiStatus(in, error, out);
  }
}

// ---------------------------------------------------------------------------------------
// Packing copies the elements as they are: width x count bytes at the position.

enum class PackDirection { IntoPacked, OutOfPacked };

// Copies count elements between the plain buffer and the packed one at the position, and
// advances the position; nothing is written unless the whole span fits.
int MovePacked(PackDirection direction, void *packed, int packedSize, int *position, void *plain, int count,
               int datatype, unsigned long long comm) {
  CommRef ref{};
  int const status = OpenComm(comm, &ref);
  if (status != MPI_SUCCESS) {
    return status;
  }
  TypeCode const *entry = FindTypeCode(datatype);
  if (entry == nullptr) {
    return MPI_ERR_TYPE;
  }
  if (position == nullptr || packedSize < 0 || *position < 0) {
    return MPI_ERR_ARG;
  }
  if (count < 0) {
    return MPI_ERR_COUNT;
  }
  long long const span = static_cast<long long>(entry->width) * count;
  if (*position > packedSize || span > static_cast<long long>(packedSize) - *position) {
    return MPI_ERR_TRUNCATE;
  }
  if (span == 0) {
    return MPI_SUCCESS;
  }
  if (packed == nullptr || plain == nullptr) {
    return MPI_ERR_BUFFER;
  }
  char *at = static_cast<char *>(packed) + *position;
  auto const bytes = static_cast<std::size_t>(span);
  if (direction == PackDirection::IntoPacked) {
    std::memcpy(at, plain, bytes);
  } else {
    std::memcpy(plain, at, bytes);
  }
  *position += static_cast<int>(span);
  return MPI_SUCCESS;
}

} // namespace

// =======================================================================================

extern "C" {

int WMPI_Initialized(int *flag) {
  if (flag == nullptr) {
    return MPI_ERR_ARG;
  }
  int initialized = 0;
  int finalized = 0;
  MPI_Initialized(&initialized);
  MPI_Finalized(&finalized);
  *flag = initialized && !finalized ? 1 : 0;
  return MPI_SUCCESS;
}

int WMPI_Error_string(int code, char *text, int *length) {
  if (text == nullptr || length == nullptr) {
    return MPI_ERR_ARG;
  }
  text[0] = '\0';
  *length = 0;
  if (!EnsureUp()) {
    return MPI_ERR_OTHER;
  }
  char buffer[MPI_MAX_ERROR_STRING + 1] = {};
  int written = 0;
  int status = MPI_SUCCESS;
  {
    // An unknown code is reported through the world's handler.
    ErrorsReturnScope scope(OnWorld);
    status = MPI_Error_string(code, buffer, &written);
  }
  if (status != MPI_SUCCESS) {
    return status;
  }
  int const kept = written < 0 ? 0 : (written < WMPI_MAX_ERROR_STRING ? written : WMPI_MAX_ERROR_STRING - 1);
  std::memcpy(text, buffer, static_cast<std::size_t>(kept));
  text[kept] = '\0';
  *length = kept;
  return MPI_SUCCESS;
}

int WMPI_Abort(unsigned long long comm, int code) {
  CommRef ref{};
  int const status = OpenComm(comm, &ref);
  return status != MPI_SUCCESS ? status : MPI_Abort(ref.comm, code);
}

int WMPI_Comm_dup(unsigned long long comm, unsigned long long *newComm) {
  if (newComm == nullptr) {
    return MPI_ERR_ARG;
  }
  *newComm = WMPI_COMM_NULL;
  CommRef ref{};
  int status = OpenComm(comm, &ref);
  if (status != MPI_SUCCESS) {
    return status;
  }
  std::size_t slot = 0;
  status = communicators.Emplace(&slot, [&](MPI_Comm *duplicate) {
    int dupStatus = MPI_SUCCESS;
    {
      ErrorsReturnScope scope(ref.predefined);
      dupStatus = MPI_Comm_dup(ref.comm, duplicate);
    }
    if (dupStatus == MPI_SUCCESS) {
      dupStatus = MPI_Comm_set_errhandler(*duplicate, MPI_ERRORS_RETURN);
      if (dupStatus != MPI_SUCCESS) {
        MPI_Comm_free(duplicate);
      }
    }
    return dupStatus;
  });
  if (status == MPI_SUCCESS) {
    *newComm = slot;
  }
  return status;
}

int WMPI_Comm_free(unsigned long long *comm) {
  if (comm == nullptr) {
    return MPI_ERR_ARG;
  }
  if (!EnsureUp()) {
    return MPI_ERR_OTHER;
  }
  // The predefined communicators are not in the table, so they are refused here too.
  auto *slot = communicators.Find(*comm);
  if (slot == nullptr) {
    return MPI_ERR_COMM;
  }
  int const status = MPI_Comm_free(&slot->payload);
  if (status != MPI_SUCCESS) {
    return status;
  }
  communicators.Release(*comm);
  *comm = WMPI_COMM_NULL;
  return MPI_SUCCESS;
}

int WMPI_Comm_size(unsigned long long comm, int *size) {
  if (size == nullptr) {
    return MPI_ERR_ARG;
  }
  CommRef ref{};
  int const status = OpenComm(comm, &ref);
  return status != MPI_SUCCESS ? status : MPI_Comm_size(ref.comm, size);
}

int WMPI_Comm_rank(unsigned long long comm, int *rank) {
  if (rank == nullptr) {
    return MPI_ERR_ARG;
  }
  CommRef ref{};
  int const status = OpenComm(comm, &ref);
  return status != MPI_SUCCESS ? status : MPI_Comm_rank(ref.comm, rank);
}

int WMPI_Barrier(unsigned long long comm) {
  CommRef ref{};
  int const status = OpenComm(comm, &ref);
  if (status != MPI_SUCCESS) {
    return status;
  }
  ErrorsReturnScope scope(ref.predefined);
  return MPI_Barrier(ref.comm);
}

int WMPI_Bcast(void *buffer, int count, int datatype, int root, unsigned long long comm) {
  CommRef ref{};
  MPI_Datatype type{};
  int status = FirstFailure({OpenComm(comm, &ref), CheckTypedBuffer(datatype, buffer, count, &type)});
  if (status != MPI_SUCCESS) {
    return status;
  }
  ErrorsReturnScope scope(ref.predefined);
  return MPI_Bcast(buffer, count, type, root, ref.comm);
}

int WMPI_Allgather(void *send, int sendCount, int sendType, void *recv, int recvCount, int recvType,
                   unsigned long long comm) {
  return ExchangeBlocks(MPI_Allgather, send, sendCount, sendType, recv, recvCount, recvType, comm);
}

int WMPI_Alltoall(void *send, int sendCount, int sendType, void *recv, int recvCount, int recvType,
                  unsigned long long comm) {
  return ExchangeBlocks(MPI_Alltoall, send, sendCount, sendType, recv, recvCount, recvType, comm);
}

int WMPI_Allreduce(void *send, void *recv, int count, int datatype, int op, unsigned long long comm) {
  CommRef ref{};
  MPI_Datatype type{};
  MPI_Op mpiOp{};
  int status = FirstFailure({OpenComm(comm, &ref), CheckTypedBuffer(datatype, send, count, &type),
                             CheckBuffer(recv, count), MpiOpOf(op, &mpiOp)});
  if (status != MPI_SUCCESS) {
    return status;
  }
  ErrorsReturnScope scope(ref.predefined);
  return MPI_Allreduce(send, recv, count, type, mpiOp, ref.comm);
}

int WMPI_Send(void *buffer, int count, int datatype, int dest, int tag, unsigned long long comm) {
  CommRef ref{};
  MPI_Datatype type{};
  int status = FirstFailure({OpenComm(comm, &ref), CheckTypedBuffer(datatype, buffer, count, &type)});
  if (status != MPI_SUCCESS) {
    return status;
  }
  ErrorsReturnScope scope(ref.predefined);
  return MPI_Send(buffer, count, type, dest, SendTag(tag), ref.comm);
}

int WMPI_Recv(void *buffer, int count, int datatype, int source, int tag, unsigned long long comm,
              WMPI_Status *status) {
  CommRef ref{};
  MPI_Datatype type{};
  int result = FirstFailure({OpenComm(comm, &ref), CheckTypedBuffer(datatype, buffer, count, &type)});
  if (result != MPI_SUCCESS) {
    return result;
  }
  MPI_Status local{};
  {
    ErrorsReturnScope scope(ref.predefined);
    result = MPI_Recv(buffer, count, type, RecvSource(source), RecvTag(tag), ref.comm, StatusOrIgnore(status, &local));
  }
  ReportStatus(local, result, status);
  return result;
}

int WMPI_Sendrecv(void *send, int sendCount, int sendType, int dest, int sendTag, void *recv, int recvCount,
                  int recvType, int source, int recvTag, unsigned long long comm, WMPI_Status *status) {
  CommRef ref{};
  MPI_Datatype sendMpiType{};
  MPI_Datatype recvMpiType{};
  int result = FirstFailure({OpenComm(comm, &ref), CheckTypedBuffer(sendType, send, sendCount, &sendMpiType),
                             CheckTypedBuffer(recvType, recv, recvCount, &recvMpiType)});
  if (result != MPI_SUCCESS) {
    return result;
  }
  MPI_Status local{};
  {
    ErrorsReturnScope scope(ref.predefined);
    result = MPI_Sendrecv(send, sendCount, sendMpiType, dest, SendTag(sendTag), recv, recvCount, recvMpiType,
                          RecvSource(source), RecvTag(recvTag), ref.comm, StatusOrIgnore(status, &local));
  }
  ReportStatus(local, result, status);
  return result;
}

int WMPI_Isend(void *buffer, int count, int datatype, int dest, int tag, unsigned long long comm,
               unsigned long long *request) {
  return StartTransfer(StartSend, buffer, count, datatype, dest, tag, comm, request);
}

int WMPI_Irecv(void *buffer, int count, int datatype, int source, int tag, unsigned long long comm,
               unsigned long long *request) {
  return StartTransfer(StartRecv, buffer, count, datatype, source, tag, comm, request);
}

int WMPI_Wait(unsigned long long *request, WMPI_Status *status) {
  if (request == nullptr) {
    return MPI_ERR_ARG;
  }
  if (!EnsureUp()) {
    return MPI_ERR_OTHER;
  }
  MPI_Request mpiRequest = MPI_REQUEST_NULL;
  unsigned char predefined = NotPredefined;
  int result = ClaimRequests(request, 1, &mpiRequest, &predefined);
  if (result != MPI_SUCCESS) {
    return result;
  }
  MPI_Status local{};
  {
    ErrorsReturnScope scope(predefined);
    result = MPI_Wait(&mpiRequest, StatusOrIgnore(status, &local));
  }
  SettleRequests(request, 1, &mpiRequest);
  ReportStatus(local, result, status);
  return result;
}

int WMPI_Waitall(int count, unsigned long long *requests, WMPI_Status *statuses) {
  if (count < 0) {
    return MPI_ERR_COUNT;
  }
  if (count > 0 && requests == nullptr) {
    return MPI_ERR_ARG;
  }
  if (!EnsureUp()) {
    return MPI_ERR_OTHER;
  }
  ScratchArray<MPI_Request, inlineRequests> mpiRequests;
  ScratchArray<MPI_Status, inlineRequests> mpiStatuses;
  auto const n = static_cast<std::size_t>(count);
  if (!mpiRequests.Allocate(n) || (statuses != nullptr && !mpiStatuses.Allocate(n))) {
    return MPI_ERR_NO_MEM;
  }
  unsigned char predefined = NotPredefined;
  int result = ClaimRequests(requests, count, mpiRequests.Data(), &predefined);
  if (result != MPI_SUCCESS) {
    return result;
  }
  {
    ErrorsReturnScope scope(predefined);
    result = MPI_Waitall(count, mpiRequests.Data(), statuses != nullptr ? mpiStatuses.Data() : MPI_STATUSES_IGNORE);
  }
  SettleRequests(requests, count, mpiRequests.Data());
  if (statuses != nullptr) {
    for (std::size_t i = 0; i < n; ++i) {
      MPI_Status const &each = mpiStatuses.Data()[i];
      ToWmpiStatus(each, result == MPI_ERR_IN_STATUS ? each.MPI_ERROR : result, &statuses[i]);
    }
  }
  return result;
}

int WMPI_Waitany(int count, unsigned long long *requests, int *index, WMPI_Status *status) {
  if (count < 0) {
    return MPI_ERR_COUNT;
  }
  if (index == nullptr || (count > 0 && requests == nullptr)) {
    return MPI_ERR_ARG;
  }
  if (!EnsureUp()) {
    return MPI_ERR_OTHER;
  }
  ScratchArray<MPI_Request, inlineRequests> mpiRequests;
  if (!mpiRequests.Allocate(static_cast<std::size_t>(count))) {
    return MPI_ERR_NO_MEM;
  }
  unsigned char predefined = NotPredefined;
  int result = ClaimRequests(requests, count, mpiRequests.Data(), &predefined);
  if (result != MPI_SUCCESS) {
    return result;
  }
  int which = MPI_UNDEFINED;
  MPI_Status local{};
  {
    ErrorsReturnScope scope(predefined);
    result = MPI_Waitany(count, mpiRequests.Data(), &which, StatusOrIgnore(status, &local));
  }
  SettleRequests(requests, count, mpiRequests.Data());
  *index = which == MPI_UNDEFINED ? -1 : which;
  ReportStatus(local, result, status);
  return result;
}

int WMPI_Probe(int source, int tag, unsigned long long comm, WMPI_Status *status) {
  CommRef ref{};
  int result = OpenComm(comm, &ref);
  if (result != MPI_SUCCESS) {
    return result;
  }
  MPI_Status local{};
  {
    ErrorsReturnScope scope(ref.predefined);
    result = MPI_Probe(RecvSource(source), RecvTag(tag), ref.comm, StatusOrIgnore(status, &local));
  }
  ReportStatus(local, result, status);
  return result;
}

int WMPI_Iprobe(int source, int tag, unsigned long long comm, int *flag, WMPI_Status *status) {
  if (flag == nullptr) {
    return MPI_ERR_ARG;
  }
  *flag = 0;
  CommRef ref{};
  int result = OpenComm(comm, &ref);
  if (result != MPI_SUCCESS) {
    return result;
  }
  MPI_Status local{};
  {
    ErrorsReturnScope scope(ref.predefined);
    result = MPI_Iprobe(RecvSource(source), RecvTag(tag), ref.comm, flag, StatusOrIgnore(status, &local));
  }
  // Without a message the status says nothing and the caller's record stays as it was.
  if (*flag || result != MPI_SUCCESS) {
    ReportStatus(local, result, status);
  }
  return result;
}

int WMPI_Get_count(WMPI_Status const *status, int datatype, int *count) {
  if (status == nullptr || count == nullptr) {
    return MPI_ERR_ARG;
  }
  TypeCode const *entry = FindTypeCode(datatype);
  if (entry == nullptr) {
    return MPI_ERR_TYPE;
  }
  std::uint64_t const bytes = ByteCount(*status);
  auto const width = static_cast<std::uint64_t>(entry->width);
  bool const whole = bytes % width == 0 && bytes / width <= static_cast<std::uint64_t>(INT_MAX);
  *count = whole ? static_cast<int>(bytes / width) : WMPI_UNDEFINED;
  return MPI_SUCCESS;
}

int WMPI_Pack(void *input, int count, int datatype, void *output, int outputSize, int *position,
              unsigned long long comm) {
  return MovePacked(PackDirection::IntoPacked, output, outputSize, position, input, count, datatype, comm);
}

int WMPI_Unpack(void *input, int inputSize, int *position, void *output, int count, int datatype,
                unsigned long long comm) {
  return MovePacked(PackDirection::OutOfPacked, input, inputSize, position, output, count, datatype, comm);
}

int WMPI_Request_free(unsigned long long *request) {
  if (request == nullptr) {
    return MPI_ERR_ARG;
  }
  if (*request == WMPI_REQUEST_NULL) {
    return MPI_ERR_REQUEST;
  }
  if (!EnsureUp()) {
    return MPI_ERR_OTHER;
  }
  MPI_Request mpiRequest = MPI_REQUEST_NULL;
  unsigned char predefined = NotPredefined;
  int result = ClaimRequests(request, 1, &mpiRequest, &predefined);
  if (result != MPI_SUCCESS) {
    return result;
  }
  {
    ErrorsReturnScope scope(predefined);
    result = MPI_Request_free(&mpiRequest);
  }
  SettleRequests(request, 1, &mpiRequest);
  return result;
}

} // extern "C"
