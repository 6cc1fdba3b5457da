// ZQMPT: the message-passing object, owner of one private communicator.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/Types.h>
#include <zqcore/core/ZQCoreFwd.h>
#include <zqcore/core/ZQExports.h>

#include <map>

struct WMPI_Status;

namespace Velmora::Tessara::ZQ::Core {

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

private:
  friend void ::ZQ_Abort(int);
  friend void ::ZQ_Exit(int);

  static void DuplicateCommunicator(unsigned long long comm, unsigned long long *newComm);
  static void FreeCommunicator(unsigned long long *comm);
  static int DetermineNProcs(unsigned long long comm);
  static int DetermineProcRank(unsigned long long comm);
  static void GetErrorMessage(int code);
  [[noreturn]] static void HandleError(int code);
  /// Runs the fatal tail for a nonzero status of the layer.
  static void Check(int status);
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
  int selectedSendBuffer = -1;
  int selectedReceiveBuffer = -1;
  long long autoBufferResetThreshold = DefaultAutoBufferResetThreshold;
};

} // namespace Velmora::Tessara::ZQ::Core
