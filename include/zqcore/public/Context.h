// Context: the public face of ZQContext.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>
#include <zqcore/public/ErrorStack.h>
#include <zqcore/public/Logging.h>
#include <zqcore/public/MPT.h>

namespace Velmora::Tessara::ZQ::Core {

/// What a caller threads through the library. Owns its inner context when made by the
/// default constructor; the one that API hands out borrows the global context. The
/// member wrappers borrow the inner context's members. Not copyable.
class ZQCORE_EXPORT Context {
public:
  /// Collective over the world: an owned new context, levels -1.
  Context();
  Context(Context const &) = delete;
  Context &operator=(Context const &) = delete;
  /// Destroys the inner context only if it is owned.
  virtual ~Context();

  /// The caller's levels, without a range check; 0 without an inner context.
  int GetVerbosityLevel() const;
  void SetVerbosityLevel(int level);
  int GetDebugLevel() const;
  void SetDebugLevel(int level);
  /// The inner context's logging, stack and message-passing object, as long as this lives.
  Logging &GetLogging();
  ErrorStack &GetErrorStack();
  MPT &GetMPT();
  /// The inner context, null for a wrapper of none.
  ZQContext *GetContext();

private:
  friend class API;
  friend struct detail::FacadeAccess;

  /// A wrapper that borrows the given object, which may be null.
  explicit Context(ZQContext *borrowed);
  /// Wraps `inner` and its members; destroys it at the end only if `isOwned`.
  Context(ZQContext *inner, bool isOwned);

  ZQContext *context;
  bool owned;
  Logging logging;
  ErrorStack errorStack;
  MPT mpt;
};

} // namespace Velmora::Tessara::ZQ::Core
