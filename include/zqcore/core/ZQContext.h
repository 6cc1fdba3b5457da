// ZQContext: what a caller threads through the library for one unit of work.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>
#include <zqcore/core/ZQErrorStack.h>
#include <zqcore/logging/ZQLogging.h>
#include <zqcore/parallel/ZQMPT.h>

namespace Velmora::Tessara::ZQ::Core {

/// Owns a logging registry, an error stack bound to it for automatic logging and a
/// message-passing object, plus two caller-defined levels. The logging is not bound to
/// the job until the caller runs GetLogging().SetMPT.
/// Constructing one is collective over the world (its ZQMPT duplicates the world
/// communicator), so message passing must be up. Not copyable; one thread of work.
class ZQCORE_EXPORT ZQContext {
public:
  ZQContext();
  ZQContext(ZQContext const &) = delete;
  ZQContext &operator=(ZQContext const &) = delete;
  virtual ~ZQContext();

  void SetVerbosityLevel(int level);
  int GetVerbosityLevel() const;
  void SetDebugLevel(int level);
  int GetDebugLevel() const;
  ZQLogging &GetLogging();
  ZQErrorStack &GetErrorStack();
  ZQMPT &GetMPT();

  /// Process count of the context's ZQMPT; 1 for a null context. Local.
  static int GetNProcs(ZQContext const *context);
  /// Rank of this process in the context's ZQMPT; 0 for a null context. Local.
  static int GetProcRank(ZQContext const *context);

private:
  int verbosityLevel;
  int debugLevel;
  ZQLogging logging;
  ZQErrorStack errorStack;
  ZQMPT mpt;
};

} // namespace Velmora::Tessara::ZQ::Core
