// ZQCommPatterns: whole exchanges among the processes of a job, driven by a data handler.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>

#include <map>
#include <set>

namespace Velmora::Tessara::ZQ::Core {

/// Runs an irregular exchange in which each process sends its own amount to its own set of
/// peers. All lengths are known before anything moves, every receive is posted before the
/// first send, each buffer leaves as soon as it is fully packed, and arrivals are unpacked
/// in the order they come. Runs on the context's ZQMPT; can be run again.
class ZQCORE_EXPORT ZQCommPatterns {
public:
  /// `context` (not owned) gives the ZQMPT and takes the error messages; null stands for
  /// one process.
  ZQCommPatterns(ZQContext *context = nullptr);
  virtual ~ZQCommPatterns();

  /// Collective over the context's ZQMPT when it has two or more processes, which leaves it
  /// in "PerProcess" buffer mode. False for a null handler (with a message) or when a
  /// handler operation returned false (without one); the exchange completes either way.
  bool NBSendReceive(ZQCommDataHandler *handler);

protected:
  /// Sends every pending buffer whose packed size equals its announced size.
  static void TryToNBSend(ZQCommPatterns *patterns);

private:
  void ClearState();
  /// Records in `peers` each peer of `sizes` other than this process with a positive size,
  /// and prepares its buffer with `initBuffer`.
  void PrepareBuffers(std::map<int, long long> const &sizes, std::set<int> &peers,
                      void (ZQMPT::*initBuffer)(int, long long), int ownRank);
  /// Hands each arrival to the handler in order of arrival; false when one unpack failed.
  bool UnpackArrivals(ZQCommDataHandler &handler);

  ZQContext *context;
  ZQMPT *mpt;
  std::set<int> sendPeers;
  std::set<int> recvPeers;
  std::set<int> pendingSendPeers;
  std::map<int, long long> sendSizes;
  std::map<int, long long> recvSizes;
};

} // namespace Velmora::Tessara::ZQ::Core
