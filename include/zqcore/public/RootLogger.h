// RootLogger: the public face of ZQRootLogger.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/public/Logger.h>

namespace Velmora::Tessara::ZQ::Core {

/// A logger with one handler on standard output under the empty name.
class ZQCORE_EXPORT RootLogger : public Logger {
public:
  explicit RootLogger(int level = 0, MPT *mpt = nullptr);
  ~RootLogger() override;

  /// A new root logger at level 0 that the caller owns.
  static Logger *Create();
  static Logger *Create(MPT *mpt);
};

} // namespace Velmora::Tessara::ZQ::Core
