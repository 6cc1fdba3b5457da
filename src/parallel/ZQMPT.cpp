#include <zqcore/parallel/ZQMPT.h>
#include <zqcore/wmpi.h>

#include "core/detail/Fatal.h"

#include <cstdlib>
#include <cstring>

namespace Velmora::Tessara::ZQ::Core {

// The library is loaded into a process whose host has already brought MPI up.
bool ZQMPT::_isInitialized = true;
char ZQMPT::_errorMsg[ZQMPT::ErrorMsgSize] = {};

void ZQMPT::Initialize(int *, char ***) {
  if (_isInitialized) {
    return;
  }
  _isInitialized = true;
  int flag = 0;
  Check(WMPI_Initialized(&flag));
}

void ZQMPT::Finalize() {
  if (!_isInitialized) {
    return;
  }
  _isInitialized = false;
  int flag = 0;
  Check(WMPI_Initialized(&flag));
}

void ZQMPT::AbortWorld(int code) { ZQ_Abort(code); }

ZQMPT::ZQMPT() : ZQMPT(WMPI_COMM_WORLD) {}

ZQMPT::ZQMPT(unsigned long long parentComm) {
  int flag = 0;
  Check(WMPI_Initialized(&flag));
  _isInitialized = flag != 0;
  if (!_isInitialized) {
    detail::FatalError();
  }
  DuplicateCommunicator(parentComm, &comm);
  InitMPT();
}

ZQMPT::ZQMPT(ZQMPT const &other) {
  if (!_isInitialized) {
    detail::FatalError();
  }
  Copy(other);
}

ZQMPT &ZQMPT::operator=(ZQMPT const &other) {
  Copy(other);
  return *this;
}

ZQMPT::~ZQMPT() { Reset(); }

void ZQMPT::Reset() {
  CancelBufferRequests();
  nProcs = 1;
  procRank = 0;
  ResetExchangeState();
  FreeCommunicator(&comm);
}

bool ZQMPT::IsInitialized() const { return comm != WMPI_COMM_NULL; }

void ZQMPT::Abort(int code) {
  int const status = WMPI_Abort(comm, code);
  if (status == 0) {
    std::exit(code);
  }
  HandleError(status);
}

unsigned long long const &ZQMPT::GetMPIComm() const { return comm; }

int ZQMPT::GetNProcs() const { return nProcs; }

int ZQMPT::NProcs() const { return nProcs; }

int ZQMPT::GetProcRank() const { return procRank; }

int ZQMPT::ProcRank() const { return procRank; }

char const *ZQMPT::GetName() const { return name; }

void ZQMPT::SetName(char const *newName) {
  std::memset(name, 0, sizeof name);
  if (newName != nullptr) {
    // Longer names are cut so that the terminator always survives.
    std::strncpy(name, newName, NameSize - 1);
  }
}

bool ZQMPT::HasPendingMessages() const {
  // Rank by rank rather than with a wildcard source: the order of the answer is fixed.
  for (int rank = 0; rank < nProcs; ++rank) {
    int flag = 0;
    WMPI_Status status;
    Check(WMPI_Iprobe(rank, WMPI_ANY_TAG, comm, &flag, &status));
    if (flag != 0) {
      return true;
    }
  }
  return false;
}

void ZQMPT::DuplicateCommunicator(unsigned long long parentComm, unsigned long long *newComm) {
  Check(WMPI_Comm_dup(parentComm, newComm));
}

void ZQMPT::FreeCommunicator(unsigned long long *handle) {
  if (handle == nullptr || *handle == WMPI_COMM_NULL || *handle == WMPI_COMM_WORLD || *handle == WMPI_COMM_SELF ||
      !_isInitialized) {
    return;
  }
  Check(WMPI_Comm_free(handle));
  *handle = WMPI_COMM_NULL;
}

int ZQMPT::DetermineNProcs(unsigned long long handle) {
  int size = 0;
  Check(WMPI_Comm_size(handle, &size));
  return size;
}

int ZQMPT::DetermineProcRank(unsigned long long handle) {
  int rank = 0;
  Check(WMPI_Comm_rank(handle, &rank));
  return rank;
}

void ZQMPT::GetErrorMessage(int code) {
  int length = 0;
  WMPI_Error_string(code, _errorMsg, &length);
}

void ZQMPT::HandleError(int code) {
  GetErrorMessage(code);
  detail::WriteFatalBanner();
  if (!_isInitialized) {
    std::exit(-1);
  }
  // Clearing the mark first bounds the recursion to one level if the abort fails too.
  _isInitialized = false;
  int const status = WMPI_Abort(WMPI_COMM_WORLD, -1);
  if (status != 0) {
    HandleError(status);
  }
  std::exit(-1);
}

void ZQMPT::InitMPT() {
  std::memset(name, 0, sizeof name);
  nProcs = DetermineNProcs(comm);
  procRank = DetermineProcRank(comm);
  ResetExchangeState();
}

void ZQMPT::Copy(ZQMPT const &other) {
  if (this == &other) {
    return;
  }
  // The communicator held before is deliberately not released here.
  Check(WMPI_Comm_dup(other.comm, &comm));
  InitMPT();
  useTags = other.useTags;
  tagBound = other.tagBound;
  bufferMode = other.bufferMode;
  bufferIncrement = other.bufferIncrement;
  autoBufferResetThreshold = other.autoBufferResetThreshold;
}

void ZQMPT::SetMPIComm(unsigned long long newComm) {
  Reset();
  comm = newComm;
  InitMPT();
}

void ZQMPT::ResetExchangeState() {
  useTags = true;
  tagBound = DefaultTagBound;
  sendTags.clear();
  recvTags.clear();
  ResetWaitStructures();
  bufferMode = Types::BufferMode_t::PerProcess;
  bufferIncrement = DefaultBufferIncrement;
  ResetBuffers();
  selectedSendBuffer = -1;
  selectedReceiveBuffer = -1;
  autoBufferResetThreshold = DefaultAutoBufferResetThreshold;
}

} // namespace Velmora::Tessara::ZQ::Core
