// MPT: the public face of ZQMPT.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>

namespace Velmora::Tessara::ZQ::Core {

namespace detail {
struct FacadeAccess;
}

/// The message-passing object. Owns its inner object when made by the default
/// constructor, and borrows it when handed out by a Context. Without an inner object
/// it answers as a single process of rank 0.
class ZQCORE_EXPORT MPT {
public:
  /// Collective over the world: an owned object on a duplicate of the world communicator.
  MPT();
  /// Collective over `other`'s communicator: an owned duplicate with `other`'s settings,
  /// an empty name, no buffers and tags that start over.
  MPT(MPT const &other);
  /// Collective: the inner object, borrowed or not, takes a duplicate of `other`'s
  /// communicator and its settings; the communicator it held stays allocated.
  MPT &operator=(MPT const &other);
  /// Destroys the inner object only if it is owned; collective then.
  virtual ~MPT();

  /// Process count; 1 without an inner object.
  int GetNProcs() const;
  /// Rank of this process; 0 without an inner object.
  int GetProcRank() const;
  /// The object's label; null without an inner object.
  char const *GetName() const;
  /// Local: whether any rank has a message waiting; false without an inner object.
  bool HasPendingMessages() const;
  /// True while the inner object holds a communicator.
  bool IsInitialized() const;
  /// Collective: back to a single process of rank 0, releasing the communicator.
  void Reset();
  /// Copies up to 255 bytes of `name`; null empties the name.
  void SetName(char const *name);

private:
  friend class Context;
  friend struct detail::FacadeAccess;

  /// A wrapper that borrows the given object, which may be null.
  explicit MPT(ZQMPT *borrowed);
  void Copy(MPT const &other);

  ZQMPT *mpt;
  bool owned;
};

} // namespace Velmora::Tessara::ZQ::Core
