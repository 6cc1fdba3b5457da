// ZQCommDataHandler: the caller's side of a communication pattern.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>

#include <map>

namespace Velmora::Tessara::ZQ::Core {

/// Supplies the data of one exchange run by ZQCommPatterns: the byte counts per peer, the
/// packing of the send buffers and the unpacking of each buffer that arrives. The pattern
/// hands every operation the ZQMPT that the exchange runs on; `false` from any of them
/// makes the pattern report failure once the exchange has run to its end.
class ZQCORE_EXPORT ZQCommDataHandler {
public:
  /// The callback handed to PackBuffers: sends every buffer that has reached its size.
  using SendReadyCallback = void (*)(ZQCommPatterns *);

  /// `mpt` is kept for the deriving class (GetMPT) and not owned.
  ZQCommDataHandler(ZQMPT *mpt = nullptr);
  virtual ~ZQCommDataHandler();

  /// Fills both maps, which arrive empty, with the exact bytes this process will send to and
  /// receive from each peer. Both ends of a pair must give the same count; entries for the
  /// own rank and counts below 1 are ignored.
  virtual bool DetermineBufferSizes(ZQMPT *mpt, std::map<int, long long> *sendSizes,
                                    std::map<int, long long> *recvSizes) = 0;
  /// Selects and packs each send buffer, and may call `callback(patterns)` at any time to
  /// send what is complete. The callback changes the selected send buffer.
  virtual bool PackBuffers(ZQMPT *mpt, SendReadyCallback callback, ZQCommPatterns *patterns) = 0;
  /// Unpacks the buffer that arrived from `peer`; it is selected, read position 0.
  virtual bool UnpackBuffer(ZQMPT *mpt, int peer) = 0;

  /// The ZQMPT given at construction; the operations work on the one the pattern hands them.
  ZQMPT *GetMPT() const { return boundMPT; }

private:
  // Not named `mpt`, so that the operations' parameters do not shadow it.
  ZQMPT *boundMPT;
};

} // namespace Velmora::Tessara::ZQ::Core
